#include "country_page.h"

#include "workbench_ids.h"

#include <zogbl/country_code.h>
#include <zogbl/language_support.h>
#include <zogbl/module.h>

namespace {

constexpr UINT kListId = 100;
constexpr int kMargin = 8;
constexpr int kName = 0, kCode = 1; // columns
constexpr UINT kPickerId = 101;
constexpr UINT kLocalesId = 102;
constexpr UINT kLocaleNamesId = 103;
constexpr int kDropHeight = 300;
constexpr UINT kTextModes[] = {ZO_IDS_LOCALE_NATIVE_LANGUAGE, ZO_IDS_LOCALE_LANGUAGE, ZO_IDS_LOCALE_ENGLISH_LANGUAGE,
                               ZO_IDS_LOCALE_NATIVE_COUNTRY,  ZO_IDS_LOCALE_COUNTRY,  ZO_IDS_LOCALE_ENGLISH_COUNTRY};

const CZoCountryCode& Country(const void* row) { return *static_cast<const CZoCountryCode*>(row); }

/// In the order in which people look for codes: those of the North American plan stand behind 1.
int DialedCode(const void* row)
{
    constexpr int kMostAreas = 1000;
    const int prefix = static_cast<int>(Country(row).GetDialingPrefix());
    const int code = static_cast<int>(Country(row).GetCountryCode());
    return prefix != 0 ? prefix * kMostAreas + code : code * kMostAreas;
}

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

// The list ------------------------------------------------------------------------------------------------------------

BOOL CountryList::CreateList(CWnd* parent, UINT id)
{
    if (!Create(WS_VISIBLE | WS_TABSTOP | WS_BORDER, CRect(0, 0, 0, 0), parent, id))
        return FALSE;
    GetHeader().InsertColumn(kName, {static_cast<UINT>(ZO_IDS_COLUMN_COUNTRY), 0});
    GetHeader().InsertColumn(kCode, {static_cast<UINT>(ZO_IDS_COLUMN_CODE), 0, CZoHeaderButton::Align::kRight});
    return SortBy(kName, CZoHeaderButton::Sort::kAscending);
}

void CountryList::Reload()
{
    m_flags.Load();
    if (GetRowCount() > 0) {
        SendMessage(CZoLanguageSupport::GetUpdateMessage());
        return;
    }
    Show(CByteArray()); // all
}

void CountryList::Show(const CByteArray& shown)
{
    const CZoCountryCodeList* countries = GetGlobalCountryList();
    CPtrArray rows;
    for (int i = 0; countries != nullptr && i < countries->GetCount(); ++i) {
        if (i >= shown.GetSize() || shown[i])
            rows.Add(const_cast<CZoCountryCode*>(countries->GetAt(i))); // only handed back
    }
    if (SetRows(rows) && GetCurSel() < 0)
        SetCurSel(0);
}

void CountryList::LayOutColumns()
{
    if (m_keepsColumns)
        return;
    GetHeader().SetWidth(kName, 0);
    GetHeader().FitColumn(kCode);
    CRect client;
    GetClientRect(&client);
    const int left = client.Width() - GetHeader().GetTotalWidth();
    GetHeader().SetWidth(kName, left > 0 ? left : 1); // its least width
}

CString CountryList::GetCellText(const void* row, int column) const
{
    return column == kName ? Country(row).GetName() : CodeText(Country(row));
}

int CountryList::CompareRows(const void* first, const void* second, int column) const
{
    if (column == kName)
        return CZoFlagBox::CompareNames(Country(first).GetName(), Country(second).GetName());
    return DialedCode(first) - DialedCode(second);
}

CSize CountryList::GetPictureSize(int column) const { return column == kName ? m_flags.GetCellSize() : CSize(); }

void CountryList::DrawPicture(CDC* dc, CPoint at, const void* row, int) const
{
    m_flags.Draw(*dc, at.x, at.y, Country(row).GetFlagIndex());
}

// The page ------------------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CountryPage, Page)
    ON_WM_SETFOCUS()
    ON_CBN_SELCHANGE(kLocaleNamesId, OnLocaleNames)
    ON_NOTIFY(ZON_HEADER_SIZED, kListId, OnColumnSized)
END_MESSAGE_MAP()

UINT CountryPage::GetTitleId() const { return ZO_IDS_PAGE_COUNTRIES; }
UINT CountryPage::GetCommandId() const { return ZO_ID_VIEW_COUNTRIES; }

void CountryPage::CreateControls()
{
    m_picker.Create(WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | CBS_DROPDOWNLIST, CRect(0, 0, 0, 0), this, kPickerId);
    m_localeNames.Create(WS_VISIBLE | WS_TABSTOP | CBS_DROPDOWNLIST, CRect(0, 0, 0, 0), this, kLocaleNamesId);
    m_list.CreateList(this, kListId);
    m_localePicker.Create(WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | WS_BORDER | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
                          CRect(0, 0, 0, 0), this, kLocalesId);
    m_localePicker.SetList(&m_locales);
}

void CountryPage::Reload()
{
    if (m_picker.GetCount() == 0)
        m_picker.ResetInformation();
    else
        m_picker.SendMessage(CZoLanguageSupport::GetUpdateMessage());
    m_list.Reload();
    m_list.LayOutColumns();
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

void CountryPage::ListCountries(CStringArray& names, CByteArray& shown) const
{
    const CZoCountryCodeList* countries = GetGlobalCountryList();
    for (int i = 0; countries != nullptr && i < countries->GetCount(); ++i) {
        names.Add(countries->GetAt(i)->GetName());
        shown.Add(m_list.FindRow(countries->GetAt(i)) >= 0);
    }
}

/// Countries on the left, locales on the right; above each list a box to choose from.
void CountryPage::Layout(int width, int height)
{
    m_picker.SetDesiredHeight(LineHeight());
    m_localePicker.SetDesiredHeight(LineHeight());
    const int middle = width / 2;
    m_picker.MoveWindow(0, 0, middle - kMargin, kDropHeight);
    m_localeNames.MoveWindow(middle, 0, width - middle, kDropHeight);
    m_list.MoveWindow(0, ListsTop(), middle - kMargin, height - ListsTop());
    m_list.LayOutColumns();
    m_localePicker.MoveWindow(middle, ListsTop(), width - middle, height - ListsTop());
}

/// Where the lists begin: below the pickers.
int CountryPage::ListsTop() const
{
    CRect field;
    m_picker.GetWindowRect(&field);
    return field.Height() + kMargin;
}

void CountryPage::OnSetFocus(CWnd*) { m_list.SetFocus(); }

void CountryPage::OnColumnSized(NMHDR*, LRESULT* result)
{
    m_list.KeepColumns();
    *result = 0;
}

void CountryPage::OnLocaleNames() { m_localePicker.SetTextMode(static_cast<DWORD>(m_localeNames.GetCurSel())); }
