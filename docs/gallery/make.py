"""Makes the pictures of the gallery from those of the Workbench's tour.

    make.py TOUR_FOLDER

Each picture that docs/gallery.md shows, gallery/NAME.png, is made from en-NAME.png of the tour, or from NAME.png if
there is one, with few colours. Pictures that it no longer shows are deleted.

Exit status: 0 done, 1 a picture is missing or all are too large together, 2 wrong usage.
"""

from __future__ import annotations

import re
import sys
from pathlib import Path

from PIL import Image

COLOURS = 128
MOST_BYTES = 600 * 1024  # of all
HERE = Path(__file__).resolve().parent


def main() -> int:
    if len(sys.argv) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    tour = Path(sys.argv[1])
    names = re.findall(r"\(gallery/([\w-]+)\.png\)", (HERE.parent / "gallery.md").read_text(encoding="utf-8"))
    missing = []
    for name in names:
        source = next((path for path in (tour / f"{name}.png", tour / f"en-{name}.png") if path.is_file()), None)
        if source is None:
            missing.append(name)
            continue
        picture = Image.open(source).convert("RGB").quantize(COLOURS, Image.Quantize.MAXCOVERAGE, dither=Image.Dither.NONE)
        picture.save(HERE / f"{name}.png", optimize=True)
    for path in HERE.glob("*.png"):
        if path.stem not in names:
            path.unlink()
    for name in missing:
        print(f"{tour} has no picture of {name}", file=sys.stderr)
    size = sum(path.stat().st_size for path in HERE.glob("*.png"))
    if size > MOST_BYTES:
        print(f"the pictures have {size} bytes, more than {MOST_BYTES}", file=sys.stderr)
    print(f"{len(names) - len(missing)} pictures of {size // 1024} KB in docs/gallery")
    return 1 if missing or not names or size > MOST_BYTES else 0


if __name__ == "__main__":
    sys.exit(main())
