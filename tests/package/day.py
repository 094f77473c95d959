"""A day in the life of the installed packages, seen by the system and by one user.

Runs as root in a system of its own that packaging/try-packages has started. Nothing is slept for: each
check waits until what it looks for is there, or says that it did not come.
"""
import glob
import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import time

USER = "ada"
UID = 1000
HOME = pathlib.Path("/home") / USER
MONITOR = "dev.quorvane.zenlot.monitor.service"
HELPER = "zenlot-bindwatch.service"
NAME = "dev.quorvane.zenlot"
AUTOMATION = "dev.quorvane.zenlot.Automation"
PORT = 8765
PATIENCE = 60

passed = 0
failed = 0


def say(text):
    print(text, flush=True)


def check(what, outcome, detail=""):
    global passed, failed
    if outcome:
        passed += 1
    else:
        failed += 1
    say(f"  {'ok   ' if outcome else 'FAIL '} {what}" + (f": {detail}" if detail and not outcome else ""))
    return bool(outcome)


def run(*command, timeout=300, **options):
    try:
        return subprocess.run(command, text=True, capture_output=True, timeout=timeout, **options)
    except subprocess.TimeoutExpired:
        return subprocess.CompletedProcess(command, -1, "", f"no end of {command} in {timeout} s")


def output(*command):
    done = run(*command)
    return (done.stdout + done.stderr).strip()


def wait(condition, patience=PATIENCE):
    """What the condition says at last, once it says something."""
    until = time.monotonic() + patience
    while True:
        outcome = condition()
        if outcome or time.monotonic() > until:
            return outcome
        time.sleep(0.2)


ENVIRONMENT = {
    "HOME": str(HOME),
    "USER": USER,
    "PATH": "/usr/local/bin:/usr/bin:/bin",
    "LANG": "C.UTF-8",
    "DISPLAY": ":7",
    "XDG_CURRENT_DESKTOP": "XFCE",
    "XDG_RUNTIME_DIR": f"/run/user/{UID}",
    "DBUS_SESSION_BUS_ADDRESS": f"unix:path=/run/user/{UID}/bus",
}


def as_user(*command):
    return ["setpriv", f"--reuid={UID}", f"--regid={UID}", "--init-groups", "--",
            "env", "-i", *(f"{name}={text}" for name, text in ENVIRONMENT.items()), *command]


def user(*command):
    return run(*as_user(*command), cwd=HOME, timeout=30)


def user_output(*command):
    done = user(*command)
    return (done.stdout + done.stderr).strip()


def started_by_user(*command, **options):
    return subprocess.Popen(as_user(*command), start_new_session=True, **options)


def unit_state(unit):
    return user_output("systemctl", "--user", "is-enabled", unit), user_output("systemctl", "--user", "is-active", unit)


def unit_process(unit):
    return int(user_output("systemctl", "--user", "show", "--value", "--property=MainPID", unit) or 0)


def owner(name):
    """The process that owns a name on the session bus, or 0."""
    said = user_output("busctl", "--user", "--auto-start=no", "call", "org.freedesktop.DBus", "/org/freedesktop/DBus",
                       "org.freedesktop.DBus", "GetConnectionUnixProcessID", "s", name)
    return int(said.split()[1]) if said.startswith("u ") else 0


def screen(verb, role, name):
    done = user("/usr/bin/python3", "/day/screen.py", verb, role, name)
    return done.stdout.strip() or "yes" if done.returncode == 0 else ""


def shows(role, name, patience=PATIENCE):
    return wait(lambda: screen("find", role, name), patience)


def press(role, name):
    return wait(lambda: screen("press", role, name))


