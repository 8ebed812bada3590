<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>NetInfoRecordUIPlugin</name>
    <message>
        <source>IDS_LIST_APN</source>
        <translation>Profil</translation>
    </message>
    <message>
        <source>IDS_LIST_STARTTIME</source>
        <translation>Beginn</translation>
    </message>
    <message>
        <source>IDS_LIST_ENDTIME</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>IDS_LIST_CONNECTEDTIME</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>IDS_LIST_UPLOADED</source>
        <translation>Gesendet</translation>
    </message>
    <message>
        <source>IDS_LIST_DOWNLOADED</source>
        <translation>Empfangen</translation>
    </message>
    <message>
        <source>IDS_STC_EXPLAIN_TEXT</source>
        <translation>Zeiten und Datenmengen misst dieser Computer. Ihr Netzbetreiber zählt möglicherweise anders; für die Kosten ist seine Abrechnung maßgeblich.</translation>
    </message>
    <message>
        <source>IDS_MENU_DELETE</source>
        <translation>Auswahl löschen	Entf</translation>
    </message>
    <message>
        <source>IDS_MENU_DELETEALL</source>
        <translation>Alle löschen	A</translation>
    </message>
    <message>
        <source>IDS_PROMPT_CAPTION</source>
        <translation>Verbindungen löschen</translation>
    </message>
    <message>
        <source>IDS_STR_DELETE</source>
        <translation>Die ausgewählten Verbindungen aus dem Verlauf löschen? Das lässt sich nicht rückgängig machen.</translation>
    </message>
    <message>
        <source>IDS_STR_CLEARALL</source>
        <translation>Alle Verbindungen aus dem Verlauf löschen? Das lässt sich nicht rückgängig machen.</translation>
    </message>
    <message>
        <source>IDS_OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_CANCEL</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>IDS_TITLE_SINGLE</source>
        <translation>Letzte Verbindung</translation>
    </message>
    <message>
        <source>IDS_GROUP_STATISTIC</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOADED_DATA</source>
        <translation>Gesendet:</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOADED_DATA</source>
        <translation>Empfangen:</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_TRANSFER</source>
        <translation>Verbunden für:</translation>
    </message>
    <message>
        <source>IDS_BTN_OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_TITLE_TOTAL</source>
        <translation>Monatssummen</translation>
    </message>
    <message>
        <source>IDS_STC_APN</source>
        <translation>Profil:</translation>
    </message>
    <message>
        <source>IDS_STC_MONTH</source>
        <translation>Monat:</translation>
    </message>
    <message>
        <source>IDS_COMBO_ALLAPN</source>
        <translation>Alle Profile</translation>
    </message>
    <message>
        <source>IDS_COMBO_THISMONTH</source>
        <translation>Dieser Monat</translation>
    </message>
    <message>
        <source>IDS_COMBO_LASTMONTH</source>
        <translation>Letzter Monat</translation>
    </message>
    <message>
        <source>IDS_COMBO_BEFORELASTMONTH</source>
        <translation>Vorletzter Monat</translation>
    </message>
    <message>
        <source>IDS_STC_SINGLEPACKET_UNIT</source>
        <translation>MB</translation>
    </message>
</context>
<context>
    <name>Host</name>
    <message>
        <source>IDS_HOST_APP_NAME</source>
        <translation>Verbindungsverlauf</translation>
    </message>
    <message>
        <source>IDS_HOST_OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_HOST_CANCEL</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>IDS_HOST_CLOSE</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>IDS_HOST_PAGE_HISTORY</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>IDS_HOST_PAGE_USAGE</source>
        <translation>Verbrauch</translation>
    </message>
    <message>
        <source>IDS_HOST_PAGE_SETTINGS</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>IDS_HOST_PAGE_HISTORY_HINT</source>
        <translation>Alle Verbindungen dieses Computers mit Zeit und Datenmenge</translation>
    </message>
    <message>
        <source>IDS_HOST_PAGE_USAGE_HINT</source>
        <translation>Wie viel übertragen wurde, Tag für Tag</translation>
    </message>
    <message>
        <source>IDS_HOST_PAGE_SETTINGS_HINT</source>
        <translation>Änderungen gelten sofort</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_FILE</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_QUIT</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_VIEW</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_TOOLS</source>
        <translation>E&amp;xtras</translation>
    </message>
    <message>
        <source>IDS_MENU_MONTHLYTOTALS</source>
        <translation>&amp;Monatssummen …</translation>
    </message>
    <message>
        <source>IDS_TOTALS_UNREADABLE</source>
        <extracomment>%1 is the reason, one or two sentences.</extracomment>
        <translation>Die Summen können nicht angezeigt werden.

