/// \file
/// Dialing locations: where the user dials from.
#pragma once

#include <zogbl/location_registry.h>

#include <afxcoll.h>

class CListBox;

/// One location in memory. The members are the caller's to read and change; nothing is written before SaveByIndex.
///
/// Operations return 0; ZoErrOutOfMemory: no memory for the registry object; ZoErrMemoryException; otherwise the status
/// of the read or write that failed, see CZoLocationRegistry.
class ZOGBL_API CZoLocationItem {
public:
    explicit CZoLocationItem(DWORD index); ///< an empty location of that index
    virtual ~CZoLocationItem();
    CZoLocationItem(const CZoLocationItem&) = delete;
    CZoLocationItem& operator=(const CZoLocationItem&) = delete;

    void ClearData(); ///< numbers become 0, the index too; texts and both arrays become empty

    /// Takes \p index and reads its record, member by member in the order below. The first value that cannot be read, a
    /// missing one included, ends the loading with its status: members before it have their new values, itself is empty
    /// or 0, those behind it stay as they were.
    DWORD LoadByIndex(DWORD index);
    /// LoadByIndex of the location that the user chose last; 2 when none was chosen. The index stays as it was when it
    /// cannot be read which one that is.
    DWORD LoadCurrentLocation();
    /// Writes the record of the item's index. A text of more than 255 bytes could not be read back: 234 then, and
    /// nothing is written. If a write fails, the whole record is deleted, the one that was there before included, and that
    /// write's status returned: half a record could not be loaded.
    DWORD SaveByIndex();

    DWORD m_dwIndex; ///< number of the record
    DWORD m_dwCountryIndex;
    CString m_csLocationName;
    BOOL m_bTAPIDialing; ///< TRUE: dialing rules come from the telephony service; written as TRUE only when it is 1
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
    CStringArray m_csaPhoneAreas;   ///< by kind, ZO_PHONE_; what is missing at the end is written as an empty text
    CStringArray m_csaPhoneNumbers; ///< likewise
};

/// All locations of the user. The list owns its items, in the order in which they were loaded or added.
class ZOGBL_API CZoLocationItemList {
public:
    CZoLocationItemList();
    virtual ~CZoLocationItemList();
    CZoLocationItemList(const CZoLocationItemList&) = delete;
    CZoLocationItemList& operator=(const CZoLocationItemList&) = delete;

    /// Adds every record of the registry to the list, in the order in which the registry lists them; subkeys whose
    /// names are not made of digits alone are passed over. An item that cannot be loaded ends the loading; those loaded
    /// before stay. Nothing saved yet gives 0 items and success.
    /// \return 0; ZoErrOutOfMemory: no memory for an item, or the executable belongs to no registered product;
    /// ZoErrMemoryException; the status of the read that failed, see CZoLocationItem and CZoGlobalConfig::EnumEntries.
    DWORD LoadAllItems();
    /// As LoadAllItems, but passes over the items that cannot be loaded. \return the status of the first one.
    DWORD LoadReadableItems();
    /// Writes every item. Whether one failed is not told: use SaveByIndex where it matters.
    void SaveAllItems();

    /// Appends an empty location; owned by the list. Its index is the smallest that neither an item nor a record of the
    /// registry has, from GetUniqueIndex on. Null when memory has run out or the registry's records cannot be listed.
    CZoLocationItem* GetNewLocation();
    /// The smallest index that no item has; the registry, which may have records that are not loaded, is not asked.
    DWORD GetUniqueIndex() const;

    int GetCount() const { return static_cast<int>(m_items.GetSize()); }
    /// The item at a position, 0 to GetCount() - 1.
    CZoLocationItem* GetAt(int position) const { return static_cast<CZoLocationItem*>(m_items.GetAt(position)); }
    CZoLocationItem* GetFirstItem() const; ///< null for an empty list

    /// The first item of that name, or with \p bPrefix nonzero whose name starts with \p name, by the rules of the
    /// user's language and without regard to case. Null if there is none.
    CZoLocationItem* FindByName(const char* name, int bPrefix) const;
    CZoLocationItem* FindByIndex(DWORD index) const;
    CZoLocationItem* FindByCountryIndex(UINT countryIndex) const;

    /// Deletes the first item whose name starts with \p name, and its record if it has one. As in a search, "Off" stands
    /// for "Office". FALSE for an empty text and when there is no such item.
    BOOL DeleteByName(const char* name);

    /// Makes a location the current one. \return 0, ZoErrOutOfMemory or the status of the write.
    DWORD SetCurrentIndex(DWORD index);
    /// The current location: ZO_NO_LOCATION when none was chosen or it cannot be read; 0 without memory to ask.
    DWORD GetCurrentIndex();

    /// Fills a box that holds data instead of strings: each item's data is a CZoLocationItem*, owned by this list.
    /// Nothing is selected, and the focus stays where it was.
    void AddItemsToListBox(CListBox* box);

protected:
    virtual void FreeData(); ///< deletes all items
    /// Deletes the record of that index if there is one.
    void DeleteRegIndex(DWORD index);

private:
    INT_PTR FindPosition(const char* name, bool prefix) const;
    DWORD LoadItems(bool passOverFailures);
    DWORD LoadItem(DWORD index);

    CPtrArray m_items; // of CZoLocationItem*
};
