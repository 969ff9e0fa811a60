#include <zogbl/header.h>

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>

#include "controls/drawing/arrow.h"
#include "controls/drawing/item_painting.h"
#include "controls/drawing/unmirrored.h"

#include <algorithm>

namespace {

using Align = CZoHeaderButton::Align;
using Sort = CZoHeaderButton::Sort;

// Pixels on a screen of 96 dots an inch.
constexpr int kMargin = 6;
constexpr int kGap = 4; // between picture, text and arrow
constexpr int kArrowHeight = 4;
constexpr int kLeastWidth = 16;

int ArrowWidth() { return 2 * CZoGlobalGDIData::Scale(kArrowHeight) - 1; }
CSize IconSize() { return CSize(::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON)); }

/// Cuts a piece off a place, with a gap beside it.
CRect CutOff(CRect& place, int width, bool atRight)
{
    CRect piece = place;
    const int gap = width + CZoGlobalGDIData::Scale(kGap);
    if (atRight) {
        piece.left = (std::max)(place.left, place.right - width);
        place.right = (std::max)(place.left, place.right - gap);
    } else {
        piece.right = (std::min)(place.right, place.left + width);
        place.left = (std::min)(place.right, place.left + gap);
    }
    return piece;
}

/// In the size of the place, which an icon of another size is drawn in.
void DrawIcon(CDC* dc, const CRect& place, HICON icon, bool isDisabled)
{
    const CSize size = place.Size();
    const UnmirroredPictures unmirrored(dc);
    if (!isDisabled) {
        ::DrawIconEx(*dc, place.left, place.top, icon, size.cx, size.cy, 0, nullptr, DI_NORMAL);
    } else if (HANDLE small = ::CopyImage(icon, IMAGE_ICON, size.cx, size.cy, 0)) {
        ZoDrawDisabledIcon(*dc, place, static_cast<HICON>(small));
        ::DestroyIcon(static_cast<HICON>(small));
    }
}

} // namespace

CZoHeaderButton::CZoHeaderButton(LPCSTR text, int width, Align align, UINT flags)
    : m_csText(text), m_nWidth(width), m_align(align), m_flags(flags)
{
}

CZoHeaderButton::CZoHeaderButton(UINT textId, int width, Align align, UINT flags)
    : m_nTextId(textId), m_nWidth(width), m_align(align), m_flags(flags)
{
}

int CZoHeaderButton::GetMargin() { return CZoGlobalGDIData::Scale(kMargin); }

UINT CZoHeaderButton::GetTextFormat() const
{
    return m_align == Align::kRight ? DT_RIGHT : m_align == Align::kCenter ? DT_CENTER : DT_LEFT;
}

int CZoHeaderButton::GetLeastWidth() const
{
    return m_nLeastWidth > 0 ? m_nLeastWidth : CZoGlobalGDIData::Scale(kLeastWidth);
}

/// Of text, picture, arrow and what is between them.
int CZoHeaderButton::GetWidthWith(HDC dc, bool hasArrow) const
{
    SIZE text = {};
    ::GetTextExtentPoint32A(dc, m_csText, m_csText.GetLength(), &text);
    const int gap = CZoGlobalGDIData::Scale(kGap);
    const int icon = m_hIcon != nullptr ? IconSize().cx + gap : 0;
    const int arrow = hasArrow ? ArrowWidth() + gap : 0;
    return text.cx + icon + arrow + 2 * GetMargin();
}

int CZoHeaderButton::GetFitWidth(HDC dc) const
{
    const bool mayHaveArrow = (m_flags & kNoPush) == 0 || m_sort != Sort::kNone;
    return (std::min<int>)(GetWidthWith(dc, mayHaveArrow), kMostWidth);
}

BOOL CZoHeaderButton::IsShortened(HDC dc) const { return GetWidthWith(dc, m_sort != Sort::kNone) > m_nWidth; }

void CZoHeaderButton::Draw(CDC* dc, const CRect& area, UINT state) const
{
    const ItemColors colors = {::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_3DFACE)};
    const bool isDisabled = (state & kDisabled) != 0;
    dc->FillSolidRect(area, colors.background);
    ZoDrawEdge(*dc, area, (state & kPressed) != 0 ? ZoEdge::kSunken : ZoEdge::kRaised);
    CRect place(area.left + GetMargin(), area.top + ZO_EDGE_WIDTH, area.right - GetMargin(),
                area.bottom - ZO_EDGE_WIDTH);
    if ((state & kPressed) != 0)
        place.OffsetRect(1, 1);
    const SelectedColors selected(*dc, colors);
    if (place.Width() > 0) {
        if (m_sort != Sort::kNone) { // at the side where the text ends, so that it stays above what is below
            const CRect arrow = CutOff(place, ArrowWidth(), m_align != Align::kRight);
            if (arrow.Width() == ArrowWidth()) // or nothing of it
                DrawArrow(dc, arrow, m_sort == Sort::kAscending ? ArrowTo::kUp : ArrowTo::kDown,
                          isDisabled ? CZoGlobalGDIData::GetDisabledColor(colors.text, colors.background)
                                     : colors.text);
        }
        if (m_hIcon != nullptr) {
            const CSize size = IconSize();
            CRect icon = CutOff(place, size.cx, false);
            if (icon.Width() == size.cx)
                DrawIcon(dc, CRect(CPoint(icon.left, (icon.top + icon.bottom - size.cy) / 2), size), m_hIcon,
                         isDisabled);
        }
        const UINT format = GetTextFormat() | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;
        if (isDisabled) {
            const CString shown = ZoShortenText(*dc, m_csText, place.Width(), ZoShorten::kEnd);
            ZoDrawDisabledText(*dc, place, shown, shown.GetLength(), format);
        } else {
            ZoDrawShortenedText(*dc, place, m_csText, format, ZoShorten::kEnd);
        }
    }
    if ((state & kFocused) != 0) {
        CRect focus = area;
        focus.InflateRect(-ZO_EDGE_WIDTH - 1, -ZO_EDGE_WIDTH - 1);
        ZoDrawFocus(*dc, focus);
    }
}
