#include "config_fixture.h"

namespace {

using Names = std::vector<std::string>;

DWORD CollectName(void* context, LPCSTR name)
{
    static_cast<Names*>(context)->push_back(name);
    return 0;
}

/// Name, type, text and number of each. Which comes first is the system's affair.
using Values = std::set<std::tuple<std::string, DWORD, std::string, DWORD>>;

class ConfigTest : public ConfigFixture {
protected:
    Values ValuesOf(const CString& key, DWORD status = 0)
    {
        Values values;
        const auto collect = [](void* context, LPCSTR name, const void* data, DWORD type) {
            const bool isNumber = type == REG_DWORD;
            static_cast<Values*>(context)->insert(
                {name, type, isNumber ? "" : static_cast<LPCSTR>(data), isNumber ? ZoEnumeratedNumber(data) : 0});
            return DWORD{0};
        };
        EXPECT_EQ(status, m_config.EnumValues(m_mode, key, collect, &values));
        return values;
    }
};

} // namespace

// What is alike in all families ---------------------------------------------------------------------------------------

TEST_F(ConfigTest, TextsRoundTripIntoBuffersOfEverySize)
{
    ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key, "Text", "twelve chars"));
    for (const BufferCase& buffer : BufferCases(sizeof "twelve chars")) {
        SCOPED_TRACE(buffer.name);
        SentinelBuffer out(buffer);
        const auto size = static_cast<DWORD>(out.Size());
        const DWORD status = m_config.GetValue(m_mode, m_key, "Text", out.Data(), size, "default");
        out.ExpectGuardsIntact();
        if (buffer.null || size == 0) {
            EXPECT_EQ(kInvalid, status);
            EXPECT_TRUE(out.IsUntouched());
        } else {
            EXPECT_EQ(buffer.fits ? 0u : kMoreData, status);
            EXPECT_EQ(buffer.fits ? "twelve chars" : std::string("default").substr(0, size - 1), out.Text());
        }
    }
    EXPECT_EQ(kInvalid, m_config.SetValue(m_mode, m_key, "Text", nullptr));
    ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key, "Empty", ""));
    EXPECT_EQ("", ReadText(m_key, "Empty"));

    char text[8] = "before!";
    const auto readMissing = [&](DWORD size, LPCSTR defaultText) {
        return m_config.GetValue(m_mode, m_key, "Missing", text, size, defaultText);
    };
    EXPECT_EQ(kNotFound, readMissing(sizeof text, nullptr));
    EXPECT_EQ(std::string(sizeof text, '\0'), std::string(text, sizeof text));
    EXPECT_EQ(kNotFound, readMissing(sizeof text, "a long default"));
    EXPECT_STREQ("a long ", text);
    if (IsDoubleByte()) { // no character is cut in two
        readMissing(4, "\x83\x41\x83\x41");
        EXPECT_STREQ("\x83\x41", text);
    }
}

TEST_F(ConfigTest, FindsEntriesAndSubkeysWithoutRegardToCase)
{
    ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key, "Entry", 0x80000000));
    for (const LPCSTR key : {"", "\\Subkey", "\\X\\Y", "\\X\\Y"}) // without a name, below a new one, and once more
        ASSERT_EQ(0u, m_config.CreateKey(m_mode, *key == '\0' ? CString() : m_key + key));
    EXPECT_EQ(0u, m_config.CreateKey(m_mode, nullptr));
    EXPECT_EQ(Answer(0, 0x80000000), ReadNumber(m_key, "ENTRY"));
    EXPECT_EQ(Answer(kNotFound, 9), ReadNumber(m_key + "\\Missing", "Entry"));
    EXPECT_EQ(Answer(0, TRUE), HasEntry(m_key, "eNTRY"));
    EXPECT_EQ(Answer(0, FALSE), HasEntry(m_key, "Entr"));
    EXPECT_EQ(Answer(kNotFound, FALSE), HasEntry(m_key + "\\Missing", "Entry"));
    EXPECT_EQ(Answer(0, TRUE), HasSubkey(m_key, "SUBKEY"));
    EXPECT_EQ(Answer(0, TRUE), HasSubkey(m_key + "\\X", "Y"));
    EXPECT_EQ(Answer(0, FALSE), HasSubkey(m_key, "Sub"));
    EXPECT_EQ(Answer(kNotFound, FALSE), HasSubkey(m_key + "\\Missing", "Subkey"));
}

