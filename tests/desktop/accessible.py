#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""What a screen reader does with a program of the desktop it is called in.

    accessible.py PID texts          prints the names of all that shows, as a JSON list
    accessible.py PID now            prints the same at once, also when nothing shows
    accessible.py PID press NAME     presses the button of that name, or turns the switch; with the title of a
                                     window after the name, the one in that window
    accessible.py PID focus NAME     gives the keyboard to what has that name
    accessible.py PID where NAME     prints the middle of what has that name, as X and Y on the screen
    accessible.py PID value LABEL    prints what is chosen in the combo box with that label
    accessible.py PID open LABEL     opens the list of the combo box with that label

Each waits ten seconds at most for what it is about to appear, and fails when it does not.

A program of its own, because the accessibility library keeps to the first bus that it has seen."""
import json
import sys
import time

import pyatspi


PRESSABLE = (pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_RADIO_BUTTON)


def application(pid):
    for candidate in pyatspi.Registry.getDesktop(0):
        if candidate is not None and candidate.get_process_id() == pid:
            return candidate
    return None


def showing(node, depth=0):
    """All that shows below a node; what is hidden stays in the tree and is left out."""
    for child in node:
        if child is None or depth > 30 or not child.getState().contains(pyatspi.STATE_SHOWING):
            continue
        yield child
        yield from showing(child, depth + 1)


def window(program, title):
    """The program's window of that title; nothing while there is none."""
    return next((child for child in program if child is not None and child.name == title), ())


def press(node):
    action = node.queryAction()
    for index in range(action.nActions):
        if action.getName(index) in ("Press", "Toggle"):
            return action.doAction(index)
    return False


def label(node):
    """What stands beside a control and names it; a combo box calls itself by what is chosen in it."""
    for relation in node.getRelationSet():
        if relation.getRelationType() == pyatspi.RELATION_LABELLED_BY:
            return relation.getTarget(0).name
    return None


def act(nodes, command, name):
    """Does what the command says to the first node that it fits; None when there is none."""
    for node in nodes:
        role = node.getRole()
        if command == "press" and node.name == name and role in PRESSABLE:
            return press(node)
        if command in ("value", "open") and role == pyatspi.ROLE_COMBO_BOX and label(node) == name:
            if command == "open":
                return press(node)
            print(node.name)
            return True
        if command == "focus" and name in (node.name, label(node)):
            component = node.queryComponent()
            if node.getState().contains(pyatspi.STATE_FOCUSABLE):
                return component.grabFocus()
        if command == "where" and node.name == name:
            area = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
            if area.width > 0:
                print(area.x + area.width // 2, area.y + area.height // 2)
                return True
    return None


def main():
    pid, command = int(sys.argv[1]), sys.argv[2]
    if command == "now":
        program = application(pid)
        print(json.dumps([node.name for node in showing(program) if node.name] if program is not None else []))
        return 0
    deadline = time.monotonic() + 10
    while time.monotonic() < deadline:
        program = application(pid)
        if program is not None:
            nodes = list(showing(program if len(sys.argv) < 5 else window(program, sys.argv[4])))
            if command == "texts":
                if nodes:
                    print(json.dumps([node.name for node in nodes if node.name]))
                    return 0
            else:
                done = act(nodes, command, sys.argv[3])
                if done is not None:
                    return 0 if done else 1
        time.sleep(0.1)
    print(f"{' '.join(sys.argv[2:])}: nothing found in program {pid}", file=sys.stderr)
    return 1


sys.exit(main())
