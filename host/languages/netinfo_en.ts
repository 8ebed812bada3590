<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>NetInfoRecordUIPlugin</name>
    <message>
        <source>IDS_LIST_APN</source>
        <translation>Profile</translation>
    </message>
    <message>
        <source>IDS_LIST_STARTTIME</source>
        <translation>Started</translation>
    </message>
    <message>
        <source>IDS_LIST_ENDTIME</source>
        <translation>Ended</translation>
    </message>
    <message>
        <source>IDS_LIST_CONNECTEDTIME</source>
        <translation>Duration</translation>
    </message>
    <message>
        <source>IDS_LIST_UPLOADED</source>
        <translation>Uploaded</translation>
    </message>
    <message>
        <source>IDS_LIST_DOWNLOADED</source>
        <translation>Downloaded</translation>
    </message>
    <message>
        <source>IDS_STC_EXPLAIN_TEXT</source>
        <translation>Times and amounts are measured by this computer. Your network operator may count differently; for what you pay, its bill is what counts.</translation>
    </message>
    <message>
        <source>IDS_MENU_DELETE</source>
        <translation>Delete selection	Del</translation>
    </message>
    <message>
        <source>IDS_MENU_DELETEALL</source>
        <translation>Delete all	A</translation>
    </message>
    <message>
        <source>IDS_PROMPT_CAPTION</source>
        <translation>Delete connections</translation>
    </message>
    <message>
        <source>IDS_STR_DELETE</source>
        <translation>Delete the selected connections from the history? This cannot be undone.</translation>
    </message>
    <message>
        <source>IDS_STR_CLEARALL</source>
        <translation>Delete all connections from the history? This cannot be undone.</translation>
    </message>
    <message>
        <source>IDS_OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_CANCEL</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>IDS_TITLE_SINGLE</source>
        <translation>Last connection</translation>
    </message>
    <message>
        <source>IDS_GROUP_STATISTIC</source>
        <translation>Statistics</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOADED_DATA</source>
        <translation>Uploaded:</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOADED_DATA</source>
        <translation>Downloaded:</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_TRANSFER</source>
        <translation>Connected for:</translation>
    </message>
    <message>
        <source>IDS_BTN_OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_TITLE_TOTAL</source>
        <translation>Monthly totals</translation>
    </message>
    <message>
        <source>IDS_STC_APN</source>
        <translation>Profile:</translation>
    </message>
    <message>
        <source>IDS_STC_MONTH</source>
        <translation>Month:</translation>
    </message>
    <message>
        <source>IDS_COMBO_ALLAPN</source>
        <translation>All profiles</translation>
    </message>
    <message>
        <source>IDS_COMBO_THISMONTH</source>
        <translation>This month</translation>
    </message>
    <message>
        <source>IDS_COMBO_LASTMONTH</source>
        <translation>Last month</translation>
    </message>
    <message>
        <source>IDS_COMBO_BEFORELASTMONTH</source>
        <translation>Month before last</translation>
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
        <translation>Connection History</translation>
    </message>
    <message>
        <source>IDS_HOST_OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_HOST_CANCEL</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>IDS_HOST_CLOSE</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>IDS_HOST_PAGE_HISTORY</source>
        <translation>History</translation>
    </message>
    <message>
        <source>IDS_HOST_PAGE_USAGE</source>
        <translation>Usage</translation>
    </message>
    <message>
        <source>IDS_HOST_PAGE_SETTINGS</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>IDS_HOST_PAGE_HISTORY_HINT</source>
        <translation>Every connection of this computer, with its time and amounts</translation>
    </message>
    <message>
        <source>IDS_HOST_PAGE_USAGE_HINT</source>
        <translation>How much was transferred, day by day</translation>
    </message>
    <message>
        <source>IDS_HOST_PAGE_SETTINGS_HINT</source>
        <translation>Changes take effect at once</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_FILE</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_QUIT</source>
        <translation>&amp;Quit</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_VIEW</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_TOOLS</source>
        <translation>&amp;Tools</translation>
    </message>
    <message>
        <source>IDS_MENU_MONTHLYTOTALS</source>
        <translation>Monthly &amp;totals…</translation>
    </message>
    <message>
        <source>IDS_TOTALS_UNREADABLE</source>
        <extracomment>%1 is the reason, one or two sentences.</extracomment>
        <translation>The totals cannot be shown.

