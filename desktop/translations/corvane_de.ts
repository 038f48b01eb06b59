<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AppearancePage</name>
    <message>
        <source>As the desktop</source>
        <translation>Wie der Desktop</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>%1 pixels</source>
        <translation>%1 Pixel</translation>
    </message>
    <message>
        <source>Free, to be moved and arranged</source>
        <translation>Frei verschiebbar und anzuordnen</translation>
    </message>
    <message>
        <source>In tabs</source>
        <translation>In Registerkarten</translation>
    </message>
    <message>
        <source>&amp;Theme:</source>
        <translation>&amp;Design:</translation>
    </message>
    <message>
        <source>&amp;Icons on toolbars:</source>
        <translation>&amp;Symbole in Symbolleisten:</translation>
    </message>
    <message>
        <source>&amp;Windows:</source>
        <translation>&amp;Fenster:</translation>
    </message>
</context>
<context>
    <name>Application</name>
    <message>
        <source>The help topic %1 can&apos;t be opened. It belongs into the file %2.</source>
        <translation>Das Hilfethema %1 kann nicht geöffnet werden. Es gehört in die Datei %2.</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Save Report</source>
        <translation>Bericht speichern</translation>
    </message>
    <message>
        <source>%1 report.txt</source>
        <translation>Bericht %1.txt</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>Something in the window is missing or wrong</source>
        <translation>Im Fenster fehlt etwas, oder etwas ist falsch</translation>
    </message>
</context>
<context>
    <name>BarRenderer</name>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>More of %1</source>
        <translation>Mehr aus %1</translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="vanished">Schließen</translation>
    </message>
    <message>
        <source>Close this toolbar</source>
        <translation type="vanished">Diese Symbolleiste schließen</translation>
    </message>
</context>
<context>
    <name>Blame</name>
    <message>
        <source>The last time</source>
        <translation>Beim letzten Mal</translation>
    </message>
    <message>
        <source>The application didn&apos;t answer any more while &quot;%1&quot; was at work.</source>
        <translation>Die Anwendung hat nicht mehr reagiert, während „%1“ gearbeitet hat.</translation>
    </message>
    <message>
        <source>The application ended while &quot;%1&quot; was at work.</source>
        <translation>Die Anwendung wurde beendet, während „%1“ gearbeitet hat.</translation>
    </message>
    <message>
        <source>It can start without &quot;%1&quot; this time: what that offers is missing then. Safe mode leaves out all plug-ins and what you have changed of the desktop.</source>
        <translation>Sie kann diesmal ohne „%1“ starten: Was dieser Dienst anbietet, fehlt dann. Der abgesicherte Modus lässt alle Plug-ins weg und alles, was Sie an der Oberfläche geändert haben.</translation>
    </message>
    <message>
        <source>Start &amp;Without It</source>
        <translation>&amp;Ohne ihn starten</translation>
    </message>
    <message>
        <source>&amp;Start as Always</source>
        <translation>&amp;Wie immer starten</translation>
    </message>
    <message>
        <source>Safe &amp;Mode</source>
        <translation>&amp;Abgesicherter Modus</translation>
    </message>
</context>
<context>
    <name>CallList</name>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Provider</source>
        <translation>Anbieter</translation>
    </message>
    <message>
        <source>Procedure</source>
        <translation>Prozedur</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>Kennzeichen</translation>
    </message>
    <message>
        <source>Answered by</source>
        <translation>Beantwortet von</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>Aufrufe</translation>
    </message>
    <message>
        <source>nobody</source>
        <translation>niemandem</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>stand-in</source>
        <translation>Platzhalter</translation>
    </message>
    <message>
        <source>its own code</source>
        <translation>eigenem Code</translation>
    </message>
</context>
<context>
    <name>ClearButton</name>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>CommandRow</name>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Previous</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>&amp;Finish</source>
        <translation>&amp;Fertigstellen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save &amp;As…</source>
        <translation>Speichern &amp;unter…</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Anwenden</translation>
    </message>
    <message>
        <source>S&amp;kip</source>
        <translation>Ü&amp;berspringen</translation>
    </message>
