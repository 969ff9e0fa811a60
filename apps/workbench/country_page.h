/// \file
/// The world's countries: flag, name, dialing prefix, telephone code; and the pickers for countries and locales.
#pragma once

#include "page.h"

#include <zogbl/country_combo_box.h>
#include <zogbl/flag_lcid_box.h>

/// A list box that draws countries of the global list.
class CountryListBox : public CListBox {
public:
    void DrawItem(DRAWITEMSTRUCT* item) override;
    void MeasureItem(MEASUREITEMSTRUCT* item) override;
    int CompareItem(COMPAREITEMSTRUCT* items) override;

    /// Left edges of the columns name, prefix, code, and the end of the last, in pixels for a row of that width.
    struct Columns {
        int name, prefix, code, end;
    };
    Columns GetColumns(int width) const;
    void LoadFlags() { m_flags.Load(); }
    /// Shows the global list anew; the country that was selected stays so.
    void Fill();

private:
    CZoFlagBitmap m_flags;
};

/// The telephone code as people write it: members of the North American plan with the 1 before their area code.
CString CodeText(const CZoCountryCode& country);

class CountryPage : public Page {
public:
    /// The picker for countries.
    CCountryCodeComboBox& GetPicker() { return m_picker; }

    UINT GetTitleId() const override;
    UINT GetCommandId() const override;
    void Reload() override;

protected:
    void CreateControls() override;
    void Layout(int width, int height) override;
    afx_msg void OnPaint();
    afx_msg void OnSetFocus(CWnd* previous);
    afx_msg void OnLocaleNames();
    DECLARE_MESSAGE_MAP()

private:
    CountryListBox m_list;
    CCountryCodeComboBox m_picker;
    CComboBox m_localeNames; // the text modes
    CZoFlagLcidList m_locales;
    CFlagLcidListBox m_localePicker;
};
