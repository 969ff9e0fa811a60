/// \file
/// Reads a dialog template, plain or extended, in memory.
#pragma once

#include <windows.h>

/// Goes through a template of \p size bytes, which must outlive the reader. Whatever the template claims, nothing
/// behind its end is read: it reads as zero. Texts point into the template.
class DialogTemplateReader {
public:
    DialogTemplateReader(const void* dialogTemplate, DWORD size);

    LPCWSTR GetTitle() const { return m_title; }
    LPCWSTR GetFontFace() const { return m_fontFace; } ///< empty when the template names no font
    WORD GetFontPoints() const { return m_fontPoints; }

    struct Item {
        WORD id;           ///< 0xFFFF for a control without one
        LPCWSTR className; ///< empty for the six classes that have numbers
        LPCWSTR text;      ///< empty also for a picture, which is named by a number
    };
    /// Takes the next control. \return false behind the last one.
    bool Next(Item& item);

private:
    WORD ReadWord();
    void SkipWords(DWORD count);
    /// A text; empty for the number of a resource, and for a text that does not end.
    LPCWSTR ReadText();

    const WORD* m_words;
    DWORD m_size; // in words
    DWORD m_at = 0;
    bool m_extended = false;
    WORD m_itemsLeft = 0;
    LPCWSTR m_title = L"";
    LPCWSTR m_fontFace = L"";
    WORD m_fontPoints = 0;
};
