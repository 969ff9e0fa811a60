/// \file
/// Choosing a colour from a grid.
#pragma once

#include <zogbl/control.h>
#include <zogbl/type_ahead.h>

/// A colour that has a name.
struct ZoNamedColor {
    COLORREF color; ///< RGB(...)
    UINT nameId;    ///< of a string that ZoGblLoadString finds; 0: only its numbers
};

/// What ZON_COLOR_CHANGED comes with.
struct ZoColorNotification {
    NMHDR header;
    COLORREF color; ///< CLR_DEFAULT: automatic
};

/// The user has chosen another colour. Sent by CZoColorChooser and CZoColorButton, with a ZoColorNotification. The
/// control has that colour already. Nothing is sent for the same colour or for SetColor.
constexpr UINT ZON_COLOR_CHANGED = ZON_FIRST - 80;

/// The name of a colour in the user's language: "Dark red" for one of the 32 of the grid, "Automatic" for CLR_DEFAULT,
/// "12, 34, 56" for others. Throws CMemoryException*
ZOGBL_API CString ZoGetColorName(COLORREF color);
/// The same with its red, green and blue: "Dark red (128, 0, 0)". Throws CMemoryException*
ZOGBL_API CString ZoGetColorText(COLORREF color);

/// A grid of colours. Each has a name, which the last line shows and screen readers speak. First comes "Automatic",
/// then the named colours, then the user's custom colours, then "More...", which opens the system's dialog.
///
///     m_chooser.Create(WS_VISIBLE | WS_TABSTOP | CZoColorChooser::kMore, area, this, IDC_COLOR);
///     m_chooser.SetColor(RGB(255, 0, 0));
///     ...
///     ON_NOTIFY(ZON_COLOR_CHANGED, IDC_COLOR, OnColor)     // a ZoColorNotification
///
/// The custom colours are those of the system's dialog: all of its 16 that are not white. They are kept as the text
/// "CustomColors" of the key "Colors" below the user's (CZoVersionResource::GetCurrentUserKey of the program), also if
/// the dialog is cancelled. If the program has no such key, they last until it ends. A chooser reads them when its
/// window is made.
class ZOGBL_API CZoColorChooser : public CZoControl {
    DECLARE_DYNAMIC(CZoColorChooser)
public:
    /// Styles, beside those of windows.
    enum Style : DWORD {
        kAutomatic = 0x01, ///< has "Automatic"
        kMore = 0x02,      ///< has "More..."
        kDropDown = 0x04   ///< for windows that drop down: the focus is always shown, and follows the mouse
    };
    enum Command { kLeft = 1, kRight, kUp, kDown, kFirst, kLast, kChoose };
    /// Letters go to the next colour whose name begins with them. Where a dialog has a default button, Enter presses
    /// that one.
    static constexpr ZoKey kKeys[] = {{VK_LEFT, ZoKey::kNone, kLeft},    {VK_RIGHT, ZoKey::kNone, kRight},
                                      {VK_UP, ZoKey::kNone, kUp},        {VK_DOWN, ZoKey::kNone, kDown},
                                      {VK_HOME, ZoKey::kNone, kFirst},   {VK_END, ZoKey::kNone, kLast},
                                      {VK_SPACE, ZoKey::kNone, kChoose}, {VK_RETURN, ZoKey::kNone, kChoose}};

    CZoColorChooser();

    /// Black at the beginning. It need not be in the grid: then it counts as chosen by "More...".
    /// \param color RGB(...), or CLR_DEFAULT for automatic
    /// \return FALSE, changing nothing, for any other number
    BOOL SetColor(COLORREF color);
    COLORREF GetColor() const { return m_color; }
    COLORREF GetShownColor() const; ///< the same, but what is seen if it is automatic

    /// The system's colour that "Automatic" stands for, COLOR_WINDOWTEXT at the beginning.
    /// \return FALSE, changing nothing, if there is no such number
    BOOL SetAutomaticColor(int systemColor);

