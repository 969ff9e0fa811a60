#include <zogbl/options_sheet.h>

#include <common/without_throwing.h>
#include <zogbl/gdi_data.h>
#include <zogbl/language_support.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/dialog_resource.h"
#include "dialogs/base/window_layout.h"
#include "ground/number_record.h"
#include "resources/user_settings.h"

namespace {

constexpr LPCSTR kSection = "Pages";
constexpr LPCSTR kMark = "ZoPage1"; // the number of the page's template
constexpr int kMostTemplate = 0xFFFF;

// Dialog units.
constexpr int kMargin = 7;
constexpr int kGap = 4;
constexpr int kTreeWidth = 100;
constexpr int kTextHeight = 8;
constexpr int kLabelHeight = kTextHeight + 2; // with the gap to what it names
constexpr int kFieldHeight = 14;
constexpr int kButtonWidth = 60;
constexpr int kHeadingHeight = 14; // with the line below it
constexpr int kStatusLines = 3;

} // namespace

BEGIN_MESSAGE_MAP(CZoOptionsSheet, CZoPropertySheet)
    ON_EN_CHANGE(ZO_IDC_OPTIONS_SEARCH, OnSearch)
    ON_MESSAGE(kFollow, OnFollow)
END_MESSAGE_MAP()

// Life ----------------------------------------------------------------------------------------------------------------

CZoOptionsSheet::CZoOptionsSheet(UINT titleId, CWnd* parent, LPCSTR name, UINT firstPage)
    : CZoPropertySheet(titleId, parent, firstPage)
{
    Prepare(name);
}

CZoOptionsSheet::CZoOptionsSheet(LPCSTR title, CWnd* parent, LPCSTR name, UINT firstPage)
    : CZoPropertySheet(title, parent, firstPage)
{
    Prepare(name);
}

CZoOptionsSheet::~CZoOptionsSheet() = default;

void CZoOptionsSheet::Prepare(LPCSTR name)
{
    m_pszName = name;
    EnableStackedTabs(FALSE); // which nobody sees
}

void CZoOptionsSheet::AddPage(CZoPropertyPage* page, CZoPropertyPage* parent)
{
    const int index = GetPageCount(); // the same once more, if memory has run out in between
    const bool isAbove = parent != nullptr && GetPageIndex(parent) >= 0;
    m_items.SetAtGrow(index, nullptr);
    m_parents.SetAtGrow(index, isAbove ? parent : nullptr);
    CZoPropertySheet::AddPage(page);
}

UINT CZoOptionsSheet::FindLastPage() const
{
    return ResultOr(0U, [this]() -> UINT {
        CString text;
        if (m_pszName == nullptr || !ReadSetting(kSection, m_pszName, text))
            return 0;
        NumberRecordReader record(text, kMark);
        const int number = record.Next(kMostTemplate);
        if (!record.IsWhole())
            return 0;
        for (int i = 0; i < GetPageCount(); ++i) {
            if (TemplateOf(*GetPage(i)) == static_cast<UINT>(number))
                return static_cast<UINT>(i);
        }
        return 0;
    });
}

/// If it cannot be kept, the first page opens next time.
void CZoOptionsSheet::KeepLastPage() const
{
    if (m_pszName == nullptr || m_nShown < 0)
        return;
    WithoutThrowing([this] {
        NumberRecordWriter record(kMark);
        record.Add(static_cast<int>(TemplateOf(*GetPage(m_nShown))));
        KeepSetting(kSection, m_pszName, record.Finish());
    });
}

INT_PTR CZoOptionsSheet::DoModal()
{
    const UINT first = m_psh.nStartPage;
    if (first == LAST_PAGE)
        m_psh.nStartPage = FindLastPage();
    m_nShown = -1;
    const INT_PTR result = CZoPropertySheet::DoModal();
    m_psh.nStartPage = first;
    return result;
}

// The window ----------------------------------------------------------------------------------------------------------

