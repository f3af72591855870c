<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- A plugin's own German catalogue that translates one of the SDK's texts its own way. -->
<TS version="2.1" language="de_DE">
<context>
    <name>VendelSDK</name>
    <message>
        <source>This plugin must be run by Vendel app.</source>
        <translation>Bitte starten Sie dieses Plugin aus Vendel heraus.</translation>
    </message>
</context>
</TS>
