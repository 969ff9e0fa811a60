#include <zogbl/color_chooser.h>

#include <common/double_byte.h>
#include <common/without_throwing.h>
#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/resource_ids.h>

#include "colors.h"
#include "controls/drawing/item_painting.h"

#include <algorithm>
#include <utility>

#include <oleacc.h>

IMPLEMENT_DYNAMIC(CZoColorChooser, CZoControl)

namespace {

constexpr int kMargin = 3; // of a swatch or a text in its cell, at 96 dots an inch

/// Whether the second half of the last character is still to come.
bool IsIncomplete(LPCSTR text)
{
    bool isHalf = false;
    for (; *text != '\0'; text = NextCharacter(text))
        isHalf = IsLeadByte(text[0]) && text[1] == '\0';
    return isHalf;
}

} // namespace

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

CString CZoColorChooser::GetColorName(COLORREF color) const
{
    const ZoNamedColor* end = m_pColors + m_nColors;
    const ZoNamedColor* found =
        std::find_if(m_pColors, end, [=](const ZoNamedColor& named) { return named.color == color; });
    const CString name = found != end ? LoadColorText(found->nameId) : CString();
    return !name.IsEmpty() ? name : ZoGetColorName(color);
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
    m_nFocused = (std::max)(FindColor(m_color), 1);
    m_typed.Forget();
    ::GetCursorPos(&m_mouse);
}

// Parts ---------------------------------------------------------------------------------------------------------------

int CZoColorChooser::GetPartCount() const { return HasStyle(kAutomatic) + m_nColors + m_nCustom + HasStyle(kMore); }

COLORREF CZoColorChooser::GetPartColor(int part) const
{
    const int index = part - 1 - HasStyle(kAutomatic);
    if (index < 0)
        return CLR_DEFAULT;
    if (index < m_nColors)
        return m_pColors[index].color;
    return index < m_nColors + m_nCustom ? m_custom[index - m_nColors] : CLR_INVALID;
}

/// \return 0 if it is in no part
int CZoColorChooser::FindColor(COLORREF color) const
{
    for (int part = 1; part <= GetPartCount(); ++part) {
        if (GetPartColor(part) == color)
            return part;
    }
    return HasStyle(kMore) && color != CLR_DEFAULT ? GetPartCount() : 0;
}

CString CZoColorChooser::GetPartName(int part) const
{
    const COLORREF color = GetPartColor(part);
    if (color == CLR_INVALID)
        return LoadColorText(ZO_IDS_COLOR_MORE);
    const int custom = part - HasStyle(kAutomatic) - m_nColors;
    if (custom < 1)
        return GetColorName(color);
    CString name;
    name.Format(LoadColorText(ZO_IDS_COLOR_CUSTOM), custom);
    return name;
}

int CZoColorChooser::GetRowCount(DWORD style) const
{
    const auto rows = [this](int count) { return (count + m_nColumns - 1) / m_nColumns; };
    return ((style & kAutomatic) != 0) + rows(m_nColors) + rows(m_nCustom) + ((style & kMore) != 0) + 1;
}

CZoColorChooser::Row CZoColorChooser::GetRow(int row) const
{
    int part = 1;
    if (HasStyle(kAutomatic) && row-- == 0)
        return {1, 1, 1};
    part += HasStyle(kAutomatic);
    for (const int count : {m_nColors, m_nCustom}) {
        const int rows = (count + m_nColumns - 1) / m_nColumns;
        if (row < rows)
            return {part + row * m_nColumns, (std::min)(m_nColumns, count - row * m_nColumns), m_nColumns};
        row -= rows;
        part += count;
    }
    return {part, HasStyle(kMore) && row == 0 ? 1 : 0, 1};
}

int CZoColorChooser::FindRow(int part) const
{
    int row = 0;
    while (GetRow(row).count != 0 && part >= GetRow(row).first + GetRow(row).count)
        ++row;
    return row;
}

CRect CZoColorChooser::GetRowArea(int row) const
{
    CRect area = GetClientArea();
    const int height = area.bottom;
    const int rows = GetRowCount(GetStyle());
    area.top = ::MulDiv(height, row, rows);
    area.bottom = ::MulDiv(height, row + 1, rows);
    return area;
}

