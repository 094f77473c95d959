<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AppPortGroup</name>
    <message>
        <source>Port %1</source>
        <translation>Port %1</translation>
    </message>
</context>
<context>
    <name>BackgroundItemsContent</name>
    <message>
        <source>Turn On</source>
        <translation>Einschalten</translation>
    </message>
    <message>
        <source>Re-check</source>
        <translation>Erneut prüfen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
</context>
<context>
    <name>BackgroundItemsWindow</name>
    <message>
        <source>Login Items</source>
        <translation>Anmeldeobjekte</translation>
    </message>
</context>
<context>
    <name>CheckPortIntent</name>
    <message>
        <source>Check Port</source>
        <translation>Port prüfen</translation>
    </message>
    <message>
        <source>Port Number</source>
        <translation>Portnummer</translation>
    </message>
    <message>
        <source>A port number between 1 and 65535</source>
        <translation>Eine Portnummer zwischen 1 und 65535</translation>
    </message>
    <message>
        <source>Which port would you like to check?</source>
        <translation>Welchen Port möchten Sie prüfen?</translation>
    </message>
    <message>
        <source>Please enter a valid port number between 1 and 65535.</source>
        <translation>Bitte geben Sie eine gültige Portnummer zwischen 1 und 65535 ein.</translation>
    </message>
    <message>
        <source>Port %1 is free — nothing is using it.</source>
        <translation>Port %1 ist frei – nichts verwendet ihn.</translation>
    </message>
    <message>
        <source>Port %1 is used by: %2</source>
        <translation>Port %1 wird verwendet von: %2</translation>
    </message>
    <message>
        <source>Check a port in %1</source>
        <translation>Port prüfen in %1</translation>
    </message>
    <message>
        <source>What is using a port in %1</source>
        <translation>Was verwendet einen Port in %1</translation>
    </message>
    <message>
        <source>Port lookup in %1</source>
        <translation>Portsuche in %1</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
</context>
<context>
    <name>CollapsibleSection</name>
    <message>
        <source>open</source>
        <translation>geöffnet</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>geschlossen</translation>
    </message>
</context>
<context>
    <name>CommandCard</name>
    <message>
        <source>To allow it, run this in a terminal:</source>
        <translation>Zum Erlauben in einem Terminal ausführen:</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Kopiert</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>ContentView</name>
    <message>
        <source>Toggle Inspector</source>
        <translation>Inspektor ein-/ausblenden</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>Inspektor</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>Stop the server so that it stays stopped</source>
        <translation>Den Server so stoppen, dass er gestoppt bleibt</translation>
    </message>
</context>
<context>
    <name>ExceptionList</name>
    <message>
        <source>Add to %1</source>
        <translation>Hinzufügen zu: %1</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Remove from %1</source>
        <translation>Entfernen aus: %1</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>ExceptionSection</name>
    <message>
        <source>e.g. 3000</source>
        <translation>z.&#xa0;B. 3000</translation>
    </message>
    <message>
        <source>Ignored ports</source>
        <translation>Ignorierte Ports</translation>
    </message>
    <message>
        <source>e.g. python</source>
        <translation>z.&#xa0;B. python</translation>
    </message>
    <message>
        <source>Ignored processes</source>
        <translation>Ignorierte Prozesse</translation>
    </message>
</context>
<context>
    <name>ForceQuitButton</name>
    <message>
        <source>Force Quit</source>
        <translation>Sofort beenden</translation>
    </message>
    <message>
        <source>Force-quit selected process</source>
        <translation>Ausgewählten Prozess sofort beenden</translation>
    </message>
</context>
<context>
    <name>ForceQuitDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Force Quit Process?</source>
        <translation>Prozess sofort beenden?</translation>
    </message>
