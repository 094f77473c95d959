"""The desktops of Debian 12: how each is started, and how its user changes it."""
import os
import re
import shutil
import time
from pathlib import Path

from session import Missing, SCREEN, wait

COMMON_PACKAGES = ("at-spi2-core", "dbus-daemon", "dconf-gsettings-backend", "gir1.2-atspi-2.0", "imagemagick",
                   "libglib2.0-bin", "python3-gi", "xdg-desktop-portal", "xdg-utils", "xdotool", "xvfb")


class Desktop:
    """What all have in common, with what most of them have."""

    name = ""
    folder = ""  # of its pictures
    packages = ()
    environment = {}
    portals = ("gtk",)
    notifier = ""  # whose buttons an alert has, as screen readers know it
    status_items = True
    has_shortcut = True
    has_kioclient = False
    icon_place = (1115, 12)  # about where
    search = None

    def __init__(self, session):
        self.session = session
        # Other desktops may be installed beside this one, and their portals with them.
        portals = session.folder / "portals"
        portals.mkdir(exist_ok=True)
        for portal in self.portals:
            shutil.copy(f"/usr/share/xdg-desktop-portal/portals/{portal}.portal", portals)
        session.set_environment(**self.environment, XDG_DESKTOP_PORTAL_DIR=str(portals))

    def start(self):
        raise NotImplementedError

    def enter_wayland(self):
        """From here on programs know the compositor only, which shows itself on the display."""
        runtime = Path(os.environ["XDG_RUNTIME_DIR"])
        socket = wait("a compositor", lambda: next((each for each in runtime.glob("wayland-?")), None))
        del os.environ["DISPLAY"]
        self.session.set_environment(WAYLAND_DISPLAY=socket.name)

    def wait_until_ready(self):
        if self.status_items:
            wait("a status area", lambda: self.session.has_name("org.kde.StatusNotifierWatcher") and
                 self.session.property("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                                       "org.kde.StatusNotifierWatcher", "IsStatusNotifierHostRegistered"))
        wait("a server of alerts", lambda: self.session.has_name("org.freedesktop.Notifications"))

    def show_window(self):
        self.session.run("zenlot")

    def press_button(self, title, heading):
        wait(f"the alert {heading}", lambda: self.session.find(lambda text: heading in text, of=self.notifier))
        button = wait(f"the button {title}", lambda: self.session.find(title, of=self.notifier))
        self.session.picture("alert")
        self.press(button)

    def press(self, button):
        self.session.do(button)

    def measure(self, field):
        """How high a text is."""
        return self.session.size(field)[1]

    def make_dark(self):
        self.gsettings("color-scheme", "prefer-dark")

    def make_large(self):
        self.gsettings("text-scaling-factor", "1.5")

    def gsettings(self, key, value):
        self.session.run("gsettings", "set", "org.gnome.desktop.interface", key, value)


class Xfce(Desktop):
    name = "XFCE"
    folder = "xfce"
    packages = ("gnome-themes-extra", "xdg-desktop-portal-gtk", "xfce4-notifyd", "xfce4-panel", "xfce4-session",
                "xfce4-settings", "xfdesktop4", "xfwm4")
    environment = {"XDG_CURRENT_DESKTOP": "XFCE", "XDG_SESSION_TYPE": "x11"}
    notifier = "xfce4-notifyd"

    def start(self):
        self.set("/backdrop/screen0/monitorscreen/workspace0/last-image", str(self.session.wallpaper()),
                 "xfce4-desktop")
        notifier = next(Path("/usr/lib").glob("*/xfce4/notifyd/xfce4-notifyd"))
        for program in (str(notifier), "xfsettingsd", "xfwm4", "xfdesktop", "xfce4-panel"):
            self.session.start(program)

    def make_dark(self):
        self.set("/Net/ThemeName", "Adwaita-dark")

    def make_large(self):
        self.set("/Gtk/FontName", "Sans 16")

    def set(self, setting, value, channel="xsettings"):
        self.session.run("xfconf-query", "-c", channel, "-p", setting, "-n", "-t", "string", "-s", value)


class Sway(Desktop):
    name = "sway"
    folder = "sway"
    packages = ("fonts-dejavu-core", "mako-notifier", "qt6-wayland", "sway", "waybar", "xdg-desktop-portal-gtk",
                "xdg-desktop-portal-wlr")
    environment = {"XDG_CURRENT_DESKTOP": "sway", "XDG_SESSION_TYPE": "wayland"}
    portals = ("gtk", "wlr")
    has_shortcut = False

    def start(self):
        configuration = self.session.folder / "sway.conf"
        panel = self.session.folder / "waybar.json"
        panel.write_text('{"modules-left": ["sway/workspaces"], "modules-right": ["tray", "clock"]}')
        configuration.write_text("default_border none\nxwayland disable\noutput * bg #3a5a72 solid_color\n"
                                 f"output * mode --custom {SCREEN[0]}x{SCREEN[1]}\n"
                                 f"exec mako --default-timeout 0\nexec waybar --config {panel}\n")
        self.session.start("sway", "--config", str(configuration), WLR_BACKENDS="x11", WLR_RENDERER="pixman")
        self.enter_wayland()

    def press_button(self, title, heading):
        """Its alerts have no buttons; they are chosen from a list."""
        keys = {"Kill Process": "KILL_PROCESS", "Ignore Port": "IGNORE_PORT", "Ignore Process": "IGNORE_PROCESS"}
        wait(f"the alert {heading}", lambda: heading in self.session.run("makoctl", "list"))
        self.session.picture("alert")
        self.session.run("makoctl", "invoke", keys[title])


class Plasma(Desktop):
    name = "Plasma"
    folder = "plasma"
    packages = ("breeze", "kde-cli-tools", "kwin-x11", "plasma-desktop", "plasma-workspace", "xdg-desktop-portal-kde")
    environment = {"KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5", "XDG_CURRENT_DESKTOP": "KDE",
                   "XDG_SESSION_TYPE": "x11", "KWIN_COMPOSE": "N"}
    portals = ("kde",)
    notifier = "plasmashell"
    has_kioclient = True
    icon_place = (1060, 778)

    def start(self):
        self.session.run("kbuildsycoca5")
        for program in ("kded5", "kwin_x11", "plasmashell"):
            self.session.start(program)
        self.wait_until_ready()
        self.session.run("plasma-apply-wallpaperimage", str(self.session.wallpaper()))

    def search(self, port):
        self.session.call("org.kde.krunner", "/App", "org.kde.krunner.App", "query", "(s)", str(port))
        answer = self.session.find(lambda text: str(port) in text and " " in text, of="krunner")
        return answer and answer.get_name()

    def end_search(self):
        self.session.press("Escape")

    def make_dark(self):
        self.session.run("plasma-apply-colorscheme", "BreezeDark")

    def make_large(self):
        """As its settings do, which tell everybody of it afterwards."""
        self.session.run("kwriteconfig5", "--file", "kdeglobals", "--group", "General", "--key", "font",
                         "Noto Sans,16,-1,5,50,0,0,0,0,0")
        self.session.run("dbus-send", "--type=signal", "/KDEPlatformTheme", "org.kde.KDEPlatformTheme.refreshFonts")
        self.session.run("dbus-send", "--type=signal", "/KGlobalSettings", "org.kde.KGlobalSettings.notifyChange",
                         "int32:1", "int32:0")


class Gnome(Desktop):
    packages = ("gjs", "gnome-settings-daemon", "gnome-shell", "gnome-shell-extension-appindicator",
                "xdg-desktop-portal-gnome", "xdg-desktop-portal-gtk")
    portals = ("gnome", "gtk")
    notifier = "gnome-shell"
    extensions = "@as []"
    status_items = False

    def start(self):
        for key, value in {"enabled-extensions": self.extensions, "welcome-dialog-last-shown-version": "99"}.items():
            self.session.run("gsettings", "set", "org.gnome.shell", key, value)
        self.start_shell()
        wait("the shell", lambda: self.session.has_name("org.gnome.Shell") and
             self.session.find("Activities", of="gnome-shell"), 60)
        self.show_overview(False)  # it begins with it

    def search(self, port):
        self.show_overview(True)
        self.session.input("type", str(port))
        answer = wait("an answer", lambda: self.session.find(lambda text: str(port) in text and " " in text,
                                                             of="gnome-shell"))
        return answer.get_name()

    def end_search(self):
        self.show_overview(False)

    def show_overview(self, is_shown):
        place = ("org.gnome.Shell", "/org/gnome/Shell")
        self.session.call(*place, "org.freedesktop.DBus.Properties", "Set", "(ssv)", "org.gnome.Shell",
                          "OverviewActive", self.session.GLib.Variant("b", is_shown))
        wait("the overview", lambda: self.session.property(*place, "org.gnome.Shell", "OverviewActive") == is_shown)
        time.sleep(1)  # it moves

    def press_button(self, title, heading):
        # Banners show their buttons to whoever points at them.
        wait(f"the alert {heading}", lambda: self.session.find(lambda text: heading in text, of=self.notifier))
        self.session.input("mousemove", 640, 300, "sleep", "0.3", "mousemove", 640, 70)
        super().press_button(title, heading)
        self.session.input("mousemove", 640, 400)

    def press(self, button):
        self.session.click(*self.session.middle(button))  # the shell has no other way


class GnomeX11(Gnome):
    name = "GNOME, X11"
    folder = "gnome-x11"
    environment = {"XDG_CURRENT_DESKTOP": "GNOME", "XDG_SESSION_TYPE": "x11", "GNOME_SHELL_SESSION_MODE": "user"}

    def start_shell(self):
        self.session.start("gnome-shell", "--x11")
        self.session.start("gsd-xsettings")

    def measure(self, field):
        """What is told of the field is in units that the display enlarges; the window is in dots."""
        told = self.session.run("xdotool", "search", "--onlyvisible", "--name", "^Zenlot$", "getwindowgeometry",
                                "--shell")
        return int(re.search("WIDTH=([0-9]+)", told)[1])


class GnomeX11WithIcons(GnomeX11):
    name = "GNOME, X11, indicators"
    folder = "gnome-x11-indicators"
    extensions = "['ubuntu-appindicators@ubuntu.com']"
    status_items = True


class GnomeWayland(Gnome):
    name = "GNOME, Wayland"
    folder = "gnome-wayland"
    packages = (*Gnome.packages, "qt6-wayland")
    environment = {"XDG_CURRENT_DESKTOP": "GNOME", "XDG_SESSION_TYPE": "wayland", "GNOME_SHELL_SESSION_MODE": "user"}
    has_shortcut = False

    def start_shell(self):
        self.session.start("gnome-shell", "--nested", "--wayland", "--no-x11",
                           MUTTER_DEBUG_DUMMY_MODE_SPECS=f"{SCREEN[0]}x{SCREEN[1]}")
        self.enter_wayland()


class GnomeWaylandWithIcons(GnomeWayland):
    name = "GNOME, Wayland, indicators"
    folder = "gnome-wayland-indicators"
    extensions = "['ubuntu-appindicators@ubuntu.com']"
    status_items = True


ALL = [Plasma, GnomeX11, GnomeX11WithIcons, GnomeWayland, GnomeWaylandWithIcons, Xfce, Sway]


def named(name):
    for each in ALL:
        if each.name == name:
            return each
    raise Missing(f"no desktop {name} among " + ", ".join(each.name for each in ALL))
