<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
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
        <translation>Activer</translation>
    </message>
    <message>
        <source>Re-check</source>
        <translation>Revérifier</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Terminé</translation>
    </message>
</context>
<context>
    <name>BackgroundItemsWindow</name>
    <message>
        <source>Login Items</source>
        <translation>Ouverture à la connexion</translation>
    </message>
</context>
<context>
    <name>CheckPortIntent</name>
    <message>
        <source>Check Port</source>
        <translation>Vérifier un port</translation>
    </message>
    <message>
        <source>Port Number</source>
        <translation>Numéro de port</translation>
    </message>
    <message>
        <source>A port number between 1 and 65535</source>
        <translation>Un numéro de port entre 1 et 65535</translation>
    </message>
    <message>
        <source>Which port would you like to check?</source>
        <translation>Quel port souhaitez-vous vérifier&#xa0;?</translation>
    </message>
    <message>
        <source>Please enter a valid port number between 1 and 65535.</source>
        <translation>Veuillez saisir un numéro de port valide, entre 1 et 65535.</translation>
    </message>
    <message>
        <source>Port %1 is free — nothing is using it.</source>
        <translation>Le port %1 est libre – rien ne l’utilise.</translation>
    </message>
    <message>
        <source>Port %1 is used by: %2</source>
        <translation>Le port %1 est utilisé par&#xa0;: %2</translation>
    </message>
    <message>
        <source>Check a port in %1</source>
        <translation>Vérifier un port dans %1</translation>
    </message>
    <message>
        <source>What is using a port in %1</source>
        <translation>Qu’est-ce qui utilise un port dans %1</translation>
    </message>
    <message>
        <source>Port lookup in %1</source>
        <translation>Recherche de port dans %1</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Inconnu</translation>
    </message>
</context>
<context>
    <name>CollapsibleSection</name>
    <message>
        <source>open</source>
        <translation>ouvert</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>fermé</translation>
    </message>
</context>
<context>
    <name>CommandCard</name>
    <message>
        <source>To allow it, run this in a terminal:</source>
        <translation>Pour l’autoriser, exécutez ceci dans un terminal&#xa0;:</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Copié</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Commande</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>ContentView</name>
    <message>
        <source>Toggle Inspector</source>
        <translation>Afficher/masquer l’inspecteur</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>Inspecteur</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menu</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Stop the server so that it stays stopped</source>
        <translation>Arrêter le serveur pour qu’il le reste</translation>
    </message>
</context>
<context>
    <name>ExceptionList</name>
    <message>
        <source>Add to %1</source>
        <translation>Ajouter à&#xa0;: %1</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Ajouter</translation>
    </message>
    <message>
        <source>Remove from %1</source>
        <translation>Retirer de&#xa0;: %1</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Retirer</translation>
    </message>
</context>
<context>
    <name>ExceptionSection</name>
    <message>
        <source>e.g. 3000</source>
        <translation>p. ex. 3000</translation>
    </message>
    <message>
        <source>Ignored ports</source>
        <translation>Ports ignorés</translation>
    </message>
    <message>
        <source>e.g. python</source>
        <translation>p. ex. python</translation>
    </message>
    <message>
        <source>Ignored processes</source>
        <translation>Processus ignorés</translation>
    </message>
</context>
<context>
    <name>ForceQuitButton</name>
    <message>
        <source>Force Quit</source>
        <translation>Forcer à quitter</translation>
    </message>
    <message>
        <source>Force-quit selected process</source>
        <translation>Forcer le processus sélectionné à quitter</translation>
    </message>
</context>
<context>
    <name>ForceQuitDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Force Quit Process?</source>
        <translation>Forcer le processus à quitter&#xa0;?</translation>
    </message>
