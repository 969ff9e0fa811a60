/// \file
/// The fonts of a device: scripts, families, styles, sizes.
#pragma once

#include <afxwin.h>

#include <vector>

/// How a font is made: of bitmaps in certain sizes, of outlines (TrueType's or others), or by a printer.
enum class FontKind : BYTE { kBitmap, kVector, kTrueType, kDevice };

struct FontFamily {
    CString name;
    FontKind kind;
    BYTE pitch; ///< as in LOGFONT
};

struct FontStyle {
    CString name; ///< the font's own; empty: it has none, or the system makes the style from another
    LONG weight;
    BOOL isItalic;
};

/// Which families are asked for.
struct FontFilter {
    BYTE script = DEFAULT_CHARSET; ///< DEFAULT_CHARSET: any
    bool fixedPitchOnly = false;
    bool scalableOnly = false;
    bool withVertical = false; ///< names that begin with "@"
};

/// All scripts (character sets) of the families, each once, in any order. Throws CMemoryException*.
std::vector<BYTE> ReadFontScripts(HDC dc, const FontFilter& filter);
/// Each family once, in any order. Throws CMemoryException*.
std::vector<FontFamily> ReadFontFamilies(HDC dc, const FontFilter& filter);
/// The styles of a family by weight, upright ones before slanted ones. Those that the system makes are among them:
/// slanted ones, and bold if the family has nothing as heavy. Throws CMemoryException*.
std::vector<FontStyle> ReadFontStyles(HDC dc, LPCSTR family, BYTE script);
/// The heights of characters, in pixels, of a family that exists in certain sizes only, ascending; of others none.
/// Throws CMemoryException*.
std::vector<int> ReadFontHeights(HDC dc, LPCSTR family, BYTE script);

/// The face that the system takes for a font of the screen. Throws CMemoryException*.
CString RealFace(const LOGFONT& description);
/// Of the font that the system makes of it, in pixels; 0 if it makes none.
int CharacterHeight(const LOGFONT& font);
