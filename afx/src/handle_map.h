/// \file
/// Objects by the handles that they stand for.
#pragma once

#include <afxtempl.h>

/// The objects of one kind of handle, of one thread. Permanent objects belong to their makers, who enter and remove
/// them; temporary ones are made by the map for handles that have none, and live until the thread is next idle.
/// \tparam MEMBER where an object keeps its handle
template <class OBJECT, class HANDLE, HANDLE OBJECT::*MEMBER> class HandleMap {
public:
    HandleMap() = default;
    ~HandleMap() { DeleteTemporary(); }

    /// \return the permanent object of \p handle; null if it has none
    OBJECT* FindPermanent(HANDLE handle) const
    {
        OBJECT* object = nullptr;
        return m_permanent.Lookup(handle, object) ? object : nullptr;
    }
    void SetPermanent(HANDLE handle, OBJECT* object)
    {
        try {
            m_permanent.SetAt(handle, object);
        } catch (CMemoryException*) {
            FreeIfEmpty();
            throw;
        }
    }
    /// Gives \p object its handle. \return FALSE for null, and for an object that holds one already
    BOOL Attach(HANDLE handle, OBJECT* object)
    {
        if (handle == nullptr || object->*MEMBER != nullptr)
            return FALSE;
        SetPermanent(handle, object);
        object->*MEMBER = handle;
        return TRUE;
    }
    /// Takes \p object out again, unless another one has taken its place meanwhile.
    void RemovePermanent(HANDLE handle, const OBJECT* object)
    {
        if (FindPermanent(handle) == object)
            m_permanent.RemoveKey(handle);
        FreeIfEmpty();
    }

    /// \param make \code OBJECT* make(HANDLE) \endcode makes a temporary object with the handle in it; null: there is
    /// none for such a handle
    /// \param fits \code bool fits(const OBJECT*) \endcode whether an object can stand for what the handle is now: one
    /// that cannot is passed over, and so is one that has let go of the handle
    /// \return the permanent object of \p handle, else its temporary one; null for a null handle
    template <class MAKE, class FITS> OBJECT* FromHandle(HANDLE handle, MAKE make, FITS fits)
    {
        const auto stands = [&](const OBJECT* object) { return object->*MEMBER == handle && fits(object); };
        OBJECT* object = nullptr;
        if (handle == nullptr || (m_permanent.Lookup(handle, object) && stands(object)))
            return object;
        if (m_temporary.Lookup(handle, object)) {
            if (stands(object))
                return object;
            ForgetTemporary(handle);
        }
        object = make(handle);
        if (object == nullptr)
            return nullptr;
        try {
            m_temporary.SetAt(handle, object);
        } catch (CMemoryException*) {
            Delete(object);
            throw;
        }
        return object;
    }
    template <class MAKE> OBJECT* FromHandle(HANDLE handle, MAKE make)
    {
        return FromHandle(handle, make, [](const OBJECT*) { return true; });
    }
    OBJECT* FromHandle(HANDLE handle)
    {
        return FromHandle(handle, [](HANDLE wanted) {
            auto* object = new OBJECT;
            object->*MEMBER = wanted;
            return object;
        });
    }
    /// Deletes the temporary object of a handle that has come to stand for something else.
    void ForgetTemporary(HANDLE handle)
    {
        OBJECT* object = nullptr;
        if (m_temporary.Lookup(handle, object)) {
            m_temporary.RemoveKey(handle);
            Delete(object);
        }
    }
    void DeleteTemporary()
    {
        for (POSITION position = m_temporary.GetStartPosition(); position != nullptr;) {
            HANDLE handle;
            OBJECT* object;
            m_temporary.GetNextAssoc(position, handle, object);
            Delete(object);
        }
        m_temporary.RemoveAll();
    }

private:
    void FreeIfEmpty()
    {
        if (m_permanent.IsEmpty())
            m_permanent.RemoveAll(); // gives its memory back
    }
    static void Delete(OBJECT* temporary)
    {
        temporary->*MEMBER = nullptr; // it must not destroy what it does not own
        delete temporary;
    }

    CMap<HANDLE, HANDLE, OBJECT*, OBJECT*> m_permanent;
    CMap<HANDLE, HANDLE, OBJECT*, OBJECT*> m_temporary;
};

/// Attaches what was just made, or lets \p destroy end it. \return whether \p object has it
template <class OBJECT, class HANDLE, class DESTROY> BOOL AttachOrDestroy(OBJECT& object, HANDLE made, DESTROY destroy)
{
    try {
        if (object.Attach(made))
            return TRUE;
    } catch (CMemoryException*) {
        destroy(made);
        throw;
    }
    if (made != nullptr)
        destroy(made);
    return FALSE;
}
