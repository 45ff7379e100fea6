#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Acts as a screen reader on one program of the desktop in which it is started.

    accessible.py PID

It reads requests from standard input, a JSON list per line, and answers each with a line of JSON:

    ["shows", NAME]      whether an element of that name is visible, as {"shows": BOOLEAN}
    ["texts"]            the names of all visible elements, once there is one
    ["roles", TITLE]     the window of that title and its visible elements with a name, each as [ROLE, NAME]
    ["press", NAME]      presses the button of that name, or toggles the switch
    ["focus", NAME]      gives the keyboard focus to the element of that name or label
    ["where", NAME]      the middle of the element of that name, as [X, Y] on the screen
    ["value", LABEL]     the current choice of the combo box with that label
    ["open", LABEL]      opens the list of the combo box with that label

A window's title after a NAME restricts the request to that window. All requests but "shows" wait up to ten seconds for
their element. The answer is null when it does not appear, and false when it rejects the action. Reading a node takes a
call on the bus, so nothing more is read than needed.

This is a separate program because the accessibility library stays with the first bus that it connects to."""
import functools
import json
import sys
import time

import pyatspi
from gi.repository import Atspi, GLib

PRESSABLE = (pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_RADIO_BUTTON)


@functools.cache
def found_application(pid):
    """The process's Qt application. With the GTK theme, GTK registers a second, empty one for the same process."""
    for candidate in pyatspi.Registry.getDesktop(0):
        if candidate is not None and candidate.get_process_id() == pid and candidate.get_toolkit_name() == "Qt":
            candidate.set_cache_mask(Atspi.Cache.NONE)  # the current state, not a remembered one
            return candidate
    raise LookupError


def application(pid):
    try:
        return found_application(pid)
    except LookupError:
        return None  # not cached: it may appear later


def showing(node, depth=0):
    """The visible nodes below a node. Hidden ones stay in the tree and are left out."""
    for child in node:
        if child is None or depth > 30 or not child.getState().contains(pyatspi.STATE_SHOWING):
            continue
        yield child
        yield from showing(child, depth + 1)


def window(program, title):
    """The program's window of that title; empty while there is none."""
    return next((child for child in program if child is not None and child.name == title), ())


def press(node):
    action = node.queryAction()
    for index in range(action.nActions):
        if action.getName(index) in ("Press", "Toggle"):
            return action.doAction(index)
    return False


def label(node):
    """The label beside a control. A combo box's own name is its current choice."""
    for relation in node.getRelationSet():
        if relation.getRelationType() == pyatspi.RELATION_LABELLED_BY:
            return relation.getTarget(0).name
    return None


def act(nodes, command, name):
    """Applies the command to the first node that it fits and returns its result; None when it fits none."""
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
            try:
                done = names(nodes) or None if command == "texts" else act(nodes, command, name)
            except GLib.GError:
                done = None  # a node has gone since it was listed
            if done is not None:
                return done
        time.sleep(0.1)
    return None


for line in sys.stdin:
    print(json.dumps(answer(int(sys.argv[1]), *json.loads(line))), flush=True)
