#include <zogbl/color_chooser.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "colors.h"

#include <algorithm>
#include <utility>

#include <oleacc.h>

IMPLEMENT_DYNAMIC(CZoColorChooser, CZoControl)

CZoColorChooser::CZoColorChooser()
    : m_pColors(kStandardColors), m_nColors(kStandardColorCount), m_nColumns(kStandardColumns)
{
}

// Colours -------------------------------------------------------------------------------------------------------------

BOOL CZoColorChooser::SetColor(COLORREF color)
{
    if (!IsPlainColor(color) && color != CLR_DEFAULT)
        return FALSE;
    const COLORREF before = std::exchange(m_color, color);
    m_nLine = -1;
    if (before == color || m_hWnd == nullptr)
        return TRUE;
    InvalidatePart(FindColor(before));
    InvalidatePart(FindColor(color));
    if (!HasFocus())
        m_nFocused = (std::max)(FindColor(color), 1);
    RaiseEvent(EVENT_OBJECT_SELECTION, FindColor(color));
    RaiseEvent(EVENT_OBJECT_VALUECHANGE);
    return TRUE;
}

COLORREF CZoColorChooser::GetShownColor() const
{
    return m_color == CLR_DEFAULT ? ::GetSysColor(m_nAutomatic) : m_color;
}

BOOL CZoColorChooser::SetAutomaticColor(int systemColor)
{
    if (systemColor < 0 || systemColor > COLOR_MENUBAR)
        return FALSE;
    m_nAutomatic = systemColor;
    if (m_hWnd != nullptr)
        Invalidate(FALSE);
    return TRUE;
}

BOOL CZoColorChooser::SetColors(const ZoNamedColor* colors, int count, int columns)
{
    if (colors == nullptr || count < 1 || count > kMostColors || columns < 1 || columns > count ||
        !std::all_of(colors, colors + count, [](const ZoNamedColor& named) { return IsPlainColor(named.color); }))
        return FALSE;
    m_pColors = colors;
    m_nColors = count;
    m_nColumns = columns;
    if (m_hWnd != nullptr) {
        UndoDrag();
        m_nFocused = (std::max)(FindColor(m_color), 1);
        Relayout();
    }
    return TRUE;
}

BOOL CZoColorChooser::NameColor(COLORREF color, CString& name) const
{
    return ::NameColor(m_pColors, m_nColors, color, name);
}

CString CZoColorChooser::GetColorName(COLORREF color) const
{
    CString name;
    NameColor(color, name);
    return name;
}

CString CZoColorChooser::GetColorText() const { return TextOf(m_color, GetColorName(m_color)); }

/// The custom colours that are none are left out.
void CZoColorChooser::ReadCustomColors()
{
    const COLORREF* colors = ::ReadCustomColors();
    const COLORREF* end = std::remove_copy(colors, colors + kCustomColorCount, m_custom, kNoCustomColor);
    m_nCustom = static_cast<int>(end - m_custom);
}

void CZoColorChooser::PreSubclassWindow()
{
    CZoControl::PreSubclassWindow();
    ReadCustomColors();
    OnLayout();
    m_nFocused = (std::max)(FindColor(m_color), 1);
    m_typed.Forget();
    ::GetCursorPos(&m_mouse);
}

// What the user does --------------------------------------------------------------------------------------------------

BOOL CZoColorChooser::DoPartAction(int part)
{
    if (part < 1 || part > GetPartCount())
        return FALSE;
    OnChosen(part);
    return TRUE;
}

void CZoColorChooser::OnChosen(int part)
{
    COLORREF color = GetPartColor(part);
    if (color == CLR_INVALID) {
        color = GetShownColor();
        const BOOL hasFocus = HasFocus();
        const Life life(this);
        const BOOL isChosen = AskForColor(GetTopLevelParent(), color);
        if (life.IsOver() || m_hWnd == nullptr)
            return;
        UndoDrag();
        ReadCustomColors();
        m_nFocused = (std::max)(FindColor(m_color), 1);
        Relayout();
        if (hasFocus)
            TakeFocus();
        if (!isChosen || life.IsOver() || m_hWnd == nullptr)
            return;
    }
    if (color == m_color)
        return;
    SetColor(color);
    ZoColorNotification notification = {};
    notification.color = color;
    Notify(ZON_COLOR_CHANGED, &notification.header);
}