TEST_F(ConfigTest, EnumeratesSubkeysUntilTheCallbackObjects)
{
    CString first = "before";
    BOOL found = TRUE;
    EXPECT_EQ(0u, m_config.FindFirstSubKey(m_mode, m_key, first, found));
    EXPECT_FALSE(found);
    EXPECT_STREQ("", first);

    const Names expected = {"Alpha", "Beta", "Gamma"};
    for (const std::string& name : expected)
        ASSERT_EQ(0u, m_config.CreateKey(m_mode, m_key + "\\" + name.c_str()));
    Names names;
    EXPECT_EQ(0u, m_config.EnumEntries(m_mode, m_key, &CollectName, &names));
    EXPECT_EQ(expected, names);
    EXPECT_EQ(0u, m_config.FindFirstSubKey(m_mode, m_key, first, found));
    EXPECT_TRUE(found);
    EXPECT_STREQ("Alpha", first);

    // Whatever nonzero code the callback gives comes back, those that end an enumeration included.
    for (const DWORD code : {DWORD{1}, kNotFound, DWORD{ERROR_NO_MORE_ITEMS}, DWORD{0xFFFFFFFF}}) {
        std::pair<DWORD, int> calls = {code, 0};
        const auto object = [](void* c, LPCSTR) {
            auto& [result, count] = *static_cast<std::pair<DWORD, int>*>(c);
            return ++count == 2 ? result : DWORD{0};
        };
        EXPECT_EQ(code, m_config.EnumEntries(m_mode, m_key, object, &calls));
        EXPECT_EQ(2, calls.second);
    }
    EXPECT_EQ(kNotFound, m_config.EnumEntries(m_mode, m_key + "\\Missing", &CollectName, &names));
}

TEST_F(ConfigTest, DeletesEntriesAndWholeSections)
{
    ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key + "\\A\\B\\C", "Deep", "x"));
    ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key + "\\A\\D", "Value", 1));
    ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key, "Stays", "x"));
    ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key, "Goes", "x"));
    EXPECT_EQ(0u, m_config.DeleteEntry(m_mode, m_key, "Goes"));
    EXPECT_EQ(kNotFound, m_config.DeleteEntry(m_mode, m_key, "Goes"));
    EXPECT_EQ(0u, m_config.DeleteSection(m_mode, m_key, "A"));
    EXPECT_EQ(Answer(0, FALSE), HasSubkey(m_key, "A"));
    EXPECT_EQ(kNotFound, m_config.DeleteSection(m_mode, m_key, "A"));
    for (const auto& [key, subkey] :
         {std::pair<LPCSTR, LPCSTR>{m_key, ""}, {"", nullptr}, {nullptr, nullptr}, {m_key, "\\\\"}})
        EXPECT_EQ(kInvalid, m_config.DeleteSection(m_mode, key, subkey));
    EXPECT_EQ(Answer(0, TRUE), HasEntry(m_key, "Stays"));
    EXPECT_EQ(0u, m_config.DeleteSection(m_mode, m_key, nullptr)) << "the key itself";
    EXPECT_EQ(Answer(kNotFound, FALSE), HasEntry(m_key, "Stays"));
}

