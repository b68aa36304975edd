#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""check_behaviour: fails when docs/behaviour.md and the tests do not agree.

    check_behaviour.py [ROOT]      prints each fault; exit 0 only when there is none
    check_behaviour.py --self-test plants faults and expects to be told of each

A claim is a list item of the page. It ends with the tests that prove it, each as `Suite.Test`; every
test named there must stand in the sources, and every claim must name one.
"""

import pathlib
import re
import sys
import tempfile

import check_tree

PAGE = "docs/behaviour.md"
TEST = re.compile(r"^\s*TEST(?:_F|_P)?\(\s*(\w+)\s*,\s*(\w+)\s*\)", re.MULTILINE)
NAMED = re.compile(r"`(\w+)\.(\w+)`")
# A test that is switched off proves nothing.
DISABLED = "DISABLED_"


def tests_in(root):
    """The tests of the sources, as Suite.Test."""
    found = set()
    for path in sorted((root / "tests").rglob("*.cpp")):
        for suite, test in TEST.findall(path.read_text(encoding="utf-8")):
            if not suite.startswith(DISABLED) and not test.startswith(DISABLED):
                found.add(f"{suite}.{test}")
    return found


def claims_in(text):
    """Each claim with the number of its first line."""
    claims = []
    for number, line in enumerate(text.splitlines(), 1):
        if line.startswith("- "):
            claims.append([number, line[2:]])
        elif claims and line.startswith("  "):
            claims[-1][1] += " " + line.strip()
    return claims


def faults(root):
    known = tests_in(root)
    seen = {}
    for number, claim in claims_in((root / PAGE).read_text(encoding="utf-8")):
        named = [".".join(each) for each in NAMED.findall(claim)]
        if not named:
            yield f"{PAGE}:{number}: a claim without a test: {claim}"
        for test in named:
            if test not in known:
                yield f"{PAGE}:{number}: no test of that name: {test}"
        words = NAMED.sub("", claim).strip(" ,")
        if words in seen:
            yield f"{PAGE}:{number}: the claim of line {seen[words]} again: {words}"
        seen[words] = number
    if not seen:
        yield f"{PAGE}: no claims"


def self_test():
    source = (
        "TEST_F(BreakTest, IdleMan)\n{\n}\nTEST_P(CodesTest,\n       EachCode)\n{\n}\n"
        "TEST(OffTest, DISABLED_Later)\n{\n}\n"
    )
    pages = [
        ("- An idle man. `BreakTest.IdleMan`\n- Codes:\n  each. `CodesTest.EachCode`\n", 0),
        ("- An idle man. `BreakTest.BusyMan`\n", 1),
        ("- An idle man. `OtherTest.IdleMan`\n", 1),
        ("- An idle man.\n", 1),
        ("- An idle man. `BreakTest.IdleMan`\n- Another.\n", 1),
        ("- An idle man. `OffTest.DISABLED_Later`\n", 1),
        ("- An idle man. `BreakTest.IdleMan`, `BreakTest.Gone`, `CodesTest.Gone`\n", 2),
        ("- An idle man. `BreakTest.IdleMan`\n- An idle man. `CodesTest.EachCode`\n", 1),
        ("Nothing is claimed here.\n", 1),
    ]
    failed = 0
    for page, expected in pages:
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in (("tests/ATest.cpp", source), (PAGE, page)):
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text, encoding="utf-8")
            found = list(faults(root))
            if len(found) != expected:
                print(f"self-test: {page!r}: {found}, expected {expected} faults")
                failed += 1
    return failed


if __name__ == "__main__":
    sys.exit(check_tree.main(faults, self_test, "every claim has its tests"))
