<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>AddFilterForm</name>
    <message>
        <source>Save Search</source>
        <translation>Suche speichern</translation>
    </message>
    <message>
        <source>Enter the search term to save</source>
        <translation>Suchbegriff, der gespeichert werden soll</translation>
    </message>
    <message>
        <source>Search term</source>
        <translation>Suchbegriff</translation>
    </message>
    <message>
        <source>Add Collection</source>
        <translation>Sammlung hinzufügen</translation>
    </message>
    <message>
        <source>Enter the name of the new Collection</source>
        <translation>Name der neuen Sammlung</translation>
    </message>
    <message>
        <source>Rename Collection</source>
        <translation>Sammlung umbenennen</translation>
    </message>
    <message>
        <source>Edit the name of the Collection</source>
        <translation>Neuer Name der Sammlung</translation>
    </message>
    <message>
        <source>Collection name</source>
        <translation>Name der Sammlung</translation>
    </message>
    <message>
        <source>Add Genre</source>
        <translation>Genre hinzufügen</translation>
    </message>
    <message>
        <source>Enter the name of the new Genre</source>
        <translation>Name des neuen Genres</translation>
    </message>
    <message>
        <source>Rename Genre</source>
        <translation>Genre umbenennen</translation>
    </message>
    <message>
        <source>Edit the name of the Genre</source>
        <translation>Neuer Name des Genres</translation>
    </message>
    <message>
        <source>Genre name</source>
        <translation>Name des Genres</translation>
    </message>
    <message>
        <source>Add Tag</source>
        <translation>Tag hinzufügen</translation>
    </message>
    <message>
        <source>Enter the name of the new Tag</source>
        <translation>Name des neuen Tags</translation>
    </message>
    <message>
        <source>Rename Tag</source>
        <translation>Tag umbenennen</translation>
    </message>
    <message>
        <source>Edit the name of the Tag</source>
        <translation>Neuer Name des Tags</translation>
    </message>
    <message>
        <source>Add Arrangement Status</source>
        <translation>Stand des Arrangements hinzufügen</translation>
    </message>
    <message>
        <source>Enter the name for the new Arrangement Status</source>
        <translation>Name für den neuen Stand des Arrangements</translation>
    </message>
    <message>
        <source>Rename Arrangement Status</source>
        <translation>Stand des Arrangements umbenennen</translation>
    </message>
    <message>
        <source>Edit the name for the Arrangement Status</source>
        <translation>Neuer Name für den Stand des Arrangements</translation>
    </message>
    <message>
        <source>Arrangement Status Name</source>
        <translation>Name für den Stand des Arrangements</translation>
    </message>
    <message>
        <source>Add Lyrics Status</source>
        <translation>Stand des Textes hinzufügen</translation>
    </message>
    <message>
        <source>Enter the name for the new Lyrics Status</source>
        <translation>Name für den neuen Stand des Textes</translation>
    </message>
    <message>
        <source>Rename Lyrics Status</source>
        <translation>Stand des Textes umbenennen</translation>
    </message>
    <message>
        <source>Edit the name for the Lyrics Status</source>
        <translation>Neuer Name für den Stand des Textes</translation>
    </message>
    <message>
        <source>Lyrics Status</source>
        <translation>Stand des Textes</translation>
    </message>
    <message>
        <source>Add Recording Status</source>
        <translation>Stand der Aufnahmen hinzufügen</translation>
    </message>
    <message>
        <source>Enter the name for the new Recording Status</source>
        <translation>Name für den neuen Stand der Aufnahmen</translation>
    </message>
    <message>
        <source>Rename Recording Status</source>
        <translation>Stand der Aufnahmen umbenennen</translation>
    </message>
    <message>
        <source>Edit the name for the Recording Status</source>
        <translation>Neuer Name für den Stand der Aufnahmen</translation>
    </message>
    <message>
        <source>Recording Status</source>
        <translation>Stand der Aufnahmen</translation>
    </message>
    <message>
        <source>Add Mix/Master Status</source>
        <translation>Stand von Mix/Master hinzufügen</translation>
    </message>
    <message>
        <source>Enter the name for the new Mix/Master Status</source>
        <translation>Name für den neuen Stand von Mix/Master</translation>
    </message>
    <message>
        <source>Rename Mix/Master Status</source>
        <translation>Stand von Mix/Master umbenennen</translation>
    </message>
    <message>
        <source>Edit the name for the Mix/Master Status</source>
        <translation>Neuer Name für den Stand von Mix/Master</translation>
    </message>
    <message>
        <source>Mix/Master Status</source>
        <translation>Stand von Mix/Master</translation>
    </message>
    <message>
        <source>#newTag</source>
        <translation>#neuerTag</translation>
    </message>
    <message>
        <source>Sorry. This filter can&apos;t be edited!</source>
        <translation>Dieser Filter kann leider nicht bearbeitet werden!</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Umbenennen</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>The name &apos;%1&apos; is already in use.</source>
        <translation>Der Name „%1“ wird bereits verwendet.</translation>
    </message>
    <message>
        <source>Tags must begin with a hash &apos;#&apos; symbol.</source>
        <translation>Tags müssen mit einer Raute „#“ beginnen.</translation>
    </message>
    <message>
        <source>Adding filter failed</source>
        <translation>Der Filter konnte nicht hinzugefügt werden</translation>
    </message>
    <message>
        <source>Filter could not be renamed.</source>
        <translation>Der Filter konnte nicht umbenannt werden.</translation>
    </message>
    <message>
        <source>Cancel filter add failed.</source>
        <translation>Das Hinzufügen des Filters konnte nicht abgebrochen werden.</translation>
    </message>
    <message>
        <source>Could not insert new filter record</source>
        <translation>Der neue Filter konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Invalid filter ID</source>
        <translation>Ungültige Kennung des Filters</translation>
    </message>
    <message>
        <source>Could not rename.</source>
        <translation>Umbenennen nicht möglich.</translation>
    </message>
</context>
<context>
    <name>AdvancedPage</name>
    <message>
        <source>Debug</source>
        <translation>Fehlersuche</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Critical</source>
        <translation>Kritisch</translation>
    </message>
    <message>
        <source>Fatal</source>
        <translation>Fatal</translation>
    </message>
    <message>
        <source>Info</source>
        <translation>Info</translation>
    </message>
    <message>
        <source>&amp;Log Level:</source>
        <translation>&amp;Protokollstufe:</translation>
    </message>
    <message>
        <source>The log holds messages of this level and of those that follow it in the list.</source>
        <translation>Das Protokoll enthält Meldungen dieser Stufe und derer, die ihr in der Liste folgen.</translation>
    </message>
    <message>
        <source>It is kept in %1</source>
        <translation>Es liegt in %1</translation>
    </message>
    <message>
        <source>Advanced</source>
        <translation>Erweitert</translation>
    </message>
    <message>
        <source>Could not set log level</source>
        <translation>Die Protokollstufe konnte nicht gesetzt werden</translation>
    </message>
</context>
<context>
    <name>AssociationMenu</name>
    <message>
        <source>Add to &amp;Collection</source>
        <translation>Zu &amp;Sammlung hinzufügen</translation>
    </message>
    <message>
        <source>Could not add to collection</source>
        <translation>Hinzufügen zur Sammlung nicht möglich</translation>
    </message>
    <message>
        <source>Could not create collection</source>
        <translation>Die Sammlung konnte nicht angelegt werden</translation>
    </message>
    <message>
        <source>Set &amp;Genre</source>
        <translation>&amp;Genre festlegen</translation>
    </message>
    <message>
        <source>Could not set genre</source>
        <translation>Das Genre konnte nicht festgelegt werden</translation>
    </message>
    <message>
        <source>Could not create genre</source>
        <translation>Das Genre konnte nicht angelegt werden</translation>
    </message>
    <message>
        <source>Add &amp;Tag</source>
        <translation>&amp;Tag hinzufügen</translation>
    </message>
    <message>
        <source>Could not add tag</source>
        <translation>Der Tag konnte nicht hinzugefügt werden</translation>
    </message>
    <message>
        <source>Could not create tag</source>
        <translation>Der Tag konnte nicht angelegt werden</translation>
    </message>
    <message>
        <source>&amp;New...</source>
        <translation>&amp;Neu …</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>BoolDot</name>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
</context>
<context>
    <name>CellValue</name>
    <message>
        <source>MMM d, yyyy</source>
        <translation>d. MMM yyyy</translation>
    </message>
    <message>
        <source>MMM d, yyyy h:mm A</source>
        <translation>d. MMM yyyy HH:mm</translation>
    </message>
</context>
<context>
    <name>ColumnsPage</name>
    <message>
        <source>Columns</source>
        <translation>Spalten</translation>
    </message>
    <message>
        <source>The space bar shows or hides the selected column, %1 and %2 move it.</source>
        <translation>Die Leertaste blendet die gewählte Spalte ein oder aus, %1 und %2 verschieben sie.</translation>
    </message>
    <message>
        <source>Table</source>
        <translation>Tabelle</translation>
    </message>
    <message>
        <source>Select which columns are visible. Invisible columns are not used for search results. Dragging a row will rearrange the column order.</source>
        <translation>Wähle, welche Spalten sichtbar sind. In unsichtbaren Spalten wird nicht gesucht. Wer eine Zeile zieht, ändert die Reihenfolge der Spalten.</translation>
    </message>
    <message>
        <source>Could not save column settings</source>
        <translation>Die Einstellungen der Spalten konnten nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Column index could not be retreived from list!</source>
        <translation>Die Spalte ist in der Liste nicht zu finden!</translation>
    </message>
</context>
<context>
    <name>CurrentFilter</name>
    <message>
        <source> matching &apos;%1&apos;</source>
        <translation> mit „%1“</translation>
    </message>
    <message>
        <source>Collection &apos;%1&apos;</source>
        <translation>Sammlung „%1“</translation>
    </message>
    <message>
        <source>Genre &apos;%1&apos;</source>
        <translation>Genre „%1“</translation>
    </message>
    <message>
        <source>Tag &apos;%1&apos;</source>
        <translation>Tag „%1“</translation>
    </message>
    <message>
        <source>Arrangement Status &apos;%1&apos;</source>
        <translation>Stand des Arrangements „%1“</translation>
    </message>
    <message>
        <source>Lyrics Status &apos;%1&apos;</source>
        <translation>Stand des Textes „%1“</translation>
    </message>
    <message>
        <source>Recording Status &apos;%1&apos;</source>
        <translation>Stand der Aufnahmen „%1“</translation>
    </message>
    <message>
        <source>Mix/Master Status &apos;%1&apos;</source>
        <translation>Stand von Mix/Master „%1“</translation>
    </message>
    <message>
        <source>All projects</source>
        <translation>Alle Projekte</translation>
    </message>
