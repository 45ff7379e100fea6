# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The walk's steps for the rest of the desktop: notifications, colours, scale, monitors, memory."""
import pathlib
import re
import subprocess
import time

from PIL import ImageChops
from pictures import ACCENT
from quillet_desktop import poll
from report import NotSeen
from road_bell import lesson, open_panel, start_quillet, start_with_banner
from road_banner import is_covered, pixels_of, start_opponent, wait_until_shown


SYMBOL = 3000  # pixels of its colour at least; at 100 % there are about 6,000
LARGE_SYMBOL = 12000


class Listener:
    """Records the notifications that are sent to the desktop."""

    def __init__(self, session):
        self.path = session.room / "notify-calls"
        self.output = self.path.open("wb")
        self.process = subprocess.Popen(
            ["dbus-monitor", "--session",
             "type='method_call',interface='org.freedesktop.Notifications',member='Notify'"],
            env=session.environment, stdout=self.output, stdin=subprocess.DEVNULL)
        poll("the listener on the bus", lambda: b"NameAcquired" in self.path.read_bytes())

    def found(self):
        """Name, icon, title and body of each."""
        calls = re.split(r"^(?=method call)", self.path.read_text(errors="replace"), flags=re.MULTILINE)
        return [tuple(re.findall(r'^   string "(.*)"$', call, re.MULTILINE)[:4]) for call in calls
                if "member=Notify" in call and re.search(r"^   int32 ", call, re.MULTILINE)]

    def end(self):
        self.process.terminate()
        self.process.wait()
        self.output.close()


def changed_area(before, after):
    """The rectangle in which two pictures differ; None if it is no larger than a clock's change."""
    difference = ImageChops.difference(before, after).convert("L").point(lambda value: 255 * (value > 12))
    box = difference.getbbox()
    return box if box and (box[2] - box[0]) * (box[3] - box[1]) > 8000 else None


def leave_backup(session, settings=("hasCompletedWelcome=true",)):
    """Leaves a notification with the agent, quits Quillet, and returns when the notification is due."""
    start, its_event = lesson(session, 60 + 14)
    program = start_quillet(session, its_event, movable=False, settings=settings)
    program.wait_for("^(scheduled system backup notifications|system notification permission)", 20)
    banner = program.wait_for_banner(1, 15)
    wait_until_shown(session, banner)
    program.quit()
    session.programs.clear()
    return start - 60


def notification_picture(session, before):
    """A picture with the notification, which slides in and may go after seconds."""
    def look():
        image = session.shot()
        return image if changed_area(before, image) else None
    shown = poll("the desktop to show it", look, 5)
    settled = session.still_shot(0.5, 1.5)
    return settled if changed_area(before, settled) else shown


def walk_notification(session, report):
    with report.step(session, "The agent alone after Quillet is gone, and the desktop's own notification") as step:
        listener = Listener(session)
        try:
            session.move(session.size[0] / 2, session.size[1] / 2)
            due = leave_backup(session)
            assert not session.pids_of("quillet"), "Quillet still runs."
            assert session.pids_of("quillet-notification-agent"), "The agent does not run."
            before = session.still_shot(0.5, 3)  # the banner fades
            found = poll("the notification", listener.found, max(due - time.time(), 0) + 8)
            late = time.time() - due
            after = notification_picture(session, before)
            step.picture(after, "notification")
            name, icon, title, body = found[0]
            assert (name, icon) == ("Quillet", "com.ordwinsoftware.Quillet"), found[0]
            step.note(f"Quillet was gone, its agent handed “{title}: {body}” over "
                      f"at most {late:.1f} s late.")
            step.picture(after.crop(changed_area(before, after)), "what changed on the screen")
            step.look("name and icon.")
        finally:
            listener.end()


def walk_switch(session, report):
    with report.step(session, "The desktop's switch for Quillet's notifications") as step:
        session.set_notifications(False)
        listener = Listener(session)
        try:
            session.move(session.size[0] / 2, session.size[1] / 2)
            time.sleep(session.notification_stays)  # an earlier one is on the screen for so long
            due = leave_backup(session)
            before = session.still_shot(0.5, 3)  # the banner fades
            time.sleep(max(due - time.time(), 0) + 4)  # nothing is to come up
            after = session.shot()
            area = changed_area(before, after)
            if area:
                step.picture(after, "in spite of the switch")
                raise AssertionError("A notification came up in spite of the switch.")
            left = "none was handed over" if not listener.found() else "the desktop does not show what it receives"
            step.note(f"Nothing came up: {left}.")
        finally:
            listener.end()
            session.set_notifications(True)


