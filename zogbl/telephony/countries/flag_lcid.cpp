#include <zogbl/flag_lcid.h>

#include <common/without_throwing.h>
#include <zogbl/custom_resource.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "ground/box_filling.h"

#include <algorithm>
#include <memory>
#include <new>

namespace {

constexpr char kSeparator[] = " - ";
constexpr int kSeparatorRoom = 2; // that many characters, since one of the two terminators is room as well
constexpr int kShortestName = 3;  // two characters and the terminator

/// The parts that a name is made of; the second is 0 where there is one part only.
struct NameParts {
    LCTYPE first;
    LCTYPE second;
};

NameParts PartsOf(DWORD textMode)
{
    constexpr NameParts kParts[] = {
        {LOCALE_SNATIVELANGNAME, 0},
        {LOCALE_SLANGUAGE, 0},
        {LOCALE_SENGLANGUAGE, 0},
        {LOCALE_SNATIVELANGNAME, LOCALE_SNATIVECTRYNAME},
        {LOCALE_SLANGUAGE, LOCALE_SCOUNTRY},
        {LOCALE_SENGLANGUAGE, LOCALE_SENGCOUNTRY},
    };
    return textMode < _countof(kParts) ? kParts[textMode] : kParts[ZoLcidEnglishLanguage];
}

/// A part of a name in the system's code page, in which it is shown; that of the locale can be another one.
int GetNarrowPart(DWORD lcid, LCTYPE part, LPSTR text, int size)
{
    return GetLocaleInfoA(lcid, part | LOCALE_USE_CP_ACP, text, size);
}

int GetWidePart(DWORD lcid, LCTYPE part, LPWSTR text, int size) { return GetLocaleInfoW(lcid, part, text, size); }

/// Characters that a name takes up, terminator included; below kShortestName if there is none.
template <class GET> int NameSize(GET getPart, DWORD lcid, NameParts parts)
{
    int size = getPart(lcid, parts.first, nullptr, 0);
    if (parts.second != 0)
        size += getPart(lcid, parts.second, nullptr, 0) + kSeparatorRoom;
    return size;
}

/// Makes a name of \p size characters. \return false, and an empty name, when it cannot be had: half a name is none
template <class CHAR, class GET> bool MakeName(GET getPart, DWORD lcid, NameParts parts, CHAR* name, int size)
{
    int length = getPart(lcid, parts.first, name, size) - 1;
    if (length >= 0 && parts.second != 0 && length + static_cast<int>(sizeof kSeparator) <= size) {
        std::copy_n(kSeparator, sizeof kSeparator, name + length);
        length += static_cast<int>(sizeof kSeparator) - 1;
        if (getPart(lcid, parts.second, name + length, size - length) == 0)
            length = -1;
    }
    if (length < 0)
        name[0] = '\0';
    return length >= 0;
}

CZoFlagLcid* Item(void* element) { return static_cast<CZoFlagLcid*>(element); }

} // namespace

// One locale ----------------------------------------------------------------------------------------------------------

CZoFlagLcid::CZoFlagLcid(DWORD code, DWORD textMode)
{
    SetLcidValue(LOWORD(code));
    SetFlagIndex(HIWORD(code));
    SetTextMode(textMode);
}

CZoFlagLcid::~CZoFlagLcid() = default;

BOOL CZoFlagLcid::SetFlagIndex(UINT index)
{
    const BOOL valid = index < ZO_FLAG_COUNT;
    m_nFlagIndex = valid ? index : 0;
    return valid;
}

BOOL CZoFlagLcid::SetTextMode(DWORD textMode)
{
    if (m_nLcid == 0) {
        m_csName.Empty();
        m_dwNamedLcid = 0;
        return FALSE;
    }
    return WithoutThrowing([&] {
        CString name;
        const BOOL named = GetLanguageName(m_nLcid, name, textMode);
        m_csName = name;
        m_dwNamedLcid = named ? m_nLcid : 0;
        m_dwTextMode = textMode;
        return named;
    });
}

