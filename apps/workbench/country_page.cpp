#include "country_page.h"

#include <zogbl/country_code.h>
#include <zogbl/module.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include <algorithm>
#include <utility>

namespace {

constexpr UINT kListId = 100;
constexpr int kMargin = 8;
constexpr COLORREF kFlagBackground = RGB(255, 0, 255);

} // namespace

CString CodeText(const CZoCountryCode& country)
{
    CString text;
    if (country.GetDialingPrefix() != 0)
        text.Format("%u+%u", country.GetDialingPrefix(), country.GetCountryCode());
    else
        text.Format("%u", country.GetCountryCode());
    return text;
}

// The list box ---------------------------------------------------------------------------------------------------------

CountryListBox::CountryListBox() = default;

CountryListBox::~CountryListBox()
{
    if (m_flags != nullptr)
        ::DeleteObject(m_flags);
}

void CountryListBox::ReloadFlags()
{
    const LPCSTR name = MAKEINTRESOURCE(ZO_IDB_FLAGS);
    const HBITMAP flags = ::LoadBitmap(ZoGblFindResourceModule(name, RT_BITMAP), name);
    BITMAP bitmap = {};
    if (flags == nullptr || ::GetObject(flags, sizeof bitmap, &bitmap) == 0)
        return;
    if (const HBITMAP previous = std::exchange(m_flags, flags))
        ::DeleteObject(previous);
    m_cell = {bitmap.bmWidth / ZO_FLAG_COLUMNS, bitmap.bmHeight / ZO_FLAG_ROWS};
}

CountryListBox::Columns CountryListBox::GetColumns(int width) const
{
    const int end = width - kMargin;
    return {static_cast<int>(m_cell.cx) + 2 * kMargin, end - 200, end - 100, end};
}

void CountryListBox::MeasureItem(MEASUREITEMSTRUCT* item)
{
    item->itemHeight = static_cast<UINT>((std::max<int>)(m_cell.cy, LineHeight()) + 4);
}

int CountryListBox::CompareItem(COMPAREITEMSTRUCT* items)
{
    const auto name = [](ULONG_PTR data) -> LPCSTR { return reinterpret_cast<const CZoCountryCode*>(data)->GetName(); };
    return std::clamp(::lstrcmpi(name(items->itemData1), name(items->itemData2)), -1, 1); // by the user's language
}

void CountryListBox::DrawItem(DRAWITEMSTRUCT* item)
{
    const HDC dc = item->hDC;
    const bool selected = (item->itemState & ODS_SELECTED) != 0;
    ::FillRect(dc, &item->rcItem, ::GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    if (item->itemID != static_cast<UINT>(-1)) {
        const auto& country = *reinterpret_cast<const CZoCountryCode*>(item->itemData);
        DrawFlag(dc, item->rcItem, country);

        const HGDIOBJ oldFont = ::SelectObject(dc, ControlFont());
        const COLORREF oldColor = ::SetTextColor(dc, ::GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
        const int oldMode = ::SetBkMode(dc, TRANSPARENT);
        const Columns columns = GetColumns(item->rcItem.right - item->rcItem.left);
        const auto draw = [&](int left, int right, const CString& text, UINT alignment) {
            RECT place = {item->rcItem.left + left, item->rcItem.top, item->rcItem.left + right, item->rcItem.bottom};
            ::DrawText(dc, text, -1, &place, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS | alignment);
        };
        CString prefix;
        prefix.Format("%u", country.GetDialingPrefix());
        draw(columns.name, columns.prefix - kMargin, country.GetName(), DT_LEFT);
        draw(columns.prefix, columns.code - kMargin, prefix, DT_RIGHT);
        draw(columns.code, columns.end, CodeText(country), DT_RIGHT);
        ::SetBkMode(dc, oldMode);
        ::SetTextColor(dc, oldColor);
        ::SelectObject(dc, oldFont);
    }
    if ((item->itemState & ODS_FOCUS) != 0)
        ::DrawFocusRect(dc, &item->rcItem);
}

void CountryListBox::DrawFlag(HDC dc, const RECT& row, const CZoCountryCode& country) const
{
    if (m_flags == nullptr)
        return;
    const HDC source = ::CreateCompatibleDC(dc);
    const HGDIOBJ old = ::SelectObject(source, m_flags);
    const int column = static_cast<int>(country.GetFlagIndex() % ZO_FLAG_COLUMNS);
    const int line = static_cast<int>(country.GetFlagIndex() / ZO_FLAG_COLUMNS);
    ::TransparentBlt(dc, row.left + kMargin, (row.top + row.bottom - m_cell.cy) / 2, m_cell.cx, m_cell.cy, source,
                     column * m_cell.cx, line * m_cell.cy, m_cell.cx, m_cell.cy, kFlagBackground);
    ::SelectObject(source, old);
    ::DeleteDC(source);
}

// The page -------------------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CountryPage, Page)
    ON_WM_PAINT()
    ON_WM_SETFOCUS()
END_MESSAGE_MAP()

UINT CountryPage::GetTitleId() const { return ZO_IDS_PAGE_COUNTRIES; }
UINT CountryPage::GetCommandId() const { return ZO_ID_VIEW_COUNTRIES; }

void CountryPage::CreateControls()
{
    m_list.ReloadFlags();
    m_list.Create(WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | WS_BORDER | LBS_OWNERDRAWFIXED | LBS_SORT | LBS_NOTIFY |
                      LBS_NOINTEGRALHEIGHT,
                  CRect(0, 0, 0, 0), this, kListId);
}

void CountryPage::Reload()
{
    m_list.ReloadFlags();
    if (CZoCountryCodeList* countries = GetGlobalCountryList())
        countries->AddToListBox(&m_list);
    Invalidate();
}

void CountryPage::Layout(int width, int height)
{
    const int header = LineHeight() + kMargin;
    m_list.MoveWindow(0, header, width, height - header);
    Invalidate();
}

void CountryPage::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    CRect rows;
    m_list.GetClientRect(&rows);
    const CountryListBox::Columns columns = m_list.GetColumns(rows.Width());
    const HGDIOBJ oldFont = dc.SelectObject(ControlFont());
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(::GetSysColor(COLOR_BTNTEXT));
    const auto draw = [&](int left, int right, UINT id, UINT alignment) {
        CRect place(left, 0, right, LineHeight() + kMargin);
        dc.DrawText(Text(id), -1, &place, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | alignment);
    };
    draw(columns.name + 1, columns.prefix, ZO_IDS_COLUMN_COUNTRY, DT_LEFT);
    draw(columns.prefix, columns.code - kMargin + 1, ZO_IDS_COLUMN_PREFIX, DT_RIGHT);
    draw(columns.code, columns.end + 1, ZO_IDS_COLUMN_CODE, DT_RIGHT);
    dc.SelectObject(oldFont);
}

void CountryPage::OnSetFocus(CWnd*) { m_list.SetFocus(); }
