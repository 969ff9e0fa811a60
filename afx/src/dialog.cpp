#include "modal_owner.h"
#include "thread_state.h"
#include "window_hook.h"

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_MESSAGE(WM_INITDIALOG, HandleInitDialog)
    ON_COMMAND(IDOK, OnOK)
    ON_COMMAND(IDCANCEL, OnCancel)
END_MESSAGE_MAP()

namespace {

/// The dialog procedure proper. All messages have been offered to the CDialog before they come here.
INT_PTR CALLBACK DialogProcedure(HWND, UINT message, WPARAM, LPARAM) { return message == WM_INITDIALOG; }

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

BOOL CDialog::InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd)
{
    m_lpDialogTemplate = lpDialogTemplate;
    m_pParentWnd = pParentWnd;
    return TRUE;
}

INT_PTR CDialog::DoModal()
{
    LPCDLGTEMPLATE dialogTemplate = m_lpDialogTemplate;
    HINSTANCE module = AfxGetResourceHandle();
    if (dialogTemplate == nullptr) {
        module = AfxFindResourceHandle(m_lpszTemplateName, RT_DIALOG);
        const HRSRC resource = ::FindResource(module, m_lpszTemplateName, RT_DIALOG);
        const HGLOBAL loaded = resource != nullptr ? ::LoadResource(module, resource) : nullptr;
        dialogTemplate = loaded != nullptr ? static_cast<LPCDLGTEMPLATE>(::LockResource(loaded)) : nullptr;
    }
    if (dialogTemplate == nullptr)
        return -1;

    ModalOwner owner(m_pParentWnd);
    HWND handle;
    m_bModalRunning = TRUE; // from here on, for OnInitDialog may end the dialog
    {
        const AfxWindowHook hook(this);
        handle = ::CreateDialogIndirectParam(module, dialogTemplate, owner.GetHandle(), &DialogProcedure, 0);
    }
    int result = -1;
    if (handle != nullptr && m_hWnd != nullptr)
        result = m_bModalRunning ? RunModalLoop() : m_nModalResult;
    m_bModalRunning = FALSE;
    owner.Release(m_hWnd);
    DestroyWindow();
    return result;
}

void CDialog::EndDialog(int nResult) { EndModalLoop(nResult); }

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

BOOL CDialog::PreTranslateMessage(MSG* pMsg)
{
    return CWnd::PreTranslateMessage(pMsg) || ::IsDialogMessage(m_hWnd, pMsg);
}
