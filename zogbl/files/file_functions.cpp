#include <zogbl/file_functions.h>

#include <common/double_byte.h>
#include <zogbl/global_error.h>

#include "ground/open_security.h"
#include "ground/system_handle.h"

#include <cstdio>
#include <cstring>

namespace {

/// What makes a file of something that has attributes.
constexpr DWORD kFileAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                  FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NORMAL | FILE_ATTRIBUTE_TEMPORARY;

/// The longest folder in which GetTempFileName finds room for a name.
constexpr DWORD kLongestTempFolder = MAX_PATH - 14;

/// The names that ZoGetTempFileName can make up for one folder, prefix and extension.
constexpr DWORD kTempNameCount = 0x10000;

/// Whether there is anything for an operation on files to do. If not, \p status is the operation's result: the error if
/// the attributes cannot be read, 0 for a folder.
bool IsFile(const char* path, DWORD& attributes, DWORD& status)
{
    attributes = GetFileAttributesA(path);
    const bool readable = attributes != INVALID_FILE_ATTRIBUTES;
    status = StatusOf(readable);
    if (readable && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        return true;
    attributes = 0;
    return false;
}

bool EndsInBackslash(const char* text)
{
    const LPCSTR last = FindLastCharacter(text, '\\');
    return last != nullptr && last[1] == '\0';
}

bool CanBeOpened(const char* path)
{
    return SystemHandle(CreateFileA(path, GENERIC_READ, kSharedByAll, nullptr, OPEN_EXISTING, 0, nullptr)).IsOpen();
}

} // namespace

unsigned long CZoGlobalFileFunctions::Create(const char* path)
{
    if (path == nullptr) // Windows 95 refuses it without an error
        return ERROR_INVALID_PARAMETER;
    OpenSecurity security;
    if (!security.Initialize())
        return CZoGlobalError::GetError();
    SystemHandle file(
        CreateFileA(path, GENERIC_WRITE, 0, security.Attributes(), CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file.IsOpen() ? file.Close() : CZoGlobalError::GetError();
}

unsigned long CZoGlobalFileFunctions::Delete(const char* path) { return StatusOf(DeleteFileA(path)); }

unsigned long CZoGlobalFileFunctions::Exists(const char* path, unsigned long& exists)
{
    DWORD attributes, status;
    exists = IsFile(path, attributes, status) && (attributes & kFileAttributes) != 0;
    return status;
}

unsigned long CZoGlobalFileFunctions::Move(const char* from, const char* to) { return StatusOf(MoveFileA(from, to)); }
unsigned long CZoGlobalFileFunctions::Rename(const char* from, const char* to) { return Move(from, to); }

unsigned long CZoGlobalFileFunctions::GetSize(const char* path, unsigned long& size)
{
    size = 0;
    DWORD attributes, status;
    if (!IsFile(path, attributes, status))
        return status;
    SystemHandle file(CreateFileA(path, GENERIC_READ, kSharedByAll, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!file.IsOpen())
        return CZoGlobalError::GetError();
    const DWORD low = GetFileSize(file, nullptr);
    if (low != INVALID_FILE_SIZE)
        size = low;
    return file.Close();
}

unsigned long CZoGlobalFileFunctions::SetSize(const char* path, unsigned long size)
{
    DWORD attributes, status;
    if (!IsFile(path, attributes, status))
        return status;
    SystemHandle file(CreateFileA(path, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!file.IsOpen())
        return CZoGlobalError::GetError();
    // The high part is given, so that a size of 2 GB or more is not taken for a way back from the beginning.
    LONG high = 0;
    SetLastError(ERROR_SUCCESS);
    const DWORD low = SetFilePointer(file, static_cast<LONG>(size), &high, FILE_BEGIN);
    if (low == INVALID_SET_FILE_POINTER)
        status = CZoGlobalError::GetError(); // none where that is a position
    if (status == ERROR_SUCCESS)
        status = StatusOf(SetEndOfFile(file));
    return file.CloseOverridingFailure(status);
}

unsigned long CZoGlobalFileFunctions::GetAttributes(const char* path, unsigned long& attrs)
{
    DWORD status;
    IsFile(path, attrs, status);
    return status;
}

unsigned long CZoGlobalFileFunctions::SetAttributes(const char* path, unsigned long attrs)
{
    DWORD attributes, status;
    if (!IsFile(path, attributes, status))
        return status;
    return StatusOf(SetFileAttributesA(path, (attributes | attrs) & ~static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY)));
}

unsigned long CZoGlobalFileFunctions::ClearAttributes(const char* path, unsigned long attrs)
{
    unsigned long attributes;
    const unsigned long status = GetAttributes(path, attributes);
    // SetAttributes adds to what is there, so that this clears nothing. It stays so: callers look at the result alone.
    return status == ERROR_SUCCESS ? SetAttributes(path, attributes & ~attrs) : status;
}

unsigned long CZoGlobalFileFunctions::GetTempFile(char* buffer)
{
    if (buffer == nullptr)
        return ERROR_INVALID_PARAMETER;
    char folder[MAX_PATH + 1] = {};
    const DWORD length = GetTempPathA(sizeof folder, folder);
    if (length == 0)
        return CZoGlobalError::GetError();
    if (length > kLongestTempFolder)
        return ERROR_BUFFER_OVERFLOW;
    return StatusOf(GetTempFileNameA(folder, "TMP", 0, buffer) != 0);
}

unsigned long CZoGlobalFileFunctions::ZoGetTempFileName(const char* dir, const char* prefix, const char* ext,
                                                        unsigned int unique, char* buffer)
{
    if (buffer == nullptr)
        return 1;
    char name[MAX_PATH];
    const auto makeName = [&](unsigned int number) {
        const int length =
            std::snprintf(name, sizeof name, "%s%s%s%.4X%s%s", dir != nullptr ? dir : "",
                          dir != nullptr && !EndsInBackslash(dir) ? "\\" : "", prefix != nullptr ? prefix : "", number,
                          ext != nullptr && *ext != '.' ? "." : "", ext != nullptr ? ext : "");
        return length > 0 && static_cast<size_t>(length) < sizeof name;
    };
    const auto hand = [&] {
        std::memcpy(buffer, name, std::strlen(name) + 1);
        return 0ul;
    };
    if (unique != 0)
        return makeName(unique) ? hand() : 1;

    // A name that is taken is tried again when the clock has moved on. The count of tries ends the search where the
    // clock stands still, the time where it ticks so slowly that it does not come to every name.
    const DWORD start = GetTickCount();
    DWORD tick = start;
    for (DWORD tries = 0; tries < kTempNameCount && tick - start < kTempNameCount; ++tries, tick = GetTickCount()) {
        if (!makeName(LOWORD(tick)))
            return 1;
        if (!CanBeOpened(name)) {
            // Another process may have made it meanwhile: that file is not touched.
            if (SystemHandle(CreateFileA(name, GENERIC_READ, 0, nullptr, CREATE_NEW, 0, nullptr)).IsOpen())
                return hand();
            if (GetLastError() != ERROR_FILE_EXISTS)
                return 1;
        }
        Sleep(1);
    }
    return 1;
}