</context>
<context>
    <name>Commands</name>
    <message>
        <source>%1 (%2 in the explorer)</source>
        <translation>%1 (%2 im Explorer)</translation>
    </message>
    <message>
        <source>page %1 of the window %2</source>
        <translation>Seite %1 des Fensters %2</translation>
    </message>
    <message>
        <source>choose an item &quot;%1&quot; in the explorer</source>
        <translation>wählen Sie im Explorer ein Element „%1“</translation>
    </message>
    <message>
        <source>bring the window &quot;%1&quot; to the front</source>
        <translation>holen Sie das Fenster „%1“ nach vorn</translation>
    </message>
    <message>
        <source>nobody offers it at present</source>
        <translation>wird zurzeit von niemandem angeboten</translation>
    </message>
    <message>
        <source>nobody offers it at present: %1</source>
        <translation>wird zurzeit von niemandem angeboten: %1</translation>
    </message>
    <message>
        <source> or </source>
        <translation> oder </translation>
    </message>
    <message>
        <source>%1 isn&apos;t active at present</source>
        <translation>%1 ist zurzeit nicht aktiv</translation>
    </message>
    <message>
        <source>hidden by %1</source>
        <translation>ausgeblendet von %1</translation>
    </message>
    <message>
        <source>disabled by %1</source>
        <translation>deaktiviert von %1</translation>
    </message>
    <message>
        <source>%1 names no procedure for it</source>
        <translation>%1 nennt keine Prozedur dafür</translation>
    </message>
    <message>
        <source>Toolbar %1</source>
        <translation>Symbolleiste %1</translation>
    </message>
    <message>
        <source>Explorer</source>
        <translation>Explorer</translation>
    </message>
</context>
<context>
    <name>CustomizeDialog</name>
    <message>
        <source>Customize Menus and Toolbars</source>
        <translation>Menüs und Symbolleisten anpassen</translation>
    </message>
    <message>
        <source>Menus and toolbars</source>
        <translation>Menüs und Symbolleisten</translation>
    </message>
    <message>
        <source>Entries</source>
        <translation>Einträge</translation>
    </message>
    <message>
        <source>What has no check mark isn&apos;t shown. Buttons of toolbars can be moved and added.</source>
        <translation>Was kein Häkchen hat, wird nicht angezeigt. Schaltflächen von Symbolleisten lassen sich verschieben und hinzufügen.</translation>
    </message>
    <message>
        <source>&amp;Forget These</source>
        <translation>Diese &amp;vergessen</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>Move &amp;Down</source>
        <translation>Nach &amp;unten</translation>
    </message>
    <message>
        <source>&amp;Add…</source>
        <translation>&amp;Hinzufügen…</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>R&amp;eset This</source>
        <translation>Dies &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>Reset A&amp;ll…</source>
        <translation>&amp;Alles zurücksetzen…</translation>
    </message>
    <message>
        <source>Show all menus and toolbars as the application has them?</source>
        <translation>Alle Menüs und Symbolleisten so anzeigen, wie die Anwendung sie vorgibt?</translation>
    </message>
    <message>
        <source>Toolbars</source>
        <translation>Symbolleisten</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>Menüs</translation>
    </message>
    <message>
        <source>Context menus</source>
        <translation>Kontextmenüs</translation>
    </message>
    <message>
        <source>Separator</source>
        <translation>Trennlinie</translation>
    </message>
    <message>
        <source>%1 (added)</source>
        <translation>%1 (hinzugefügt)</translation>
    </message>
    <message>
        <source>Kept for entries that are no longer there:
%1</source>
        <translation>Aufbewahrt für Einträge, die es nicht mehr gibt:
%1</translation>
    </message>
</context>
<context>
    <name>DefinitionPlaces</name>
    <message>
        <source>%1, line %2</source>
        <translation>%1, Zeile %2</translation>
    </message>
