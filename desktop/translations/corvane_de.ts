<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About %1</source>
        <translation>Info über %1</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Runs on Corvane %1 and Qt %2</source>
        <translation>Läuft auf Corvane %1 und Qt %2</translation>
    </message>
    <message>
        <source>Licence: %1</source>
        <translation>Lizenz: %1</translation>
    </message>
    <message>
        <source>Uses these libraries under their licences:</source>
        <translation>Verwendet diese Bibliotheken unter ihren Lizenzen:</translation>
    </message>
</context>
<context>
    <name>AppearancePage</name>
    <message>
        <source>Follow the system</source>
        <translation>Wie das System</translation>
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
        <source>&amp;Theme:</source>
        <translation>&amp;Design:</translation>
    </message>
    <message>
        <source>Toolbar &amp;icon size:</source>
        <translation>&amp;Symbolgröße der Symbolleisten:</translation>
    </message>
    <message>
        <source>&amp;Windows:</source>
        <translation>&amp;Fenster:</translation>
    </message>
    <message>
        <source>In tabs</source>
        <translation>In Registerkarten</translation>
    </message>
    <message>
        <source>Free</source>
        <translation>Frei</translation>
    </message>
    <message>
        <source>Show the start page</source>
        <translation>Startseite zeigen</translation>
    </message>
    <message>
        <source>Show nothing</source>
        <translation>Nichts zeigen</translation>
    </message>
    <message>
        <source>While &amp;no window is open:</source>
        <translation>Ohne &amp;offenes Fenster:</translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>Sp&amp;rache:</translation>
    </message>
    <message>
        <source>Another language is shown from the next start on.</source>
        <translation>Eine andere Sprache gilt ab dem nächsten Start.</translation>
    </message>
</context>
<context>
    <name>Application</name>
    <message>
        <source>The help topic %1 can&apos;t be opened. Its file is expected at %2.</source>
        <translation>Das Hilfethema %1 kann nicht geöffnet werden. Seine Datei wird unter %2 erwartet.</translation>
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
        <source>The window has missing or invalid entries</source>
        <translation>Im Fenster fehlen Eingaben, oder sie sind ungültig</translation>
    </message>
    <message>
        <source>A part of the application failed; the rest goes on.</source>
        <translation>Ein Teil der Anwendung ist fehlgeschlagen; der Rest läuft weiter.</translation>
    </message>
    <message>
        <source>This application has no manual. Its file is expected at %1.</source>
        <translation>Diese Anwendung hat kein Handbuch. Seine Datei wird unter %1 erwartet.</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Handbuch</translation>
    </message>
    <message>
        <source>No program on this system opens %1.</source>
        <translation>Kein Programm auf diesem System öffnet %1.</translation>
    </message>
</context>
<context>
    <name>BarActions</name>
    <message>
        <source>for one item</source>
        <translation>für ein Element</translation>
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
        <source>%1, and then…</source>
        <translation>%1, und dann …</translation>
    </message>
    <message>
        <source>No command has the shortcut %1.</source>
        <translation>Kein Befehl hat das Tastenkürzel %1.</translation>
    </message>
</context>
<context>
    <name>Blame</name>
    <message>
        <source>Crash Recovery</source>
        <translation>Wiederherstellung nach einem Absturz</translation>
    </message>
    <message>
        <source>The application stopped responding while “%1” was running.</source>
        <translation>Die Anwendung hat nicht mehr reagiert, während „%1“ ausgeführt wurde.</translation>
    </message>
    <message>
        <source>The application quit unexpectedly while “%1” was running.</source>
        <translation>Die Anwendung wurde unerwartet beendet, während „%1“ ausgeführt wurde.</translation>
    </message>
    <message>
        <source>You can start without “%1” this time; its commands and windows are unavailable then. Safe mode starts without all plug-ins and without your customizations.</source>
        <translation>Sie können diesmal ohne „%1“ starten; dessen Befehle und Fenster fehlen dann. Der abgesicherte Modus startet ohne alle Plug-ins und ohne Ihre Anpassungen.</translation>
    </message>
    <message>
        <source>Start &amp;Without It</source>
        <translation>&amp;Ohne ihn starten</translation>
    </message>
    <message>
        <source>&amp;Start Normally</source>
        <translation>&amp;Normal starten</translation>
    </message>
    <message>
        <source>Start in Safe &amp;Mode</source>
        <translation>Im &amp;abgesicherten Modus starten</translation>
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
        <source>Handled by</source>
        <translation>Bearbeitet von</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>Aufrufe</translation>
    </message>
    <message>
        <source>no object</source>
        <translation>keinem Objekt</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>stub</source>
        <translation>Platzhalter</translation>
    </message>
    <message>
        <source>plug-in</source>
        <translation>Plug-in</translation>
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
        <source>no active item or window provides it</source>
        <translation>kein aktives Element oder Fenster bietet ihn an</translation>
    </message>
    <message>
        <source> or </source>
        <translation> oder </translation>
    </message>
    <message>
        <source>%1 isn&apos;t active</source>
        <translation>%1 ist nicht aktiv</translation>
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
        <source>%1 has no procedure for it</source>
        <translation>%1 hat keine Prozedur dafür</translation>
    </message>
    <message>
        <source>Toolbar %1</source>
        <translation>Symbolleiste %1</translation>
    </message>
    <message>
        <source>Explorer</source>
        <translation>Explorer</translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation>„%1“</translation>
    </message>
    <message>
        <source>an %1</source>
        <comment>kind of item in the explorer</comment>
        <translation>ein Element „%1“</translation>
    </message>
    <message>
        <source>a %1</source>
        <comment>kind of item in the explorer</comment>
        <translation>ein Element „%1“</translation>
    </message>
    <message>
        <source>Choose %1 in the explorer first</source>
        <translation>Wählen Sie zuerst im Explorer %1</translation>
    </message>
    <message>
        <source>Bring the window %1 to the front first</source>
        <translation>Holen Sie zuerst das Fenster %1 nach vorn</translation>
    </message>
    <message>
        <source>the window itself</source>
        <translation>das Fenster selbst</translation>
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
        <source>Unchecked entries are hidden. Toolbar buttons can be moved and added.</source>
        <translation type="vanished">Einträge ohne Häkchen sind ausgeblendet. Schaltflächen von Symbolleisten lassen sich verschieben und hinzufügen.</translation>
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
        <source>Reset all menus and toolbars to the application&apos;s defaults?</source>
        <translation>Alle Menüs und Symbolleisten auf die Vorgaben der Anwendung zurücksetzen?</translation>
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
        <source>Kept for entries that no longer exist:
