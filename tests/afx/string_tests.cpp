#include "support/test.h"
#include "without_memory.h"

#include <array>

namespace {

LPCSTR Text(const CString& string) { return string; }

/// A call by its name, and what it does to a string; the answer is 0 if it has none.
#define CALL(call) #call, [](CString & s) -> int { return Answer(call); }
int Answer(int value) { return value; }
int Answer(const CString&) { return 0; }

/// What the operators ==, <=, <, >, >=, != answer, the first in the highest place; all of a kind must answer the same.
int Orders(const CString& s, LPCSTR text)
{
    const CString other(text);
    const std::array<int, 3> answers[] = {
        {s == text, s == other, text == s}, {s <= text, s <= other, text >= s}, {s < text, s<other, text> s},
        {s > text, s > other, text < s},    {s >= text, s >= other, text <= s}, {s != text, s != other, text != s},
    };
    int all = 0;
    for (const auto& [first, second, third] : answers) {
        EXPECT_TRUE(first == second && first == third);
        all = all * 2 + first;
    }
    return all;
}

struct Row {
    const char* text;
    const char* name;
    int (*call)(CString& s);
    int answer;
    const char* result = nullptr;  // null: as before
    int doubleByteAnswer = answer; // on code page 932
    const char* doubleByteResult = result;
};

// What the framework's documentation says of each call; what it does not speak of is marked "chosen".
// In code page 932, 83 5C is one katakana whose second byte is that of the backslash, and 83 61 ends like an "a"; B1 is
// a katakana of half width; 82 60 and 82 81 are a wide "A" and "a".
const Row kRows[] = {
    {"abcde", CALL(s = s.Mid(2)), 0, "cde"},
    {"abcde", CALL(s = s.Mid(3, 9)), 0, "de"},
    {"abcde", CALL(s = s.Mid(-2, 2)), 0, "ab"}, // chosen, as all positions outside
    {"abcde", CALL(s = s.Mid(9, 1)), 0, ""},
    {"abcde", CALL(s = s.Mid(1, -1)), 0, ""},
    {"abcde", CALL(s = s.Left(2)), 0, "ab"},
    {"abcde", CALL(s = s.Left(-1)), 0, ""},
    {"abcde", CALL(s = s.Right(2)), 0, "de"},
    {"abcde", CALL(s = s.Right(9)), 0},
    {"abcde", CALL(s = s.Right(-1)), 0, ""},
    {"abcde", CALL(s.Insert(0, 'x')), 6, "xabcde"},
    {"abcde", CALL(s.Insert(2, "xyz")), 8, "abxyzcde"},
    {"abcde", CALL(s.Insert(99, "xyz")), 8, "abcdexyz"},
    {"abcde", CALL(s.Insert(-1, "x")), 6, "xabcde"}, // chosen
    {"abcde", CALL(s.Insert(1, nullptr)), 5},
    {"abcde", CALL(s.Insert(0, Text(s) + 3)), 7, "deabcde"},
    {"abcde", CALL(s.Delete(1)), 4, "acde"},
    {"abcde", CALL(s.Delete(3, 9)), 3, "abc"},
    {"abcde", CALL(s.Delete(-3, 1)), 4, "bcde"}, // chosen
    {"abcde", CALL(s.Delete(0, 5)), 0, ""},
    {"abcde", CALL((s.Truncate(2), 0)), 0, "ab"},
    {"abcde", CALL((s.Truncate(9), 0)), 0},
    {"abcde", CALL((s.SetAt(1, 'x'), 0)), 0, "axcde"},
    {"abcde", CALL(s = Text(s) + 3), 0, "de"},
    {"abcde", CALL((s.SetString(Text(s) + 1, 2), 0)), 0, "bc"},
    {"abcde", CALL((s.Append("xyz", -1), 0)), 0}, // chosen
    {"abcde", CALL(s = 'x'), 0, "x"},
    {"abcde", CALL(s = nullptr), 0, ""},
    {"abcde", CALL(s += s), 0, "abcdeabcde"},
    {"abcde", CALL(s += Text(s) + 3), 0, "abcdede"},
    {"abcde", CALL(s += nullptr), 0},
    {"abcde", CALL((s.Append("xyz", 2), 0)), 0, "abcdexy"},
    {"abcde", CALL(s = s + s), 0, "abcdeabcde"},
    {"abcde", CALL(s = '<' + ("-" + s + "-") + '>'), 0, "<-abcde->"},
    {"abcde", CALL((s.Format("<%s|%5d>", Text(s), -7), 0)), 0, "<abcde|   -7>"},
    {"abcde", CALL((s.AppendFormat("<%s>", Text(s)), 0)), 0, "abcde<abcde>"},
    {"abcde", CALL((s.Format(1721, 1, "two"), 0)), 0, "1 of two"}, // of host.rc
    {"abcde", CALL((s.AppendFormat(1721, 1, "two"), 0)), 0, "abcde1 of two"},
    {"abcde", CALL((s.FormatMessage("%2 %1!03d! %%", 7, "x"), 0)), 0, "x 007 %"},
    {"abcde", CALL((s.FormatMessage(61714, "a", "b"), 0)), 0, "a to b"},
    {"abcde", CALL((s.FormatMessage(""), 0)), 0, ""},
    {"abcde", CALL((AfxFormatString2(s, 1720, "%2", "a"), 0)), 0, "a before %2, 100%% and %3 of %"},
    {"abcde", CALL((AfxFormatString1(s, 1720, "b"), 0)), 0, "%2 before b, 100%% and %3 of %"},
    {"abcde", CALL((AfxFormatString1(s, 9999, "b"), 0)), 0, ""},
    {"abcde", CALL(s.LoadString(1600)), 1, "host"},
    {"abcde", CALL(s.LoadString(9999)), 0, ""},
    {"abcde", CALL(s.GetEnvironmentVariable("ZoTestVariable")), 1, "its value"},
    {"abcde", CALL(s.GetEnvironmentVariable("ZoTestNothing")), 0, ""},
    {"b", CALL(s.Collate("A")), 1},
    {"a", CALL(s.Collate("B")), -1}, // alphabetical
    {"a", CALL(s.CollateNoCase("A")), 0},
    {"abC\x83\x41", CALL(s.CompareNoCase("ABc\x83\x41")), 0},
    {"", CALL(s.CompareNoCase(nullptr)), 0}, // chosen, as for all null pointers
    {"\x82\x60", CALL(s.CompareNoCase("\x82\x81") == 0), 0, nullptr, 1},
    {"\x83\x41", CALL(s.CompareNoCase("\x83\x61") == 0), 1, nullptr, 0},
    {"\xB1", CALL(s.Compare("\x83\x41")), 1, nullptr, -1},
    {"b", CALL(Orders(s, "a")), 0b000111},
    {"b", CALL(Orders(s, "b")), 0b110010},
    {"b", CALL(Orders(s, "ba")), 0b011001},
    {"\xB1", CALL(s < "\x83\x41"), 0, nullptr, 1},
    {"\x83\\\\a", CALL(s.Find('\\')), 1, nullptr, 2},
    {"\x83\\\\a", CALL(s.Find('\\', 2)), 2},
    {"\x83\\a\\a", CALL(s.Find("\\a")), 1, nullptr, 3},
    {"\x83\\a\\a", CALL(s.Find("\\a", 4)), -1},
    {"a\\\x83\\", CALL(s.ReverseFind('\\')), 3, nullptr, 1},
    {"abc", CALL(s.ReverseFind('x')), -1},
    {"\x83\\\\a", CALL(s.FindOneOf("a\\")), 1, nullptr, 2},
    {"\x83\\b", CALL(s.FindOneOf("b\x83\x61")), 0, nullptr, 2},
    {"abc", CALL(s.FindOneOf("xyz")), -1},
    {"\x83\\\\a", CALL(s = s.SpanExcluding("\\")), 0, "\x83", 0, "\x83\\"},
    {"abc", CALL(s = s.SpanExcluding("xyz")), 0},
    {"\\\x83\\a", CALL(s = s.SpanIncluding("\\\x83\x61")), 0, nullptr, 0, "\\"},
    {"\x83\\a", CALL(s.TrimLeft("\x83")), 0, "\\a", 0, "\x83\\a"},
    {"a\x83\\\\", CALL(s.TrimRight("\\")), 0, "a\x83", 0, "a\x83\\"},
    {"ab\x83\\", CALL(s.MakeReverse()), 0, "\\\x83\x62\x61", 0, "\x83\\ba"},
    {"\x83\\\\a", CALL(s.Remove('\\')), 2, "\x83\x61", 1, "\x83\\a"},
    {"\x83\\\\", CALL(s.Replace("\\", "<>")), 2, "\x83<><>", 1, "\x83\\<>"},
    {"abcabc", CALL(s.Find(nullptr, 2)), 2}, // chosen, as the empty text
    {"abcabc", CALL(s.Find("", 6)), 6},
    {"abcabc", CALL(s.Find("", 7)), -1},
    {"abcabc", CALL(s.Find('x', 7)), -1},
    {"abcabc", CALL(s.Find('c', -1) + s.Find("c", -1)), -2}, // chosen
    {"abcabc", CALL(s.Find('\0')), 6},                       // chosen
    {"a-b-c", CALL(s.Replace("-", "++")), 2, "a++b++c"},
    {"a-b-c", CALL(s.Replace("-", Text(s))), 2, "aa-b-cba-b-cc"},
    {"a-b-c", CALL(s.Replace("-", nullptr)), 2, "abc"},
    {"a-b-c", CALL(s.Replace("", "x")), 0},
    {"a-b-c", CALL(s.Replace('-', '+')), 2, "a+b+c"},
    {" \t\r\na b\v\f ", CALL(s.TrimLeft()), 0, "a b\v\f "},
    {" \t\r\na b\v\f ", CALL(s.TrimRight()), 0, " \t\r\na b"},
    {" \t\r\na b\v\f ", CALL(s.Trim()), 0, "a b"},
    {"   ", CALL(s.Trim()), 0, ""},
    {"xxax", CALL(s.Trim('x')), 0, "a"},
    {"xyax", CALL(s.Trim("yx")), 0, "a"},
    {"a \x83", CALL(s.TrimRight()), 0},
    {" a\xF6\x83", CALL(s.MakeUpper()), 0, " A\xF6\x83"}, // letters of plain ASCII alone
    {"aB\x83", CALL(s.MakeLower()), 0, "ab\x83"},
    {"\x83\x61\x83\x41z", CALL(s.MakeUpper()), 0, "\x83\x41\x83\x41Z", 0, "\x83\x61\x83\x41Z"},
    {"\x83\x61\x83\x41Z", CALL(s.MakeLower()), 0, "\x83\x61\x83\x61z", 0, "\x83\x61\x83\x41z"},
    {"\xE4z", CALL((s.AnsiToOem(), 0)), 0, "\x84z", 0, "\xE4z"},
    {"\x84z", CALL((s.OemToAnsi(), 0)), 0, "\xE4z", 0, "\x84z"},
    {"abc", CALL((memset(s.GetBufferSetLength(5), 'z', 5), 0)), 0, "zzzzz"},
    {"abc", CALL((strcpy(s.GetBuffer(9) + 3, "def"), s.ReleaseBuffer(), s.GetLength())), 6, "abcdef"},
    {"abc", CALL((s.GetBuffer(9), s.ReleaseBuffer(1000), s.GetLength() <= s.GetAllocLength() && (s.Truncate(3), 1))),
     1},
    {"abc", CALL((s.Preallocate(100), s.GetAllocLength() >= 100)), 1},
    {"abc", CALL((s.Preallocate(100), s.FreeExtra(), s.GetAllocLength())), 3},
};

} // namespace

