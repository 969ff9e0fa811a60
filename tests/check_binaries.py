#!/usr/bin/env python3
"""Checks what the suite's modules need and how they are protected.

    check_binaries.py FOLDER        checks every module of the suite in a folder of programs
    check_binaries.py --self-test MODULE
                                    damages copies of a module that is in order and expects each damage to be found

A module imports from the system, from the compiler's run-time libraries, and from the modules of the suite that lie
below it; it can be loaded anywhere, and its data is not executable. All processes share the class library's table of
language windows, and no other data.
"""

import pathlib
import struct
import sys

SYSTEM = {
    "advapi32.dll", "comctl32.dll", "comdlg32.dll", "gdi32.dll", "gdiplus.dll", "kernel32.dll", "mpr.dll",
    "msimg32.dll", "msvcrt.dll", "ole32.dll", "oleaut32.dll", "psapi.dll", "shell32.dll", "user32.dll", "version.dll",
    "winmm.dll", "winspool.drv",
}
RUNTIME = {"libgcc_s_dw2-1.dll", "libgcc_s_seh-1.dll", "libstdc++-6.dll", "libwinpthread-1.dll"}

# Modules of the suite that a module may import from; those not named here may import from all libraries of the suite.
MAY_IMPORT = {
    "zoafx.dll": set(),
    "zomuscrl.dll": set(),
    "zogblbrx.dll": {"zoafx.dll", "zomfxbrx.dll"},
    "zomfxbrx.dll": {"zoafx.dll"},
    "tapi32.dll": set(),
}

# Sections whose data all processes share.
SHARED_SECTIONS = {"zogblbrx.dll": {".zoshare"}}

RELOCATIONS_STRIPPED = 0x0001  # file header
DYNAMIC_BASE = 0x0040          # optional header
NX_COMPAT = 0x0100
MEM_SHARED = 0x10000000        # section header


class Module:
    """The parts of a PE file that the checks look at."""

    def __init__(self, data):
        self.data = data
        header = self._unpack("<I", 0x3C)[0]
        if data[:2] != b"MZ" or data[header:header + 4] != b"PE\0\0":
            raise ValueError("is no PE file")
        self.flags_offset, self.protection_offset = header + 22, header + 24 + 70
        self.flags = self._unpack("<H", self.flags_offset)[0]
        self.protection = self._unpack("<H", self.protection_offset)[0]
        section_count, optional_size = self._unpack("<H", header + 6)[0], self._unpack("<H", header + 20)[0]
        optional = header + 24
        wide = self._unpack("<H", optional)[0] == 0x20B
        headers = [optional + optional_size + 40 * i for i in range(section_count)]
        self._sections = [self._unpack("<IIII", at + 8) for at in headers]
        self.section_flags = {data[at:at + 8].rstrip(b"\0").decode("latin-1"): at + 36 for at in headers}
        self._import_table = self._unpack("<I", optional + (112 if wide else 96) + 8)[0]

    def shared_sections(self):
        """Names of the sections that all processes share."""
        return {name for name, offset in self.section_flags.items() if self._unpack("<I", offset)[0] & MEM_SHARED}

    def imports(self):
        """Names of the modules that this one imports from, in small letters."""
        names = []
        if self._import_table:
            entry = self._offset(self._import_table)
            while (name := self._unpack("<I", entry + 12)[0]) != 0:
                begin = self._offset(name)
                names.append(self.data[begin:self.data.index(b"\0", begin)].decode("ascii").lower())
                entry += 20
        return names

    def _unpack(self, form, offset):
        return struct.unpack_from(form, self.data, offset)

    def _offset(self, address):
        for size, begin, raw_size, raw in self._sections:
            if begin <= address < begin + max(size, raw_size):
                return address - begin + raw
        raise ValueError(f"has no section at {address:#x}")


def problems(name, data, libraries):
    """What is wrong with a module. `libraries`: the suite's libraries, in small letters."""
    try:
        module = Module(data)
        imports = module.imports()
    except (ValueError, struct.error, IndexError) as e:
        return [f"{name} {e}"]
    allowed = SYSTEM | RUNTIME | MAY_IMPORT.get(name.lower(), libraries)
    shared, expected = module.shared_sections(), SHARED_SECTIONS.get(name.lower(), set())
    found = [f"imports from {other}" for other in imports if other not in allowed]
    found += ["lacks DYNAMIC_BASE"] * (not module.protection & DYNAMIC_BASE)
    found += ["lacks NX_COMPAT"] * (not module.protection & NX_COMPAT)
    # Resources alone have nothing to relocate.
    found += ["has no relocations"] * bool(imports and module.flags & RELOCATIONS_STRIPPED)
    found += [f"does not share {section}" for section in sorted(expected - shared)]
    found += [f"shares {section}" for section in sorted(shared - expected)]
    return [f"{name} {what}" for what in found]


def check_folder(folder):
    modules = [path for path in sorted(folder.iterdir())
               if path.suffix.lower() in (".dll", ".exe") and path.name.lower() not in RUNTIME
               and "_tests" not in path.name]
    libraries = {path.name.lower() for path in modules if path.suffix.lower() == ".dll"}
    if "zoafx.dll" not in libraries:
        print(f"{folder} does not hold the suite")
        return 1
    found = [text for path in modules for text in problems(path.name, path.read_bytes(), libraries)]
    print("\n".join(found) if found else f"{len(modules)} modules are in order")
    return 1 if found else 0


def self_test(path):
    data = path.read_bytes()
    module = Module(data)
    libraries = {"zoafx.dll"}
    table, other = module.section_flags[".zoshare"], module.section_flags[".data"]

    def changed(offset, value, form="<H"):
        copy = bytearray(data)
        struct.pack_into(form, copy, offset, value)
        return bytes(copy)

    def with_other_sharing(offset):
        return changed(offset, struct.unpack_from("<I", data, offset)[0] ^ MEM_SHARED, "<I")

    damages = [
        ("lacks DYNAMIC_BASE", changed(module.protection_offset, module.protection & ~DYNAMIC_BASE)),
        ("lacks NX_COMPAT", changed(module.protection_offset, module.protection & ~NX_COMPAT)),
        ("has no relocations", changed(module.flags_offset, module.flags | RELOCATIONS_STRIPPED)),
        ("does not share .zoshare", with_other_sharing(table)),
        ("shares .data", with_other_sharing(other)),
        ("imports from kornel32.dll", data.replace(b"KERNEL32.dll", b"KORNEL32.dll")),
        ("is no PE file", b"MZ" + bytes(200)),
    ]
    if problems(path.name, data, libraries):
        print(f"{path.name} is not in order to begin with")
        return 1
    missed = [expected for expected, damaged in damages
              if not any(expected in text for text in problems(path.name, damaged, libraries))]
    print("not noticed: " + ", ".join(missed) if missed else f"{len(damages)} damages were noticed")
    return 1 if missed else 0


def main(arguments):
    if len(arguments) == 2 and arguments[0] == "--self-test":
        return self_test(pathlib.Path(arguments[1]))
    if len(arguments) == 1:
        return check_folder(pathlib.Path(arguments[0]))
    print(__doc__)
    return 2


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
