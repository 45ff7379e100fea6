#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Walks through Quillet on one desktop, in its root. scripts/try-desktops calls it as root.

    walk.py DESKTOP-SUITE FOLDER [STEP...]    writes results.json and pictures to FOLDER
"""
import importlib
import os
import pathlib
import platform
import shutil
import subprocess
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent.parent / "tests/desktop")]
folder = pathlib.Path(sys.argv[2])
os.environ.update(QUILLET_TEST_PREFIX="/usr", QUILLET_TEST_PICTURES=str(folder))

from packages import ROOTS  # noqa: E402  (after sys.path)
from report import Report  # noqa: E402
import road_banner  # noqa: E402
import road_bell  # noqa: E402
import road_desktop  # noqa: E402
from session import PASSWORD  # noqa: E402

ROAD = {
    "bell": road_bell.seen_bell, "phases": road_bell.walk_phases, "clicks": road_bell.walk_clicks,
    "keyboard": road_bell.walk_keyboard, "fullscreen": road_banner.walk_full_screen,
    "browser": road_banner.walk_browser, "notification": road_desktop.walk_notification,
    "switch": road_desktop.walk_switch, "lock": road_banner.walk_lock, "dark": road_desktop.walk_dark,
    "memory": road_desktop.walk_memory, "sides": road_bell.walk_sides, "scale": road_desktop.walk_scale,
    "monitors": road_desktop.walk_monitors,
}


def session_class(desktop):
    return getattr(importlib.import_module(desktop), desktop.capitalize())


def prepare_user():
    """Prepares the ordinary user's home, a tmpfs, and runtime folders."""
    subprocess.run(["mount", "-t", "tmpfs", "-o", "uid=1000,gid=1000,mode=0700", "tmpfs", "/home/teacher"], check=True)
    subprocess.run(["chpasswd"], input=f"teacher:{PASSWORD}", text=True, check=True)
    for path in ("/run/user/1000", "/run/dbus", "/run/systemd/seats", "/run/systemd/sessions"):
        os.makedirs(path, exist_ok=True)
    for path in ("/run/user/1000", "/run/dbus", folder):
        os.chown(path, 1000, 1000)
    os.chmod("/run/user/1000", 0o700)
    pathlib.Path("/tmp/.X11-unix").mkdir(exist_ok=True)
    os.chmod("/tmp/.X11-unix", 0o1777)


def main():
    root = next(one for one in ROOTS if one.name == sys.argv[1])
    version = subprocess.run(["dpkg-query", "-W", "-f", "${Version}", root.version_of], capture_output=True, text=True,
                             check=True).stdout
    kind = session_class(root.desktop)
    prepare_user()
    kind.as_root(1)
    os.setgroups([])
    os.setgid(1000)
    os.setuid(1000)
    os.environ["HOME"] = "/home/teacher"
    os.chdir("/home/teacher")
    report = Report(folder, {"desktop": root.desktop, "suite": root.suite, "version": f"{root.version_of} {version}",
                             "session": kind.kind, "python": platform.python_version()})
    began = time.monotonic()
    with kind() as session:
        session.opponents = []
        with report.step(session, "The session starts") as step:
            session.bring_up()
            step.note(f"A host for the bell was there after {time.monotonic() - began:.1f} s.")
            step.picture(session.shot(), "before Quillet")
        if report.steps[-1]["result"] == "right":
            for name in sys.argv[3:] or ROAD:
                try:
                    ROAD[name](session, report)
                except Exception as problem:  # outside a step; the next part may succeed
                    with report.step(session, f"The rest of “{name}”"):
                        raise problem
        shutil.copytree(session.room / "logs", folder / "logs")


if __name__ == "__main__":
    main()
