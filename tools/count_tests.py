#!/usr/bin/env python3
"""Counts the single cases in CTest's results (the JUnit file that is named; all tests, or those whose names begin with
what is given next): prints `N passed, N failed, N skipped`, and
fails when one failed or none passed. A test that does not say how many cases it ran is one case, and one that ended
before it could say which failed is one that failed."""
import re
import sys
import xml.etree.ElementTree as xml

# What is counted in a test's output, and as what: GoogleTest's lines, our own checks' last line.
LINES = (
    (r"\[  PASSED  \] (\d+) tests?\.", "passed"),
    (r"\[  FAILED  \] .* ms\)", "failed"),
    (r"\[  SKIPPED \] (\d+) tests?,.*", "skipped"),
    (r"(\d+) passed, \d+ failed", "passed"),
    (r"\d+ passed, (\d+) failed", "failed"),
)


def cases_of(test):
    cases = {"passed": 0, "failed": 0, "skipped": 0}
    for line in (test.findtext("system-out") or "").replace("\r", "").split("\n"):
        for pattern, kind in LINES:
            if match := re.fullmatch(pattern, line):
                cases[kind] += int(match[1]) if match.groups() else 1
    good = test.get("status") == "run"
    if not good or not any(cases.values()):
        cases["passed" if good else "failed"] = max(1, cases["passed" if good else "failed"])
    return cases


try:
    counted = [cases_of(test) for test in xml.parse(sys.argv[1]).iter("testcase")
               if test.get("name").startswith(tuple(sys.argv[2:]) or "")]
except OSError:  # no test has that name
    counted = []
total = {kind: sum(cases[kind] for cases in counted) for kind in ("passed", "failed", "skipped")}
print(", ".join(f"{number} {kind}" for kind, number in total.items()))
sys.exit(total["failed"] > 0 or total["passed"] == 0)
