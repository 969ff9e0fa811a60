/// \file
/// Pickers for countries.
#pragma once

#include <zogbl/country_code.h>
#include <zogbl/flag_box.h>

/// Picks a country of the global list: flag, name, telephone code. Typing selects the first country whose name begins
/// with the typed text. If this changes the selection, the parent gets CBN_SELCHANGE or LBN_SELCHANGE. How items are
/// drawn: flag_box.h.
///
/// In a dialog, the template has the control:
///
///     CONTROL "", IDC_COUNTRY, "ComboBox", CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_SORT | CBS_HASSTRINGS |
///         WS_VSCROLL | WS_TABSTOP, 7, 18, 176, 120
///
/// The program calls ZoGblLoadLanguageDLL at its start; without a language library the box is empty. The dialog, a
/// CZoDialog, has the member CCountryCodeComboBox m_country:
///
///     void CMyDialog::DoDataExchange(CDataExchange* exchange)
///     {
///         CZoDialog::DoDataExchange(exchange);
///         DDX_Control(exchange, IDC_COUNTRY, m_country);
///     }
///
///     BOOL CMyDialog::OnInitDialog()
///     {
///         CZoDialog::OnInitDialog();
///         m_country.ResetInformation(-1);             // not before DDX_Control, which the line above calls
///         m_country.SelectCountryIndex(m_countryIndex);
///         return TRUE;
///     }
///
/// Store GetCountryIndex, which names one country. GetCountryCode does not: some countries share a code, and five codes
/// belong to one country with prefix 0 and another with prefix 1 (242, 246, 264, 268, 670). The box shows "242" for
/// both, and SelectCountryCode(242) selects the one whose name comes first.
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

    /// Select the first country of the box with that code, index or beginning of the name.
    /// \return its position; if there is none, the number of items, and the selection stays
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