// Each row with a buffer of its own, behind whose text nobody may look, with one that another string shares, in a block
// of several, and while memory fails.
TEST(CString, DoesWhatIsSaidOfIt)
{
    SetEnvironmentVariableA("ZoTestVariable", "its value");
    for (const Row& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.text << ": " << row.name);
        const char* result = IsDoubleByte() ? row.doubleByteResult : row.result;
        static constexpr char kBehind[] = "\\ xyz";
        const auto length = static_cast<int>(strlen(row.text));
        CString roomy(row.text);
        strcpy(roomy.GetBuffer(length + 20) + length + 1, kBehind);
        roomy.ReleaseBuffer(length);
        const CString original(row.text);
        CString sharing(original);
        EXPECT_EQ(Text(original), Text(sharing)) << "the copy has a buffer of its own";
        CStringBlock block(2, 2 * length);
        CString first = block.Make(row.text, length);
        const CString second = block.Make(row.text, length);
        for (CString* s : {&roomy, &sharing, &first}) {
            const LPCSTR before = *s;
            const int room = s->GetAllocLength();
            EXPECT_EQ(IsDoubleByte() ? row.doubleByteAnswer : row.answer, row.call(*s));
            EXPECT_STREQ(result != nullptr ? result : row.text, *s);
            EXPECT_EQ(static_cast<int>(strlen(*s)), s->GetLength());
            EXPECT_TRUE(s->GetLength() <= s->GetAllocLength() && s->GetAllocLength() < 300) << "a damaged buffer";
            const bool isInPlace = s == &roomy && s->GetAllocLength() == room && s->GetLength() == length;
            EXPECT_STREQ(kBehind, isInPlace ? before + length + 1 : kBehind);
        }
        EXPECT_STREQ(row.text, original) << "changed with the one that shared its buffer";
        EXPECT_STREQ(row.text, second) << "changed with the one before it";
    }
    std::vector<Operation<CString>> changing;
    static const CString shared("some text ");
    for (const Row& row : kRows) {
        CString s(shared);
        row.call(s);
        if (s != shared && *s != '\0')
            changing.emplace_back(row.name, row.call);
    }
    ExpectAsBeforeWithoutMemory<CString>(
        changing, [](CString& s) { s = shared; }, [](const CString& s) { return std::string(s); });
    EXPECT_STREQ("some text ", shared);
}

