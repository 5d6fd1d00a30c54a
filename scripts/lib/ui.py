"""Drives a running program through the accessibility service, as a screen reader would.

    ui.py wait NAME [SECONDS]      until a control of that name is there
    ui.py press NAME               pushes a button or ticks a box
    ui.py type NAME TEXT           replaces the text of a field
    ui.py pick NAME ROW            chooses the row of that text in a popup
    ui.py rows NAME                prints the rows of a popup
    ui.py read PATTERN [SECONDS]   waits for a label that matches and prints it
    ui.py place NAME               prints left, top, width and height on the screen
    ui.py value NAME               prints the text of a field
    ui.py spoken NAME              prints what a slider says its value is
    ui.py focus NAME               gives a control the keyboard
    ui.py focused                  prints the name of the control that has the keyboard
    ui.py cell TEXT [SECONDS]      waits for a table's cell with that text
    ui.py names                    lists every control: role, name, text, description
NAME is the accessible name; a popup is named by the row that shows, and described by its own name,
which is NAME too. Fails with a message on stderr.
"""

import re
import subprocess
import sys
import time
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

warnings.filterwarnings("ignore", category=DeprecationWarning)
PROGRAM = "larkspool"


def controls():
    """Every accessible object of the program's windows."""
    desktop = Atspi.get_desktop(0)
    waiting = []
    for i in range(desktop.get_child_count()):
        application = desktop.get_child_at_index(i)
        if application and PROGRAM in (application.get_name() or "").lower():
            waiting.append(application)
    while waiting:
        found = waiting.pop(0)
        yield found
        for i in range(min(found.get_child_count(), 500)):
            child = found.get_child_at_index(i)
            if child:
                waiting.append(child)


def text_of(control):
    if control.get_text_iface():
        return Atspi.Text.get_text(control, 0, -1)
    return control.get_name() or ""


def until(seconds, look):
    """Calls look until it gives something."""
    end = time.monotonic() + seconds
    while True:
        try:
            found = look()
        except gi.repository.GLib.Error:
            found = None  # the tree changed under us
        if found:
            return found
        if time.monotonic() > end:
            return None
        time.sleep(0.1)


def named(name, seconds=10.0):
    def look():
        for control in controls():
            if control.get_role_name() == "label":
                continue
            if control.get_name() == name or control.get_description() == name:
                return control
        return None

    found = until(seconds, look)
    if not found:
        sys.exit(f"no control is named {name!r}")
    return found


def act(control):
    if control.get_n_actions() == 0:
        sys.exit(f"{control.get_name()!r} can't be pressed")
    control.do_action(0)


def pick(name, row):
    """With the keys, as this toolkit offers assistive technology no other way."""
    popup = named(name)
    texts = until(5, lambda: row in rows(popup) and rows(popup))
    if not texts:
        sys.exit(f"{name!r} has no row {row!r}")
    act(popup)
    open_list = until(5, lambda: [c for c in children(popup) if is_showing(c)])
    if not open_list:
        sys.exit(f"{name!r} doesn't open")
    steps = ["Home"] + ["Down"] * texts.index(row) + ["Return"]
    subprocess.run(["xdotool", "key", "--delay", "5", *steps], check=True)


def is_showing(control):
    return control.get_state_set().contains(Atspi.StateType.SHOWING)


def rows(popup):
    return [c.get_name() for c in children(popup) if c.get_role_name() == "list item"]


def children(control):
    for i in range(control.get_child_count()):
        child = control.get_child_at_index(i)
        yield child
        yield from children(child)


def read(pattern, seconds):
    def look():
        for control in controls():
            if control.get_role_name() == "label" and re.search(pattern, control.get_name() or ""):
                return control.get_name()
        return None

    found = until(seconds, look)
    if not found:
        sys.exit(f"no label reads {pattern!r}")
    print(found)


def focused():
    for control in controls():
        if control.get_state_set().contains(Atspi.StateType.FOCUSED):
            if control.get_role_name() not in ("frame", "application"):
                return control.get_name()
    return ""


def wait_for_cell(text, seconds):
    def look():
        return any(c.get_role_name() == "table cell" and c.get_name() == text for c in controls())

    if not until(seconds, look):
        sys.exit(f"no cell reads {text!r}")


def main(arguments):
    verb, rest = arguments[0], arguments[1:]
    if verb == "wait":
        named(rest[0], float(rest[1]) if len(rest) > 1 else 10.0)
    elif verb == "press":
        act(named(rest[0]))
    elif verb == "type":
        Atspi.EditableText.set_text_contents(named(rest[0]), rest[1])
    elif verb == "pick":
        pick(rest[0], rest[1])
    elif verb == "rows":
        print(*rows(named(rest[0])), sep="\n")
    elif verb == "read":
        read(rest[0], float(rest[1]) if len(rest) > 1 else 10.0)
    elif verb == "place":
        place = Atspi.Component.get_extents(named(rest[0]), Atspi.CoordType.SCREEN)
        print(place.x, place.y, place.width, place.height)
    elif verb == "value":
        print(text_of(named(rest[0])))
    elif verb == "spoken":
        print(named(rest[0]).get_description())
    elif verb == "focus":
        Atspi.Component.grab_focus(named(rest[0]))
    elif verb == "focused":
        print(focused())
    elif verb == "cell":
        wait_for_cell(rest[0], float(rest[1]) if len(rest) > 1 else 10.0)
    elif verb == "names":
        for control in controls():
            told = [control.get_name(), text_of(control), control.get_description()]
            print(control.get_role_name(), *map(repr, told), sep="\t")
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    main(sys.argv[1:])
