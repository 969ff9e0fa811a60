// Tools files byte for byte, and every way in which one can be wrong.
#include "support/test.h"
#include "tool_fixture.h"

namespace {

constexpr DWORD kVersion = ZO_TLM_FILE_VERSION;
constexpr DWORD kSize = ZO_TLM_HEADER_SIZE;

class ToolFile : public testing::Test {
protected:
    std::string Path() const { return m_folder.Path("test.tlm"); }
    void Write(const std::string& bytes) { m_folder.Write("test.tlm", bytes); }
    std::string Read() const { return m_folder.Read("test.tlm"); }
    DWORD Load(DWORD options = 0) { return m_file.LoadFileData(Path().c_str(), kVersion, kSize, &m_items, options); }
    DWORD Save() { return m_file.SaveFileData(Path().c_str(), kVersion, kSize, &m_items); }
    void Add(LPCSTR menuText)
    {
        auto* item = new CTlmItem;
        item->SetDataMenuText(menuText);
        m_items.Add(item);
    }

    TestFolder m_folder;
    CTlmFile m_file;
    ToolItems m_items;
};

} // namespace

TEST(ToolClasses, HaveTheirOperationsInOrder)
{
    ExpectSlots(6, &CTlmItem::ActivateItem, &CTlmItem::LoadItemData, &CTlmItem::SaveItemData);
    ExpectSlots(6, &CTlmFile::LoadFileData, &CTlmFile::SaveFileData);
    EXPECT_STREQ("CTlmItem", CTlmItem().GetRuntimeClass()->m_lpszClassName);
    EXPECT_STREQ("CTlmFile", CTlmFile().GetRuntimeClass()->m_lpszClassName);
}

TEST_F(ToolFile, TellsWhatIsWrong)
{
    Write(HeaderBytes("mine"));
    EXPECT_EQ(0u, Load());
    Write(HeaderBytes("another"));
    EXPECT_EQ(3u, m_file.LoadFileData(Path().c_str(), kVersion + 1, kSize, &m_items, 0));
    EXPECT_EQ(3u, m_file.LoadFileData(Path().c_str(), kVersion, kSize + 1, &m_items, 0));
    const std::string missing = m_folder.Path("missing.tlm");
    for (const auto& [path, status] : {std::pair{LPCSTR{}, 4u}, {"", 4u}, {missing.c_str(), 5u}}) {
        EXPECT_EQ(status, CTlmFile::IsValidFile(path));
        EXPECT_EQ(status, m_file.LoadFileData(path, kVersion, kSize, &m_items, 0));
    }
    CString description;
    m_file.GetDescription(description);
    EXPECT_STREQ("mine", description) << "that of the last valid header";
}

TEST_F(ToolFile, IsWrittenByteForByte)
{
    Add("first");
    m_items.Add(nullptr);
    Add("second");
    CTlmItem& second = m_items.Item(2);
    second.SetDataDescription("text");
    second.SetDataProgramPath("C:\\Tools\\calc.exe");
    second.SetDataWorkingDirectory("C:\\Tools");
    second.SetDataArguments("/x y");
    second.SetDataFlags(0x80000001);
    m_items.Item(0).SetDataDescription("");
    m_file.SetDescription("what they are for");
    Write(std::string(100000, 'x')); // a longer one gives way
    EXPECT_EQ(0u, Save());
    const std::string expected = HeaderBytes("what they are for") + RecordBytes("first") +
                                 RecordBytes("second", 0x80000001, "text", "C:\\Tools\\calc.exe", "C:\\Tools", "/x y");
    EXPECT_EQ(expected, Read());
    // Whatever else a record holds is kept, but for its size.
    std::string strange = HeaderBytes() + std::string(1536, '\x5A');
    Write(strange);
    m_items.Clear();
    EXPECT_EQ(0u, Load());
    EXPECT_EQ(0u, Save());
    PutNumber(strange, 144, 1536);
    EXPECT_EQ(strange, Read());
    EXPECT_EQ(0u, Load());
    EXPECT_EQ(2, m_items.GetSize()) << "appended";
}