</context>
<context>
    <name>DatabaseAdvice</name>
    <message>
        <source>The catalogue cannot be written. Make sure that you may read and write the folder %1, then try again.</source>
        <translation>In den Katalog kann nicht geschrieben werden. Sorge dafür, dass du den Ordner %1 lesen und beschreiben darfst, und versuche es dann noch einmal.</translation>
    </message>
    <message>
        <source>The disk with the catalogue is full. Make some room on it, then try again.</source>
        <translation>Der Datenträger mit dem Katalog ist voll. Schaffe dort Platz und versuche es dann noch einmal.</translation>
    </message>
    <message>
        <source>Another program is using the catalogue. Wait until it has finished, then try again.</source>
        <translation>Ein anderes Programm benutzt gerade den Katalog. Warte, bis es fertig ist, und versuche es dann noch einmal.</translation>
    </message>
    <message>
        <source>The catalogue is damaged. Quit Stemhaven and put a copy of the folder %1 from before in its place.</source>
        <translation>Der Katalog ist beschädigt. Beende Stemhaven und ersetze den Ordner %1 durch eine frühere Kopie.</translation>
    </message>
</context>
<context>
    <name>DetailsPane</name>
    <message>
        <source>Project Name</source>
        <translation>Projektname</translation>
    </message>
    <message>
        <source>98 BPM | 4/4 | Cmajor</source>
        <translation>98 BPM | 4/4 | C-Dur</translation>
    </message>
    <message>
        <source>/path/to/project</source>
        <translation>/Pfad/zum/Projekt</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Release</source>
        <translation>Veröffentlichung</translation>
    </message>
    <message>
        <source>Progress: 50%</source>
        <translation>Fortschritt: 50 %</translation>
    </message>
    <message>
        <source>Project Details</source>
        <translation>Projektdetails</translation>
    </message>
    <message>
        <source>Select a project to see its details.</source>
        <translation>Wähle ein Projekt aus, um seine Details zu sehen.</translation>
    </message>
    <message>
        <source>The details could not be read. Click the project to try again.</source>
        <translation>Die Details konnten nicht gelesen werden. Klicke auf das Projekt, um es erneut zu versuchen.</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>(mixed)</source>
        <translation>(verschieden)</translation>
    </message>
    <message>
        <source>%1 projects</source>
        <translation>%1 Projekte</translation>
    </message>
    <message>
        <source>%1 projects are selected. What you change here changes all of them.</source>
        <translation>%1 Projekte sind ausgewählt. Was du hier änderst, ändert sich bei allen.</translation>
    </message>
    <message>
        <source>Progress: </source>
        <translation>Fortschritt: </translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Setting project progress failed.</source>
        <translation>Der Fortschritt konnte nicht gesetzt werden.</translation>
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
        <source>No projects in %1 yet</source>
        <translation>Noch keine Projekte in %1</translation>
    </message>
    <message>
        <source>Projects that you save there appear here. Stemhaven watches:</source>
        <translation>Projekte, die du dort sicherst, erscheinen hier. Stemhaven überwacht:</translation>
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
        <source>All projects are hidden</source>
        <translation>Alle Projekte sind ausgeblendet</translation>
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
    <message>
        <source>Completed and ignored projects are not shown at the moment.</source>
        <translation>Abgeschlossene und ignorierte Projekte werden gerade nicht gezeigt.</translation>
    </message>
    <message>
        <source>1 hidden project matches</source>
        <translation>1 ausgeblendetes Projekt passt</translation>
    </message>
    <message>
        <source>%1 hidden projects match</source>
        <translation>%1 ausgeblendete Projekte passen</translation>
    </message>
    <message>
        <source>Nothing here yet</source>
        <translation>Noch nichts hier</translation>
    </message>
    <message>
        <source>No project that is shown belongs to “%1”. Right-click a project to file it.</source>
        <translation>Kein gezeigtes Projekt gehört zu „%1“. Mit einem Rechtsklick auf ein Projekt ordnest du es ein.</translation>
    </message>
    <message>
        <source>Show All Projects</source>
        <translation>Alle Projekte zeigen</translation>
    </message>
    <message>
        <source>All columns are hidden</source>
        <translation>Alle Spalten sind ausgeblendet</translation>
    </message>
    <message>
        <source>The table has nothing to show of your projects, and a search looks at nothing.</source>
        <translation>Die Tabelle kann von deinen Projekten nichts zeigen, und eine Suche sieht nirgends nach.</translation>
    </message>
    <message>
        <source>Show the Names</source>
        <translation>Namen zeigen</translation>
    </message>
    <message>
        <source>Your projects could not be read</source>
        <translation>Deine Projekte konnten nicht gelesen werden</translation>
    </message>
    <message>
        <source>Another program may be using the catalogue, or may have spoilt it. Close the other program and try again. If that does not help, quit Stemhaven and start it again: it then checks the catalogue and says what to do. The log says more:
%1</source>
        <translation>Vielleicht benutzt ein anderes Programm den Katalog oder hat ihn beschädigt. Schließe das andere Programm und versuche es noch einmal. Hilft das nicht, beende Stemhaven und starte es neu: Dann prüft es den Katalog und sagt, was zu tun ist. Mehr steht im Protokoll:
%1</translation>
    </message>
    <message>
        <source>They appear here while your folders are being looked through.</source>
        <translation>Sie erscheinen hier, während deine Ordner durchsucht werden.</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
</context>
<context>
    <name>FilterSidebar</name>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>E&amp;ntfernen</translation>
    </message>
    <message>
        <source>Add...</source>
        <translation>Hinzufügen …</translation>
    </message>
    <message>
        <source>Rename...</source>
        <translation>Umbenennen …</translation>
    </message>
</context>
<context>
    <name>FilterTreeView</name>
    <message>
        <source>Filters</source>
        <translation>Filter</translation>
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
    <message>
        <source>This folder is watched already.</source>
        <translation>Dieser Ordner wird schon überwacht.</translation>
    </message>
</context>
<context>
    <name>FolderRemover</name>
    <message>
        <source>Could not remove folder</source>
        <translation>Der Ordner konnte nicht entfernt werden</translation>
    </message>
    <message>
        <source>Do you want Stemhaven to stop looking for projects in %1?</source>
        <translation>Soll Stemhaven in %1 nicht mehr nach Projekten suchen?</translation>
    </message>
    <message>
        <source>Stemhaven will keep any projects that have been found so far. New projects in this folder won&apos;t be added automatically!</source>
        <translation>Stemhaven behält alle Projekte, die bisher gefunden wurden. Neue Projekte in diesem Ordner kommen nicht mehr von selbst hinzu!</translation>
    </message>
    <message>
        <source>Could not remove folder to watch</source>
        <translation>Der überwachte Ordner konnte nicht entfernt werden</translation>
    </message>
</context>
<context>
    <name>FolderTreeItemModel</name>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Last Search</source>
        <translation>Letzte Suche</translation>
    </message>
    <message>
        <source>Saved Searches</source>
        <translation>Gespeicherte Suchen</translation>
    </message>
    <message>
        <source>Collections</source>
        <translation>Sammlungen</translation>
    </message>
    <message>
        <source>Genres</source>
        <translation>Genres</translation>
    </message>
    <message>
        <source>Tags</source>
        <translation>Tags</translation>
    </message>
    <message>
        <source>Arrangement Status</source>
        <translation>Stand des Arrangements</translation>
    </message>
    <message>
        <source>Lyrics Status</source>
        <translation>Stand des Textes</translation>
    </message>
    <message>
        <source>Recording Status</source>
        <translation>Stand der Aufnahmen</translation>
    </message>
    <message>
        <source>Mix/Master Status</source>
        <translation>Stand von Mix/Master</translation>
    </message>
    <message>
        <source>Filters</source>
        <translation>Filter</translation>
    </message>
</context>
<context>
    <name>HeaderMenus</name>
    <message>
        <source>Sort &amp;By</source>
        <translation>&amp;Sortieren nach</translation>
    </message>
    <message>
        <source>C&amp;olumn</source>
        <translation>S&amp;palte</translation>
    </message>
    <message>
        <source>&amp;Wider</source>
        <translation>&amp;Breiter</translation>
    </message>
    <message>
        <source>&amp;Narrower</source>
        <translation>&amp;Schmaler</translation>
    </message>
    <message>
        <source>&amp;Unsorted</source>
        <translation>&amp;Unsortiert</translation>
    </message>
    <message>
        <source>&amp;Ascending</source>
        <translation>&amp;Aufsteigend</translation>
    </message>
    <message>
        <source>&amp;Descending</source>
        <translation>A&amp;bsteigend</translation>
    </message>
    <message>
        <source>&amp;Show</source>
        <translation>&amp;Anzeigen</translation>
    </message>
    <message>
        <source>Move &amp;Left</source>
        <translation>Nach &amp;links</translation>
    </message>
    <message>
        <source>Move &amp;Right</source>
        <translation>Nach &amp;rechts</translation>
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
    <name>ImageView</name>
    <message>
        <source>Project picture</source>
        <translation>Bild des Projekts</translation>
    </message>
    <message>
        <source>No picture</source>
        <translation>Kein Bild</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Showing preferences failed.</source>
        <translation>Die Einstellungen konnten nicht gezeigt werden.</translation>
    </message>
    <message>
        <source>Showing recovery dialog failed.</source>
        <translation>Der Dialog zum Wiederherstellen konnte nicht gezeigt werden.</translation>
    </message>
    <message>
        <source>Focusing on search failed.</source>
        <translation>Das Suchfeld konnte nicht angesprungen werden.</translation>
    </message>
    <message>
        <source>Restarting project monitor failed.</source>
        <translation>Die Überwachung der Projekte konnte nicht neu gestartet werden.</translation>
    </message>
    <message>
        <source>Filter Sidebar</source>
        <translation>Filterleiste</translation>
    </message>
    <message>
        <source>Project Details</source>
        <translation>Projektdetails</translation>
    </message>
    <message>
        <source>Open project failed.</source>
        <translation>Das Projekt konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Show in finder failed.</source>
        <translation>Das Anzeigen im Finder ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Show package contents failed.</source>
        <translation>Das Anzeigen des Paketinhalts ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Could not ignore project</source>
        <translation>Das Projekt konnte nicht ignoriert werden</translation>
    </message>
    <message>
        <source>Could not delete record</source>
        <translation>Der Eintrag konnte nicht gelöscht werden</translation>
    </message>
    <message>
        <source>Undo failed.</source>
        <translation>Widerrufen fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Redo failed.</source>
        <translation>Wiederholen fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Scrolling failed.</source>
        <translation>Blättern fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Collapsing filter folders failed.</source>
        <translation>Die Filtergruppen konnten nicht eingeklappt werden.</translation>
    </message>
    <message>
        <source>Show filter sidebar failed.</source>
        <translation>Die Filterleiste konnte nicht eingeblendet werden.</translation>
    </message>
    <message>
        <source>Hiding filter sidebar failed.</source>
        <translation>Die Filterleiste konnte nicht ausgeblendet werden.</translation>
    </message>
    <message>
        <source>Showing project details failed.</source>
        <translation>Die Projektdetails konnten nicht eingeblendet werden.</translation>
    </message>
    <message>
        <source>Hiding project details failed.</source>
        <translation>Die Projektdetails konnten nicht ausgeblendet werden.</translation>
    </message>
    <message>
        <source>Sidebar toggle failed.</source>
        <translation>Die Filterleiste konnte nicht umgeschaltet werden.</translation>
    </message>
    <message>
        <source>Project info toggle failed.</source>
        <translation>Die Projektdetails konnten nicht umgeschaltet werden.</translation>
    </message>
    <message>
        <source>Reload all failed.</source>
        <translation>Das Neuladen ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>One of the folders that Stemhaven monitors for projects has changed!</source>
        <translation>Einer der Ordner, in denen Stemhaven nach Projekten sucht, hat sich geändert!</translation>
    </message>
    <message>
        <source>Please update the folders in the Monitor tab in Stemhaven&apos;s Preferences.</source>
        <translation>Bitte passe die Ordner in den Einstellungen von Stemhaven unter „Überwachung“ an.</translation>
    </message>
    <message>
        <source>Activating filter failed.</source>
        <translation>Der Filter konnte nicht angewendet werden.</translation>
    </message>
    <message>
        <source>Filter actions refresh failed.</source>
        <translation>Die Filtermenüs konnten nicht aufgefrischt werden.</translation>
    </message>
    <message>
        <source>Adding filter to selected failed</source>
        <translation>Der Filter konnte der Auswahl nicht hinzugefügt werden</translation>
    </message>
    <message>
        <source>Associating project with filter failed</source>
        <translation>Das Projekt konnte nicht eingeordnet werden</translation>
    </message>
    <message>
        <source>Filter could not be renamed.</source>
        <translation>Der Filter konnte nicht umbenannt werden.</translation>
    </message>
    <message>
        <source>Could not remove filter</source>
        <translation>Der Filter konnte nicht entfernt werden</translation>
    </message>
    <message>
        <source>Cannot remove filter. Could not find primary key...</source>
        <translation>Der Filter kann nicht entfernt werden: Seine Kennung fehlt …</translation>
    </message>
    <message>
        <source>Could not select project</source>
        <translation>Das Projekt konnte nicht ausgewählt werden</translation>
    </message>
    <message>
        <source>The project&apos;s details could not be read.</source>
        <translation>Die Details des Projekts konnten nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Disassociating project with filter failed.</source>
        <translation>Das Projekt konnte nicht herausgenommen werden.</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Widerrufen</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>Wieder&amp;holen</translation>
    </message>
    <message>
        <source>Hiding completed projects failed.</source>
        <translation>Abgeschlossene Projekte konnten nicht ausgeblendet werden.</translation>
    </message>
    <message>
        <source>Could not add folder</source>
        <translation>Der Ordner konnte nicht hinzugefügt werden</translation>
    </message>
    <message>
        <source>Showing release dialog failed.</source>
        <translation>Der Dialog zur Veröffentlichung konnte nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>Showing the calendar failed.</source>
        <translation>Der Kalender konnte nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>Backup failed.</source>
        <translation>Die Sicherung ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Import backup failed.</source>
        <translation>Das Einspielen der Sicherung ist fehlgeschlagen.</translation>
    </message>
