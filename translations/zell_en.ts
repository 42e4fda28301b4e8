<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>AFCFailure</name>
    <message>
        <source>The phone has stopped answering. Unlock it; it is opened again as soon as it answers.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The phone is locked. Unlock it and connect it again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The phone does not trust this computer. Unlock the phone, connect it again and tap Trust.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No secure connection to the phone could be made. Connect it again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The phone does not give access to its files. Unlock it and connect it again.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AboutWindow</name>
    <message>
        <source>About %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Logo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Your media, back where they belong</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Archive</name>
    <message>
        <source>The folder is empty</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BrowserPane</name>
    <message>
        <source>Genre</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Artist</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Album</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Commands</name>
    <message>
        <source>The device holds no media library.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ConsoleExportHost</name>
    <message>
        <source>(n)umber, (o)verwrite, (s)kip, (a)bort; a capital letter answers for all:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CopiedSize</name>
    <message>
        <source>%1 of %2 bytes were copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It was not copied</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CopyRuleWindow</name>
    <message>
        <source>&amp;Keep both: give the new file a numbered name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Overwrite the file that is there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Skip this item</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Do not ask again, and remember this as my rule</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What to do</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Continue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel Export</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CrashWindow</name>
    <message>
        <source>Unexpected Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Report</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Device</name>
    <message>
        <source>There is no such file on the device</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DeviceBox</name>
    <message>
        <source>Device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The player or phone whose library is shown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No device</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DeviceChooser</name>
    <message>
        <source>There is no device %1, and no folder of that name that holds iPod_Control or iTunes_Control.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No device is connected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Several devices are connected; name one with --device:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DevicesCommand</name>
    <message>
        <source>No device is connected.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>EmptyState</name>
    <message>
        <source>Connect a player or phone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Its music, movies, books and pictures show here as soon as it is connected. A player must be mounted as a volume; a phone must be unlocked and trust this computer. Nothing is ever written to the device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How to connect</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExportModeWindow</name>
    <message>
        <source>To &amp;folders only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To folders, and add to the &amp;music application</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where do you want to export to?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No music application that can take files was found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To folders, and add to the &amp;music of %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExportPath</name>
    <message>
        <source>The name leads out of the destination folder</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FaultExceptionPanelController</name>
    <message>
        <source> has encountered an unexpected error. Please email this report to %1 so it can be fixed in the next release.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ItdbProblems</name>
    <message numerus="yes">
        <source>The music library is damaged: %1 of %n tracks could be read</source>
        <translation>
            <numerusform>The music library is damaged: %1 of %n track could be read</numerusform>
            <numerusform>The music library is damaged: %1 of %n tracks could be read</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The music library is damaged: %1 of %n playlists could be read</source>
        <translation>
            <numerusform>The music library is damaged: %1 of %n playlist could be read</numerusform>
            <numerusform>The music library is damaged: %1 of %n playlists could be read</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The photo library is damaged: %1 of %n photos could be read</source>
        <translation>
            <numerusform>The photo library is damaged: %1 of %n photo could be read</numerusform>
            <numerusform>The photo library is damaged: %1 of %n photos could be read</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The photo library is damaged: %1 of %n albums could be read</source>
        <translation>
            <numerusform>The photo library is damaged: %1 of %n album could be read</numerusform>
            <numerusform>The photo library is damaged: %1 of %n albums could be read</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The music library is damaged: it does not say how many tracks it has, and %n could be read</source>
        <translation>
            <numerusform>The music library is damaged: it does not say how many tracks it has, and %n could be read</numerusform>
            <numerusform>The music library is damaged: it does not say how many tracks it has, and %n could be read</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The music library is damaged: it does not say how many playlists it has, and %n could be read</source>
        <translation>
            <numerusform>The music library is damaged: it does not say how many playlists it has, and %n could be read</numerusform>
            <numerusform>The music library is damaged: it does not say how many playlists it has, and %n could be read</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The photo library is damaged: it does not say how many photos it has, and %n could be read</source>
        <translation>
            <numerusform>The photo library is damaged: it does not say how many photos it has, and %n could be read</numerusform>
            <numerusform>The photo library is damaged: it does not say how many photos it has, and %n could be read</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The photo library is damaged: it does not say how many albums it has, and %n could be read</source>
        <translation>
            <numerusform>The photo library is damaged: it does not say how many albums it has, and %n could be read</numerusform>
            <numerusform>The photo library is damaged: it does not say how many albums it has, and %n could be read</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The music library is damaged: %n tracks stand behind the last one by its own count and were not read</source>
        <translation>
            <numerusform>The music library is damaged: %n track stands behind the last one by its own count and was not read</numerusform>
            <numerusform>The music library is damaged: %n tracks stand behind the last one by its own count and were not read</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The music library is damaged: %n playlists stand behind the last one by its own count and were not read</source>
        <translation>
            <numerusform>The music library is damaged: %n playlist stands behind the last one by its own count and was not read</numerusform>
            <numerusform>The music library is damaged: %n playlists stand behind the last one by its own count and were not read</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The photo library is damaged: %n photos stand behind the last one by its own count and were not read</source>
        <translation>
            <numerusform>The photo library is damaged: %n photo stands behind the last one by its own count and was not read</numerusform>
            <numerusform>The photo library is damaged: %n photos stand behind the last one by its own count and were not read</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The photo library is damaged: %n albums stand behind the last one by its own count and were not read</source>
        <translation>
            <numerusform>The photo library is damaged: %n album stands behind the last one by its own count and was not read</numerusform>
            <numerusform>The photo library is damaged: %n albums stand behind the last one by its own count and were not read</numerusform>
        </translation>
    </message>
    <message>
        <source>The music library could not be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The photo library could not be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The music library is damaged: its file is empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The photo library is damaged: its file is empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The music library is of a kind that is not known here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The photo library is of a kind that is not known here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The music library is too large: only its beginning was read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The photo library is too large: only its beginning was read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The music library is damaged: its file is shorter than it says</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The photo library is damaged: its file is shorter than it says</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>The music library is damaged: %n of its entries contradict themselves and may be incomplete</source>
        <translation>
            <numerusform>The music library is damaged: %n of its entries contradicts itself and may be incomplete</numerusform>
            <numerusform>The music library is damaged: %n of its entries contradict themselves and may be incomplete</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The photo library is damaged: %n of its entries contradict themselves and may be incomplete</source>
        <translation>
            <numerusform>The photo library is damaged: %n of its entries contradicts itself and may be incomplete</numerusform>
            <numerusform>The photo library is damaged: %n of its entries contradict themselves and may be incomplete</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>JobController</name>
    <message>
        <source>An export is running. Stop it, or wait for its end.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Media are being copied from a device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 items were not copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device was disconnected: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 times the music application did not take a file</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>KeyListModel</name>
    <message numerus="yes">
        <source>All (%n Genre)</source>
        <translation>
            <numerusform>All (%n Genre)</numerusform>
            <numerusform>All (%n Genres)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>All (%n Artist)</source>
        <translation>
            <numerusform>All (%n Artist)</numerusform>
            <numerusform>All (%n Artists)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>All (%n Album)</source>
        <translation>
            <numerusform>All (%n Album)</numerusform>
            <numerusform>All (%n Albums)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>MainMenu</name>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>E&amp;xport</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show Report of Last Export…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preferences…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Uncheck All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check Selected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Uncheck Selected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select All Photos</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Invert Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Checked Tracks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Selected Photos</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Selected Playlist</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Selected Photo Album</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Media</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Music</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Movies</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All TV Shows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Podcasts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Audiobooks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Ringtones</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Books</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Playlists</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Voice Memos</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Camera Roll</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Photos</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide Browser</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Log Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quit %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+E</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+P</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+,</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+B</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+Shift+D</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+I</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Export Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Export</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Search titles</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainWindowController</name>
    <message>
        <source>The help document could not be opened.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An export is running. Do you want to stop it and quit?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop and Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go On</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MenuValidation</name>
    <message>
        <source>Show Browser</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide Browser</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>NewVersionAlert</name>
    <message>
        <source>%1 New Version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New version %1 found!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Download</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PhotoGrid</name>
    <message>
        <source>Photos</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PreferencesWindow</name>
    <message>
        <source>&amp;Ask each time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Keep both, under a numbered name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Overwrite the file that is there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Skip the item</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check for a &amp;new version at start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export folders</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Folder for %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the folder for %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>When a file exists already</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Asks the makers&apos; web service once, whenever the program starts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This copy of the program was built without an address to ask, so it never asks anybody</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Each folder needs a full path.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ReportModel</name>
    <message>
        <source>Copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skipped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Missing on the device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not copied whole</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not be written</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Item</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What happened</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Why</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>On the device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>On the computer</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ReportWindow</name>
    <message>
        <source>Report of the last export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 items were not copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show &amp;all items</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Items</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the report</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The report could not be saved</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Selection</name>
    <message>
        <source>There is no playlist named %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no photo album named %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device has no %1.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SourceList</name>
    <message>
        <source>Library</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StatusBar</name>
    <message>
        <source>Status</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Progress</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play the selected track</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show what was not copied, and why</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop the export at the next chunk</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy the checked tracks or the selected photos</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TrackTable</name>
    <message>
        <source>Tracks</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TrackTableModel</name>
    <message>
        <source>Title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Duration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Artist</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Album</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Genre</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
