<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AboutSection</name>
    <message>
        <source>ABOUT</source>
        <translation>ÜBER DAS PROGRAMM</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
</context>
<context>
    <name>ActivityPage</name>
    <message>
        <source>Share</source>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>ActivityRow</name>
    <message>
        <source>Waiting…</source>
        <translation>Warten&#xa0;…</translation>
    </message>
</context>
<context>
    <name>ActivityScreen</name>
    <message>
        <source>Share</source>
        <translation>Teilen</translation>
    </message>
</context>
<context>
    <name>Alert</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>BillRow</name>
    <message>
        <source>Bill to Split</source>
        <translation>Rechnungsbetrag</translation>
    </message>
</context>
<context>
    <name>BulkBar</name>
    <message>
        <source>Delete old</source>
        <translation>Alte löschen</translation>
    </message>
    <message>
        <source>Delete all</source>
        <translation>Alle löschen</translation>
    </message>
</context>
<context>
    <name>CalculatorToolBar</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
</context>
<context>
    <name>ClearDialog</name>
    <message>
        <source>Clear</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Clear this bill?</source>
        <translation>Diese Rechnung zurücksetzen?</translation>
    </message>
</context>
<context>
    <name>Confirmation</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>ContentView</name>
    <message>
        <source>Amount too large</source>
        <translation>Betrag zu groß</translation>
    </message>
    <message>
        <source>Not an amount</source>
        <translation>Kein Betrag</translation>
    </message>
    <message>
        <source>Copy share per person</source>
        <translation>Anteil pro Person kopieren</translation>
    </message>
    <message>
        <source>Tip</source>
        <translation>Trinkgeld</translation>
    </message>
    <message>
        <source>Tip %1</source>
        <translation>Trinkgeld %1</translation>
    </message>
</context>
<context>
    <name>CopiedDialog</name>
    <message>
        <source>The information has been copied to the clipboard for pasting into other apps.</source>
        <translation>Die Angaben wurden in die Zwischenablage kopiert und können in andere Apps eingefügt werden.</translation>
    </message>
</context>
<context>
    <name>CopyActivity</name>
    <message>
        <source>Copy text</source>
        <translation>Text kopieren</translation>
    </message>
</context>
<context>
    <name>DeleteAllDialog</name>
    <message>
        <source>Delete ALL bills</source>
        <translation>ALLE Rechnungen löschen</translation>
    </message>
</context>
<context>
    <name>DeleteOldDialog</name>
    <message>
        <source>Delete old bills</source>
        <translation>Alte Rechnungen löschen</translation>
    </message>
    <message>
        <source>Delete bills older than 6 months?</source>
        <translation>Rechnungen löschen, die älter als 6 Monate sind?</translation>
    </message>
</context>
<context>
    <name>DescriptionBuffer</name>
    <message>
        <source>Description too long</source>
        <translation>Beschreibung zu lang</translation>
    </message>
</context>
<context>
    <name>DetailLines</name>
    <message>
        <source>Bill</source>
        <translation>Rechnung</translation>
    </message>
    <message>
        <source>People</source>
        <translation>Personen</translation>
    </message>
    <message>
        <source>Service</source>
        <translation>Service</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Gesamt</translation>
    </message>
    <message>
        <source>Share per person</source>
        <translation>Anteil pro Person</translation>
    </message>
    <message>
        <source>Tip</source>
        <translation>Trinkgeld</translation>
    </message>
    <message>
        <source>Everyone pays the tip</source>
        <translation>Alle zahlen das Trinkgeld</translation>
    </message>
    <message>
        <source>Tip is rounded up</source>
        <translation>Trinkgeld aufgerundet</translation>
    </message>
    <message>
        <source>Share is rounded up</source>
        <translation>Anteil aufgerundet</translation>
    </message>
</context>
<context>
    <name>DetailPage</name>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>Übernehmen</translation>
    </message>
</context>
<context>
    <name>DetailView</name>
    <message>
        <source>Saved on: %1 at %2</source>
        <translation>Gespeichert: %1 um %2&#xa0;Uhr</translation>
    </message>
</context>
<context>
    <name>EmailActivity</name>
    <message>
        <source>No e-mail program could be opened. Copy the text instead.</source>
        <translation>Es ließ sich kein E-Mail-Programm öffnen. Der Text kann stattdessen kopiert werden.</translation>
    </message>
    <message>
        <source>E-mail</source>
        <translation>E-Mail</translation>
    </message>
