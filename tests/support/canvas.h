/// \file
/// A bitmap in a memory context, to be drawn upon and looked at pixel by pixel.
#pragma once

#include <afxwin.h>

namespace zo_test {

class Canvas {
public:
    /// \param bitmap the canvas's from now on
    explicit Canvas(HBITMAP bitmap) : m_bitmap(bitmap), m_old(SelectObject(m_dc, bitmap)) {}
    /// In 32 bits, of no colour in particular.
    Canvas(int width, int height) : Canvas(CreateBitmap(width, height, 1, 32, nullptr)) {}
    Canvas(int width, int height, COLORREF background) : Canvas(width, height)
    {
        const HBRUSH brush = CreateSolidBrush(background);
        const RECT area = {0, 0, width, height};
        FillRect(m_dc, &area, brush);
        DeleteObject(brush);
    }
    ~Canvas()
    {
        SelectObject(m_dc, m_old);
        DeleteObject(m_bitmap);
        DeleteDC(m_dc);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    operator HDC() const { return m_dc; }
    CSize Size() const
    {
        BITMAP bitmap = {};
        GetObjectA(m_bitmap, sizeof bitmap, &bitmap);
        return {bitmap.bmWidth, bitmap.bmHeight};
    }
    /// Lets the dialog of an owner-drawn list box draw a row over the whole of it.
    void DrawRow(HWND list, int row, UINT action, UINT state) const
    {
        const auto id = static_cast<UINT>(GetDlgCtrlID(list));
        const CSize size = Size();
        DRAWITEMSTRUCT item = {ODT_LISTBOX, id,   static_cast<UINT>(row),   action, state,
                               list,        m_dc, {0, 0, size.cx, size.cy}, 0};
        SendMessageA(GetParent(list), WM_DRAWITEM, id, reinterpret_cast<LPARAM>(&item));
    }
    COLORREF At(int x, int y) const { return GetPixel(m_dc, x, y); }
    /// The pixels of that colour in an area.
    int Count(COLORREF color, const RECT& area) const
    {
        int count = 0;
        for (int x = area.left; x < area.right; ++x) {
            for (int y = area.top; y < area.bottom; ++y)
                count += At(x, y) == color;
        }
        return count;
    }

private:
    const HDC m_dc = CreateCompatibleDC(nullptr);
    const HBITMAP m_bitmap;
    const HGDIOBJ m_old;
};

} // namespace zo_test
