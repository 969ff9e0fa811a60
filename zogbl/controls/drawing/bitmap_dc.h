/// \file
/// Bitmaps to be drawn from, and to be drawn on.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

struct BitmapDeleter {
    void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
/// A bitmap that is deleted with its holder: declare the holder before the context that the bitmap is selected into.
using BitmapHolder = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter>;

/// A memory device context with a bitmap in it.
class BitmapDC {
public:
    /// \param like null: the screen
    BitmapDC(HDC like, HBITMAP bitmap) : m_dc(CreateCompatibleDC(like)), m_old(SelectObject(m_dc, bitmap)) {}
    ~BitmapDC()
    {
        SelectObject(m_dc, m_old);
        DeleteDC(m_dc);
    }
    BitmapDC(const BitmapDC&) = delete;
    BitmapDC& operator=(const BitmapDC&) = delete;
    operator HDC() const { return m_dc; }
    bool IsReady() const { return m_dc != nullptr && m_old != nullptr; }

private:
    HDC m_dc;
    HGDIOBJ m_old;
};