BOOL CZoOptionsSheet::OnInitDialog()
{
    CZoPropertySheet::OnInitDialog();
    if (!WithoutThrowing([this] { return CreateControls(); })) {
        EndDialog(-1);
        return TRUE;
    }
    SetTexts();
    Fill();
    // Behind the system's own choice: the tree has the focus until the person goes into the page.
    PostMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(m_tree.m_hWnd), TRUE);
    return TRUE;
}

/// Puts the search and the tree at the left, the heading above the pages in place of the tabs, the explanations below.
BOOL CZoOptionsSheet::CreateControls()
{
    const auto unitsX = [this](int units) {
        CRect area(0, 0, units, 0);
        MapDialogRect(area);
        return area.Width();
    };
    const auto unitsY = [this](int units) {
        CRect area(0, 0, 0, units);
        MapDialogRect(area);
        return area.Height();
    };
    const HWND tab = TabControl();
    CRect pages = PlaceOf(tab);
    const CPoint corner = pages.TopLeft();
    const int wider = unitsX(kTreeWidth + kMargin);
    CRect page(0, 0, pages.Width(), pages.Height());
    ::SendMessageA(tab, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&page));
    MakeRoomAtLeft(wider);
    pages.OffsetRect(wider, 0);
    pages.top += unitsY(kHeadingHeight);
    pages.bottom = pages.top + page.Height();

    const CRect column(corner.x, corner.y, corner.x + unitsX(kTreeWidth), pages.bottom);
    int top = column.top;
    const auto below = [&](int height) {
        const CRect area(column.left, top, column.right, top + unitsY(height));
        top = area.bottom;
        return area;
    };
    const CRect searchLabel = below(kLabelHeight), search = below(kFieldHeight);
    below(kGap);
    const CRect pagesLabel = below(kLabelHeight), tree(column.left, top, column.right, column.bottom);
    const int lineTop = pages.top - unitsY(2);
    const CRect heading(pages.left, corner.y, pages.right, corner.y + unitsY(kTextHeight + 2));
    const CRect line(pages.left, lineTop, pages.right, lineTop + 2);
    const DWORD kShown = WS_CHILD | WS_VISIBLE;
    if (!m_searchLabel.Create("", kShown | SS_LEFT, searchLabel, this, ZO_IDC_OPTIONS_SEARCH_LABEL) ||
        !m_search.CreateEx(WS_EX_CLIENTEDGE, "Edit", "", kShown | WS_TABSTOP | ES_AUTOHSCROLL, search, this,
                           ZO_IDC_OPTIONS_SEARCH) ||
        !m_pagesLabel.Create("", kShown | SS_LEFT, pagesLabel, this, ZO_IDC_OPTIONS_PAGES_LABEL) ||
        !m_tree.Create(kShown | WS_TABSTOP | WS_BORDER | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT |
                           TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP,
                       tree, this, ZO_IDC_OPTIONS_PAGES) ||
        !m_heading.Create("", kShown | SS_LEFT | SS_NOPREFIX, heading, this, ZO_IDC_OPTIONS_HEADING) ||
        !m_line.Create("", kShown | SS_ETCHEDHORZ, line, this, ZO_IDC_OPTIONS_LINE) ||
        !m_status.Create(WS_VISIBLE, CRect(), this, ZO_IDC_OPTIONS_STATUS))
        return FALSE;
    CWnd* const controls[] = {&m_line, &m_heading, &m_tree, &m_pagesLabel, &m_search, &m_searchLabel};
    for (CWnd* control : controls) {
        control->SetFont(GetFont());
        control->SetWindowPos(nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE); // to the front
    }
    m_status.SetFont(GetFont());
    if (CZoGlobalGDIData::GetBoldFont() != nullptr)
        m_heading.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(CZoGlobalGDIData::GetBoldFont()), FALSE);

    const int statusTop = pages.bottom + unitsY(kGap);
    m_status.SetWindowPos(nullptr, column.left, statusTop, pages.right - column.left,
                          m_status.GetBestHeight(kStatusLines), SWP_NOZORDER | SWP_NOACTIVATE);
    const CRect status = PlaceOf(m_status.m_hWnd);
    const CRect button = PlaceOf(::GetDlgItem(m_hWnd, IDOK));
    const int lower = status.bottom + unitsY(kMargin) - button.top;
    int right = pages.right;
    for (const int id : {IDHELP, ID_APPLY_NOW, IDCANCEL, IDOK}) { // wider than the system's: they speak five languages
        const HWND window = ::GetDlgItem(m_hWnd, id);
        const CRect area(right - unitsX(kButtonWidth), button.top + lower, right, button.bottom + lower);
        if (window == nullptr || (::GetWindowLongA(window, GWL_STYLE) & WS_VISIBLE) == 0)
            continue;
        ::SetWindowPos(window, nullptr, area.left, area.top, area.Width(), area.Height(),
                       SWP_NOZORDER | SWP_NOACTIVATE);
        right = area.left - unitsX(kGap);
    }
    ::ShowWindow(tab, SW_HIDE);
    ::MoveWindow(tab, pages.left, pages.top, pages.Width(), pages.Height(), FALSE);

    CRect client;
    GetClientRect(&client);
    client.bottom += lower;
    ModifyStyle(DS_MODALFRAME, WS_THICKFRAME);
    ModifyStyleEx(WS_EX_DLGMODALFRAME, 0);
    ::GetSystemMenu(m_hWnd, TRUE); // has the command for the size again
    ::AdjustWindowRectEx(&client, GetStyle(), FALSE, GetExStyle());
    SetWindowPos(nullptr, 0, 0, client.Width(), client.Height(),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);

    using F = ZoFollowing;
    const ZoFollowing kFollowing[] = {{ZO_IDC_OPTIONS_PAGES, F::kHeighten},
                                      {ZO_IDC_OPTIONS_HEADING, F::kWiden},
                                      {ZO_IDC_OPTIONS_LINE, F::kWiden},
                                      {::GetDlgCtrlID(tab), F::kWiden | F::kHeighten},
                                      {ZO_IDC_OPTIONS_STATUS, F::kWiden | F::kMoveDown},
                                      {IDOK, F::kMoveRight | F::kMoveDown},
                                      {IDCANCEL, F::kMoveRight | F::kMoveDown},
                                      {ID_APPLY_NOW, F::kMoveRight | F::kMoveDown},
                                      {IDHELP, F::kMoveRight | F::kMoveDown}};
    m_layout = std::make_unique<WindowLayout>(*this, kFollowing, static_cast<int>(std::size(kFollowing)), m_pszName);
    m_layout->Restore();
    LayOut();
    CenterWindow();
    return TRUE;
}

