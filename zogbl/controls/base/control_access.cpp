#include "control_access.h"

#include "common/without_throwing.h"

#include <new>
#include <type_traits>

namespace {

/// A function of a library that Windows NT 4 may lack. It is loaded when it is first called, and stays.
template <class FUNCTION> FUNCTION* Find(LPCSTR library, LPCSTR name)
{
    const HMODULE module = ::LoadLibraryA(library);
    const FARPROC function = module != nullptr ? ::GetProcAddress(module, name) : nullptr;
    return reinterpret_cast<FUNCTION*>(reinterpret_cast<void*>(function));
}

BSTR MakeText(LPCSTR text)
{
    static auto* const allocate = Find<decltype(::SysAllocStringLen)>("oleaut32.dll", "SysAllocStringLen");
    const int length = ::MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    const BSTR made = allocate != nullptr && length > 0 ? allocate(nullptr, static_cast<UINT>(length - 1)) : nullptr;
    if (made != nullptr)
        ::MultiByteToWideChar(CP_ACP, 0, text, -1, made, length);
    return made;
}

HRESULT NoText(BSTR* text)
{
    *text = nullptr;
    return DISP_E_MEMBERNOTFOUND;
}

void SetNumber(VARIANT* variant, LONG number)
{
    variant->vt = VT_I4;
    variant->lVal = number;
}

/// The selected parts of a control, at the moment of the question.
class SelectedParts final : public IEnumVARIANT {
public:
    explicit SelectedParts(const CDWordArray& parts) { m_parts.Copy(parts); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override
    {
        const bool isKnown = id == IID_IUnknown || id == IID_IEnumVARIANT;
        *result = isKnown ? this : nullptr;
        if (isKnown)
            AddRef();
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(::InterlockedIncrement(&m_references)); }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const LONG left = ::InterlockedDecrement(&m_references);
        if (left == 0)
            delete this;
        return static_cast<ULONG>(left);
    }
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* parts, ULONG* fetched) override
    {
        ULONG given = 0;
        for (; given < count && m_at < Count(); ++given)
            SetNumber(&parts[given], static_cast<LONG>(m_parts[static_cast<INT_PTR>(m_at++)]));
        if (fetched != nullptr)
            *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override
    {
        const bool isBeyond = count > Count() - m_at;
        m_at = isBeyond ? Count() : m_at + count;
        return isBeyond ? S_FALSE : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Reset() override
    {
        m_at = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** result) override
    {
        *result = nullptr;
        return E_NOTIMPL; // no screen reader asks for it
    }

private:
    ~SelectedParts() = default;
    ULONG Count() const { return static_cast<ULONG>(m_parts.GetSize()); }

    CDWordArray m_parts;
    ULONG m_at = 0;
    LONG m_references = 1;
};

} // namespace

LRESULT ControlAccess::Answer(ControlAccess*& access, CZoControl& control, WPARAM wParam)
{
    static auto* const answer = Find<decltype(::LresultFromObject)>("oleacc.dll", "LresultFromObject");
    if (answer == nullptr)
        return 0;
    if (access == nullptr)
        access = new (std::nothrow) ControlAccess(control);
    const LRESULT result = access != nullptr ? answer(IID_IAccessible, wParam, access) : 0;
    return result > 0 ? result : 0;
}

void ControlAccess::RaiseEvent(DWORD event, HWND window, int part)
{
    static auto* const notify = Find<decltype(::NotifyWinEvent)>("user32.dll", "NotifyWinEvent");
    if (notify != nullptr)
        notify(event, window, OBJID_CLIENT, part);
}

void ControlAccess::Cut()
{
    m_pControl = nullptr;
    Release();
}

// IUnknown, IDispatch -------------------------------------------------------------------------------------------------

HRESULT ControlAccess::QueryInterface(REFIID id, void** result)
{
    if (result == nullptr)
        return E_POINTER;
    const bool isKnown = id == IID_IUnknown || id == IID_IDispatch || id == IID_IAccessible;
    *result = isKnown ? this : nullptr;
    if (isKnown)
        AddRef();
    return isKnown ? S_OK : E_NOINTERFACE;
}

ULONG ControlAccess::AddRef() { return static_cast<ULONG>(::InterlockedIncrement(&m_references)); }

ULONG ControlAccess::Release()
{
    const LONG left = ::InterlockedDecrement(&m_references);
    if (left == 0)
        delete this;
    return static_cast<ULONG>(left);
}

HRESULT ControlAccess::GetTypeInfoCount(UINT* count)
{
    *count = 0;
    return S_OK;
}
HRESULT ControlAccess::GetTypeInfo(UINT, LCID, ITypeInfo**) { return E_NOTIMPL; }
HRESULT ControlAccess::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) { return E_NOTIMPL; }
HRESULT ControlAccess::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*)
{
    return E_NOTIMPL;
}

