/// \file
/// Files told apart by the system: one file has many spellings of its path, by other letters of its drive, short names,
/// links.
#pragma once

#include "ground/open_security.h"
#include "ground/system_handle.h"

/// What stands under a path at one moment.
class FileIdentity {
public:
    explicit FileIdentity(const char* path)
    {
        const SystemHandle file(CreateFileA(path, 0, kSharedByAll, nullptr, OPEN_EXISTING, 0, nullptr));
        if (file.IsOpen()) {
            m_isThere = true;
            m_isKnown =
                GetFileInformationByHandle(file, &m_file) && (m_file.nFileIndexHigh | m_file.nFileIndexLow) != 0;
        } else {
            const DWORD error = GetLastError();
            m_isThere = error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND;
        }
    }

    bool IsThere() const { return m_isThere; } ///< also when it cannot be looked at
    bool IsKnown() const { return m_isKnown; }
    /// Of a file that is known.
    bool IsEmpty() const { return (m_file.nFileSizeHigh | m_file.nFileSizeLow) == 0; }
    /// FALSE unless both are known.
    bool IsSameAs(const FileIdentity& other) const
    {
        return m_isKnown && other.m_isKnown && m_file.dwVolumeSerialNumber == other.m_file.dwVolumeSerialNumber &&
               m_file.nFileIndexHigh == other.m_file.nFileIndexHigh &&
               m_file.nFileIndexLow == other.m_file.nFileIndexLow;
    }

private:
    bool m_isThere = false;
    bool m_isKnown = false;
    BY_HANDLE_FILE_INFORMATION m_file = {};
};