%1</source>
        <translation>Aufbewahrt für Einträge, die es nicht mehr gibt:
%1</translation>
    </message>
    <message>
        <source>Unchecked entries are hidden. Drag entries to move them, or use the buttons.</source>
        <translation>Einträge ohne Häkchen sind verborgen. Ziehen Sie Einträge an eine andere Stelle, oder nehmen Sie die Schaltflächen.</translation>
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
    <name>DesktopJobs</name>
    <message>
        <source>Jobs</source>
        <translation>Aufgaben</translation>
    </message>
</context>
<context>
    <name>DocumentBar</name>
    <message>
        <source>Open windows</source>
        <translation>Offene Fenster</translation>
    </message>
    <message>
        <source>%1, pinned</source>
        <translation>%1, angeheftet</translation>
    </message>
</context>
<context>
    <name>Documents</name>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>&amp;Dock</source>
        <translation>An&amp;docken</translation>
    </message>
    <message>
        <source>Close &amp;Others</source>
        <translation>&amp;Andere schließen</translation>
    </message>
    <message>
        <source>Close to the &amp;Right</source>
        <translation>&amp;Rechte schließen</translation>
    </message>
    <message>
        <source>&amp;Pin</source>
        <translation>An&amp;heften</translation>
    </message>
    <message>
        <source>&amp;Split Right</source>
        <translation>Rechts &amp;teilen</translation>
    </message>
    <message>
        <source>Split &amp;Below</source>
        <translation>&amp;Unten teilen</translation>
    </message>
    <message>
        <source>Move to &amp;Next Group</source>
        <translation>In nächste &amp;Gruppe verschieben</translation>
    </message>
    <message>
        <source>Move to Own &amp;Window</source>
        <translation>In eigenes &amp;Fenster verschieben</translation>
    </message>
    <message>
        <source>Sa&amp;ve</source>
        <translation>S&amp;peichern</translation>
    </message>
</context>
<context>
    <name>EntryButton</name>
    <message>
        <source>%1, done</source>
        <translation>%1, erledigt</translation>
    </message>
</context>
<context>
    <name>Explorer</name>
    <message>
        <source>Explorer</source>
        <translation>Explorer</translation>
    </message>
</context>
<context>
    <name>ExplorerPage</name>
    <message>
        <source>Filter</source>
        <translation>Filtern</translation>
    </message>
    <message>
        <source>Filter for %1</source>
        <translation>Filter für %1</translation>
    </message>
    <message>
        <source>Shows the items that contain this text (Ctrl+F)</source>
        <translation>Zeigt die Elemente, die diesen Text enthalten (Strg+F)</translation>
    </message>
    <message>
        <source>No matching items</source>
        <translation>Keine passenden Elemente</translation>
    </message>
    <message>
        <source>Nothing here yet. Items that you create or open appear in this list.</source>
        <translation>Hier ist noch nichts. Elemente, die Sie anlegen oder öffnen, erscheinen in dieser Liste.</translation>
    </message>
</context>
<context>
    <name>ExplorerPanel</name>
    <message>
        <source>The explorer is empty. Items appear here when the application provides them.</source>
        <translation>Der Explorer ist leer. Elemente erscheinen hier, sobald die Anwendung welche bereitstellt.</translation>
    </message>
    <message>
        <source>Explorer tabs</source>
        <translation>Registerkarten des Explorers</translation>
    </message>
</context>
<context>
    <name>ExplorerTree</name>
    <message numerus="yes">
        <source>%n items</source>
        <translation>
            <numerusform>%n Element</numerusform>
            <numerusform>%n Elemente</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing here takes other items.</source>
        <translation>Hier nimmt nichts andere Elemente auf.</translation>
    </message>
    <message>
        <source>Return moves %1 here, Ctrl+Return copies. Esc cancels.</source>
        <translation>Eingabe verschiebt %1 hierher, Strg+Eingabe kopiert. Esc bricht ab.</translation>
    </message>
    <message>
        <source>Go to the target of %1 with the arrow keys. Esc cancels.</source>
        <translation>Gehen Sie mit den Pfeiltasten zum Ziel für %1. Esc bricht ab.</translation>
    </message>
