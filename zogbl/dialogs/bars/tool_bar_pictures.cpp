#include "tool_bar_pictures.h"

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>

#include "controls/drawing/bitmap_dc.h"
#include "controls/drawing/plain_layout.h"

bool ToolBarPictures::Load(UINT id, int width)
{
    const LPCSTR name = MAKEINTRESOURCEA(id);
    BitmapHolder bitmap(::LoadBitmapA(AfxFindResourceHandle(name, RT_BITMAP), name));
    BITMAP description = {};
    if (width < 1 || ::GetObjectA(bitmap.get(), sizeof description, &description) == 0 ||
        description.bmWidth % width != 0)
        return false;
    const int count = description.bmWidth / width;
    const CSize size(CZoGlobalGDIData::Scale(width), CZoGlobalGDIData::Scale(description.bmHeight));
    if (size.cx != width) {
        const CClientDC screen(nullptr);
        BitmapHolder scaled(::CreateCompatibleBitmap(screen, size.cx * count, size.cy));
        {
            const BitmapDC source(screen, bitmap.get()), target(screen, scaled.get());
            ::SetStretchBltMode(target, COLORONCOLOR); // mixed colours would stand around the shapes
            if (!target.IsReady() || !::StretchBlt(target, 0, 0, size.cx * count, size.cy, source, 0, 0,
                                                   description.bmWidth, description.bmHeight, SRCCOPY))
                return false;
        }
        bitmap = std::move(scaled);
    }
    auto pictures = std::make_unique<CZoTransBmp>(count, 1);
    if (!pictures->Attach(bitmap.get()))
        return false;
    bitmap.release(); // it belongs to the pictures
    m_pictures = std::move(pictures);
    m_size = size;
    m_count = count;
    return true;
}

void ToolBarPictures::Draw(CDC* dc, CRect area, int picture, bool isEnabled, int color) const
{
    if (m_pictures == nullptr)
        return;
    area = CRect(area.CenterPoint() - CSize(m_size.cx / 2, m_size.cy / 2), m_size);
    const PlainLayout plain(*dc, {&area});
    if (isEnabled && !CZoGlobalGDIData::IsHighContrast()) {
        m_pictures->DrawCellTrans(dc, area.left, area.top, picture, 0);
        return;
    }
    const BitmapHolder shape(::CreateCompatibleBitmap(*dc, m_size.cx, m_size.cy)); // on white
    {
        const BitmapDC memory(*dc, shape.get());
        if (!memory.IsReady())
            return;
        ::PatBlt(memory, 0, 0, m_size.cx, m_size.cy, WHITENESS);
        m_pictures->DrawCellTrans(memory, 0, 0, picture, 0);
    }
    if (!isEnabled)
        ZoDrawDisabledBitmap(*dc, area, shape.get());
    else
        ::DrawStateA(*dc, CZoGlobalGDIData::GetBrush(color), nullptr, reinterpret_cast<LPARAM>(shape.get()), 0,
                     area.left, area.top, 0, 0, DST_BITMAP | DSS_MONO);
}