%1</translation>
    </message>
    <message>
        <source>IDS_USAGE_PREVIOUS</source>
        <translation>Voriger Monat</translation>
    </message>
    <message>
        <source>IDS_USAGE_NEXT</source>
        <translation>Nächster Monat</translation>
    </message>
    <message>
        <source>IDS_USAGE_MONTH</source>
        <translation>Monat</translation>
    </message>
    <message>
        <source>IDS_USAGE_THIS_MONTH</source>
        <translation>Dieser &amp;Monat</translation>
    </message>
    <message>
        <source>IDS_USAGE_PROFILE</source>
        <translation>&amp;Profil:</translation>
    </message>
    <message>
        <source>IDS_USAGE_SAVE</source>
        <translation>Bild &amp;speichern …</translation>
    </message>
    <message>
        <source>IDS_USAGE_SAVE_TITLE</source>
        <translation>Bild speichern</translation>
    </message>
    <message>
        <source>IDS_USAGE_NOT_SAVED</source>
        <translation>Das Bild konnte nicht nach %1 geschrieben werden: %2. Wählen Sie einen anderen Ordner oder schaffen Sie Platz.</translation>
    </message>
    <message>
        <source>IDS_USAGE_DOWNLOADED</source>
        <translation>Empfangen</translation>
    </message>
    <message>
        <source>IDS_USAGE_UPLOADED</source>
        <translation>Gesendet</translation>
    </message>
    <message>
        <source>IDS_USAGE_TIME</source>
        <translation>Verbindungszeit</translation>
    </message>
    <message>
        <source>IDS_USAGE_CONNECTIONS</source>
        <translation>Verbindungen</translation>
    </message>
    <message>
        <source>IDS_USAGE_TODAY</source>
        <translation>heute</translation>
    </message>
    <message>
        <source>IDS_USAGE_NOTHING</source>
        <translation>Keine Verbindungen in diesem Monat</translation>
    </message>
    <message>
        <source>IDS_USAGE_CHART</source>
        <translation>Verbrauch im %1, %2</translation>
    </message>
    <message>
        <source>IDS_USAGE_DAY</source>
        <translation>%1: %2 empfangen, %3 gesendet, verbunden %4, Verbindungen: %5</translation>
    </message>
    <message>
        <source>IDS_USAGE_HINT</source>
        <translation>Wählen Sie einen Tag mit der Maus oder den Pfeiltasten, um seine Zahlen zu sehen.</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_HELP</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_PLUGINS</source>
        <translation>&amp;Module …</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_ABOUT</source>
        <translation>Ü&amp;ber</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_DEVELOPER</source>
        <translation>E&amp;ntwickler</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_SIMULATE</source>
        <extracomment>%1 is a whole number.</extracomment>
        <translation>Verbindung von %1 Sekunden &amp;simulieren</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_SUPPRESS</source>
        <translation>Mitteilung „keine &amp;Zusammenfassungen mehr“ senden</translation>
    </message>
    <message>
        <source>IDS_HOST_ABOUT_TEXT</source>
        <extracomment>%1 is the version number.</extracomment>
        <translation>Version %1

