"""Draws the Workbench's pictures.

    make_pictures.py FOLDER

splash.bmp is shown at the start, wizard.bmp beside the pages of a wizard, tool_bar.bmp on the buttons of the tool bar:
pictures of 16 by 15 in a row, in the order of DRAWINGS, on a ground that is replaced by the button's face.
"""

from __future__ import annotations

import sys
from pathlib import Path

from PIL import Image, ImageDraw

NAVY, BLUE, SKY, WHITE = (10, 36, 90), (30, 90, 168), (150, 196, 236), (255, 255, 255)
INK, GREY, GOLD, RED, GREEN = (32, 32, 32), (128, 128, 128), (240, 176, 32), (192, 32, 32), (0, 128, 64)
FACE = (192, 192, 192)  # replaced
FINE = 4  # pictures are drawn so many times larger, for smooth edges



def shaded(size: tuple[int, int], upper: tuple[int, ...], lower: tuple[int, ...]) -> Image.Image:
    """From one colour above to another below."""
    picture = Image.new("RGB", size)
    draw = ImageDraw.Draw(picture)
    for y in range(size[1]):
        part = y / max(size[1] - 1, 1)
        draw.line([(0, y), (size[0], y)], tuple(round(a + (b - a) * part) for a, b in zip(upper, lower)))
    return picture


def draw_globe(draw: ImageDraw.ImageDraw, x: int, y: int, radius: int, colour: tuple[int, ...], width: int) -> None:
    """A globe with meridians and parallels."""
    draw.ellipse([x - radius, y - radius, x + radius, y + radius], outline=colour, width=width)
    for part in (0.36, 0.74):
        half = round(radius * part)
        draw.ellipse([x - half, y - radius, x + half, y + radius], outline=colour, width=width)
    draw.line([(x, y - radius), (x, y + radius)], colour, width)
    for part in (-0.5, 0.0, 0.5):
        half = round(radius * (1 - part * part) ** 0.5)
        at = round(y + radius * part)
        draw.line([(x - half, at), (x + half, at)], colour, width)