TEST_F(ConfigTest, RefusesToCopyATreeIntoItselfOrBeyondThePathLimit)
{
    const CString source = m_key + "\\Source";
    ASSERT_EQ(0u, m_config.SetValue(m_mode, source, "Text", "top"));
    // However the key is written.
    for (const CString& destination :
         {source, source + "\\Below", m_key + "\\SOURCE\\Below", source + "\\", m_key + "\\\\Source"}) {
        for (const CString& from : {source, source + "\\"})
            EXPECT_EQ(kInvalid, m_config.MoveRegTree(m_mode, destination, m_mode, from, 0)) << (LPCSTR)destination;
    }
    if (IsDoubleByte()) { // keys that differ in the second byte of a character, by what is case elsewhere
        ASSERT_EQ(0u, m_config.SetValue(m_mode, m_key + "\\\x83\x41", "Text", "two bytes"));
        EXPECT_EQ(0u, m_config.CopyRegTree(m_mode, m_key + "\\\x83\x61", m_mode, m_key + "\\\x83\x41", 0));
        EXPECT_EQ("two bytes", ReadText(m_key + "\\\x83\x61", "Text"));
    }
    EXPECT_EQ(0u, m_config.CopyRegTree(m_mode, source + "X", m_mode, source, 0)) << "only its name begins alike";
    EXPECT_EQ("top", ReadText(source, "Text"));

    const CString tooLong = m_key + "\\" + CString('x', 259 - m_key.GetLength());
    const auto copyTo = [&](int length) {
        return m_config.CopyRegTree(m_mode, tooLong.Left(length), m_mode, source, 0);
    };
    EXPECT_EQ(kTooLong, copyTo(260));
    EXPECT_EQ(0u, copyTo(250));
    EXPECT_EQ("top", ReadText(tooLong.Left(250), "Text"));
    ASSERT_EQ(0u, m_config.CreateKey(m_mode, source + "\\Sub"));
    EXPECT_EQ(kTooLong, copyTo(256));
    if (!IsWin32s()) { // where the value is a subkey too, with a longer name
        EXPECT_EQ(0u, copyTo(255));
    }
}

TEST_F(ConfigTest, MovesATreeAlsoToAKeyAboveUnlessThatWouldLoseAPart)
{
    for (const CString& way : {CString("\\B"), CString("\\B\\C")}) {
        const CString above = m_key + "\\Above";
        const CString source = above + way;
        ASSERT_EQ(0u, m_config.SetValue(m_mode, source + "\\Sub\\Deep", "Text", "kept"));
        ASSERT_EQ(0u, m_config.SetValue(m_mode, source + way + "\\Sub", "Text", "deep"));
        for (const CString& from : {source, source + "\\"})
            EXPECT_EQ(kInvalid, m_config.MoveRegTree(m_mode, m_key + "\\ABOVE", m_mode, from, 0));
        EXPECT_EQ("deep", ReadText(source + way + "\\Sub", "Text"));
        EXPECT_EQ(Answer(0, FALSE), HasSubkey(above, "Sub")) << "nothing is touched";
        ASSERT_EQ(0u, m_config.DeleteSection(m_mode, source + way, nullptr));
        ASSERT_EQ(0u, m_config.CreateKey(m_mode, source + "\\EmptyKey"));
        EXPECT_EQ(0u, m_config.MoveRegTree(m_mode, above, m_mode, source, 0));
        EXPECT_EQ("kept", ReadText(above + "\\Sub\\Deep", "Text"));
        EXPECT_EQ(Answer(0, TRUE), HasSubkey(above, "EmptyKey"));
        EXPECT_EQ(kNotFound, m_config.MoveRegTree(m_mode, above, m_mode, source, 0));
        ASSERT_EQ(0u, m_config.DeleteSection(m_mode, above, nullptr));
    }
}

