/// \file
/// Boxes that hold pointers instead of strings.
#pragma once

#include <afxcoll.h>
#include <afxwin.h>

enum class Selection { kNone, kFirst };

/// Keeps a box from drawing for the object's lifetime: a visible list box would move its scroll bar and draw with every
/// item, which takes a hundred times as long as the items do.
class DrawingPause {
public:
    /// \param box may be null
    explicit DrawingPause(HWND box) : m_box(box) { ::SendMessageA(m_box, WM_SETREDRAW, FALSE, 0); }
    ~DrawingPause()
    {
        ::SendMessageA(m_box, WM_SETREDRAW, TRUE, 0);
        if (m_box != nullptr)
            ::InvalidateRect(m_box, nullptr, TRUE);
    }
    DrawingPause(const DrawingPause&) = delete;
    DrawingPause& operator=(const DrawingPause&) = delete;

private:
    HWND m_box;
};

/// Gives a list box or combo box the pointers as its items' data; nothing while it has no window. The focus stays where
/// it was.
template <class BOX> void FillBox(BOX* box, const CPtrArray& pointers, Selection selection)
{
    if (box->m_hWnd == nullptr)
        return;
    const CWaitCursor wait;
    const DrawingPause pause(box->m_hWnd);
    const HWND focus = ::GetFocus();
    const bool focused = focus != nullptr && (focus == box->m_hWnd || ::IsChild(box->m_hWnd, focus));
    box->ResetContent();
    for (INT_PTR i = 0; i < pointers.GetSize(); ++i)
        box->AddString(static_cast<LPCSTR>(pointers[i])); // data, not text
    if (box->GetCount() > 0) {
        if (selection == Selection::kFirst)
            box->SetCurSel(0);
        if (focused)
            box->SetFocus();
    }
}
