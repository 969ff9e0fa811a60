#include <zogbl/country_box.h>

#include <algorithm>
#include <type_traits>

namespace {

const CZoCountryCode& Country(const void* data) { return *static_cast<const CZoCountryCode*>(data); }

} // namespace

template <class BOX> CCountryCodeControl<BOX>::CCountryCodeControl() : m_bCodesDisabled(FALSE) {}

template <class BOX> CCountryCodeControl<BOX>::~CCountryCodeControl() = default;

template <class BOX> void CCountryCodeControl<BOX>::ResetInformation(int sel)
{
    this->BeginReset();
    CZoCountryCodeList* list = GetGlobalCountryList();
    if (list == nullptr)
        this->ResetContent();
    else if constexpr (std::is_same_v<BOX, CComboBox>)
        list->AddToComboBox(this);
    else
        list->AddToListBox(this);
    this->SetCurSel(sel < 0 ? -1 : (std::min)(sel, this->GetCount() - 1));
}

template <class BOX> void CCountryCodeControl<BOX>::DisableCodesText(BOOL disable)
{
    m_bCodesDisabled = disable;
    if (this->m_hWnd != nullptr)
        this->Invalidate();
}

template <class BOX> const CZoCountryCode* CCountryCodeControl<BOX>::GetSelected() const
{
    return static_cast<const CZoCountryCode*>(this->GetSelectedData());
}

template <class BOX> UINT CCountryCodeControl<BOX>::GetCountryCode() const
{
    return GetSelected() != nullptr ? GetSelected()->GetCountryCode() : 0;
}

template <class BOX> UINT CCountryCodeControl<BOX>::GetDialingPrefix() const
{
    return GetSelected() != nullptr ? GetSelected()->GetDialingPrefix() : 0;
}

template <class BOX> UINT CCountryCodeControl<BOX>::GetCountryIndex() const
{
    return GetSelected() != nullptr ? GetSelected()->GetCountryIndex() : 0;
}

template <class BOX> int CCountryCodeControl<BOX>::SelectCountryCode(UINT code)
{
    return this->SelectFirst([=](const void* data) { return Country(data).GetCountryCode() == code; });
}

template <class BOX> int CCountryCodeControl<BOX>::SelectCountryIndex(UINT index)
{
    return this->SelectFirst([=](const void* data) { return Country(data).GetCountryIndex() == index; });
}

template <class BOX> int CCountryCodeControl<BOX>::SelectCountryName(const char* text)
{
    return this->SelectName(text);
}

template <class BOX> ZoFlagItem CCountryCodeControl<BOX>::Describe(const void* data) const
{
    return {Country(data).GetName(), Country(data).GetFlagIndex()};
}

template <class BOX> void CCountryCodeControl<BOX>::DescribeRight(const void* data, char (&text)[16]) const
{
    if (!m_bCodesDisabled)
        wsprintfA(text, "%lu", static_cast<unsigned long>(Country(data).GetCountryCode()));
}

template <class BOX> void CCountryCodeControl<BOX>::FollowLanguage()
{
    const void* selected = this->GetSelectedData(); // the countries are the same objects in every language
    ResetInformation(-1);
    if (selected != nullptr)
        this->SelectFirst([=](const void* data) { return data == selected; });
}

template class CCountryCodeControl<CComboBox>;
template class CCountryCodeControl<CListBox>;
