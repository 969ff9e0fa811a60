#include <zogbl/tool_bar_setup.h>

#include <common/without_throwing.h>
#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/resource_ids.h>
#include <zogbl/tool_bar.h>

#include "controls/drawing/list_rows.h"
#include "dialogs/base/dialog_resource.h"
#include "dialogs/base/tell_user.h"
#include "drag_list.h"
#include "tool_bar_content.h"
#include "tool_bar_pictures.h"
#include "tool_bar_strip.h"

#include <algorithm>

namespace {

constexpr int kAround = 4; // pixels above and below a picture or a text together, and beside each
constexpr int kMarkHeight = 2;
constexpr int kEnd = INT_MAX;

UINT DataOf(const CListBox& list, int row) { return static_cast<UINT>(list.GetItemData(row)); }

} // namespace

/// The lists of the open dialog, and the choice that they show.
class CZoToolBarSetup::Lists : private DragList::Client {
public:
    Lists(CZoToolBarSetup& dialog, const ToolBarContent& present)
        : available(*this), shown(*this), content(present), m_dialog(dialog)
    {
    }

    DragList available;
    DragList shown;
    ToolBarContent content;

private:
    static bool IsOver(const DragList& list, CPoint point)
    {
        CRect area;
        list.GetWindowRect(&area);
        return area.PtInRect(point) != FALSE;
    }
    /// Over the first or last row, the list moves on.
    void Scroll(CPoint point)
    {
        CRect area;
        shown.GetWindowRect(&area);
        const int height = shown.GetItemHeight(0);
        const int top = shown.GetTopIndex();
        if (point.y < area.top + height / 2 && top > 0)
            shown.SetTopIndex(top - 1);
        else if (point.y > area.bottom - height / 2)
            shown.SetTopIndex(top + 1);
    }
    void OnDragOver(DragList& from, CPoint point) override
    {
        const bool isOverShown = IsOver(shown, point);
        if (isOverShown)
            Scroll(point);
        shown.Mark(isOverShown ? shown.GetPlaceAt(point) : -1);
        const bool isTaken = isOverShown || (&from == &shown && IsOver(available, point));
        ::SetCursor(::LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(isTaken ? IDC_ARROW : IDC_NO)));
    }
    void OnDragEnded() override { shown.Mark(-1); }
    void OnDrop(DragList& from, int row, CPoint point) override
    {
        WithoutThrowing([&] {
            const bool isOverShown = IsOver(shown, point);
            if (isOverShown && &from == &shown)
                m_dialog.Move(row, shown.GetPlaceAt(point));
            else if (isOverShown)
                m_dialog.Add(row, shown.GetPlaceAt(point));
            else if (&from == &shown && IsOver(available, point))
                m_dialog.Remove(row);
        });
    }

    CZoToolBarSetup& m_dialog;
};

BEGIN_MESSAGE_MAP(CZoToolBarSetup, CZoDialog)
    ON_WM_DRAWITEM()
    ON_LBN_SELCHANGE(ZO_IDC_TOOL_BAR_AVAILABLE, OnSelected)
    ON_LBN_SELCHANGE(ZO_IDC_TOOL_BAR_SHOWN, OnSelected)
    ON_LBN_DBLCLK(ZO_IDC_TOOL_BAR_AVAILABLE, OnAdd)
    ON_LBN_DBLCLK(ZO_IDC_TOOL_BAR_SHOWN, OnRemove)
    ON_BN_CLICKED(ZO_IDC_TOOL_BAR_ADD, OnAdd)
    ON_BN_CLICKED(ZO_IDC_TOOL_BAR_REMOVE, OnRemove)
    ON_BN_CLICKED(ZO_IDC_TOOL_BAR_UP, OnUp)
    ON_BN_CLICKED(ZO_IDC_TOOL_BAR_DOWN, OnDown)
    ON_BN_CLICKED(ZO_IDC_TOOL_BAR_RESET, OnReset)
END_MESSAGE_MAP()

CZoToolBarSetup::CZoToolBarSetup(CZoToolBar& bar, CWnd* parent) : CZoDialog(ZO_IDD_TOOL_BAR_SETUP, parent), m_bar(bar)
{
}

CZoToolBarSetup::~CZoToolBarSetup() = default;

INT_PTR CZoToolBarSetup::DoModal()
{
    if (m_bar.m_content == nullptr || m_bar.m_content->GetCount() == 0 ||
        !WithoutThrowing([this] { m_lists = std::make_unique<Lists>(*this, *m_bar.m_content); }))
        return -1;
    const INT_PTR result = CZoDialog::DoModal();
    m_lists.reset();
    return result;
}

