#include "profile_fixture.h"

#include <tuple>

namespace {

class IniFile : public ProfileTest {
protected:
    void WriteEntry(const std::string& value) { Write("[S]\r\nK=" + value + "\r\n"); }
};

bool operator==(const SYSTEMTIME& a, const SYSTEMTIME& b) { return std::memcmp(&a, &b, sizeof a) == 0; }
auto Fields(const RECT& r) { return std::tuple(r.left, r.top, r.right, r.bottom); }
auto Fields(const ACCEL& a) { return std::tuple(a.fVirt, a.key, a.cmd); }

const SYSTEMTIME kTime = {1997, 12, 3, 31, 23, 59, 58, 999};
const WINDOWPLACEMENT kPlacement = {sizeof kPlacement, WPF_SETMINPOSITION, SW_SHOW, {-1, -2}, {3, 4}, {5, 6, 70, 80}};

} // namespace

TEST_F(IniFile, ReadsSingleNumbers)
{
    const struct {
        const char* text;
        int integer;
        DWORD hexadecimal;
    } rows[] = {{"12abc", 12, 0x12abc},
                {"0x1F", 0, 0x1F},
                {"1f", 1, 0x1f},
                {"12x34", 12, 0x34},
                {"G1", 0, 0},
                {"0xFFFFFFFFF", 0, 0xFFFFFFFF},
                {"-12", -12, 0},
                {"- 12", 0, 0},
                {"\"\t +7\"", 7, 0},
                {"\" \tab\"", 0, 0xab},
                {"-2147483648", INT_MIN, 0},
                {"4294967295", -1, 0x94967295},
                {"0000000000000000000000000000000000000012", 1, 0x12}}; // 39 characters of a decimal number
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        WriteEntry(row.text);
        int integer = -99;
        DWORD longWord = 99, hexadecimal = 99;
        EXPECT_EQ(0u, m_profile.DoInteger("K", TRUE, 5, &integer));
        EXPECT_EQ(0u, m_profile.DoLongWord("K", TRUE, 5, &longWord));
        EXPECT_EQ(0u, m_profile.DoHexadecimal("K", TRUE, 5, &hexadecimal));
        EXPECT_EQ(row.integer, integer);
        EXPECT_EQ(static_cast<DWORD>(row.integer), longWord);
        EXPECT_EQ(row.hexadecimal, hexadecimal);
    }
    for (const char* text : {"+1", "+tRUE", "+SET", "+yes", "+On", "+OK", "-2", "-T", "-Y", "-OK.", "-0", "-TRUEx"}) {
        WriteEntry(text + 1);
        BOOL boolean = -99;
        EXPECT_EQ(0u, m_profile.DoBoolean("K", TRUE, 5, &boolean));
        EXPECT_EQ(text[0] == '+' ? TRUE : FALSE, boolean) << text;
    }
}

TEST_F(IniFile, ReadsSeveralNumbers)
{
    const struct {
        const char* text;
        RECT rectangle;
        COLORREF color;
        ACCEL accelerator;
    } rows[] = {
        {"1,2;3:4", {1, 2, 3, 4}, RGB(1, 2, 3), {1, 2, 3}},
        {"1 /|\\ 2 x3", {1, 2, 0, -4}, RGB(1, 2, 0), {1, 2, 0}},
        {"-1, 65537, 258", {-1, 65537, 258, -4}, RGB(255, 1, 2), {255, 1, 258}},
        {"9", {9, -2, -3, -4}, RGB(9, 0x22, 0x33), {9, 32, 33}},
        {"\"\t 8\"", {0, 8, -3, -4}, RGB(0, 8, 0x33), {0, 8, 33}},         // a tab is a part of its own
        {"1 2           345", {1, 2, 345, -4}, RGB(1, 2, 3), {1, 2, 345}}, // of a colour 15 characters
        {"1 2                                   99", {1, 2, 9, -4}, RGB(1, 2, 0x33), {1, 2, 9}}, // of others 39
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        WriteEntry(row.text);
        RECT rectangle = {-1, -2, -3, -4};
        COLORREF color = 0x02332211;
        ACCEL accelerator = {31, 32, 33};
        EXPECT_EQ(0u, m_profile.ZoIniFileRectangle("K", TRUE, &rectangle, &rectangle));
        EXPECT_EQ(0u, m_profile.ZoIniFileColor("K", TRUE, &color, &color));
        EXPECT_EQ(0u, m_profile.ZoIniFileAccelerator("K", TRUE, &accelerator, &accelerator));
        EXPECT_EQ(Fields(row.rectangle), Fields(rectangle));
        EXPECT_EQ(row.color, color);
        EXPECT_EQ(Fields(row.accelerator), Fields(accelerator));
    } // Of many numbers 127 characters.
    WriteEntry("1,2,3,4,5,6,7," + std::string(112, ' ') + "89");
    SYSTEMTIME time = {};
    EXPECT_EQ(0u, m_profile.ZoIniFileTime("K", TRUE, &time, &time));
    EXPECT_TRUE((SYSTEMTIME{1, 2, 3, 4, 5, 6, 7, 8}) == m_profile.m_uInput.time);
    WINDOWPLACEMENT placement = {};
    EXPECT_EQ(0u, m_profile.ZoIniFileWindowPlacement("K", TRUE, &placement, &placement));
    EXPECT_EQ(std::tuple(7, 8, 0, 0), Fields(placement.rcNormalPosition));
}

