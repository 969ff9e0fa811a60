"""Draws the flag bitmap."""

from __future__ import annotations

from pathlib import Path

from PIL import Image

from tools.countries import Country
from tools.problems import Problems

CELL = (24, 18)
FLAG = (22, 16)  # with the outline
TRANSPARENT = (255, 0, 255)
OUTLINE = (112, 112, 112)
NEUTRAL = (200, 200, 200)

# The flag pictures are 320 x 240 with the flag in the middle. This box leaves out the shaded rim and most of the
# rounded corners, and has the proportions of the flag inside its outline.
SOURCE_SIZE = (320, 240)
SOURCE_BOX = (32.0, 31.0, 288.0, 209.0)


def find_flags(folder: Path, owners: list[str], countries: list[Country], path: Path, problems: Problems) -> list[Path]:
    """The picture files of the flags, in the order of their cells."""
    lines = {country.iso: country.line for country in countries}
    files = [folder / f"{iso.lower()}.png" for iso in owners]
    for iso, file in zip(owners, files):
        if not file.is_file():
            problems.add(path, lines[iso], f"{iso}: no flag: {file} is missing")
    return files


def scaled_flag(file: Path) -> Image.Image:
    """One flag without its outline. The corners' missing paint is taken from their neighbours."""
    with Image.open(file) as picture:
        if picture.size != SOURCE_SIZE:
            raise ValueError(f"{file}: {SOURCE_SIZE[0]} x {SOURCE_SIZE[1]} pixels expected, {picture.size} found")
        inner = (FLAG[0] - 2, FLAG[1] - 2)
        # Resizing weighs colours by their opacity, so the colour of a half transparent corner is the flag's alone.
        small = picture.convert("RGBA").resize(inner, Image.Resampling.LANCZOS, box=SOURCE_BOX)
    red, green, blue, _ = small.split()
    return Image.merge("RGB", (red, green, blue))


def draw_flags(files: list[Path], columns: int, rows: int) -> Image.Image:
    """The sheet of flag cells, 256 colours, with the neutral flag in cell 0."""
    pictures = [Image.new("RGB", (FLAG[0] - 2, FLAG[1] - 2), NEUTRAL)] + [scaled_flag(file) for file in files]
    size = (CELL[0] * columns, CELL[1] * rows)
    paint = Image.new("RGB", size, OUTLINE)
    painted = Image.new("1", size, 0)
    left, top = (CELL[0] - FLAG[0]) // 2, (CELL[1] - FLAG[1]) // 2
    for cell, picture in enumerate(pictures):
        x = cell % columns * CELL[0] + left
        y = cell // columns * CELL[1] + top
        paint.paste(picture, (x + 1, y + 1))
        painted.paste(1, (x, y, x + FLAG[0], y + FLAG[1]))

    # Entry 0 of the palette is kept for the transparent colour, so that no flag can come to share it.
    colours = paint.quantize(colors=255, method=Image.Quantize.MEDIANCUT, dither=Image.Dither.NONE)
    palette = colours.getpalette()[: 255 * 3]
    if any(near_transparent(palette[entry : entry + 3]) for entry in range(0, len(palette), 3)):
        raise ValueError("a flag colour cannot be told from the transparent colour on a display of 65536 colours")
    sheet = Image.new("P", size, 0)
    sheet.putpalette(list(TRANSPARENT) + palette)
    sheet.paste(colours.point(lambda entry: entry + 1), mask=painted)
    return sheet


def near_transparent(colour: list[int]) -> bool:
    """Whether a display of 65536 colours shows the colour as the transparent one."""
    return [colour[0] >> 3, colour[1] >> 2, colour[2] >> 3] == [TRANSPARENT[0] >> 3, TRANSPARENT[1] >> 2, TRANSPARENT[2] >> 3]
