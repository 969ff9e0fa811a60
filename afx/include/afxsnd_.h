/// \file
/// Application framework: what the operations of controls are made of. Included by the headers of controls.
#pragma once

#include <afxwnd_.h>

#include <type_traits>

/// A value as a message carries it, or back: numbers and pointers are taken for each other.
template <class TO, class FROM> inline TO AfxMessageValue(FROM value)
{
    if constexpr (std::is_pointer_v<TO> != std::is_pointer_v<FROM>)
        return reinterpret_cast<TO>(value);
    else
        return static_cast<TO>(value);
}

/// Sends a message to a control. \return its answer as \p RESULT
template <class RESULT = void, class FIRST = WPARAM, class SECOND = LPARAM>
inline RESULT AfxSend(const CWnd* pControl, UINT message, FIRST wParam = {}, SECOND lParam = {})
{
    return AfxMessageValue<RESULT>(
        pControl->SendMessage(message, AfxMessageValue<WPARAM>(wParam), AfxMessageValue<LPARAM>(lParam)));
}
