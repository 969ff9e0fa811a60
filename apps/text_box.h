/// \file
/// Texts of the Workbench and of the sample template libraries: their font, and a box of several lines.
#pragma once

#include <zogbl/gdi_data.h>

#include <afxwin.h>

#include <algorithm>

/// Makes a font like that of the dialogs.
inline BOOL CreateDialogFont(CFont& font)
{
    LOGFONT description;
    const HFONT shared = CZoGlobalGDIData::GetThinFont(); // where characters have two bytes, that of the dialogs
    if (::GetSystemMetrics(SM_DBCSENABLED) && ::GetObject(shared, sizeof description, &description) != 0)
        return font.CreateFontIndirect(&description);
    return font.CreatePointFont(80, "MS Shell Dlg");
}

/// What \p measure(dc) returns for a device context of \p window (null: the screen) with a font.
template <class MEASURE> auto WithFont(CWnd* window, CFont* font, MEASURE measure)
{
    CClientDC dc(window);
    CFont* before = dc.SelectObject(font);
    const auto result = measure(dc);
    dc.SelectObject(before);
    return result;
}

/// A box of several lines, with the scroll bars that its text needs.
class TextBox : public CEdit {
public:
    /// Creates the box, for reading only. \param edge its border; that of WS_BORDER would stay open where a scroll bar
    /// goes
    BOOL Create(CWnd* parent, UINT id, DWORD edge = WS_EX_CLIENTEDGE)
    {
        constexpr DWORD style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                                ES_READONLY | ES_AUTOHSCROLL | ES_AUTOVSCROLL;
        return CreateEx(edge, "EDIT", "", style, CRect(0, 0, 0, 0), parent, id);
    }

    /// Shows or hides the scroll bars. Called by itself, but for what a person types.
    void FitScrollBars()
    {
        if (m_isFitting)
            return;
        m_isFitting = true;
        const SIZE text = MeasureText();
        CRect place;
        GetWindowRect(&place);
        const int edge = ::GetSystemMetrics(SM_CXEDGE) + kMargin;
        const int width = place.Width() - 2 * edge, height = place.Height() - 2 * edge;
        bool isTall = text.cy > height;
        const bool isWide = text.cx > width - (isTall ? ::GetSystemMetrics(SM_CXVSCROLL) : 0);
        isTall = isTall || (isWide && text.cy > height - ::GetSystemMetrics(SM_CYHSCROLL));
        ShowScrollBar(SB_VERT, isTall);
        ShowScrollBar(SB_HORZ, isWide);
        RedrawWindow(nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE); // the border where a bar was
        m_isFitting = false;
    }

    /// Sets the one tab stop, \p width pixels from the left; columns behind it are not aligned.
    void SetTabStop(int width)
    {
        m_tabStop = width;
        // In quarters of a character, which is as wide as the alphabet's letters are on the average: a Japanese font's
        // own average is twice that.
        constexpr LPCSTR kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
        const int letters =
            (std::max)(static_cast<int>(WithOwnFont([&](HDC dc) { return Measure(dc, kLetters); }).cx), 1);
        auto stop = static_cast<UINT>(::MulDiv(width, 4 * ::lstrlen(kLetters), letters));
        SendMessage(EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&stop));
    }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        const LRESULT result = CEdit::WindowProc(message, wParam, lParam);
        if (message == WM_SETTEXT || message == WM_SIZE || message == WM_SETFONT)
            FitScrollBars();
        return result;
    }

private:
    static constexpr int kMargin = 2; // pixels

    template <class MEASURE> SIZE WithOwnFont(MEASURE measure) { return WithFont(this, GetFont(), measure); }

    SIZE Measure(HDC dc, const CString& line) const
    {
        const DWORD size = ::GetTabbedTextExtent(dc, line, line.GetLength(), m_tabStop != 0, &m_tabStop);
        return {LOWORD(size), HIWORD(size)};
    }

    SIZE MeasureText()
    {
        CString text;
        GetWindowText(text);
        return WithOwnFont([&](HDC dc) {
            SIZE all = {};
            for (int begin = 0; begin <= text.GetLength();) {
                const int end = text.Find('\n', begin);
                const int length = (end < 0 ? text.GetLength() : end) - begin;
                CString line = text.Mid(begin, length);
                line.TrimRight();
                all.cx = (std::max)(all.cx, Measure(dc, line).cx);
                all.cy += Measure(dc, "X").cy;
                begin += length + 1;
            }
            return all;
        });
    }

    bool m_isFitting = false;
    int m_tabStop = 0; // in pixels; 0: the usual ones
};
