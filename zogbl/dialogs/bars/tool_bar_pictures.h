/// \file
/// The pictures of a tool bar.
#pragma once

#include <zogbl/trans_bmp.h>

#include <memory>

/// Pictures side by side, in the size of the screen's resolution.
class ToolBarPictures {
public:
    /// \param id a bitmap found through the resource chain \param width of a picture, in pixels
    /// \return false: see CZoToolBar::SetButtons. Throws CMemoryException*, CResourceException*.
    bool Load(UINT id, int width);

    int GetCount() const { return m_count; }
    CSize GetSize() const { return m_size; } ///< of one picture
    /// Draws one in the middle of an area, never mirrored. Of one that is disabled, and in high contrast of all, the
    /// shape alone is drawn: what is not white.
    /// \param color the system's, of an enabled one's shape
    void Draw(CDC* dc, CRect area, int picture, bool isEnabled, int color) const;

private:
    std::unique_ptr<CZoTransBmp> m_pictures;
    CSize m_size = CSize(0, 0);
    int m_count = 0;
};
