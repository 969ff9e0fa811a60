/// \file
/// Tips for the parts of a control.
#pragma once

#include <afxcmn.h>

/// Shows a text while the mouse rests over a part of a control. The system's tip, made when it is first needed,
/// keeps a copy of the text; if it cannot be made, there is no tip.
class ControlTip {
public:
    ControlTip() = default;
    ControlTip(const ControlTip&) = delete;
    ControlTip& operator=(const ControlTip&) = delete;

    /// Which part has a tip; 0: none.
    int GetPart() const { return m_part; }
    /// The mouse has come over \p part. \param text if it is longer than kLongest, its beginning is shown
    void Offer(CWnd& owner, int part, const CRect& area, LPCSTR text);
    void Hide(CWnd& owner);
    /// A mouse message of the owner, after Offer or Hide.
    void Relay(CWnd& owner, UINT message, WPARAM wParam, LPARAM lParam);
    /// At the owner's end.
    void Destroy();

private:
    static constexpr size_t kLongest = 1000; // bytes
    static constexpr int kWidest = 400;      // pixels at 96 dots an inch; longer lines are broken

    CToolTipCtrl m_tip;
    int m_part = 0;
};
