#include "paint_buffer.h"

#include <algorithm>
#include <new>

struct PaintBuffer::Bitmap {
    ~Bitmap() { ::DeleteObject(handle); }

    HBITMAP handle;
    CSize size;
    int depth; ///< bits a pixel of the device it was made for
};

PaintBuffer::Bitmap* PaintBuffer::s_idle = nullptr;

namespace {

/// Takes what stands there, and leaves another in its place.
template <class ITEM> ITEM* Swap(ITEM*& place, ITEM* other)
{
    return static_cast<ITEM*>(InterlockedExchangePointer(reinterpret_cast<void**>(&place), other));
}

} // namespace

PaintBuffer::PaintBuffer(HDC target, const CRect& area) : m_target(target), m_area(area)
{
    Begin();
    m_dc.SetOutputDC(m_memory != nullptr ? m_memory : target);
    m_dc.SetAttribDC(m_dc.m_hDC);
}

void PaintBuffer::Begin()
{
    const int depth = ::GetDeviceCaps(m_target, BITSPIXEL) * ::GetDeviceCaps(m_target, PLANES);
    m_pBitmap = Swap<Bitmap>(s_idle, nullptr);
    CSize size = m_area.Size();
    if (m_pBitmap != nullptr &&
        (m_pBitmap->depth != depth || m_pBitmap->size.cx < size.cx || m_pBitmap->size.cy < size.cy)) {
        size = CSize((std::max)(size.cx, m_pBitmap->size.cx), (std::max)(size.cy, m_pBitmap->size.cy));
        delete m_pBitmap;
        m_pBitmap = nullptr;
    }
    if (m_pBitmap == nullptr) {
        const HBITMAP made = ::CreateCompatibleBitmap(m_target, size.cx, size.cy);
        m_pBitmap = made != nullptr ? new (std::nothrow) Bitmap{made, size, depth} : nullptr;
        if (m_pBitmap == nullptr) {
            ::DeleteObject(made);
            return;
        }
    }
    m_memory = ::CreateCompatibleDC(m_target);
    m_before = m_memory != nullptr ? ::SelectObject(m_memory, m_pBitmap->handle) : nullptr;
    if (m_before == nullptr) {
        ::DeleteDC(m_memory);
        m_memory = nullptr;
        delete Swap(s_idle, m_pBitmap);
        return;
    }
    CDC target;
    target.SetOutputDC(m_target);
    target.SetAttribDC(m_target);
    CDC memory;
    memory.SetOutputDC(m_memory);
    memory.SetAttribDC(m_memory);
    if (const DWORD layout = target.GetLayout(); layout != 0 && layout != GDI_ERROR)
        memory.SetLayout(layout);
    memory.SetViewportOrg(-m_area.left, -m_area.top);
    ::SelectPalette(m_memory, static_cast<HPALETTE>(::GetCurrentObject(m_target, OBJ_PAL)), TRUE);
}

PaintBuffer::~PaintBuffer()
{
    if (m_memory == nullptr)
        return;
    ::BitBlt(m_target, m_area.left, m_area.top, m_area.Width(), m_area.Height(), m_memory, m_area.left, m_area.top,
             SRCCOPY);
    ::SelectObject(m_memory, m_before);
    ::DeleteDC(m_memory);
    delete Swap(s_idle, m_pBitmap); // another thread may have put one there meanwhile
}
