/// \file
/// Countries: names, flags, telephone codes.
#pragma once

#include <zogbl/export.h>
#include <zogbl/status.h>

#include <afxcoll.h>

class CComboBox;
class CListBox;
class StringModules;

/// One country. The country index is its stable key: callers store it, and lookups use it.
class ZOGBL_API CZoCountryCode {
public:
    /// Unpacks a record of the country table and loads the name.
    /// \param a string index in the low word, flag index in the high word
    /// \param b dialing prefix in the low word, country code in the high word
    /// \param c country index in the low word; the high word is ignored
    CZoCountryCode(DWORD a, DWORD b, DWORD c);
    CZoCountryCode(const CZoCountryCode&) = default;
    CZoCountryCode& operator=(const CZoCountryCode&) = default;
    virtual ~CZoCountryCode();

    /// Takes string \p index, 16045 to 16303, as the name. \return FALSE for another one: then index 0, an empty name
    BOOL SetStringIndex(UINT index);
    /// Takes cell \p index of the flag bitmap, 0 to 211. \return FALSE for another one: then cell 0
    BOOL SetFlagIndex(UINT index);

    const CString& GetName() const { return m_csName; }
    UINT GetStringIndex() const { return m_nStringIndex; }
    UINT GetFlagIndex() const { return m_nFlagIndex; }
    UINT GetDialingPrefix() const { return m_nDialingPrefix; } ///< 1: the code is an area code of country 1; else 0
    UINT GetCountryCode() const { return m_nCountryCode; }     ///< telephone country code
    UINT GetCountryIndex() const { return m_nCountryIndex; }

private:
    friend class CZoCountryCodeList; // names its countries
    CZoCountryCode(DWORD b, DWORD c);

    CString m_csName;
    UINT m_nStringIndex;
    UINT m_nFlagIndex;
    UINT m_nDialingPrefix;
    UINT m_nCountryCode;
    UINT m_nCountryIndex;
};

/// Owns the countries, sorted by name, case ignored. They come from a table resource.
class ZOGBL_API CZoCountryCodeList {
public:
    explicit CZoCountryCodeList(int load = 0); ///< nonzero: LoadData at once
    virtual ~CZoCountryCodeList();
    CZoCountryCodeList(const CZoCountryCodeList&) = delete;
    CZoCountryCodeList& operator=(const CZoCountryCodeList&) = delete;

    /// Adds every record of the country table (RCDATA 25599, found through ZoGblFindResourceModule). Countries added
    /// before a failure stay.
    /// \return
    ///   0
    ///   ZoErrOutOfMemory       a country could not be allocated
    ///   ZoErrResourceNotFound  there is no table
    ///   ZoErrBadData           the table has no data, or a record is out of range, which ends the loading
    ///   ZoErrMemoryException   no memory for a name or the list
    virtual DWORD LoadData();
    virtual DWORD FreeData(); ///< deletes all countries. \return 0

    /// Adds one country in name order, behind others of the same name. \return as LoadData, without
    /// ZoErrResourceNotFound
    DWORD AddCountry(DWORD a, DWORD b, DWORD c);

    /// Loads every name anew and sorts again, after a change of the language library. A name that the new library lacks
    /// stays. The countries remain the same objects, so list boxes that hold them stay valid.
    /// \return 0; ZoErrMemoryException: all names are the old ones, and AreNamesOutdated is TRUE
    DWORD ReloadNames();
    BOOL AreNamesOutdated() const { return m_bNamesOutdated; }

    /// Fills a box that holds data instead of strings: each item's data is a CZoCountryCode*, owned by this list. The
    /// first item is selected; the focus stays. A box without a window stays as it is. \return 0
    DWORD AddToComboBox(CComboBox* box);
    DWORD AddToListBox(CListBox* box);

    int GetCount() const { return static_cast<int>(m_countries.GetSize()); }
    /// The country at a position, 0 to GetCount() - 1, in name order.
    const CZoCountryCode* GetAt(int position) const
    {
        return static_cast<const CZoCountryCode*>(m_countries.GetAt(position));
    }
    /// The first country, in name order, with that country index; null if there is none.
    const CZoCountryCode* FindByIndex(UINT countryIndex) const;

private:
    DWORD Append(DWORD a, DWORD b, DWORD c, const StringModules& names);

    CPtrArray m_countries; // of CZoCountryCode*
    BOOL m_bNamesOutdated = FALSE;
};

using ZoCountryTextMap = CMap<UINT, UINT, CString, const CString&>;

/// The process's country list, which is filled first if it is empty. Without a language library it stays empty. Null if
/// this library's own data could not be made.
ZOGBL_API CZoCountryCodeList* GetGlobalCountryList();

/// Maps country index to name, for every country. \return FALSE, with an empty map: there is no list or no memory
ZOGBL_API BOOL GetCountryCodeMap(ZoCountryTextMap& map);
/// Maps country index to the telephone country code as text. \return as above
ZOGBL_API BOOL GetCountryPhoneCodeMap(ZoCountryTextMap& map);
/// The name of the country with that country index. \return FALSE, with \p name unchanged, if it is unknown
ZOGBL_API BOOL GetCountryNameFromCode(UINT countryIndex, CString& name);
/// The telephone country code, as text, of the first country with that country index; empty if it is unknown.
ZOGBL_API void GetCountryPhoneCode(WORD countryIndex, CString& code);
/// The dialing prefix of the first country with that country index. \return FALSE, with \p prefix unchanged, if it is
/// unknown
ZOGBL_API BOOL GetCountryPrefix(WORD countryIndex, UINT& prefix);
/// The same of the first country, in name order, whose telephone country code has exactly that decimal text: "044" is
/// not 44. Which one is first depends on the language: "242" is the code of two countries with different prefixes.
ZOGBL_API BOOL GetCountryPrefix(const CString& code, UINT& prefix);
