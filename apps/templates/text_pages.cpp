#include "text_pages.h"

#include <common/double_byte.h>

#include <algorithm>

namespace {

constexpr int kTab = 8; // characters

/// The text with blanks up to the next stop in place of each tab.
CString WithoutTabs(const CString& text)
{
    CString plain;
    int column = 0;
    for (LPCSTR at = text; *at != '\0'; at = NextCharacter(at)) {
        const auto width = static_cast<int>(CharacterWidth(at));
        if (*at == '\t') {
            const int blanks = kTab - column % kTab;
            plain += CString(' ', blanks);
            column += blanks;
            continue;
        }
        plain += CString(at, width);
        column = *at == '\n' ? 0 : column + width;
    }
    return plain;
}

} // namespace

TextPages::TextPages(CDC& dc, const CString& text, int width, int height) : m_text(WithoutTabs(text))
{
    TEXTMETRIC metrics = {};
    dc.GetTextMetrics(&metrics);
    m_lineHeight = (std::max)(metrics.tmHeight + metrics.tmExternalLeading, 1L);
    m_linesPerPage = (std::max)(height / static_cast<int>(m_lineHeight), 1);
    for (int begin = 0; begin < m_text.GetLength();) {
        const int found = m_text.Find('\n', begin);
        const int next = found < 0 ? m_text.GetLength() : found + 1;
        int end = found < 0 ? next : found;
        if (end > begin && m_text[end - 1] == '\r')
            --end;
        Break(dc, begin, end, width);
        begin = next;
    }
}

void TextPages::Break(CDC& dc, int begin, int end, int width)
{
    const LPCSTR text = m_text;
    do {
        int fits = 0;
        SIZE extent = {};
        ::GetTextExtentExPoint(dc, text + begin, end - begin, width, &fits, nullptr, &extent);
        if (fits < end - begin && IsSecondHalf(text + begin, text + begin + fits))
            --fits;
        fits = (std::max)(fits, begin < end ? static_cast<int>(CharacterWidth(text + begin)) : 0);
        if (fits < end - begin) {
            for (int blank = fits; blank > 0; --blank) { // the last that fits, or that is just too much
                if (text[begin + blank] == ' ' && !IsSecondHalf(text + begin, text + begin + blank)) {
                    m_lines.push_back({begin, blank});
                    begin += blank + 1;
                    fits = -1;
                    break;
                }
            }
        }
        if (fits >= 0) {
            m_lines.push_back({begin, fits});
            begin += fits;
        }
    } while (begin < end);
}

int TextPages::GetCount() const
{
    const int lines = static_cast<int>(m_lines.size());
    return (std::max)((lines + m_linesPerPage - 1) / m_linesPerPage, 1);
}

void TextPages::Draw(CDC& dc, int page, int left, int top) const
{
    const size_t first = static_cast<size_t>(page) * static_cast<size_t>(m_linesPerPage);
    const size_t last = (std::min)(first + static_cast<size_t>(m_linesPerPage), m_lines.size());
    for (size_t i = first; i < last; ++i) {
        ::TextOut(dc, left, top, static_cast<LPCSTR>(m_text) + m_lines[i].begin, m_lines[i].length);
        top += m_lineHeight;
    }
}