</context>
<context>
    <name>GeneralTab</name>
    <message>
        <source>Show in menu bar</source>
        <translation>Afficher dans la zone de notification</translation>
    </message>
    <message>
        <source>Show in Dock</source>
        <translation>Afficher dans la barre des tâches</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Lancer à la connexion</translation>
    </message>
    <message>
        <source>Keyboard Shortcut</source>
        <translation>Raccourci clavier</translation>
    </message>
    <message>
        <source>⌃⌥⇧P — opens the menu bar popover from anywhere</source>
        <translation>Ctrl+Alt+Maj+P — ouvre Zenlot depuis n’importe où</translation>
    </message>
    <message>
        <source>Enable global shortcut</source>
        <translation>Activer le raccourci global</translation>
    </message>
</context>
<context>
    <name>GlobalShortcut</name>
    <message>
        <source>Open Zenlot</source>
        <translation>Ouvrir Zenlot</translation>
    </message>
</context>
<context>
    <name>InstallError</name>
    <message>
        <source>Zenlot is blocked from running in the background. Open System Settings → General → Login Items &amp; Extensions and turn Zenlot back on under &quot;Allow in the Background&quot;, then click Re-check.</source>
        <translation>Zenlot ne peut pas fonctionner en arrière-plan : son moniteur est masqué dans systemd. « Ouvrir les réglages d’ouverture » montre comment l’autoriser ; cliquez ensuite sur « Revérifier ».</translation>
    </message>
    <message>
        <source>Zenlot is still blocked. Toggle &quot;Allow in the Background&quot; on for Zenlot in System Settings → General → Login Items &amp; Extensions.</source>
        <translation>Zenlot est toujours bloqué. « Ouvrir les réglages d’ouverture » montre la commande qui démasque son moniteur.</translation>
    </message>
</context>
<context>
    <name>LogLines</name>
    <message>
        <source>Log</source>
        <translation>Journal</translation>
    </message>
    <message>
        <source>Unmark Row</source>
        <translation>Retirer la marque de la ligne</translation>
    </message>
    <message>
        <source>Mark Row</source>
        <translation>Marquer la ligne</translation>
    </message>
</context>
<context>
    <name>LogTabView</name>
    <message>
        <source>Clear</source>
        <translation>Effacer</translation>
    </message>
    <message>
        <source>Clear log</source>
        <translation>Effacer le journal</translation>
    </message>
    <message>
        <source>Unmark</source>
        <translation>Retirer les marques</translation>
    </message>
    <message>
        <source>Clear marked rows</source>
        <translation>Retirer les marques de toutes les lignes</translation>
    </message>
    <message>
        <source>No log entries yet</source>
        <translation>Aucune entrée dans le journal</translation>
    </message>
    <message>
        <source>At %1 MB the log begins anew, and one old log is kept beside it.</source>
        <translation>À %1 Mo, le journal recommence et un ancien est conservé à côté.</translation>
    </message>
</context>
<context>
    <name>MonitorPage</name>
    <message>
        <source>Background Monitor</source>
        <translation>Surveillance en arrière-plan</translation>
    </message>
    <message>
        <source>A lightweight daemon that watches for port conflicts around the clock — even when Zenlot isn&apos;t running. You&apos;ll be notified the moment a crash blocks your dev server.</source>
        <translation>Un service léger qui guette les conflits de ports en continu – même quand Zenlot n’est pas lancé. Vous êtes averti dès qu’un plantage bloque votre serveur de développement.</translation>
    </message>
    <message>
        <source>Background monitor enabled</source>
        <translation>Surveillance en arrière-plan activée</translation>
    </message>
    <message>
        <source>Folytatás</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>Ouvrir les réglages d’ouverture</translation>
    </message>
    <message>
        <source>I&apos;ve enabled it — re-check</source>
        <translation>C’est activé – revérifier</translation>
    </message>
    <message>
        <source>Skip for now</source>
        <translation>Ignorer pour l’instant</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>Installation…</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>Activer</translation>
    </message>
