// Damaged version records, and the system, given room to run in, as the judge of what is read from them.
#include "version_fixture.h"

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
    const std::string valueLength = BytesOf(static_cast<WORD>(value.size()));
    std::string record = std::string(4, '\0') + name + '\0';
    for (std::string* text : {&record, &value})
        text->resize((text->size() + 3) & ~size_t{3});
    record += value + records;
    return BytesOf(static_cast<WORD>(record.size())) + valueLength + record.substr(4);
}

/// Damages the record at \p begin, of \p length bytes.
void DamageRecord(std::string& file, size_t begin, size_t length, Random& random)
{
    static constexpr WORD numbers[] = {0, 1, 2, 5, 6, 7, 40, 0x7FFF, 0x8000, 0xFFFF};
    const auto anywhere = [&] { return begin + random() % length; };
    const auto even = [&] { return anywhere() & ~size_t{1}; };
    Damage(random, 1, 3,
           {[&] { file[anywhere()] = static_cast<char>(random()); },
            [&] { PutNumber(file, even(), Choose(random, numbers)); }, // what may be a length
            [&] {
                const size_t at = even();
                PutNumber(file, at, static_cast<WORD>(NumberAt<WORD>(file, at) + random() % 9 - 4));
            },
            [&] { PutNumber(file, begin + random() % 2 * 2, Choose(random, numbers)); },
            [&] { // a terminator or a name goes, the rest moves up
                file.insert(begin + length, 2, static_cast<char>(random() % 2)).erase(even(), 2);
            }});
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

class VersionMutation : public VersionResource {
protected:
    VersionMutation() { AddUser("Plain"); }
    /// The place of a name in the module's file.
    size_t Find(const std::wstring& name) const
    {
        return m_whole.find(std::string(reinterpret_cast<const char*>(name.c_str()), 2 * name.size() + 2));
    }
    BOOL ExtractFrom(const std::string& file)
    {
        return m_folder.Write("damaged.DLL", file), m_version.ExtractVersionInfo(m_damaged.c_str());
    }

    const TestFolder m_folder;
    const std::string m_whole = ReadBytes(std::string(Fixture("plain"))), m_damaged = m_folder.Path("damaged.DLL");
};

TEST_F(VersionMutation, IsReadWithinItsBounds)
{
    static constexpr LPCSTR names[] = {"Comments",         "CompanyName",  "FileDescription",
                                       "FileVersion",      "InternalName", "LegalCopyright",
                                       "OriginalFilename", "ProductName",  "ProductVersion"};
    const size_t record = Find(L"VS_VERSION_INFO") - 6;
    const WORD length = NumberAt<WORD>(m_whole, record);
    const GuardedBlocks guarded;
    ForEachMutation([&](unsigned, Random& random) {
        std::string file = m_whole;
        DamageRecord(file, record, length, random);
        if (!ExtractFrom(file))
            return ExpectEmpty(m_version), false;
        Judge judge(m_damaged);
        for (WORD text = 0; text < std::size(names); ++text) {
            const std::string expected = judge.Text(names[text]);
            const std::string actual(m_version.GetStandardValue(text));
            // Of a text that says it is longer than its record, the system tells nothing or what lies behind as well.
            const bool isCut = !actual.empty() && expected.compare(0, actual.size(), actual) == 0;
            EXPECT_TRUE(actual == expected || expected.empty() || isCut)
                << names[text] << ": " << actual << ", the system says " << expected;
        }
        return true;
    });
    m_version.ExtractVersionInfo(""); // lets go of guarded blocks
}

TEST_F(VersionMutation, RecordsOf16BitsAreReadToo)
{
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
    std::string file = m_whole;
    PutNumber<WORD>(file, Find(L"InternalName") - 4, 0x7FFF); // the length of its value
    EXPECT_TRUE(ExtractFrom(file));
    EXPECT_STREQ("Fixture", m_version.GetInternalName());

    const ImportPatch outside(kLibrary, "VerQueryValueA", &QueryOutside);
    EXPECT_FALSE(Extract("plain"));
}
