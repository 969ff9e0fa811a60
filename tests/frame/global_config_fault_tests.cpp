// The gateway when memory and the registry fail.
#include "config_fixture.h"
#include "support/test.h"

namespace {

constexpr char kLibrary[] = "ZOGBLBRX.DLL";

/// One operation of the gateway, repeatable, on a key prepared for it.
struct Operation {
    const char* name;
    DWORD (*run)(CZoGlobalConfig& config, const CString& key);
    bool allocates;
    bool changes = false; // makes or deletes something, so a second run may fare otherwise
};

DWORD CountName(void* context, LPCSTR) { return ++*static_cast<int*>(context), 0u; }
DWORD CountValue(void* context, LPCSTR, const void*, DWORD) { return ++*static_cast<int*>(context), 0u; }

constexpr DWORD kMode = ZO_MODE_CURRENT_USER;

const Operation kOperations[] = {
    {"read number",
     [](CZoGlobalConfig& config, const CString& key) {
         DWORD value = 0;
         const DWORD status = config.GetValue(kMode, key, "Number", value, 77);
         EXPECT_EQ(status == 0 ? 5u : 77u, value);
         return status;
     },
     false},
    {"read text",
     [](CZoGlobalConfig& config, const CString& key) {
         char text[32];
         const DWORD status = config.GetValue(kMode, key, "Text", text, sizeof text, "default");
         EXPECT_STREQ(status == 0 ? "stored" : "default", text);
         return status;
     },
     false},
    {"read any type",
     [](CZoGlobalConfig& config, const CString& key) {
         char data[32];
         DWORD type = 9;
         DWORD size = 9;
         const DWORD status = config.GetAnyValueType(kMode, key, "Text", data, sizeof data, type, size);
         EXPECT_EQ(status == 0 ? static_cast<DWORD>(REG_SZ) : 0u, type);
         EXPECT_STREQ(status == 0 ? "stored" : "", data);
         return status;
     },
     false},
    {"write number",
     [](CZoGlobalConfig& config, const CString& key) { return config.SetValue(kMode, key, "Number", 5); }, false},
    {"write text",
     [](CZoGlobalConfig& config, const CString& key) { return config.SetValue(kMode, key, "Text", "stored"); }, false},
    {"write any type",
     [](CZoGlobalConfig& config, const CString& key) {
         return config.SetAnyValueType(kMode, key, "Any", "abc", 4, REG_SZ);
     },
     false},
    {"does entry exist",
     [](CZoGlobalConfig& config, const CString& key) {
         BOOL exists = FALSE;
         const DWORD status = config.DoesEntryExist(kMode, key, "Text", exists);
         EXPECT_EQ(status == 0, exists != FALSE);
         return status;
     },
     false},
    {"does subkey exist",
     [](CZoGlobalConfig& config, const CString& key) {
         BOOL exists = FALSE;
         const DWORD status = config.DoesSubkeyExist(kMode, key, "Sub", exists);
         EXPECT_EQ(status == 0, exists != FALSE);
         return status;
     },
     true},
    {"find first subkey",
     [](CZoGlobalConfig& config, const CString& key) {
         CString name;
         BOOL found = FALSE;
         const DWORD status = config.FindFirstSubKey(kMode, key + "\\Sub", name, found);
         EXPECT_EQ(status == 0, found != FALSE);
         EXPECT_STREQ(status == 0 ? "Deep" : "", name);
         return status;
     },
     true},
    {"enumerate subkeys",
     [](CZoGlobalConfig& config, const CString& key) {
         int count = 0;
         return config.EnumEntries(kMode, key, &CountName, &count);
     },
     true},
    {"enumerate values",
     [](CZoGlobalConfig& config, const CString& key) {
         int count = 0;
         return config.EnumValues(kMode, key, &CountValue, &count);
     },
     true},
    {"copy tree",
     [](CZoGlobalConfig& config, const CString& key) {
         return config.CopyRegTree(kMode, key + "\\Copy", kMode, key + "\\Sub", 0);
     },
     true},
    {"delete tree",
     [](CZoGlobalConfig& config, const CString& key) { return config.DeleteSection(kMode, key, "Doomed"); }, true,
     true},
};

class ConfigFaults : public ConfigTest {
protected:
    void Prepare()
    {
        ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key, "Number", 5));
        ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key, "Text", "stored"));
        ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key + "\\Sub\\Deep", "Text", "deep"));
        ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key + "\\Doomed\\A\\B", "Text", "x"));
    }
};

} // namespace