</context>
<context>
    <name>ObstacleText</name>
    <message>
        <source>%1 has reserved it without listening.</source>
        <translation>%1 l’a réservé sans y écouter.</translation>
    </message>
    <message>
        <source>%1 uses it for a connection to port %2. Some servers can&apos;t have it until that ends.</source>
        <translation>%1 l’utilise pour une connexion au port %2. Certains serveurs ne peuvent pas l’avoir avant qu’elle se termine.</translation>
    </message>
    <message>
        <source>Its last connection has just ended. Some servers can&apos;t have it for another %1 s.</source>
        <translation>Sa dernière connexion vient de se terminer. Certains serveurs ne peuvent pas l’avoir avant %1 s.</translation>
    </message>
    <message>
        <source>The system keeps it for servers that ask for it.</source>
        <translation>Le système le garde pour les serveurs qui le demandent.</translation>
    </message>
    <message>
        <source>Only privileged programs can have it.</source>
        <translation>Seuls les programmes privilégiés peuvent l’avoir.</translation>
    </message>
    <message>
        <source>A process of another user</source>
        <translation>Un processus d’un autre utilisateur</translation>
    </message>
</context>
<context>
    <name>OnboardingWindow</name>
    <message>
        <source>Welcome to Zenlot</source>
        <translation>Bienvenue dans Zenlot</translation>
    </message>
</context>
<context>
    <name>OriginNote</name>
    <message>
        <source>%1 (deleted folder)</source>
        <translation>%1 (dossier supprimé)</translation>
    </message>
    <message>
        <source>Open to the network</source>
        <translation>Ouvert au réseau</translation>
    </message>
    <message>
        <source>Perhaps left behind</source>
        <translation>Peut-être oublié</translation>
    </message>
</context>
<context>
    <name>OriginRows</name>
    <message>
        <source>%1, of a user</source>
        <translation>%1, d’un utilisateur</translation>
    </message>
    <message>
        <source>%1, of the system</source>
        <translation>%1, du système</translation>
    </message>
    <message>
        <source>%1 (IPv6 only)</source>
        <translation>%1 (IPv6 seulement)</translation>
    </message>
    <message>
        <source>This machine only</source>
        <translation>Cette machine uniquement</translation>
    </message>
    <message>
        <source>The network, unless a firewall stops it</source>
        <translation>Le réseau, sauf si un pare-feu l’empêche</translation>
    </message>
    <message>
        <source>Everyone who can reach %1, unless a firewall stops them</source>
        <translation>Quiconque peut joindre %1, sauf si un pare-feu l’empêche</translation>
    </message>
    <message>
        <source>%1 processes: %2</source>
        <translation>%1 processus : %2</translation>
    </message>
    <message>
        <source>its folder is deleted</source>
        <translation>son dossier est supprimé</translation>
    </message>
    <message>
        <source>it has no terminal</source>
        <translation>il n’a pas de terminal</translation>
    </message>
    <message>
        <source>what started it has ended</source>
        <translation>ce qui l’a lancé est terminé</translation>
    </message>
    <message>
        <source>its session is over</source>
        <translation>sa session est terminée</translation>
    </message>
    <message>
        <source>nobody is connected</source>
        <translation>personne n’est connecté</translation>
    </message>
    <message>
        <source>Perhaps: %1</source>
        <translation>Peut-être : %1</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>Commit</source>
        <translation>Commit</translation>
    </message>
    <message>
        <source>Branch</source>
        <translation>Branche</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Dossier</translation>
    </message>
    <message>
        <source>%1 (deleted)</source>
        <translation>%1 (supprimé)</translation>
    </message>
    <message>
        <source>Runs</source>
        <translation>Exécute</translation>
    </message>
    <message>
        <source>Command line</source>
        <translation>Ligne de commande</translation>
    </message>
    <message>
        <source>Started by</source>
        <translation>Lancé par</translation>
    </message>
    <message>
        <source>Container</source>
        <translation>Conteneur</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>Service</source>
        <translation>Service</translation>
    </message>
    <message>
        <source>Its port</source>
        <translation>Son port</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Unité</translation>
    </message>
    <message>
        <source>Socket</source>
        <translation>Socket</translation>
    </message>
    <message>
        <source>Listens on</source>
        <translation>Écoute sur</translation>
    </message>
    <message>
        <source>Open to</source>
        <translation>Ouvert à</translation>
    </message>
    <message>
        <source>Shared by</source>
        <translation>Partagé par</translation>
    </message>
    <message>
        <source>Clients</source>
        <translation>Clients</translation>
    </message>
    <message>
        <source>Left behind</source>
        <translation>Oublié</translation>
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
        <translation>Copier le port</translation>
    </message>
    <message>
        <source>Copy PID</source>
        <translation>Copier le PID</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>Copier le chemin</translation>
    </message>
    <message>
        <source>Show Details</source>
        <translation>Afficher les détails</translation>
    </message>
    <message>
        <source>Force Quit…</source>
        <translation>Forcer à quitter…</translation>
    </message>
