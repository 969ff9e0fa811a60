"""Makes the sample translation files: what a line with another character set receives and sends.

    make_tables.py FOLDER

For each pair below, the get table leads from the line's code page to Windows', the put table back. A character that
both have is mapped to itself, a control character of the upper half (as EBCDIC has them) to the code of the same number.
What is left on either side is joined in ascending order, so that the tables are the inverse of each other and no byte is
lost on its way out and back.
"""

from __future__ import annotations

import struct
import sys
from pathlib import Path

WINDOWS = "cp1252"
TABLES = (
    ("CP437.IOT", "cp437", "IBM PC, code page 437"),
    ("CP850.IOT", "cp850", "IBM PC Latin 1, code page 850"),
    ("EBCDIC37.IOT", "cp037", "EBCDIC, code page 037"),
)
CODES = range(256)

HEADER = struct.Struct("<8I64s")
MAGIC = 0x05241963
VERSION = 0x00010000
GET_AND_PUT = 3  # both directions are on


def characters(code_page: str) -> list[str]:
    """The character of each code; a code that the code page leaves free is a control character, as Windows has it."""
    return [bytes([code]).decode(code_page, "replace").replace("\ufffd", chr(code)) for code in CODES]


def get_table(line: str) -> bytes:
    source = characters(line)
    codes = {character: code for code, character in enumerate(characters(WINDOWS))}
    table = {code: codes[character] for code, character in enumerate(source) if character in codes}
    free = sorted(set(CODES) - set(table.values()))
    for code, character in enumerate(source):
        if code not in table and ord(character) in free:  # a control character, which has the number of a code
            table[code] = ord(character)
            free.remove(ord(character))
    left = [code for code in CODES if code not in table]
    table |= dict(zip(left, free))
    return bytes(table[code] for code in CODES)


def translation_file(line: str, description: str) -> bytes:
    get = get_table(line)
    put = bytes(get.index(code) for code in CODES)
    return get + put + HEADER.pack(HEADER.size, MAGIC, VERSION, GET_AND_PUT, 0, 0, 0, 0, description.encode("ascii"))


def main(folder: Path) -> None:
    folder.mkdir(parents=True, exist_ok=True)
    for name, line, description in TABLES:
        (folder / name).write_bytes(translation_file(line, description))


if __name__ == "__main__":
    main(Path(sys.argv[1]))
