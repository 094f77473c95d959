<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>AppPortGroup</name>
    <message>
        <source>Port %1</source>
        <translation>Puerto %1</translation>
    </message>
</context>
<context>
    <name>BackgroundItemsContent</name>
    <message>
        <source>Turn On</source>
        <translation>Activar</translation>
    </message>
    <message>
        <source>Re-check</source>
        <translation>Volver a comprobar</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Hecho</translation>
    </message>
</context>
<context>
    <name>BackgroundItemsWindow</name>
    <message>
        <source>Login Items</source>
        <translation>Ítems de inicio</translation>
    </message>
</context>
<context>
    <name>CheckPortIntent</name>
    <message>
        <source>Check Port</source>
        <translation>Comprobar puerto</translation>
    </message>
    <message>
        <source>Port Number</source>
        <translation>Número de puerto</translation>
    </message>
    <message>
        <source>A port number between 1 and 65535</source>
        <translation>Un número de puerto entre 1 y 65535</translation>
    </message>
    <message>
        <source>Which port would you like to check?</source>
        <translation>¿Qué puerto quieres comprobar?</translation>
    </message>
    <message>
        <source>Please enter a valid port number between 1 and 65535.</source>
        <translation>Introduce un número de puerto válido entre 1 y 65535.</translation>
    </message>
    <message>
        <source>Port %1 is free — nothing is using it.</source>
        <translation>El puerto %1 está libre: nada lo está usando.</translation>
    </message>
    <message>
        <source>Port %1 is used by: %2</source>
        <translation>El puerto %1 lo usa: %2</translation>
    </message>
    <message>
        <source>Check a port in %1</source>
        <translation>Comprobar un puerto en %1</translation>
    </message>
    <message>
        <source>What is using a port in %1</source>
        <translation>Qué está usando un puerto en %1</translation>
    </message>
    <message>
        <source>Port lookup in %1</source>
        <translation>Búsqueda de puerto en %1</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Desconocido</translation>
    </message>
</context>
<context>
    <name>CollapsibleSection</name>
    <message>
        <source>open</source>
        <translation>abierta</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>cerrada</translation>
    </message>
</context>
<context>
    <name>CommandCard</name>
    <message>
        <source>To allow it, run this in a terminal:</source>
        <translation>Para permitirlo, ejecuta esto en un terminal:</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Copiado</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Comando</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>ContentView</name>
    <message>
        <source>Toggle Inspector</source>
        <translation>Mostrar u ocultar el inspector</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>Inspector</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menú</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Stop the server so that it stays stopped</source>
        <translation>Detener el servidor de modo que siga detenido</translation>
    </message>
</context>
<context>
    <name>ExceptionList</name>
    <message>
        <source>Add to %1</source>
        <translation>Añadir a: %1</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Añadir</translation>
    </message>
    <message>
        <source>Remove from %1</source>
        <translation>Eliminar de: %1</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Eliminar</translation>
    </message>
</context>
<context>
    <name>ExceptionSection</name>
    <message>
        <source>e.g. 3000</source>
        <translation>p. ej., 3000</translation>
    </message>
    <message>
        <source>Ignored ports</source>
        <translation>Puertos ignorados</translation>
    </message>
    <message>
        <source>e.g. python</source>
        <translation>p. ej., python</translation>
    </message>
    <message>
        <source>Ignored processes</source>
        <translation>Procesos ignorados</translation>
    </message>
</context>
<context>
    <name>ForceQuitButton</name>
    <message>
        <source>Force Quit</source>
        <translation>Forzar salida</translation>
    </message>
    <message>
        <source>Force-quit selected process</source>
        <translation>Forzar la salida del proceso seleccionado</translation>
    </message>
</context>
<context>
    <name>ForceQuitDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Force Quit Process?</source>
        <translation>¿Forzar la salida del proceso?</translation>
    </message>
