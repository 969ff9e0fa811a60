#include "profile_lines.h"

#include <zogbl/ini_file.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <functional>

namespace {

constexpr DWORD kFirstSize = 0x4000;
constexpr DWORD kMostBytes = 0x100000;

/// Takes the blanks off both ends of a text, and puts a zero behind what is left.
std::string_view Trim(LPSTR text, LPSTR end)
{
    while (text < end && IsBlank(*text))
        ++text;
    while (text < end && IsBlank(end[-1]))
        --end;
    *end = '\0';
    return {text, static_cast<size_t>(end - text)};
}

/// The first "=" of a line, or its end. \p end where the lines end, with a zero there at the latest
LPSTR FindEquals(LPSTR line, LPCSTR end)
{
    constexpr size_t kEach = ~size_t{0} / 0xFF; // 1 in each byte
    const auto hasZero = [](size_t characters) { return (characters - kEach) & ~characters & (kEach << 7); };
    for (size_t characters; static_cast<size_t>(end - line) >= sizeof characters; line += sizeof characters) {
        std::memcpy(&characters, line, sizeof characters);
        if ((hasZero(characters) | hasZero(characters ^ (kEach * '='))) != 0)
            break;
    }
    while (*line != '\0' && *line != '=') // "=" is never the second half of a character
        ++line;
    return line;
}

/// Takes the quotation marks off as a read of the entry does: a pair of the same kind, once.
std::string_view Unquote(std::string_view value)
{
    if (value.size() < 2 || (value.front() != '"' && value.front() != '\'') || value.back() != value.front())
        return value;
    const_cast<char&>(value.back()) = '\0'; // in the text of the section, which is ours
    return value.substr(1, value.size() - 2);
}

/// A number that names have in common if they differ in case alone, and other names seldom.
DWORD HashOf(std::string_view name)
{
    constexpr DWORD kLowerCase = 0x20202020; // the bit by which letters differ
    constexpr DWORD kNotAscii = 0x80808080;
    constexpr DWORD kFactor = 0x9E3779B1;
    constexpr size_t kWidth = sizeof(DWORD);
    DWORD hashes[2] = {static_cast<DWORD>(name.size()), 0}; // so that products need not wait for one another
    DWORD allBits = 0;
    const auto add = [&](DWORD& hash, DWORD characters) {
        allBits |= characters;
        hash = (hash ^ (characters | kLowerCase)) * kFactor;
    };
    const auto at = [name](size_t place) {
        DWORD characters;
        std::memcpy(&characters, name.data() + place, kWidth);
        return characters;
    };
    size_t place = 0;
    for (; place + 2 * kWidth <= name.size(); place += 2 * kWidth) {
        add(hashes[0], at(place));
        add(hashes[1], at(place + kWidth));
    }
    for (; place < name.size(); ++place)
        add(hashes[0], static_cast<BYTE>(name[place]));
    if ((allBits & kNotAscii) != 0 && name.size() < ZO_INI_KEY_SIZE) {
        char lower[ZO_INI_KEY_SIZE] = {};
        std::memcpy(lower, name.data(), name.size());
        CharLowerBuffA(lower, static_cast<DWORD>(name.size())); // the system knows the case of its code page
        hashes[0] = static_cast<DWORD>(std::hash<std::string_view>()({lower, name.size()}));
    }
    const DWORD hash = hashes[0] ^ std::rotl(hashes[1], 15);
    return hash ^ (hash >> 16);
}

} // namespace

bool ProfileLines::Read(LPCSTR section, LPCSTR fileName)
{
    m_lines.clear();
    m_namesSize = 0;
    m_haveNamesBlanks = false;
    DWORD length;
    bool isWhole;
    for (;;) {
        if (m_text == nullptr) {
            m_text.reset(new char[(std::max)(m_size, kFirstSize)]);
            m_size = (std::max)(m_size, kFirstSize);
        }
        length = GetPrivateProfileSectionA(section, m_text.get(), m_size, fileName);
        isWhole = length < m_size - 2;
        if (isWhole || m_size >= kMostBytes)
            break;
        m_text.reset();
        m_size *= 2;
    }
    LPSTR line = m_text.get();
    m_length = (std::min)(length, m_size - 2);
    const LPCSTR end = line + m_length;
    m_text[m_size - 1] = '\0';
    while (line < end)
        line = Add(line) + 1;
    FindFirst();
    return isWhole && !m_haveNamesBlanks;
}

/// \return the line's end
LPSTR ProfileLines::Add(LPSTR line)
{
    const LPSTR equals = FindEquals(line, m_text.get() + m_length);
    ProfileLine added = {};
    added.hasValue = *equals == '=';
    const LPSTR end = added.hasValue ? equals + 1 + std::strlen(equals + 1) : equals;
    if (added.hasValue) {
        added.hasBlanks = end > equals + 1 && IsBlank(end[-1]);
        added.value = Unquote(Trim(equals + 1, end));
    }
    m_haveNamesBlanks |= equals > line && (IsBlank(*line) || IsBlank(equals[-1]));
    added.name = Trim(line, equals);
    if (added.hasValue && !added.name.empty())
        m_namesSize += added.name.size() + 1;
    m_lines.push_back(added);
    return end;
}

/// Finds out which lines are the first of their names.
void ProfileLines::FindFirst()
{
    m_seen.assign(std::bit_ceil(2 * m_lines.size() + 1), 0);
    const size_t mask = m_seen.size() - 1;
    for (ProfileLine& line : m_lines) {
        const DWORD hash = HashOf(line.name) | 1; // 0 is a free place
        size_t place = (hash >> 1) & mask;
        while (m_seen[place] != 0 && m_seen[place] != hash)
            place = (place + 1) & mask;
        line.isFirst = m_seen[place] == 0 && line.name.size() < ZO_INI_KEY_SIZE;
        m_seen[place] = hash;
    }
}

const ProfileLine* ProfileLines::Find(std::string_view name, size_t& hint) const
{
    for (size_t i = 0; i < m_lines.size(); ++i) {
        const size_t at = (hint + i) % m_lines.size();
        if (m_lines[at].hasValue && m_lines[at].name == name) {
            hint = at + 1;
            return &m_lines[at];
        }
    }
    return nullptr;
}
