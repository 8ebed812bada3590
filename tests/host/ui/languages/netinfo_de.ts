<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Test</name>
    <message><source>IDS_BOTH</source><translation>both in de</translation></message>
    <message><source>IDS_UNFINISHED</source><translation type="unfinished">noch nicht fertig</translation></message>
</context>
</TS>
