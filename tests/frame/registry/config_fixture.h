/// \file
/// A registry key of its own for each test of the gateway.
#pragma once

#include "support/test.h"

#include <zogbl/global_config.h>

constexpr DWORD kNotFound = ERROR_FILE_NOT_FOUND;
constexpr DWORD kInvalid = ERROR_INVALID_PARAMETER;
constexpr DWORD kMoreData = ERROR_MORE_DATA;
constexpr DWORD kTooLong = ERROR_FILENAME_EXCED_RANGE;

/// In place of GetProcAddress: a system that tells no names of keys, as Windows 95.
inline FARPROC WINAPI TellNoKeyNames(HMODULE module, LPCSTR name)
{
    return std::strcmp(name, "NtQueryObject") == 0 ? nullptr : GetProcAddress(module, name);
}

class ConfigFixture : public testing::Test {
protected:
    /// A status, and what the call hands over: a number, TRUE or FALSE.
    using Answer = std::pair<DWORD, DWORD>;

    static bool IsWin32s() { return Family() == WindowsFamily::kWin32s; }

    /// The number's default is 9.
    Answer ReadNumber(const CString& key, LPCSTR name)
    {
        DWORD number = 7;
        const DWORD status = m_config.GetValue(m_mode, key, name, number, 9);
        return {status, number};
    }
    std::string ReadText(const CString& key, LPCSTR name)
    {
        char text[64];
        return m_config.GetValue(m_mode, key, name, text, sizeof text, "(unreadable)") == 0 ? text : "(failed)";
    }
    Answer HasEntry(const CString& key, LPCSTR name) { return Has(&CZoGlobalConfig::DoesEntryExist, key, name); }
    Answer HasSubkey(const CString& key, LPCSTR name) { return Has(&CZoGlobalConfig::DoesSubkeyExist, key, name); }

    /// Stores a value past the gateway, as any program might.
    void Store(LPCSTR name, DWORD type, const void* data, DWORD size)
    {
        m_registryKey.Set("", name, type, std::string(static_cast<const char*>(data), size));
    }
    void Store(LPCSTR name, DWORD type, DWORD number) { Store(name, type, &number, sizeof number); }

    /// The name, below HKEY_USERS, of the key that HKEY_CURRENT_USER stands for.
    CString UserBelowUsers()
    {
        Store("OwnKey", REG_SZ, "", 1);
        std::pair<ConfigFixture*, CString> user = {this, {}};
        const auto look = [](void* context, LPCSTR name) {
            auto& [test, found] = *static_cast<decltype(user)*>(context);
            BOOL exists = FALSE;
            test->m_config.DoesEntryExist(ZO_MODE_USERS, CString(name) + "\\" + test->m_key, "OwnKey", exists);
            return exists ? found = name, 1ul : 0ul;
        };
        EXPECT_EQ(1u, m_config.EnumEntries(ZO_MODE_USERS, "", look, &user)) << "the user is not there";
        return user.second;
    }

    TestRegistryKey m_registryKey;
    const CString m_key = m_registryKey.Path().c_str();
    const DWORD m_mode = ZO_MODE_CURRENT_USER;
    CZoGlobalConfig m_config;

private:
    template <class ASK> Answer Has(ASK ask, const CString& key, LPCSTR name)
    {
        BOOL exists = 9;
        const DWORD status = (m_config.*ask)(m_mode, key, name, exists);
        return {status, exists};
    }
};