</context>
<context>
    <name>GeneralTab</name>
    <message>
        <source>Show in menu bar</source>
        <translation>Mostrar en el área de notificación</translation>
    </message>
    <message>
        <source>Show in Dock</source>
        <translation>Mostrar en la barra de tareas</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Abrir al iniciar sesión</translation>
    </message>
    <message>
        <source>Keyboard Shortcut</source>
        <translation>Función rápida de teclado</translation>
    </message>
    <message>
        <source>⌃⌥⇧P — opens the menu bar popover from anywhere</source>
        <translation>Ctrl+Alt+Mayús+P: abre Zenlot desde cualquier lugar</translation>
    </message>
    <message>
        <source>Enable global shortcut</source>
        <translation>Activar el atajo global</translation>
    </message>
</context>
<context>
    <name>GlobalShortcut</name>
    <message>
        <source>Open Zenlot</source>
        <translation>Abrir Zenlot</translation>
    </message>
</context>
<context>
    <name>InstallError</name>
    <message>
        <source>Zenlot is blocked from running in the background. Open System Settings → General → Login Items &amp; Extensions and turn Zenlot back on under &quot;Allow in the Background&quot;, then click Re-check.</source>
        <translation>Zenlot no puede ejecutarse en segundo plano: systemd tiene enmascarado su monitor. «Abrir ítems de inicio» muestra cómo permitirlo; después haz clic en «Volver a comprobar».</translation>
    </message>
    <message>
        <source>Zenlot is still blocked. Toggle &quot;Allow in the Background&quot; on for Zenlot in System Settings → General → Login Items &amp; Extensions.</source>
        <translation>Zenlot sigue bloqueado. «Abrir ítems de inicio» muestra la orden que desenmascara su monitor.</translation>
    </message>
</context>
<context>
    <name>LogLines</name>
    <message>
        <source>Log</source>
        <translation>Registro</translation>
    </message>
    <message>
        <source>Unmark Row</source>
        <translation>Quitar la marca de la línea</translation>
    </message>
    <message>
        <source>Mark Row</source>
        <translation>Marcar la línea</translation>
    </message>
</context>
<context>
    <name>LogTabView</name>
    <message>
        <source>Clear</source>
        <translation>Borrar</translation>
    </message>
    <message>
        <source>Clear log</source>
        <translation>Borrar el registro</translation>
    </message>
    <message>
        <source>Unmark</source>
        <translation>Quitar marcas</translation>
    </message>
    <message>
        <source>Clear marked rows</source>
        <translation>Quitar las marcas de todas las líneas</translation>
    </message>
    <message>
        <source>No log entries yet</source>
        <translation>Aún no hay entradas en el registro</translation>
    </message>
    <message>
        <source>At %1 MB the log begins anew, and one old log is kept beside it.</source>
        <translation>Al llegar a %1 MB el registro empieza de nuevo y se conserva uno anterior al lado.</translation>
    </message>
</context>
<context>
    <name>MonitorPage</name>
    <message>
        <source>Background Monitor</source>
        <translation>Monitor en segundo plano</translation>
    </message>
    <message>
        <source>A lightweight daemon that watches for port conflicts around the clock — even when Zenlot isn&apos;t running. You&apos;ll be notified the moment a crash blocks your dev server.</source>
        <translation>Un servicio ligero que vigila los conflictos de puertos a todas horas, incluso cuando Zenlot no está abierto. Recibirás un aviso en cuanto un fallo bloquee tu servidor de desarrollo.</translation>
    </message>
    <message>
        <source>Background monitor enabled</source>
        <translation>Monitor en segundo plano activado</translation>
    </message>
    <message>
        <source>Folytatás</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>Abrir ítems de inicio</translation>
    </message>
    <message>
        <source>I&apos;ve enabled it — re-check</source>
        <translation>Ya lo he activado: volver a comprobar</translation>
    </message>
    <message>
        <source>Skip for now</source>
        <translation>Omitir por ahora</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>Instalando…</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>Activar</translation>
    </message>
