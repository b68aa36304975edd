# SPDX-License-Identifier: Apache-2.0
"""The stage of an end-to-end test: a screen, a desktop, a clock that is set, and the built program.

Where the system allows it, everything runs in a root folder of its own, in which /Lodrin.Log and the
lock folder are private; so neither an installed program nor another test is in the way.
"""
import contextlib
import datetime
import fcntl
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

SKIPPED = 77
INSIDE = "LODRIN_E2E_INSIDE"
LOG = pathlib.Path("/Lodrin.Log")
FAKETIME = ["/usr/lib/x86_64-linux-gnu/faketime/libfaketimeMT.so.1",
            "/usr/lib/aarch64-linux-gnu/faketime/libfaketimeMT.so.1",
            "/usr/lib/faketime/libfaketimeMT.so.1"]
SYSTEM_PYTHON = "/usr/bin/python3"
PROGRAMS = ["Xvfb", "dbus-daemon", "openbox", "mdb-export", "mdb-tables"]


def skip(why):
    print("SKIPPED: " + why)
    sys.exit(SKIPPED)


def faketime_library():
    return next((path for path in FAKETIME if os.path.exists(path)), None)


def require_tools():
    """Ends as skipped, with what is missing, unless the test can be run here."""
    missing = [name for name in PROGRAMS if shutil.which(name) is None]
    if faketime_library() is None:
        missing.append("libfaketime")
    try:
        import gi
        gi.require_version("Atspi", "2.0")
    except (ImportError, ValueError):
        # The bindings belong to the system's own Python.
        if sys.executable != SYSTEM_PYTHON and os.path.exists(SYSTEM_PYTHON):
            os.execv(SYSTEM_PYTHON, [SYSTEM_PYTHON, *sys.argv])
        missing.append("python3-gi with gir1.2-atspi-2.0")
    if missing:
        skip("not installed: " + ", ".join(missing) + " (./test installs what is missing)")


def enter_own_root():
    """Runs this script in mount spaces of its own; where that is refused, it goes on here."""
    if os.environ.get(INSIDE):
        build_own_root(os.environ[INSIDE])
        return
    for words in (["--mount"], ["--mount", "--map-root-user"]):
        allowed = shutil.which("unshare") is not None and subprocess.run(
            ["unshare", *words, "true"], stderr=subprocess.DEVNULL).returncode == 0
        if allowed:
            sys.exit(run_inside(["unshare", *words]))
    wait_for_shared_root()


def run_inside(words):
    root = tempfile.mkdtemp(prefix="lodrin-root-")
    try:
        return subprocess.run([*words, sys.executable, *sys.argv],
                              env=dict(os.environ, **{INSIDE: root})).returncode
    finally:
        os.rmdir(root)


def build_own_root(root):
    """A root folder that shows everything the machine's does, but for the log and the lock folder."""
    mount("-t", "tmpfs", "tmpfs", root)
    for entry in os.scandir("/"):
        shown = os.path.join(root, entry.name)
        if entry.is_symlink():
            os.symlink(os.readlink(entry.path), shown)
        elif entry.is_dir():
            os.mkdir(shown)
            mount("--rbind", entry.path, shown)
        elif entry.name != LOG.name:
            open(shown, "w").close()
            mount("--bind", entry.path, shown)
    if os.path.isdir(root + "/run/lock"):
        mount("-t", "tmpfs", "tmpfs", root + "/run/lock")
    here = os.getcwd()
    os.chroot(root)
    os.chdir(here)


def mount(*words):
    subprocess.run(["mount", *words], check=True)


def wait_for_shared_root():
    """On the machine's own root one such test runs at a time."""
    try:
        with open(LOG, "ab"):
            pass
    except OSError as refused:
        skip(f"neither a root folder of its own can be had nor can {LOG} be written: {refused}")
    # Whoever made the file, everybody may read it, and that is enough to lock it.
    path = "/tmp/lodrin-e2e.lock"
    try:
        lock = os.open(path, os.O_RDONLY)
    except FileNotFoundError:
        lock = os.open(path, os.O_RDONLY | os.O_CREAT, 0o644)
    fcntl.flock(lock, fcntl.LOCK_EX)  # until the test's process ends


