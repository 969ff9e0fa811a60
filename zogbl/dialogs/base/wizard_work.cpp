#include <zogbl/wizard.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "default_button.h"
#include "message_pump.h"
#include "tell_user.h"

#include <utility>

BOOL CZoWizardSheet::OnFinish() { return TRUE; }

void CZoWizardSheet::SetModified()
{
    m_bModified = TRUE;
    if (m_hWnd != nullptr && m_pPage != nullptr && !m_bBusy)
        ShowButtons();
}

void CZoWizardSheet::SetCommitted()
{
    m_bCommitted = TRUE;
    m_nFloor = m_way.GetSize(); // the next page's place
    if (m_hWnd != nullptr && m_pPage != nullptr)
        ShowButtons();
}

// Work ----------------------------------------------------------------------------------------------------------------

void CZoWizardSheet::StartWork(LPCSTR text, LONGLONG length)
{
    if (m_hWnd == nullptr || !m_bBusy)
        return;
    m_bCancelled = FALSE;
    m_bar.SetState(CZoProgressBar::State::kRunning);
    if (length > 0)
        m_bar.SetRange(0, length);
    m_bar.SetUnknown(length <= 0);
    m_bar.SetTextMode(CZoProgressBar::TextMode::kPercent);
    SetDlgItemText(ZO_IDC_WIZARD_REASON, text);
    if (std::exchange(m_bWorking, TRUE))
        return;
    m_hFocus = ::GetFocus();
    m_bar.ShowWindow(SW_SHOW);
    SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(IDCANCEL)), TRUE); // before what has the focus is disabled
    m_pPage->EnableWindow(FALSE);
    ShowButtons();
    UpdateWindow();
}

BOOL CZoWizardSheet::SetPosition(LONGLONG done)
{
    if (!m_bWorking || m_bInside || m_bCancelled || m_hWnd == nullptr)
        return !m_bCancelled;
    m_bar.SetPosition(done);
    m_bInside = TRUE;
    if (!PumpMessages(*this, m_bar, m_bCancelled))
        m_bCancelled = TRUE;
    m_bInside = FALSE;
    return !m_bCancelled;
}

void CZoWizardSheet::EndWork()
{
    if (!std::exchange(m_bWorking, FALSE) || m_hWnd == nullptr)
        return;
    m_bar.ShowWindow(SW_HIDE);
    SetDlgItemText(ZO_IDC_WIZARD_REASON, "");
    m_pPage->EnableWindow(TRUE);
    ShowButtons();
    if (m_hFocus != nullptr && ::IsChild(m_hWnd, m_hFocus) && ::IsWindowVisible(m_hFocus) &&
        ::IsWindowEnabled(m_hFocus))
        SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(m_hFocus), TRUE);
    else
        FocusPage();
}

/// Its owner was destroyed, and it with it.
void CZoWizardSheet::PostNcDestroy()
{
    m_bCancelled = TRUE;
    CZoDialog::PostNcDestroy();
}

// Giving up -----------------------------------------------------------------------------------------------------------

void CZoWizardSheet::OnCancel()
{
    const auto ask = [this](UINT question) {
        int answer = IDNO; // without memory for the question nothing is lost
        if (!WithoutThrowing(
                [&] { answer = AskUser(*this, question, "", MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2); }))
            ::MessageBeep(MB_ICONEXCLAMATION);
        return answer == IDYES && m_hWnd != nullptr;
    };
    if (m_bWorking) {
        m_bar.SetState(CZoProgressBar::State::kPaused);
        const BOOL wasInside = std::exchange(m_bInside, TRUE); // the work stands still while the box is shown
        const BOOL isToEnd = ask(m_bCommitted ? ZO_IDS_ABORT_ASK_STOP : ZO_IDS_ABORT_ASK_CANCEL);
        m_bInside = wasInside;
        if (m_hWnd == nullptr)
            return; // it went with its owner meanwhile
        m_bar.SetState(CZoProgressBar::State::kRunning);
        if (isToEnd) {
            m_bCancelled = TRUE;
            WithoutThrowing([this] { SetDlgItemText(ZO_IDC_WIZARD_REASON, LoadText(ZO_IDS_ABORT_ENDING)); });
            UpdateWindow();
        }
        return;
    }
    if (m_bBusy)
        return;
    if (!m_bFinished && !m_bCommitted && m_bModified && !ask(ZO_IDS_WIZARD_ASK_CLOSE))
        return;
    EndDialog(m_bFinished ? IDOK : m_bCommitted ? IDCLOSE : IDCANCEL);
}

/// An Enter that is held, or that comes while work goes on, was not meant for what is shown.
BOOL CZoWizardSheet::PreTranslateMessage(MSG* message)
{
    constexpr LPARAM kRepeated = 1 << 30;
    const BOOL isEnter = message->message == WM_KEYDOWN && message->wParam == VK_RETURN && m_hWnd != nullptr &&
                         (message->hwnd == m_hWnd || ::IsChild(m_hWnd, message->hwnd));
    if (isEnter && (m_bWorking || ((message->lParam & kRepeated) != 0 &&
                                   (::SendMessageA(message->hwnd, WM_GETDLGCODE, 0, 0) & DLGC_WANTALLKEYS) == 0)))
        return TRUE;
    const BOOL isDone = CZoDialog::PreTranslateMessage(message);
    if (m_hWnd != nullptr && message->message != WM_TIMER && message->message != WM_MOUSEMOVE)
        ShowDefaultButton(m_hWnd);
    return isDone;
}
