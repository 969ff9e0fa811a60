/// \file
/// Tips for the parts of a control.
#pragma once

#include <zogbl/control.h>

#include <afxcmn.h>

/// Shows a text while the mouse rests over a place of a control. The system's tip, made when it is first needed,
/// keeps a copy of the text; if it cannot be made, there is no tip.
class ControlTip {
public:
    static constexpr int kNone = -1;

    ControlTip() = default;
    ControlTip(const ControlTip&) = delete;
    ControlTip& operator=(const ControlTip&) = delete;

    /// What the mouse is over.
    struct Place {
        int part = kNone; ///< a number of the control's own; kNone: nothing that has a tip
        CRect area;
        CString text; ///< if it is longer than kLongest, the beginning is shown
    };
    /// Takes a mouse message of \p owner. \param tip made if it is wanted
    static void Follow(ControlTip*& tip, CZoControl& owner, const Place& place, UINT message, WPARAM wParam,
                       LPARAM lParam);
    /// The same for a part, whose tip is its name.
    static void Follow(ControlTip*& tip, CZoControl& owner, int part, UINT message, WPARAM wParam, LPARAM lParam);
    /// Which place has a tip, or kNone.
    int GetPart() const { return m_part; }
    void Hide(CWnd& owner);
    /// At the owner's end.
    void Destroy();

private:
    static constexpr size_t kLongest = 1000; // bytes
    static constexpr int kWidest = 400;      // pixels at 96 dots an inch; longer lines are broken

    void Offer(CZoControl& owner, const Place& place);

    CToolTipCtrl m_tip;
    int m_part = kNone;
};
