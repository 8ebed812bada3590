<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>Test</name>
    <message><source>IDS_BOTH</source><translation>both in en</translation></message>
    <message><source>IDS_ENGLISH_ONLY</source><translation>only in English</translation></message>
    <message><source>IDS_UNFINISHED</source><translation>finished in English</translation></message>
</context>
</TS>
