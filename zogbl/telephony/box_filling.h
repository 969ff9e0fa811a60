/// \file
/// Boxes that hold pointers instead of strings.
#pragma once

#include <afxcoll.h>
#include <afxwin.h>

enum class Selection { kNone, kFirst };

/// Gives a list box or combo box the pointers as its items' data. The focus stays where it was.
template <class BOX> void FillBox(BOX* box, const CPtrArray& pointers, Selection selection)
{
    const CWaitCursor wait;
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
