#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A full-screen window of one colour that prints "ready" when it gets the keyboard, and then the name of each key.
GDK_BACKEND chooses between X11 and Wayland."""
import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gtk  # noqa: E402  (after the versions)


def say(text):
    print(text, flush=True)


window = Gtk.Window(title="Opponent")
style = Gtk.CssProvider()
style.load_from_data(b"window { background: rgb(96, 64, 128); }")
window.get_style_context().add_provider(style, Gtk.STYLE_PROVIDER_PRIORITY_USER)
window.connect("key-press-event", lambda _, event: say(Gdk.keyval_name(event.keyval)))
window.connect("focus-in-event", lambda *_: say("ready"))
window.connect("destroy", Gtk.main_quit)
window.fullscreen()
window.set_keep_above(True)
window.show_all()
window.present()
sys.exit(Gtk.main())
