# SPDX-License-Identifier: Apache-2.0
"""What a person does at the program, through the accessibility bus: reads it, presses, types."""
import contextlib
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from stage import until  # noqa: E402

KEYS = {"Return": 0xFF0D, "Escape": 0xFF1B, "Tab": 0xFF09, "Up": 0xFF52, "Down": 0xFF54, "Home": 0xFF50}


def connect():
    Atspi.init()
    Atspi.set_timeout(3000, 10000)


def children(node):
    found = []
    with contextlib.suppress(GLib.Error):
        for place in range(node.get_child_count()):
            child = node.get_child_at_index(place)
            if child is not None:
                found.append(child)
    return found


def walk(node):
    """A control and all in it, but for the cells and entries of tables and lists."""
    yield node
    with contextlib.suppress(GLib.Error):
        if node.get_role_name() in ("table", "list"):
            return
    for child in children(node):
        yield from walk(child)


def has(node, state):
    return node.get_state_set().contains(state)


class Person:
    """Sees and uses one running program.

    A window is told by its title, a control by its name or description: captionless controls are
    named by the shop's name for them, others describe themselves by it.
    """

    def __init__(self, process):
        self.process = process
        self.application = until(self.find_application, "the program on the accessibility bus", 30)

    def find_application(self):
        if self.process.poll() is not None:
            raise AssertionError(f"the program ended with {self.process.returncode}")
        for application in children(Atspi.get_desktop(0)):
            with contextlib.suppress(GLib.Error):
                if application.get_process_id() == self.process.pid:
                    application.set_cache_mask(Atspi.Cache.NONE)
                    return application
        return None

    def windows(self):
        seen = []
        for window in children(self.application):
            with contextlib.suppress(GLib.Error):
                if has(window, Atspi.StateType.SHOWING):
                    seen.append(window)
        return seen

    def titles(self):
        return [name for name, _ in self.seen()]

    def seen(self):
        """Title and role of each window."""
        found = []
        for window in self.windows():
            with contextlib.suppress(GLib.Error):
                found.append((window.get_name(), window.get_role_name()))
        return found

    def window(self, title, role=None, seconds=20):
        """The window whose title begins so; it waits for it, and until it has the keyboard."""
        def sought():
            if self.process.poll() is not None:
                raise AssertionError(f"the program ended with {self.process.returncode}, "
                                     f"waiting for {title!r}")
            for window in self.windows():
                with contextlib.suppress(GLib.Error):
                    if window.get_name().startswith(title) and \
                            role in (None, window.get_role_name()) and \
                            has(window, Atspi.StateType.ACTIVE):
                        return window
            return None
        try:
            return until(sought, f"window {title!r}", seconds)
        except AssertionError as late:
            raise AssertionError(f"{late}; to be seen: {self.titles()}") from None

    def gone(self, title, role=None):
        def closed():
            return not any(name.startswith(title) and role in (None, its) for name, its in self.seen())
        until(closed, f"{title!r} closed")

    def control(self, window, name, role=None):
        for node in walk(window):
            with contextlib.suppress(GLib.Error):
                if name in (node.get_name(), node.get_description()) and \
                        (role is None or node.get_role_name() == role):
                    return node
        raise AssertionError(f"no {role or 'control'} {name!r} in {window.get_name()!r}")

    def text(self, window, name):
        return text_of(self.control(window, name))

    def answer(self, title, text, button):
        """Reads a message box and presses one of its buttons."""
        box = self.window(title, "alert")
        said = [node.get_name() for node in walk(box) if node.get_role_name() == "label"]
        if text not in said:
            raise AssertionError(f"the box says {said}, not {text!r}")
        self.press(box, button)
        until(lambda: not any(text_in(other, text) for other in self.windows()), f"{text!r} closed")

    def press(self, window, name):
        """Presses a button. The answer may come only after a dialog that it opens."""
        button = self.control(window, name, "push button").get_action_iface()
        for place in range(button.get_n_actions()):
            if button.get_action_name(place) == "Press":
                with contextlib.suppress(GLib.Error):
                    button.do_action(place)
                return
        raise AssertionError(f"{name!r} cannot be pressed")

    def type(self, text):
        for letter in text:
            tap(ord(letter))

    def keys(self, name):
        tap(KEYS[name])

    def pick_by_typing(self, window, list_name, wanted):
        """Types into the list that has the keyboard, and goes on down to the entry.

        `wanted` is a whole entry, or its beginning up to a blank.
        """
        def picked():
            entry = self.selected(window, list_name) or ""
            return entry.startswith(wanted) if wanted.endswith(" ") else entry == wanted

        until(lambda: self.has_keyboard_in(window, list_name), f"{list_name} with the keyboard")
        self.type(wanted.split(" ")[0].lower())
        until(lambda: (self.selected(window, list_name) or "")[:2].lower() == wanted[:2].lower(),
              f"{wanted!r} found in {list_name}")
        for _ in range(5):
            settle()
            if picked():
                return
            self.keys("Down")
        raise AssertionError(f"{wanted!r} not picked, but {self.selected(window, list_name)!r}")

    def has_keyboard_in(self, window, name, role="list"):
        with contextlib.suppress(GLib.Error):
            return has(self.control(window, name, role), Atspi.StateType.FOCUSED)
        return False

    def selected(self, window, list_name):
        with contextlib.suppress(GLib.Error):
            for entry in children(self.control(window, list_name, "list")):
                if has(entry, Atspi.StateType.SELECTED):
                    return entry.get_name()
        return None

    def row(self, window, table_name, wanted):
        """The cell of a table that shows the text."""
        for cell in children(self.control(window, table_name, "table")):
            with contextlib.suppress(GLib.Error):
                if cell.get_role_name() == "table cell" and cell.get_name() == wanted:
                    return cell
        raise AssertionError(f"{table_name} shows no {wanted!r}")


def text_in(box, text):
    """Rule: a window that goes while it is read says nothing any more."""
    with contextlib.suppress(GLib.Error):
        return any(text == node.get_name() for node in walk(box))
    return False


def text_of(node):
    """What a label or a field says."""
    if node.get_role_name() == "label":
        return node.get_name()
    return Atspi.Text.get_text(node, 0, -1)


def settle():
    time.sleep(0.05)


def tap(symbol):
    Atspi.generate_keyboard_event(symbol, None, Atspi.KeySynthType.SYM)


def touch(node):
    """Touches the middle of what is shown there."""
    area = node.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
    Atspi.generate_mouse_event(area.x + area.width // 2, area.y + area.height // 2, "b1c")
