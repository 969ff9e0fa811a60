/// \file
/// Pickers for languages and regions.
#pragma once

#include <zogbl/flag_box.h>
#include <zogbl/flag_lcid.h>

/// Shows a list of locales with flag and name. The list is the caller's and outlives the box's items.
template <class BOX> class ZOGBL_API CFlagLcidControl : public CZoFlagControl<BOX> {
public:
    CFlagLcidControl();
    ~CFlagLcidControl() override;

    /// Attaches the list; null detaches. ResetInformation shows it.
    void SetList(CZoFlagLcidList* list);
    /// Fills the box anew from the list, forgets what was typed and selects the first item. Empty without a list.
    void ResetInformation();

    UINT GetLcidCode() const; ///< of the selected item; 0 when there is none
    /// \return the position of the first item with that locale, or the number of items; the selection then stays.
    int SelectLcid(UINT lcid);

    /// As of the list, ZoErrBadData without one. ResetInformation shows the new entry.
    DWORD AddLcidCode(UINT lcid, DWORD textMode);
    /// Names the list's entries anew and shows them; the selected locale stays selected.
    void SetTextMode(DWORD textMode);

protected:
    ZoFlagItem Describe(const void* data) const override;
    void DescribeWide(const void* data, WCHAR (&name)[ZO_WIDE_NAME_SIZE]) const override;

private:
    CZoFlagLcidList* m_pList = nullptr;
};

extern template class CFlagLcidControl<CComboBox>;
extern template class CFlagLcidControl<CListBox>;

class ZOGBL_API CFlagLcidComboBox : public CFlagLcidControl<CComboBox> {};
class ZOGBL_API CFlagLcidListBox : public CFlagLcidControl<CListBox> {};