</context>
<context>
    <name>ExplorerPage</name>
    <message>
        <source>Filter</source>
        <translation>Filtern</translation>
    </message>
    <message>
        <source>Filter of %1</source>
        <translation>Filter von %1</translation>
    </message>
    <message>
        <source>Shows the items that contain this text (Ctrl+F)</source>
        <translation>Zeigt die Elemente, die diesen Text enthalten (Strg+F)</translation>
    </message>
    <message>
        <source>No item matches</source>
        <translation>Kein Element passt</translation>
    </message>
    <message>
        <source>Nothing here yet. Create or open something from the menus, and it appears in this list.</source>
        <translation>Hier ist noch nichts. Was Sie über die Menüs anlegen oder öffnen, erscheint in dieser Liste.</translation>
    </message>
</context>
<context>
    <name>ExplorerPanel</name>
    <message>
        <source>There is nothing to explore. Items appear here once a service brings some along.</source>
        <translation>Es gibt nichts zu erkunden. Hier erscheinen Elemente, sobald ein Dienst welche mitbringt.</translation>
    </message>
    <message>
        <source>Explorer tabs</source>
        <translation>Registerkarten des Explorers</translation>
    </message>
</context>
<context>
    <name>FailureDialog</name>
    <message>
        <source>Something went wrong</source>
        <translation>Etwas ist schiefgegangen</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>&amp;Details</source>
        <translation>&amp;Details</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Open &amp;Log</source>
        <translation>&amp;Protokoll öffnen</translation>
    </message>
    <message>
        <source>All &amp;problems of this file:</source>
        <translation>Alle &amp;Fehler dieser Datei:</translation>
    </message>
</context>
<context>
    <name>FailurePresenter</name>
    <message>
        <source>Correct the file at that place and start again. Until then the service is left out.</source>
        <translation>Korrigieren Sie die Datei an dieser Stelle und starten Sie neu. Bis dahin bleibt der Dienst weg.</translation>
    </message>
    <message>
        <source>Correct the name at that place and start again. Until then the service is left out.</source>
        <translation>Korrigieren Sie den Namen an dieser Stelle und starten Sie neu. Bis dahin bleibt der Dienst weg.</translation>
    </message>
    <message>
        <source>Check that the plug-in is in the folder &quot;plugins&quot; and that its name is that of the ProgID. Until then the service is left out.</source>
        <translation>Prüfen Sie, ob das Plug-in im Ordner „plugins“ liegt und so heißt, wie es die ProgID angibt. Bis dahin bleibt der Dienst weg.</translation>
    </message>
    <message>
        <source>Correct the definition and start again. Until then the service is left out.</source>
        <translation>Korrigieren Sie die Definition und starten Sie neu. Bis dahin bleibt der Dienst weg.</translation>
    </message>
    <message>
        <source>%1, line %2</source>
        <translation>%1, Zeile %2</translation>
    </message>
    <message>
        <source>The command couldn&apos;t be finished</source>
        <translation>Der Befehl konnte nicht beendet werden</translation>
    </message>
</context>
<context>
    <name>FailureView</name>
    <message>
        <source>This page can&apos;t be shown</source>
        <translation>Diese Seite kann nicht angezeigt werden</translation>
    </message>
    <message>
        <source>Failure %1 from %2</source>
        <translation>Fehler %1 aus %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copies what is wrong to the clipboard</source>
        <translation>Kopiert die Fehlerbeschreibung in die Zwischenablage</translation>
    </message>