</context>
<context>
    <name>ObstacleText</name>
    <message>
        <source>%1 has reserved it without listening.</source>
        <translation>%1 lo ha reservado sin escuchar en él.</translation>
    </message>
    <message>
        <source>%1 uses it for a connection to port %2. Some servers can&apos;t have it until that ends.</source>
        <translation>%1 lo usa para una conexión al puerto %2. Algunos servidores no pueden tenerlo hasta que termine.</translation>
    </message>
    <message>
        <source>Its last connection has just ended. Some servers can&apos;t have it for another %1 s.</source>
        <translation>Su última conexión acaba de terminar. Algunos servidores no pueden tenerlo hasta dentro de %1 s.</translation>
    </message>
    <message>
        <source>The system keeps it for servers that ask for it.</source>
        <translation>El sistema lo reserva para los servidores que lo piden.</translation>
    </message>
    <message>
        <source>Only privileged programs can have it.</source>
        <translation>Solo los programas con privilegios pueden tenerlo.</translation>
    </message>
    <message>
        <source>A process of another user</source>
        <translation>Un proceso de otro usuario</translation>
    </message>
</context>
<context>
    <name>OnboardingWindow</name>
    <message>
        <source>Welcome to Zenlot</source>
        <translation>Te damos la bienvenida a Zenlot</translation>
    </message>
</context>
<context>
    <name>OriginNote</name>
    <message>
        <source>%1 (deleted folder)</source>
        <translation>%1 (carpeta eliminada)</translation>
    </message>
    <message>
        <source>Open to the network</source>
        <translation>Abierto a la red</translation>
    </message>
    <message>
        <source>Perhaps left behind</source>
        <translation>Quizá olvidado</translation>
    </message>
</context>
<context>
    <name>OriginRows</name>
    <message>
        <source>%1, of a user</source>
        <translation>%1, de un usuario</translation>
    </message>
    <message>
        <source>%1, of the system</source>
        <translation>%1, del sistema</translation>
    </message>
    <message>
        <source>%1 (IPv6 only)</source>
        <translation>%1 (solo IPv6)</translation>
    </message>
    <message>
        <source>This machine only</source>
        <translation>Solo esta máquina</translation>
    </message>
    <message>
        <source>The network, unless a firewall stops it</source>
        <translation>La red, salvo que un cortafuegos lo impida</translation>
    </message>
    <message>
        <source>Everyone who can reach %1, unless a firewall stops them</source>
        <translation>Quien pueda llegar a %1, salvo que un cortafuegos lo impida</translation>
    </message>
    <message>
        <source>%1 processes: %2</source>
        <translation>%1 procesos: %2</translation>
    </message>
    <message>
        <source>its folder is deleted</source>
        <translation>su carpeta está eliminada</translation>
    </message>
    <message>
        <source>it has no terminal</source>
        <translation>no tiene terminal</translation>
    </message>
    <message>
        <source>what started it has ended</source>
        <translation>lo que lo inició ha terminado</translation>
    </message>
    <message>
        <source>its session is over</source>
        <translation>su sesión ha terminado</translation>
    </message>
    <message>
        <source>nobody is connected</source>
        <translation>nadie está conectado</translation>
    </message>
    <message>
        <source>Perhaps: %1</source>
        <translation>Quizá: %1</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Commit</source>
        <translation>Commit</translation>
    </message>
    <message>
        <source>Branch</source>
        <translation>Rama</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Carpeta</translation>
    </message>
    <message>
        <source>%1 (deleted)</source>
        <translation>%1 (eliminada)</translation>
    </message>
    <message>
        <source>Runs</source>
        <translation>Ejecuta</translation>
    </message>
    <message>
        <source>Command line</source>
        <translation>Línea de órdenes</translation>
    </message>
    <message>
        <source>Started by</source>
        <translation>Iniciado por</translation>
    </message>
    <message>
        <source>Container</source>
        <translation>Contenedor</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Imagen</translation>
    </message>
    <message>
        <source>Service</source>
        <translation>Servicio</translation>
    </message>
    <message>
        <source>Its port</source>
        <translation>Su puerto</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Unidad</translation>
    </message>
    <message>
        <source>Socket</source>
        <translation>Socket</translation>
    </message>
    <message>
        <source>Listens on</source>
        <translation>Escucha en</translation>
    </message>
    <message>
        <source>Open to</source>
        <translation>Abierto a</translation>
    </message>
    <message>
        <source>Shared by</source>
        <translation>Compartido por</translation>
    </message>
    <message>
        <source>Clients</source>
        <translation>Clientes</translation>
    </message>
    <message>
        <source>Left behind</source>
        <translation>Olvidado</translation>
    </message>
