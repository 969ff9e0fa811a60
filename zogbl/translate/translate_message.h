/// \file
/// What the editor of translation tables tells the user.
#pragma once

#include <zogbl/resource_lookup.h>

/// Shows a string of the user's language in a box over \p owner; without memory for it there is a sound alone.
inline void TellUser(const CWnd& owner, UINT text)
{
    CString message;
    if (ZoGblLoadString(text, message))
        ::MessageBoxA(owner.m_hWnd, message, AfxGetAppName(), MB_OK | MB_ICONEXCLAMATION);
    else
        ::MessageBeep(MB_ICONEXCLAMATION);
}
