#include "support/test.h"

#include <zogbl/file_name_functions.h>

using FileName = CZoGlobalFileNameFunctions;

TEST(FileName, TakesPathsApart)
{
    const bool wide = IsDoubleByte(); // 0x5C is a backslash elsewhere
    const char* const cases[][3] = {{"C:\\folder\\file", "file", "C:\\folder"},
                                    {"C:\\a:b", "a:b", "C:\\"},
                                    {"C:\\folder\\", "", "C:\\folder"},
                                    {"\\file", "file", ""},
                                    {"ab\\file", "file", "ab"},
                                    {"C:file", "file", "C"},
                                    {"file", "file", "file"},
                                    {nullptr, "", ""},
                                    {"C:\\\x83\x5C.txt", wide ? "\x83\x5C.txt" : ".txt", wide ? "C:\\" : "C:\\\x83"}};
    for (const auto& c : cases) {
        CString name("before"), folder("before");
        FileName::ExtractNameFromPath(c[0], name);
        FileName::ExtractPathFromPath(c[0], folder);
        EXPECT_STREQ(c[1], name);
        EXPECT_STREQ(c[2], folder);
    }
}

TEST(FileName, PutsPathsTogether)
{
    const char* const joined[][3] = {
        {"C:\\a", "b", "C:\\a\\b"}, {"C:\\", "b", "C:\\b"}, {"C:", "b", "C:b"},
        {nullptr, "b", "b"},        {"a", nullptr, "a\\"},  {"\x83\x5C", "-b", "\x83\x5C-b"}}; // the last byte counts
    for (const auto& c : joined) {
        CString path("before");
        FileName::MakePath(c[0], c[1], path);
        EXPECT_STREQ(c[2], path);
    }
    const char* const replaced[][3] = {{"C:\\my.dir\\readme", "txt", "C:\\my.txt"},
                                       {"a.b.c", "d", "a.b.d"},
                                       {"a.b", nullptr, "a"},
                                       {"a", "", "a."},
                                       {nullptr, "x", ".x"}};
    for (const auto& c : replaced) {
        CString out("before"), inPlace(c[0]);
        FileName::ReplaceExtension(c[0], out, c[1]);
        FileName::ReplaceExtension(inPlace, c[1]);
        EXPECT_STREQ(c[2], out);
        EXPECT_STREQ(c[2], inPlace);
    }
}

TEST(FileName, WithoutMemoryTheTextStays)
{
    void (*const operations[])(CString & text) = {[](CString& text) { FileName::ExtractNameFromPath(text, text); },
                                                  [](CString& text) { FileName::ExtractPathFromPath(text, text); },
                                                  [](CString& text) { FileName::MakePath(text, text, text); },
                                                  [](CString& text) { FileName::ReplaceExtension(text, "extension"); }};
    const char* const after[] = {"file", "C:\\", "C:\\file\\C:\\file", "C:\\file.extension"};
    for (size_t i = 0; i < std::size(operations); ++i) {
        const CString before("C:\\file"), expected(after[i]);
        RunFaultLoop<AllocationFaults>([&](const FaultRun& run) {
            CString text(before);
            operations[i](text);
            run.Stop();
            EXPECT_STREQ(run.Fired() ? before : expected, text);
        });
    }
}

TEST(FileName, AbbreviatesToTheWidth)
{
    std::vector<std::vector<std::string>> cases = {
        // each text is what is left when the one before has no room
        {"C:\\folder one\\folder two\\report.txt", "C:\\...\\folder two\\report.txt", "C:\\...\\report.txt",
         "report.txt"},
        {"\\\\server\\a long share\\folder\\file.txt", "\\\\server\\...\\folder\\file.txt", "\\\\server\\...\\file.txt",
         "file.txt"},
        {"relative\\folder\\file.txt", "re\\...\\folder\\file.txt", "re\\...\\file.txt", "file.txt"},
        {"C:\\long folder\\a/file", "C:\\...\\a/file", "file"},
        {"C:a very long file name.txt", "a very long file name.txt"},
        {"\\\\server", "server"},
        {"\\\\\\server\\file", "\\\\\\...\\file", "file"},
        {""}};
    if (IsDoubleByte())
        cases.push_back(
            {"C:\\\x83\x5C\x83\x5C\x83\x5C\\\x94\x5C\\a.txt", "C:\\...\\\x94\x5C\\a.txt", "C:\\...\\a.txt", "a.txt"});
    CDC dc;
    ASSERT_TRUE(dc.Attach(CreateCompatibleDC(nullptr)));
    for (const auto& forms : cases) {
        for (size_t i = 0; i < forms.size(); ++i) {
            const int width = dc.GetTextExtent(forms[i].c_str(), static_cast<int>(forms[i].size())).cx;
            for (const bool narrower : {false, true}) {
                SentinelBuffer out(MAX_PATH);
                FileName::AbbreviateFilePath(forms[0].c_str(), out.Data(), &dc, width - narrower);
                EXPECT_EQ(forms[narrower && i + 1 < forms.size() ? i + 1 : i], out.Text());
                out.ExpectGuardsIntact();
            }
        }
    }
    const std::string name(100, 'n');
    const std::pair<std::string, std::string> longPaths[] = {
        {"C:\\" + std::string(200, 'f') + "\\" + name, "C:\\...\\" + name},
        {"C:\\" + std::string(300, 'n'), std::string(MAX_PATH - 1, 'n')},
        {"\\\\" + std::string(300, 's') + "\\" + name, name}};
    for (const auto& [path, expected] : longPaths) {
        SentinelBuffer out(MAX_PATH);
        FileName::AbbreviateFilePath(path.c_str(), out.Data(), nullptr, 0); // every text fits
        EXPECT_EQ(expected, out.Text());
        out.ExpectGuardsIntact();
    }
    FileName::AbbreviateFilePath("path", nullptr, &dc, 0);
    dc.DeleteDC();
}
