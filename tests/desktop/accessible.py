#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""What a screen reader does with a program of the desktop it is called in.

    accessible.py PID

It reads requests from its standard input, a JSON list on each line, and answers each with a line of JSON:

    ["shows", NAME]      whether something of that name shows; with a title as below, in that window
    ["texts"]            the same, once something shows
    ["roles", TITLE]     the window of that title and what shows in it, each as [ROLE, NAME]
    ["press", NAME]      presses the button of that name, or turns the switch; with the title of a window after the
                         name, the one in that window
    ["focus", NAME]      gives the keyboard to what has that name
    ["where", NAME]      the middle of what has that name, as [X, Y] on the screen
    ["value", LABEL]     what is chosen in the combo box with that label
    ["open", LABEL]      opens the list of the combo box with that label

All but the first wait ten seconds at most for what they are about to appear. The answer is null when it does not, and
false when it does not do what it is to. Each look at a node is a call on the bus: nobody looks further than needed.

A program of its own, because the accessibility library keeps to the first bus that it has seen."""
import functools
import json
import sys
import time

import pyatspi
from gi.repository import Atspi

PRESSABLE = (pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_RADIO_BUTTON)


@functools.cache
def found_application(pid):
    """What Qt shows of the process. On a desktop with the GTK theme, GTK registers a second application for it, which
    is empty."""
    for candidate in pyatspi.Registry.getDesktop(0):
        if candidate is not None and candidate.get_process_id() == pid and candidate.get_toolkit_name() == "Qt":
            candidate.set_cache_mask(Atspi.Cache.NONE)  # what it shows now, not what it has shown
            return candidate
    raise LookupError


def application(pid):
    try:
        return found_application(pid)
    except LookupError:
        return None  # not remembered


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
            return press(node) if command == "open" else node.name
        if command == "focus" and name in (node.name, label(node)):
            component = node.queryComponent()
            if node.getState().contains(pyatspi.STATE_FOCUSABLE):
                return component.grabFocus()
        if command == "where" and node.name == name:
            area = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
            if area.width > 0:
                return [area.x + area.width // 2, area.y + area.height // 2]
    return None


def names(nodes):
    return [node.name for node in nodes if node.name]


def roles(window):
    return [[node.getRoleName(), node.name] for node in (window, *showing(window)) if node.name]


def answer(pid, command, name=None, title=None):
    if command == "shows":
        program = application(pid)
        nodes = () if program is None else showing(program if title is None else window(program, title))
        return {"shows": any(node.name == name for node in nodes)}
    deadline = time.monotonic() + 10
    while time.monotonic() < deadline:
        program = application(pid)
        if program is not None and command == "roles":
            if found := window(program, name):
                return roles(found)
        elif program is not None:
            nodes = showing(program if title is None else window(program, title))
            done = names(nodes) or None if command == "texts" else act(nodes, command, name)
            if done is not None:
                return done
        time.sleep(0.1)
    return None


for line in sys.stdin:
    print(json.dumps(answer(int(sys.argv[1]), *json.loads(line))), flush=True)
