/// \file
/// The world's countries: flag, name, telephone code; and the pickers for countries and locales.
#pragma once

#include "page.h"

#include <zogbl/column_list.h>
#include <zogbl/country_box.h>
#include <zogbl/flag_lcid_box.h>

/// The telephone code as people write it: members of the North American plan with the 1 before their area code.
CString CodeText(const CZoCountryCode& country);

/// The library's countries: flag and name, and the codes as people write them. Each column sorts them.
class CountryList : public CZoColumnList {
public:
    BOOL CreateList(CWnd* parent, UINT id);
    /// Takes the names of the language that is loaded; the same country stays selected.
    void Reload();
    /// Shows some of the library's countries. \param shown for each of them, in the library's order, whether it is
    void Show(const CByteArray& shown);
    /// As wide together as the list, as long as the user has not chosen widths.
    void LayOutColumns();
    void KeepColumns() { m_keepsColumns = true; }

protected:
    CString GetCellText(const void* row, int column) const override;
    int CompareRows(const void* first, const void* second, int column) const override;
    CSize GetPictureSize(int column) const override;
    void DrawPicture(CDC* dc, CPoint at, const void* row, int column) const override;

private:
    CZoFlagBitmap m_flags;
    bool m_keepsColumns = false;
};

class CountryPage : public Page {
public:
    /// The picker for countries.
    CCountryCodeComboBox& GetPicker() { return m_picker; }
    CFlagLcidListBox& GetLocalePicker() { return m_localePicker; }
    /// The library's countries: their names, and whether the list shows them.
    void ListCountries(CStringArray& names, CByteArray& shown) const;
    void ShowCountries(const CByteArray& shown) { m_list.Show(shown); }

    UINT GetTitleId() const override;
    UINT GetCommandId() const override;
    void Reload() override;

protected:
    void CreateControls() override;
    void Layout(int width, int height) override;
    afx_msg void OnSetFocus(CWnd* previous);
    afx_msg void OnLocaleNames();
    afx_msg void OnColumnSized(NMHDR* header, LRESULT* result);
    DECLARE_MESSAGE_MAP()

private:
    int ListsTop() const;

    CountryList m_list;
    CCountryCodeComboBox m_picker;
    CComboBox m_localeNames; // the text modes
    CZoFlagLcidList m_locales;
    CFlagLcidListBox m_localePicker;
};