</context>
<context>
    <name>PortMonitoringTab</name>
    <message>
        <source>Show a notification whenever any new process starts listening on a port</source>
        <translation>Afficher une notification dès qu’un nouveau processus se met à l’écoute d’un port</translation>
    </message>
    <message>
        <source>Notify on all port activity</source>
        <translation>Signaler toute activité des ports</translation>
    </message>
    <message>
        <source>Monitors dev runtimes in the background and notifies you when a port conflict is detected. Runs automatically at login.</source>
        <translation>Surveille les environnements de développement en arrière-plan et vous avertit en cas de conflit de ports. Démarre automatiquement à la connexion.</translation>
    </message>
    <message>
        <source>Conflict Monitoring</source>
        <translation>Surveillance des conflits</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>Ouvrir les réglages d’ouverture</translation>
    </message>
    <message>
        <source>I&apos;ve enabled it — re-check</source>
        <translation>C’est activé – revérifier</translation>
    </message>
    <message>
        <source>Port Activity Exceptions</source>
        <translation>Exceptions pour l’activité des ports</translation>
    </message>
    <message>
        <source>Conflict Monitoring Exceptions</source>
        <translation>Exceptions pour la surveillance des conflits</translation>
    </message>
    <message>
        <source>The system tells of refused ports exactly.</source>
        <translation>Le système signale exactement les ports refusés.</translation>
    </message>
    <message>
        <source>For exact alerts an administrator turns on the helper of the system: %1</source>
        <translation>Pour des alertes exactes, un administrateur active l’assistant du système : %1</translation>
    </message>
</context>
<context>
    <name>ProcessDetailContent</name>
    <message>
        <source>Identity</source>
        <translation>Identité</translation>
    </message>
    <message>
        <source>Resources</source>
        <translation>Ressources</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>Application</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Commande</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Projet</translation>
    </message>
    <message>
        <source>Origin</source>
        <translation>Origine</translation>
    </message>
</context>
<context>
    <name>ProcessDetailPanel</name>
    <message>
        <source>Inspector</source>
        <translation>Inspecteur</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Chargement…</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Général</translation>
    </message>
    <message>
        <source>Port Monitoring</source>
        <translation>Surveillance des ports</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Journal</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Refresh</source>
        <translation>Actualiser</translation>
    </message>
    <message>
        <source>Scanning…</source>
        <translation>Analyse…</translation>
    </message>
    <message>
        <source>No listening ports</source>
        <translation>Aucun port à l’écoute</translation>
    </message>
    <message>
        <source>Listening ports</source>
        <translation>Ports à l’écoute</translation>
    </message>
</context>
<context>
    <name>SidebarRow</name>
    <message>
        <source>open</source>
        <translation>ouvert</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>fermé</translation>
    </message>
</context>
<context>
    <name>StopDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Stop the Server?</source>
        <translation>Arrêter le serveur ?</translation>
    </message>