TEST(CString, KeepsItsBufferAndGrowsByHalf)
{
    AllocationFaults counted; // counts, and lets none fail
    const auto allocations = [&](const auto& act) {
        counted.Arm(INT_MAX, false);
        act();
        return counted.Calls();
    };
    CString s;
    EXPECT_GT(40, allocations([&] {
                  for (int i = 0; i < 20000; ++i)
                      s += 'x';
              }));
    EXPECT_EQ(20000, s.GetLength());
    const LPCSTR buffer = s;
    EXPECT_EQ(0, allocations([&] {
                  s = "another text";
                  s += " behind it";
                  s.Insert(0, "before ");
                  s.Delete(1, 3);
                  s.TrimRight('t');
                  s = s.GetString() + 2;
              }));
    EXPECT_STREQ("e another text behind i", s);
    EXPECT_EQ(buffer, Text(s));
    const CString copy(s);
    EXPECT_EQ(1, allocations([&] { s = "apart"; }));
    EXPECT_STREQ("e another text behind i", copy);
    EXPECT_EQ(1, allocations([&] { s = copy + " and more"; }));
    EXPECT_EQ(0, allocations([&] { s.Empty(); }));
    EXPECT_EQ(0, s.GetAllocLength());
}

TEST(CStringBlock, IsThereAsLongAsOneOfItsStrings)
{
    CMemoryState before;
    before.Checkpoint();
    const auto blocks = [&before] {
        CMemoryState now, difference;
        now.Checkpoint();
        difference.Difference(before, now);
        return difference.m_lBlockCount;
    };
    for (const bool isLast : {false, true}) { // the block before its strings, and behind them
        std::optional<CStringBlock> block(std::in_place, 3, 7);
        CString one = block->Make("one", 3), two = block->Make("two2", 4);
        EXPECT_EQ(1, blocks());
        const CString beyond = block->Make("no room for this", 16);
        EXPECT_EQ(2, blocks());
        EXPECT_TRUE(block->Make("x", 0).IsEmpty() && block->Make(nullptr, 1).IsEmpty());
        if (!isLast)
            block.reset();
        CString copy = one;
        EXPECT_EQ(Text(copy), Text(one));
        one.Empty();
        two = "other";
        EXPECT_EQ(3, blocks());
        EXPECT_STREQ("one", copy);
        EXPECT_EQ(3, copy.GetAllocLength());
        EXPECT_STREQ("no room for this", beyond);
        copy.Empty();
        EXPECT_EQ(isLast ? 3 : 2, blocks());
    }
    EXPECT_EQ(0, blocks());
    using Sizes = std::pair<int, int>;
    for (const auto& [strings, length] : {Sizes{INT_MAX, 0}, Sizes{0, INT_MAX}, Sizes{INT_MAX / 17, INT_MAX / 17}})
        EXPECT_THROW(CStringBlock(strings, length), CMemoryException*);
}

