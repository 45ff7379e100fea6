# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The walk's steps for the bell and its panel."""
import math
import time

from PIL import ImageChops

from bell_finder import LIKE, find, images_of
from program import PANEL
from quillet_desktop import calendar, event, poll
from report import NotSeen

RUN_UP = 3  # seconds of real time before each changeover, enough for a reload
PHASES = (  # the banner's state, its begin in seconds relative to the lesson's start or end, and the bell's title
    ("prepare", "start", -240, "Prepare"),
    ("oneMinuteWarning", "start", -60, "1 min"),
    ("joinPlatform", "start", -30, "Join now"),
    ("startNow", "start", -20, "Start now"),
    ("", "start", 6, "Anna"),
    ("wrapUp", "end", -60, "Wrap up"),
)


def start_quillet(session, *events, movable=True, settings=("hasCompletedWelcome=true",), loaded=True):
    """Starts Quillet without earlier files, with these lessons, and waits until it has read them."""
    session.forget()
    session.reset_clock(movable)
    session.write_settings(*settings)
    session.write_folder_calendar("lessons.ics", calendar(*events))
    program = session.start_quillet()
    if loaded:
        program.wait_for("^calendar reload success", 30)
    return program


def lesson(session, begins_in, minutes=25, title="Zoom - Anna"):
    start = math.ceil(session.now()) + begins_in
    return start, event(title, start, start + minutes * 60)


def start_with_banner(session):
    """Starts Quillet with a lesson whose join banner is due at once and stays for half a minute. Returns both."""
    program = start_quillet(session, lesson(session, 58, title="Microsoft Teams - Anna")[1], movable=False)
    return program, program.wait_for_banner(1, 20)


def find_bell(session):
    """The centre of the bell, as the desktop reports it or as found in a picture of the bar; and the correlation."""
    if told := session.told_bell():
        return told, 1.0
    images = images_of(session.property_of_bell("IconPixmap"))

    def look():
        image = session.shot()
        likeness, x, y = find(session.bar_of(image), images)
        return ((x, y + session.bar_top(image)), likeness) if likeness >= LIKE else None
    return poll("the bell in the bar", look, 20, 0.5)


def seen_bell(session, report):
    """Quillet's bell appears in the bar."""
    with report.step(session, "The bell") as step:
        program = start_quillet(session, lesson(session, 7200)[1])
        program.wait_for("^status item registered", 20)
        session.bell_at, likeness = find_bell(session)
        step.note(f"It is at {session.bell_at[0]:.0f}, {session.bell_at[1]:.0f}, likeness {likeness:.2f}.")
        step.picture(session.shot(), "with the bell")
        session.move(*session.bell_at)
        step.picture(session.bar_of(session.still_shot(1.5), 160), "pointed at")


def text_beside_bell(session):
    """The text that the host shows beside the bell, which is the bell's title; None if unknown."""
    shown = session.label()
    if shown is not None:
        poll("the host to show the bell's title", lambda: session.label() == session.property_of_bell("Title"), 3)
        shown = session.label()
    return shown


def walk_phases(session, report):
    with report.step(session, "Bell and text in each phase") as step:
        start, its_event = lesson(session, 600)
        program = start_quillet(session, its_event)
        end, banners, labels = start + 1500, 0, []
        for state, anchor, offset, title in PHASES:
            begin = (start if anchor == "start" else end) + offset
            session.skip_to(begin - RUN_UP)
            if state:
                banners += 1
                banner = program.wait_for_banner(banners, max(begin - session.now(), 0) + 8)
                assert banner.state == state, f"The banner {banner.state} appeared instead of {state}."
            poll(f"the title {title}", lambda title=title: session.property_of_bell("Title") == title, 12)
            shown = text_beside_bell(session)
            labels.append(f"{title}: {shown!r}" if shown is not None else title)
            step.picture(session.bar_of(session.shot()), title)
        step.note("Reported to the host, "
                  + ("and shown by it: " if session.label() is not None else "which shows none: ")
                  + ", ".join(labels) + ".")
    session.quit_quillet()
    session.reset_clock()  # the next steps use real time


def windows_of_panel(session):
    return session.windows(PANEL)


def drew_menu(session, before):
    """Whether something as large as the menu was drawn near the bell since this picture. A tool tip is lower."""
    changed = ImageChops.difference(before, session.shot()).convert("L").point(lambda value: 255 if value > 12 else 0)
    middle = round(session.bell_at[0])
    box = changed.crop((middle - 300, 0, middle + 300, changed.height)).getbbox()
    return box is not None and box[2] - box[0] >= 100 and box[3] - box[1] >= 120


