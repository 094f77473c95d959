<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="hu" sourcelanguage="en">
<context>
    <name>AppPortGroup</name>
    <message>
        <source>Port %1</source>
        <translation>%1. port</translation>
    </message>
</context>
<context>
    <name>BackgroundItemsContent</name>
    <message>
        <source>Turn On</source>
        <translation>Bekapcsolás</translation>
    </message>
    <message>
        <source>Re-check</source>
        <translation>Újraellenőrzés</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Kész</translation>
    </message>
</context>
<context>
    <name>BackgroundItemsWindow</name>
    <message>
        <source>Login Items</source>
        <translation>Bejelentkezési elemek</translation>
    </message>
</context>
<context>
    <name>CheckPortIntent</name>
    <message>
        <source>Check Port</source>
        <translation>Port ellenőrzése</translation>
    </message>
    <message>
        <source>Port Number</source>
        <translation>Portszám</translation>
    </message>
    <message>
        <source>A port number between 1 and 65535</source>
        <translation>Portszám 1 és 65535 között</translation>
    </message>
    <message>
        <source>Which port would you like to check?</source>
        <translation>Melyik portot szeretné ellenőrizni?</translation>
    </message>
    <message>
        <source>Please enter a valid port number between 1 and 65535.</source>
        <translation>Adjon meg egy érvényes portszámot 1 és 65535 között.</translation>
    </message>
    <message>
        <source>Port %1 is free — nothing is using it.</source>
        <translation>A(z) %1. port szabad – semmi sem használja.</translation>
    </message>
    <message>
        <source>Port %1 is used by: %2</source>
        <translation>A(z) %1. portot használja: %2</translation>
    </message>
    <message>
        <source>Check a port in %1</source>
        <translation>Port ellenőrzése itt: %1</translation>
    </message>
    <message>
        <source>What is using a port in %1</source>
        <translation>Mi használja a portot itt: %1</translation>
    </message>
    <message>
        <source>Port lookup in %1</source>
        <translation>Portkeresés itt: %1</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Ismeretlen</translation>
    </message>
</context>
<context>
    <name>CollapsibleSection</name>
    <message>
        <source>open</source>
        <translation>nyitva</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>zárva</translation>
    </message>
</context>
<context>
    <name>CommandCard</name>
    <message>
        <source>To allow it, run this in a terminal:</source>
        <translation>Az engedélyezéshez futtassa ezt egy terminálban:</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Másolva</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Másolás</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Parancs</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Mégsem</translation>
    </message>
</context>
<context>
    <name>ContentView</name>
    <message>
        <source>Toggle Inspector</source>
        <translation>Infóablak be/ki</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>Infóablak</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Leállítás</translation>
    </message>
    <message>
        <source>Stop the server so that it stays stopped</source>
        <translation>A kiszolgáló leállítása úgy, hogy az is maradjon</translation>
    </message>
</context>
<context>
    <name>ExceptionList</name>
    <message>
        <source>Add to %1</source>
        <translation>Hozzáadás ehhez: %1</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hozzáadás</translation>
    </message>
    <message>
        <source>Remove from %1</source>
        <translation>Eltávolítás innen: %1</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Eltávolítás</translation>
    </message>
</context>
<context>
    <name>ExceptionSection</name>
    <message>
        <source>e.g. 3000</source>
        <translation>pl. 3000</translation>
    </message>
    <message>
        <source>Ignored ports</source>
        <translation>Figyelmen kívül hagyott portok</translation>
    </message>
    <message>
        <source>e.g. python</source>
        <translation>pl. python</translation>
    </message>
    <message>
        <source>Ignored processes</source>
        <translation>Figyelmen kívül hagyott folyamatok</translation>
    </message>
</context>
<context>
    <name>ForceQuitButton</name>
    <message>
        <source>Force Quit</source>
        <translation>Kényszerített kilépés</translation>
    </message>
    <message>
        <source>Force-quit selected process</source>
        <translation>A kijelölt folyamat kényszerített bezárása</translation>
    </message>
</context>
<context>
    <name>ForceQuitDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Mégsem</translation>
    </message>
    <message>
        <source>Force Quit Process?</source>
        <translation>Kényszeríti a folyamat bezárását?</translation>
    </message>
