/// \file
/// Walks through what is in a folder.
#pragma once

#include <zogbl/global_error.h>

#include <windows.h>

#include <cstring>

/// A path that a walk lengthens on its way down and cuts on its way up. There is one for all levels, for a walk can be
/// more than a hundred folders deep. It has room for the longest folder that the system searches and a name in it.
class WalkPath {
public:
    WalkPath() = default;
    WalkPath(const WalkPath&) = delete;
    WalkPath& operator=(const WalkPath&) = delete;

    /// \return FALSE, with nothing appended, when there is no room.
    bool Append(const char* text)
    {
        const size_t length = std::strlen(text);
        if (length >= sizeof m_text - m_length)
            return false;
        std::memcpy(m_text + m_length, text, length + 1);
        m_length += length;
        return true;
    }
    void Cut(size_t length) { m_text[m_length = length] = '\0'; }
    size_t Length() const { return m_length; }
    operator const char*() const { return m_text; }

private:
    char m_text[2 * MAX_PATH] = "";
    size_t m_length = 0;
};

/// A search, ended with its object.
class FolderSearch {
public:
    /// Finds the first entry.
    FolderSearch(const char* pattern, WIN32_FIND_DATAA& entry) : m_handle(FindFirstFileA(pattern, &entry)) {}
    ~FolderSearch()
    {
        if (IsOpen())
            FindClose(m_handle);
    }
    FolderSearch(const FolderSearch&) = delete;
    FolderSearch& operator=(const FolderSearch&) = delete;

    bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
    bool FindNext(WIN32_FIND_DATAA& entry) const { return FindNextFileA(m_handle, &entry) != FALSE; }
    /// What ended the search: 0 if that is its usual end, else the system's error. Ask right after the call that
    /// failed.
    static DWORD Result()
    {
        const DWORD error = CZoGlobalError::GetError();
        return error == ERROR_NO_MORE_FILES ? ERROR_SUCCESS : error;
    }

private:
    HANDLE m_handle;
};

inline bool IsFolder(const WIN32_FIND_DATAA& entry) { return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

/// Calls \p visit(entry) for each entry of the folder \p path in the order of the search, "." and ".." included, until
/// it returns nonzero. \p path is that of the entry meanwhile, and the folder's again afterwards.
/// \return that result; 0 at the end; the system's error when the search fails.
template <class VISIT> DWORD ForEachEntry(WalkPath& path, VISIT visit)
{
    const size_t folderLength = path.Length();
    if (!path.Append("\\*.*"))
        return ERROR_FILENAME_EXCED_RANGE;
    WIN32_FIND_DATAA entry;
    const FolderSearch search(path, entry);
    const DWORD started = search.IsOpen() ? ERROR_SUCCESS : FolderSearch::Result();
    path.Cut(folderLength);
    if (!search.IsOpen())
        return started;
    do {
        const bool fits = path.Append("\\") && path.Append(entry.cFileName);
        const DWORD result = fits ? visit(entry) : ERROR_FILENAME_EXCED_RANGE;
        path.Cut(folderLength);
        if (result != ERROR_SUCCESS)
            return result;
    } while (search.FindNext(entry));
    return FolderSearch::Result();
}