/// The pages stand where the hidden tabs do, behind the line in the order of Tab.
void CZoOptionsSheet::LayOut() { SetPagePlace(PlaceOf(TabControl()), m_line.m_hWnd); }

void CZoOptionsSheet::SetTexts()
{
    WithoutThrowing([this] { m_searchLabel.SetWindowText(LoadText(ZO_IDS_OPTIONS_SEARCH)); });
}

void CZoOptionsSheet::ReloadTexts()
{
    CZoPropertySheet::ReloadTexts();
    SetTexts();
    Fill();
    if (m_nShown >= 0)
        OnPageShown(GetPage(m_nShown)); // its heading
    m_status.SendMessage(CZoLanguageSupport::GetUpdateMessage());
}

LRESULT CZoOptionsSheet::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_DESTROY && m_layout != nullptr) {
        m_layout->Keep(); // it opens in another size next time, if that fails
        m_layout.reset();
        KeepLastPage();
        SetPagePlace(CRect(), nullptr);
    }
    const LRESULT result = CZoPropertySheet::WindowProc(message, wParam, lParam);
    if (m_layout != nullptr && message == WM_SIZE) {
        m_layout->OnSize();
        LayOut();
    } else if (m_layout != nullptr && message == WM_GETMINMAXINFO) {
        m_layout->OnGetMinMaxInfo(*reinterpret_cast<MINMAXINFO*>(lParam));
    }
    return result;
}