</context>
<context>
    <name>GeneralTab</name>
    <message>
        <source>Show in menu bar</source>
        <translation>Megjelenítés az értesítési területen</translation>
    </message>
    <message>
        <source>Show in Dock</source>
        <translation>Megjelenítés a tálcán</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Indítás bejelentkezéskor</translation>
    </message>
    <message>
        <source>Keyboard Shortcut</source>
        <translation>Billentyűparancs</translation>
    </message>
    <message>
        <source>⌃⌥⇧P — opens the menu bar popover from anywhere</source>
        <translation>Ctrl+Alt+Shift+P — bárhonnan megnyitja a Zenlotot</translation>
    </message>
    <message>
        <source>Enable global shortcut</source>
        <translation>Globális billentyűparancs engedélyezése</translation>
    </message>
</context>
<context>
    <name>GlobalShortcut</name>
    <message>
        <source>Open Zenlot</source>
        <translation>A Zenlot megnyitása</translation>
    </message>
</context>
<context>
    <name>InstallError</name>
    <message>
        <source>Zenlot is blocked from running in the background. Open System Settings → General → Login Items &amp; Extensions and turn Zenlot back on under &quot;Allow in the Background&quot;, then click Re-check.</source>
        <translation>A Zenlot nem futhat a háttérben: a figyelőjét a systemd maszkolja. A „Bejelentkezési elemek megnyitása” megmutatja, hogyan engedélyezhető; ezután kattints az „Újraellenőrzés” gombra.</translation>
    </message>
    <message>
        <source>Zenlot is still blocked. Toggle &quot;Allow in the Background&quot; on for Zenlot in System Settings → General → Login Items &amp; Extensions.</source>
        <translation>A Zenlot továbbra is le van tiltva. A „Bejelentkezési elemek megnyitása” megmutatja a parancsot, amely feloldja a figyelőt.</translation>
    </message>
</context>
<context>
    <name>LogLines</name>
    <message>
        <source>Log</source>
        <translation>Napló</translation>
    </message>
    <message>
        <source>Unmark Row</source>
        <translation>Sor jelölésének törlése</translation>
    </message>
    <message>
        <source>Mark Row</source>
        <translation>Sor megjelölése</translation>
    </message>
</context>
<context>
    <name>LogTabView</name>
    <message>
        <source>Clear</source>
        <translation>Törlés</translation>
    </message>
    <message>
        <source>Clear log</source>
        <translation>Napló törlése</translation>
    </message>
    <message>
        <source>Unmark</source>
        <translation>Jelölések törlése</translation>
    </message>
    <message>
        <source>Clear marked rows</source>
        <translation>Az összes sor jelölésének törlése</translation>
    </message>
    <message>
        <source>No log entries yet</source>
        <translation>Még nincsenek naplóbejegyzések</translation>
    </message>
    <message>
        <source>At %1 MB the log begins anew, and one old log is kept beside it.</source>
        <translation>%1 MB-nál a napló újrakezdődik, és egy régi megmarad mellette.</translation>
    </message>
</context>
<context>
    <name>MonitorPage</name>
    <message>
        <source>Background Monitor</source>
        <translation>Háttérfigyelő</translation>
    </message>
    <message>
        <source>A lightweight daemon that watches for port conflicts around the clock — even when Zenlot isn&apos;t running. You&apos;ll be notified the moment a crash blocks your dev server.</source>
        <translation>Egy könnyű háttérszolgáltatás, amely éjjel-nappal figyeli a portütközéseket – akkor is, ha a Zenlot nem fut. Azonnal értesül, ha egy összeomlás blokkolja a fejlesztői szerverét.</translation>
    </message>
    <message>
        <source>Background monitor enabled</source>
        <translation>A háttérfigyelő engedélyezve</translation>
    </message>
    <message>
        <source>Folytatás</source>
        <translation>Folytatás</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>Bejelentkezési elemek megnyitása</translation>
    </message>
    <message>
        <source>I&apos;ve enabled it — re-check</source>
        <translation>Engedélyeztem – újraellenőrzés</translation>
    </message>
    <message>
        <source>Skip for now</source>
        <translation>Kihagyás most</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>Telepítés…</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>Engedélyezés</translation>
    </message>
