# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Waiting for what is about to happen."""
import time


def poll(what, condition, seconds=10.0, interval=0.1):
    """Waits until `condition` gives something true, and gives it back; fails after `seconds`."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {seconds:g} s in vain for {what}")
        time.sleep(interval)
