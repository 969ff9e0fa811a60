/// \file
/// Texts of the Workbench and of the sample template libraries: their font, and a box of several lines.
#pragma once

#include <zogbl/gdi_data.h>

#include <afxwin.h>

#include <algorithm>

/// A font like that of the dialogs, for the caller to delete.
inline HFONT CreateDialogFont()
{
    constexpr int kPoints = 8;
    LOGFONT description = {};
    const HFONT shared = CZoGlobalGDIData::GetThinFont(); // where characters have two bytes, that of the dialogs
    if (::GetSystemMetrics(SM_DBCSENABLED) && ::GetObject(shared, sizeof description, &description) != 0)
        return ::CreateFontIndirect(&description);
    const HDC screen = ::GetDC(nullptr);
    description.lfHeight = -::MulDiv(kPoints, ::GetDeviceCaps(screen, LOGPIXELSY), 72);
    ::ReleaseDC(nullptr, screen);
    description.lfWeight = FW_NORMAL;
    description.lfCharSet = DEFAULT_CHARSET;
    ::lstrcpy(description.lfFaceName, "MS Shell Dlg");
    return ::CreateFontIndirect(&description);
}

/// A box of several lines, with the scroll bars that its text needs.
class TextBox : public CEdit {
public:
    static constexpr DWORD kStyle =
        WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_AUTOHSCROLL | ES_AUTOVSCROLL;

    /// Shows or hides the scroll bars. Called by itself, but for what a person types.
    void FitScrollBars()
    {
        if (m_isFitting)
            return;
        m_isFitting = true;
        const SIZE text = MeasureText();
        CRect place;
        ::GetWindowRect(m_hWnd, &place);
        const int edge = ::GetSystemMetrics(SM_CXEDGE) + kMargin;
        const int width = place.Width() - 2 * edge, height = place.Height() - 2 * edge;
        bool isTall = text.cy > height;
        const bool isWide = text.cx > width - (isTall ? ::GetSystemMetrics(SM_CXVSCROLL) : 0);
        isTall = isTall || (isWide && text.cy > height - ::GetSystemMetrics(SM_CYHSCROLL));
        ::ShowScrollBar(m_hWnd, SB_VERT, isTall);
        ::ShowScrollBar(m_hWnd, SB_HORZ, isWide);
        ::RedrawWindow(m_hWnd, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE); // the border where a bar was
        m_isFitting = false;
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

    SIZE MeasureText() const
    {
        CString text;
        GetWindowText(text);
        const HDC dc = ::GetDC(m_hWnd);
        const HGDIOBJ old = ::SelectObject(dc, reinterpret_cast<HFONT>(::SendMessage(m_hWnd, WM_GETFONT, 0, 0)));
        RECT area = {};
        ::DrawText(dc, text, -1, &area, DT_CALCRECT | DT_EXPANDTABS | DT_NOPREFIX | DT_EDITCONTROL);
        ::SelectObject(dc, old);
        ::ReleaseDC(m_hWnd, dc);
        return {area.right, area.bottom};
    }

    bool m_isFitting = false;
};
