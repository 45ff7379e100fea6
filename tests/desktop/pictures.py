# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Pictures of a desktop's screen."""
import os
import pathlib
import subprocess

PICTURES = pathlib.Path(os.environ["QUILLET_TEST_PICTURES"])

GREEN, BLUE, RED = (71, 184, 107), (66, 138, 240), (240, 66, 61)
ACCENT = {"wrapUp": GREEN, "prepare": BLUE, "oneMinuteWarning": BLUE, "joinPlatform": BLUE, "startNow": RED}
BANNER_WIDTH, BANNER_HEIGHT = 1000, 280


class Picture:
    """The screen at one moment."""

    def __init__(self, desktop):
        self.width, self.height = desktop.size
        self.bytes = desktop.run("import", "-silent", "-window", "root", "-depth", "8", "rgb:-", text=False)
        assert len(self.bytes) == self.width * self.height * 3, len(self.bytes)

    def pixel(self, x, y):
        at = (y * self.width + x) * 3
        return tuple(self.bytes[at:at + 3])

    def count(self, colour, left, top, width, height, tolerance=2):
        """How many pixels of the rectangle have that colour."""
        left, top = max(left, 0), max(top, 0)
        right, bottom = min(left + width, self.width), min(top + height, self.height)
        # For each channel 1 where it fits, one byte a pixel; a row at a time, since a loop over pixels takes seconds.
        fits = [bytes(abs(value - part) <= tolerance for value in range(256)) for part in colour]
        found = 0
        for y in range(top, bottom):
            row = self.bytes[(y * self.width + left) * 3:(y * self.width + right) * 3]
            red, green, blue = (int.from_bytes(row[at::3].translate(fits[at]), "big") for at in range(3))
            found += (red & green & blue).bit_count()
        return found

    def shows(self, banner):
        """Is the banner in the picture: its accent colour on the left, the dark card around it?"""
        accent = self.count(ACCENT[banner.state], banner.left, banner.top, 250, BANNER_HEIGHT)
        card = max(self.pixel(banner.left + BANNER_WIDTH // 2, banner.top + BANNER_HEIGHT - 14))
        return accent > 3000 and card < 60

    def save(self, name):
        PICTURES.mkdir(parents=True, exist_ok=True)
        path = PICTURES / f"{name}.png"
        subprocess.run(["convert", "-size", f"{self.width}x{self.height}", "-depth", "8", "rgb:-", "-define",
                        "png:compression-level=1", str(path)], input=self.bytes, check=True)
        return path