</context>
<context>
    <name>ObstacleText</name>
    <message>
        <source>%1 has reserved it without listening.</source>
        <translation>A(z) %1 lefoglalta, de nem figyel rajta.</translation>
    </message>
    <message>
        <source>%1 uses it for a connection to port %2. Some servers can&apos;t have it until that ends.</source>
        <translation>A(z) %1 egy %2 porthoz menő kapcsolatra használja. Egyes kiszolgálók csak annak végén kaphatják meg.</translation>
    </message>
    <message>
        <source>Its last connection has just ended. Some servers can&apos;t have it for another %1 s.</source>
        <translation>Az utolsó kapcsolata most ért véget. Egyes kiszolgálók még %1 másodpercig nem kaphatják meg.</translation>
    </message>
    <message>
        <source>The system keeps it for servers that ask for it.</source>
        <translation>A rendszer azoknak a kiszolgálóknak tartja fenn, amelyek kérik.</translation>
    </message>
    <message>
        <source>Only privileged programs can have it.</source>
        <translation>Csak kiemelt jogú programok kaphatják meg.</translation>
    </message>
    <message>
        <source>A process of another user</source>
        <translation>Egy másik felhasználó folyamata</translation>
    </message>
</context>
<context>
    <name>OnboardingWindow</name>
    <message>
        <source>Welcome to Zenlot</source>
        <translation>Üdvözli a Zenlot</translation>
    </message>
</context>
<context>
    <name>OriginNote</name>
    <message>
        <source>%1 (deleted folder)</source>
        <translation>%1 (törölt mappa)</translation>
    </message>
    <message>
        <source>Open to the network</source>
        <translation>A hálózat felől elérhető</translation>
    </message>
    <message>
        <source>Perhaps left behind</source>
        <translation>Talán itt felejtett</translation>
    </message>
</context>
<context>
    <name>OriginRows</name>
    <message>
        <source>%1, of a user</source>
        <translation>%1, felhasználóé</translation>
    </message>
    <message>
        <source>%1, of the system</source>
        <translation>%1, a rendszeré</translation>
    </message>
    <message>
        <source>%1 (IPv6 only)</source>
        <translation>%1 (csak IPv6)</translation>
    </message>
    <message>
        <source>This machine only</source>
        <translation>Csak ez a gép</translation>
    </message>
    <message>
        <source>The network, unless a firewall stops it</source>
        <translation>A hálózat, ha tűzfal nem akadályozza</translation>
    </message>
    <message>
        <source>Everyone who can reach %1, unless a firewall stops them</source>
        <translation>Bárki, aki eléri ezt: %1, ha tűzfal nem akadályozza</translation>
    </message>
    <message>
        <source>%1 processes: %2</source>
        <translation>%1 folyamat: %2</translation>
    </message>
    <message>
        <source>its folder is deleted</source>
        <translation>a mappáját törölték</translation>
    </message>
    <message>
        <source>it has no terminal</source>
        <translation>nincs terminálja</translation>
    </message>
    <message>
        <source>what started it has ended</source>
        <translation>ami elindította, véget ért</translation>
    </message>
    <message>
        <source>its session is over</source>
        <translation>a munkamenete véget ért</translation>
    </message>
    <message>
        <source>nobody is connected</source>
        <translation>senki sem kapcsolódik</translation>
    </message>
    <message>
        <source>Perhaps: %1</source>
        <translation>Talán: %1</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Név</translation>
    </message>
    <message>
        <source>Commit</source>
        <translation>Commit</translation>
    </message>
    <message>
        <source>Branch</source>
        <translation>Ág</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Mappa</translation>
    </message>
    <message>
        <source>%1 (deleted)</source>
        <translation>%1 (törölve)</translation>
    </message>
    <message>
        <source>Runs</source>
        <translation>Futtatja</translation>
    </message>
    <message>
        <source>Command line</source>
        <translation>Parancssor</translation>
    </message>
    <message>
        <source>Started by</source>
        <translation>Elindította</translation>
    </message>
    <message>
        <source>Container</source>
        <translation>Konténer</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Lemezkép</translation>
    </message>
    <message>
        <source>Service</source>
        <translation>Szolgáltatás</translation>
    </message>
    <message>
        <source>Its port</source>
        <translation>A portja</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Egység</translation>
    </message>
    <message>
        <source>Socket</source>
        <translation>Socket</translation>
    </message>
    <message>
        <source>Listens on</source>
        <translation>Figyeli</translation>
    </message>
    <message>
        <source>Open to</source>
        <translation>Nyitott</translation>
    </message>
    <message>
        <source>Shared by</source>
        <translation>Osztoznak</translation>
    </message>
    <message>
        <source>Clients</source>
        <translation>Kliensek</translation>
    </message>
    <message>
        <source>Left behind</source>
        <translation>Itt felejtett</translation>
    </message>