def click(role, name):
    """With the mouse, as alerts want it."""
    place = shows(role, name)
    if not place:
        return False
    x, y, width, height = map(int, place.split())
    return user("xdotool", "mousemove", str(x + width // 2), str(y + height // 2), "click", "1").returncode == 0


def picture(name):
    user("sh", "-c", f"xwd -root -silent | convert xwd:- png:/tmp/{name}.png")
    shutil.copy(f"/tmp/{name}.png", "/day/pictures/")


def log_in():
    run("systemd-run", "--unit=login", "--collect", "--property=PAMName=login", f"--property=User={USER}",
        f"--property=WorkingDirectory={HOME}", "--property=KillMode=mixed", "/day/session")
    return wait(lambda: owner("org.kde.StatusNotifierWatcher"))


def log_out():
    run("systemctl", "stop", "login.service")
    return wait(lambda: output("systemctl", "is-active", f"user@{UID}.service") == "inactive")


def packages(pattern="*"):
    return sorted(path for path in glob.glob(f"/packages/{pattern}.deb") if "dbgsym" not in path)


def apt(*arguments):
    done = run("apt-get", "-q", "--yes", "--no-install-recommends", *arguments,
               env={"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "DEBIAN_FRONTEND": "noninteractive", "LC_ALL": "C.UTF-8"})
    if done.returncode != 0:
        say(done.stderr)
    return done.returncode == 0


def serve():
    """Starts a development server that gives up when it can't have its port."""
    return started_by_user("/bin/sh", "-c", f"cd {HOME}/project && exec python3 server.py",
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def hold(port):
    holding = started_by_user("python3", "-m", "http.server", "--bind", "127.0.0.1", str(port),
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    check(f"port {port} is held", wait(lambda: "used by" in holder(port)), holder(port))
    return holding


def holder(port=PORT):
    return user_output("zenlotctl", "check", str(port))


def end(process):
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()


def leftovers():
    """What is named like the packages, or names them, outside of homes and of what the day brought."""
    away = ("/proc", "/sys", "/dev", "/run", "/tmp", "/home", "/packages", "/day", "/work", "/root", "/var/log",
            "/var/cache", "/var/lib/systemd/deb-systemd-user-helper-masked", "/var/tmp", "/var/lib/dpkg/info")
    found = []
    for folder, folders, files in os.walk("/"):
        folders[:] = [name for name in folders if os.path.join(folder, name) not in away]
        found += [os.path.join(folder, name) for name in folders + files if "zenlot" in name.lower()]
    for place in ("/etc", "/usr/share/applications/mimeinfo.cache", "/var/lib/systemd"):
        found += run("grep", "-rl", "zenlot", place).stdout.split()
    found += [path for path in glob.glob("/var/lib/dpkg/info/zenlot*")]
    return found


def morning():
    say("Installation:")
    check("apt installs the packages", apt("install", *packages()))
    check("they have no configuration files",
          not run("dpkg-query", "-W", "-f", "${Conffiles}", "zenlot", "zenlotctl", "zenlot-bindwatch").stdout.strip())
    check("the monitor is registered with nobody",
          not glob.glob("/etc/systemd/user/**/*zenlot*", recursive=True))
    state = [output("systemctl", verb, HELPER) for verb in ("is-enabled", "is-active")]
    check("the helper of the system is off", state == ["disabled", "inactive"], state)
    check("the preset says so to whoever asks",
          "disable dev.quorvane" in pathlib.Path("/usr/lib/systemd/user-preset/90-zenlot.preset").read_text())
    check("port:// links lead to it",
          "x-scheme-handler/port=" in pathlib.Path("/usr/share/applications/mimeinfo.cache").read_text())
    check("its manual pages are found", all(run("man", "-w", page).returncode == 0 for page in
                                            ("zenlot", "zenlotctl", "zenlot-monitor", "zenlot-bindwatch")))


def completions():
    say("Completions:")
    server = started_by_user("python3", "-c", "import socket,time;s=socket.socket();s.bind(('127.0.0.1',54321));"
                             "s.listen();time.sleep(600)")
    wait(lambda: "54321" in user_output("zenlotctl", "list", "--offers"))
    bash = ("source /usr/share/bash-completion/bash_completion; _completion_loader zenlotctl; COMP_TYPE=9;"
            "COMP_WORDS=(zenlotctl check 543); COMP_CWORD=2; _zenlotctl; printf '%s\\n' \"${COMPREPLY[@]}\"")
    said = user_output("bash", "-c", bash)
    check("bash offers the port", said == "54321", said)
    said = user_output("fish", "-c", "complete --do-complete 'zenlotctl check 543'")
    check("fish offers the port with its owner", re.fullmatch(r"54321\tPython3\S* \(PID \d+\)", said), said)
    zsh = ("zmodload zsh/zpty; zpty z zsh -f -i; zpty -w z 'PS1=; autoload -U compinit; compinit -u;"
           " zstyle \":completion:*\" list-separator \"|\"';"
           "zpty -w z 'print READY'; zpty -r z said '*READY*READY*';"
           "zpty -n -w z $'zenlotctl check 543\\t'; zpty -r -m z said '*54321*' && print -r -- found")
    said = run("timeout", "30", *as_user("TERM=xterm", "zsh", "-fc", zsh)).stdout
    check("zsh completes the port", "found" in said, said)
    end(server)


def first_run():
    say("First run:")
    check("a desktop with a real service manager of the user", log_in())
    user("gapplication", "launch", NAME)
    check("a desktop starts it over the bus, as its entry says", shows("frame", "Welcome to Zenlot"))
    check("as a service of the session", unit_process(f"{NAME}.service") == owner(NAME) != 0)
    shows("push button", "Continue")
    picture("welcome")
    check("the welcome goes on", press("push button", "Continue") and press("push button", "Enable"))
    state = wait(lambda: unit_state(MONITOR) == ("enabled", "active"))
    check("the monitor is enabled and runs", state, unit_state(MONITOR))
    check("at the back of the user's other work",
          "background.slice" in user_output("systemctl", "--user", "show", "--property=Slice", MONITOR))
    items = wait(lambda: (said := user_output(
        "busctl", "--user", "get-property", "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
        "org.kde.StatusNotifierWatcher", "RegisteredStatusNotifierItems")) and "StatusNotifierItem" in said and said)
    check("its icon is in the panel", items)


def settings():
    say("The settings:")
    user("gapplication", "action", NAME, "settings")
    check("the action of its entry opens them", shows("frame", "Settings"))
    check("the start at login is switched on", press("check box", "Launch at login") and
          wait(lambda: (HOME / f".config/autostart/{NAME}.desktop").exists()))
    check("conflicts are watched for", press("page tab", "Port Monitoring") and
          wait(lambda: screen("checked", "check box", "Conflict Monitoring")))
    stored = HOME / f".config/{NAME}/defaults.json"
    check("and told", wait(lambda: '"conflictMonitoringEnabled": true' in stored.read_text()), stored.read_text())
    user("xdotool", "key", "Escape")


def conflict():
    say("A conflict:")
    project = HOME / "project"
    project.mkdir()
    (project / "server.py").write_text(
        "import http.server\n"
        f"http.server.ThreadingHTTPServer(('127.0.0.1', {PORT}), http.server.SimpleHTTPRequestHandler).serve_forever()\n")
    run("chown", "-R", f"{USER}:", str(project))
    holding = hold(PORT)
    title = f"Port {PORT} is already in use"
    # Where the kernel does not tell of processes, as in this system, one that is gone at once may be missed.
    for attempt in range(1, 6):
        refused = serve()
        refused.wait()
        if shows("label", title, 10):
            break
    check(f"a refused server raises an alert, at start {attempt}", shows("label", title, 1))
    picture("alert")
    check("its button is clicked", click("push button", "Kill Process"))
    check("the holder ends", wait(lambda: holding.poll() is not None))
    check("the port is free", wait(lambda: "is free" in holder()), holder())
    second = serve()
    check("the second start listens", wait(lambda: "used by" in holder()), holder())
    check("the alert is gone", wait(lambda: not screen("find", "label", title)))
    return second


def searches():
    say("The desktop's search:")
    provider = ["busctl", "--user", "call", AUTOMATION, "/dev/quorvane/zenlot/Automation"]
    said = user_output(*provider, "org.gnome.Shell.SearchProvider2", "GetInitialResultSet", "as", "1", str(PORT))
    check("GNOME's gets an answer", said == f'as 1 ":{PORT}"', said)
    said = user_output(*provider, "org.kde.krunner1", "Match", "s", f"port {PORT}")
    check("KDE's gets an answer", f"Port {PORT} is used by: Python3" in said, said)
    check("from a service of the session", unit_process(f"{AUTOMATION}.service") == owner(AUTOMATION) != 0)
    said = user_output(*provider, AUTOMATION, "CheckPort", "x", "1")
    check("scripts get one", "Port 1 is free" in said, said)


def quit_zenlot():
    if process := owner(NAME):
        os.kill(process, signal.SIGTERM)
    return wait(lambda: not owner(NAME) and unit_state(f"{NAME}.service")[1] in ("inactive", "failed"))


def links(place):
    """xdg-open does what the desktop's own tools do, and has a way of its own where there is no desktop."""
    for desktop, opener in (("XFCE", "xdg-open"), ("GNOME", "xdg-open"), ("", "xdg-open"), ("XFCE", "gio open")):
        quit_zenlot()
        started = started_by_user("env", f"XDG_CURRENT_DESKTOP={desktop}", *opener.split(), f"port://{PORT}",
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        check(f"{opener} port://{PORT} leads to that port, {place}, in {desktop or 'no desktop'}",
              wait(lambda: screen("text", "text", "Port") == str(PORT)), screen("text", "text", "Port"))
        quit_zenlot()
        end(started)


def next_login():
    say("Out and in again:")
    check("everything ends with the session", log_out() and
          wait(lambda: not run("pgrep", "-u", USER, "-f", "zenlot").stdout), output("ps", "-u", USER, "-o", "args"))
    check("the next login", log_in())
    check("starts it", wait(lambda: owner(NAME)))
    check("without a window", not screen("find", "frame", "Zenlot"))
    check("and the monitor", wait(lambda: unit_state(MONITOR) == ("enabled", "active")), unit_state(MONITOR))


def newer_packages():
    """The same packages with a higher version."""
    os.makedirs("/tmp/newer", exist_ok=True)
    for path in packages():
        folder = f"/tmp/newer/{pathlib.Path(path).stem}"
        run("dpkg-deb", "--raw-extract", path, folder)
        control = pathlib.Path(folder, "DEBIAN/control")
        control.write_text(re.sub("^(Version: .*)$", r"\1+1", control.read_text(), flags=re.MULTILINE))
        run("dpkg-deb", "--build", folder, "/tmp/newer")
    return glob.glob("/tmp/newer/*.deb")


def program(process):
    try:
        return os.readlink(f"/proc/{process}/exe")
    except OSError:
        return ""


def logged(text):
    log = HOME / "Library/Logs/zenlot-monitor.log"
    return check(f"the monitor's log says: {text}", wait(lambda: f" {text} by the system" in log.read_text()),
                 log.read_text())


def told():
    """Which ports the monitor has published as refused, and who held them."""
    published = json.loads((HOME / f".local/state/group.{NAME}/conflicts.json").read_text())
    return {(conflict["port"], conflict["pid"]) for conflict in published}


def refused_unsaid(port):
    """The server says nowhere which port it wants, so only the kernel can tell."""
    server = f"import socket; socket.create_server(('127.0.0.1', {port - 1000} + 10 ** 3))"
    return run(*as_user("python3", "-c", server)).returncode == 1


def helper_on():
    say("The helper of the system:")
    check("an administrator turns it on",
          run("systemctl", "enable", "--now", HELPER).returncode == 0 and
          wait(lambda: output("systemctl", "is-active", HELPER) == "active"),
          output("journalctl", "-n20", "-u", HELPER))
    check("its readers find it",
          wait(lambda: re.search("refused binds +works", user_output("zenlotctl", "doctor"))),
          user_output("zenlotctl", "doctor"))
    logged("told of refused ports")
    port = PORT + 1
    holding = hold(port)
    check("a server that names its port nowhere is refused", refused_unsaid(port))
    check("and told, with its holder", wait(lambda: (port, holding.pid) in told()), told())
    end(holding)


def helper_off():
    say("Without the helper:")
    check("an administrator turns it off", run("systemctl", "disable", "--now", HELPER).returncode == 0)
    logged("no longer told of refused ports")
    unsaid, port = PORT + 2, PORT + 3
    others, holding = hold(unsaid), hold(port)
    check("a server that names its port nowhere is refused", refused_unsaid(unsaid))
    command = as_user("python3", "-m", "http.server", "--bind", "127.0.0.1", str(port))
    # One that is gone at once may be missed, as in the conflict above.
    for attempt in range(1, 6):
        run(*command)
        if wait(lambda: (port, holding.pid) in told(), 10):
            break
    check(f"one that names it is told by inference, at start {attempt}", (port, holding.pid) in told(), told())
    check("the other is not", not any(conflict[0] == unsaid for conflict in told()), told())
    end(others)
    end(holding)


def upgrade():
    say("An upgrade over what runs:")
    helper = output("systemctl", "show", "--value", "--property=MainPID", HELPER)
    monitor, application = unit_process(MONITOR), owner(NAME)
    check("apt upgrades", apt("install", *newer_packages()))
    check("the helper is another one, and on",
          wait(lambda: output("systemctl", "is-active", HELPER) == "active") and
          output("systemctl", "show", "--value", "--property=MainPID", HELPER) != helper)
    check("the monitor is the new one",
          wait(lambda: unit_process(MONITOR) not in (0, monitor)) and
          wait(lambda: program(unit_process(MONITOR)) == "/usr/bin/zenlot-monitor"), program(unit_process(MONITOR)))
    check("the application goes on", owner(NAME) == application and "(deleted)" in program(application))
    quit_zenlot()
    user("gapplication", "launch", NAME)
    check("and is the new one when it is started again", wait(lambda: program(owner(NAME)) == "/usr/bin/zenlot"))


def evening():
    say("Removal:")
    check("apt removes", apt("remove", "zenlot", "zenlotctl", "zenlot-bindwatch"))
    check("no service runs on",
          wait(lambda: not run("pgrep", "-f", "zenlot-(monitor|automation|bindwatch)").stdout),
          output("pgrep", "-af", "zenlot"))
    check("apt purges", apt("purge", "zenlot", "zenlotctl", "zenlot-bindwatch"))
    check("nothing is left of it", not leftovers(), leftovers())
    check("but the user's own settings", (HOME / f".config/{NAME}/defaults.json").exists())
    log_out()


def from_source(build):
    for prefix in ("/usr/local", "/usr"):
        say(f"cmake --install to {prefix}:")
        done = run("cmake", "--install", build, "--prefix", prefix)
        check("it installs", done.returncode == 0, done.stdout + done.stderr)
        log_in()
        serving = serve()
        wait(lambda: "used by" in holder())
        links("without a package")
        said = user_output("busctl", "--user", "call", AUTOMATION, "/dev/quorvane/zenlot/Automation", AUTOMATION,
                           "CheckPort", "x", str(PORT))
        check("the bus starts what answers searches", "is used by" in said, said)
        user("systemctl", "--user", "start", MONITOR)
        check("the service manager starts the monitor", wait(
            lambda: program(unit_process(MONITOR)) == f"{prefix}/bin/zenlot-monitor"), unit_state(MONITOR))
        end(serving)
        log_out()
        done = run("cmake", "-P", f"{build}/packaging/uninstall.cmake")
        check("it is taken away again", done.returncode == 0 and not leftovers(), leftovers())


def main():
    run("useradd", "--create-home", "--uid", str(UID), "--shell", "/bin/bash", USER)
    pathlib.Path("/etc/systemd/logind.conf.d").mkdir(exist_ok=True)
    pathlib.Path("/etc/systemd/logind.conf.d/day.conf").write_text("[Login]\nUserStopDelaySec=0\n")
    run("systemctl", "restart", "systemd-logind")
    morning()
    completions()
    first_run()
    settings()
    server = conflict()
    searches()
    links("with the package")
    next_login()
    end(server)
    helper_on()
    upgrade()
    helper_off()
    evening()
    if os.path.exists("/day/build"):
        from_source(pathlib.Path("/day/build").read_text().strip())


try:
    main()
except Exception as trouble:  # the rest of the day can't be had
    import traceback

    traceback.print_exc()
    check("the day comes to its end", False, trouble)
say(f"{passed} passed, {failed} failed")
