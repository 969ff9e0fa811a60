/// \file
/// An open registry key, and the calls that open one.
#pragma once

#include <windows.h>

#include <utility>

/// The 64-bit library looks at the registry as the 32-bit one does.
#ifdef _WIN64
constexpr REGSAM kRegistryView = KEY_WOW64_32KEY;
#else
constexpr REGSAM kRegistryView = 0;
#endif

/// Closes its key. Open functions return the system's code.
class RegistryKey {
public:
    RegistryKey() = default;
    ~RegistryKey() { Close(); }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    DWORD Open(HKEY root, LPCSTR path, REGSAM access)
    {
        return Result(RegOpenKeyExA(root, path, 0, access | kRegistryView, &m_key));
    }
    DWORD CreateForWriting(HKEY root, LPCSTR path)
    {
        return Result(RegCreateKeyExA(root, path, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS | kRegistryView,
                                      nullptr, &m_key, nullptr));
    }
    /// The old calls, which are all that Win32s has. They know nothing of access rights and views.
    DWORD OpenOld(HKEY root, LPCSTR path) { return Result(RegOpenKeyA(root, path, &m_key)); }
    DWORD CreateOld(HKEY root, LPCSTR path) { return Result(RegCreateKeyA(root, path, &m_key)); }

    /// \return 0, also if none is open; the error of closing it
    DWORD Close()
    {
        return m_key != nullptr ? static_cast<DWORD>(RegCloseKey(std::exchange(m_key, nullptr))) : ERROR_SUCCESS;
    }
    /// Ends an operation. \return \p result if that is a failure, else that of closing
    DWORD CloseKeepingFailure(DWORD result)
    {
        const DWORD closed = Close();
        return result != ERROR_SUCCESS ? result : closed;
    }

    operator HKEY() const { return m_key; }

private:
    DWORD Result(LONG result)
    {
        if (result != ERROR_SUCCESS)
            m_key = nullptr; // some systems leave it as it was, some write to it
        return static_cast<DWORD>(result);
    }

    HKEY m_key = nullptr;
};
