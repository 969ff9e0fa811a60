#include "country_page.h"

#include "workbench_ids.h"

#include <zogbl/country_code.h>
#include <zogbl/language_support.h>
#include <zogbl/module.h>

namespace {

constexpr UINT kListId = 100;
constexpr int kMargin = 8;
constexpr int kCodeMargin = 3; // between the codes and the list's right edge, less its border
constexpr UINT kPickerId = 101;
constexpr UINT kLocalesId = 102;
constexpr UINT kLocaleNamesId = 103;
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

void CountryListBox::DescribeRight(const void* data, char (&text)[16]) const
{
    ::lstrcpyn(text, CodeText(*static_cast<const CZoCountryCode*>(data)), sizeof text);
}

// The page ------------------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CountryPage, Page)
    ON_WM_PAINT()
    ON_WM_SETFOCUS()
    ON_CBN_SELCHANGE(kLocaleNamesId, OnLocaleNames)
END_MESSAGE_MAP()

UINT CountryPage::GetTitleId() const { return ZO_IDS_PAGE_COUNTRIES; }
UINT CountryPage::GetCommandId() const { return ZO_ID_VIEW_COUNTRIES; }

void CountryPage::CreateControls()
{
    m_picker.Create(WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | CBS_DROPDOWNLIST, CRect(0, 0, 0, 0), this, kPickerId);
    m_localeNames.Create(WS_VISIBLE | WS_TABSTOP | CBS_DROPDOWNLIST, CRect(0, 0, 0, 0), this, kLocaleNamesId);
    m_list.Create(WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | WS_BORDER | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
                  CRect(0, 0, 0, 0), this, kListId);
    m_localePicker.Create(WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | WS_BORDER | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
                          CRect(0, 0, 0, 0), this, kLocalesId);
    m_localePicker.SetList(&m_locales);
}

template <class BOX> void CountryPage::ReloadCountries(BOX& box)
{
    if (box.GetCount() == 0)
        box.ResetInformation();
    else
        box.SendMessage(CZoLanguageSupport::GetUpdateMessage());
}

void CountryPage::Reload()
{
    ReloadCountries(m_picker);
    ReloadCountries(m_list);
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

/// Countries on the left, locales on the right; above each list a box to choose from.
void CountryPage::Layout(int width, int height)
{
    m_picker.SetDesiredHeight(LineHeight());
    m_list.SetDesiredHeight(LineHeight());
    m_localePicker.SetDesiredHeight(LineHeight());
    const int middle = width / 2;
    m_picker.MoveWindow(0, 0, middle - kMargin, kDropHeight);
    m_localeNames.MoveWindow(middle, 0, width - middle, kDropHeight);
    const int lists = HeaderTop() + LineHeight() + kMargin;
    m_list.MoveWindow(0, lists, middle - kMargin, height - lists);
    m_localePicker.MoveWindow(middle, HeaderTop(), width - middle, height - HeaderTop());
    Invalidate();
}

/// Where the columns of the countries have their titles: below the picker.
int CountryPage::HeaderTop() const
{
    CRect field;
    m_picker.GetWindowRect(&field);
    return field.Height() + kMargin;
}

void CountryPage::OnPaint()
{
    CPaintDC dc(this);
    CRect rows;
    m_list.GetClientRect(&rows);
    CFont* oldFont = dc.SelectObject(ControlFont());
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(::GetSysColor(COLOR_BTNTEXT));
    const auto draw = [&](UINT id, UINT alignment) {
        CRect place(m_list.GetPictureWidth() + 1, HeaderTop(), rows.right - kCodeMargin,
                    HeaderTop() + LineHeight() + kMargin);
        dc.DrawText(Text(id), &place, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | alignment);
    };
    draw(ZO_IDS_COLUMN_COUNTRY, DT_LEFT);
    draw(ZO_IDS_COLUMN_CODE, DT_RIGHT);
    dc.SelectObject(oldFont);
}

void CountryPage::OnSetFocus(CWnd*) { m_list.SetFocus(); }

void CountryPage::OnLocaleNames() { m_localePicker.SetTextMode(static_cast<DWORD>(m_localeNames.GetCurSel())); }