TEST_F(IniFile, WritesAndReadsBack)
{
    const RECT rectangle = {1, -2, 300, 400};
    const COLORREF color = 0x02FF8001;
    const ACCEL accelerator = {FVIRTKEY | FCONTROL, VK_F1, 40001};
    EXPECT_EQ(0u, m_profile.DoString("string", FALSE, "a b", nullptr, 0));
    EXPECT_EQ(0u, m_profile.DoTokenString("tokens", FALSE, "a,b", nullptr, nullptr));
    EXPECT_EQ(0u, m_profile.DoInteger("integer", FALSE, -5, nullptr));
    EXPECT_EQ(0u, m_profile.DoLongWord("long", FALSE, 0xFFFFFFFE, nullptr));
    EXPECT_EQ(0u, m_profile.DoBoolean("boolean", FALSE, 7, nullptr));
    EXPECT_EQ(0u, m_profile.DoBoolean("off", FALSE, FALSE, nullptr));
    EXPECT_EQ(0u, m_profile.DoHexadecimal("hexadecimal", FALSE, 0xAB, nullptr));
    EXPECT_EQ(0u, m_profile.ZoIniFileTime("time", FALSE, &kTime, nullptr));
    EXPECT_EQ(0u, m_profile.ZoIniFileRectangle("rectangle", FALSE, &rectangle, nullptr));
    EXPECT_EQ(0u, m_profile.ZoIniFileColor("color", FALSE, &color, nullptr));
    EXPECT_EQ(0u, m_profile.ZoIniFileAccelerator("accelerator", FALSE, &accelerator, nullptr));
    EXPECT_EQ(0u, m_profile.ZoIniFileWindowPlacement("placement", FALSE, &kPlacement, nullptr));
    EXPECT_EQ("[S]\r\nstring=a b\r\ntokens=a,b\r\ninteger=-5\r\nlong=4294967294\r\nboolean=1\r\noff=0\r\n"
              "hexadecimal=0x000000AB\r\ntime=1997, 12, 3, 31, 23, 59, 58, 999\r\nrectangle=1, -2, 300, 400\r\n"
              "color=1 128 255\r\naccelerator=9, 112, 40001\r\nplacement=1, 5, -1, -2, 3, 4, 6, 5, 70, 80\r\n",
              m_folder.Read("test.ini"));

    // Left and top of a placement come back exchanged, and its length is the default's.
    WINDOWPLACEMENT expected = kPlacement;
    expected.length = 3;
    std::swap(expected.rcNormalPosition.left, expected.rcNormalPosition.top);
    WINDOWPLACEMENT placement = {};
    placement.length = 3;
    EXPECT_EQ(0u, m_profile.ZoIniFileWindowPlacement("placement", TRUE, &placement, &placement));
    EXPECT_EQ(0, std::memcmp(&expected, &placement, sizeof expected));

    // A time is the caller's own, whether there is an entry or not; what was read stays in the object.
    SYSTEMTIME other = kTime;
    other.wYear = 1601;
    for (const auto& [key, status] : {std::pair("time", ZO_INI_SUCCESS), std::pair("none", ZO_INI_NOT_FOUND)}) {
        SYSTEMTIME time = {};
        EXPECT_EQ(status, m_profile.ZoIniFileTime(key, TRUE, &other, &time));
        EXPECT_TRUE(other == time);
        EXPECT_TRUE((status == 0 ? kTime : other) == m_profile.m_uInput.time);
    }
}

