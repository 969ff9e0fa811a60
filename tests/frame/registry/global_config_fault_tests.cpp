// The gateway when memory and the registry fail.
#include "config_fixture.h"

namespace {

class ConfigFaults : public ConfigFixture {
protected:
    void Prepare()
    {
        ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key, "Number", 5));
        ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key, "Text", "stored"));
        ASSERT_EQ(0u, m_config.SetValue(m_mode, m_deep, "Text", "deep"));
        m_config.DeleteSection(m_mode, m_moved, nullptr);
        ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key + "\\Doomed\\A\\B", "Text", "x"));
    }

    /// Goes through all operations on what was prepared. \p succeeds(status) tells whether the operation before it did;
    /// what an operation hands over must be the default if not.
    template <class SUCCEEDS> void RunAll(SUCCEEDS succeeds)
    {
        DWORD number = 0, type = 9, size = 9;
        char text[32];
        BOOL exists = FALSE;
        CString name;
        bool done = succeeds(m_config.GetValue(m_mode, m_key, "Number", number, 77));
        EXPECT_EQ(done ? 5u : 77u, number);
        done = succeeds(m_config.GetValue(m_mode, m_key, "Text", text, sizeof text, "default"));
        EXPECT_STREQ(done ? "stored" : "default", text);
        done = succeeds(m_config.GetAnyValueType(m_mode, m_key, "Text", text, sizeof text, type, size));
        EXPECT_EQ(done ? DWORD{REG_SZ} : 0, type);
        EXPECT_STREQ(done ? "stored" : "", text);
        succeeds(m_config.SetValue(m_mode, m_key, "Number", 5));
        succeeds(m_config.SetValue(m_mode, m_key, "Text", "stored"));
        succeeds(m_config.SetAnyValueType(m_mode, m_key, "Any", "abc", 4, REG_SZ));
        done = succeeds(m_config.DoesEntryExist(m_mode, m_key, "Text", exists));
        EXPECT_EQ(done, exists != FALSE);
        done = succeeds(m_config.DoesSubkeyExist(m_mode, m_key, "Sub", exists));
        EXPECT_EQ(done, exists != FALSE);
        done = succeeds(m_config.FindFirstSubKey(m_mode, m_sub, name, exists));
        EXPECT_EQ(done, exists != FALSE);
        EXPECT_STREQ(done ? "Deep" : "", name);
        succeeds(m_config.EnumEntries(
            m_mode, m_key, [](void*, LPCSTR) { return DWORD{0}; }, nullptr));
        const auto takeValue = [](void*, LPCSTR, const void*, DWORD) { return DWORD{0}; };
        succeeds(m_config.EnumValues(m_mode, m_key, takeValue, nullptr));
        succeeds(m_config.MoveRegTree(m_mode, m_moved, m_mode, m_sub, 0));
        succeeds(m_config.DeleteSection(m_mode, m_key, "Doomed"));
    }

    /// Each operation, whichever call of it fails, has one of these statuses.
    template <class FAULTS> void ExpectFailures(const std::set<DWORD>& statuses)
    {
        RunFaultActs<FAULTS>([&](const FaultRun& run) {
            Prepare();
            int fired = 0, operation = 0;
            const auto succeeds = [&](DWORD status) {
                const bool failed = run.source.Fired() > std::exchange(fired, run.source.Fired());
                EXPECT_TRUE(failed ? statuses.count(status) != 0 : status == 0) << operation << ": " << status;
                ++operation;
                return !failed;
            };
            run.Act([&] { RunAll(succeeds); });
            EXPECT_TRUE(ReadText(m_deep, "Text") == "deep" || ReadText(m_moved + "\\Deep", "Text") == "deep");
        });
    }

    const CString m_sub = m_key + "\\Sub", m_deep = m_sub + "\\Deep", m_moved = m_key + "\\Moved";
};

} // namespace

TEST_F(ConfigFaults, AreStatuses)
{
    ExpectFailures<AllocationFaults>({ZoErrNoMemory, ERROR_NOT_ENOUGH_MEMORY});
    ExpectFailures<RegistryFaults>({RegistryFaults::kError});
}

TEST_F(ConfigFaults, ResultOfClosingComesBackOnlyAfterSuccess)
{
    Prepare();
    FaultSource faults("close");
    // The key stays open when closing it fails: that handle is the system's loss, not the gateway's.
    const ZO_FAULTY_CALL(RegCloseKey) close(faults, kZogbl, ERROR_INVALID_HANDLE);
    faults.Arm(1, true);
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, ReadNumber(m_key, "Number").first);
    EXPECT_EQ(Answer(kNotFound, 9), ReadNumber(m_key, "Missing"));
    // What a search has found counts only if it ends well.
    EXPECT_EQ(Answer(ERROR_INVALID_HANDLE, FALSE), HasEntry(m_key, "Text"));
    EXPECT_EQ(Answer(ERROR_INVALID_HANDLE, FALSE), HasSubkey(m_key, "Sub"));
    CString name;
    BOOL found = TRUE;
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, m_config.FindFirstSubKey(m_mode, m_key, name, found));
    EXPECT_FALSE(found);
    EXPECT_STREQ("", name);
}

