#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""A working day at the built program, from outside.

usage: working_day_test.py LODRIN MAKE_SHOP CHECK_MDB

A person at a screen works through a day at set times: everything is read and pressed through the
accessibility bus, and typed where a person types. Then an independent reader compares every row of
every table with what the day prescribes. Ends with 77 when it cannot be run here.
"""
import contextlib
import os
import re
import subprocess
import sys

import stage
from stage import until

DATE = "2024-01-15"
ADDED = ("New Employees have been added to the Lodrin Database and existing employees have been "
         "updated.Please Exit the program and then restart Lodrin.  Note.... All data will remain as "
         "shown, you do NOT need to stop any times or end any jobs.")
NONE_ADDED = ("No employees found to add or update to the employee list.  Ensure employee data "
              "exists in the Tarvex Management system and try again.")
NO_DESCRIPTIONS = ("You have not yet set up your status descriptions.  Select Setup/Status "
                   "Descriptions from the menu before you start using the Lodrin program.")
DUPLICATE = ("The Kelvaro Lodrin program is already running on this machine.\n"
             " Try the following actions as necessary: \n\n"
             "1. Check your task bar, if Lodrin is shown click on the button to activate it. "
             "2. Try starting the Lodrin program again.  "
             "3. If actions 1 and 2 above do not work and this message appears again, press "
             "Control/Alt/Delete.  This will bring up the Task Manager.  If the Lodrin Software "
             "appears in the task list, highlight it and click on 'End Task'.  If a second box "
             "appears press 'End Task' there as well.  Then retry running Lodrin.")
END_OF_DAY = "This will close out your time for today.  Are you sure?"
NO_SUCH_ORDER = "The RO you selected no long exists in the database, or is not accessable."
# A number typed without the two blanks of a list entry is the one thing that is reported.
TYPED_NUMBER = ('"Error 5 in Sub frmLodrin!cboRO_KeyUp()Error = '
                "'Invalid procedure call or argument'")
A_RECORD = re.compile(rb'"Error \d+ in Sub [^"\r\n]*"\r\n')


def clock_text(moment):
    """"2024-01-15 07:42:00" as the window's caption shows it."""
    hour, minute, second = (int(part) for part in moment[11:].split(":"))
    return f"{(hour + 11) % 12 + 1}:{minute:02}:{second:02} {'AM' if hour < 12 else 'PM'}"