</context>
<context>
    <name>Inspector</name>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>Put here by</source>
        <translation>Hierher gesetzt von</translation>
    </message>
    <message>
        <source>code of %1</source>
        <translation>Code von %1</translation>
    </message>
    <message>
        <source>%1, for %2</source>
        <translation>%1, für %2</translation>
    </message>
    <message>
        <source>Position (position key)</source>
        <translation>Position (Positionsschlüssel)</translation>
    </message>
    <message>
        <source>you</source>
        <translation>Ihnen</translation>
    </message>
    <message>
        <source>code of %1, at run time</source>
        <translation>Code von %1, zur Laufzeit</translation>
    </message>
    <message>
        <source>the library; no file names it</source>
        <translation>der Bibliothek; keine Datei nennt es</translation>
    </message>
    <message>
        <source>Also named by</source>
        <translation>Auch genannt von</translation>
    </message>
    <message>
        <source>Shown</source>
        <translation>Angezeigt</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Aktion</translation>
    </message>
    <message>
        <source>Procedure</source>
        <translation>Prozedur</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Provider</source>
        <translation>Anbieter</translation>
    </message>
    <message>
        <source>%1, an object of the class %2</source>
        <translation>%1, ein Objekt der Klasse %2</translation>
    </message>
    <message>
        <source>none at present</source>
        <translation>zurzeit keiner</translation>
    </message>
    <message>
        <source>%1 offers it so</source>
        <translation>%1 bietet es so an</translation>
    </message>
    <message>
        <source>nobody has hidden it</source>
        <translation>niemand hat es ausgeblendet</translation>
    </message>
    <message>
        <source>Can be chosen</source>
        <translation>Wählbar</translation>
    </message>
    <message>
        <source>Checked</source>
        <translation>Angehakt</translation>
    </message>
    <message>
        <source>Entry</source>
        <translation>Eintrag</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Schlüssel</translation>
    </message>
    <message>
        <source>Stands in</source>
        <translation>Steht in</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>%1, given by you in place of %2</source>
        <translation>%1, von Ihnen vergeben anstelle von %2</translation>
    </message>
    <message>
        <source>Hidden</source>
        <translation>Ausgeblendet</translation>
    </message>
    <message>
        <source>by you, in this menu or toolbar</source>
        <translation>von Ihnen, in diesem Menü oder dieser Symbolleiste</translation>
    </message>
    <message>
        <source>Opens</source>
        <translation>Öffnet</translation>
    </message>
    <message>
        <source>Caption</source>
        <translation>Beschriftung</translation>
    </message>
    <message>
        <source>Entries</source>
        <translation>Einträge</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>by you</source>
        <translation>von Ihnen</translation>
    </message>
    <message>
        <source>Explorer item</source>
        <translation>Explorer-Element</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Owner</source>
        <translation>Eigentümer</translation>
    </message>
    <message>
        <source>an object of the class %1</source>
        <translation>ein Objekt der Klasse %1</translation>
    </message>
    <message>
        <source>Service</source>
        <translation>Dienst</translation>
    </message>
    <message>
        <source>Defined in</source>
        <translation>Definiert in</translation>
    </message>
    <message>
        <source>ProgID</source>
        <translation>ProgID</translation>
    </message>
    <message>
        <source>Object</source>
        <translation>Objekt</translation>
    </message>
    <message>
        <source>of the class %1</source>
        <translation>der Klasse %1</translation>
    </message>
    <message>
        <source>Alive</source>
        <translation>Aktiv</translation>
    </message>
    <message>
        <source>Starts the application</source>
        <translation>Startet die Anwendung</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>Aktionen</translation>
    </message>
    <message>
        <source>Explorer items</source>
        <translation>Explorer-Elemente</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Modal</source>
        <translation>Modal</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Translated from</source>
        <translation>Übersetzt aus</translation>
    </message>
</context>
<context>
    <name>InspectorDialog</name>
    <message>
        <source>hidden</source>
        <translation>ausgeblendet</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>deaktiviert</translation>
    </message>
    <message>
        <source>checked</source>
        <translation>angehakt</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>Inspektor</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Was</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>What the application is made of</source>
        <translation>Woraus die Anwendung besteht</translation>
    </message>
    <message>
        <source>About it</source>
        <translation>Angaben dazu</translation>
    </message>
    <message>
        <source>&amp;Objects</source>
        <translation>&amp;Objekte</translation>
    </message>
    <message>
        <source>&amp;Log</source>
        <translation>&amp;Protokoll</translation>
    </message>
    <message>
        <source>Ctrl+Alt+click on an entry of a menu, a toolbar or the explorer shows it here.</source>
        <translation>Strg+Alt+Klick auf einen Eintrag eines Menüs, einer Symbolleiste oder des Explorers zeigt ihn hier.</translation>
    </message>
    <message>
        <source>Services</source>
        <translation>Dienste</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>Menüs</translation>
    </message>
    <message>
        <source>Toolbars</source>
        <translation>Symbolleisten</translation>
    </message>
    <message>
        <source>Context menus</source>
        <translation>Kontextmenüs</translation>
    </message>
    <message>
        <source>chosen</source>
        <translation>gewählt</translation>
    </message>
    <message>
        <source>Explorer</source>
        <translation>Explorer</translation>
    </message>
    <message>
        <source>Windows</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>active</source>
        <translation>aktiv</translation>
    </message>