</context>
<context>
    <name>PortField</name>
    <message>
        <source>Port</source>
        <translation>Port</translation>
    </message>
</context>
<context>
    <name>PortMenu</name>
    <message>
        <source>Copy Port</source>
        <translation>Port másolása</translation>
    </message>
    <message>
        <source>Copy PID</source>
        <translation>PID másolása</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>Útvonal másolása</translation>
    </message>
    <message>
        <source>Show Details</source>
        <translation>Részletek megjelenítése</translation>
    </message>
    <message>
        <source>Force Quit…</source>
        <translation>Kényszerített kilépés…</translation>
    </message>
</context>
<context>
    <name>PortMonitoringTab</name>
    <message>
        <source>Show a notification whenever any new process starts listening on a port</source>
        <translation>Értesítés megjelenítése, amikor egy új folyamat figyelni kezd egy porton</translation>
    </message>
    <message>
        <source>Notify on all port activity</source>
        <translation>Értesítés minden porttevékenységről</translation>
    </message>
    <message>
        <source>Monitors dev runtimes in the background and notifies you when a port conflict is detected. Runs automatically at login.</source>
        <translation>A háttérben figyeli a fejlesztői futtatókörnyezeteket, és értesíti, ha portütközést észlel. Bejelentkezéskor automatikusan elindul.</translation>
    </message>
    <message>
        <source>Conflict Monitoring</source>
        <translation>Ütközésfigyelés</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>Bejelentkezési elemek megnyitása</translation>
    </message>
    <message>
        <source>I&apos;ve enabled it — re-check</source>
        <translation>Engedélyeztem – újraellenőrzés</translation>
    </message>
    <message>
        <source>Port Activity Exceptions</source>
        <translation>Porttevékenység kivételei</translation>
    </message>
    <message>
        <source>Conflict Monitoring Exceptions</source>
        <translation>Ütközésfigyelés kivételei</translation>
    </message>
    <message>
        <source>The system tells of refused ports exactly.</source>
        <translation>A rendszer pontosan jelzi a megtagadott portokat.</translation>
    </message>
    <message>
        <source>For exact alerts an administrator turns on the helper of the system: %1</source>
        <translation>A pontos riasztásokhoz egy rendszergazda kapcsolja be a rendszer segédprogramját: %1</translation>
    </message>
</context>
<context>
    <name>ProcessDetailContent</name>
    <message>
        <source>Identity</source>
        <translation>Azonosítás</translation>
    </message>
    <message>
        <source>Resources</source>
        <translation>Erőforrások</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>Alkalmazás</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Parancs</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Projekt</translation>
    </message>
    <message>
        <source>Origin</source>
        <translation>Eredet</translation>
    </message>
</context>
<context>
    <name>ProcessDetailPanel</name>
    <message>
        <source>Inspector</source>
        <translation>Infóablak</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Betöltés…</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>Beállítások</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Általános</translation>
    </message>
    <message>
        <source>Port Monitoring</source>
        <translation>Portfigyelés</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Napló</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>Beállítások</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Refresh</source>
        <translation>Frissítés</translation>
    </message>
    <message>
        <source>Scanning…</source>
        <translation>Keresés…</translation>
    </message>
    <message>
        <source>No listening ports</source>
        <translation>Nincs figyelő port</translation>
    </message>
    <message>
        <source>Listening ports</source>
        <translation>Figyelő portok</translation>
    </message>
</context>
<context>
    <name>SidebarRow</name>
    <message>
        <source>open</source>
        <translation>nyitva</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>zárva</translation>
    </message>
</context>
<context>
    <name>StopDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Mégsem</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Bezárás</translation>
    </message>
    <message>
        <source>Stop the Server?</source>
        <translation>Leállítja a kiszolgálót?</translation>
    </message>
