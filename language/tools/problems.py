"""Collects what is wrong with the inputs, so that one run of the build names all of it."""

from __future__ import annotations

from pathlib import Path


class Problems:
    """A list of complaints, each with the file and line that a person has to look at."""

    def __init__(self) -> None:
        self.lines: list[str] = []

    def add(self, path: Path, line: int, message: str) -> None:
        self.lines.append(f"{path}:{line}: error: {message}")

    def __bool__(self) -> bool:
        return bool(self.lines)


def read_lines(path: Path, problems: Problems) -> list[tuple[int, str]]:
    """The numbered lines of a UTF-8 file. A line that is not UTF-8 is reported and left out."""
    lines = []
    for number, raw in enumerate(path.read_bytes().splitlines(), start=1):
        try:
            lines.append((number, raw.decode("utf-8")))
        except UnicodeDecodeError:
            problems.add(path, number, "not UTF-8")
    return lines


def read_rows(path: Path, width: int, problems: Problems) -> list[tuple[int, list[str]]]:
    """The numbered rows of a table file: blank-separated fields, # starts a comment."""
    rows = []
    for number, text in read_lines(path, problems):
        fields = text.split("#", 1)[0].split()
        if not fields:
            continue
        if len(fields) != width:
            problems.add(path, number, f"{width} fields expected, {len(fields)} found")
            continue
        rows.append((number, fields))
    return rows
