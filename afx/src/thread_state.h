/// \file
/// What the framework keeps for each thread: windows and drawing objects belong to the thread that made them.
#pragma once

#include <afxwin.h>

/// Objects by handle. Permanent ones belong to their makers; temporary ones to the map.
template <class OBJECT> class HandleMap {
public:
    ~HandleMap() { DeleteTemporary(); }

    OBJECT* FindPermanent(HANDLE handle) const
    {
        OBJECT* object = nullptr;
        return m_permanent.Lookup(handle, object) ? object : nullptr;
    }
    void SetPermanent(HANDLE handle, OBJECT* object) { m_permanent.SetAt(handle, object); }
    void RemovePermanent(HANDLE handle) { m_permanent.RemoveKey(handle); }

    /// The object of \p handle, a temporary one if it has none. \p assign sets or clears an object's handle.
    template <class ASSIGN> OBJECT* FromHandle(HANDLE handle, ASSIGN assign)
    {
        OBJECT* object = nullptr;
        if (handle == nullptr || m_permanent.Lookup(handle, object) || m_temporary.Lookup(handle, object))
            return object;
        object = new OBJECT;
        try {
            m_temporary.SetAt(handle, object);
        } catch (CMemoryException*) {
            delete object;
            throw;
        }
        assign(object, handle);
        m_release = [](OBJECT* o) { ASSIGN{}(o, nullptr); };
        return object;
    }
    void DeleteTemporary()
    {
        for (POSITION position = m_temporary.GetStartPosition(); position != nullptr;) {
            HANDLE handle;
            OBJECT* object;
            m_temporary.GetNextAssoc(position, handle, object);
            m_release(object); // a temporary object must not close what it does not own
            delete object;
        }
        m_temporary.RemoveAll();
    }

private:
    CMap<HANDLE, HANDLE, OBJECT*, OBJECT*> m_permanent;
    CMap<HANDLE, HANDLE, OBJECT*, OBJECT*> m_temporary;
    void (*m_release)(OBJECT*) = nullptr;
};

struct ThreadState {
    CWinThread* thread = nullptr;
    MSG lastMessage = {};               ///< being handled, for CWnd::Default
    CWnd* windowBeingCreated = nullptr; ///< waits for its handle in the creation hook
    HandleMap<CWnd> windows;
    HandleMap<CDC> deviceContexts;
    HandleMap<CFont> fonts;

    void DeleteTemporaryObjects()
    {
        windows.DeleteTemporary();
        deviceContexts.DeleteTemporary();
        fonts.DeleteTemporary();
    }
};

/// The calling thread's state; null when it has none, and then it has no windows either.
ThreadState* FindThreadState();
/// The calling thread's state, made on first use.
ThreadState* GetThreadState();

/// Waits for a message, offers it to the windows and dispatches it. \return FALSE for WM_QUIT, left in \p message.
BOOL PumpOneMessage(MSG* message);
/// Calls the thread's OnIdle for as long as it asks for it and no message waits.
void IdleUntilMessage();
/// The result of a message whose handler failed with \p e; tells the user of it.
LRESULT AnswerFailedMessage(CException* e, const MSG* message);
