// Damaged version records, and the system, given room to run in, as the judge of what is read from them.
#include "support/test.h"
#include "version_fixture.h"

#include <fstream>

namespace {

constexpr char kLibrary[] = "ZOGBLBRX.DLL";

// Blocks for version data that end where their page does.
HGLOBAL WINAPI GuardedGlobalAlloc(UINT, SIZE_T size)
{
    void* block = GuardedAllocate(size);
    return block != nullptr ? std::memset(block, 0, size) : nullptr;
}
void* WINAPI GuardedGlobalLock(HGLOBAL block) { return block; }
BOOL WINAPI GuardedGlobalUnlock(HGLOBAL) { return TRUE; }
HGLOBAL WINAPI GuardedGlobalFree(HGLOBAL block) { return GuardedFree(block), nullptr; }

struct GuardedBlocks {
    ImportPatch allocate{kLibrary, "GlobalAlloc", &GuardedGlobalAlloc};
    ImportPatch lock{kLibrary, "GlobalLock", &GuardedGlobalLock};
    ImportPatch unlock{kLibrary, "GlobalUnlock", &GuardedGlobalUnlock};
    ImportPatch free{kLibrary, "GlobalFree", &GuardedGlobalFree};
};

// A module of 16-bit Windows, or any on Windows 95.
std::string g_record;
DWORD WINAPI RecordSize(LPCSTR, DWORD*) { return static_cast<DWORD>(g_record.size()); }
BOOL WINAPI TakeRecord(LPCSTR, DWORD, DWORD, void* block)
{
    return std::memcpy(block, g_record.data(), g_record.size()), TRUE;
}

std::string NarrowRecord(const std::string& name, std::string value, const std::string& records = {})
{
    const auto valueLength = static_cast<WORD>(value.size());
    std::string record = std::string(4, '\0') + name + '\0';
    for (std::string* text : {&record, &value})
        text->resize((text->size() + 3) & ~size_t{3});
    record += value + records;
    const WORD lengths[] = {static_cast<WORD>(record.size()), valueLength};
    return record.replace(0, sizeof lengths, reinterpret_cast<const char*>(lengths), sizeof lengths);
}

std::string ReadFile(LPCSTR path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Damages the record at \p begin, of \p length bytes.
void Damage(std::string& file, size_t begin, size_t length, Random& random)
{
    static constexpr WORD numbers[] = {0, 1, 2, 5, 6, 7, 40, 0x7FFF, 0x8000, 0xFFFF};
    for (unsigned changes = 1 + random() % 3; changes > 0; --changes) {
        const size_t at = begin + random() % length;
        const size_t even = at & ~size_t{1};
        WORD number;
        std::memcpy(&number, &file[even], sizeof number);
        switch (random() % 4) {
        case 0:
            file[at] = static_cast<char>(random());
            break;
        case 1: // what may be a length
            number = random() % 2 == 0 ? numbers[random() % std::size(numbers)]
                                       : static_cast<WORD>(number + random() % 9 - 4);
            file.replace(even, sizeof number, reinterpret_cast<const char*>(&number), sizeof number);
            break;
        case 2:
            number = numbers[random() % std::size(numbers)];
            file.replace(begin + random() % 2 * 2, sizeof number, reinterpret_cast<const char*>(&number),
                         sizeof number);
            break;
        default: // a terminator or a name goes, the rest moves up
            file.insert(begin + length, 2, static_cast<char>(random() % 2));
            file.erase(even, 2);
            break;
        }
    }
}

/// What lies elsewhere.
BOOL WINAPI QueryOutside(LPCVOID, LPCSTR, LPVOID* value, UINT* length)
{
    static DWORD translation = MAKELONG(0x0409, 1252);
    *value = &translation;
    *length = sizeof translation;
    return TRUE;
}

/// What the system says, in a block with room for whatever the lengths claim.
class Judge {
public:
    explicit Judge(const std::string& file) : m_block(1024 * 1024)
    {
        DWORD ignored;
        const DWORD size = GetFileVersionInfoSizeA(file.c_str(), &ignored);
        EXPECT_TRUE(GetFileVersionInfoA(file.c_str(), 0, size, m_block.data()));
    }
    /// A text of the fixture's translation; empty when the system finds none.
    std::string Text(LPCSTR name)
    {
        void* value = nullptr;
        UINT length = 0;
        const bool found = VerQueryValueA(m_block.data(), (std::string("\\StringFileInfo\\040904E4\\") + name).c_str(),
                                          &value, &length);
        return found ? std::string(static_cast<char*>(value), strnlen(static_cast<char*>(value), length)) : "";
    }

private:
    std::vector<char> m_block;
};

} // namespace

class VersionMutation : public VersionResource {};

TEST_F(VersionMutation, IsReadWithinItsBounds)
{
    static constexpr LPCSTR names[] = {"Comments",         "CompanyName",  "FileDescription",
                                       "FileVersion",      "InternalName", "LegalCopyright",
                                       "OriginalFilename", "ProductName",  "ProductVersion"};
    AddUser("Plain", OwnUser());
    const std::string whole = ReadFile(Fixture("plain"));
    constexpr WCHAR kName[] = L"VS_VERSION_INFO";
    const size_t name = whole.find(std::string(reinterpret_cast<const char*>(kName), sizeof kName));
    ASSERT_NE(std::string::npos, name);
    WORD length;
    std::memcpy(&length, &whole[name - 6], sizeof length);

    const GuardedBlocks guarded;
    const TestFolder folder;
    unsigned cases = 0;
    unsigned read = 0;
    ForEachMutation([&](unsigned number, Random& random) {
        cases = number + 1;
        std::string file = whole;
        Damage(file, name - 6, length, random);
        folder.Write("damaged.DLL", file);
        CZoVersionResource version;
        if (!version.ExtractVersionInfo(folder.Path("damaged.DLL").c_str())) {
            ExpectEmpty(version);
            return;
        }
        ++read;
        Judge judge(folder.Path("damaged.DLL"));
        for (WORD text = 0; text < std::size(names); ++text) {
            const std::string expected = judge.Text(names[text]);
            const std::string actual(version.GetStandardValue(text));
            // Of a text that says it is longer than its record, the system tells nothing or what lies behind as well.
            const bool isCut = !actual.empty() && expected.compare(0, actual.size(), actual) == 0;
            EXPECT_TRUE(actual == expected || expected.empty() || isCut)
                << names[text] << ": " << actual << ", the system says " << expected;
        }
    });
    EXPECT_GT(read, cases / 20) << "too much damage to say anything";
    EXPECT_LT(read, cases);
}

TEST_F(VersionMutation, RecordsOf16BitsAreReadToo)
{
    AddUser("Plain", OwnUser());
    const auto text = [](const char* name, const char* value) {
        return NarrowRecord(name, value + std::string(1, '\0'));
    };
    const std::string texts =
        text("CompanyName", "Zo Tests") + text("ProductName", "Plain") + text("ProductVersion", "7.12");
    const std::string whole =
        NarrowRecord("VS_VERSION_INFO", "",
                     NarrowRecord("StringFileInfo", "", NarrowRecord("040904E4", "", texts)) +
                         NarrowRecord("VarFileInfo", "", NarrowRecord("Translation", {"\x09\x04\xE4\x04", 4})));
    const ImportPatch size(kLibrary, "GetFileVersionInfoSizeA", &RecordSize);
    const ImportPatch take(kLibrary, "GetFileVersionInfoA", &TakeRecord);
    const GuardedBlocks guarded;
    const size_t lengthOfTranslations = whole.find("Translation") - 2;
    g_record = whole;
    ASSERT_TRUE(m_version.ExtractVersionInfo("any.DLL"));
    EXPECT_STREQ("Plain", m_version.GetStandardValue(7));
    for (size_t at = 0; at < whole.size(); ++at) {
        g_record = whole.substr(0, at);
        EXPECT_FALSE(m_version.ExtractVersionInfo("any.DLL")) << at;
        for (const char damage : {'\0', '\x7F', '\xFF'}) {
            g_record = whole;
            g_record[at] = damage;
            const BOOL extracted = m_version.ExtractVersionInfo("any.DLL");
            EXPECT_FALSE(extracted && at == lengthOfTranslations && damage != '\0');
        }
    }
    m_version.ExtractVersionInfo("");
}

TEST_F(VersionMutation, TextsThatSayTheyAreLongerAndValuesOutside)
{
    AddUser("Plain", OwnUser());
    std::string file = ReadFile(Fixture("plain"));
    constexpr WCHAR kName[] = L"InternalName";
    const size_t name = file.find(std::string(reinterpret_cast<const char*>(kName), sizeof kName));
    ASSERT_NE(std::string::npos, name);
    file.replace(name - 4, 2, "\xFF\x7F"); // the length of its value
    const TestFolder folder;
    folder.Write("longer.DLL", file);
    EXPECT_TRUE(m_version.ExtractVersionInfo(folder.Path("longer.DLL").c_str()));
    EXPECT_STREQ("Fixture", m_version.GetInternalName());

    const ImportPatch outside(kLibrary, "VerQueryValueA", &QueryOutside);
    EXPECT_FALSE(m_version.ExtractVersionInfo(Fixture("plain")));
}
