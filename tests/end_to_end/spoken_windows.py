"""The real program's windows as a screen reader finds them, by AT-SPI."""
import os
import pathlib
import sys

# The module comes with the system's own Python, which need not be the first one found.
SYSTEM_PYTHON = "/usr/bin/python3"
try:
    import pyatspi
    STATE_SHOWING = pyatspi.STATE_SHOWING
except ImportError:
    pyatspi = None
    if sys.executable != SYSTEM_PYTHON and os.path.exists(SYSTEM_PYTHON):
        os.execv(SYSTEM_PYTHON, [SYSTEM_PYTHON, *sys.argv])

sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "practice"))
from waiting import wait_for  # noqa: E402, F401


def parts_of(part):
    """A part of the tree with all below it that is in sight."""
    yield part
    for child in part:
        if child is not None and child.getState().contains(STATE_SHOWING):
            yield from parts_of(child)


def name_of(part):
    """A list is named by its label."""
    for relation in part.getRelationSet():
        if relation.getRelationType() == pyatspi.RELATION_LABELLED_BY:
            return relation.getTarget(0).name
    return part.name


def nameless(window):
    controls = {pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_RADIO_BUTTON,
                pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_SPIN_BUTTON, pyatspi.ROLE_PAGE_TAB,
                pyatspi.ROLE_TEXT, pyatspi.ROLE_TOGGLE_BUTTON}
    found = []
    for part in parts_of(window):
        inside = part.parent is not None and part.parent.getRole() in (
            pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_SPIN_BUTTON)
        if part.getRole() in controls and not inside and not name_of(part):
            found.append(part.getRoleName())
    return found


def named(window, role, name):
    for part in parts_of(window):
        # A text in a group is labelled by the group's title, and has its own words as its name.
        if part.getRole() == role and (name in name_of(part) or name in part.name):
            return part
    return None


def window_of(name):
    for application in pyatspi.Registry.getDesktop(0):
        for window in application or ():
            if window is not None and name in window.name:
                return window
    return None


def press(part):
    actions = part.queryAction()
    for index in range(actions.nActions):
        if actions.getName(index).lower() == "press":
            actions.doAction(index)
            return
    raise RuntimeError(f"no press at {part.name}")


def require(holds, what):
    if not holds:
        raise RuntimeError(what)