void CZoColorChooser::MoveTo(int part)
{
    if (part < 1 || part > GetPartCount() || part == m_nFocused)
        return;
    InvalidatePart(std::exchange(m_nFocused, part));
    InvalidatePart(part);
    if (HasFocus())
        RaiseEvent(EVENT_OBJECT_FOCUS, part);
}

void CZoColorChooser::MoveBy(int command)
{
    const int row = FindRow(m_nFocused);
    switch (command) {
    case kLeft:
    case kRight:
        MoveTo(command == kLeft ? m_nFocused - 1 : m_nFocused + 1);
        break;
    case kUp:
    case kDown: {
        const Row to = GetRow(command == kUp ? (std::max)(row - 1, 0) : row + 1);
        if (to.count != 0 && (command == kDown || row > 0))
            MoveTo(to.first + (std::min)(m_nFocused - GetRow(row).first, to.count - 1));
        break;
    }
    case kFirst:
        MoveTo(1);
        break;
    default:
        MoveTo(GetPartCount());
        break;
    }
}

/// The next part whose name begins with a text, from one on and around. \return 0 if there is none
int CZoColorChooser::FindName(int from, LPCSTR text) const
{
    const int count = GetPartCount();
    for (int i = 0; i < count; ++i) {
        const int part = (from - 1 + i) % count + 1;
        if (CZoTypeAhead::Begins(GetPartName(part), text))
            return part;
    }
    return 0;
}

/// Whether a space goes on with what was typed: "Dark " of "Dark red". Else it chooses.
BOOL CZoColorChooser::IsSpaceTyped() const
{
    const LPCSTR typed = m_typed.Get();
    return typed[0] != '\0' && WithoutThrowing([&]() -> BOOL { return FindName(1, CString(typed) + " ") != 0; });
}

void CZoColorChooser::OnTyped(UINT character)
{
    if (!m_typed.Type(character))
        return;
    const auto find = [this](LPCSTR text, bool isNext) { return FindName(m_nFocused + isNext, text); };
    WithoutThrowing([&] { MoveTo(m_typed.Find(find)); });
}

void CZoColorChooser::OnMouseMoved(CPoint point)
{
    CPoint place = point;
    ClientToScreen(&place);
    if (std::exchange(m_mouse, place) != place && HasStyle(kDropDown)) // a window that opens under it moves it not
        MoveTo(FindPart(point));
}

void CZoColorChooser::OnDragMove(CPoint point) { MoveTo(FindPart(point)); }
void CZoColorChooser::OnDragUndo() { MoveTo(m_nBeforeDrag); }

void CZoColorChooser::OnDragEnd(CPoint point)
{
    const int part = FindPart(point);
    if (part != 0)
        OnChosen(part);
    else
        MoveTo(m_nBeforeDrag);
}

LRESULT CZoColorChooser::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const CPoint point(lParam);
    switch (message) {
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_KEYDOWN:
        if (const int command = CommandOf(kKeys, static_cast<UINT>(wParam));
            command != 0 && (wParam != VK_SPACE || !IsSpaceTyped())) {
            m_typed.Forget();
            if (command == kChoose)
                OnChosen(m_nFocused);
            else
                MoveBy(command);
            return 0;
        }
        break;
    case WM_CHAR:
        if (wParam != ' ' || IsSpaceTyped())
            OnTyped(static_cast<UINT>(wParam));
        return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: {
        const Life life(this);
        TakeFocus();
        if (life.IsOver() || m_hWnd == nullptr)
            return 0;
        m_typed.Forget();
        m_nBeforeDrag = m_nFocused;
        if (FindPart(point) != 0 && BeginDrag())
            MoveTo(FindPart(point));
        return 0;
    }
    case WM_MOUSEMOVE:
        if (!IsDragging())
            OnMouseMoved(point);
        break;
    case WM_KILLFOCUS:
        m_typed.Forget();
        break;
    default:
        break;
    }
    return CZoControl::WindowProc(message, wParam, lParam);
}