def brightness(session, window, scale=1):
    left, top, width, height = session.place(window)
    area = session.shot().crop(tuple(round(value * scale) for value in (left, top, left + width, top + height)))
    grey = area.convert("L").resize((1, 1), 4)
    return grey.getpixel((0, 0))


def open_settings(session):
    """Starts Quillet and opens the settings."""
    start_quillet(session, lesson(session, 7200)[1])
    open_panel(session)
    session.still_shot()
    session.key(*["Tab"] * 5, "Return")  # the fifth command
    return poll("the settings", lambda: session.windows("Quillet Settings"), 10)[0]


def is_dark_after_restart(session):
    window = open_settings(session)
    session.still_shot()
    return brightness(session, window) < 100


def walk_dark(session, report):
    with report.step(session, "Dark and light while a window is open") as step:
        window = open_settings(session)
        poll("the light window", lambda: brightness(session, window) > 150, 15, 0.5)
        try:
            session.set_dark(True)
            try:
                poll("the window to turn dark", lambda: brightness(session, window) < 100, 15, 0.5)
            except AssertionError:
                if is_dark_after_restart(session):
                    step.picture(session.shot(), "dark at the next start")
                    step.note("Only at the next start.")
                raise
            step.picture(session.still_shot(), "dark")
        finally:
            session.set_dark(False)
        poll("the window to turn light", lambda: brightness(session, window) > 150, 15, 0.5)
        step.picture(session.shot(), "light again")
        step.note("The open window followed: its mean brightness was above 150, then below 100, then above 150.")
        session.quit_quillet()


def walk_scale(session, report):
    with report.step(session, "200 %") as step:
        try:
            session.resize(2)
            session.set_scale(2)
            session.still_shot(2)
            start_with_banner(session)
            image = session.still_shot()
            step.picture(image, "banner")
            large = pixels_of(image, ACCENT["joinPlatform"])
            open_panel(session)
            step.picture(session.still_shot(), "panel")
            step.note(f"The banner's symbol has {large} pixels.")
            if large < LARGE_SYMBOL:
                step.wrong("It is not twice as large.")
            step.look("sharp, and all of it on the screen.")
            session.quit_quillet()
        finally:
            session.set_scale(1)
            session.resize(1)


def walk_monitors(session, report):
    with report.step(session, "Two monitors") as step:
        second = session.add_monitor()
        left, top, width, height = second
        image = session.still_shot(2)
        step.note(f"The second monitor is at {left}, {top}, {width}x{height}.")
        # A shell with monitors of different scales takes the picture at the largest one.
        factor = image.width // (left + width)
        monitors = {name: tuple(factor * value for value in monitor) for name, monitor in
                    (("first", (0, 0, *session.first_monitor())), ("second", second))}
        centres = {"first": [value / 2 for value in session.first_monitor()],
                   "second": [left + width / 2, top + height / 2]}
        for pointed in monitors:
            session.click(*centres[pointed])
            show_on_monitors(session, step, monitors, f"a click on the {pointed}")
        start_opponent(session, session.platforms[0], monitors.values())
        covered = next(name for name, monitor in monitors.items() if is_covered(session.shot(), monitor))
        show_on_monitors(session, step, monitors, f"a full-screen window on the {covered}")
        step.look(session.monitors_note)


def show_on_monitors(session, step, monitors, situation):
    """Shows a banner. `monitors` are their places in pictures."""
    _, banner = start_with_banner(session)
    image = session.still_shot()
    step.picture(image, f"after {situation}")
    for name, (left, top, width, height) in monitors.items():
        if pixels_of(image.crop((left, top, left + width, top + height)), ACCENT[banner.state]) >= SYMBOL:
            step.note(f"After {situation}: the banner is on the {name}.")
            session.quit_quillet()
            return
    raise NotSeen("The picture shows no banner: not every compositor draws on a monitor that was added here.")


def pss(pid):
    text = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text()
    return int(re.search(r"^Pss:\s+(\d+) kB", text, re.MULTILINE)[1]) / 1024


def walk_memory(session, report):
    with report.step(session, "Memory") as step:
        # Without the preloaded library for the clock.
        program = start_quillet(session, lesson(session, 7200)[1], movable=False)
        program.wait_for("^scheduled system backup notifications", 20)
        time.sleep(5)  # as a teacher finds it; its start takes more
        step.note(f"Quillet {pss(program.process.pid):.1f} MiB a few seconds after the start")
        agents = session.pids_of("quillet-notification-agent")
        step.note(f"and its agent {pss(agents[0]):.1f} MiB (proportional set size).")
        session.quit_quillet()
