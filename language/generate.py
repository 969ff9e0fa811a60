"""Builds the resource scripts and tables of the language libraries.

    generate.py tables      flags.bmp, marker.bmp, countries.bin and locales.bin: alike in every language
    generate.py language    the resource script of one module in one language

Texts and settings stand in files: UTF-8, a comment where # begins the line, otherwise

    KEY = text

with the escapes \\n (new line), \\t (tab), \\\\ (backslash) and \\" (quotation mark, which also may stand by itself).
A language has one file of settings:

    LANGUAGE_ID                          its number on Windows
    CLDR_LANGUAGE                        the file that the country names come from
    CODE_PAGE                            the code page of Windows systems in that language
    DIALOG_FONT_FACE, DIALOG_FONT_SIZE   the font of all dialogs

A module has one file of texts in each language. Its list of plain strings uses them, and its skeletons of dialogs and
menus, where @{KEY} stands for a text or a setting.

Exit status: 0 done, 1 something is wrong with an input (each fault is printed with file and line, nothing is written),
2 wrong usage.
"""

from __future__ import annotations

import argparse
import sys
from pathlib import Path

from tools.countries import assign_flags, country_names, pack_countries, pack_locales, read_countries, read_locales
from tools.problems import Problems
from tools.skeleton import check_access_keys, check_resources_complete, fill, quote, read_skeleton
from tools.texts import (
    SETTINGS,
    check_code_page,
    check_conversions,
    check_lengths,
    check_strings_complete,
    check_use,
    read_ids,
    read_settings,
    read_strings,
    read_texts,
)

COUNTRY_TABLE = "countries.bin"
LOCALE_TABLE = "locales.bin"
FLAG_SHEET = "flags.bmp"
MARKER_SHEET = "marker.bmp"
TABLE_SYMBOLS = {"ZO_IDR_FLAG_TABLE", "ZO_IDR_COUNTRY_TABLE"}


class InputFault(Exception):
    """The inputs are wrong; what is wrong stands in the problems."""

    def __init__(self, problems: Problems) -> None:
        super().__init__()
        self.problems = problems


def stop_on(problems: Problems) -> None:
    if problems:
        raise InputFault(problems)


def check_header(path: Path, ids: dict[str, int], problems: Problems) -> None:
    """Makes sure of the numbers that tables and country names rely on."""
    for name in ("ZO_IDS_COUNTRY_FIRST", "ZO_IDS_COUNTRY_LAST", "ZO_FLAG_COLUMNS", "ZO_FLAG_ROWS", "ZO_FLAG_COUNT"):
        if name not in ids:
            problems.add(path, 1, f"{name} is missing")
    stop_on(problems)


def name_strings(ids: dict[str, int]) -> range:
    return range(ids["ZO_IDS_COUNTRY_FIRST"], ids["ZO_IDS_COUNTRY_LAST"] + 1)


def make_tables(arguments: argparse.Namespace) -> None:
    """Writes the parts that are alike in every language."""
    # The picture library is needed here only: the language part works without it.
    from tools.flags import draw_flags, find_flags
    from tools.marker import draw_marker

    problems = Problems()
    ids = read_ids(arguments.ids, [], problems)
    check_header(arguments.ids, ids, problems)
    countries = read_countries(arguments.countries, len(name_strings(ids)), problems)
    stop_on(problems)
    flag_cells, owners = assign_flags(countries, arguments.countries, ids["ZO_FLAG_COUNT"], problems)
    locales = read_locales(arguments.locales, countries, problems)
    files = find_flags(arguments.flags, owners, countries, arguments.countries, problems)
    stop_on(problems)
    arguments.output.mkdir(parents=True, exist_ok=True)
    (arguments.output / COUNTRY_TABLE).write_bytes(pack_countries(countries, flag_cells, ids["ZO_IDS_COUNTRY_FIRST"]))
    (arguments.output / LOCALE_TABLE).write_bytes(pack_locales(locales, flag_cells))
    draw_flags(files, ids["ZO_FLAG_COLUMNS"], ids["ZO_FLAG_ROWS"]).save(arguments.output / FLAG_SHEET, "BMP")
    draw_marker().save(arguments.output / MARKER_SHEET, "BMP")


