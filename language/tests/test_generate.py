"""Tests of the language generator on a tiny tree of inputs."""

from __future__ import annotations

import contextlib
import io
import re
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from PIL import Image

LANGUAGE_DIR = Path(__file__).resolve().parent.parent
# Withdrawn country codes that CLDR still lists.
WITHDRAWN = {"AN", "BU", "CS", "DD", "FX", "NT", "SU", "TP", "YD", "YU", "ZR"}

CLDR_DIR = Path("/usr/share/unicode/cldr/common")
sys.path.insert(0, str(LANGUAGE_DIR))

import generate  # noqa: E402
from tools.flags import CELL, FLAG, OUTLINE, SOURCE_SIZE, TRANSPARENT, draw_flags  # noqa: E402
from tools.problems import Problems  # noqa: E402
from tools.texts import conversions  # noqa: E402

HEADER = """
#define ZO_IDS_COUNTRY_FIRST 100
#define ZO_IDS_COUNTRY_LAST 102
#define ZO_FLAG_COLUMNS 2
#define ZO_FLAG_ROWS 2
#define ZO_FLAG_COUNT 3
#define ZO_IDS_HELLO 200
#define ZO_IDS_COUNT 0xC9
#define ZO_IDD_BOX 300
#define ZO_IDR_MENU 301
#define ZO_IDC_NAME 400
#define ZO_IDC_PLACE 401
#define ZO_ID_ONE 500
#define ZO_ID_TWO 501
"""
SETTINGS = "LANGUAGE_ID = 0x0c0a\nCLDR_LANGUAGE = en\nCODE_PAGE = 1252\nDIALOG_FONT_FACE = Face\nDIALOG_FONT_SIZE = 8\n"
TEXTS = (
    'HELLO = a "b"\\\\c\\nd\nCOUNT = %d of %s\nTITLE = T\nNAME = &Name\nPLACE = &Place\n'
    "TOP = &Top\nONE = &One\nTWO = &Two && &more\nDEEP = &Deep\nDEEP_ONE = &One\n"
)
STRINGS = "ZO_IDS_HELLO HELLO\nZO_IDS_COUNT COUNT\n"
DIALOGS = """ZO_IDD_BOX DIALOGEX 0, 0, 100, 50
CAPTION "@{TITLE}"
FONT @{DIALOG_FONT_SIZE}, "@{DIALOG_FONT_FACE}", 400, 0, 1
BEGIN
  LTEXT "@{NAME}", ZO_IDC_NAME, 7, 7, 50, 8
  EDITTEXT ZO_IDC_PLACE, 7, 17, 50, 12
  LTEXT "@{PLACE}", -1, 7, 37, 50, 8
END
"""
MENUS = """ZO_IDR_MENU MENU
BEGIN
  POPUP "@{TOP}"
  BEGIN
    MENUITEM "@{ONE}", ZO_ID_ONE
    MENUITEM "@{TWO}", ZO_ID_TWO
    POPUP "@{DEEP}"
    BEGIN
      MENUITEM "@{DEEP_ONE}", ZO_ID_ONE
    END
  END
END
"""
COUNTRIES = "AA 004 93 0 00 0 own\nBB 036 242 1 011 1 own\nCC 983 383 0 00 - AA\n"
LOCALES = "0409 BB\n2409 -\n0c0a CC\n"
NAMES = """<ldml><localeDisplayNames><territories>
<territory type="AA">Ålpha</territory><territory type="AA" alt="short">Al</territory>
<territory type="BB">Beta</territory><territory type="CC">Gamma</territory>
</territories></localeDisplayNames></ldml>
"""


FILES = {
    "ids.h": HEADER,
    "set.txt": SETTINGS,
    "xxx.txt": TEXTS,
    "enu.txt": TEXTS,
    "strings.txt": STRINGS,
    "dialogs.in": DIALOGS,
    "menus.in": MENUS,
    "countries.txt": COUNTRIES,
    "locales.txt": LOCALES,
    "en.xml": NAMES,
}