TEST_F(ConfigTest, RefusesToCopyATreeIntoItselfUnderAnotherRoot)
{
    ZO_ONLY_IN(!IsWin32s(), "has one root");
    const CString key = m_key.Mid(m_key.ReverseFind('\\') + 1); // for a place below any root
    const CString user = UserBelowUsers() + "\\";
    const CString classes = "Software\\Classes\\";
    const CString profile = "System\\CurrentControlSet\\Hardware Profiles\\Current\\";
    const DWORD profileMode = IsNt() ? ZO_MODE_LOCAL_MACHINE : ZO_MODE_CURRENT_CONFIG;
    const struct {
        DWORD sourceMode;
        CString source;
        DWORD destinationMode;
        CString destination; // of a copy of "Source", or of all that is there
        bool refused;
        bool hasMark; // found without the names that the system tells
    } cases[] = {
        {2, key + "\\Source", 3, user + key + "\\Source", true, true},
        {3, user + key + "\\Source", 2, key + "\\SOURCE", true, true},
        {3, user + key + "\\Source", 2, key + "\\Source\\New\\Deep", true, true},
        {2, key + "\\Source", 3, user + key + "\\Target", false, true},
        {2, key + "\\Source", 3, user + key + "\\SourceX", false, true},
        {2, key + "\\Source", 1, classes + key, false, true},
        {1, classes + key + "\\Source", 7, key + "\\Source", true, true},
        {7, key + "\\Source", 1, classes + key + "\\Source\\New", true, true},
        {7, key + "\\Source", 2, key + "\\Target", false, true},
        {7, key + "\\Source", 2, classes + key + "\\Source\\New", true, false}, // merged into the classes
        {profileMode, (IsNt() ? profile : CString()) + key + "\\Source", 1, profile + key + "\\Source", true, false},
    };
    const auto remove = [&] {
        m_config.DeleteSection(2, key, nullptr);
        m_config.DeleteSection(7, key, nullptr);
        m_config.DeleteSection(1, profile + key, nullptr);
    };
    for (const bool namesAreTold : {true, false}) {
        std::optional<ImportPatch> untold;
        if (!namesAreTold)
            untold.emplace("ZOGBLBRX.DLL", "GetProcAddress", &TellNoKeyNames);
        for (const auto& c : cases) {
            SCOPED_TRACE(&c - cases);
            if (!namesAreTold && !c.hasMark)
                continue;
            // No Windows 95 has 64 bits, and Wine's, which has, does not find every key of the classes when it deletes.
            if (sizeof(void*) == 8 && !IsNt() && c.sourceMode == 7 && !c.refused)
                continue;
            remove();
            ASSERT_EQ(0u, m_config.SetValue(c.sourceMode, c.source, "Text", "kept"));
            ASSERT_EQ(0u, m_config.CreateKey(c.sourceMode, c.source + "\\Sub"));
            const DWORD status = m_config.MoveRegTree(c.destinationMode, c.destination, c.sourceMode, c.source, 0);
            EXPECT_EQ(c.refused ? kInvalid : 0u, status);
            const DWORD mode = c.refused ? c.sourceMode : c.destinationMode;
            char text[8];
            m_config.GetValue(mode, c.refused ? c.source : c.destination, "Text", text, sizeof text, "");
            EXPECT_STREQ("kept", text);
        }
        // Everything into a part of it.
        EXPECT_EQ(kInvalid, m_config.CopyRegTree(2, key + "\\All", 3, "", 0));
    }
    remove();
}

// Windows NT and Windows 95 -------------------------------------------------------------------------------------------