/// A typed operation that reads or writes, with or without what may be null; \p isDefault: the default came back.
using Operation = std::function<DWORD(CZoIniFile& profile, const char* key, int read, bool hasInput, bool hasOutput,
                                      bool& isDefault)>;

template <class INPUT, class VALUE>
static Operation Typed(DWORD (CZoIniFile::*operation)(const char*, int, INPUT, VALUE*))
{
    return [=](CZoIniFile& profile, const char* key, int read, bool hasInput, bool hasOutput, bool& isDefault) {
        VALUE input, output;
        std::memset(&input, 0x11, sizeof input);
        std::memset(&output, 0x11, sizeof output); // other at both ends; what fills up in between may not be copied
        auto* bytes = reinterpret_cast<char*>(&output);
        bytes[0] = bytes[sizeof output - 1] = 0x22;
        DWORD status;
        if constexpr (std::is_pointer_v<INPUT>)
            status = (profile.*operation)(key, read, hasInput ? &input : nullptr, hasOutput ? &output : nullptr);
        else
            status = (profile.*operation)(key, read, input, hasOutput ? &output : nullptr);
        isDefault = std::memcmp(&input, &output, sizeof input) == 0;
        return status;
    };
}

static DWORD AsText(CZoIniFile& profile, const char* key, int read, bool hasInput, bool hasOutput, bool& isDefault)
{
    char output[8] = "";
    const char* input = hasInput ? "default" : nullptr;
    const DWORD status = profile.DoString(key, read, input, hasOutput ? output : nullptr, sizeof output);
    isDefault = std::strcmp("default", output) == 0;
    return status;
}

/// The first four take their input by value.
static const Operation kOperations[] = {Typed(&CZoIniFile::DoInteger),
                                        Typed(&CZoIniFile::DoLongWord),
                                        Typed(&CZoIniFile::DoBoolean),
                                        Typed(&CZoIniFile::DoHexadecimal),
                                        Typed(&CZoIniFile::ZoIniFileTime),
                                        Typed(&CZoIniFile::ZoIniFileRectangle),
                                        Typed(&CZoIniFile::ZoIniFileColor),
                                        Typed(&CZoIniFile::ZoIniFileAccelerator),
                                        Typed(&CZoIniFile::ZoIniFileWindowPlacement),
                                        &AsText};
constexpr int kOperationsByValue = 4;

TEST_F(IniFile, ChecksArgumentsInOrderAndFallsBackToTheDefault)
{
    const std::string longKey(255, 'k');
    const std::string tooLongKey(256, 'k');
    WriteEntry("");
    CZoIniFile fileless;
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(&operation - kOperations);
        const auto expect = [&](DWORD status, const char* key, const char* what) { // r reads, i input, o output, f file
            const auto has = [what](char c) { return std::strchr(what, c) != nullptr; };
            bool isDefault = false;
            EXPECT_EQ(status, operation(has('f') ? m_profile : fileless, key, has('r'), has('i'), has('o'), isDefault))
                << what;
            EXPECT_EQ(has('r') && has('i') && has('o'), isDefault) << what;
        };
        expect(ZO_INI_NULL_KEY, nullptr, "r");
        expect(ZO_INI_NULL_KEY, nullptr, "riof");
        expect(ZO_INI_KEY_TOO_LONG, tooLongKey.c_str(), "");
        expect(ZO_INI_KEY_TOO_LONG, tooLongKey.c_str(), "riof");
        expect(ZO_INI_NULL_ARGUMENT, "K", "ri");
        expect(&operation - kOperations < kOperationsByValue ? ZO_INI_NO_FILE : ZO_INI_NULL_ARGUMENT, "K", "o");
        expect(ZO_INI_NO_FILE, "K", "rio");
        expect(ZO_INI_NO_FILE, "K", "i");
        expect(ZO_INI_NOT_FOUND, "K", "riof"); // empty
        expect(ZO_INI_NOT_FOUND, longKey.c_str(), "riof");
    }
}

