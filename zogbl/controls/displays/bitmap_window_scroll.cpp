// The bitmap window: scrolling and zoom.
#include <zogbl/bitmap_window.h>

#include <zogbl/gdi_data.h>

#include "bitmap_window_picture.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr int kSteps[] = {10, 25, 33, 50, 67, 75, 100, 200, 300, 400, 600, 800, 1600, 3200}; // of keys and wheel
constexpr int kLine = 16;                                                                    // at 96 dots an inch
constexpr UINT kTilt = 0x020E;                                                               // WM_MOUSEHWHEEL
constexpr UINT kMostLines = 100; // of a notch, whatever the system says
constexpr UINT kWheelLines = 3;  // if the system says nothing

int Clamped(int number, int most) { return (std::max)(0, (std::min)(number, most)); }

CPoint PointOf(LPARAM lParam) { return CPoint(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))); }

} // namespace

// Measures ------------------------------------------------------------------------------------------------------------

/// Whether the user may scroll and zoom.
bool CZoBitmapWnd::IsZoomable() const
{
    return HasPicture() && (GetStyle() & kScroll) != 0 &&
           (m_placing == Placing::kTopLeft || m_placing == Placing::kCentered);
}

bool CZoBitmapWnd::IsScrollable() const { return IsZoomable() && GetScrollRange() != CSize(); }

CSize CZoBitmapWnd::GetShownSize() const
{
    const CSize size = GetPictureSize();
    const auto zoomed = [this](int length) { return length > 0 ? (std::max)(::MulDiv(length, m_nZoom, 100), 1) : 0; };
    return CSize(zoomed(size.cx), zoomed(size.cy));
}

/// The last position.
CSize CZoBitmapWnd::GetScrollRange() const
{
    if (m_hWnd == nullptr || (m_placing != Placing::kTopLeft && m_placing != Placing::kCentered))
        return CSize();
    const CSize beyond = GetShownSize() - GetClientArea().Size();
    return CSize((std::max)(beyond.cx, 0L), (std::max)(beyond.cy, 0L));
}

// Layout --------------------------------------------------------------------------------------------------------------

void CZoBitmapWnd::OnLayout() { ShowScrollBars(); }

void CZoBitmapWnd::ShowScrollBars()
{
    if (std::exchange(m_bLayingOut, TRUE))
        return; // a bar that comes or goes changes the size
    const CSize bars(::GetSystemMetrics(SM_CXVSCROLL), ::GetSystemMetrics(SM_CYHSCROLL));
    const DWORD style = GetStyle();
    CSize room = GetClientArea().Size();
    room += CSize((style & WS_VSCROLL) != 0 ? bars.cx : 0, (style & WS_HSCROLL) != 0 ? bars.cy : 0);
    const CSize shown = GetShownSize();
    const bool canHave = IsZoomable() && room.cx > bars.cx && room.cy > bars.cy;
    bool across = canHave && shown.cx > room.cx;
    const bool down = canHave && shown.cy > room.cy - (across ? bars.cy : 0);
    across = across || (down && shown.cx > room.cx - bars.cx);
    room -= CSize(down ? bars.cx : 0, across ? bars.cy : 0);
    const auto set = [this](int bar, bool isShown, int length, int page, int position) {
        SCROLLINFO info = {sizeof info, SIF_PAGE | SIF_RANGE | SIF_POS, 0, 0, 0, 0, 0};
        if (isShown) {
            info.nMax = length - 1;
            info.nPage = static_cast<UINT>(page);
            info.nPos = position;
        }
        SetScrollInfo(bar, &info);
    };
    set(SB_HORZ, across, shown.cx, room.cx, m_scroll.x);
    set(SB_VERT, down, shown.cy, room.cy, m_scroll.y);
    ScrollTo(m_scroll); // which may lie beyond the end now
    m_bLayingOut = FALSE;
}

// Scrolling -----------------------------------------------------------------------------------------------------------

void CZoBitmapWnd::SetScrollPosition(CPoint position)
{
    UndoDrag();
    ScrollTo(position);
}

