/// \file
/// A registry key of its own for each test of the gateway.
#pragma once

#include "support/environment.h"
#include "support/unique_names.h"

#include <zogbl/global_config.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

class ConfigTest : public ::testing::Test {
protected:
    static bool IsWin32s() { return zo_test::Family() == zo_test::WindowsFamily::kWin32s; }

    std::string ReadText(const CString& key, LPCSTR name)
    {
        char text[64];
        return m_config.GetValue(m_mode, key, name, text, sizeof text, "(unreadable)") == 0 ? text : "(failed)";
    }

    /// Stores a value past the gateway, as any program might.
    void Store(LPCSTR name, DWORD type, const void* data, DWORD size)
    {
        m_registryKey.Set("", name, type, std::string(static_cast<const char*>(data), size));
    }
    void Store(LPCSTR name, DWORD type, DWORD number) { Store(name, type, &number, sizeof number); }

    zo_test::TestRegistryKey m_registryKey{IsWin32s() ? HKEY_CLASSES_ROOT : HKEY_CURRENT_USER};
    const CString m_key = m_registryKey.Path().c_str();
    const DWORD m_mode = ZO_MODE_CURRENT_USER;
    CZoGlobalConfig m_config;
};