class Shop:
    """The shop, the person at its time clock, and the books as they ought to be."""

    def __init__(self, lodrin, make_shop, check_mdb):
        self.stage = stage.Stage(lodrin)
        self.check_mdb = check_mdb
        self.folder = self.stage.folder / "shop"
        self.file = self.folder / "Kelvaro.mdb"
        subprocess.run([make_shop, "--fresh", "--date", DATE, self.folder], check=True,
                       stdout=subprocess.DEVNULL)
        (self.stage.program_folder / "Lodrin.ini").write_bytes(
            f"[FileLoc]\r\nLodrin={self.folder}\r\n".encode())
        self.person = self.process = None

    # The program

    def start(self, time, date=DATE, long_date="Monday, January 15, 2024", newcomers=False):
        """Starts the program and confirms everything that it says until its window is there."""
        self.set_clock(f"{date} {time}:00")
        self.process = self.stage.start()
        self.person = Person(self.process)
        self.person.answer("Date Verification", "Is this the correct date: " + long_date, "Yes")
        self.person.answer("Lodrin", ADDED if newcomers else NONE_ADDED, "OK")
        self.person.answer("Lodrin", NO_DESCRIPTIONS, "OK")
        self.wait_for_tick()
        self.person.gone("Lodrin", role="filler")
        expect(self.read("stsLDText"), f"Database Path: {self.folder}")

    def second_copy_is_refused(self):
        second = self.stage.start()
        Person(second).answer("Duplicate Program", DUPLICATE, "OK")
        expect(second.wait(20), 0)
        self.wait_for_tick()

    def crash(self):
        self.process.kill()
        self.process.wait()

    def leave(self):
        self.person.press(self.window(), "Exit")
        expect(self.process.wait(20), 0)

    def set_clock(self, moment):
        self.moment = moment
        self.stage.clock.at(moment)

    def at(self, time):
        self.set_clock(f"{self.moment[:10]} {time}:00")
        self.wait_for_tick()

    def clock_goes_on_from(self, time):
        self.stage.clock.goes_on_from(f"{self.moment[:10]} {time}")

    def has_come_to(self, time):
        """Waits for the running clock, however late this test looks at it."""
        until(lambda: self.window().get_name() >= "Lodrin -      " + time, f"{time} come")

    def wait_for_tick(self):
        self.person.window("Lodrin -      " + clock_text(self.moment))

    # The window

    def window(self):
        return self.person.window("Lodrin -      ")

    def read(self, name):
        return self.person.text(self.window(), name)

    def choose_by_touch(self, name):
        touch(self.person.row(self.window(), "grdEmp", name))
        until(lambda: self.read("lblEmpName") == name, f"{name} chosen")

    def choose_by_keyboard(self, name, letters):
        """The first letters find the name on the board."""
        self.focus("grdEmp", "table")
        self.person.type(letters)
        until(lambda: self.read("lblEmpName") == name, f"{name} chosen")

    def focus(self, name, role):
        """Goes on with the Tab key until the control has the keyboard."""
        for _ in range(12):
            if self.person.has_keyboard_in(self.window(), name, role):
                return
            self.person.keys("Tab")
            settle()
        raise AssertionError(f"the Tab key does not reach {name}")

    def type_order(self, number):
        self.focus("cboRO", "text")
        self.person.type(str(number))
        until(lambda: self.read_order() == str(number), f"{number} typed")
        self.person.keys("Return")

    def read_order(self):
        return text_of(self.person.control(self.window(), "cboRO", "text"))

    def pin(self, number):
        self.person.window("Enter PIN")
        self.person.type(number)
        self.person.keys("Return")
        self.person.gone("Enter PIN")

    def labor(self, code, department):
        """With the keyboard alone: the first letters find the entry, Enter confirms."""
        dialog = self.person.window("Select Labor Type")
        self.person.pick_by_typing(dialog, "lstGLCodes", code + " ")
        self.person.keys("Tab")
        self.person.pick_by_typing(dialog, "lstDepartments", department)
        self.person.keys("Return")
        self.person.gone("Select Labor Type")

    def press(self, button):
        self.person.press(self.window(), button)

    def progress(self, text, button):
        dialog = self.person.window("Update Progress")
        self.person.pick_by_typing(dialog, "lstProgress", text)
        self.person.press(dialog, button)
        self.person.gone("Update Progress")

    def last_job(self, entry):
        """Steps down the list of last jobs and presses Enter."""
        self.focus("lstHistory", "list")
        for _ in range(10):
            self.person.keys("Down")
            settle()
            if self.person.selected(self.window(), "lstHistory") == entry:
                return self.person.keys("Return")
        raise AssertionError(f"no last job {entry!r}")

    def job_line(self, text):
        until(lambda: self.shows(text), f"{text!r} in the window")

    def shows(self, text):
        with contextlib.suppress(AssertionError):
            return bool(self.person.control(self.window(), text, "label"))
        return False

    # The books

    def stored(self):
        return Books(self.file)

    def check(self, prescribed, where):
        found = differences(prescribed, self.stored())
        if found:
            raise AssertionError(where + ":\n  " + "\n  ".join(found))
        checked = subprocess.run([self.check_mdb, self.file], capture_output=True, text=True)
        if checked.returncode != 0 or not checked.stdout.startswith("clean: "):
            raise AssertionError(f"{where}: {checked.stdout}{checked.stderr}")

    def reports(self):
        """The log's lines; each is one whole record."""
        log = self.stage.log()
        records = A_RECORD.findall(log)
        expect(b"".join(records), log)
        return [record.decode("cp1252").strip() for record in records]


def expect(found, wanted):
    if found != wanted:
        raise AssertionError(f"{found!r}, not {wanted!r}")


def first_start(books):
    """The clock's tables, and one row for each employee, in the order of their last names."""
    employees = sorted((row for row in books.tables["Profile"] if row["Type"] == "Employee"),
                       key=lambda row: row["LastName"].casefold())
    books.tables.update(LDEmp=[], LDHistory=[], LDTotals=[], Status=[])
    for profile in employees:
        add_employee(books, profile)


def add_employee(books, profile):
    entry = len(books.tables["LDEmp"]) + 1
    books.tables["LDEmp"].append({
        "EmpEntry": str(entry), "EmpID": profile["ProfileNumber"],
        "Name": f"{profile['LastName']}, {profile['FirstName']}", "StartDay": NULL, "EndDay": NULL,
        "StartJob": NULL, "WO#": "0", "WOID": "0", "VehDesc": EMPTY, "Customer": EMPTY,
        "WorkDate": NULL, "GLType": EMPTY})