TEST_F(IniFile, StringsKeepWithinTheirBuffer)
{
    const std::string stored = "0123456789";
    WriteEntry(stored);
    for (const DWORD size : {12u, 11u, 10u, 9u, 1u, 0u}) { // in 10 bytes, the last character goes silently
        for (const bool exists : {true, false}) {
            SCOPED_TRACE(size);
            SentinelBuffer buffer(size);
            EXPECT_EQ(size < 10 ? ZO_INI_TRUNCATED
                      : exists  ? ZO_INI_SUCCESS
                                : ZO_INI_NOT_FOUND,
                      m_profile.DoString(exists ? "K" : "none", TRUE, stored.c_str(), buffer.Data(), size));
            buffer.ExpectGuardsIntact();
            EXPECT_EQ(stored.substr(0, size > 0 ? size - 1 : 0), buffer.Text());
        }
    }
    const std::string longest(4096, 'v');
    const std::string tooLong(4097, 'w');
    char value[5000];
    EXPECT_EQ(0u, m_profile.DoString("K", FALSE, longest.c_str(), nullptr, 0));
    EXPECT_EQ(ZO_INI_TOO_LONG, m_profile.DoString("K", FALSE, tooLong.c_str(), nullptr, 0));
    EXPECT_EQ(ZO_INI_TOO_LONG, m_profile.DoTokenString("K", FALSE, tooLong.c_str(), nullptr, nullptr));
    EXPECT_EQ(0u, m_profile.DoString("K", TRUE, "", value, sizeof value));
    EXPECT_EQ(longest, value);
    EXPECT_EQ(ZO_INI_TOO_LONG, m_profile.DoString("K", TRUE, tooLong.c_str(), value, sizeof value));
    EXPECT_EQ(tooLong, value) << "the default all the same";
    WriteEntry(tooLong);
    EXPECT_EQ(0u, m_profile.DoString("K", TRUE, "", value, sizeof value)) << "cut at 4096 characters";
    EXPECT_EQ(std::string(4096, 'w'), value);
}

TEST_F(IniFile, FileNameAndSectionHaveBounds)
{
    const auto expect = [](auto get, auto set, DWORD size, DWORD nullStatus) {
        const std::string longest(size - 1, 'n');
        CZoIniFile profile;
        EXPECT_EQ(0u, (profile.*set)(longest.c_str()));
        EXPECT_EQ(nullStatus, (profile.*set)(nullptr));
        EXPECT_EQ(ZO_INI_TOO_LONG, (profile.*set)((longest + "n").c_str()));
        CZoIniFile copy(profile);
        (profile.*set)("");
        for (const BufferCase& bufferCase : BufferCases(size)) {
            SentinelBuffer buffer(bufferCase);
            EXPECT_EQ(bufferCase.null   ? ZO_INI_NULL_BUFFER
                      : bufferCase.fits ? 0u
                                        : ZO_INI_TRUNCATED,
                      (copy.*get)(buffer.Data(), static_cast<DWORD>(buffer.Size())));
            buffer.ExpectGuardsIntact();
            EXPECT_TRUE(bufferCase.fits ? buffer.Text() == longest : buffer.IsUntouched());
        }
    };
    expect(&CZoIniFile::GetFileName, &CZoIniFile::SetFileName, 268, ZO_INI_NULL_FILE_NAME);
    expect(&CZoIniFile::GetSection, &CZoIniFile::SetSection, 1024, ZO_INI_NULL_SECTION);
}

TEST_F(IniFile, ListsSectionsKeysAndTokens)
{
    Write("[S]\r\nK=1\r\nL=\r\n[Empty]\r\n[s]\r\nM=3\r\n[T]\r\nN = a,,b ;c;\r\nO=\",;\"");
    CStringArray names;
    const auto expect = [&names](DWORD expectedStatus, const Texts& expected, DWORD status) {
        EXPECT_EQ(expectedStatus, status);
        EXPECT_EQ(expected, ToVector(names));
    };
    expect(ZO_INI_NULL_ARGUMENT, {}, m_profile.EnumerateSections(nullptr));
    expect(ZO_INI_NULL_ARGUMENT, {}, m_profile.EnumerateKeys(nullptr));
    expect(0, {"S", "Empty", "s", "T"}, m_profile.EnumerateSections(&names));
    expect(0, {"K", "L"}, m_profile.EnumerateKeys(&names));
    m_profile.SetSection("Empty");
    expect(ZO_INI_NOT_FOUND, {}, m_profile.EnumerateKeys(&names));
    m_profile.SetSection("T");
    expect(0, {"a", "b ", "c"}, m_profile.DoTokenString("N", TRUE, "", &names, ",;"));
    expect(0, {"a,,b ;c;"}, m_profile.DoTokenString("N", TRUE, "", &names, ""));
    expect(0, {}, m_profile.DoTokenString("O", TRUE, "default", &names, ";,"));
    expect(ZO_INI_NULL_ARGUMENT, {}, m_profile.DoTokenString("N", TRUE, "", &names, nullptr));
    names.Add("x, y");
    expect(ZO_INI_NULL_KEY, {"x", "y"}, m_profile.DoTokenString(nullptr, TRUE, names[0], &names, ", "));
    names.SetAt(1, ";,");
    expect(0, {"a", "b ", "c"}, m_profile.DoTokenString("N", TRUE, names[0], &names, names[1]));

    // Of a name of 4094 characters the list is said to be cut, of longer ones not.
    for (const size_t length : {4093u, 4094u, 4095u, 10000u}) {
        Write("[" + std::string(length, 'n') + "]\r\n[behind]\r\n");
        EXPECT_EQ(length == 4094 ? ZO_INI_TRUNCATED : 0u, m_profile.EnumerateSections(&names)) << length;
        EXPECT_EQ((std::min)(length, size_t{4095}), ToVector(names).at(0).size());
    }
    m_profile.SetFileName("");
    expect(ZO_INI_NO_FILE, {}, m_profile.EnumerateSections(&names));
    expect(ZO_INI_NO_FILE, {}, m_profile.EnumerateKeys(&names));
}