</context>
<context>
    <name>MonitorPage</name>
    <message>
        <source>Could not load project folders to watch</source>
        <translation>Die überwachten Ordner konnten nicht geladen werden</translation>
    </message>
    <message>
        <source>Could not add folder</source>
        <translation>Der Ordner konnte nicht hinzugefügt werden</translation>
    </message>
    <message>
        <source>Selecting monitored root search path failed.</source>
        <translation>Der überwachte Ordner konnte nicht ausgewählt werden.</translation>
    </message>
    <message>
        <source> Assign Genre based on Directory</source>
        <translation> Genre nach dem Ordner vergeben</translation>
    </message>
    <message>
        <source>Monitor</source>
        <translation>Überwachung</translation>
    </message>
    <message>
        <source>Add the folders where your Logic projects are. Stemhaven will monitor these to automatically find new projects and look for changes.</source>
        <translation>Füge die Ordner hinzu, in denen deine Logic-Projekte liegen. Stemhaven überwacht sie, findet neue Projekte von selbst und bemerkt Änderungen.</translation>
    </message>
    <message>
        <source>Restarting project monitor failed.</source>
        <translation>Die Überwachung der Projekte konnte nicht neu gestartet werden.</translation>
    </message>
    <message>
        <source>Could not save setting to assign genre based on the folder name</source>
        <translation>Die Einstellung, Genres nach dem Ordner zu vergeben, konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>New projects found will have their genre automatically set to their directory. Do you want Stemhaven to for this for all projects it found before?</source>
        <translation>Neu gefundene Projekte bekommen von selbst das Genre, das wie ihr Ordner heißt. Soll Stemhaven das auch für alle Projekte tun, die es schon gefunden hat?</translation>
    </message>
    <message>
        <source>New genres are named the same as the directories. For example, ~/Logic/Pop/MySong.logicx creates the genre &apos;Pop&apos;. If you&apos;ve already assigned a genre then this won&apos;t change it.</source>
        <translation>Neue Genres heißen wie die Ordner. Zum Beispiel entsteht aus ~/Logic/Pop/MySong.logicx das Genre „Pop“. Ein Genre, das du schon vergeben hast, ändert sich dadurch nicht.</translation>
    </message>
</context>
<context>
    <name>NotFound</name>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>Not found: %1 of %2</source>
        <extracomment>How many of the selected projects</extracomment>
        <translation>Nicht gefunden: %1 von %2</translation>
    </message>
    <message>
        <source>Connect its drive, or put the project back: it then returns here by itself, with all that you noted.</source>
        <translation>Schließe das Laufwerk wieder an oder lege das Projekt zurück: Dann kommt es hier von selbst wieder, mit allem, was du dazu notiert hast.</translation>
    </message>
    <message>
        <source>Connect their drives, or put the projects back: they then return here by themselves, with all that you noted.</source>
        <translation>Schließe die Laufwerke wieder an oder lege die Projekte zurück: Dann kommen sie hier von selbst wieder, mit allem, was du dazu notiert hast.</translation>
    </message>
    <message>
        <source>The project was not found where it was last.</source>
        <translation>Das Projekt wurde nicht dort gefunden, wo es zuletzt war.</translation>
    </message>
</context>
<context>
    <name>PaneKeys</name>
    <message>
        <source>Make Pane &amp;Wider</source>
        <translation>Bereich &amp;breiter machen</translation>
    </message>
    <message>
        <source>Make Pane &amp;Narrower</source>
        <translation>Bereich sch&amp;maler machen</translation>
    </message>
</context>
<context>
    <name>PreferencesDialog</name>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>&amp;Monitor</source>
        <translation>Ü&amp;berwachung</translation>
    </message>
    <message>
        <source>&amp;Columns</source>
        <translation>&amp;Spalten</translation>
    </message>
    <message>
        <source>&amp;Status</source>
        <translation>S&amp;tatus</translation>
    </message>
    <message>
        <source>A&amp;dvanced</source>
        <translation>Er&amp;weitert</translation>
    </message>
    <message>
        <source>Preferences tab selection failed.</source>
        <translation>Die Seite der Einstellungen konnte nicht gezeigt werden.</translation>
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
    <name>ProjectEdits</name>
    <message>
        <source>Arrangement Status</source>
        <translation>Stand des Arrangements</translation>
    </message>
    <message>
        <source>Could not save arrangement status</source>
        <translation>Der Stand des Arrangements konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Lyrics Status</source>
        <translation>Stand des Textes</translation>
    </message>
    <message>
        <source>Could not save lyrics status</source>
        <translation>Der Stand des Textes konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Recording Status</source>
        <translation>Stand der Aufnahmen</translation>
    </message>
    <message>
        <source>Could not save recording status</source>
        <translation>Der Stand der Aufnahmen konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Mix/Master Status</source>
        <translation>Stand von Mix/Master</translation>
    </message>
    <message>
        <source>Could not save mix/master status</source>
        <translation>Der Stand von Mix/Master konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Add to Collection</source>
        <translation>Zu Sammlung hinzufügen</translation>
    </message>
    <message>
        <source>Could not add project to collection</source>
        <translation>Das Projekt konnte nicht zur Sammlung hinzugefügt werden</translation>
    </message>
    <message>
        <source>Set Genre</source>
        <translation>Genre festlegen</translation>
    </message>
    <message>
        <source>Could not add project to genre</source>
        <translation>Das Projekt konnte dem Genre nicht zugeordnet werden</translation>
    </message>
    <message>
        <source>Add Tag</source>
        <translation>Tag hinzufügen</translation>
    </message>
    <message>
        <source>Could not add tag to project</source>
        <translation>Dem Projekt konnte der Tag nicht hinzugefügt werden</translation>
    </message>
    <message>
        <source>Remove from Collection</source>
        <translation>Aus Sammlung entfernen</translation>
    </message>
    <message>
        <source>Remove from Genre</source>
        <translation>Aus Genre entfernen</translation>
    </message>
    <message>
        <source>Remove from Tag</source>
        <translation>Tag entfernen</translation>
    </message>
    <message>
        <source>Disassociating project with filter failed.</source>
        <translation>Das Projekt konnte nicht herausgenommen werden.</translation>
    </message>
    <message>
        <source>Rating</source>
        <translation>Bewertung</translation>
    </message>
    <message>
        <source>Could not save star rating</source>
        <translation>Die Bewertung konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Could not update progress bar</source>
        <translation>Der Fortschritt konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Ignore</source>
        <translation>Ignorieren</translation>
    </message>
    <message>
        <source>Could not ignore project</source>
        <translation>Das Projekt konnte nicht ignoriert werden</translation>
    </message>
    <message>
        <source>Delete record</source>
        <translation>Eintrag löschen</translation>
    </message>
    <message>
        <source>Could not delete record</source>
        <translation>Der Eintrag konnte nicht gelöscht werden</translation>
    </message>
    <message>
        <source>Release Details</source>
        <translation>Veröffentlichungsdetails</translation>
    </message>
    <message>
        <source>Release Date</source>
        <translation>Veröffentlichungsdatum</translation>
    </message>
    <message>
        <source>Could not save project release details</source>
        <translation>Die Veröffentlichungsdetails des Projekts konnten nicht gespeichert werden</translation>
    </message>
    <message>
        <source>%1 projects rated</source>
        <translation>%1 Projekte bewertet</translation>
    </message>
    <message>
        <source>Rating of %1 projects removed</source>
        <translation>Bewertung von %1 Projekten entfernt</translation>
    </message>
    <message>
        <source>Progress of %1 projects changed</source>
        <translation>Fortschritt von %1 Projekten geändert</translation>
    </message>
    <message>
        <source>Arrangement status of %1 projects changed</source>
        <translation>Stand des Arrangements von %1 Projekten geändert</translation>
    </message>
    <message>
        <source>Lyrics status of %1 projects changed</source>
        <translation>Stand des Textes von %1 Projekten geändert</translation>
    </message>
    <message>
        <source>Recording status of %1 projects changed</source>
        <translation>Stand der Aufnahmen von %1 Projekten geändert</translation>
    </message>
    <message>
        <source>Mix/Master status of %1 projects changed</source>
        <translation>Stand von Mix/Master von %1 Projekten geändert</translation>
    </message>
    <message>
        <source>%1 projects added to the collection</source>
        <translation>%1 Projekte zur Sammlung hinzugefügt</translation>
    </message>
    <message>
        <source>Genre of %1 projects set</source>
        <translation>Genre von %1 Projekten festgelegt</translation>
    </message>
    <message>
        <source>Tag added to %1 projects</source>
        <translation>Tag zu %1 Projekten hinzugefügt</translation>
    </message>
    <message>
        <source>Project removed from the collection</source>
        <translation>Projekt aus der Sammlung entfernt</translation>
    </message>
    <message>
        <source>%1 projects removed from the collection</source>
        <translation>%1 Projekte aus der Sammlung entfernt</translation>
    </message>
    <message>
        <source>Project removed from the genre</source>
        <translation>Projekt aus dem Genre entfernt</translation>
    </message>
    <message>
        <source>%1 projects removed from the genre</source>
        <translation>%1 Projekte aus dem Genre entfernt</translation>
    </message>
    <message>
        <source>Tag removed from the project</source>
        <translation>Tag vom Projekt entfernt</translation>
    </message>
    <message>
        <source>Tag removed from %1 projects</source>
        <translation>Tag von %1 Projekten entfernt</translation>
    </message>
    <message>
        <source>%1 projects ignored</source>
        <translation>%1 Projekte ignoriert</translation>
    </message>
    <message>
        <source>%1 projects not ignored any more</source>
        <translation>%1 Projekte nicht mehr ignoriert</translation>
    </message>
    <message>
        <source>Record deleted</source>
        <translation>Eintrag gelöscht</translation>
    </message>
    <message>
        <source>%1 records deleted</source>
        <translation>%1 Einträge gelöscht</translation>
    </message>