</context>
<context>
    <name>GeneralTab</name>
    <message>
        <source>Show in menu bar</source>
        <translation>Im Statusbereich anzeigen</translation>
    </message>
    <message>
        <source>Show in Dock</source>
        <translation>In der Fensterleiste anzeigen</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Bei der Anmeldung starten</translation>
    </message>
    <message>
        <source>Keyboard Shortcut</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>⌃⌥⇧P — opens the menu bar popover from anywhere</source>
        <translation>Strg+Alt+Umschalt+P – öffnet Zenlot von überall</translation>
    </message>
    <message>
        <source>Enable global shortcut</source>
        <translation>Globales Tastenkürzel aktivieren</translation>
    </message>
</context>
<context>
    <name>GlobalShortcut</name>
    <message>
        <source>Open Zenlot</source>
        <translation>Zenlot öffnen</translation>
    </message>
</context>
<context>
    <name>InstallError</name>
    <message>
        <source>Zenlot is blocked from running in the background. Open System Settings → General → Login Items &amp; Extensions and turn Zenlot back on under &quot;Allow in the Background&quot;, then click Re-check.</source>
        <translation>Zenlot darf nicht im Hintergrund laufen: Sein Monitor ist bei systemd maskiert. „Anmeldeobjekte öffnen“ zeigt, wie Sie ihn erlauben; klicken Sie dann auf „Erneut prüfen“.</translation>
    </message>
    <message>
        <source>Zenlot is still blocked. Toggle &quot;Allow in the Background&quot; on for Zenlot in System Settings → General → Login Items &amp; Extensions.</source>
        <translation>Zenlot ist weiterhin blockiert. „Anmeldeobjekte öffnen“ zeigt den Befehl, der seinen Monitor freigibt.</translation>
    </message>
</context>
<context>
    <name>LogLines</name>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Unmark Row</source>
        <translation>Zeilenmarkierung aufheben</translation>
    </message>
    <message>
        <source>Mark Row</source>
        <translation>Zeile markieren</translation>
    </message>
</context>
<context>
    <name>LogTabView</name>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Clear log</source>
        <translation>Protokoll leeren</translation>
    </message>
    <message>
        <source>Unmark</source>
        <translation>Markierungen aufheben</translation>
    </message>
    <message>
        <source>Clear marked rows</source>
        <translation>Alle Zeilenmarkierungen aufheben</translation>
    </message>
    <message>
        <source>No log entries yet</source>
        <translation>Noch keine Protokolleinträge</translation>
    </message>
    <message>
        <source>At %1 MB the log begins anew, and one old log is kept beside it.</source>
        <translation>Bei %1 MB beginnt das Protokoll neu; ein altes bleibt daneben liegen.</translation>
    </message>
</context>
<context>
    <name>MonitorPage</name>
    <message>
        <source>Background Monitor</source>
        <translation>Hintergrundüberwachung</translation>
    </message>
    <message>
        <source>A lightweight daemon that watches for port conflicts around the clock — even when Zenlot isn&apos;t running. You&apos;ll be notified the moment a crash blocks your dev server.</source>
        <translation>Ein schlanker Dienst, der rund um die Uhr auf Portkonflikte achtet – auch wenn Zenlot nicht läuft. Sie erfahren es sofort, wenn ein Absturz Ihren Dev-Server blockiert.</translation>
    </message>
    <message>
        <source>Background monitor enabled</source>
        <translation>Hintergrundüberwachung aktiviert</translation>
    </message>
    <message>
        <source>Folytatás</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>Anmeldeobjekte öffnen</translation>
    </message>
    <message>
        <source>I&apos;ve enabled it — re-check</source>
        <translation>Ist aktiviert – erneut prüfen</translation>
    </message>
    <message>
        <source>Skip for now</source>
        <translation>Vorerst überspringen</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>Wird installiert&#xa0;…</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>Aktivieren</translation>
    </message>
