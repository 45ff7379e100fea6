#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A desktop portal on the session bus, only for inhibiting sleep: prints "ready", "held FLAGS" and "released"."""
from gi.repository import Gio, GLib

PATH = "/org/freedesktop/portal/desktop"
INTERFACES = Gio.DBusNodeInfo.new_for_xml("""<node>
<interface name="org.freedesktop.portal.Inhibit">
<method name="Inhibit"><arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="a{sv}" direction="in"/>
<arg type="o" direction="out"/></method>
</interface>
<interface name="org.freedesktop.portal.Request"><method name="Close"/></interface>
</node>""").interfaces

bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)
requests = {}


def inhibit(_bus, _sender, _path, _interface, _method, arguments, invocation):
    path = f"{PATH}/request/{len(requests)}"
    requests[path] = bus.register_object(path, INTERFACES[1], close, None, None)
    print("held", arguments[1], flush=True)
    invocation.return_value(GLib.Variant("(o)", (path,)))


def close(_bus, _sender, path, _interface, _method, _arguments, invocation):
    bus.unregister_object(requests[path])
    print("released", flush=True)
    invocation.return_value(None)


bus.register_object(PATH, INTERFACES[0], inhibit, None, None)
Gio.bus_own_name_on_connection(bus, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE,
                               lambda *_: print("ready", flush=True), None)
GLib.MainLoop().run()
