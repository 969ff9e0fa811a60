/// \file
/// Drawing data that the suite's controls share.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// The two fonts that the suite's controls share.
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
};