</context>
<context>
    <name>FailureDialog</name>
    <message>
        <source>An Error Occurred</source>
        <translation>Ein Fehler ist aufgetreten</translation>
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
        <source>All &amp;problems in this file:</source>
        <translation>Alle &amp;Fehler in dieser Datei:</translation>
    </message>
</context>
<context>
    <name>FailurePresenter</name>
    <message>
        <source>Correct the file at that place and restart the application. Until then, this part of it is unavailable.</source>
        <translation>Korrigieren Sie die Datei an dieser Stelle und starten Sie die Anwendung neu. Bis dahin ist dieser Teil nicht verfügbar.</translation>
    </message>
    <message>
        <source>Correct the name at that place and restart the application. Until then, this part of it is unavailable.</source>
        <translation>Korrigieren Sie den Namen an dieser Stelle und starten Sie die Anwendung neu. Bis dahin ist dieser Teil nicht verfügbar.</translation>
    </message>
    <message>
        <source>Check that the plug-in is in the folder “plugins” and that its file name matches the ProgID. Until then, this part of the application is unavailable.</source>
        <translation>Prüfen Sie, ob das Plug-in im Ordner „plugins“ liegt und ob sein Dateiname zur ProgID passt. Bis dahin ist dieser Teil der Anwendung nicht verfügbar.</translation>
    </message>
    <message>
        <source>Correct the definition and restart the application. Until then, this part of it is unavailable.</source>
        <translation>Korrigieren Sie die Definition und starten Sie die Anwendung neu. Bis dahin ist dieser Teil nicht verfügbar.</translation>
    </message>
    <message>
        <source>%1, line %2</source>
        <translation>%1, Zeile %2</translation>
    </message>
    <message>
        <source>The command couldn&apos;t be completed</source>
        <translation>Der Befehl konnte nicht abgeschlossen werden</translation>
    </message>
</context>
<context>
    <name>FailureView</name>
    <message>
        <source>This page can&apos;t be shown</source>
        <translation>Diese Seite kann nicht angezeigt werden</translation>
    </message>
    <message>
        <source>Error %1 from %2</source>
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
        <source>Copies the error description to the clipboard</source>
        <translation>Kopiert die Fehlerbeschreibung in die Zwischenablage</translation>
    </message>
</context>
<context>
    <name>FieldEditor</name>
    <message>
        <source>Restore the default</source>
        <translation>Standardwert wiederherstellen</translation>
    </message>
    <message>
        <source>Restore the default: %1</source>
        <translation>Standardwert wiederherstellen: %1</translation>
    </message>
    <message>
        <source>Required</source>
        <translation>Erforderlich</translation>
    </message>
</context>
<context>
    <name>Files</name>
    <message>
        <source>“%1” is there already.</source>
        <translation>„%1“ gibt es schon.</translation>
    </message>
    <message>
        <source>Replacing it in the folder “%1” overwrites what it holds.</source>
        <translation>Wenn Sie die Datei im Ordner „%1“ ersetzen, wird ihr Inhalt überschrieben.</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>&amp;Ersetzen</translation>
    </message>
    <message>
        <source>Choose &amp;Another Name</source>
        <translation>&amp;Anderen Namen wählen</translation>
    </message>
    <message>
        <source>All files</source>
        <translation>Alle Dateien</translation>
    </message>
</context>
<context>
    <name>FormPrinting</name>
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
    <name>FormProblem</name>
    <message>
        <source>Please enter a value.</source>
        <translation>Bitte geben Sie einen Wert ein.</translation>
    </message>
    <message>
        <source>Please enter a whole number.</source>
        <translation>Bitte geben Sie eine ganze Zahl ein.</translation>
    </message>
    <message>
        <source>Please enter a number.</source>
        <translation>Bitte geben Sie eine Zahl ein.</translation>
    </message>
    <message>
        <source>Please enter a value from %1 to %2.</source>
        <translation>Bitte geben Sie einen Wert von %1 bis %2 ein.</translation>
    </message>
    <message>
        <source>Please enter at least %1.</source>
        <translation>Bitte geben Sie mindestens %1 ein.</translation>
    </message>
    <message>
        <source>Please enter at most %1.</source>
        <translation>Bitte geben Sie höchstens %1 ein.</translation>
    </message>
    <message>
        <source>Please enter at most %1 decimal places.</source>
        <translation>Bitte geben Sie höchstens %1 Nachkommastellen ein.</translation>
    </message>
    <message>
        <source>Please enter at most %1 characters.</source>
        <translation>Bitte geben Sie höchstens %1 Zeichen ein.</translation>
    </message>
    <message>
        <source>Please enter: %1.</source>
        <translation>Bitte geben Sie ein: %1.</translation>
    </message>
    <message>
        <source>Please choose one of the values.</source>
        <translation>Bitte wählen Sie einen der Werte.</translation>
    </message>
    <message>
        <source>Please enter true or false.</source>
        <translation>Bitte geben Sie true oder false ein.</translation>
    </message>
    <message>
        <source>Please enter a date, such as 2026-11-25.</source>
        <translation>Bitte geben Sie ein Datum ein, etwa 2026-11-25.</translation>
    </message>
    <message>
        <source>Please enter a time, such as 18:30.</source>
        <translation>Bitte geben Sie eine Uhrzeit ein, etwa 18:30.</translation>
    </message>
    <message>
        <source>Please enter a date and a time, such as 2026-11-25 18:30.</source>
        <translation>Bitte geben Sie Datum und Uhrzeit ein, etwa 2026-11-25 18:30.</translation>
    </message>
    <message>
        <source>Please enter a color, such as #1f77b4.</source>
        <translation>Bitte geben Sie eine Farbe ein, etwa #1f77b4.</translation>
    </message>
    <message>
        <source>This value can&apos;t be used here; %1 is expected.</source>
        <translation>Dieser Wert passt hier nicht; erwartet wird %1.</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>true oder false</translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation>eine ganze Zahl</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>eine Zahl</translation>
    </message>
    <message>
        <source>another value</source>
        <translation>ein anderer Wert</translation>
    </message>