def job_open(books, employee, order, code, time):
    """The employee's row once he works on the order."""
    paper = books.the("WorkOrder", "WorkOrderNumber", order)
    books.change("LDEmp", "EmpID", employee, **{
        "WO#": order, "WOID": paper["EntryNumber"], "VehDesc": paper["ServiceItemDescriptionL1"],
        "Customer": paper["ProfileDescriptionL1"], "GLType": code, "StartJob": at(time)})


def no_job(books, employee, **more):
    books.change("LDEmp", "EmpID", employee, **{
        "WO#": NULL, "WOID": NULL, "VehDesc": EMPTY, "Customer": EMPTY, "GLType": EMPTY,
        "StartJob": NULL, **more})


def job_closed(books, employee, order, code, start, end, hours, date=DATE):
    """A row of the history and one of the labor lines."""
    paper = books.the("WorkOrder", "WorkOrderNumber", order)
    profile = books.the("Profile", "ProfileNumber", employee)
    books.tables["LDHistory"].append({
        "ID": str(len(books.tables["LDHistory"]) + 1), "EmpID": str(employee), "WorkDate": day(date),
        "JobStart": at(start), "JobEnd": at(end), "WONumb": str(order), "WOID": paper["EntryNumber"],
        "GLType": code, "Hrs": hours, "VehDesc": paper["ServiceItemDescriptionL1"],
        "Customer": paper["ProfileDescriptionL1"]})
    labor = books.tables["Labor"]
    labor.append({**dict.fromkeys(labor[0], NULL), **{
        "LaborID": str(int(labor[-1]["LaborID"]) + 1), "EmployeeID": str(employee),
        "WONumber": paper["EntryNumber"], "EmpRate": profile["EmpRate"],
        "LastName": profile["LastName"], "FirstName": profile["FirstName"], "GLType": code,
        "FlagDate": day(date), "TimeIN": at(start), "TimeOut": at(end), "HrsFlagged": hours,
        "HrsActual": "0", "WorkOrder": str(order), "MiscDesc": paper["ServiceItemDescriptionL1"],
        "Paid": "0", "PayBatch": "0", "Adjusted": "0"}})


def day_added_up(books, employee, start, end, hours, jobs, job_hours, date=DATE):
    books.tables["LDTotals"].append({
        "ID": str(len(books.tables["LDTotals"]) + 1), "EmpID": str(employee), "WorkDate": day(date),
        "StartDay": at(start), "EndDay": at(end), "TotHrs": hours, "JobCount": str(jobs),
        "JobHrs": job_hours})


BEAUMONT, CHISHOLM = 2, 6


