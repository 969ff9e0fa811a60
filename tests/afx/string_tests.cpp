#include "support/test.h"
#include "without_memory.h"

namespace {

LPCSTR Text(const CString& string) { return string; }

} // namespace

TEST(CString, SharesItsBuffer)
{
    const CString original("some text");
    CString copy(original);
    EXPECT_EQ(Text(original), Text(copy)) << "the copy has a buffer of its own";
    copy.Empty();
    EXPECT_STREQ("some text", original);
    copy = original;
    const CString taken(std::move(copy));
    EXPECT_STREQ("some text", taken);
    EXPECT_STREQ("", copy);
}

TEST(CString, CanBeMadeOfItself)
{
    CString s("abc");
    s += s;
    EXPECT_STREQ("abcabc", s);
    s += Text(s) + 4;
    EXPECT_STREQ("abcabcbc", s);
    s = Text(s) + 6;
    EXPECT_STREQ("bc", s);
    s = s + s;
    EXPECT_STREQ("bcbc", s);
    s.Format("<%s|%s>", Text(s), Text(s));
    EXPECT_STREQ("<bcbc|bcbc>", s);
    s.Replace("bc", s);
    EXPECT_STREQ("<<bcbc|bcbc><bcbc|bcbc>|<bcbc|bcbc><bcbc|bcbc>>", s);
    s = s;
    EXPECT_EQ(47, s.GetLength());
}

TEST(CString, SearchesByCharacter)
{
    // 83 5C is one katakana in code page 932, whose second byte is that of the backslash; 83 61 ends like an "a".
    static constexpr struct {
        const char* text;
        char ch;
        int find[2]; // code page 1252, code page 932
        int reverseFind[2];
    } cases[] = {
        {"a\\b\\c", '\\', {1, 1}, {3, 3}},  {"\x83\\\\x", '\\', {1, 2}, {2, 2}}, {"a\\\x83\\", '\\', {1, 1}, {3, 1}},
        {"\x83\\", '\\', {1, -1}, {1, -1}}, {"abc", 'x', {-1, -1}, {-1, -1}},    {"", 'x', {-1, -1}, {-1, -1}},
    };
    const int page = IsDoubleByte() ? 1 : 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const CString s(c.text);
        const char text[] = {c.ch, '\0'};
        EXPECT_EQ(c.find[page], s.Find(c.ch));
        EXPECT_EQ(c.find[page], s.Find(text));
        EXPECT_EQ(c.find[page], s.FindOneOf(text));
        EXPECT_EQ(c.reverseFind[page], s.ReverseFind(c.ch));
    }
    const CString s("abcabc");
    EXPECT_EQ(3, s.Find('a', 1));
    EXPECT_EQ(-1, s.Find('a', 6));
    EXPECT_EQ(-1, s.Find("abc", 4));
    EXPECT_EQ(2, s.Find(nullptr, 2)) << "as the empty text";
    EXPECT_EQ(1, s.FindOneOf("xcb"));
}

TEST(CString, EndsAtItsTerminatorWithHalfACharacter)
{
    const auto make = [](const char* behind) { // a lead byte, the terminator, and what nobody may look at
        CString s;
        strcpy(s.GetBuffer(40), "aB\x83");
        strcpy(s.GetBuffer(40) + 4, behind);
        s.ReleaseBuffer(3);
        return s;
    };
    CString s = make("\\ xyz");
    EXPECT_EQ(-1, s.Find('\\'));
    EXPECT_EQ(-1, s.Find("\\"));
    EXPECT_EQ(-1, s.ReverseFind('\\'));
    EXPECT_EQ(-1, s.FindOneOf("\\z"));
    EXPECT_EQ(-1, s.Find('y', 6));
    EXPECT_EQ(-1, s.Find("y", 6));
    EXPECT_EQ(2, s.Find('\x83')) << "a character of one byte";
    EXPECT_EQ(0, s.Replace("y", "z"));
    CString out;
    EXPECT_TRUE(AfxExtractSubString(out, "a;\x83", 1, ';'));
    EXPECT_STREQ("\x83", out);
    s.TrimRight();
    s.MakeUpper();
    EXPECT_STREQ("\\ xyz", (LPCSTR)s + 4);
    EXPECT_STREQ("AB\x83", s);
    s.MakeLower();
    EXPECT_STREQ("ab\x83", s);
    const CString other = make("other");
    EXPECT_EQ(0, other.Compare(make("one")));
    EXPECT_EQ(0, other.CompareNoCase(make("one")));
    EXPECT_LT(CString("\x83").Compare("\x83\x5C"), 0) << "half a character stands before the whole one";
}

