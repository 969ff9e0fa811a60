#include "profile_fixture.h"

namespace {

class MemIniFile : public ProfileTest {
protected:
    DWORD Load(const std::string& bytes, CMapStringToString* substitutions = nullptr)
    {
        Write(bytes);
        return m_memory.LoadIniFile(FilePath().c_str(), substitutions);
    }

    CZoMemIniFile m_memory;
};

constexpr char kFile[] = "; comment\r\n[A]\r\nk1=1\r\nk2=2\r\n[Empty]\r\n[B]\r\nk=\r\n";
constexpr char kPictureA[] = "[A]k1=1;k2=2;";
constexpr char kPictureB[] = "[B]k=;";
const std::string kPicture = std::string(kPictureA) + kPictureB;

} // namespace

TEST_F(MemIniFile, LoadsWhatHasKeys)
{
    EXPECT_EQ(ZO_INI_NULL_FILE_NAME, m_memory.LoadIniFile(nullptr, nullptr));
    EXPECT_EQ(ZO_INI_NO_FILE, m_memory.LoadIniFile(m_folder.Path("none.ini").c_str(), nullptr));
    EXPECT_EQ(ZO_INI_NOT_FOUND, Load(""));
    EXPECT_EQ(0u, Load(kFile));
    EXPECT_EQ(kPicture, MemoryView::Of(m_memory));

    CString value = "before";
    EXPECT_EQ(ZO_INI_UNKNOWN_SECTION, m_memory.GetIniValue("a", "k1", value)) << "case counts";
    EXPECT_EQ(ZO_INI_NOT_FOUND, m_memory.GetIniValue("A", "K1", value));
    MemoryView::AddNullSection(m_memory, "Null");
    EXPECT_EQ(0u, m_memory.GetIniValue("Null", "k", value));
    EXPECT_STREQ("before", value);

    // A missing file: the one loaded before, again.
    EXPECT_EQ(0u, m_memory.LoadIniFile(m_folder.Path("none.ini").c_str(), nullptr));
    EXPECT_EQ(kPicture, MemoryView::Of(m_memory));
    EXPECT_EQ(ZO_INI_TRUNCATED, Load("[" + std::string(4094, 'n') + "]\r\nk=1\r\n"));
    EXPECT_EQ("", MemoryView::Of(m_memory));

    // Lines without a name hide nothing.
    EXPECT_EQ(0u, Load("[A]\r\nk1=1\r\n=x\r\nk2=2\r\n[]\r\nk=1\r\n[E]\r\n=y\r\n[B]\r\n=\r\n=z\r\nk=\r\n"));
    EXPECT_EQ(kPicture, MemoryView::Of(m_memory));

    // Sections and keys beyond the bounds, and twice.
    const std::string key(256, 'k');
    EXPECT_EQ(0u, Load("[" + std::string(1024, 's') + "]\r\nk=1\r\n[C]\r\n" + key +
                       "=1\r\nv=" + std::string(5000, 'v') + "\r\n[D]\r\nk=1\r\n[D]\r\nl=2\r\n[d]\r\n"));
    EXPECT_EQ("[C]" + key + "=;v=" + std::string(4095, 'v') + ";[D]k=1;[D]k=1;[d]k=1;", MemoryView::Of(m_memory));
    EXPECT_EQ(0u, m_memory.DeleteIniSection("C") | m_memory.DeleteIniSection("d"));
    EXPECT_EQ("[D]k=1;[D]k=1;", MemoryView::Of(m_memory));
}

TEST_F(MemIniFile, Substitutes)
{
    CMapStringToString table;
    table.SetAt("DIR", "C:\\X");
    table.SetAt("", "nothing");
    const std::pair<const char*, const char*> rows[] = {
        {"%DIR%\\sub", "C:\\X"}, {"%DIR", "C:\\X"}, {"%dir%", "%dir%"}, {"%%DIR%%", "%%DIR%%"},
        {"a%DIR%", "a%DIR%"},    {"%", "nothing"},  {"\" b \"", "b"},   {"\" %DIR% \"", "C:\\X"},
    };
    for (const auto& [text, expected] : rows) {
        SCOPED_TRACE(text);
        ASSERT_EQ(0u, Load(std::string("[%DIR%]\r\nk=") + text + "\r\n%DIR%=1\r\n", &table));
        EXPECT_EQ(std::string("[%DIR%]k=") + expected + ";C:\\X=1;", MemoryView::Of(m_memory));
    }
    ASSERT_EQ(0u, Load("[S]\r\nk=\" %DIR% \"\r\n"));
    EXPECT_EQ("[S]k= %DIR% ;", MemoryView::Of(m_memory)) << "as it is without a table";
}