    static constexpr int kMostColors = 256;
    /// Other colours than the 32, which have 8 columns: from dark to pale, among them the 16 of text screens.
    /// \param colors stays the caller's, and must live as long as the control \param count 1 to kMostColors
    /// \param columns 1 to \p count \return FALSE, changing nothing, if an argument makes no sense
    BOOL SetColors(const ZoNamedColor* colors, int count, int columns);

    /// The size in which all parts have room, without a frame.
    /// \param like a window with that font and, for kAutomatic and kMore, that style; null: this control
    CSize GetIdealSize(CWnd* like = nullptr);

    // As ZoGetColorName and ZoGetColorText, with the names of SetColors. They throw CMemoryException*
    CString GetColorName(COLORREF color) const;
    CString GetColorText() const; ///< of the present colour

    // Parts: "Automatic", the colours, the custom colours, "More...". Roles: a table of cells, push buttons.
    int GetPartCount() const override;
    BOOL DescribePart(int part, ZoPart& description) const override;
    int FindPart(CPoint point) const override;
    int GetFocusedPart() const override { return m_nFocused; }
    BOOL DoPartAction(int part) override; ///< chooses it

protected:
    /// The user has chosen a part, perhaps the one that was chosen before.
    virtual void OnChosen(int part);

    /// As GetColorName. \return FALSE: there is a name, but it cannot be loaded now. Throws CMemoryException*
    BOOL NameColor(COLORREF color, CString& name) const;
    COLORREF GetPartColor(int part) const; ///< CLR_DEFAULT: "Automatic"; CLR_INVALID: "More..."
    void PreSubclassWindow() override;
    void OnDraw(CDC* dc, const CRect& dirty) override;
    void OnLayout() override;
    void OnDragMove(CPoint point) override;
    void OnDragEnd(CPoint point) override;
    void OnDragUndo() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Row {
        int first; // part
        int count; // 0: the line of the name
        int columns;
    };

    int GetRowCount(DWORD parts) const;
    Row GetRow(int row) const;
    int FindRow(int part) const;
    CRect GetRowArea(int row) const;
    CRect GetPartArea(int part) const;
    int FindColor(COLORREF color) const;
    BOOL NamePart(int part, CString& name) const;
    CString GetPartName(int part) const;
    BOOL HasStyle(Style style) const { return (m_dwParts & style) != 0; }
    BOOL IsFocusMarked(int part) const;
    void InvalidatePart(int part);
    void MoveTo(int part);
    void MoveBy(int command);
    int FindName(int from, LPCSTR text) const;
    BOOL IsSpaceTyped() const;
    void OnTyped(UINT character);
    void OnMouseMoved(CPoint point);
    void ReadCustomColors();
    void LoadTexts(int named);
    void DrawPart(CDC* dc, const CRect& area, int part, BOOL isPresent, BOOL isEnabled) const;
    void DrawText(CDC* dc, CRect area, LPCSTR text, BOOL isEnabled) const;

    static constexpr int kCustomColors = 16;

    COLORREF m_color = RGB(0, 0, 0);
    int m_nAutomatic = COLOR_WINDOWTEXT;
    const ZoNamedColor* m_pColors;
    int m_nColors;
    int m_nColumns;
    COLORREF m_custom[kCustomColors] = {};
    int m_nCustom = 0;
    int m_nFocused = 1; // part
    // What was drawn last
    CString m_csAutomatic;
    CString m_csMore;
    CString m_csLine;
    int m_nLine = -1; // the part whose name the line has; 0: that of a colour in none, -1: the texts are out of date
    // Of the present layout
    DWORD m_dwParts = 0; // of Style
    CSize m_size;
    int m_nMargin = 0;                 // of a swatch or a text in its cell
    int m_nBorder = COLOR_WINDOWFRAME; // the system's colour around swatches

    int m_nBeforeDrag = 1; // the same, when a drag began
    CPoint m_mouse;        // where it was last, on the screen
    CZoTypeAhead m_typed;
};
