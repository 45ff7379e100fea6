# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The walk's steps for banners: above full-screen windows and a browser, and with the screen locked."""
import pathlib
import subprocess
import time

from browser import Page
from pictures import ACCENT, BANNER_HEIGHT, BANNER_WIDTH
from quillet_desktop import poll
from report import NotSeen
from road_bell import start_with_banner, text_beside_bell

OPPONENT = (96, 64, 128)
OPPONENT_PROGRAM = pathlib.Path(__file__).resolve().parent / "opponent.py"
PLATFORM_NAMES = {"x11": "an X11", "wayland": "a Wayland"}


def near(pixel, colour, tolerance=12):
    return all(abs(value - part) <= tolerance for value, part in zip(pixel, colour))


def accent_pixels(image, banner, scale=1):
    """The number of pixels in the colour of the banner's symbol, in its place."""
    area = image.crop(tuple(round(value * scale) for value in (
        banner.left, banner.top, banner.left + 260, banner.top + BANNER_HEIGHT)))
    return pixels_of(area, ACCENT[banner.state])


def pixels_of(image, colour):
    """The number of pixels of this colour."""
    return sum(count for count, pixel in image.getcolors(1 << 24) if near(pixel, colour, 4))


def shows(image, banner, scale=1):
    """Whether the picture shows the banner: its symbol and its dark card."""
    x = round((banner.left + BANNER_WIDTH / 2) * scale)
    y = round((banner.top + BANNER_HEIGHT - 14) * scale)
    if not (0 <= x < image.width and 0 <= y < image.height):
        return False
    return accent_pixels(image, banner, scale) > 3000 * scale * scale and max(image.getpixel((x, y))) < 70


def wait_until_shown(session, banner, seconds=12.0, scale=1):
    """Waits for the banner and returns the first picture that shows it."""
    def look():
        image = session.shot()
        return image if shows(image, banner, scale) else None
    return poll(f"the banner {banner.state} in a picture", look, seconds)


def is_covered(image, monitor):
    """Whether the full-screen window covers this monitor of the picture: left, top, width, height."""
    left, top, width, height = monitor
    return all(near(image.getpixel((left + x, top + y)), OPPONENT) for x, y in
               ((20, 3), (20, height - 4), (width - 20, height - 4)))


def start_opponent(session, platform, monitors=()):
    """Starts a full-screen window on any of these monitors. Returns the file of the keys that it reads."""
    environment = {**session.environment, "GDK_BACKEND": platform, "NO_AT_BRIDGE": "1"}
    keys = session.room / "keys"
    with keys.open("wb") as output:
        opponent = subprocess.Popen(["/usr/bin/python3", str(OPPONENT_PROGRAM)], env=environment, stdout=output,
                                    stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    session.opponents.append(opponent)

    def covers():
        image = session.shot()
        return any(is_covered(image, monitor) for monitor in monitors or ((0, 0, image.width, image.height),))
    try:
        poll("the full-screen window", covers, 12, 0.3)
    except AssertionError:
        session.click(session.size[0] / 2, session.size[1] / 2)
        poll("the full-screen window", covers, 5, 0.3)
    return keys


def was_typed(read, key, seconds=5.0):
    """Whether this key becomes the last one read."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        if read()[-1:] == [key]:
            return True
        time.sleep(0.1)
    return False


def banner_over(session, step, typed):
    """Shows a banner above a full-screen window. `typed` presses a key and returns whether the window read it."""
    assert typed("a"), "The full-screen window does not get the keys, even before the banner."
    program, banner = start_with_banner(session)
    way = next((line.message for line in program.find("^banners ")), "banners through X11")
    image = wait_until_shown(session, banner)
    step.picture(image, "banner")
    assert typed("b"), "The keys no longer reach the window below the banner."
    left_keys = typed_after_click(session, banner, typed)
    session.click(*session.close_button(banner))
    poll("the banner to go", lambda: not shows(session.shot(), banner), 12)
    assert typed("d"), "After the banner was closed, the keys do not reach the window."
    step.note(f"Above it ({way}); the window gets the keys before, during and after it; its cross closes it.")
    if not left_keys:
        step.note("A click on the card takes the keyboard from the window until the banner disappears.")


def typed_after_click(session, banner, typed):
    session.click(banner.left + 500, banner.top + 250)
    return typed("c")


def walk_full_screen(session, report):
    for platform in ("x11", "wayland"):
        with report.step(session, f"Banner above {PLATFORM_NAMES[platform]} full-screen window") as step:
            session.needs_platform(platform)
            keys = start_opponent(session, platform)

            def typed(key, keys=keys):
                session.key(key)
                return was_typed(lambda: keys.read_text().split(), key)
            banner_over(session, step, typed)
            session.quit_quillet()


def walk_browser(session, report):
    with report.step(session, "Banner above a full-screen browser") as step:
        page = Page()
        wayland = "wayland" in session.platforms
        browser = page.start_browser(session, {"MOZ_ENABLE_WAYLAND": "1" if wayland else "0", "NO_AT_BRIDGE": "1"})
        try:
            poll("the page in full screen", lambda: page.state.startswith("true"), 60)
            session.still_shot()
            session.click(session.size[0] / 2, session.size[1] / 2)

            def typed(key):
                session.key(key)
                return was_typed(lambda: page.keys, key)
            banner_over(session, step, typed)
            step.note(f"firefox-esr as {'a Wayland' if wayland else 'an X11'} program.")
        finally:
            browser.terminate()
            browser.wait(20)
            session.quit_quillet()


def walk_lock(session, report):
    with report.step(session, "Lock and unlock") as step:
        program, banner = start_with_banner(session)
        wait_until_shown(session, banner)
        session.lock()
        try:
            program.wait_for("^session locked$", 8)
        except AssertionError:
            step.note("Quillet does not learn of the lock.")
        image = session.still_shot()
        step.picture(image, "locked")
        assert accent_pixels(image, banner) < 200, "The banner shows on the lock screen."
        locked = bool(program.find("^session locked$"))
        try:
            session.unlock()
        except NotSeen as reason:
            step.look(f"the lock screen. {reason}")
            return
        if locked:
            program.wait_for("^session unlocked$", 12)
        banner = poll("the banner in a picture", lambda: next(  # the next one may have come meanwhile
            (one for one in program.banners() if shows(session.shot(), one)), None), 12)
        step.picture(session.shot(), "unlocked")
        step.note("Hidden while locked, back on unlocking.")
        session.click(*session.close_button(banner))
        shown = text_beside_bell(session)
        if shown is not None:
            step.note(f"After it the host shows {shown!r} beside the bell.")
