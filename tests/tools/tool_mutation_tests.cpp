// Damaged tools files: what is read is what the format says, and never more than its fields.
#include "support/test.h"
#include "tool_fixture.h"

#include <zogbl/tool_menu.h>

namespace {

std::string MakeFile(Random& random)
{
    std::string file = HeaderBytes("description");
    for (unsigned i = random() % 4; i > 0; --i)
        file += RecordBytes(std::string(random() % 33, 'm'), random() % 16 & ~ZO_TLM_ASK_ARGUMENTS,
                            std::string(random() % 129, 'd'), std::string(random() % 265, 'p'),
                            std::string(random() % 265, 'f'), std::string(random() % 265, 'a'));
    const auto put = [&](size_t at, const std::string& bytes) { // into one of the records
        const size_t records = file.size() < 144 ? 0 : (file.size() - 144) / 1536;
        if (records > 0)
            file.replace(144 + random() % records * 1536 + at, bytes.size(), bytes);
    };
    const auto byte = [&] { return std::string(1, static_cast<char>(random())); };
    const auto unended = [&] { // a text without its end, or with something behind
        const ToolText& text = Choose(random, kToolTexts);
        put(text.at + text.size - 1, std::string(1, static_cast<char>(random() | 0x80)));
    };
    Damage(
        random, 0, 3,
        {[&] { file[random() % (std::min)(file.size(), size_t{144})] ^= static_cast<char>(1 << random() % 8); },
         [&] { file.replace((std::min)(file.size(), size_t{random() % 3 * 4}), 4, BytesOf(DWORD{random()})); },
         [&] { put(random() % 14 * 4, BytesOf(DWORD{random()})); }, unended, unended,
         [&] { put(56 + random() % 952, byte()); },
         [&] { file.resize(file.size() - (std::min<size_t>)(file.size() - 1, random() % (random() % 3 ? 2 : 2000))); },
         [&] { file.append(random() % 3 == 0 ? random() % 1536 : random() % 2, '\xFF'); }});
    return file;
}

/// The text of a field, by the format alone.
std::string FieldOf(const std::string& record, size_t at, size_t size)
{
    return record.substr(at, size).substr(0, record.substr(at, size).find('\0'));
}

std::string g_program, g_arguments, g_folder; // of the start that a test waits for
BOOL WINAPI CheckStart(LPCSTR program, LPSTR command, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID,
                       LPCSTR folder, LPSTARTUPINFOA, LPPROCESS_INFORMATION)
{
    EXPECT_EQ(g_program, program);
    EXPECT_EQ(g_folder, folder);
    const std::string line = command;
    EXPECT_GE(line.size(), g_arguments.size() + 1);
    EXPECT_EQ(' ' + g_arguments, line.substr(line.size() - g_arguments.size() - 1));
    return FALSE;
}

void ExpectItem(const std::string& record, CTlmItem& item)
{
    for (const ToolText& text : kToolTexts)
        EXPECT_EQ(FieldOf(record, text.at, text.size), GetText(item, text)) << text.at;
    EXPECT_EQ(0, memcmp(record.data(), &item.GetRecord(), 1536));
    g_program = FieldOf(record, 216, 264);
    g_folder = FieldOf(record, 480, 264);
    g_arguments = FieldOf(record, 744, 264);
    item.SetDataFlags(item.GetDataFlags() & ~ZO_TLM_ASK_ARGUMENTS);
    EXPECT_EQ(g_program.empty() ? 15u : 14u, item.ActivateItem(nullptr));
}

} // namespace

TEST(ToolMutation, IsReadAsTheFormatSays)
{
    const TestFolder folder;
    const std::string path = folder.Path("test.tlm");
    const ImportPatch noProcess(kLibrary, "CreateProcessA", &CheckStart);
    ForEachMutation([&](unsigned, Random& random) {
        const std::string bytes = MakeFile(random);
        folder.Write("test.tlm", bytes);
        const DWORD isValid = bytes.size() < 144                        ? 16
                              : NumberAt<DWORD>(bytes, 0) != 144        ? 18
                              : NumberAt<DWORD>(bytes, 4) != 0x19950527 ? 19
                              : NumberAt<DWORD>(bytes, 8) != 0x00010000 ? 20
                                                                        : 0;
        EXPECT_EQ(isValid, CTlmFile::IsValidFile(path.c_str()));
        CTlmFile file;
        ToolItems items;
        const DWORD options = random() % 2;
        const DWORD status = file.LoadFileData(path.c_str(), 0x00010000, 144, &items, options);
        EXPECT_EQ(isValid == 0 ? 0u : 3u, status);
        INT_PTR loaded = 0;
        for (size_t at = 144; isValid == 0 && at + 1536 <= bytes.size(); at += 1536) {
            const std::string record = bytes.substr(at, 1536);
            if (options == ZO_TLM_FOR_MENU && (NumberAt<DWORD>(record, 4) & ZO_TLM_IN_MENU) == 0)
                continue;
            if (loaded >= items.GetSize())
                return ADD_FAILURE() << "too few", false;
            EXPECT_EQ(options == 0 ? 0u : ZO_TLM_FIRST_COMMAND - static_cast<UINT>(loaded),
                      items.Item(loaded).GetCommand());
            ExpectItem(record, items.Item(loaded++));
        }
        EXPECT_EQ(loaded, items.GetSize());
        CString description;
        file.GetDescription(description);
        EXPECT_EQ(isValid == 0 ? FieldOf(bytes, 16, 128) : "", std::string(description));
        return isValid == 0;
    });
}