TEST_F(MemIniFile, SavesWithoutTakingAway)
{
    EXPECT_EQ(ZO_INI_NO_FILE, m_memory.SaveIniFile(TRUE)) << "no file name";
    ASSERT_EQ(0u, Load(kFile));
    EXPECT_EQ(0u, m_memory.DeleteIniKey("A", "k1"));
    EXPECT_EQ(0u, m_memory.DeleteIniKey("A", "none"));
    EXPECT_EQ(0u, m_memory.RenameIniSection("B", "C"));
    EXPECT_EQ(0u, m_memory.SetIniValue("A", "k2", "two"));
    EXPECT_EQ(0u, m_memory.SetIniValue("A", "number", -1));
    EXPECT_EQ(0u, m_memory.SetIniValue("A", "number", 5));
    EXPECT_EQ(0u, m_memory.SetIniValue("New", "long", DWORD{0xFFFFFFFE}));
    EXPECT_EQ("[A]k2=two;k2=two;number=5;number=5;[C]k=;[New]long=-2;", MemoryView::Of(m_memory));
    EXPECT_EQ(0u, m_memory.SetIniValue("New", std::string(256, 'k').c_str(), "too long for the file"));
    MemoryView::AddNullSection(m_memory, "Null");
    EXPECT_EQ(0u, m_memory.SetIniValue("Null", "k", "v"));
    EXPECT_EQ(0u, m_memory.DeleteIniKey("Null", "k"));
    EXPECT_EQ(ZO_INI_OUT_OF_MEMORY, m_memory.RenameIniSection("Null", "D"));
    EXPECT_EQ(0u, m_memory.SaveIniFile(FALSE));
    EXPECT_EQ("; comment\r\n[A]\r\nk1=1\r\nk2=two\r\nnumber=5\r\n[Empty]\r\n[B]\r\nk=\r\n"
              "[C]\r\nk=\r\n[New]\r\nlong=-2\r\n",
              m_folder.Read("test.ini"));

    ASSERT_TRUE(DeleteFileA(FilePath().c_str()));
    EXPECT_EQ(ZO_INI_NO_FILE, m_memory.SaveIniFile(FALSE));
    EXPECT_FALSE(m_folder.Exists("test.ini"));
    m_memory.SetFileName(m_folder.Path("missing\\test.ini").c_str());
    EXPECT_EQ(ZO_INI_NO_FILE, m_memory.SaveIniFile(TRUE)) << "it cannot be made";
    m_memory.SetFileName(FilePath().c_str());
    EXPECT_EQ(0u, m_memory.SaveIniFile(TRUE));
    EXPECT_EQ("[A]\r\nk2=two\r\nnumber=5\r\n[C]\r\nk=\r\n[New]\r\nlong=-2\r\n", m_folder.Read("test.ini"));
}

TEST_F(MemIniFile, SavesNothingButChanges)
{
    std::string many;
    for (int i = 1000; i < 1700; ++i) // more than a list of names holds
        many += "Key" + std::to_string(i) + "=" + std::to_string(i) + "\r\n";
    const std::string file = "[A]\r\nq=\" v \"\r\ns='w'\r\nlone\r\nlong=" + std::string(5000, 'v') +
                             "\r\ne=\r\nq=2\r\nLone=3\r\n[B]\r\nk=1\r\ne=\r\n[C]\r\n" + many + "[D]\r\nk=2\r\n" +
                             std::string(256, 'k') + "=\"x\"\r\n";
    ASSERT_EQ(0u, Load(file));
    FaultSource writes("write");
    const ZO_FAULTY_CALL(WritePrivateProfileStringA) write(writes, "ZOGBLBRX.DLL", FALSE, ERROR_DISK_FULL);
    writes.Arm(1000, false);
    EXPECT_EQ(0u, m_memory.SaveIniFile(FALSE));
    EXPECT_EQ(file, m_folder.Read("test.ini"));
    EXPECT_EQ(0, writes.Calls());
    const std::pair<const char*, const char*> changes[] = {{"Key1500", "new"}, {"new", ""}, {"e", "now"}, {"K", "2"}};
    for (const auto& [key, value] : changes)
        EXPECT_EQ(0u, m_memory.SetIniValue(*key == 'K' ? "C" : "A", key, value));
    EXPECT_EQ(0u, m_memory.DeleteIniKey("A", "s"));
    EXPECT_EQ(0u, m_memory.SaveIniFile(FALSE));
    std::string expected = file;
    expected.replace(expected.find("Key1500=1500"), 12, "Key1500=new");
    expected.replace(expected.find("e=\r"), 2, "e=now").insert(expected.find("[B]"), "new=\r\n");
    expected.insert(expected.find("[D]"), "K=2\r\n");
    EXPECT_EQ(expected, m_folder.Read("test.ini"));
    EXPECT_EQ(5, writes.Calls()) << "the entry that was there is listed twice";

    // Another spelling of a name stands for the same entry, whichever is written last.
    ASSERT_EQ(0u, Load("[A]\r\nk=1\r\nl=1\r\n"));
    EXPECT_EQ(0u, m_memory.DeleteIniKey("A", "k") | m_memory.SetIniValue("A", "K", "2"));
    EXPECT_EQ(0u, m_memory.SetIniValue("A", "k", "1") | m_memory.SaveIniFile(FALSE));
    EXPECT_EQ("[A]\r\nk=1\r\nl=1\r\n", m_folder.Read("test.ini"));

    // What another program wrote meanwhile is overwritten.
    Write("[A]\r\nk=other\r\n");
    EXPECT_EQ(0u, m_memory.SaveIniFile(FALSE));
    EXPECT_EQ("[A]\r\nk=1\r\nl=1\r\n", m_folder.Read("test.ini"));
}

