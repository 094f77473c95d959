<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- The keys are English but for these. -->
<TS version="2.1" language="en" sourcelanguage="en">
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
</context>
</TS>