/// \return whether it is another one
bool CZoBitmapWnd::ScrollTo(CPoint position)
{
    const CSize range = GetScrollRange();
    position = CPoint(Clamped(position.x, range.cx), Clamped(position.y, range.cy));
    if (position == m_scroll)
        return false;
    m_scroll = position;
    if (IsZoomable()) {
        SetScrollPos(SB_HORZ, m_scroll.x);
        SetScrollPos(SB_VERT, m_scroll.y);
    }
    if (m_hWnd != nullptr)
        Invalidate(FALSE);
    return true;
}

void CZoBitmapWnd::TellScrolled(bool isScrolled)
{
    if (isScrolled)
        Notify(ZON_BITMAP_SCROLLED);
}

void CZoBitmapWnd::OnScrollBar(int bar, WORD code)
{
    SCROLLINFO info = {sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    if (!IsZoomable() || !GetScrollInfo(bar, &info))
        return;
    const int line = CZoGlobalGDIData::Scale(kLine);
    const int page = static_cast<int>(info.nPage);
    int to = info.nPos;
    switch (code) {
    case SB_LINEUP: // to the left, too
        to -= line;
        break;
    case SB_LINEDOWN:
        to += line;
        break;
    case SB_PAGEUP:
        to -= page;
        break;
    case SB_PAGEDOWN:
        to += page;
        break;
    case SB_TOP:
        to = 0;
        break;
    case SB_BOTTOM:
        to = info.nMax;
        break;
    case SB_THUMBTRACK:
        if (!std::exchange(m_bTracking, TRUE))
            m_scrollBefore = m_scroll;
        [[fallthrough]];
    case SB_THUMBPOSITION:
        to = info.nTrackPos;
        break;
    case SB_ENDSCROLL: // the parent is told of the tracking once
        if (std::exchange(m_bTracking, FALSE))
            TellScrolled(m_scroll != m_scrollBefore);
        return;
    default:
        return;
    }
    const bool isScrolled = ScrollTo(bar == SB_HORZ ? CPoint(to, m_scroll.y) : CPoint(m_scroll.x, to));
    if (!m_bTracking)
        TellScrolled(isScrolled);
}

void CZoBitmapWnd::OnDragMove(CPoint point) { ScrollTo(m_scrollBefore + (m_dragFrom - point)); }
void CZoBitmapWnd::OnDragEnd(CPoint) { TellScrolled(m_scroll != m_scrollBefore); }
void CZoBitmapWnd::OnDragUndo() { ScrollTo(m_scrollBefore); }

// Zoom ----------------------------------------------------------------------------------------------------------------

BOOL CZoBitmapWnd::SetZoom(int percent)
{
    if (percent < kLeastZoom || percent > kMostZoom || (percent > 100 && percent % 100 != 0))
        return FALSE;
    UndoDrag();
    ZoomTo(percent, m_hWnd != nullptr ? GetClientArea().CenterPoint() : CPoint());
    return TRUE;
}

/// \param fixed what is there stays there, as far as it can \return whether it is another one
bool CZoBitmapWnd::ZoomTo(int percent, CPoint fixed)
{
    if (percent == m_nZoom)
        return false;
    const CPoint before = HasPicture() && m_hWnd != nullptr ? GetPlace().TopLeft() : CPoint();
    const CPoint moved(::MulDiv(fixed.x - before.x, percent, m_nZoom) - fixed.x,
                       ::MulDiv(fixed.y - before.y, percent, m_nZoom) - fixed.y);
    m_nZoom = percent;
    if (m_hWnd != nullptr) {
        ShowScrollBars();
        ScrollTo(moved);
        Invalidate(FALSE);
        if (IsZoomable())
            RaiseEvent(EVENT_OBJECT_VALUECHANGE);
    }
    return true;
}

bool CZoBitmapWnd::StepZoom(bool isIn, CPoint fixed)
{
    const int* step = isIn ? std::upper_bound(std::begin(kSteps), std::end(kSteps), m_nZoom)
                           : std::lower_bound(std::begin(kSteps), std::end(kSteps), m_nZoom);
    if (step == (isIn ? std::end(kSteps) : std::begin(kSteps)))
        return false;
    return ZoomTo(isIn ? *step : step[-1], fixed);
}

// Keys and mouse ------------------------------------------------------------------------------------------------------

/// \return FALSE for a number that is no command
bool CZoBitmapWnd::Obey(int command)
{
    const CPoint middle = GetClientArea().CenterPoint();
    const auto zoomed = [this](bool isOther) {
        if (isOther)
            Notify(ZON_BITMAP_ZOOMED);
        return true;
    };
    const int line = CZoGlobalGDIData::Scale(kLine);
    const int page = (std::max)(static_cast<int>(GetClientArea().Height()) - line, line);
    CPoint to = m_scroll;
    switch (command) {
    case kLeft:
        to.x -= line;
        break;
    case kRight:
        to.x += line;
        break;
    case kUp:
        to.y -= line;
        break;
    case kDown:
        to.y += line;
        break;
    case kPageUp:
        to.y -= page;
        break;
    case kPageDown:
        to.y += page;
        break;
    case kBegin:
        to = CPoint();
        break;
    case kEnd:
        to = CPoint() + GetScrollRange();
        break;
    case kZoomIn:
    case kZoomOut:
        return zoomed(StepZoom(command == kZoomIn, middle));
    case kZoomNone:
        return zoomed(ZoomTo(100, middle));
    default:
        return false;
    }
    TellScrolled(ScrollTo(to));
    return true;
}

/// \return FALSE if it belongs to another window
bool CZoBitmapWnd::OnWheel(WPARAM wParam, LPARAM lParam, bool isDown)
{
    const bool isZoom = isDown && (LOWORD(wParam) & MK_CONTROL) != 0;
    if (!IsZoomable() || !(isZoom || IsScrollable()))
        return false;
    m_nWheel += static_cast<short>(HIWORD(wParam));
    const int notches = m_nWheel / WHEEL_DELTA;
    m_nWheel %= WHEEL_DELTA;
    if (notches == 0)
        return true;
    if (isZoom) {
        CPoint fixed = PointOf(lParam);
        ScreenToClient(&fixed);
        if (StepZoom(notches > 0, fixed))
            Notify(ZON_BITMAP_ZOOMED);
        return true;
    }
    UINT lines = kWheelLines;
    ::SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const CSize area = GetClientArea().Size();
    const int page = isDown ? area.cy : area.cx;
    const int by = lines == WHEEL_PAGESCROLL
                       ? page
                       : CZoGlobalGDIData::Scale(kLine) * static_cast<int>((std::min)(lines, kMostLines));
    TellScrolled(ScrollTo(m_scroll + (isDown ? CPoint(0, -notches * by) : CPoint(notches * by, 0))));
    return true;
}

LRESULT CZoBitmapWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_GETDLGCODE:
        return IsZoomable() ? DLGC_WANTARROWS | DLGC_WANTCHARS : DLGC_STATIC;
    case WM_KEYDOWN:
        if (IsZoomable() && Obey(CommandOf(kKeys, static_cast<UINT>(wParam))))
            return 0;
        break;
    case WM_LBUTTONDOWN: {
        const Life life(this);
        if (IsZoomable())
            TakeFocus();
        if (!life.IsOver() && m_hWnd != nullptr && IsScrollable() && BeginDrag()) {
            m_dragFrom = PointOf(lParam);
            m_scrollBefore = m_scroll;
        }
        return 0;
    }
    case WM_MOUSEWHEEL:
    case kTilt:
        if (OnWheel(wParam, lParam, message == WM_MOUSEWHEEL))
            return 0;
        break;
    case WM_HSCROLL:
    case WM_VSCROLL:
        OnScrollBar(message == WM_HSCROLL ? SB_HORZ : SB_VERT, LOWORD(wParam));
        return 0;
    case WM_SETCURSOR:
        if (LOWORD(lParam) == HTCLIENT && IsScrollable()) {
            ::SetCursor(::LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_SIZEALL)));
            return TRUE;
        }
        break;
    case WM_QUERYNEWPALETTE:
        RealizeColors(FALSE);
        return HasPicture();
    case WM_PALETTECHANGED:
        if (reinterpret_cast<HWND>(wParam) != m_hWnd)
            RealizeColors(TRUE);
        return 0;
    default:
        break;
    }
    return CZoControl::WindowProc(message, wParam, lParam);
}