</context>
<context>
    <name>ProjectMenus</name>
    <message>
        <source>Re&amp;move from Collection</source>
        <translation>Aus Sa&amp;mmlung entfernen</translation>
    </message>
    <message>
        <source>Re&amp;move from Genre</source>
        <translation>Aus Genre entfer&amp;nen</translation>
    </message>
    <message>
        <source>Re&amp;move from Tag</source>
        <translation>Tag entfer&amp;nen</translation>
    </message>
    <message>
        <source>Disassociating project with filter failed.</source>
        <translation>Das Projekt konnte nicht herausgenommen werden.</translation>
    </message>
</context>
<context>
    <name>ProjectsPane</name>
    <message>
        <source>%1 hidden</source>
        <translation>%1 ausgeblendet</translation>
    </message>
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
        <source>%1 (%3 found)</source>
        <translation>%1 (%3 gefunden)</translation>
    </message>
    <message>
        <source>The projects could not be loaded. If this stays, start Stemhaven again.</source>
        <translation>Die Projekte konnten nicht geladen werden. Wenn das so bleibt, starte Stemhaven neu.</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
</context>
<context>
    <name>QMessageBox</name>
    <message>
        <source>Show Details...</source>
        <translation>Details einblenden ...</translation>
    </message>
    <message>
        <source>Hide Details...</source>
        <translation>Details ausblenden ...</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Ja</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Nein</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>RecoverCommand</name>
    <message>
        <source>Projects looked at: %1. Damaged: %2.</source>
        <translation>Geprüfte Projekte: %1. Beschädigt: %2.</translation>
    </message>
    <message>
        <source>There is no terminal to ask. Give --yes if that is what you want.</source>
        <translation>Es gibt kein Terminal für die Frage. Gib --yes an, wenn du das willst.</translation>
    </message>
    <message>
        <source>The watched folders could not be read: %1</source>
        <translation>Die überwachten Ordner konnten nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>No folders are watched.</source>
        <translation>Es werden keine Ordner überwacht.</translation>
    </message>
</context>
<context>
    <name>RecoverDialog</name>
    <message>
        <source>Select &amp;All</source>
        <translation>A&amp;lle auswählen</translation>
    </message>
    <message>
        <source>&amp;Find Recoverable Projects</source>
        <translation>Beschädigte Projekte &amp;suchen</translation>
    </message>
    <message>
        <source>&amp;Recover</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Project Recovery</source>
        <translation>Projekte wiederherstellen</translation>
    </message>
    <message>
        <source>No folders are watched. Add one to the main window first.</source>
        <translation>Es werden keine Ordner überwacht. Füge zuerst im Hauptfenster einen hinzu.</translation>
    </message>
    <message>
        <source>What is found in your watched folders is listed here. Nothing is changed by looking.</source>
        <translation>Hier steht, was in deinen überwachten Ordnern gefunden wird. Die Suche ändert nichts.</translation>
    </message>
    <message>
        <source>Sometimes Logic Pro projects can be corrupted and are missing important files needed to open them. This results in the error &quot;The file couldn&apos;t be opened because it isn&apos;t in the correct format.&quot; when trying to open them. Stemhaven can find these projects and restore the missing files for you so they can be opened again.</source>
        <translation>Manchmal sind Projekte von Logic Pro beschädigt, und wichtige Dateien fehlen, ohne die sie sich nicht öffnen lassen. Beim Öffnen erscheint dann der Fehler „The file couldn&apos;t be opened because it isn&apos;t in the correct format.“ Stemhaven kann solche Projekte finden und die fehlenden Dateien wiederherstellen, sodass sie sich wieder öffnen lassen.</translation>
    </message>
    <message>
        <source>Recoverable Projects:</source>
        <translation>Wiederherstellbare Projekte:</translation>
    </message>
    <message>
        <source>Recoverable Projects</source>
        <translation>Wiederherstellbare Projekte</translation>
    </message>
    <message>
        <source>Could not finish project recovery</source>
        <translation>Das Wiederherstellen wurde nicht beendet</translation>
    </message>
    <message>
        <source>Could not find recoverable projects!</source>
        <translation>Beschädigte Projekte konnten nicht gesucht werden!</translation>
    </message>
    <message>
        <source>Error occurred while searching for recoverable projects!</source>
        <translation>Bei der Suche nach beschädigten Projekten ist ein Fehler aufgetreten!</translation>
    </message>
    <message>
        <source>The search was cancelled before it had found anything.</source>
        <translation>Die Suche wurde abgebrochen, bevor sie etwas gefunden hatte.</translation>
    </message>
    <message>
        <source>There are no projects in your watched folders.</source>
        <translation>In deinen überwachten Ordnern gibt es keine Projekte.</translation>
    </message>
    <message>
        <source>None of your projects lacks a file that Stemhaven could restore.</source>
        <translation>Keinem deiner Projekte fehlt eine Datei, die Stemhaven wiederherstellen könnte.</translation>
    </message>
    <message>
        <source>Found %1 recoverable projects!</source>
        <translation>Wiederherstellbare Projekte gefunden: %1</translation>
    </message>
    <message>
        <source>Do you want Stemhaven to recover %1 project(s)?</source>
        <translation>Soll Stemhaven %1 Projekt(e) wiederherstellen?</translation>
    </message>
    <message>
        <source>Stemhaven will create missing files to allow the projects to be opened again. Warning: this modifies the .logicx contents! Backup first to be safe.</source>
        <translation>Stemhaven legt fehlende Dateien an, sodass sich die Projekte wieder öffnen lassen. Achtung: Das ändert den Inhalt der .logicx-Pakete! Mach zur Sicherheit vorher eine Kopie.</translation>
    </message>
    <message>
        <source>%1 project(s) could not be recovered. The list says why.</source>
        <translation>%1 Projekt(e) ließen sich nicht wiederherstellen. Die Liste sagt, warum.</translation>
    </message>
    <message>
        <source>%1 project(s) were left as they were.</source>
        <translation>%1 Projekt(e) blieben, wie sie waren.</translation>
    </message>
    <message>
        <source>Stemhaven recovered %1 project(s)!</source>
        <translation>Stemhaven hat %1 Projekt(e) wiederhergestellt!</translation>
    </message>
</context>
<context>
    <name>RecoveryProgress</name>
    <message>
        <source>Could not be looked at: %1</source>
        <translation>Nicht prüfbar: %1</translation>
    </message>
    <message>
        <source>Could not be looked at: %1 and %2 more</source>
        <translation>Nicht prüfbar: %1 und %2 weitere</translation>
    </message>
    <message>
        <source>Ready to Find Recoverable Projects...</source>
        <translation>Bereit für die Suche nach beschädigten Projekten ...</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>&amp;Anhalten</translation>
    </message>
    <message>
        <source>Cancelling the search...</source>
        <translation>Die Suche wird abgebrochen ...</translation>
    </message>
    <message>
        <source>Stopping after this project...</source>
        <translation>Nach diesem Projekt wird angehalten ...</translation>
    </message>
    <message>
        <source>Searching for recoverable projects...</source>
        <translation>Beschädigte Projekte werden gesucht ...</translation>
    </message>
    <message>
        <source>Projects looked at: %1. Damaged: %2.</source>
        <translation>Geprüfte Projekte: %1. Beschädigt: %2.</translation>
    </message>
    <message>
        <source>Projects looked at: %1.</source>
        <translation>Geprüfte Projekte: %1.</translation>
    </message>
    <message>
        <source>The search was cancelled, so there may be more.</source>
        <translation>Die Suche wurde abgebrochen; es kann also mehr geben.</translation>
    </message>
    <message>
        <source>Recovered %1/%2 projects</source>
        <translation>Wiederhergestellte Projekte: %1/%2</translation>
    </message>
</context>
<context>
    <name>RecoverableList</name>
    <message>
        <source>Alternative %1 gets the files of its automatic backup %2.</source>
        <translation>Alternative %1 erhält die Dateien ihrer automatischen Sicherung %2.</translation>
    </message>
    <message>
        <source>A new ProjectInformation.plist is written, with alternative %1 active.</source>
        <translation>Eine neue ProjectInformation.plist wird geschrieben, mit %1 als aktiver Alternative.</translation>
    </message>
    <message>
        <source> (Recovered)</source>
        <translation> (Wiederhergestellt)</translation>
    </message>
    <message>
        <source>Recovered.</source>
        <translation>Wiederhergestellt.</translation>
    </message>
    <message>
        <source> (Failed)</source>
        <translation> (Fehlgeschlagen)</translation>
    </message>
    <message>
        <source>Could not be recovered: %1</source>
        <translation>Ließ sich nicht wiederherstellen: %1</translation>
    </message>
