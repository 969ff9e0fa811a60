/// \file
/// Tips for the parts of a control.
#pragma once

#include <zogbl/control.h>

#include <afxcmn.h>

/// Shows the name of a part of a control while the mouse rests over it. The system's tip, made when it is first needed,
/// keeps a copy of the text; if it cannot be made, there is no tip.
class ControlTip {
public:
    static constexpr int kNone = -1;

    ControlTip() = default;
    ControlTip(const ControlTip&) = delete;
    ControlTip& operator=(const ControlTip&) = delete;

    /// Takes a mouse message of \p owner. \param tip made if it is wanted
    /// \param part over which the mouse is, or kNone. If its name is longer than kLongest, the beginning is shown
    static void Follow(ControlTip*& tip, CZoControl& owner, int part, UINT message, WPARAM wParam, LPARAM lParam);
    /// Which part has a tip, or kNone.
    int GetPart() const { return m_part; }
    void Hide(CWnd& owner);
    /// At the owner's end.
    void Destroy();

private:
    static constexpr size_t kLongest = 1000; // bytes
    static constexpr int kWidest = 400;      // pixels at 96 dots an inch; longer lines are broken

    void Offer(CZoControl& owner, int part);

    CToolTipCtrl m_tip;
    int m_part = kNone;
};
