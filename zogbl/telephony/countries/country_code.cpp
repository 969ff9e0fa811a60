#include <zogbl/country_code.h>

#include <common/double_byte.h>
#include <common/without_throwing.h>
#include <zogbl/custom_resource.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "ground/box_filling.h"
#include "ground/string_modules.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace {

bool IsStringIndex(UINT index) { return index >= ZO_IDS_COUNTRY_FIRST && index <= ZO_IDS_COUNTRY_LAST; }

} // namespace

// One country ---------------------------------------------------------------------------------------------------------

CZoCountryCode::CZoCountryCode(DWORD a, DWORD b, DWORD c) : CZoCountryCode(b, c)
{
    SetStringIndex(LOWORD(a));
    SetFlagIndex(HIWORD(a));
}

/// A country without a name and a flag.
CZoCountryCode::CZoCountryCode(DWORD b, DWORD c)
    : m_nStringIndex(0), m_nFlagIndex(0), m_nDialingPrefix(LOWORD(b)), m_nCountryCode(HIWORD(b)),
      m_nCountryIndex(LOWORD(c))
{
}

CZoCountryCode::~CZoCountryCode() = default;

BOOL CZoCountryCode::SetStringIndex(UINT index)
{
    if (!IsStringIndex(index)) {
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

/// The order of names, case ignored. What kind of code page the system has is asked once.
class NameOrder {
public:
    bool operator()(const CZoCountryCode* first, const CZoCountryCode* second) const
    {
        return CompareCharactersNoCase(first->GetName(), second->GetName(), m_isDoubleByte) < 0;
    }
    bool operator()(void* first, void* second) const { return (*this)(Country(first), Country(second)); }

    /// A number by which names that differ in their first four characters can be told: the one before has the lower
    /// number. 0: the name must be compared; only the run-time library knows the place of characters beyond ASCII.
    DWORD FirstCharacters(LPCSTR name) const
    {
        DWORD number = 0;
        for (int i = 0; i < 4; ++i) {
            const UINT character = LowerCase(static_cast<BYTE>(*name));
            if (character > 0x7F || m_isDoubleByte)
                return 0;
            number = number << 8 | character;
            if (*name != '\0')
                ++name;
        }
        return number;
    }

private:
    bool m_isDoubleByte = GetSystemMetrics(SM_DBCSENABLED) != 0;
};

/// Inserts a country behind all whose name is not greater, so that equal names keep their order.
void InsertByName(CPtrArray& countries, CZoCountryCode* country)
{
    const NameOrder isLess;
    INT_PTR place = countries.GetSize();
    while (place > 0 && isLess(country, Country(countries[place - 1])))
        --place;
    countries.InsertAt(place, country);
}

/// Puts the countries in the same order, with or without memory.
void SortByName(CPtrArray& countries)
{
    const NameOrder isLess;
    void** const begin = countries.GetData();
    void** const end = begin + countries.GetSize();
    using Numbered = std::pair<DWORD, void*>;
    const BOOL sorted = WithoutThrowing([&] {
        std::vector<Numbered> numbered;
        numbered.reserve(static_cast<size_t>(end - begin));
        std::transform(begin, end, std::back_inserter(numbered), [&](void* country) {
            return Numbered(isLess.FirstCharacters(Country(country)->GetName()), country);
        });
        std::stable_sort(numbered.begin(), numbered.end(), [&](const Numbered& first, const Numbered& second) {
            const bool isTold = first.first != 0 && second.first != 0 && first.first != second.first;
            return isTold ? first.first < second.first : isLess(first.second, second.second);
        });
        std::transform(numbered.begin(), numbered.end(), begin, [](const Numbered& number) { return number.second; });
    });
    if (!sorted)
        std::stable_sort(begin, end, isLess);
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
    DWORD result = ERROR_SUCCESS;
    const StringModules names(ZO_IDS_COUNTRY_FIRST, ZO_IDS_COUNTRY_LAST);
    for (; result == ERROR_SUCCESS && record != end && record->a != 0; ++record)
        result = ResultOr(ZoErrMemoryException, [&] { return Append(record->a, record->b, record->c, names); });
    SortByName(m_countries); // which gives the places that AddCountry would have found
    return result;
}

/// Adds a country behind the others. Throws CMemoryException*.
DWORD CZoCountryCodeList::Append(DWORD a, DWORD b, DWORD c, const StringModules& names)
{
    if (!IsStringIndex(LOWORD(a)) || HIWORD(a) >= ZO_FLAG_COUNT)
        return ZoErrBadData;
    std::unique_ptr<CZoCountryCode> country(new (std::nothrow) CZoCountryCode(b, c));
    if (!country)
        return ZoErrOutOfMemory;
    country->m_nStringIndex = LOWORD(a);
    country->m_nFlagIndex = HIWORD(a);
    names.Load(country->m_nStringIndex, country->m_csName);
    m_countries.Add(country.get());
    country.release();
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
    const BOOL loaded = WithoutThrowing([&] {
        names.SetSize(m_countries.GetSize());
        const StringModules modules(ZO_IDS_COUNTRY_FIRST, ZO_IDS_COUNTRY_LAST);
        for (INT_PTR i = 0; i < m_countries.GetSize(); ++i)
            modules.Load(Country(m_countries[i])->GetStringIndex(), names[i]);
    });
    if (!loaded)
        return ZoErrMemoryException;
    for (INT_PTR i = 0; i < m_countries.GetSize(); ++i) {
        if (!names[i].IsEmpty())
            Country(m_countries[i])->m_csName = names[i];
    }
    SortByName(m_countries);
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