</context>
<context>
    <name>FileChooser</name>
    <message>
        <source>The desktop did not ask where to save.</source>
        <translation>Der Desktop hat nicht nach dem Speicherort gefragt.</translation>
    </message>
    <message>
        <source>Only folders of this computer can be saved to.</source>
        <translation>Gespeichert werden kann nur in Ordnern dieses Computers.</translation>
    </message>
</context>
<context>
    <name>Formatting</name>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>Bill</source>
        <translation>Rechnung</translation>
    </message>
    <message>
        <source>Are you sure?</source>
        <translation>Sind Sie sicher?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>Good</source>
        <translation>Gut</translation>
    </message>
    <message>
        <source>Excellent</source>
        <translation>Hervorragend</translation>
    </message>
    <message>
        <source>Poor</source>
        <translation>Schlecht</translation>
    </message>
</context>
<context>
    <name>GeneralSection</name>
    <message>
        <source>GENERAL</source>
        <translation>ALLGEMEIN</translation>
    </message>
    <message>
        <source>Sync with iCloud</source>
        <translation>Mit iCloud synchronisieren</translation>
    </message>
    <message>
        <source>Highlight sums</source>
        <translation>Beträge hervorheben</translation>
    </message>
</context>
<context>
    <name>HelpMenu</name>
    <message>
        <source>Help on website</source>
        <translation>Hilfe auf der Website</translation>
    </message>
</context>
<context>
    <name>HistoryScreen</name>
    <message>
        <source>Saved Bills</source>
        <translation>Rechnungen</translation>
    </message>
    <message>
        <source>Select an item</source>
        <translation>Eine Rechnung auswählen</translation>
    </message>
</context>
<context>
    <name>HistoryView</name>
    <message>
        <source>Total</source>
        <translation>Gesamt</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Anteil</translation>
    </message>
</context>
<context>
    <name>ListPage</name>
    <message>
        <source>Saved Bills</source>
        <translation>Rechnungen</translation>
    </message>
    <message>
        <source>Delete %1</source>
        <translation>%1 löschen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Bills that you save appear here.</source>
        <translation>Rechnungen, die Sie speichern, erscheinen hier.</translation>
    </message>
    <message>
        <source>No saved bills yet</source>
        <translation>Noch keine gespeicherten Rechnungen</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
</context>
<context>
    <name>OptionsCard</name>
    <message>
        <source>Everyone pays the tip</source>
        <translation>Alle zahlen das Trinkgeld</translation>
    </message>
    <message>
        <source>Round up tip</source>
        <translation>Trinkgeld aufrunden</translation>
    </message>
    <message>
        <source>Round up share</source>
        <translation>Anteil aufrunden</translation>
    </message>
</context>
<context>
    <name>PeopleRow</name>
    <message>
        <source>People</source>
        <translation>Personen</translation>
    </message>
    <message>
        <source>Fewer people</source>
        <translation>Weniger Personen</translation>
    </message>
    <message>
        <source>More people</source>
        <translation>Mehr Personen</translation>
    </message>
</context>
<context>
    <name>PersistenceController</name>
    <message>
        <source>Could not setup Container</source>
        <translation>Der Datenspeicher konnte nicht eingerichtet werden</translation>
    </message>
    <message>
        <source>No description found</source>
        <translation>Es gibt keine Angaben zum Datenspeicher</translation>
    </message>
    <message>
        <source>Unresolved error %1, %2</source>
        <translation>Nicht behobener Fehler %1, %2</translation>
    </message>
</context>
<context>
    <name>PrintActivity</name>
    <message>
        <source>The desktop did not print.</source>
        <translation>Der Desktop hat nicht gedruckt.</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
</context>
<context>
    <name>QrCodeActivity</name>
    <message>
        <source>Show QR code</source>
        <translation>QR-Code anzeigen</translation>
    </message>
</context>
<context>
    <name>QrCodePage</name>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>QR code</source>
        <translation>QR-Code</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Scan the code with a phone to take the text along.</source>
        <translation>Den Code mit einem Handy scannen, um den Text mitzunehmen.</translation>
    </message>
</context>
<context>
    <name>RenameDialog</name>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Leave blank to use &apos;Bill&apos;</source>
        <translation>Leer lassen für „Rechnung“</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
</context>
<context>
    <name>ResultsPanel</name>
    <message>
        <source>TOTAL</source>
        <translation>GESAMT</translation>
    </message>
    <message>
        <source>Share per person</source>
        <translation>Anteil pro Person</translation>
    </message>
</context>
<context>
    <name>SaveActivity</name>
    <message>
        <source>“%1” is no file.</source>
        <translation>„%1“ ist keine Datei.</translation>
    </message>
    <message>
        <source>The file “%1” could not be written: %2.</source>
        <translation>Die Datei „%1“ konnte nicht geschrieben werden: %2.</translation>
    </message>
