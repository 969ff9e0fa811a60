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
    /// The item that is meant: the next one that begins with the character typed or, if there are several, the first
    /// one from the present one on that begins with them. If none does, the last character begins a new text.
    /// \param find `int (LPCSTR text, bool isNext)`: looks for an item that begins with a text, from the present one
    /// on or, if \p isNext, from behind it, and around; 0: there is none
    /// \return what \p find answered; 0 also if the second half of a character is still to come
    template <class FIND> int Find(FIND find)
    {
        if (IsHalf())
            return 0;
        const bool isOne = IsOneCharacter();
        const int found = find(Get(), isOne);
        if (found != 0 || isOne)
            return found;
        KeepLastCharacter();
        return find(Get(), true);
    }
    void Forget() { m_szTyped[0] = '\0'; }
    LPCSTR Get() const { return m_szTyped; }

    /// Whether \p name begins with \p text in the user's language, case ignored. Every name begins with an empty text.
    static BOOL Begins(LPCSTR name, LPCSTR text);

private:
    BOOL IsHalf() const;
    BOOL IsOneCharacter() const;
    void KeepLastCharacter();

    char m_szTyped[kLongest + 2] = "";
};
