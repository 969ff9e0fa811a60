"""Draws the mark of the rows that a translation table changes."""

from __future__ import annotations

from PIL import Image

# Two images side by side: the mark, black where it is transparent, and its mask, white there.
MARK = (
    "..........",
    "....##....",
    ".....##...",
    "......##..",
    ".########.",
    ".########.",
    "......##..",
    ".....##...",
    "....##....",
    "..........",
)
COLOUR = (224, 96, 0)  # is seen on a grey face and on a dark selection
BLACK = (0, 0, 0)
WHITE = (255, 255, 255)


def draw_marker() -> Image.Image:
    width, height = len(MARK[0]), len(MARK)
    sheet = Image.new("RGB", (2 * width, height))
    for y, row in enumerate(MARK):
        for x, dot in enumerate(row):
            sheet.putpixel((x, y), COLOUR if dot == "#" else BLACK)
            sheet.putpixel((width + x, y), BLACK if dot == "#" else WHITE)
    return sheet