def working_day(shop):
    """Two technicians, three cars and a power cut. Returns the books as they ought to be."""
    books = shop.stored()

    # 07:42. The shop opens; the clock makes its tables and takes over the employees.
    shop.start("07:42", newcomers=True)
    first_start(books)
    shop.second_copy_is_refused()

    # 07:55. Chloé Beaumont touches her name, types the number and her PIN. The car has not been
    # worked on before.
    shop.at("07:55")
    shop.choose_by_touch("Beaumont, Chloé")
    shop.type_order(10117)
    shop.pin("1234")
    shop.labor("BL", "Body")
    shop.job_line("WO 10117 · BL · since 07:55 AM · 2012 Dorado Mesa SLE 4D UTV · O'Brien, Jürgen")
    books.change("LDEmp", "EmpID", BEAUMONT, StartDay=at("07:55"), WorkDate=day(DATE))
    job_open(books, BEAUMONT, 10117, "BL", "07:55")
    books.change("WorkOrder", "WorkOrderNumber", 10117, BLTech=BEAUMONT, DeptSequence=30,
                 Started=f"{DATE} 07:55:00", Arrived=f"{DATE} 07:55:00")

    # 08:05. Selma Chisholm has no PIN and no mouse. Nobody has counted refinish hours on her van.
    shop.at("08:05")
    shop.choose_by_keyboard("Chisholm, Selma", "chi")
    shop.type_order(10118)
    shop.labor("RL", "Paint")
    shop.job_line("WO 10118 · RL · since 08:05 AM · 2012 Hallmark Convoy 2500 VAN · Nightingale, Naomi")
    books.change("LDEmp", "EmpID", CHISHOLM, StartDay=at("08:05"), WorkDate=day(DATE))
    job_open(books, CHISHOLM, 10118, "RL", "08:05")
    books.change("WorkOrder", "WorkOrderNumber", 10118, RLTech=CHISHOLM, DeptSequence=70,
                 Started=f"{DATE} 08:05:00", Arrived=f"{DATE} 08:05:00")

    # 10:20. Chloé changes cars: what she did until now is charged to the car she turns to.
    shop.at("10:20")
    shop.choose_by_touch("Beaumont, Chloé")
    shop.type_order(10112)
    shop.pin("1234")
    shop.labor("BL", "Body")
    shop.job_line("WO 10112 · BL · since 10:20 AM · 2010 Stellar Pulse EX 4D SED · Dunleavy, Orson")
    job_closed(books, BEAUMONT, 10117, "BL", "07:55", "10:20", "2.42")
    job_open(books, BEAUMONT, 10112, "BL", "10:20")
    books.change("WorkOrder", "WorkOrderNumber", 10112, BLTech=BEAUMONT)
    books.add_to(10112, "BodyWorked", 2.42)
    books.add_to(10112, "BodyCost", 31.52 * 2.42)

    # 12:00. She goes on break: her time is charged to the car she was at, and its progress is told.
    shop.at("12:00")
    shop.press("Go On Break")
    shop.pin("1234")
    shop.progress("In body", "Okay")
    shop.job_line("Day started 07:55 AM · no job open")
    job_closed(books, BEAUMONT, 10112, "BL", "10:20", "12:00", "1.67")
    no_job(books, BEAUMONT)
    books.change("WorkOrder", "WorkOrderNumber", 10112, Progress="In body")
    books.add_to(10112, "BodyWorked", 1.67)
    books.add_to(10112, "BodyCost", 31.52 * 1.67)

    # 12:10. Without an open job nobody can end his day.
    shop.at("12:10")
    shop.press("End Day")
    shop.person.answer("End Of Day", END_OF_DAY, "Yes")
    shop.pin("1234")
    shop.progress("In body", "Okay")
    shop.person.answer("Lodrin", NO_SUCH_ORDER, "OK")
    shop.job_line("Day started 07:55 AM · no job open")

    # 12:30. Back to her first car, from the list of her last jobs; it moves to another department.
    shop.at("12:30")
    shop.last_job("10117   2012 Dorado Mesa SLE 4D UTV")
    shop.pin("1234")
    shop.labor("ML", "Mechanical")
    shop.job_line("WO 10117 · ML · since 12:30 PM · 2012 Dorado Mesa SLE 4D UTV · O'Brien, Jürgen")
    job_open(books, BEAUMONT, 10117, "ML", "12:30")
    books.change("WorkOrder", "WorkOrderNumber", 10117, DeptSequence=50, AuditNotes=
                 "\r\n[Beaumont, Chloé - 01/15/2024 - 12:30 PM] Department changed to Mechanical")

    # 12:45. The power goes. What was clocked is there; at ten past one the clock is up again.
    shop.at("12:45")
    shop.crash()
    shop.check(books, "after the crash")
    shop.start("13:10")
    shop.second_copy_is_refused()

    # 16:30. Chloé goes home. Selma forgets to.
    shop.at("16:30")
    shop.choose_by_touch("Beaumont, Chloé")
    shop.job_line("WO 10117 · ML · since 12:30 PM · 2012 Dorado Mesa SLE 4D UTV · O'Brien, Jürgen")
    shop.press("End Day")
    shop.person.answer("End Of Day", END_OF_DAY, "Yes")
    shop.pin("1234")
    shop.progress("Reassembly", "Okay")
    shop.job_line("Day ended 04:30 PM")
    job_closed(books, BEAUMONT, 10117, "ML", "12:30", "16:30", "4")
    no_job(books, BEAUMONT, EndDay=at("16:30"))
    books.change("WorkOrder", "WorkOrderNumber", 10117, Progress="Reassembly")
    books.add_to(10117, "MechWorked", 4)
    books.add_to(10117, "MechCost", 31.52 * 4)
    day_added_up(books, BEAUMONT, "07:55", "16:30", "8.58", 3, "8.09")
    shop.leave()
    shop.check(books, "in the evening")
    expect(shop.reports(), [TYPED_NUMBER + when + '"' for when in
                            ("1/15/2024:7:55:00 AM", "1/15/2024:8:05:00 AM", "1/15/2024:10:20:00 AM")])
    return books


