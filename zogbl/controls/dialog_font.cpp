#include "dialog_font.h"

#include "../files/bounded_text.h"

#include <cstring>

namespace {

/// Reads the words of a template, never beyond its end.
class WordReader {
public:
    WordReader(const void* data, DWORD size) : m_next(static_cast<const WORD*>(data)), m_left(size / sizeof(WORD)) {}

    WORD Next()
    {
        if (m_left == 0)
            return 0;
        --m_left;
        return *m_next++;
    }
    void Skip(DWORD words)
    {
        while (words-- > 0)
            Next();
    }
    /// Skips a name or number: 0 for nothing, 0xFFFF and a number, or a text.
    void SkipName()
    {
        const WORD first = Next();
        if (first == 0xFFFF)
            Next();
        else if (first != 0)
            while (Next() != 0) {
            }
    }

private:
    const WORD* m_next;
    DWORD m_left;
};

constexpr WORD kExtendedSignature = 0xFFFF;

} // namespace

DialogFont::DialogFont(LPCSTR faceName, int pointSize) : points(pointSize) { CopyBounded(face, sizeof face, faceName); }

bool DialogFont::ReadFromTemplate(const void* dialogTemplate, DWORD size)
{
    WordReader reader(dialogTemplate, size);
    const WORD first = reader.Next();
    const WORD second = reader.Next();
    const bool extended = first == 1 && second == kExtendedSignature;
    DWORD style;
    if (extended) {
        reader.Skip(4); // help identifier, extended style
        style = reader.Next();
        style |= static_cast<DWORD>(reader.Next()) << 16;
    } else {
        style = first | static_cast<DWORD>(second) << 16;
        reader.Skip(2); // extended style
    }
    if ((style & DS_SETFONT) == 0)
        return false;
    reader.Skip(5);    // number of controls, x, y, width, height
    reader.SkipName(); // menu
    reader.SkipName(); // window class
    reader.SkipName(); // title
    const WORD pointSize = reader.Next();
    if (extended)
        reader.Skip(2); // weight; italic and character set
    wchar_t name[LF_FACESIZE] = {};
    for (size_t i = 0; i + 1 < LF_FACESIZE && (name[i] = static_cast<wchar_t>(reader.Next())) != 0; ++i) {
    }
    char converted[LF_FACESIZE * 2] = {};
    if (pointSize == 0 || name[0] == 0 ||
        WideCharToMultiByte(CP_ACP, 0, name, -1, converted, sizeof converted, nullptr, nullptr) == 0)
        return false;
    CopyBounded(face, sizeof face, converted);
    points = pointSize;
    return true;
}
