<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
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
    <message>
        <source>&amp;OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Archive</name>
    <message>
        <source>The folder is empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folder could not be packed</source>
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
    <name>CommandLine</name>
    <message>
        <source>Print the version and exit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an empty text is no name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A device key from &quot;devices&quot;, or a folder that holds a player&apos;s files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no number of seconds from 0 to 3600</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>List the connected devices</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print a JSON list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wait so long for a device to come; without it, 2 seconds for the phones that are plugged in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wait so long for the device to come; without it, 10 seconds for a phone that is plugged in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show what a device holds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print the counts as JSON</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the items of one category: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print a device&apos;s whole library as JSON</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write the preview pictures here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy media from a device to this computer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>all, everything (the same), media (every track), a category of &quot;list&quot;, playlist=NAME or album=NAME</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy into folders below this one instead of those of the settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What to do with files that exist already</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write what became of each item here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show no progress</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print what would be copied, and write nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Did you mean &quot;%1&quot;?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no category &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There are: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is nothing that can be exported.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There are: %1, playlist=NAME and album=NAME.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no option &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is one word too many.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Say what to do: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Say what to export: %1, playlist=NAME or album=NAME.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Run with --help for more information.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copies media from a portable player or phone to this computer</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Config</name>
    <message>
        <source>The settings could not be saved</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Console</name>
    <message>
        <source>A fault of this program ended a part of its work (%1)</source>
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
    <name>ConsoleSummary</name>
    <message>
        <source>%1 would be copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n item(s) not copied: %1</source>
        <translation>
            <numerusform>%n item not copied: %1</numerusform>
            <numerusform>%n items not copied: %1</numerusform>
        </translation>
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
    <message>
        <source>The device reports no size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing tells whether the copy is whole: %1</source>
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
        <source>&amp;Continue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>C&amp;ancel Export</source>
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
        <source>&amp;OK</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Destinations</name>
    <message>
        <source>The destination folder is on the device itself, and nothing is written there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no destination folder</source>
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
    <message>
        <source>A phone is plugged in that has not answered within %1 seconds.</source>
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
    <name>DumpCommand</name>
    <message>
        <source>%1 is on the device itself, and nothing is written there.</source>
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
        <source>How to &amp;connect</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExportCommand</name>
    <message numerus="yes">
        <source>%n problem(s) with what the device holds, see above</source>
        <translation>
            <numerusform>%n problem with what the device holds, see above</numerusform>
            <numerusform>%n problems with what the device holds, see above</numerusform>
        </translation>
    </message>
    <message>
        <source>destination: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>report: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is on the device itself, and nothing is written there.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExportCommands</name>
    <message>
        <source>There is nothing to export.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please check tracks to export</source>
        <translation>No track is checked</translation>
    </message>
    <message>
        <source>No tracks has been checked to export! Please check the tracks you want to export first.</source>
        <translation>Check the tracks that you want to export first.</translation>
    </message>
    <message>
        <source>Please select photos to export</source>
        <translation>No photo is selected</translation>
    </message>
    <message>
        <source>No photos has been selected to export! Please select the photos you want to export first.</source>
        <translation>Select the photos that you want to export first.</translation>
    </message>
    <message>
        <source>Please select a track to play</source>
        <translation>No track is selected</translation>
    </message>
    <message>
        <source>No tracks has been selected to play! Please select the track you want to play first.</source>
        <translation>Select the track that you want to play first.</translation>
    </message>