</context>
<context>
    <name>RemoveFilter</name>
    <message>
        <source>Saved Search</source>
        <translation>Gespeicherte Suche</translation>
    </message>
    <message>
        <source>Collection</source>
        <translation>Sammlung</translation>
    </message>
    <message>
        <source>Genre</source>
        <translation>Genre</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>Tag</translation>
    </message>
    <message>
        <source>Arrangment Status</source>
        <translation>Stand des Arrangements</translation>
    </message>
    <message>
        <source>Cannot remove default Arrangement Status! This can only be renamed.</source>
        <translation>Der voreingestellte Stand des Arrangements kann nicht entfernt, nur umbenannt werden!</translation>
    </message>
    <message>
        <source>Lyrics Status</source>
        <translation>Stand des Textes</translation>
    </message>
    <message>
        <source>Cannot remove default Lyrics Status! This can only be renamed.</source>
        <translation>Der voreingestellte Stand des Textes kann nicht entfernt, nur umbenannt werden!</translation>
    </message>
    <message>
        <source>Recording Status</source>
        <translation>Stand der Aufnahmen</translation>
    </message>
    <message>
        <source>Cannot remove default Recording Status! This can only be renamed.</source>
        <translation>Der voreingestellte Stand der Aufnahmen kann nicht entfernt, nur umbenannt werden!</translation>
    </message>
    <message>
        <source>Mix/Master Status</source>
        <translation>Stand von Mix/Master</translation>
    </message>
    <message>
        <source>Cannot remove default Mix/Master Status! This can only be renamed.</source>
        <translation>Der voreingestellte Stand von Mix/Master kann nicht entfernt, nur umbenannt werden!</translation>
    </message>
    <message>
        <source>Removal failed</source>
        <translation>Das Entfernen ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message>
        <source>Cannot delete default status!</source>
        <translation>Der voreingestellte Stand kann nicht gelöscht werden!</translation>
    </message>
    <message>
        <source>Are you sure you want to remove %1 &apos;%2&apos;?</source>
        <translation>%1 „%2“ wirklich entfernen?</translation>
    </message>
    <message>
        <source>Projects that use it</source>
        <translation>Betroffene Projekte</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>This status is used by %2 projects. If this status is removed, all of these projects will have their previous status of &apos;%1&apos; set to default.</source>
        <translation>Projekte mit diesem Stand: %2. Wird er entfernt, so wechseln sie alle von „%1“ zum voreingestellten Stand.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is used by %2 projects. The references will be removed but the projects will remain.</source>
        <translation>Projekte mit „%1“: %2. Die Zuordnungen werden entfernt, die Projekte bleiben erhalten.</translation>
    </message>
    <message>
        <source>Cannot remove filter. Could not find primary key...</source>
        <translation>Der Filter kann nicht entfernt werden. Seine Kennung wurde nicht gefunden ...</translation>
    </message>
    <message>
        <source>Closing remove filter dialog failed.</source>
        <translation>Der Dialog zum Entfernen konnte nicht geschlossen werden.</translation>
    </message>
    <message>
        <source>Saved search removed</source>
        <translation>Gespeicherte Suche entfernt</translation>
    </message>
    <message>
        <source>Collection removed</source>
        <translation>Sammlung entfernt</translation>
    </message>
    <message>
        <source>Genre removed</source>
        <translation>Genre entfernt</translation>
    </message>
    <message>
        <source>Tag removed</source>
        <translation>Tag entfernt</translation>
    </message>
    <message>
        <source>Status removed</source>
        <translation>Stand entfernt</translation>
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
    <name>SelectedBundle</name>
    <message>
        <source>Could not open selected project!</source>
        <translation>Das ausgewählte Projekt konnte nicht geöffnet werden!</translation>
    </message>
    <message>
        <source>Could not open selected project</source>
        <translation>Das ausgewählte Projekt konnte nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Could not show in Finder</source>
        <translation>Anzeigen im Finder nicht möglich</translation>
    </message>
    <message>
        <source>Could not show in File Manager</source>
        <translation>Anzeigen im Dateimanager nicht möglich</translation>
    </message>
    <message>
        <source>Could not show package contents</source>
        <translation>Der Paketinhalt konnte nicht gezeigt werden</translation>
    </message>
    <message>
        <source>Project wasn&apos;t found</source>
        <translation>Das Projekt wurde nicht gefunden</translation>
    </message>
    <message>
        <source>Error code: %1</source>
        <translation>Fehlercode: %1</translation>
    </message>
    <message>
        <source>The command xdg-open is missing, which opens files with the programs of your desktop. Install the package xdg-utils, then try again.</source>
        <translation>Der Befehl xdg-open fehlt, der Dateien mit den Programmen des Desktops öffnet. Installiere das Paket xdg-utils und versuche es dann noch einmal.</translation>
    </message>
    <message>
        <source>No program is set up to open Logic Pro projects. Install one, choose it for files of this kind in your file manager under &quot;Open With&quot;, then try again.</source>
        <translation>Für Projekte von Logic Pro ist kein Programm eingerichtet. Installiere eines, wähle es im Dateimanager unter „Öffnen mit“ für Dateien dieser Art, und versuche es dann noch einmal.</translation>
    </message>
    <message>
        <source>No file manager is set up to show folders. Install one, such as the package nautilus or dolphin, then try again.</source>
        <translation>Es ist kein Dateimanager eingerichtet, der Ordner zeigt. Installiere einen, etwa mit dem Paket nautilus oder dolphin, und versuche es dann noch einmal.</translation>
    </message>
</context>
<context>
    <name>SelectionEditor</name>
    <message>
        <source>Do you want to mark this project as completed?</source>
        <translation>Soll dieses Projekt als abgeschlossen gelten?</translation>
    </message>
    <message>
        <source>Do you want to mark these %1 projects as completed?</source>
        <translation>Sollen diese %1 Projekte als abgeschlossen gelten?</translation>
    </message>
    <message>
        <source>Completed projects are hidden by default but you can always change this in the View menu.</source>
        <translation>Abgeschlossene Projekte sind in der Regel ausgeblendet; das lässt sich jederzeit im Menü „Darstellung“ ändern.</translation>
    </message>
    <message>
        <source>Are you sure you want to ignore this project?</source>
        <translation>Dieses Projekt wirklich ignorieren?</translation>
    </message>
    <message>
        <source>Are you sure you want to ignore these %1 projects?</source>
        <translation>Diese %1 Projekte wirklich ignorieren?</translation>
    </message>
    <message>
        <source>This will not remove its project record or stop monitoring but it won&apos;t show by default anymore in Stemhaven.</source>
        <translation>Der Eintrag des Projekts bleibt, und es wird weiter überwacht, aber Stemhaven zeigt es in der Regel nicht mehr.</translation>
    </message>
    <message>
        <source>&amp;Ignore</source>
        <translation>&amp;Ignorieren</translation>
    </message>
    <message>
        <source>Are you sure you want to delete the record for this project?</source>
        <translation>Den Eintrag dieses Projekts wirklich löschen?</translation>
    </message>
    <message>
        <source>Are you sure you want to delete the records for these %1 projects?</source>
        <translation>Die Einträge dieser %1 Projekte wirklich löschen?</translation>
    </message>
    <message>
        <source>This will not delete the project files but it will delete all progress, rating, and status in Stemhaven. Stemhaven&apos;s Project Monitor will add a new record if this project is found again. If you don&apos;t want that to happen, Ignore the project instead.</source>
        <translation>Die Dateien des Projekts bleiben, aber Fortschritt, Bewertung und Stand werden in Stemhaven gelöscht. Wird das Projekt wieder gefunden, legt Stemhaven einen neuen Eintrag an. Soll das nicht geschehen, ignoriere das Projekt stattdessen.</translation>
    </message>
    <message>
        <source>&amp;Delete record</source>
        <translation>Eintrag &amp;löschen</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
<context>
    <name>SidePanes</name>
    <message>
        <source>Splitter move failed.</source>
        <translation>Die Filterleiste konnte nicht verschoben werden.</translation>
    </message>
    <message>
        <source>Project splitter move failed.</source>
        <translation>Die Projektdetails konnten nicht verschoben werden.</translation>
    </message>
</context>
<context>
    <name>StarEditor</name>
    <message>
        <source>Rating</source>
        <translation>Bewertung</translation>
    </message>
    <message>
        <source>Click a star, or press 0 to 5</source>
        <translation>Klicke auf einen Stern, oder drücke 0 bis 5</translation>
    </message>
</context>
<context>
    <name>StarRating</name>
    <message>
        <source>%1 of %2 stars</source>
        <translation>%1 von %2 Sternen</translation>
    </message>
    <message>
        <source>Not rated</source>
        <translation>Nicht bewertet</translation>
    </message>
</context>
<context>
    <name>StatusFields</name>
    <message>
        <source>Arrangement</source>
        <translation>Arrangement</translation>
    </message>
    <message>
        <source>Updating arrangement status failed</source>
        <translation>Der Stand des Arrangements konnte nicht geändert werden</translation>
    </message>
    <message>
        <source>Could not retreive primary key for selected arrangement status!</source>
        <translation>Die Kennung des gewählten Stands fehlt!</translation>
    </message>
    <message>
        <source>Lyrics</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Updating project lyrics status failed.</source>
        <translation>Der Stand des Textes konnte nicht geändert werden.</translation>
    </message>
    <message>
        <source>Could not retreive primary key for selected lyrics status! Type conversion failed...</source>
        <translation>Die Kennung des gewählten Stands fehlt! Sie ist keine Zahl …</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufnahmen</translation>
    </message>
    <message>
        <source>Updating project recording status failed.</source>
        <translation>Der Stand der Aufnahmen konnte nicht geändert werden.</translation>
    </message>
    <message>
        <source>Could not retreive primary key for selected recording status! Type conversion failed...</source>
        <translation>Die Kennung des gewählten Stands fehlt! Sie ist keine Zahl …</translation>
    </message>
    <message>
        <source>Mix/Master</source>
        <translation>Mix/Master</translation>
    </message>
    <message>
        <source>Updating project mix/master status failed.</source>
        <translation>Der Stand von Mix/Master konnte nicht geändert werden.</translation>
    </message>
    <message>
        <source>Could not retreive primary key for selected mix/master status! Type conversion failed...</source>
        <translation>Die Kennung des gewählten Stands fehlt! Sie ist keine Zahl …</translation>
    </message>
    <message>
        <source>(mixed)</source>
        <translation>(verschieden)</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Status: </source>
        <translation>Status: </translation>
    </message>
    <message>
        <source>%1 selected</source>
        <translation>%1 ausgewählt</translation>
    </message>
    <message>
        <source>Looking for projects… %1 found</source>
        <translation>Projekte werden gesucht … %1 gefunden</translation>
    </message>
    <message>
        <source>Folder not available: %1</source>
        <translation>Ordner nicht erreichbar: %1</translation>
    </message>
    <message>
        <source>Folders not available: %1</source>
        <translation>Ordner nicht erreichbar: %1</translation>
    </message>
    <message>
        <source>Stemhaven keeps all it knows of the projects in there, and follows them again as soon as it can read the folder.</source>
        <translation>Stemhaven behält alles, was es über die Projekte darin weiß, und folgt ihnen wieder, sobald es den Ordner lesen kann.</translation>
    </message>
</context>
<context>
    <name>StatusPage</name>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>Re&amp;name</source>
        <translation>&amp;Umbenennen</translation>
    </message>
    <message>
        <source>Arrangement</source>
        <translation>Arrangement</translation>
    </message>
    <message>
        <source>Lyrics</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Mix/Master</source>
        <translation>Mix/Master</translation>
    </message>
    <message>
        <source>Status Labels</source>
        <translation>Statusbezeichnungen</translation>
    </message>
    <message>
        <source>Status Labels &amp;for</source>
        <translation>Statusbezeichnungen &amp;für</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Adjust Stemhaven&apos;s status labels to match your workflow and preference. Running backups is recommended before changing these.</source>
        <translation>Passe die Statusbezeichnungen von Stemhaven deiner Arbeitsweise an. Es empfiehlt sich, vorher eine Sicherung anzulegen.</translation>
    </message>
    <message>
        <source>Error while adding status</source>
        <translation>Fehler beim Hinzufügen eines Status</translation>
    </message>
    <message>
        <source>Error while renaming status</source>
        <translation>Fehler beim Umbenennen eines Status</translation>
    </message>
    <message>
        <source>Error while removing status</source>
        <translation>Fehler beim Entfernen eines Status</translation>
    </message>
    <message>
        <source>Selecting status label failed.</source>
        <translation>Die Statusbezeichnung konnte nicht ausgewählt werden.</translation>
    </message>
    <message>
        <source>Error while selecting status table</source>
        <translation>Fehler beim Wählen der Statusart</translation>
    </message>
    <message>
        <source>Could not load status labels.</source>
        <translation>Die Statusbezeichnungen konnten nicht geladen werden.</translation>
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
    <name>Stemhaven::TaskManager</name>
    <message>
        <source>Could not open the database</source>
        <translation>Die Datenbank konnte nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Stemhaven cannot open the file %1. Nothing can be shown or saved without it. Check that you may read and write it and that the disk is not full, and start Stemhaven again.</source>
        <translation>Stemhaven kann die Datei %1 nicht öffnen. Ohne sie lässt sich nichts anzeigen oder speichern. Bitte prüfe, ob du sie lesen und schreiben darfst und ob der Datenträger voll ist, und starte Stemhaven neu.</translation>
    </message>
