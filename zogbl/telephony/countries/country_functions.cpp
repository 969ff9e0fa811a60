// The process's country list, and questions to it.
#include <zogbl/country_code.h>

#include <common/without_throwing.h>

#include "ground/language_followers.h"
#include "ground/module_data.h"

namespace {

constexpr UINT kNameMapHashSize = 17;

/// The names of the process's countries are those of its language; tried again at the next question if memory lacks.
const LanguageFollower s_names(
    LanguageFollower::Occasion::kLibrary,
    [](void*) {
        if (const ZoModuleData* data = ZoModuleDataGet())
            data->m_countries->ReloadNames();
    },
    nullptr);

/// Fills \p map from the country list, the text of each country made by \p textOf.
template <class TEXT> BOOL FillMap(ZoCountryTextMap& map, TEXT textOf)
{
    map.RemoveAll();
    const CZoCountryCodeList* list = GetGlobalCountryList();
    if (list == nullptr)
        return FALSE;
    const BOOL filled = WithoutThrowing([&] {
        // From the last one to the first, so that of two with one index the first in name order is kept.
        for (int i = list->GetCount(); i-- > 0;)
            map.SetAt(list->GetAt(i)->GetCountryIndex(), textOf(*list->GetAt(i)));
    });
    if (!filled)
        map.RemoveAll();
    return filled;
}

CString CodeText(const CZoCountryCode& country)
{
    CString text;
    text.Format("%d", static_cast<int>(country.GetCountryCode()));
    return text;
}

} // namespace

void ZoEnsureCountryList()
{
    const ZoModuleData* data = ZoModuleDataGet();
    if (data == nullptr)
        return;
    CZoCountryCodeList& countries = *data->m_countries;
    if (countries.AreNamesOutdated())
        countries.ReloadNames();
    if (countries.GetCount() > 0)
        return;
    const DWORD status = countries.LoadData();
    if (status == ZoErrOutOfMemory || status == ZoErrMemoryException)
        countries.FreeData(); // a list that only lacked memory is not left halved for good
}

CZoCountryCodeList* GetGlobalCountryList()
{
    ZoEnsureCountryList();
    const ZoModuleData* data = ZoModuleDataGet();
    return data != nullptr ? data->m_countries.get() : nullptr;
}

BOOL GetCountryCodeMap(ZoCountryTextMap& map)
{
    return FillMap(map, [](const CZoCountryCode& country) { return country.GetName(); });
}

BOOL GetCountryPhoneCodeMap(ZoCountryTextMap& map) { return FillMap(map, CodeText); }

BOOL GetCountryNameFromCode(UINT countryIndex, CString& name)
{
    return WithoutThrowing([&] {
        ZoCountryTextMap map;
        map.InitHashTable(kNameMapHashSize);
        return GetCountryCodeMap(map) && map.Lookup(countryIndex, name);
    });
}

void GetCountryPhoneCode(WORD countryIndex, CString& code)
{
    code.Empty();
    const CZoCountryCodeList* list = GetGlobalCountryList();
    const CZoCountryCode* country = list != nullptr ? list->FindByIndex(countryIndex) : nullptr;
    if (country == nullptr)
        return;
    WithoutThrowing([&] { code = CodeText(*country); });
}

BOOL GetCountryPrefix(WORD countryIndex, UINT& prefix)
{
    const CZoCountryCodeList* list = GetGlobalCountryList();
    const CZoCountryCode* country = list != nullptr ? list->FindByIndex(countryIndex) : nullptr;
    if (country == nullptr)
        return FALSE;
    prefix = country->GetDialingPrefix();
    return TRUE;
}

BOOL GetCountryPrefix(const CString& code, UINT& prefix)
{
    const CZoCountryCodeList* list = GetGlobalCountryList();
    for (int i = 0; list != nullptr && i < list->GetCount(); ++i) {
        char text[16];
        wsprintfA(text, "%d", list->GetAt(i)->GetCountryCode());
        if (code == text) {
            prefix = list->GetAt(i)->GetDialingPrefix();
            return TRUE;
        }
    }
    return FALSE;
}
