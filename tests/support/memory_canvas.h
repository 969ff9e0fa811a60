/// \file
/// A bitmap in memory that something is drawn into, and its pixels.
#pragma once

#include <afxwin.h>

namespace zo_test {

class MemoryCanvas {
public:
    MemoryCanvas(int width, int height, COLORREF background)
        : m_area(0, 0, width, height), m_dc(CreateCompatibleDC(nullptr)),
          m_bitmap(CreateBitmap(width, height, 1, 32, nullptr)), m_old(SelectObject(m_dc, m_bitmap))
    {
        const HBRUSH brush = CreateSolidBrush(background);
        FillRect(m_dc, &m_area, brush);
        DeleteObject(brush);
    }
    ~MemoryCanvas()
    {
        SelectObject(m_dc, m_old);
        DeleteObject(m_bitmap);
        DeleteDC(m_dc);
    }
    MemoryCanvas(const MemoryCanvas&) = delete;
    MemoryCanvas& operator=(const MemoryCanvas&) = delete;

    /// Lets the dialog of an owner-drawn list draw a row over the whole of it.
    void DrawRow(HWND list, int row, UINT action, UINT state)
    {
        const auto id = static_cast<UINT>(GetDlgCtrlID(list));
        DRAWITEMSTRUCT item = {ODT_LISTBOX, id, static_cast<UINT>(row), action, state, list, m_dc, m_area, 0};
        SendMessageA(GetParent(list), WM_DRAWITEM, id, reinterpret_cast<LPARAM>(&item));
    }

    HDC Get() const { return m_dc; }
    COLORREF At(int x, int y) const { return GetPixel(m_dc, x, y); }
    /// The pixels of a colour in columns \p from to \p to, without \p margin rows at top and bottom.
    int Count(COLORREF color, int from, int to, int margin = 0) const
    {
        int count = 0;
        for (int x = from; x < to; ++x) {
            for (int y = margin; y < m_area.bottom - margin; ++y)
                count += At(x, y) == color;
        }
        return count;
    }

private:
    CRect m_area;
    HDC m_dc;
    HBITMAP m_bitmap;
    HGDIOBJ m_old;
};

} // namespace zo_test
