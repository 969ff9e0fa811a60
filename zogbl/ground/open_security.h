/// \file
/// Sharing and security of files and folders that anybody may use.
#pragma once

#include <windows.h>

constexpr DWORD kSharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE;

/// Security attributes with a fresh descriptor, which has no access list. Handles are not inherited.
class OpenSecurity {
public:
    /// \return FALSE, with the reason as last error.
    bool Initialize() { return InitializeSecurityDescriptor(&m_descriptor, SECURITY_DESCRIPTOR_REVISION) != FALSE; }

    SECURITY_ATTRIBUTES* Attributes() { return &m_attributes; }

private:
    SECURITY_DESCRIPTOR m_descriptor = {};
    SECURITY_ATTRIBUTES m_attributes = {sizeof m_attributes, &m_descriptor, FALSE};
};