</context>
<context>
    <name>ObstacleText</name>
    <message>
        <source>%1 has reserved it without listening.</source>
        <translation>%1 hat ihn belegt, ohne auf ihm zu lauschen.</translation>
    </message>
    <message>
        <source>%1 uses it for a connection to port %2. Some servers can&apos;t have it until that ends.</source>
        <translation>%1 nutzt ihn für eine Verbindung zu Port %2. Manche Server bekommen ihn erst, wenn sie endet.</translation>
    </message>
    <message>
        <source>Its last connection has just ended. Some servers can&apos;t have it for another %1 s.</source>
        <translation>Seine letzte Verbindung ist gerade zu Ende gegangen. Manche Server bekommen ihn erst in %1 s.</translation>
    </message>
    <message>
        <source>The system keeps it for servers that ask for it.</source>
        <translation>Das System hält ihn für Server frei, die nach ihm fragen.</translation>
    </message>
    <message>
        <source>Only privileged programs can have it.</source>
        <translation>Nur privilegierte Programme bekommen ihn.</translation>
    </message>
    <message>
        <source>A process of another user</source>
        <translation>Ein Prozess eines anderen Benutzers</translation>
    </message>
</context>
<context>
    <name>OnboardingWindow</name>
    <message>
        <source>Welcome to Zenlot</source>
        <translation>Willkommen bei Zenlot</translation>
    </message>
</context>
<context>
    <name>OriginNote</name>
    <message>
        <source>%1 (deleted folder)</source>
        <translation>%1 (gelöschter Ordner)</translation>
    </message>
    <message>
        <source>Open to the network</source>
        <translation>Aus dem Netz erreichbar</translation>
    </message>
    <message>
        <source>Perhaps left behind</source>
        <translation>Vielleicht zurückgeblieben</translation>
    </message>
</context>
<context>
    <name>OriginRows</name>
    <message>
        <source>%1, of a user</source>
        <translation>%1, eines Benutzers</translation>
    </message>
    <message>
        <source>%1, of the system</source>
        <translation>%1, des Systems</translation>
    </message>
    <message>
        <source>%1 (IPv6 only)</source>
        <translation>%1 (nur IPv6)</translation>
    </message>
    <message>
        <source>This machine only</source>
        <translation>Nur für diesen Rechner</translation>
    </message>
    <message>
        <source>The network, unless a firewall stops it</source>
        <translation>Das Netz, wenn keine Firewall es verhindert</translation>
    </message>
    <message>
        <source>Everyone who can reach %1, unless a firewall stops them</source>
        <translation>Alle, die %1 erreichen, wenn keine Firewall es verhindert</translation>
    </message>
    <message>
        <source>%1 processes: %2</source>
        <translation>%1 Prozesse: %2</translation>
    </message>
    <message>
        <source>its folder is deleted</source>
        <translation>sein Ordner ist gelöscht</translation>
    </message>
    <message>
        <source>it has no terminal</source>
        <translation>er hat kein Terminal</translation>
    </message>
    <message>
        <source>what started it has ended</source>
        <translation>was ihn gestartet hat, ist beendet</translation>
    </message>
    <message>
        <source>its session is over</source>
        <translation>seine Sitzung ist vorbei</translation>
    </message>
    <message>
        <source>nobody is connected</source>
        <translation>niemand ist verbunden</translation>
    </message>
    <message>
        <source>Perhaps: %1</source>
        <translation>Vielleicht: %1</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Commit</source>
        <translation>Commit</translation>
    </message>
    <message>
        <source>Branch</source>
        <translation>Branch</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>%1 (deleted)</source>
        <translation>%1 (gelöscht)</translation>
    </message>
    <message>
        <source>Runs</source>
        <translation>Führt aus</translation>
    </message>
    <message>
        <source>Command line</source>
        <translation>Befehlszeile</translation>
    </message>
    <message>
        <source>Started by</source>
        <translation>Gestartet von</translation>
    </message>
    <message>
        <source>Container</source>
        <translation>Container</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>Service</source>
        <translation>Dienst</translation>
    </message>
    <message>
        <source>Its port</source>
        <translation>Sein Port</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Unit</translation>
    </message>
    <message>
        <source>Socket</source>
        <translation>Socket</translation>
    </message>
    <message>
        <source>Listens on</source>
        <translation>Lauscht auf</translation>
    </message>
    <message>
        <source>Open to</source>
        <translation>Offen für</translation>
    </message>
    <message>
        <source>Shared by</source>
        <translation>Geteilt von</translation>
    </message>
    <message>
        <source>Clients</source>
        <translation>Clients</translation>
    </message>
    <message>
        <source>Left behind</source>
        <translation>Zurückgeblieben</translation>
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
        <translation>Port kopieren</translation>
    </message>
    <message>
        <source>Copy PID</source>
        <translation>PID kopieren</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>Pfad kopieren</translation>
    </message>
    <message>
        <source>Show Details</source>
        <translation>Details anzeigen</translation>
    </message>
    <message>
        <source>Force Quit…</source>
        <translation>Sofort beenden …</translation>
    </message>
