"""differences.py FILE OTHER: which parts of two packages differ: the files in a zip, the tables and files in an installer;
of other files, the first offset."""
import subprocess
import sys
import zipfile


def parts(path):
    if path.endswith(".zip"):
        with zipfile.ZipFile(path) as archive:
            return {entry.filename: (entry.date_time, archive.read(entry)) for entry in archive.infolist()}
    if path.endswith(".msi"):
        def query(*command):
            return subprocess.run(["msiinfo", *command], check=False, capture_output=True).stdout
        found = {f"table {name}": query("export", path, name) for name in query("tables", path).decode().split()}
        return found | {f"stream {name}": query("extract", path, name) for name in query("streams", path).decode().split()}
    with open(path, "rb") as file:
        return {f"offset {offset}": byte for offset, byte in enumerate(file.read())}


ours, others = parts(sys.argv[1]), parts(sys.argv[2])
different = [name for name in ours.keys() | others.keys() if ours.get(name) != others.get(name)]
for name in sorted(different, key=lambda name: (len(name), name))[:20]:
    print("         ", name)
