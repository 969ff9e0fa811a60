#include "arrow.h"

#include <zogbl/gdi_data.h>

void DrawArrow(CDC* dc, const CRect& area, ArrowTo direction, COLORREF color)
{
    const int depth = CZoGlobalGDIData::Scale(4);
    const CPoint middle = area.CenterPoint();
    for (int i = 0; i < depth; ++i) { // lines, from the point of the arrow on
        const int offset = i - depth / 2;
        switch (direction) {
        case ArrowTo::kLeft:
            dc->FillSolidRect(middle.x + offset, middle.y - i, 1, 2 * i + 1, color);
            break;
        case ArrowTo::kRight:
            dc->FillSolidRect(middle.x - offset, middle.y - i, 1, 2 * i + 1, color);
            break;
        case ArrowTo::kUp:
            dc->FillSolidRect(middle.x - i, middle.y + offset, 2 * i + 1, 1, color);
            break;
        case ArrowTo::kDown:
            dc->FillSolidRect(middle.x - i, middle.y - offset, 2 * i + 1, 1, color);
            break;
        }
    }
}