TEST_F(ConfigTest, EnumeratesAndCopiesValuesByTypeAndNarrowsNumbers)
{
    ZO_ONLY_IN(!IsWin32s(), "no named values");
    Store("One", REG_DWORD, DWORD{1});
    Store("ThreeHundred", REG_DWORD, DWORD{300});
    Store("TwoHundred", REG_DWORD, DWORD{200});
    Store("Text", REG_SZ, "abc", 4);
    Store("Expand", REG_EXPAND_SZ, "%X%", 4);
    Store("Bytes", REG_BINARY, "\x01\x02", 2);
    Store("Texts", REG_MULTI_SZ, "a\0b\0", 5);
    Store("None", REG_NONE, "x", 1);
    Store("Swapped", REG_DWORD_BIG_ENDIAN, DWORD{1});
    Store("Wide", REG_QWORD, "12345678", 8);
    const Values copied = {
        {"One", REG_DWORD, "", 1},
        {"ThreeHundred", REG_DWORD, "", 44},
        {"TwoHundred", REG_DWORD, "", static_cast<DWORD>(-56)},
        {"Text", REG_SZ, "abc", 0},
    };
    Values expected = {
        {"Expand", REG_EXPAND_SZ, "%X%", 0}, {"Bytes", REG_BINARY, "\x01\x02", 0}, {"Texts", REG_MULTI_SZ, "a", 0}};
    expected.insert(copied.begin(), copied.end());
    EXPECT_EQ(expected, ValuesOf(m_key));
    const CString copy = m_key + "Copy";
    EXPECT_EQ(0u, m_config.CopyRegTree(m_mode, copy, m_mode, m_key, 1));
    EXPECT_EQ(copied, ValuesOf(copy));
    EXPECT_EQ(Answer(0, DWORD(-56)), ReadNumber(copy, "TwoHundred")) << "narrowed, not only told so";
    EXPECT_EQ(0u, m_config.DeleteSection(m_mode, copy, nullptr));

    const auto stop = [](void*, LPCSTR, const void*, DWORD) { return DWORD{77}; };
    EXPECT_EQ(77u, m_config.EnumValues(m_mode, m_key, stop, nullptr));
}

TEST_F(ConfigTest, AnyTypeReportsTypeButNotSize)
{
    ZO_ONLY_IN(!IsWin32s(), "no named values");
    const char data[] = {1, 2, 3};
    ASSERT_EQ(0u, m_config.SetAnyValueType(m_mode, m_key, "Bytes", data, sizeof data, REG_BINARY));
    char read[5] = {9, 9, 9, 9, 9};
    DWORD type = 9, size = 9;
    const auto get = [&](void* buffer, DWORD bufferSize) {
        const DWORD status = m_config.GetAnyValueType(m_mode, m_key, "Bytes", buffer, bufferSize, type, size);
        EXPECT_EQ(status == 0 ? DWORD{REG_BINARY} : 0u, type);
        EXPECT_EQ(0u, size) << "asked for with GetValueSize";
        return status;
    };
    EXPECT_EQ(0u, get(read, sizeof read));
    EXPECT_EQ(std::string("\1\2\3\0\0", 5), std::string(read, 5));
    EXPECT_EQ(0u, get(nullptr, 0)) << "the type alone";
    EXPECT_EQ(kMoreData, get(read, 2));
    EXPECT_EQ(std::string("\0\0\3", 3), std::string(read, 3));
    EXPECT_EQ(0u, m_config.GetValueSize(m_mode, m_key, "Bytes", size));
    EXPECT_EQ(3u, size);

    EXPECT_EQ(0u, m_config.SetAnyValueType(m_mode, m_key, "Nothing", data, 0, REG_BINARY));
    EXPECT_EQ(kInvalid, m_config.SetAnyValueType(m_mode, m_key, "Nothing", nullptr, 3, REG_BINARY));
    EXPECT_EQ(kNotFound, m_config.GetValueSize(m_mode, m_key, "Nothing", size = 9));
    EXPECT_EQ(0u, size);
}

TEST_F(ConfigTest, EnumerationTakesNamesAndDataUpToItsLimits)
{
    ZO_ONLY_IN(!IsWin32s(), "no named values");
    const std::string longest(260, 'n'), data(8193, 'd');
    Store(longest.c_str(), REG_BINARY, data.data(), 8192);
    EXPECT_EQ((Values{{longest, REG_BINARY, data.substr(1), 0}}), ValuesOf(m_key));
    Store("Data", REG_BINARY, data.data(), 8193);
    ValuesOf(m_key, kMoreData);
    ASSERT_EQ(0u, m_config.DeleteEntry(m_mode, m_key, "Data"));
    Store((longest + 'n').c_str(), REG_SZ, "x", 2);
    ValuesOf(m_key, kMoreData);
}