</context>
<context>
    <name>FormWidget</name>
    <message>
        <source>Restore Defaults</source>
        <translation>Voreinstellungen</translation>
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
        <source>Added by</source>
        <translation>Hinzugefügt von</translation>
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
        <source>the library; not defined in a file</source>
        <translation>der Bibliothek; in keiner Datei definiert</translation>
    </message>
    <message>
        <source>Also defined by</source>
        <translation>Auch definiert von</translation>
    </message>
    <message>
        <source>Visible</source>
        <translation>Sichtbar</translation>
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
        <source>as set by %1</source>
        <translation>so gesetzt von %1</translation>
    </message>
    <message>
        <source>not hidden</source>
        <translation>nicht ausgeblendet</translation>
    </message>
    <message>
        <source>Enabled</source>
        <translation>Aktiviert</translation>
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
        <source>Location</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>%1, set by you instead of %2</source>
        <translation>%1, von Ihnen festgelegt anstelle von %2</translation>
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
        <source>Active</source>
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
    <message>
        <source>Process</source>
        <translation>Prozess</translation>
    </message>
    <message>
        <source>%1, with %2 MiB</source>
        <translation>%1, mit %2 MiB</translation>
    </message>
    <message>
        <source>not started yet</source>
        <translation>noch nicht gestartet</translation>
    </message>
    <message>
        <source>Described in</source>
        <translation>Beschrieben in</translation>
    </message>
    <message>
        <source>Starts</source>
        <translation>Starts</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>Aufrufe</translation>
    </message>
    <message>
        <source>%1, %2 ms on average</source>
        <translation>%1, im Mittel %2 ms</translation>
    </message>
    <message>
        <source>Longest call</source>
        <translation>Längster Aufruf</translation>
    </message>
    <message>
        <source>%1 ms: %2</source>
        <translation>%1 ms: %2</translation>
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
        <source>Object</source>
        <translation>Objekt</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Objects of the application</source>
        <translation>Objekte der Anwendung</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Details</translation>
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
        <source>Ctrl+Alt+click an entry of a menu, a toolbar or the explorer to show it here.</source>
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
        <source>selected</source>
        <translation>ausgewählt</translation>
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
    <name>ItemTexts</name>
    <message numerus="yes">
        <source>“%1” is for one item, and %n are selected.</source>
        <translation>
            <numerusform>„%1“ ist für ein Element, und %n ist ausgewählt.</numerusform>
            <numerusform>„%1“ ist für ein Element, und %n sind ausgewählt.</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing here opens %1.</source>
        <translation>Hier kann nichts %1 öffnen.</translation>
    </message>
</context>
<context>
    <name>JobBar</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Shows all jobs</source>
        <translation>Zeigt alle Aufgaben</translation>
    </message>
    <message>
        <source>Progress of %1</source>
        <translation>Fortschritt von %1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>%1 abbrechen</translation>
    </message>
    <message>
        <source>Jobs…</source>
        <translation>Aufgaben…</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>und %n weitere</numerusform>
            <numerusform>und %n weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>Jobs</source>
        <translation>Aufgaben</translation>
    </message>
</context>
<context>
    <name>JobQuestionBox</name>
    <message>
        <source>“%1” is still running in “%2”.</source>
        <translation>„%1“ läuft noch in „%2“.</translation>
    </message>
    <message numerus="yes">
        <source>%n jobs are still running in “%1”.</source>
        <translation>
            <numerusform>%n Aufgabe läuft noch in „%1“.</numerusform>
            <numerusform>%n Aufgaben laufen noch in „%1“.</numerusform>
        </translation>
    </message>
    <message>
        <source>If the window closes, the result isn&apos;t shown in it any more.</source>
        <translation>Wenn das Fenster geschlossen wird, erscheint das Ergebnis nicht mehr darin.</translation>
    </message>
    <message>
        <source>&amp;Wait, Then Close</source>
        <translation>&amp;Warten, dann schließen</translation>
    </message>
    <message>
        <source>&amp;Cancel the Job</source>
        <translation>&amp;Aufgabe abbrechen</translation>
    </message>
    <message>
        <source>&amp;Leave It Running</source>
        <translation>Weiter&amp;laufen lassen</translation>
    </message>
    <message>
        <source>&amp;Keep Open</source>
        <translation>&amp;Offen lassen</translation>
    </message>