class Tree:
    """A folder with one good input of each kind, some of them replaced."""

    def __init__(self, folder: Path, **replaced: str) -> None:
        self.folder = folder
        files = FILES | {name.replace("_", "."): text for name, text in replaced.items()}
        for name, text in files.items():
            (folder / name).write_bytes(text.encode("utf-8", "surrogateescape"))
        for name, colour in (("aa", (255, 255, 255, 255)), ("bb", (0, 0, 160, 255)), ("cc", (160, 0, 0, 255))):
            Image.new("RGBA", SOURCE_SIZE, colour).save(folder / f"{name}.png")

    def arguments(self, command: str) -> list[str]:
        def path(name: str) -> str:
            return str(self.folder / name)

        common = ["--ids", path("ids.h"), "--output", path("out")]
        countries = ["--countries", path("countries.txt")]
        module = ["--settings", path("set.txt"), "--texts", path("xxx.txt"), "--reference", path("enu.txt")]
        module += ["--strings", path("strings.txt")]
        skeletons = ["--skeleton", path("dialogs.in"), "--skeleton", path("menus.in")]
        special = {
            "tables": ["tables", *countries, "--locales", path("locales.txt"), "--flags", str(self.folder)],
            "language": ["language", *module, *skeletons, *countries, "--cldr", str(self.folder)],
            "plug-in": ["language", *module, "--beside", path("library.h")],
        }
        return [*special[command], *common]

    def run(self, command: str) -> tuple[int, str]:
        errors = io.StringIO()
        with contextlib.redirect_stderr(errors):
            status = generate.main(self.arguments(command))
        return status, errors.getvalue().replace(str(self.folder) + "/", "")