</context>
<context>
    <name>PortMonitoringTab</name>
    <message>
        <source>Show a notification whenever any new process starts listening on a port</source>
        <translation>Zeigt eine Mitteilung, sobald ein neuer Prozess an einem Port lauscht</translation>
    </message>
    <message>
        <source>Notify on all port activity</source>
        <translation>Bei jeder Portaktivität benachrichtigen</translation>
    </message>
    <message>
        <source>Monitors dev runtimes in the background and notifies you when a port conflict is detected. Runs automatically at login.</source>
        <translation>Überwacht Entwicklungsserver im Hintergrund und benachrichtigt Sie bei einem Portkonflikt. Startet automatisch bei der Anmeldung.</translation>
    </message>
    <message>
        <source>Conflict Monitoring</source>
        <translation>Konfliktüberwachung</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>Anmeldeobjekte öffnen</translation>
    </message>
    <message>
        <source>I&apos;ve enabled it — re-check</source>
        <translation>Ist aktiviert – erneut prüfen</translation>
    </message>
    <message>
        <source>Port Activity Exceptions</source>
        <translation>Ausnahmen für Portaktivität</translation>
    </message>
    <message>
        <source>Conflict Monitoring Exceptions</source>
        <translation>Ausnahmen für Konfliktüberwachung</translation>
    </message>
    <message>
        <source>The system tells of refused ports exactly.</source>
        <translation>Das System meldet verweigerte Ports genau.</translation>
    </message>
    <message>
        <source>For exact alerts an administrator turns on the helper of the system: %1</source>
        <translation>Für genaue Hinweise schaltet ein Administrator den Helfer des Systems ein: %1</translation>
    </message>
</context>
<context>
    <name>ProcessDetailContent</name>
    <message>
        <source>Identity</source>
        <translation>Identität</translation>
    </message>
    <message>
        <source>Resources</source>
        <translation>Ressourcen</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Projekt</translation>
    </message>
    <message>
        <source>Origin</source>
        <translation>Herkunft</translation>
    </message>
</context>
<context>
    <name>ProcessDetailPanel</name>
    <message>
        <source>Inspector</source>
        <translation>Inspektor</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Wird geladen&#xa0;…</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Port Monitoring</source>
        <translation>Portüberwachung</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Scanning…</source>
        <translation>Suche läuft&#xa0;…</translation>
    </message>
    <message>
        <source>No listening ports</source>
        <translation>Keine offenen Ports</translation>
    </message>
    <message>
        <source>Listening ports</source>
        <translation>Offene Ports</translation>
    </message>
</context>
<context>
    <name>SidebarRow</name>
    <message>
        <source>open</source>
        <translation>geöffnet</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>geschlossen</translation>
    </message>
</context>
<context>
    <name>StopDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Stop the Server?</source>
        <translation>Server stoppen?</translation>
    </message>