TEST_F(ConfigFaults, ACopyToAnotherRootComparesKeysOrDoesNothing)
{
    ZO_ONLY_IN(!IsWin32s(), "has one root");
    const CString source = m_key + "\\Source";
    const CString destination = UserBelowUsers() + "\\" + source + "\\Below";
    ASSERT_EQ(0u, m_config.SetValue(m_mode, source, "Text", "kept"));
    /// How many keys stand right below the roots in which a copy may leave something.
    const auto subkeysOfRoots = [&] {
        size_t count = 0;
        const auto add = [](void* c, LPCSTR) { return ++*static_cast<size_t*>(c), DWORD{0}; };
        for (const DWORD mode : {ZO_MODE_CURRENT_USER, ZO_MODE_CURRENT_CONFIG})
            m_config.EnumEntries(mode, "", add, &count);
        return count;
    };
    const size_t subkeys = subkeysOfRoots();
    const ImportPatch untold(kZogbl, "GetProcAddress", &TellNoKeyNames);
    const auto run = [&](const FaultRun& run) {
        const DWORD status = m_config.MoveRegTree(ZO_MODE_USERS, destination, m_mode, source, 0);
        run.Stop();
        EXPECT_TRUE(status == kInvalid || (run.Fired() && status != 0)) << status;
        EXPECT_EQ("kept", ReadText(source, "Text"));
        EXPECT_EQ(Answer(0, FALSE), HasSubkey(source, "Below"));
        EXPECT_EQ(subkeys, subkeysOfRoots()) << "a mark is left";
    };
    RunFaultLoop<AllocationFaults>(run);
    FaultSource faults("registry");
    const ZO_FAULTY_CALL(RegOpenKeyExA) open(faults, kZogbl, ERROR_REGISTRY_IO_FAILED);
    const ZO_FAULTY_CALL(RegCreateKeyExA) create(faults, kZogbl, ERROR_REGISTRY_IO_FAILED);
    const ZO_FAULTY_CALL(RegEnumKeyExA) enumerate(faults, kZogbl, ERROR_REGISTRY_IO_FAILED);
    RunFaultLoop(faults, run);
}

// Systems that answer otherwise than the one at hand ------------------------------------------------------------------

static LONG g_answer = 0;
static DWORD g_writtenSize = 0;

/// Hands over a text that fills the buffer and has no terminator.
static LONG WINAPI QueryUnterminated(HKEY, LPCSTR, DWORD*, DWORD* type, BYTE* data, DWORD* size)
{
    *type = REG_SZ;
    std::memset(data, 'x', *size);
    return g_answer;
}

static LONG WINAPI NoteWrittenSize(HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD size)
{
    g_writtenSize = size;
    return ERROR_SUCCESS;
}

TEST_F(ConfigFaults, AnswersOfAnySystemAreCheckedBeforeUse)
{
    ZO_ONLY_IN(!IsWin32s(), "the calls of the other systems");
    Prepare();
    char text[8];
    const auto readText = [&] { return m_config.GetValue(m_mode, m_key, "Text", text, sizeof text, "def"); };
    {
        const ImportPatch query(kZogbl, "RegQueryValueExA", &QueryUnterminated);
        EXPECT_EQ(kMoreData, readText());
        EXPECT_STREQ("def", text);
        g_answer = ERROR_MORE_DATA; // and what did not fit is missing
        DWORD type = 9, size = 9;
        EXPECT_EQ(kMoreData, m_config.GetAnyValueType(m_mode, m_key, "Text", text, sizeof text, type, size));
        EXPECT_EQ(std::string(sizeof text, '\0'), std::string(text, sizeof text));
        EXPECT_EQ(0u, type);
    }
    const ImportPatch note(kZogbl, "RegSetValueExA", &NoteWrittenSize);
    EXPECT_EQ(0u, m_config.SetValue(m_mode, m_key, "Text", "abc"));
    EXPECT_EQ(4u, g_writtenSize) << "with the terminator";
    // How Windows 95 ends an enumeration of a key that another process has deleted meanwhile.
    FaultSource faults("end");
    const ZO_FAULTY_CALL(RegEnumKeyExA) end(faults, kZogbl, ERROR_FILE_NOT_FOUND);
    faults.Arm(1, false);
    EXPECT_EQ(Answer(0, FALSE), HasSubkey(m_key, "Sub"));
}
