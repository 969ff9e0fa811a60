#include "drag_list.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

int DragList::GetPlaceAt(CPoint point) const
{
    ScreenToClient(&point);
    const int height = (std::max)(GetItemHeight(0), 1);
    const int beyond = point.y + height / 2;
    const int place = GetTopIndex() + (beyond >= 0 ? beyond / height : -1);
    return (std::clamp)(place, 0, GetCount());
}

void DragList::Mark(int place)
{
    if (place == m_nMark)
        return;
    m_nMark = place;
    Invalidate(FALSE);
}

bool DragList::IsFarFrom(CPoint point) const
{
    return std::abs(point.x - m_pressed.x) > ::GetSystemMetrics(SM_CXDRAG) ||
           std::abs(point.y - m_pressed.y) > ::GetSystemMetrics(SM_CYDRAG);
}

void DragList::Begin()
{
    const int row = m_nPressed;
    CListBox::WindowProc(WM_LBUTTONUP, 0, MAKELPARAM(m_pressed.x, m_pressed.y)); // the system's own tracking ends
    m_nPressed = -1;
    if (m_hWnd == nullptr || row >= GetCount())
        return;
    ::SetCapture(m_hWnd);
    m_nDragged = row;
}

/// \return the row that was dragged
int DragList::End()
{
    const int row = std::exchange(m_nDragged, -1);
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
    m_client.OnDragEnded();
    return row;
}

LRESULT DragList::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    CPoint point(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
    switch (message) {
    case WM_LBUTTONDOWN: {
        const LRESULT result = CListBox::WindowProc(message, wParam, lParam);
        const int row = m_hWnd != nullptr ? GetCurSel() : -1;
        CRect area;
        if (row >= 0 && GetItemRect(row, &area) != LB_ERR && area.PtInRect(point)) {
            m_pressed = point;
            m_nPressed = row;
        }
        return result;
    }
    case WM_MOUSEMOVE:
        if (m_nPressed >= 0 && (wParam & MK_LBUTTON) != 0) {
            if (!IsFarFrom(point))
                return 0;
            Begin();
        }
        if (!IsDragging())
            break;
        ClientToScreen(&point);
        m_client.OnDragOver(*this, point);
        return 0;
    case WM_LBUTTONUP:
        m_nPressed = -1;
        if (!IsDragging())
            break;
        ClientToScreen(&point);
        m_client.OnDrop(*this, End(), point);
        return 0;
    case WM_KEYDOWN:
        if (!IsDragging())
            break;
        if (wParam == VK_ESCAPE)
            End();
        return 0;
    case WM_GETDLGCODE: // Esc does not end the dialog
        if (IsDragging())
            return DLGC_WANTALLKEYS;
        break;
    case WM_CAPTURECHANGED:
        if (IsDragging() && reinterpret_cast<HWND>(lParam) != m_hWnd)
            End();
        break;
    case WM_DESTROY:
        m_nPressed = m_nDragged = -1;
        break;
    default:
        break;
    }
    return CListBox::WindowProc(message, wParam, lParam);
}