</context>
<context>
    <name>ExportJob</name>
    <message>
        <source>The export was stopped before this item</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The library names no file for this item</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The export was given up at this item</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A file of this name is there already</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The export was stopped during this item</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is a link on the device, and leads to nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is an empty folder on the device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The packed folder could not be renamed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The screen copy of this photo on the device cannot be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device holds no full-size picture of this photo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture could not be stored as JPEG</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only a screen copy of %1 x %2 is on the device</source>
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
        <source>No music application that can take files was found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To folders, and add to the &amp;music of %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExportPath</name>
    <message>
        <source>The name leads out of the destination folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no destination folder</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExportPlan</name>
    <message>
        <source>The library names no file for this item</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A file of this name is there already</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The destination folder is on the device itself, and nothing is written there</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExportReport</name>
    <message>
        <source>The report could not be written</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExportSelection</name>
    <message>
        <source>The device holds no media library.</source>
        <translation type="unfinished"></translation>
    </message>
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
    <name>ExportSummary</name>
    <message numerus="yes">
        <source>%n item(s) were copied.</source>
        <translation>
            <numerusform>%n item was copied.</numerusform>
            <numerusform>%n items were copied.</numerusform>
        </translation>
    </message>
    <message>
        <source>They are in %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n item(s) were skipped: there were files of their names already.</source>
        <translation>
            <numerusform>%n item was skipped: there was a file of its name already.</numerusform>
            <numerusform>%n items were skipped: there were files of their names already.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n item(s) were not copied:</source>
        <translation>
            <numerusform>%n item was not copied:</numerusform>
            <numerusform>%n items were not copied:</numerusform>
        </translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>and %n other reason(s)</source>
        <translation>
            <numerusform>and %n other reason</numerusform>
            <numerusform>and %n other reasons</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n time(s) the music application did not take a file.</source>
        <translation>
            <numerusform>Once the music application did not take a file.</numerusform>
            <numerusform>%n times the music application did not take a file.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FaultReport</name>
    <message>
        <source> has encountered an unexpected error. Please email this report to %1 so it can be fixed in the next release.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FinishAlert</name>
    <message>
        <source>The folder could not be opened</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing could be copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Finished, with %n item(s) not copied</source>
        <translation>
            <numerusform>Finished, with %n item not copied</numerusform>
            <numerusform>Finished, with %n items not copied</numerusform>
        </translation>
    </message>
    <message>
        <source>Not all of the device could be read:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show &amp;Report</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open &amp;Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export canceled!</source>
        <translation>The export was canceled.</translation>
    </message>
    <message>
        <source>Export finished!</source>
        <translation>The export is finished.</translation>
    </message>
</context>
<context>
    <name>FolderRemoval</name>
    <message>
        <source>The folder could not be removed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folder is a link or somebody else&apos;s</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>GuideView</name>
    <message>
        <source>Guide</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HelpWindow</name>
    <message>
        <source>%1 Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search the guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forward</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Chapters</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2</source>
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
        <source>The device was disconnected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” cannot be played: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n time(s) the music application did not take a file</source>
        <translation>
            <numerusform>once the music application did not take a file</numerusform>
            <numerusform>%n times the music application did not take a file</numerusform>
        </translation>
    </message>
    <message>
        <source>Begin export...</source>
        <translation>The export begins…</translation>
    </message>
    <message>
        <source>Export Canceled!</source>
        <translation>Export canceled</translation>
    </message>
    <message>
        <source>Export Finished!</source>
        <translation>Export finished</translation>
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
    <name>LibraryProblems</name>
    <message>
        <source>The device has music, but no music library that is known here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device has photos, but no photo library that is known here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device has pictures, but no camera roll that is known here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device has recordings, but no list of voice memos that is known here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device has books, but no list of books that is known here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The music library is damaged: its file is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The photo library is damaged: its file is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The camera roll is damaged: its file is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The list of voice memos is damaged: its file is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The list of books is damaged: its file is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The music library is damaged. What could be read of it is shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The photo library is damaged. What could be read of it is shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The camera roll is damaged. What could be read of it is shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The list of voice memos is damaged. What could be read of it is shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The list of books is damaged. What could be read of it is shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>The music library is damaged: %1 of %n tracks could be read.</source>
        <translation>
            <numerusform>The music library is damaged: %1 of %n track could be read.</numerusform>
            <numerusform>The music library is damaged: %1 of %n tracks could be read.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The photo library is damaged: %1 of %n photos could be read.</source>
        <translation>
            <numerusform>The photo library is damaged: %1 of %n photo could be read.</numerusform>
            <numerusform>The photo library is damaged: %1 of %n photos could be read.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The list of voice memos is damaged: %1 of %n recordings could be read.</source>
        <translation>
            <numerusform>The list of voice memos is damaged: %1 of %n recording could be read.</numerusform>
            <numerusform>The list of voice memos is damaged: %1 of %n recordings could be read.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The list of books is damaged: %1 of %n books could be read.</source>
        <translation>
            <numerusform>The list of books is damaged: %1 of %n book could be read.</numerusform>
            <numerusform>The list of books is damaged: %1 of %n books could be read.</numerusform>
        </translation>
    </message>
    <message>
        <source>Part of the music library is of a kind that is not known here, and is not shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of the photo library is of a kind that is not known here, and is not shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of the camera roll is of a kind that is not known here, and is not shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of the list of voice memos is of a kind that is not known here, and is not shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of the list of books is of a kind that is not known here, and is not shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of the music library is larger than anything that is known, and was not read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of the photo library is larger than anything that is known, and was not read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of the camera roll is larger than anything that is known, and was not read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of the list of voice memos is larger than anything that is known, and was not read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of the list of books is larger than anything that is known, and was not read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The music library could not be read from the device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The photo library could not be read from the device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The camera roll could not be read from the device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The list of voice memos could not be read from the device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The list of books could not be read from the device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The newest changes of the music library could not be read. It is shown as it was before them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The newest changes of the photo library could not be read. It is shown as it was before them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The newest changes of the camera roll could not be read. It is shown as it was before them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The newest changes of the list of voice memos could not be read. It is shown as it was before them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The newest changes of the list of books could not be read. It is shown as it was before them.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ListCommand</name>
    <message>
        <source>The device holds no media library.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device has no %1.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Listing</name>
    <message>
        <source>Title</source>
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
        <source>Duration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Photo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File</source>
        <translation type="unfinished"></translation>
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
        <source>Ctrl+Q</source>
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
        <source>&amp;Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Play</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show &amp;Report of Last Export…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pre&amp;ferences…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check &amp;All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Uncheck All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check &amp;Selected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>U&amp;ncheck Selected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select All P&amp;hotos</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Invert Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>C&amp;lear Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Checked &amp;Tracks…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Selected Ph&amp;otos</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Selected &amp;Playlist…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Selected Photo &amp;Album</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>E&amp;xport Everything…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Me&amp;dia…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All &amp;Music…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Mo&amp;vies…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All TV Sho&amp;ws…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Podca&amp;sts…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All A&amp;udiobooks…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All &amp;Ringtones…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All &amp;Books…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All P&amp;laylists…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All Voi&amp;ce Memos…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Export Camera Roll</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export All P&amp;hotos</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide &amp;Browser</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open &amp;Log Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Hide %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 &amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open Export Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop &amp;Export</source>
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
        <source>An export is running. Do you want to stop it and quit?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Stop and Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Go On</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MediaPlayer</name>
    <message>
        <source>It is neither sound nor film</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop could not be asked to open it</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MenuValidation</name>
    <message>
        <source>Show &amp;Browser</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide &amp;Browser</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MusicHandOver</name>
    <message>
        <source>%1 cannot read the file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no music application</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 did not take the file into the playlist &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 does not answer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copied, but not added to the music application: %1</source>
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
        <source>&amp;Download</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PhoneCopy</name>
    <message>
        <source>The connection to the device was lost</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folders on the device never end</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is neither a file nor a folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folder could not be made</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is something of this name already</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device does not tell the size of the file</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PhoneFailure</name>
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
    <message>
        <source>The phone does not answer. Unlock it and connect it again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The service usbmuxd, which reaches phones over USB, is not running. Install or start it, then connect the phone again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device does not answer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device does not answer in a way that makes sense</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device was disconnected</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PhoneFileReader</name>
    <message>
        <source>Part of the file could not be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file ended before its size was reached</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file is longer than the device reported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Whether the file changed meanwhile could not be asked</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file changed while it was read</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PhoneFiles</name>
    <message>
        <source>It was stopped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no such file on the device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The phone does not tell what this is</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folder could not be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folder holds too many files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file on the device could not be opened</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is no file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device does not tell the size of the file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file does not fit into memory</source>
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
    <name>PhotoGridModel</name>
    <message>
        <source>%1 x %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1