</context>
<context>
    <name>StopText</name>
    <message>
        <source>Stops container %1.</source>
        <translation>Arrête le conteneur %1.</translation>
    </message>
    <message>
        <source>Stops container %1 of compose project %2.</source>
        <translation>Arrête le conteneur %1 du projet compose %2.</translation>
    </message>
    <message>
        <source>%1 is a program that people work in or that the session needs; it is not stopped for a port.</source>
        <translation>%1 est un programme de travail ou nécessaire à la session ; il n’est pas arrêté pour un port.</translation>
    </message>
    <message>
        <source>It belongs to another user, and to no service or container that could be stopped.</source>
        <translation>Il appartient à un autre utilisateur, et à aucun service ou conteneur qui puisse être arrêté.</translation>
    </message>
    <message>
        <source>Nobody can tell what would have to be stopped.</source>
        <translation>Impossible de savoir ce qu’il faudrait arrêter.</translation>
    </message>
    <message>
        <source>Stops %1, one of your services.</source>
        <translation>Arrête %1, un de vos services.</translation>
    </message>
    <message>
        <source>Stops %1, a service of the system.</source>
        <translation>Arrête %1, un service du système.</translation>
    </message>
    <message>
        <source>Stops %1 (PID %2).</source>
        <translation>Arrête %1 (PID %2).</translation>
    </message>
    <message>
        <source>Stops %1 (PID %2), which started the server on port %3.</source>
        <translation>Arrête %1 (PID %2), qui a lancé le serveur sur le port %3.</translation>
    </message>
    <message>
        <source>1 client is connected.</source>
        <translation>1 client est connecté.</translation>
    </message>
    <message>
        <source>%1 clients are connected.</source>
        <translation>%1 clients sont connectés.</translation>
    </message>
    <message>
        <source>Ports that go with it: %1.</source>
        <translation>Ports fermés avec lui : %1.</translation>
    </message>
    <message>
        <source>%1 may start it again.</source>
        <translation>%1 peut le relancer.</translation>
    </message>
    <message>
        <source>%1 has been asked to end and still holds port %2. End it by force?</source>
        <translation>%1 a été prié de se terminer et occupe toujours le port %2. Forcer ?</translation>
    </message>
    <message>
        <source>another process</source>
        <translation>un autre processus</translation>
    </message>
    <message>
        <source>%1 has ended, and %2 has taken port %3 again.</source>
        <translation>%1 est terminé, et %2 a repris le port %3.</translation>
    </message>
    <message>
        <source>%1 could not be stopped: %2</source>
        <translation>Impossible d’arrêter %1 : %2</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Software Update</source>
        <translation>Mise à jour de logiciels</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Plus tard</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Release Notes</source>
        <translation>Notes de version</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Réessayer</translation>
    </message>
</context>
<context>
    <name>WelcomePage</name>
    <message>
        <source>Welcome to Zenlot</source>
        <translation>Bienvenue dans Zenlot</translation>
    </message>
    <message>
        <source>Zenlot watches your network ports so you always know what&apos;s running — and what&apos;s blocking what.</source>
        <translation>Zenlot surveille vos ports réseau&#xa0;: vous savez toujours ce qui tourne, et ce qui bloque quoi.</translation>
    </message>
    <message>
        <source>Type any port number to see which process is using it.</source>
        <translation>Saisissez un numéro de port pour voir quel processus l’utilise.</translation>
    </message>
    <message>
        <source>Instant port lookup</source>
        <translation>Recherche de port instantanée</translation>
    </message>
    <message>
        <source>Get notified when a dev server can&apos;t start because a port is taken.</source>
        <translation>Soyez averti quand un serveur de développement ne démarre pas faute de port libre.</translation>
    </message>
    <message>
        <source>Conflict notifications</source>
        <translation>Notifications de conflits</translation>
    </message>
    <message>
        <source>Free up a blocked port without opening Terminal.</source>
        <translation>Libérez un port bloqué sans ouvrir le Terminal.</translation>
    </message>
    <message>
        <source>One-click force quit</source>
        <translation>Forcer à quitter en un clic</translation>
    </message>
    <message>
        <source>Folytatás</source>
        <translation>Continuer</translation>
    </message>