</context>
<context>
    <name>Stemhaven::ProjectMonitor</name>
    <message>
        <source>Untitled</source>
        <translation>Ohne Titel</translation>
    </message>
    <message>
        <source>Could not start project monitor!</source>
        <translation>Die Überwachung der Projekte konnte nicht gestartet werden!</translation>
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
    <message>
        <source>Genre</source>
        <translation>Genre</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Arrangement</source>
        <translation>Arrangement</translation>
    </message>
    <message>
        <source>Lyrics</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufnahmen</translation>
    </message>
    <message>
        <source>Mix/Master</source>
        <translation>Mix/Master</translation>
    </message>
</context>
<context>
    <name>TableColumns</name>
    <message>
        <source>Could not save column settings</source>
        <translation>Die Spalten konnten nicht gespeichert werden</translation>
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
    <name>UndoOffer</name>
    <message>
        <source>Undo</source>
        <translation>Widerrufen</translation>
    </message>
</context>
<context>
    <name>ValueMenu</name>
    <message>
        <source>%1 (some)</source>
        <translation>%1 (einige)</translation>
    </message>
</context>
<context>
    <name>ValueMenus</name>
    <message>
        <source>&amp;No Stars</source>
        <translation>&amp;Keine Sterne</translation>
    </message>
    <message>
        <source>&amp;1 Star</source>
        <translation>&amp;1 Stern</translation>
    </message>
    <message>
        <source>&amp;2 Stars</source>
        <translation>&amp;2 Sterne</translation>
    </message>
    <message>
        <source>&amp;3 Stars</source>
        <translation>&amp;3 Sterne</translation>
    </message>
    <message>
        <source>&amp;4 Stars</source>
        <translation>&amp;4 Sterne</translation>
    </message>
    <message>
        <source>&amp;5 Stars</source>
        <translation>&amp;5 Sterne</translation>
    </message>
    <message>
        <source>&amp;Arrangement</source>
        <translation>&amp;Arrangement</translation>
    </message>
    <message>
        <source>&amp;Lyrics</source>
        <translation>&amp;Text</translation>
    </message>
    <message>
        <source>&amp;Recording</source>
        <translation>A&amp;ufnahmen</translation>
    </message>
    <message>
        <source>&amp;Mix/Master</source>
        <translation>&amp;Mix/Master</translation>
    </message>
    <message>
        <source>Could not save arrangement status</source>
        <translation>Der Stand des Arrangements konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Could not save lyrics status</source>
        <translation>Der Stand des Textes konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Could not save recording status</source>
        <translation>Der Stand der Aufnahmen konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Could not save mix/master status</source>
        <translation>Der Stand von Mix/Master konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Could not save star rating</source>
        <translation>Die Bewertung konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Setting project progress failed.</source>
        <translation>Der Fortschritt konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>Rati&amp;ng</source>
        <translation>&amp;Bewertung</translation>
    </message>
    <message>
        <source>Progr&amp;ess</source>
        <translation>Fo&amp;rtschritt</translation>
    </message>
    <message>
        <source>St&amp;atus</source>
        <translation>St&amp;and</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>WatchedFoldersEditor</name>
    <message>
        <source>Monitored folders</source>
        <translation>Überwachte Ordner</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>No folders yet. Add one, or drop it here.</source>
        <translation>Noch keine Ordner. Füge einen hinzu oder zieh ihn hierher.</translation>
    </message>
</context>
<context>
    <name>WatchedFoldersModel</name>
    <message>
        <source>Not watched yet</source>
        <translation>Noch nicht überwacht</translation>
    </message>
    <message>
        <source>Being searched…</source>
        <translation>Wird durchsucht …</translation>
    </message>
    <message>
        <source>Watched</source>
        <translation>Überwacht</translation>
    </message>
    <message>
        <source>Checked every few seconds: network or virtual drive</source>
        <translation>Alle paar Sekunden geprüft: Netz- oder virtuelles Laufwerk</translation>
    </message>
    <message>
        <source>The file system of this folder, such as a network drive&apos;s, does not tell of changes. Stemhaven looks through the folder every few seconds instead.</source>
        <translation>Das Dateisystem dieses Ordners, etwa das eines Netzlaufwerks, meldet keine Änderungen. Stemhaven sieht den Ordner stattdessen alle paar Sekunden durch.</translation>
    </message>
    <message>
        <source>Checked every few seconds: too many folders for the system to watch</source>
        <translation>Alle paar Sekunden geprüft: zu viele Ordner für die Überwachung durch das System</translation>
    </message>
    <message>
        <source>The system watches no more folders for you. Stemhaven looks through this one every few seconds instead; the log names the setting to raise.</source>
        <translation>Das System überwacht keine weiteren Ordner für dich. Stemhaven sieht diesen stattdessen alle paar Sekunden durch; das Protokoll nennt die Einstellung, die zu erhöhen ist.</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Fehlt</translation>
    </message>
    <message>
        <source>The folder is not there or cannot be read. Stemhaven keeps all it knows of the projects in there, and follows them again as soon as it can.</source>
        <translation>Der Ordner ist nicht da oder nicht lesbar. Stemhaven behält alles, was es von den Projekten darin weiß, und verfolgt sie wieder, sobald es kann.</translation>
    </message>
    <message>
        <source>1 project</source>
        <translation>1 Projekt</translation>
    </message>
    <message>
        <source>%1 projects</source>
        <translation>%1 Projekte</translation>
    </message>
</context>
<context>
    <name>WindowActions</name>
    <message>
        <source>S&amp;ettings</source>
        <translation>&amp;Einstellungen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Open project in Logic Pro</source>
        <translation>Projekt in Logic Pro öffnen</translation>
    </message>
    <message>
        <source>&amp;Show in Finder</source>
        <translation>Im Finder &amp;zeigen</translation>
    </message>
    <message>
        <source>&amp;Show in File Manager</source>
        <translation>Im Dateimanager &amp;zeigen</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <translation>Im Finder zeigen</translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation>Im Dateimanager zeigen</translation>
    </message>
    <message>
        <source>Show &amp;Package Contents</source>
        <translation>&amp;Paketinhalt zeigen</translation>
    </message>
    <message>
        <source>Open Project Package Contents</source>
        <translation>Paketinhalt des Projekts öffnen</translation>
    </message>
    <message>
        <source>&amp;Release</source>
        <translation>&amp;Veröffentlichung</translation>
    </message>
    <message>
        <source>&amp;Ignore</source>
        <translation>&amp;Ignorieren</translation>
    </message>
    <message>
        <source>&amp;Delete record</source>
        <translation>Eintrag &amp;löschen</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Widerrufen</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>Wieder&amp;holen</translation>
    </message>
    <message>
        <source>Scroll to &amp;Top</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>Collapse All Filters</source>
        <translation>Alle Filter einklappen</translation>
    </message>
    <message>
        <source>Co&amp;llapse All Filters</source>
        <translation>&amp;Alle Filter einklappen</translation>
    </message>
    <message>
        <source>Show &amp;Filter Sidebar</source>
        <translation>&amp;Filterleiste einblenden</translation>
    </message>
    <message>
        <source>&amp;Hide Filter Sidebar</source>
        <translation>Fi&amp;lterleiste ausblenden</translation>
    </message>
    <message>
        <source>Show &amp;Project Details</source>
        <translation>P&amp;rojektdetails einblenden</translation>
    </message>
    <message>
        <source>Hide Project &amp;Details</source>
        <translation>Projekt&amp;details ausblenden</translation>
    </message>
    <message>
        <source>Hide &amp;Completed Projects</source>
        <translation>Ab&amp;geschlossene Projekte ausblenden</translation>
    </message>
    <message>
        <source>Hide &amp;Ignored Projects</source>
        <translation>&amp;Ignorierte Projekte ausblenden</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>S&amp;uchen</translation>
    </message>
    <message>
        <source>Check for Updates...</source>
        <translation>Nach Updates suchen …</translation>
    </message>
    <message>
        <source>Recover Projects...</source>
        <translation>Projekte wiederherstellen …</translation>
    </message>
    <message>
        <source>Backup...</source>
        <translation>Sicherung anlegen …</translation>
    </message>
    <message>
        <source>Import backup...</source>
        <translation>Sicherung einspielen …</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>D&amp;arstellung</translation>
    </message>
    <message>
        <source>&amp;Manage</source>
        <translation>&amp;Verwalten</translation>
    </message>
    <message>
        <source>&amp;Add Folder...</source>
        <translation>&amp;Ordner hinzufügen …</translation>
    </message>
    <message>
        <source>Look for projects in another folder, too</source>
        <translation>Projekte auch in einem weiteren Ordner suchen</translation>
    </message>
    <message>
        <source>&amp;Release Calendar</source>
        <translation>&amp;Veröffentlichungskalender</translation>
    </message>
    <message>
        <source>Write everything that Stemhaven knows into one file</source>
        <translation>Alles, was Stemhaven weiß, in eine Datei schreiben</translation>
    </message>
    <message>
        <source>Replace everything that Stemhaven knows by what a backup holds</source>
        <translation>Alles, was Stemhaven weiß, durch den Inhalt einer Sicherung ersetzen</translation>
    </message>
