"""Text files, resource numbers, and the checks that compare languages."""

from __future__ import annotations

import re
from dataclasses import dataclass
from pathlib import Path

from tools.problems import Problems, read_lines, read_rows

ESCAPES = {"n": "\n", "t": "\t", "\\": "\\", '"': '"'}
SETTINGS = ("LANGUAGE_ID", "CLDR_LANGUAGE", "CODE_PAGE", "DIALOG_FONT_FACE", "DIALOG_FONT_SIZE")
LONGEST_STRING = 255  # bytes: callers load strings into buffers of 256

# What printf takes as one conversion. A space as a flag is left out: "50 % of" is a text, not a conversion.
CONVERSION = re.compile(
    r"%(?:%|[-+#0]*(?:\*|\d+)?(?:\.(?:\*|\d+))?(?P<kind>(?:hh|h|ll|l|I64|I32|w)?[diouxXcCsSpeEfgG])|(?P<insert>[1-9]))"
)


@dataclass(frozen=True)
class Text:
    line: int
    text: str


@dataclass(frozen=True)
class Texts:
    """The texts of one module in one language, or the settings of a language."""

    path: Path
    entries: dict[str, Text]

    def line(self, key: str) -> int:
        return self.entries[key].line if key in self.entries else 1

    def __getitem__(self, key: str) -> str:
        return self.entries[key].text


def unescape(raw: str) -> str:
    """Resolves the escapes of a text; ValueError names one that does not exist."""

    def replace(match: re.Match[str]) -> str:
        if match[1] not in ESCAPES:
            raise ValueError(f"unknown escape '{match[0]}'")
        return ESCAPES[match[1]]

    return re.sub(r"\\(.?)", replace, raw)


def read_texts(path: Path, problems: Problems) -> Texts:
    """Reads a file of texts."""
    entries: dict[str, Text] = {}
    for line, raw in read_lines(path, problems):
        stripped = raw.strip()
        if not stripped or stripped.startswith("#"):
            continue
        match = re.fullmatch(r"([A-Z][A-Z0-9_]*)\s*=\s*(.*)", stripped)
        if not match:
            problems.add(path, line, "'KEY = text' expected")
            continue
        key, value = match.groups()
        if key in entries:
            problems.add(path, line, f"{key} is defined twice, first in line {entries[key].line}")
            continue
        try:
            text = unescape(value)
        except ValueError as error:
            problems.add(path, line, f"{key}: {error}")
            continue
        if not text:
            problems.add(path, line, f"{key} is empty")
        entries[key] = Text(line, text)
    return Texts(path, entries)


def read_settings(path: Path, problems: Problems) -> Texts:
    """Reads the settings of a language, which are alike for the texts of all modules."""
    settings = read_texts(path, problems)
    for key in SETTINGS:
        if key not in settings.entries:
            problems.add(path, 1, f"setting {key} is missing")
    for key, entry in settings.entries.items():
        if key not in SETTINGS:
            problems.add(path, entry.line, f"{key} is no setting")
    for key, form in (
        ("LANGUAGE_ID", r"0x0*[1-9a-f][0-9a-f]{0,3}"),
        ("CODE_PAGE", r"[1-9][0-9]*"),
        ("DIALOG_FONT_SIZE", r"[1-9][0-9]*"),
    ):
        if key in settings.entries and not re.fullmatch(form, settings[key]):
            problems.add(path, settings.line(key), f"{key}: '{settings[key]}' is not such a number")
    return settings


def read_ids(path: Path, others: list[Path], problems: Problems) -> dict[str, int]:
    """Reads the #defines of a resource header and sees that no number serves two resources of a kind; nor one of the
    other headers, whose resources are looked for in the same process."""
    names: dict[tuple[str, int], str] = {}
    for other in others:
        read_defines(other, names, problems)
    return read_defines(path, names, problems)


def read_defines(path: Path, names: dict[tuple[str, int], str], problems: Problems) -> dict[str, int]:
    """Reads one header; names holds who has which number of which kind."""
    ids: dict[str, int] = {}
    for line, text in read_lines(path, problems):
        match = re.match(r"\s*#\s*define\s+(ZO_\w+)\s+(\S+)", text)
        if not match:
            continue
        name, value = match.groups()
        try:
            number = int(value, 0)
        except ValueError:
            problems.add(path, line, f"{name}: '{value}' is not a plain number")
            continue
        if name in ids:
            problems.add(path, line, f"{name} is defined twice")
        ids[name] = number
        kind = name.split("_")[1]
        is_bound = name.endswith(("_FIRST", "_LAST"))  # of a range, whose numbers have names of their own
        if kind in ("IDS", "IDD", "IDR", "IDB", "ID") and not is_bound:
            other = names.setdefault((kind, number), name)
            if other != name:
                problems.add(path, line, f"{name}: {number} is already the number of {other}")
    return ids