</context>
<context>
    <name>zenlot::AppDelegate</name>
    <message>
        <source>Open Zenlot</source>
        <translation>Ouvrir Zenlot</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Réglages…</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Rechercher les mises à jour…</translation>
    </message>
    <message>
        <source>Quit Zenlot</source>
        <translation>Quitter Zenlot</translation>
    </message>
    <message>
        <source>Port number…</source>
        <translation>Numéro de port…</translation>
    </message>
    <message>
        <source>Port %1 blocked by %2</source>
        <translation>Port %1 bloqué par %2</translation>
    </message>
    <message>
        <source>Conflict</source>
        <translation>Conflit</translation>
    </message>
    <message>
        <source>Kill %1</source>
        <translation>Tuer %1</translation>
    </message>
    <message>
        <source>Ignore Port %1</source>
        <translation>Ignorer le port %1</translation>
    </message>
    <message>
        <source>Ignore %1</source>
        <translation>Ignorer %1</translation>
    </message>
    <message>
        <source>Clear Conflict Indicator</source>
        <translation>Effacer l’indicateur de conflit</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menu</translation>
    </message>
</context>
<context>
    <name>zenlot::BackgroundItemsViewModel</name>
    <message>
        <source>Zenlot is blocked from running in the background</source>
        <translation>Zenlot n’est pas autorisé à s’exécuter en arrière-plan</translation>
    </message>
    <message>
        <source>Zenlot may run in the background</source>
        <translation>Zenlot peut s’exécuter en arrière-plan</translation>
    </message>
    <message>
        <source>Zenlot&apos;s background monitor is turned off</source>
        <translation>La surveillance en arrière-plan de Zenlot est désactivée</translation>
    </message>
    <message>
        <source>Zenlot&apos;s background monitor was not found</source>
        <translation>La surveillance en arrière-plan de Zenlot est introuvable</translation>
    </message>
    <message>
        <source>The background monitor is masked, so systemd refuses to start it. You, an administrator or a clean-up tool may have switched it off.</source>
        <translation>La surveillance en arrière-plan est masquée, systemd refuse donc de la démarrer. Vous, un administrateur ou un outil de nettoyage l’avez peut-être désactivée.</translation>
    </message>
    <message>
        <source>The background monitor starts when you log in. Click Re-check in Zenlot to go on.</source>
        <translation>La surveillance en arrière-plan démarre à la connexion. Cliquez sur Revérifier dans Zenlot pour continuer.</translation>
    </message>
    <message>
        <source>Nothing blocks it. Turn it on here, then click Re-check in Zenlot.</source>
        <translation>Rien ne la bloque. Activez-la ici, puis cliquez sur Revérifier dans Zenlot.</translation>
    </message>
    <message>
        <source>systemd knows no such service of yours. Either Zenlot is not completely installed, or your session is not run by systemd.</source>
        <translation>systemd ne connaît aucun service de ce nom pour vous. Soit Zenlot n’est pas entièrement installé, soit votre session n’est pas gérée par systemd.</translation>
    </message>
    <message>
        <source>Still blocked</source>
        <translation>Toujours bloqué</translation>
    </message>
    <message>
        <source>Blocked</source>
        <translation>Bloqué</translation>
    </message>
    <message>
        <source>Allowed</source>
        <translation>Autorisé</translation>
    </message>
    <message>
        <source>Still off</source>
        <translation>Toujours désactivé</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Désactivé</translation>
    </message>
    <message>
        <source>Still not found</source>
        <translation>Toujours introuvable</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Introuvable</translation>
    </message>
</context>
<context>
    <name>zenlot::ChildAppService</name>
    <message>
        <source>%1 cannot be run</source>
        <translation>Impossible d’exécuter %1</translation>
    </message>
    <message>
        <source>%1 has ended with a failure again and again</source>
        <translation>%1 s’est arrêté à plusieurs reprises sur une erreur</translation>
    </message>