</context>
<context>
    <name>Wizard</name>
    <message>
        <source>Could not load project folders to monitor</source>
        <translation>Die Ordner, die überwacht werden, konnten nicht geladen werden</translation>
    </message>
    <message>
        <source>Wizard: Failed to load root paths</source>
        <translation>Einrichtung: Die Ordner konnten nicht geladen werden</translation>
    </message>
    <message>
        <source>Wizard: Could not add folder for monitoring</source>
        <translation>Einrichtung: Der Ordner konnte nicht in die Überwachung aufgenommen werden</translation>
    </message>
    <message>
        <source>Wizard: Selecting monitored project search path failed.</source>
        <translation>Einrichtung: Der überwachte Ordner konnte nicht ausgewählt werden.</translation>
    </message>
    <message>
        <source>&amp;Import Backup</source>
        <translation>Sicherung &amp;einspielen</translation>
    </message>
    <message>
        <source>Stemhaven Setup</source>
        <translation>Stemhaven einrichten</translation>
    </message>
    <message>
        <source>EULA</source>
        <translation>Nutzungsbedingungen</translation>
    </message>
    <message>
        <source>Monitor</source>
        <translation>Überwachung</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Backup file</source>
        <translation>Sicherungsdatei</translation>
    </message>
    <message>
        <source>Stemhaven will watch these folders to look for new project files and update its records if any of them change. If you&apos;re migrating from a previous install, click Import Backup. Otherwise, add the folders where your project files are located.</source>
        <translation>Stemhaven überwacht diese Ordner, sucht darin nach neuen Projekten und hält seine Einträge auf dem Stand. Wenn du von einer früheren Installation umziehst, wähle „Sicherung einspielen“. Sonst füge die Ordner hinzu, in denen deine Projekte liegen.</translation>
    </message>
    <message>
        <source>Could not read EULA file: </source>
        <translation>Die Nutzungsbedingungen sind nicht lesbar: </translation>
    </message>
    <message>
        <source>Missing EULA file! Cannot proceed...</source>
        <translation>Die Nutzungsbedingungen fehlen! Es geht nicht weiter …</translation>
    </message>
    <message>
        <source>Cannot proceed...</source>
        <translation>Es geht nicht weiter …</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>&amp;Previous</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>A&amp;gree</source>
        <translation>Z&amp;ustimmen</translation>
    </message>
    <message>
        <source>&amp;Finish</source>
        <translation>&amp;Fertig</translation>
    </message>
    <message>
        <source>%1/%2</source>
        <translation>%1/%2</translation>
    </message>
    <message>
        <source>Wizard: navigation to previous page failed</source>
        <translation>Einrichtung: Die vorige Seite konnte nicht gezeigt werden</translation>
    </message>
    <message>
        <source>Wizard: Navigating to next page / close failed.</source>
        <translation>Einrichtung: Nächste Seite oder Abschluss fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Stemhaven isn&apos;t setup with any paths to look for project files in. Are you sure you want to continue?</source>
        <translation>In Stemhaven sind noch keine Ordner eingerichtet, in denen nach Projekten gesucht wird. Willst du wirklich fortfahren?</translation>
    </message>
    <message>
        <source>You can set these paths up later in the Monitor tab in Settings. Stemhaven won&apos;t show any projects until this is done!</source>
        <translation>Du kannst sie später in den Einstellungen unter „Überwachung“ hinzufügen. Bis dahin zeigt Stemhaven keine Projekte!</translation>
    </message>
    <message>
        <source>Wizard: Import backup failed.</source>
        <translation>Einrichtung: Das Einspielen der Sicherung ist fehlgeschlagen.</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Stemhaven is already running.</source>
        <translation>Stemhaven läuft bereits.</translation>
    </message>
    <message>
        <source>A database was damaged</source>
        <translation>Eine Datenbank war beschädigt</translation>
    </message>
</context>
<context>
    <name>CalendarPane</name>
    <message>
        <source>Previous</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>Today (T)</source>
        <translation>Heute (T)</translation>
    </message>
    <message>
        <source>Previous Month</source>
        <translation>Voriger Monat</translation>
    </message>
    <message>
        <source>Previous Week</source>
        <translation>Vorige Woche</translation>
    </message>
    <message>
        <source>Next Month</source>
        <translation>Nächster Monat</translation>
    </message>
    <message>
        <source>Next Week</source>
        <translation>Nächste Woche</translation>
    </message>
</context>
<context>
    <name>CalendarView</name>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>MMM d, yyyy</source>
        <translation>d. MMM yyyy</translation>
    </message>
    <message>
        <source>%1 – %2</source>
        <translation>%1 – %2</translation>
    </message>
    <message>
        <source>+%1 more</source>
        <translation>+%1 weitere</translation>
    </message>
    <message>
        <source>today</source>
        <translation>heute</translation>
    </message>
    <message>
        <source>1 event</source>
        <translation>1 Eintrag</translation>
    </message>
    <message>
        <source>%1 events</source>
        <translation>%1 Einträge</translation>
    </message>
    <message>
        <source>not completed</source>
        <translation>nicht abgeschlossen</translation>
    </message>
</context>
<context>
    <name>ReleaseCalendar</name>
    <message>
        <source>Month</source>
        <translation>Monat</translation>
    </message>
    <message>
        <source>Week</source>
        <translation>Woche</translation>
    </message>
    <message>
        <source>Release Calendar</source>
        <translation>Veröffentlichungskalender</translation>
    </message>
    <message>
        <source>Showing the calendar failed.</source>
        <translation>Der Kalender konnte nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>The releases could not be read.</source>
        <translation>Die Veröffentlichungen konnten nicht gelesen werden.</translation>
    </message>
    <message>
        <source>No release on these days. A project comes here once it is marked as publicly released, with a date, in its release details.</source>
        <translation>Keine Veröffentlichung an diesen Tagen. Ein Projekt erscheint hier, sobald es in seinen Veröffentlichungsdetails mit einem Datum als veröffentlicht markiert ist.</translation>
    </message>
    <message>
        <source>1 release on these days</source>
        <translation>1 Veröffentlichung an diesen Tagen</translation>
    </message>
    <message>
        <source>%1 releases on these days</source>
        <translation>%1 Veröffentlichungen an diesen Tagen</translation>
    </message>
    <message>
        <source>Could not update project release details</source>
        <translation>Die Veröffentlichungsdetails des Projekts konnten nicht geändert werden</translation>
    </message>
</context>
<context>
    <name>ReleaseDialog</name>
    <message>
        <source>M/d/yyyy</source>
        <translation>d.M.yyyy</translation>
    </message>
    <message>
        <source>Song name</source>
        <translation>Name des Songs</translation>
    </message>
    <message>
        <source>The name of the publicly released track</source>
        <translation>Der Name des veröffentlichten Titels</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>Künstler</translation>
    </message>
    <message>
        <source>The name of the artist this track was released as</source>
        <translation>Der Künstlername, unter dem der Titel veröffentlicht wurde</translation>
    </message>
    <message>
        <source>The name of the album the track was released on</source>
        <translation>Der Name des Albums, auf dem der Titel veröffentlicht wurde</translation>
    </message>
    <message>
        <source>ISRC </source>
        <translation>ISRC </translation>
    </message>
    <message>
        <source>The ISRC registration code for the released track</source>
        <translation>Der ISRC-Code des veröffentlichten Titels</translation>
    </message>
    <message>
        <source>The UPC code for the album or released track</source>
        <translation>Der UPC-Code des Albums oder des veröffentlichten Titels</translation>
    </message>
    <message>
        <source>  Completed</source>
        <translation>  Abgeschlossen</translation>
    </message>
    <message>
        <source>  Publicly released</source>
        <translation>  Veröffentlicht</translation>
    </message>
    <message>
        <source>Release Details</source>
        <translation>Veröffentlichungsdetails</translation>
    </message>
    <message>
        <source>Release date</source>
        <translation>Veröffentlicht am</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Release name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Release Artist</source>
        <translation>Künstler</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Album</translation>
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
        <source>The release details could not be read.</source>
        <translation>Die Veröffentlichungsdetails konnten nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Could not update project release details</source>
        <translation>Die Veröffentlichungsdetails des Projekts konnten nicht geändert werden</translation>
    </message>
    <message>
        <source>Closing release dialog failed.</source>
        <translation>Der Dialog zur Veröffentlichung konnte nicht geschlossen werden.</translation>
    </message>
</context>
<context>
    <name>ReleaseEdit</name>
    <message>
        <source>The project has no record any more.</source>
        <translation>Das Projekt hat keinen Eintrag mehr.</translation>
    </message>
</context>
<context>
    <name>Releases</name>
    <message>
        <source>Showing release dialog failed.</source>
        <translation>Der Dialog zur Veröffentlichung konnte nicht angezeigt werden.</translation>
    </message>
</context>
<context>
    <name>BackupDialog</name>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Backup</source>
        <translation>Sicherung</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Waiting for what is being saved...</source>
        <translation>Was gerade gespeichert wird, wird abgewartet …</translation>
    </message>
    <message>
        <source>Import Backup</source>
        <translation>Sicherung einspielen</translation>
    </message>
    <message>
        <source>Backups (*.hvbk)</source>
        <translation>Sicherungen (*.hvbk)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Folder for the Backup</source>
        <translation>Ordner für die Sicherung</translation>
    </message>
    <message>
        <source>Cancelled. Everything is as it was.</source>
        <translation>Abgebrochen. Alles ist, wie es war.</translation>
    </message>
</context>
<context>
    <name>Backups</name>
    <message>
        <source>A backup is being made…</source>
        <translation>Eine Sicherung wird angelegt …</translation>
    </message>
    <message>
        <source>A backup is being imported…</source>
        <translation>Eine Sicherung wird eingespielt …</translation>
    </message>
</context>
<context>
    <name>BackupCommands</name>
    <message>
        <source>There is no terminal to ask. Give --yes if that is what you want.</source>
        <translation>Es gibt kein Terminal für die Frage. Gib --yes an, wenn du das willst.</translation>
    </message>
    <message>
        <source>There is a folder or a file missing on the command line.</source>
        <translation>In der Befehlszeile fehlt ein Ordner oder eine Datei.</translation>
    </message>
</context>
<context>
    <name>Stemhaven::BackupContents</name>
    <message>
        <source>Decompression failed! Verify backup integrity.</source>
        <translation>Entpacken fehlgeschlagen! Prüfe, ob die Sicherung unversehrt ist.</translation>
    </message>
    <message>
        <source>Error while importing backup. Decompression failed!</source>
        <translation>Fehler beim Einspielen der Sicherung. Entpacken fehlgeschlagen!</translation>
    </message>
    <message>
        <source>The backup holds something other than the three files of a backup: %1. Stopping backup import...</source>
        <translation>Die Sicherung enthält etwas anderes als die drei Dateien einer Sicherung: %1. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Required file not found: %1</source>
        <translation>Benötigte Datei nicht gefunden: %1</translation>
    </message>
    <message>
        <source>Could not open database from backup. Stopping backup import...</source>
        <translation>Die Datenbank der Sicherung konnte nicht geöffnet werden. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Could not get database version from backup. Stopping backup import...</source>
        <translation>Die Version der Datenbank der Sicherung wurde nicht gefunden. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Backup database version is newer than the current db version that is supported. Try updating Stemhaven. Stopping backup import...</source>
        <translation>Die Datenbank der Sicherung ist neuer als die Versionen, die unterstützt werden. Versuche, Stemhaven zu aktualisieren. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Could not open monitored paths database from backup. Stopping backup import...</source>
        <translation>Die Datenbank der überwachten Ordner aus der Sicherung konnte nicht geöffnet werden. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>The settings file of the backup is not one. Stopping backup import...</source>
        <translation>Die Einstellungsdatei der Sicherung ist keine. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>The backup is larger than what there is room for. Stopping backup import...</source>
        <translation>Für die Sicherung ist nicht genug Platz. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>It is unpacked beside its file. Make room there, or copy it to a larger disk.</source>
        <translation>Sie wird neben ihrer Datei ausgepackt. Schaffe dort Platz oder kopiere sie auf einen größeren Datenträger.</translation>
    </message>
