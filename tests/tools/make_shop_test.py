#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Makes sample shops and looks at them with our checker and an independent reader.

usage: make_shop_test.py MAKE_SHOP DUMP_MDB CHECK_MDB
"""

import csv
import io
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile

failures = []
MAKE, DUMP, CHECK = map(pathlib.Path, sys.argv[1:4])
CLOCK = {"LDEmp", "LDTotals", "LDHistory", "Status"}
SHOP = {"Profile", "WorkOrder", "Labor", "GenLedger", "Departments", "AutoLook"}


def check(holds, claim):
    if not holds:
        failures.append(claim)


def run(*arguments):
    return subprocess.run([str(a) for a in arguments], capture_output=True, timeout=300)


def make(folder, *options):
    result = run(MAKE, *options, folder)
    check(result.returncode == 0, f"{options}: {result.stderr.decode()}")
    return folder / "Kelvaro.mdb"


def rows_of(shop, table):
    result = run(DUMP, "--json", shop, table)
    check(result.returncode == 0, f"{table}: {result.stderr.decode()}")
    return [json.loads(line) for line in result.stdout.decode("utf-8").splitlines()]


def check_bytes(folder):
    options = ("--history", "120", "--orders", "20", "--date", "2004-03-15")
    shops = [make(folder / str(i), *options, "--seed", seed)
             for i, seed in enumerate(("7", "7", "8"))]
    contents = [shop.read_bytes() for shop in shops]
    check(contents[0] == contents[1], "the same seed gives the same bytes")
    check(contents[0] != contents[2], "another seed gives another shop")
    again = run(MAKE, *options, folder / "0")
    check(again.returncode == 1 and b"exists" in again.stderr, f"overwrites: {again.stderr}")
    check(shops[0].read_bytes() == contents[0], "a refused shop stays as it was")


def check_no_papers(folder):
    shop = make(folder, "--no-papers", "--history", "60", "--orders", "30")
    check_integrity(shop)
    check(len(rows_of(shop, "WorkOrder")) == 30, "orders without papers")
    for table in ("EstimateLine", "PurchaseOrder", "Payment", "Attachment"):
        check(not rows_of(shop, table), f"{table} holds papers")
    check(not any(o["AuditNotes"] or o["Comments"] or o["InternalNotes"]
                  for o in rows_of(shop, "WorkOrder")), "notes on an order without papers")


def check_usage(folder):
    check(run(MAKE).returncode == 2, "no folder is wrong usage")
    check(run(MAKE, "--date", "2004-02-30", folder / "x").returncode == 2, "30 February")
    check(run(MAKE, "--employees", "none", folder / "x").returncode == 2, "no number")
    check(b"--history" in run(MAKE, "--help").stdout, "--help tells the options")
    check(not (folder / "x").exists(), "wrong usage makes nothing")


def check_pins(folder):
    made = run(MAKE, "--employees", "6", "--date", "2004-03-15", folder)
    told = made.stdout.decode().splitlines()[1:]
    stored = {}
    for p in rows_of(folder / "Kelvaro.mdb", "Profile"):
        if p["Type"] == "Employee":
            stored[f"{p['LastName']}, {p['FirstName']}"] = (p["PIN"] or "").strip()
    check(told == [f"  {name}: " + (f"PIN {pin}" if pin else "no PIN")
                   for name, pin in stored.items()], f"the PINs told: {told}")


def check_integrity(shop):
    result = run(CHECK, "--quiet", shop)
    found = result.stdout.decode() + result.stderr.decode()
    check(result.returncode == 0, f"the checker finds: {found[:2000]}")


def check_content(shop):
    check_integrity(shop)
    people = rows_of(shop, "Profile")
    technicians = [p for p in people if p["Type"] == "Employee"]
    board = rows_of(shop, "LDEmp")
    history = rows_of(shop, "LDHistory")
    orders = {o["EntryNumber"]: o for o in rows_of(shop, "WorkOrder")}
    check(len(board) == 9 and len(technicians) == 8, "eight technicians and a hidden one")
    hidden = {r["EmpID"] for r in board if r["Name"].startswith("@")}
    check({r["EmpID"] for r in board} - hidden == {p["ProfileNumber"] for p in technicians}, "board")
    check(len(hidden) == 1, "somebody is hidden")
    check(any(p["PIN"] == "1234" for p in technicians), "a PIN")
    check(any(p["PIN"] is None for p in technicians), "no PIN")
    check(len(history) == 600 == len(rows_of(shop, "Labor")), f"{len(history)} jobs")
    check(len(orders) == 75, f"{len(orders)} orders")
    names = " ".join(str(p["LastName"]) + str(p["FirstName"]) for p in people)
    check("'" in names and any(ord(c) > 127 for c in names), "apostrophes and accents")
    check({s["GLType"] for s in rows_of(shop, "Status") if s["AcctType"] == "LDStatus"}
          >= {"BL", "RL", "FL", "ML", "SL", "GL"}, "labor types")
    check_sums(history, orders, rows_of(shop, "LDTotals"))


def check_sums(history, orders, totals):
    """Hours on orders and in totals are those of the history."""
    worked = {}
    for job in history:
        check(job["WONumb"] == orders[job["WOID"]]["WorkOrderNumber"], "a job's order")
        if job["GLType"] == "BL":
            worked[job["WOID"]] = worked.get(job["WOID"], 0) + job["Hrs"]
    for entry, hours in worked.items():
        check(abs(orders[entry]["BodyWorked"] - hours) < 0.001, f"hours of order {entry}")
    days = {}
    for job in history:
        day = days.setdefault((job["EmpID"], job["WorkDate"]), [0, 0.0])
        day[0] += 1
        day[1] += job["Hrs"]
    check(len(totals) > 50, "few totals")
    for total in totals:
        jobs, hours = days[(total["EmpID"], total["WorkDate"])]
        check(jobs == total["JobCount"] and abs(hours - total["JobHrs"]) < 0.001, str(total))


def check_format(folder):
    """The same shop in both formats: the same rows, each file its own version."""
    options = ("--history", "120", "--orders", "20", "--date", "2004-03-15")
    jet3 = make(folder / "jet3", "--format", "jet3", *options)
    jet4 = make(folder / "jet4", "--format", "jet4", *options)
    check(jet3.read_bytes()[0x14] == 0 and jet4.read_bytes()[0x14] == 1, "versions")
    check(jet4.read_bytes() == make(folder / "default", *options).read_bytes(), "jet4 is default")
    check(run(MAKE, "--format", "jet5", folder / "y").returncode == 2, "an unknown format")
    check_integrity(jet3)
    tables = [json.loads(line)["table"]
              for line in run(DUMP, "--json", jet4).stdout.decode().splitlines()]
    check(len(tables) >= 10, f"{len(tables)} tables")
    check(len(rows_of(jet3, "LDHistory")) == 120, "jobs in jet3")
    for table in tables:
        rows = [[dict(row, Weight=float(row.get("Weight", 0))) for row in rows_of(shop, table)]
                for shop in (jet3, jet4)]  # jet3 has no decimals
        check(rows[0] == rows[1], f"rows of {table}")
    check_with_other_reader(jet3)
    if shutil.which("mdb-ver") is not None:
        check(run("mdb-ver", jet3).stdout.split() == [b"JET3"], "mdb-ver")


# The same shop, but nobody reads it by looking at the bytes of its file.
def check_encoded(folder):
    options = ("--history", "120", "--orders", "60", "--date", "2004-03-15")
    for version in ("jet3", "jet4"):
        plain = make(folder / f"plain {version}", *options, "--format", version)
        encoded = make(folder / f"encoded {version}", *options, "--format", version, "--encoded")
        for text in ("LDHistory", "Customer"):
            stored = text.encode("ascii" if version == "jet3" else "utf-16-le")
            check(stored in plain.read_bytes(), f"{text} in the plain {version} file")
            check(stored not in encoded.read_bytes(), f"{text} in the encoded {version} file")
        check_integrity(encoded)
        for table in CLOCK | SHOP:
            check(rows_of(plain, table) == rows_of(encoded, table), f"rows of {table}, {version}")
        check_with_other_reader(encoded)


# A shop whose file asks for a password: what lies behind the header's mask is turned into one.
def check_password(folder):
    shop = make(folder / "guarded", "--history", "120", "--orders", "20", "--date", "2004-03-15")
    content = bytearray(shop.read_bytes())
    for i, letter in enumerate("abc"):
        content[0x42 + 2 * i] ^= ord(letter)
    shop.write_bytes(content)
    for tool, refusal in ((CHECK, 2), (DUMP, 1)):
        for words in ((shop,), ("--password", "ABC", shop), (shop, "--password")):
            result = run(tool, *words)
            check(result.returncode in (1, 2), f"{tool.name} {words}: {result.returncode}")
        result = run(tool, "--password", "wrong", shop)
        check(result.returncode == refusal and b"Not a valid password" in result.stderr,
              f"{tool.name}: {result.stderr}")
        result = run(tool, "--password", "abc", shop)
        check(result.returncode == 0 and result.stdout, f"{tool.name}: {result.stderr}")
    check(shop.read_bytes() == bytes(content), "the guarded file is as it was")


def check_with_other_reader(shop):
    if shutil.which("mdb-tables") is None:
        print("no independent reader on this machine: that comparison is left out")
        return
    tables = set(run("mdb-tables", "-1", shop).stdout.decode().split())
    check(tables >= CLOCK | SHOP, f"the other reader sees {tables}")
    for table in sorted(tables):
        exported = run("mdb-export", "-b", "hex", shop, table)
        check(exported.returncode == 0, f"mdb-export {table}: {exported.stderr.decode()}")
        theirs = list(csv.reader(io.StringIO(exported.stdout.decode("utf-8"))))
        ours = rows_of(shop, table)
        check(len(theirs) - 1 == len(ours), f"{table}: {len(theirs) - 1} rows, not {len(ours)}")
        if table == "LDHistory":
            place = theirs[0].index("Customer")
            check(sorted(r[place] for r in theirs[1:]) == sorted(r["Customer"] for r in ours),
                  "names the other reader sees")
    schema = run("mdb-schema", shop)
    check(schema.returncode == 0 and b"[WO#]" in schema.stdout, "mdb-schema")


def main():
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch)
        check_bytes(folder)
        check_no_papers(folder / "no-papers")
        check_usage(folder)
        check_pins(folder / "pins")
        shop = make(folder / "shop", "--employees", "8", "--history", "600", "--orders", "75",
                    "--date", "2004-03-15", "--seed", "3")
        check_content(shop)
        check_with_other_reader(shop)
        check_format(folder)
        check_encoded(folder)
        check_password(folder)
        fresh = make(folder / "fresh", "--fresh", "--history", "100", "--date", "2004-03-15")
        names = {json.loads(line)["table"]
                 for line in run(DUMP, "--json", fresh).stdout.decode().splitlines()}
        check(names >= SHOP and not names & CLOCK, f"a fresh shop has {names}")
        check_integrity(fresh)
    for failure in failures[:40]:
        print("FAILED:", failure)
    print(f"{len(failures)} failures")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
