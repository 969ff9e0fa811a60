// Walks through a folder beside the bare search.
#include "families.h"
#include "harness.h"

#include <zogbl/directory_functions.h>

#include <afx.h>

#include <cstdio>
#include <cstring>

namespace {

constexpr Limits kWalkLimits = {0, 1.05};

constexpr DWORD kFileCount = 200;
constexpr DWORD kFileSize = 10;

/// A folder with files in the temporary folder, removed with its object.
class FilledFolder {
public:
    FilledFolder()
    {
        char temporary[MAX_PATH];
        Require(GetTempPathA(sizeof temporary, temporary) != 0, "there is no temporary folder");
        m_path.Format("%sZoBenchmark-%lu", temporary, GetCurrentProcessId());
        Require(CreateDirectoryA(m_path, nullptr), "a folder could not be made");
        for (DWORD i = 0; i < kFileCount; ++i) {
            CString name;
            name.Format("%s\\fax %03lu.tif", static_cast<LPCSTR>(m_path), i);
            const HANDLE file = CreateFileA(name, GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
            DWORD written = 0;
            WriteFile(file, "0123456789", kFileSize, &written, nullptr);
            CloseHandle(file);
            Require(written == kFileSize, "a file could not be made");
        }
    }
    ~FilledFolder() { CZoGlobalDirectoryFunctions::DeleteDirChain(m_path); }
    FilledFolder(const FilledFolder&) = delete;
    FilledFolder& operator=(const FilledFolder&) = delete;

    LPCSTR GetPath() const { return m_path; }

private:
    CString m_path;
};

/// The least that a walk needs: calls \p visit(entry) for each file.
template <class VISIT> void SearchFiles(LPCSTR folder, VISIT visit)
{
    char pattern[MAX_PATH];
    std::snprintf(pattern, sizeof pattern, "%s\\*.*", folder);
    WIN32_FIND_DATAA entry;
    const HANDLE search = FindFirstFileA(pattern, &entry);
    Require(search != INVALID_HANDLE_VALUE, "a folder could not be searched");
    do {
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
            visit(entry);
    } while (FindNextFileA(search, &entry));
    FindClose(search);
}

void MakePath(char (&path)[MAX_PATH], LPCSTR folder, const WIN32_FIND_DATAA& entry)
{
    const size_t length = std::strlen(folder);
    std::memcpy(path, folder, length);
    path[length] = '\\';
    std::memcpy(path + length + 1, entry.cFileName, std::strlen(entry.cFileName) + 1);
}

/// A file's size, found out as the library does: by opening the file.
DWORD ReadSize(LPCSTR path)
{
    if ((GetFileAttributesA(path) & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return 0;
    const HANDLE file =
        CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    const DWORD size = GetFileSize(file, nullptr);
    CloseHandle(file);
    return size;
}

unsigned long __stdcall CountPath(void* context, const char* path)
{
    Keep(path);
    ++*static_cast<DWORD*>(context);
    return 0;
}

} // namespace

void MeasureFolders(Harness& harness)
{
    const FilledFolder filled;
    const LPCSTR folder = filled.GetPath();
    const auto requireAll = [](unsigned long result, unsigned long number, DWORD expected) {
        Require(result == ERROR_SUCCESS && number == expected, "a walk came to a wrong result");
    };

    harness.Compare("folders: 200 files counted",
                    {{"GetFileCount",
                      [=] {
                          unsigned long count;
                          const auto result = CZoGlobalDirectoryFunctions::GetFileCount(folder, count);
                          requireAll(result, count, kFileCount);
                      }},
                     {"search",
                      [=] {
                          DWORD count = 0;
                          SearchFiles(folder, [&](const auto&) { ++count; });
                          requireAll(0, count, kFileCount);
                      }}},
                    kWalkLimits);
    harness.Compare("folders: 200 files listed",
                    {{"EnumerateFiles",
                      [=] {
                          DWORD count = 0;
                          const auto result = CZoGlobalDirectoryFunctions::EnumerateFiles(&count, folder, &CountPath);
                          requireAll(result, count, kFileCount);
                      }},
                     {"search, path put together",
                      [=] {
                          DWORD count = 0;
                          SearchFiles(folder, [&](const WIN32_FIND_DATAA& entry) {
                              char path[MAX_PATH];
                              MakePath(path, folder, entry);
                              CountPath(&count, path);
                          });
                          requireAll(0, count, kFileCount);
                      }}},
                    kWalkLimits);
    harness.Compare("folders: space of 200 files",
                    {{"GetSpace",
                      [=] {
                          unsigned long bytes;
                          const auto result = CZoGlobalDirectoryFunctions::GetSpace(folder, bytes);
                          requireAll(result, bytes, kFileCount * kFileSize);
                      }},
                     {"search, each file opened",
                      [=] {
                          DWORD bytes = 0;
                          SearchFiles(folder, [&](const WIN32_FIND_DATAA& entry) {
                              char path[MAX_PATH];
                              MakePath(path, folder, entry);
                              bytes += ReadSize(path);
                          });
                          requireAll(0, bytes, kFileCount * kFileSize);
                      }},
                     {"search, sizes as listed",
                      [=] {
                          DWORD bytes = 0;
                          SearchFiles(folder, [&](const WIN32_FIND_DATAA& entry) { bytes += entry.nFileSizeLow; });
                          requireAll(0, bytes, kFileCount * kFileSize);
                      }}},
                    kWalkLimits);
}
