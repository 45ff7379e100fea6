# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A private system bus with a session manager that announces sleep."""
import contextlib
import subprocess

from waiting import poll

NAME = "org.freedesktop.login1"
PATH = "/org/freedesktop/login1"
CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>system</type><listen>unix:path={socket}</listen><auth>EXTERNAL</auth>
<policy context="default">
<allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
</policy>
</busconfig>
"""


class SessionManager(contextlib.AbstractContextManager):
    """Programs started with its `environment` find it."""

    def __init__(self, desktop):
        self.desktop = desktop
        socket = desktop.room / "system-bus"
        self.environment = {"DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={socket}"}
        configuration = desktop.room / "system-bus.conf"
        configuration.write_text(CONFIGURATION.format(socket=socket))
        self.bus = desktop.start_bus(f"--config-file={configuration}")
        self.manager = subprocess.Popen(["/usr/bin/python3", "-m", "dbusmock", "--system", "--template", "logind"],
                                        env={**desktop.environment, **self.environment}, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL)
        poll("the session manager", lambda: NAME in self._call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                               "org.freedesktop.DBus.ListNames"))

    def _call(self, name, path, method, *arguments):
        return self.desktop.run("gdbus", "call", "--address", self.environment["DBUS_SYSTEM_BUS_ADDRESS"],
                                "--timeout", "5", "--dest", name, "--object-path", path, "--method", method, *arguments)

    def wake(self):
        """Announces that the machine has woken from sleep."""
        self._call(NAME, PATH, "org.freedesktop.DBus.Mock.EmitSignal", f"{NAME}.Manager", "PrepareForSleep", "b",
                   "[<false>]")

    def __exit__(self, kind, problem, trace):
        for process in (self.manager, self.bus):
            process.terminate()
            process.wait(10)
