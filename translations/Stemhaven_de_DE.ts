<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>BoolDot</name>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
</context>
<context>
    <name>EmptyState</name>
    <message>
        <source>No projects yet</source>
        <translation>Noch keine Projekte</translation>
    </message>
    <message>
        <source>Choose the folder where you keep your Logic projects, or drop it here.</source>
        <translation>Wähle den Ordner mit deinen Logic-Projekten, oder lege ihn hier ab.</translation>
    </message>
    <message>
        <source>Add Folder…</source>
        <translation>Ordner hinzufügen …</translation>
    </message>
    <message>
        <source>Looking for projects…</source>
        <translation>Projekte werden gesucht …</translation>
    </message>
    <message>
        <source>They appear here as soon as your folders have been looked through.</source>
        <translation>Sie erscheinen hier, sobald deine Ordner durchsucht sind.</translation>
    </message>
    <message>
        <source>All projects are hidden</source>
        <translation>Alle Projekte sind ausgeblendet</translation>
    </message>
    <message>
        <source>Every project is completed or ignored, and those are not shown at the moment.</source>
        <translation>Jedes Projekt ist abgeschlossen oder wird ignoriert, und solche werden gerade nicht gezeigt.</translation>
    </message>
    <message>
        <source>Show Hidden Projects</source>
        <translation>Ausgeblendete Projekte zeigen</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Nichts gefunden</translation>
    </message>
    <message>
        <source>No project matches “%1”.</source>
        <translation>Kein Projekt passt zu „%1“.</translation>
    </message>
    <message>
        <source>Clear Search</source>
        <translation>Suche löschen</translation>
    </message>
</context>
<context>
    <name>FolderAdder</name>
    <message>
        <source>Add Folder</source>
        <translation>Ordner hinzufügen</translation>
    </message>
    <message>
        <source>Could not add folder</source>
        <translation>Der Ordner konnte nicht hinzugefügt werden</translation>
    </message>
    <message>
        <source>Root monitoring is not allowed.</source>
        <translation>Das Wurzelverzeichnis kann nicht überwacht werden.</translation>
    </message>
    <message>
        <source>Please choose a folder that contains your project files.</source>
        <translation>Bitte wähle einen Ordner, der deine Projekte enthält.</translation>
    </message>
    <message>
        <source>Could not add new folder to watch</source>
        <translation>Der neue Ordner konnte nicht in die Überwachung aufgenommen werden</translation>
    </message>
</context>
<context>
    <name>HeaderSorting</name>
    <message>
        <source>Projects sorting failed.</source>
        <translation>Die Projekte konnten nicht sortiert werden.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Focusing on search failed.</source>
        <translation>Das Suchfeld konnte nicht angesprungen werden.</translation>
    </message>
    <message>
        <source>Restarting project monitor failed.</source>
        <translation>Die Überwachung der Projekte konnte nicht neu gestartet werden.</translation>
    </message>
</context>
<context>
    <name>ProgressBar</name>
    <message>
        <source>%1%</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>ProjectsPane</name>
    <message>
        <source>Projects</source>
        <translation>Projekte</translation>
    </message>
    <message>
        <source>Reload projects failed.</source>
        <translation>Die Projekte konnten nicht neu geladen werden.</translation>
    </message>
    <message>
        <source>Table restoration has failed</source>
        <translation>Die Tabelle konnte nicht wiederhergestellt werden</translation>
    </message>
    <message>
        <source>All projects</source>
        <translation>Alle Projekte</translation>
    </message>
    <message>
        <source>All projects matching &apos;%1&apos;</source>
        <translation>Alle Projekte passend zu „%1“</translation>
    </message>
    <message>
        <source>%1 (%3 found)</source>
        <translation>%1 (%3 gefunden)</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search Projects</source>
        <translation>Projekte durchsuchen</translation>
    </message>
</context>
<context>
    <name>StarEditor</name>
    <message>
        <source>Rating</source>
        <translation>Bewertung</translation>
    </message>
</context>
<context>
    <name>StarRating</name>
    <message>
        <source>%1 of %2 stars</source>
        <translation>%1 von %2 Sternen</translation>
    </message>
</context>
<context>
    <name>Stemhaven::DatabaseInit</name>
    <message>
        <source>Could not find database version! Please restart Stemhaven</source>
        <translation>Die Version der Datenbank wurde nicht gefunden! Bitte starte Stemhaven neu</translation>
    </message>
    <message>
        <source>Could not setup main folders to monitor! Please restart Stemhaven</source>
        <translation>Die überwachten Ordner konnten nicht eingerichtet werden! Bitte starte Stemhaven neu</translation>
    </message>
