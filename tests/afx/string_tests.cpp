

#include "support/test.h"

namespace {

LPCSTR Text(const CString& string) { return string; }

} // namespace

TEST(CString, SharesItsBufferUntilOneIsChanged)
{
    const CString original("some text");
    const std::pair<const char*, std::function<void(CString&)>> changes[] = {
        {"SetAt", [](CString& s) { s.SetAt(0, 'x'); }},
        {"append", [](CString& s) { s += "x"; }},
        {"MakeUpper", [](CString& s) { s.MakeUpper(); }},
        {"GetBuffer", [](CString& s) { s.GetBuffer(4)[0] = 'x'; }},
        {"Empty", [](CString& s) { s.Empty(); }},
        {"assign", [](CString& s) { s = "x"; }},
        {"Replace", [](CString& s) { s.Replace("some", "any"); }},
    };
    for (const auto& [name, change] : changes) {
        SCOPED_TRACE(name);
        CString copy(original);
        EXPECT_EQ(Text(original), Text(copy)) << "the copy has a buffer of its own";
        change(copy);
        EXPECT_STREQ("some text", original);
        EXPECT_STRNE("some text", copy);
    }
    CString moved(original);
    const CString taken(std::move(moved));
    EXPECT_STREQ("some text", taken);
    EXPECT_STREQ("", moved);
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
    EXPECT_EQ(-1, s.Find('a', 7));
    EXPECT_EQ(-1, s.Find("abc", 4));
    EXPECT_EQ(-1, s.Find("abc", 100));
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
    CMapStringToString map;
    map.SetAt(make("one"), "value");
    EXPECT_TRUE(map.Lookup(other, out));
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
    EXPECT_EQ(isDoubleByte ? -1 : 1, CString("\x83\x41").FindOneOf("\x82\x41"));
}

TEST(CString, TrimsAndMapsCaseByCharacter)
{
    static constexpr struct {
        const char* text;
        const char* left;  // after TrimLeft
        const char* right; // after TrimRight
        const char* upper[2];
        const char* lower[2];
    } cases[] = {
        {" \t\r\na b\v\f ",
         "a b\v\f ",
         " \t\r\na b",
         {" \t\r\nA B\v\f ", " \t\r\nA B\v\f "},
         {" \t\r\na b\v\f ", " \t\r\na b\v\f "}},
        {"   ", "", "", {"   ", "   "}, {"   ", "   "}},
        {"", "", "", {"", ""}, {"", ""}},
        {"x", "x", "x", {"X", "X"}, {"x", "x"}},
        // second bytes that look like letters
        {"\x83\x61\x83\x41z",
         "\x83\x61\x83\x41z",
         "\x83\x61\x83\x41z",
         {"\x83\x41\x83\x41Z", "\x83\x61\x83\x41Z"},
         {"\x83\x61\x83\x61z", "\x83\x61\x83\x41z"}},
        // a first byte without its second
        {"a\x83", "a\x83", "a\x83", {"A\x83", "A\x83"}, {"a\x83", "a\x83"}},
        {"a \x83", "a \x83", "a \x83", {"A \x83", "A \x83"}, {"a \x83", "a \x83"}},
    };
    const int page = IsDoubleByte() ? 1 : 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const auto changed = [&c](void (CString::*change)()) {
            CString s(c.text);
            (s.*change)();
            EXPECT_EQ(static_cast<int>(strlen(s)), s.GetLength());
            return s;
        };
        EXPECT_STREQ(c.left, changed(&CString::TrimLeft));
        EXPECT_STREQ(c.right, changed(&CString::TrimRight));
        EXPECT_STREQ(c.upper[page], changed(&CString::MakeUpper));
        EXPECT_STREQ(c.lower[page], changed(&CString::MakeLower));
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
        int first;
        int count;
        const char* mid;
        const char* left; // Left(count), Right(count)
        const char* right;
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
        const char* text;
        const char* from;
        const char* to;
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
    s.Format(1600); // of host.rc
    EXPECT_STREQ("host", s);
    s.Format("%d %s %c %08lX %%", -5, "text", 'x', 0xABCDul);
    EXPECT_STREQ("-5 text x 0000ABCD %", s);
}

TEST(CString, IsMadeOfResourcesAndRepetitions)
{
    EXPECT_STREQ("host", CString(MAKEINTRESOURCE(1600)));
    EXPECT_STREQ("", CString(MAKEINTRESOURCE(9999)));
    EXPECT_STREQ("xxx", CString('x', 3));
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
    empty.GetBuffer(0);
    empty.ReleaseBuffer();
    EXPECT_TRUE(empty.IsEmpty());
    const CString other;
    empty.GetBuffer(3)[0] = '\0';
    empty.ReleaseBuffer();
    EXPECT_STREQ("", other) << "all empty strings changed";
}

TEST(CString, IsAsBeforeWhenMemoryFails)
{
    const std::pair<const char*, std::function<void(CString&)>> operations[] = {
        {"append text", [](CString& s) { s += "a text that does not fit"; }},
        {"append string", [](CString& s) { s += CString('x', 40); }},
        {"append character", [](CString& s) { s += 'x'; }},
        {"assign", [](CString& s) { s = "another text"; }},
        {"SetAt", [](CString& s) { s.SetAt(0, 'x'); }},
        {"MakeUpper", [](CString& s) { s.MakeUpper(); }},
        {"TrimRight", [](CString& s) { s.TrimRight(); }},
        {"Replace", [](CString& s) { s.Replace("text", "longer words"); }},
        {"Format", [](CString& s) { s.Format("%s %d", "formatted", 5); }},
        {"GetBuffer", [](CString& s) { s.GetBuffer(300); }},
        {"LoadString", [](CString& s) { s.LoadString(1600); }},
    };
    for (const auto& [name, operation] : operations) {
        SCOPED_TRACE(name);
        AllocationFaults faults;
        RunFaultLoop(faults, [&operation = operation](const FaultRun& run) {
            run.source.Disarm();
            const CString shared("some text ");
            CString s(shared);
            run.source.Arm(run.number, run.persistent);
            bool thrown = false;
            try {
                operation(s);
            } catch (CMemoryException* e) {
                thrown = true;
                e->Delete();
            }
            run.Stop();
            EXPECT_EQ(run.Fired(), thrown);
            EXPECT_STREQ("some text ", shared);
            if (thrown) {
                EXPECT_STREQ("some text ", s);
            }
        });
    }
}