TEST_F(ToolFile, IsDeletedOrKeptWhenItCannotBeSaved)
{
    Add("tool");
    const auto save = [&](DWORD version, DWORD size) {
        return m_file.SaveFileData(Path().c_str(), version, size, &m_items);
    };
    for (const auto& [version, size] : {std::pair{kVersion + 1, kSize}, {kVersion, kSize - 1}}) {
        Write("before");
        EXPECT_EQ(3u, save(version, size));
        EXPECT_FALSE(m_folder.Exists("test.tlm")) << "a version or size that is not the class's";
    }
    EXPECT_EQ(4u, m_file.SaveFileData(nullptr, kVersion, kSize, &m_items));
    EXPECT_EQ(3u, m_file.SaveFileData(nullptr, kVersion + 1, kSize, &m_items));

    Write("before");
    {
        CFile held(Path().c_str(), CFile::modeReadWrite | CFile::shareExclusive);
        EXPECT_EQ(5u, save(kVersion, kSize)) << "held by another";
        EXPECT_EQ(5u, Load());
    }
    EXPECT_EQ("before", Read());
}

TEST_F(ToolFile, LoadsAllOrTellsWhenMemoryOrTheSystemFail)
{
    Write(HeaderBytes() + RecordBytes("1") + RecordBytes("2") + RecordBytes("3"));
    { // A read that lies: nothing came, where there is a record.
        FaultSource faults("short reads");
        ZO_FAULTY_CALL(ReadFile) nothing(faults, kFramework, TRUE);
        faults.Arm(2, false);
        EXPECT_EQ(6u, Load());
        EXPECT_EQ(0, m_items.GetSize());
    }
    AllocationFaults memory;
    RunFaultLoop(memory, [&](const FaultRun& run) {
        m_items.Clear();
        const DWORD status = Load();
        // Opening, an object, the list.
        EXPECT_TRUE(status == 0 || (run.Fired() && (status == 5 || status == 11 || status == 12))) << status;
        EXPECT_EQ(status == 0, m_items.GetSize() == 3);
        m_items.Clear();
    });
    FrameworkFileFaults faults;
    RunFaultLoop(faults, [&](const FaultRun& run) {
        m_items.Clear();
        const DWORD status = Load();
        EXPECT_EQ(!run.Fired() ? 0u : run.number == 1 ? 5u : 6u, status);
        EXPECT_EQ(!run.Fired() ? 3 : (std::max)(0, run.number - 4), m_items.GetSize());
        m_items.Clear();
    });
    RunFaultLoop(faults, [&](const FaultRun& run) {
        const DWORD status = CTlmFile::IsValidFile(Path().c_str());
        EXPECT_EQ(!run.Fired() ? 0u : run.number == 1 ? 5u : 6u, status);
    });
}

TEST_F(ToolFile, SavesAllOrTellsWhenMemoryOrDiskFail)
{
    Add("tool");
    const std::string after = HeaderBytes() + RecordBytes("tool", 4, m_items.Item(0).GetRecord().szDescription);
    const auto save = [&](FaultSource&& faults, std::initializer_list<DWORD> failures) {
        RunFaultLoop(faults, [&](const FaultRun& run) {
            Write("before"); // of another module: no fault
            const DWORD status = Save();
            run.Stop();
            // What is not written of the items nobody looks at; a header that is not takes the file along.
            const size_t call = static_cast<size_t>(run.number);
            EXPECT_EQ(call == 0 || call > failures.size() ? 0u : failures.begin()[call - 1], status);
            EXPECT_EQ(status == 5 ? "before" : status == 7 ? "(none)" : run.Fired() ? HeaderBytes() : after, Read());
        });
    };
    save(AllocationFaults(), {5});
    save(FrameworkFileFaults(), {5, 7});
}