</context>
<context>
    <name>StopText</name>
    <message>
        <source>Stops container %1.</source>
        <translation>Stoppt den Container %1.</translation>
    </message>
    <message>
        <source>Stops container %1 of compose project %2.</source>
        <translation>Stoppt den Container %1 des Compose-Projekts %2.</translation>
    </message>
    <message>
        <source>%1 is a program that people work in or that the session needs; it is not stopped for a port.</source>
        <translation>In %1 arbeitet jemand, oder die Sitzung braucht es; es wird nicht für einen Port gestoppt.</translation>
    </message>
    <message>
        <source>It belongs to another user, and to no service or container that could be stopped.</source>
        <translation>Es gehört einem anderen Benutzer, und zu keinem Dienst oder Container, der sich stoppen ließe.</translation>
    </message>
    <message>
        <source>Nobody can tell what would have to be stopped.</source>
        <translation>Was zu stoppen wäre, ist nicht festzustellen.</translation>
    </message>
    <message>
        <source>Stops %1, one of your services.</source>
        <translation>Stoppt %1, einen Ihrer Dienste.</translation>
    </message>
    <message>
        <source>Stops %1, a service of the system.</source>
        <translation>Stoppt %1, einen Dienst des Systems.</translation>
    </message>
    <message>
        <source>Stops %1 (PID %2).</source>
        <translation>Stoppt %1 (PID %2).</translation>
    </message>
    <message>
        <source>Stops %1 (PID %2), which started the server on port %3.</source>
        <translation>Stoppt %1 (PID %2), was den Server auf Port %3 gestartet hat.</translation>
    </message>
    <message>
        <source>1 client is connected.</source>
        <translation>1 Client ist verbunden.</translation>
    </message>
    <message>
        <source>%1 clients are connected.</source>
        <translation>%1 Clients sind verbunden.</translation>
    </message>
    <message>
        <source>Ports that go with it: %1.</source>
        <translation>Ports, die mitgehen: %1.</translation>
    </message>
    <message>
        <source>%1 may start it again.</source>
        <translation>%1 startet ihn vielleicht wieder.</translation>
    </message>
    <message>
        <source>%1 has been asked to end and still holds port %2. End it by force?</source>
        <translation>%1 wurde gebeten, sich zu beenden, und hält Port %2 noch. Mit Gewalt beenden?</translation>
    </message>
    <message>
        <source>another process</source>
        <translation>ein anderer Prozess</translation>
    </message>
    <message>
        <source>%1 has ended, and %2 has taken port %3 again.</source>
        <translation>%1 ist beendet, und %2 hat Port %3 wieder belegt.</translation>
    </message>
    <message>
        <source>%1 could not be stopped: %2</source>
        <translation>%1 ließ sich nicht stoppen: %2</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Software Update</source>
        <translation>Softwareupdate</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Release Notes</source>
        <translation>Versionshinweise</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
</context>
<context>
    <name>WelcomePage</name>
    <message>
        <source>Welcome to Zenlot</source>
        <translation>Willkommen bei Zenlot</translation>
    </message>
    <message>
        <source>Zenlot watches your network ports so you always know what&apos;s running — and what&apos;s blocking what.</source>
        <translation>Zenlot behält Ihre Netzwerkports im Blick – so wissen Sie immer, was läuft und wer wen blockiert.</translation>
    </message>
    <message>
        <source>Type any port number to see which process is using it.</source>
        <translation>Portnummer eingeben und sehen, welcher Prozess sie nutzt.</translation>
    </message>
    <message>
        <source>Instant port lookup</source>
        <translation>Sofortige Portsuche</translation>
    </message>
    <message>
        <source>Get notified when a dev server can&apos;t start because a port is taken.</source>
        <translation>Mitteilung, wenn ein Dev-Server nicht startet, weil ein Port belegt ist.</translation>
    </message>
    <message>
        <source>Conflict notifications</source>
        <translation>Mitteilungen bei Konflikten</translation>
    </message>
    <message>
        <source>Free up a blocked port without opening Terminal.</source>
        <translation>Einen blockierten Port ohne Terminal freigeben.</translation>
    </message>
    <message>
        <source>One-click force quit</source>
        <translation>Sofort beenden per Klick</translation>
    </message>
    <message>
        <source>Folytatás</source>
        <translation>Weiter</translation>
    </message>