%1</translation>
    </message>
    <message>
        <source>IDS_USAGE_PREVIOUS</source>
        <translation>Previous month</translation>
    </message>
    <message>
        <source>IDS_USAGE_NEXT</source>
        <translation>Next month</translation>
    </message>
    <message>
        <source>IDS_USAGE_MONTH</source>
        <translation>Month</translation>
    </message>
    <message>
        <source>IDS_USAGE_THIS_MONTH</source>
        <translation>This &amp;month</translation>
    </message>
    <message>
        <source>IDS_USAGE_PROFILE</source>
        <translation>&amp;Profile:</translation>
    </message>
    <message>
        <source>IDS_USAGE_SAVE</source>
        <translation>&amp;Save picture…</translation>
    </message>
    <message>
        <source>IDS_USAGE_SAVE_TITLE</source>
        <translation>Save picture</translation>
    </message>
    <message>
        <source>IDS_USAGE_NOT_SAVED</source>
        <translation>The picture could not be written to %1: %2. Choose another folder or free some space.</translation>
    </message>
    <message>
        <source>IDS_USAGE_DOWNLOADED</source>
        <translation>Downloaded</translation>
    </message>
    <message>
        <source>IDS_USAGE_UPLOADED</source>
        <translation>Uploaded</translation>
    </message>
    <message>
        <source>IDS_USAGE_TIME</source>
        <translation>Connected time</translation>
    </message>
    <message>
        <source>IDS_USAGE_CONNECTIONS</source>
        <translation>Connections</translation>
    </message>
    <message>
        <source>IDS_USAGE_TODAY</source>
        <translation>today</translation>
    </message>
    <message>
        <source>IDS_USAGE_NOTHING</source>
        <translation>No connections in this month</translation>
    </message>
    <message>
        <source>IDS_USAGE_CHART</source>
        <translation>Usage in %1, %2</translation>
    </message>
    <message>
        <source>IDS_USAGE_DAY</source>
        <translation>%1: %2 downloaded, %3 uploaded, connected %4, connections: %5</translation>
    </message>
    <message>
        <source>IDS_USAGE_HINT</source>
        <translation>Select a day with the mouse or the arrow keys to see its figures.</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_HELP</source>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_PLUGINS</source>
        <translation>&amp;Plug-ins…</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_ABOUT</source>
        <translation>&amp;About</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_DEVELOPER</source>
        <translation>&amp;Developer</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_SIMULATE</source>
        <extracomment>%1 is a whole number.</extracomment>
        <translation>&amp;Simulate a connection of %1 seconds</translation>
    </message>
    <message>
        <source>IDS_HOST_MENU_SUPPRESS</source>
        <translation>Send the “no more &amp;summaries” notification</translation>
    </message>
    <message>
        <source>IDS_HOST_ABOUT_TEXT</source>
        <extracomment>%1 is the version number.</extracomment>
        <translation>Version %1