class Clock:
    """The program's clock: it stands at the time that was set last, or goes on from there."""

    def __init__(self, folder):
        self.file = folder / "clock"

    def at(self, moment):
        """`moment` is "2024-01-15 07:42:00"."""
        self.write(moment)

    def goes_on_from(self, moment):
        """As a clock does; the program runs in UTC."""
        there = datetime.datetime.fromisoformat(moment + "+00:00").timestamp()
        self.write(f"{there - time.time():+.3f}")

    def write(self, setting):
        beside = self.file.with_suffix(".new")
        beside.write_text(setting + "\n")
        beside.rename(self.file)

    def environment(self, program):
        # A sanitizer's library has to come first.
        needed = subprocess.run(["ldd", program], capture_output=True, text=True).stdout.split()
        first = [word for word in needed if word.startswith("/") and "/libasan." in word]
        return {"LD_PRELOAD": " ".join(first + [faketime_library()]),
                "FAKETIME_TIMESTAMP_FILE": str(self.file), "FAKETIME_NO_CACHE": "1",
                "FAKETIME_DONT_FAKE_MONOTONIC": "1", "DONT_FAKE_MONOTONIC": "1",
                "NO_FAKE_STAT": "1", "ASAN_OPTIONS": "detect_leaks=0"}


class Stage:
    """A screen with a window manager and an accessibility bus; the program's folder, clock and log."""

    def __init__(self, built_program, size="1280x1024"):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lodrin-e2e-"))
        self.program_folder = self.folder / "program"
        self.program_folder.mkdir()
        self.program = shutil.copy2(built_program, self.program_folder)
        self.clock = Clock(self.folder)
        self.processes = []
        self.log_start = LOG.stat().st_size if LOG.exists() else 0
        self.start_desktop(size)

    def start_desktop(self, size):
        runtime = self.folder / "runtime"
        runtime.mkdir(mode=0o700)
        for name in ("SESSION_MANAGER", "WAYLAND_DISPLAY", "AT_SPI_BUS_ADDRESS", "QT_SCALE_FACTOR",
                     "QT_QPA_PLATFORM"):
            os.environ.pop(name, None)
        os.environ.update(XDG_RUNTIME_DIR=str(runtime), HOME=str(self.folder), LC_ALL="C.UTF-8",
                          TZ="UTC", GSETTINGS_BACKEND="memory", NO_AT_BRIDGE="0")
        os.environ["DISPLAY"] = ":" + self.announced(
            ["Xvfb", "-screen", "0", size + "x24", "-nolisten", "tcp", "-displayfd", "{}"])
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self.announced(
            ["dbus-daemon", "--session", "--nofork", "--print-address={}"])
        self.processes.append(subprocess.Popen(
            ["openbox", "--sm-disable"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))

    def announced(self, words):
        """Starts a server and returns the line it announces itself with, on a channel of its own."""
        read, write = os.pipe()
        server = subprocess.Popen([word.format(write) for word in words], pass_fds=[write],
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.processes.append(server)
        os.close(write)
        with os.fdopen(read) as channel:
            line = channel.readline().strip()
        if not line:
            raise RuntimeError(words[0] + " did not start")
        return line

    def start(self, scale=None):
        """Starts the program, as a click on its icon does."""
        environment = dict(os.environ, QT_QPA_PLATFORM="xcb", QT_ACCESSIBILITY="1",
                           QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", **self.clock.environment(self.program))
        if scale:
            environment["QT_SCALE_FACTOR"] = str(scale)
        errors = open(self.folder / "stderr", "ab")
        running = subprocess.Popen([self.program], env=environment, cwd=self.folder,
                                   stdout=errors, stderr=errors)
        self.processes.append(running)
        return running

    def log(self):
        """What the program has put down in its log since the stage was set, as bytes."""
        return LOG.read_bytes()[self.log_start:] if LOG.exists() else b""

    def picture(self):
        """Keeps what the screen shows, for whoever looks into a failure."""
        folder = os.environ.get("LODRIN_E2E_PICTURES")
        if folder and shutil.which("import"):
            subprocess.run(["import", "-window", "root", folder + "/failure.png"])

    def errors(self):
        path = self.folder / "stderr"
        return path.read_text(errors="replace") if path.exists() else ""

    def clear(self):
        for process in reversed(self.processes):
            with contextlib.suppress(ProcessLookupError):
                process.send_signal(signal.SIGTERM)
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)


def until(fact, what, seconds=20):
    """Waits for a fact; what it answers is returned."""
    end = time.monotonic() + seconds
    while True:
        answer = fact()
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(f"{what}: not within {seconds} s")
        time.sleep(0.03)
