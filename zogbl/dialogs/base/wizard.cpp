#include <zogbl/wizard.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "default_button.h"
#include "dialog_resource.h"
#include "tell_user.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int kMostStops = 100; // of Tab, that are looked at

/// Whether Enter is something else there than the default button.
bool TakesEnter(HWND control)
{
    const LRESULT code = ::SendMessageA(control, WM_GETDLGCODE, 0, 0);
    return (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON | DLGC_WANTALLKEYS)) != 0;
}

/// Takes the keys away that the user has pressed before seeing what is shown now.
void DiscardKeys()
{
    for (MSG message; ::PeekMessageA(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE);)
        ;
}

} // namespace

BEGIN_MESSAGE_MAP(CZoWizardSheet, CZoDialog)
    ON_BN_CLICKED(ZO_IDC_WIZARD_BACK, OnBack)
END_MESSAGE_MAP()

CZoWizardSheet::CZoWizardSheet(UINT titleId, CWnd* parent)
    : CZoDialog(ZO_IDD_WIZARD, parent), m_nTitleId(titleId), m_nActId(ZO_IDS_WIZARD_FINISH)
{
}

CZoWizardSheet::~CZoWizardSheet() = default;

BOOL CZoWizardSheet::AddPage(CZoWizardPage* page, int step)
{
    return WithoutThrowing([&] {
        const INT_PTR count = m_pages.GetSize();
        m_pages.Add(page);
        page->m_pSheet = this;
        page->m_nStep = step != kNextStep ? step : count > 0 ? PageAt(count - 1)->m_nStep + 1 : 1;
        m_nSteps = (std::max)(m_nSteps, page->m_nStep);
    });
}

void CZoWizardSheet::SetResultPage(CZoWizardPage* page)
{
    m_pResult = page;
    if (page != nullptr)
        page->m_pSheet = this;
}

INT_PTR CZoWizardSheet::DoModal()
{
    m_pPage = nullptr;
    m_way.RemoveAll();
    m_nFault = m_nFloor = 0;
    m_bLast = m_bModified = m_bCommitted = m_bFinished = m_bCancelled = FALSE;
    return ResultOr(-1, [this] { return CZoDialog::DoModal(); });
}

// The way through the pages -------------------------------------------------------------------------------------------

CZoWizardPage* CZoWizardSheet::FirstFrom(INT_PTR index)
{
    while (index < m_pages.GetSize() && PageAt(index)->IsSkipped())
        ++index;
    return index < m_pages.GetSize() ? PageAt(index) : nullptr;
}

CZoWizardPage* CZoWizardSheet::FindNext(CZoWizardPage* page)
{
    const auto indexOf = [this](const CZoWizardPage* wanted) {
        INT_PTR index = 0;
        while (index < m_pages.GetSize() && PageAt(index) != wanted)
            ++index;
        return index;
    };
    const CZoWizardPage* chosen = page->ChooseNext();
    return FirstFrom(chosen != nullptr ? indexOf(chosen) : indexOf(page) + 1);
}

BOOL CZoWizardSheet::ShowPage(CZoWizardPage* page)
{
    if (page->m_hWnd == nullptr) {
        DialogTemplate pageTemplate(page->m_nTemplateId);
        if (pageTemplate.Get() == nullptr)
            return FALSE;
        pageTemplate.MakeChild();
        if (!page->CreateIndirect(pageTemplate.Get(), this))
            return FALSE;
    }
    const CWnd* frame = GetDlgItem(ZO_IDC_WIZARD_PAGE);
    CRect place;
    frame->GetWindowRect(&place);
    ScreenToClient(&place);
    page->SetWindowPos(frame, place.left, place.top, place.Width(), place.Height(), SWP_NOACTIVATE);
    page->OnShow();
    CZoWizardPage* before = std::exchange(m_pPage, page);
    page->ShowWindow(SW_SHOW);
    FocusPage(); // before anything that has it is hidden or disabled
    if (before != nullptr && before != page)
        before->ShowWindow(SW_HIDE);
    m_nFault = 0;
    SetDlgItemText(ZO_IDC_WIZARD_REASON, "");
    ShowTexts();
    return TRUE;
}

/// To where Enter leads on.
void CZoWizardSheet::FocusPage()
{
    HWND stop = ::GetNextDlgTabItem(m_pPage->m_hWnd, nullptr, FALSE);
    const HWND first = stop;
    for (int i = 0; stop != nullptr && i < kMostStops && TakesEnter(stop); ++i) {
        stop = ::GetNextDlgTabItem(m_pPage->m_hWnd, stop, FALSE);
        if (stop == first)
            stop = nullptr;
    }
    if (stop == nullptr || TakesEnter(stop))
        stop = Item(m_bFinished ? IDCANCEL : IDOK);
    SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(stop), TRUE);
}

/// Where the system sends the dialog what belongs to a page, it goes there.
LRESULT CZoWizardSheet::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND control = message == WM_COMMAND ? reinterpret_cast<HWND>(lParam) : nullptr;
    if (control != nullptr && m_pPage != nullptr && ::GetParent(control) == m_pPage->m_hWnd)
        return m_pPage->SendMessage(message, wParam, lParam);
    const LRESULT result = CZoDialog::WindowProc(message, wParam, lParam);
    if (message == WM_NEXTDLGCTL)
        ShowDefaultButton(m_hWnd);
    return result;
}

void CZoWizardSheet::OnOK()
{
    if (m_bFinished)
        return OnCancel();
    if (m_bBusy)
        return;
    m_bBusy = TRUE;
    if (!WithoutThrowing([this] { Advance(); }))
        ::MessageBeep(MB_ICONEXCLAMATION); // no memory: the page stays
    EndWork();
    m_bBusy = FALSE;
}

void CZoWizardSheet::Advance()
{
    const BOOL wasLast = m_bLast; // as the button says
    for (INT_PTR i = wasLast ? (std::min)(m_nFloor, m_way.GetUpperBound()) : m_way.GetUpperBound(); i < m_way.GetSize();
         ++i) {
        auto* page = static_cast<CZoWizardPage*>(m_way[i]);
        CString reason;
        if (page->FindFault(reason) == 0)
            continue;
        if (page == m_pPage || ShowPage(page)) {
            m_way.SetSize(i + 1);
            ShowButtons();
            ShowFault();
        }
        return;
    }
    if (!m_pPage->OnNext())
        return;
    EndWork();
    if (m_hWnd == nullptr)
        return; // it went with its owner meanwhile
    CZoWizardPage* next = FindNext(m_pPage);
    if (next != nullptr) {
        m_way.Add(next);
        if (!ShowPage(next))
            m_way.SetSize(m_way.GetUpperBound());
        return;
    }
    if (!wasLast) {
        ShowButtons(); // what comes next was known only now; nobody has agreed to it yet
        return;
    }
    if (!OnFinish())
        return;
    EndWork();
    if (m_hWnd == nullptr)
        return;
    m_bFinished = TRUE;
    SendMessage(DM_SETDEFID, IDCANCEL);
    if (m_pResult == nullptr || !ShowPage(m_pResult))
        return EndDialog(IDOK);
    DiscardKeys();
}

void CZoWizardSheet::OnBack()
{
    const INT_PTR last = m_way.GetUpperBound();
    if (m_bBusy || m_bFinished || last <= m_nFloor)
        return;
    if (!WithoutThrowing([&] { return ShowPage(static_cast<CZoWizardPage*>(m_way[last - 1])); })) {
        ::MessageBeep(MB_ICONEXCLAMATION);
        return;
    }
    m_way.SetSize(last);
    ShowButtons();
}