BOOL CZoToolBarSetup::OnInitDialog()
{
    CZoDialog::OnInitDialog();
    if (!m_lists->available.SubclassDlgItem(ZO_IDC_TOOL_BAR_AVAILABLE, this) ||
        !m_lists->shown.SubclassDlgItem(ZO_IDC_TOOL_BAR_SHOWN, this)) {
        EndDialog(-1);
        return TRUE;
    }
    const WindowFontDC dc(m_lists->shown);
    const int height =
        (std::max<int>)(m_bar.m_pictures->GetSize().cy, dc.GetLineHeight()) + CZoGlobalGDIData::Scale(kAround);
    m_lists->available.SetItemHeight(0, static_cast<UINT>(height));
    m_lists->shown.SetItemHeight(0, static_cast<UINT>(height));
    ShowState();
    Fill(0, 0);
    CenterWindow();
    return TRUE;
}

// The lists -----------------------------------------------------------------------------------------------------------

/// Shows the choice anew. \param available, shown rows to be selected; the last one if there are fewer
void CZoToolBarSetup::Fill(int available, int shown)
{
    WithoutThrowing([&] {
        const CString separator = LoadText(ZO_IDS_TOOL_BAR_SEPARATOR);
        const ToolBarContent& content = m_lists->content;
        const int picture = m_bar.m_pictures->GetSize().cx + 3 * CZoGlobalGDIData::Scale(kAround);
        const auto add = [&](DragList& list, ListFilling& filling, UINT command) {
            const int row = filling.GetCount();
            filling.Add(command != 0 ? ToolName(command) : separator, picture);
            if (filling.GetCount() > row)
                list.SetItemData(row, command);
        };
        {
            ListFilling filling(m_lists->available);
            add(m_lists->available, filling, 0);
            for (int i = 0; i < content.GetCount(); ++i) {
                const UINT command = content.GetButton(i).command;
                if (command != 0 && !content.IsShown(command))
                    add(m_lists->available, filling, command);
            }
        }
        ListFilling filling(m_lists->shown);
        for (const int row : content.GetRows())
            add(m_lists->shown, filling, static_cast<UINT>(content.shown[row]));
    });
    m_lists->available.SetCurSel((std::min)(available, m_lists->available.GetCount() - 1));
    m_lists->shown.SetCurSel((std::min)(shown, m_lists->shown.GetCount() - 1));
    OnSelected();
}

/// What is not in the lists.
void CZoToolBarSetup::ShowState()
{
    const ToolBarContent& content = m_lists->content;
    CheckRadioButton(ZO_IDC_TOOL_BAR_TOP, ZO_IDC_TOOL_BAR_BOTTOM,
                     content.isAtBottom ? ZO_IDC_TOOL_BAR_BOTTOM : ZO_IDC_TOOL_BAR_TOP);
    CheckDlgButton(ZO_IDC_TOOL_BAR_LOCKED, content.isLocked);
}

/// A button that had the focus gives it to the list that it works on.
void CZoToolBarSetup::Enable(int button, BOOL isEnabled)
{
    const HWND window = ::GetDlgItem(m_hWnd, button);
    if (!isEnabled && ::GetFocus() == window) {
        DragList& list = m_lists->shown.GetCount() > 0 ? m_lists->shown : m_lists->available;
        SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(list.m_hWnd), TRUE);
    }
    ::EnableWindow(window, isEnabled);
}

void CZoToolBarSetup::OnSelected()
{
    const int row = m_lists->shown.GetCurSel();
    Enable(ZO_IDC_TOOL_BAR_ADD, m_lists->available.GetCurSel() >= 0 && !m_lists->content.IsFull());
    Enable(ZO_IDC_TOOL_BAR_REMOVE, row >= 0);
    Enable(ZO_IDC_TOOL_BAR_UP, row > 0);
    Enable(ZO_IDC_TOOL_BAR_DOWN, row >= 0 && row < m_lists->shown.GetCount() - 1);
}

void CZoToolBarSetup::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    Fill(m_lists->available.GetCurSel(), m_lists->shown.GetCurSel());
}

