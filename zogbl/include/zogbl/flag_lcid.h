/// \file
/// Languages and regions: locale identifiers with flag and name.
#pragma once

#include <zogbl/export.h>
#include <zogbl/status.h>

#include <afxcoll.h>

class CComboBox;
class CListBox;

/// How a locale is named. A mode above the last one counts as ZoLcidEnglishLanguage.
constexpr DWORD ZoLcidNativeLanguage = 0;         ///< "Deutsch"
constexpr DWORD ZoLcidLanguage = 1;               ///< the language in the system's own language
constexpr DWORD ZoLcidEnglishLanguage = 2;        ///< "German"
constexpr DWORD ZoLcidNativeLanguageCountry = 3;  ///< "Deutsch - Deutschland"
constexpr DWORD ZoLcidLanguageCountry = 4;        ///< both in the system's own language
constexpr DWORD ZoLcidEnglishLanguageCountry = 5; ///< "German - Germany"

/// One locale. Its name is the one that Windows has for it.
class ZOGBL_API CZoFlagLcid {
public:
    /// \param code locale identifier in the low word, flag index in the high word
    /// \param textMode ZoLcid...
    CZoFlagLcid(DWORD code, DWORD textMode);
    virtual ~CZoFlagLcid();
    CZoFlagLcid(const CZoFlagLcid&) = default;
    CZoFlagLcid& operator=(const CZoFlagLcid&) = default;

    void SetLcidValue(UINT lcid) { m_nLcid = LOWORD(lcid); } ///< 16 bits count; the name stays until SetTextMode
    /// Takes cell \p index of the flag bitmap, 0 to 211. FALSE for another one; cell 0 then.
    BOOL SetFlagIndex(UINT index);
    /// Makes the name anew. FALSE, and an empty name, when the locale is 0 or the system has no name for it; FALSE, and
    /// the name as it was, when memory has run out.
    BOOL SetTextMode(DWORD textMode);

    /// In the system's code page; letters that it lacks are question marks, as in most native names of other scripts.
    const CString& GetName() const { return m_csName; }
    /// The same name in Unicode. \param size of \p name in characters, 192 suffice for every locale
    /// \return FALSE, and an empty text: there is no name, it does not fit, or the system has no Unicode (Windows 98).
    BOOL GetWideName(LPWSTR name, int size) const;
    UINT GetFlagIndex() const { return m_nFlagIndex; }
    UINT GetLcidValue() const { return m_nLcid; }

protected:
    /// The name of a locale, in the system's code page. FALSE, and an empty name, when the system has none. Throws CMemoryException*.
    BOOL GetLanguageName(DWORD lcid, CString& name, DWORD textMode);

private:
    CString m_csName;
    UINT m_nFlagIndex = 0;
    UINT m_nLcid = 0;
    DWORD m_dwNamedLcid = 0; // what the name was made of; 0 for an empty one
    DWORD m_dwTextMode = 0;
};

/// Locales in the order in which they were added, owned by the list, and the flags of those that are known.
class ZOGBL_API CZoFlagLcidList {
public:
    explicit CZoFlagLcidList(int load = 0); ///< nonzero: LoadData at once
    virtual ~CZoFlagLcidList();
    CZoFlagLcidList(const CZoFlagLcidList&) = delete;
    CZoFlagLcidList& operator=(const CZoFlagLcidList&) = delete;

    /// Learns the flags of locales from the flag table (RCDATA 25598 of the module that has the country table); adds no
    /// entries.
    /// \return 0, ZoErrOutOfMemory, ZoErrResourceNotFound, ZoErrBadData: no data; ZoErrMemoryException: the codes up to
    /// there are known.
    virtual DWORD LoadData();
    /// Deletes all entries; the known codes stay. \return 0
    virtual DWORD FreeData();

    /// Adds an entry. \param code locale identifier in the low word, flag index in the high word
    /// \return 0; ZoErrOutOfMemory; ZoErrBadData: the system has no name for it, or the flag index is above 211;
    /// ZoErrMemoryException.
    DWORD AddNewItem(DWORD code, DWORD textMode);
    /// Adds an entry with the flag that is known for that locale, otherwise flag 0. \return as AddNewItem
    DWORD AddLcidCode(UINT lcid, DWORD textMode);

    /// Fills a box that holds data instead of strings: each item's data is a CZoFlagLcid*, owned by this list. The first
    /// item is selected, and the focus stays where it was. \return 0
    DWORD AddToComboBox(CComboBox* box);
    DWORD AddToListBox(CListBox* box);

    /// Makes every name anew. Boxes that show the list are to be filled anew as well.
    void SetTextMode(DWORD textMode);

    int GetCount() const { return static_cast<int>(m_items.GetSize()); }
    const CZoFlagLcid* GetAt(int position) const { return static_cast<const CZoFlagLcid*>(m_items.GetAt(position)); }
    int GetKnownCount() const { return static_cast<int>(m_codes.GetSize()); }
    DWORD GetKnownCode(int position) const { return m_codes.GetAt(position); } ///< made up as for AddNewItem

private:
    CPtrArray m_items; // of CZoFlagLcid*
    CDWordArray m_codes;
};