def draw_mark(draw: ImageDraw.ImageDraw, x: int, y: int, size: int, colour: tuple[int, ...]) -> None:
    """The letters Zo."""
    bar = size // 6
    draw.rectangle([x, y, x + size, y + bar], colour)
    draw.rectangle([x, y + size - bar, x + size, y + size], colour)
    draw.polygon([(x + size - bar * 3 // 2, y + bar), (x + size, y + bar), (x + bar * 3 // 2, y + size - bar),
                  (x, y + size - bar)], colour)
    left = x + size + bar
    top = y + size // 3
    draw.ellipse([left, top, left + size - size // 3, y + size], outline=colour, width=bar)


def draw_splash() -> Image.Image:
    picture = shaded((400 * FINE, 200 * FINE), NAVY, BLUE)
    draw = ImageDraw.Draw(picture)
    draw_globe(draw, 300 * FINE, 110 * FINE, 120 * FINE, (44, 104, 182), 2 * FINE)
    draw_mark(draw, 40 * FINE, 60 * FINE, 72 * FINE, WHITE)
    draw.rectangle([40 * FINE, 150 * FINE, 180 * FINE, 152 * FINE], GOLD)
    return picture.resize((400, 200), Image.Resampling.LANCZOS)


def draw_wizard() -> Image.Image:
    picture = shaded((120 * FINE, 240 * FINE), NAVY, SKY)
    draw = ImageDraw.Draw(picture)
    draw_globe(draw, 60 * FINE, 190 * FINE, 90 * FINE, (70, 124, 190), 2 * FINE)
    draw_mark(draw, 22 * FINE, 28 * FINE, 40 * FINE, WHITE)
    draw.rectangle([22 * FINE, 80 * FINE, 98 * FINE, 82 * FINE], GOLD)
    return picture.resize((120, 240), Image.Resampling.LANCZOS)


def sheet_of_paper(draw: ImageDraw.ImageDraw) -> None:
    draw.polygon([(3, 1), (9, 1), (12, 4), (12, 13), (3, 13)], WHITE, INK)
    draw.line([(9, 1), (9, 4), (12, 4)], INK)


def new_document(draw: ImageDraw.ImageDraw) -> None:
    sheet_of_paper(draw)


def open_document(draw: ImageDraw.ImageDraw) -> None:
    draw.polygon([(1, 3), (5, 3), (6, 4), (11, 4), (11, 12), (1, 12)], GOLD, INK)
    draw.polygon([(3, 7), (14, 7), (11, 12), (1, 12)], (255, 216, 96), INK)


def language(draw: ImageDraw.ImageDraw) -> None:
    draw.ellipse([2, 1, 13, 12], SKY, BLUE)
    draw.ellipse([5, 1, 10, 12], outline=BLUE)
    draw.line([(2, 5), (13, 5)], BLUE)
    draw.line([(2, 8), (13, 8)], BLUE)


def options(draw: ImageDraw.ImageDraw) -> None:
    for y, at in ((3, 9), (7, 4), (11, 11)):
        draw.line([(1, y), (14, y)], INK)
        draw.rectangle([at - 1, y - 1, at + 1, y + 1], SKY, BLUE)


def locations(draw: ImageDraw.ImageDraw) -> None:
    draw.ellipse([4, 1, 11, 8], RED, INK)
    draw.polygon([(4, 6), (11, 6), (8, 13), (7, 13)], RED)
    draw.line([(4, 6), (7, 13)], INK)
    draw.line([(11, 6), (8, 13)], INK)
    draw.rectangle([7, 4, 8, 5], WHITE)


def location_wizard(draw: ImageDraw.ImageDraw) -> None:
    locations(draw)
    draw.line([(12, 10), (12, 14)], GOLD)
    draw.line([(10, 12), (14, 12)], GOLD)


def mailbox(draw: ImageDraw.ImageDraw) -> None:
    draw.rectangle([1, 3, 14, 12], WHITE, INK)
    draw.line([(1, 3), (7, 8), (8, 8), (14, 3)], INK)


def countries(draw: ImageDraw.ImageDraw) -> None:
    draw.line([(3, 1), (3, 13)], INK)
    draw.rectangle([4, 2, 13, 4], RED)
    draw.rectangle([4, 5, 13, 6], WHITE)
    draw.rectangle([4, 7, 13, 9], BLUE)


def translate(draw: ImageDraw.ImageDraw) -> None:
    draw.rectangle([1, 2, 6, 9], WHITE, INK)
    draw.rectangle([9, 5, 14, 12], SKY, INK)
    draw.line([(2, 12), (6, 12)], GREEN)
    draw.polygon([(6, 10), (8, 12), (6, 14)], GREEN)


def tools(draw: ImageDraw.ImageDraw) -> None:
    draw.line([(3, 12), (10, 5)], GREY, 3)
    draw.ellipse([8, 1, 14, 7], GREY, INK)
    draw.rectangle([11, 1, 14, 4], FACE)


def about(draw: ImageDraw.ImageDraw) -> None:
    draw.ellipse([2, 1, 13, 12], BLUE, NAVY)
    draw.rectangle([7, 3, 8, 4], WHITE)
    draw.rectangle([7, 6, 8, 10], WHITE)


DRAWINGS = (new_document, open_document, language, options, locations, location_wizard, mailbox, countries, translate,
            tools, about)


def draw_tool_bar() -> Image.Image:
    sheet = Image.new("RGB", (16 * len(DRAWINGS), 15), FACE)
    for i, drawing in enumerate(DRAWINGS):
        cell = Image.new("RGB", (16, 15), FACE)
        drawing(ImageDraw.Draw(cell))
        sheet.paste(cell, (16 * i, 0))
    return sheet.quantize(16, dither=Image.Dither.NONE)


def main() -> int:
    if len(sys.argv) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    folder = Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name, picture in (("splash", draw_splash()), ("wizard", draw_wizard()), ("tool_bar", draw_tool_bar())):
        picture.save(folder / f"{name}.bmp", "BMP")
    return 0


if __name__ == "__main__":
    sys.exit(main())