CRect CZoColorChooser::GetPartArea(int part) const
{
    const int index = FindRow(part);
    const Row row = GetRow(index);
    CRect area = GetRowArea(index);
    const int width = area.right;
    area.left = ::MulDiv(width, part - row.first, row.columns);
    area.right = ::MulDiv(width, part - row.first + 1, row.columns);
    return area;
}

int CZoColorChooser::FindPart(CPoint point) const
{
    int part = GetPartCount();
    while (part > 0 && !GetPartArea(part).PtInRect(point))
        --part;
    return part;
}

BOOL CZoColorChooser::DescribePart(int part, ZoPart& description) const
{
    const bool isWhole = part == 0;
    if (part < 0 || part > GetPartCount() || !CZoControl::DescribePart(0, description))
        return FALSE;
    if (isWhole) {
        description.role = ROLE_SYSTEM_TABLE;
        description.value = GetColorText();
        return TRUE;
    }
    const COLORREF color = GetPartColor(part);
    description.name = GetPartName(part);
    description.role = IsPlainColor(color) ? ROLE_SYSTEM_CELL : ROLE_SYSTEM_PUSHBUTTON;
    if (IsPlainColor(color))
        description.value = NumbersOf(color);
    description.action = LoadColorText(ZO_IDS_COLOR_CHOOSE);
    description.state &= STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_UNAVAILABLE;
    description.state |= STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE |
                         (part == FindColor(m_color) ? STATE_SYSTEM_SELECTED : 0) |
                         (part == m_nFocused && HasFocus() ? STATE_SYSTEM_FOCUSED : 0);
    description.area = GetPartArea(part);
    return TRUE;
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
        const Life life(this);
        const BOOL isChosen = AskForColor(GetTopLevelParent(), color);
        if (life.IsOver() || m_hWnd == nullptr)
            return;
        UndoDrag();
        ReadCustomColors();
        m_nFocused = (std::max)(FindColor(m_color), 1);
        Relayout();
        if (!isChosen)
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

void CZoColorChooser::OnTyped(UINT character)
{
    if (!m_typed.Type(character) || IsIncomplete(m_typed.Get()))
        return;
    const auto find = [this](int from) {
        const int count = GetPartCount();
        for (int i = 0; i < count; ++i) {
            const int part = (from - 1 + i) % count + 1;
            if (CZoTypeAhead::Begins(GetPartName(part), m_typed.Get()))
                return part;
        }
        return 0;
    };
    const bool isFirst = NextCharacter(m_typed.Get())[0] == '\0';
    int part = find(isFirst ? m_nFocused + 1 : m_nFocused);
    if (part == 0 && !isFirst) { // the character begins another name
        CZoTypeAhead whole = std::exchange(m_typed, CZoTypeAhead());
        for (LPCSTR last = PreviousCharacter(whole.Get(), whole.Get() + lstrlenA(whole.Get())); *last != '\0'; ++last)
            m_typed.Type(static_cast<BYTE>(*last));
        part = find(m_nFocused + 1);
    }
    MoveTo(part);
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
    const CPoint point(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
    switch (message) {
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_KEYDOWN:
        if (const int command = CommandOf(kKeys, static_cast<UINT>(wParam)); command != 0) {
            m_typed.Forget();
            if (command == kChoose)
                OnChosen(m_nFocused);
            else
                MoveBy(command);
            return 0;
        }
        break;
    case WM_CHAR:
        if (wParam != ' ') // which has chosen
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

// Looks ---------------------------------------------------------------------------------------------------------------

CSize CZoColorChooser::GetIdealSize(CWnd* like)
{
    if (m_hWnd == nullptr)
        ReadCustomColors();
    const CWnd* model = like != nullptr ? like : this;
    auto font = model->m_hWnd != nullptr ? reinterpret_cast<HFONT>(model->SendMessage(WM_GETFONT)) : nullptr;
    const int margins = 2 * CZoGlobalGDIData::Scale(kMargin);
    const HDC screen = ::GetDC(nullptr);
    const HGDIOBJ before = ::SelectObject(screen, font != nullptr ? font : GetFontHandle());
    TEXTMETRICA metrics = {};
    ::GetTextMetricsA(screen, &metrics);
    const int cell = static_cast<int>(metrics.tmHeight) + margins;
    int width = m_nColumns * cell;
    WithoutThrowing([&] {
        const auto measure = [&](const CString& text, int beside) {
            CSize size;
            ::GetTextExtentPoint32A(screen, text, text.GetLength(), &size);
            width = (std::max)(width, static_cast<int>(size.cx) + beside + 2 * margins);
        };
        for (int i = 0; i < m_nColors; ++i)
            measure(TextOf(m_pColors[i].color, GetColorName(m_pColors[i].color)), 0);
        measure(LoadColorText(ZO_IDS_COLOR_AUTOMATIC), cell);
        measure(LoadColorText(ZO_IDS_COLOR_MORE), 0);
    });
    ::SelectObject(screen, before);
    ::ReleaseDC(nullptr, screen);
    return {width, GetRowCount(model->m_hWnd != nullptr ? model->GetStyle() : 0) * cell};
}

BOOL CZoColorChooser::IsFocusMarked(int part) const
{
    return part == m_nFocused && (IsFocusShown() || HasStyle(kDropDown));
}

/// Also the line with the name.
void CZoColorChooser::InvalidatePart(int part)
{
    if (part != 0)
        InvalidateRect(GetPartArea(part), FALSE);
    InvalidateRect(GetRowArea(GetRowCount(GetStyle()) - 1), FALSE);
}

void CZoColorChooser::OnLayout()
{
    if (m_nFocused > GetPartCount())
        m_nFocused = 1; // the style has changed
}

void CZoColorChooser::OnDraw(CDC* dc, const CRect& dirty)
{
    const COLORREF border = SwatchBorder();
    const int shown = FindColor(m_color);
    CRect common;
    dc->FillSolidRect(dirty, ::GetSysColor(COLOR_3DFACE));
    for (int part = 1; part <= GetPartCount(); ++part) {
        if (common.IntersectRect(GetPartArea(part), dirty))
            DrawPart(dc, part, part == shown, border);
    }
    const CRect line = GetRowArea(GetRowCount(GetStyle()) - 1);
    if (!common.IntersectRect(line, dirty))
        return;
    const int named = HasFocus() ? m_nFocused : shown;
    const COLORREF color = named != 0 ? GetPartColor(named) : m_color;
    const SelectedColors colors(*dc, {::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_3DFACE)});
    DrawText(dc, line, color == CLR_INVALID ? GetColorText() : TextOf(color, GetPartName(named)));
}

void CZoColorChooser::DrawPart(CDC* dc, int part, BOOL isPresent, COLORREF border) const
{
    const CRect area = GetPartArea(part);
    const COLORREF color = GetPartColor(part);
    const int margin = CZoGlobalGDIData::Scale(kMargin);
    const ItemColors pair = isPresent ? ItemColors{::GetSysColor(COLOR_HIGHLIGHTTEXT), ::GetSysColor(COLOR_HIGHLIGHT)}
                                      : ItemColors{::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_3DFACE)};
    const SelectedColors colors(*dc, pair);
    if (isPresent)
        dc->FillSolidRect(area, pair.background);
    CRect swatch = area;
    swatch.DeflateRect(margin, margin);
    CRect text = area;
    if (color == CLR_DEFAULT) {
        swatch.right = (std::min)(swatch.right, swatch.left + swatch.Height());
        text.left = swatch.right;
    }
    if (color != CLR_INVALID)
        DrawSwatch(dc, swatch, color == CLR_DEFAULT ? ::GetSysColor(m_nAutomatic) : color, border, !IsWindowEnabled());
    if (!IsPlainColor(color))
        DrawText(dc, text, GetPartName(part));
    if (IsFocusMarked(part))
        ZoDrawFocus(*dc, area);
}

void CZoColorChooser::DrawText(CDC* dc, CRect area, LPCSTR text) const
{
    area.DeflateRect(2 * CZoGlobalGDIData::Scale(kMargin), 0);
    if (!IsWindowEnabled())
        ZoDrawDisabledText(*dc, area, text, -1, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    else
        ZoDrawShortenedText(*dc, area, text, DT_VCENTER, ZoShorten::kEnd);
}