</context>
<context>
    <name>PortField</name>
    <message>
        <source>Port</source>
        <translation>Puerto</translation>
    </message>
</context>
<context>
    <name>PortMenu</name>
    <message>
        <source>Copy Port</source>
        <translation>Copiar puerto</translation>
    </message>
    <message>
        <source>Copy PID</source>
        <translation>Copiar PID</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>Copiar ruta</translation>
    </message>
    <message>
        <source>Show Details</source>
        <translation>Mostrar detalles</translation>
    </message>
    <message>
        <source>Force Quit…</source>
        <translation>Forzar salida…</translation>
    </message>
</context>
<context>
    <name>PortMonitoringTab</name>
    <message>
        <source>Show a notification whenever any new process starts listening on a port</source>
        <translation>Mostrar una notificación cuando un proceso nuevo empiece a escuchar en un puerto</translation>
    </message>
    <message>
        <source>Notify on all port activity</source>
        <translation>Notificar toda la actividad de puertos</translation>
    </message>
    <message>
        <source>Monitors dev runtimes in the background and notifies you when a port conflict is detected. Runs automatically at login.</source>
        <translation>Supervisa los entornos de desarrollo en segundo plano y te avisa si detecta un conflicto de puertos. Se ejecuta automáticamente al iniciar sesión.</translation>
    </message>
    <message>
        <source>Conflict Monitoring</source>
        <translation>Supervisión de conflictos</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>Abrir ítems de inicio</translation>
    </message>
    <message>
        <source>I&apos;ve enabled it — re-check</source>
        <translation>Ya lo he activado: volver a comprobar</translation>
    </message>
    <message>
        <source>Port Activity Exceptions</source>
        <translation>Excepciones de actividad de puertos</translation>
    </message>
    <message>
        <source>Conflict Monitoring Exceptions</source>
        <translation>Excepciones de supervisión de conflictos</translation>
    </message>
    <message>
        <source>The system tells of refused ports exactly.</source>
        <translation>El sistema informa con exactitud de los puertos denegados.</translation>
    </message>
    <message>
        <source>For exact alerts an administrator turns on the helper of the system: %1</source>
        <translation>Para avisos exactos, un administrador activa el asistente del sistema: %1</translation>
    </message>
</context>
<context>
    <name>ProcessDetailContent</name>
    <message>
        <source>Identity</source>
        <translation>Identidad</translation>
    </message>
    <message>
        <source>Resources</source>
        <translation>Recursos</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>Aplicación</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Comando</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Proyecto</translation>
    </message>
    <message>
        <source>Origin</source>
        <translation>Origen</translation>
    </message>
</context>
<context>
    <name>ProcessDetailPanel</name>
    <message>
        <source>Inspector</source>
        <translation>Inspector</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Cargando…</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>General</source>
        <translation>General</translation>
    </message>
    <message>
        <source>Port Monitoring</source>
        <translation>Supervisión de puertos</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Registro</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Refresh</source>
        <translation>Actualizar</translation>
    </message>
    <message>
        <source>Scanning…</source>
        <translation>Buscando…</translation>
    </message>
    <message>
        <source>No listening ports</source>
        <translation>No hay puertos a la escucha</translation>
    </message>
    <message>
        <source>Listening ports</source>
        <translation>Puertos a la escucha</translation>
    </message>
</context>
<context>
    <name>SidebarRow</name>
    <message>
        <source>open</source>
        <translation>abierta</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>cerrada</translation>
    </message>
</context>
<context>
    <name>StopDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Stop the Server?</source>
        <translation>¿Detener el servidor?</translation>
    </message>
