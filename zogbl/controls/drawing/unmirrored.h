/// \file
/// Pictures in windows that run from right to left.
#pragma once

#include <afxwin.h>

/// Lets a context draw pictures as they are, until it ends: in one that runs from right to left they would be mirrored.
class UnmirroredPictures {
public:
    explicit UnmirroredPictures(CDC* dc) : m_dc(dc), m_layout(dc->GetLayout())
    {
        if (IsMirrored())
            m_dc->SetLayout(m_layout | LAYOUT_BITMAPORIENTATIONPRESERVED);
    }
    ~UnmirroredPictures()
    {
        if (IsMirrored())
            m_dc->SetLayout(m_layout);
    }
    UnmirroredPictures(const UnmirroredPictures&) = delete;
    UnmirroredPictures& operator=(const UnmirroredPictures&) = delete;

private:
    bool IsMirrored() const { return m_layout != GDI_ERROR && (m_layout & LAYOUT_RTL) != 0; }

    CDC* m_dc;
    DWORD m_layout;
};
