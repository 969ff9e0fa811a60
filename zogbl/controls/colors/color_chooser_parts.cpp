#include <zogbl/color_chooser.h>

#include <zogbl/resource_ids.h>

#include "colors.h"

#include <algorithm>

#include <oleacc.h>

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

/// \return FALSE: it cannot be loaded now
BOOL CZoColorChooser::NamePart(int part, CString& name) const
{
    const COLORREF color = GetPartColor(part);
    if (color == CLR_INVALID)
        return LoadColorText(ZO_IDS_COLOR_MORE, name);
    const int custom = part - HasStyle(kAutomatic) - m_nColors;
    if (custom < 1)
        return NameColor(color, name);
    CString format;
    const BOOL isLoaded = LoadColorText(ZO_IDS_COLOR_CUSTOM, format);
    name.Format(format, custom);
    return isLoaded;
}

CString CZoColorChooser::GetPartName(int part) const
{
    CString name;
    NamePart(part, name);
    return name;
}

int CZoColorChooser::GetRowCount(DWORD parts) const
{
    const auto rows = [this](int count) { return (count + m_nColumns - 1) / m_nColumns; };
    return ((parts & kAutomatic) != 0) + rows(m_nColors) + rows(m_nCustom) + ((parts & kMore) != 0) + 1;
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
    int index = part - 1 - HasStyle(kAutomatic);
    if (index < 0)
        return 0;
    int row = HasStyle(kAutomatic);
    for (const int count : {m_nColors, m_nCustom}) {
        if (index < count)
            return row + index / m_nColumns;
        index -= count;
        row += (count + m_nColumns - 1) / m_nColumns;
    }
    return row;
}

CRect CZoColorChooser::GetRowArea(int row) const
{
    const int rows = GetRowCount(m_dwParts);
    return {0, ::MulDiv(m_size.cy, row, rows), m_size.cx, ::MulDiv(m_size.cy, row + 1, rows)};
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
