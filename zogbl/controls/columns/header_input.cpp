// What the user does with a header.
#include <zogbl/header.h>

#include <zogbl/gdi_data.h>

#include "common/without_throwing.h"
#include "controls/base/tip.h"
#include "controls/drawing/item_painting.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

// Acts ----------------------------------------------------------------------------------------------------------------

BOOL CZoHeaderWnd::Tell(UINT code, int column, LRESULT* answer)
{
    ZoHeaderNotice notice = {{}, column, m_columns[column].button.m_nWidth, m_columns[column].position};
    return Notify(code, &notice.header, answer);
}

void CZoHeaderWnd::ChangeWidth(int column, int width)
{
    if (StoreWidth(column, width))
        Tell(ZON_HEADER_SIZED, column);
}

void CZoHeaderWnd::ChangePosition(int column, int position)
{
    if (StorePosition(column, position))
        Tell(ZON_HEADER_MOVED, column);
}

void CZoHeaderWnd::FitByUser(int column)
{
    const int width = AskForFit(column);
    if (width >= 0)
        ChangeWidth(column, width);
}

BOOL CZoHeaderWnd::DoPartAction(int part)
{
    const int column = part - 1;
    if (!IsColumn(column) || m_columns[column].button.m_nWidth == 0 || HasFlag(column, CZoHeaderButton::kNoPush))
        return FALSE;
    Tell(ZON_HEADER_PUSHED, column);
    return TRUE;
}

// Keys ----------------------------------------------------------------------------------------------------------------

/// The column that has the keyboard; -1: none is shown.
int CZoHeaderWnd::FocusedColumn() const
{
    const bool isShown = IsColumn(m_nFocused) && m_columns[m_nFocused].button.m_nWidth > 0;
    return isShown ? m_nFocused : NextShown(-1, 1);
}

void CZoHeaderWnd::Focus(int column)
{
    if (column < 0 || column == FocusedColumn())
        return;
    InvalidateRect(GetColumnArea(FocusedColumn()), FALSE);
    InvalidateRect(GetColumnArea(column), FALSE);
    m_nFocused = column;
    if (HasFocus())
        RaiseEvent(EVENT_OBJECT_FOCUS, column + 1);
    OnColumnFocused(column);
}

void CZoHeaderWnd::Obey(int command)
{
    const int column = FocusedColumn();
    if (column < 0)
        return;
    const int position = m_columns[column].position;
    const bool isFixed = HasFlag(column, CZoHeaderButton::kFixedWidth);
    const int width = m_columns[column].button.m_nWidth;
    const int step = CZoGlobalGDIData::Scale(kWidthStep);
    switch (command) {
    case kPrevious:
        Focus(NextShown(position, -1));
        break;
    case kNext:
        Focus(NextShown(position, 1));
        break;
    case kFirst:
        Focus(NextShown(-1, 1));
        break;
    case kLast:
        Focus(NextShown(GetColumnCount(), -1));
        break;
    case kPush:
        DoPartAction(column + 1);
        break;
    case kNarrower:
    case kWider:
        if (!isFixed)
            ChangeWidth(column, (std::max)(width + (command == kWider ? step : -step), 1));
        break;
    case kFit:
        if (!isFixed)
            FitByUser(column);
        break;
    case kMoveBack:
    case kMoveOn: {
        const int neighbour = NextShown(position, command == kMoveOn ? 1 : -1);
        if (neighbour >= 0 && (GetStyle() & kMovable) != 0)
            ChangePosition(column, m_columns[neighbour].position);
        break;
    }
    default:
        break;
    }
}

// Mouse ---------------------------------------------------------------------------------------------------------------

void CZoHeaderWnd::OnButtonDown(CPoint point, BOOL isDouble)
{
    if ((GetStyle() & WS_TABSTOP) != 0) {
        const Life life(this);
        TakeFocus();
        if (life.IsOver())
            return;
    }
    Place place = Place::kNowhere;
    const int column = HitTest(point, place);
    if (place == Place::kDivider && isDouble) {
        FitByUser(column);
        return;
    }
    const bool isButton = place == Place::kButton;
    if (isButton)
        Focus(column);
    const bool isPushable = isButton && !HasFlag(column, CZoHeaderButton::kNoPush);
    if (place == Place::kNowhere || (isButton && !isPushable && (GetStyle() & kMovable) == 0) || !BeginDrag())
        return;
    m_drag = isButton ? Drag::kPush : Drag::kWidth;
    m_nDragged = column;
    m_grip = point;
    m_nWidthBefore = m_columns[column].button.m_nWidth;
    m_bPressed = isPushable;
    m_nDropPosition = -1;
    InvalidateRect(GetColumnArea(column), FALSE);
}

int CZoHeaderWnd::WidthAt(CPoint point) const { return (std::max)(m_nWidthBefore + int{point.x - m_grip.x}, 1); }

BOOL CZoHeaderWnd::IsOnPushed(CPoint point) const
{
    return !HasFlag(m_nDragged, CZoHeaderButton::kNoPush) && GetColumnArea(m_nDragged).PtInRect(point);
}

