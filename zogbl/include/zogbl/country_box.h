/// \file
/// Pickers for countries.
#pragma once

#include <zogbl/country_code.h>
#include <zogbl/flag_box.h>

/// Shows the global country list: flag, name, telephone code. What is typed selects the first country whose name begins
/// so; the parent gets CBN_SELCHANGE or LBN_SELCHANGE.
template <class BOX> class ZOGBL_API CCountryCodeControl : public CZoFlagControl<BOX> {
public:
    CCountryCodeControl();
    ~CCountryCodeControl() override;

    /// Fills the box anew and forgets what was typed. \param sel position to select, the last item if it is higher;
    /// negative: none
    void ResetInformation(int sel = 0);
    /// Stops (or with FALSE restarts) the drawing of telephone codes.
    void DisableCodesText(BOOL disable = TRUE);

    UINT GetCountryCode() const; ///< of the selected country, as the two below; 0 when there is none
    UINT GetDialingPrefix() const;
    UINT GetCountryIndex() const;

    /// Select the first country with that code, index or beginning of the name. \return its position, or the number of
    /// items when there is none; the selection then stays.
    int SelectCountryCode(UINT code);
    int SelectCountryIndex(UINT index);
    int SelectCountryName(const char* text); ///< without regard to case; an empty text selects the first country

protected:
    ZoFlagItem Describe(const void* data) const override;
    void DescribeRight(const void* data, char (&text)[16]) const override;
    void FollowLanguage() override; ///< fills the box anew; the country that is selected stays so

private:
    const CZoCountryCode* GetSelected() const;

    BOOL m_bCodesDisabled;
};

extern template class CCountryCodeControl<CComboBox>;
extern template class CCountryCodeControl<CListBox>;

class ZOGBL_API CCountryCodeComboBox : public CCountryCodeControl<CComboBox> {};
class ZOGBL_API CCountryCodeListBox : public CCountryCodeControl<CListBox> {};
