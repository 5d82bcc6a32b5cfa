"""bill_of_materials.py VERSION WIDTH SECONDS MAPS FOLDER PROGRAM…: what is in the programs, as FOLDER/V5Strings.cdx.json (CycloneDX),
and the licences of what is linked in, in FOLDER/licences.

Nothing is typed in: what is linked in stands in each program's link map (PROGRAM.map in the folder MAPS), which package of this system
that comes from says dpkg, with its version, and its licence says the package's copyright file. SECONDS is the time
that the bill carries (since 1970, UTC)."""
import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time
import uuid

DOCUMENTS = pathlib.Path("/usr/share/doc")
NAMESPACE = uuid.UUID("35ec6a49-cc2e-4b0e-9b25-64bb47b6d27f")
# What a copyright file that is not machine-readable says, and what that is called.
STATEMENTS = [("GCC RUNTIME LIBRARY EXCEPTION", "GPL-3.0-or-later WITH GCC-exception-3.1"),
              ("GNU General Public License", "GPL-3.0-or-later")]


def query(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def package_of(path):
    return query("dpkg", "-S", os.path.realpath(path)).split(":")[0]


def linked_libraries(link_map):
    """The archives of this system whose members are in the program, and its start-up objects."""
    text = link_map.read_text()
    members = re.findall(r"^(/\S+\.a)\(", text, re.MULTILINE)
    return {os.path.realpath(path) for path in members + re.findall(r"^LOAD (/usr/\S+\.o)$", text, re.MULTILINE)}


def sections_in_use(text):
    """The licences in a machine-readable copyright file of the parts that a program can be linked with."""
    licences = []
    for paragraph in re.split(r"\n\s*\n", text):
        files = re.search(r"^Files:((?:.|\n )*)", paragraph, re.MULTILINE)
        licence = re.search(r"^License: *(\S.*)$", paragraph, re.MULTILINE)
        if files and licence and re.search(r"\s(\*|mingw-w64-crt/\S*|mingw-w64-libraries/winpthreads/(\*|src/\S*|include/\S*))(\s|$)",
                                           files.group(1) + " "):
            licences.append(licence.group(1))
    return sorted(set(licences))


def licences_of(package):
    text = (DOCUMENTS / package / "copyright").read_text()
    if text.startswith("Format:"):
        return [{"license": {"name": name}} for name in sections_in_use(text)]
    for statement, expression in STATEMENTS:
        if statement in text:
            return [{"expression": expression}]
    sys.exit(f"bill_of_materials.py: the licence of {package} is not known")


def component(package, kind):
    version = query("dpkg-query", "-W", "-f=${Version}", package)
    return {"type": kind, "bom-ref": package, "name": package, "version": version,
            "purl": f"pkg:deb/debian/{package.replace('+', '%2B')}@{version.replace('+', '%2B')}"}


def main(version, width, seconds, maps, folder, programs):
    folder, programs = pathlib.Path(folder), [pathlib.Path(program) for program in programs]
    (folder / "licences").mkdir(parents=True, exist_ok=True)
    parts = {}
    for program in programs:
        for library in linked_libraries(pathlib.Path(maps) / f"{program.name}.map"):
            package = package_of(library)
            if package not in parts:
                parts[package] = {**component(package, "library"), "licenses": licences_of(package), "properties": []}
            part = parts[package]
            entry = {"name": "linked", "value": f"{pathlib.Path(library).name} in {program.name}"}
            if entry not in part["properties"]:
                part["properties"].append(entry)
            pages = (DOCUMENTS / package).resolve()  # several packages of one source share them
            (folder / "licences" / f"{pages.name}.txt").write_text((pages / "copyright").read_text())
    for part in parts.values():
        part["properties"].sort(key=lambda entry: entry["value"])
    if any("GPL-3" in str(part["licenses"]) for part in parts.values()):
        (folder / "licences" / "GPL-3.txt").write_text(pathlib.Path("/usr/share/common-licenses/GPL-3").read_text())

    triplet = "x86_64-w64-mingw32" if width == "win64" else "i686-w64-mingw32"
    tools = [f"{triplet}-g++-posix", f"{triplet}-ld", f"{triplet}-widl", "cmake", "wixl"]
    tools = [component(package_of(shutil.which(tool)), "application") for tool in tools]
    tools = list({tool["name"]: tool for tool in tools}.values())
    for tool in tools:
        del tool["bom-ref"]
    files = [{"type": "file", "name": program.name, "version": version,
              "hashes": [{"alg": "SHA-256", "content": hashlib.sha256(program.read_bytes()).hexdigest()}]}
             for program in programs]
    bill = {
        "bomFormat": "CycloneDX", "specVersion": "1.5", "version": 1,
        "metadata": {
            "timestamp": time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(int(seconds))),
            "tools": {"components": sorted(tools, key=lambda tool: tool["name"])},
            "component": {"type": "library", "bom-ref": "V5Strings", "name": "V5Strings", "version": version,
                          "supplier": {"name": "Nimbo"}, "components": files,
                          "properties": [{"name": "width", "value": width}]},
        },
        "components": [parts[name] for name in sorted(parts)],
        "dependencies": [{"ref": "V5Strings", "dependsOn": sorted(parts)}] + [{"ref": name} for name in sorted(parts)],
    }
    bill["serialNumber"] = f"urn:uuid:{uuid.uuid5(NAMESPACE, json.dumps(bill, sort_keys=True))}"
    (folder / "V5Strings.cdx.json").write_text(json.dumps(bill, indent=2) + "\n")


main(*sys.argv[1:6], sys.argv[6:])
