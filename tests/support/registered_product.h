/// \file
/// The suite's product, registered for the user who runs the test, and gone after the test.
#pragma once

#include "support/test.h"

#include <zogbl/global_config.h>
#include <zogbl/module.h>
#include <zogbl/version_resource.h>

namespace zo_test {

class RegisteredProduct {
public:
    /// Registers English and German, English current.
    RegisteredProduct()
    {
        Remove();
        char name[260] = {};
        DWORD size = sizeof name;
        GetUserNameA(name, &size);
        EXPECT_EQ(0u, m_config.CreateKey(ZO_MODE_LOCAL_MACHINE, CString(kRoot) + "\\Users\\" + name));
        CZoVersionResource library;
        EXPECT_TRUE(library.ExtractVersionInfo(ZoGblGetInstanceHandle()));
        m_moduleKey = library.GetModuleRootKey();
        m_userKey = library.GetCurrentUserKey();
        MakeCurrent(0x0409);
    }
    ~RegisteredProduct() { Remove(); }
    RegisteredProduct(const RegisteredProduct&) = delete;
    RegisteredProduct& operator=(const RegisteredProduct&) = delete;

    void MakeCurrent(DWORD language)
    {
        for (const DWORD id : {DWORD{0x0409}, DWORD{0x0407}, m_current, language})
            SetLanguage(id, id == language);
        m_current = language;
    }
    void SetLanguage(DWORD id, DWORD current)
    {
        CString name;
        name.Format("%04lx", id);
        EXPECT_EQ(0u, m_config.SetValue(ZO_MODE_LOCAL_MACHINE, LanguagesKey(), name, current));
    }
    void RemoveLanguages() { m_config.DeleteSection(ZO_MODE_LOCAL_MACHINE, LanguagesKey(), nullptr); }

    CString LanguagesKey() const { return m_moduleKey + "\\Languages"; }
    const CString& UserKey() const { return m_userKey; }
    CString RootKey() const { return kRoot; }
    CZoGlobalConfig& Config() { return m_config; }

private:
    static constexpr LPCSTR kRoot = "Software\\Zo,Inc.\\Brixel Suite\\3.9";

    void Remove() { m_config.DeleteSection(ZO_MODE_LOCAL_MACHINE, kRoot, nullptr); }

    CZoGlobalConfig m_config;
    DWORD m_current = 0x0409;
    CString m_moduleKey;
    CString m_userKey;
};

} // namespace zo_test