/// Where the column dragged would go: behind all others whose middle is on the left.
int CZoHeaderWnd::DropPositionAt(CPoint point) const
{
    int position = 0;
    for (int i = 0; i < GetColumnCount(); ++i)
        position += i != m_nDragged && GetColumnArea(i).CenterPoint().x < point.x;
    return position;
}

/// Where the line stands that shows this; -1: nowhere.
int CZoHeaderWnd::DropMark() const
{
    const int before = GetPosition(m_nDragged);
    if (m_drag != Drag::kMove || m_nDropPosition < 0 || m_nDropPosition == before)
        return -1;
    const CRect area = GetColumnArea(GetColumnAt(m_nDropPosition));
    return m_nDropPosition > before ? area.right : area.left;
}

void CZoHeaderWnd::OnDragMove(CPoint point)
{
    if (m_drag == Drag::kWidth) {
        if (StoreWidth(m_nDragged, WidthAt(point)))
            Tell(ZON_HEADER_SIZING, m_nDragged);
        return;
    }
    if ((GetStyle() & kMovable) != 0 && std::abs(point.x - m_grip.x) > ::GetSystemMetrics(SM_CXDRAG))
        m_drag = Drag::kMove;
    const BOOL isPressed = m_drag == Drag::kPush && IsOnPushed(point);
    const int drop = m_drag == Drag::kMove ? DropPositionAt(point) : -1;
    if (isPressed == m_bPressed && drop == m_nDropPosition)
        return;
    m_bPressed = isPressed;
    m_nDropPosition = drop;
    Invalidate(FALSE);
}

void CZoHeaderWnd::OnDragEnd(CPoint point)
{
    const int column = m_nDragged;
    const bool isOnPushed = IsOnPushed(point);
    const int drop = DropPositionAt(point);
    const Drag drag = std::exchange(m_drag, Drag::kNone);
    m_nDragged = m_nDropPosition = -1;
    m_bPressed = FALSE;
    Invalidate(FALSE);
    switch (drag) {
    case Drag::kWidth:
        StoreWidth(column, WidthAt(point));
        if (m_columns[column].button.m_nWidth != m_nWidthBefore)
            Tell(ZON_HEADER_SIZED, column);
        break;
    case Drag::kMove:
        ChangePosition(column, drop);
        break;
    case Drag::kPush:
        if (isOnPushed)
            DoPartAction(column + 1);
        break;
    default:
        break;
    }
}

void CZoHeaderWnd::OnDragUndo()
{
    const int column = std::exchange(m_nDragged, -1);
    const Drag drag = std::exchange(m_drag, Drag::kNone);
    m_nDropPosition = -1;
    m_bPressed = FALSE;
    Invalidate(FALSE);
    if (drag == Drag::kWidth && StoreWidth(column, m_nWidthBefore))
        Tell(ZON_HEADER_SIZING, column);
}

/// \return FALSE: the cursor is the window's
BOOL CZoHeaderWnd::OnSetCursor(LPARAM hit) const
{
    CPoint point;
    Place place = Place::kNowhere;
    if (static_cast<short>(LOWORD(hit)) != HTCLIENT || !::GetCursorPos(&point))
        return FALSE;
    ScreenToClient(&point);
    HitTest(point, place);
    if (place == Place::kDivider)
        ::SetCursor(::LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_SIZEWE)));
    return place == Place::kDivider;
}

/// Over a title that is shortened there is a tip.
void CZoHeaderWnd::FollowMouse(UINT message, WPARAM wParam, LPARAM lParam)
{
    const int column = IsDragging() ? -1 : ColumnIn(CPoint(lParam));
    ControlTip::Place place;
    if (column >= 0 && m_columns[column].button.IsShortened(WindowFontDC(m_hWnd, GetFontHandle())))
        place = {column + 1, GetColumnArea(column), m_columns[column].button.m_csText};
    ControlTip::Follow(m_pTip, *this, place, message, wParam, lParam);
}

LRESULT CZoHeaderWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST)
        WithoutThrowing([&] { FollowMouse(message, wParam, lParam); });
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        OnButtonDown(CPoint(lParam), message == WM_LBUTTONDBLCLK);
        return 0;
    case WM_SETCURSOR:
        if (OnSetCursor(lParam))
            return TRUE;
        break;
    case WM_KEYDOWN:
        if (const int command = CommandOf(kKeys, static_cast<UINT>(wParam)); command != 0 && !IsDragging()) {
            Obey(command);
            return 0;
        }
        break;
    case WM_GETDLGCODE: {
        const auto* key = reinterpret_cast<const MSG*>(lParam);
        const bool isPush = key != nullptr && key->wParam == VK_RETURN; // not the dialog's default button
        return DLGC_WANTARROWS | (isPush ? DLGC_WANTALLKEYS : 0);
    }
    case WM_DESTROY:
        if (m_pTip != nullptr)
            m_pTip->Destroy();
        break;
    default:
        break;
    }
    return CZoControl::WindowProc(message, wParam, lParam);
}