</context>
<context>
    <name>StopText</name>
    <message>
        <source>Stops container %1.</source>
        <translation>Detiene el contenedor %1.</translation>
    </message>
    <message>
        <source>Stops container %1 of compose project %2.</source>
        <translation>Detiene el contenedor %1 del proyecto compose %2.</translation>
    </message>
    <message>
        <source>%1 is a program that people work in or that the session needs; it is not stopped for a port.</source>
        <translation>%1 es un programa en el que se trabaja o que la sesión necesita; no se detiene por un puerto.</translation>
    </message>
    <message>
        <source>It belongs to another user, and to no service or container that could be stopped.</source>
        <translation>Pertenece a otro usuario y a ningún servicio o contenedor que se pueda detener.</translation>
    </message>
    <message>
        <source>Nobody can tell what would have to be stopped.</source>
        <translation>No se puede saber qué habría que detener.</translation>
    </message>
    <message>
        <source>Stops %1, one of your services.</source>
        <translation>Detiene %1, uno de sus servicios.</translation>
    </message>
    <message>
        <source>Stops %1, a service of the system.</source>
        <translation>Detiene %1, un servicio del sistema.</translation>
    </message>
    <message>
        <source>Stops %1 (PID %2).</source>
        <translation>Detiene %1 (PID %2).</translation>
    </message>
    <message>
        <source>Stops %1 (PID %2), which started the server on port %3.</source>
        <translation>Detiene %1 (PID %2), que inició el servidor en el puerto %3.</translation>
    </message>
    <message>
        <source>1 client is connected.</source>
        <translation>Hay 1 cliente conectado.</translation>
    </message>
    <message>
        <source>%1 clients are connected.</source>
        <translation>Hay %1 clientes conectados.</translation>
    </message>
    <message>
        <source>Ports that go with it: %1.</source>
        <translation>Puertos que se cierran con él: %1.</translation>
    </message>
    <message>
        <source>%1 may start it again.</source>
        <translation>%1 puede volver a iniciarlo.</translation>
    </message>
    <message>
        <source>%1 has been asked to end and still holds port %2. End it by force?</source>
        <translation>Se ha pedido a %1 que termine y aún ocupa el puerto %2. ¿Forzar?</translation>
    </message>
    <message>
        <source>another process</source>
        <translation>otro proceso</translation>
    </message>
    <message>
        <source>%1 has ended, and %2 has taken port %3 again.</source>
        <translation>%1 ha terminado y %2 ha vuelto a ocupar el puerto %3.</translation>
    </message>
    <message>
        <source>%1 could not be stopped: %2</source>
        <translation>No se pudo detener %1: %2</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Software Update</source>
        <translation>Actualización de software</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Más tarde</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Release Notes</source>
        <translation>Notas de la versión</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Reintentar</translation>
    </message>
</context>
<context>
    <name>WelcomePage</name>
    <message>
        <source>Welcome to Zenlot</source>
        <translation>Te damos la bienvenida a Zenlot</translation>
    </message>
    <message>
        <source>Zenlot watches your network ports so you always know what&apos;s running — and what&apos;s blocking what.</source>
        <translation>Zenlot vigila tus puertos de red para que siempre sepas qué se está ejecutando y qué está bloqueando a qué.</translation>
    </message>
    <message>
        <source>Type any port number to see which process is using it.</source>
        <translation>Escribe un número de puerto para ver qué proceso lo usa.</translation>
    </message>
    <message>
        <source>Instant port lookup</source>
        <translation>Búsqueda de puertos al instante</translation>
    </message>
    <message>
        <source>Get notified when a dev server can&apos;t start because a port is taken.</source>
        <translation>Recibe un aviso si un servidor de desarrollo no arranca porque el puerto está ocupado.</translation>
    </message>
    <message>
        <source>Conflict notifications</source>
        <translation>Avisos de conflictos</translation>
    </message>
    <message>
        <source>Free up a blocked port without opening Terminal.</source>
        <translation>Libera un puerto bloqueado sin abrir el terminal.</translation>
    </message>
    <message>
        <source>One-click force quit</source>
        <translation>Forzar salida con un clic</translation>
    </message>
    <message>
        <source>Folytatás</source>
        <translation>Continuar</translation>
    </message>
