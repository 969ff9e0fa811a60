// The sample translation files, beside what the system's code pages say.
#include "support/test.h"
#include "translate_fixture.h"

namespace {

constexpr UINT kWindows = 1252;

wchar_t Decode(UINT codePage, BYTE code)
{
    wchar_t character = 0;
    const char byte = static_cast<char>(code);
    EXPECT_EQ(1, MultiByteToWideChar(codePage, 0, &byte, 1, &character, 1));
    return character;
}

} // namespace

class SampleTables : public TranslateTest {};

TEST_F(SampleTables, MapCharactersToThemselvesAndLoseNothing)
{
    const struct {
        const char* name;
        UINT codePage;
        int common; // characters that both code pages have, control characters among them
    } samples[] = {{"CP437.IOT", 437, 182}, {"CP850.IOT", 850, 225}, {"EBCDIC37.IOT", 37, 229}};
    for (const auto& sample : samples) {
        SCOPED_TRACE(sample.name);
        CGblTranslate table;
        ASSERT_EQ(ZO_TRANSLATE_SUCCESS, table.Load((ProgramFolder() + "TABLES\\" + sample.name).c_str()));
        EXPECT_TRUE(table.IsGetEnabled() && table.IsPutEnabled());
        EXPECT_FALSE(table.IsGetDBCSEnabled() || table.IsPutDBCSEnabled());
        int common = 0;
        for (int code = 0; code < 256; ++code) {
            const auto received = static_cast<BYTE>(code);
            const BYTE translated = table.DoGet(received);
            EXPECT_EQ(received, table.DoPut(translated)) << "the tables are inverse";
            for (int other = 0; other < 256; ++other) {
                if (Decode(kWindows, static_cast<BYTE>(other)) == Decode(sample.codePage, received)) {
                    EXPECT_EQ(other, translated);
                    ++common;
                }
            }
        }
        EXPECT_EQ(sample.common, common);
    }
}
