#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Compares what dump_mdb prints of the sample files with what an independent reader found.

usage: dump_mdb_test.py DUMP_MDB SAMPLES
"""

import collections
import json
import pathlib
import re
import struct
import subprocess
import sys

SKIPPED = 77
failures = []


def check(holds, claim):
    if not holds:
        failures.append(claim)


def run(*arguments):
    return subprocess.run([str(a) for a in arguments], capture_output=True, timeout=120)


def parsed(line):
    """2 and 2.0 are one number."""
    return json.loads(line, parse_int=float)


def lines_of(result):
    return [parsed(line) for line in result.stdout.decode("utf-8").splitlines()]


def as_other_reader(row, columns, jet3):
    """The other reader could tell no character of a code page beyond ASCII, and wrote numbers of
    four bytes with all digits of their value in eight."""
    for column in columns:
        value = row[column["name"]]
        if column["type"] == "FLOAT" and value is not None:
            row[column["name"]] = struct.unpack("f", struct.pack("f", value))[0]
        elif jet3 and isinstance(value, str):
            row[column["name"]] = re.sub(r"[^\x00-\x7f]", "\ufffd", value)
    return row


def multiset(rows):
    return collections.Counter(json.dumps(row, sort_keys=True) for row in rows)


def file_of(samples, name):
    if name in ("shop", "shop-fresh"):
        return samples / name / "Kelvaro.mdb"
    return samples / "mdb" / (name + ".mdb")


def compare_schema(name, found, expected):
    check(sorted(found) == sorted(expected), f"{name}: tables {sorted(found)}")
    for table in sorted(set(found) & set(expected)):
        for part in ("rows", "columns"):
            check(found[table][part] == expected[table][part],
                  f"{name}: {part} of {table}: {found[table][part]}, not {expected[table][part]}")
        indexes = [sorted(map(json.dumps, schema[table]["indexes"]))
                   for schema in (found, expected)]
        check(indexes[0] == indexes[1], f"{name}: indexes of {table}: {indexes}")


def compare_file(dump, samples, name):
    """Schema and every row of one sample. Returns how many rows were compared."""
    path = file_of(samples, name)
    result = run(dump, "--json", path)
    check(result.returncode == 0, f"{name}: {result.stderr.decode()}")
    folder = samples / "expected" / name
    expected = {t["table"]: t for t in map(parsed, (folder / "schema.jsonl").open())}
    compare_schema(name, {t["table"]: t for t in lines_of(result)}, expected)
    rows = 0
    for table in expected:
        kept = folder / (re.sub(r"[^A-Za-z0-9_]", "_", table) + ".jsonl")
        wanted = multiset(map(parsed, kept.open(encoding="utf-8")))
        result = run(dump, "--json", path, table)
        check(result.returncode == 0, f"{name}.{table}: {result.stderr.decode()}")
        jet3 = name.endswith("V1997")
        given = multiset(as_other_reader(row, expected[table]["columns"], jet3)
                         for row in lines_of(result))
        rows += sum(given.values())
        for row in list((wanted - given))[:2] + list((given - wanted))[:2]:
            check(False, f"{name}.{table}: {'missing' if row in wanted else 'unexpected'} {row}")
    return rows


def check_behaviour(dump, samples):
    """What the program says and how it ends when it is not asked for what it can do."""
    shop = file_of(samples, "shop")
    check(run(dump, "--help").returncode == 0, "--help ends with 0")
    check(b"usage" in run(dump, "--help").stdout, "--help tells the usage")
    check(run(dump).returncode == 2, "no file is wrong usage")
    check(run(dump, "--frob", shop).returncode == 2, "an unknown option is wrong usage")
    missing = run(dump, samples / "nowhere.mdb")
    check(missing.returncode == 1 and b"3024" in missing.stderr, f"missing file: {missing.stderr}")
    foreign = run(dump, samples / "README.md")
    check(foreign.returncode == 1 and b"3343" in foreign.stderr, f"foreign file: {foreign.stderr}")
    unknown = run(dump, "--json", shop, "NoSuchTable")
    check(unknown.returncode == 1 and b"3078" in unknown.stderr, f"table: {unknown.stderr}")
    text = run(dump, shop).stdout.decode()
    for part in ("table LDEmp (14 rows", "Name", "Text(100)", "zero length allowed", "default 0",
                 "index PrimaryKey: ProfileNumber, primary key"):
        check(part in text, f"the text of the shop lacks: {part}")
    check("MSysObjects" not in text, "system tables are shown unasked")
    check("table MSysObjects" in run(dump, "--system", shop).stdout.decode(), "--system")


def main():
    dump, samples = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    if not (samples / "expected").is_dir():
        print("sample files not present:", samples)
        return SKIPPED
    names = [p.name for p in sorted((samples / "expected").iterdir())]
    rows = sum(compare_file(dump, samples, name) for name in names)
    check(len(names) >= 24 and rows > 4000, f"only {len(names)} files, {rows} rows compared")
    check_behaviour(dump, samples)
    for failure in failures[:40]:
        print("FAILED:", failure[:1000])
    print(f"{len(names)} files, {rows} rows, {len(failures)} failures")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
