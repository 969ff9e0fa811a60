/// \file
/// A registry key of its own for each test of the gateway.
#pragma once

#include <zogbl/global_config.h>

#include <environment.h>
#include <unique_names.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

class ConfigTest : public ::testing::Test {
protected:
    static bool IsWin32s() { return zotest::CurrentFamily() == zotest::Family::Win32s; }

    void SetUp() override { ASSERT_EQ(0u, m_config.CreateKey(m_mode, m_key)); }

    std::string ReadText(const CString& key, LPCSTR name)
    {
        char text[64];
        return m_config.GetValue(m_mode, key, name, text, sizeof text, "(unreadable)") == 0 ? text : "(failed)";
    }

    /// Stores a value past the gateway, as any program might.
    void Store(LPCSTR name, DWORD type, const void* data, DWORD size)
    {
        HKEY key = nullptr;
        ASSERT_EQ(ERROR_SUCCESS,
                  RegOpenKeyExA(HKEY_CURRENT_USER, m_key, 0, KEY_SET_VALUE | zotest::kRegistryView, &key));
        EXPECT_EQ(ERROR_SUCCESS, RegSetValueExA(key, name, 0, type, static_cast<const BYTE*>(data), size));
        RegCloseKey(key);
    }
    void Store(LPCSTR name, DWORD type, DWORD number) { Store(name, type, &number, sizeof number); }

    zotest::UniqueKey m_unique; // removed with everything below it after the test
    const CString m_key = m_unique.Path().c_str();
    const DWORD m_mode = ZO_MODE_CURRENT_USER;
    CZoGlobalConfig m_config;
};