// IAccessible: what a part is -----------------------------------------------------------------------------------------

HRESULT ControlAccess::Check() const
{
    if (m_threadId != ::GetCurrentThreadId())
        return RPC_E_WRONG_THREAD;
    return m_pControl != nullptr && m_pControl->m_hWnd != nullptr ? S_OK : CO_E_OBJNOTCONNECTED;
}

HRESULT ControlAccess::Describe(const VARIANT& part, ZoPart& description) const
{
    const HRESULT status = Check();
    if (status != S_OK)
        return status;
    if (part.vt != VT_I4)
        return E_INVALIDARG;
    return ResultOr(E_OUTOFMEMORY, [&]() -> HRESULT {
        return m_pControl->DescribePart(part.lVal, description) ? S_OK : E_INVALIDARG;
    });
}

HRESULT ControlAccess::TextOf(const VARIANT& part, CString ZoPart::*text, BSTR* result) const
{
    *result = nullptr;
    ZoPart description;
    const HRESULT status = Describe(part, description);
    if (status != S_OK)
        return status;
    if ((description.*text).IsEmpty())
        return S_FALSE;
    *result = MakeText(description.*text);
    return *result != nullptr ? S_OK : E_OUTOFMEMORY;
}

HRESULT ControlAccess::NumberOf(const VARIANT& part, LONG ZoPart::*number, VARIANT* result) const
{
    result->vt = VT_EMPTY;
    ZoPart description;
    const HRESULT status = Describe(part, description);
    if (status == S_OK)
        SetNumber(result, description.*number);
    return status;
}

HRESULT ControlAccess::get_accName(VARIANT part, BSTR* name) { return TextOf(part, &ZoPart::name, name); }
HRESULT ControlAccess::get_accValue(VARIANT part, BSTR* value) { return TextOf(part, &ZoPart::value, value); }
HRESULT ControlAccess::get_accDescription(VARIANT part, BSTR* description)
{
    return TextOf(part, &ZoPart::description, description);
}
HRESULT ControlAccess::get_accDefaultAction(VARIANT part, BSTR* action)
{
    return TextOf(part, &ZoPart::action, action);
}

HRESULT ControlAccess::get_accRole(VARIANT part, VARIANT* role) { return NumberOf(part, &ZoPart::role, role); }
HRESULT ControlAccess::get_accState(VARIANT part, VARIANT* state) { return NumberOf(part, &ZoPart::state, state); }

HRESULT ControlAccess::accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT part)
{
    *left = *top = *width = *height = 0;
    ZoPart description;
    const HRESULT status = Describe(part, description);
    if (status != S_OK)
        return status;
    CRect area = description.area;
    m_pControl->ClientToScreen(&area);
    *left = area.left;
    *top = area.top;
    *width = area.Width();
    *height = area.Height();
    return S_OK;
}

HRESULT ControlAccess::get_accHelp(VARIANT, BSTR* help) { return NoText(help); }
HRESULT ControlAccess::get_accHelpTopic(BSTR* file, VARIANT, LONG*) { return NoText(file); }
HRESULT ControlAccess::get_accKeyboardShortcut(VARIANT, BSTR* shortcut) { return NoText(shortcut); }
HRESULT ControlAccess::put_accName(VARIANT, BSTR) { return DISP_E_MEMBERNOTFOUND; }
HRESULT ControlAccess::put_accValue(VARIANT, BSTR) { return DISP_E_MEMBERNOTFOUND; }

// IAccessible: the parts ----------------------------------------------------------------------------------------------

HRESULT ControlAccess::get_accParent(IDispatch** parent)
{
    *parent = nullptr;
    const HRESULT status = Check();
    if (status != S_OK)
        return status;
    // The parent of what is inside a window is that window's own object.
    static auto* const find = Find<decltype(::AccessibleObjectFromWindow)>("oleacc.dll", "AccessibleObjectFromWindow");
    return find != nullptr ? find(m_pControl->m_hWnd, static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                  reinterpret_cast<void**>(parent))
                           : S_FALSE;
}

