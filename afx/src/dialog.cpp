#include <common/dialog_template.h>

#include "command_route.h"
#include "common_controls_library.h"
#include "modal_owner.h"
#include "thread_state.h"
#include "window_hook.h"

#include <cstring>

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_MESSAGE(WM_INITDIALOG, HandleInitDialog)
    ON_MESSAGE(WM_SETFONT, HandleSetFont)
    ON_COMMAND(IDOK, OnOK)
    ON_COMMAND(IDCANCEL, OnCancel)
END_MESSAGE_MAP()

namespace {

/// The dialog procedure proper. All messages have been offered to the CDialog before they come here.
INT_PTR CALLBACK DialogProcedure(HWND, UINT message, WPARAM, LPARAM) { return message == WM_INITDIALOG; }

/// A template of the resource chain and its module; null if there is none.
struct TemplateResource {
    explicit TemplateResource(LPCSTR name) : module(AfxFindResourceHandle(name, RT_DIALOG))
    {
        const HRSRC resource = ::FindResource(module, name, RT_DIALOG);
        const HGLOBAL loaded = resource != nullptr ? ::LoadResource(module, resource) : nullptr;
        dialogTemplate = loaded != nullptr ? static_cast<LPCDLGTEMPLATE>(::LockResource(loaded)) : nullptr;
    }

    HINSTANCE module;
    LPCDLGTEMPLATE dialogTemplate;
};

/// Loads the library of common controls if a control is of a class that is not known yet.
void LoadControlsOf(LPCDLGTEMPLATE dialogTemplate, HINSTANCE module)
{
    DialogTemplateReader reader(dialogTemplate, MAXDWORD); // a template does not tell its size
    DialogTemplateReader::Item item;
    WNDCLASSW known;
    while (reader.Next(item)) {
        if (item.className[0] != L'\0' && !::GetClassInfoW(module, item.className, &known))
            LoadCommonControls();
    }
}

/// A template in the memory of a handle, kept in its place; null for a null handle.
class LockedTemplate {
public:
    explicit LockedTemplate(HGLOBAL memory)
        : m_memory(memory), m_template(memory != nullptr ? static_cast<LPCDLGTEMPLATE>(::GlobalLock(memory)) : nullptr)
    {
    }
    ~LockedTemplate()
    {
        if (m_template != nullptr)
            ::GlobalUnlock(m_memory);
    }
    LockedTemplate(const LockedTemplate&) = delete;
    LockedTemplate& operator=(const LockedTemplate&) = delete;
    operator LPCDLGTEMPLATE() const { return m_template; }

private:
    HGLOBAL m_memory;
    LPCDLGTEMPLATE m_template;
};

} // namespace

CDialog::CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd)
    : m_lpszTemplateName(lpszTemplateName), m_pParentWnd(pParentWnd)
{
}

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd) : CDialog(MAKEINTRESOURCE(nIDTemplate), pParentWnd) {}

CDialog::~CDialog()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
}

// Modal ---------------------------------------------------------------------------------------------------------------

BOOL CDialog::InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd)
{
    m_lpDialogTemplate = lpDialogTemplate;
    m_hDialogTemplate = nullptr;
    m_pParentWnd = pParentWnd;
    return lpDialogTemplate != nullptr;
}

BOOL CDialog::InitModalIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd)
{
    m_lpDialogTemplate = nullptr;
    m_hDialogTemplate = hDialogTemplate;
    m_pParentWnd = pParentWnd;
    return hDialogTemplate != nullptr;
}

INT_PTR CDialog::DoModal()
{
    if (m_lpDialogTemplate != nullptr)
        return RunModal(AfxGetResourceHandle(), m_lpDialogTemplate);
    if (m_hDialogTemplate != nullptr)
        return RunModal(AfxGetResourceHandle(), LockedTemplate(m_hDialogTemplate));
    const TemplateResource found(m_lpszTemplateName);
    return RunModal(found.module, found.dialogTemplate);
}