</context>
<context>
    <name>zenlot::AppDelegate</name>
    <message>
        <source>Open Zenlot</source>
        <translation>Abrir Zenlot</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Ajustes…</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Buscar actualizaciones…</translation>
    </message>
    <message>
        <source>Quit Zenlot</source>
        <translation>Salir de Zenlot</translation>
    </message>
    <message>
        <source>Port number…</source>
        <translation>Número de puerto…</translation>
    </message>
    <message>
        <source>Port %1 blocked by %2</source>
        <translation>Puerto %1 bloqueado por %2</translation>
    </message>
    <message>
        <source>Conflict</source>
        <translation>Conflicto</translation>
    </message>
    <message>
        <source>Kill %1</source>
        <translation>Terminar %1</translation>
    </message>
    <message>
        <source>Ignore Port %1</source>
        <translation>Ignorar el puerto %1</translation>
    </message>
    <message>
        <source>Ignore %1</source>
        <translation>Ignorar %1</translation>
    </message>
    <message>
        <source>Clear Conflict Indicator</source>
        <translation>Borrar el indicador de conflicto</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menú</translation>
    </message>
</context>
<context>
    <name>zenlot::BackgroundItemsViewModel</name>
    <message>
        <source>Zenlot is blocked from running in the background</source>
        <translation>Zenlot tiene bloqueada la ejecución en segundo plano</translation>
    </message>
    <message>
        <source>Zenlot may run in the background</source>
        <translation>Zenlot puede ejecutarse en segundo plano</translation>
    </message>
    <message>
        <source>Zenlot&apos;s background monitor is turned off</source>
        <translation>El monitor en segundo plano de Zenlot está desactivado</translation>
    </message>
    <message>
        <source>Zenlot&apos;s background monitor was not found</source>
        <translation>No se ha encontrado el monitor en segundo plano de Zenlot</translation>
    </message>
    <message>
        <source>The background monitor is masked, so systemd refuses to start it. You, an administrator or a clean-up tool may have switched it off.</source>
        <translation>El monitor en segundo plano está enmascarado, así que systemd se niega a iniciarlo. Es posible que lo hayas desactivado tú, un administrador o una herramienta de limpieza.</translation>
    </message>
    <message>
        <source>The background monitor starts when you log in. Click Re-check in Zenlot to go on.</source>
        <translation>El monitor en segundo plano se inicia al iniciar sesión. Haz clic en «Volver a comprobar» en Zenlot para continuar.</translation>
    </message>
    <message>
        <source>Nothing blocks it. Turn it on here, then click Re-check in Zenlot.</source>
        <translation>Nada lo bloquea. Actívalo aquí y luego haz clic en «Volver a comprobar» en Zenlot.</translation>
    </message>
    <message>
        <source>systemd knows no such service of yours. Either Zenlot is not completely installed, or your session is not run by systemd.</source>
        <translation>systemd no conoce ningún servicio tuyo con ese nombre. O Zenlot no está completamente instalado, o tu sesión no la gestiona systemd.</translation>
    </message>
    <message>
        <source>Still blocked</source>
        <translation>Sigue bloqueado</translation>
    </message>
    <message>
        <source>Blocked</source>
        <translation>Bloqueado</translation>
    </message>
    <message>
        <source>Allowed</source>
        <translation>Permitido</translation>
    </message>
    <message>
        <source>Still off</source>
        <translation>Sigue desactivado</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Desactivado</translation>
    </message>
    <message>
        <source>Still not found</source>
        <translation>Sigue sin encontrarse</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>No encontrado</translation>
    </message>
</context>
<context>
    <name>zenlot::ChildAppService</name>
    <message>
        <source>%1 cannot be run</source>
        <translation>No se puede ejecutar %1</translation>
    </message>
    <message>
        <source>%1 has ended with a failure again and again</source>
        <translation>%1 ha terminado una y otra vez con un error</translation>
    </message>
</context>
<context>
    <name>zenlot::ContentViewModel</name>
    <message>
        <source>Enter a port number</source>
        <translation>Introduce un número de puerto</translation>
    </message>
    <message>
        <source>Port %1 is free</source>
        <translation>El puerto %1 está libre</translation>
    </message>
    <message>
        <source>%1 process on port %2</source>
        <translation>%1 proceso en el puerto %2</translation>
    </message>
    <message>
        <source>%1 processes on port %2</source>
        <translation>%1 procesos en el puerto %2</translation>
    </message>
    <message>
        <source>Force-quit %1 (PID %2)? Any unsaved work will be lost.</source>
        <translation>¿Forzar la salida de %1 (PID %2)? Se perderá el trabajo que no se haya guardado.</translation>
    </message>
    <message>
        <source>Force Quit %1</source>
        <translation>Forzar la salida de %1</translation>
    </message>
    <message>
        <source>Stop %1</source>
        <translation>Detener %1</translation>
    </message>
    <message>
        <source>End by Force</source>
        <translation>Forzar</translation>
    </message>
