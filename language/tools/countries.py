"""The country table, the locale table and the names of countries."""

from __future__ import annotations

import re
import struct
import xml.etree.ElementTree as ElementTree
from dataclasses import dataclass
from pathlib import Path

from tools.problems import Problems, read_rows

OWN_FLAG = "own"
NO_FLAG = "none"
NEUTRAL_CELL = 0

# CLDR's plain name of these is an administrative title; people use the short form, which every language has. Elsewhere
# the short form is an abbreviation ("UK", "US") or does not exist, and the plain name is what people say.
SHORT_NAMED = frozenset({"HK", "MO", "PS"})


@dataclass(frozen=True)
class Country:
    """One row of the country table. A row's place in the table gives the number of its name string."""

    line: int
    iso: str
    index: int
    code: int
    prefix: int
    flag: str


@dataclass(frozen=True)
class Locale:
    """A language identifier and the country whose flag stands for it, None for the neutral flag."""

    line: int
    lcid: int
    iso: str | None


def read_countries(path: Path, name_strings: int, problems: Problems) -> list[Country]:
    """Reads and checks the country table; name_strings is the number of strings set aside for country names."""
    countries: list[Country] = []
    lines_by_key: dict[tuple[str, object], int] = {}
    for line, (iso, index, code, prefix, access, trunk, flag) in read_rows(path, 7, problems):
        if not re.fullmatch(r"[A-Z]{2}", iso):
            problems.add(path, line, f"'{iso}' is no ISO country code")
            continue
        digits = {"number": index, "code": code, "prefix": prefix, "access": access, "trunk": trunk.replace("-", "0")}
        wrong = [f"{name} '{value}'" for name, value in digits.items() if not re.fullmatch(r"[0-9]{1,5}", value)]
        if wrong:
            problems.add(path, line, f"{iso}: not a number: {', '.join(wrong)}")
            continue
        if prefix not in ("0", "1") or not 0 < int(code) < 1000 or not 0 < int(index) < 1000:
            problems.add(path, line, f"{iso}: number and code have one to three digits, prefix is 0 or 1")
            continue
        country = Country(line, iso, int(index), int(code), int(prefix), flag)
        keys: list[tuple[str, object]] = [("iso code", iso), ("number", country.index)]
        if country.prefix:
            keys.append(("area code", country.code))
        for key in keys:
            first = lines_by_key.setdefault(key, line)
            if first != line:
                problems.add(path, line, f"{iso}: {key[0]} {key[1]} is already used in line {first}")
        countries.append(country)
    if len(countries) > name_strings:
        problems.add(path, countries[-1].line, f"{len(countries)} countries, but strings for {name_strings}")
    if not countries:
        problems.add(path, 1, "no countries")
    return countries


def assign_flags(countries: list[Country], path: Path, cells: int, problems: Problems) -> tuple[dict[str, int], list[str]]:
    """Gives every country its flag cell; returns the cells by country and the countries whose flags fill cell 1, 2, ..."""
    owners = [country.iso for country in countries if country.flag == OWN_FLAG]
    cell_of_owner = {iso: cell for cell, iso in enumerate(owners, start=NEUTRAL_CELL + 1)}
    if len(owners) > cells - 1:
        problems.add(path, countries[-1].line, f"{len(owners)} flags, but cells for {cells - 1}")
    flag_cells: dict[str, int] = {}
    for country in countries:
        if country.flag == NO_FLAG:
            flag_cells[country.iso] = NEUTRAL_CELL
            continue
        source = country.iso if country.flag == OWN_FLAG else country.flag
        if source not in cell_of_owner:
            problems.add(path, country.line, f"{country.iso}: '{source}' has no flag of its own to show")
            continue
        flag_cells[country.iso] = cell_of_owner[source]
    return flag_cells, owners


def read_locales(path: Path, countries: list[Country], problems: Problems) -> list[Locale]:
    """Reads and checks the locale table."""
    known = {country.iso for country in countries}
    locales: list[Locale] = []
    lines_by_lcid: dict[int, int] = {}
    for line, (lcid_text, iso) in read_rows(path, 2, problems):
        if not re.fullmatch(r"[0-9a-f]{4}", lcid_text) or lcid_text == "0000":
            problems.add(path, line, f"'{lcid_text}' is no locale: four lower-case hexadecimal digits expected")
            continue
        if iso != "-" and iso not in known:
            problems.add(path, line, f"{lcid_text}: unknown country '{iso}'")
            continue
        lcid = int(lcid_text, 16)
        first = lines_by_lcid.setdefault(lcid, line)
        if first != line:
            problems.add(path, line, f"locale {lcid_text} is already used in line {first}")
        locales.append(Locale(line, lcid, None if iso == "-" else iso))
    return locales


def pack_countries(countries: list[Country], flag_cells: dict[str, int], first_string: int) -> bytes:
    """The country table as the library reads it: three double words a country, then a record of zeros."""
    table = bytearray()
    for position, country in enumerate(countries):
        table += struct.pack(
            "<HHHHI", first_string + position, flag_cells[country.iso], country.prefix, country.code, country.index
        )
    return bytes(table + bytes(12))


def pack_locales(locales: list[Locale], flag_cells: dict[str, int]) -> bytes:
    """The flag table as the library reads it: a double word a locale, then a zero."""
    table = bytearray()
    for locale in locales:
        table += struct.pack("<HH", locale.lcid, NEUTRAL_CELL if locale.iso is None else flag_cells[locale.iso])
    return bytes(table + bytes(4))


def read_names(path: Path) -> dict[str, str]:
    """The territory names of one CLDR language file."""
    plain: dict[str, str] = {}
    short: dict[str, str] = {}
    for element in ElementTree.parse(path).getroot().iterfind("localeDisplayNames/territories/territory"):
        target = {None: plain, "short": short}.get(element.get("alt"))
        if target is not None:
            target[element.get("type", "")] = element.text or ""
    return plain | {iso: name for iso, name in short.items() if iso in SHORT_NAMED}


def country_names(countries: list[Country], path: Path, names_path: Path, problems: Problems) -> list[str]:
    """The names in table order. Two countries of one name could not be told apart in a list, so that is an error too."""
    available = read_names(names_path)
    names: list[str] = []
    iso_by_name: dict[str, str] = {}
    for country in countries:
        name = available.get(country.iso, "").strip()
        if not name:
            problems.add(path, country.line, f"{country.iso}: no name in {names_path}")
            continue
        other = iso_by_name.setdefault(name, country.iso)
        if other != country.iso:
            problems.add(path, country.line, f"{country.iso}: named '{name}' like {other} in {names_path}")
        names.append(name)
    return names
