#include <zogbl/location_item.h>

#include <common/double_byte.h>
#include <common/without_throwing.h>
#include <zogbl/number_text.h>

#include "ground/box_filling.h"
#include "location_record.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace {

bool IsEqual(LPCSTR first, int firstLength, LPCSTR second, int secondLength)
{
    return CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, first, firstLength, second, secondLength) == CSTR_EQUAL;
}

/// Compares \p text with as much of \p name as is as long, a character of two bytes whole or not at all.
bool StartsWith(LPCSTR name, LPCSTR text)
{
    const auto length = static_cast<int>(std::strlen(text));
    LPCSTR end = name;
    while (*end != '\0' && end - name < length)
        end = NextCharacter(end);
    return length == 0 || (end != name && IsEqual(name, static_cast<int>(end - name), text, length));
}

bool IsNumber(LPCSTR name)
{
    return std::all_of(name, name + std::strlen(name), [](char c) { return c >= '0' && c <= '9'; });
}

bool Contains(const CDWordArray& indexes, DWORD index)
{
    const DWORD* end = indexes.GetData() + indexes.GetSize();
    return std::find(indexes.GetData(), end, index) != end;
}

/// Takes the index of a record; what else is below the key is passed over.
DWORD CollectIndex(void* indexes, LPCSTR subkeyName)
{
    if (!IsNumber(subkeyName))
        return ERROR_SUCCESS;
    const BOOL added = WithoutThrowing([=] { static_cast<CDWordArray*>(indexes)->Add(StringToDWord(subkeyName)); });
    return added ? ERROR_SUCCESS : ZoErrMemoryException;
}

/// Appends the indexes of all records, in the registry's order. \return as LoadAllItems
DWORD ListRecords(CDWordArray& indexes)
{
    const auto record = LocationRecord::Create();
    if (!record || !record->GoToLocations())
        return ZoErrOutOfMemory;
    const DWORD status =
        CZoGlobalConfig().EnumEntries(record->GetAccessMode(), record->GetSection(), &CollectIndex, &indexes);
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status; // no location was ever saved
}

} // namespace

CZoLocationItemList::CZoLocationItemList() = default;
CZoLocationItemList::~CZoLocationItemList() { CZoLocationItemList::FreeData(); }

void CZoLocationItemList::FreeData()
{
    for (int i = 0; i < GetCount(); ++i)
        delete GetAt(i);
    m_items.RemoveAll();
}

// Registry ------------------------------------------------------------------------------------------------------------

DWORD CZoLocationItemList::LoadAllItems() { return LoadItems(false); }
DWORD CZoLocationItemList::LoadReadableItems() { return LoadItems(true); }

DWORD CZoLocationItemList::LoadItems(bool passOverFailures)
{
    const CWaitCursor wait;
    CDWordArray indexes;
    DWORD failure = ListRecords(indexes);
    for (INT_PTR i = 0; i < indexes.GetSize() && (failure == ERROR_SUCCESS || passOverFailures); ++i) {
        const DWORD status = LoadItem(indexes[i]);
        if (failure == ERROR_SUCCESS)
            failure = status;
    }
    return failure;
}

DWORD CZoLocationItemList::LoadItem(DWORD index)
{
    std::unique_ptr<CZoLocationItem> item(new (std::nothrow) CZoLocationItem(index));
    if (!item)
        return ZoErrOutOfMemory;
    const DWORD status = item->LoadByIndex(index);
    if (status != ERROR_SUCCESS)
        return status;
    if (!WithoutThrowing([&] { m_items.Add(item.get()); }))
        return ZoErrMemoryException;
    item.release();
    return ERROR_SUCCESS;
}

void CZoLocationItemList::SaveAllItems()
{
    const CWaitCursor wait;
    for (int i = 0; i < GetCount(); ++i)
        GetAt(i)->SaveByIndex();
}

void CZoLocationItemList::DeleteRegIndex(DWORD index)
{
    const auto record = LocationRecord::Create();
    if (record && record->DoesIndexExist(index))
        record->DeleteIndex(index);
}

DWORD CZoLocationItemList::SetCurrentIndex(DWORD index)
{
    const auto record = LocationRecord::Create();
    return record ? record->SetCurrentIndex(index) : ZoErrOutOfMemory;
}

DWORD CZoLocationItemList::GetCurrentIndex()
{
    const auto record = LocationRecord::Create();
    DWORD index = 0;
    if (record)
        record->GetCurrentIndex(index);
    return index;
}

// Items ---------------------------------------------------------------------------------------------------------------

CZoLocationItem* CZoLocationItemList::GetNewLocation()
{
    // A record that is not in the list, because it could not be read or is another program's, is not to be overwritten.
    CDWordArray records;
    if (ListRecords(records) != ERROR_SUCCESS)
        return nullptr;
    DWORD index = GetUniqueIndex();
    while (FindByIndex(index) != nullptr || Contains(records, index))
        ++index;
    std::unique_ptr<CZoLocationItem> item(new (std::nothrow) CZoLocationItem(index));
    if (!item)
        return nullptr;
    if (!WithoutThrowing([&] { m_items.Add(item.get()); }))
        return nullptr;
    return item.release();
}

DWORD CZoLocationItemList::GetUniqueIndex() const
{
    DWORD candidate = 0;
    for (bool taken = true; taken;) {
        taken = false;
        for (int i = 0; i < GetCount(); ++i) {
            if (GetAt(i)->m_dwIndex == candidate) {
                ++candidate;
                taken = true;
            }
        }
    }
    return candidate;
}

CZoLocationItem* CZoLocationItemList::GetFirstItem() const { return GetCount() > 0 ? GetAt(0) : nullptr; }

INT_PTR CZoLocationItemList::FindPosition(const char* name, bool prefix) const
{
    for (int i = 0; name != nullptr && i < GetCount(); ++i) {
        const LPCSTR candidate = GetAt(i)->m_csLocationName;
        if (prefix ? StartsWith(candidate, name) : IsEqual(candidate, -1, name, -1))
            return i;
    }
    return -1;
}

CZoLocationItem* CZoLocationItemList::FindByName(const char* name, int bPrefix) const
{
    const INT_PTR position = FindPosition(name, bPrefix != 0);
    return position >= 0 ? GetAt(static_cast<int>(position)) : nullptr;
}

CZoLocationItem* CZoLocationItemList::FindByIndex(DWORD index) const
{
    for (int i = 0; i < GetCount(); ++i) {
        if (GetAt(i)->m_dwIndex == index)
            return GetAt(i);
    }
    return nullptr;
}

CZoLocationItem* CZoLocationItemList::FindByCountryIndex(UINT countryIndex) const
{
    for (int i = 0; i < GetCount(); ++i) {
        if (GetAt(i)->m_dwCountryIndex == countryIndex)
            return GetAt(i);
    }
    return nullptr;
}

BOOL CZoLocationItemList::DeleteByName(const char* name)
{
    if (name == nullptr || *name == '\0')
        return FALSE;
    const INT_PTR position = FindPosition(name, true);
    if (position < 0)
        return FALSE;
    const std::unique_ptr<CZoLocationItem> item(GetAt(static_cast<int>(position)));
    m_items.RemoveAt(position);
    DeleteRegIndex(item->m_dwIndex);
    return TRUE;
}

void CZoLocationItemList::AddItemsToListBox(CListBox* box) { FillBox(box, m_items, Selection::kNone); }
