#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Sends the same requests to the Quillet on the session bus 3,000 times: flood.py BUS-NAME"""
import sys

from gi.repository import Gio, GLib

NAME = sys.argv[1]
MENU, APPLICATION = "/StatusNotifierItem/Menu", "/com/ordwinsoftware/Quillet"
bus = Gio.bus_get_sync(Gio.BusType.SESSION)


def call(path, method, arguments, done=None):
    interface, _, member = method.rpartition(".")
    bus.call(NAME, path, interface, member, arguments, None, Gio.DBusCallFlags.NONE, 60_000, None, done)


def answered(connection, result):
    connection.call_finish(result)
    loop.quit()


# A host reads the menu before it opens it.
bus.call_sync(NAME, MENU, "com.canonical.dbusmenu", "GetLayout", GLib.Variant("(iias)", (0, -1, [])), None,
              Gio.DBusCallFlags.NONE, 10_000, None)
loop = GLib.MainLoop()
for number in range(3000):
    call(MENU, "com.canonical.dbusmenu.AboutToShow", GLib.Variant("(i)", (0,)))
    call(APPLICATION, "org.freedesktop.Application.Activate", GLib.Variant("(a{sv})", ({},)),
         answered if number == 2999 else None)
loop.run()