TEST_F(ConfigFaults, MissingMemoryIsAStatus)
{
    for (const Operation& operation : kOperations) {
        if (!operation.allocates)
            continue;
        SCOPED_TRACE(operation.name);
        Prepare();
        const CString key = m_key;
        AllocationFaults faults;
        RunFaultLoop(faults, [&](const FaultRun& run) {
            if (operation.changes) {
                run.source.Disarm();
                Prepare();
                run.number > 0 ? run.source.Arm(run.number, run.persistent) : run.source.Disarm();
            }
            CString own = key; // paths that the operation puts together are the test's own allocations
            DWORD status = ZoErrNoMemory;
            try {
                status = operation.run(m_config, own);
            } catch (CMemoryException* e) { // of this test's strings; the gateway throws nothing
                e->Delete();
            }
            run.Stop();
            if (run.Fired()) {
                EXPECT_TRUE(status == ZoErrNoMemory || status == ERROR_NOT_ENOUGH_MEMORY) << std::hex << status;
            } else {
                EXPECT_EQ(0u, status);
            }
            EXPECT_EQ("deep", ReadText(m_key + "\\Sub\\Deep", "Text"));
        });
    }
}

TEST_F(ConfigFaults, RegistryErrorsComeBackUnchanged)
{
    ZO_ONLY_IN(!IsWin32s(), "the calls of the other systems");
    constexpr LONG kError = ERROR_REGISTRY_IO_FAILED;
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        Prepare();
        FaultSource faults("registry");
        const ZO_FAULTY_CALL(RegOpenKeyExA) open(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegCreateKeyExA) create(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegQueryValueExA) query(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegSetValueExA) set(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegEnumKeyExA) enumKey(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegEnumValueA) enumValue(faults, kLibrary, kError);
        RunFaultLoop(faults, [&](const FaultRun& run) {
            if (operation.changes) {
                run.source.Disarm();
                Prepare();
                run.number > 0 ? run.source.Arm(run.number, run.persistent) : run.source.Disarm();
            }
            const DWORD status = operation.run(m_config, m_key);
            run.Stop();
            EXPECT_EQ(run.Fired() ? static_cast<DWORD>(kError) : 0u, status);
        });
    }
}

TEST_F(ConfigFaults, ResultOfClosingComesBackOnlyAfterSuccess)
{
    Prepare();
    FaultSource faults("close");
    // The key stays open when closing it fails: that handle is the system's loss, not the gateway's.
    const ZO_FAULTY_CALL(RegCloseKey) close(faults, kLibrary, ERROR_INVALID_HANDLE);
    FaultLoopOptions options;
    options.checkCounts = false;
    RunFaultLoop(
        faults,
        [&](const FaultRun& run) {
            DWORD value = 0;
            const DWORD found = m_config.GetValue(m_mode, m_key, "Number", value, 9);
            EXPECT_EQ(run.Fired() ? static_cast<DWORD>(ERROR_INVALID_HANDLE) : 0u, found);
        },
        options);
    faults.Arm(1, true);
    DWORD value = 0;
    BOOL exists[3] = {TRUE, TRUE, TRUE};
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_NOT_FOUND), m_config.GetValue(m_mode, m_key, "Missing", value, 9));
    // What a search has found counts only if it ends well.
    CString name;
    for (const DWORD status : {m_config.DoesEntryExist(m_mode, m_key, "Text", exists[0]),
                               m_config.DoesSubkeyExist(m_mode, m_key, "Sub", exists[1]),
                               m_config.FindFirstSubKey(m_mode, m_key, name, exists[2])})
        EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_HANDLE), status);
    faults.Disarm();
    for (const BOOL found : exists)
        EXPECT_FALSE(found);
    EXPECT_STREQ("", name);
}

TEST_F(ConfigFaults, ACopyThatFailsEndsWhereItIs)
{
    ZO_ONLY_IN(!IsWin32s(), "the calls of the other systems");
    Prepare();
    ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key + "\\Source\\A", "Text", "a"));
    ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key + "\\Source\\B", "Text", "b"));
    FaultSource faults("write");
    const ZO_FAULTY_CALL(RegSetValueExA) set(faults, kLibrary, ERROR_DISK_FULL);
    faults.Arm(2, false);
    EXPECT_EQ(static_cast<DWORD>(ERROR_DISK_FULL),
              m_config.MoveRegTree(m_mode, m_key + "\\Moved", m_mode, m_key + "\\Source", 0));
    faults.Disarm();
    EXPECT_EQ("a", ReadText(m_key + "\\Moved\\A", "Text"));
    EXPECT_EQ("a", ReadText(m_key + "\\Source\\A", "Text")) << "nothing is lost";
    EXPECT_EQ("b", ReadText(m_key + "\\Source\\B", "Text"));
}

