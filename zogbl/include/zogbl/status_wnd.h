/// \file
/// A window that explains controls.
#pragma once

#include <zogbl/control.h>

/// Explains the control under the pointer, or else the one that has the focus: what was moved last decides. Disabled
/// controls are explained, too. The explanation is the string that has the control's number, found as ZoGblLoadString
/// finds it, up to its first line end. A control without such a string is explained as what it lies in.
///
///     m_status.Create(WS_VISIBLE, area, this, IDC_STATUS);   // explains what its parent has
///     STRINGTABLE { IDC_NAME "Your name, as others see it." }
///
/// It looks ten times a second while it can be seen, and watches nothing else. It has no keys and no focus. Long
/// explanations take several lines; what has no room is left out. To screen readers it is a text; its window's text is
/// the explanation that stands there.
class ZOGBL_API CZoStatusWnd : public CZoControl {
    DECLARE_DYNAMIC(CZoStatusWnd)
public:
    static constexpr UINT kLookEach = 100; ///< milliseconds

    CZoStatusWnd() = default;
    ~CZoStatusWnd() override;

    /// Which window's controls are explained, those in windows within it included: in dialogs, in windows with
    /// WS_EX_CONTROLPARENT. \param window null: the parent, as at the beginning
    void SetExplained(HWND window) { m_hExplained = window; }
    int GetBestHeight(int lines) const; ///< for so many lines in its font, in pixels

    BOOL DescribePart(int part, ZoPart& description) const override;

protected:
    void OnDraw(CDC* dc, const CRect& dirty) override;
    void OnReloadTexts() override;
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    HWND GetExplained() const { return m_hExplained != nullptr ? m_hExplained : ::GetParent(m_hWnd); }
    CString TextOf(HWND control) const;
    HWND FindPointed() const;
    HWND FindFocused() const;
    void FindSmallest(HWND parent, POINT point, HWND& found, LONGLONG& size) const;
    void Look();
    void RunTimer();

    HWND m_hExplained = nullptr;
    HWND m_hPointed = nullptr; // at the last look
    HWND m_hFocused = nullptr;
    bool m_bByPointer = false; // the pointer decides
    bool m_bTimer = false;
};