class Generator(unittest.TestCase):
    def tree(self, **replaced: str) -> Tree:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        return Tree(Path(folder.name), **replaced)

    def expect_complaints(self, command: str, faults: list[tuple[str, str, str, str]]) -> None:
        """Of a file of which a part is replaced."""
        for name, old, new, complaint in faults:
            with self.subTest(complaint):
                self.assertIn(old, FILES[name])
                tree = self.tree(**{name: FILES[name].replace(old, new)})
                status, errors = tree.run(command)
                self.assertEqual(status, 1)
                self.assertIn(complaint, errors)
                self.assertFalse((tree.folder / "out").exists())

    def test_language_script(self) -> None:
        tree = self.tree()
        self.assertEqual(tree.run("language"), (0, ""))
        script = (tree.folder / "out").read_text(encoding="utf-8")
        for line in (
            "LANGUAGE 0x0a, 0x03",
            '  100 "Ålpha"',
            '  102 "Gamma"',
            '  ZO_IDS_HELLO "a ""b""\\\\c\\nd"',
            'FONT 8, "Face", 400, 0, 1',
            '    MENUITEM "&Two && &more", ZO_ID_TWO',
        ):
            self.assertIn(line + "\n", script)
        self.assertNotIn("@{", script)

    def test_module_without_countries(self) -> None:
        """Strings alone, and no number that the library has."""
        texts = "".join(line for line in TEXTS.splitlines(True) if line.startswith(("HELLO", "COUNT")))
        header = "#define ZO_IDS_HELLO 200\n#define ZO_IDS_COUNT 201\n"
        for taken, status in ((201, 1), (202, 0)):
            library = f"#define ZO_IDS_TAKEN {taken}\n#define ZO_IDD_BOX 200\n"
            with self.subTest(taken):
                tree = self.tree(ids_h=header, library_h=library, xxx_txt=texts, enu_txt=texts)
                complaint = "ids.h:2: error: ZO_IDS_COUNT: 201 is already the number of ZO_IDS_TAKEN\n"
                self.assertEqual(tree.run("plug-in"), (status, complaint if status else ""))
        script = (tree.folder / "out").read_text(encoding="utf-8")
        self.assertNotIn("ZO_IDB_FLAGS", script)
        self.assertIn('  ZO_IDS_COUNT "%d of %s"\n', script)

    def test_language_in_another_code_page(self) -> None:
        """Whatever the locale is that the generator runs in."""
        page_932 = SETTINGS.replace("1252", "932")
        texts = TEXTS.replace("TITLE = T", "TITLE = 国 \\t(&T)")
        tree = self.tree(xxx_txt=texts, set_txt=page_932, en_xml=NAMES.replace("Ålpha", "アルファ"))
        self.assertEqual(tree.run("language"), (0, ""))
        expected = (tree.folder / "out").read_bytes()
        self.assertIn('CAPTION "国 \\t(&T)"\n', expected.decode("utf-8"))
        plain = {"LC_ALL": "C", "PYTHONCOERCECLOCALE": "0", "PYTHONUTF8": "0", "PYTHONDONTWRITEBYTECODE": "1"}
        program = [sys.executable, str(LANGUAGE_DIR / "generate.py")]
        for settings, status in ((page_932, 0), (SETTINGS, 1)):
            (tree.folder / "set.txt").write_text(settings, encoding="utf-8")
            done = subprocess.run(program + tree.arguments("language"), env=plain, capture_output=True, check=False)
            self.assertEqual(done.returncode, status)
        self.assertIn(b"is not in code page 1252", done.stderr)
        self.assertEqual((tree.folder / "out").read_bytes(), expected)
        (tree.folder / "set.txt").write_text(page_932, encoding="utf-8")
        (tree.folder / "xxx.txt").write_text(texts.replace("HELLO = a", "HELLO = " + 124 * "国"), encoding="utf-8")
        self.assertIn("xxx.txt:1: error: HELLO: 256 bytes", tree.run("language")[1])

    def test_language_faults(self) -> None:
        too_long = "HELLO = " + 246 * "a" + " ü"
        no_country = "strings.txt:1: error: ZO_IDS_HELLO: 102 is the number of a country name"
        no_number = "set.txt:1: error: LANGUAGE_ID: '0x0000' is not such a number"
        forgotten = "strings.txt:1: error: ZO_IDS_NEW of the resource header is missing"
        number_twice = "ids.h:8: error: ZO_IDS_COUNT: 200 is already the number of ZO_IDS_HELLO"
        control_twice = "dialogs.in:6: error: ZO_IDC_NAME: control 400 is already used by ZO_IDC_NAME in line 5"
        faults = [
            ("xxx.txt", "\nONE = &One\n", "\n", "xxx.txt:1: error: ONE is missing (used in menus.in:5)"),
            ("xxx.txt", "TITLE = T", "TITLE = T\nSPARE = x", "xxx.txt:4: error: SPARE is not used"),
            ("xxx.txt", "TITLE = T", "TITLE = T\nTITLE = U", "xxx.txt:4: error: TITLE is defined twice"),
            ("xxx.txt", "TITLE = T", "TITLE =", "xxx.txt:3: error: TITLE is empty"),
            ("xxx.txt", "\\n", "\\q", "xxx.txt:1: error: HELLO: unknown escape '\\q'"),
            ("xxx.txt", "TITLE = T", "TITLE = T\\", "xxx.txt:3: error: TITLE: unknown escape '\\'"),
            ("xxx.txt", "TITLE = T", "TITLE = \udcfc", "xxx.txt:3: error: not UTF-8"),
            ("xxx.txt", "%d of %s", "%s of %d", "xxx.txt:2: error: COUNT: placeholders differ"),
            ("xxx.txt", "%d of %s", "%d", "xxx.txt:2: error: COUNT: placeholders differ"),
            ("xxx.txt", "TITLE = T", "TITLE = ジ", "xxx.txt:3: error: TITLE: 'ジ' in 'ジ' is not in code page"),
            ("xxx.txt", "HELLO = a", too_long, "xxx.txt:1: error: HELLO: 256 bytes, and 255 are the most"),
            ("xxx.txt", "&Deep", "Deep", "xxx.txt:9: error: DEEP: access key is missing"),
            ("xxx.txt", "&Place", "Pla&Nce", "PLACE: access key 'n' is also NAME's in ZO_IDD_BOX"),
            ("xxx.txt", "&Deep\n", "De&ep &m\n", "DEEP: access key 'm' is also TWO's in TOP"),
            ("set.txt", "1252", "7", "set.txt:3: error: unknown code page 7"),
            ("set.txt", "CODE_PAGE = 1252\n", "", "set.txt:1: error: setting CODE_PAGE is missing"),
            ("set.txt", "= 8\n", "= 8\nTITLE = T\n", "set.txt:6: error: TITLE is no setting"),
            ("set.txt", "0x0c0a", "0x0000", no_number),
            ("strings.txt", "COUNT\n", "COUNT\nZO_IDS_COUNT HELLO\n", "strings.txt:3: error: ZO_IDS_COUNT:"),
            ("ids.h", "HELLO 200", "HELLO 102", no_country),
            ("ids.h", "0xC9", "0xC8", number_twice),
            ("ids.h", "#define ZO_IDD", "#define ZO_IDS_NEW 202\n#define ZO_IDD", forgotten),
            ("ids.h", "BOX 300", "BOX 300\n#define ZO_IDD_NEW 302", "ids.h:1: error: ZO_IDD_NEW stands in no skeleton"),
            ("dialogs.in", "EDITTEXT ZO_IDC_PLACE", "EDITTEXT ZO_IDC_NAME", control_twice),
            ("dialogs.in", "ZO_IDC_PLACE", "ZO_IDC_X", "ZO_IDC_X is not in"),
            ("menus.in", "@{ONE}", "One", 'menus.in:5: error: text "One" belongs'),
            ("en.xml", '"CC"', '"DD"', "countries.txt:3: error: CC: no name in en.xml"),
            ("en.xml", "Gamma", "Beta", "countries.txt:3: error: CC: named 'Beta' like BB"),
            ("en.xml", "Beta", "ベ", "countries.txt:2: error: BB: 'ベ'"),
        ]
        self.expect_complaints("language", faults)

    def test_tables(self) -> None:
        tree = self.tree()
        self.assertEqual(tree.run("tables"), (0, ""))
        words = struct.unpack("<12I", (tree.folder / "out" / "countries.bin").read_bytes())
        self.assertEqual(
            words,
            (0x10064, 93 << 16, 4, 0x20065, 242 << 16 | 1, 36, 0x10066, 383 << 16, 983, 0, 0, 0),
        )
        codes = struct.unpack("<4I", (tree.folder / "out" / "locales.bin").read_bytes())
        self.assertEqual(codes, (0x20409, 0x2409, 0x10C0A, 0))
        with Image.open(tree.folder / "out" / "flags.bmp") as sheet:
            self.assertEqual(sheet.size, (2 * CELL[0], 2 * CELL[1]))

    def test_table_faults(self) -> None:
        faults = [
            ("countries.txt", "CC 983", "AA 983", "countries.txt:3: error: AA: iso code AA is already used"),
            ("countries.txt", "983", "036", "countries.txt:3: error: CC: number 36 is already used in line 2"),
            ("countries.txt", "383 0", "242 1", "CC: area code 242 is already used in line 2"),
            ("countries.txt", " 00 -", " -", "countries.txt:3: error: 7 fields expected, 6 found"),
            ("countries.txt", "383", "38x", "countries.txt:3: error: CC: not a number: code '38x'"),
            ("countries.txt", "CC 983", "DD 982 1 0 00 - AA\nCC 983", "4 countries, but strings for 3"),
            ("countries.txt", "- AA", "- own", "3 flags, but cells for 2"),
            ("countries.txt", "242 1 011 1 own", "242 1 011 1 CC", "BB: 'CC' has no flag of its own"),
            ("countries.txt", "AA 004", "EE 004", "EE: no flag: ee.png is missing"),
            ("locales.txt", "CC\n", "CC\n0409 AA", "locales.txt:4: error: locale 0409 is already used"),
            ("locales.txt", "0409 BB", "0409 ZZ", "locales.txt:1: error: 0409: unknown country 'ZZ'"),
            ("locales.txt", "0409", "0000", "locales.txt:1: error: '0000' is no locale"),
        ]
        self.expect_complaints("tables", faults)

    def test_flag_sheet(self) -> None:
        tree = self.tree()
        sheet = draw_flags([tree.folder / "aa.png", tree.folder / "bb.png"], 2, 2).convert("RGB")
        left, top = (CELL[0] - FLAG[0]) // 2, (CELL[1] - FLAG[1]) // 2
        for cell, inside in enumerate(((200, 200, 200), (255, 255, 255), (0, 0, 160), TRANSPARENT)):
            x, y = cell % 2 * CELL[0], cell // 2 * CELL[1]
            outline = TRANSPARENT if inside == TRANSPARENT else OUTLINE
            with self.subTest(cell=cell):
                self.assertEqual(sheet.getpixel((x, y)), TRANSPARENT)
                self.assertEqual(sheet.getpixel((x + left, y + top)), outline)
                self.assertEqual(sheet.getpixel((x + left + FLAG[0] - 1, y + top + FLAG[1] - 1)), outline)
                self.assertEqual(sheet.getpixel((x + left + 1, y + top + 1)), inside)
                self.assertEqual(sheet.getpixel((x + CELL[0] // 2, y + CELL[1] // 2)), inside)

        # A flag in the transparent colour would show holes.
        Image.new("RGBA", SOURCE_SIZE, (*TRANSPARENT, 255)).save(tree.folder / "aa.png")
        with self.assertRaises(ValueError):
            draw_flags([tree.folder / "aa.png"], 2, 2)

    def test_conversions(self) -> None:
        for text, expected in (
            ("%d of %s", (["d", "s"], [])),
            ("100%% of %-8.3lf, %08lu, %*d", (["lf", "lu", "*", "d"], [])),
            ("%2 before %1", ([], ["1", "2"])),
            ("50 % of it", (["%"], [])),
        ):
            with self.subTest(text):
                self.assertEqual(conversions(text), expected)


class CountryTable(unittest.TestCase):
    @unittest.skipUnless(CLDR_DIR.is_dir(), "CLDR data is not installed")
    def test_numbers_are_those_of_iso(self) -> None:
        problems = Problems()
        countries = generate.read_countries(LANGUAGE_DIR / "countries.txt", 259, problems)
        self.assertFalse(problems.lines)
        data = ElementTree.parse(CLDR_DIR / "supplemental" / "supplementalData.xml").getroot()
        numbers = {
            element.get("type"): int(element.get("numeric", "0"))
            for element in data.iterfind("codeMappings/territoryCodes")
            if re.fullmatch(r"[A-Z]{2}", element.get("type", "")) and element.get("numeric")
        }
        self.assertEqual({c.iso: c.index for c in countries}, {c.iso: numbers.get(c.iso) for c in countries})
        # CLDR gives its own groupings private numbers from 900 up; Kosovo's is in common use.
        missing = {iso for iso, number in numbers.items() if number < 900} - {country.iso for country in countries}
        self.assertEqual(missing - WITHDRAWN, set())


if __name__ == "__main__":
    unittest.main()
