// Damaged profile files, and the bare system calls as the judge of what is read from them.
#include "profile_fixture.h"

#include "support/guard_heap.h"

#include <mbstring.h>

#include <cstring>
#include <memory>
#include <random>

namespace {

using Texts = std::vector<std::string>;
using Random = std::mt19937;

// Each environment has cases of its own: 100,000 in all five of an architecture.
constexpr unsigned kCases = 20000;
constexpr unsigned kCasesOnGuardHeap = 2000;
constexpr size_t kLongLine = 10000;
constexpr size_t kCutNameLength = 4094; // the one that is taken for a list that was cut

template <class CHOICES> const auto& Choose(Random& random, const CHOICES& choices)
{
    return choices[random() % std::size(choices)];
}

std::string MakeFile(Random& random)
{
    const std::string longText(kLongLine, 'x');
    static const Texts files = {
        "",
        "[S]\r\nName=value\r\nNumber=12\r\nSwitch=yes\r\nPlace= 1, 2, 3, 4\r\n[T]\r\nName=\"quoted \"\r\nHex=0x1F\r\n",
        "; comment\r\n[S]\r\nk=1\r\n[s]\r\nk=2\r\n[S]\r\nk=3\r\nK=4\r\n\r\n[ S ]\r\n k = 5 \r\nlone\r\n=6\r\n",
        "[" + longText + "]\r\nk=1\r\n[S]\r\n" + longText + "=1\r\nk=" + longText,
        "[[[]]]\r\n===\r\n[=]\r\n;;;\r\n[]\r\n=\r\n,:;/|\\ ,:;/|\\\r\nk=,:;/|\\\r\n[\r\n]\r\n\"\"\r\n",
        "[S]\r\nk=\x83\x5C,\x83\x7C;\x81\x40z\r\n\x83\x5D=1\r\n[\x83\x5B]\r\n\x83\x5C=\x83\r\n",
    };
    static constexpr char bytes[] = "\0\x1A\xFF\x83\x5C\xEF\xBB\xBF[]=;\"' \t\r\n,0x";
    static const Texts pieces = {
        "\r\n[S]\r\n", "\r\nk=", "\r\n[T]\r\nk=1\r\n", std::string(3, '\0'),        "0xFFFFFFFFF",
        "-1,2:3",      "\x1A",   "\xFF\xFE",           std::string(kLongLine, ','), longText};
    std::string file = Choose(random, files);
    for (unsigned changes = 1 + random() % 6; changes > 0; --changes) {
        const size_t at = random() % (file.size() + 1);
        const size_t length = random() % 20;
        switch (random() % 6) {
        case 0:
            if (at < file.size())
                file[at] = static_cast<char>(random());
            break;
        case 1:
            if (at < file.size())
                file[at] = Choose(random, bytes);
            break;
        case 2:
            file.insert(at, 1, Choose(random, bytes));
            break;
        case 3:
            file.insert(at, file.size() < 3 * kLongLine || random() % 4 == 0 ? Choose(random, pieces) : "\r\n");
            break;
        case 4:
            file.erase(at, length);
            break;
        default: // the last line without its end
            file.erase(file.size() - (std::min)(length, file.size()));
            break;
        }
    }
    return file;
}

/// What the system says, without the class; null names mean lists.
std::string Ask(const char* section, const char* key, size_t size, const std::string& file)
{
    std::string text(size, '\0');
    const DWORD length =
        GetPrivateProfileStringA(section, key, "", text.data(), static_cast<DWORD>(size), file.c_str());
    text.resize((std::min)(size_t{length}, size - 1));
    return key != nullptr ? text.c_str() : text;
}

Texts Names(const std::string& list)
{
    Texts names;
    for (size_t at = 0; at < list.size() && list[at] != '\0'; at += names.back().size() + 1)
        names.emplace_back(list.c_str() + at);
    return names;
}

Texts Tokens(std::string text, const char* delimiters)
{
    const auto bytes = [](const char* p) { return reinterpret_cast<const unsigned char*>(p); };
    Texts tokens;
    for (auto* token = _mbstok(reinterpret_cast<unsigned char*>(text.data()), bytes(delimiters)); token != nullptr;
         token = _mbstok(nullptr, bytes(delimiters)))
        tokens.emplace_back(reinterpret_cast<char*>(token));
    return tokens;
}

class ProfileMutation : public ProfileTest {
protected:
    void CheckList(const char* section, CStringArray& names)
    {
        const std::string list = Ask(section, nullptr, ZO_INI_VALUE_SIZE, FilePath());
        const Texts expected = Names(list);
        const DWORD status = section == nullptr ? m_memory->EnumerateSections(&names) : m_memory->EnumerateKeys(&names);
        ASSERT_EQ(expected, ToVector(names));
        const bool isCut = !expected.empty() && expected[0].size() == kCutNameLength;
        ASSERT_EQ(expected.empty() ? ZO_INI_NOT_FOUND : isCut ? ZO_INI_TRUNCATED : ZO_INI_SUCCESS, status);
    }
    void CheckString(const char* section, const char* key, Random& random)
    {
        const std::string stored = Ask(section, key, ZO_INI_VALUE_SIZE, FilePath());
        const std::string expected = stored.empty() ? "default" : stored;
        const size_t size = random() % 3 == 0 ? random() % 20 : expected.size() - 1 + random() % 3;
        zo_test::SentinelBuffer buffer(size);
        const DWORD status = m_memory->DoString(key, TRUE, "default", buffer.Data(), static_cast<DWORD>(size));
        buffer.ExpectGuardsIntact();
        ASSERT_EQ(size < expected.size() ? ZO_INI_TRUNCATED : stored.empty() ? ZO_INI_NOT_FOUND : 0u, status);
        if (size > 0) {
            const std::string text = buffer.Text();
            ASSERT_EQ(expected.substr(0, text.size()), text);
            ASSERT_GE(text.size() + 2, (std::min)(expected.size() + 1, size)) << "a character is missing";
        }
    }
    void CheckType(const char* section, const char* key, unsigned type)
    {
        const auto ask = [&](size_t size) { return Ask(section, key, size, FilePath()); };
        const auto number = [](const std::string& text) {
            return static_cast<LONG>(_strtoi64(text.c_str(), nullptr, 10));
        };
        if (type == 0) {
            const std::string text = ask(40);
            int value = 0;
            m_memory->DoInteger(key, TRUE, 77, &value);
            ASSERT_EQ(text.empty() ? 77 : number(text.substr(0, 18)), value) << text;
        } else if (type == 1) {
            const std::string text = ask(40);
            const RECT defaults = {-1, -2, -3, -4};
            std::vector<LONG> expected = {-1, -2, -3, -4};
            const Texts tokens = Tokens(text, " ,:;/|\\");
            for (size_t i = 0; i < (std::min)(tokens.size(), expected.size()); ++i)
                expected[i] = number(tokens[i]);
            RECT value = {};
            m_memory->ZoIniFileRectangle(key, TRUE, &defaults, &value);
            ASSERT_EQ(expected, (std::vector<LONG>{value.left, value.top, value.right, value.bottom})) << text;
        } else if (type == 2) {
            const std::string text = ask(ZO_INI_VALUE_SIZE);
            CStringArray tokens;
            m_memory->DoTokenString(key, TRUE, "d,e", &tokens, ",;\x83\x5C");
            ASSERT_EQ(Tokens(text.empty() ? "d,e" : text, ",;\x83\x5C"), ToVector(tokens)) << text;
        } else {
            ASSERT_EQ(!ask(ZO_INI_VALUE_SIZE).empty(), m_memory->DoesEntryExist(key) != FALSE);
        }
    }
    void CheckMemory()
    {
        CStringArray sections;
        const DWORD status = m_memory->EnumerateSections(&sections);
        ASSERT_EQ(status, m_memory->LoadIniFile(FilePath().c_str(), nullptr));
        for (const std::string& section : ToVector(sections)) {
            const Texts keys = Names(Ask(section.c_str(), nullptr, ZO_INI_VALUE_SIZE, FilePath()));
            const bool loaded = status == 0 && section.size() < ZO_INI_SECTION_SIZE && !keys.empty() &&
                                keys[0].size() != kCutNameLength;
            for (const std::string& key : keys) {
                CString value;
                ASSERT_EQ(loaded ? ZO_INI_SUCCESS : ZO_INI_UNKNOWN_SECTION,
                          m_memory->GetIniValue(section.c_str(), key.c_str(), value));
                const bool read = loaded && key.size() < ZO_INI_KEY_SIZE;
                ASSERT_EQ(read ? Ask(section.c_str(), key.c_str(), ZO_INI_VALUE_SIZE - 1, FilePath()) : "",
                          std::string(value));
            }
        }
        ASSERT_EQ(0u, m_memory->SaveIniFile(FALSE));
    }
    void CheckFile(Random& random)
    {
        m_memory = std::make_unique<CZoMemIniFile>(); // at the end of a guarded block on the guard heap
        m_memory->SetFileName(FilePath().c_str());
        CStringArray sections, keys;
        ASSERT_NO_FATAL_FAILURE(CheckList(nullptr, sections));
        const std::string section = sections.IsEmpty() ? "S" : LPCSTR(sections[random() % sections.GetSize()]);
        if (m_memory->SetSection(section.c_str()) != 0) {
            ASSERT_GE(section.size(), ZO_INI_SECTION_SIZE);
            return;
        }
        ASSERT_NO_FATAL_FAILURE(CheckList(section.c_str(), keys));
        const std::string key = keys.IsEmpty() ? "k" : LPCSTR(keys[random() % keys.GetSize()]);
        if (key.size() < ZO_INI_KEY_SIZE) {
            ASSERT_NO_FATAL_FAILURE(CheckString(section.c_str(), key.c_str(), random));
            ASSERT_NO_FATAL_FAILURE(CheckType(section.c_str(), key.c_str(), random() % 4));
        }
        if (random() % 20 == 0)
            CheckMemory();
    }

    std::unique_ptr<CZoMemIniFile> m_memory;
};

} // namespace

TEST_F(ProfileMutation, ReadsWhatTheSystemReads)
{
    const bool onGuardHeap = zo_test::IsGuardHeapInstalled();
    const unsigned cases = onGuardHeap ? kCasesOnGuardHeap : kCases;
    const std::string environment = zo_test::EnvironmentName();
    for (unsigned i = 0; i < cases; ++i) {
        std::string seed = environment + (onGuardHeap ? ".guard" : "") + std::to_string(i);
        std::seed_seq sequence(seed.begin(), seed.end());
        Random random(sequence);
        Write(MakeFile(random));
        CheckFile(random);
        ASSERT_FALSE(HasFailure()) << "case " << seed;
    }
}
