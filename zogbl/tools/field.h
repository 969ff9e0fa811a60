/// \file
/// Texts in the fields of records that files hold. A field that was read may lack its terminator.
#pragma once

#include <common/without_throwing.h>
#include <zogbl/tool_item.h>

#include "ground/bounded_text.h"

#include <afx.h>

#include <cstring>

/// Room for a field's text with a terminator, wherever the field ends.
template <size_t SIZE> class FieldText {
public:
    explicit FieldText(const char (&field)[SIZE])
    {
        std::memcpy(m_text, field, SIZE);
        m_text[SIZE] = '\0';
    }
    operator LPCSTR() const { return m_text; }
    LPSTR Get() { return m_text; }

private:
    char m_text[SIZE + 1];
};

/// \p text is empty when memory has run out.
template <size_t SIZE> void GetField(const char (&field)[SIZE], CString& text)
{
    if (!WithoutThrowing([&] { text = FieldText<SIZE>(field); }))
        text.Empty();
}

/// Two bytes of the field stay unused, and only what exceeds the field is reported: see CTlmItem.
/// \return 0 or ZO_TLM_TEXT_CUT
template <size_t SIZE> DWORD SetField(char (&field)[SIZE], const char* text)
{
    if (text == nullptr)
        return 0;
    char copy[SIZE] = {}; // the text may stand in the field itself
    CopyBounded(copy, SIZE - 1, text);
    const bool isCut = strnlen(text, SIZE) >= SIZE;
    std::memcpy(field, copy, SIZE);
    return isCut ? ZO_TLM_TEXT_CUT : 0;
}
