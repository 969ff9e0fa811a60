#include <zogbl/location_sheet.h>

#include <zogbl/location_wizard.h>

#include "frame/language/language_help.h"
#include "ground/box_filling.h"
#include "location_sheet_parts.h"

#include <algorithm>

static_assert(ZO_MOST_LOCATIONS == LocationSet::kMost);

namespace {

constexpr UINT kTellUnreadable = WM_APP + 1;

// Dialog units.
constexpr int kMargin = 7;
constexpr int kGap = 4;
constexpr int kListWidth = 124;
constexpr int kLabelHeight = 10; // with the gap to what it names
constexpr int kButtonHeight = 14;

} // namespace

BEGIN_MESSAGE_MAP(CLocSheet, CZoPropertySheet)
    ON_BN_CLICKED(ZO_IDC_LOC_NEW, OnNew)
    ON_BN_CLICKED(ZO_IDC_LOC_COPY, OnCopy)
    ON_BN_CLICKED(ZO_IDC_LOC_RENAME, OnRename)
    ON_BN_CLICKED(ZO_IDC_LOC_DELETE, OnDelete)
    ON_BN_CLICKED(ZO_IDC_LOC_MAKE_CURRENT, OnMakeCurrent)
    ON_LBN_SELCHANGE(ZO_IDC_LOC_LIST, OnSelected)
    ON_MESSAGE(kTellUnreadable, OnTellUnreadable)
END_MESSAGE_MAP()

// Life ----------------------------------------------------------------------------------------------------------------

CLocSheet::CLocSheet(CWnd* parent, UINT firstPage)
    : CZoPropertySheet(ZO_IDS_LOC_TITLE, parent, firstPage), m_parts(std::make_unique<Parts>())
{
    m_psh.dwFlags |= PSH_NOAPPLYNOW; // all is saved with OK
    for (LocationSheetPage& page : m_parts->pages)
        AddPage(&page);
}

CLocSheet::~CLocSheet() = default;

INT_PTR CLocSheet::DoModal()
{
    return ResultOr(-1, [this]() -> INT_PTR {
        m_nSelected = -1;
        m_parts->status = m_parts->set.Load();
        for (LocationSheetPage& page : m_parts->pages)
            page.GetForm().SetItem(nullptr);
        return CZoPropertySheet::DoModal();
    });
}

BOOL CLocSheet::OnInitDialog()
{
    CZoPropertySheet::OnInitDialog();
    if (!WithoutThrowing([this] { return CreateControls(); })) {
        EndDialog(-1);
        return TRUE;
    }
    SetTexts();
    FillList();
    const int current = m_parts->set.GetCurrent();
    Select(current >= 0 ? current : m_parts->set.GetCount() > 0 ? 0 : -1);
    if (m_parts->status != ERROR_SUCCESS)
        PostMessage(kTellUnreadable, m_parts->status); // once the sheet is seen
    return TRUE;
}

/// Makes room at the left, and puts list and buttons there; they come first in the order of Tab.
BOOL CLocSheet::CreateControls()
{
    CRect units(kMargin, kLabelHeight, kListWidth, kButtonHeight), gaps(kGap, kGap, 0, 0);
    MapDialogRect(&units);
    MapDialogRect(&gaps);
    const CRect tab = PlaceOf(TabControl());
    MakeRoomAtLeft(units.right + units.left);
    const int left = tab.left, right = left + units.right;
    const auto line = [&](int number) { // of buttons, from below
        return tab.bottom - units.bottom - number * (units.bottom + gaps.top);
    };
    const CRect label(left, tab.top, right, tab.top + units.top);
    const CRect list(left, label.bottom, right, line(2) - gaps.top);
    const auto half = (units.right - gaps.left) / 2;
    const CRect places[] = {{left, line(2), left + half, line(2) + units.bottom},
                            {right - half, line(2), right, line(2) + units.bottom},
                            {left, line(1), left + half, line(1) + units.bottom},
                            {right - half, line(1), right, line(1) + units.bottom},
                            {left, line(0), right, line(0) + units.bottom}};
    Parts& parts = *m_parts;
    if (!parts.label.Create("", WS_CHILD | WS_VISIBLE | SS_LEFT, label, this, ZO_IDC_LOC_LIST_LABEL) ||
        !parts.list.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL | WS_TABSTOP | LBS_NOTIFY |
                               LBS_NOINTEGRALHEIGHT,
                           list, this, ZO_IDC_LOC_LIST))
        return FALSE;
    for (int i = 0; i < static_cast<int>(std::size(places)); ++i) {
        if (!parts.buttons[i].Create("", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON, places[i], this,
                                     static_cast<UINT>(ZO_IDC_LOC_NEW + i)))
            return FALSE;
    }
    const auto bringToFront = [this](CWnd& control) {
        control.SetFont(GetFont());
        control.SetWindowPos(nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    };
    for (int i = static_cast<int>(std::size(places)) - 1; i >= 0; --i)
        bringToFront(parts.buttons[i]);
    bringToFront(parts.list);
    bringToFront(parts.label);
    CenterWindow();
    return TRUE;
}

