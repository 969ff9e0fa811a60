/// \file
/// Drawing data that the suite's controls share.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// The controls' two shared fonts.
class ZOGBL_API CZoGlobalGDIData {
public:
    /// Creates the fonts, bold (weight 700) and thin (weight 400): "MS Sans Serif", 8 points. Where the system uses
    /// double-byte characters, face and size are those of the language library's dialog template 25463; without it, a
    /// Japanese Gothic face at 10 points. A font that cannot be created is replaced by the system font.
    ///
    /// Acts once in a process: a later change of language does not renew the fonts, for controls hold them.
    static void InitializeFontsFromResources();

    static HFONT GetBoldFont(); ///< null before the initialisation
    static HFONT GetThinFont();
};