TEST_F(MemIniFile, OfADerivedClassAsksItForEachEntry)
{
    struct Shouting : CZoMemIniFile {
        DWORD DoString(const char* key, int read, const char* input, char* output, DWORD size) override
        {
            m_asked += (read ? "r" : "w") + std::string(key);
            const DWORD status = CZoMemIniFile::DoString(key, read, input, output, size);
            if (read)
                CharUpperA(output);
            return status;
        }
        std::string m_asked;
    } memory;
    Write("[A]\r\nk=v\r\nl=V\r\n");
    EXPECT_EQ(0u, memory.LoadIniFile(FilePath().c_str(), nullptr));
    EXPECT_EQ("[A]k=V;l=V;", MemoryView::Of(memory));
    EXPECT_EQ(0u, memory.SaveIniFile(FALSE));
    EXPECT_EQ("rkrlwkwl", memory.m_asked);
    EXPECT_EQ("[A]\r\nk=V\r\nl=V\r\n", m_folder.Read("test.ini"));
}

TEST_F(MemIniFile, RenamesAndDeletes)
{
    ASSERT_EQ(0u, Load(kFile));
    EXPECT_EQ(ZO_INI_OUT_OF_MEMORY, m_memory.RenameIniSection("none", "C"));
    EXPECT_EQ(0u, m_memory.RenameIniSection("A", "A"));
    EXPECT_EQ(0u, m_memory.RenameIniSection("A", "B")) << "in place of the other";
    EXPECT_EQ("[B]k1=1;k2=2;[B]k1=1;k2=2;", MemoryView::Of(m_memory));
    EXPECT_EQ(ZO_INI_UNKNOWN_SECTION, m_memory.DeleteIniSection("A"));
    EXPECT_EQ(0u, m_memory.DeleteIniSection("B"));
    EXPECT_EQ("[B]", MemoryView::Of(m_memory));
    EXPECT_EQ(ZO_INI_UNKNOWN_SECTION, m_memory.DeleteIniKey("B", "k1"));

    const char* none = nullptr;
    CString value;
    for (const DWORD status :
         {m_memory.SetIniValue(none, "k", "v"), m_memory.GetIniValue(none, "k", value), m_memory.DeleteIniSection(none),
          m_memory.RenameIniSection(none, "S"), m_memory.RenameIniSection("S", none), m_memory.DeleteIniKey(none, "k")})
        EXPECT_EQ(ZO_INI_NULL_SECTION, status);
    for (const DWORD status : {m_memory.SetIniValue("S", none, "v"), m_memory.GetIniValue("S", none, value),
                               m_memory.DeleteIniKey("S", none)})
        EXPECT_EQ(ZO_INI_NULL_KEY, status);
    EXPECT_EQ(ZO_INI_NULL_ARGUMENT, m_memory.SetIniValue("S", "k", none));
}

