/// \file
/// What the dialogs for files and folders show and ask: boxes of drives and folders, the field of the path.
#pragma once

#include "places.h"

constexpr int kPlaceTextOffset = kPictureSize + 6; // pixels from the item's left edge, beside the picture

/// How far an item of a level stands to the right, in pixels.
constexpr int PlaceIndent(int level) { return level * 8; }

/// How high an item is, in pixels, in the font of a window.
int PlaceRowHeight(HWND window);
/// Draws an item of a list or combo box that holds texts.
void DrawPlace(const DRAWITEMSTRUCT& item, PlacePicture picture, int indent);

/// A drive as a person knows it: its letter, and its place in the network. Throws CMemoryException*.
CString DriveName(const CString& root, const NetworkPlace& place);

/// Characters that can be typed as a path: enough for the check of its length to see.
constexpr int kTypedLimit = 2 * MAX_PATH - 1;

/// What a person typed, without spaces around it. Throws CMemoryException*.
CString TypedText(HWND field);

/// Where the name begins in what a person typed.
int NameOffset(const CString& typed);

/// A text, or as much of it as fits a width with dots behind it. Throws CMemoryException*.
CString FittingText(HDC dc, const CString& text, int width);
/// Takes the room of a hidden control away from the lower edge of its dialog, if nothing else reaches down there.
void FoldAway(HWND dialog, HWND control);