TEST_F(ConfigFaults, ACopyToAnotherRootComparesKeysOrDoesNothing)
{
    ZO_ONLY_IN(!IsWin32s(), "has one root");
    const CString source = m_key + "\\Source";
    const CString destination = UserBelowUsers() + "\\" + source + "\\Below";
    ASSERT_EQ(0u, m_config.SetValue(m_mode, source, "Text", "kept"));
    const size_t subkeys = SubkeysOfRoots();
    for (const bool namesAreTold : {true, false}) {
        std::optional<ImportPatch> untold;
        if (!namesAreTold)
            untold.emplace(kLibrary, "GetProcAddress", &TellNoKeyNames);
        const auto run = [&](const FaultRun& run) {
            const DWORD status = m_config.MoveRegTree(ZO_MODE_USERS, destination, m_mode, source, 0);
            run.Stop();
            EXPECT_TRUE(status == ERROR_INVALID_PARAMETER || (run.Fired() && status != 0)) << status;
            EXPECT_EQ("kept", ReadText(source, "Text"));
            CString left;
            BOOL found = FALSE;
            m_config.FindFirstSubKey(m_mode, source, left, found);
            EXPECT_FALSE(found);
            EXPECT_EQ(subkeys, SubkeysOfRoots()) << "a mark is left";
        };
        AllocationFaults memory;
        RunFaultLoop(memory, run);
        FaultSource faults("registry");
        const ZO_FAULTY_CALL(RegOpenKeyExA) open(faults, kLibrary, ERROR_REGISTRY_IO_FAILED);
        const ZO_FAULTY_CALL(RegCreateKeyExA) create(faults, kLibrary, ERROR_REGISTRY_IO_FAILED);
        const ZO_FAULTY_CALL(RegEnumKeyExA) enumerate(faults, kLibrary, ERROR_REGISTRY_IO_FAILED);
        RunFaultLoop(faults, run);
    }
}

// Systems that answer otherwise than the one at hand ------------------------------------------------------------------

namespace {

DWORD g_writtenSize = 0;

/// Says success and writes nothing.
LONG WINAPI QueryNothing(HKEY, LPCSTR, DWORD*, DWORD*, BYTE*, DWORD*) { return ERROR_SUCCESS; }

/// Hands over a text that fills the buffer and has no terminator.
LONG WINAPI QueryUnterminated(HKEY, LPCSTR, DWORD*, DWORD* type, BYTE* data, DWORD* size)
{
    *type = REG_SZ;
    std::memset(data, 'x', *size);
    return ERROR_SUCCESS;
}

/// Hands over what fits of a longer text.
LONG WINAPI QueryPart(HKEY, LPCSTR, DWORD*, DWORD* type, BYTE* data, DWORD* size)
{
    *type = REG_SZ;
    std::memset(data, 'x', *size);
    return ERROR_MORE_DATA;
}

LONG WINAPI NoteWrittenSize(HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD size)
{
    g_writtenSize = size;
    return ERROR_SUCCESS;
}

/// How Windows 95 ends an enumeration of a key that another process has deleted meanwhile.
LONG WINAPI EnumNothing(HKEY, DWORD, LPSTR, DWORD*, DWORD*, LPSTR, DWORD*, FILETIME*) { return ERROR_FILE_NOT_FOUND; }

} // namespace

TEST_F(ConfigFaults, AnswersOfAnySystemAreCheckedBeforeUse)
{
    ZO_ONLY_IN(!IsWin32s(), "the calls of the other systems");
    Prepare();
    char text[8];
    {
        const ImportPatch lie(kLibrary, "RegQueryValueExA", &QueryNothing);
        DWORD number = 0;
        EXPECT_EQ(ZoErrWrongValueType, m_config.GetValue(m_mode, m_key, "Number", number, 9));
        EXPECT_EQ(9u, number);
        EXPECT_EQ(ZoErrWrongValueType, m_config.GetValue(m_mode, m_key, "Text", text, sizeof text, "def"));
        EXPECT_STREQ("def", text);
    }
    {
        const ImportPatch lie(kLibrary, "RegQueryValueExA", &QueryUnterminated);
        EXPECT_EQ(static_cast<DWORD>(ERROR_MORE_DATA),
                  m_config.GetValue(m_mode, m_key, "Text", text, sizeof text, "def"));
        EXPECT_STREQ("def", text);
    }
    {
        const ImportPatch part(kLibrary, "RegQueryValueExA", &QueryPart);
        DWORD type = 9;
        DWORD size = 9;
        EXPECT_EQ(static_cast<DWORD>(ERROR_MORE_DATA),
                  m_config.GetAnyValueType(m_mode, m_key, "Text", text, sizeof text, type, size));
        EXPECT_EQ(std::string(sizeof text, '\0'), std::string(text, sizeof text));
        EXPECT_EQ(0u, type);
    }
    {
        const ImportPatch note(kLibrary, "RegSetValueExA", &NoteWrittenSize);
        EXPECT_EQ(0u, m_config.SetValue(m_mode, m_key, "Text", "abc"));
        EXPECT_EQ(4u, g_writtenSize) << "with the terminator";
    }
    {
        const ImportPatch end(kLibrary, "RegEnumKeyExA", &EnumNothing);
        BOOL exists = TRUE;
        EXPECT_EQ(0u, m_config.DoesSubkeyExist(m_mode, m_key, "Sub", exists));
        EXPECT_FALSE(exists);
    }
}
