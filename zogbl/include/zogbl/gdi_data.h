/// \file
/// Drawing data that the suite's controls share.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// Fonts, brushes, pens and measures that the suite's controls share. What it hands out is its own: do not delete it,
/// and take it out of a device context when the drawing is done.
class ZOGBL_API CZoGlobalGDIData {
public:
    /// Creates the fonts, bold (weight 700) and thin (weight 400): "MS Sans Serif", 8 points. If the system uses
    /// double-byte characters, face and size are those of the language library's dialog template 25463; if that is
    /// missing, a Japanese Gothic face at 10 points. A font that cannot be created is replaced by the system font's
    /// face and size in its weight.
    ///
    /// Only the first call in a process has an effect. A later change of language does not renew the fonts, because
    /// controls hold them.
    static void InitializeFontsFromResources();

    /// Null before the first call of InitializeFontsFromResources, and if no font could be created.
    static HFONT GetBoldFont();
    static HFONT GetThinFont();

    // Brushes and pens of the present scheme. Ask at each drawing: a change of the scheme makes new ones.

    /// \param systemColor COLOR_WINDOW and so on
    static HBRUSH GetBrush(int systemColor);
    /// A solid line of one pixel. \return null for a number that is no system colour, and if none can be made
    static HPEN GetPen(int systemColor);
    /// Every other pixel in the text colour of the context that draws with it, the rest in its background colour.
    /// \return null if it cannot be made; a later call tries again
    static HBRUSH GetHatchBrush();

    /// The colour of disabled text upon \p background. Where the system has no grey of its own, or one that could not
    /// be seen there, it is that of \p text.
    static COLORREF GetDisabledColor(COLORREF text, COLORREF background);
    /// Whether the user has asked for a scheme of high contrast.
    static BOOL IsHighContrast();
    /// \param pixels on a screen of 96 dots an inch \return as many as are as long on this one, at least 1 for 1
    static int Scale(int pixels);
};
