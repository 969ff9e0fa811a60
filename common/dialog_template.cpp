#include "dialog_template.h"

#include <algorithm>

namespace {

constexpr WORD kExtendedSignature = 0xFFFF;
constexpr WORD kNumberFollows = 0xFFFF;

static_assert(sizeof(WCHAR) == sizeof(WORD));

} // namespace

DialogTemplateReader::DialogTemplateReader(const void* dialogTemplate, DWORD size)
    : m_words(static_cast<const WORD*>(dialogTemplate)), m_size(size / sizeof(WORD))
{
    const WORD first = ReadWord();
    const WORD second = ReadWord();
    m_extended = first == 1 && second == kExtendedSignature;
    DWORD style;
    if (m_extended) {
        SkipWords(4); // help identifier, extended style
        style = ReadWord();
        style |= static_cast<DWORD>(ReadWord()) << 16;
    } else {
        style = first | static_cast<DWORD>(second) << 16;
        SkipWords(2); // extended style
    }
    m_itemsLeft = ReadWord();
    SkipWords(4); // x, y, width, height
    ReadText();   // menu
    ReadText();   // window class
    m_title = ReadText();
    if ((style & DS_SETFONT) == 0)
        return;
    m_fontPoints = ReadWord();
    if (m_extended)
        SkipWords(2); // weight; italic and character set
    m_fontFace = ReadText();
}

bool DialogTemplateReader::Next(Item& item)
{
    if (m_itemsLeft == 0 || m_at >= m_size)
        return false;
    --m_itemsLeft;
    m_at += m_at % 2; // controls begin at double words
    if (m_extended) {
        SkipWords(10); // help identifier, extended style, style, x, y, width, height
        item.id = ReadWord();
        ReadWord(); // of the identifier's 32 bits only these count
    } else {
        SkipWords(8); // style, extended style, x, y, width, height
        item.id = ReadWord();
    }
    item.className = ReadText();
    item.text = ReadText();
    const DWORD dataSize = ReadWord(); // bytes; in a plain template with these two
    SkipWords((m_extended || dataSize < sizeof(WORD) ? dataSize + 1 : dataSize - 1) / sizeof(WORD));
    return true;
}

WORD DialogTemplateReader::ReadWord() { return m_at < m_size ? m_words[m_at++] : WORD{0}; }

void DialogTemplateReader::SkipWords(DWORD count) { m_at += (std::min)(count, m_size - m_at); }

LPCWSTR DialogTemplateReader::ReadText()
{
    const DWORD start = m_at;
    const WORD first = ReadWord();
    if (first == kNumberFollows)
        ReadWord();
    if (first == kNumberFollows || first == 0)
        return L"";
    while (m_at < m_size) {
        if (ReadWord() == 0)
            return reinterpret_cast<LPCWSTR>(m_words + start);
    }
    return L"";
}