</context>
<context>
    <name>zenlot::ContentViewModel</name>
    <message>
        <source>Enter a port number</source>
        <translation>Saisissez un numéro de port</translation>
    </message>
    <message>
        <source>Port %1 is free</source>
        <translation>Le port %1 est libre</translation>
    </message>
    <message>
        <source>%1 process on port %2</source>
        <translation>%1 processus sur le port %2</translation>
    </message>
    <message>
        <source>%1 processes on port %2</source>
        <translation>%1 processus sur le port %2</translation>
    </message>
    <message>
        <source>Force-quit %1 (PID %2)? Any unsaved work will be lost.</source>
        <translation>Forcer %1 (PID %2) à quitter&#xa0;? Tout travail non enregistré sera perdu.</translation>
    </message>
    <message>
        <source>Force Quit %1</source>
        <translation>Forcer %1 à quitter</translation>
    </message>
    <message>
        <source>Stop %1</source>
        <translation>Arrêter %1</translation>
    </message>
    <message>
        <source>End by Force</source>
        <translation>Forcer</translation>
    </message>
</context>
<context>
    <name>zenlot::PortNotificationManager</name>
    <message>
        <source>Kill Process</source>
        <translation>Tuer le processus</translation>
    </message>
    <message>
        <source>Ignore Port</source>
        <translation>Ignorer le port</translation>
    </message>
    <message>
        <source>Ignore Process</source>
        <translation>Ignorer le processus</translation>
    </message>
    <message>
        <source>Port %1 is already in use</source>
        <translation>Le port %1 est déjà utilisé</translation>
    </message>
    <message>
        <source>%1 (PID %2) is blocking port %3 — kill it to free the port.</source>
        <translation>%1 (PID %2) bloque le port %3 – tuez-le pour libérer le port.</translation>
    </message>
    <message>
        <source>Port %1 is now occupied</source>
        <translation>Le port %1 est maintenant occupé</translation>
    </message>
    <message>
        <source>%1 (PID %2) started listening on port %3</source>
        <translation>%1 (PID %2) s’est mis à l’écoute du port %3</translation>
    </message>
    <message>
        <source>%1 is blocking port %2</source>
        <translation>%1 bloque le port %2</translation>
    </message>
    <message>
        <source>%1 started listening on port %2</source>
        <translation>%1 s’est mis à l’écoute du port %2</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Inconnu</translation>
    </message>
    <message>
        <source>… and %1 more</source>
        <translation>… et %1 de plus</translation>
    </message>
    <message>
        <source>More ports are already in use. Zenlot shows them all.</source>
        <translation>D’autres ports sont déjà utilisés. Zenlot les affiche tous.</translation>
    </message>
    <message>
        <source>More ports are now occupied. Zenlot shows them all.</source>
        <translation>D’autres ports sont maintenant occupés. Zenlot les affiche tous.</translation>
    </message>
    <message>
        <source>Open Zenlot</source>
        <translation>Ouvrir Zenlot</translation>
    </message>
</context>
<context>
    <name>zenlot::ProcessDetailViewModel</name>
    <message>
        <source>Unknown</source>
        <translation>Inconnu</translation>
    </message>
    <message>
        <source>Network (%1)</source>
        <translation>Réseau (%1)</translation>
    </message>
    <message>
        <source>Parent</source>
        <translation>Parent</translation>
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
        <translation>Protocole</translation>
    </message>
    <message>
        <source>State</source>
        <translation>État</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Started</source>
        <translation>Démarré</translation>
    </message>
    <message>
        <source>Elapsed</source>
        <translation>Écoulé</translation>
    </message>
    <message>
        <source>Flags</source>
        <translation>Indicateurs</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Mémoire</translation>
    </message>
    <message>
        <source>Resident</source>
        <translation>Résidente</translation>
    </message>
    <message>
        <source>Virtual</source>
        <translation>Virtuelle</translation>
    </message>
    <message>
        <source>Open FDs</source>
        <translation>FD ouverts</translation>
    </message>
    <message>
        <source>Bundle ID</source>
        <translation>ID du bundle</translation>
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
        <translation>CPU moyen</translation>
    </message>
</context>
<context>
    <name>zenlot::ProcessListModel</name>
    <message>
        <source>Unknown</source>
        <translation>Inconnu</translation>
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
        <translation>Mes processus</translation>
    </message>
    <message>
        <source>System</source>
        <translation>Système</translation>
    </message>
</context>
<context>
    <name>zenlot::StatusMenu</name>
    <message>
        <source>Port number…</source>
        <translation>Numéro de port…</translation>
    </message>