</context>
<context>
    <name>StopText</name>
    <message>
        <source>Stops container %1.</source>
        <translation>Leállítja a(z) %1 konténert.</translation>
    </message>
    <message>
        <source>Stops container %1 of compose project %2.</source>
        <translation>Leállítja a(z) %1 konténert a(z) %2 compose projektből.</translation>
    </message>
    <message>
        <source>%1 is a program that people work in or that the session needs; it is not stopped for a port.</source>
        <translation>A(z) %1 programban dolgoznak, vagy a munkamenetnek kell; nem áll le egy portért.</translation>
    </message>
    <message>
        <source>It belongs to another user, and to no service or container that could be stopped.</source>
        <translation>Más felhasználóé, és nem tartozik leállítható szolgáltatáshoz vagy konténerhez.</translation>
    </message>
    <message>
        <source>Nobody can tell what would have to be stopped.</source>
        <translation>Nem állapítható meg, mit kellene leállítani.</translation>
    </message>
    <message>
        <source>Stops %1, one of your services.</source>
        <translation>Leállítja: %1, az Ön egyik szolgáltatása.</translation>
    </message>
    <message>
        <source>Stops %1, a service of the system.</source>
        <translation>Leállítja: %1, a rendszer szolgáltatása.</translation>
    </message>
    <message>
        <source>Stops %1 (PID %2).</source>
        <translation>Leállítja: %1 (PID %2).</translation>
    </message>
    <message>
        <source>Stops %1 (PID %2), which started the server on port %3.</source>
        <translation>Leállítja: %1 (PID %2), amely a(z) %3. port kiszolgálóját elindította.</translation>
    </message>
    <message>
        <source>1 client is connected.</source>
        <translation>1 kliens kapcsolódik.</translation>
    </message>
    <message>
        <source>%1 clients are connected.</source>
        <translation>%1 kliens kapcsolódik.</translation>
    </message>
    <message>
        <source>Ports that go with it: %1.</source>
        <translation>Vele megszűnő portok: %1.</translation>
    </message>
    <message>
        <source>%1 may start it again.</source>
        <translation>A(z) %1 újraindíthatja.</translation>
    </message>
    <message>
        <source>%1 has been asked to end and still holds port %2. End it by force?</source>
        <translation>A(z) %1 kérésre sem ért véget, és tartja a(z) %2. portot. Kényszerített leállítás?</translation>
    </message>
    <message>
        <source>another process</source>
        <translation>egy másik folyamat</translation>
    </message>
    <message>
        <source>%1 has ended, and %2 has taken port %3 again.</source>
        <translation>A(z) %1 véget ért, és a(z) %2 ismét elfoglalta a(z) %3. portot.</translation>
    </message>
    <message>
        <source>%1 could not be stopped: %2</source>
        <translation>A(z) %1 nem állítható le: %2</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Software Update</source>
        <translation>Szoftverfrissítés</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Mégsem</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Később</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Bezárás</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Release Notes</source>
        <translation>Kiadási megjegyzések</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Újra</translation>
    </message>
</context>
<context>
    <name>WelcomePage</name>
    <message>
        <source>Welcome to Zenlot</source>
        <translation>Üdvözli a Zenlot</translation>
    </message>
    <message>
        <source>Zenlot watches your network ports so you always know what&apos;s running — and what&apos;s blocking what.</source>
        <translation>A Zenlot figyeli a hálózati portjait, így mindig tudja, mi fut – és mi mit blokkol.</translation>
    </message>
    <message>
        <source>Type any port number to see which process is using it.</source>
        <translation>Írjon be egy portszámot, és látja, melyik folyamat használja.</translation>
    </message>
    <message>
        <source>Instant port lookup</source>
        <translation>Azonnali portkeresés</translation>
    </message>
    <message>
        <source>Get notified when a dev server can&apos;t start because a port is taken.</source>
        <translation>Értesítést kap, ha egy fejlesztői szerver foglalt port miatt nem tud elindulni.</translation>
    </message>
    <message>
        <source>Conflict notifications</source>
        <translation>Értesítés ütközésekről</translation>
    </message>
    <message>
        <source>Free up a blocked port without opening Terminal.</source>
        <translation>Szabadítsa fel a blokkolt portot a Terminál megnyitása nélkül.</translation>
    </message>
    <message>
        <source>One-click force quit</source>
        <translation>Kényszerített kilépés egy kattintással</translation>
    </message>
    <message>
        <source>Folytatás</source>
        <translation>Folytatás</translation>
    </message>