</context>
<context>
    <name>Stemhaven::BackupExport</name>
    <message>
        <source>Beginning backup export...</source>
        <translation>Die Sicherung beginnt …</translation>
    </message>
    <message>
        <source>Exporting backup to '%1'. Please wait...</source>
        <translation>Die Sicherung wird in „%1“ geschrieben. Bitte warten …</translation>
    </message>
    <message>
        <source>Creating the backup folder</source>
        <translation>Ordner der Sicherung anlegen</translation>
    </message>
    <message>
        <source>Removing the temporary files</source>
        <translation>Temporäre Dateien entfernen</translation>
    </message>
    <message>
        <source>Finished exporting backup!</source>
        <translation>Die Sicherung ist fertig!</translation>
    </message>
    <message>
        <source>Could not export backup!</source>
        <translation>Die Sicherung konnte nicht geschrieben werden!</translation>
    </message>
    <message>
        <source>Could not create backup folder!</source>
        <translation>Der Ordner der Sicherung konnte nicht angelegt werden!</translation>
    </message>
    <message>
        <source>Copying the main database</source>
        <translation>Hauptdatenbank kopieren</translation>
    </message>
    <message>
        <source>Backup export: Could not copy stemhaven-main.db!</source>
        <translation>Sicherung: stemhaven-main.db konnte nicht kopiert werden!</translation>
    </message>
    <message>
        <source>Copying the database of the monitored folders</source>
        <translation>Datenbank der überwachten Ordner kopieren</translation>
    </message>
    <message>
        <source>Backup export: Could not copy stemhaven-root-paths.db!</source>
        <translation>Sicherung: stemhaven-root-paths.db konnte nicht kopiert werden!</translation>
    </message>
    <message>
        <source>Copying the settings</source>
        <translation>Einstellungen kopieren</translation>
    </message>
    <message>
        <source>Backup export: The database %1 is damaged. A backup of it could not be imported. Start Stemhaven again to have it checked.</source>
        <translation>Sicherung: Die Datenbank %1 ist beschädigt. Eine Sicherung von ihr ließe sich nicht einspielen. Starte Stemhaven neu, damit sie geprüft wird.</translation>
    </message>
    <message>
        <source>Compressing the backup</source>
        <translation>Sicherung packen</translation>
    </message>
    <message>
        <source>Error occurred while exporting backup. Compression failed!</source>
        <translation>Fehler beim Schreiben der Sicherung. Das Packen ist fehlgeschlagen!</translation>
    </message>
    <message>
        <source>Reading the backup back</source>
        <translation>Sicherung zur Prüfung lesen</translation>
    </message>
</context>
<context>
    <name>Stemhaven::BackupImport</name>
    <message>
        <source>Not a valid Stemhaven backup!</source>
        <translation>Keine gültige Sicherung von Stemhaven!</translation>
    </message>
    <message>
        <source>Valid backups should end with .hvbk extension.</source>
        <translation>Gültige Sicherungen enden auf .hvbk.</translation>
    </message>
    <message>
        <source>Are you sure you want to import this backup? </source>
        <translation>Soll diese Sicherung wirklich eingespielt werden? </translation>
    </message>
    <message>
        <source>This will replace the current database and settings!</source>
        <translation>Das ersetzt die jetzige Datenbank und die jetzigen Einstellungen!</translation>
    </message>
    <message>
        <source>Beginning backup import...</source>
        <translation>Das Einspielen der Sicherung beginnt …</translation>
    </message>
    <message>
        <source>Importing backup from '%1'. Please wait.</source>
        <translation>Die Sicherung „%1“ wird eingespielt. Bitte warten.</translation>
    </message>
    <message>
        <source>Copying the current databases aside</source>
        <translation>Jetzige Datenbanken beiseite kopieren</translation>
    </message>
    <message>
        <source>Finished importing backup!</source>
        <translation>Die Sicherung ist eingespielt!</translation>
    </message>
    <message>
        <source>Error importing backup</source>
        <translation>Fehler beim Einspielen der Sicherung</translation>
    </message>
    <message>
        <source>Could not find backup file: </source>
        <translation>Sicherung nicht gefunden: </translation>
    </message>
    <message>
        <source>Verify the file path is correct and try again.</source>
        <translation>Prüfe, ob der Pfad der Datei stimmt, und versuche es noch einmal.</translation>
    </message>
    <message>
        <source>Checking the backup</source>
        <translation>Sicherung prüfen</translation>
    </message>
    <message>
        <source>The folder %1 exists already. Stopping backup import...</source>
        <translation>Den Ordner %1 gibt es schon. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>The backup is unpacked into a folder of its name. Move or rename the one that is there.</source>
        <translation>Die Sicherung wird in einen Ordner ihres Namens entpackt. Verschiebe den vorhandenen oder benenne ihn um.</translation>
    </message>
    <message>
        <source>Could not create the folder %1. Stopping backup import...</source>
        <translation>Der Ordner %1 konnte nicht angelegt werden. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>The backup is unpacked beside its file. Copy it to a folder that you may write to.</source>
        <translation>Die Sicherung wird neben ihrer Datei entpackt. Kopiere sie in einen Ordner, in den du schreiben darfst.</translation>
    </message>
    <message>
        <source>Unpacking the backup</source>
        <translation>Sicherung entpacken</translation>
    </message>
    <message>
        <source>Comparing the files with the backup</source>
        <translation>Dateien mit der Sicherung vergleichen</translation>
    </message>
    <message>
        <source>Checking the databases and the settings</source>
        <translation>Datenbanken und Einstellungen prüfen</translation>
    </message>
    <message>
        <source>An earlier import could not be taken back yet. Stopping backup import...</source>
        <translation>Ein früheres Einspielen konnte noch nicht rückgängig gemacht werden. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Start Stemhaven again: it then puts back what was there before.</source>
        <translation>Starte Stemhaven neu: Dann wird wiederhergestellt, was vorher da war.</translation>
    </message>
    <message>
        <source>Could not copy the current databases aside. Stopping backup import...</source>
        <translation>Die jetzigen Datenbanken konnten nicht beiseite kopiert werden. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Preparing the replacement</source>
        <translation>Ersetzen vorbereiten</translation>
    </message>
    <message>
        <source>Could not prepare the replacement of the current files. Stopping backup import...</source>
        <translation>Das Ersetzen der jetzigen Dateien konnte nicht vorbereitet werden. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Setting the main database aside</source>
        <translation>Hauptdatenbank beiseite legen</translation>
    </message>
    <message>
        <source>Could not rename main database. Stopping backup import...</source>
        <translation>Die Hauptdatenbank konnte nicht umbenannt werden. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Importing the main database</source>
        <translation>Hauptdatenbank einspielen</translation>
    </message>
    <message>
        <source>Could not copy main database from backup! Stopping backup import...</source>
        <translation>Die Hauptdatenbank der Sicherung konnte nicht kopiert werden! Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Setting the database of the monitored folders aside</source>
        <translation>Datenbank der überwachten Ordner beiseite legen</translation>
    </message>
    <message>
        <source>Could not rename monitored paths database! Stopping backup import...</source>
        <translation>Die Datenbank der überwachten Ordner konnte nicht umbenannt werden! Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Importing the database of the monitored folders</source>
        <translation>Datenbank der überwachten Ordner einspielen</translation>
    </message>
    <message>
        <source>Could not copy monitored paths database! Stopping backup import...</source>
        <translation>Die Datenbank der überwachten Ordner konnte nicht kopiert werden! Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Setting the settings aside</source>
        <translation>Einstellungen beiseite legen</translation>
    </message>
    <message>
        <source>Could not rename last settings file. Stopping backup import...</source>
        <translation>Die bisherige Einstellungsdatei konnte nicht umbenannt werden. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Importing the settings</source>
        <translation>Einstellungen einspielen</translation>
    </message>
    <message>
        <source>Could not copy settings from backup. Stopping backup import...</source>
        <translation>Die Einstellungen der Sicherung konnten nicht kopiert werden. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Making the replacement final</source>
        <translation>Ersetzen abschließen</translation>
    </message>
    <message>
        <source>Could not make the replacement of the current files final.</source>
        <translation>Das Ersetzen der jetzigen Dateien konnte nicht abgeschlossen werden.</translation>
    </message>
    <message>
        <source>Removing the unpacked backup</source>
        <translation>Entpackte Sicherung entfernen</translation>
    </message>
    <message>
        <source>Removing the files from before</source>
        <translation>Bisherige Dateien entfernen</translation>
    </message>
    <message>
        <source>Reading the settings again</source>
        <translation>Einstellungen neu lesen</translation>
    </message>
    <message>
        <source>Could not bring the database from backup up to date. Stopping backup import...</source>
        <translation>Die Datenbank der Sicherung konnte nicht auf den neuesten Stand gebracht werden. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>Could not write to the folder %1. Stopping backup import...</source>
        <translation>In den Ordner %1 konnte nicht geschrieben werden. Das Einspielen wird abgebrochen …</translation>
    </message>
    <message>
        <source>The databases are there. Check that the disk is not full and that you may write to it.</source>
        <translation>Dort liegen die Datenbanken. Prüfe, ob auf dem Datenträger Platz ist und du darauf schreiben darfst.</translation>
    </message>
</context>
<context>
    <name>Stemhaven::StartCheck</name>
    <message>
        <source>The file %1 was damaged. Its newest good copy, of %2, has taken its place, so what was changed since then is not in it. The damaged file is kept as %3.</source>
        <translation>Die Datei %1 war beschädigt. Ihre neueste gute Kopie vom %2 ist an ihre Stelle getreten; was seitdem geändert wurde, fehlt darin. Die beschädigte Datei liegt jetzt unter %3.</translation>
    </message>
    <message>
        <source>The file %1 is damaged, and there is no good copy of it. Import a backup to replace it.</source>
        <translation>Die Datei %1 ist beschädigt, und es gibt keine gute Kopie von ihr. Spiele eine Sicherung ein, um sie zu ersetzen.</translation>
    </message>
    <message>
        <source>The file %1 is not as Stemhaven made it, and there is no good copy of it: it holds %2. It was left as it is and not opened. Start Stemhaven with --import-backup to put a backup in its place.</source>
        <extracomment>%1 is a file, %2 tells what is in it in the terms of a database, such as: view &quot;projects&quot;</extracomment>
        <translation>Die Datei %1 ist nicht so, wie Stemhaven sie angelegt hat, und es gibt keine gute Kopie von ihr: Sie enthält %2. Sie wurde gelassen, wie sie ist, und nicht geöffnet. Starte Stemhaven mit --import-backup, um eine Sicherung an ihre Stelle zu setzen.</translation>
    </message>
    <message>
        <source>An import of a backup was interrupted, and its files could not be put right. Check that you may write to the folders of Stemhaven and that the disk is not full, and start it again.</source>
        <translation>Das Einspielen einer Sicherung wurde unterbrochen, und seine Dateien ließen sich nicht in Ordnung bringen. Prüfe, ob du in die Ordner von Stemhaven schreiben darfst und der Datenträger nicht voll ist, und starte es noch einmal.</translation>
    </message>
    <message>
        <source>The file %1 is damaged, and its newest good copy could not be put in its place. Check that you may write to the folder and that the disk is not full, and start Stemhaven again.</source>
        <translation>Die Datei %1 ist beschädigt, und ihre neueste gute Kopie konnte nicht an ihre Stelle gesetzt werden. Prüfe, ob du in den Ordner schreiben darfst und auf dem Datenträger Platz ist, und starte Stemhaven neu.</translation>
    </message>
</context>
</TS>
