# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""The desktops and the Debian packages that each needs. Recommended packages are not installed."""
import dataclasses

# In every root: the tools of the walk.
COMMON = """
    at-spi2-core dbus dbus-x11 evolution-data-server firefox-esr fonts-dejavu-core gir1.2-atspi-2.0 gir1.2-gtk-3.0
    imagemagick libcanberra-pulse libfaketime libglib2.0-bin procps python3 python3-dbusmock python3-gi python3-numpy
    python3-pil python3-pyatspi qt6-wayland sound-theme-freedesktop tzdata x11-utils x11-xserver-utils xdg-utils xdotool
    xserver-xorg-core xserver-xorg-video-dummy xvfb
""".split()


@dataclasses.dataclass(frozen=True)
class Root:
    """A Debian root: its desktop, release and packages, and the package whose version the page names."""
    desktop: str
    suite: str
    packages: tuple
    version_of: str

    @property
    def name(self):
        return f"{self.desktop}-{self.suite}"


def _root(desktop, suite, version_of, packages):
    return Root(desktop, suite, tuple(packages.split()), version_of)


_XFCE = """xfce4-panel xfce4-session xfce4-settings xfce4-notifyd xfdesktop4 xfwm4 adwaita-icon-theme
    gnome-themes-extra qt6-gtk-platformtheme xdg-desktop-portal xdg-desktop-portal-gtk"""
_GNOME = """gjs gnome-shell gnome-shell-extension-appindicator xwayland qt6-gtk-platformtheme adwaita-icon-theme
    xdg-desktop-portal-gnome xdg-desktop-portal-gtk"""
_PLASMA = """kwin-wayland plasma-workspace plasma-desktop plasma-integration breeze breeze-icon-theme kde-cli-tools
    kscreen xdg-desktop-portal-kde xwayland"""

ROOTS = (
    _root("xfce", "trixie", "xfce4-panel", _XFCE + " xfce4-screensaver"),
    _root("gnome", "trixie", "gnome-shell", _GNOME),
    _root("plasma", "trixie", "plasma-workspace", _PLASMA),
    _root("mate", "trixie", "mate-panel",
          "marco mate-panel mate-session-manager mate-settings-daemon mate-notification-daemon mate-indicator-applet "
          "mate-screensaver mate-themes caja adwaita-icon-theme qt6-gtk-platformtheme xdg-desktop-portal "
          "xdg-desktop-portal-gtk"),
    _root("cinnamon", "trixie", "cinnamon",
          "cinnamon cinnamon-screensaver cinnamon-session cinnamon-settings-daemon xapp-sn-watcher nemo "
          "adwaita-icon-theme gnome-themes-extra qt6-gtk-platformtheme xdg-desktop-portal xdg-desktop-portal-gtk"),
    _root("lxqt", "trixie", "lxqt-panel",
          "openbox lxqt-panel lxqt-notificationd lxqt-session lxqt-config lxqt-qtplugin lxqt-themes pcmanfm-qt "
          "breeze-icon-theme xscreensaver xdg-desktop-portal-lxqt"),
    _root("sway", "trixie", "sway",
          "sway waybar swaylock mako-notifier grim wtype xwayland adwaita-icon-theme fonts-font-awesome "
          "xdg-desktop-portal xdg-desktop-portal-gtk qt6-gtk-platformtheme"),
    _root("xfce", "bookworm", "xfce4-panel", _XFCE + " xscreensaver"),
    _root("gnome", "bookworm", "gnome-shell", _GNOME),
    _root("plasma", "bookworm", "plasma-workspace", _PLASMA + " plasma-workspace-wayland"),
)
