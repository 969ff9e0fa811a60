/// \file
/// The small filled arrows of buttons.
#pragma once

#include <afxwin.h>

enum class ArrowTo { kLeft, kRight, kUp, kDown };

/// In the middle of an area. Its size is that of the screen's resolution; it does not follow the font.
void DrawArrow(CDC* dc, const CRect& area, ArrowTo direction, COLORREF color);