</context>
<context>
    <name>LeaveBox</name>
    <message>
        <source>“%1” has changes that aren&apos;t saved.</source>
        <translation>„%1“ enthält Änderungen, die nicht gespeichert sind.</translation>
    </message>
    <message>
        <source>Do you want to save them before it closes?</source>
        <translation>Möchten Sie sie vor dem Schließen speichern?</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>What you have entered in “%1” will be lost.</source>
        <translation>Was Sie in „%1“ eingegeben haben, geht verloren.</translation>
    </message>
    <message>
        <source>It can&apos;t be saved as it is. %1</source>
        <translation>So kann es nicht gespeichert werden. %1</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Verwerfen</translation>
    </message>
    <message>
        <source>&amp;Keep Editing</source>
        <translation>&amp;Weiter bearbeiten</translation>
    </message>
</context>
<context>
    <name>Library</name>
    <message>
        <source>Shows or hides the toolbar %1</source>
        <translation>Zeigt oder verbirgt die Symbolleiste %1</translation>
    </message>
    <message>
        <source>About %1</source>
        <translation>Über %1</translation>
    </message>
    <message>
        <source>Toolbars</source>
        <translation>Symbolleisten</translation>
    </message>
    <message>
        <source>Explorer</source>
        <translation>Explorer</translation>
    </message>
</context>
<context>
    <name>LogDialog</name>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Save &amp;Report…</source>
        <translation>&amp;Bericht speichern…</translation>
    </message>
</context>
<context>
    <name>LogModel</name>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Was</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Wo</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Context</source>
        <translation>Kontext</translation>
    </message>
</context>
<context>
    <name>LogView</name>
    <message>
        <source>Show only lines with this text</source>
        <translation>Nur Zeilen mit diesem Text zeigen</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filtern</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>The whole line</source>
        <translation>Die ganze Zeile</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Nothing has gone wrong yet: the log is empty.</source>
        <translation>Bisher ist nichts schiefgegangen: Das Protokoll ist leer.</translation>
    </message>
    <message>
        <source>%1 of %2 lines</source>
        <translation>%1 von %2 Zeilen</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Choose an item in the explorer or a command from the menus to begin.</source>
        <translation>Wählen Sie zum Beginnen ein Element im Explorer oder einen Befehl aus den Menüs.</translation>
    </message>
    <message>
        <source>Windows</source>
        <translation>Fenster</translation>
    </message>
</context>
<context>
    <name>MenuBar</name>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
</context>
<context>
    <name>MenuBuilder</name>
    <message>
        <source>(empty)</source>
        <translation>(leer)</translation>
    </message>
    <message>
        <source>(no open windows)</source>
        <translation>(keine offenen Fenster)</translation>
    </message>
</context>
<context>
    <name>PageList</name>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Search the pages</source>
        <translation>Seiten durchsuchen</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>No page has these words.</source>
        <translation>Keine Seite enthält diese Wörter.</translation>
    </message>
</context>
<context>
    <name>PageMark</name>
    <message>
        <source>This page can&apos;t be shown.</source>
        <translation>Diese Seite kann nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>Something on this page is missing or wrong.</source>
        <translation>Auf dieser Seite fehlt etwas, oder etwas ist falsch.</translation>
    </message>
</context>
<context>
    <name>PaletteDialog</name>
    <message>
        <source>Command Palette</source>
        <translation>Befehlspalette</translation>
    </message>
    <message>
        <source>Type a few letters of a command</source>
        <translation>Einige Buchstaben eines Befehls eingeben</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>About the command</source>
        <translation>Über den Befehl</translation>
    </message>
    <message>
        <source>This application has no commands yet.</source>
        <translation>Diese Anwendung hat noch keine Befehle.</translation>
    </message>
    <message>
        <source>No command has these letters in this order.</source>
        <translation>Kein Befehl enthält diese Buchstaben in dieser Reihenfolge.</translation>
    </message>
    <message>
        <source>Not now: %1.</source>
        <translation>Jetzt nicht: %1.</translation>
    </message>
