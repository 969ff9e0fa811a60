#include "default_button.h"

namespace {

bool IsPushButton(HWND window)
{
    const LRESULT code = ::SendMessageA(window, WM_GETDLGCODE, 0, 0);
    return (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

/// \param chosen the handle of the default button
BOOL CALLBACK ShowButton(HWND window, LPARAM chosen)
{
    const LONG kind = ::GetWindowLongA(window, GWL_STYLE) & BS_TYPEMASK;
    const LONG wanted = window == reinterpret_cast<HWND>(chosen) ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    if ((kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON) && kind != wanted && IsPushButton(window))
        ::SendMessageA(window, BM_SETSTYLE, static_cast<WPARAM>(wanted), TRUE);
    return TRUE;
}

} // namespace

void ShowDefaultButton(HWND dialog)
{
    HWND chosen = ::GetFocus();
    if (chosen == nullptr || !::IsChild(dialog, chosen) || !IsPushButton(chosen)) {
        const LRESULT id = ::SendMessageA(dialog, DM_GETDEFID, 0, 0);
        chosen = HIWORD(id) == DC_HASDEFID ? ::GetDlgItem(dialog, LOWORD(id)) : nullptr;
    }
    ::EnumChildWindows(dialog, &ShowButton, reinterpret_cast<LPARAM>(chosen));
}
