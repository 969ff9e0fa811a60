/// \file
/// Finding an item of a list by typing the beginning of its name.
#pragma once

#include <zogbl/export.h>

#include <windows.h>

/// The characters that the user has typed so far into a list. They are forgotten when the control loses the focus, and
/// with a click or a key that moves the selection: that is up to the control.
class ZOGBL_API CZoTypeAhead {
public:
    static constexpr int kLongest = 64;

    /// Adds a printable character (32 to 255). If there are more than kLongest, a new text begins. Backspace empties
    /// it. \return whether a character was added
    BOOL Type(UINT character);
    void Forget() { m_szTyped[0] = '\0'; }
    LPCSTR Get() const { return m_szTyped; }

    /// Whether \p name begins with \p text in the user's language, case ignored. Every name begins with an empty text.
    static BOOL Begins(LPCSTR name, LPCSTR text);

private:
    char m_szTyped[kLongest + 2] = "";
};
