// The country list and the questions to it.
#include "families.h"
#include "harness.h"
#include "product.h"

#include <zogbl/country_code.h>
#include <zogbl/module.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include <afxwin.h>

#include <cstdlib>
#include <mbstring.h>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

constexpr Limits kLoadLimits = {0, 1.2};

/// Goes round through the countries, in name order.
class Round {
public:
    explicit Round(const CZoCountryCodeList& list) : m_list(&list) {}
    const CZoCountryCode& Next()
    {
        const CZoCountryCode* country = m_list->GetAt(m_next);
        m_next = m_next + 1 < m_list->GetCount() ? m_next + 1 : 0;
        return *country;
    }

private:
    const CZoCountryCodeList* m_list;
    int m_next = 0;
};

/// The numbers of the names in the order in which the table has them.
std::vector<UINT> TableOrder()
{
    std::vector<UINT> strings;
    const auto* record =
        static_cast<const DWORD*>(ZoGblLockResource(MAKEINTRESOURCEA(ZO_IDR_COUNTRY_TABLE), RT_RCDATA));
    for (; record != nullptr && record[0] != 0; record += 3)
        strings.push_back(LOWORD(record[0]));
    return strings;
}

CString CodeText(const CZoCountryCode& country)
{
    CString text;
    text.Format("%u", country.GetCountryCode());
    return text;
}

} // namespace