@dataclass(frozen=True)
class StringEntry:
    line: int
    symbol: str
    key: str


def read_strings(path: Path, ids: dict[str, int], reserved: range, problems: Problems) -> list[StringEntry]:
    """Reads the list of plain strings; reserved are the numbers of the country names."""
    strings: list[StringEntry] = []
    lines_by_id: dict[int, int] = {}
    for line, (symbol, key) in read_rows(path, 2, problems):
        if not symbol.startswith(("ZO_IDS_", "ZO_IDC_")) or symbol not in ids:  # controls: what explains them
            problems.add(path, line, f"{symbol} is no string number of the resource header")
            continue
        first = lines_by_id.setdefault(ids[symbol], line)
        if first != line:
            problems.add(path, line, f"{symbol}: string {ids[symbol]} is already used in line {first}")
        if ids[symbol] in reserved:
            problems.add(path, line, f"{symbol}: {ids[symbol]} is the number of a country name")
        strings.append(StringEntry(line, symbol, key))
    return strings


def check_strings_complete(path: Path, strings: list[StringEntry], ids: dict[str, int], problems: Problems) -> None:
    """A string number without a text would only be noticed when somebody wants to read it."""
    listed = {entry.symbol for entry in strings}
    for name in ids:
        # Names of registry values are strings of the class library itself; bounds of ranges have no text of their own.
        is_text = name.startswith("ZO_IDS_") and not name.startswith("ZO_IDS_REG_")
        if is_text and not name.endswith(("_FIRST", "_LAST", "_BASE")) and name not in listed:
            problems.add(path, 1, f"{name} of the resource header is missing")


def conversions(text: str) -> tuple[list[str], list[str]]:
    """The printf conversions of a text in order, and its numbered inserts, whose order a translation may change."""
    printf: list[str] = []
    inserts: list[str] = []
    position = 0
    while (position := text.find("%", position)) >= 0:
        match = CONVERSION.match(text, position)
        if not match:
            printf.append("%")
            position += 1
            continue
        if match["kind"]:
            printf += ["*"] * match[0].count("*") + [match["kind"]]
        elif match["insert"]:
            inserts.append(match["insert"])
        position = match.end()
    return printf, sorted(inserts)


def check_conversions(texts: Texts, reference: Texts, problems: Problems) -> None:
    """A format text is filled by one call for all languages, so its placeholders are the reference language's."""
    for key, entry in texts.entries.items():
        if key in reference.entries and conversions(entry.text) != conversions(reference[key]):
            problems.add(
                texts.path,
                entry.line,
                f"{key}: placeholders differ from {reference.path}:{reference.line(key)}: "
                f"'{entry.text}' against '{reference[key]}'",
            )


def check_use(texts: Texts, users: dict[str, tuple[Path, int]], problems: Problems) -> None:
    """Every text that is used exists, every text that exists is used; users tells where a key is used."""
    for key, (path, line) in users.items():
        if key not in texts.entries:
            problems.add(texts.path, 1, f"{key} is missing (used in {path}:{line})")
    for key, entry in texts.entries.items():
        if key not in users:
            problems.add(texts.path, entry.line, f"{key} is not used")


def check_code_page(
    texts: Texts, settings: Texts, named: list[tuple[Path, int, str, str]], problems: Problems
) -> None:
    """The library reads its texts in the system's code page: what is not in it would be shown as question marks."""
    code_page = settings["CODE_PAGE"]
    entries = [
        (file.path, entry.line, key, entry.text) for file in (settings, texts) for key, entry in file.entries.items()
    ]
    for path, line, what, text in entries + named:
        try:
            text.encode(f"cp{code_page}")
        except UnicodeEncodeError as error:
            problems.add(path, line, f"{what}: '{text[error.start:error.end]}' in '{text}' is not in code page {code_page}")
        except LookupError:
            problems.add(settings.path, settings.line("CODE_PAGE"), f"unknown code page {code_page}")
            return


def check_lengths(settings: Texts, named: list[tuple[Path, int, str, str]], problems: Problems) -> None:
    """A string that is too long would be cut where it is loaded. Comes after the check of the code page."""
    for path, line, what, text in named:
        length = len(text.encode(f"cp{settings['CODE_PAGE']}"))
        if length > LONGEST_STRING:
            problems.add(path, line, f"{what}: {length} bytes, and {LONGEST_STRING} are the most")
