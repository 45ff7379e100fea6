# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A calendar server on the loopback interface."""
import contextlib
import os
import signal
import socket

from events import calendar
from waiting import poll


class CalendarServer(contextlib.AbstractContextManager):
    """Serves one calendar, "Online", of the user "teacher". Create it before the desktop's calendar service starts."""

    def __init__(self, desktop):
        self.desktop = desktop
        self.data = desktop.room / "calendar-server"
        self.collection = self.data / "collection-root/teacher/lessons"
        self.collection.mkdir(parents=True)
        (self.collection / ".Radicale.props").write_text('{"tag": "VCALENDAR", "D:displayname": "Online"}')
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            self.port = free.getsockname()[1]
        settings = desktop.room / "calendar-server.conf"
        settings.write_text(f"[server]\nhosts=127.0.0.1:{self.port}\n[auth]\ntype=none\n[rights]\ntype=owner_only\n"
                            f"[storage]\nfilesystem_folder={self.data}\n[logging]\nlevel=warning\n")
        self.process = desktop.popen("radicale", "--config", str(settings))
        poll("the calendar server", self._listens, 20)
        self._add_to_service()

    def _listens(self):
        with socket.socket() as probe:
            return probe.connect_ex(("127.0.0.1", self.port)) == 0

    def _add_to_service(self):
        source = self.desktop.config / "evolution/sources/online.source"
        source.parent.mkdir(parents=True, exist_ok=True)
        source.write_text(f"""[Data Source]
DisplayName=Online
Enabled=true
Parent=caldav-stub

[Authentication]
Host=127.0.0.1
Port={self.port}
User=teacher
Method=plain/password

[Security]
Method=none

[WebDAV Backend]
ResourcePath=/teacher/lessons/

[Calendar]
BackendName=caldav

[Offline]
StaySynchronized=true
""")

    def __exit__(self, kind, problem, trace):
        self.resume()
        self.process.terminate()
        self.process.wait(10)

    def put(self, name, event):
        """Adds or replaces an event."""
        new = self.collection / f".{name}.new"
        new.write_text(calendar(event), newline="")
        new.replace(self.collection / f"{name}.ics")

    def remove(self, name):
        (self.collection / f"{name}.ics").unlink()

    def hang(self):
        """From now on the server accepts connections but does not answer."""
        os.kill(self.process.pid, signal.SIGSTOP)

    def resume(self):
        os.kill(self.process.pid, signal.SIGCONT)
