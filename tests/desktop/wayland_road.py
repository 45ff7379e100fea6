#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The whole program in Wayland sessions. The compositors run in a window of an X display, through which they are
photographed and receive pointer and keyboard input.

    wayland_road.py Wayland.withOverlaysABannerAppearsAboveAFullScreenWindow
"""
import os
import subprocess
import unittest

from quillet_desktop import SOURCE, Desktop, poll
from short_roads import in_join_phase

OPPONENT_COLOUR = (96, 64, 128)
PANEL_COLOUR = (239, 239, 239)


class WaylandDesktop(Desktop):
    """A virtual desktop whose programs run in a Wayland session. DISPLAY is the X display around the compositor."""

    def __init__(self, compositor, x11=True):
        super().__init__(without=["compositor"])
        width, height = self.size
        reading, writing = os.pipe()
        self.display = self.popen("Xvfb", "-displayfd", str(writing), "-screen", "0", f"{width}x{height}x24",
                                  "-nolisten", "tcp", "-noreset", pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as answer:
            self.environment["DISPLAY"] = f":{answer.readline().strip()}"
        options = [] if x11 else ["--without-x11"]
        self.compositor = self.popen(str(SOURCE / "tests/support/nested-compositor"), *options, compositor,
                                     f"{width}x{height}", stdout=subprocess.PIPE, text=True)
        self.session = {"XDG_SESSION_TYPE": "wayland", "DISPLAY": ""}
        for line in iter(self.compositor.stdout.readline, "\n"):
            self.session.update([line.rstrip("\n").split("=", 1)])

    def __exit__(self, *problem):
        super().__exit__(*problem)
        self.compositor.wait(30)
        self.display.wait(30)
        self.compositor.stdout.close()

    def start_quillet(self, environment=None, **options):
        return super().start_quillet({**self.session, **(environment or {})}, **options)

    def start_opponent(self, platform):
        """Starts the full-screen program and waits until it has the keyboard and is visible."""
        opponent = subprocess.Popen([os.environ["QUILLET_TEST_OPPONENT"]], stdin=subprocess.DEVNULL,
                                    stdout=subprocess.PIPE, text=True,
                                    env={**self.environment, **self.session, "QT_QPA_PLATFORM": platform})
        line = opponent.stdout.readline()
        assert line == "ready\n", line
        poll("the full-screen program", lambda: self.picture().pixel(20, 450) == OPPONENT_COLOUR)
        return opponent


class Wayland(unittest.TestCase):
    def test_list_is_empty_so_that_each_road_is_named(self):
        self.fail("name the test to run")

    # --- steps

    def banner_above(self, compositor, platform, logged):
        """A banner above a full-screen program is visible, leaves it the keyboard and closes on a click; then the panel
        opens."""
        with WaylandDesktop(compositor) as desktop:
            name = f"wayland-{compositor}-{platform}"
            desktop.write_settings("hasCompletedWelcome=true")
            desktop.write_system_calendar(in_join_phase(desktop)[1])
            opponent = desktop.start_opponent(platform)
            program = desktop.start_quillet()
            banner = program.wait_for_banner()
            self.assertTrue(program.find(logged))
            desktop.wait_until_shown(banner, name)
            desktop.run("xdotool", "key", "q")
            self.assertEqual(opponent.stdout.readline(), "q\n")
            # A click on the card neither closes the banner nor moves the keyboard focus.
            desktop.click(banner.left + 400, banner.top + 250)
            desktop.run("xdotool", "key", "r")
            self.assertEqual(opponent.stdout.readline(), "r\n")
            self.assertTrue(desktop.picture().shows(banner))
            desktop.click(*banner.close_button)
            desktop.wait_until_gone(banner)
            desktop.run("xdotool", "key", "s")
            self.assertEqual(opponent.stdout.readline(), "s\n")
            opponent.terminate()
            opponent.wait()
            opponent.stdout.close()
            self.open_panel(desktop, name)
            self.assertEqual(program.quit(), 0)

    def open_panel(self, desktop, name):
        """A click on the bell opens its panel, a large light area."""
        desktop.click_bell()

        def look():
            picture = desktop.picture()
            return picture if picture.count(PANEL_COLOUR, 0, 0, *desktop.size) > 50000 else None
        picture = poll("the panel", look, 30)
        picture.save(f"{name}-panel")
        # The panel is only as large as its content, even where windows are tiled.
        self.assertLess(picture.count(PANEL_COLOUR, 0, 0, *desktop.size), 350 * 700)

    # --- the roads

    def withOverlaysABannerAppearsAboveAFullScreenWindow(self):
        self.banner_above("sway", "wayland", "^banners in the compositor's overlay layer$")

    def withOverlaysABannerAppearsAboveAFullScreenX11Window(self):
        self.banner_above("sway", "xcb", "^banners in the compositor's overlay layer$")

    def withoutOverlaysABannerAppearsAboveAFullScreenWindow(self):
        self.banner_above("mutter", "wayland", "^banners through XWayland$")

    def withoutOverlaysABannerAppearsAboveAFullScreenX11Window(self):
        self.banner_above("mutter", "xcb", "^banners through XWayland$")

    def withOverlaysNoXServerIsNeeded(self):
        with WaylandDesktop("sway", x11=False) as desktop:
            desktop.write_settings("hasCompletedWelcome=true")
            desktop.write_system_calendar(in_join_phase(desktop)[1])
            opponent = desktop.start_opponent("wayland")
            program = desktop.start_quillet()
            banner = program.wait_for_banner()
            desktop.wait_until_shown(banner, "wayland-sway-without-x11")
            desktop.click(*banner.close_button)
            desktop.wait_until_gone(banner)
            opponent.terminate()
            opponent.wait()
            opponent.stdout.close()
            self.open_panel(desktop, "wayland-sway-without-x11")
            self.assertEqual(program.quit(), 0)

    def withADeadXServerItStartsThroughTheCompositor(self):
        with WaylandDesktop("sway", x11=False) as desktop:
            desktop.write_settings("hasCompletedWelcome=true")
            desktop.write_system_calendar(in_join_phase(desktop)[1])
            program = desktop.start_quillet({"DISPLAY": ":7777"})
            banner = program.wait_for_banner()
            desktop.wait_until_shown(banner, "wayland-sway-with-a-dead-x-server")
            desktop.click(*banner.close_button)
            desktop.wait_until_gone(banner)
            self.open_panel(desktop, "wayland-sway-with-a-dead-x-server")
            self.assertEqual(program.quit(), 0)

    def withNeitherOverlaysNorAnXServerTheBannerIsAnOrdinaryWindow(self):
        with WaylandDesktop("mutter", x11=False) as desktop:
            desktop.write_settings("hasCompletedWelcome=true")
            desktop.write_system_calendar(in_join_phase(desktop)[1])
            program = desktop.start_quillet()
            program.wait_for_banner()
            self.assertTrue(program.find("^banners as ordinary windows, which a full-screen one covers"))
            poll("the banner", lambda: desktop.picture().count((66, 138, 240), 0, 0, *desktop.size) > 3000)
            desktop.picture().save("wayland-mutter-without-x11")
            self.assertEqual(program.quit(), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
