"""Holds the rooms of src/ apart: each may include its own headers and those of the rooms that the table names, all of them below it.

Prints each include that climbs, then `N passed, N failed` (one test a room)."""
import pathlib
import re
import sys

SERVER = ["base", "platform", "com"]
FORMS = SERVER + ["dialogs"]
MAY_INCLUDE = {
    "base": [],
    "platform": ["base"],
    "com": ["base", "platform"],
    "dialogs": SERVER,
    "footnotes": SERVER,
    "productinfo": FORMS,
    "config": FORMS,
    "security": FORMS,
    "log": SERVER + ["productinfo"],  # a log's header names the installed releases
    "surface": FORMS + ["footnotes", "productinfo", "config", "security", "log"],
}

SOURCES = pathlib.Path(__file__).resolve().parents[2] / "src"
failed = set()
for room in sorted(folder.name for folder in SOURCES.iterdir() if folder.is_dir()):
    allowed = MAY_INCLUDE.get(room)
    if allowed is None:
        print(f"src/{room}/ is not in the table")
        failed.add(room)
        continue
    for file in sorted((SOURCES / room).rglob("*")):
        if file.suffix not in (".cpp", ".h"):
            continue
        for header in re.findall(r'^#include "((\w+)/[^"]+)"', file.read_text(encoding="utf-8"), re.M):
            if header[1] != room and header[1] not in allowed:
                print(f"{file.relative_to(SOURCES.parent)} includes {header[0]}: {room}/ may not")
                failed.add(room)
print(f"{len(MAY_INCLUDE) - len(failed)} passed, {len(failed)} failed")
sys.exit(bool(failed))
