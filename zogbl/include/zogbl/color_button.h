/// \file
/// A button that shows a colour, and opens a grid to choose another.
#pragma once

#include <zogbl/color_chooser.h>

/// Shows its colour, with its name if there is room. A click opens a grid below it, a CZoColorChooser.
///
///     m_ink.SubclassDlgItem(IDC_INK, this);                // CONTROL "", IDC_INK, "ZoControl", WS_TABSTOP | 3, ...
///     m_ink.SetColor(CLR_DEFAULT);                         // 3: kAutomatic | kMore
///     ...
///     ON_NOTIFY(ZON_COLOR_CHANGED, IDC_INK, OnInk)         // a ZoColorNotification
///
/// The button keeps the keyboard while the grid is open: what its table does not have goes to the grid. The grid closes
/// without a choice if the user clicks elsewhere or goes to another control, window or program, and if the button gets
/// another font or is hidden, disabled, moved or destroyed.
class ZOGBL_API CZoColorButton : public CZoControl {
    DECLARE_DYNAMIC(CZoColorButton)
public:
    /// Styles, beside those of windows.
    enum Style : DWORD { kAutomatic = CZoColorChooser::kAutomatic, kMore = CZoColorChooser::kMore };
    enum Command { kOpen = 1, kClose };
    /// While the grid is closed. Also Alt+Down opens it.
    static constexpr ZoKey kClosedKeys[] = {{VK_F4, ZoKey::kNone, kOpen}, {VK_SPACE, ZoKey::kNone, kOpen}};
    /// While it is open. Also Alt+Up closes it, without a choice as these; Tab does the same and goes on. Space and
    /// Enter choose: see CZoColorChooser::kKeys.
    static constexpr ZoKey kOpenKeys[] = {{VK_F4, ZoKey::kNone, kClose}, {VK_ESCAPE, ZoKey::kNone, kClose}};

    CZoColorButton();
    ~CZoColorButton() override;

    // As those of CZoColorChooser

    BOOL SetColor(COLORREF color);
    COLORREF GetColor() const { return m_chooser.GetColor(); }
    COLORREF GetShownColor() const { return m_chooser.GetShownColor(); }
    BOOL SetAutomaticColor(int systemColor);
    BOOL SetColors(const ZoNamedColor* colors, int count, int columns);

    /// Opens the grid. \return FALSE: it is not open, because the control cannot be used or the system refuses a window
    BOOL Open();
    void Close(); ///< also if it is closed
    BOOL IsOpen() const { return m_chooser.m_hWnd != nullptr; }
    CZoColorChooser& GetChooser() { return m_chooser; } ///< has a window while it is open

    /// A button that drops a grid down. Its value is the colour's name and numbers.
    BOOL DescribePart(int part, ZoPart& description) const override;
    BOOL DoPartAction(int part) override; ///< opens or closes the grid

protected:
    void OnDraw(CDC* dc, const CRect& dirty) override;
    void OnLayout() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    class Drop;
    class Chooser : public CZoColorChooser {
    public:
        explicit Chooser(CZoColorButton& button) : m_button(button) {}
        using CZoColorChooser::NameColor;

    protected:
        void OnChosen(int part) override;

    private:
        CZoColorButton& m_button;
    };

    void OnChosen(COLORREF color);
    void OnClosed();
    void OnKey(UINT key);
    LRESULT OnGetDialogCode(const MSG* message) const;

    Chooser m_chooser{*this};
    Drop* m_pDrop = nullptr; // made when it opens for the first time
    CString m_csName;        // as drawn last
    BOOL m_bNamed = FALSE;   // FALSE: it is out of date
    // Of the present layout
    int m_nMargin = 0;
    int m_nArrow = 0; // rows
    int m_nBorder = 0;
};
