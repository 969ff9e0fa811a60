#include <zogbl/tool_file.h>

#include <common/without_throwing.h>

#include "field.h"

#include <afxcoll.h>

#include <memory>

IMPLEMENT_DYNAMIC(CTlmFile, CObject)

namespace {

DWORD Open(CFile& file, LPCSTR path, UINT mode)
{
    if (path == nullptr || *path == '\0')
        return ZO_TLM_NO_NAME;
    return ResultOr(ZO_TLM_OPEN_FAILED, [&]() -> DWORD {
        return file.Open(path, mode | CFile::shareDenyNone | CFile::typeBinary) ? 0 : ZO_TLM_OPEN_FAILED;
    });
}

/// What is wrong with a header; 0 for a valid one.
DWORD CheckHeader(const ZoToolFileHeader& header)
{
    if (header.dwSize != ZO_TLM_HEADER_SIZE)
        return ZO_TLM_BAD_HEADER_SIZE;
    if (header.dwMagic != ZO_TLM_FILE_MAGIC)
        return ZO_TLM_BAD_MAGIC;
    return header.dwVersion == ZO_TLM_FILE_VERSION ? 0 : ZO_TLM_BAD_FILE_VERSION;
}

/// An item, or null when memory has run out.
CTlmItem* NewItem()
{
    return ResultOr(nullptr, [] { return new CTlmItem; });
}

} // namespace

CTlmFile::CTlmFile() : m_header{ZO_TLM_HEADER_SIZE, ZO_TLM_FILE_MAGIC, ZO_TLM_FILE_VERSION, 0, ""} {}

void CTlmFile::GetDescription(CString& text) const { GetField(m_header.szDescription, text); }
DWORD CTlmFile::SetDescription(const char* text) { return SetField(m_header.szDescription, text); }

DWORD CTlmFile::IsValidFile(const char* path)
{
    CFile file;
    if (const DWORD status = Open(file, path, CFile::modeRead))
        return status;
    return ResultOr(ZO_TLM_READ_FAILED, [&]() -> DWORD {
        ZoToolFileHeader header;
        if (file.GetLength() < sizeof header)
            return ZO_TLM_FILE_TOO_SHORT;
        file.Seek(0, CFile::begin);
        return file.Read(&header, sizeof header) == sizeof header ? CheckHeader(header) : ZO_TLM_READ_FAILED;
    });
}

// Loading -------------------------------------------------------------------------------------------------------------

DWORD CTlmFile::LoadFileData(const char* path, DWORD version, DWORD size, CObArray* items, DWORD options)
{
    if (version != m_dwFileVersion || size != m_dwHeaderSize)
        return ZO_TLM_WRONG_VERSION;
    CFile file;
    if (const DWORD status = Open(file, path, CFile::modeRead))
        return status;
    return ResultOr(ZO_TLM_READ_FAILED, [&] { return ReadItems(file, items, options); });
}

DWORD CTlmFile::ReadItems(CFile& file, CObArray* items, DWORD options)
{
    const ULONGLONG length = file.GetLength();
    ZoToolFileHeader header;
    if (file.Read(&header, sizeof header) != sizeof header || CheckHeader(header) != 0)
        return ZO_TLM_WRONG_VERSION;
    m_header = header;

    UINT command = ZO_TLM_FIRST_COMMAND;
    for (ULONGLONG left = (length - sizeof header) / ZO_TLM_ITEM_SIZE; left > 0; --left) {
        if (items == nullptr)
            return ZO_TLM_LIST_FULL;
        std::unique_ptr<CTlmItem> item(NewItem());
        if (!item)
            return ZO_TLM_NO_MEMORY;
        if (const DWORD status = item->LoadItemData(file, ZO_TLM_ITEM_VERSION, ZO_TLM_ITEM_SIZE))
            return status;
        const bool isForMenu = (options & ZO_TLM_FOR_MENU) != 0;
        if (isForMenu && (item->GetDataFlags() & ZO_TLM_IN_MENU) == 0)
            continue;
        if (isForMenu)
            item->SetCommand(command--);
        const DWORD status = ResultOr(ZO_TLM_LIST_FULL, [&] { return items->Add(item.get()), DWORD{0}; });
        if (status != 0)
            return status;
        item.release();
    }
    return 0;
}

// Saving --------------------------------------------------------------------------------------------------------------

DWORD CTlmFile::SaveFileData(const char* path, DWORD version, DWORD size, CObArray* items)
{
    DWORD status = ZO_TLM_WRONG_VERSION;
    if (version == m_dwFileVersion && size == m_dwHeaderSize) {
        CFile file;
        status = Open(file, path, CFile::modeCreate | CFile::modeWrite);
        if (status == 0)
            status = WriteHeader(file);
        const INT_PTR count = items != nullptr ? items->GetSize() : 0;
        for (INT_PTR i = 0; status == 0 && i < count; ++i) {
            if (auto* item = static_cast<CTlmItem*>(items->GetAt(i)))
                item->SaveItemData(file, ZO_TLM_ITEM_VERSION, ZO_TLM_ITEM_SIZE);
        }
    }
    // What is no file of tools must not look like one. Without a name or an open file nothing was touched.
    if (status != 0 && status != ZO_TLM_NO_NAME && status != ZO_TLM_OPEN_FAILED && path != nullptr)
        DeleteFileA(path);
    return status;
}

DWORD CTlmFile::WriteHeader(CFile& file)
{
    m_header.dwSize = m_dwHeaderSize;
    m_header.dwMagic = ZO_TLM_FILE_MAGIC;
    m_header.dwVersion = m_dwFileVersion;
    m_header.dwReserved = 0;
    return ResultOr(ZO_TLM_WRITE_FAILED, [&] { return file.Write(&m_header, sizeof m_header), DWORD{0}; });
}
