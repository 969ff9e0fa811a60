/// \file
/// A text cut into the lines and pages of a device.
#pragma once

#include <afxwin.h>

#include <vector>

class TextPages {
public:
    /// Breaks \p text at its line ends, and what is wider than a line behind blanks, else where it has to be.
    /// \param dc has the font \param width, height of the text on a page, in its units; at least one line stands there
    /// \param text must live as long as this
    TextPages(CDC& dc, const CString& text, int width, int height);

    int GetCount() const; ///< at least 1
    /// \param page from 0 \param left, top where its text begins
    void Draw(CDC& dc, int page, int left, int top) const;

private:
    struct Line {
        int begin, length; // of the text
    };

    void Break(CDC& dc, int begin, int end, int width);

    CString m_text; // with blanks for tabs
    std::vector<Line> m_lines;
    int m_lineHeight;
    int m_linesPerPage;
};
