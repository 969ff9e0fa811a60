// Damaged version records, and the system, given room to run in, as the judge of what is read from them.
#include "version_fixture.h"

namespace {

// Blocks for version data that end where their page does.
HGLOBAL WINAPI GuardedGlobalAlloc(UINT, SIZE_T size)
{
    void* block = GuardedAllocate(size);
    return block != nullptr ? std::memset(block, 0, size) : nullptr;
}
void* WINAPI GuardedGlobalLock(HGLOBAL block) { return block; }
BOOL WINAPI GuardedGlobalUnlock(HGLOBAL) { return TRUE; }
HGLOBAL WINAPI GuardedGlobalFree(HGLOBAL block) { return GuardedFree(block), nullptr; }

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

} // namespace

class VersionMutation : public VersionResource {
protected:
    VersionMutation() { AddUser("Plain"); }
    ~VersionMutation() override { m_version.ExtractVersionInfo(""); } // lets go of guarded blocks

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
    const ImportPatch m_allocate{kZogbl, "GlobalAlloc", &GuardedGlobalAlloc};
    const ImportPatch m_lock{kZogbl, "GlobalLock", &GuardedGlobalLock};
    const ImportPatch m_unlock{kZogbl, "GlobalUnlock", &GuardedGlobalUnlock};
    const ImportPatch m_free{kZogbl, "GlobalFree", &GuardedGlobalFree};
};

TEST_F(VersionMutation, IsReadWithinItsBounds)
{
    static constexpr LPCSTR names[] = {"Comments",         "CompanyName",  "FileDescription",
                                       "FileVersion",      "InternalName", "LegalCopyright",
                                       "OriginalFilename", "ProductName",  "ProductVersion"};
    const size_t record = Find(L"VS_VERSION_INFO") - 6;
    const WORD length = NumberAt<WORD>(m_whole, record);
    ForEachMutation([&](unsigned, Random& random) {
        std::string file = m_whole;
        DamageRecord(file, record, length, random);
        if (!ExtractFrom(file))
            return ExpectEmpty(m_version), false;
        std::vector<char> block(1024 * 1024); // with room for whatever the lengths claim
        DWORD ignored;
        const DWORD size = GetFileVersionInfoSizeA(m_damaged.c_str(), &ignored);
        EXPECT_TRUE(GetFileVersionInfoA(m_damaged.c_str(), 0, size, block.data()));
        for (WORD text = 0; text < std::size(names); ++text) {
            void* value;
            UINT valueLength;
            const std::string path = std::string("\\StringFileInfo\\040904E4\\") + names[text];
            if (!VerQueryValueA(block.data(), path.c_str(), &value, &valueLength))
                continue;
            const std::string expected(static_cast<char*>(value), strnlen(static_cast<char*>(value), valueLength));
            const std::string actual(m_version.GetStandardValue(text));
            // Of a text that says it is longer than its record, the system tells nothing or what lies behind as well.
            const bool isCut = !actual.empty() && expected.compare(0, actual.size(), actual) == 0;
            EXPECT_TRUE(actual == expected || expected.empty() || isCut)
                << names[text] << ": " << actual << ", the system says " << expected;
        }
        return true;
    });
}

TEST_F(VersionMutation, RecordsOf16BitsAreReadToo)
{
    const std::string texts = NarrowRecord("CompanyName", {"Zo Tests", 9}) + NarrowRecord("ProductName", {"Plain", 6}) +
                              NarrowRecord("ProductVersion", {"7.12", 5}),
                      whole = NarrowRecord(
                          "VS_VERSION_INFO", "",
                          NarrowRecord("StringFileInfo", "", NarrowRecord("040904E4", "", texts)) +
                              NarrowRecord("VarFileInfo", "", NarrowRecord("Translation", {"\x09\x04\xE4\x04", 4})));
    const ImportPatch size(kZogbl, "GetFileVersionInfoSizeA", &RecordSize);
    const ImportPatch take(kZogbl, "GetFileVersionInfoA", &TakeRecord);
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
}

TEST_F(VersionMutation, TextsThatSayTheyAreLongerAndValuesOutside)
{
    std::string file = m_whole;
    file[Find(L"Translation")] = 'X';
    EXPECT_FALSE(ExtractFrom(file)) << "no translations";
    file = m_whole;
    PutNumber<WORD>(file, Find(L"InternalName") - 4, 0x7FFF); // the length of its value
    EXPECT_TRUE(ExtractFrom(file));
    EXPECT_STREQ("Fixture", m_version.GetInternalName());

    const ImportPatch outside(kZogbl, "VerQueryValueA", &QueryOutside);
    EXPECT_FALSE(Extract("plain"));
}
