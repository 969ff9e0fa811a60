#include <zogbl/flag_lcid_box.h>

#include <type_traits>

namespace {

const CZoFlagLcid& Locale(const void* data) { return *static_cast<const CZoFlagLcid*>(data); }

} // namespace

template <class BOX> CFlagLcidControl<BOX>::CFlagLcidControl() = default;

template <class BOX> CFlagLcidControl<BOX>::~CFlagLcidControl() = default;

template <class BOX> void CFlagLcidControl<BOX>::SetList(CZoFlagLcidList* list) { m_pList = list; }

template <class BOX> void CFlagLcidControl<BOX>::ResetInformation()
{
    this->BeginReset();
    if (m_pList == nullptr)
        this->ResetContent();
    else if constexpr (std::is_same_v<BOX, CComboBox>)
        m_pList->AddToComboBox(this);
    else
        m_pList->AddToListBox(this);
}

template <class BOX> UINT CFlagLcidControl<BOX>::GetLcidCode() const
{
    const void* selected = this->GetSelectedData();
    return selected != nullptr ? Locale(selected).GetLcidValue() : 0;
}

template <class BOX> int CFlagLcidControl<BOX>::SelectLcid(UINT lcid)
{
    return this->SelectFirst([=](const void* data) { return Locale(data).GetLcidValue() == lcid; });
}

template <class BOX> DWORD CFlagLcidControl<BOX>::AddLcidCode(UINT lcid, DWORD textMode)
{
    return m_pList != nullptr ? m_pList->AddLcidCode(lcid, textMode) : ZoErrBadData;
}

template <class BOX> void CFlagLcidControl<BOX>::SetTextMode(DWORD textMode)
{
    if (m_pList == nullptr)
        return;
    m_pList->SetTextMode(textMode);
    if (this->m_hWnd == nullptr)
        return;
    const UINT selected = GetLcidCode();
    ResetInformation(); // other names, another order
    if (selected != 0)
        SelectLcid(selected);
}

template <class BOX> ZoFlagItem CFlagLcidControl<BOX>::Describe(const void* data) const
{
    return {Locale(data).GetName(), Locale(data).GetFlagIndex()};
}

template <class BOX> void CFlagLcidControl<BOX>::DescribeWide(const void* data, WCHAR (&name)[ZO_WIDE_NAME_SIZE]) const
{
    Locale(data).GetWideName(name, ZO_WIDE_NAME_SIZE);
}

template class CFlagLcidControl<CComboBox>;
template class CFlagLcidControl<CListBox>;