</context>
<context>
    <name>Jobs</name>
    <message>
        <source>Finished</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Fehlgeschlagen</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>%1 isn&apos;t responding to Cancel</source>
        <translation>%1 reagiert nicht auf „Abbrechen“</translation>
    </message>
    <message>
        <source>Cancelling…</source>
        <translation>Wird abgebrochen…</translation>
    </message>
    <message>
        <source>Running</source>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>Wartet</translation>
    </message>
    <message>
        <source>Waiting for “%1” (%2)</source>
        <translation>Wartet auf „%1“ (%2)</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1&#xa0;%</translation>
    </message>
    <message>
        <source>about %1 s left</source>
        <translation>noch etwa %1&#xa0;s</translation>
    </message>
    <message>
        <source>about %1 min left</source>
        <translation>noch etwa %1&#xa0;min</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>an item or window, and its service</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Belongs to: %1</source>
        <translation>Gehört zu: %1</translation>
    </message>
    <message>
        <source>Also waiting for “%1” (%2)</source>
        <translation>Wartet auch auf „%1“ (%2)</translation>
    </message>
    <message>
        <source>This job can&apos;t be cancelled.</source>
        <translation>Diese Aufgabe lässt sich nicht abbrechen.</translation>
    </message>
</context>
<context>
    <name>JobsView</name>
    <message>
        <source>No job is running.</source>
        <translation>Es läuft keine Aufgabe.</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>Job</source>
        <translation>Aufgabe</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Belongs to</source>
        <translation>Gehört zu</translation>
    </message>
    <message>
        <source>Jobs</source>
        <translation>Aufgaben</translation>
    </message>
    <message>
        <source>Cancel &amp;Job</source>
        <translation>A&amp;ufgabe abbrechen</translation>
    </message>
    <message>
        <source>Clear &amp;Finished</source>
        <translation>&amp;Fertige entfernen</translation>
    </message>
</context>
<context>
    <name>Layouts</name>
    <message>
        <source>“%1” can&apos;t be written: %2</source>
        <translation>„%1“ kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>“%1” can&apos;t be read: %2</source>
        <translation>„%1“ kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>“%1” isn&apos;t a layout.</source>
        <translation>„%1“ ist keine Anordnung.</translation>
    </message>
    <message>
        <source>“%1” is of a later version of this program.</source>
        <translation>„%1“ stammt von einer späteren Version dieses Programms.</translation>
    </message>
</context>
<context>
    <name>LayoutsDialog</name>
    <message>
        <source>No layout has been saved yet. Window › Layouts › Save Layout keeps the present one.</source>
        <translation>Es ist noch keine Anordnung gespeichert. Fenster › Anordnungen › Anordnung speichern behält die jetzige.</translation>
    </message>
    <message>
        <source>Layouts</source>
        <translation>Anordnungen</translation>
    </message>
    <message>
        <source>&amp;Use</source>
        <translation>&amp;Verwenden</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Umbenennen</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>&amp;Export…</source>
        <translation>&amp;Exportieren …</translation>
    </message>
    <message>
        <source>&amp;Import…</source>
        <translation>&amp;Importieren …</translation>
    </message>
    <message>
        <source>There is a layout “%1” already.</source>
        <translation>Es gibt schon eine Anordnung „%1“.</translation>
    </message>
    <message>
        <source>Delete the layout “%1”?</source>
        <translation>Die Anordnung „%1“ löschen?</translation>
    </message>
</context>
<context>
    <name>LeaveBox</name>
    <message>
        <source>“%1” has unsaved changes.</source>
        <translation>„%1“ enthält nicht gespeicherte Änderungen.</translation>
    </message>
    <message>
        <source>Do you want to save them before closing?</source>
        <translation>Möchten Sie sie vor dem Schließen speichern?</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Your entries in “%1” will be lost.</source>
        <translation>Ihre Eingaben in „%1“ gehen verloren.</translation>
    </message>
    <message>
        <source>It can&apos;t be saved yet. %1</source>
        <translation>Es kann noch nicht gespeichert werden. %1</translation>
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
        <translation>Info über %1</translation>
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
    <name>LineEditor</name>
    <message>
        <source>Choose a date</source>
        <translation>Datum wählen</translation>
    </message>
    <message>
        <source>Choose a date: %1</source>
        <translation>Datum wählen: %1</translation>
    </message>
    <message>
        <source>Choose a color</source>
        <translation>Farbe wählen</translation>
    </message>
    <message>
        <source>Choose a color: %1</source>
        <translation>Farbe wählen: %1</translation>
    </message>
    <message>
        <source>Choose a folder</source>
        <translation>Ordner wählen</translation>
    </message>
    <message>
        <source>Choose a file</source>
        <translation>Datei wählen</translation>
    </message>
    <message>
        <source>Choose a folder: %1</source>
        <translation>Ordner wählen: %1</translation>
    </message>
    <message>
        <source>Choose a file: %1</source>
        <translation>Datei wählen: %1</translation>
    </message>
</context>
<context>
    <name>LogModel</name>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
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
    <name>LogPanel</name>
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
        <source>Full Entry</source>
        <translation>Vollständiger Eintrag</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>The log is empty: there have been no errors.</source>
        <translation>Das Protokoll ist leer: Es gab keine Fehler.</translation>
    </message>
    <message>
        <source>%1 of %2 lines</source>
        <translation>%1 von %2 Zeilen</translation>
    </message>