</context>
<context>
    <name>zenlot::AppDelegate</name>
    <message>
        <source>Open Zenlot</source>
        <translation>Zenlot öffnen</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Einstellungen&#xa0;…</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Updates suchen&#xa0;…</translation>
    </message>
    <message>
        <source>Quit Zenlot</source>
        <translation>Zenlot beenden</translation>
    </message>
    <message>
        <source>Port number…</source>
        <translation>Portnummer&#xa0;…</translation>
    </message>
    <message>
        <source>Port %1 blocked by %2</source>
        <translation>Port %1 von %2 blockiert</translation>
    </message>
    <message>
        <source>Conflict</source>
        <translation>Konflikt</translation>
    </message>
    <message>
        <source>Kill %1</source>
        <translation>%1 sofort beenden</translation>
    </message>
    <message>
        <source>Ignore Port %1</source>
        <translation>Port %1 ignorieren</translation>
    </message>
    <message>
        <source>Ignore %1</source>
        <translation>%1 ignorieren</translation>
    </message>
    <message>
        <source>Clear Conflict Indicator</source>
        <translation>Konfliktanzeige zurücksetzen</translation>
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
        <translation>Zenlot darf nicht im Hintergrund laufen</translation>
    </message>
    <message>
        <source>Zenlot may run in the background</source>
        <translation>Zenlot darf im Hintergrund laufen</translation>
    </message>
    <message>
        <source>Zenlot&apos;s background monitor is turned off</source>
        <translation>Die Hintergrundüberwachung ist ausgeschaltet</translation>
    </message>
    <message>
        <source>Zenlot&apos;s background monitor was not found</source>
        <translation>Die Hintergrundüberwachung wurde nicht gefunden</translation>
    </message>
    <message>
        <source>The background monitor is masked, so systemd refuses to start it. You, an administrator or a clean-up tool may have switched it off.</source>
        <translation>Die Hintergrundüberwachung ist maskiert, daher startet systemd sie nicht. Möglicherweise haben Sie, ein Administrator oder ein Aufräumprogramm sie abgeschaltet.</translation>
    </message>
    <message>
        <source>The background monitor starts when you log in. Click Re-check in Zenlot to go on.</source>
        <translation>Die Hintergrundüberwachung startet bei der Anmeldung. Klicken Sie in Zenlot auf „Erneut prüfen“, um fortzufahren.</translation>
    </message>
    <message>
        <source>Nothing blocks it. Turn it on here, then click Re-check in Zenlot.</source>
        <translation>Nichts blockiert sie. Schalten Sie sie hier ein und klicken Sie dann in Zenlot auf „Erneut prüfen“.</translation>
    </message>
    <message>
        <source>systemd knows no such service of yours. Either Zenlot is not completely installed, or your session is not run by systemd.</source>
        <translation>systemd kennt keinen solchen Dienst von Ihnen. Entweder ist Zenlot nicht vollständig installiert oder Ihre Sitzung wird nicht von systemd verwaltet.</translation>
    </message>
    <message>
        <source>Still blocked</source>
        <translation>Weiterhin blockiert</translation>
    </message>
    <message>
        <source>Blocked</source>
        <translation>Blockiert</translation>
    </message>
    <message>
        <source>Allowed</source>
        <translation>Erlaubt</translation>
    </message>
    <message>
        <source>Still off</source>
        <translation>Weiterhin aus</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Still not found</source>
        <translation>Weiterhin nicht gefunden</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
</context>
<context>
    <name>zenlot::ChildAppService</name>
    <message>
        <source>%1 cannot be run</source>
        <translation>%1 kann nicht ausgeführt werden</translation>
    </message>
    <message>
        <source>%1 has ended with a failure again and again</source>
        <translation>%1 wurde immer wieder mit einem Fehler beendet</translation>
    </message>