</context>
<context>
    <name>Stemhaven::DatabaseInitStatements</name>
    <message>
        <source>Arrangement Status Unknown</source>
        <translation>Stand des Arrangements unbekannt</translation>
    </message>
    <message>
        <source>Needs Layering</source>
        <translation>Braucht weitere Schichten</translation>
    </message>
    <message>
        <source>Needs Progression</source>
        <translation>Braucht Entwicklung</translation>
    </message>
    <message>
        <source>Needs Intro</source>
        <translation>Braucht Intro</translation>
    </message>
    <message>
        <source>Needs Outro</source>
        <translation>Braucht Outro</translation>
    </message>
    <message>
        <source>Needs Looping</source>
        <translation>Braucht Loops</translation>
    </message>
    <message>
        <source>Arrangement Done</source>
        <translation>Arrangement fertig</translation>
    </message>
    <message>
        <source>Lyrics Status Unknown</source>
        <translation>Stand des Textes unbekannt</translation>
    </message>
    <message>
        <source>No Lyrics</source>
        <translation>Ohne Text</translation>
    </message>
    <message>
        <source>Needs Lyrics</source>
        <translation>Braucht Text</translation>
    </message>
    <message>
        <source>Lyric Writing In Progress</source>
        <translation>Text in Arbeit</translation>
    </message>
    <message>
        <source>Lyrics Done</source>
        <translation>Text fertig</translation>
    </message>
    <message>
        <source>Recording Status Unknown</source>
        <translation>Stand der Aufnahmen unbekannt</translation>
    </message>
    <message>
        <source>No Recording Needed</source>
        <translation>Keine Aufnahmen nötig</translation>
    </message>
    <message>
        <source>Needs Takes</source>
        <translation>Braucht Takes</translation>
    </message>
    <message>
        <source>Needs Vocal Takes</source>
        <translation>Braucht Gesangs-Takes</translation>
    </message>
    <message>
        <source>Needs Instrument Takes</source>
        <translation>Braucht Instrument-Takes</translation>
    </message>
    <message>
        <source>Recording Done</source>
        <translation>Aufnahmen fertig</translation>
    </message>
    <message>
        <source>Mix/Master Status Unknown</source>
        <translation>Stand von Mix/Master unbekannt</translation>
    </message>
    <message>
        <source>Needs Mixing</source>
        <translation>Braucht Mix</translation>
    </message>
    <message>
        <source>Needs EQ</source>
        <translation>Braucht EQ</translation>
    </message>
    <message>
        <source>Needs FX</source>
        <translation>Braucht Effekte</translation>
    </message>
    <message>
        <source>Needs Playtesting</source>
        <translation>Braucht Hörtest</translation>
    </message>
    <message>
        <source>Mix/Master Done</source>
        <translation>Mix/Master fertig</translation>
    </message>
</context>
<context>
    <name>Stemhaven::ProjectMonitor</name>
    <message>
        <source>Untitled</source>
        <translation>Ohne Titel</translation>
    </message>
</context>
<context>
    <name>Stemhaven::QueryBuilder</name>
    <message>
        <source>Progress </source>
        <translation>Fortschritt </translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Release Name</source>
        <translation>Name der Veröffentlichung</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>Künstler</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Album</translation>
    </message>
    <message>
        <source>Rating</source>
        <translation>Bewertung</translation>
    </message>
    <message>
        <source>Tempo</source>
        <translation>Tempo</translation>
    </message>
    <message>
        <source>Created </source>
        <translation>Erstellt </translation>
    </message>
    <message>
        <source>Last Modified </source>
        <translation>Zuletzt geändert </translation>
    </message>
    <message>
        <source>Released</source>
        <translation>Veröffentlicht</translation>
    </message>
    <message>
        <source>Completed </source>
        <translation>Abgeschlossen </translation>
    </message>
    <message>
        <source>Ignored </source>
        <translation>Ignoriert </translation>
    </message>
    <message>
        <source>Tracks</source>
        <translation>Spuren</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Tonart</translation>
    </message>
    <message>
        <source>Time Signature</source>
        <translation>Taktart</translation>
    </message>
    <message>
        <source>Release Date</source>
        <translation>Veröffentlicht am</translation>
    </message>
    <message>
        <source>ISRC</source>
        <translation>ISRC</translation>
    </message>
    <message>
        <source>UPC</source>
        <translation>UPC</translation>
    </message>
    <message>
        <source>Logic Version</source>
        <translation>Logic-Version</translation>
    </message>
    <message>
        <source>Sample Rate</source>
        <translation>Abtastrate</translation>
    </message>
    <message>
        <source>Filepath</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Filename</source>
        <translation>Dateiname</translation>
    </message>
</context>
<context>
    <name>TableSearch</name>
    <message>
        <source>Search failed.</source>
        <translation>Die Suche ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Search save failed.</source>
        <translation>Die Suche konnte nicht gespeichert werden.</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Stemhaven is already running.</source>
        <translation>Stemhaven läuft bereits.</translation>
    </message>
</context>
</TS>
