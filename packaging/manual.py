"""The manual page of v5site from what `v5site --help` prints, so that both say the same.

    v5site --help | python3 manual.py man|html VERSION

In the text, a line without an indent is a section's heading; what stands below is laid out already.
"""
import html
import re
import sys


def sections(text):
    """Yields each heading with the lines below it, the common indent taken off."""
    heading, lines = None, []
    for line in text.splitlines() + ["END"]:
        if line and not line.startswith(" "):
            if heading:
                yield heading, "\n".join(line.removeprefix("  ") for line in lines).strip("\n")
            heading, lines = line, []
        else:
            lines.append(line)


def man(text, version):
    page = [f'.TH V5SITE 1 "" "V5Strings {version}" "V5Strings"']
    for heading, body in sections(text):
        escaped = re.sub(r"^([.'])", r"\\&\1", body.replace("\\", r"\e").replace("-", r"\-"), flags=re.M)
        page += [f".SH {heading}", ".nf" if heading != "NAME" else "", escaped, ".fi" if heading != "NAME" else ""]
    return "\n".join(line for line in page if line) + "\n"


def page(text, version):
    body = "".join(f"<h2>{html.escape(heading.capitalize())}</h2>\n<pre>{html.escape(part)}</pre>\n"
                   for heading, part in sections(text))
    return ('<!DOCTYPE html>\n<html lang="en">\n<meta charset="utf-8">\n'
            f"<title>v5site (V5Strings {version})</title>\n<h1>v5site</h1>\n{body}</html>\n")


if __name__ == "__main__":
    form = {"man": man, "html": page}[sys.argv[1]]
    sys.stdout.write(form(sys.stdin.read().replace("\r", ""), sys.argv[2]))
