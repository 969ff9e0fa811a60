#include <zogbl/abort_dialog.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/message_pump.h"
#include "dialogs/base/tell_user.h"

#include <utility>

namespace {

thread_local CZoAbortDialog* t_running = nullptr; // the innermost
thread_local HDC t_cancelledPrinter = nullptr;    // of a job that was cancelled, and whose dialog has gone

} // namespace

CZoAbortDialog::CZoAbortDialog(CWnd* owner) : CZoDialog(ZO_IDD_ABORT, owner) {}

CZoAbortDialog::~CZoAbortDialog() { Finish(); }

BOOL CZoAbortDialog::Start(LPCSTR title, LPCSTR text, LONGLONG length)
{
    if (m_bStarted)
        return FALSE;
    m_bStarted = TRUE;
    m_bCancelled = m_bCommitted = FALSE;
    m_nLength = length;
    m_pOuter = std::exchange(t_running, this);
    const BOOL isShown = WithoutThrowing([&]() -> BOOL {
        m_csTitle = title;
        m_csText = text;
        if (!CreateModeless())
            return FALSE;
        const HWND owner = ::GetWindow(m_hWnd, GW_OWNER);
        if (owner != nullptr && ::IsWindowEnabled(owner)) {
            ::EnableWindow(owner, FALSE);
            m_hDisabled = owner;
        }
        ShowWindow(SW_SHOW);
        UpdateWindow();
        return TRUE;
    });
    if (!isShown)
        m_bCancelled = FALSE; // no window, so nobody to cancel
    return isShown;
}

void CZoAbortDialog::Finish()
{
    if (!std::exchange(m_bStarted, FALSE))
        return;
    for (CZoAbortDialog** link = &t_running; *link != nullptr; link = &(*link)->m_pOuter) {
        if (*link == this) {
            *link = m_pOuter;
            break;
        }
    }
    if (const HDC printer = std::exchange(m_hPrinter, nullptr); printer != nullptr && m_bCancelled)
        t_cancelledPrinter = printer; // what the program still sends it is not printed
    const HWND owner = std::exchange(m_hDisabled, nullptr);
    if (owner != nullptr)
        ::EnableWindow(owner, TRUE); // first: else another program's window becomes the active one
    if (m_hWnd != nullptr)
        DestroyWindow();
}

BOOL CZoAbortDialog::OnInitDialog()
{
    CZoDialog::OnInitDialog();
    m_bar.SubclassDlgItem(ZO_IDC_ABORT_BAR, this);
    if (m_nLength > 0)
        m_bar.SetRange(0, m_nLength);
    m_bar.SetUnknown(m_nLength <= 0);
    m_bar.SetTextMode(CZoProgressBar::TextMode::kPercent);
    SetWindowText(m_csTitle);
    SetDlgItemText(ZO_IDC_ABORT_TEXT, m_csText);
    CenterWindow();
    return TRUE;
}

// What it shows -------------------------------------------------------------------------------------------------------

void CZoAbortDialog::SetText(LPCSTR text)
{
    WithoutThrowing([&] {
        m_csText = text;
        if (m_hWnd != nullptr)
            SetDlgItemText(ZO_IDC_ABORT_TEXT, m_csText);
    });
}

void CZoAbortDialog::SetCommitted()
{
    if (!std::exchange(m_bCommitted, TRUE))
        ShowButton();
}

void CZoAbortDialog::ShowButton()
{
    if (m_hWnd != nullptr)
        WithoutThrowing(
            [this] { SetDlgItemText(IDCANCEL, LoadText(m_bCommitted ? ZO_IDS_ABORT_STOP : ZO_IDS_ABORT_CANCEL)); });
}

void CZoAbortDialog::ShowRemaining()
{
    WithoutThrowing([this] {
        const CString text = m_bCancelled ? LoadText(ZO_IDS_ABORT_ENDING) : m_bar.GetRemainingText();
        if (text == m_csRemaining)
            return;
        m_csRemaining = text;
        SetDlgItemText(ZO_IDC_ABORT_REMAINING, text);
    });
}

void CZoAbortDialog::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    ShowButton();
    m_csRemaining.Empty();
    ShowRemaining();
}

// What the user does --------------------------------------------------------------------------------------------------

BOOL CZoAbortDialog::SetPosition(LONGLONG done)
{
    m_bar.SetPosition(done);
    return Continue();
}

BOOL CZoAbortDialog::Continue()
{
    if (m_bInside || m_bCancelled || m_hWnd == nullptr)
        return !m_bCancelled;
    m_bInside = TRUE;
    ShowRemaining();
    if (!PumpMessages(*this, m_bar, m_bCancelled))
        m_bCancelled = TRUE;
    m_bInside = FALSE;
    return !m_bCancelled;
}

/// Its owner was destroyed, and it with it.
void CZoAbortDialog::PostNcDestroy()
{
    if (m_bStarted)
        m_bCancelled = TRUE;
    CZoDialog::PostNcDestroy();
}

void CZoAbortDialog::OnOK() {}

void CZoAbortDialog::OnCancel()
{
    if (m_bCancelled)
        return;
    m_bar.SetState(CZoProgressBar::State::kPaused);
    const BOOL wasInside = std::exchange(m_bInside, TRUE); // the job does not go on while the box is shown
    int answer = IDYES;
    WithoutThrowing([&] {
        answer = AskUser(*this, m_bCommitted ? ZO_IDS_ABORT_ASK_STOP : ZO_IDS_ABORT_ASK_CANCEL, "",
                         MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2);
    });
    m_bInside = wasInside;
    if (m_hWnd == nullptr)
        return; // it went with its owner meanwhile
    m_bar.SetState(CZoProgressBar::State::kRunning);
    if (answer != IDYES)
        return;
    m_bCancelled = TRUE;
    ::EnableWindow(::GetDlgItem(m_hWnd, IDCANCEL), FALSE);
    ShowRemaining();
    UpdateWindow();
}

// Printing ------------------------------------------------------------------------------------------------------------

/// The system asks, also while the dialog is asking the user, and after it has gone.
BOOL CALLBACK CZoAbortDialog::AbortProc(HDC printer, int)
{
    for (CZoAbortDialog* dialog = t_running; dialog != nullptr; dialog = dialog->m_pOuter) {
        if (dialog->m_hPrinter == printer)
            return dialog->Continue();
    }
    return printer != t_cancelledPrinter;
}

BOOL CZoAbortDialog::AttachPrinter(HDC printer)
{
    if (!m_bStarted || ::SetAbortProc(printer, &AbortProc) <= 0)
        return FALSE;
    m_hPrinter = printer;
    if (t_cancelledPrinter == printer)
        t_cancelledPrinter = nullptr; // the handle was another context's
    return TRUE;
}