void MeasureCountries(Harness& harness)
{
    const RegisteredProduct product;
    const LoadedLanguage language;
    const CZoCountryCodeList* list = GetGlobalCountryList();
    Require(list != nullptr && list->GetCount() >= 250, "the country list is not complete");
    const int count = list->GetCount();

    std::vector<UINT> strings;
    std::unordered_map<UINT, CString> names;
    std::unordered_map<UINT, CString> codes;
    std::unordered_map<UINT, UINT> prefixes;
    std::unordered_map<std::string, UINT> prefixesByCode;
    std::vector<CString> codeTexts;
    for (int i = 0; i < count; ++i) {
        const CZoCountryCode& country = *list->GetAt(i);
        strings.push_back(country.GetStringIndex());
        names.emplace(country.GetCountryIndex(), country.GetName());
        codes.emplace(country.GetCountryIndex(), CodeText(country));
        prefixes.emplace(country.GetCountryIndex(), country.GetDialingPrefix());
        codeTexts.push_back(CodeText(country));
        prefixesByCode.emplace(std::string(codeTexts.back()), country.GetDialingPrefix());
    }
    ZoCountryTextMap map;
    Require(GetCountryCodeMap(map), "the map of names is empty");

    harness.Compare("countries: list loaded",
                    {{"CZoCountryCodeList::LoadData",
                      [=] { Require(CZoCountryCodeList(1).GetCount() == count, "countries are missing"); }},
                     {"LoadString for each name",
                      [&strings, module = ZoGblGetLanguageDLL()] {
                          for (const UINT id : strings) {
                              char name[256];
                              Require(LoadStringA(module, id, name, sizeof name) > 0, "a name is missing");
                              Keep(name);
                          }
                      }},
                     {"ZoGblLoadString for each name", [&strings] {
                          for (const UINT id : strings) {
                              CString name;
                              Require(ZoGblLoadString(id, name), "a name is missing");
                          }
                      }}});
    // The names by hand: loaded, and put in the same order.
    harness.Compare("countries: list loaded and sorted",
                    {{"CZoCountryCodeList::LoadData",
                      [=] { Require(CZoCountryCodeList(1).GetCount() == count, "countries are missing"); }},
                     {"LoadString for each name, qsort",
                      [strings = TableOrder(), list, module = ZoGblGetLanguageDLL()] {
                          using Name = char[64];
                          const auto names = std::make_unique<Name[]>(strings.size());
                          for (size_t i = 0; i < strings.size(); ++i)
                              Require(LoadStringA(module, strings[i], names[i], sizeof names[i]) > 0, "no name");
                          std::qsort(
                              names.get(), strings.size(), sizeof(Name), [](const void* first, const void* second) {
                                  return _mbsicmp(static_cast<const BYTE*>(first), static_cast<const BYTE*>(second));
                              });
                          Require(list->GetAt(0)->GetName() == names[0], "another order");
                      }}},
                    kLoadLimits);
    harness.Compare("countries: map made",
                    {{"GetCountryCodeMap",
                      [=] {
                          ZoCountryTextMap filled;
                          Require(GetCountryCodeMap(filled) && filled.GetCount() == count, "countries are missing");
                      }},
                     {"std::unordered_map", [=] {
                          std::unordered_map<UINT, CString> filled;
                          for (int i = 0; i < count; ++i)
                              filled.emplace(list->GetAt(i)->GetCountryIndex(), list->GetAt(i)->GetName());
                          Keep(filled);
                      }}});
    harness.Compare("countries: map look-up", {{"ZoCountryTextMap::Lookup",
                                                [&map, round = Round(*list)]() mutable {
                                                    CString name;
                                                    Require(map.Lookup(round.Next().GetCountryIndex(), name),
                                                            "a country is missing");
                                                    Keep(name);
                                                }},
                                               {"std::unordered_map", [&names, round = Round(*list)]() mutable {
                                                    const auto found = names.find(round.Next().GetCountryIndex());
                                                    Require(found != names.end(), "a country is missing");
                                                    const CString name = found->second;
                                                    Keep(name);
                                                }}});
    harness.Compare("countries: name by index",
                    {{"GetCountryNameFromCode",
                      [round = Round(*list)]() mutable {
                          CString name;
                          Require(GetCountryNameFromCode(round.Next().GetCountryIndex(), name), "a country is missing");
                          Keep(name);
                      }},
                     {"std::unordered_map",
                      [&names, round = Round(*list)]() mutable {
                          const auto found = names.find(round.Next().GetCountryIndex());
                          Require(found != names.end(), "a country is missing");
                          const CString name = found->second;
                          Keep(name);
                      }},
                     {"CZoCountryCodeList::FindByIndex", [=, round = Round(*list)]() mutable {
                          const CZoCountryCode* found = list->FindByIndex(round.Next().GetCountryIndex());
                          Require(found != nullptr, "a country is missing");
                          const CString name = found->GetName();
                          Keep(name);
                      }}});
    harness.Compare("countries: code by index",
                    {{"GetCountryPhoneCode",
                      [round = Round(*list)]() mutable {
                          CString code;
                          GetCountryPhoneCode(static_cast<WORD>(round.Next().GetCountryIndex()), code);
                          Require(!code.IsEmpty(), "a country is missing");
                      }},
                     {"std::unordered_map of texts", [&codes, round = Round(*list)]() mutable {
                          const auto found = codes.find(round.Next().GetCountryIndex());
                          Require(found != codes.end(), "a country is missing");
                          const CString code = found->second;
                          Keep(code);
                      }}});
    harness.Compare("countries: prefix by index",
                    {{"GetCountryPrefix",
                      [round = Round(*list)]() mutable {
                          UINT prefix;
                          Require(GetCountryPrefix(static_cast<WORD>(round.Next().GetCountryIndex()), prefix),
                                  "a country is missing");
                          Keep(prefix);
                      }},
                     {"std::unordered_map", [&prefixes, round = Round(*list)]() mutable {
                          const auto found = prefixes.find(round.Next().GetCountryIndex());
                          Require(found != prefixes.end(), "a country is missing");
                          Keep(found->second);
                      }}});
    harness.Compare("countries: prefix by code",
                    {{"GetCountryPrefix",
                      [&codeTexts, next = size_t{0}]() mutable {
                          UINT prefix;
                          Require(GetCountryPrefix(codeTexts[next], prefix), "a country is missing");
                          Keep(prefix);
                          next = next + 1 < codeTexts.size() ? next + 1 : 0;
                      }},
                     {"std::unordered_map", [&codeTexts, &prefixesByCode, next = size_t{0}]() mutable {
                          const auto found = prefixesByCode.find(std::string(codeTexts[next]));
                          Require(found != prefixesByCode.end(), "a country is missing");
                          Keep(found->second);
                          next = next + 1 < codeTexts.size() ? next + 1 : 0;
                      }}});
}
