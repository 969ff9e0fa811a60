/// \file
/// Dialing locations: where the user dials from.
#pragma once

#include <zogbl/location_registry.h>

#include <afxcoll.h>

class CListBox;

/// One location in memory. The caller reads and changes the members; only SaveByIndex writes.
///
/// Operations return
///   0                     success
///   ZoErrOutOfMemory      no memory for the registry object
///   ZoErrMemoryException  no memory for a text
///   other                 the status of the read or write that failed, see CZoLocationRegistry
class ZOGBL_API CZoLocationItem {
public:
    explicit CZoLocationItem(DWORD index); ///< an empty location of that index
    virtual ~CZoLocationItem();
    CZoLocationItem(const CZoLocationItem&) = delete;
    CZoLocationItem& operator=(const CZoLocationItem&) = delete;

    void ClearData(); ///< numbers, the index too, become 0; texts and both arrays become empty

    /// Sets the index to \p index and reads its record, member by member in the order below. The first value that
    /// cannot be read or is missing ends the loading with its status. Members before it have their new values, this one
    /// is empty or 0, members behind it stay as they were. If it is a telephone text, the arrays hold only the texts
    /// read before it.
    DWORD LoadByIndex(DWORD index);
    /// LoadByIndex of the location that the user chose last. \return 2 if none was chosen. The index stays as it was if
    /// the chosen one cannot be read.
    DWORD LoadCurrentLocation();
    /// Writes the record of the item's index. A text of more than 255 bytes could not be read back: 234 is returned and
    /// nothing is written. If a write fails, its status is returned and the whole record is deleted, an older one too:
    /// half a record could not be loaded.
    DWORD SaveByIndex();

    DWORD m_dwIndex; ///< number of the record
    DWORD m_dwCountryIndex;
    CString m_csLocationName;
    BOOL m_bTAPIDialing; ///< TRUE: dialing rules come from the telephony service; only 1 is written as TRUE
    CString m_csCountryCode;
    CString m_csAreaCityCode;
    CString m_csInternationalAccess;
    CString m_csLongDistancePrefix;
    CString m_csLongDistanceAccess;
    CString m_csLocalPrefix;
    CString m_csDialSuffix;
    CString m_csBlockCallerID;
    CString m_csDisableCallWaiting;
    DWORD m_dwAddressCountryIndex;
    CString m_csUserName;
    CString m_csCompany;
    CString m_csDept;
    CString m_csAddress1;
    CString m_csAddress2;
    CString m_csCity;
    CString m_csState;
    CString m_csZipCode;
    CString m_csEMail;
    CString m_csCompuserve;
    CStringArray m_csaPhoneAreas;   ///< by kind, ZO_PHONE_; missing ones at the end are written as empty texts
    CStringArray m_csaPhoneNumbers; ///< the same
};

/// All locations of the user. The list owns its items and keeps them in the order of loading and adding.
class ZOGBL_API CZoLocationItemList {
public:
    CZoLocationItemList();
    virtual ~CZoLocationItemList();
    CZoLocationItemList(const CZoLocationItemList&) = delete;
    CZoLocationItemList& operator=(const CZoLocationItemList&) = delete;

    /// Appends every record of the registry, in the registry's order. A subkey whose name has other characters than
    /// digits is left out. The first item that cannot be loaded ends the loading; items loaded before stay. If nothing
    /// was saved yet: 0 items and success.
    /// \return
    ///   0                     success
    ///   ZoErrOutOfMemory      no memory for an item or the registry object, or the executable belongs to no registered
    ///                         product
    ///   ZoErrMemoryException  no memory for a list or a text
    ///   other                 the status of the read that failed, see CZoLocationItem and CZoGlobalConfig::EnumEntries
    DWORD LoadAllItems();
    /// LoadAllItems, but leaves out items that cannot be loaded. \return the status of the first failure, or 0
    DWORD LoadReadableItems();
    /// Writes every item. Failures are not reported: use SaveByIndex where they matter.
    void SaveAllItems();

    /// Appends an empty location, which the list owns. Its index is the first from GetUniqueIndex() on that neither an
    /// item nor a record of the registry has. \return null if memory has run out or the registry's records cannot be
    /// listed
    CZoLocationItem* GetNewLocation();
    /// The smallest index that no item has. The registry is not asked; it may have records that are not loaded.
    DWORD GetUniqueIndex() const;

    int GetCount() const { return static_cast<int>(m_items.GetSize()); }
    /// The item at a position, 0 to GetCount() - 1.
    CZoLocationItem* GetAt(int position) const { return static_cast<CZoLocationItem*>(m_items.GetAt(position)); }
    CZoLocationItem* GetFirstItem() const; ///< null if the list is empty

    /// The first item with that name; if \p bPrefix is nonzero, the first whose name starts with \p name. Compared by
    /// the rules of the user's language, case ignored. \return null if there is none or \p name is null
    CZoLocationItem* FindByName(const char* name, int bPrefix) const;
    CZoLocationItem* FindByIndex(DWORD index) const;
    CZoLocationItem* FindByCountryIndex(UINT countryIndex) const;

    /// Deletes the first item whose name starts with \p name, and its record if there is one. So "Off" deletes
    /// "Office". \return FALSE if \p name is null or empty, or there is no such item
    BOOL DeleteByName(const char* name);

    /// Makes a location the current one. \return 0, ZoErrOutOfMemory or the status of the write
    DWORD SetCurrentIndex(DWORD index);
    /// The current location. ZO_NO_LOCATION if none was chosen or it cannot be read; 0 if there is no memory to ask.
    DWORD GetCurrentIndex();

    /// Replaces the items of a box that holds data instead of strings: the data of each item is a CZoLocationItem*,
    /// owned by this list. Nothing is selected; the focus stays where it was. A box without a window stays as it is.
    void AddItemsToListBox(CListBox* box);

protected:
    virtual void FreeData(); ///< deletes all items
    /// Deletes the record of that index, if there is one.
    void DeleteRegIndex(DWORD index);

private:
    INT_PTR FindPosition(const char* name, bool prefix) const;
    DWORD LoadItems(bool passOverFailures);
    DWORD LoadItem(DWORD index);

    CPtrArray m_items; // of CZoLocationItem*
};
