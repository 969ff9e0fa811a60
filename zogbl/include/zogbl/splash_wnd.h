/// \file
/// The picture that a program shows while it starts.
#pragma once

#include <zogbl/bitmap_window.h>

/// A picture in the middle of the screen, and below it a line on what the program is at. It is painted before Show and
/// SetText return, so the program need not look after messages while it starts. It takes no focus, is in no task bar,
/// and stays below whatever is opened later. It goes when the program says so, after a time, or with a click; it may go
/// at any time without harm. Nothing is thrown.
///
///     CZoSplashWnd splash;                       // in InitInstance
///     splash.Show(IDB_SPLASH, "Loading the tables...");
///     LoadTables();
///     splash.SetText("Opening the window...");
///     ...
///     splash.Close();                            // at the latest, its destructor
class ZOGBL_API CZoSplashWnd : public CWnd {
public:
    CZoSplashWnd();
    ~CZoSplashWnd() override; ///< closes it

    /// \param bitmapId resource found through the resource chain; larger on screens of high resolution
    /// \param text shown as it is; what has no room ends in dots. Null: no line
    /// \param milliseconds it goes by itself after this time, if the thread then looks after messages; 0: it stays
    /// \return FALSE: it is shown already, or cannot be; the program may go on without it
    BOOL Show(UINT bitmapId, LPCSTR text = nullptr, UINT milliseconds = 0);
    /// Shows another text, or nothing if it is gone already. If Show was told of no line, there is none.
    void SetText(LPCSTR text);
    void Close();
    BOOL IsShown() const { return m_hWnd != nullptr; }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    BOOL Make(UINT bitmapId, LPCSTR text);
    void Paint();

    CZoBitmapWnd m_picture;
    CRect m_line; // empty: none
    CString m_csText;
};