</context>
<context>
    <name>LostBar</name>
    <message>
        <source>&amp;Start Again</source>
        <translation>&amp;Neu starten</translation>
    </message>
    <message>
        <source>Starts the service of this page. What you have entered stays</source>
        <translation>Startet den Dienst dieser Seite. Was Sie eingegeben haben, bleibt</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>To begin, select an item in the explorer or choose a command from the menus.</source>
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
    <name>MenuOutline</name>
    <message>
        <source>Move &amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>Move &amp;Down</source>
        <translation>Nach &amp;unten</translation>
    </message>
    <message>
        <source>&amp;Line Below</source>
        <translation>Trenn&amp;linie darunter</translation>
    </message>
    <message>
        <source>&amp;Undo Move</source>
        <translation>Verschieben &amp;zurücknehmen</translation>
    </message>
    <message>
        <source>Entry</source>
        <translation>Eintrag</translation>
    </message>
    <message>
        <source>Caption</source>
        <translation>Beschriftung</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Order of the menus</source>
        <translation>Reihenfolge der Menüs</translation>
    </message>
    <message>
        <source>Separator</source>
        <translation>Trennlinie</translation>
    </message>
    <message>
        <source>%1 (doesn&apos;t appear)</source>
        <translation>%1 (erscheint nicht)</translation>
    </message>
</context>
<context>
    <name>OpenedFiles</name>
    <message>
        <source>&amp;Clear Recent Files</source>
        <translation>Zuletzt geöffnete Dateien &amp;vergessen</translation>
    </message>
    <message>
        <source>The file “%1” isn&apos;t there any more.</source>
        <translation>Die Datei „%1“ ist nicht mehr da.</translation>
    </message>
    <message>
        <source>Recent Files</source>
        <translation>Zuletzt geöffnete Dateien</translation>
    </message>
    <message>
        <source>Layout %1</source>
        <translation>Anordnung %1</translation>
    </message>
    <message>
        <source>Save Layout</source>
        <translation>Anordnung speichern</translation>
    </message>
    <message>
        <source>Name of the layout:</source>
        <translation>Name der Anordnung:</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>There is a layout “%1” already. Replace it?</source>
        <translation>Es gibt schon eine Anordnung „%1“. Soll sie ersetzt werden?</translation>
    </message>
    <message>
        <source>Layouts</source>
        <translation>Anordnungen</translation>
    </message>
    <message>
        <source>Export Layout</source>
        <translation>Anordnung exportieren</translation>
    </message>
    <message>
        <source>Import Layout</source>
        <translation>Anordnung importieren</translation>
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
        <source>No page contains these words.</source>
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
        <source>This page has missing or invalid entries.</source>
        <translation>Auf dieser Seite fehlen Eingaben, oder sie sind ungültig.</translation>
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
        <source>No command contains these letters in this order.</source>
        <translation>Kein Befehl enthält diese Buchstaben in dieser Reihenfolge.</translation>
    </message>
    <message>
        <source>Unavailable: %1.</source>
        <translation>Nicht verfügbar: %1.</translation>
    </message>
</context>
<context>
    <name>PersonalDesktop</name>
    <message>
        <source>acts on “%1”</source>
        <translation>wirkt auf „%1“</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
</context>
<context>
    <name>Preview</name>
    <message>
        <source>This is a stub for the page of %1.</source>
        <translation>Dies ist ein Platzhalter für die Seite von %1.</translation>
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

The application appears here as soon as the problems below are fixed.</source>
        <translation>Noch gibt es nichts zu zeigen.

Die Anwendung erscheint hier, sobald die Probleme unten behoben sind.</translation>
    </message>
    <message>
        <source>%1 — Preview</source>
        <translation>%1 – Vorschau</translation>
    </message>
    <message>
        <source>Status of the preview</source>
        <translation>Status der Vorschau</translation>
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
        <source>Shows the new definitions and discards unsaved work</source>
        <translation>Zeigt die neuen Definitionen und verwirft nicht gespeicherte Arbeit</translation>
    </message>
    <message>
        <source>&amp;Open Window</source>
        <translation>Fenster &amp;öffnen</translation>
    </message>
    <message>
        <source>Opens a window of the definitions, even without code for it</source>
        <translation>Öffnet ein Fenster der Definitionen, auch ohne Code dafür</translation>
    </message>
    <message>
        <source>(no windows)</source>
        <translation>(keine Fenster)</translation>
    </message>
    <message>
        <source>The folder %1 doesn&apos;t exist or has no folder “Services”.</source>
        <translation>Der Ordner %1 existiert nicht oder enthält keinen Ordner „Services“.</translation>
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
        <source>%1; showing the last valid state, from %2</source>
        <translation>%1; gezeigt wird der letzte gültige Stand, von %2</translation>
    </message>
    <message>
        <source>The definitions have changed, but there is unsaved work</source>
        <translation>Die Definitionen haben sich geändert, aber es gibt nicht gespeicherte Arbeit</translation>
    </message>
    <message>
        <source>The definitions have changed and will be shown when the open dialog or editor is closed</source>
        <translation>Die Definitionen haben sich geändert und werden gezeigt, sobald der offene Dialog oder das offene Eingabefeld geschlossen ist</translation>
    </message>
    <message>
        <source>&amp;Restart</source>
        <translation>Neu &amp;starten</translation>
    </message>
    <message>
        <source>Restarts the preview to use the rebuilt plug-in</source>
        <translation>Startet die Vorschau neu, um das neu gebaute Plug-in zu verwenden</translation>
    </message>
    <message>
        <source>%1; rebuilt: %2</source>
        <translation>%1; neu gebaut: %2</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>Menüs</translation>
    </message>
    <message>
        <source>Lists the entries of all menus, to be moved to other places</source>
        <translation>Listet die Einträge aller Menüs auf, um sie zu verschieben</translation>
    </message>
    <message>
        <source>As of %1: %2</source>
        <translation>Stand von %1: %2</translation>
    </message>
    <message>
        <source>The entry can&apos;t be moved: %1</source>
        <translation>Der Eintrag kann nicht verschoben werden: %1</translation>
    </message>
