#include "support/test.h"

#include <zogbl/number_text.h>

TEST(NumberText, ReadsDecimalAsFarAsItGoes)
{
    // What is too large ends at the limit, and then gets its sign.
    const std::pair<const char*, unsigned long> cases[] = {{"0", 0},
                                                           {"42", 42},
                                                           {"  42abc", 42},
                                                           {"0x1F", 0},
                                                           {"+7", 7},
                                                           {"-1", 0xFFFFFFFF},
                                                           {"-4294967295", 1},
                                                           {"-99999999999", 1},
                                                           {"4294967295", 0xFFFFFFFF},
                                                           {"4294967296", 0xFFFFFFFF},
                                                           {"", 0},
                                                           {"abc", 0},
                                                           {"\t\n9", 9},
                                                           {"010", 10}};
    for (const auto& [text, number] : cases)
        EXPECT_EQ(number, StringToDWord(text)) << text;
    EXPECT_EQ(0u, StringToDWord(nullptr));
}

TEST(NumberText, WritesAnyBase)
{
    EXPECT_STREQ("4294967295", DWordToString(4294967295));
    EXPECT_STREQ("0", DWordToString(0));
    EXPECT_STREQ("ff", DWordToBaseString(255, 16));
    EXPECT_STREQ("11111111111111111111111111111111", DWordToBaseString(4294967295, 2));
    EXPECT_STREQ("z", DWordToBaseString(35, 36));
    for (const int base : {-1, 0, 1, 37})
        EXPECT_STREQ("", DWordToBaseString(5, base)) << base;
}