def make_language(arguments: argparse.Namespace) -> None:
    """Checks one language against everything that is alike in all of them and writes its resource script."""
    problems = Problems()
    has_countries = arguments.countries is not None
    ids = read_ids(arguments.ids, arguments.beside, problems)
    if has_countries:
        check_header(arguments.ids, ids, problems)
    numbers = name_strings(ids) if has_countries else range(0)
    countries = read_countries(arguments.countries, len(numbers), problems) if has_countries else []
    strings = read_strings(arguments.strings, ids, numbers, problems)
    skeletons = [read_skeleton(path, ids, problems) for path in arguments.skeleton]
    settings = read_settings(arguments.settings, problems)
    texts = read_texts(arguments.texts, problems)
    reference = read_texts(arguments.reference, problems) if arguments.reference != arguments.texts else texts
    stop_on(problems)

    users = {entry.key: (arguments.strings, entry.line) for entry in strings}
    for skeleton in skeletons:
        users |= {key: (skeleton.path, line) for key, line in skeleton.keys.items() if key not in SETTINGS}
    check_strings_complete(arguments.strings, strings, ids, problems)
    check_resources_complete(arguments.ids, skeletons, TABLE_SYMBOLS if has_countries else set(), ids, problems)
    check_use(texts, users, problems)
    check_conversions(texts, reference, problems)
    for skeleton in skeletons:
        check_access_keys(skeleton, texts, reference, problems)

    names: list[str] = []
    if has_countries:
        names_path = arguments.cldr / f"{settings['CLDR_LANGUAGE']}.xml"
        if not names_path.is_file():
            missing = f"no country names: {names_path} is missing"
            problems.add(settings.path, settings.line("CLDR_LANGUAGE"), missing)
            stop_on(problems)
        names = country_names(countries, arguments.countries, names_path, problems)
    stop_on(problems)
    named = [(arguments.countries, country.line, country.iso, name) for country, name in zip(countries, names)]
    check_code_page(texts, settings, named, problems)
    stop_on(problems)
    named += [(texts.path, texts.line(entry.key), entry.key, texts[entry.key]) for entry in strings]
    check_lengths(settings, named, problems)
    stop_on(problems)

    language = int(settings["LANGUAGE_ID"], 16)
    tables = [
        f'ZO_IDB_FLAGS BITMAP "{FLAG_SHEET}"',
        f'ZO_IDB_TRANSLATE_MARKER BITMAP "{MARKER_SHEET}"',
        f'ZO_IDR_FLAG_TABLE RCDATA "{LOCALE_TABLE}"',
        f'ZO_IDR_COUNTRY_TABLE RCDATA "{COUNTRY_TABLE}"',
        "",
    ]
    script = [
        "// Generated: changes made here are lost.",
        "#include <windows.h>",
        f'#include "{arguments.ids.as_posix()}"',
        "",
        f"LANGUAGE 0x{language & 0x3FF:02x}, 0x{language >> 10:02x}",
        "",
        *(tables if has_countries else []),
        "STRINGTABLE",
        "BEGIN",
        *(f'  {number} "{quote(name)}"' for number, name in zip(numbers, names)),
        *(f'  {entry.symbol} "{quote(texts[entry.key])}"' for entry in strings),
        "END",
        "",
        *(fill(skeleton, texts, settings) for skeleton in skeletons),
    ]
    arguments.output.parent.mkdir(parents=True, exist_ok=True)
    arguments.output.write_text("\n".join(script), encoding="utf-8", newline="\n")


def parse(argv: list[str]) -> argparse.Namespace:
    common = argparse.ArgumentParser(add_help=False)
    common.add_argument("--ids", type=Path, required=True, help="resource header")
    common.add_argument("--output", type=Path, required=True, help="tables: folder; language: resource script")

    parser = argparse.ArgumentParser(description="Builds the resource scripts and tables of the language libraries.")
    commands = parser.add_subparsers(required=True, metavar="COMMAND")
    tables = commands.add_parser("tables", parents=[common], help="flags and tables, alike in every language")
    tables.add_argument("--countries", type=Path, required=True, help="country table")
    tables.add_argument("--locales", type=Path, required=True, help="locale table")
    tables.add_argument("--flags", type=Path, required=True, help="folder of flag pictures")
    tables.set_defaults(run=make_tables)
    language = commands.add_parser("language", parents=[common], help="resource script of a module in one language")
    language.add_argument("--beside", type=Path, action="append", default=[],
                          help="resource header of another module of the same process (repeatable)")
    language.add_argument("--settings", type=Path, required=True, help="settings of the language")
    language.add_argument("--texts", type=Path, required=True, help="texts of the module in the language")
    language.add_argument("--reference", type=Path, required=True, help="texts whose placeholders all others repeat")
    language.add_argument("--strings", type=Path, required=True, help="list of plain strings")
    language.add_argument("--skeleton", type=Path, action="append", default=[], help="dialogs or menus (repeatable)")
    language.add_argument("--countries", type=Path, help="country table, for country names, flags and tables")
    language.add_argument("--cldr", type=Path, help="folder of CLDR language files, with --countries")
    language.set_defaults(run=make_language)
    arguments = parser.parse_args(argv)
    if arguments.run is make_language and (arguments.countries is None) != (arguments.cldr is None):
        parser.error("--countries and --cldr go together")
    return arguments


def main(argv: list[str]) -> int:
    arguments = parse(argv)
    try:
        arguments.run(arguments)
    except InputFault as fault:
        print("\n".join(fault.problems.lines), file=sys.stderr)
        return 1
    except (OSError, ValueError) as error:
        print(f"generate.py: error: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