TEST_F(MemIniFile, MissingMemoryIsAStatusAndChangesNothing)
{
    const std::pair<const char*, DWORD (*)(CZoMemIniFile&)> rows[] = {
        {"new section", [](CZoMemIniFile& memory) { return memory.SetIniValue("C", "k", "value"); }},
        {"new value", [](CZoMemIniFile& memory) { return memory.SetIniValue("A", "k", "value"); }},
        {"rename", [](CZoMemIniFile& memory) { return memory.RenameIniSection("A", "C"); }},
        {"rename to another", [](CZoMemIniFile& memory) { return memory.RenameIniSection("A", "B"); }},
    };
    ASSERT_EQ(0u, Load(kFile));
    const std::string file = FilePath();
    for (const auto& [name, operation] : rows) {
        SCOPED_TRACE(name);
        AllocationFaults faults;
        RunFaultActs(faults, [&, &operation = operation](const FaultRun& run) {
            CZoMemIniFile memory;
            ASSERT_EQ(0u, memory.LoadIniFile(file.c_str(), nullptr));
            const DWORD status = run.Act([&] { return operation(memory); });
            EXPECT_EQ(run.Fired() ? ZO_INI_OUT_OF_MEMORY : 0u, status);
            EXPECT_EQ(run.Fired(), kPicture == MemoryView::Of(memory));
            memory.DeleteIniSection("B"); // leaves nothing behind
        });
    }
    std::string full = "[A]\r\n"; // the map of its values takes room for ten at once
    for (char key = '0'; key <= '9'; ++key)
        full += key + std::string("=1\r\n");
    Write(full);
    AllocationFaults faults;
    RunFaultActs(faults, [&](const FaultRun& run) {
        CZoMemIniFile memory;
        ASSERT_EQ(0u, memory.LoadIniFile(file.c_str(), nullptr));
        const std::string before = MemoryView::Of(memory);
        run.Act([&] { return memory.SetIniValue("A", "k", "value"); });
        EXPECT_EQ(run.Fired(), before == MemoryView::Of(memory));
    });
    faults.Arm(1, true);
    CString value;
    EXPECT_EQ(0u, m_memory.GetIniValue("A", "k1", value));
    EXPECT_EQ(0u, m_memory.DeleteIniKey("A", "k1"));
    EXPECT_EQ(0u, m_memory.DeleteIniSection("A"));
    EXPECT_EQ(0, faults.Fired());
    faults.Disarm();
    // Without the lines of a section its entries are read one by one.
    ASSERT_EQ(0u, Load("[A]\r\nq=\" v \"\r\nk=1\r\n"));
    ASSERT_EQ(0u, m_memory.SetIniValue("A", "k", "2"));
    faults.Arm(1, true);
    EXPECT_EQ(0u, m_memory.SaveIniFile(FALSE));
    EXPECT_LT(0, faults.Fired());
    faults.Disarm();
    EXPECT_EQ("[A]\r\nq=\" v \"\r\nk=2\r\n", m_folder.Read("test.ini"));
}

TEST_F(MemIniFile, MissingMemoryLeavesOutWholeSections)
{
    Write(kFile);
    CMapStringToString table;
    table.SetAt("x", "y");
    const std::string file = FilePath();
    AllocationFaults faults;
    RunFaultActs(faults, [&](const FaultRun& run) {
        CZoMemIniFile memory;
        const DWORD status = run.Act([&] { return memory.LoadIniFile(file.c_str(), &table); });
        const std::string picture = MemoryView::Of(memory);
        EXPECT_TRUE(status == 0 || (status == ZO_INI_OUT_OF_MEMORY && picture.empty())) << picture;
        EXPECT_EQ(1u, (std::set<std::string>{kPicture, kPictureA, kPictureB, ""}.count(picture))) << picture;
        EXPECT_TRUE(run.Fired() || picture == kPicture); // whole also without memory for the section that has no keys
    });
}

TEST_F(MemIniFile, RefusedCallsLeaveEntriesOut)
{
    ASSERT_EQ(0u, Load(kFile));
    FaultSource faults("profile");
    const ZO_FAULTY_CALL(WritePrivateProfileStringA) write(faults, "ZOGBLBRX.DLL", FALSE, ERROR_DISK_FULL);
    const ZO_FAULTY_CALL(GetFileAttributesA)
        exists(faults, "ZOGBLBRX.DLL", INVALID_FILE_ATTRIBUTES, ERROR_ACCESS_DENIED);
    RunFaultLoop(faults, [&](const FaultRun& run) {
        const DWORD saved = m_memory.SaveIniFile(TRUE);
        EXPECT_EQ(run.Fired() && run.number == 1 ? ZO_INI_NO_FILE : 0u, saved);
        EXPECT_EQ(kFile, m_folder.Read("test.ini"));
    });
    for (const char* section : {"C", "D"})
        ASSERT_EQ(0u, m_memory.SetIniValue(section, "k", "1"));
    faults.Arm(2, false);
    EXPECT_EQ(0u, m_memory.SaveIniFile(TRUE));
    faults.Disarm();
    EXPECT_EQ(kFile + std::string("[D]\r\nk=1\r\n"), m_folder.Read("test.ini"));
}