TEST_F(ConfigTest, BothArchitecturesShareTheMachinesSettings)
{
    ZO_ONLY_IN(!IsWin32s(), "has no such key");
    const TestRegistryKey key(HKEY_LOCAL_MACHINE); // made in the 32-bit view
    const CString path = key.Path().c_str();
    key.SetText("", "Text", "from 32 bits");
    char text[16];
    EXPECT_EQ(0u, m_config.GetValue(1, path, "Text", text, sizeof text, ""));
    EXPECT_STREQ("from 32 bits", text);
    EXPECT_EQ(0u, m_config.CreateKey(1, path + "\\Made") | m_config.SetValue(1, path + "\\Made", "Number", 5));
    EXPECT_EQ(std::string("\5\0\0\0", 4), key.Get("Made", "Number"));
    EXPECT_EQ(0u, m_config.DeleteSection(1, path, "Made"));
    EXPECT_EQ("(none)", key.Get("Made", "Number"));
}

/// What any program may have left in the registry, through every read.
TEST_F(ConfigTest, HostileValues)
{
    ZO_ONLY_IN(!IsWin32s(), "no named values");
    const std::string longText(9000, 'x');
    const struct {
        const char* name;
        DWORD type;
        const char* data;
        DWORD size;
        DWORD numberStatus; // of a number read
        DWORD textStatus;   // of a text read into 8 characters
        const char* text;
    } cases[] = {
        {"EmptyText", REG_SZ, "", 0, ZoErrWrongValueType, 0, ""},
        {"Unterminated", REG_SZ, "abc", 3, ZoErrWrongValueType, 0, "abc"},
        {"UnterminatedFull", REG_SZ, "abcdefgh", 8, ERROR_MORE_DATA, ERROR_MORE_DATA, "def"},
        {"TwoZeros", REG_SZ, "a\0b", 4, ZoErrWrongValueType, 0, "a"},
        {"OverLong", REG_SZ, longText.data(), 9000, ERROR_MORE_DATA, ERROR_MORE_DATA, "def"},
        {"EmptyNumber", REG_DWORD, "", 0, ZoErrWrongValueType, ZoErrWrongValueType, "def"},
        {"ShortNumber", REG_DWORD, "\x01\x02", 2, ZoErrWrongValueType, ZoErrWrongValueType, "def"},
        {"LongNumber", REG_DWORD, "12345", 5, ERROR_MORE_DATA, ZoErrWrongValueType, "def"},
        {"Bytes", REG_BINARY, "\x01\x02\x03\x04", 4, ZoErrWrongValueType, ZoErrWrongValueType, "def"},
        {"ExpandText", REG_EXPAND_SZ, "ab", 3, ZoErrWrongValueType, ZoErrWrongValueType, "def"},
        {"UnknownType", 0x1234, "ab", 2, ZoErrWrongValueType, ZoErrWrongValueType, "def"},
    };
    for (const auto& c : cases) {
        Store(c.name, c.type, c.data, c.size);
        EXPECT_EQ(Answer(c.numberStatus, 9), ReadNumber(m_key, c.name)) << c.name;
        SentinelBuffer buffer(size_t{8});
        EXPECT_EQ(c.textStatus, m_config.GetValue(m_mode, m_key, c.name, buffer.Data(), 8, "def")) << c.name;
        EXPECT_EQ(c.text, buffer.Text()) << c.name;
        buffer.ExpectGuardsIntact();
        DWORD type = 0, size = 0;
        char any[64];
        const DWORD anyStatus = m_config.GetAnyValueType(m_mode, m_key, c.name, any, sizeof any, type, size);
        EXPECT_EQ(c.size > sizeof any ? kMoreData : 0u, anyStatus) << c.name;
        EXPECT_EQ(anyStatus == 0 ? c.type : 0u, type) << c.name;
    }
    // The over-long one ends an enumeration, for nothing of it may be lost in silence.
    ValuesOf(m_key, kMoreData);
    ASSERT_EQ(0u, m_config.DeleteEntry(m_mode, m_key, "OverLong"));
    EXPECT_EQ(1u, ValuesOf(m_key).count({"Unterminated", REG_SZ, "abc", 0}));
}