</context>
<context>
    <name>zenlot::AppDelegate</name>
    <message>
        <source>Open Zenlot</source>
        <translation>A Zenlot megnyitása</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Beállítások…</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Frissítések keresése…</translation>
    </message>
    <message>
        <source>Quit Zenlot</source>
        <translation>Kilépés a Zenlotból</translation>
    </message>
    <message>
        <source>Port number…</source>
        <translation>Portszám…</translation>
    </message>
    <message>
        <source>Port %1 blocked by %2</source>
        <translation>%1. port – blokkolja: %2</translation>
    </message>
    <message>
        <source>Conflict</source>
        <translation>Ütközés</translation>
    </message>
    <message>
        <source>Kill %1</source>
        <translation>%1 leállítása</translation>
    </message>
    <message>
        <source>Ignore Port %1</source>
        <translation>%1. port figyelmen kívül hagyása</translation>
    </message>
    <message>
        <source>Ignore %1</source>
        <translation>%1 figyelmen kívül hagyása</translation>
    </message>
    <message>
        <source>Clear Conflict Indicator</source>
        <translation>Ütközésjelzés törlése</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
</context>
<context>
    <name>zenlot::BackgroundItemsViewModel</name>
    <message>
        <source>Zenlot is blocked from running in the background</source>
        <translation>A Zenlot háttérben futása le van tiltva</translation>
    </message>
    <message>
        <source>Zenlot may run in the background</source>
        <translation>A Zenlot futhat a háttérben</translation>
    </message>
    <message>
        <source>Zenlot&apos;s background monitor is turned off</source>
        <translation>A Zenlot háttérfigyelője ki van kapcsolva</translation>
    </message>
    <message>
        <source>Zenlot&apos;s background monitor was not found</source>
        <translation>A Zenlot háttérfigyelője nem található</translation>
    </message>
    <message>
        <source>The background monitor is masked, so systemd refuses to start it. You, an administrator or a clean-up tool may have switched it off.</source>
        <translation>A háttérfigyelő maszkolva van, ezért a systemd nem indítja el. Lehet, hogy Ön, egy rendszergazda vagy egy tisztítóprogram kapcsolta ki.</translation>
    </message>
    <message>
        <source>The background monitor starts when you log in. Click Re-check in Zenlot to go on.</source>
        <translation>A háttérfigyelő bejelentkezéskor elindul. A folytatáshoz kattintson a Zenlotban az Újraellenőrzésre.</translation>
    </message>
    <message>
        <source>Nothing blocks it. Turn it on here, then click Re-check in Zenlot.</source>
        <translation>Semmi sem tiltja. Kapcsolja be itt, majd kattintson a Zenlotban az Újraellenőrzésre.</translation>
    </message>
    <message>
        <source>systemd knows no such service of yours. Either Zenlot is not completely installed, or your session is not run by systemd.</source>
        <translation>A systemd nem ismer ilyen szolgáltatást Önnél. Vagy nincs teljesen telepítve a Zenlot, vagy a munkamenetét nem a systemd futtatja.</translation>
    </message>
    <message>
        <source>Still blocked</source>
        <translation>Továbbra is letiltva</translation>
    </message>
    <message>
        <source>Blocked</source>
        <translation>Letiltva</translation>
    </message>
    <message>
        <source>Allowed</source>
        <translation>Engedélyezve</translation>
    </message>
    <message>
        <source>Still off</source>
        <translation>Továbbra is kikapcsolva</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Kikapcsolva</translation>
    </message>
    <message>
        <source>Still not found</source>
        <translation>Továbbra sem található</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nem található</translation>
    </message>
</context>
<context>
    <name>zenlot::ChildAppService</name>
    <message>
        <source>%1 cannot be run</source>
        <translation>%1 nem futtatható</translation>
    </message>
    <message>
        <source>%1 has ended with a failure again and again</source>
        <translation>%1 többször egymás után hibával állt le</translation>
    </message>