</context>
<context>
    <name>zenlot::ContentViewModel</name>
    <message>
        <source>Enter a port number</source>
        <translation>Portnummer eingeben</translation>
    </message>
    <message>
        <source>Port %1 is free</source>
        <translation>Port %1 ist frei</translation>
    </message>
    <message>
        <source>%1 process on port %2</source>
        <translation>%1 Prozess an Port %2</translation>
    </message>
    <message>
        <source>%1 processes on port %2</source>
        <translation>%1 Prozesse an Port %2</translation>
    </message>
    <message>
        <source>Force-quit %1 (PID %2)? Any unsaved work will be lost.</source>
        <translation>%1 (PID %2) sofort beenden? Nicht gesicherte Arbeit geht verloren.</translation>
    </message>
    <message>
        <source>Force Quit %1</source>
        <translation>%1 sofort beenden</translation>
    </message>
    <message>
        <source>Stop %1</source>
        <translation>%1 stoppen</translation>
    </message>
    <message>
        <source>End by Force</source>
        <translation>Erzwingen</translation>
    </message>
</context>
<context>
    <name>zenlot::PortNotificationManager</name>
    <message>
        <source>Kill Process</source>
        <translation>Prozess beenden</translation>
    </message>
    <message>
        <source>Ignore Port</source>
        <translation>Port ignorieren</translation>
    </message>
    <message>
        <source>Ignore Process</source>
        <translation>Prozess ignorieren</translation>
    </message>
    <message>
        <source>Port %1 is already in use</source>
        <translation>Port %1 ist bereits belegt</translation>
    </message>
    <message>
        <source>%1 (PID %2) is blocking port %3 — kill it to free the port.</source>
        <translation>%1 (PID %2) blockiert Port %3 – beenden Sie den Prozess, um den Port freizugeben.</translation>
    </message>
    <message>
        <source>Port %1 is now occupied</source>
        <translation>Port %1 ist jetzt belegt</translation>
    </message>
    <message>
        <source>%1 (PID %2) started listening on port %3</source>
        <translation>%1 (PID %2) lauscht jetzt an Port %3</translation>
    </message>
    <message>
        <source>%1 is blocking port %2</source>
        <translation>%1 blockiert Port %2</translation>
    </message>
    <message>
        <source>%1 started listening on port %2</source>
        <translation>%1 lauscht jetzt an Port %2</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>… and %1 more</source>
        <translation>… und %1 weitere</translation>
    </message>
    <message>
        <source>More ports are already in use. Zenlot shows them all.</source>
        <translation>Weitere Ports sind bereits belegt. Zenlot zeigt sie alle.</translation>
    </message>
    <message>
        <source>More ports are now occupied. Zenlot shows them all.</source>
        <translation>Weitere Ports sind jetzt belegt. Zenlot zeigt sie alle.</translation>
    </message>
    <message>
        <source>Open Zenlot</source>
        <translation>Zenlot öffnen</translation>
    </message>
</context>
<context>
    <name>zenlot::ProcessDetailViewModel</name>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>Network (%1)</source>
        <translation>Netzwerk (%1)</translation>
    </message>
    <message>
        <source>Parent</source>
        <translation>Elternprozess</translation>
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
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Started</source>
        <translation>Gestartet</translation>
    </message>
    <message>
        <source>Elapsed</source>
        <translation>Laufzeit</translation>
    </message>
    <message>
        <source>Flags</source>
        <translation>Flags</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Speicher</translation>
    </message>
    <message>
        <source>Resident</source>
        <translation>Resident</translation>
    </message>
    <message>
        <source>Virtual</source>
        <translation>Virtuell</translation>
    </message>
    <message>
        <source>Open FDs</source>
        <translation>Offene FDs</translation>
    </message>
    <message>
        <source>Bundle ID</source>
        <translation>Bundle-ID</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Build</source>
        <translation>Build</translation>
    </message>
    <message>
        <source>Average CPU</source>
        <translation>CPU im Mittel</translation>
    </message>
</context>
<context>
    <name>zenlot::ProcessListModel</name>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
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
        <translation>Meine Prozesse</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
</context>
<context>
    <name>zenlot::StatusMenu</name>
    <message>
        <source>Port number…</source>
        <translation>Portnummer&#xa0;…</translation>
    </message>