</context>
<context>
    <name>Preview</name>
    <message>
        <source>The page of %1 comes here. This one stands in for it.</source>
        <translation>Hierher kommt die Seite von %1. Diese steht für sie.</translation>
    </message>
</context>
<context>
    <name>PreviewWindow</name>
    <message>
        <source>Problems</source>
        <translation>Probleme</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>Aufrufe</translation>
    </message>
    <message>
        <source>There is nothing to show yet.

As soon as the problems below are mended, the application appears here by itself.</source>
        <translation>Noch gibt es nichts zu zeigen.

Sobald die Probleme unten behoben sind, erscheint die Anwendung hier von selbst.</translation>
    </message>
    <message>
        <source>%1 — Preview</source>
        <translation>%1 – Vorschau</translation>
    </message>
    <message>
        <source>State of the preview</source>
        <translation>Zustand der Vorschau</translation>
    </message>
    <message>
        <source>Latest call</source>
        <translation>Letzter Aufruf</translation>
    </message>
    <message>
        <source>Show &amp;Anyway</source>
        <translation>Trotzdem &amp;zeigen</translation>
    </message>
    <message>
        <source>Shows the new definitions; the unsaved work is lost</source>
        <translation>Zeigt die neuen Definitionen; was nicht gespeichert ist, geht verloren</translation>
    </message>
    <message>
        <source>&amp;Open Window</source>
        <translation>Fenster &amp;öffnen</translation>
    </message>
    <message>
        <source>Opens a window of the definitions, for which there may be no code yet</source>
        <translation>Öffnet ein Fenster der Definitionen, für das es vielleicht noch keinen Code gibt</translation>
    </message>
    <message>
        <source>(no windows)</source>
        <translation>(keine Fenster)</translation>
    </message>
    <message>
        <source>The folder %1 isn&apos;t there, or has no folder “Services”.</source>
        <translation>Der Ordner %1 fehlt oder hat keinen Ordner „Services“.</translation>
    </message>
    <message>
        <source>As of %1</source>
        <translation>Stand von %1</translation>
    </message>
    <message>
        <source>The files can&apos;t be read</source>
        <translation>Die Dateien können nicht gelesen werden</translation>
    </message>
    <message>
        <source>%1; shown is the last good state, of %2</source>
        <translation>%1; gezeigt wird der letzte gute Stand, von %2</translation>
    </message>
    <message>
        <source>The definitions have changed, but there is unsaved work</source>
        <translation>Die Definitionen haben sich geändert, aber es gibt nicht Gespeichertes</translation>
    </message>
    <message>
        <source>The definitions have changed and are shown when what is open is closed</source>
        <translation>Die Definitionen haben sich geändert und werden gezeigt, wenn geschlossen ist, was offen ist</translation>
    </message>
    <message>
        <source>&amp;Restart</source>
        <translation>Neu &amp;starten</translation>
    </message>
    <message>
        <source>Starts the preview again, which then uses the plug-in as it is built now</source>
        <translation>Startet die Vorschau neu, die dann das Plug-in verwendet, wie es jetzt gebaut ist</translation>
    </message>
    <message>
        <source>%1; built anew: %2</source>
        <translation>%1; neu gebaut: %2</translation>
    </message>
</context>
<context>
    <name>ProblemList</name>
    <message>
        <source>Place</source>
        <translation>Stelle</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>What to do</source>
        <translation>Was zu tun ist</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>Regel</translation>
    </message>
    <message>
        <source>Problems</source>
        <translation>Probleme</translation>
    </message>
    <message>
        <source>Error in %1</source>
        <translation>Fehler in %1</translation>
    </message>
    <message>
        <source>Warning in %1</source>
        <translation>Warnung in %1</translation>
    </message>