The device holds only a copy for its screen, %2 pixels.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PlayJob</name>
    <message>
        <source>The device has a folder in its place</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no place for a private copy</source>
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
    <message>
        <source>&amp;Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ProblemAlert</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
    <message>
        <source>Not everything could be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What is shown is what could be read of the device. It may hold more.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ProblemLine</name>
    <message>
        <source>De&amp;tails…</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%1 (and %n more problem(s))</source>
        <translation>
            <numerusform>%1 (and %n more problem)</numerusform>
            <numerusform>%1 (and %n more problems)</numerusform>
        </translation>
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
    <message>
        <source>Could not be copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Planned</source>
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
    <message>
        <source>&amp;Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Save…</source>
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
    <message numerus="yes">
        <source>%n more are checked elsewhere</source>
        <translation>
            <numerusform>%n more is checked elsewhere</numerusform>
            <numerusform>%n more are checked elsewhere</numerusform>
        </translation>
    </message>
    <message>
        <source>Export %L1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SystemFailure</name>
    <message>
        <source>There is no such file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What holds the file has gone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is a link on the way, and it is not followed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The path leads out of its folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is no file that can be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file could not be read</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TemporaryCopy</name>
    <message>
        <source>The file could not be read to its end</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no such file on the device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No private copy of the file could be made</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The reading was stopped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file is a link, and links on a device are not followed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is something that is no file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file is larger than any library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no private folder for copies on this computer</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Terminal</name>
    <message>
        <source>Standard output could not be written</source>
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
    <message>
        <source>Check mark of %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check mark</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>iPodDevice</name>
    <message>
        <source>The path leads out of the device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is a link, and links on a device are not followed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device was disconnected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file changed while it was read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 bytes were copied</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
