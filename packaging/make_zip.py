"""make_zip.py OUTPUT FOLDER SECONDS: a folder as a zip whose bytes depend on the files alone.

Names are sorted, every file carries the given time (seconds since 1970, UTC) and the same permissions."""
import pathlib
import sys
import time
import zipfile

output, folder, seconds = sys.argv[1], pathlib.Path(sys.argv[2]), int(sys.argv[3])
with zipfile.ZipFile(output, "w") as archive:
    for path in sorted((p for p in folder.rglob("*") if p.is_file()), key=lambda p: p.as_posix()):
        entry = zipfile.ZipInfo(path.relative_to(folder.parent).as_posix(), time.gmtime(seconds)[:6])
        entry.compress_type = zipfile.ZIP_DEFLATED
        entry.external_attr = 0o100644 << 16
        archive.writestr(entry, path.read_bytes())