</context>
<context>
    <name>ProgressControl</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1&#xa0;%</translation>
    </message>
    <message>
        <source>The work doesn&apos;t answer to Cancel</source>
        <translation>Die Arbeit reagiert nicht auf „Abbrechen“</translation>
    </message>
    <message>
        <source>%1 doesn&apos;t answer to Cancel</source>
        <translation>%1 reagiert nicht auf „Abbrechen“</translation>
    </message>
    <message>
        <source>Cancelling…</source>
        <translation>Wird abgebrochen…</translation>
    </message>
    <message>
        <source>about %1 s left</source>
        <translation>noch etwa %1&#xa0;s</translation>
    </message>
    <message>
        <source>about %1 min left</source>
        <translation>noch etwa %1&#xa0;min</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
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
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>Voreinstellungen</translation>
    </message>
</context>
<context>
    <name>ReportDialog</name>
    <message>
        <source>Save Report</source>
        <translation>Bericht speichern</translation>
    </message>
    <message>
        <source>This is all that is saved, and nothing is sent. Your home folder, your name and the machine&apos;s name have been taken out; the log may name files and data of yours. Strike out what others shouldn&apos;t read.</source>
        <translation>Das ist alles, was gespeichert wird; gesendet wird nichts. Ihr persönlicher Ordner, Ihr Name und der Rechnername sind entfernt; das Protokoll kann Dateien und Daten von Ihnen nennen. Streichen Sie, was andere nicht lesen sollen.</translation>
    </message>
    <message>
        <source>Report</source>
        <translation>Bericht</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>%1 can&apos;t be written: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
</context>
<context>
    <name>ScreenPrinter</name>
    <message>
        <source>The screen can&apos;t be read here</source>
        <translation>Der Bildschirm kann hier nicht gelesen werden</translation>
    </message>
    <message>
        <source>Desktop</source>
        <translation>Bildschirm</translation>
    </message>
    <message>
        <source>There is no window to print</source>
        <translation>Es gibt kein Fenster zum Drucken</translation>
    </message>
    <message>
        <source>Print Preview: %1</source>
        <translation>Druckvorschau: %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; can&apos;t be written</source>
        <translation>„%1“ kann nicht geschrieben werden</translation>
    </message>
</context>
<context>
    <name>ShortcutsDialog</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Search for a command, keys or an owner</source>
        <translation>Befehl, Tasten oder Eigentümer suchen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Owner</source>
        <translation>Eigentümer</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Commands and their keys</source>
        <translation>Befehle und ihre Tasten</translation>
    </message>
    <message>
        <source>Conflict</source>
        <translation>Konflikt</translation>
    </message>
    <message>
        <source>Reset &amp;All…</source>
        <translation>&amp;Alle zurücksetzen…</translation>
    </message>
    <message>
        <source>Give all commands the keys of the application again?</source>
        <translation>Allen Befehlen wieder die Tasten der Anwendung geben?</translation>
    </message>
    <message>
        <source>&amp;New keys:</source>
        <translation>&amp;Neue Tasten:</translation>
    </message>
    <message>
        <source>New keys</source>
        <translation>Neue Tasten</translation>
    </message>
    <message>
        <source>A&amp;ssign</source>
        <translation>&amp;Zuweisen</translation>
    </message>
    <message>
        <source>No &amp;Keys</source>
        <translation>&amp;Keine Tasten</translation>
    </message>
    <message>
        <source>&amp;Reset</source>
        <translation>Zurück&amp;setzen</translation>
    </message>
    <message>
        <source>&amp;Forget</source>
        <translation>&amp;Vergessen</translation>
    </message>
    <message>
        <source>conflict: %1</source>
        <translation>Konflikt: %1</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>geändert</translation>
    </message>
    <message>
        <source>changed; was %1</source>
        <translation>geändert; war %1</translation>
    </message>
    <message>
        <source>no longer there; kept</source>
        <translation>nicht mehr vorhanden; aufbewahrt</translation>
    </message>
    <message>
        <source>%1 is also the key of %2. Of those that can be chosen the one that you changed is meant, else the first.</source>
        <translation>%1 ist auch die Taste von %2. Von denen, die wählbar sind, gilt die von Ihnen geänderte, sonst die erste.</translation>
    </message>
    <message>
        <source>can&apos;t be changed</source>
        <translation>nicht änderbar</translation>
    </message>
    <message>
        <source>can&apos;t be changed; commands come first</source>
        <translation>nicht änderbar; Befehle haben Vorrang</translation>
    </message>
    <message>
        <source>conflict: %1 (%2)</source>
        <translation>Konflikt: %1 (%2)</translation>
    </message>
    <message>
        <source>instead of %1 (%2)</source>
        <translation>statt %1 (%2)</translation>
    </message>
    <message>
        <source>%1 belongs to the window itself: %2. No command gets it.</source>
        <translation>%1 gehört dem Fenster selbst: %2. Kein Befehl bekommt diese Tasten.</translation>
    </message>
    <message>
        <source>%1 is also a key of %2: %3. The command gets it instead.</source>
        <translation>%1 hat schon eine Bedeutung (%2: %3). Der Befehl bekommt diese Tasten stattdessen.</translation>
    </message>