TEST(CString, ComparesAndFindsWholeCharacters)
{
    // B1 is a katakana of half width, 83 41 one of full width, 82 60 and 82 81 a wide "A" and "a" of code page 932.
    const bool isDoubleByte = IsDoubleByte();
    EXPECT_EQ(isDoubleByte ? -1 : 1, CString("\xB1").Compare("\x83\x41"));
    EXPECT_EQ(0, CString("abC\x83\x41").CompareNoCase("ABc\x83\x41"));
    EXPECT_EQ(isDoubleByte, CString("\x82\x60").CompareNoCase("\x82\x81") == 0);
    EXPECT_EQ(!isDoubleByte, CString("\x83\x41").CompareNoCase("\x83\x61") == 0);
    EXPECT_EQ(isDoubleByte ? 2 : 0, CString("\x83\x41\x83").Find("\x83")) << "half of the first one";
    EXPECT_EQ(isDoubleByte ? -1 : 1, CString("\x83\x41\x41").FindOneOf("\x82\x41"));
    EXPECT_EQ(isDoubleByte ? -1 : 0, CString("\x83\x41").ReverseFind('\x83'));
}

TEST(CString, TrimsAndMapsCaseByCharacter)
{
    constexpr auto kLeft = &CString::TrimLeft, kRight = &CString::TrimRight;
    constexpr auto kUpper = &CString::MakeUpper, kLower = &CString::MakeLower;
    static constexpr struct {
        const char* text;
        void (CString::*change)();
        const char* result;               // code page 1252
        const char* doubleByte = nullptr; // code page 932, if it is another one
    } cases[] = {
        {" \t\r\na b\v\f ", kLeft, "a b\v\f "},
        {" \t\r\na b\v\f ", kRight, " \t\r\na b"},
        {" \t\r\na b\v\f ", kUpper, " \t\r\nA B\v\f "},
        {"   ", kLeft, ""},
        {"   ", kRight, ""},
        {"", kLeft, ""},
        {"", kRight, ""},
        // second bytes that look like letters
        {"\x83\x61\x83\x41z", kLeft, "\x83\x61\x83\x41z"},
        {"\x83\x61\x83\x41z", kRight, "\x83\x61\x83\x41z"},
        {"\x83\x61\x83\x41z", kUpper, "\x83\x41\x83\x41Z", "\x83\x61\x83\x41Z"},
        {"\x83\x61\x83\x41Z", kLower, "\x83\x61\x83\x61z", "\x83\x61\x83\x41z"},
        // a first byte without its second
        {"a \x83", kRight, "a \x83"},
        {"a \x83", kUpper, "A \x83"},
        {"A \x83", kLower, "a \x83"},
    };
    for (const auto& c : cases) {
        CString s(c.text);
        (s.*c.change)();
        EXPECT_STREQ(IsDoubleByte() && c.doubleByte != nullptr ? c.doubleByte : c.result, s) << c.text;
        EXPECT_EQ(static_cast<int>(strlen(s)), s.GetLength());
    }
}

TEST(CString, ComparesAndCuts)
{
    EXPECT_LT(CString("abc").Compare("abd"), 0);
    EXPECT_GT(CString("abc").Compare("ab"), 0);
    EXPECT_NE(0, CString("abc").Compare("ABC"));
    EXPECT_EQ(0, CString("abc").CompareNoCase("ABC"));
    EXPECT_LT(CString("a").Collate("B"), 0) << "collating is alphabetical";
    EXPECT_TRUE(CString("abc") == "abc" && CString("ab") < "abc" && CString("b") > CString("abc"));

    static constexpr struct {
        int first, count;
        const char* mid;
        const char *left, *right; // Left(count), Right(count)
    } cases[] = {
        {0, 2, "ab", "ab", "de"}, {3, 9, "de", "abcde", "abcde"}, {5, 1, "", "a", "e"},
        {9, 1, "", "a", "e"},     {-2, 2, "ab", "ab", "de"},      {1, -1, "", "", ""},
    };
    const CString s("abcde");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.first);
        EXPECT_STREQ(c.mid, s.Mid(c.first, c.count));
        EXPECT_STREQ(c.left, s.Left(c.count));
        EXPECT_STREQ(c.right, s.Right(c.count));
    }
    EXPECT_STREQ("cde", s.Mid(2));
}

