#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Searches the accessibility tree of all programs for visible nodes whose name contains a text. Prints a JSON list of
[program, role, name, left, top, width, height].

    anywhere.py TEXT [SECONDS]    waits up to SECONDS until there is one"""
import json
import sys
import time

import pyatspi

MOST = 4000  # nodes, per program


def found_in(program, text):
    nodes, seen = list(program), 0
    while nodes and seen < MOST:
        node = nodes.pop()
        seen += 1
        try:
            if node is None or not node.getState().contains(pyatspi.STATE_SHOWING):
                continue
            if text in (node.name or ""):
                area = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
                yield [program.name, node.getRoleName(), node.name, area.x, area.y, area.width, area.height]
            nodes.extend(node)
        except Exception:  # the node may vanish meanwhile; each library raises its own error
            continue


deadline = time.monotonic() + (float(sys.argv[2]) if len(sys.argv) > 2 else 0)
while True:
    found = []
    for application in pyatspi.Registry.getDesktop(0):
        if application is not None:
            found += found_in(application, sys.argv[1])
    if found or time.monotonic() >= deadline:
        break
    time.sleep(0.2)
print(json.dumps(found))
