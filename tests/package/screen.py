#!/usr/bin/python3
"""What a screen reader sees of the desktop, and what its user does there.

    screen.py find ROLE NAME     prints the place and size of what is shown with that name
    screen.py press ROLE NAME    does what a click on it would do
    screen.py text ROLE NAME     prints what stands in it
    screen.py checked ROLE NAME  succeeds where it is ticked

A NAME that ends in an asterisk is the beginning of one. Each fails where there is no such thing.
"""
import sys

import gi
import pyatspi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

# A program that does not answer is passed over; milliseconds, and those for one that has just started.
Atspi.set_timeout(2000, 5000)


def shown(node, depth=0):
    if depth > 40:
        return
    for place in range(node.childCount):
        try:
            child = node.getChildAtIndex(place)
        except Exception:  # it has gone meanwhile
            continue
        if child is None:
            continue
        yield child
        yield from shown(child, depth + 1)


def matches(node, role, name):
    if node.getRoleName() != role or not node.getState().contains(pyatspi.STATE_SHOWING):
        return False
    return node.name.startswith(name[:-1]) if name.endswith("*") else node.name == name


def main():
    verb, role, name = sys.argv[1:]
    for application in shown_applications():
        for node in [application, *shown(application)]:
            try:
                if not matches(node, role, name):
                    continue
                if verb == "find":
                    place = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
                    print(place.x, place.y, place.width, place.height)
                elif verb == "press":
                    actions = node.queryAction()
                    names = [actions.getName(place).lower() for place in range(actions.nActions)]
                    actions.doAction(next(names.index(name) for name in ("press", "toggle", "click") if name in names))
                elif verb == "text":
                    print(node.queryText().getText(0, -1))
                elif verb == "checked":
                    return 0 if node.getState().contains(pyatspi.STATE_CHECKED) else 1
                return 0
            except Exception:
                continue
    return 1


def shown_applications():
    desktop = pyatspi.Registry.getDesktop(0)
    for place in range(desktop.childCount):
        try:
            application = desktop.getChildAtIndex(place)
        except Exception:
            continue
        if application is not None:
            yield application


sys.exit(main())
