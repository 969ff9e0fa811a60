#include "location_set.h"

#include <common/without_throwing.h>

#include "location_fields.h"

#include <algorithm>

namespace {

CString PhoneText(const CStringArray& texts, DWORD kind)
{
    return static_cast<INT_PTR>(kind) < texts.GetSize() ? texts[kind] : CString();
}

constexpr CStringArray CZoLocationItem::*kPhones[] = {&CZoLocationItem::m_csaPhoneAreas,
                                                      &CZoLocationItem::m_csaPhoneNumbers};

/// Calls \p visit(text or number, the same of the other) for all but the index. Throws what it does.
template <class VISIT> void ForBoth(CZoLocationItem& one, const CZoLocationItem& other, VISIT visit)
{
    for (const LocationField& field : kLocationFields)
        std::visit([&](auto member) { visit(one.*member, other.*member); }, field.member);
    for (const auto phones : kPhones) {
        for (DWORD kind = 0; kind < ZO_PHONE_KINDS; ++kind) {
            CString text = PhoneText(one.*phones, kind);
            visit(text, PhoneText(other.*phones, kind));
            (one.*phones).SetAtGrow(static_cast<INT_PTR>(kind), text);
        }
    }
}

/// Takes over from \p theirs what \p mine has left as it was in \p before. Throws CMemoryException*.
void Merge(CZoLocationItem& mine, const CZoLocationItem& before, const CZoLocationItem& theirs)
{
    CZoLocationItem merged(mine.m_dwIndex);
    CopyLocation(merged, theirs);
    for (const LocationField& field : kLocationFields) {
        std::visit(
            [&](auto member) {
                if (mine.*member != before.*member)
                    merged.*member = mine.*member;
            },
            field.member);
    }
    for (const auto phones : kPhones) {
        for (DWORD kind = 0; kind < ZO_PHONE_KINDS; ++kind) {
            const CString text = PhoneText(mine.*phones, kind);
            if (text != PhoneText(before.*phones, kind))
                (merged.*phones)[kind] = text;
        }
    }
    CopyLocation(mine, merged);
}

} // namespace

void CopyLocation(CZoLocationItem& to, const CZoLocationItem& from)
{
    ForBoth(to, from, [](auto& one, const auto& other) { one = other; });
}

bool AreEqual(const CZoLocationItem& one, const CZoLocationItem& other)
{
    const auto isSame = [&](auto member) { return one.*member == other.*member; };
    for (const LocationField& field : kLocationFields) {
        if (!std::visit(isSame, field.member))
            return false;
    }
    for (const auto phones : kPhones) {
        for (DWORD kind = 0; kind < ZO_PHONE_KINDS; ++kind) {
            if (PhoneText(one.*phones, kind) != PhoneText(other.*phones, kind))
                return false;
        }
    }
    return true;
}

DWORD LocationSet::Load()
{
    CZoLocationItemList list;
    const DWORD status = list.LoadReadableItems();
    std::vector<std::unique_ptr<Entry>> entries;
    for (int i = 0; i < list.GetCount(); ++i) {
        entries.push_back(std::make_unique<Entry>(list.GetAt(i)->m_dwIndex));
        CopyLocation(entries.back()->item, *list.GetAt(i));
        entries.back()->Keep();
    }
    m_entries = std::move(entries);
    m_removed.clear();
    m_current = m_keptCurrent = list.GetCurrentIndex();
    return status;
}

int LocationSet::FindName(LPCSTR name, int except) const
{
    for (int i = 0; i < GetCount(); ++i) {
        if (i != except && ::CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, GetAt(i).m_csLocationName, -1, name,
                                            -1) == CSTR_EQUAL)
            return i;
    }
    return -1;
}

/// Neither a location here nor a record of the registry has it. \return ZO_NO_LOCATION: the registry cannot tell
DWORD LocationSet::FindFreeIndex() const
{
    const auto isTaken = [this](DWORD index) {
        return std::any_of(m_entries.begin(), m_entries.end(),
                           [=](const auto& entry) { return entry->item.m_dwIndex == index; });
    };
    CZoLocationItemList records;
    for (;;) {
        const CZoLocationItem* item = records.GetNewLocation();
        if (item == nullptr)
            return ZO_NO_LOCATION;
        if (!isTaken(item->m_dwIndex))
            return item->m_dwIndex;
    }
}

int LocationSet::Add()
{
    if (GetCount() >= kMost)
        return -1;
    const DWORD index = FindFreeIndex();
    if (index == ZO_NO_LOCATION)
        return -1;
    m_entries.push_back(std::make_unique<Entry>(index));
    return GetCount() - 1;
}

void LocationSet::Remove(int position)
{
    const auto entry = m_entries.begin() + position;
    const DWORD index = (*entry)->item.m_dwIndex;
    if ((*entry)->isKept)
        m_removed.push_back(index);
    m_entries.erase(entry);
    if (index == m_current)
        m_current = m_entries.empty() ? ZO_NO_LOCATION : GetAt(0).m_dwIndex;
}

int LocationSet::GetCurrent() const
{
    for (int i = 0; i < GetCount(); ++i) {
        if (GetAt(i).m_dwIndex == m_current)
            return i;
    }
    return -1;
}

bool LocationSet::IsChanged() const
{
    return !m_removed.empty() || m_current != m_keptCurrent ||
           std::any_of(m_entries.begin(), m_entries.end(), [](const auto& entry) { return entry->IsChanged(); });
}

DWORD LocationSet::SaveEntry(Entry& entry)
{
    CZoLocationRegistry registry;
    if (entry.isNew && registry.DoesIndexExist(entry.item.m_dwIndex)) {
        const DWORD index = FindFreeIndex();
        if (index == ZO_NO_LOCATION)
            return ZoErrOutOfMemory;
        if (m_current == entry.item.m_dwIndex)
            m_current = index;
        entry.item.m_dwIndex = index;
    }
    CZoLocationItem theirs(entry.item.m_dwIndex);
    const bool isThere = theirs.LoadByIndex(entry.item.m_dwIndex) == ERROR_SUCCESS; // else it is written whole
    if (isThere) {
        if (entry.isKept && !AreEqual(theirs, entry.kept))
            Merge(entry.item, entry.kept, theirs);
        CopyLocation(entry.kept, theirs);
    }
    entry.isNew = false; // what the index holds from now on is ours, half of it, too
    const DWORD status = entry.item.SaveByIndex();
    if (status == ERROR_SUCCESS)
        entry.Keep();
    else if (isThere && !registry.DoesIndexExist(entry.item.m_dwIndex))
        entry.isKept = theirs.SaveByIndex() == ERROR_SUCCESS; // it may fail as well: the location is kept here
    return status;
}

DWORD LocationSet::Save(int& failed)
{
    failed = -1;
    return ResultOr(ZoErrMemoryException, [&]() -> DWORD {
        for (int i = 0; i < GetCount(); ++i) {
            Entry& entry = *m_entries[static_cast<size_t>(i)];
            if (!entry.IsChanged())
                continue;
            failed = i;
            const DWORD status = SaveEntry(entry);
            if (status != ERROR_SUCCESS)
                return status;
            failed = -1;
        }
        while (!m_removed.empty()) {
            const DWORD status = CZoLocationRegistry().DeleteIndex(m_removed.back());
            if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND)
                return status;
            m_removed.pop_back();
        }
        if (m_current == m_keptCurrent)
            return ERROR_SUCCESS;
        const DWORD status = CZoLocationItemList().SetCurrentIndex(m_current);
        if (status == ERROR_SUCCESS)
            m_keptCurrent = m_current;
        return status;
    });
}