</context>
<context>
    <name>zenlot::ContentViewModel</name>
    <message>
        <source>Enter a port number</source>
        <translation>Adjon meg egy portszámot</translation>
    </message>
    <message>
        <source>Port %1 is free</source>
        <translation>A(z) %1. port szabad</translation>
    </message>
    <message>
        <source>%1 process on port %2</source>
        <translation>%1 folyamat a(z) %2. porton</translation>
    </message>
    <message>
        <source>%1 processes on port %2</source>
        <translation>%1 folyamat a(z) %2. porton</translation>
    </message>
    <message>
        <source>Force-quit %1 (PID %2)? Any unsaved work will be lost.</source>
        <translation>Kényszeríti a bezárását: %1 (PID %2)? A nem mentett munka elvész.</translation>
    </message>
    <message>
        <source>Force Quit %1</source>
        <translation>%1 kényszerített bezárása</translation>
    </message>
    <message>
        <source>Stop %1</source>
        <translation>%1 leállítása</translation>
    </message>
    <message>
        <source>End by Force</source>
        <translation>Kényszerítés</translation>
    </message>
</context>
<context>
    <name>zenlot::PortNotificationManager</name>
    <message>
        <source>Kill Process</source>
        <translation>Folyamat leállítása</translation>
    </message>
    <message>
        <source>Ignore Port</source>
        <translation>Port figyelmen kívül hagyása</translation>
    </message>
    <message>
        <source>Ignore Process</source>
        <translation>Folyamat figyelmen kívül hagyása</translation>
    </message>
    <message>
        <source>Port %1 is already in use</source>
        <translation>A(z) %1. port már foglalt</translation>
    </message>
    <message>
        <source>%1 (PID %2) is blocking port %3 — kill it to free the port.</source>
        <translation>%1 (PID %2) blokkolja a(z) %3. portot – állítsa le a port felszabadításához.</translation>
    </message>
    <message>
        <source>Port %1 is now occupied</source>
        <translation>A(z) %1. port most már foglalt</translation>
    </message>
    <message>
        <source>%1 (PID %2) started listening on port %3</source>
        <translation>%1 (PID %2) figyelni kezdett a(z) %3. porton</translation>
    </message>
    <message>
        <source>%1 is blocking port %2</source>
        <translation>%1 blokkolja a(z) %2. portot</translation>
    </message>
    <message>
        <source>%1 started listening on port %2</source>
        <translation>%1 figyelni kezdett a(z) %2. porton</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Ismeretlen</translation>
    </message>
    <message>
        <source>… and %1 more</source>
        <translation>… és még %1</translation>
    </message>
    <message>
        <source>More ports are already in use. Zenlot shows them all.</source>
        <translation>További portok már foglaltak. A Zenlot mindet megmutatja.</translation>
    </message>
    <message>
        <source>More ports are now occupied. Zenlot shows them all.</source>
        <translation>További portok lettek foglaltak. A Zenlot mindet megmutatja.</translation>
    </message>
    <message>
        <source>Open Zenlot</source>
        <translation>A Zenlot megnyitása</translation>
    </message>
</context>
<context>
    <name>zenlot::ProcessDetailViewModel</name>
    <message>
        <source>Unknown</source>
        <translation>Ismeretlen</translation>
    </message>
    <message>
        <source>Network (%1)</source>
        <translation>Hálózat (%1)</translation>
    </message>
    <message>
        <source>Parent</source>
        <translation>Szülő</translation>
    </message>
    <message>
        <source>PID %1</source>
        <translation>PID %1</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Állapot</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Cím</translation>
    </message>
    <message>
        <source>Started</source>
        <translation>Indítva</translation>
    </message>
    <message>
        <source>Elapsed</source>
        <translation>Eltelt idő</translation>
    </message>
    <message>
        <source>Flags</source>
        <translation>Jelzők</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Memória</translation>
    </message>
    <message>
        <source>Resident</source>
        <translation>Rezidens</translation>
    </message>
    <message>
        <source>Virtual</source>
        <translation>Virtuális</translation>
    </message>
    <message>
        <source>Open FDs</source>
        <translation>Nyitott FD-k</translation>
    </message>
    <message>
        <source>Bundle ID</source>
        <translation>Csomag-ID</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Verzió</translation>
    </message>
    <message>
        <source>Build</source>
        <translation>Build</translation>
    </message>
    <message>
        <source>Average CPU</source>
        <translation>Átlagos CPU</translation>
    </message>
</context>
<context>
    <name>zenlot::ProcessListModel</name>
    <message>
        <source>Unknown</source>
        <translation>Ismeretlen</translation>
    </message>
    <message>
        <source>PID %1</source>
        <translation>PID %1</translation>
    </message>
</context>
<context>
    <name>zenlot::SidebarModel</name>
    <message>
        <source>My Processes</source>
        <translation>Saját folyamatok</translation>
    </message>
    <message>
        <source>System</source>
        <translation>Rendszer</translation>
    </message>