Zeigt, wann und wie lange dieser Computer verbunden war und wie viel dabei übertragen wurde.</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_SUMMARY_GROUP</source>
        <translation>Wenn eine Verbindung endet</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_SUMMARY</source>
        <translation>Nach jeder Verbindung eine &amp;Zusammenfassung zeigen</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_SUMMARY_HINT</source>
        <translation>Ein kleines Fenster mit Datenmenge und Dauer der eben beendeten Verbindung.</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_LANGUAGE_GROUP</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_LANGUAGE</source>
        <translation>S&amp;prache:</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_LANGUAGE_SYSTEM</source>
        <extracomment>%1 is the name of a language.</extracomment>
        <translation>Sprache des Systems (%1)</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_GROUP</source>
        <translation>Welche Verbindungen aufgezeichnet werden</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_ALL</source>
        <translation>&amp;Alle Verbindungen</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_ALL_HINT</source>
        <translation>Mobilfunk, WLAN, Kabel, Bluetooth und Einwahl</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_MOBILE</source>
        <translation>Nur &amp;Mobilfunk</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_MOBILE_HINT</source>
        <translation>Verbindungen über ein Modem oder ein Mobiltelefon</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_METERED</source>
        <translation>Nur &amp;getaktete Verbindungen</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_METERED_HINT</source>
        <translation>Verbindungen, die der Netzwerkdienst als begrenzt oder nach Menge berechnet kennzeichnet</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_NOT_SAVED</source>
        <extracomment>%1 is a file name.</extracomment>
        <translation>Die Einstellung konnte nicht in %1 gespeichert werden. Bitte prüfen, ob der Ordner vorhanden und beschreibbar ist.</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_NO_RECORDER</source>
        <translation>Verbindungen werden nicht aufgezeichnet: Das Aufzeichnungsmodul fehlt.</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_RECORDING</source>
        <extracomment>%1 is a list of profile names.</extracomment>
        <translation>Wird aufgezeichnet: %1</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_NOT_ANNOUNCED</source>
        <translation>Verbindungen zeichnet ein anderes Programm auf; ohne Sitzungsbus erfährt dieses Fenster nichts davon.</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_OTHER_RECORDER</source>
        <extracomment>%1 is the number of a process.</extracomment>
        <translation>Hier wird nichts aufgezeichnet: Prozess %1 hält den Verlauf und antwortet nicht. Beenden Sie ihn, um hier aufzuzeichnen.</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_NO_PERMISSION</source>
        <extracomment>%1 is what the network service says.</extracomment>
        <translation>Verbindungen werden nicht aufgezeichnet: Der Netzwerkdienst verweigert den Zugriff (%1).</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_NO_NETWORK_MANAGER</source>
        <translation>Verbindungen werden nicht aufgezeichnet: NetworkManager läuft nicht.</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_NO_SYSTEM_BUS</source>
        <extracomment>%1 is what the bus library says.</extracomment>
        <translation>Verbindungen werden nicht aufgezeichnet: Es gibt keinen Systembus (%1).</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_NO_HISTORY</source>
        <extracomment>%1 names the file, the reason and the remedy, in English.</extracomment>
        <translation>Verbindungen werden nicht aufgezeichnet: %1</translation>
    </message>
    <message>
        <source>IDS_HOST_NO_PLUGIN_FOLDER</source>
        <extracomment>%1 is a folder name.</extracomment>
        <translation>Keine Module gefunden: Der Ordner %1 existiert nicht. Bitte das Programm neu installieren oder NETINFO_PLUGIN_DIR setzen.</translation>
    </message>
    <message>
        <source>IDS_HOST_NO_PLUGINS</source>
        <extracomment>%1 is a folder name.</extracomment>
        <translation>Im Ordner %1 wurden keine Module gefunden. Bitte das Programm neu installieren oder NETINFO_PLUGIN_DIR setzen.</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_NOT_A_PLUGIN</source>
        <extracomment>%1 is a file name, %2 the reason in the toolkit's words.</extracomment>
        <translation>%1 ist kein Modul: %2</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_WRONG_ID</source>
        <extracomment>%1 is a file name, %2 an interface ID.</extracomment>
        <translation>%1 ist das Modul eines anderen Programms: Seine Kennung lautet „%2“.</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_NOT_LOADED</source>
        <extracomment>%1 is a file name, %2 the reason in the toolkit's words.</extracomment>
        <translation>%1 konnte nicht geladen werden: %2</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_NO_INTERFACE</source>
        <extracomment>%1 is a file name, %2 an interface ID.</extracomment>
        <translation>%1 wurde geladen, bietet aber die Schnittstelle „%2“ nicht an.</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_INIT_REFUSED</source>
        <extracomment>%1 is a file name, %2 a number.</extracomment>
        <translation>%1 wurde geladen, verweigert aber den Start (Fehler %2).</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_DUPLICATE</source>
        <extracomment>%1 is a file name, %2 a class ID.</extracomment>
        <translation>%1 wurde ausgelassen: Unter %2 ist bereits ein anderes Modul angemeldet.</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_FAILED</source>
        <extracomment>%1 is a file name, %2 the reason.</extracomment>
        <translation>%1 ist beim Start gescheitert: %2</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_WITHOUT_IT</source>
        <translation>Das Programm läuft ohne es weiter.</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_OK</source>
        <extracomment>%1 is a version number.</extracomment>
        <translation>Version %1, läuft</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGINS_TITLE</source>
        <translation>Module</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGINS_FOLDER</source>
        <extracomment>%1 is a folder name.</extracomment>
        <translation>Ordner: %1</translation>
    </message>
    <message>
        <source>IDS_HOST_NO_HISTORY_PAGE</source>
        <translation>Der Verlauf ist nicht verfügbar, weil sein Modul nicht läuft.</translation>
    </message>
    <message>
        <source>IDS_HOST_NO_DIALUP</source>
        <translation>Es kann keine Verbindung simuliert werden: Das Einwahlmodul läuft nicht.</translation>
    </message>
</context>
</TS>
