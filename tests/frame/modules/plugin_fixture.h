/// \file
/// The tests' template libraries, and what they tell.
#pragma once

#include "support/registered_product.h"
#include "support/test.h"

namespace zo_test {

/// The running program's product, in which modules are installed.
class ModulesTest : public testing::Test {
protected:
    static constexpr DWORD kMode = ZO_MODE_LOCAL_MACHINE;

    ModulesTest()
    {
        CZoVersionResource version;
        EXPECT_TRUE(version.ExtractVersionInfo());
        m_key = version.GetInstalledModulesKey();
        Clear();
    }
    void Clear() { m_product.Config().DeleteSection(kMode, m_key, nullptr); }
    CString KeyOf(LPCSTR module) const { return m_key + "\\" + module + "\\3.9"; }
    void Install(LPCSTR module, std::optional<DWORD> access, LPCSTR fileName)
    {
        CZoGlobalConfig& config = m_product.Config();
        EXPECT_EQ(0u, config.CreateKey(kMode, KeyOf(module)));
        EXPECT_EQ(0u, access ? config.SetValue(kMode, KeyOf(module), "Access", *access) : 0);
        EXPECT_EQ(0u, fileName != nullptr ? config.SetValue(kMode, KeyOf(module), "Template", fileName) : 0);
    }
    /// A product without users has no settings.
    void RemoveUsers() { m_product.Config().DeleteSection(kMode, m_product.RootKey() + "\\Users", nullptr); }

    RegisteredProduct m_product;
    CString m_key;
};

constexpr char kPluginA[] = "fixture_plugin_a.DLL";             // id 3
constexpr char kPluginB[] = "fixture_plugin_b.DLL";             // id 1
constexpr char kPluginC[] = "fixture_plugin_c.DLL";             // id 3
constexpr char kPluginPartial[] = "fixture_plugin_partial.DLL"; // id 2, without "GMD"

/// What the plug-ins have been called for, "a.DRT " and so on.
inline std::string g_pluginLog;
/// The entry point that fails: "DRT=int" or "DRT=memory" throws, "InitializeTemplateDLL=false" answers FALSE.
inline std::string g_pluginFailure;
/// What each entry point calls, unless null.
inline void (*g_pluginCall)() = nullptr;

inline std::string TakePluginLog() { return std::exchange(g_pluginLog, {}); }

/// Called by the plug-ins, which find it by its name.
extern "C" __declspec(dllexport) inline BOOL ZoEnterPlugin(LPCSTR plugin, const char* entryPoint)
{
    g_pluginLog += std::string(plugin) + "." + entryPoint + " ";
    if (g_pluginCall != nullptr)
        g_pluginCall();
    if (g_pluginFailure == std::string(entryPoint) + "=int")
        throw 5;
    if (g_pluginFailure == std::string(entryPoint) + "=memory")
        AfxThrowMemoryException();
    return g_pluginFailure != std::string(entryPoint) + "=false";
}

/// Paths that name no library, or files in the folder that look like one and cannot be loaded here.
inline std::vector<std::string> BadLibraries(const TestFolder& folder)
{
    std::string plugin = ReadBytes(ProgramFolder() + kPluginA);
    folder.Write("short.DLL", plugin.substr(0, 0x100));
    DWORD header;
    memcpy(&header, plugin.data() + 0x3C, sizeof header);
    const WORD other = sizeof(void*) == 8 ? IMAGE_FILE_MACHINE_I386 : IMAGE_FILE_MACHINE_AMD64;
    memcpy(plugin.data() + header + 4, &other, sizeof other);
    folder.Write("other.DLL", plugin);
    folder.Write("text.DLL", "This is no library.");
    return {"no_such_library.DLL", folder.Path("text.DLL"), folder.Path("other.DLL"), folder.Path("short.DLL")};
}

} // namespace zo_test