Shows when this computer was connected, for how long, and how much was transferred.</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_SUMMARY_GROUP</source>
        <translation>When a connection ends</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_SUMMARY</source>
        <translation>Show a &amp;summary after each connection</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_SUMMARY_HINT</source>
        <translation>A small window with the amounts and the time of the connection that has just ended.</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_LANGUAGE_GROUP</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_LANGUAGE</source>
        <translation>&amp;Language:</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_LANGUAGE_SYSTEM</source>
        <extracomment>%1 is the name of a language.</extracomment>
        <translation>Language of the system (%1)</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_GROUP</source>
        <translation>Which connections are recorded</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_ALL</source>
        <translation>&amp;All connections</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_ALL_HINT</source>
        <translation>Mobile broadband, Wi-Fi, cable, Bluetooth and dial-up</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_MOBILE</source>
        <translation>&amp;Mobile broadband only</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_MOBILE_HINT</source>
        <translation>Connections through a modem or a mobile phone</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_METERED</source>
        <translation>Me&amp;tered connections only</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_CONNECTIONS_METERED_HINT</source>
        <translation>Connections that the network service marks as limited or charged by volume</translation>
    </message>
    <message>
        <source>IDS_HOST_SETTINGS_NOT_SAVED</source>
        <extracomment>%1 is a file name.</extracomment>
        <translation>The setting could not be saved in %1. Check that the folder exists and may be written to.</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_NO_RECORDER</source>
        <translation>Connections are not being recorded: the recording plug-in is missing.</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_RECORDING</source>
        <extracomment>%1 is a list of profile names.</extracomment>
        <translation>Recording: %1</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_NOT_ANNOUNCED</source>
        <translation>Connections are recorded by another program, but without a session bus this window does not hear of them.</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_OTHER_RECORDER</source>
        <extracomment>%1 is the number of a process.</extracomment>
        <translation>Nothing is recorded here: process %1 holds the history and does not answer. End it to record here.</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_NO_PERMISSION</source>
        <extracomment>%1 is what the network service says.</extracomment>
        <translation>Connections are not being recorded: the network service refuses access (%1).</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_NO_NETWORK_MANAGER</source>
        <translation>Connections are not being recorded: NetworkManager is not running.</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_NO_SYSTEM_BUS</source>
        <extracomment>%1 is what the bus library says.</extracomment>
        <translation>Connections are not being recorded: there is no system bus (%1).</translation>
    </message>
    <message>
        <source>IDS_HOST_STATUS_NO_HISTORY</source>
        <extracomment>%1 names the file, the reason and the remedy, in English.</extracomment>
        <translation>Connections are not being recorded: %1</translation>
    </message>
    <message>
        <source>IDS_HOST_NO_PLUGIN_FOLDER</source>
        <extracomment>%1 is a folder name.</extracomment>
        <translation>No plug-ins were found: the folder %1 does not exist. Install the program again or set NETINFO_PLUGIN_DIR.</translation>
    </message>
    <message>
        <source>IDS_HOST_NO_PLUGINS</source>
        <extracomment>%1 is a folder name.</extracomment>
        <translation>No plug-ins were found in the folder %1. Install the program again or set NETINFO_PLUGIN_DIR.</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_NOT_A_PLUGIN</source>
        <extracomment>%1 is a file name, %2 the reason in the toolkit's words.</extracomment>
        <translation>%1 is not a plug-in: %2</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_WRONG_ID</source>
        <extracomment>%1 is a file name, %2 an interface ID.</extracomment>
        <translation>%1 is a plug-in of another program: its ID is “%2”.</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_NOT_LOADED</source>
        <extracomment>%1 is a file name, %2 the reason in the toolkit's words.</extracomment>
        <translation>%1 could not be loaded: %2</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_NO_INTERFACE</source>
        <extracomment>%1 is a file name, %2 an interface ID.</extracomment>
        <translation>%1 was loaded, but does not answer the interface “%2”.</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_INIT_REFUSED</source>
        <extracomment>%1 is a file name, %2 a number.</extracomment>
        <translation>%1 was loaded, but refused to start (error %2).</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_DUPLICATE</source>
        <extracomment>%1 is a file name, %2 a class ID.</extracomment>
        <translation>%1 was left out: another plug-in is already registered as %2.</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_FAILED</source>
        <extracomment>%1 is a file name, %2 the reason.</extracomment>
        <translation>%1 failed while starting: %2</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_WITHOUT_IT</source>
        <translation>The program goes on without it.</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGIN_OK</source>
        <extracomment>%1 is a version number.</extracomment>
        <translation>Version %1, running</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGINS_TITLE</source>
        <translation>Plug-ins</translation>
    </message>
    <message>
        <source>IDS_HOST_PLUGINS_FOLDER</source>
        <extracomment>%1 is a folder name.</extracomment>
        <translation>Folder: %1</translation>
    </message>
    <message>
        <source>IDS_HOST_NO_HISTORY_PAGE</source>
        <translation>The history page is not available, because its plug-in is not running.</translation>
    </message>
    <message>
        <source>IDS_HOST_NO_DIALUP</source>
        <translation>A connection cannot be simulated: the dial-up plug-in is not running.</translation>
    </message>
</context>
</TS>
