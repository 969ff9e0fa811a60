#include <zogbl/wizard.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "dialog_resource.h"
#include "window_layout.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int kMargin = 7; // dialog units

/// Makes a window larger, and lets its controls follow. Throws CMemoryException*.
template <int COUNT> void Enlarge(CWnd& window, const ZoFollowing (&controls)[COUNT], CSize by)
{
    if (by.cx <= 0 && by.cy <= 0)
        return;
    WindowLayout layout(window, controls, COUNT, nullptr);
    CRect area;
    window.GetWindowRect(&area);
    window.SetWindowPos(nullptr, 0, 0, area.Width() + (std::max)(static_cast<int>(by.cx), 0),
                        area.Height() + (std::max)(static_cast<int>(by.cy), 0), SWP_NOMOVE | SWP_NOZORDER);
    layout.OnSize();
}

/// Whether a notification tells of what the user has done to a control.
bool IsChange(HWND control, int notification)
{
    const HWND focus = ::GetFocus();
    if (focus == nullptr || (focus != control && !::IsChild(control, focus)))
        return false;
    const bool isPushButton =
        (::SendMessageA(control, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
    return notification == EN_CHANGE || notification == CBN_SELCHANGE || notification == LBN_SELCHANGE ||
           notification == CBN_EDITCHANGE || (notification == BN_CLICKED && !isPushButton);
}

} // namespace

// The frame -----------------------------------------------------------------------------------------------------------

BOOL CZoWizardSheet::OnInitDialog()
{
    const BOOL isReady = WithoutThrowing([this]() -> BOOL {
        CZoDialog::OnInitDialog();
        m_bar.SubclassDlgItem(ZO_IDC_WIZARD_BAR, this);
        LOGFONT font = {};
        GetFont()->GetLogFont(&font);
        font.lfWeight = FW_BOLD;
        m_heading.DeleteObject();
        if (m_heading.CreateFontIndirect(&font))
            GetDlgItem(ZO_IDC_WIZARD_HEADING)->SetFont(&m_heading, FALSE);
        Fit();
        FitPicture();
        CenterWindow();
        CZoWizardPage* first = FirstFrom(0);
        if (first == nullptr)
            return FALSE;
        m_way.Add(first);
        return ShowPage(first);
    });
    if (!isReady)
        EndDialog(-1);
    return FALSE;
}

/// Makes the frame as much larger as the largest page wants it.
void CZoWizardSheet::Fit()
{
    CSize units(0, 0);
    for (INT_PTR i = 0; i <= m_pages.GetSize(); ++i) {
        const CZoWizardPage* page = i < m_pages.GetSize() ? PageAt(i) : m_pResult;
        if (page == nullptr)
            continue;
        const CSize size = DialogTemplate(page->m_nTemplateId).GetSize();
        units = {(std::max)(units.cx, size.cx), (std::max)(units.cy, size.cy)};
    }
    CRect wanted(0, 0, units.cx, units.cy), place;
    MapDialogRect(&wanted);
    GetDlgItem(ZO_IDC_WIZARD_PAGE)->GetWindowRect(&place);
    constexpr BYTE kBelow = ZoFollowing::kMoveDown | ZoFollowing::kWiden;
    constexpr BYTE kCorner = ZoFollowing::kMoveDown | ZoFollowing::kMoveRight;
    constexpr ZoFollowing kFollowing[] = {
        {ZO_IDC_WIZARD_HEADING, ZoFollowing::kWiden},
        {ZO_IDC_WIZARD_STEP, ZoFollowing::kMoveRight},
        {ZO_IDC_WIZARD_PAGE, ZoFollowing::kWiden | ZoFollowing::kHeighten},
        {ZO_IDC_WIZARD_REASON, kBelow},
        {ZO_IDC_WIZARD_BAR, kBelow},
        {ZO_IDC_WIZARD_LINE, kBelow},
        {ZO_IDC_WIZARD_BACK, kCorner},
        {IDOK, kCorner},
        {IDCANCEL, kCorner},
    };
    Enlarge(*this, kFollowing, wanted.Size() - place.Size());
}

/// The picture stands at the left, as high as heading and page together.
void CZoWizardSheet::FitPicture()
{
    const CRect none(0, 0, 1, 1);
    if (m_nPictureId == 0 || !m_picture.Create(WS_CHILD, none, this, ZO_IDC_WIZARD_PICTURE))
        return;
    if (m_picture.LoadResource(m_nPictureId) != 0) {
        m_picture.DestroyWindow();
        return;
    }
    CRect page, margin(0, 0, kMargin, kMargin);
    GetDlgItem(ZO_IDC_WIZARD_PAGE)->GetWindowRect(&page);
    ScreenToClient(&page);
    MapDialogRect(&margin);
    const CSize size = m_picture.GetPictureSize();
    const int height = page.bottom - margin.bottom;
    const int width = (std::min)(::MulDiv(height, size.cx, size.cy), page.Width()); // of one that is hardly high
    constexpr ZoFollowing kFollowing[] = {
        {ZO_IDC_WIZARD_HEADING, ZoFollowing::kMoveRight},
        {ZO_IDC_WIZARD_STEP, ZoFollowing::kMoveRight},
        {ZO_IDC_WIZARD_PAGE, ZoFollowing::kMoveRight},
        {ZO_IDC_WIZARD_REASON, ZoFollowing::kMoveRight},
        {ZO_IDC_WIZARD_BAR, ZoFollowing::kMoveRight},
        {ZO_IDC_WIZARD_LINE, ZoFollowing::kWiden},
        {ZO_IDC_WIZARD_BACK, ZoFollowing::kMoveRight},
        {IDOK, ZoFollowing::kMoveRight},
        {IDCANCEL, ZoFollowing::kMoveRight},
    };
    Enlarge(*this, kFollowing, CSize(width + margin.right, 0));
    m_picture.SetPlacing(CZoBitmapWnd::Placing::kProportional);
    m_picture.SetWindowPos(&wndBottom, margin.right, margin.bottom, width, height, SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

// Texts and buttons ---------------------------------------------------------------------------------------------------

void CZoWizardSheet::ShowTexts()
{
    WithoutThrowing([this] { // without memory the rest stays as it is
        SetWindowText(LoadText(m_nTitleId));
        SetDlgItemText(ZO_IDC_WIZARD_HEADING, DialogTitle(m_pPage->m_nTemplateId));
        CString step, count;
        step.Format("%d", m_pPage->m_nStep);
        count.Format("%d", m_nSteps);
        const BOOL isCounted = m_pPage->m_nStep > 0 && !m_bFinished;
        SetDlgItemText(ZO_IDC_WIZARD_STEP, isCounted ? LoadText(ZO_IDS_WIZARD_STEP, step, count) : CString());
    });
    ShowButtons();
}

void CZoWizardSheet::ShowButtons()
{
    const auto setText = [this](int button, UINT id) {
        CString shown;
        const CString text = LoadText(id);
        GetDlgItemText(button, shown);
        if (text != shown)
            SetDlgItemText(button, text);
    };
    ::EnableWindow(Item(ZO_IDC_WIZARD_BACK), !m_bWorking && !m_bFinished && m_way.GetUpperBound() > m_nFloor);
    ::EnableWindow(Item(IDOK), !m_bWorking);
    for (const int button : {ZO_IDC_WIZARD_BACK, IDOK})
        ::ShowWindow(Item(button), m_bFinished ? SW_HIDE : SW_SHOW);
    WithoutThrowing([&] {
        m_bLast = !m_bFinished && FindNext(m_pPage) == nullptr;
        setText(IDOK, m_bLast ? m_nActId : ZO_IDS_WIZARD_NEXT);
        if (m_bWorking)
            setText(IDCANCEL, m_bCommitted ? ZO_IDS_ABORT_STOP : ZO_IDS_ABORT_CANCEL);
        else
            setText(IDCANCEL, m_bCommitted || m_bFinished ? ZO_IDS_SHEET_CLOSE : ZO_IDS_ABORT_CANCEL);
    });
}

void CZoWizardSheet::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    if (m_pPage == nullptr)
        return;
    ShowTexts();
    if (m_nFault != 0)
        SetDlgItemText(ZO_IDC_WIZARD_REASON, FindReason());
    for (INT_PTR i = 0; i < m_pages.GetSize(); ++i) {
        if (PageAt(i)->m_hWnd != nullptr)
            PageAt(i)->ReloadTexts();
    }
    if (m_pResult != nullptr && m_pResult->m_hWnd != nullptr)
        m_pResult->ReloadTexts();
}

// What is wrong -------------------------------------------------------------------------------------------------------

/// Takes what is wrong on the page from it. \return what the user is told; empty if nothing is wrong
CString CZoWizardSheet::FindReason()
{
    CString reason;
    m_nFault = m_pPage->FindFault(reason);
    return m_nFault != 0 && reason.IsEmpty() ? LoadText(ZO_IDS_WIZARD_MISSING) : m_nFault != 0 ? reason : CString();
}

void CZoWizardSheet::ShowFault()
{
    SetDlgItemText(ZO_IDC_WIZARD_REASON, FindReason());
    ::MessageBeep(MB_ICONEXCLAMATION);
    const HWND culprit = ::GetDlgItem(m_pPage->m_hWnd, m_nFault);
    if (culprit != nullptr && ::IsWindowVisible(culprit) && ::IsWindowEnabled(culprit))
        SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(culprit), TRUE);
    else
        FocusPage();
}

/// What is no longer true goes at once. Another reason waits for Next.
void CZoWizardSheet::OnPageCommand(const CZoWizardPage* page, int notification, HWND control)
{
    if (page != m_pPage || m_bBusy || m_bFinished)
        return;
    if (IsChange(control, notification))
        m_bModified = TRUE;
    WithoutThrowing([this] {
        CString shown;
        if (m_nFault != 0)
            GetDlgItemText(ZO_IDC_WIZARD_REASON, shown);
        if (m_nFault != 0 && FindReason() != shown) {
            m_nFault = 0;
            SetDlgItemText(ZO_IDC_WIZARD_REASON, "");
        }
    });
    ShowButtons();
}