void CZoToolBarSetup::OnDrawItem(int, DRAWITEMSTRUCT* item)
{
    if (m_lists == nullptr)
        return;
    const bool isShown = item->hwndItem == m_lists->shown.m_hWnd;
    const DragList& list = isShown ? m_lists->shown : m_lists->available;
    const int row = static_cast<int>(item->itemID);
    CDC* dc = CDC::FromHandle(item->hDC);
    CRect area = item->rcItem;
    const ItemColors colors = ColorsOf(*item);
    const SelectedColors selected(*dc, colors);
    dc->FillSolidRect(area, colors.background);
    const int around = CZoGlobalGDIData::Scale(kAround);
    const CSize size = m_bar.m_pictures->GetSize();
    const int button = row >= 0 ? m_lists->content.Find(DataOf(list, row)) : -1; // -1: the list is empty
    CRect place(area.left + around, area.top, area.left + around + size.cx, area.bottom);
    if (button >= 0)
        m_bar.m_pictures->Draw(dc, place, m_lists->content.GetButton(button).picture, true,
                               (item->itemState & ODS_SELECTED) != 0 ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
    place = CRect(place.right + around, area.top, area.right, area.bottom);
    WithoutThrowing(
        [&] { ZoDrawShortenedText(*dc, place, RowText(list, row), DT_LEFT | DT_VCENTER, ZoShorten::kEnd); });
    if ((item->itemState & ODS_FOCUS) != 0)
        ZoDrawFocus(*dc, area);
    const int mark = list.GetMark();
    if (mark >= 0 && mark == row)
        dc->FillSolidRect(area.left, area.top, area.Width(), kMarkHeight, ::GetSysColor(COLOR_WINDOWTEXT));
    else if (mark == row + 1 && mark == list.GetCount())
        dc->FillSolidRect(area.left, area.bottom - kMarkHeight, area.Width(), kMarkHeight,
                          ::GetSysColor(COLOR_WINDOWTEXT));
}

// What the user does --------------------------------------------------------------------------------------------------

/// \param row of the available ones \param before a row of the shown ones; kEnd: behind them all
void CZoToolBarSetup::Add(int row, int before)
{
    ToolBarContent& content = m_lists->content;
    if (row < 0 || row >= m_lists->available.GetCount() || content.IsFull())
        return;
    const int command = static_cast<int>(DataOf(m_lists->available, row));
    const std::vector<int> rows = content.GetRows();
    const int place = (std::min)(before, static_cast<int>(rows.size()));
    const auto at = place < static_cast<int>(rows.size()) ? content.shown.begin() + rows[place] : content.shown.end();
    content.shown.insert(at, command);
    Fill(row, place);
}

void CZoToolBarSetup::Remove(int row)
{
    ToolBarContent& content = m_lists->content;
    const std::vector<int> rows = content.GetRows();
    if (row < 0 || row >= static_cast<int>(rows.size()))
        return;
    const UINT command = DataOf(m_lists->shown, row);
    content.shown.erase(content.shown.begin() + rows[row]);
    int available = 0; // where it is now
    for (int i = 0; command != 0 && i <= content.Find(command); ++i)
        available += content.GetButton(i).command != 0 && !content.IsShown(content.GetButton(i).command);
    Fill(available, row);
}

/// \param before a row, or the number of rows: behind them all
void CZoToolBarSetup::Move(int row, int before)
{
    ToolBarContent& content = m_lists->content;
    const std::vector<int> rows = content.GetRows();
    const int count = static_cast<int>(rows.size());
    if (row < 0 || row >= count || before < 0 || before > count || before == row || before == row + 1)
        return;
    const auto begin = content.shown.begin();
    const auto from = begin + rows[row];
    if (before > row)
        std::rotate(from, from + 1, begin + rows[before - 1] + 1);
    else
        std::rotate(begin + rows[before], from, from + 1);
    Fill(m_lists->available.GetCurSel(), before > row ? before - 1 : before);
}

void CZoToolBarSetup::OnAdd()
{
    const int row = m_lists->shown.GetCurSel();
    WithoutThrowing([&] { Add(m_lists->available.GetCurSel(), row >= 0 ? row + 1 : kEnd); });
}

void CZoToolBarSetup::OnRemove()
{
    WithoutThrowing([this] { Remove(m_lists->shown.GetCurSel()); });
}

void CZoToolBarSetup::OnUp()
{
    WithoutThrowing([this] { Move(m_lists->shown.GetCurSel(), m_lists->shown.GetCurSel() - 1); });
}

void CZoToolBarSetup::OnDown()
{
    WithoutThrowing([this] { Move(m_lists->shown.GetCurSel(), m_lists->shown.GetCurSel() + 2); });
}

void CZoToolBarSetup::OnReset()
{
    if (!WithoutThrowing([this] { m_lists->content.Ship(); }))
        return;
    ShowState();
    Fill(0, 0);
}

void CZoToolBarSetup::OnOK()
{
    ToolBarContent& content = m_lists->content;
    content.isAtBottom = IsDlgButtonChecked(ZO_IDC_TOOL_BAR_BOTTOM) != 0;
    content.isLocked = IsDlgButtonChecked(ZO_IDC_TOOL_BAR_LOCKED) != 0;
    if (!WithoutThrowing([this] { m_bar.Take(m_lists->content); }))
        return; // no memory: the choice is still there
    if (m_bar.Keep() != ERROR_SUCCESS)
        TellUser(this, 0, ZO_IDS_TOOL_BAR_NOT_KEPT);
    EndDialog(IDOK);
}
