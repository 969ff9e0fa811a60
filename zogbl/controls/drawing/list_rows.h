/// \file
/// The rows of a list box: filling it, and reading them.
#pragma once

#include "ground/box_filling.h"
#include "item_painting.h"

/// The text of a row; empty if there is no such row. Throws CMemoryException*.
CString RowText(HWND list, LRESULT row);

/// A list box is empty when this begins, not redrawn while it lives, and as wide to scroll as its rows need.
class ListFilling {
public:
    /// \param list may be null: then nothing is done
    explicit ListFilling(HWND list);
    ~ListFilling();
    ListFilling(const ListFilling&) = delete;
    ListFilling& operator=(const ListFilling&) = delete;

    /// \param beside pixels of the row that its text does not take
    void Add(const CString& text, int beside = 0);
    int GetCount() const { return m_count; }

private:
    HWND m_list;
    DrawingPause m_pause;
    WindowFontDC m_dc;
    int m_count = 0;
    int m_width = 0;
};