</context>
<context>
    <name>SaveDialog</name>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Leave blank to use &apos;Bill&apos;</source>
        <translation>Leer lassen für „Rechnung“</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Save bill</source>
        <translation>Rechnung speichern</translation>
    </message>
</context>
<context>
    <name>SaveFailedDialog</name>
    <message>
        <source>The bill could not be saved.</source>
        <translation>Die Rechnung konnte nicht gespeichert werden.</translation>
    </message>
</context>
<context>
    <name>SavePdfActivity</name>
    <message>
        <source>Save as PDF</source>
        <translation>Als PDF speichern</translation>
    </message>
</context>
<context>
    <name>SaveTextActivity</name>
    <message>
        <source>Save as text file</source>
        <translation>Als Textdatei speichern</translation>
    </message>
</context>
<context>
    <name>SavedBillsList</name>
    <message>
        <source>Saved Bills</source>
        <translation>Rechnungen</translation>
    </message>
</context>
<context>
    <name>SendToDeviceActivity</name>
    <message>
        <source>%1 could not be reached.</source>
        <translation>%1 ist nicht erreichbar.</translation>
    </message>
    <message>
        <source>Send to %1</source>
        <translation>An %1 senden</translation>
    </message>
</context>
<context>
    <name>ServiceRow</name>
    <message>
        <source>Service</source>
        <translation>Service</translation>
    </message>
    <message>
        <source>Poor</source>
        <translation>Schlecht</translation>
    </message>
    <message>
        <source>Good</source>
        <translation>Gut</translation>
    </message>
    <message>
        <source>Excellent</source>
        <translation>Hervorragend</translation>
    </message>
</context>
<context>
    <name>SettingsScreen</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Specify what percentage of the bill the tip should be for a good service.</source>
        <translation>Legt fest, wie viel Prozent der Rechnung das Trinkgeld bei gutem Service beträgt.</translation>
    </message>
    <message>
        <source>GOOD SERVICE</source>
        <translation>GUTER SERVICE</translation>
    </message>
    <message>
        <source>Good</source>
        <translation>Gut</translation>
    </message>
    <message>
        <source>Specify what percentage of the bill the tip should be for an excellent service.</source>
        <translation>Legt fest, wie viel Prozent der Rechnung das Trinkgeld bei hervorragendem Service beträgt.</translation>
    </message>
    <message>
        <source>EXCELLENT SERVICE</source>
        <translation>HERVORRAGENDER SERVICE</translation>
    </message>
    <message>
        <source>Excellent</source>
        <translation>Hervorragend</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Currency symbol %1</source>
        <translation>Währungssymbol %1</translation>
    </message>
</context>
<context>
    <name>ShareFailedDialog</name>
    <message>
        <source>The text could not be shared.</source>
        <translation>Der Text konnte nicht geteilt werden.</translation>
    </message>
</context>
<context>
    <name>SplitSummary</name>
    <message>
        <source>Based on %1 people dining.</source>
        <translation>Personen am Tisch: %1.</translation>
    </message>
    <message>
        <source>The bill came to %1</source>
        <translation>Die Rechnung betrug %1</translation>
    </message>
    <message>
        <source>Service was %1, tip given %2</source>
        <translation>Service: %1, Trinkgeld: %2</translation>
    </message>
    <message>
        <source>Service was %1, no tip given</source>
        <translation>Service: %1, kein Trinkgeld</translation>
    </message>
    <message>
        <source>Grand total to pay %1</source>
        <translation>Insgesamt zu zahlen: %1</translation>
    </message>
    <message>
        <source>Everyone pays %1</source>
        <translation>Alle zahlen je %1</translation>
    </message>
    <message>
        <source>(Everyone is paying a tip)</source>
        <translation>(Alle zahlen ein Trinkgeld)</translation>
    </message>
    <message>
        <source>The share has been rounded up.</source>
        <translation>Der Anteil wurde aufgerundet.</translation>
    </message>
    <message>
        <source>The tip has been rounded up.</source>
        <translation>Das Trinkgeld wurde aufgerundet.</translation>
    </message>
    <message>
        <source>The tip is calculated as %1% of %2</source>
        <translation>Berechnung des Trinkgelds: %1&#xa0;% von %2</translation>
    </message>
