# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Finds the bell in a picture of the bar, by comparing it with the image that Quillet exports, at several sizes, on a
light and on a dark background."""
import re

import numpy
from PIL import Image

SIZES = range(14, 61, 2)
LIKE = 0.8  # the lowest correlation that counts


def images_of(answer):
    """The largest image in the item's IconPixmap, as gdbus prints it, on a light and on a dark background."""
    width, height, content = re.findall(r"\((\d+), (\d+), \[([^\]]*)\]\)", answer)[-1]
    argb = bytes(int(value, 16) for value in re.findall(r"0x[0-9a-f]{2}", content))
    image = Image.frombytes("RGBA", (int(width), int(height)), b"".join(
        bytes((argb[at + 1], argb[at + 2], argb[at + 3], argb[at])) for at in range(0, len(argb), 4)))
    return [Image.alpha_composite(Image.new("RGBA", image.size, ground), image).convert("L")
            for ground in ("#f0f0f0", "#202020")]


def _likeness(strip, shape):
    """The correlation of the shape with each place of the strip; 0 where the strip is flat."""
    windows = numpy.lib.stride_tricks.sliding_window_view(strip, shape.shape)
    ink = shape - shape.mean()
    spread = windows.std(axis=(2, 3))
    even = spread < 12
    found = numpy.einsum("ijkl,kl->ij", windows, ink) / ink.size
    return numpy.where(even, 0, found / (numpy.where(even, 1, spread) * ink.std()))


def find(strip, images):
    """The best place in the strip: its correlation, and x and y of its centre."""
    grey = numpy.asarray(strip.convert("L"), dtype=numpy.float32)
    best = (0.0, 0, 0)
    for size in (size for size in SIZES if size <= grey.shape[0]):
        for image in images:
            small = numpy.asarray(image.resize((size, size), Image.LANCZOS), dtype=numpy.float32)
            likeness = _likeness(grey, small)
            y, x = numpy.unravel_index(likeness.argmax(), likeness.shape)
            best = max(best, (float(likeness[y, x]), int(x) + size / 2, int(y) + size / 2))
    return best