</context>
<context>
    <name>PrintProgress</name>
    <message>
        <source>Print: %1</source>
        <translation>Drucken: %1</translation>
    </message>
    <message>
        <source>Sheets</source>
        <translation>Blätter</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>Laying out sheet %1</source>
        <translation>Blatt %1 wird gesetzt</translation>
    </message>
    <message>
        <source>Sheet %1 of %2</source>
        <translation>Blatt %1 von %2</translation>
    </message>
</context>
<context>
    <name>Printout</name>
    <message>
        <source>Page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
    <message>
        <source>Page %1</source>
        <translation>Seite %1</translation>
    </message>
</context>
<context>
    <name>ProblemList</name>
    <message>
        <source>Location</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>Remedy</source>
        <translation>Abhilfe</translation>
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
    <message>
        <source>%1 times</source>
        <translation>%1-mal</translation>
    </message>
</context>
<context>
    <name>ProcessWaiting</name>
    <message>
        <source>&amp;Wait</source>
        <translation>&amp;Warten</translation>
    </message>
    <message>
        <source>Hides this message until the service has answered</source>
        <translation>Blendet diese Meldung aus, bis der Dienst geantwortet hat</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Ends the service; its next command starts it again</source>
        <translation>Beendet den Dienst; sein nächster Befehl startet ihn neu</translation>
    </message>
    <message>
        <source>“%1” hasn&apos;t answered for %2 s.</source>
        <translation>„%1“ antwortet seit %2 s nicht.</translation>
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
        <source>The operation isn&apos;t responding to Cancel</source>
        <translation>Der Vorgang reagiert nicht auf „Abbrechen“</translation>
    </message>
    <message>
        <source>%1 isn&apos;t responding to Cancel</source>
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
    <name>QPrintPreviewDialog</name>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
</context>
<context>
    <name>ReportDialog</name>
    <message>
        <source>Save Report</source>
        <translation>Bericht speichern</translation>
    </message>
    <message>
        <source>This is the complete report; nothing is sent. Your home folder, your name and the computer&apos;s name have been removed, but the log may contain names of your files and data. Delete what others shouldn&apos;t read.</source>
        <translation>Dies ist der vollständige Bericht; gesendet wird nichts. Ihr persönlicher Ordner, Ihr Name und der Rechnername sind entfernt, aber das Protokoll kann Namen Ihrer Dateien und Daten enthalten. Löschen Sie, was andere nicht lesen sollen.</translation>
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
        <source>The screen can&apos;t be captured here</source>
        <translation>Der Bildschirm kann hier nicht aufgenommen werden</translation>
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
        <source>“%1” can&apos;t be written</source>
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
        <source>Search for a command, shortcut or owner</source>
        <translation>Befehl, Tastenkürzel oder Eigentümer suchen</translation>
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
        <source>Shortcut</source>
        <translation>Tastenkürzel</translation>
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
        <source>Commands and their shortcuts</source>
        <translation>Befehle und ihre Tastenkürzel</translation>
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
        <source>Reset all shortcuts to the application&apos;s defaults?</source>
        <translation>Alle Tastenkürzel auf die Vorgaben der Anwendung zurücksetzen?</translation>
    </message>
    <message>
        <source>&amp;New shortcut:</source>
        <translation>&amp;Neues Tastenkürzel:</translation>
    </message>
    <message>
        <source>New shortcut</source>
        <translation>Neues Tastenkürzel</translation>
    </message>
    <message>
        <source>A&amp;ssign</source>
        <translation>&amp;Zuweisen</translation>
    </message>
    <message>
        <source>No Shor&amp;tcut</source>
        <translation>&amp;Kein Tastenkürzel</translation>
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
        <source>no longer exists; kept</source>
        <translation>nicht mehr vorhanden; aufbewahrt</translation>
    </message>
    <message>
        <source>%1 is also the shortcut of %2. Of the available commands, the one that you changed takes precedence, otherwise the first.</source>
        <translation>%1 ist auch das Tastenkürzel von %2. Unter den verfügbaren Befehlen hat der von Ihnen geänderte Vorrang, sonst der erste.</translation>
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
        <source>%1 is reserved for the window: %2. It can&apos;t be assigned to a command.</source>
        <translation>%1 ist für das Fenster reserviert: %2. Es kann keinem Befehl zugewiesen werden.</translation>
    </message>
    <message>
        <source>%1 is also used by %2: %3. The command takes precedence.</source>
        <translation>%1 wird auch verwendet für %2: %3. Der Befehl hat Vorrang.</translation>
    </message>
    <message>
        <source>%1 begins with the shortcut of %2, which won&apos;t work any more.</source>
        <translation>%1 beginnt mit dem Tastenkürzel von %2, das dann nicht mehr wirkt.</translation>
    </message>
    <message>
        <source>%1 won&apos;t work, as it is the beginning of the shortcut of %2.</source>
        <translation>%1 wirkt nicht, da das Tastenkürzel von %2 so beginnt.</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Show this page while no window is open</source>
        <translation>Diese Seite zeigen, solange kein Fenster offen ist</translation>
    </message>
    <message>
        <source>Start page</source>
        <translation>Startseite</translation>
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
        <source>These changes haven&apos;t been saved. What you don&apos;t save now will be lost.</source>
        <translation>Diese Änderungen sind noch nicht gespeichert. Was Sie jetzt nicht speichern, geht verloren.</translation>
    </message>
    <message>
        <source>&amp;Save Checked</source>
        <translation>Angehaktes &amp;speichern</translation>
    </message>
    <message>
        <source>&amp;Discard All</source>
        <translation>Alles &amp;verwerfen</translation>
    </message>
    <message>
        <source>Running Jobs</source>
        <translation>Laufende Aufgaben</translation>
    </message>
    <message>
        <source>These jobs haven&apos;t finished. They will be cancelled.</source>
        <translation>Diese Aufgaben sind noch nicht fertig. Sie werden abgebrochen.</translation>
    </message>
    <message>
        <source>These changes haven&apos;t been saved. What you don&apos;t save now will be lost, and jobs that haven&apos;t finished will be cancelled.</source>
        <translation>Diese Änderungen sind nicht gespeichert. Was Sie jetzt nicht speichern, geht verloren, und Aufgaben, die noch nicht fertig sind, werden abgebrochen.</translation>
    </message>
    <message>
        <source>Cancel &amp;Jobs and Quit</source>
        <translation>&amp;Aufgaben abbrechen und beenden</translation>
    </message>
    <message>
        <source>&amp;Don&apos;t Quit</source>
        <translation>&amp;Nicht beenden</translation>
    </message>
    <message>
        <source>Running jobs</source>
        <translation>Laufende Aufgaben</translation>
    </message>