</context>
<context>
    <name>zenlot::SystemdAppService</name>
    <message>
        <source>%1 cannot be enabled</source>
        <translation>%1 ne peut pas être activé</translation>
    </message>
    <message>
        <source>systemd did not answer in time</source>
        <translation>systemd n’a pas répondu à temps</translation>
    </message>
    <message>
        <source>%1 did not start (%2)</source>
        <translation>%1 n’a pas démarré (%2)</translation>
    </message>
    <message>
        <source>%1 has ended with a failure (%2)</source>
        <translation>%1 s’est terminé avec une erreur (%2)</translation>
    </message>
    <message>
        <source>%1 is still enabled</source>
        <translation>%1 est toujours activé</translation>
    </message>
    <message>
        <source>%1 is masked</source>
        <translation>%1 est masqué</translation>
    </message>
</context>
<context>
    <name>zenlot::UpdateViewModel</name>
    <message>
        <source>Checking for updates…</source>
        <translation>Recherche de mises à jour…</translation>
    </message>
    <message>
        <source>Zenlot %1 is available</source>
        <translation>Zenlot %1 est disponible</translation>
    </message>
    <message>
        <source>Zenlot is up to date</source>
        <translation>Zenlot est à jour</translation>
    </message>
    <message>
        <source>You have version %1.</source>
        <translation>Vous avez la version %1.</translation>
    </message>
    <message>
        <source>Version %1 is the newest release.</source>
        <translation>La version %1 est la plus récente.</translation>
    </message>
    <message>
        <source>You have version %1, which is ahead of the newest release, %2.</source>
        <translation>Vous avez la version %1, plus récente que la dernière version publiée, %2.</translation>
    </message>
    <message>
        <source>No browser could be opened for this address:</source>
        <translation>Impossible d’ouvrir un navigateur pour cette adresse&#xa0;:</translation>
    </message>
    <message>
        <source>Released on %1.</source>
        <translation>Publiée&#xa0;: %1.</translation>
    </message>
    <message>
        <source>This build has no update feed</source>
        <translation>Ce build n’a pas de source de mises à jour</translation>
    </message>
    <message>
        <source>Zenlot could not check for updates</source>
        <translation>Zenlot n’a pas pu rechercher les mises à jour</translation>
    </message>
    <message>
        <source>You have version %1. New ones come from where you got Zenlot.</source>
        <translation>Vous avez la version %1. Les nouvelles viennent de là où vous avez obtenu Zenlot.</translation>
    </message>
    <message>
        <source>The update feed can’t be reached. Check your network connection and try again.</source>
        <translation>La source de mises à jour est injoignable. Vérifiez votre connexion réseau et réessayez.</translation>
    </message>
    <message>
        <source>The update feed takes too long to answer. Try again later.</source>
        <translation>La source de mises à jour met trop de temps à répondre. Réessayez plus tard.</translation>
    </message>
    <message>
        <source>No secure connection to the update feed could be made.</source>
        <translation>Impossible d’établir une connexion sécurisée avec la source de mises à jour.</translation>
    </message>
    <message>
        <source>The update feed is not available at the moment. Try again later.</source>
        <translation>La source de mises à jour est indisponible pour le moment. Réessayez plus tard.</translation>
    </message>
    <message>
        <source>The answer of the update feed makes no sense. Try again later.</source>
        <translation>La réponse de la source de mises à jour n’a pas de sens. Réessayez plus tard.</translation>
    </message>
</context>
<context>
    <name>zenlot::AppSettings</name>
    <message>
        <source>Your settings can't be saved at the moment. Zenlot keeps trying.</source>
        <translation>Vos réglages ne peuvent pas être enregistrés pour le moment. Zenlot réessaie.</translation>
    </message>
    <message>
        <source>The file with your settings was damaged. What could be read was kept; the old file has “.damaged” in its name.</source>
        <translation>Le fichier de vos réglages était endommagé. Ce qui était lisible a été conservé ; l’ancien fichier porte « .damaged » dans son nom.</translation>
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
