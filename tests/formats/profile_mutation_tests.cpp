// Damaged profile files, and the bare system calls as the judge of what is read from them.
#include "profile_fixture.h"

#include <mbstring.h>

#include <sstream>

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
std::string Ask(const std::string& file, const char* section, const char* key)
{
    std::string text(ZO_INI_VALUE_SIZE, '\0');
    text.resize(GetPrivateProfileStringA(section, key, "", text.data(), ZO_INI_VALUE_SIZE, file.c_str()));
    return key != nullptr ? text.c_str() : text;
}

Texts AskList(const std::string& file, const char* section)
{
    Texts names;
    std::istringstream list(Ask(file, section, nullptr));
    for (std::string name; std::getline(list, name, '\0');) {
        if (!name.empty()) // a line that begins with "=" has no name
            names.push_back(name);
    }
    return names;
}

Texts Tokens(std::string text, const char* delimiters)
{
    const auto* set = reinterpret_cast<const unsigned char*>(delimiters);
    Texts tokens;
    for (auto* token = _mbstok(reinterpret_cast<unsigned char*>(text.data()), set); token != nullptr;
         token = _mbstok(nullptr, set))
        tokens.emplace_back(reinterpret_cast<char*>(token));
    return tokens;
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

} // namespace

class ProfileMutation : public ProfileTest {};

TEST_F(ProfileMutation, ReadsWhatTheSystemReads)
{
    const std::string file = FilePath();
    ForEachMutation([&](unsigned, Random& random) {
        Write(MakeFile(random));
        // Of its own, for the guard heap watches over the end of a block.
        const auto profile = std::make_unique<CZoIniFile>();
        profile->SetFileName(file.c_str());
        CStringArray names;
        const auto expectList = [&names](DWORD status, const Texts& expected) {
            const bool isCut = !expected.empty() && expected[0].size() == kCutNameLength;
            EXPECT_EQ(expected.empty() ? ZO_INI_NOT_FOUND : isCut ? ZO_INI_TRUNCATED : 0u, status);
            EXPECT_EQ(expected, ToVector(names));
        };
        expectList(profile->EnumerateSections(&names), AskList(file, nullptr));
        const CString section = names.IsEmpty() ? CString("S") : names[random() % names.GetSize()];
        const Texts keys = AskList(file, section);
        const std::string key = keys.empty() ? "k" : Choose(random, keys);
        if (profile->SetSection(section) != ZO_INI_SUCCESS || key.size() >= ZO_INI_KEY_SIZE)
            return false;
        if (!keys.empty()) // the system gives none of a section whose first line has no name
            expectList(profile->EnumerateKeys(&names), keys);
        const std::string stored = Ask(file, section, key.c_str());
        ExpectString(*profile, stored, key.c_str(), random);
        const DWORD status = profile->DoTokenString(key.c_str(), TRUE, "d,e", &names, ",;\x83\x5C");
        EXPECT_EQ(stored.empty() ? ZO_INI_NOT_FOUND : 0u, status);
        EXPECT_EQ(Tokens(stored.empty() ? "d,e" : stored, ",;\x83\x5C"), ToVector(names));
        return true;
    });
}

TEST_F(ProfileMutation, InMemoryIsWhatItsEntriesAre)
{
    const std::string path = FilePath();
    struct ByEntry : CZoMemIniFile { // a derived class reads and writes entry by entry
    };
    ForEachMutation([&](unsigned, Random& random) {
        const std::string file = MakeFile(random);
        Write(file);
        const auto memory = std::make_unique<CZoMemIniFile>();
        const auto judge = std::make_unique<ByEntry>();
        const DWORD status = judge->LoadIniFile(path.c_str(), nullptr);
        EXPECT_EQ(status, memory->LoadIniFile(path.c_str(), nullptr));
        EXPECT_EQ(MemoryView::Of(*judge), MemoryView::Of(*memory)) << file;
        if (status != 0)
            return false;
        EXPECT_EQ(0u, memory->SaveIniFile(FALSE));
        EXPECT_EQ(file, m_folder.Read("test.ini"));
        return true;
    });
}
