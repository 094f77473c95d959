"""One session of an ordinary user: a display, a bus, a home, and whatever was started in it. All of it
is gone when the session closes."""
import ctypes
import json
import os
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path

PATIENCE = 40  # seconds that a busy machine may need
SCREEN = (1280, 800)
PR_SET_CHILD_SUBREAPER = 36
BUS = """<busconfig><type>session</type><listen>unix:path={socket}</listen><auth>EXTERNAL</auth>{services}
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/>
<allow own="*"/></policy></busconfig>"""


class Missing(Exception):
    """What somebody looked for and didn't find."""


def wait(what, find, seconds=PATIENCE):
    end = time.monotonic() + seconds
    while True:
        found = find()
        if found:
            return found
        if time.monotonic() > end:
            raise Missing(what)
        time.sleep(0.2)


class Session:
    def __init__(self, folder, prefix):
        self.folder = folder
        self.log = open(folder / "log", "ab")
        # The names of sockets may not be long.
        self.runtime = Path(tempfile.mkdtemp(prefix="tour-"))
        # Whoever leaves its parent comes to us, so that nobody stays behind.
        ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
        kept = {name: os.environ[name] for name in ("PATH", "TZ") if name in os.environ}
        os.environ.clear()
        os.environ.update(kept, LANG="C.UTF-8", HOME=str(folder / "home"), USER="tourist",
                          SHELL="/bin/sh", XDG_RUNTIME_DIR=str(self.runtime),
                          XDG_DATA_DIRS=f"{prefix}/share:/usr/share", XDG_SESSION_CLASS="user",
                          QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", LIBGL_ALWAYS_SOFTWARE="1",
                          PATH=f"{prefix}/bin:/usr/bin:/bin:/usr/libexec")
        Path(os.environ["HOME"]).mkdir(mode=0o700)

    def open(self, prefix):
        os.environ["DISPLAY"] = ":" + self.first_line(
            "Xvfb", "-noreset", "-displayfd", "1", "-screen", "0", f"{SCREEN[0]}x{SCREEN[1]}x24")
        self.display = os.environ["DISPLAY"]
        # Desktops ask it for a seat and for power, and do without.
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = self.start_bus("system", "")
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self.start_bus("bus", self.services(prefix))
        self.connect()
        self.write_settings(hasCompletedOnboarding=True, conflictMonitoringEnabled=True,
                            globalShortcutEnabled=True)

    def set_environment(self, **variables):
        """Of all that starts from here on, also at the wish of the bus."""
        os.environ.update(variables)
        self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                  "UpdateActivationEnvironment", "(a{ss})", variables)

    def services(self, prefix):
        """What the bus may start: all that is installed but alerts, which are the desktop's own."""
        folder = self.folder / "services"
        folder.mkdir()
        for file in Path("/usr/share/dbus-1/services").iterdir():
            if "Name=org.freedesktop.Notifications" not in file.read_text():
                (folder / file.name).symlink_to(file)
        return "".join(f"<servicedir>{each}</servicedir>" for each in (f"{prefix}/share/dbus-1/services", folder))

    def start_bus(self, name, services):
        socket = self.runtime / name
        configuration = self.folder / f"{name}.conf"
        configuration.write_text(BUS.format(socket=socket, services=services))
        self.first_line("dbus-daemon", "--nofork", "--nopidfile", "--print-address=1",
                        f"--config-file={configuration}")
        return f"unix:path={socket}"

    # ---- Programs ----

    def start(self, *command, output=None, **environment):
        return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output or self.log, stderr=self.log,
                                env={**os.environ, **environment}, cwd=os.environ["HOME"])

    def first_line(self, *command):
        return self.start(*command, output=subprocess.PIPE).stdout.readline().decode().strip()

    def run(self, *command, **environment):
        done = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=self.log,
                              env={**os.environ, **environment}, cwd=os.environ["HOME"], timeout=PATIENCE)
        return done.stdout.decode(errors="replace").strip()

    def processes(self, name=None):
        """Those that descend from us, except those that have ended; with a name, of that program."""
        found = []
        for entry in Path("/proc").iterdir():
            if not entry.name.isdigit():
                continue
            try:
                stat = (entry / "stat").read_text()
            except OSError:
                continue
            command = stat[stat.index("(") + 1:stat.rindex(")")]
            state, parent = stat[stat.rindex(")") + 2:].split()[:2]
            found.append((int(entry.name), int(parent), command, state))
        mine = {os.getpid()}
        while True:
            more = {pid for pid, parent, _, _ in found if parent in mine} - mine
            if not more:
                break
            mine |= more
        return [pid for pid, _, command, state in found
                if pid in mine and pid != os.getpid() and state != "Z" and name in (None, command)]

    def close(self):
        for kind in (signal.SIGTERM, signal.SIGKILL):
            end = time.monotonic() + 5
            while (left := self.processes()) and time.monotonic() < end:
                for pid in left:
                    try:
                        os.kill(pid, kind)
                    except ProcessLookupError:
                        pass
                time.sleep(0.3)
        shutil.rmtree(self.runtime, ignore_errors=True)

    # ---- What a user does and sees ----

    def input(self, *words):
        self.run("xdotool", *map(str, words), DISPLAY=self.display)

    def press(self, key):
        self.input("key", "--clearmodifiers", key)

    def click(self, x, y, button=1):
        self.input("mousemove", x, y, "sleep", "0.2", "click", button)

    def picture(self, name):
        file = self.folder / f"{name}.png"
        self.run("import", "-silent", "-window", "root", str(file), DISPLAY=self.display)
        return file

    def wallpaper(self):
        """Of one colour, for pictures that are small and show nobody's work but ours."""
        file = self.folder / "wallpaper.png"
        self.run("convert", "-size", f"{SCREEN[0]}x{SCREEN[1]}", "xc:#3a5a72", str(file))
        return file

    def brightness(self):
        """Of the middle of the screen, from 0 to 1."""
        area = f"{SCREEN[0] // 3}x{SCREEN[1] // 3}+{SCREEN[0] // 3}+{SCREEN[1] // 3}"
        return float(self.run("convert", str(self.picture("glance")), "-crop", area, "-format", "%[fx:mean]", "info:"))

    # ---- Zenlot ----

    def settings(self):
        try:
            return json.loads(self.settings_file().read_text())
        except (OSError, ValueError):
            return {}

    def write_settings(self, **settings):
        self.settings_file().parent.mkdir(parents=True, exist_ok=True)
        self.settings_file().write_text(json.dumps(settings))

    def settings_file(self):
        return Path(os.environ["HOME"]) / ".config/dev.quorvane.zenlot/defaults.json"

    def is_running(self):
        return bool(self.processes("zenlot"))

    # ---- The bus ----

    def connect(self):
        # Not before the addresses are in the environment.
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi, Gio, GLib
        self.Atspi, self.Gio, self.GLib = Atspi, Gio, GLib
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)
        self.call("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set", "(ssv)",
                  "org.a11y.Status", "IsEnabled", GLib.Variant("b", True))
        Atspi.init()

    def call(self, name, path, interface, method, signature="()", *arguments):
        answer = self.bus.call_sync(name, path, interface, method, self.GLib.Variant(signature, arguments), None,
                                    self.Gio.DBusCallFlags.NONE, PATIENCE * 1000, None)
        return answer.unpack()

    def property(self, name, path, interface, which):
        return self.call(name, path, "org.freedesktop.DBus.Properties", "Get", "(ss)", interface, which)[0]

    def has_name(self, name):
        return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
                         "(s)", name)[0]

    # ---- What a screen reader is told ----

    def find(self, name, role=None, of=None):
        """The first node that shows and has this name; a function for a name is asked."""
        matches = name if callable(name) else lambda text: text == name
        desktop = self.Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            try:
                application = desktop.get_child_at_index(index)
                if application is None or (of and application.get_name() != of):
                    continue
                application.clear_cache()
                found = self.find_below(application, matches, role, 0)
            except self.GLib.Error:
                continue
            if found:
                return found
        return None

    def find_below(self, node, matches, role, depth):
        if depth > 40:
            return None
        for index in range(min(node.get_child_count(), 400)):
            try:
                child = node.get_child_at_index(index)
                if child is None:
                    continue
                shows = child.get_state_set().contains(self.Atspi.StateType.SHOWING)
                if shows and matches(child.get_name() or "") and role in (None, child.get_role_name()):
                    return child
                found = self.find_below(child, matches, role, depth + 1)
            except self.GLib.Error:
                continue
            if found:
                return found
        return None

    def do(self, node):
        """What a screen reader does to press it."""
        return node.get_action_iface().do_action(0)

    def text(self, node):
        return self.Atspi.Text.get_text(node, 0, -1)

    def size(self, node):
        # The toolkit moves but one corner of what is told in the window's own coordinates.
        extents = node.get_component_iface().get_extents(self.Atspi.CoordType.SCREEN)
        return extents.width, extents.height

    def middle(self, node):
        extents = node.get_component_iface().get_extents(self.Atspi.CoordType.SCREEN)
        return extents.x + extents.width // 2, extents.y + extents.height // 2
