#include <zogbl/country_combo_box.h>

#include <algorithm>

namespace {

const CZoCountryCode& Country(const void* data) { return *static_cast<const CZoCountryCode*>(data); }

} // namespace

void CCountryCodeComboBox::ResetInformation(int sel)
{
    BeginReset();
    if (CZoCountryCodeList* list = GetGlobalCountryList())
        list->AddToComboBox(this);
    else
        ResetContent();
    SetCurSel(sel < 0 ? -1 : (std::min)(sel, GetCount() - 1));
}

void CCountryCodeComboBox::DisableCodesText(BOOL disable)
{
    m_bCodesDisabled = disable;
    if (m_hWnd != nullptr)
        Invalidate();
}

UINT CCountryCodeComboBox::GetCountryCode() const
{
    return GetSelected() != nullptr ? GetSelected()->GetCountryCode() : 0;
}

UINT CCountryCodeComboBox::GetDialingPrefix() const
{
    return GetSelected() != nullptr ? GetSelected()->GetDialingPrefix() : 0;
}

UINT CCountryCodeComboBox::GetCountryIndex() const
{
    return GetSelected() != nullptr ? GetSelected()->GetCountryIndex() : 0;
}

int CCountryCodeComboBox::SelectCountryCode(UINT code)
{
    return SelectFirst([=](const void* data) { return Country(data).GetCountryCode() == code; });
}

int CCountryCodeComboBox::SelectCountryIndex(UINT index)
{
    return SelectFirst([=](const void* data) { return Country(data).GetCountryIndex() == index; });
}

int CCountryCodeComboBox::SelectCountryName(const char* text) { return SelectName(text); }

ZoFlagItem CCountryCodeComboBox::Describe(const void* data) const
{
    return {Country(data).GetName(), Country(data).GetFlagIndex()};
}

void CCountryCodeComboBox::DescribeRight(const void* data, char (&text)[16]) const
{
    if (!m_bCodesDisabled)
        wsprintfA(text, "%lu", static_cast<unsigned long>(Country(data).GetCountryCode()));
}
