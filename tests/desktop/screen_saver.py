#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A screen saver on the session bus: announces "active" or not for each line "true" or "false" of its standard input;
leaves the bus when the input ends."""
import sys

from gi.repository import Gio, GLib

bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)
for line in sys.stdin:
    bus.emit_signal(None, "/org/gnome/ScreenSaver", "org.gnome.ScreenSaver", "ActiveChanged",
                    GLib.Variant("(b)", (line.strip() == "true",)))
    bus.flush_sync(None)