void CLocSheet::SetTexts()
{
    WithoutThrowing([this] { // without memory the old ones stay
        m_parts->label.SetWindowText(LoadText(ZO_IDS_LOC_LIST));
        for (int i = 0; i < static_cast<int>(std::size(m_parts->buttons)); ++i)
            m_parts->buttons[i].SetWindowText(LoadText(static_cast<UINT>(ZO_IDS_LOC_NEW + i)));
    });
}

void CLocSheet::ReloadTexts()
{
    CZoPropertySheet::ReloadTexts();
    SetTexts();
    FillList();
}

LRESULT CLocSheet::OnTellUnreadable(WPARAM status, LPARAM)
{
    TellUser(this, ZO_IDS_LOC_TITLE,
             [=] { return LoadText(ZO_IDS_LOC_UNREADABLE, StatusText(static_cast<DWORD>(status))); });
    return 0;
}

// The list and the pages ----------------------------------------------------------------------------------------------

void CLocSheet::FillList()
{
    CListBox& list = m_parts->list;
    const LocationSet& set = m_parts->set;
    const int top = list.GetTopIndex();
    const DrawingPause pause(list.m_hWnd);
    list.ResetContent();
    for (int i = 0; i < set.GetCount(); ++i) {
        WithoutThrowing([&] {
            const CString& name = set.GetAt(i).m_csLocationName;
            list.InsertString(i, i == set.GetCurrent() ? LoadText(ZO_IDS_LOC_CURRENT, name) : name);
        });
    }
    list.SetCurSel(m_nSelected);
    list.SetTopIndex(top);
}

/// Shows a location in list and pages; -1: none. What the page has shown before is not taken.
void CLocSheet::Select(int position)
{
    m_nSelected = position;
    m_parts->list.SetCurSel(position);
    for (LocationSheetPage& page : m_parts->pages)
        page.GetForm().SetItem(position >= 0 ? &m_parts->set.GetAt(position) : nullptr);
    if (LocationSheetPage& page = m_parts->pages[(std::max)(GetActiveIndex(), 0)]; page.m_hWnd != nullptr)
        WithoutThrowing([&] { page.GetForm().Show(); });
    EnableButtons();
}

void CLocSheet::EnableButtons()
{
    const bool isAny = m_nSelected >= 0;
    for (CButton& button : m_parts->buttons) {
        const bool isUsable = button.GetDlgCtrlID() == ZO_IDC_LOC_NEW || isAny;
        if (!isUsable && ::GetFocus() == button.m_hWnd)
            SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(m_parts->buttons[0].m_hWnd), TRUE);
        button.EnableWindow(isUsable);
    }
}

/// \return FALSE if the page that is shown does not let itself be taken
BOOL CLocSheet::TakePage()
{
    const int page = GetActiveIndex();
    return page < 0 || m_parts->pages[page].Take();
}

void CLocSheet::OnSelected()
{
    const int chosen = m_parts->list.GetCurSel();
    if (chosen < 0 || chosen == m_nSelected)
        return;
    if (TakePage())
        Select(chosen);
    else
        m_parts->list.SetCurSel(m_nSelected);
}

// Saving --------------------------------------------------------------------------------------------------------------

/// \return FALSE: the sheet stays, and the user has been told why
BOOL CLocSheet::Save()
{
    if (!TakePage())
        return FALSE;
    int failed = -1;
    DWORD status = 0;
    {
        const CWaitCursor wait;
        status = m_parts->set.Save(failed);
    }
    if (status == ERROR_SUCCESS)
        return TRUE;
    if (failed >= 0)
        Select(failed);
    TellUser(this, ZO_IDS_LOC_TITLE, [&] {
        return failed >= 0
                   ? LoadText(ZO_IDS_LOC_NOT_SAVED, m_parts->set.GetAt(failed).m_csLocationName, StatusText(status))
                   : LoadText(ZO_IDS_LOC_NONE_SAVED, StatusText(status));
    });
    return FALSE;
}

BOOL CLocSheet::OnCommand(WPARAM wParam, LPARAM lParam)
{
    if (LOWORD(wParam) == IDOK && HIWORD(wParam) == BN_CLICKED && m_parts->list.m_hWnd != nullptr && !Save())
        return TRUE;
    return CZoPropertySheet::OnCommand(wParam, lParam);
}

INT_PTR EditLocationItems(CWnd* parent)
{
    const LanguageHelp help;
    return ResultOr(-1, [&]() -> INT_PTR {
        bool isNew = false;
        {
            LocationSet set;
            isNew = set.Load() == ERROR_SUCCESS && set.GetCount() == 0;
        }
        if (isNew)
            return CLocWizard(parent).DoModal();
        return CLocSheet(parent).DoModal();
    });
}
