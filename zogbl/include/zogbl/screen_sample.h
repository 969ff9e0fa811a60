/// \file
/// A screen in small, to choose colours by.
#pragma once

#include <zogbl/control.h>

#include <afxtempl.h>

/// What ZON_SAMPLE_CHOSEN comes with.
struct ZoSampleNotification {
    NMHDR header;
    int area; ///< from 0
};

/// The user has chosen another area, with a ZoSampleNotification. Nothing is sent for the same one or for ChooseArea.
constexpr UINT ZON_SAMPLE_CHOSEN = ZON_FIRST - 100;

/// Shows areas one below the other, each with its text in its own colours, and at the right how well they can be told
/// apart. The user chooses one by a click or by keys, as one of several radio buttons; the dialog then shows that one's
/// colours in its buttons:
///
///     m_sample.AddArea("Received", "CONNECT 33600\nWelcome", RGB(255, 255, 0), RGB(0, 0, 128));
///     m_sample.AddArea("Sent", "ATDT5551234", RGB(255, 255, 255), RGB(0, 0, 0));
///     ...
///     ON_NOTIFY(ZON_SAMPLE_CHOSEN, IDC_SAMPLE, OnArea)                   // a ZoSampleNotification
///     m_sample.SetColors(m_sample.GetChosenArea(), m_ink.GetShownColor(), m_paper.GetShownColor());
///
/// The areas have the colours given, the frame those of the system. If there is no room for all lines, each area gets
/// its share; room that is left belongs to the last.
class ZOGBL_API CZoScreenSample : public CZoControl {
    DECLARE_DYNAMIC(CZoScreenSample)
public:
    /// Styles, beside those of windows.
    enum Style : DWORD { kNoContrast = 0x01 }; ///< the contrast is not shown
    enum Command { kPrevious = 1, kNext, kFirst, kLast };
    static constexpr ZoKey kKeys[] = {{VK_UP, ZoKey::kNone, kPrevious},   {VK_DOWN, ZoKey::kNone, kNext},
                                      {VK_LEFT, ZoKey::kNone, kPrevious}, {VK_RIGHT, ZoKey::kNone, kNext},
                                      {VK_HOME, ZoKey::kNone, kFirst},    {VK_END, ZoKey::kNone, kLast}};

    static constexpr int kMostAreas = 64;
    static constexpr int kLongestText = 0xFFFF; ///< bytes

    /// Adds an area below the others. The first one is chosen.
    /// \param name for screen readers \param text what is shown, lines with "\n" or "\r\n" between. Both are copied
    /// \param ink, paper of the text and behind it: RGB(...)
    /// \return its number, from 0; -1, changing nothing, if an argument makes no sense, there are kMostAreas, or
    /// memory has run out
    int AddArea(LPCSTR name, LPCSTR text, COLORREF ink, COLORREF paper);
    void RemoveAreas();
    int GetAreaCount() const { return static_cast<int>(m_areas.GetSize()); }

    // They return FALSE, changing nothing, if there is no such area, an argument makes no sense, or memory has run out.

    BOOL SetColors(int area, COLORREF ink, COLORREF paper);
    BOOL GetColors(int area, COLORREF& ink, COLORREF& paper) const;
    BOOL SetText(int area, LPCSTR text);
    BOOL ChooseArea(int area);
    int GetChosenArea() const { return m_nChosen; } ///< -1: there are no areas

    /// The font of the areas; the frame has that of the control. It stays the caller's, and must live as long as it is
    /// used. \param font null: the control's
    void SetSampleFont(HFONT font);

    /// How well two colours can be told apart: the ratio of their luminances (WCAG 2) in hundredths, 100 to 2100. Text
    /// needs 450 to be read well. It is cut off, so 449 is less than 4.5.
    static int GetContrast(COLORREF ink, COLORREF paper);

    // Parts: the areas. Roles: a list of radio buttons. The value has the colours and the contrast, the description the
    // text.
    int GetPartCount() const override { return GetAreaCount(); }
    BOOL DescribePart(int part, ZoPart& description) const override;
    int FindPart(CPoint point) const override;
    int GetFocusedPart() const override { return m_nChosen + 1; }
    BOOL DoPartAction(int part) override; ///< chooses it

protected:
    void OnDraw(CDC* dc, const CRect& dirty) override;
    void OnLayout() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Area {
        CString name;
        CString text;
        COLORREF ink;
        COLORREF paper;
        int lines;
    };

    HFONT GetSampleFont() const { return m_hSampleFont != nullptr ? m_hSampleFont : GetFontHandle(); }
    BOOL IsArea(int area) const { return area >= 0 && area < GetAreaCount(); }
    CRect GetAreaRow(int area) const;
    CString GetContrastText(const Area& area) const;
    void InvalidateArea(int area);
    void SetChosen(int area);
    BOOL ChooseByUser(int area);
    void DrawSamples(CDC* dc, const CRect& dirty);
    void DrawFrame(CDC* dc, const CRect& dirty);

    CArray<Area, const Area&> m_areas;
    int m_nChosen = -1;
    HFONT m_hSampleFont = nullptr; // null: the control's
    // Of the present layout
    CRect m_screen; // without the frame
    int m_nWidth = 0;
    int m_nMargin = 0;
    int m_nButton = 0;
    int m_nLineHeight = 1; // of the sample
    int m_nTextHeight = 1; // of the contrast
    char m_szDecimal[8] = ".";
};
