#!/usr/bin/env python3
"""Checks the documentation against the sources. Each check_… function is one test: it yields what is wrong.

Run from the root of the tree; the last line is "<n> passed, <m> failed".
"""
import pathlib
import re
import string
import sys

TAG = re.compile(r"STR-\d+")
PLACEHOLDER = re.compile(r"\$\w+\$")
MESSAGES = pathlib.Path("docs/messages.md")
DOCUMENTS = sorted(pathlib.Path("docs").glob("*.md")) + sorted(pathlib.Path(".").glob("*.md")) + sorted(
    pathlib.Path(".").glob("*/README.md"))


def read(path):
    return pathlib.Path(path).read_text(encoding="utf-8")


def string_literals(source):
    """The text literals of a C++ source, neighbours joined as the compiler joins them."""
    token = re.compile(r'//[^\n]*|/\*.*?\*/|\'(?:\\.|[^\'\\])+\'|(?:u8|[LuU])?"((?:\\.|[^"\\])*)"|(\s+)|.', re.S)
    joined, open_literal = [], False
    for match in token.finditer(source):
        if match[1] is not None:
            text = match[1].replace('\\"', '"').replace("\\\\", "\\")
            joined[-1:] = [joined[-1] + text] if open_literal else [*joined[-1:], text]
        open_literal = match[1] is not None or (open_literal and match[2] is not None)
    return joined


def pieces_of(text):
    """What stands between the placeholders of a text."""
    return [piece for piece in PLACEHOLDER.split(text) if piece]


LITERALS = [literal for path in sorted(pathlib.Path("src").rglob("*")) if path.suffix in (".cpp", ".h")
            for literal in string_literals(read(path))]
PIECES = {piece for literal in LITERALS for piece in pieces_of(literal)
          if len(piece) > 1 or piece not in string.ascii_letters + string.digits}
DOCUMENTED = re.findall(r"^\| `([^`]+)` \|", read(MESSAGES), re.M)


def is_made_of_pieces(text):
    """Whether the text is whole literals of the sources, one after the other."""
    reached = {0}
    for start in range(len(text)):
        if start in reached:
            reached |= {start + len(piece) for piece in PIECES if text.startswith(piece, start)}
    return len(text) in reached


def check_every_message_is_documented():
    for literal in LITERALS:
        pattern = r"\$\w+\$".join(map(re.escape, PLACEHOLDER.split(literal)))
        if TAG.fullmatch(literal):
            if f"{literal}`" not in read(MESSAGES) and f"`{literal}:" not in read(MESSAGES):
                yield f"{MESSAGES} does not explain the tag {literal}"
        elif TAG.search(literal) and not any(re.search(pattern, text) for text in DOCUMENTED):
            yield f"{MESSAGES} does not have the message {literal!r}"


def check_every_documented_message_is_exact():
    for text in DOCUMENTED:
        if not all(map(is_made_of_pieces, pieces_of(text))):
            yield f"the sources have no message {text!r}"


def check_every_tag_exists():
    known = {tag for literal in LITERALS for tag in TAG.findall(literal)}
    for document in DOCUMENTS:
        for tag in sorted(set(TAG.findall(read(document))) - known):
            yield f"{document} speaks of {tag}, which no source has"


def check_every_member_is_documented():
    sections = {section.split("\n", 1)[0]: section for section in read("docs/using.md").split("\n## ")}
    interfaces = re.findall(r"interface _(\w+) : IDispatch \{(.*?)\n    \};", read("src/surface/V5Strings.idl"), re.S)
    for name, body in interfaces:
        if name not in sections:
            yield f"docs/using.md has no section {name}"
        for member in sorted(set(re.findall(r"HRESULT (\w+)\(", body))):
            if not re.search(rf"`{member}\b", sections.get(name, "")):
                yield f"docs/using.md does not explain {name}.{member}"


def check_every_enumerator_is_documented():
    documents = read("docs/using.md") + read("docs/security.md")
    for name, value in re.findall(r"^\s+(\w+) = (-?\d+)", read("src/surface/V5Strings.idl"), re.M):
        if not re.search(rf"`{name}` {value}\b|\| {value} \| `{name}` \|", documents):
            yield f"docs/using.md does not give {name} as {value}"


def check_every_key_is_documented():
    keys = re.search(r"kKeyNames = \{(.*?)\};", read("src/config/SiteFile.cpp"), re.S)[1]
    for key in re.findall(r'"([^"]+)"', keys):
        if f"`{key}`" not in read("docs/site-file.md"):
            yield f"docs/site-file.md does not explain the key {key}"


def anchors_of(document):
    """The anchors of a document's headings, as the usual renderers make them."""
    headings = re.findall(r"^#+ +(.*)$", re.sub(r"```.*?```", "", read(document), flags=re.S), re.M)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def check_every_link_leads_somewhere():
    for document in DOCUMENTS:
        text = re.sub(r"```.*?```|`[^`\n]*`", "", read(document), flags=re.S)
        for target, anchor in re.findall(r"\]\((?![a-z]+:)([^)#\s]*)(?:#([^)\s]*))?\)", text):
            path = document.parent / target if target else document
            if not path.exists():
                yield f"{document} links to {target}, which is not there"
            elif anchor and anchor not in anchors_of(path):
                yield f"{document} links to {target}#{anchor}, and there is no such heading"


def main():
    passed = failed = 0
    for name, check in sorted(globals().items()):
        if name.startswith("check_"):
            problems = list(check())
            passed, failed = passed + (not problems), failed + bool(problems)
            print(f"{'FAILED' if problems else 'ok'}: {name[6:].replace('_', ' ')}")
            for problem in problems:
                print(f"  {problem}")
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
