/// \file
/// Pickers for countries.
#pragma once

#include <zogbl/country_code.h>
#include <zogbl/flag_box.h>

/// Picks a country of the global list: flag, name, telephone code. Typing selects the first country whose name begins
/// with the typed text. If this changes the selection, the parent gets CBN_SELCHANGE or LBN_SELCHANGE. How items are
/// drawn: flag_box.h.
template <class BOX> class ZOGBL_API CCountryCodeControl : public CZoFlagControl<BOX> {
public:
    CCountryCodeControl();
    ~CCountryCodeControl() override;

    /// Fills the box anew and forgets what was typed. \param sel position to select; too high: the last item; negative:
    /// none
    void ResetInformation(int sel = 0);
    /// Whether telephone codes are left out when items are drawn.
    void DisableCodesText(BOOL disable = TRUE);

    UINT GetCountryCode() const; ///< of the selected country, as the two below; 0 if there is none
    UINT GetDialingPrefix() const;
    UINT GetCountryIndex() const;

    /// Select the first country with that code, index or beginning of the name. \return its position; if there is none,
    /// the number of items, and the selection stays
    int SelectCountryCode(UINT code);
    int SelectCountryIndex(UINT index);
    int SelectCountryName(const char* text); ///< case ignored; an empty text selects the first country

protected:
    ZoFlagItem Describe(const void* data) const override;
    void DescribeRight(const void* data, char (&text)[16]) const override;
    void FollowLanguage() override; ///< fills the box anew; the same country stays selected

private:
    const CZoCountryCode* GetSelected() const;

    BOOL m_bCodesDisabled;
};

extern template class CCountryCodeControl<CComboBox>;
extern template class CCountryCodeControl<CListBox>;

class ZOGBL_API CCountryCodeComboBox : public CCountryCodeControl<CComboBox> {};
class ZOGBL_API CCountryCodeListBox : public CCountryCodeControl<CListBox> {};
