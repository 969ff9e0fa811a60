#include <zogbl/effects.h>

#include <zogbl/gdi_data.h>

#include "common/double_byte.h"
#include "common/without_throwing.h"
#include "item_painting.h"
#include "plain_layout.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <utility>

namespace {

constexpr LPCSTR kDots = "...";

int WidthOf(HDC dc, LPCSTR text, int length)
{
    SIZE size = {};
    return GetTextExtentPoint32A(dc, text, length, &size) ? size.cx : INT_MAX; // Windows 98 refuses more than 8,192
}

/// Fills by the background colour, which also displays with few colours do at once and without a brush.
BOOL FillPlain(HDC dc, const RECT& area) { return ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr); }

/// A colour between two others.
COLORREF Mixed(COLORREF from, COLORREF to, int part, int whole)
{
    const auto mixed = [=](BYTE first, BYTE last) { return first + MulDiv(last - first, part, whole); };
    return RGB(mixed(GetRValue(from), GetRValue(to)), mixed(GetGValue(from), GetGValue(to)),
               mixed(GetBValue(from), GetBValue(to)));
}

/// A brush in a context, until it ends, and where its pattern begins.
class SelectedBrush {
public:
    SelectedBrush(HDC dc, HBRUSH brush, int left, int top) : m_dc(dc), m_before(SelectObject(dc, brush))
    {
        POINT origin = {left, top};
        LPtoDP(dc, &origin, 1); // the pattern begins at a pixel of the device
        SetBrushOrgEx(dc, origin.x % 8, origin.y % 8, &m_origin);
    }
    ~SelectedBrush()
    {
        SetBrushOrgEx(m_dc, m_origin.x, m_origin.y, nullptr);
        SelectObject(m_dc, m_before);
    }
    SelectedBrush(const SelectedBrush&) = delete;
    SelectedBrush& operator=(const SelectedBrush&) = delete;

private:
    HDC m_dc;
    HGDIOBJ m_before;
    POINT m_origin = {};
};

/// Draws a picture's shape as disabled. \param type DST_BITMAP or DST_ICON
BOOL DrawDisabledPicture(HDC dc, const RECT& area, LPARAM picture, UINT type)
{
    if (IsRectEmpty(&area))
        return TRUE;
    const int saved = SaveDC(dc);
    if (saved == 0)
        return FALSE;
    IntersectClipRect(dc, area.left, area.top, area.right, area.bottom);
    const bool isPlain = CZoGlobalGDIData::IsHighContrast();
    const BOOL drawn = DrawStateA(dc, CZoGlobalGDIData::GetBrush(COLOR_GRAYTEXT), nullptr, picture, 0, area.left,
                                  area.top, 0, 0, type | (isPlain ? DSS_MONO : DSS_DISABLED));
    RestoreDC(dc, saved);
    return drawn;
}

/// What a text is made of: its first characters, "...", and its last ones.
class Shortening {
public:
    Shortening(HDC dc, LPCSTR text, int width) : m_dc(dc), m_text(text), m_length(lstrlenA(text)), m_width(width) {}

    bool HasRoom() const { return WidthOf(m_dc, m_text, m_length) <= m_width; }

    CString AtEnd() const
    {
        return Best(m_length, [](int) { return 0; });
    }

    CString InMiddle() const
    {
        // As many bytes of the end as of the beginning, or one more where a character would be cut.
        return Best(m_length / 2 + 1, [this](int head) { return m_length - Boundary(m_length - head); });
    }

    CString AsPath() const
    {
        int name = 0; // where it begins, its backslash included
        for (int i = 0; i < m_length; i += Width(i)) {
            if (m_text[i] == '\\')
                name = i;
        }
        const int tail = m_length - name;
        if (name == 0 || !Fits(CString(kDots) + (m_text + name)))
            return AtEnd();
        return Best(name, [tail](int) { return tail; });
    }

private:
    bool Fits(const CString& text) const { return WidthOf(m_dc, text, text.GetLength()) <= m_width; }
    int Width(int at) const { return static_cast<int>(CharacterWidth(m_text + at)); }

    /// Where the character begins that \p at lies in; \p at itself if it is the beginning of one.
    int Boundary(int at) const
    {
        int i = 0;
        while (i < at && i + Width(i) <= at)
            i += Width(i);
        return i;
    }

    /// The text with the longest beginning, shorter than \p most bytes, that has room together with its end.
    template <class TAIL> CString Best(int most, TAIL tail) const
    {
        int fits = 0;
        for (int above = most; fits + 1 < above;) { // fits has room, above is too long
            const int tried = (fits + above) / 2;
            (Fits(Made(Boundary(tried), tail)) ? fits : above) = tried;
        }
        return Made(Boundary(fits), tail);
    }
    template <class TAIL> CString Made(int head, TAIL tail) const
    {
        const int last = (std::min)(tail(head), m_length - head);
        return CString(m_text, head) + kDots + CString(m_text + (m_length - last), last);
    }

    HDC m_dc;
    LPCSTR m_text;
    int m_length;
    int m_width;
};

} // namespace

BOOL ZoDrawEdge(HDC dc, const RECT& area, ZoEdge edge)
{
    RECT rest = area;
    return IsRectEmpty(&area) || DrawEdge(dc, &rest, static_cast<UINT>(edge), BF_RECT);
}

