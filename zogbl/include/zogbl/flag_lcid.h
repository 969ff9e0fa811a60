/// \file
/// Languages and regions: locale identifiers with flag and name.
#pragma once

#include <zogbl/export.h>
#include <zogbl/status.h>

#include <afxcoll.h>

class CComboBox;
class CListBox;

/// Text modes: how a locale is named. A higher number counts as ZoLcidEnglishLanguage.
constexpr DWORD ZoLcidNativeLanguage = 0;         ///< "Deutsch"
constexpr DWORD ZoLcidLanguage = 1;               ///< the language in the system's own language
constexpr DWORD ZoLcidEnglishLanguage = 2;        ///< "German"
constexpr DWORD ZoLcidNativeLanguageCountry = 3;  ///< "Deutsch - Deutschland"
constexpr DWORD ZoLcidLanguageCountry = 4;        ///< both in the system's own language
constexpr DWORD ZoLcidEnglishLanguageCountry = 5; ///< "German - Germany"

/// One locale, with the name that Windows has for it.
class ZOGBL_API CZoFlagLcid {
public:
    /// \param code locale identifier in the low word, flag index in the high word
    /// \param textMode a ZoLcid mode
    CZoFlagLcid(DWORD code, DWORD textMode);
    virtual ~CZoFlagLcid();
    CZoFlagLcid(const CZoFlagLcid&) = default;
    CZoFlagLcid& operator=(const CZoFlagLcid&) = default;

    void SetLcidValue(UINT lcid) { m_nLcid = LOWORD(lcid); } ///< only the low 16 bits; the name stays until SetTextMode
    /// Takes cell \p index of the flag bitmap, 0 to 211. \return FALSE for another one: then cell 0
    BOOL SetFlagIndex(UINT index);
    /// Makes the name anew. \return FALSE: the locale is 0 or the system has no name for it, and the name is empty; or
    /// memory has run out, and the name is unchanged
    BOOL SetTextMode(DWORD textMode);

    /// In the system's code page. Letters that it lacks are question marks, as in most native names of other scripts.
    const CString& GetName() const { return m_csName; }
    /// The same name in Unicode. \param size of \p name in characters; 192 are enough for every locale
    /// \return FALSE, with an empty text: there is no name, it does not fit, or the system has no Unicode (Windows 98)
    BOOL GetWideName(LPWSTR name, int size) const;
    UINT GetFlagIndex() const { return m_nFlagIndex; }
    UINT GetLcidValue() const { return m_nLcid; }

protected:
    /// The name of a locale, in the system's code page. Throws CMemoryException*. \return FALSE, with an empty name:
    /// the system has none
    BOOL GetLanguageName(DWORD lcid, CString& name, DWORD textMode);

private:
    CString m_csName;
    UINT m_nFlagIndex = 0;
    UINT m_nLcid = 0;
    DWORD m_dwNamedLcid = 0; // what the name was made of; 0 for an empty one
    DWORD m_dwTextMode = 0;
};

/// Owns locales, in the order in which they were added, and knows the flags of those in the flag table.
class ZOGBL_API CZoFlagLcidList {
public:
    explicit CZoFlagLcidList(int load = 0); ///< nonzero: LoadData at once
    virtual ~CZoFlagLcidList();
    CZoFlagLcidList(const CZoFlagLcidList&) = delete;
    CZoFlagLcidList& operator=(const CZoFlagLcidList&) = delete;

    /// Adds the codes of the flag table to the known ones (RCDATA 25598 of the module that has the country table). It
    /// adds no entries.
    /// \return
    ///   0
    ///   ZoErrResourceNotFound  there is no table
    ///   ZoErrBadData           the table has no data
    ///   ZoErrMemoryException   no memory; the codes read so far are known
    virtual DWORD LoadData();
    /// Deletes all entries; the known codes stay. \return 0
    virtual DWORD FreeData();

    /// Adds an entry. \param code locale identifier in the low word, flag index in the high word
    /// \return
    ///   0
    ///   ZoErrOutOfMemory      the entry could not be allocated
    ///   ZoErrBadData          the system has no name for the locale, or the flag index is above 211
    ///   ZoErrMemoryException  no memory for the name or the list
    DWORD AddNewItem(DWORD code, DWORD textMode);
    /// Adds an entry with the flag that is known for that locale, else flag 0. \return as AddNewItem
    DWORD AddLcidCode(UINT lcid, DWORD textMode);

    /// Fills a box that holds data instead of strings: each item's data is a CZoFlagLcid*, owned by this list. The
    /// first item is selected; the focus stays. A box without a window stays as it is. \return 0
    DWORD AddToComboBox(CComboBox* box);
    DWORD AddToListBox(CListBox* box);

    /// Makes every name anew. Boxes that show the list must be filled anew too.
    void SetTextMode(DWORD textMode);

    int GetCount() const { return static_cast<int>(m_items.GetSize()); }
    const CZoFlagLcid* GetAt(int position) const { return static_cast<const CZoFlagLcid*>(m_items.GetAt(position)); }
    int GetKnownCount() const { return static_cast<int>(m_codes.GetSize()); }
    DWORD GetKnownCode(int position) const { return m_codes.GetAt(position); } ///< locale and flag as for AddNewItem

private:
    CPtrArray m_items; // of CZoFlagLcid*
    CDWordArray m_codes;
};
