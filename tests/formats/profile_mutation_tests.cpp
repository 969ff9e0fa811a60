// Damaged profile files, and the bare system calls as the judge of what is read from them.
#include "profile_fixture.h"
#include "support/test.h"

#include <mbstring.h>

namespace {

constexpr size_t kCutNameLength = 4094; // the one that is taken for a list that was cut

std::string MakeFile(Random& random)
{
    static const std::string line(10000, 'x');
    static const Texts files = {
        "[S]\r\nName=value\r\nNumber=12\r\nPlace= 1, 2, 3, 4\r\n[T]\r\nName=\"quoted \"\r\nHex=0x1F\r\n",
        "; comment\r\n[S]\r\nk=1\r\n[s]\r\nk=2\r\n[S]\r\nk=3\r\nK=4\r\n\r\n[ S ]\r\n k = 5 \r\nlone\r\n=6\r\n",
        "[" + line + "]\r\nk=1\r\n[S]\r\n" + line + "=1\r\nk=" + line,
        "[[[]]]\r\n===\r\n[=]\r\n;;;\r\n[]\r\n=\r\n,:;/|\\ ,:;/|\\\r\nk=,:;/|\\\r\n[\r\n]\r\n\"\"\r\n",
        "[S]\r\nk=\x83\x5C,\x83\x7C;\x81\x40z\r\n\x83\x5D=1\r\n[\x83\x5B]\r\n\x83\x5C=\x83\r\n",
    };
    static constexpr char bytes[] = "\0\x1A\xFF\x83\x5C\xEF\xBB\xBF[]=;\"' \t\r\n,0x";
    static const Texts pieces = {
        "\r\n[S]\r\n", "\r\nk=", "\r\n[T]\r\nk=1\r\n", std::string(3, '\0'),   "-1,2:3", "0xFFFFFFFFF", "\xFF\xFE",
        line,          "\x1A",   "\r\n" + line + "=",  std::string(10000, ',')};
    std::string file = Choose(random, files);
    const auto at = [&] { return random() % (file.size() + 1); };
    Damage(random, 2, 7,
           {[&] { file.replace(at(), 1, 1, static_cast<char>(random())); },
            [&] { file.replace(at(), random() % 2, 1, Choose(random, bytes)); },
            [&] { file.insert(at(), Choose(random, pieces)); }, [&] { file.erase(at(), random() % 20); },
            [&] { file.resize(file.size() - (std::min)(file.size(), size_t{4})); }}); // the last line's end
    return file;
}

/// What the system says, without the class; null names mean lists. A list that was cut has one terminator only.
std::string Ask(const std::string& file, const char* section, const char* key, size_t size = ZO_INI_VALUE_SIZE)
{
    std::string text(size, '\0');
    const DWORD length =
        GetPrivateProfileStringA(section, key, "", text.data(), static_cast<DWORD>(size), file.c_str());
    text.resize((std::min)(size_t{length}, size - 1));
    return key != nullptr ? text.substr(0, text.find('\0')) : text;
}

/// The keys of a section in whose list the first one is empty: the system calls such a list empty.
Texts AskLines(const std::string& file, const char* section)
{
    std::string lines(0x20000, '\0');
    lines.resize(GetPrivateProfileSectionA(section, lines.data(), static_cast<DWORD>(lines.size()), file.c_str()));
    Texts keys;
    for (size_t at = 0, end, room = 4095; at < lines.size() && room > 0; at = end + 1) {
        end = (std::min)(lines.find('\0', at), lines.size());
        const size_t equals = lines.find('=', at), last = lines.find_last_not_of(" \t", equals - 1);
        if (equals >= end || equals == at || last + 1 <= at)
            continue;
        keys.push_back(lines.substr(at, (std::min)(last + 1 - at, room)));
        room -= (std::min)(room, keys.back().size() + 1);
    }
    return keys;
}

Texts AskList(const std::string& file, const char* section)
{
    const std::string list = Ask(file, section, nullptr);
    Texts names;
    for (size_t at = 0, length; at < list.size(); at += length + 1) {
        length = std::strlen(list.c_str() + at);
        if (length > 0) // a line that begins with "=" has no name
            names.emplace_back(list, at, length);
    }
    if (names.empty() && section != nullptr)
        return AskLines(file, section);
    return names;
}

bool IsCut(const Texts& names) { return !names.empty() && names[0].size() == kCutNameLength; }

Texts Tokens(std::string text, const char* delimiters)
{
    const auto* set = reinterpret_cast<const unsigned char*>(delimiters);
    Texts tokens;
    for (auto* token = _mbstok(reinterpret_cast<unsigned char*>(text.data()), set); token != nullptr;
         token = _mbstok(nullptr, set))
        tokens.emplace_back(reinterpret_cast<char*>(token));
    return tokens;
}

void ExpectList(DWORD status, const CStringArray& names, const Texts& expected)
{
    EXPECT_EQ(expected.empty() ? ZO_INI_NOT_FOUND : IsCut(expected) ? ZO_INI_TRUNCATED : 0u, status);
    EXPECT_EQ(expected, ToVector(names));
}

void ExpectString(CZoIniFile& profile, const std::string& stored, const char* key, Random& random)
{
    const std::string expected = stored.empty() ? "d" : stored;
    const size_t size = random() % 3 == 0 ? random() % 20 : expected.size() - 1 + random() % 3;
    SentinelBuffer buffer(size);
    const DWORD status = profile.DoString(key, TRUE, "d", buffer.Data(), static_cast<DWORD>(size));
    buffer.ExpectGuardsIntact();
    EXPECT_EQ(size < expected.size() ? ZO_INI_TRUNCATED : stored.empty() ? ZO_INI_NOT_FOUND : 0u, status);
    const std::string text = buffer.Text();
    EXPECT_EQ(expected.substr(0, text.size()), text);
    EXPECT_GE(text.size() + 2, (std::min)(expected.size() + 1, size)) << "a character is missing";
}

void ExpectTokens(CZoIniFile& profile, const std::string& stored, const char* key)
{
    CStringArray tokens;
    profile.DoTokenString(key, TRUE, "d,e", &tokens, ",;\x83\x5C");
    EXPECT_EQ(Tokens(stored.empty() ? "d,e" : stored, ",;\x83\x5C"), ToVector(tokens));
}

void ExpectInMemory(CZoMemIniFile& memory, const std::string& file)
{
    const Texts sections = AskList(file, nullptr);
    const DWORD status = memory.LoadIniFile(file.c_str(), nullptr);
    EXPECT_EQ(sections.empty() ? ZO_INI_NOT_FOUND : IsCut(sections) ? ZO_INI_TRUNCATED : 0u, status);
    for (const std::string& section : sections) {
        const Texts keys = AskList(file, section.c_str());
        const bool isLoaded = status == 0 && section.size() < ZO_INI_SECTION_SIZE && !IsCut(keys);
        for (const std::string& key : keys) {
            CString value;
            EXPECT_EQ(isLoaded ? 0u : ZO_INI_UNKNOWN_SECTION, memory.GetIniValue(section.c_str(), key.c_str(), value));
            const bool isRead = isLoaded && key.size() < ZO_INI_KEY_SIZE;
            EXPECT_EQ(isRead ? Ask(file, section.c_str(), key.c_str(), ZO_INI_VALUE_SIZE - 1) : "", std::string(value));
        }
    }
    EXPECT_EQ(0u, memory.SaveIniFile(FALSE));
}

void WriteAged(const std::string& file, const std::string& bytes, unsigned age)
{
    const HANDLE handle = CreateFileA(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    const FILETIME time = {age * 1000, 0x01C00000};
    SetFileTime(handle, nullptr, nullptr, &time);
    CloseHandle(handle);
}

} // namespace

class ProfileMutation : public ProfileTest {};

TEST_F(ProfileMutation, ReadsWhatTheSystemReads)
{
    const std::string file = FilePath();
    ForEachMutation([&](unsigned number, Random& random) {
        WriteAged(file, MakeFile(random), number);
        // Of its own, for the guard heap watches over the end of a block.
        const auto profile = std::make_unique<CZoMemIniFile>();
        profile->SetFileName(file.c_str());
        CStringArray names;
        ExpectList(profile->EnumerateSections(&names), names, AskList(file, nullptr));
        const CString section = names.IsEmpty() ? CString("S") : names[random() % names.GetSize()];
        const Texts keys = AskList(file, section);
        const std::string key = keys.empty() ? "k" : Choose(random, keys);
        const bool fits = profile->SetSection(section) == ZO_INI_SUCCESS && key.size() < ZO_INI_KEY_SIZE;
        const unsigned check = random() % 20;
        if (check == 0)
            ExpectInMemory(*profile, file);
        else if (fits && check < 7)
            ExpectTokens(*profile, Ask(file, section, key.c_str()), key.c_str());
        else if (fits && check < 14)
            ExpectString(*profile, Ask(file, section, key.c_str()), key.c_str(), random);
        else if (fits)
            ExpectList(profile->EnumerateKeys(&names), names, keys);
        return fits;
    });
}
