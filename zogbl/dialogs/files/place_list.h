/// \file
/// List and combo boxes of drives and folders: filling, measuring, drawing.
#pragma once

#include "places.h"

constexpr int kPlaceTextOffset = kPictureSize + 6; // pixels from the item's left edge, beside the picture

/// How far an item of a level stands to the right, in pixels.
constexpr int PlaceIndent(int level) { return level * 8; }

void MeasurePlace(HWND dialog, MEASUREITEMSTRUCT& measure);
/// Draws an item of a list or combo box that holds texts.
void DrawPlace(const DRAWITEMSTRUCT& item, PlacePicture picture, int indent);

/// A text, or as much of it as fits a width with dots behind it. Throws CMemoryException*.
CString FittingText(HDC dc, const CString& text, int width);
/// Takes the room of a hidden control away from the lower edge of its dialog, if nothing else reaches down there.
void FoldAway(HWND dialog, HWND control);

/// A list box is empty when this begins, not redrawn while it lives, and as wide to scroll as its items need.
class ListFilling {
public:
    explicit ListFilling(HWND list);
    ~ListFilling();
    ListFilling(const ListFilling&) = delete;
    ListFilling& operator=(const ListFilling&) = delete;

    /// \param beside pixels of the item that its text does not take
    void Add(const CString& text, int beside);
    int GetCount() const { return m_count; }

private:
    HWND m_list;
    HDC m_dc;
    HGDIOBJ m_oldFont = nullptr;
    int m_count = 0;
    int m_width = 0;
};