</context>
<context>
    <name>UnsavedWork</name>
    <message>
        <source>“%1” couldn&apos;t be saved: %2</source>
        <translation>„%1“ konnte nicht gespeichert werden: %2</translation>
    </message>
    <message>
        <source>Open windows</source>
        <translation>Offene Fenster</translation>
    </message>
</context>
<context>
    <name>Welcome</name>
    <message>
        <source>Welcome</source>
        <translation>Willkommen</translation>
    </message>
    <message>
        <source>This can&apos;t be chosen now; maybe something has to be selected first.</source>
        <translation>Das ist jetzt nicht möglich; vielleicht muss zuerst etwas ausgewählt werden.</translation>
    </message>
    <message>
        <source>First Steps</source>
        <translation>Erste Schritte</translation>
    </message>
    <message>
        <source>First Steps: %1 of %2 Done</source>
        <translation>Erste Schritte: %1 von %2 erledigt</translation>
    </message>
    <message>
        <source>Recent Files</source>
        <translation>Zuletzt geöffnete Dateien</translation>
    </message>
    <message>
        <source>Recent Windows</source>
        <translation>Zuletzt geöffnete Fenster</translation>
    </message>
    <message>
        <source>Samples</source>
        <translation>Beispiele</translation>
    </message>
    <message>
        <source>Find Your Way</source>
        <translation>Zurechtfinden</translation>
    </message>
    <message>
        <source>Find a command by a few of its letters</source>
        <translation>Einen Befehl an einigen Buchstaben finden</translation>
    </message>
    <message>
        <source>Read the manual</source>
        <translation>Das Handbuch lesen</translation>
    </message>
    <message>
        <source>See all shortcuts</source>
        <translation>Alle Tastenkürzel ansehen</translation>
    </message>
    <message>
        <source>Change how the application looks and works</source>
        <translation>Aussehen und Verhalten der Anwendung ändern</translation>
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
        <source>The page “%1” has missing or invalid entries.</source>
        <translation>Auf der Seite „%1“ fehlen Eingaben, oder sie sind ungültig.</translation>
    </message>
    <message>
        <source>It can&apos;t be saved yet. %1</source>
        <translation>Es kann noch nicht gespeichert werden. %1</translation>
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
    <message>
        <source>Switch to the window used before</source>
        <translation>Zum zuvor benutzten Fenster wechseln</translation>
    </message>
    <message>
        <source>Switch to the window not used for longest</source>
        <translation>Zum am längsten nicht benutzten Fenster wechseln</translation>
    </message>
    <message>
        <source>Next part: window, explorer, open views</source>
        <translation>Nächster Teil: Fenster, Explorer, offene Ansichten</translation>
    </message>
    <message>
        <source>Previous part</source>
        <translation>Voriger Teil</translation>
    </message>
    <message>
        <source>Save window</source>
        <translation>Fenster speichern</translation>
    </message>
    <message>
        <source>Move to another item</source>
        <translation>In ein anderes Element verschieben</translation>
    </message>
</context>
<context>
    <name>WindowSwitcher</name>
    <message>
        <source>Open windows, the last used first</source>
        <translation>Offene Fenster, das zuletzt benutzte zuerst</translation>
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
<context>
    <name>corvane::desktop::WholeFile</name>
    <message>
        <source>The file “%1” can&apos;t be written: %2.</source>
        <translation>Die Datei „%1“ kann nicht geschrieben werden: %2.</translation>
    </message>
</context>
</TS>