BOOL ZoDrawDisabledText(HDC dc, const RECT& area, LPCSTR text, int length, UINT format)
{
    if (IsRectEmpty(&area) || length == 0)
        return TRUE;
    const COLORREF before = ::GetTextColor(dc);
    const int mode = SetBkMode(dc, TRANSPARENT);
    RECT place = area;
    BOOL drawn = TRUE;
    if (CZoGlobalGDIData::IsHighContrast()) {
        ::SetTextColor(dc, CZoGlobalGDIData::GetDisabledColor(before, ::GetBkColor(dc)));
    } else {
        place = {area.left + 1, area.top + 1, area.right, area.bottom};
        ::SetTextColor(dc, GetSysColor(COLOR_3DHILIGHT));
        drawn = DrawTextA(dc, text, length, &place, format) != 0;
        place = {area.left, area.top, area.right - 1, area.bottom - 1};
        ::SetTextColor(dc, GetSysColor(COLOR_3DSHADOW));
    }
    drawn = DrawTextA(dc, text, length, &place, format) != 0 && drawn;
    SetBkMode(dc, mode);
    ::SetTextColor(dc, before);
    return drawn;
}

BOOL ZoDrawDisabledBitmap(HDC dc, const RECT& area, HBITMAP bitmap)
{
    return DrawDisabledPicture(dc, area, reinterpret_cast<LPARAM>(bitmap), DST_BITMAP);
}

BOOL ZoDrawDisabledIcon(HDC dc, const RECT& area, HICON icon)
{
    return DrawDisabledPicture(dc, area, reinterpret_cast<LPARAM>(icon), DST_ICON);
}

BOOL ZoDrawColorRamp(HDC dc, const RECT& area, COLORREF from, COLORREF to, BOOL topToBottom)
{
    if (IsRectEmpty(&area))
        return TRUE;
    constexpr int kMostBands = 256; // more cannot be told apart
    CDC target;
    target.SetOutputDC(dc);
    target.SetAttribDC(dc);
    CRect place = area;
    const PlainLayout plain(target, {&place}); // Wine fills a pixel beside in a context that runs from right to left
    if (plain.IsMirrored() && !topToBottom)
        std::swap(from, to);
    const int length = topToBottom ? place.Height() : place.Width();
    const int bands = (std::min)(length, kMostBands);
    const COLORREF before = ::GetBkColor(dc);
    BOOL drawn = TRUE;
    for (int i = 0; i < bands && drawn; ++i) {
        CRect band = place;
        (topToBottom ? band.top : band.left) += MulDiv(length, i, bands);
        (topToBottom ? band.bottom : band.right) -= length - MulDiv(length, i + 1, bands);
        ::SetBkColor(dc, Mixed(from, to, i, (std::max)(bands - 1, 1)));
        drawn = FillPlain(dc, band);
    }
    ::SetBkColor(dc, before);
    return drawn;
}

BOOL ZoDrawHatch(HDC dc, const RECT& area, COLORREF first, COLORREF second)
{
    if (IsRectEmpty(&area))
        return TRUE;
    const HBRUSH hatch = CZoGlobalGDIData::GetHatchBrush();
    if (hatch == nullptr)
        return FALSE;
    const SelectedColors colors(dc, {first, second});
    const SelectedBrush brush(dc, hatch, area.left, area.top);
    return PatBlt(dc, area.left, area.top, area.right - area.left, area.bottom - area.top, PATCOPY);
}

BOOL ZoDrawFocus(HDC dc, const RECT& area)
{
    if (IsRectEmpty(&area))
        return TRUE;
    const HBRUSH hatch = CZoGlobalGDIData::GetHatchBrush();
    if (hatch == nullptr)
        return FALSE;
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const SelectedBrush brush(dc, hatch, area.left, area.top);
    BOOL drawn = TRUE;
    for (const RECT& line : {RECT{area.left, area.top, width, 1}, RECT{area.left, area.bottom - 1, width, 1},
                             RECT{area.left, area.top, 1, height}, RECT{area.right - 1, area.top, 1, height}})
        drawn = PatBlt(dc, line.left, line.top, line.right, line.bottom, PATCOPY) && drawn; // right, bottom: its size
    return drawn;
}

CString ZoShortenText(HDC dc, LPCSTR text, int width, ZoShorten how)
{
    const Shortening shortening(dc, text, width);
    if (shortening.HasRoom())
        return CString(text);
    switch (how) {
    case ZoShorten::kMiddle:
        return shortening.InMiddle();
    case ZoShorten::kPath:
        return shortening.AsPath();
    default:
        return shortening.AtEnd();
    }
}

BOOL ZoDrawShortenedText(HDC dc, const RECT& area, LPCSTR text, UINT format, ZoShorten how, BOOL* isShortened)
{
    if (isShortened != nullptr)
        *isShortened = FALSE;
    if (IsRectEmpty(&area) || text[0] == '\0')
        return TRUE;
    return WithoutThrowing([&]() -> BOOL {
        const CString shown = ZoShortenText(dc, text, area.right - area.left, how);
        if (isShortened != nullptr)
            *isShortened = std::strcmp(shown, text) != 0;
        RECT place = area;
        const int mode = SetBkMode(dc, TRANSPARENT);
        const BOOL drawn = DrawTextA(dc, shown, shown.GetLength(), &place, format | DT_SINGLELINE | DT_NOPREFIX) != 0;
        SetBkMode(dc, mode);
        return drawn;
    });
}