</context>
<context>
    <name>zenlot::SystemdAppService</name>
    <message>
        <source>%1 cannot be enabled</source>
        <translation>%1 kann nicht aktiviert werden</translation>
    </message>
    <message>
        <source>systemd did not answer in time</source>
        <translation>systemd hat nicht rechtzeitig geantwortet</translation>
    </message>
    <message>
        <source>%1 did not start (%2)</source>
        <translation>%1 wurde nicht gestartet (%2)</translation>
    </message>
    <message>
        <source>%1 has ended with a failure (%2)</source>
        <translation>%1 ist mit einem Fehler beendet worden (%2)</translation>
    </message>
    <message>
        <source>%1 is still enabled</source>
        <translation>%1 ist weiterhin aktiviert</translation>
    </message>
    <message>
        <source>%1 is masked</source>
        <translation>%1 ist maskiert</translation>
    </message>
</context>
<context>
    <name>zenlot::UpdateViewModel</name>
    <message>
        <source>Checking for updates…</source>
        <translation>Suche nach Updates&#xa0;…</translation>
    </message>
    <message>
        <source>Zenlot %1 is available</source>
        <translation>Zenlot %1 ist verfügbar</translation>
    </message>
    <message>
        <source>Zenlot is up to date</source>
        <translation>Zenlot ist aktuell</translation>
    </message>
    <message>
        <source>You have version %1.</source>
        <translation>Sie haben Version %1.</translation>
    </message>
    <message>
        <source>Version %1 is the newest release.</source>
        <translation>Version %1 ist die neueste.</translation>
    </message>
    <message>
        <source>You have version %1, which is ahead of the newest release, %2.</source>
        <translation>Sie haben Version %1; sie ist neuer als die letzte Veröffentlichung, %2.</translation>
    </message>
    <message>
        <source>No browser could be opened for this address:</source>
        <translation>Für diese Adresse konnte kein Browser geöffnet werden:</translation>
    </message>
    <message>
        <source>Released on %1.</source>
        <translation>Veröffentlicht: %1.</translation>
    </message>
    <message>
        <source>This build has no update feed</source>
        <translation>Dieser Build kennt keine Update-Quelle</translation>
    </message>
    <message>
        <source>Zenlot could not check for updates</source>
        <translation>Zenlot konnte nicht nach Updates suchen</translation>
    </message>
    <message>
        <source>You have version %1. New ones come from where you got Zenlot.</source>
        <translation>Sie haben Version %1. Neue gibt es dort, woher Sie Zenlot haben.</translation>
    </message>
    <message>
        <source>The update feed can’t be reached. Check your network connection and try again.</source>
        <translation>Die Update-Quelle ist nicht erreichbar. Prüfen Sie die Netzwerkverbindung und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The update feed takes too long to answer. Try again later.</source>
        <translation>Die Update-Quelle antwortet nicht rechtzeitig. Versuchen Sie es später erneut.</translation>
    </message>
    <message>
        <source>No secure connection to the update feed could be made.</source>
        <translation>Es konnte keine sichere Verbindung zur Update-Quelle hergestellt werden.</translation>
    </message>
    <message>
        <source>The update feed is not available at the moment. Try again later.</source>
        <translation>Die Update-Quelle ist gerade nicht verfügbar. Versuchen Sie es später erneut.</translation>
    </message>
    <message>
        <source>The answer of the update feed makes no sense. Try again later.</source>
        <translation>Die Antwort der Update-Quelle ergibt keinen Sinn. Versuchen Sie es später erneut.</translation>
    </message>
</context>
<context>
    <name>zenlot::AppSettings</name>
    <message>
        <source>Your settings can't be saved at the moment. Zenlot keeps trying.</source>
        <translation>Ihre Einstellungen lassen sich gerade nicht speichern. Zenlot versucht es weiter.</translation>
    </message>
    <message>
        <source>The file with your settings was damaged. What could be read was kept; the old file has “.damaged” in its name.</source>
        <translation>Die Datei mit Ihren Einstellungen war beschädigt. Was lesbar war, ist erhalten; die alte Datei hat „.damaged“ im Namen.</translation>
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
