<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- The keys are English but for these, of which some name what other desktops have. -->
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>GeneralTab</name>
    <message>
        <source>Show in menu bar</source>
        <translation>Show in the status area</translation>
    </message>
    <message>
        <source>Show in Dock</source>
        <translation>Show in the taskbar</translation>
    </message>
    <message>
        <source>⌃⌥⇧P — opens the menu bar popover from anywhere</source>
        <translation>Ctrl+Alt+Shift+P — opens Zenlot from anywhere</translation>
    </message>
</context>
<context>
    <name>InstallError</name>
    <message>
        <source>Zenlot is blocked from running in the background. Open System Settings → General → Login Items &amp; Extensions and turn Zenlot back on under &quot;Allow in the Background&quot;, then click Re-check.</source>
        <translation>Zenlot is blocked from running in the background: systemd has its monitor masked. &quot;Open Login Items&quot; shows how to allow it; then click Re-check.</translation>
    </message>
    <message>
        <source>Zenlot is still blocked. Toggle &quot;Allow in the Background&quot; on for Zenlot in System Settings → General → Login Items &amp; Extensions.</source>
        <translation>Zenlot is still blocked. &quot;Open Login Items&quot; shows the command that unmasks its monitor.</translation>
    </message>
</context>
<context>
    <name>MonitorPage</name>
    <message>
        <source>Folytatás</source>
        <translation>Continue</translation>
    </message>
</context>
<context>
    <name>WelcomePage</name>
    <message>
        <source>Folytatás</source>
        <translation>Continue</translation>
    </message>
    <message>
        <source>Free up a blocked port without opening Terminal.</source>
        <translation>Free up a blocked port without opening a terminal.</translation>
    </message>
</context>
</TS>
