<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>VendelSDK</name>
    <message>
        <location filename="../Error.cpp" line="21"/>
        <source>The operation couldn’t be completed. (%1 error %2.)</source>
        <extracomment>Generic description of an error that carries no text of its own; %1 is the domain, %2 the code.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../Error.cpp" line="48"/>
        <source>Could not create URL</source>
        <extracomment>Error</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../Error.cpp" line="55"/>
        <source>Could not run script</source>
        <extracomment>Error</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../Error.cpp" line="57"/>
        <source>It looks like you haven&apos;t got Vendel 2 app or you didn&apos;t allow to communicate the plugin (this app) via Apple Script</source>
        <extracomment>No Vendel 2 or disallowed.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../Error.cpp" line="66"/>
        <source>Could not read data from script output</source>
        <extracomment>Error</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../InstallPluginController.cpp" line="20"/>
        <source>Plugin cannot be installed.</source>
        <extracomment>Can&apos;t communicate with Vendel message during plugin installation.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../InstallPluginController.cpp" line="22"/>
        <source>Please make sure you have the latest version of Vendel installed. If problem occurs again, go to Preferences -&gt; Plugins and install the plugin there.</source>
        <extracomment>Can&apos;t communicate with Vendel informative text of message during plugin installation.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../VendelPlugin.cpp" line="61"/>
        <source>This plugin must be run by Vendel app.</source>
        <extracomment>Information that plugin must be run by Vendel</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../VendelPlugin.cpp" line="63"/>
        <location filename="../ConfigAlert.cpp" line="22"/>
        <source>OK</source>
        <extracomment>OK button
----------
OK button title</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../ConfigAlert.cpp" line="15"/>
        <source>Could not read action data in Vendel.</source>
        <extracomment>Alert title</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../ConfigAlert.cpp" line="18"/>
        <source>Could not save action data in Vendel.</source>
        <extracomment>Alert title</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
