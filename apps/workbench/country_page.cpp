#include "country_page.h"

#include <zogbl/country_code.h>
#include <zogbl/module.h>
#include <zogbl/resource_ids.h>

#include <algorithm>

namespace {

constexpr UINT kListId = 100;
constexpr int kMargin = 8;
constexpr UINT kPickerId = 101;
constexpr UINT kLocalesId = 102;
constexpr UINT kLocaleNamesId = 103;
constexpr int kNameWidth = 300; // of the widest country names
constexpr int kDropHeight = 300;
constexpr UINT kTextModes[] = {ZO_IDS_LOCALE_NATIVE_LANGUAGE, ZO_IDS_LOCALE_LANGUAGE, ZO_IDS_LOCALE_ENGLISH_LANGUAGE,
                               ZO_IDS_LOCALE_NATIVE_COUNTRY,  ZO_IDS_LOCALE_COUNTRY,  ZO_IDS_LOCALE_ENGLISH_COUNTRY};

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

CountryListBox::Columns CountryListBox::GetColumns(int width) const
{
    const int name = static_cast<int>(m_flags.GetCellSize().cx) + 2 * kMargin;
    const int end = (std::min)(width - kMargin, name + kNameWidth + 132);
    return {name, end - 132, end - 72, end};
}

void CountryListBox::Fill()
{
    LoadFlags();
    const int before = GetCurSel();
    const void* chosen = before >= 0 ? GetItemDataPtr(before) : nullptr;
    CZoCountryCodeList* countries = GetGlobalCountryList();
    if (countries == nullptr)
        return;
    countries->AddToListBox(this);
    for (int i = 0; i < GetCount(); ++i) {
        if (GetItemDataPtr(i) == chosen)
            SetCurSel(i);
    }
}

void CountryListBox::MeasureItem(MEASUREITEMSTRUCT* item)
{
    item->itemHeight = static_cast<UINT>((std::max<int>)(m_flags.GetCellSize().cy, LineHeight()) + 4);
}

int CountryListBox::CompareItem(COMPAREITEMSTRUCT* items)
{
    const auto name = [](ULONG_PTR data) -> LPCSTR { return reinterpret_cast<const CZoCountryCode*>(data)->GetName(); };
    return CZoFlagBox::CompareNames(name(items->itemData1), name(items->itemData2));
}

void CountryListBox::DrawItem(DRAWITEMSTRUCT* item)
{
    const HDC dc = item->hDC;
    const bool selected = (item->itemState & ODS_SELECTED) != 0;
    ::FillRect(dc, &item->rcItem, ::GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    if (item->itemID != static_cast<UINT>(-1)) {
        const auto& country = *reinterpret_cast<const CZoCountryCode*>(item->itemData);
        const int flagTop = (item->rcItem.top + item->rcItem.bottom - m_flags.GetCellSize().cy) / 2;
        m_flags.Draw(dc, item->rcItem.left + kMargin, flagTop, country.GetFlagIndex());

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

// The page -------------------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CountryPage, Page)
    ON_WM_PAINT()
    ON_WM_SETFOCUS()
    ON_CBN_SELCHANGE(kLocaleNamesId, OnLocaleNames)
END_MESSAGE_MAP()

UINT CountryPage::GetTitleId() const { return ZO_IDS_PAGE_COUNTRIES; }
UINT CountryPage::GetCommandId() const { return ZO_ID_VIEW_COUNTRIES; }

void CountryPage::CreateControls()
{
    m_list.LoadFlags();
    m_list.Create(WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | WS_BORDER | LBS_OWNERDRAWFIXED | LBS_SORT | LBS_NOTIFY |
                      LBS_NOINTEGRALHEIGHT,
                  CRect(0, 0, 0, 0), this, kListId);
    m_picker.Create(WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | CBS_DROPDOWNLIST, CRect(0, 0, 0, 0), this, kPickerId);
    m_localeNames.Create(WS_VISIBLE | WS_TABSTOP | CBS_DROPDOWNLIST, CRect(0, 0, 0, 0), this, kLocaleNamesId);
    m_localePicker.Create(WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | WS_BORDER | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
                          CRect(0, 0, 0, 0), this, kLocalesId);
    const auto font = reinterpret_cast<WPARAM>(ControlFont());
    m_picker.SendMessage(WM_SETFONT, font);
    m_localeNames.SendMessage(WM_SETFONT, font);
    m_localePicker.SendMessage(WM_SETFONT, font);
    m_picker.SetDesiredHeight(LineHeight());
    m_localePicker.SetDesiredHeight(LineHeight());
    m_localePicker.SetList(&m_locales);
}

void CountryPage::Reload()
{
    m_list.Fill();
    const UINT country = m_picker.GetCountryIndex();
    m_picker.ResetInformation();
    m_picker.SelectCountryIndex(country); // its place is another one in each language

    const int before = m_localeNames.GetCurSel();
    const DWORD mode = before >= 0 ? static_cast<DWORD>(before) : ZoLcidLanguageCountry;
    m_localeNames.ResetContent();
    for (const UINT text : kTextModes)
        m_localeNames.AddString(Text(text));
    m_localeNames.SetCurSel(static_cast<int>(mode));
    if (m_locales.GetKnownCount() == 0 && m_locales.LoadData() == 0) {
        for (int i = 0; i < m_locales.GetKnownCount(); ++i)
            m_locales.AddNewItem(m_locales.GetKnownCode(i), mode); // those the system knows
    }
    OnLocaleNames();
    Invalidate();
}

void CountryPage::Layout(int width, int height)
{
    const int header = LineHeight() + kMargin;
    const int lower = height * 3 / 5; // the table above, the pickers below
    m_list.MoveWindow(0, header, width, lower - kMargin - header);
    const int middle = width / 2;
    m_picker.MoveWindow(0, lower, middle - kMargin, kDropHeight);
    CRect field;
    m_picker.GetWindowRect(&field);
    m_localeNames.MoveWindow(0, lower + field.Height() + kMargin, middle - kMargin, kDropHeight);
    m_localePicker.MoveWindow(middle, lower, width - middle, height - lower);
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

void CountryPage::OnLocaleNames() { m_localePicker.SetTextMode(static_cast<DWORD>(m_localeNames.GetCurSel())); }
