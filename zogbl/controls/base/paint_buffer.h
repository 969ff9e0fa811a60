/// \file
/// Painting without flicker.
#pragma once

#include <afxwin.h>

/// A memory context to paint a part of a window in, which is shown when the object ends.
///
/// The context has the coordinates, the direction and the palette of the target; all else is as in a new context. One
/// bitmap is kept for all windows of the process. It grows to the largest part painted so far. If there is no memory
/// for it, the context is the target itself.
class PaintBuffer {
public:
    /// \param target of BeginPaint, and so clipped to the part
    PaintBuffer(HDC target, const CRect& area);
    ~PaintBuffer();
    PaintBuffer(const PaintBuffer&) = delete;
    PaintBuffer& operator=(const PaintBuffer&) = delete;

    CDC* GetDC() { return &m_dc; }

private:
    struct Bitmap;

    void Begin();

    static Bitmap* s_idle; ///< the bitmap while nobody paints; null: there is none, or it is in use

    HDC m_target;
    CRect m_area;
    HDC m_memory = nullptr; ///< null: painted directly
    Bitmap* m_pBitmap = nullptr;
    HGDIOBJ m_before = nullptr;
    CDC m_dc; ///< not attached: it owns no handle
};