TEST_F(IniFile, KeepsCharactersOfTwoBytesWhole)
{
    ZO_ONLY_IN(IsDoubleByte(), "characters have one byte");
    // The second bytes of these are a backslash and a bar, which delimit numbers.
    WriteEntry("\x83\x5C\x83\x7C,\x83\x5C|\x81\x43x");
    CStringArray tokens;
    EXPECT_EQ(0u, m_profile.DoTokenString("K", TRUE, "", &tokens, "\\|,"));
    EXPECT_EQ((Texts{"\x83\x5C\x83\x7C", "\x83\x5C", "\x81\x43x"}), ToVector(tokens));
    EXPECT_EQ(0u, m_profile.DoTokenString("K", TRUE, "", &tokens, "\x83\x7C\x81\x43"));
    EXPECT_EQ((Texts{"\x83\x5C", ",\x83\x5C|", "x"}), ToVector(tokens));
    char buffer[3];
    WriteEntry("a\x83\x5C");
    EXPECT_EQ(0u, m_profile.DoString("K", TRUE, "", buffer, sizeof buffer));
    EXPECT_STREQ("a", buffer);
    // More than fits, with a character across the end: nothing of it, nor of what the object held before, is seen.
    std::string text = "a";
    for (int i = 0; i < 2100; ++i)
        text += "\x83\x5C";
    const std::string cut = text.substr(0, 4095);
    const std::string before(4096, 'x');
    char value[ZO_INI_VALUE_SIZE];
    Write("[S]\r\nK=" + text + "\r\n[T]\r\n" + text + "=1\r\n");
    EXPECT_EQ(ZO_INI_NOT_FOUND, m_profile.DoString("none", TRUE, before.c_str(), value, sizeof value));
    EXPECT_EQ(0u, m_profile.DoString("K", TRUE, "", value, sizeof value));
    EXPECT_EQ(cut, value);
    m_profile.SetSection("T");
    EXPECT_EQ(ZO_INI_NOT_FOUND, m_profile.DoString("none", TRUE, before.c_str(), value, sizeof value));
    EXPECT_EQ(0u, m_profile.EnumerateKeys(&tokens));
    EXPECT_EQ(Texts{cut}, ToVector(tokens));
}

TEST_F(IniFile, FindsAndDeletes)
{
    const std::string tooLongKey(256, 'k');
    const std::string file = "[S]\r\nK=1\r\nEmpty=\r\nQuotes=\"\"\r\n[T]\r\nK=2\r\n";
    Write(file);
    EXPECT_TRUE(m_profile.DoesEntryExist("k"));
    for (const char* key : {"Empty", "Quotes", "none", "", tooLongKey.c_str(), static_cast<const char*>(nullptr)})
        EXPECT_FALSE(m_profile.DoesEntryExist(key));

    CZoIniFile fileless;
    fileless.SetSection("S");
    EXPECT_FALSE(fileless.DoesEntryExist("K"));
    EXPECT_TRUE(fileless.DeleteEntry("K") && fileless.DeleteSection("S"));
    CZoIniFile sectionless;
    sectionless.SetFileName(FilePath().c_str());
    EXPECT_TRUE(sectionless.DeleteEntry("K"));
    for (const char* name : {"", static_cast<const char*>(nullptr), "none"})
        EXPECT_TRUE(m_profile.DeleteEntry(name) && m_profile.DeleteSection(name));
    EXPECT_EQ(file, m_folder.Read("test.ini"));

    EXPECT_TRUE(m_profile.DeleteEntry("K") && m_profile.DeleteSection("T"));
    EXPECT_EQ("[S]\r\nEmpty=\r\nQuotes=\"\"\r\n", m_folder.Read("test.ini"));
}

