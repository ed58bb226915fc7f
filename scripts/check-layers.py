#!/usr/bin/env python3
"""Looks at every include of source/ and names those that point the wrong way: a room may only look into the rooms that
its line below names. Exit code 1 where one does."""

import pathlib
import re
import sys

# Lowest first. What a room sees beside itself; a name without a slash stands for all rooms below it.
ROOMS = {
    "dsp": [],
    "dsp/simd": [],
    "dsp/threads": ["dsp"],
    "dsp/filters": ["dsp/simd"],
    "dsp/rate": ["dsp/simd", "dsp/filters"],
    "dsp/design": ["dsp", "dsp/simd", "dsp/filters", "dsp/rate"],
    "dsp/path": ["dsp", "dsp/simd", "dsp/filters", "dsp/rate", "dsp/design"],
    "dsp/meters": ["dsp/simd", "dsp/filters", "dsp/rate"],
    "dsp/effects": [],
    "files": [],
    "services": [],
    "targets": ["dsp/*"],
    "core/parameters": ["dsp/*"],
    "core/presets": ["targets"],
    "core/model": ["dsp/*", "targets", "core/parameters", "core/presets"],
    "core/audio": ["dsp/*", "targets", "core/parameters", "core/presets", "core/model", "core/references"],
    "core/session": ["targets", "core/parameters", "core/presets", "core/model"],
    "core/references": ["dsp/*", "targets", "files", "core/model", "core/presets", "core/session"],
    "core": ["dsp/*", "targets", "files", "core/*"],
    "app": ["dsp/*", "targets", "files", "core/*"],
    "gui": ["dsp/*", "targets", "files", "services", "core/*"],
    "plugin": ["core/*", "gui/*"],
}

SOURCE = pathlib.Path(__file__).resolve().parent.parent / "source"
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def room_of(path):
    """The most precise room of the table that a path relative to source/ lies in."""
    parts = path.split("/")[:-1]
    for length in range(len(parts), 0, -1):
        name = "/".join(parts[:length])
        if name in ROOMS:
            return name
    return None


def may_see(room, other):
    if room == other or room.split("/")[0] == other.split("/")[0] == "gui":
        return True
    for seen in ROOMS[room]:
        if seen == other or (seen.endswith("/*") and (other + "/").startswith(seen[:-1])):
            return True
    return False


def main():
    wrong = []
    for file in sorted(SOURCE.rglob("*")):
        if file.suffix not in (".h", ".cpp"):
            continue
        name = file.relative_to(SOURCE).as_posix()
        room = room_of(name)
        if room is None:
            wrong.append(f"{name} stands in no room that this script knows")
            continue
        for included in INCLUDE.findall(file.read_text(encoding="utf-8")):
            other = room_of(included)
            if other is not None and not may_see(room, other):
                wrong.append(f"{name} ({room}) includes {included} ({other})")
    print("\n".join(wrong) if wrong else "Every include points the right way.")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