BOOL CZoFlagLcid::GetLanguageName(DWORD lcid, CString& name, DWORD textMode)
{
    name.Empty();
    const NameParts parts = PartsOf(textMode);
    const int size = NameSize(GetNarrowPart, lcid, parts);
    if (size < kShortestName)
        return FALSE;
    const bool made = MakeName(GetNarrowPart, lcid, parts, name.GetBuffer(size), size);
    name.ReleaseBuffer();
    return made;
}

BOOL CZoFlagLcid::GetWideName(LPWSTR name, int size) const
{
    name[0] = L'\0';
    const NameParts parts = PartsOf(m_dwTextMode);
    const int needed = m_dwNamedLcid != 0 ? NameSize(GetWidePart, m_dwNamedLcid, parts) : 0;
    return needed >= kShortestName && needed <= size && MakeName(GetWidePart, m_dwNamedLcid, parts, name, needed);
}

// The list ------------------------------------------------------------------------------------------------------------

CZoFlagLcidList::CZoFlagLcidList(int load)
{
    if (load != 0)
        CZoFlagLcidList::LoadData();
}

CZoFlagLcidList::~CZoFlagLcidList() { CZoFlagLcidList::FreeData(); }

DWORD CZoFlagLcidList::LoadData()
{
    CZoCustomResource resource;
    // Found by the country table: flags and countries come from one library, never from two.
    const HINSTANCE module = ZoGblFindResourceModule(MAKEINTRESOURCEA(ZO_IDR_COUNTRY_TABLE), RT_RCDATA);
    if (resource.LoadCustomResource(module, static_cast<UINT>(ZO_IDR_FLAG_TABLE)) != ERROR_SUCCESS)
        return ZoErrResourceNotFound;
    const auto* code = static_cast<const DWORD*>(resource.GetResourceData());
    if (code == nullptr)
        return ZoErrBadData;
    // A table that lacks its terminator ends with the resource.
    const DWORD* end = code + resource.GetResourceSize() / sizeof *code;
    const BOOL added = WithoutThrowing([&] {
        for (; code != end && *code != 0; ++code)
            m_codes.Add(*code);
    });
    return added ? ERROR_SUCCESS : ZoErrMemoryException;
}

DWORD CZoFlagLcidList::FreeData()
{
    for (INT_PTR i = 0; i < m_items.GetSize(); ++i)
        delete Item(m_items[i]);
    m_items.RemoveAll();
    return ERROR_SUCCESS;
}

DWORD CZoFlagLcidList::AddNewItem(DWORD code, DWORD textMode)
{
    std::unique_ptr<CZoFlagLcid> item(new (std::nothrow) CZoFlagLcid(code, textMode));
    if (!item)
        return ZoErrOutOfMemory;
    if (HIWORD(code) >= ZO_FLAG_COUNT)
        return ZoErrBadData;
    if (item->GetName().IsEmpty()) {
        const bool known =
            LOWORD(code) != 0 && NameSize(GetNarrowPart, LOWORD(code), PartsOf(textMode)) >= kShortestName;
        return known ? ZoErrMemoryException : ZoErrBadData; // the name is there, the memory for it was not
    }
    if (!WithoutThrowing([&] { m_items.Add(item.get()); }))
        return ZoErrMemoryException;
    item.release();
    return ERROR_SUCCESS;
}

DWORD CZoFlagLcidList::AddLcidCode(UINT lcid, DWORD textMode)
{
    for (INT_PTR i = 0; i < m_codes.GetSize(); ++i) {
        if (LOWORD(m_codes[i]) == lcid)
            return AddNewItem(m_codes[i], textMode);
    }
    return AddNewItem(LOWORD(lcid), textMode);
}

DWORD CZoFlagLcidList::AddToComboBox(CComboBox* box)
{
    FillBox(box, m_items, Selection::kFirst);
    return ERROR_SUCCESS;
}

DWORD CZoFlagLcidList::AddToListBox(CListBox* box)
{
    FillBox(box, m_items, Selection::kFirst);
    return ERROR_SUCCESS;
}

void CZoFlagLcidList::SetTextMode(DWORD textMode)
{
    for (INT_PTR i = 0; i < m_items.GetSize(); ++i)
        Item(m_items[i])->SetTextMode(textMode);
}
