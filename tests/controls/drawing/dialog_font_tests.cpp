// Fonts of dialog templates, whole and damaged.
#include "dialog_font.h"
#include "support/test.h"

#include <random>

namespace {

using Words = std::vector<WORD>;

/// A text of a template, with its terminator.
Words Text(const char* text) { return Words(text, text + std::strlen(text) + 1); }

Words Join(const std::vector<Words>& parts)
{
    Words words;
    for (const Words& part : parts)
        words.insert(words.end(), part.begin(), part.end());
    return words;
}

Words PlainTemplate(DWORD style)
{
    // Menu and class by number.
    return Join({{LOWORD(style), HIWORD(style), 0, 0, 2, 1, 2, 30, 40, 0xFFFF, 77, 0xFFFF, 78},
                 Text("Title"),
                 {9},
                 Text("Tahoma")});
}

Words ExtendedTemplate(DWORD style)
{
    return Join({{1, 0xFFFF, 0, 0, 0, 0, LOWORD(style), HIWORD(style), 0, 1, 2, 30, 40, 0},
                 Text("Class"),
                 {0, 11, 400, 0x0100},
                 Text("A name of more than 31 characters, cut")});
}

bool Read(DialogFont& font, const Words& words)
{
    return font.ReadFromTemplate(words.data(), static_cast<DWORD>(words.size() * sizeof(WORD)));
}

} // namespace

TEST(DialogFont, IsReadFromBothKindsOfTemplateOrStays)
{
    DialogFont font("Default", 8);
    EXPECT_FALSE(Read(font, PlainTemplate(WS_POPUP)));
    EXPECT_STREQ("Default", font.face);
    EXPECT_EQ(8, font.points);
    EXPECT_TRUE(Read(font, PlainTemplate(WS_POPUP | DS_SETFONT)));
    EXPECT_STREQ("Tahoma", font.face);
    EXPECT_EQ(9, font.points);
    EXPECT_TRUE(Read(font, ExtendedTemplate(WS_POPUP | DS_SHELLFONT)));
    EXPECT_STREQ("A name of more than 31 characte", font.face);
    EXPECT_EQ(11, font.points);
}

TEST(DialogFont, DamagedTemplatesAreReadWithinTheirBounds)
{
    std::mt19937 random(20000630);
    for (const Words& whole : {PlainTemplate(WS_POPUP | DS_SETFONT), ExtendedTemplate(WS_POPUP | DS_SETFONT)}) {
        for (size_t length = 0; length <= whole.size(); ++length) {
            const Words cut(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(length)); // ends with its block
            DialogFont font("Default", 8);
            if (!Read(font, cut)) {
                EXPECT_STREQ("Default", font.face);
            }
        }
        for (int round = 0; round < 20000; ++round) {
            Words mutated = whole;
            for (int change = 0; change < 3; ++change)
                mutated[random() % mutated.size()] = static_cast<WORD>(random());
            DialogFont font("Default", 8);
            Read(font, mutated);
            EXPECT_LT(std::strlen(font.face), sizeof font.face);
            EXPECT_NE(0, font.points);
        }
    }
}