INT_PTR CDialog::RunModal(HINSTANCE module, LPCDLGTEMPLATE dialogTemplate)
{
    if (dialogTemplate == nullptr || m_hWnd != nullptr)
        return -1;
    ModalOwner owner(m_pParentWnd);
    HWND handle = nullptr;
    m_bModal = m_bModalRunning = TRUE; // from here on, for OnInitDialog may end the dialog
    m_nModalResult = IDABORT;
    {
        LoadControlsOf(dialogTemplate, module);
        const AfxWindowHook hook(this);
        if (hook.IsSet())
            handle = ::CreateDialogIndirectParam(module, dialogTemplate, owner.GetHandle(), &DialogProcedure, 0);
    }
    const auto end = [&] {
        m_bModal = m_bModalRunning = FALSE;
        owner.Release(m_hWnd);
        DestroyWindow();
    };
    int result = -1;
    try {
        if (handle != nullptr && m_hWnd != nullptr)
            result = m_bModalRunning ? RunModalLoop() : m_nModalResult;
    } catch (CException*) { // of a PreTranslateMessage
        end();
        throw;
    }
    end();
    return result;
}

void CDialog::EndDialog(int nResult)
{
    if (m_bModal)
        EndModalLoop(nResult);
    else
        ShowWindow(SW_HIDE);
}

// Modeless ------------------------------------------------------------------------------------------------------------

BOOL CDialog::Create(LPCSTR lpszTemplateName, CWnd* pParentWnd)
{
    m_lpszTemplateName = lpszTemplateName;
    const TemplateResource found(lpszTemplateName);
    return CreateModeless(found.module, found.dialogTemplate, pParentWnd);
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd) { return Create(MAKEINTRESOURCE(nIDTemplate), pParentWnd); }

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd)
{
    return CreateModeless(AfxGetResourceHandle(), lpDialogTemplate, pParentWnd);
}

BOOL CDialog::CreateIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd)
{
    return CreateModeless(AfxGetResourceHandle(), LockedTemplate(hDialogTemplate), pParentWnd);
}

BOOL CDialog::CreateModeless(HINSTANCE module, LPCDLGTEMPLATE dialogTemplate, const CWnd* parent)
{
    HWND handle = nullptr;
    bool caught = false; // then the end of the window was the end of the object's work
    if (dialogTemplate != nullptr) {
        if (parent == nullptr)
            parent = AfxGetMainWnd();
        LoadControlsOf(dialogTemplate, module);
        const AfxWindowHook hook(this);
        if (hook.IsSet())
            handle = ::CreateDialogIndirectParam(module, dialogTemplate, parent != nullptr ? parent->m_hWnd : nullptr,
                                                 &DialogProcedure, 0);
        caught = hook.HasCaught();
    }
    if (handle == nullptr && !caught)
        PostNcDestroy();
    return handle != nullptr;
}

// Messages ------------------------------------------------------------------------------------------------------------

BOOL CDialog::OnInitDialog()
{
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK()
{
    if (UpdateData(TRUE))
        EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

LRESULT CDialog::HandleInitDialog(WPARAM, LPARAM) { return OnInitDialog(); }

LRESULT CDialog::HandleSetFont(WPARAM wParam, LPARAM)
{
    OnSetFont(CFont::FromHandle(reinterpret_cast<HFONT>(wParam)));
    return 0;
}

BOOL CDialog::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo)
{
    return CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo) || RouteToOwner(*this, nID, nCode, pExtra, pHandlerInfo);
}

void CDialog::GotoDlgCtrl(CWnd* pWndCtrl)
{
    if (pWndCtrl != nullptr)
        SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(pWndCtrl->m_hWnd), TRUE);
}

namespace {

bool IsWithinDialog(HWND window)
{
    char name[16] = "";
    return (::GetWindowLong(window, GWL_STYLE) & WS_CHILD) != 0 &&
           ::GetClassName(::GetParent(window), name, sizeof name) > 0 && std::strcmp(name, "#32770") == 0;
}

} // namespace

BOOL CDialog::PreTranslateMessage(MSG* pMsg)
{
    return CWnd::PreTranslateMessage(pMsg) || (!IsWithinDialog(m_hWnd) && IsDialogMessage(pMsg));
}
