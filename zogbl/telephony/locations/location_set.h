/// \file
/// All locations as an editor changes them. Nothing is written before Save.
#pragma once

#include <zogbl/location_item.h>

#include <memory>
#include <vector>

/// All but the index. Throws CMemoryException*.
void CopyLocation(CZoLocationItem& to, const CZoLocationItem& from);
/// Whether all but the index is the same.
bool AreEqual(const CZoLocationItem& one, const CZoLocationItem& other);

class LocationSet {
public:
    static constexpr int kMost = 100; ///< so many locations are edited

    /// Reads all locations that can be read. \return 0, or the status of the first that cannot. Throws
    /// CMemoryException*.
    DWORD Load();

    int GetCount() const { return static_cast<int>(m_entries.size()); }
    CZoLocationItem& GetAt(int position) { return m_entries[static_cast<size_t>(position)]->item; }
    const CZoLocationItem& GetAt(int position) const { return m_entries[static_cast<size_t>(position)]->item; }
    /// Its position, -1: none. \param except a position that does not count. Case is ignored.
    int FindName(LPCSTR name, int except = -1) const;

    /// Appends an empty location with an index that is free now. \return its position; -1: the set is full, or the
    /// registry cannot tell. Throws CMemoryException*.
    int Add();
    void Remove(int position); ///< the first one becomes the current one, if that goes. Throws CMemoryException*.

    /// The location that the user dials from; -1: none.
    int GetCurrent() const;
    void SetCurrent(int position) { m_current = GetAt(position).m_dwIndex; }

    bool IsChanged() const;

    /// Writes what has been changed since Load or the last Save. What another program has written meanwhile stays: of a
    /// location that both have changed, the texts that were changed here are taken from here, the others from there; a
    /// new location whose index has been taken gets another one.
    /// \param failed the position of the location that could not be written, -1: another failure
    /// \return 0, or the first failure's status. What was written before it stays written; the set keeps everything and
    /// can be saved again. A record that the failed write has deleted is put back as it was, if that succeeds.
    DWORD Save(int& failed);

private:
    struct Entry {
        explicit Entry(DWORD index) : item(index), kept(index) {}

        CZoLocationItem item;
        CZoLocationItem kept; // as it stands in the registry, as far as is known
        bool isKept = false;  // whether it stands there
        bool isNew = true;    // never been written, so another program may have taken its index

        bool IsChanged() const { return !isKept || !AreEqual(item, kept); }
        void Keep() // Throws CMemoryException*.
        {
            CopyLocation(kept, item);
            isKept = true;
            isNew = false;
        }
    };

    DWORD FindFreeIndex() const;
    DWORD SaveEntry(Entry& entry);

    std::vector<std::unique_ptr<Entry>> m_entries;
    std::vector<DWORD> m_removed; // indexes
    DWORD m_current = ZO_NO_LOCATION;
    DWORD m_keptCurrent = ZO_NO_LOCATION;
};
