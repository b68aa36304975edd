# SPDX-License-Identifier: Apache-2.0
"""What a database holds, as an independent reader tells it, and what it ought to hold."""
import csv
import io
import os
import subprocess

NULL = "(null)"
EMPTY = NULL  # the reader tells an empty text as no text
NO_DATE = "1899-12-30 "  # a time of day is stored without a date


def at(time):
    return NO_DATE + time + ":00"


def day(date):
    return date + " 00:00:00"


class Books:
    """All tables of the file, row by row; a row is a dictionary of texts."""

    def __init__(self, file):
        names = subprocess.run(["mdb-tables", "-1", file], check=True, capture_output=True, text=True)
        self.tables = {name: self.rows(file, name) for name in names.stdout.split("\n") if name}

    @staticmethod
    def rows(file, table):
        exported = subprocess.run(
            ["mdb-export", "-0", NULL, "-D", "%Y-%m-%d %H:%M:%S", "-T", "%Y-%m-%d %H:%M:%S", file, table],
            check=True, capture_output=True, env={**os.environ, "TZ": "UTC", "LC_ALL": "C.UTF-8"})
        if exported.stderr:
            raise AssertionError(f"the reader complains about {table}: {exported.stderr}")
        text = exported.stdout.decode(errors="surrogateescape")
        return list(csv.DictReader(io.StringIO(text, newline="")))

    def the(self, table, field, value):
        found = [row for row in self.tables[table] if row[field] == str(value)]
        if len(found) != 1:
            raise AssertionError(f"{len(found)} rows of {table} with {field} {value}")
        return found[0]

    def change(self, table, field, value, **fields):
        """What one row ought to hold from now on."""
        row = self.the(table, field, value)
        for name, content in fields.items():
            if name not in row:
                raise AssertionError(f"{table} has no {name}")
            row[name] = str(content)

    def add_to(self, order, field, amount):
        """Adds to a total of an order; a total that is null stays null."""
        row = self.the("WorkOrder", "WorkOrderNumber", order)
        if row[field] != NULL:
            places = ".4f" if field.endswith("Cost") else ".2f"
            row[field] = format(float(row[field]) + amount, places)


def same(one, other):
    """Numbers by their value: the reader prints binary fractions with all their digits."""
    if one == other:
        return True
    try:
        return abs(float(one) - float(other)) < 1e-9
    except ValueError:
        return False


def differences(prescribed, stored):
    """Every way in which the stored books differ from the prescribed ones."""
    found = []
    if sorted(prescribed.tables) != sorted(stored.tables):
        return [f"tables {sorted(stored.tables)}, not {sorted(prescribed.tables)}"]
    for table, rows in prescribed.tables.items():
        held = stored.tables[table]
        if len(rows) != len(held):
            found.append(f"{table}: {len(held)} rows, not {len(rows)}: {held[len(rows):]}")
        for number, (row, other) in enumerate(zip(rows, held)):
            found += [f"{table} row {number + 1}: {name} is {other.get(name)!r}, not {row[name]!r}"
                      for name in row if not same(row[name], other.get(name))]
    return found
