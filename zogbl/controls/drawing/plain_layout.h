/// \file
/// Pictures in windows that run from right to left.
#pragma once

#include <afxwin.h>

#include <initializer_list>

/// Lets a device context run from left to right while it lives. What is drawn then is not mirrored, and a picture's
/// cells do not change places. (NOMIRRORBITMAP would do for the first, but Wine draws with it a pixel beside.)
class PlainLayout {
public:
    /// \param areas become the same places in that direction
    PlainLayout(CDC& dc, std::initializer_list<CRect*> areas) : m_dc(dc), m_before(dc.GetLayout())
    {
        if (!IsMirrored())
            return;
        for (CRect* area : areas)
            m_dc.LPtoDP(area);
        m_dc.SetLayout(0);
        for (CRect* area : areas) {
            m_dc.DPtoLP(area);
            // The edges have changed sides, and the right one is no part of an area.
            *area = CRect(area->right + 1, area->top, area->left + 1, area->bottom);
        }
    }
    ~PlainLayout()
    {
        if (IsMirrored())
            m_dc.SetLayout(m_before);
    }
    PlainLayout(const PlainLayout&) = delete;
    PlainLayout& operator=(const PlainLayout&) = delete;

    /// Whether the context ran from right to left before.
    bool IsMirrored() const { return m_before != GDI_ERROR && (m_before & LAYOUT_RTL) != 0; }

private:
    CDC& m_dc;
    DWORD m_before;
};
