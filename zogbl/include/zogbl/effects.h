/// \file
/// Effects that controls and dialogs draw.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

// Each function draws inside a rectangle, in logical units of one pixel, and in the system's present colours unless
// told otherwise. The device context is left as it was: selections, colours, modes, clipping, brush origin. An empty
// rectangle draws nothing and is no failure.
//
// \return FALSE if the system failed a call; a part may be drawn then.

/// An edge of two pixels, thin ones of one. The values are those of the system's DrawEdge.
enum class ZoEdge : UINT {
    kNone = 0,
    kThinRaised = BDR_RAISEDINNER,
    kThinSunken = BDR_SUNKENOUTER, ///< as in a status bar
    kRaised = EDGE_RAISED,         ///< stands out, as a button
    kSunken = EDGE_SUNKEN,         ///< lies deeper, as an edit field
    kEtched = EDGE_ETCHED,         ///< a groove, as around a group
    kBump = EDGE_BUMP              ///< a ridge
};
constexpr int ZO_EDGE_WIDTH = 2; ///< in pixels, on each side
constexpr int ZoGetEdgeWidth(ZoEdge edge)
{
    const bool isThin = edge == ZoEdge::kThinRaised || edge == ZoEdge::kThinSunken;
    return edge == ZoEdge::kNone ? 0 : isThin ? 1 : ZO_EDGE_WIDTH;
}

ZOGBL_API BOOL ZoDrawEdge(HDC dc, const RECT& area, ZoEdge edge);

/// Text of something disabled: embossed; in high contrast, where that cannot be read, in the colour of disabled text.
/// \param length bytes; -1: up to the terminator \param format DT_ flags of DrawText, without DT_CALCRECT and
/// DT_MODIFYSTRING
ZOGBL_API BOOL ZoDrawDisabledText(HDC dc, const RECT& area, LPCSTR text, int length, UINT format);
/// The same for a picture, in the top left corner and cut to the rectangle. What is drawn is its shape: all that is
/// not white, of an icon all that is not transparent.
ZOGBL_API BOOL ZoDrawDisabledBitmap(HDC dc, const RECT& area, HBITMAP bitmap);
ZOGBL_API BOOL ZoDrawDisabledIcon(HDC dc, const RECT& area, HICON icon);

/// From one colour to another, left to right or top to bottom. The first and the last line have exactly these colours.
ZOGBL_API BOOL ZoDrawColorRamp(HDC dc, const RECT& area, COLORREF from, COLORREF to, BOOL topToBottom);
/// Every other pixel in one colour, the rest in the other. The pixel at the top left has the first.
ZOGBL_API BOOL ZoDrawHatch(HDC dc, const RECT& area, COLORREF first, COLORREF second);
/// The dotted frame of what has the focus, one pixel wide, in the context's text colour on its background colour. Drawn
/// twice it is still there, unlike the system's DrawFocusRect.
ZOGBL_API BOOL ZoDrawFocus(HDC dc, const RECT& area);

/// Where "..." stands in a text that has no room.
enum class ZoShorten {
    kEnd,    ///< "A long te..."
    kMiddle, ///< "A lo...text"
    kPath    ///< "C:\...\name.txt": the name behind the last backslash stays whole; if even that has no room, as kEnd
};

/// What of a text has room in \p width pixels in the context's font. A character of two bytes is never cut. If not
/// even "..." has room, the result is "...".
/// \return the text itself if it has room. Throws CMemoryException*
ZOGBL_API CString ZoShortenText(HDC dc, LPCSTR text, int width, ZoShorten how);
/// Draws one line of text, shortened if it has no room, on the background as it is. "&" is a character as any other.
/// \param format DT_LEFT, DT_CENTER or DT_RIGHT, and DT_TOP, DT_VCENTER or DT_BOTTOM
/// \param isShortened null, or gets whether it was shortened
/// \return FALSE also if memory has run out
ZOGBL_API BOOL ZoDrawShortenedText(HDC dc, const RECT& area, LPCSTR text, UINT format, ZoShorten how,
                                   BOOL* isShortened = nullptr);