HRESULT ControlAccess::get_accChildCount(LONG* count)
{
    const HRESULT status = Check();
    *count = status == S_OK ? m_pControl->GetPartCount() : 0;
    return status;
}

HRESULT ControlAccess::get_accChild(VARIANT part, IDispatch** child)
{
    *child = nullptr; // parts are no objects of their own
    ZoPart description;
    const HRESULT status = Describe(part, description);
    return status == S_OK ? S_FALSE : status;
}

HRESULT ControlAccess::get_accFocus(VARIANT* part)
{
    part->vt = VT_EMPTY;
    const HRESULT status = Check();
    if (status != S_OK)
        return status;
    if (!m_pControl->HasFocus())
        return S_FALSE;
    SetNumber(part, m_pControl->GetFocusedPart());
    return S_OK;
}

HRESULT ControlAccess::get_accSelection(VARIANT* parts)
{
    parts->vt = VT_EMPTY;
    const HRESULT status = Check();
    if (status != S_OK)
        return status;
    return ResultOr(E_OUTOFMEMORY, [&]() -> HRESULT {
        CDWordArray selected;
        for (int part = 1; part <= m_pControl->GetPartCount(); ++part) {
            ZoPart description;
            if (m_pControl->DescribePart(part, description) && (description.state & STATE_SYSTEM_SELECTED) != 0)
                selected.Add(static_cast<DWORD>(part));
        }
        if (selected.GetSize() == 0)
            return S_FALSE;
        if (selected.GetSize() == 1) {
            SetNumber(parts, static_cast<LONG>(selected[0]));
            return S_OK;
        }
        parts->punkVal = new (std::nothrow) SelectedParts(selected);
        if (parts->punkVal == nullptr)
            return E_OUTOFMEMORY;
        parts->vt = VT_UNKNOWN;
        return S_OK;
    });
}

HRESULT ControlAccess::accSelect(LONG flags, VARIANT part)
{
    ZoPart description;
    const HRESULT status = Describe(part, description);
    if (status != S_OK)
        return status;
    if (flags != SELFLAG_TAKEFOCUS || part.lVal != CHILDID_SELF)
        return DISP_E_MEMBERNOTFOUND; // a part is chosen by its action
    m_pControl->TakeFocus();
    return S_OK;
}

HRESULT ControlAccess::accNavigate(LONG direction, VARIANT start, VARIANT* end)
{
    end->vt = VT_EMPTY;
    ZoPart description;
    const HRESULT status = Describe(start, description);
    if (status != S_OK)
        return status;
    const LONG last = m_pControl->GetPartCount();
    LONG part = 0;
    switch (direction) {
    case NAVDIR_FIRSTCHILD:
        part = start.lVal == CHILDID_SELF ? 1 : 0;
        break;
    case NAVDIR_LASTCHILD:
        part = start.lVal == CHILDID_SELF ? last : 0;
        break;
    case NAVDIR_NEXT:
        part = start.lVal != CHILDID_SELF ? start.lVal + 1 : 0;
        break;
    case NAVDIR_PREVIOUS:
        part = start.lVal != CHILDID_SELF ? start.lVal - 1 : 0;
        break;
    default:
        return DISP_E_MEMBERNOTFOUND; // by place: screen readers ask for the areas
    }
    if (part < 1 || part > last)
        return S_FALSE;
    SetNumber(end, part);
    return S_OK;
}

HRESULT ControlAccess::accHitTest(LONG left, LONG top, VARIANT* part)
{
    part->vt = VT_EMPTY;
    const HRESULT status = Check();
    if (status != S_OK)
        return status;
    CPoint point(left, top);
    m_pControl->ScreenToClient(&point);
    if (!m_pControl->GetClientArea().PtInRect(point))
        return S_FALSE;
    SetNumber(part, m_pControl->FindPart(point));
    return S_OK;
}

HRESULT ControlAccess::accDoDefaultAction(VARIANT part)
{
    ZoPart description;
    const HRESULT status = Describe(part, description);
    if (status != S_OK)
        return status;
    if (!m_pControl->IsWindowEnabled())
        return DISP_E_MEMBERNOTFOUND;
    return WithoutThrowing([&] { return m_pControl->DoPartAction(part.lVal); }) ? S_OK : DISP_E_MEMBERNOTFOUND;
}