TEST_F(ConfigTest, ModesNameTheRoots)
{
    ZO_ONLY_IN(!IsWin32s(), "every mode is one root there, see below");
    const HKEY none = HKEY_CLASSES_ROOT; // for the modes that name no root
    const HKEY roots[] = {none,
                          HKEY_LOCAL_MACHINE,
                          HKEY_CURRENT_USER,
                          HKEY_USERS,
                          HKEY_PERFORMANCE_DATA,
                          IsNt() ? none : HKEY_CURRENT_CONFIG,
                          IsNt() ? none : HKEY_DYN_DATA,
                          none};
    struct Exposed : CZoGlobalConfig {
        using CZoGlobalConfig::MapModeToKey;
    } config;
    for (DWORD mode = 0; mode < std::size(roots); ++mode)
        EXPECT_EQ(roots[mode], config.MapModeToKey(mode)) << mode;
    EXPECT_EQ(none, config.MapModeToKey(0xFFFFFFFF));
}

// Win32s --------------------------------------------------------------------------------------------------------------

TEST_F(ConfigTest, Win32sKeepsValuesAsSubkeysWithText)
{
    ZO_ONLY_IN(IsWin32s(), "only its registry works so");
    ASSERT_EQ(0u, m_config.SetValue(1, m_key, "Number", 4000000000u));
    char text[16] = {};
    LONG size = sizeof text;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueA(HKEY_CLASSES_ROOT, m_key + "\\Number", text, &size));
    EXPECT_STREQ("4000000000", text);
    EXPECT_EQ(Answer(0, 4000000000u), ReadNumber(m_key, "Number")) << "every mode is the same root";
    ASSERT_EQ(0u, m_config.SetValue(1, m_key, "Words", "12 monkeys"));
    EXPECT_EQ(Answer(0, 12), ReadNumber(m_key, "Words"));

    // Bytes become text, up to their first zero; the size is reported here.
    ASSERT_EQ(0u, m_config.SetAnyValueType(1, m_key, "Bytes", "abcdef", 3, REG_BINARY));
    DWORD type = 0, length = 0;
    EXPECT_EQ(0u, m_config.GetAnyValueType(1, m_key, "Bytes", text, sizeof text, type, length));
    EXPECT_STREQ("abc", text);
    EXPECT_EQ(DWORD{REG_SZ}, type);
    EXPECT_EQ(4u, length);
    EXPECT_EQ(0u, m_config.GetValueSize(1, m_key, "Bytes", length));
    EXPECT_EQ(0u, length);
    const Values expected = {
        {"Bytes", REG_SZ, "abc", 0}, {"Number", REG_SZ, "4000000000", 0}, {"Words", REG_SZ, "12 monkeys", 0}};
    EXPECT_EQ(expected, ValuesOf(m_key));

    // What any program may have left there.
    m_registryKey.SetText("OverLong", "", std::string(1100, '1'));
    EXPECT_EQ(Answer(kMoreData, 9), ReadNumber(m_key, "OverLong"));
    m_registryKey.Set("Unterminated", "", REG_SZ, "77");
    EXPECT_EQ(Answer(0, 77), ReadNumber(m_key, "Unterminated"));

    ASSERT_EQ(0u, m_config.CreateKey(1, m_key + "\\Number\\Below"));
    EXPECT_EQ(0u, m_config.DeleteEntry(1, m_key, "Number")) << "with everything below it";
    EXPECT_EQ(Answer(0, FALSE), HasEntry(m_key, "Number"));
    for (const LPCSTR none : {"", LPCSTR{nullptr}})
        EXPECT_EQ(kInvalid, m_config.DeleteEntry(1, m_key, none));
}
