/// \file
/// Pickers for languages and regions.
#pragma once

#include <zogbl/flag_box.h>
#include <zogbl/flag_lcid.h>

/// Picks a language or region of a list: flag and name. The list stays the caller's and outlives the box's items.
template <class BOX> class ZOGBL_API CFlagLcidControl : public CZoFlagControl<BOX> {
public:
    CFlagLcidControl();
    ~CFlagLcidControl() override;

    /// Attaches the list; null detaches it. ResetInformation shows it.
    void SetList(CZoFlagLcidList* list);
    /// Fills the box anew from the list, forgets what was typed and selects the first item. Without a list it is empty.
    void ResetInformation();

    UINT GetLcidCode() const; ///< of the selected item; 0 if there is none
    /// \return the position of the first item with that locale; if there is none, the number of items, and the
    /// selection stays
    int SelectLcid(UINT lcid);

    /// As the list's function; ZoErrBadData without a list. ResetInformation shows the new entry.
    DWORD AddLcidCode(UINT lcid, DWORD textMode);
    /// Names the list's entries anew and shows them; the same locale stays selected.
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
