/// \file
/// A section of a profile file, read by one call.
#pragma once

#include <windows.h>

#include <memory>
#include <string_view>
#include <vector>

/// A line of a section. Its texts end with a zero.
struct ProfileLine {
    std::string_view name;  ///< without the blanks around it; may be empty
    std::string_view value; ///< as an entry is read: without the blanks and the quotation marks around it
    bool hasValue;          ///< whether there is a "="
    bool hasBlanks;         ///< behind the value: a zero in the file may have cut it there, and an entry keeps them
    bool isFirst;           ///< certainly no line before it has this name, whatever the case
};

/// White space of profile files.
constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// The lines of a section, without comments, as the system's section call lists them. An object that reads several
/// sections one after the other allocates once.
class ProfileLines {
public:
    /// Replaces what was read before. Throws CMemoryException*: then read again before anything is asked.
    /// \return whether the lines tell the entries: all were read, and no name has a blank at its end, where the system
    /// leaves none; a zero in the file does. If not, those that were read are here
    bool Read(LPCSTR section, LPCSTR fileName);

    const std::vector<ProfileLine>& Get() const { return m_lines; }
    /// The length of all lines, in bytes.
    size_t GetLength() const { return m_length; }
    /// How much room the names of the entries take in a list of names, in bytes.
    size_t GetNamesSize() const { return m_namesSize; }
    /// The entry with exactly this name, looked for from entry \p hint on, then before it; null if there is none.
    /// \p hint is set to the place behind it.
    const ProfileLine* Find(std::string_view name, size_t& hint) const;

private:
    LPSTR Add(LPSTR line);
    void FindFirst();

    std::unique_ptr<char[]> m_text;
    DWORD m_size = 0; ///< of the text
    std::vector<ProfileLine> m_lines;
    std::vector<DWORD> m_seen; ///< hashes of names
    size_t m_length = 0;
    size_t m_namesSize = 0;
    bool m_haveNamesBlanks = false;
};