</context>
<context>
    <name>zenlot::StatusMenu</name>
    <message>
        <source>Port number…</source>
        <translation>Portszám…</translation>
    </message>
</context>
<context>
    <name>zenlot::SystemdAppService</name>
    <message>
        <source>%1 cannot be enabled</source>
        <translation>%1 nem engedélyezhető</translation>
    </message>
    <message>
        <source>systemd did not answer in time</source>
        <translation>A systemd nem válaszolt időben</translation>
    </message>
    <message>
        <source>%1 did not start (%2)</source>
        <translation>%1 nem indult el (%2)</translation>
    </message>
    <message>
        <source>%1 has ended with a failure (%2)</source>
        <translation>%1 hibával leállt (%2)</translation>
    </message>
    <message>
        <source>%1 is still enabled</source>
        <translation>%1 továbbra is engedélyezve van</translation>
    </message>
    <message>
        <source>%1 is masked</source>
        <translation>%1 maszkolva van</translation>
    </message>
</context>
<context>
    <name>zenlot::UpdateViewModel</name>
    <message>
        <source>Checking for updates…</source>
        <translation>Frissítések keresése…</translation>
    </message>
    <message>
        <source>Zenlot %1 is available</source>
        <translation>Elérhető a Zenlot %1</translation>
    </message>
    <message>
        <source>Zenlot is up to date</source>
        <translation>A Zenlot naprakész</translation>
    </message>
    <message>
        <source>You have version %1.</source>
        <translation>Az Ön verziója: %1.</translation>
    </message>
    <message>
        <source>Version %1 is the newest release.</source>
        <translation>A legújabb kiadás: %1.</translation>
    </message>
    <message>
        <source>You have version %1, which is ahead of the newest release, %2.</source>
        <translation>Az Ön verziója, a(z) %1, újabb a legutóbbi kiadásnál (%2).</translation>
    </message>
    <message>
        <source>No browser could be opened for this address:</source>
        <translation>Nem sikerült böngészőt nyitni ehhez a címhez:</translation>
    </message>
    <message>
        <source>Released on %1.</source>
        <translation>Megjelent: %1.</translation>
    </message>
    <message>
        <source>This build has no update feed</source>
        <translation>Ennek a buildnek nincs frissítési forrása</translation>
    </message>
    <message>
        <source>Zenlot could not check for updates</source>
        <translation>A Zenlot nem tudott frissítést keresni</translation>
    </message>
    <message>
        <source>You have version %1. New ones come from where you got Zenlot.</source>
        <translation>Az Ön verziója: %1. Az újabbak onnan érkeznek, ahonnan a Zenlotot beszerezte.</translation>
    </message>
    <message>
        <source>The update feed can’t be reached. Check your network connection and try again.</source>
        <translation>A frissítési forrás nem érhető el. Ellenőrizze a hálózati kapcsolatot, és próbálja újra.</translation>
    </message>
    <message>
        <source>The update feed takes too long to answer. Try again later.</source>
        <translation>A frissítési forrás túl lassan válaszol. Próbálja újra később.</translation>
    </message>
    <message>
        <source>No secure connection to the update feed could be made.</source>
        <translation>Nem sikerült biztonságos kapcsolatot létesíteni a frissítési forrással.</translation>
    </message>
    <message>
        <source>The update feed is not available at the moment. Try again later.</source>
        <translation>A frissítési forrás jelenleg nem elérhető. Próbálja újra később.</translation>
    </message>
    <message>
        <source>The answer of the update feed makes no sense. Try again later.</source>
        <translation>A frissítési forrás válasza értelmezhetetlen. Próbálja újra később.</translation>
    </message>
</context>
<context>
    <name>zenlot::AppSettings</name>
    <message>
        <source>Your settings can't be saved at the moment. Zenlot keeps trying.</source>
        <translation>A beállítások most nem menthetők. A Zenlot tovább próbálkozik.</translation>
    </message>
    <message>
        <source>The file with your settings was damaged. What could be read was kept; the old file has “.damaged” in its name.</source>
        <translation>A beállítások fájlja megsérült. Ami olvasható volt, megmaradt; a régi fájl nevében „.damaged” áll.</translation>
    </message>
</context>
<context>
    <name>Notice</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
</TS>
