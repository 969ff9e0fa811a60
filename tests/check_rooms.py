"""Checks that the rooms of zogbl/ form a house: a room includes rooms below it, and none above.

A room is a folder of zogbl/; rooms stand from the ground up in the order in which zogbl/CMakeLists.txt lists their sources.
A public header belongs to the room of the source of the same name. docs/architecture.md tells which rooms each one
includes.

    check_rooms.py TREE     checks the tree, and names each line that includes something higher up, or the library from
                            what stands below it (afx, common, zomfx), and each row of the page that is not true
    check_rooms.py --self-test TREE     checks that it notices such lines and rows
"""

import re
import sys
import tempfile
import shutil
from pathlib import Path

# Public headers without a source of their own. Those of families stand above all rooms.
HEADERS = {"export": "ground", "module": "ground", "resource_ids": "ground", "status": "ground"} | dict.fromkeys(
    ["controls", "diag", "dialogs", "files", "formats", "frame", "telephony", "tools", "translation", "zogbl"],
    "families")


def rooms_of(library):
    """The rooms from the ground up."""
    sources = re.findall(r"^  (\S+)/\w+\.cpp", (library / "CMakeLists.txt").read_text(), re.MULTILINE)
    return list(dict.fromkeys(sources))


def check_table(page, rooms, included):
    """\return a line of text for each row of the page's table that is not what the rooms include."""
    true = {f"{i:6} {room:<23}" + "".join("  ■" if (room, other) in included else "   " for other in rooms)
            for i, room in enumerate(rooms, 1)}
    true = {row.rstrip() for row in true}
    faults = []
    for number, line in enumerate(page.read_text(encoding="utf-8").splitlines(), 1):
        if line in true:
            true.remove(line)
        elif re.fullmatch(r" {4,5}\d+ [a-z]+(/[a-z]+)?[ ■]*", line):
            faults.append(f"{page}:{number}: this row is not true: {line}")
    return faults + [f"{page}: this row is missing: {row}" for row in sorted(true)]


def check(tree):
    """\return a line of text for each include that leads upwards, for each file without a room, and for each row of
    the page that is not true."""
    library = tree / "zogbl"
    rooms = rooms_of(library)
    height = {room: i for i, room in enumerate([*rooms, "families"])}
    public = library / "include" / "zogbl"
    room_of = {}
    stems = dict(HEADERS)
    faults = []
    included = set()
    for path in sorted(library.rglob("*.cpp")) + sorted(library.rglob("*.h")):
        if public in path.parents:
            continue
        room = path.parent.relative_to(library).as_posix()
        if room not in height:
            faults.append(f"{path}: {room} is no room")
        room_of[path] = room
        if stems.setdefault(path.stem, room) != room:
            faults.append(f"{path}: there is a {path.stem} in {stems[path.stem]} too; a name tells one room")
    for path in sorted(public.glob("*.h")):
        if path.stem not in stems:
            faults.append(f"{path}: no source of this name tells its room")
        else:
            room_of[path] = stems[path.stem]
    for path, room in room_of.items():
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            match = re.match(r'\s*#\s*include\s*(?:"|<(?=[^>]*/))([\w./]+)\.h[">]', line)
            if not match:
                continue
            target = stems.get(Path(match[1]).name, room)
            if height.get(target, 0) > height.get(room, 0):
                faults.append(f"{path}:{number}: {room} stands below {target}: {line}")
            elif target != room:
                included.add((room, target))
    for folder in ["afx", "common", "zomfx"]:
        for path in sorted((tree / folder).rglob("*.cpp")) + sorted((tree / folder).rglob("*.h")):
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
                if re.match(r'\s*#\s*include\s*["<]zogbl/(?!resource_ids)', line):
                    faults.append(f"{path}:{number}: {folder} stands below the library: {line}")
    return faults + check_table(tree / "docs" / "architecture.md", rooms, included)


def self_test(tree):
    with tempfile.TemporaryDirectory() as folder:
        copy = Path(folder) / "zogbl"
        shutil.copytree(tree / "zogbl", copy)
        page = Path(folder) / "docs" / "architecture.md"
        page.parent.mkdir()
        text = (tree / "docs" / "architecture.md").read_text(encoding="utf-8")
        page.write_text(text.replace("  ■", "   ", 1), encoding="utf-8")
        source = next((copy / rooms_of(copy)[0]).glob("*.cpp"))
        number = source.read_text().count("\n") + 1
        upwards = ["<zogbl/tool_sheet.h>", "<dialogs/base/filter.h>", '"../dialogs/base/filter.h"']
        source.write_text(source.read_text() + "".join(f"#include {header}\n" for header in upwards))
        (Path(folder) / "common").mkdir()
        (Path(folder) / "common" / "wait.h").write_text("#include <zogbl/trace.h>\n")
        (copy / "attic").mkdir()
        (copy / "attic" / "lost.cpp").write_text("")
        (source.parent / "trace.h").write_text("")
        faults = check(Path(folder))
    row = text[:text.index("  ■")].count("\n") + 1
    named = [f"{source}:{number}:", f"{page}:{row}:", f"{page}: this row is missing"]
    if len(faults) != 8 or not all(any(f.startswith(start) for f in faults) for start in named):
        sys.exit(f"the check does not notice what it should: {faults}")


if __name__ == "__main__":
    if sys.argv[1] == "--self-test":
        self_test(Path(sys.argv[2]))
    else:
        sys.exit("\n".join(check(Path(sys.argv[1]))) or 0)
