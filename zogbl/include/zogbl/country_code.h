/// \file
/// Countries: names, flags, telephone codes.
#pragma once

#include <zogbl/export.h>
#include <zogbl/status.h>

#include <afxcoll.h>

class CComboBox;
class CListBox;

/// One country. The country index is its stable key: callers store it, and lookups go by it.
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

    /// Takes string \p index, 16045 to 16303, as the name. FALSE for another one; index 0 and an empty name then.
    BOOL SetStringIndex(UINT index);
    /// Takes cell \p index of the flag bitmap, 0 to 211. FALSE for another one; cell 0 then.
    BOOL SetFlagIndex(UINT index);

    const CString& GetName() const { return m_csName; }
    UINT GetStringIndex() const { return m_nStringIndex; }
    UINT GetFlagIndex() const { return m_nFlagIndex; }
    UINT GetDialingPrefix() const { return m_nDialingPrefix; } ///< 1: the code is an area code behind 1; else 0
    UINT GetCountryCode() const { return m_nCountryCode; }     ///< telephone country code
    UINT GetCountryIndex() const { return m_nCountryIndex; }

private:
    friend class CZoCountryCodeList; // renames its countries
    CString m_csName;
    UINT m_nStringIndex;
    UINT m_nFlagIndex;
    UINT m_nDialingPrefix;
    UINT m_nCountryCode;
    UINT m_nCountryIndex;
};

/// The countries, sorted by name without regard to case; owned by the list.
class ZOGBL_API CZoCountryCodeList {
public:
    explicit CZoCountryCodeList(int load = 0); ///< nonzero: LoadData at once
    virtual ~CZoCountryCodeList();
    CZoCountryCodeList(const CZoCountryCodeList&) = delete;
    CZoCountryCodeList& operator=(const CZoCountryCodeList&) = delete;

    /// Adds every record of the country table (RCDATA 25599, found through ZoGblFindResourceModule).
    /// \return 0; ZoErrOutOfMemory: a country could not be allocated; ZoErrResourceNotFound; ZoErrBadData: no data, or a record out of range, which ends
    /// the loading; ZoErrMemoryException. Countries added before a failure stay.
    virtual DWORD LoadData();
    virtual DWORD FreeData(); ///< \return 0

    /// Adds one country in name order, behind others of the same name. \return as LoadData.
    DWORD AddCountry(DWORD a, DWORD b, DWORD c);

    /// Loads every name anew and sorts again, after a change of the language library; a name that the new library lacks
    /// stays. The countries remain the same objects, so that list boxes that hold them stay valid.
    /// \return 0, or ZoErrMemoryException: all names are the old ones then, and AreNamesOutdated tells so.
    DWORD ReloadNames();
    BOOL AreNamesOutdated() const { return m_bNamesOutdated; }

    /// Fills a box that holds data instead of strings: each item's data is a CZoCountryCode*, owned by this list. The
    /// first item is selected, and the focus stays where it was. \return 0
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
    CPtrArray m_countries; // of CZoCountryCode*
    BOOL m_bNamesOutdated = FALSE;
};

using ZoCountryTextMap = CMap<UINT, UINT, CString, const CString&>;

/// The process's country list, filled first if it is empty; it may stay empty without a language library. Null without
/// the library's data.
ZOGBL_API CZoCountryCodeList* GetGlobalCountryList();

/// Maps country index to name, for every country. FALSE, and an empty map, without a list or memory.
ZOGBL_API BOOL GetCountryCodeMap(ZoCountryTextMap& map);
/// Maps country index to the telephone country code as text.
ZOGBL_API BOOL GetCountryPhoneCodeMap(ZoCountryTextMap& map);
/// The name of the country with that country index. FALSE, \p name unchanged, when it is unknown.
ZOGBL_API BOOL GetCountryNameFromCode(UINT countryIndex, CString& name);
/// The telephone country code, as text, of the first country with that country index; empty when it is unknown.
ZOGBL_API void GetCountryPhoneCode(WORD countryIndex, CString& code);
/// The dialing prefix of the first country with that country index. FALSE, \p prefix unchanged, when it is unknown.
ZOGBL_API BOOL GetCountryPrefix(WORD countryIndex, UINT& prefix);
/// The dialing prefix of the first country whose telephone country code has exactly that decimal text: "044" is not 44.
ZOGBL_API BOOL GetCountryPrefix(const CString& code, UINT& prefix);