def next_morning(shop, books):
    """Days are closed at 11:59 PM when the shop opens again, whether somebody forgot to or not."""
    known = len(shop.reports())
    shop.start("06:50", "2024-01-16", "Tuesday, January 16, 2024")
    job_closed(books, CHISHOLM, 10118, "RL", "08:05", "23:59", "15.9")
    day_added_up(books, CHISHOLM, "08:05", "23:59", "15.9", 1, "15.9")
    no_job(books, CHISHOLM, StartDay=NULL)
    books.change("LDTotals", "EmpID", BEAUMONT, EndDay=at("23:59"), TotHrs="16.07")
    no_job(books, BEAUMONT, StartDay=NULL, EndDay=NULL)
    shop.leave()
    shop.check(books, "the next morning")
    # The repair orders are not open yet then: the job's labor line is there, the order's totals
    # stay, and each step that could not be done is in the log.
    new = shop.reports()[known:]
    if not new or any("Sub frmLodrin!WriteLabor()" not in line for line in new):
        raise AssertionError(f"reports of the morning: {new}")


def late_shift(shop, books):
    """The timer ends the day of the chosen employee at 11:59 PM, and of nobody else."""
    date = "2024-01-16"
    known = len(shop.reports())
    shop.start("20:00", date, "Tuesday, January 16, 2024")
    shop.choose_by_touch("Beaumont, Chloé")
    shop.type_order(10112)
    shop.pin("1234")
    shop.labor("BL", "Body")
    shop.job_line("WO 10112 · BL · since 08:00 PM · 2010 Stellar Pulse EX 4D SED · Dunleavy, Orson")
    books.change("LDEmp", "EmpID", BEAUMONT, StartDay=at("20:00"), WorkDate=day(date))
    job_open(books, BEAUMONT, 10112, "BL", "20:00")

    shop.at("20:10")
    shop.choose_by_touch("Chisholm, Selma")
    shop.type_order(10118)
    shop.labor("RL", "Paint")
    shop.job_line("WO 10118 · RL · since 08:10 PM · 2012 Hallmark Convoy 2500 VAN · Nightingale, Naomi")
    books.change("LDEmp", "EmpID", CHISHOLM, StartDay=at("20:10"), WorkDate=day(date))
    job_open(books, CHISHOLM, 10118, "RL", "20:10")

    # Selma's row is the chosen one and nobody touches the screen any more.
    shop.at("23:58")
    shop.check(books, "before the last minute")
    shop.clock_goes_on_from("23:58:57")
    shop.has_come_to("11:59:00 PM")
    shop.job_line("Day ended 11:59 PM")
    expect(shop.person.titles(), [shop.window().get_name()])
    job_closed(books, CHISHOLM, 10118, "RL", "20:10", "23:59", "3.82", date)
    no_job(books, CHISHOLM, EndDay=at("23:59"))
    books.add_to(10118, "RefinishWorked", 3.82)
    books.add_to(10118, "RefinishCost", float(books.the("Profile", "ProfileNumber", CHISHOLM)["EmpRate"]) * 3.82)
    day_added_up(books, CHISHOLM, "20:10", "23:59", "3.82", 1, "3.82", date)

    # The minute goes by with a tick each second, and the date changes.
    shop.has_come_to("11:59:05 PM")
    shop.clock_goes_on_from("23:59:58")
    shop.person.window("Lodrin -      12:00:")
    shop.leave()
    shop.check(books, "after midnight")
    expect(shop.reports()[known:], [TYPED_NUMBER + when + '"' for when in
                                    ("1/16/2024:8:00:00 PM", "1/16/2024:8:10:00 PM")])


def main():
    stage.require_tools()
    stage.enter_own_root()
    lodrin, make_shop, check_mdb = (os.path.abspath(path) for path in sys.argv[1:4])
    shop = Shop(lodrin, make_shop, check_mdb)
    try:
        connect()
        books = working_day(shop)
        next_morning(shop, books)
        late_shift(shop, books)
    except BaseException:
        shop.stage.picture()
        print(shop.stage.errors())
        print(shop.stage.log().decode("cp1252"))
        raise
    finally:
        shop.stage.clear()


if __name__ == "__main__":
    stage.require_tools()
    from books import EMPTY, NULL, Books, at, day, differences
    from hands import Person, connect, settle, text_of, touch
    main()
