/// \file
/// What screen readers ask a control.
#pragma once

#include <zogbl/control.h>

#include <oleacc.h>

/// The accessible object of a control. It is cut from it at the window's end; screen readers that still hold it get
/// CO_E_OBJNOTCONNECTED.
class ControlAccess final : public IAccessible {
public:
    /// The answer to WM_GETOBJECT for OBJID_CLIENT. \param access the control's, made at the first call
    /// \return 0 if the system has no accessibility, or no memory
    static LRESULT Answer(ControlAccess*& access, CZoControl& control, WPARAM wParam);
    static void RaiseEvent(DWORD event, HWND window, int part);

    void Cut(); ///< The control lets go of it.

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override;

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT part, IDispatch** child) override;
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT part, BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT part, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT part, BSTR* description) override;
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT part, VARIANT* role) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT part, VARIANT* state) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT part, BSTR* help) override;
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT part, LONG* topic) override;
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT part, BSTR* shortcut) override;
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* part) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* parts) override;
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT part, BSTR* action) override;
    HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT part) override;
    HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT part) override;
    HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
    HRESULT STDMETHODCALLTYPE accHitTest(LONG left, LONG top, VARIANT* part) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT part) override;
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT part, BSTR name) override;
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT part, BSTR value) override;

private:
    explicit ControlAccess(CZoControl& control) : m_pControl(&control) {}
    ~ControlAccess() = default;

    HRESULT Check() const; ///< whether it can be asked
    HRESULT Describe(const VARIANT& part, ZoPart& description) const;
    HRESULT TextOf(const VARIANT& part, CString ZoPart::*text, BSTR* result) const;
    HRESULT NumberOf(const VARIANT& part, LONG ZoPart::*number, VARIANT* result) const;

    CZoControl* m_pControl; ///< null: cut
    const DWORD m_threadId = ::GetCurrentThreadId();
    LONG m_references = 1;
};