TEST(CString, Replaces)
{
    static constexpr struct {
        const char *text, *from, *to;
        int count;
        const char* result;
    } cases[] = {
        {"a-b-c", "-", "+", 2, "a+b+c"}, {"aaa", "a", "aa", 3, "aaaaaa"}, {"aaa", "aa", "", 1, "a"},
        {"abc", "", "x", 0, "abc"},      {"abc", "x", "y", 0, "abc"},     {"", "a", "b", 0, ""},
    };
    for (const auto& c : cases) {
        CString s(c.text);
        EXPECT_EQ(c.count, s.Replace(c.from, c.to)) << c.text;
        EXPECT_STREQ(c.result, s);
    }
}

TEST(CString, FormatsAnyLength)
{
    CString s("before");
    for (const int length : {0, 1, 2, 127, 128, 255, 256, 257, 1023, 1024, 70000}) {
        s.Format("%*s", length, "");
        ASSERT_EQ(length, s.GetLength());
        EXPECT_EQ(static_cast<size_t>(length), strlen(s));
    }
    s.Format(1721, 1, "two"); // of host.rc
    EXPECT_STREQ("1 of two", s);
    s.Format("%d %s %c %08lX %%", -5, "text", 'x', 0xABCDul);
    EXPECT_STREQ("-5 text x 0000ABCD %", s);
}

TEST(CString, IsMadeOfResourcesAndRepetitions)
{
    EXPECT_STREQ("host", CString(MAKEINTRESOURCE(1600)));
    EXPECT_STREQ("", CString(MAKEINTRESOURCE(9999)));
    EXPECT_STREQ("xxx", CString('x', 3));
    EXPECT_STREQ("", CString('x', -1));
    CString part("before");
    EXPECT_FALSE(AfxExtractSubString(part, nullptr, 0));
    EXPECT_STREQ("", part);
    char text[] = "before";
    EXPECT_EQ(0, AfxLoadString(9999, text, sizeof text));
    EXPECT_STREQ("", text);
}

TEST(CString, LendsItsBuffer)
{
    CString s("abc");
    char* buffer = s.GetBuffer(100);
    EXPECT_STREQ("abc", buffer) << "the text must be in it";
    strcpy(buffer, "abcdef");
    s.ReleaseBuffer();
    EXPECT_EQ(6, s.GetLength());
    s.ReleaseBuffer(1000);
    EXPECT_LE(s.GetLength(), 100) << "more than was lent";
    s.ReleaseBuffer(2);
    EXPECT_STREQ("ab", s);
    memset(s.GetBufferSetLength(5), 'z', 5);
    EXPECT_EQ(5, s.GetLength());
    EXPECT_STREQ("zzzzz", s);

    CString empty;
    const CString other;
    empty.GetBuffer(3)[0] = '\0';
    empty.ReleaseBuffer();
    EXPECT_STREQ("", other) << "all empty strings changed";
}

TEST(CString, ChangesAloneAndNotWithoutMemory)
{
    static const CString shared("some text ");
    ExpectAsBeforeWithoutMemory<CString>(
        {
            {"append text", [](CString& s) { s += "a text that does not fit"; }},
            {"append string", [](CString& s) { s += CString('x', 40); }},
            {"append character", [](CString& s) { s += 'x'; }},
            {"assign", [](CString& s) { s = "another text"; }},
            {"SetAt", [](CString& s) { s.SetAt(0, 'x'); }},
            {"MakeUpper", [](CString& s) { s.MakeUpper(); }},
            {"TrimRight", [](CString& s) { s.TrimRight(); }},
            {"Replace", [](CString& s) { s.Replace("text", "longer words"); }},
            {"Format", [](CString& s) { s.Format("%s %d", "formatted", 5); }},
            {"GetBuffer", [](CString& s) { s.GetBuffer(300)[0] = 'x'; }},
            {"LoadString", [](CString& s) { s.LoadString(1600); }},
        },
        [](CString& s) { s = shared; }, [](const CString& s) { return std::string(s); });
    EXPECT_STREQ("some text ", shared) << "the string whose buffer each one shared";
}