def reloads(session):
    """How often Quillet has read the calendars, which it does when its menu opens."""
    return sum(line.message.startswith("calendar reload success") for line in session.programs[-1].lines())


def click_and_see(session, step, button, times):
    """Clicks the bell and returns what opens. A menu counts if the accessibility tree contains it; of a bar that is not
    in the tree, if it is drawn while Quillet hears that its menu opens."""
    before, read = session.shot(), reloads(session)
    session.click(*session.bell_at, button=button, times=times)
    deadline = time.monotonic() + 12  # searching all programs for a menu takes seconds
    while time.monotonic() < deadline:
        if windows_of_panel(session):
            time.sleep(0.8)  # the second of two clicks may close it
            return "panel" if windows_of_panel(session) else "panel, and closed it"
        if session.menu_is_open() or (reloads(session) > read and drew_menu(session, before)):
            return "menu"
        time.sleep(0.2)
    return "nothing"


def closes(session, seconds=3.0):
    """Whether the panel closes within this time."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline and windows_of_panel(session):
        time.sleep(0.1)
    return not windows_of_panel(session)


def close_all(session):
    session.key("Escape")
    if not closes(session):
        session.click(*session.bell_at)
        closes(session)


def walk_clicks(session, report):
    start_quillet(session, lesson(session, 7200)[1])
    session.bell_at, _ = find_bell(session)
    time.sleep(2)  # no signal reports that the host has fetched the menu
    for name, button, times, right in (("Left click", 1, 1, session.left_opens), ("Right click", 3, 1, ("menu",)),
                                       ("Double click", 1, 2, session.double_opens)):
        with report.step(session, name) as step:
            opened = click_and_see(session, step, button, times)
            step.note(f"It opens: {opened}.")
            step.picture(session.shot(), opened)
            close_all(session)
            if opened not in right:
                step.wrong(f"Expected: {' or '.join(right)}.")
    with report.step(session, "A click elsewhere closes the panel") as step:
        open_panel(session)
        session.click(session.size[0] / 2, session.size[1] * 0.6)
        if closes(session):
            step.note("A click on the wallpaper closes it.")
        elif session.hears_clicks or not closes(session, 75):
            step.picture(session.shot(), "still open")
            close_all(session)
            raise AssertionError("A click on the wallpaper leaves it open.")
        else:
            step.note("This desktop tells it of no click on the wallpaper; it closes within a minute by itself.")


def open_panel(session):
    """Opens the panel by a second start."""
    session.start_quillet_again()
    return poll("the panel", lambda: windows_of_panel(session), 10)[0]


def walk_keyboard(session, report):
    with report.step(session, "Keyboard only") as step:
        program = session.programs[-1]
        window = open_panel(session)
        session.still_shot(0.5)
        session.key("Tab")
        step.picture(session.still_shot(0.5), "after Tab")
        session.key("Escape")
        poll("the panel to close by Escape", lambda: window not in windows_of_panel(session), 5)
        step.note("A second start opens the panel with the keyboard, Escape closes it.")
        open_panel(session)
        session.still_shot(0.5)
        session.key("ctrl+q")
        poll("the end by Ctrl+Q", lambda: program.process.poll() is not None, 8)
        step.note("Ctrl+Q ends the program.")


def walk_sides(session, report):
    """The panel's place with the bar at the top and at the bottom."""
    for side in ("top", "bottom"):
        with report.step(session, f"The panel with the bar at the {side}") as step:
            if side not in session.sides:
                raise NotSeen(f"This desktop's bar is never at the {side}.")
            session.quit_quillet()
            if side != session.side:
                session.bar_to(side)
            start_quillet(session, lesson(session, 7200)[1])
            session.bell_at, _ = find_bell(session)
            session.click(*session.bell_at)
            if session.menu_is_open(2) and not windows_of_panel(session):
                session.key("Escape")
                open_panel(session)
                step.note("Opened by a second start, since a click opens the menu.")
            window = poll("the panel", lambda: windows_of_panel(session), 8)[0]
            image = session.still_shot()
            left, top, width, height = session.place(window)
            step.picture(image, f"bar at the {side}")
            step.note(f"The bell is at {session.bell_at[0]:.0f}, {session.bell_at[1]:.0f}; the panel takes "
                      f"{left}, {top} to {left + width}, {top + height} of {image.width}x{image.height}.")
            assert left >= 0 and top >= 0 and left + width <= image.width and top + height <= image.height, \
                "It reaches beyond the screen."
            near = top - session.bell_at[1] if side == "top" else session.bell_at[1] - (top + height)
            assert 0 <= near <= session.nearness, f"It is {near:.0f} points from the bell's middle."
            close_all(session)
    if session.side != type(session).side:
        session.bar_to(type(session).side)
