# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Pictures of a desktop's screen."""
import ctypes
import os
import pathlib
import struct
import zlib

PICTURES = pathlib.Path(os.environ["QUILLET_TEST_PICTURES"])

GREEN, BLUE, RED = (71, 184, 107), (66, 138, 240), (240, 66, 61)
ACCENT = {"wrapUp": GREEN, "prepare": BLUE, "oneMinuteWarning": BLUE, "joinPlatform": BLUE, "startNow": RED}
BANNER_WIDTH, BANNER_HEIGHT = 1000, 280




class _XImage(ctypes.Structure):
    """The first members of Xlib's XImage."""
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int), ("format", ctypes.c_int),
                ("data", ctypes.c_void_p), ("byte_order", ctypes.c_int), ("bitmap_unit", ctypes.c_int),
                ("bitmap_bit_order", ctypes.c_int), ("bitmap_pad", ctypes.c_int), ("depth", ctypes.c_int),
                ("bytes_per_line", ctypes.c_int), ("bits_per_pixel", ctypes.c_int)]


def _pixels(display_name, width, height):
    """The screen's pixels, four bytes each. Read in this process: starting a program for it takes 0.2 seconds."""
    x = ctypes.CDLL("libX11.so.6")
    x.XOpenDisplay.restype = ctypes.c_void_p
    x.XDefaultRootWindow.argtypes, x.XDefaultRootWindow.restype = [ctypes.c_void_p], ctypes.c_ulong
    x.XGetImage.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_int, ctypes.c_uint, ctypes.c_uint,
                            ctypes.c_ulong, ctypes.c_int]
    x.XGetImage.restype = ctypes.POINTER(_XImage)
    x.XDestroyImage.argtypes = [ctypes.POINTER(_XImage)]
    x.XCloseDisplay.argtypes = [ctypes.c_void_p]
    display = x.XOpenDisplay(display_name.encode())
    assert display, f"no display {display_name}"
    all_planes, z_pixmap = 0xFFFFFFFF, 2
    image = x.XGetImage(display, x.XDefaultRootWindow(display), 0, 0, width, height, all_planes, z_pixmap)
    assert ((image.contents.bits_per_pixel, image.contents.bytes_per_line, image.contents.byte_order)
            == (32, width * 4, 0))
    pixels = ctypes.string_at(image.contents.data, width * height * 4)
    x.XDestroyImage(image)
    x.XCloseDisplay(display)
    return pixels


class Picture:
    """The screen at one moment."""

    def __init__(self, desktop):
        self.width, self.height = desktop.size
        pixels = _pixels(desktop.environment["DISPLAY"], self.width, self.height)
        rgb = bytearray(self.width * self.height * 3)
        rgb[0::3], rgb[1::3], rgb[2::3] = pixels[2::4], pixels[1::4], pixels[0::4]
        self.bytes = bytes(rgb)

    def pixel(self, x, y):
        at = (y * self.width + x) * 3
        return tuple(self.bytes[at:at + 3])

    def count(self, colour, left, top, width, height, tolerance=2):
        """The number of pixels in the rectangle with that colour; `tolerance` is per channel."""
        left, top = max(left, 0), max(top, 0)
        right, bottom = min(left + width, self.width), min(top + height, self.height)
        # Per channel, one byte a pixel: 1 where it matches. Row by row, since a Python loop over pixels takes seconds.
        fits = [bytes(abs(value - part) <= tolerance for value in range(256)) for part in colour]
        found = 0
        for y in range(top, bottom):
            row = self.bytes[(y * self.width + left) * 3:(y * self.width + right) * 3]
            red, green, blue = (int.from_bytes(row[at::3].translate(fits[at]), "big") for at in range(3))
            found += (red & green & blue).bit_count()
        return found

    def shows(self, banner):
        """Whether the banner is in the picture: its accent colour on the left, the dark card around it."""
        accent = self.count(ACCENT[banner.state], banner.left, banner.top, 250, BANNER_HEIGHT)
        card = max(self.pixel(banner.left + BANNER_WIDTH // 2, banner.top + BANNER_HEIGHT - 14))
        return accent > 3000 and card < 60

    def save(self, name):
        PICTURES.mkdir(parents=True, exist_ok=True)
        path = PICTURES / f"{name}.png"
        line = self.width * 3
        lines = b"".join(b"\0" + self.bytes[at:at + line] for at in range(0, len(self.bytes), line))
        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        path.write_bytes(b"\x89PNG\r\n\x1a\n" + _chunk(b"IHDR", header) + _chunk(b"IDAT", zlib.compress(lines, 1))
                         + _chunk(b"IEND", b""))
        return path


def _chunk(kind, content):
    return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))
