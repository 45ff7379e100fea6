# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""GNOME Shell on Wayland with the indicator extension. The shell's D-Bus console (--unsafe-mode) drives a virtual
pointer and keyboard."""
import ast
import json
import re
import time

from PIL import Image
from quillet_desktop import poll
from report import NotSeen
from session import RUNTIME, Session

EXTENSION = "ubuntu-appindicators@ubuntu.com"
# Codes of the kernel's input layer.
CODES = {"Escape": 1, "Tab": 15, "q": 16, "Return": 28, "ctrl": 29, "a": 30, "d": 32, "c": 46, "b": 48}
BUTTONS = {1: "BUTTON_PRIMARY", 3: "BUTTON_SECONDARY"}
INDICATOR = """const item = Object.entries(Main.panel.statusArea).find(([name]) =>
    name.startsWith('appindicator'))?.[1];"""


class Gnome(Session):
    kind = "Wayland"
    desktop_name = "GNOME"
    variables = {"XDG_SESSION_DESKTOP": "gnome", "DESKTOP_SESSION": "gnome"}
    sides = ("top",)
    platforms = ("x11", "wayland")
    left_opens = ("menu",)
    hears_clicks = False
    double_opens = ("panel",)
    monitors_note = "both monitors, the second at 200 %."

    @staticmethod
    def as_root(monitors):
        """A headless shell needs no display."""

    def prepare(self):
        self.start("display-manager", "python3", "-m", "dbusmock", "--system", "org.gnome.DisplayManager",
                   "/org/gnome/DisplayManager/Manager", "org.gnome.DisplayManager.Manager")
        self.run("gdbus", "wait", "--system", "--timeout", "20", "org.gnome.DisplayManager")
        self.run("gdbus", "call", "--system", "--dest", "org.gnome.DisplayManager", "--object-path",
                 "/org/gnome/DisplayManager/Manager", "--method", "org.freedesktop.DBus.Mock.AddProperty",
                 "org.gnome.DisplayManager.Manager", "Version", "<'48.0'>")
        for schema, key, value in (("org.gnome.shell", "enabled-extensions", f"['{EXTENSION}']"),
                                   ("org.gnome.shell", "welcome-dialog-last-shown-version", "'999'"),
                                   ("org.gnome.desktop.session", "idle-delay", "0"),
                                   ("org.gnome.desktop.interface", "toolkit-accessibility", "true")):
            self.run("gsettings", "set", schema, key, value)

    def start_desktop(self):
        for path in [*RUNTIME.glob("wayland-*"), *RUNTIME.glob(".mutter-Xwaylandauth.*"),
                     *RUNTIME.glob("gnome-shell-disable-extensions")]:  # left by a shell that was killed
            path.unlink()
        width, height = self.size
        # The same number of points at 200 % as at 100 %. With two monitors, only the second is scaled.
        factors = [1, 2] if self.monitors == 2 else [self.scale]
        monitors = [part for factor in factors for part in ("--virtual-monitor", f"{width * factor}x{height * factor}")]
        log = self.room / "logs/shell"
        log.unlink(missing_ok=True)
        self.environment.pop("WAYLAND_DISPLAY", None)
        self.environment.pop("DISPLAY", None)
        self.start("shell", "gnome-shell", "--headless", "--wayland", "--unsafe-mode", *monitors)
        poll("the X server in it", lambda: re.search(r"public X11 display (:\d+)", log.read_text()), 30)
        display = re.search(r"public X11 display (:\d+)", log.read_text())[1]
        authority = poll("its authority file", lambda: list(RUNTIME.glob(".mutter-Xwaylandauth.*")), 10)
        self.environment.update(DISPLAY=display, XAUTHORITY=str(authority[-1]), WAYLAND_DISPLAY="wayland-0")
        self.tell_bus("DISPLAY", "XAUTHORITY", "WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE")
        self.start("settings", "/usr/libexec/gsd-xsettings")  # tells X11 programs the scale

    def after_start(self):
        poll("the console", lambda: self.evaluate("Main.overview !== undefined"), 20, 0.3)
        self.evaluate("const C = imports.gi.Clutter; const seat = C.get_default_backend().get_default_seat();"
                      "global.pointer = seat.create_virtual_device(C.InputDeviceType.POINTER_DEVICE);"
                      "global.keys = seat.create_virtual_device(C.InputDeviceType.KEYBOARD_DEVICE); 1")
        poll("the overview to go", lambda: self.evaluate(
            "!Main.layoutManager._startingUp && (Main.overview.hide(), !Main.overview.visible)"), 20, 0.5)
        # Starts Xwayland.
        self.run("xdotool", "getdisplaygeometry")

    def evaluate(self, script):
        answer = self.call("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell.Eval", script)
        succeeded, text = re.fullmatch(r"\((true|false), (.*)\)\s*", answer, re.DOTALL).groups()
        text = ast.literal_eval(text)
        assert succeeded == "true", f"The shell's console says: {text}"
        return json.loads(text) if text else None

    # --- hands

    def move(self, x, y):
        self.evaluate(f"global.pointer.notify_absolute_motion(global.get_current_time() * 1000, {x}, {y}); 1")
        time.sleep(0.2)  # the shell ignores a click right after a motion

    def click(self, x, y, button=1, times=1):
        self.move(x, y)
        # One script, since the pause between two calls is longer than that of a double click.
        presses = "".join(f"global.pointer.notify_button(global.get_current_time() * 1000, "
                          f"imports.gi.Clutter.{BUTTONS[button]}, {state});" for state in (1, 0) * times)
        self.evaluate(presses + "1")

    def key(self, *names):
        for name in names:
            codes = [CODES[part] for part in name.split("+")]
            order = [(code, 1) for code in codes] + [(code, 0) for code in reversed(codes)]
            self.evaluate("".join(f"global.keys.notify_key(global.get_current_time() * 1000, {code}, {state});"
                                  for code, state in order) + "1")

    # --- looking

    def shot(self):
        path = self.room / "shot.png"
        # Without a graphics card, this takes seconds on a busy machine.
        self.run("gdbus", "call", "--session", "--timeout", "30", "--dest", "org.gnome.Shell.Screenshot",
                 "--object-path", "/org/gnome/Shell/Screenshot", "--method", "org.gnome.Shell.Screenshot.Screenshot",
                 "true", "false", str(path), seconds=40)
        with Image.open(path) as image:
            return image.convert("RGB")

    def told_bell(self):
        return poll("the bell in the bar", lambda: self.evaluate(
            f"(() => {{ {INDICATOR} if (!item) return null; const [x, y] = item.get_transformed_position();"
            "return [x + item.width / 2, y + item.height / 2]; })()"), 10)

    def label(self):
        return self.evaluate(
            f"(() => {{ {INDICATOR} const find = actor => actor instanceof imports.gi.St.Label && actor.visible"
            " ? actor.text : actor.get_children().map(find).find(text => text); return "
            "(item && find(item)) ?? ''; })()")

    def menu_is_open(self, seconds=0):
        deadline = time.monotonic() + seconds
        while True:
            if self.evaluate(f"(() => {{ {INDICATOR} return item?.menu.isOpen ?? false; }})()"):
                return True
            if time.monotonic() >= deadline:
                return False
            time.sleep(0.2)

    # --- specific to GNOME

    def set_dark(self, dark):
        self.run("gsettings", "set", "org.gnome.desktop.interface", "color-scheme",
                 "prefer-dark" if dark else "default")

    def lock(self):
        self.evaluate("Main.screenShield.lock(false); 1")

    def unlock(self):
        self.evaluate("Main.screenShield.deactivate(false); 1")

    def set_notifications(self, allowed):
        self.run("gsettings", "set", "org.gnome.desktop.notifications.application:/org/gnome/desktop/notifications/"
                 "application/com-ordwinsoftware-quillet/", "enable", "true" if allowed else "false")

    def set_scale(self, scale):
        self.relaunch(scale=scale)
        self.apply_scales([scale])

    def add_monitor(self):
        self.relaunch(monitors=2)
        self.apply_scales([1, 2])
        width, height = self.size
        return width, 0, width, height

    def apply_scales(self, scales):
        """Places the monitors side by side, with these scales."""
        state = ("org.gnome.Mutter.DisplayConfig", "/org/gnome/Mutter/DisplayConfig",
                 "org.gnome.Mutter.DisplayConfig.GetCurrentState")
        answer = self.call(*state)
        serial = re.match(r"\(uint32 (\d+)", answer)[1]
        names = sorted(set(re.findall(r"\(\('(Meta-\d+)'", answer)))
        modes = dict(re.findall(r"\(\('(Meta-\d+)'[^)]*\), \[\('([^']+)'", answer))
        left, logical = 0, []
        for number, (name, scale) in enumerate(zip(names, scales)):
            logical.append(f"({left}, 0, {float(scale)}, uint32 0, {'true' if number == 0 else 'false'}, "
                           f"[('{name}', '{modes[name]}', @a{{sv}} {{}})])")
            left += self.size[0]
        self.call("org.gnome.Mutter.DisplayConfig", "/org/gnome/Mutter/DisplayConfig",
                  "org.gnome.Mutter.DisplayConfig.ApplyMonitorsConfig", serial, "1", f"[{', '.join(logical)}]", "{}")
        try:
            poll("the new layout", lambda: self.evaluate("global.stage.width") == self.size[0] * len(scales), 5)
        except AssertionError as problem:
            raise NotSeen(
                "The shell accepts the scale but does not apply it to its headless monitors.") from problem
