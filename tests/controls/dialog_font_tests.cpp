// Fonts of dialog templates, whole and damaged.
#include "dialog_font.h"
#include "support/test.h"

#include <random>

namespace {

using Words = std::vector<WORD>;

void Append(Words& words, const wchar_t* text)
{
    do
        words.push_back(static_cast<WORD>(*text));
    while (*text++ != 0);
}

Words PlainTemplate(DWORD style)
{
    Words words = {LOWORD(style), HIWORD(style), 0, 0, 2, 1, 2, 30, 40};
    words.insert(words.end(), {0xFFFF, 77}); // menu by number
    words.push_back(0);                      // no class
    Append(words, L"Title");
    words.push_back(9);
    Append(words, L"Tahoma");
    return words;
}

Words ExtendedTemplate(DWORD style)
{
    Words words = {1, 0xFFFF, 0, 0, 0, 0, LOWORD(style), HIWORD(style), 0, 1, 2, 30, 40};
    words.push_back(0);
    Append(words, L"Class");
    words.push_back(0);
    words.insert(words.end(), {11, 400, 0x0100});
    Append(words, L"Courier New");
    return words;
}

bool Read(DialogFont& font, const Words& words, size_t count)
{
    return font.ReadFromTemplate(words.data(), static_cast<DWORD>(count * sizeof(WORD)));
}

} // namespace

TEST(DialogFont, ReadsBothKindsOfTemplate)
{
    DialogFont font("Default", 8);
    const Words plain = PlainTemplate(WS_POPUP | DS_SETFONT);
    ASSERT_TRUE(Read(font, plain, plain.size()));
    EXPECT_STREQ("Tahoma", font.face);
    EXPECT_EQ(9, font.points);
    const Words extended = ExtendedTemplate(WS_POPUP | DS_SHELLFONT);
    ASSERT_TRUE(Read(font, extended, extended.size()));
    EXPECT_STREQ("Courier New", font.face);
    EXPECT_EQ(11, font.points);
}

TEST(DialogFont, WithoutFontKeepsTheDefault)
{
    DialogFont font("Default", 8);
    const Words plain = PlainTemplate(WS_POPUP);
    EXPECT_FALSE(Read(font, plain, plain.size()));
    EXPECT_STREQ("Default", font.face);
    EXPECT_EQ(8, font.points);
}

TEST(DialogFont, DamagedTemplatesAreReadWithinTheirBounds)
{
    std::mt19937 random(20000630);
    for (const Words& whole : {PlainTemplate(WS_POPUP | DS_SETFONT), ExtendedTemplate(WS_POPUP | DS_SETFONT)}) {
        for (size_t length = 0; length <= whole.size(); ++length) {
            const Words cut(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(length)); // ends with its block
            DialogFont font("Default", 8);
            if (!Read(font, cut, cut.size())) {
                EXPECT_STREQ("Default", font.face);
            }
        }
        for (int round = 0; round < 20000; ++round) {
            Words mutated = whole;
            for (int change = 0; change < 3; ++change)
                mutated[random() % mutated.size()] = static_cast<WORD>(random());
            DialogFont font("Default", 8);
            Read(font, mutated, mutated.size());
            EXPECT_LT(std::strlen(font.face), sizeof font.face);
            EXPECT_NE(0, font.points);
        }
    }
}