namespace {

constexpr int kLongText = 700;

int WINAPI LoadLongText(HINSTANCE, UINT, LPSTR text, int room)
{
    const int length = (std::min)(kLongText, room - 1);
    memset(text, 'x', static_cast<size_t>(length));
    text[length] = '\0';
    return length;
}

} // namespace

TEST(CString, IsMadeOfResourcesAndRepetitions)
{
    EXPECT_STREQ("host", CString(MAKEINTRESOURCE(1600)));
    EXPECT_STREQ("", CString(MAKEINTRESOURCE(9999)));
    EXPECT_STREQ("xxx", CString('x', 3));
    EXPECT_STREQ("", CString('x', -1));
    EXPECT_STREQ("", CString(nullptr, 3));
    CString part("before");
    EXPECT_FALSE(AfxExtractSubString(part, "a", 1));
    EXPECT_STREQ("", part);
    EXPECT_FALSE(AfxExtractSubString(part, nullptr, 0));
    EXPECT_TRUE(AfxExtractSubString(part, "a;\x83", 1, ';'));
    EXPECT_STREQ("\x83", part);
    part = "a part of itself";
    EXPECT_TRUE(AfxExtractSubString(part, part, 3, ' '));
    EXPECT_STREQ("itself", part);
    part = "\x83";
    char text[] = "before";
    EXPECT_EQ(0, AfxLoadString(9999, text, sizeof text));
    EXPECT_STREQ("", text);
    const CString taken(std::move(part));
    EXPECT_STREQ("\x83", taken);
    EXPECT_STREQ("", part);
    part.GetBuffer(3)[0] = '\0';
    part.ReleaseBuffer();
    EXPECT_STREQ("", CString()) << "all empty strings changed";
    for (const int length : {0, 1, 2, 127, 128, 255, 256, 257, 1023, 1024, 70000}) {
        part.Format("%*s", length, "");
        EXPECT_EQ(CString(' ', length), part);
        EXPECT_EQ(length, part.GetLength());
    }
    const ImportPatch patch("ZOAFX.DLL", "LoadStringA", &LoadLongText);
    EXPECT_TRUE(part.LoadString(1600));
    EXPECT_EQ(CString('x', kLongText), part);
    EXPECT_EQ(kLongText, part.GetAllocLength());
}