TEST_F(IniFile, RefusedCallsAreAStatus)
{
    WriteEntry("12");
    FaultSource faults("profile");
    // Reads that tell of text and write none.
    const ZO_FAULTY_CALL(GetPrivateProfileStringA) read(faults, kZogbl, 5000);
    const ZO_FAULTY_CALL(GetPrivateProfileSectionA) lines(faults, kZogbl, 0x7FFFFFFF);
    const ZO_FAULTY_CALL(WritePrivateProfileStringA) write(faults, kZogbl, FALSE, ERROR_DISK_FULL);
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(&operation - kOperations);
        RunFaultLoop(faults, [&](const FaultRun& run) {
            bool isDefault;
            const DWORD status = operation(m_profile, "K", TRUE, true, true, isDefault);
            EXPECT_EQ(run.Fired() ? ZO_INI_NOT_FOUND : 0u, status);
            EXPECT_TRUE(isDefault || !run.Fired());
            const bool readFailed = run.Fired();
            const DWORD written = operation(m_profile, "L", FALSE, true, false, isDefault);
            EXPECT_EQ(run.Fired() && (!readFailed || run.persistent) ? ZO_INI_NOT_WRITTEN : 0u, written);
        });
    }
    RunFaultLoop(faults, [&](const FaultRun& run) {
        CStringArray names;
        const bool listed = m_profile.EnumerateSections(&names) == 0 && m_profile.EnumerateKeys(&names) == 0 &&
                            m_profile.DoesEntryExist("K");
        const bool hasLines = run.number == 2 && !run.persistent; // in place of the list of keys
        EXPECT_EQ(!run.Fired() || hasLines, listed);
        EXPECT_TRUE(m_profile.DeleteEntry("none") && m_profile.DeleteSection("none"));
        m_profile.FlushCache();
    });
}

DWORD WINAPI SectionWithBlanks(LPCSTR, LPSTR lines, DWORD, LPCSTR)
{
    constexpr char kLines[] = "=x\0Key \t=x\0";
    std::memcpy(lines, kLines, sizeof kLines);
    return sizeof kLines - 1;
}

TEST_F(IniFile, ListsKeysBehindANamelessLineAsFarAsThereIsRoom)
{
    std::string text = "[S]\r\n=x\r\n";
    for (int i = 1000; i < 2000; ++i)
        text += "Key" + std::to_string(i) + "=a value of twenty bytes\r\n";
    Write(text);
    CStringArray names;
    EXPECT_EQ(0u, m_profile.EnumerateKeys(&names));
    EXPECT_NEAR(ZO_INI_VALUE_SIZE / 8, names.GetSize(), 2);
    EXPECT_STREQ("Key1000", names[0]);
    EXPECT_STREQ("Key1500", names[500]);
    // Not every system takes the blanks before "=" off.
    const ImportPatch patch(kZogbl, "GetPrivateProfileSectionA", &SectionWithBlanks);
    EXPECT_EQ(0u, m_profile.EnumerateKeys(&names));
    EXPECT_EQ(Texts({"Key"}), ToVector(names));
}

TEST_F(IniFile, MissingMemoryIsAStatus)
{
    Write("[S]\r\nK=a,b,c,d,e,f\r\nL=1\r\n[T]\r\n");
    const Texts expected[] = {{"S", "T"}, {"K", "L"}, {"a", "b", "c", "d", "e", "f"}};
    RunFaultLoop<AllocationFaults>([&](const FaultRun& run) {
        CStringArray lists[3];
        const DWORD statuses[] = {m_profile.EnumerateSections(&lists[0]), m_profile.EnumerateKeys(&lists[1]),
                                  m_profile.DoTokenString("K", TRUE, "", &lists[2], ",")};
        run.Stop();
        EXPECT_EQ(run.Fired(), (statuses[0] | statuses[1] | statuses[2]) != 0);
        for (size_t i = 0; i < std::size(lists); ++i) {
            EXPECT_EQ(statuses[i] != 0 ? ZO_INI_OUT_OF_MEMORY : 0u, statuses[i]);
            EXPECT_EQ(statuses[i] != 0 ? Texts{} : expected[i], ToVector(lists[i]));
        }
    });
}