</context>
<context>
    <name>StoreError</name>
    <message>
        <source>The container has not loaded its store.</source>
        <translation>Der Container hat seinen Datenspeicher nicht geladen.</translation>
    </message>
    <message>
        <source>%1: %2 must have a value.</source>
        <translation>%1: %2 muss einen Wert haben.</translation>
    </message>
    <message>
        <source>%1: %2 is not a number.</source>
        <translation>%1: %2 ist keine Zahl.</translation>
    </message>
    <message>
        <source>The store&apos;s folder cannot be used.</source>
        <translation>Der Ordner des Datenspeichers kann nicht benutzt werden.</translation>
    </message>
    <message>
        <source>The history is damaged.</source>
        <translation>Der Änderungsverlauf ist beschädigt.</translation>
    </message>
    <message>
        <source>The store file was deleted, moved or replaced while it was open.</source>
        <translation>Die Datei des Datenspeichers wurde gelöscht, verschoben oder ersetzt, während sie geöffnet war.</translation>
    </message>
    <message>
        <source>The store could not be used: %1.</source>
        <translation>Der Datenspeicher konnte nicht benutzt werden: %1.</translation>
    </message>
    <message>
        <source>Records were changed or deleted elsewhere.</source>
        <translation>Einträge wurden an anderer Stelle geändert oder gelöscht.</translation>
    </message>
    <message>
        <source>The store file cannot be created: %1.</source>
        <translation>Die Datei des Datenspeichers kann nicht angelegt werden: %1.</translation>
    </message>
    <message>
        <source>The store file may not be read and written.</source>
        <translation>Die Datei des Datenspeichers darf nicht gelesen und geschrieben werden.</translation>
    </message>
    <message>
        <source>The file is not a store.</source>
        <translation>Die Datei ist kein Datenspeicher.</translation>
    </message>
    <message>
        <source>The store was written by a later version.</source>
        <translation>Der Datenspeicher wurde von einer neueren Version geschrieben.</translation>
    </message>
    <message>
        <source>The store was written with another model: it has the entity %1.</source>
        <translation>Der Datenspeicher wurde mit einem anderen Modell geschrieben: Er hat die Entität %1.</translation>
    </message>
    <message>
        <source>The store was written with another model: it has the attribute %1.%2.</source>
        <translation>Der Datenspeicher wurde mit einem anderen Modell geschrieben: Er hat das Attribut %1.%2.</translation>
    </message>
    <message>
        <source>The store was written with another model: %1.%2 is of another type.</source>
        <translation>Der Datenspeicher wurde mit einem anderen Modell geschrieben: %1.%2 hat einen anderen Typ.</translation>
    </message>
    <message>
        <source>The store was written with an older model.</source>
        <translation>Der Datenspeicher wurde mit einem älteren Modell geschrieben.</translation>
    </message>
    <message>
        <source>attempt to write a readonly database</source>
        <translation>Die Datenbank ist schreibgeschützt</translation>
    </message>
    <message>
        <source>database disk image is malformed</source>
        <translation>Die Datenbank ist beschädigt</translation>
    </message>
    <message>
        <source>database is locked</source>
        <translation>Die Datenbank ist gesperrt</translation>
    </message>
    <message>
        <source>database or disk is full</source>
        <translation>Die Datenbank oder der Datenträger ist voll</translation>
    </message>
    <message>
        <source>disk I/O error</source>
        <translation>Fehler beim Lesen oder Schreiben des Datenträgers</translation>
    </message>
    <message>
        <source>file is not a database</source>
        <translation>Die Datei ist keine Datenbank</translation>
    </message>
    <message>
        <source>unable to open database file</source>
        <translation>Die Datei der Datenbank lässt sich nicht öffnen</translation>
    </message>
</context>
<context>
    <name>StoreFailure</name>
    <message>
        <source>Vexilo</source>
        <translation>Vexilo</translation>
    </message>
    <message>
        <source>The saved bills could not be opened.</source>
        <translation>Die gespeicherten Rechnungen konnten nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>SwipedDelete</name>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>TextMessageActivity</name>
    <message>
        <source>No program for text messages could be opened. Copy the text instead.</source>
        <translation>Es ließ sich kein Programm für Textnachrichten öffnen. Der Text kann stattdessen kopiert werden.</translation>
    </message>
    <message>
        <source>Text message</source>
        <translation>Textnachricht</translation>
    </message>
</context>
<context>
    <name>TextPrompt</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>ThemeSection</name>
    <message>
        <source>THEME</source>
        <translation>DARSTELLUNG</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Theme</source>
        <translation>Darstellung</translation>
    </message>
</context>
<context>
    <name>UseDialog</name>
    <message>
        <source>Use this bill</source>
        <translation>Diese Rechnung übernehmen</translation>
    </message>
    <message>
        <source>Populate main screen with this bill&apos;s details?</source>
        <translation>Die Angaben dieser Rechnung in den Rechner übernehmen?</translation>
    </message>
</context>
</TS>
