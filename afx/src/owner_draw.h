/// \file
/// Controls that draw themselves.
#pragma once

#include <afxwin.h>

/// For a control's OnChildNotify: lets it draw an item, if that is what \p message wants. \return whether it is
template <class CONTROL> BOOL AskToDraw(CONTROL& control, UINT message, LPARAM lParam, LRESULT* result)
{
    if (message != WM_DRAWITEM)
        return FALSE;
    control.DrawItem(reinterpret_cast<DRAWITEMSTRUCT*>(lParam));
    *result = TRUE;
    return TRUE;
}
