/// \file
/// The search of the sheet of options: over texts as a person sees them.
#pragma once

#include <afxcoll.h>

/// What somebody looks for: words that all occur, in any order. Case does not matter, nor do access keys.
class OptionsSearch {
public:
    explicit OptionsSearch(LPCSTR typed); ///< Throws CMemoryException*.

    bool IsEmpty() const { return m_words.GetSize() == 0; }
    /// \param texts made by ComparableTexts
    bool IsIn(const CString& texts) const;

private:
    CStringArray m_words;
};

/// The texts of a page in the present language, each with a line end behind it: those of its template, and if it has
/// a window, those that its texts and buttons have got meanwhile. Throws CMemoryException*.
CString ComparableTexts(UINT templateId, HWND page);
