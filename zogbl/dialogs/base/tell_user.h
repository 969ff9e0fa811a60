/// \file
/// Message boxes with texts of the user's language.
#pragma once

#include <common/without_throwing.h>
#include <zogbl/message_box.h>

#include "dialog_resource.h"

#include <concepts>

/// Shows a box over \p owner, or over none if that is null. If memory has run out, there is a sound alone.
/// \param titleId of the box; 0: the application's name
/// \param text returns what the box says; it may throw
/// \return the answer; IDYES if memory has run out
template <std::invocable TEXT> int TellUser(const CWnd* owner, UINT titleId, TEXT text, UINT type = MB_OK)
{
    int answer = IDYES;
    if (!WithoutThrowing([&] {
            const CString title = titleId != 0 ? LoadText(titleId) : CString(AfxGetAppName());
            answer = ZoMessageBox(owner != nullptr ? owner->m_hWnd : nullptr, text(), title, type | MB_ICONEXCLAMATION);
            return TRUE;
        }))
        ::MessageBeep(MB_ICONEXCLAMATION);
    return answer;
}

inline int TellUser(const CWnd* owner, UINT titleId, UINT textId)
{
    return TellUser(owner, titleId, [=] { return LoadText(textId); });
}

/// Shows a string with \p insertion in place of its %s, over a dialog and under its title. \return the answer. Throws
/// CMemoryException*.
inline int AskUser(const CWnd& dialog, UINT textId, LPCSTR insertion, UINT type)
{
    CString title;
    dialog.GetWindowText(title);
    return ZoMessageBox(dialog.m_hWnd, LoadText(textId, insertion), title, type);
}
