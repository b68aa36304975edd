#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""check_layers: fails on any include outside the dependency table of docs/architecture.md.

    check_layers.py [ROOT]      prints each offending include; exit 0 only when there is none
    check_layers.py --self-test plants forbidden includes and expects to be told of each
"""

import pathlib
import re
import sys
import tempfile

import check_tree

SOURCE_FOLDERS = ["base", "jet", "platform", "app", "data", "floor", "labor", "setup", "tests", "tools", "bench"]
SHOP_FOLDERS = {"app", "data", "floor", "labor", "setup"}

# Inside the engine: the folders each folder may include besides itself.
JET = {
    "io": set(),
    "format": set(),
    "locks": {"format", "io"},
    "pages": {"locks", "format", "io"},
    "index": {"pages", "locks", "format", "io"},
    "table": {"index", "pages", "locks", "format", "io"},
    "catalog": {"table", "index", "pages", "locks", "format", "io"},
    "sql": {"catalog", "table", "index", "pages", "locks", "format", "io"},
    "dao": {"sql", "catalog", "table", "index", "pages", "locks", "format", "io"},
}
JET["check"] = set(JET) - {"check"}

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def library_of(path):
    """The library a file of ours belongs to, by its path from the root."""
    parts = path.split("/")
    if parts[0] in SHOP_FOLDERS:
        return "ui" if "ui" in parts[1:-1] or path == "app/main.cpp" else "shop"
    if parts[0] == "platform":
        return "ui" if parts[1] == "qt" else "platform"
    return parts[0]


def is_qt(target):
    return re.match(r"^(Q[A-Z]|Qt[A-Z])", target) is not None


def jet_fault(source, target):
    inside, wanted = source.split("/")[1], target.split("/")[1]
    if wanted == inside or wanted in JET.get(inside, set()):
        return None
    return f"jet/{inside} may not include jet/{wanted}"


def fault(source, bracket, target):
    """Why `source` may not include `target`; None when it may."""
    library = library_of(source)
    if bracket == "<":
        if not is_qt(target):
            return None
        if "/private/" in target or target.endswith("_p.h"):
            return "Qt's private headers are never included"
        drives_windows = source.startswith(("tests/ui/", "tools/demo/", "bench/ui/"))
        return None if library == "ui" or drives_windows else f"{library} may not include Qt"
    if target.split("/")[0] not in SOURCE_FOLDERS:
        return None
    wanted = library_of(target)
    to_dao = target.startswith("jet/dao/")
    if library == "base":
        return None if wanted == "base" else "base may include nothing else of ours"
    if library == "jet":
        if wanted == "base":
            return None
        return jet_fault(source, target) if wanted == "jet" else f"jet may not include {wanted}"
    if library == "platform":
        return None if wanted in ("base", "platform") or to_dao else f"platform may not include {target}"
    if library == "shop":
        if wanted in ("base", "platform", "shop") or to_dao:
            return None
        return f"the shop's procedures may not include {target}"
    if library == "ui":
        # main.cpp makes the engine; views see record sets only through the controls.
        if wanted in ("base", "platform", "shop", "ui") or (to_dao and source == "app/main.cpp"):
            return None
        return f"the window may not include {target}"
    return None


def faults(root):
    for folder in SOURCE_FOLDERS:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            source = path.relative_to(root).as_posix()
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
                match = INCLUDE.match(line)
                reason = match and fault(source, match.group(1), match.group(2))
                if reason:
                    yield f"{source}:{number}: {reason}: {line.strip()}"


def self_test():
    forbidden = [
        ("base/A.cpp", '#include "jet/dao/Database.h"'),
        ("jet/format/A.cpp", '#include "jet/io/File.h"'),
        ("jet/io/A.cpp", '#include "jet/format/Bytes.h"'),
        ("jet/table/A.cpp", '#include "jet/sql/Parser.h"'),
        ("jet/dao/A.cpp", "#include <QString>"),
        ("jet/dao/A.cpp", '#include "platform/Clock.h"'),
        ("platform/A.cpp", '#include "jet/table/RowSource.h"'),
        ("floor/A.cpp", '#include "jet/pages/Pager.h"'),
        ("floor/A.cpp", '#include "floor/ui/frmGLSelectView.h"'),
        ("floor/A.cpp", "#include <QtWidgets/QWidget>"),
        ("floor/ui/A.cpp", '#include "jet/pages/Pager.h"'),
        ("floor/ui/A.cpp", "#include <private/qobject_p.h>" .replace("private", "QtCore/private")),
        ("tests/floor/A.cpp", "#include <QWidget>"),
        ("bench/A.cpp", "#include <QWidget>"),
    ]
    allowed = [
        ("jet/table/A.cpp", '#include "jet/index/Index.h"'),
        ("floor/A.cpp", '#include "jet/dao/Recordset.h"'),
        ("floor/ui/A.cpp", "#include <QWidget>"),
        ("jet/check/A.cpp", '#include "jet/dao/Database.h"'),
        ("tests/ui/A.cpp", "#include <QWidget>"),
    ]
    failed = 0
    for lines, expected in ((forbidden, 1), (allowed, 0)):
        for source, line in lines:
            with tempfile.TemporaryDirectory() as folder:
                path = pathlib.Path(folder) / source
                path.parent.mkdir(parents=True)
                path.write_text(line + "\n", encoding="utf-8")
                found = len(list(faults(pathlib.Path(folder))))
                if found != expected:
                    print(f"self-test: {source}: {line}: {found} faults, expected {expected}")
                    failed += 1
    return failed


if __name__ == "__main__":
    sys.exit(check_tree.main(faults, self_test, "every include lies within the dependency table"))
