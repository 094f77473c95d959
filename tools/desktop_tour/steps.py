"""What a user does with Zenlot on a desktop, in this order. Each step tells what was seen."""
import socket
import time

from session import Missing, wait

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
FIRST_PORT = 4100


def item(session):
    """The place of our status item on the bus."""
    for entry in session.property(WATCHER, "/StatusNotifierWatcher", WATCHER, "RegisteredStatusNotifierItems"):
        name, _, path = entry.partition("/")
        # GNOME's extension writes them in a way of its own.
        name, path = name.partition("@")[0], "/" + path
        if session.property(name, path, ITEM, "Id") == "zenlot":
            return name, path
    return None


def menu_entries(session):
    """The numbers of the exported menu's entries by what they say."""
    name, path = item(session)
    menu = session.property(name, path, ITEM, "Menu")
    _, (_, _, children) = session.call(name, menu, MENU, "GetLayout", "(iias)", 0, -1, [])
    return name, menu, {child[1].get("label", ""): child[0] for child in children}


def window(session):
    return session.find("Port", role="text", of="zenlot")


def icon(session, desktop):
    desktop.wait_until_ready()
    session.start("zenlot")
    wait("a window", lambda: window(session))
    if not desktop.status_items:
        wait("the menu's button", lambda: session.find("Menu", of="zenlot"))
        return "none on this desktop; the window has a menu"
    wait("a status item", lambda: item(session))
    return "in the status area"


def menu(session, desktop):
    if not desktop.status_items:
        session.press("F10")
        time.sleep(2)
        session.picture("menu")
        session.press("Escape")
        return "F10"
    _, _, entries = menu_entries(session)
    wanted = {"Settings…", "Quit Zenlot"}
    if not wanted <= set(entries):
        raise Missing(f"{wanted - set(entries)} in {list(entries)}")
    name, path = item(session)
    session.input("mousemove", *desktop.icon_place)
    session.call(name, path, ITEM, "Activate", "(ii)", *desktop.icon_place)
    time.sleep(2)
    session.picture("menu")
    # Whatever it opens has a field with the keyboard.
    session.input("type", str(FIRST_PORT + 40))
    session.press("Return")
    wait("the port that was typed", lambda: (field := window(session)) and session.text(field) == str(FIRST_PORT + 40))
    return "its own, and that of the panel"


def link(session, desktop):
    openers = [["xdg-open"], ["gio", "open"]]
    if desktop.has_kioclient:
        openers.append(["kioclient5", "exec"])
    for port, opener in enumerate(openers, FIRST_PORT + 50):
        session.start(*opener, f"port://{port}")
        wait(f"the port of {opener[0]}", lambda: session.text(window(session)) == str(port))
    return ", ".join(opener[0] for opener in openers)


def shortcut(session, desktop):
    if not desktop.has_shortcut:
        return "the desktop has no portal for it"
    desktop.show_window()
    time.sleep(1)
    session.press("ctrl+w")
    wait("the window's end", lambda: not window(session))
    session.press("ctrl+alt+shift+p")
    wait("the window", lambda: window(session))
    return "opens the window"


def serve(session, port, name="python3"):
    return session.start(name, "-m", "http.server", "-b", "127.0.0.1", str(port))


def is_taken(port):
    with socket.socket() as probe:
        return probe.connect_ex(("127.0.0.1", port)) == 0


def search(session, desktop):
    if desktop.search is None:
        return "the desktop asks nobody"
    port = FIRST_PORT + 20
    serve(session, port)
    answer = wait("an answer", lambda: desktop.search(port))
    session.picture("search")
    desktop.end_search()
    return f"“{answer}”"


def alert(session, desktop):
    wait("the monitor", lambda: session.processes("zenlot-monitor"))
    time.sleep(3)  # what runs by then is no news
    seen = []
    for offset, (title, happened) in enumerate({
            "Kill Process": lambda port, holder: holder.poll() is not None,
            "Ignore Port": lambda port, _: port in session.settings().get("conflictIgnoredPorts", []),
            "Ignore Process": lambda *_: session.settings().get("conflictIgnoredApps")}.items()):
        port = FIRST_PORT + offset
        holder = serve(session, port)
        wait(f"a server on port {port}", lambda: is_taken(port))
        time.sleep(3)  # or both would be seen to begin at once
        serve(session, port)
        desktop.press_button(title, f"Port {port} is already in use")
        wait(f"the end of {title}", lambda: happened(port, holder))
        seen.append(title)
    return ", ".join(seen)


def dark(session, desktop):
    # Where the pointer rests, XFCE's panel keeps the colour that an icon had.
    session.input("mousemove", 640, 700)
    desktop.show_window()
    before = session.brightness()
    desktop.make_dark()
    wait(f"a dark window after {before:.2f}", lambda: session.brightness() < before / 2, 15)
    time.sleep(1)  # the panel is next
    session.picture("dark")
    return "follows"


def large(session, desktop):
    before = desktop.measure(window(session))
    desktop.make_large()
    grown = wait("larger text", lambda: (after := desktop.measure(window(session))) > before * 1.2 and after, 15)
    time.sleep(1)
    session.picture("large")
    return f"{grown / before:.2f} times as large"


def quit(session, desktop):
    if desktop.status_items:
        name, menu_path, entries = menu_entries(session)
        session.call(name, menu_path, MENU, "Event", "(isvu)", entries["Quit Zenlot"], "clicked",
                     session.GLib.Variant("s", ""), 0)
        wait("its end", lambda: not session.is_running(), 15)
        return "from the menu"
    desktop.show_window()
    session.press("ctrl+q")
    wait("its end after Ctrl+Q", lambda: not session.is_running(), 15)
    session.start("zenlot")
    wait("a window", lambda: window(session))
    time.sleep(1)
    session.input("key", "F10", "sleep", "2", "key", "Up", "sleep", "0.5", "key", "Return")
    wait("its end after the menu", lambda: not session.is_running(), 15)
    return "Ctrl+Q; F10"


STEPS = {"icon": icon, "menu": menu, "link": link, "shortcut": shortcut, "search": search, "alert": alert,
         "dark": dark, "text size": large, "quit": quit}
NAMES = list(STEPS)


def failed(text):
    return {"worked": False, "text": "**no**: " + " ".join(str(text).split())[:160].replace("|", "/")}


def take_all(session, desktop):
    desktop.start()
    results = {}
    for name, step in STEPS.items():
        try:
            results[name] = {"worked": True, "text": step(session, desktop)}
        except (Missing, OSError, KeyError, AttributeError, TypeError, session.GLib.Error) as trouble:
            results[name] = failed(trouble)
            session.picture(f"trouble-{name.replace(' ', '-')}")
        print(name, results[name], flush=True)
    return results