</context>
<context>
    <name>Toolbar</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Close this toolbar</source>
        <translation>Diese Symbolleiste schließen</translation>
    </message>
</context>
<context>
    <name>UnsavedDialog</name>
    <message>
        <source>Unsaved Work</source>
        <translation>Nicht gespeicherte Arbeit</translation>
    </message>
    <message>
        <source>This hasn&apos;t been saved yet. What isn&apos;t saved now will be lost.</source>
        <translation>Dies ist noch nicht gespeichert. Was jetzt nicht gespeichert wird, geht verloren.</translation>
    </message>
    <message>
        <source>Unsaved work</source>
        <translation>Nicht gespeicherte Arbeit</translation>
    </message>
    <message>
        <source>&amp;Save Checked</source>
        <translation>Angehaktes &amp;speichern</translation>
    </message>
    <message>
        <source>&amp;Discard All</source>
        <translation>Alles &amp;verwerfen</translation>
    </message>
</context>
<context>
    <name>UnsavedWork</name>
    <message>
        <source>&quot;%1&quot; couldn&apos;t be saved: %2</source>
        <translation>„%1“ konnte nicht gespeichert werden: %2</translation>
    </message>
    <message>
        <source>Open windows</source>
        <translation>Offene Fenster</translation>
    </message>
</context>
<context>
    <name>WindowBody</name>
    <message>
        <source>This window has no pages.</source>
        <translation>Dieses Fenster hat keine Seiten.</translation>
    </message>
    <message>
        <source>Step %1 of %2: %3</source>
        <translation>Schritt %1 von %2: %3</translation>
    </message>
    <message>
        <source>%1. %2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>Something on the page “%1” is missing or wrong.</source>
        <translation>Auf der Seite „%1“ fehlt etwas, oder etwas ist falsch.</translation>
    </message>
</context>
<context>
    <name>WindowKeys</name>
    <message>
        <source>the window itself</source>
        <translation>das Fenster selbst</translation>
    </message>
    <message>
        <source>the explorer</source>
        <translation>der Explorer</translation>
    </message>
    <message>
        <source>windows with pages</source>
        <translation>Fenster mit Seiten</translation>
    </message>
    <message>
        <source>Next window</source>
        <translation>Nächstes Fenster</translation>
    </message>
    <message>
        <source>Previous window</source>
        <translation>Vorheriges Fenster</translation>
    </message>
    <message>
        <source>To the explorer, or back to the window</source>
        <translation>Zum Explorer oder zurück zum Fenster</translation>
    </message>
    <message>
        <source>Context menu</source>
        <translation>Kontextmenü</translation>
    </message>
    <message>
        <source>Close window</source>
        <translation>Fenster schließen</translation>
    </message>
    <message>
        <source>First menu</source>
        <translation>Erstes Menü</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Auswählen</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filtern</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Nächste Seite</translation>
    </message>
    <message>
        <source>Previous page</source>
        <translation>Vorherige Seite</translation>
    </message>
    <message>
        <source>Menu %1</source>
        <translation>Menü %1</translation>
    </message>
</context>
<context>
    <name>WizardSteps</name>
    <message>
        <source>Steps</source>
        <translation>Schritte</translation>
    </message>
    <message>
        <source>%1. %2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source> (optional)</source>
        <translation> (optional)</translation>
    </message>
</context>
</TS>