</context>
<context>
    <name>zenlot::PortNotificationManager</name>
    <message>
        <source>Kill Process</source>
        <translation>Terminar proceso</translation>
    </message>
    <message>
        <source>Ignore Port</source>
        <translation>Ignorar puerto</translation>
    </message>
    <message>
        <source>Ignore Process</source>
        <translation>Ignorar proceso</translation>
    </message>
    <message>
        <source>Port %1 is already in use</source>
        <translation>El puerto %1 ya está en uso</translation>
    </message>
    <message>
        <source>%1 (PID %2) is blocking port %3 — kill it to free the port.</source>
        <translation>%1 (PID %2) está bloqueando el puerto %3: termínalo para liberar el puerto.</translation>
    </message>
    <message>
        <source>Port %1 is now occupied</source>
        <translation>El puerto %1 está ahora ocupado</translation>
    </message>
    <message>
        <source>%1 (PID %2) started listening on port %3</source>
        <translation>%1 (PID %2) ha empezado a escuchar en el puerto %3</translation>
    </message>
    <message>
        <source>%1 is blocking port %2</source>
        <translation>%1 está bloqueando el puerto %2</translation>
    </message>
    <message>
        <source>%1 started listening on port %2</source>
        <translation>%1 ha empezado a escuchar en el puerto %2</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Desconocido</translation>
    </message>
    <message>
        <source>… and %1 more</source>
        <translation>… y %1 más</translation>
    </message>
    <message>
        <source>More ports are already in use. Zenlot shows them all.</source>
        <translation>Hay más puertos ya en uso. Zenlot los muestra todos.</translation>
    </message>
    <message>
        <source>More ports are now occupied. Zenlot shows them all.</source>
        <translation>Hay más puertos ocupados ahora. Zenlot los muestra todos.</translation>
    </message>
    <message>
        <source>Open Zenlot</source>
        <translation>Abrir Zenlot</translation>
    </message>
</context>
<context>
    <name>zenlot::ProcessDetailViewModel</name>
    <message>
        <source>Unknown</source>
        <translation>Desconocido</translation>
    </message>
    <message>
        <source>Network (%1)</source>
        <translation>Red (%1)</translation>
    </message>
    <message>
        <source>Parent</source>
        <translation>Padre</translation>
    </message>
    <message>
        <source>PID %1</source>
        <translation>PID %1</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Puerto</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>Protocolo</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Estado</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Dirección</translation>
    </message>
    <message>
        <source>Started</source>
        <translation>Iniciado</translation>
    </message>
    <message>
        <source>Elapsed</source>
        <translation>Transcurrido</translation>
    </message>
    <message>
        <source>Flags</source>
        <translation>Indicadores</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Memoria</translation>
    </message>
    <message>
        <source>Resident</source>
        <translation>Residente</translation>
    </message>
    <message>
        <source>Virtual</source>
        <translation>Virtual</translation>
    </message>
    <message>
        <source>Open FDs</source>
        <translation>FD abiertos</translation>
    </message>
    <message>
        <source>Bundle ID</source>
        <translation>ID del paquete</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Versión</translation>
    </message>
    <message>
        <source>Build</source>
        <translation>Compilación</translation>
    </message>
    <message>
        <source>Average CPU</source>
        <translation>CPU media</translation>
    </message>
</context>
<context>
    <name>zenlot::ProcessListModel</name>
    <message>
        <source>Unknown</source>
        <translation>Desconocido</translation>
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
        <translation>Mis procesos</translation>
    </message>
    <message>
        <source>System</source>
        <translation>Sistema</translation>
    </message>
</context>
<context>
    <name>zenlot::StatusMenu</name>
    <message>
        <source>Port number…</source>
        <translation>Número de puerto…</translation>
    </message>
