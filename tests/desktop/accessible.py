#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""What a screen reader does with a program of the desktop it is called in.

    accessible.py PID texts          prints the names of all that shows, as a JSON list
    accessible.py PID press NAME     presses the button of that name; fails when there is none within ten seconds

A program of its own, because the accessibility library keeps to the first bus that it has seen."""
import json
import sys
import time

import pyatspi


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


def press(node):
    action = node.queryAction()
    for index in range(action.nActions):
        if action.getName(index) == "Press":
            return action.doAction(index)
    return False


def main():
    pid, command = int(sys.argv[1]), sys.argv[2]
    deadline = time.monotonic() + 10
    while time.monotonic() < deadline:
        program = application(pid)
        if program is not None:
            nodes = list(showing(program))
            if command == "texts":
                if nodes:
                    print(json.dumps([node.name for node in nodes if node.name]))
                    return 0
            else:
                for node in nodes:
                    if node.name == sys.argv[3] and node.getRole() == pyatspi.ROLE_PUSH_BUTTON:
                        return 0 if press(node) else 1
        time.sleep(0.1)
    print(f"nothing found in program {pid}", file=sys.stderr)
    return 1


sys.exit(main())
