/// \file
/// Painting the items of boxes: their colours and their font.
#pragma once

#include <afxwin.h>

struct ItemColors {
    COLORREF text;
    COLORREF background;
};

/// The system's present colours for an item, by its state. Ask for them at each drawing: then they are never out of
/// date. A disabled item is grey; if it is selected, it has the grey as background.
/// \param text, background numbers of the system's colours for an item that is neither selected nor disabled
ItemColors ColorsOf(const DRAWITEMSTRUCT& item, int text = COLOR_WINDOWTEXT, int background = COLOR_WINDOW);

/// Colours of a device context, until it ends.
class SelectedColors {
public:
    SelectedColors(HDC dc, const ItemColors& colors)
        : m_dc(dc), m_before{::SetTextColor(dc, colors.text), ::SetBkColor(dc, colors.background)}
    {
    }
    ~SelectedColors()
    {
        ::SetBkColor(m_dc, m_before.background);
        ::SetTextColor(m_dc, m_before.text);
    }
    SelectedColors(const SelectedColors&) = delete;
    SelectedColors& operator=(const SelectedColors&) = delete;

private:
    HDC m_dc;
    ItemColors m_before;
};

/// The device context of a window, with the window's font or another. If the system gives none, all sizes are 0.
class WindowFontDC : public CDC {
public:
    /// \param window null: the screen
    WindowFontDC(HWND window, HFONT font) : m_window(window)
    {
        SetOutputDC(::GetDC(window)); // not attached, which wants memory
        SetAttribDC(m_hDC);
        m_before = ::SelectObject(m_hDC, font);
    }
    explicit WindowFontDC(HWND window)
        : WindowFontDC(window, reinterpret_cast<HFONT>(::SendMessageA(window, WM_GETFONT, 0, 0)))
    {
    }
    ~WindowFontDC() override
    {
        ::SelectObject(m_hDC, m_before);
        ::ReleaseDC(m_window, m_hDC);
        ReleaseOutputDC();
    }
    WindowFontDC(const WindowFontDC&) = delete;
    WindowFontDC& operator=(const WindowFontDC&) = delete;

    TEXTMETRICA GetMetrics() const
    {
        TEXTMETRICA metrics = {};
        ::GetTextMetricsA(m_hDC, &metrics);
        return metrics;
    }
    /// In pixels, leading included.
    int GetLineHeight() const
    {
        const TEXTMETRICA metrics = GetMetrics();
        return static_cast<int>(metrics.tmHeight + metrics.tmExternalLeading);
    }

private:
    HWND m_window;
    HGDIOBJ m_before;
};