</context>
<context>
    <name>zenlot::SystemdAppService</name>
    <message>
        <source>%1 cannot be enabled</source>
        <translation>%1 no se puede activar</translation>
    </message>
    <message>
        <source>systemd did not answer in time</source>
        <translation>systemd no ha respondido a tiempo</translation>
    </message>
    <message>
        <source>%1 did not start (%2)</source>
        <translation>%1 no se ha iniciado (%2)</translation>
    </message>
    <message>
        <source>%1 has ended with a failure (%2)</source>
        <translation>%1 ha terminado con un error (%2)</translation>
    </message>
    <message>
        <source>%1 is still enabled</source>
        <translation>%1 sigue activado</translation>
    </message>
    <message>
        <source>%1 is masked</source>
        <translation>%1 está enmascarado</translation>
    </message>
</context>
<context>
    <name>zenlot::UpdateViewModel</name>
    <message>
        <source>Checking for updates…</source>
        <translation>Buscando actualizaciones…</translation>
    </message>
    <message>
        <source>Zenlot %1 is available</source>
        <translation>Zenlot %1 está disponible</translation>
    </message>
    <message>
        <source>Zenlot is up to date</source>
        <translation>Zenlot está actualizado</translation>
    </message>
    <message>
        <source>You have version %1.</source>
        <translation>Tienes la versión %1.</translation>
    </message>
    <message>
        <source>Version %1 is the newest release.</source>
        <translation>La versión %1 es la más reciente.</translation>
    </message>
    <message>
        <source>You have version %1, which is ahead of the newest release, %2.</source>
        <translation>Tienes la versión %1, posterior a la última publicada, %2.</translation>
    </message>
    <message>
        <source>No browser could be opened for this address:</source>
        <translation>No se ha podido abrir un navegador para esta dirección:</translation>
    </message>
    <message>
        <source>Released on %1.</source>
        <translation>Publicada: %1.</translation>
    </message>
    <message>
        <source>This build has no update feed</source>
        <translation>Esta compilación no tiene fuente de actualizaciones</translation>
    </message>
    <message>
        <source>Zenlot could not check for updates</source>
        <translation>Zenlot no ha podido buscar actualizaciones</translation>
    </message>
    <message>
        <source>You have version %1. New ones come from where you got Zenlot.</source>
        <translation>Tienes la versión %1. Las nuevas llegan del lugar donde obtuviste Zenlot.</translation>
    </message>
    <message>
        <source>The update feed can’t be reached. Check your network connection and try again.</source>
        <translation>No se puede acceder a la fuente de actualizaciones. Comprueba la conexión de red y vuelve a intentarlo.</translation>
    </message>
    <message>
        <source>The update feed takes too long to answer. Try again later.</source>
        <translation>La fuente de actualizaciones tarda demasiado en responder. Vuelve a intentarlo más tarde.</translation>
    </message>
    <message>
        <source>No secure connection to the update feed could be made.</source>
        <translation>No se ha podido establecer una conexión segura con la fuente de actualizaciones.</translation>
    </message>
    <message>
        <source>The update feed is not available at the moment. Try again later.</source>
        <translation>La fuente de actualizaciones no está disponible en este momento. Vuelve a intentarlo más tarde.</translation>
    </message>
    <message>
        <source>The answer of the update feed makes no sense. Try again later.</source>
        <translation>La respuesta de la fuente de actualizaciones no tiene sentido. Vuelve a intentarlo más tarde.</translation>
    </message>
</context>
<context>
    <name>zenlot::AppSettings</name>
    <message>
        <source>Your settings can't be saved at the moment. Zenlot keeps trying.</source>
        <translation>Tus ajustes no se pueden guardar en este momento. Zenlot seguirá intentándolo.</translation>
    </message>
    <message>
        <source>The file with your settings was damaged. What could be read was kept; the old file has “.damaged” in its name.</source>
        <translation>El archivo de ajustes estaba dañado. Se conservó lo que se pudo leer; el archivo antiguo lleva «.damaged» en el nombre.</translation>
    </message>
</context>
<context>
    <name>Notice</name>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
</TS>
