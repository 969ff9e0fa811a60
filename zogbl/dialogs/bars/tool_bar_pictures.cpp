#include "tool_bar_pictures.h"

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>

#include "controls/drawing/bitmap_dc.h"
#include "controls/drawing/plain_layout.h"

bool ToolBarPictures::Load(UINT id, int width)
{
    CBitmap loaded;
    BITMAP description = {};
    if (width < 1 || !loaded.LoadBitmap(id) || ::GetObjectA(loaded, sizeof description, &description) == 0 ||
        description.bmWidth % width != 0)
        return false;
    const int count = description.bmWidth / width;
    const CSize size(CZoGlobalGDIData::Scale(width), CZoGlobalGDIData::Scale(description.bmHeight));
    auto pictures = std::make_unique<CZoTransBmp>(count, 1);
    if (size.cx == width) {
        pictures->Attach(loaded.Detach());
    } else {
        const CClientDC screen(nullptr);
        if (!pictures->Attach(::CreateCompatibleBitmap(screen, size.cx * count, size.cy)))
            return false;
        const BitmapDC source(screen, loaded), target(screen, *pictures);
        ::SetStretchBltMode(target, COLORONCOLOR); // mixed colours would stand around the shapes
        if (!::StretchBlt(target, 0, 0, size.cx * count, size.cy, source, 0, 0, description.bmWidth,
                          description.bmHeight, SRCCOPY))
            return false;
    }
    m_pictures = std::move(pictures);
    m_size = size;
    m_count = count;
    return true;
}

void ToolBarPictures::Draw(CDC* dc, CRect area, int picture, bool isEnabled) const
{
    if (m_pictures == nullptr)
        return;
    area = CRect(area.CenterPoint() - CSize(m_size.cx / 2, m_size.cy / 2), m_size);
    const PlainLayout plain(*dc, {&area});
    if (isEnabled && !CZoGlobalGDIData::IsHighContrast()) {
        m_pictures->DrawCellTrans(dc, area.left, area.top, picture, 0);
        return;
    }
    CBitmap shape; // on white
    if (!shape.Attach(::CreateCompatibleBitmap(*dc, m_size.cx, m_size.cy)))
        return;
    {
        const BitmapDC memory(*dc, shape);
        ::PatBlt(memory, 0, 0, m_size.cx, m_size.cy, WHITENESS);
        m_pictures->DrawCellTrans(memory, 0, 0, picture, 0);
    }
    if (!isEnabled)
        ZoDrawDisabledBitmap(*dc, area, shape);
    else
        ::DrawStateA(*dc, CZoGlobalGDIData::GetBrush(COLOR_BTNTEXT), nullptr,
                     reinterpret_cast<LPARAM>(static_cast<HBITMAP>(shape)), 0, area.left, area.top, 0, 0,
                     DST_BITMAP | DSS_MONO);
}
