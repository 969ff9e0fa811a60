#!/usr/bin/env python3
"""Checks what the suite's modules need and how they are protected.

    check_binaries.py FOLDER        checks every module of the suite in a folder of programs
    check_binaries.py --self-test MODULE
                                    damages copies of a module that is in order and expects each damage to be found

A module imports from the system, from the compiler's run-time libraries, and from the modules of the suite that lie
below it; it can be loaded anywhere, and its data is not executable. All processes share the class library's table of
language windows, and no other data. What a 32-bit module imports from the system is in Windows NT 4 (nt4_functions.txt).
"""

import pathlib
import re
import subprocess
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

# What Windows NT 4 lacks, and a module imports all the same.
NEWER = {
    # the run-time library for threads, which this program holds
    "zostartreport.exe": {"AddVectoredExceptionHandler", "GetTickCount64", "RemoveVectoredExceptionHandler"},
    # GDI+ can be installed
    "zoworkbench.exe": {"GdipAlloc", "GdipCloneImage", "GdipCreateBitmapFromHBITMAP", "GdipDisposeImage", "GdipFree",
                        "GdipSaveImageToFile", "GdiplusShutdown", "GdiplusStartup"},
}

OBJDUMP = "x86_64-w64-mingw32-objdump"  # reads modules of both architectures


def read_functions(path):
    """The functions of NT 4 by library, in small letters."""
    text = re.sub(r"^#.*", "", path.read_text(), flags=re.MULTILINE)
    return {library: set(names.split()) for library, names in re.findall(r"\[(.*)\]([^\[]*)", text)}


NT4 = read_functions(pathlib.Path(__file__).with_name("nt4_functions.txt"))


def imported_functions(text):
    """Pairs of library, in small letters, and function."""
    for library, table in re.findall(r"DLL Name: (\S+)\n.*\n((?:\t.*\n)*)", text):
        for function in re.findall(r"^\t[0-9a-f]+\t +\d+ +(\S+)", table, re.MULTILINE):
            yield library.lower(), function


def describe(path):
    """What the headers of a PE file tell, as text; nothing if it is none."""
    return subprocess.run([OBJDUMP, "-p", "-h", path], capture_output=True, encoding="latin-1").stdout


def problems(name, text, libraries):
    """What is wrong with a module. `text` describes it. `libraries`: the suite's libraries, in small letters."""
    protection = re.search(r"^DllCharacteristics.*\n((?:\t.*\n)*)", text, re.MULTILINE)
    if protection is None:
        return [f"{name} is no PE file"]
    imports = [other.lower() for other in re.findall(r"DLL Name: (\S+)", text)]
    allowed = SYSTEM | RUNTIME | MAY_IMPORT.get(name.lower(), libraries)
    shared = set(re.findall(r"^ +\d+ (\S+).*\n.*\bSHARED\b", text, re.MULTILINE))
    expected = SHARED_SECTIONS.get(name.lower(), set())
    found = [f"imports from {other}" for other in imports if other not in allowed]
    found += [f"lacks {flag}" for flag in ("DYNAMIC_BASE", "NX_COMPAT") if flag not in protection[1].split()]
    if "pei-i386" in text:
        found += [f"imports {function} from {library}, which nt4_functions.txt lacks"
                  for library, function in imported_functions(text)
                  if library in SYSTEM and function not in NT4.get(library, set()) | NEWER.get(name.lower(), set())]
    # Resources alone have nothing to relocate.
    found += ["has no relocations"] * bool(imports and "relocations stripped" in text)
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
    found = [text for path in modules for text in problems(path.name, describe(path), libraries)]
    print("\n".join(found) if found else f"{len(modules)} modules are in order")
    return 1 if found else 0


def self_test(path):
    text = describe(path)
    libraries = {"zoafx.dll"}
    damages = [
        ("lacks DYNAMIC_BASE", text.replace("\tDYNAMIC_BASE\n", "")),
        ("lacks NX_COMPAT", text.replace("\tNX_COMPAT\n", "")),
        ("has no relocations", text.replace("\texecutable\n", "\trelocations stripped\n\texecutable\n")),
        ("does not share .zoshare", text.replace(", SHARED", "")),
        ("shares .data", text.replace("LOAD, DATA\n", "LOAD, DATA, SHARED\n")),
        ("imports from kornel32.dll", text.replace("KERNEL32.dll", "KORNEL32.dll")),
        ("imports LocalFreed from kernel32.dll", text.replace("  LocalFree\n", "  LocalFreed\n")),
        ("is no PE file", describe(pathlib.Path(__file__))),
    ]
    if "pei-i386" not in text:  # there is no NT 4 of 64 bits
        damages = [damage for damage in damages if "LocalFreed" not in damage[0]]
    if problems(path.name, text, libraries):
        print(f"{path.name} is not in order to begin with")
        return 1
    missed = [expected for expected, damaged in damages
              if not any(expected in found for found in problems(path.name, damaged, libraries))]
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
