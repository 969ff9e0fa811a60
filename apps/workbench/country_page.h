/// \file
/// The world's countries: flag, name, telephone code; and the pickers for countries and locales.
#pragma once

#include "page.h"

#include <zogbl/country_box.h>
#include <zogbl/flag_lcid_box.h>

/// The telephone code as people write it: members of the North American plan with the 1 before their area code.
CString CodeText(const CZoCountryCode& country);

/// The library's list of countries, with the codes as people write them.
class CountryListBox : public CCountryCodeListBox {
protected:
    void DescribeRight(const void* data, char (&text)[16]) const override;
};

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
    int HeaderTop() const;
    template <class BOX> void ReloadCountries(BOX& box);

    CountryListBox m_list;
    CCountryCodeComboBox m_picker;
    CComboBox m_localeNames; // the text modes
    CZoFlagLcidList m_locales;
    CFlagLcidListBox m_localePicker;
};
