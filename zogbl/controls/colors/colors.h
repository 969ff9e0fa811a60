/// \file
/// What the controls for colours share.
#pragma once

#include <zogbl/color_chooser.h>

constexpr int kStandardColorCount = 32;
constexpr int kStandardColumns = 8;
extern const ZoNamedColor kStandardColors[kStandardColorCount];

inline bool IsPlainColor(COLORREF color) { return (color & 0xFF000000) == 0; }
// They throw CMemoryException*.
BOOL LoadColorText(UINT id, CString& text); ///< FALSE, and empty, if it cannot be loaded
CString LoadColorText(UINT id);             ///< empty if there is none
CString NumbersOf(COLORREF color);          ///< "128, 0, 0"
/// The name that \p colors or the standard ones give, or the numbers.
/// \return FALSE: there is a name, but it cannot be loaded now
BOOL NameColor(const ZoNamedColor* colors, int count, COLORREF color, CString& name);
/// The name with the numbers behind it, if it does not consist of them: "Dark red (128, 0, 0)".
CString TextOf(COLORREF color, const CString& name);

constexpr int kCustomColorCount = 16;
constexpr COLORREF kNoCustomColor = RGB(255, 255, 255); ///< a place that the user has not filled

/// The custom colours of the user as they are kept; if they cannot be read, those of the process.
COLORREF* ReadCustomColors();
/// Lets the user choose any colour in the system's dialog, and keeps the custom colours that it leaves.
/// \param color shown at first \return FALSE: cancelled, or the dialog cannot be shown; \p color is as before
BOOL AskForColor(CWnd* owner, COLORREF& color);

int SwatchBorder(); ///< the number of a system's colour for DrawSwatch; to be asked for at a change of the scheme
/// A colour with a thin border. Disabled, it is hatched.
void DrawSwatch(CDC* dc, const CRect& area, COLORREF color, int border, BOOL isDisabled);
