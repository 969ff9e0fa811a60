#include <zogbl/country_code.h>

#include <common/double_byte.h>
#include <common/without_throwing.h>
#include <zogbl/custom_resource.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "ground/box_filling.h"

#include <algorithm>
#include <memory>
#include <new>

// One country ---------------------------------------------------------------------------------------------------------

CZoCountryCode::CZoCountryCode(DWORD a, DWORD b, DWORD c)
    : m_nDialingPrefix(LOWORD(b)), m_nCountryCode(HIWORD(b)), m_nCountryIndex(LOWORD(c))
{
    SetStringIndex(LOWORD(a));
    SetFlagIndex(HIWORD(a));
}

CZoCountryCode::~CZoCountryCode() = default;

BOOL CZoCountryCode::SetStringIndex(UINT index)
{
    if (index < ZO_IDS_COUNTRY_FIRST || index > ZO_IDS_COUNTRY_LAST) {
        m_nStringIndex = 0;
        m_csName.Empty();
        return FALSE;
    }
    m_nStringIndex = index;
    ZoGblLoadString(index, m_csName);
    return TRUE;
}

BOOL CZoCountryCode::SetFlagIndex(UINT index)
{
    const BOOL valid = index < ZO_FLAG_COUNT;
    m_nFlagIndex = valid ? index : 0;
    return valid;
}

// The list ------------------------------------------------------------------------------------------------------------

namespace {

/// A record of the country table; one whose first word is 0 ends it.
struct TableRecord {
    DWORD a, b, c;
};

CZoCountryCode* Country(void* element) { return static_cast<CZoCountryCode*>(element); }

bool IsLess(const CZoCountryCode& first, const CZoCountryCode& second)
{
    return CompareCharactersNoCase(first.GetName(), second.GetName()) < 0;
}

/// Inserts a country behind all whose name is not greater, so that equal names keep their order.
void InsertByName(CPtrArray& countries, CZoCountryCode* country)
{
    INT_PTR place = countries.GetSize();
    while (place > 0 && IsLess(*country, *Country(countries[place - 1])))
        --place;
    countries.InsertAt(place, country);
}

} // namespace

CZoCountryCodeList::CZoCountryCodeList(int load)
{
    if (load != 0)
        CZoCountryCodeList::LoadData();
}

CZoCountryCodeList::~CZoCountryCodeList() { CZoCountryCodeList::FreeData(); }

DWORD CZoCountryCodeList::LoadData()
{
    CZoCustomResource resource;
    const HINSTANCE module = ZoGblFindResourceModule(MAKEINTRESOURCEA(ZO_IDR_COUNTRY_TABLE), RT_RCDATA);
    if (resource.LoadCustomResource(module, static_cast<UINT>(ZO_IDR_COUNTRY_TABLE)) != ERROR_SUCCESS)
        return ZoErrResourceNotFound;
    const auto* record = static_cast<const TableRecord*>(resource.GetResourceData());
    if (record == nullptr)
        return ZoErrBadData;
    // A table that lacks its last record ends with the resource.
    const TableRecord* end = record + resource.GetResourceSize() / sizeof *record;
    for (; record != end && record->a != 0; ++record) {
        const DWORD result = AddCountry(record->a, record->b, record->c);
        if (result != ERROR_SUCCESS)
            return result;
    }
    return ERROR_SUCCESS;
}

DWORD CZoCountryCodeList::FreeData()
{
    for (INT_PTR i = 0; i < m_countries.GetSize(); ++i)
        delete Country(m_countries[i]);
    m_countries.RemoveAll();
    return ERROR_SUCCESS;
}

DWORD CZoCountryCodeList::AddCountry(DWORD a, DWORD b, DWORD c)
{
    std::unique_ptr<CZoCountryCode> country(new (std::nothrow) CZoCountryCode(a, b, c));
    if (!country)
        return ZoErrOutOfMemory;
    if (country->GetStringIndex() == 0 || HIWORD(a) >= ZO_FLAG_COUNT)
        return ZoErrBadData;
    if (country->GetName().IsEmpty() && ZoGblFindStringModule(country->GetStringIndex()) != nullptr)
        return ZoErrMemoryException; // the name is there, the memory for it was not
    if (!WithoutThrowing([&] { InsertByName(m_countries, country.get()); }))
        return ZoErrMemoryException;
    country.release();
    return ERROR_SUCCESS;
}

DWORD CZoCountryCodeList::ReloadNames()
{
    m_bNamesOutdated = TRUE;
    // All names or none: a list in two languages would be worse than one in the old language.
    CStringArray names;
    if (!WithoutThrowing([&] { names.SetSize(m_countries.GetSize()); }))
        return ZoErrMemoryException;
    for (INT_PTR i = 0; i < m_countries.GetSize(); ++i) {
        const UINT id = Country(m_countries[i])->GetStringIndex();
        if (!ZoGblLoadString(id, names[i]) && ZoGblFindStringModule(id) != nullptr)
            return ZoErrMemoryException;
    }
    for (INT_PTR i = 0; i < m_countries.GetSize(); ++i) {
        if (!names[i].IsEmpty())
            Country(m_countries[i])->m_csName = names[i];
    }
    std::stable_sort(m_countries.GetData(), m_countries.GetData() + m_countries.GetSize(),
                     [](void* first, void* second) { return IsLess(*Country(first), *Country(second)); });
    m_bNamesOutdated = FALSE;
    return ERROR_SUCCESS;
}

DWORD CZoCountryCodeList::AddToComboBox(CComboBox* box)
{
    FillBox(box, m_countries, Selection::kFirst);
    return ERROR_SUCCESS;
}

DWORD CZoCountryCodeList::AddToListBox(CListBox* box)
{
    FillBox(box, m_countries, Selection::kFirst);
    return ERROR_SUCCESS;
}

const CZoCountryCode* CZoCountryCodeList::FindByIndex(UINT countryIndex) const
{
    for (int i = 0; i < GetCount(); ++i) {
        if (GetAt(i)->GetCountryIndex() == countryIndex)
            return GetAt(i);
    }
    return nullptr;
}
