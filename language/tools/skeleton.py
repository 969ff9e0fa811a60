"""The dialogs and menus: placeholders, access keys, control numbers."""

from __future__ import annotations

import re
from dataclasses import dataclass, field
from pathlib import Path

from tools.problems import Problems, read_lines
from tools.texts import SETTINGS, Texts

PLACEHOLDER = re.compile(r"@\{(\w*)\}")
QUOTED = re.compile(r'"((?:[^"]|"")*)"')

# Statements whose first operand is a text that people read; of all the others only the font has a placeholder.
TEXT_STATEMENTS = frozenset(
    "CAPTION POPUP MENUITEM CONTROL LTEXT CTEXT RTEXT GROUPBOX PUSHBUTTON DEFPUSHBUTTON CHECKBOX AUTOCHECKBOX "
    "RADIOBUTTON AUTORADIOBUTTON STATE3 AUTO3STATE PUSHBOX ICON".split()
)
HEADER = re.compile(r"(\w+)\s+(DIALOG|DIALOGEX|MENU|MENUEX)\b")


@dataclass
class Group:
    """Texts whose access keys work at the same time: the controls of a dialog, the items of one menu level."""

    name: str
    items: list[tuple[int, str]] = field(default_factory=list)  # line, text with its placeholders


@dataclass
class Skeleton:
    path: Path
    lines: list[tuple[int, str]]
    groups: list[Group]
    keys: dict[str, int]  # key and the line of its first use
    resources: set[str]  # symbols of its dialogs and menus


def read_skeleton(path: Path, ids: dict[str, int], problems: Problems) -> Skeleton:
    """Reads a skeleton, one statement a line, and checks what does not depend on a language."""
    lines = read_lines(path, problems)
    groups: list[Group] = []
    keys: dict[str, int] = {}
    open_groups: list[Group] = []
    pending: Group | None = None
    controls: dict[int, str] = {}
    headers: dict[str, int] = {}
    is_dialog = False
    for line, raw in lines:
        statement = raw.strip()
        if not statement or statement.startswith("//"):
            continue
        for match in PLACEHOLDER.finditer(statement):
            keys.setdefault(match[1], line)
        word = statement.split(None, 1)[0].rstrip(",")
        header = HEADER.match(statement)
        if header:
            if header[1] not in ids:
                problems.add(path, line, f"{header[1]} is not in the resource header")
            first = headers.setdefault(header[1], line)
            if first != line:
                problems.add(path, line, f"{header[1]} is already used in line {first}")
            is_dialog = header[2].startswith("DIALOG")
            pending = Group(header[1])
            controls = {}
        elif word == "BEGIN":
            if pending is None:
                problems.add(path, line, "BEGIN without a dialog, menu or popup")
                pending = Group("?")
            groups.append(pending)
            open_groups.append(pending)
            pending = None
        elif word == "END":
            if not open_groups:
                problems.add(path, line, "END without BEGIN")
            else:
                open_groups.pop()
        elif word in TEXT_STATEMENTS:
            text = QUOTED.search(statement)
            if text and PLACEHOLDER.sub("", text[1]).strip():
                problems.add(path, line, f"text {text[0]} belongs into the text files")
            if open_groups and text:
                open_groups[-1].items.append((line, text[1]))
            if word == "POPUP":
                pending = Group(text[1] if text else "?")
            if is_dialog and open_groups and (number := re.search(r'"\s*,\s*(ZO_\w+)', statement)):
                check_control(path, line, number[1], ids, controls, problems)
        elif is_dialog and open_groups and (number := re.match(r"\w+\s+(ZO_\w+)", statement)):
            check_control(path, line, number[1], ids, controls, problems)
    if open_groups:
        problems.add(path, lines[-1][0], f"END is missing for {open_groups[-1].name}")
    return Skeleton(path, lines, groups, keys, set(headers))


def check_control(
    path: Path, line: int, symbol: str, ids: dict[str, int], controls: dict[int, str], problems: Problems
) -> None:
    """Sees that a control's number exists and occurs once in its dialog."""
    if symbol not in ids:
        problems.add(path, line, f"{symbol} is not in the resource header")
        return
    other = controls.setdefault(ids[symbol], f"{symbol} in line {line}")
    if other != f"{symbol} in line {line}":
        problems.add(path, line, f"{symbol}: control {ids[symbol]} is already used by {other}")


def check_resources_complete(
    path: Path, skeletons: list[Skeleton], others: set[str], ids: dict[str, int], problems: Problems
) -> None:
    """Every dialog and menu of the resource header stands in a skeleton; others are made elsewhere."""
    made = others.union(*(skeleton.resources for skeleton in skeletons))
    for name in ids:
        if name.startswith(("ZO_IDD_", "ZO_IDR_")) and name not in made:
            problems.add(path, 1, f"{name} stands in no skeleton")


def access_key(text: str) -> str | None:
    """The letter behind the last single ampersand of a text."""
    found = re.findall(r"&(.)", text.replace("&&", ""))
    return found[-1].casefold() if found else None


def check_access_keys(skeleton: Skeleton, texts: Texts, reference: Texts, problems: Problems) -> None:
    """Two items with one access key: the second could be reached by its key only in a roundabout way. And what has a key
    in the reference language has one in all."""
    for key in skeleton.keys:
        if key in texts.entries and key in reference.entries:
            if access_key(reference[key]) is not None and access_key(texts[key]) is None:
                problems.add(texts.path, texts.line(key), f"{key}: access key is missing")
    for group in skeleton.groups:
        taken: dict[str, str] = {}
        for _, template in group.items:
            for match in PLACEHOLDER.finditer(template):
                key = match[1]
                letter = access_key(texts[key]) if key in texts.entries else None
                if letter is None:
                    continue
                other = taken.setdefault(letter, key)
                if other != key:
                    where = PLACEHOLDER.sub(r"\1", group.name)
                    problems.add(texts.path, texts.line(key), f"{key}: access key '{letter}' is also {other}'s in {where}")


def quote(text: str) -> str:
    """A text as it stands between the quotation marks of a resource script."""
    return text.replace("\\", "\\\\").replace("\n", "\\n").replace("\t", "\\t").replace('"', '""')


def fill(skeleton: Skeleton, texts: Texts, settings: Texts) -> str:
    """The skeleton with the texts of one language in it."""

    def text(match: re.Match[str]) -> str:
        return quote((settings if match[1] in SETTINGS else texts)[match[1]])

    filled = [PLACEHOLDER.sub(text, raw) for _, raw in skeleton.lines]
    return "\n".join(filled) + "\n"
