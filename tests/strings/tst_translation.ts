<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_US">
<context>
    <name>Window</name>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Größe ≥ 2 m</source>
        <translation>Height ≥ 2 m</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Zu</translation>
    </message>
    <message>
        <source>Close</source>
        <comment>a window</comment>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>%n of %1</source>
        <translation>%n von %1</translation>
    </message>
</context>
<context>
    <name>Überblick</name>
    <message>
        <source>Open</source>
        <translation>Offen</translation>
    </message>
</context>
</TS>
