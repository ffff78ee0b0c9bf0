<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Files</name>
    <message>
        <source>Graphs (*.ltp);;All files (*)</source>
        <translation>Diagramme (*.ltp);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Data (*.csv *.txt *.dat *.tsv *.asc *.prn *.xlsx *.xlsm *.ods *.gz *.zst *.lds);;Databases (*.db *.sqlite *.sqlite3 *.db3 *.dbf *.mdb *.accdb);;All files (*)</source>
        <translation>Daten (*.csv *.txt *.dat *.tsv *.asc *.prn *.xlsx *.xlsm *.ods *.gz *.zst *.lds);;Datenbanken (*.db *.sqlite *.sqlite3 *.db3 *.dbf *.mdb *.accdb);;Alle Dateien (*)</translation>
    </message>
</context>
<context>
    <name>GraphSettings</name>
    <message>
        <source>Graph Settings</source>
        <translation>Diagrammeinstellungen</translation>
    </message>
    <message>
        <source>&amp;Find:</source>
        <translation>&amp;Suchen:</translation>
    </message>
    <message>
        <source>a setting by its name, on all pages</source>
        <translation>Einstellung nach Namen, auf allen Seiten</translation>
    </message>
    <message>
        <source>Find settings</source>
        <translation>Einstellungen suchen</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>No setting has these words.</source>
        <translation>Keine Einstellung enthält diese Wörter.</translation>
    </message>
    <message>
        <source>Picture of the graph with these settings</source>
        <translation>Bild des Diagramms mit diesen Einstellungen</translation>
    </message>
    <message>
        <source>Apply to &amp;All Axes</source>
        <translation>Auf &amp;alle Achsen anwenden</translation>
    </message>
    <message>
        <source>Give the other axes the steps, the grid and the label format of this one</source>
        <translation>Den anderen Achsen Schritte, Gitter und Zahlenformat dieser Achse geben</translation>
    </message>
    <message>
        <source>&amp;Save as Style…</source>
        <translation>Als S&amp;til speichern…</translation>
    </message>
    <message>
        <source>Keep this look in a file, to be applied to other graphs</source>
        <translation>Dieses Aussehen in einer Datei behalten, um es auf andere Diagramme anzuwenden</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Graph</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>Recent &amp;Files</source>
        <translation>&amp;Zuletzt verwendete Dateien</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>Apply S&amp;tyle</source>
        <translation>&amp;Stil anwenden</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Tool Bar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>Points and Marks</source>
        <translation>Punkte und Marken</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Neu</translation>
    </message>
    <message>
        <source>Start an empty graph</source>
        <translation>Ein leeres Diagramm beginnen</translation>
    </message>
    <message>
        <source>Ctrl+N</source>
        <translation>Ctrl+N</translation>
    </message>
    <message>
        <source>New from &amp;Template…</source>
        <translation>Neu aus &amp;Vorlage…</translation>
    </message>
    <message>
        <source>Start a graph that looks as a template says</source>
        <translation>Ein Diagramm beginnen, das wie eine Vorlage aussieht</translation>
    </message>
    <message>
        <source>Ctrl+Shift+N</source>
        <translation>Ctrl+Shift+N</translation>
    </message>
    <message>
        <source>&amp;Open Graph…</source>
        <translation>Diagramm ö&amp;ffnen…</translation>
    </message>
    <message>
        <source>Open a graph file</source>
        <translation>Eine Diagrammdatei öffnen</translation>
    </message>
    <message>
        <source>Ctrl+O</source>
        <translation>Ctrl+O</translation>
    </message>
    <message>
        <source>Open &amp;Data…</source>
        <translation>&amp;Daten öffnen…</translation>
    </message>
    <message>
        <source>Add data from text files to the graph, a data set for each file</source>
        <translation>Daten aus Textdateien zum Diagramm hinzufügen, je Datei einen Datensatz</translation>
    </message>
    <message>
        <source>Ctrl+Shift+O</source>
        <translation>Ctrl+Shift+O</translation>
    </message>
    <message>
        <source>Open Data&amp;base…</source>
        <translation>Datenban&amp;k öffnen…</translation>
    </message>
    <message>
        <source>Add a table of a database to the graph: a file (SQLite, dBase, Access) or a server</source>
        <translation>Eine Tabelle einer Datenbank zum Diagramm hinzufügen: Datei (SQLite, dBase, Access) oder Server</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save the graph with its data</source>
        <translation>Das Diagramm mit seinen Daten speichern</translation>
    </message>
    <message>
        <source>Ctrl+S</source>
        <translation>Ctrl+S</translation>
    </message>
    <message>
        <source>Save &amp;As…</source>
        <translation>Speichern &amp;unter…</translation>
    </message>
    <message>
        <source>Save the graph with its data under another name</source>
        <translation>Das Diagramm mit seinen Daten unter anderem Namen speichern</translation>
    </message>
    <message>
        <source>Ctrl+Shift+S</source>
        <translation>Ctrl+Shift+S</translation>
    </message>
    <message>
        <source>Save as Te&amp;mplate…</source>
        <translation>Als Vorla&amp;ge speichern…</translation>
    </message>
    <message>
        <source>Save how the graph looks, without its data</source>
        <translation>Das Aussehen des Diagramms speichern, ohne seine Daten</translation>
    </message>
    <message>
        <source>&amp;Export Picture…</source>
        <translation>Bild &amp;exportieren…</translation>
    </message>
    <message>
        <source>Save the graph as a PNG, SVG or PDF picture</source>
        <translation>Das Diagramm als PNG-, SVG- oder PDF-Bild speichern</translation>
    </message>
    <message>
        <source>Ctrl+E</source>
        <translation>Ctrl+E</translation>
    </message>
    <message>
        <source>Print Pre&amp;view…</source>
        <translation>Druckv&amp;orschau…</translation>
    </message>
    <message>
        <source>Show the printed page</source>
        <translation>Die gedruckte Seite zeigen</translation>
    </message>
    <message>
        <source>Ctrl+Shift+P</source>
        <translation>Ctrl+Shift+P</translation>
    </message>
    <message>
        <source>&amp;Print…</source>
        <translation>D&amp;rucken…</translation>
    </message>
    <message>
        <source>Print the graph</source>
        <translation>Das Diagramm drucken</translation>
    </message>
    <message>
        <source>Ctrl+P</source>
        <translation>Ctrl+P</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Leave the program</source>
        <translation>Das Programm verlassen</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>Take the last step back</source>
        <translation>Den letzten Schritt zurücknehmen</translation>
    </message>
    <message>
        <source>Ctrl+Z</source>
        <translation>Ctrl+Z</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Do the step again that was taken back last</source>
        <translation>Den zuletzt zurückgenommenen Schritt noch einmal tun</translation>
    </message>
    <message>
        <source>Ctrl+Shift+Z</source>
        <translation>Ctrl+Shift+Z</translation>
    </message>
    <message>
        <source>&amp;Data…</source>
        <translation>&amp;Daten…</translation>
    </message>
    <message>
        <source>Edit the data sets of the graph</source>
        <translation>Die Datensätze des Diagramms bearbeiten</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <source>Open with &amp;Editor…</source>
        <translation>Mit dem &amp;Editor öffnen…</translation>
    </message>
    <message>
        <source>Choose a data file and read it in the data editor</source>
        <translation>Eine Datendatei wählen und im Dateneditor lesen</translation>
    </message>
    <message>
        <source>Ctrl+Shift+D</source>
        <translation>Ctrl+Shift+D</translation>
    </message>
    <message>
        <source>&amp;Graph Settings…</source>
        <translation>Dia&amp;grammeinstellungen…</translation>
    </message>
    <message>
        <source>Change the titles, the axes, the legend and the look of the graph</source>
        <translation>Titel, Achsen, Legende und Aussehen des Diagramms ändern</translation>
    </message>
    <message>
        <source>Ctrl+T</source>
        <translation>Ctrl+T</translation>
    </message>
    <message>
        <source>&amp;Marks…</source>
        <translation>&amp;Marken…</translation>
    </message>
    <message>
        <source>Edit the lines and points that mark places on the graph</source>
        <translation>Die Linien und Punkte bearbeiten, die Stellen im Diagramm markieren</translation>
    </message>
    <message>
        <source>Ctrl+M</source>
        <translation>Ctrl+M</translation>
    </message>
    <message>
        <source>Set &amp;Values…</source>
        <translation>Werte se&amp;tzen…</translation>
    </message>
    <message>
        <source>Give the current data set new Y values from a formula</source>
        <translation>Dem aktuellen Datensatz neue Y-Werte aus einer Formel geben</translation>
    </message>
    <message>
        <source>Cop&amp;y Data Set</source>
        <translation>Datensatz kop&amp;ieren</translation>
    </message>
    <message>
        <source>Copy the current data set for this program, spreadsheets and text editors</source>
        <translation>Den aktuellen Datensatz für dieses Programm, Tabellen und Texteditoren kopieren</translation>
    </message>
    <message>
        <source>Ctrl+Shift+C</source>
        <translation>Ctrl+Shift+C</translation>
    </message>
    <message>
        <source>&amp;Paste Data Set</source>
        <translation>Datensatz ei&amp;nfügen</translation>
    </message>
    <message>
        <source>Add what was copied as a data set: from this program, a spreadsheet or a text</source>
        <translation>Kopiertes als Datensatz hinzufügen: aus diesem Programm, einer Tabelle oder einem Text</translation>
    </message>
    <message>
        <source>Ctrl+V</source>
        <translation>Ctrl+V</translation>
    </message>
    <message>
        <source>&amp;Copy Picture</source>
        <translation>Bild &amp;kopieren</translation>
    </message>
    <message>
        <source>Put a picture of the graph on the clipboard</source>
        <translation>Ein Bild des Diagramms in die Zwischenablage legen</translation>
    </message>
    <message>
        <source>Ctrl+C</source>
        <translation>Ctrl+C</translation>
    </message>
    <message>
        <source>&amp;Load Every Row</source>
        <translation>Jede &amp;Zeile laden</translation>
    </message>
    <message>
        <source>Read all rows of the data files instead of a part of long ones</source>
        <translation>Alle Zeilen der Datendateien lesen statt eines Teils der langen</translation>
    </message>
    <message>
        <source>Show L&amp;egend</source>
        <translation>&amp;Legende zeigen</translation>
    </message>
    <message>
        <source>Show the names of the data sets in the graph</source>
        <translation>Die Namen der Datensätze im Diagramm zeigen</translation>
    </message>
    <message>
        <source>&amp;Reset Scale</source>
        <translation>Achsen zu&amp;rücksetzen</translation>
    </message>
    <message>
        <source>Let the axes follow the data</source>
        <translation>Die Achsen den Daten folgen lassen</translation>
    </message>
    <message>
        <source>Ctrl+0</source>
        <translation>Ctrl+0</translation>
    </message>
    <message>
        <source>&amp;Manual</source>
        <translation>&amp;Handbuch</translation>
    </message>
    <message>
        <source>Show how things are done</source>
        <translation>Zeigen, wie etwas gemacht wird</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Über</translation>
    </message>
    <message>
        <source>Tell about this program</source>
        <translation>Über dieses Programm</translation>
    </message>
    <message>
        <source>Fo&amp;llow…</source>
        <translation>Daten verfo&amp;lgen…</translation>
    </message>
    <message>
        <source>Plot rows as they come: a file that grows, a pipe, a TCP or serial line</source>
        <translation>Zeilen zeichnen, wie sie kommen: eine wachsende Datei, eine Pipe, TCP oder eine serielle Leitung</translation>
    </message>
    <message>
        <source>Pa&amp;use Following</source>
        <translation>Verfolgen anhalten</translation>
    </message>
    <message>
        <source>Let what comes wait</source>
        <translation>Was kommt, warten lassen</translation>
    </message>
    <message>
        <source>Stop Follo&amp;wing</source>
        <translation>Verfolgen s&amp;toppen</translation>
    </message>
    <message>
        <source>Keep the points that have come and read no more</source>
        <translation>Die gekommenen Punkte behalten und nicht weiterlesen</translation>
    </message>
    <message>
        <source>S&amp;heets…</source>
        <translation>T&amp;abellen…</translation>
    </message>
    <message>
        <source>Type, paste and work out data in a table that data sets follow</source>
        <translation>Daten in einer Tabelle eingeben, einfügen und berechnen; Datensätze folgen ihr</translation>
    </message>
</context>
<context>
    <name>PictureExportDialog</name>
    <message>
        <source>Export Picture</source>
        <translation>Bild exportieren</translation>
    </message>
    <message>
        <source>&amp;Format:</source>
        <translation>&amp;Format:</translation>
    </message>
    <message>
        <source>PNG picture</source>
        <translation>PNG-Bild</translation>
    </message>
    <message>
        <source>SVG drawing</source>
        <translation>SVG-Zeichnung</translation>
    </message>
    <message>
        <source>PDF document</source>
        <translation>PDF-Dokument</translation>
    </message>
    <message>
        <source>S&amp;ize:</source>
        <translation>&amp;Größe:</translation>
    </message>
    <message>
        <source>At the width of a column or a slide fonts, margins, symbols and lines are scaled together</source>
        <translation>In der Breite einer Spalte oder Folie werden Schriften, Ränder, Symbole und Linien gemeinsam skaliert</translation>
    </message>
    <message>
        <source>As on the screen</source>
        <translation>Wie am Bildschirm</translation>
    </message>
    <message>
        <source>Column, 85 mm</source>
        <translation>Spalte, 85 mm</translation>
    </message>
    <message>
        <source>Two columns, 170 mm</source>
        <translation>Zwei Spalten, 170 mm</translation>
    </message>
    <message>
        <source>Slide, 16:9</source>
        <translation>Folie, 16:9</translation>
    </message>
    <message>
        <source>Own size</source>
        <translation>Eigene Größe</translation>
    </message>
    <message>
        <source>&amp;Width:</source>
        <translation>&amp;Breite:</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Einheit</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>pixels</source>
        <translation>Pixel</translation>
    </message>
    <message>
        <source>&amp;Height:</source>
        <translation>&amp;Höhe:</translation>
    </message>
    <message>
        <source>&amp;Keep the proportions</source>
        <translation>&amp;Verhältnis beibehalten</translation>
    </message>
    <message>
        <source>&amp;Resolution:</source>
        <translation>&amp;Auflösung:</translation>
    </message>
    <message>
        <source> dpi</source>
        <translation> dpi</translation>
    </message>
    <message>
        <source>&amp;Transparent background</source>
        <translation>&amp;Durchsichtiger Hintergrund</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Processing...</source>
        <translation>In Arbeit...</translation>
    </message>
    <message>
        <source>The minimum of an axis must be below its maximum</source>
        <translation>Das Minimum einer Achse muss unter ihrem Maximum liegen</translation>
    </message>
    <message>
        <source>The minimum of a logarithmic axis must be above 0</source>
        <translation>Das Minimum einer logarithmischen Achse muss über 0 liegen</translation>
    </message>
    <message>
        <source>In the legend</source>
        <translation>In der Legende</translation>
    </message>
    <message>
        <source>Range, from</source>
        <translation>Bereich, von</translation>
    </message>
    <message>
        <source>Range, to</source>
        <translation>Bereich, bis</translation>
    </message>
    <message>
        <source>Select Color</source>
        <translation>Farbe wählen</translation>
    </message>
    <message>
        <source>%1 px</source>
        <translation>%1 px</translation>
    </message>
    <message>
        <source>bold</source>
        <translation>fett</translation>
    </message>
    <message>
        <source>italic</source>
        <translation>kursiv</translation>
    </message>
    <message>
        <source>underlined</source>
        <translation>unterstrichen</translation>
    </message>
    <message>
        <source>struck out</source>
        <translation>durchgestrichen</translation>
    </message>
    <message>
        <source>Colour of the letters</source>
        <translation>Farbe der Buchstaben</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Wählen</translation>
    </message>
    <message>
        <source>no points</source>
        <translation>keine Punkte</translation>
    </message>
    <message>
        <source>%1 points, X from %2 to %3</source>
        <translation>%1 Punkte, X von %2 bis %3</translation>
    </message>
    <message>
        <source>Graph with %1 data sets</source>
        <translation>Diagramm mit %1 Datensätzen</translation>
    </message>
</context>
<context>
    <name>RecoveryDialog</name>
    <message>
        <source>Recover</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>These changes were not saved when the program ended unexpectedly.</source>
        <translation>Diese Änderungen waren nicht gespeichert, als das Programm unerwartet endete.</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>Nicht gespeicherte Änderungen</translation>
    </message>
    <message>
        <source>Picture of the graph</source>
        <translation>Bild des Diagramms</translation>
    </message>
    <message>
        <source>What is in it</source>
        <translation>Was darin ist</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Verwerfen</translation>
    </message>
    <message>
        <source>Removes these changes for good</source>
        <translation>Entfernt diese Änderungen endgültig</translation>
    </message>
    <message>
        <source>&amp;Keep Aside</source>
        <translation>&amp;Beiseitelegen</translation>
    </message>
    <message>
        <source>Keeps the file under another name and asks no more</source>
        <translation>Behält die Datei unter anderem Namen und fragt nicht mehr</translation>
    </message>
    <message>
        <source>Ask &amp;Later</source>
        <translation>&amp;Später fragen</translation>
    </message>
    <message>
        <source>Leaves them where they are and asks again next time</source>
        <translation>Lässt sie, wo sie sind, und fragt das nächste Mal wieder</translation>
    </message>
    <message>
        <source>&amp;Recover</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>Goes on with the graph as it is shown</source>
        <translation>Macht mit dem gezeigten Diagramm weiter</translation>
    </message>
</context>
<context>
    <name>SheetWindow</name>
    <message>
        <source>Sheets</source>
        <translation>Tabellen</translation>
    </message>
    <message>
        <source>Cells</source>
        <translation>Zellen</translation>
    </message>
    <message>
        <source>&amp;Sheet</source>
        <translation>&amp;Tabelle</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>Tool Bar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>&amp;New Sheet</source>
        <translation>&amp;Neue Tabelle</translation>
    </message>
    <message>
        <source>Add an empty sheet</source>
        <translation>Eine leere Tabelle hinzufügen</translation>
    </message>
    <message>
        <source>Ctrl+N</source>
        <translation>Ctrl+N</translation>
    </message>
    <message>
        <source>&amp;Rename Sheet…</source>
        <translation>Tabelle &amp;umbenennen…</translation>
    </message>
    <message>
        <source>Give the sheet another name; data sets that come from it go with it</source>
        <translation>Der Tabelle einen anderen Namen geben; ihre Datensätze gehen mit</translation>
    </message>
    <message>
        <source>&amp;Delete Sheet</source>
        <translation>Tabelle &amp;löschen</translation>
    </message>
    <message>
        <source>Delete the sheet; data sets that come from it keep their points</source>
        <translation>Die Tabelle löschen; ihre Datensätze behalten die Punkte</translation>
    </message>
    <message>
        <source>&amp;Import CSV…</source>
        <translation>CSV &amp;importieren…</translation>
    </message>
    <message>
        <source>Read a file into a sheet</source>
        <translation>Eine Datei in eine Tabelle lesen</translation>
    </message>
    <message>
        <source>Ctrl+O</source>
        <translation>Ctrl+O</translation>
    </message>
    <message>
        <source>&amp;Export CSV…</source>
        <translation>CSV &amp;exportieren…</translation>
    </message>
    <message>
        <source>Write the sheet as a CSV file</source>
        <translation>Die Tabelle als CSV-Datei schreiben</translation>
    </message>
    <message>
        <source>Ctrl+E</source>
        <translation>Ctrl+E</translation>
    </message>
    <message>
        <source>&amp;Plot</source>
        <translation>&amp;Zeichnen</translation>
    </message>
    <message>
        <source>Plot the chosen columns over the first one; the plot follows the sheet</source>
        <translation>Die gewählten Spalten über der ersten zeichnen; das Diagramm folgt der Tabelle</translation>
    </message>
    <message>
        <source>Ctrl+P</source>
        <translation>Ctrl+P</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>Close the window; the sheets stay</source>
        <translation>Das Fenster schließen; die Tabellen bleiben</translation>
    </message>
    <message>
        <source>Ctrl+W</source>
        <translation>Ctrl+W</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>Take the last step back</source>
        <translation>Den letzten Schritt zurücknehmen</translation>
    </message>
    <message>
        <source>Ctrl+Z</source>
        <translation>Ctrl+Z</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Do the step again that was taken back last</source>
        <translation>Den zuletzt zurückgenommenen Schritt wiederholen</translation>
    </message>
    <message>
        <source>Ctrl+Shift+Z</source>
        <translation>Ctrl+Shift+Z</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>Copy the chosen cells and clear them</source>
        <translation>Die gewählten Zellen kopieren und leeren</translation>
    </message>
    <message>
        <source>Ctrl+X</source>
        <translation>Ctrl+X</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy the chosen cells</source>
        <translation>Die gewählten Zellen kopieren</translation>
    </message>
    <message>
        <source>Ctrl+C</source>
        <translation>Ctrl+C</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>Put the copied cells here</source>
        <translation>Die kopierten Zellen hier einfügen</translation>
    </message>
    <message>
        <source>Ctrl+V</source>
        <translation>Ctrl+V</translation>
    </message>
    <message>
        <source>C&amp;lear</source>
        <translation>&amp;Leeren</translation>
    </message>
    <message>
        <source>Clear the chosen cells</source>
        <translation>Die gewählten Zellen leeren</translation>
    </message>
    <message>
        <source>Del</source>
        <translation>Del</translation>
    </message>
    <message>
        <source>&amp;Insert Rows</source>
        <translation>&amp;Zeilen einfügen</translation>
    </message>
    <message>
        <source>Insert as many rows as are chosen</source>
        <translation>So viele Zeilen einfügen, wie gewählt sind</translation>
    </message>
    <message>
        <source>Ctrl++</source>
        <translation>Ctrl++</translation>
    </message>
    <message>
        <source>&amp;Delete Rows</source>
        <translation>Zeilen l&amp;öschen</translation>
    </message>
    <message>
        <source>Delete the chosen rows</source>
        <translation>Die gewählten Zeilen löschen</translation>
    </message>
    <message>
        <source>Ctrl+-</source>
        <translation>Ctrl+-</translation>
    </message>
    <message>
        <source>In&amp;sert Column</source>
        <translation>&amp;Spalte einfügen</translation>
    </message>
    <message>
        <source>Insert a column</source>
        <translation>Eine Spalte einfügen</translation>
    </message>
    <message>
        <source>Delete C&amp;olumns</source>
        <translation>S&amp;palten löschen</translation>
    </message>
    <message>
        <source>Delete the chosen columns</source>
        <translation>Die gewählten Spalten löschen</translation>
    </message>
</context>
<context>
    <name>TBaselineDialog</name>
    <message>
        <source>Baseline</source>
        <translation>Basislinie</translation>
    </message>
    <message>
        <source>Plot with the baseline</source>
        <translation>Bild mit der Basislinie</translation>
    </message>
    <message>
        <source>&amp;Shape:</source>
        <translation>&amp;Form:</translation>
    </message>
    <message>
        <source>Straight lines</source>
        <translation>Geraden</translation>
    </message>
    <message>
        <source>Polynomial</source>
        <translation>Polynom</translation>
    </message>
    <message>
        <source>Spline</source>
        <translation>Spline</translation>
    </message>
    <message>
        <source>&amp;Degree:</source>
        <translation>&amp;Grad:</translation>
    </message>
    <message>
        <source>Of the polynomial; with one less than there are places it goes through all of them</source>
        <translation>Des Polynoms; mit einem weniger als Stellen geht es durch alle</translation>
    </message>
    <message>
        <source>P&amp;laces:</source>
        <translation>Ste&amp;llen:</translation>
    </message>
    <message>
        <source>Places of the baseline</source>
        <translation>Stellen der Basislinie</translation>
    </message>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzu</translation>
    </message>
    <message>
        <source>Add a place on the curve where the gap is widest</source>
        <translation>Eine Stelle auf der Kurve hinzufügen, wo die Lücke am größten ist</translation>
    </message>
    <message>
        <source>Re&amp;move</source>
        <translation>&amp;Weg</translation>
    </message>
    <message>
        <source>Take the chosen place away (Del)</source>
        <translation>Die gewählte Stelle wegnehmen (Entf)</translation>
    </message>
    <message>
        <source>&amp;Replace the points</source>
        <translation>Punkte &amp;ersetzen</translation>
    </message>
    <message>
        <source>Into a new data s&amp;et</source>
        <translation>In einen &amp;neuen Datensatz</translation>
    </message>
    <message>
        <source>Only the &amp;baseline, as a data set</source>
        <translation>Nur die &amp;Basislinie, als Datensatz</translation>
    </message>
    <message>
        <source>O&amp;K</source>
        <translation>O&amp;K</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
<context>
    <name>TCompareWindow</name>
    <message>
        <source>Compare Procedures</source>
        <translation>Verfahren vergleichen</translation>
    </message>
    <message>
        <source>&amp;Starts:</source>
        <translation>&amp;Starts:</translation>
    </message>
    <message>
        <source>The given values and scattered ones</source>
        <translation>Die gegebenen Werte und gestreute</translation>
    </message>
    <message>
        <source>&amp;Run</source>
        <translation>Sta&amp;rten</translation>
    </message>
    <message>
        <source>Run all four procedures from each start</source>
        <translation>Alle vier Verfahren von jedem Start aus laufen lassen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Stop the work; what there is stays</source>
        <translation>Die Arbeit anhalten; was da ist, bleibt</translation>
    </message>
    <message>
        <source>Procedures</source>
        <translation>Verfahren</translation>
    </message>
    <message>
        <source>Minima</source>
        <translation>Minima</translation>
    </message>
    <message>
        <source>&amp;Take Minimum</source>
        <translation>Minimum über&amp;nehmen</translation>
    </message>
    <message>
        <source>Put the parameters of the chosen minimum into the fit</source>
        <translation>Die Parameter des gewählten Minimums in die Anpassung übernehmen</translation>
    </message>
    <message>
        <source>&amp;Copy as Table</source>
        <translation>Als Tabelle &amp;kopieren</translation>
    </message>
    <message>
        <source>Copy both tables to be pasted into a sheet</source>
        <translation>Beide Tabellen zum Einfügen in ein Tabellenblatt kopieren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>TCurveFittingPage</name>
    <message>
        <source>Curve Fitting Status</source>
        <translation>Stand der Kurvenanpassung</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Draw Function</source>
        <translation>Funktion zeichnen</translation>
    </message>
    <message>
        <source>Show Final Curve</source>
        <translation>Endkurve zeigen</translation>
    </message>
    <message>
        <source>Show Every Step</source>
        <translation>Jeden Schritt zeigen</translation>
    </message>
    <message>
        <source>Equation</source>
        <translation>Gleichung</translation>
    </message>
    <message>
        <source>X - Variable Name</source>
        <translation>Name der X-Variablen</translation>
    </message>
    <message>
        <source>Add as Parameters</source>
        <translation>Als Parameter hinzu</translation>
    </message>
    <message>
        <source>Define the names that are not known as parameters that the fit varies</source>
        <translation>Unbekannte Namen als Parameter festlegen, die die Anpassung ändert</translation>
    </message>
    <message>
        <source>Rewrite</source>
        <translation>Umschreiben</translation>
    </message>
    <message>
        <source>&amp;Parameters</source>
        <translation>&amp;Parameter</translation>
    </message>
    <message>
        <source>Parameters</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Arrow keys and wheel change the value</source>
        <translation>Pfeiltasten und Rad ändern den Wert</translation>
    </message>
    <message>
        <source>Units</source>
        <translation>Einheit</translation>
    </message>
    <message>
        <source>Description:</source>
        <translation>Beschreibung:</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>New parameter</source>
        <translation>Neuer Parameter</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Weg</translation>
    </message>
    <message>
        <source>Delete parameter</source>
        <translation>Parameter löschen</translation>
    </message>
    <message>
        <source>Vary</source>
        <translation>Ändern</translation>
    </message>
    <message>
        <source>The fit may change the value</source>
        <translation>Die Anpassung darf den Wert ändern</translation>
    </message>
    <message>
        <source>Show in legend</source>
        <translation>In der Legende zeigen</translation>
    </message>
    <message>
        <source>&amp;Templates</source>
        <translation>&amp;Textbausteine</translation>
    </message>
    <message>
        <source>Templates</source>
        <translation>Textbausteine</translation>
    </message>
    <message>
        <source>New template</source>
        <translation>Neuer Textbaustein</translation>
    </message>
    <message>
        <source>Move to the first position</source>
        <translation>An die erste Stelle setzen</translation>
    </message>
    <message>
        <source>&amp;1st</source>
        <translation>&amp;1.</translation>
    </message>
    <message>
        <source>Put in first</source>
        <translation>Zuerst einsetzen</translation>
    </message>
    <message>
        <source>&amp;Up</source>
        <translation>A&amp;uf</translation>
    </message>
    <message>
        <source>Put in earlier</source>
        <translation>Früher einsetzen</translation>
    </message>
    <message>
        <source>&amp;Down</source>
        <translation>A&amp;b</translation>
    </message>
    <message>
        <source>Put in later</source>
        <translation>Später einsetzen</translation>
    </message>
    <message>
        <source>String:</source>
        <translation>Text:</translation>
    </message>
    <message>
        <source>The text that is replaced in the equation</source>
        <translation>Der Text, der in der Gleichung ersetzt wird</translation>
    </message>
    <message>
        <source>Replace with:</source>
        <translation>Ersetzen durch:</translation>
    </message>
    <message>
        <source>Weigh the points by their errors (1/σ²)</source>
        <translation>Die Punkte nach ihren Fehlern gewichten (1/σ²)</translation>
    </message>
    <message>
        <source>Points without a standard error are left out</source>
        <translation>Punkte ohne Standardfehler bleiben weg</translation>
    </message>
    <message>
        <source>Errors of parameters</source>
        <translation>Fehler der Parameter</translation>
    </message>
    <message>
        <source>Whether the errors of the points are only relative to each other or what they say</source>
        <translation>Ob die Fehler der Punkte nur relativ zueinander gelten oder so, wie sie dastehen</translation>
    </message>
    <message>
        <source>Scaled by the residual deviation</source>
        <translation>Mit der Reststreuung skaliert</translation>
    </message>
    <message>
        <source>Absolute, from the errors of the points</source>
        <translation>Absolut, aus den Fehlern der Punkte</translation>
    </message>
    <message>
        <source>Hold outliers off</source>
        <translation>Ausreißer fernhalten</translation>
    </message>
    <message>
        <source>Robust weights, found by fitting again and again</source>
        <translation>Robuste Gewichte, durch wiederholtes Anpassen gefunden</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>Huber: less weight for far points</source>
        <translation>Huber: weniger Gewicht für ferne Punkte</translation>
    </message>
    <message>
        <source>Cauchy: much less weight for far points</source>
        <translation>Cauchy: viel weniger Gewicht für ferne Punkte</translation>
    </message>
    <message>
        <source>Tukey: no weight for far points</source>
        <translation>Tukey: kein Gewicht für ferne Punkte</translation>
    </message>
    <message>
        <source>Data and function</source>
        <translation>Daten und Funktion</translation>
    </message>
    <message>
        <source>A better minimum was found from other starts: take it?</source>
        <translation>Von anderen Starts aus wurde ein besseres Minimum gefunden: übernehmen?</translation>
    </message>
    <message>
        <source>Take It</source>
        <translation>Übernehmen</translation>
    </message>
    <message>
        <source>Put the better minimum into the parameters and fit from there</source>
        <translation>Das bessere Minimum in die Parameter setzen und von dort anpassen</translation>
    </message>
    <message>
        <source>Result of the last fit</source>
        <translation>Ergebnis der letzten Anpassung</translation>
    </message>
    <message>
        <source>Result...</source>
        <translation>Ergebnis...</translation>
    </message>
    <message>
        <source>All figures of the fit, its residuals and the uncertainty of its parameters</source>
        <translation>Alle Zahlen der Anpassung, ihre Residuen und die Unsicherheit der Parameter</translation>
    </message>
    <message>
        <source>The fit with all that is known of it, to read, save or print</source>
        <translation>Die Anpassung mit allem Bekannten, zum Lesen, Speichern oder Drucken</translation>
    </message>
    <message>
        <source>Report...</source>
        <translation>Bericht...</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy the result of the last fit as text</source>
        <translation>Das Ergebnis der letzten Anpassung als Text kopieren</translation>
    </message>
    <message>
        <source>Fitting Procedure</source>
        <translation>Anpassungsverfahren</translation>
    </message>
    <message>
        <source>Maximum Gradient (Powell)</source>
        <translation>Größter Gradient (Powell)</translation>
    </message>
    <message>
        <source>Downhill Simplex  Method</source>
        <translation>Downhill-Simplex-Verfahren</translation>
    </message>
    <message>
        <source>Conjugate Gradient</source>
        <translation>Konjugierte Gradienten</translation>
    </message>
    <message>
        <source>Variable Metric Method (Newton)</source>
        <translation>Variable Metrik (Newton)</translation>
    </message>
    <message>
        <source># of Points</source>
        <translation>Anzahl Punkte</translation>
    </message>
    <message>
        <source>Tolerance</source>
        <translation>Toleranz</translation>
    </message>
    <message>
        <source>Left Margin</source>
        <translation>Linke Grenze</translation>
    </message>
    <message>
        <source>Where the curve begins; None for the first point</source>
        <translation>Wo die Kurve beginnt; Keine für den ersten Punkt</translation>
    </message>
    <message>
        <source>Right Margin</source>
        <translation>Rechte Grenze</translation>
    </message>
    <message>
        <source>Where the curve ends; None for the last point</source>
        <translation>Wo die Kurve endet; Keine für den letzten Punkt</translation>
    </message>
    <message>
        <source>Max .# of Iterations</source>
        <translation>Höchstzahl Iterationen</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <source>Solid</source>
        <translation>Durchgezogen</translation>
    </message>
    <message>
        <source>Dash Dash</source>
        <translation>Strich Strich</translation>
    </message>
    <message>
        <source>Dot Dot</source>
        <translation>Punkt Punkt</translation>
    </message>
    <message>
        <source>Dash Dot</source>
        <translation>Strich Punkt</translation>
    </message>
    <message>
        <source>Dash Dot Dot</source>
        <translation>Strich Punkt Punkt</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Color of the fitted curve</source>
        <translation>Farbe der angepassten Kurve</translation>
    </message>
    <message>
        <source>Functions...</source>
        <translation>Funktionen...</translation>
    </message>
    <message>
        <source>Choose a ready function</source>
        <translation>Eine fertige Funktion wählen</translation>
    </message>
    <message>
        <source>Find &amp;Start</source>
        <translation>&amp;Start finden</translation>
    </message>
    <message>
        <source>Find start values for the parameters from the data</source>
        <translation>Startwerte der Parameter aus den Daten finden</translation>
    </message>
    <message>
        <source>Fit the function to the data now (F5)</source>
        <translation>Die Funktion jetzt an die Daten anpassen (F5)</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Anpassen</translation>
    </message>
    <message>
        <source>Compare...</source>
        <translation>Vergleichen...</translation>
    </message>
    <message>
        <source>Compare the procedures from scattered starts</source>
        <translation>Die Verfahren von gestreuten Starts aus vergleichen</translation>
    </message>
    <message>
        <source>Fit All...</source>
        <translation>Alle...</translation>
    </message>
    <message>
        <source>Fit the same equation to several data sets</source>
        <translation>Dieselbe Gleichung an mehrere Datensätze anpassen</translation>
    </message>
    <message>
        <source>&amp;Generate</source>
        <translation>&amp;Erzeugen</translation>
    </message>
    <message>
        <source>Fill the data set with points of the equation</source>
        <translation>Den Datensatz mit Punkten der Gleichung füllen</translation>
    </message>
    <message>
        <source>&amp;More...</source>
        <translation>&amp;Mehr...</translation>
    </message>
    <message>
        <source>Run Editor</source>
        <translation>Editor starten</translation>
    </message>
    <message>
        <source>&amp;Weights</source>
        <translation>Ge&amp;wichte</translation>
    </message>
</context>
<context>
    <name>TDataSourcePage</name>
    <message>
        <source>Source:</source>
        <translation>Quelle:</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Von Hand</translation>
    </message>
    <message>
        <source>Text File</source>
        <translation>Textdatei</translation>
    </message>
    <message>
        <source>Data File</source>
        <translation>Datendatei</translation>
    </message>
    <message>
        <source>LumoSheet</source>
        <translation>LumoSheet</translation>
    </message>
    <message>
        <source>Database</source>
        <translation>Datenbank</translation>
    </message>
    <message>
        <source>C&amp;hoose...</source>
        <translation>&amp;Wählen...</translation>
    </message>
    <message>
        <source>Choose among the sources that there are, with their columns; every further Y column becomes a data set</source>
        <translation>Unter den vorhandenen Quellen mit ihren Spalten wählen; jede weitere Y-Spalte wird ein Datensatz</translation>
    </message>
    <message>
        <source>Source name:</source>
        <translation>Name der Quelle:</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Suchen...</translation>
    </message>
    <message>
        <source>Choose the source file</source>
        <translation>Die Quelldatei wählen</translation>
    </message>
    <message>
        <source>Re&amp;load</source>
        <translation>&amp;Neu laden</translation>
    </message>
    <message>
        <source>Load the points from the source again</source>
        <translation>Die Punkte neu aus der Quelle laden</translation>
    </message>
    <message>
        <source>Sheet:</source>
        <translation>Blatt:</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>Verzeichnis:</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>Verbindung</translation>
    </message>
</context>
<context>
    <name>TDatabaseChooser</name>
    <message>
        <source>Choose from a Database</source>
        <translation>Aus einer Datenbank wählen</translation>
    </message>
    <message>
        <source>C&amp;onnection:</source>
        <translation>&amp;Verbindung:</translation>
    </message>
    <message>
        <source>A file, postgresql://USER@HOST/NAME, mysql://USER@HOST/NAME, odbc:DSN, or the name of a saved connection</source>
        <translation>Eine Datei, postgresql://BENUTZER@RECHNER/NAME, mysql://BENUTZER@RECHNER/NAME, odbc:DSN oder der Name einer gespeicherten Verbindung</translation>
    </message>
    <message>
        <source>&amp;File...</source>
        <translation>&amp;Datei...</translation>
    </message>
    <message>
        <source>Choose a database file</source>
        <translation>Eine Datenbankdatei wählen</translation>
    </message>
    <message>
        <source>&amp;Save As...</source>
        <translation>&amp;Speichern unter...</translation>
    </message>
    <message>
        <source>Keep this connection, without its password, under a name</source>
        <translation>Diese Verbindung ohne ihr Passwort unter einem Namen behalten</translation>
    </message>
    <message>
        <source>For&amp;get</source>
        <translation>Ver&amp;gessen</translation>
    </message>
    <message>
        <source>Remove the saved connection of this name</source>
        <translation>Die gespeicherte Verbindung dieses Namens entfernen</translation>
    </message>
    <message>
        <source>&amp;Password:</source>
        <translation>&amp;Passwort:</translation>
    </message>
    <message>
        <source>kept until the program ends, in no file</source>
        <translation>bis zum Ende des Programms, in keiner Datei</translation>
    </message>
    <message>
        <source>Co&amp;nnect</source>
        <translation>Ver&amp;binden</translation>
    </message>
    <message>
        <source>&amp;Tables and views:</source>
        <translation>&amp;Tabellen und Sichten:</translation>
    </message>
    <message>
        <source>O&amp;wn SELECT</source>
        <translation>&amp;Eigenes SELECT</translation>
    </message>
    <message>
        <source>SELECT …</source>
        <translation>SELECT …</translation>
    </message>
    <message>
        <source>Own SELECT</source>
        <translation>Eigenes SELECT</translation>
    </message>
    <message>
        <source>&amp;X:</source>
        <translation>&amp;X:</translation>
    </message>
    <message>
        <source>&amp;Y:</source>
        <translation>&amp;Y:</translation>
    </message>
    <message>
        <source>W&amp;HERE</source>
        <translation>W&amp;HERE</translation>
    </message>
    <message>
        <source>Condition for the rows, as the database takes it</source>
        <translation>Bedingung für die Zeilen, wie die Datenbank sie nimmt</translation>
    </message>
    <message>
        <source>ORDER &amp;BY</source>
        <translation>&amp;ORDER BY</translation>
    </message>
    <message>
        <source>Columns that order the rows, as the database takes them</source>
        <translation>Spalten, die die Zeilen ordnen, wie die Datenbank sie nimmt</translation>
    </message>
    <message>
        <source>First rows</source>
        <translation>Erste Zeilen</translation>
    </message>
    <message>
        <source>E&amp;rrors:</source>
        <translation>&amp;Fehler:</translation>
    </message>
    <message>
        <source>Ser&amp;ver...</source>
        <translation>Ser&amp;ver...</translation>
    </message>
    <message>
        <source>Connect with a database server, by its host and name</source>
        <translation>Mit einem Datenbankserver verbinden, nach Rechner und Namen</translation>
    </message>
</context>
<context>
    <name>TFilteringPage</name>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Filter type</source>
        <translation>Filterart</translation>
    </message>
    <message>
        <source>Band Stop</source>
        <translation>Bandsperre</translation>
    </message>
    <message>
        <source>Band Pass</source>
        <translation>Bandpass</translation>
    </message>
    <message>
        <source>Frequency Band from</source>
        <translation>Frequenzband von</translation>
    </message>
    <message>
        <source>to</source>
        <translation>bis</translation>
    </message>
    <message>
        <source>Frequency Band to</source>
        <translation>Frequenzband bis</translation>
    </message>
    <message>
        <source>Count every</source>
        <translation>Zähle je</translation>
    </message>
    <message>
        <source>point</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Response Function Width:</source>
        <translation>Breite der Antwortfunktion:</translation>
    </message>
    <message>
        <source>Pts</source>
        <translation>Pkt.</translation>
    </message>
    <message>
        <source>Normalize Output</source>
        <translation>Ausgabe normieren</translation>
    </message>
    <message>
        <source>Give the output the sum of the input</source>
        <translation>Der Ausgabe die Summe der Eingabe geben</translation>
    </message>
    <message>
        <source>Zero for Normalization</source>
        <translation>Null der Normierung</translation>
    </message>
    <message>
        <source>Sums are taken about this value</source>
        <translation>Summen werden um diesen Wert gebildet</translation>
    </message>
    <message>
        <source>Spectrum and frequency response</source>
        <translation>Spektrum und Frequenzgang</translation>
    </message>
    <message>
        <source>Note : after filtering the data in current DataSet  will be changed permanently</source>
        <translation>Hinweis: Das Filtern ändert die Daten des aktuellen Datensatzes dauerhaft</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <source>Filter the data of the current DataSet</source>
        <translation>Die Daten des aktuellen Datensatzes filtern</translation>
    </message>
</context>
<context>
    <name>TFitAllWindow</name>
    <message>
        <source>Fit All Data Sets</source>
        <translation>Alle Datensätze anpassen</translation>
    </message>
    <message>
        <source>&amp;Run</source>
        <translation>Sta&amp;rten</translation>
    </message>
    <message>
        <source>Fit the equation to the data sets that are checked</source>
        <translation>Die Gleichung an die angekreuzten Datensätze anpassen</translation>
    </message>
    <message>
        <source>Check &amp;All</source>
        <translation>&amp;Alle ankreuzen</translation>
    </message>
    <message>
        <source>Check &amp;None</source>
        <translation>K&amp;eine ankreuzen</translation>
    </message>
    <message>
        <source>&amp;Find start values for each</source>
        <translation>Für jeden &amp;Startwerte finden</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Stop the work; what there is stays</source>
        <translation>Die Arbeit anhalten; was da ist, bleibt</translation>
    </message>
    <message>
        <source>&amp;Parameters in common:</source>
        <translation>Gemeinsame &amp;Parameter:</translation>
    </message>
    <message>
        <source>none; or names, such as k, c: one value for all data sets</source>
        <translation>keine; oder Namen wie k, c: ein Wert für alle Datensätze</translation>
    </message>
    <message>
        <source>Data sets and their parameters</source>
        <translation>Datensätze und ihre Parameter</translation>
    </message>
    <message>
        <source>&amp;Make Data Sets</source>
        <translation>&amp;Datensätze machen</translation>
    </message>
    <message>
        <source>Make a data set of each parameter, by the number of the data set fitted</source>
        <translation>Je Parameter einen Datensatz über der Nummer des Datensatzes machen</translation>
    </message>
    <message>
        <source>&amp;Keep Fits</source>
        <translation>Anpassungen &amp;behalten</translation>
    </message>
    <message>
        <source>Put the fits into their data sets</source>
        <translation>Die Anpassungen in ihre Datensätze setzen</translation>
    </message>
    <message>
        <source>&amp;Copy as Table</source>
        <translation>Als Tabelle &amp;kopieren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Take &amp;in Common</source>
        <translation>&amp;Gemeinsam</translation>
    </message>
    <message>
        <source>Put these parameters into the list of those in common</source>
        <translation>Diese Parameter in die Liste der gemeinsamen aufnehmen</translation>
    </message>
</context>
<context>
    <name>TFitResultWindow</name>
    <message>
        <source>Fit Result</source>
        <translation>Ergebnis der Anpassung</translation>
    </message>
    <message>
        <source>&amp;Figures</source>
        <translation>&amp;Zahlen</translation>
    </message>
    <message>
        <source>Parameters</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>Correlations</source>
        <translation>Korrelationen</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Güte</translation>
    </message>
    <message>
        <source>&amp;Uncertainty</source>
        <translation>&amp;Unsicherheit</translation>
    </message>
    <message>
        <source>&amp;Profiles</source>
        <translation>&amp;Profile</translation>
    </message>
    <message>
        <source>Intervals from profiles of the sum of squares</source>
        <translation>Intervalle aus Profilen der Quadratsumme</translation>
    </message>
    <message>
        <source>&amp;Bootstrap</source>
        <translation>&amp;Bootstrap</translation>
    </message>
    <message>
        <source>Intervals from fits to resampled points</source>
        <translation>Intervalle aus Anpassungen an neu gezogene Punkte</translation>
    </message>
    <message>
        <source>&amp;Resamples:</source>
        <translation>&amp;Ziehungen:</translation>
    </message>
    <message>
        <source>How many resamples are fitted</source>
        <translation>Wie viele Ziehungen angepasst werden</translation>
    </message>
    <message>
        <source>What is drawn again: the scatter about the curve, or whole points, which also holds where the scatter differs</source>
        <translation>Was neu gezogen wird: die Streuung um die Kurve oder ganze Punkte, was auch bei ungleicher Streuung gilt</translation>
    </message>
    <message>
        <source>of residuals</source>
        <translation>von Residuen</translation>
    </message>
    <message>
        <source>of points</source>
        <translation>von Punkten</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Stop the work; what there is stays</source>
        <translation>Die Arbeit anhalten; was da ist, bleibt</translation>
    </message>
    <message>
        <source>Intervals of the parameters</source>
        <translation>Intervalle der Parameter</translation>
    </message>
    <message>
        <source>95 % intervals. The asymptotic one takes the model for linear near its minimum; the profile needs no such trust, the bootstrap no model of the scatter. Where they differ, believe these two.</source>
        <translation>95-%-Intervalle. Das asymptotische hält das Modell nahe seinem Minimum für linear; das Profil braucht dieses Vertrauen nicht, der Bootstrap kein Modell der Streuung. Wo sie sich unterscheiden, gelten diese beiden.</translation>
    </message>
    <message>
        <source>Profile and resamples of the chosen parameter</source>
        <translation>Profil und Ziehungen des gewählten Parameters</translation>
    </message>
    <message>
        <source>Rep&amp;ort</source>
        <translation>Be&amp;richt</translation>
    </message>
    <message>
        <source>Report</source>
        <translation>Bericht</translation>
    </message>
    <message>
        <source>&amp;Save As...</source>
        <translation>&amp;Speichern unter...</translation>
    </message>
    <message>
        <source>Save the report as a page (.html) or as text (.txt)</source>
        <translation>Den Bericht als Seite (.html) oder Text (.txt) speichern</translation>
    </message>
    <message>
        <source>Pr&amp;int...</source>
        <translation>&amp;Drucken...</translation>
    </message>
    <message>
        <source>Print the report</source>
        <translation>Den Bericht drucken</translation>
    </message>
    <message>
        <source>&amp;Copy as Table</source>
        <translation>Als Tabelle &amp;kopieren</translation>
    </message>
    <message>
        <source>Copy the tables of this page to be pasted into a sheet</source>
        <translation>Die Tabellen dieser Seite zum Einfügen in ein Tabellenblatt kopieren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>TFunctionChooser</name>
    <message>
        <source>Choose a Function</source>
        <translation>Funktion wählen</translation>
    </message>
    <message>
        <source>&amp;Search:</source>
        <translation>&amp;Suchen:</translation>
    </message>
    <message>
        <source>peak, decay, dose, exp ...</source>
        <translation>Peak, Zerfall, Dosis, exp ...</translation>
    </message>
    <message>
        <source>Groups</source>
        <translation>Gruppen</translation>
    </message>
    <message>
        <source>Functions</source>
        <translation>Funktionen</translation>
    </message>
    <message>
        <source>&amp;Find start values from the data</source>
        <translation>&amp;Startwerte aus den Daten finden</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Take the function in the place of the equation and its parameters</source>
        <translation>Die Funktion an die Stelle der Gleichung und ihrer Parameter setzen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>TGeneralPage</name>
    <message>
        <source>Name of DataSet</source>
        <translation>Name des Datensatzes</translation>
    </message>
    <message>
        <source>Autoupdate</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>Name the data set after the column of its source</source>
        <translation>Den Datensatz nach der Spalte seiner Quelle nennen</translation>
    </message>
    <message>
        <source>Visibility</source>
        <translation>Sichtbarkeit</translation>
    </message>
    <message>
        <source>Show on Plot</source>
        <translation>Zeichnen</translation>
    </message>
    <message>
        <source>Y axis:</source>
        <translation>Y-Achse:</translation>
    </message>
    <message>
        <source>Main</source>
        <translation>Haupt</translation>
    </message>
    <message>
        <source>Second</source>
        <translation>Zweite</translation>
    </message>
    <message>
        <source>&amp;Hide All Others</source>
        <translation>Alle &amp;anderen verstecken</translation>
    </message>
    <message>
        <source>Show only this dataset</source>
        <translation>Nur diesen Datensatz zeigen</translation>
    </message>
    <message>
        <source>&amp;Show All</source>
        <translation>Alle &amp;zeigen</translation>
    </message>
    <message>
        <source>Show all datasets</source>
        <translation>Alle Datensätze zeigen</translation>
    </message>
    <message>
        <source>Baseline</source>
        <translation>Basislinie</translation>
    </message>
    <message>
        <source> Automatically set at lowest value</source>
        <translation> Automatisch am kleinsten Wert</translation>
    </message>
    <message>
        <source>Zero Value:</source>
        <translation>Nullwert:</translation>
    </message>
    <message>
        <source>Slope:</source>
        <translation>Steigung:</translation>
    </message>
    <message>
        <source>Read from &amp;Mark</source>
        <translation>Von &amp;Marke lesen</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Point shape</source>
        <translation>Punktform</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Square</source>
        <translation>Quadrat</translation>
    </message>
    <message>
        <source>Circle</source>
        <translation>Kreis</translation>
    </message>
    <message>
        <source>Diamond</source>
        <translation>Raute</translation>
    </message>
    <message>
        <source>Up Triangle</source>
        <translation>Dreieck aufwärts</translation>
    </message>
    <message>
        <source>Down Triangle</source>
        <translation>Dreieck abwärts</translation>
    </message>
    <message>
        <source>Cross</source>
        <translation>Kreuz</translation>
    </message>
    <message>
        <source>X Cross</source>
        <translation>X-Kreuz</translation>
    </message>
    <message>
        <source>Star</source>
        <translation>Stern</translation>
    </message>
    <message>
        <source>Wide Point</source>
        <translation>Breiter Punkt</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source>Border Width:</source>
        <translation>Randbreite:</translation>
    </message>
    <message>
        <source>Color:</source>
        <translation>Farbe:</translation>
    </message>
    <message>
        <source>Color of the points</source>
        <translation>Farbe der Punkte</translation>
    </message>
    <message>
        <source>Fill Points</source>
        <translation>Punkte füllen</translation>
    </message>
    <message>
        <source>Lines</source>
        <translation>Linien</translation>
    </message>
    <message>
        <source>Line style</source>
        <translation>Linienart</translation>
    </message>
    <message>
        <source>Solid</source>
        <translation>Durchgezogen</translation>
    </message>
    <message>
        <source>Dash Dash</source>
        <translation>Strich Strich</translation>
    </message>
    <message>
        <source>Dot Dot</source>
        <translation>Punkt Punkt</translation>
    </message>
    <message>
        <source>Dash Dot</source>
        <translation>Strich Punkt</translation>
    </message>
    <message>
        <source>Dash Dot Dot</source>
        <translation>Strich Punkt Punkt</translation>
    </message>
    <message>
        <source>Width:</source>
        <translation>Breite:</translation>
    </message>
    <message>
        <source>Color of the lines</source>
        <translation>Farbe der Linien</translation>
    </message>
    <message>
        <source>Use This St&amp;yle for...</source>
        <translation>Diesen S&amp;til für...</translation>
    </message>
    <message>
        <source>Give several data sets this look at once</source>
        <translation>Mehreren Datensätzen auf einmal dieses Aussehen geben</translation>
    </message>
</context>
<context>
    <name>TGraphEditBar</name>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Zoom with a rubber band, move the picture with Shift or the middle button</source>
        <translation>Mit einem Rahmen vergrößern, das Bild mit Umschalt oder der mittleren Taste verschieben</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzu</translation>
    </message>
    <message>
        <source>Add points to the current data set: press, drag to the place and let go</source>
        <translation>Dem aktuellen Datensatz Punkte hinzufügen: drücken, an die Stelle ziehen, loslassen</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>Move points of the current data set; with Shift the X stays</source>
        <translation>Punkte des aktuellen Datensatzes verschieben; mit Umschalt bleibt X</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Delete points of the current data set by a click</source>
        <translation>Punkte des aktuellen Datensatzes mit einem Klick löschen</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>Marke</translation>
    </message>
    <message>
        <source>Place a mark of the chosen type, or drag one that is there</source>
        <translation>Eine Marke der gewählten Art setzen oder eine vorhandene ziehen</translation>
    </message>
    <message>
        <source>Type of new marks</source>
        <translation>Art neuer Marken</translation>
    </message>
    <message>
        <source>Type of the marks that are placed</source>
        <translation>Art der Marken, die gesetzt werden</translation>
    </message>
    <message>
        <source>Vertical Line</source>
        <translation>Senkrechte Linie</translation>
    </message>
    <message>
        <source>Horizontal Line</source>
        <translation>Waagrechte Linie</translation>
    </message>
    <message>
        <source>Point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <source>Snap</source>
        <translation>Einrasten</translation>
    </message>
    <message>
        <source>Take the place of the nearest point of another data set</source>
        <translation>Die Stelle des nächsten Punkts eines anderen Datensatzes nehmen</translation>
    </message>
    <message>
        <source>DataSet:</source>
        <translation>Datensatz:</translation>
    </message>
    <message>
        <source>The data set whose points are edited</source>
        <translation>Der Datensatz, dessen Punkte bearbeitet werden</translation>
    </message>
    <message>
        <source>Set Va&amp;lues...</source>
        <translation>&amp;Werte setzen...</translation>
    </message>
    <message>
        <source>New Y values from a formula</source>
        <translation>Neue Y-Werte aus einer Formel</translation>
    </message>
    <message>
        <source>&amp;Marks...</source>
        <translation>&amp;Marken...</translation>
    </message>
    <message>
        <source>Edit the marks of the graph</source>
        <translation>Die Marken des Diagramms bearbeiten</translation>
    </message>
</context>
<context>
    <name>TLinkDialog</name>
    <message>
        <source>Follow</source>
        <translation>Daten verfolgen</translation>
    </message>
    <message>
        <source>&amp;Read from:</source>
        <translation>&amp;Lesen von:</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Named pipe</source>
        <translation>Benannte Pipe</translation>
    </message>
    <message>
        <source>Standard input</source>
        <translation>Standardeingabe</translation>
    </message>
    <message>
        <source>Server (TCP)</source>
        <translation>Server (TCP)</translation>
    </message>
    <message>
        <source>Whoever calls (TCP)</source>
        <translation>Wer anruft (TCP)</translation>
    </message>
    <message>
        <source>Serial line</source>
        <translation>Serielle Leitung</translation>
    </message>
    <message>
        <source>DDE, hot: each value is sent</source>
        <translation>DDE, heiß: jeder Wert wird gesandt</translation>
    </message>
    <message>
        <source>DDE, warm: changes are asked for</source>
        <translation>DDE, warm: Änderungen werden abgefragt</translation>
    </message>
    <message>
        <source>&amp;Browse…</source>
        <translation>&amp;Suchen…</translation>
    </message>
    <message>
        <source>&amp;Keep:</source>
        <translation>&amp;Behalten:</translation>
    </message>
    <message>
        <source>All rows</source>
        <translation>Alle Zeilen</translation>
    </message>
    <message>
        <source>The last rows, so many:</source>
        <translation>Die letzten Zeilen, so viele:</translation>
    </message>
    <message>
        <source>The last seconds, so many:</source>
        <translation>Die letzten Sekunden, so viele:</translation>
    </message>
    <message>
        <source>1000</source>
        <translation>1000</translation>
    </message>
    <message>
        <source>How many are kept</source>
        <translation>Wie viele behalten werden</translation>
    </message>
    <message>
        <source>&amp;X column:</source>
        <translation>&amp;X-Spalte:</translation>
    </message>
    <message>
        <source>found from the first rows; a name or a number, 0 counts the rows</source>
        <translation>aus den ersten Zeilen gefunden; ein Name oder eine Nummer, 0 zählt die Zeilen</translation>
    </message>
    <message>
        <source>&amp;Y column:</source>
        <translation>&amp;Y-Spalte:</translation>
    </message>
    <message>
        <source>found from the first rows; a name or a number</source>
        <translation>aus den ersten Zeilen gefunden; ein Name oder eine Nummer</translation>
    </message>
</context>
<context>
    <name>TManualPanel</name>
    <message>
        <source>X values:</source>
        <translation>X-Werte:</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Zahl</translation>
    </message>
    <message>
        <source>Date/Time</source>
        <translation>Datum/Zeit</translation>
    </message>
    <message>
        <source>Errors of Y</source>
        <translation>Fehler von Y</translation>
    </message>
    <message>
        <source>Show a column for the standard errors of Y</source>
        <translation>Eine Spalte für die Standardfehler von Y zeigen</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Paste a block copied from a spreadsheet at the current cell</source>
        <translation>Einen aus einer Tabelle kopierten Block an der aktuellen Zelle einfügen</translation>
    </message>
    <message>
        <source>Insert Rows</source>
        <translation>Zeilen einfügen</translation>
    </message>
    <message>
        <source>Insert as many rows as are selected</source>
        <translation>So viele Zeilen einfügen wie ausgewählt sind</translation>
    </message>
    <message>
        <source>Delete Rows</source>
        <translation>Zeilen löschen</translation>
    </message>
    <message>
        <source>Delete the selected rows</source>
        <translation>Die ausgewählten Zeilen löschen</translation>
    </message>
    <message>
        <source>Set Values...</source>
        <translation>Werte setzen...</translation>
    </message>
    <message>
        <source>New Y values from a formula</source>
        <translation>Neue Y-Werte aus einer Formel</translation>
    </message>
</context>
<context>
    <name>TReadingOptions</name>
    <message>
        <source>Se&amp;parator:</source>
        <translation>&amp;Trennzeichen:</translation>
    </message>
    <message>
        <source>What divides the cells of a row</source>
        <translation>Was die Zellen einer Zeile trennt</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tabulator</translation>
    </message>
    <message>
        <source>Semicolon</source>
        <translation>Strichpunkt</translation>
    </message>
    <message>
        <source>Comma</source>
        <translation>Komma</translation>
    </message>
    <message>
        <source>Vertical bar</source>
        <translation>Senkrechter Strich</translation>
    </message>
    <message>
        <source>Blanks</source>
        <translation>Leerzeichen</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>&amp;Decimals:</source>
        <translation>&amp;Dezimalen:</translation>
    </message>
    <message>
        <source>The sign in front of decimals</source>
        <translation>Das Zeichen vor den Dezimalen</translation>
    </message>
    <message>
        <source>D&amp;ates:</source>
        <translation>Date&amp;n:</translation>
    </message>
    <message>
        <source>&amp;Encoding:</source>
        <translation>Z&amp;eichensatz:</translation>
    </message>
    <message>
        <source>How the characters of the file are encoded</source>
        <translation>Wie die Zeichen der Datei kodiert sind</translation>
    </message>
    <message>
        <source>UTF-8</source>
        <translation>UTF-8</translation>
    </message>
    <message>
        <source>UTF-16 LE</source>
        <translation>UTF-16 LE</translation>
    </message>
    <message>
        <source>UTF-16 BE</source>
        <translation>UTF-16 BE</translation>
    </message>
    <message>
        <source>Windows-1252</source>
        <translation>Windows-1252</translation>
    </message>
    <message>
        <source>&amp;Header rows:</source>
        <translation>Kopf&amp;zeilen:</translation>
    </message>
    <message>
        <source>Rows in front of the data</source>
        <translation>Zeilen vor den Daten</translation>
    </message>
    <message>
        <source>Shee&amp;t:</source>
        <translation>Ta&amp;belle:</translation>
    </message>
    <message>
        <source>The sheet of the file that is read</source>
        <translation>Die Tabelle der Datei, die gelesen wird</translation>
    </message>
    <message>
        <source>Point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <source>The order of year, month and day in dates</source>
        <translation>Die Reihenfolge von Jahr, Monat und Tag in Datumsangaben</translation>
    </message>
    <message>
        <source>Y-M-D</source>
        <translation>J-M-T</translation>
    </message>
    <message>
        <source>D.M.Y</source>
        <translation>T.M.J</translation>
    </message>
    <message>
        <source>M/D/Y</source>
        <translation>M/T/J</translation>
    </message>
</context>
<context>
    <name>TRegressionsPage</name>
    <message>
        <source>Regression Settings</source>
        <translation>Regressionseinstellungen</translation>
    </message>
    <message>
        <source>Regression</source>
        <translation>Regression</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Linear Least Squares</source>
        <translation>Lineare kleinste Quadrate</translation>
    </message>
    <message>
        <source>Passing / Bablok</source>
        <translation>Passing / Bablok</translation>
    </message>
    <message>
        <source>Quadratic</source>
        <translation>Quadratisch</translation>
    </message>
    <message>
        <source>Spline</source>
        <translation>Spline</translation>
    </message>
    <message>
        <source>Nonlinear Least Squares </source>
        <translation>Nichtlineare kleinste Quadrate </translation>
    </message>
    <message>
        <source>Running Average</source>
        <translation>Gleitendes Mittel</translation>
    </message>
    <message>
        <source>Control Value 1:</source>
        <translation>Steuerwert 1:</translation>
    </message>
    <message>
        <source>Control Value 2:</source>
        <translation>Steuerwert 2:</translation>
    </message>
    <message>
        <source>Regression Line</source>
        <translation>Regressionslinie</translation>
    </message>
    <message>
        <source>Line type:</source>
        <translation>Linienart:</translation>
    </message>
    <message>
        <source>Solid</source>
        <translation>Durchgezogen</translation>
    </message>
    <message>
        <source>Dash Dash</source>
        <translation>Strich Strich</translation>
    </message>
    <message>
        <source>Dot Dot</source>
        <translation>Punkt Punkt</translation>
    </message>
    <message>
        <source>Dash Dot</source>
        <translation>Strich Punkt</translation>
    </message>
    <message>
        <source>Dash Dot Dot</source>
        <translation>Strich Punkt Punkt</translation>
    </message>
    <message>
        <source>Width:</source>
        <translation>Breite:</translation>
    </message>
    <message>
        <source>Color:</source>
        <translation>Farbe:</translation>
    </message>
    <message>
        <source>Color of the regression line</source>
        <translation>Farbe der Regressionslinie</translation>
    </message>
    <message>
        <source>Regression Bounds</source>
        <translation>Regressionsgrenzen</translation>
    </message>
    <message>
        <source>Bounds</source>
        <translation>Grenzen</translation>
    </message>
    <message>
        <source>As Set Below</source>
        <translation>Wie unten gesetzt</translation>
    </message>
    <message>
        <source>at 1SD from Mean</source>
        <translation>1 SD vom Mittel</translation>
    </message>
    <message>
        <source>at 2SD from Mean </source>
        <translation>2 SD vom Mittel </translation>
    </message>
    <message>
        <source>at 3SD from Mean</source>
        <translation>3 SD vom Mittel</translation>
    </message>
    <message>
        <source>at 1, 2 and 3 SD</source>
        <translation>1, 2 und 3 SD</translation>
    </message>
    <message>
        <source>Color of the bounds</source>
        <translation>Farbe der Grenzen</translation>
    </message>
    <message>
        <source>Values:</source>
        <translation>Werte:</translation>
    </message>
    <message>
        <source>Lower bound</source>
        <translation>Untere Grenze</translation>
    </message>
    <message>
        <source>Upper bound</source>
        <translation>Obere Grenze</translation>
    </message>
</context>
<context>
    <name>TServerDialog</name>
    <message>
        <source>Database Server</source>
        <translation>Datenbankserver</translation>
    </message>
    <message>
        <source>&amp;Kind:</source>
        <translation>&amp;Art:</translation>
    </message>
    <message>
        <source>&amp;Host:</source>
        <translation>&amp;Rechner:</translation>
    </message>
    <message>
        <source>this machine</source>
        <translation>dieser Rechner</translation>
    </message>
    <message>
        <source>P&amp;ort:</source>
        <translation>P&amp;ort:</translation>
    </message>
    <message>
        <source>&amp;Database:</source>
        <translation>&amp;Datenbank:</translation>
    </message>
    <message>
        <source>&amp;User:</source>
        <translation>&amp;Benutzer:</translation>
    </message>
    <message>
        <source>&amp;Password:</source>
        <translation>&amp;Kennwort:</translation>
    </message>
    <message>
        <source>kept until the program ends, in no file</source>
        <translation>bleibt bis zum Programmende, in keiner Datei</translation>
    </message>
</context>
<context>
    <name>TTextOptionsPanel</name>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Separators:</source>
        <translation>Trennzeichen:</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>Find the separator from the text</source>
        <translation>Das Trennzeichen aus dem Text finden</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tabulator</translation>
    </message>
    <message>
        <source>Comma</source>
        <translation>Komma</translation>
    </message>
    <message>
        <source>Semicolon</source>
        <translation>Strichpunkt</translation>
    </message>
    <message>
        <source>Blank</source>
        <translation>Leerzeichen</translation>
    </message>
    <message>
        <source>Other:</source>
        <translation>Andere:</translation>
    </message>
    <message>
        <source>Other separators</source>
        <translation>Andere Trennzeichen</translation>
    </message>
    <message>
        <source>Header rows:</source>
        <translation>Kopfzeilen:</translation>
    </message>
    <message>
        <source>Find the header rows from the text</source>
        <translation>Die Kopfzeilen aus dem Text finden</translation>
    </message>
    <message>
        <source>Header rows</source>
        <translation>Kopfzeilen</translation>
    </message>
    <message>
        <source>Text markers:</source>
        <translation>Textzeichen:</translation>
    </message>
    <message>
        <source>Characters that enclose a text with separators in it</source>
        <translation>Zeichen, die einen Text mit Trennzeichen umschließen</translation>
    </message>
    <message>
        <source>Fixed width:</source>
        <translation>Feste Breite:</translation>
    </message>
    <message>
        <source>Divide the rows into columns of the same width</source>
        <translation>Die Zeilen in gleich breite Spalten teilen</translation>
    </message>
    <message>
        <source>Column width</source>
        <translation>Spaltenbreite</translation>
    </message>
    <message>
        <source>Read as:</source>
        <translation>Lesen als:</translation>
    </message>
    <message>
        <source>Decimal sign</source>
        <translation>Dezimalzeichen</translation>
    </message>
    <message>
        <source>Decimal point</source>
        <translation>Dezimalpunkt</translation>
    </message>
    <message>
        <source>Decimal comma</source>
        <translation>Dezimalkomma</translation>
    </message>
    <message>
        <source>Order of dates</source>
        <translation>Reihenfolge im Datum</translation>
    </message>
    <message>
        <source>Year-month-day</source>
        <translation>Jahr-Monat-Tag</translation>
    </message>
    <message>
        <source>Day.month.year</source>
        <translation>Tag.Monat.Jahr</translation>
    </message>
    <message>
        <source>Month/day/year</source>
        <translation>Monat/Tag/Jahr</translation>
    </message>
    <message>
        <source>Encoding</source>
        <translation>Zeichensatz</translation>
    </message>
    <message>
        <source>UTF-8</source>
        <translation>UTF-8</translation>
    </message>
    <message>
        <source>UTF-16 LE</source>
        <translation>UTF-16 LE</translation>
    </message>
    <message>
        <source>UTF-16 BE</source>
        <translation>UTF-16 BE</translation>
    </message>
    <message>
        <source>Windows-1252</source>
        <translation>Windows-1252</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Spalten</translation>
    </message>
    <message>
        <source>Column</source>
        <translation>Spalte</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Expression</source>
        <translation>Ausdruck</translation>
    </message>
    <message>
        <source>X:</source>
        <translation>X:</translation>
    </message>
    <message>
        <source>X column</source>
        <translation>X-Spalte</translation>
    </message>
    <message>
        <source>X format</source>
        <translation>X-Format</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Zahl</translation>
    </message>
    <message>
        <source>Date/Time</source>
        <translation>Datum/Zeit</translation>
    </message>
    <message>
        <source>X expression</source>
        <translation>X-Ausdruck</translation>
    </message>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Makes X of what is read, as X/60 or c1+c3/24. Names: X, Y, row, c1, c2, ... and the header names</source>
        <translation>Macht X aus dem Gelesenen, etwa X/60 oder c1+c3/24. Namen: X, Y, row, c1, c2, ... und die Namen der Kopfzeile</translation>
    </message>
    <message>
        <source>Y:</source>
        <translation>Y:</translation>
    </message>
    <message>
        <source>Y column</source>
        <translation>Y-Spalte</translation>
    </message>
    <message>
        <source>Y format</source>
        <translation>Y-Format</translation>
    </message>
    <message>
        <source>Y expression</source>
        <translation>Y-Ausdruck</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>Makes Y of what is read, as 2*Y or c3-c2. Names: X, Y, row, c1, c2, ... and the header names</source>
        <translation>Macht Y aus dem Gelesenen, etwa 2*Y oder c3-c2. Namen: X, Y, row, c1, c2, ... und die Namen der Kopfzeile</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>Zeilen</translation>
    </message>
    <message>
        <source>Use:</source>
        <translation>Nimm:</translation>
    </message>
    <message>
        <source>All rows</source>
        <translation>Alle Zeilen</translation>
    </message>
    <message>
        <source>By row number</source>
        <translation>Nach Zeilennummer</translation>
    </message>
    <message>
        <source>By X value</source>
        <translation>Nach X-Wert</translation>
    </message>
    <message>
        <source>From:</source>
        <translation>Von:</translation>
    </message>
    <message>
        <source>to</source>
        <translation>bis</translation>
    </message>
    <message>
        <source>Every n-th:</source>
        <translation>Jede n-te:</translation>
    </message>
    <message>
        <source>As many rows as the number of points in the plot asks for</source>
        <translation>So viele Zeilen, wie die Zahl der Punkte im Bild verlangt</translation>
    </message>
    <message>
        <source>Errors:</source>
        <translation>Fehler:</translation>
    </message>
    <message>
        <source>Errors of Y</source>
        <translation>Fehler von Y</translation>
    </message>
    <message>
        <source>The column with the standard errors of Y, which are drawn as error bars</source>
        <translation>Die Spalte mit den Standardfehlern von Y, die als Fehlerbalken gezeichnet werden</translation>
    </message>
</context>
<context>
    <name>TTextPreviewPane</name>
    <message>
        <source>Read the file this way instead</source>
        <translation>Die Datei stattdessen so lesen</translation>
    </message>
    <message>
        <source>Find Again</source>
        <translation>Neu finden</translation>
    </message>
    <message>
        <source>Forget what was chosen for reading the text and find it from the text</source>
        <translation>Vergessen, was zum Lesen gewählt war, und es aus dem Text finden</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Rows that can not be read</source>
        <translation>Zeilen, die nicht gelesen werden können</translation>
    </message>
    <message>
        <source>Keep All Rows</source>
        <translation>Alle Zeilen behalten</translation>
    </message>
    <message>
        <source>Allow rows with the same X and load again</source>
        <translation>Zeilen mit gleichem X zulassen und neu laden</translation>
    </message>
</context>
<context>
    <name>TTransformDialog</name>
    <message>
        <source>Transform</source>
        <translation>Umformen</translation>
    </message>
    <message>
        <source>&amp;Work out:</source>
        <translation>&amp;Berechnen:</translation>
    </message>
    <message>
        <source>Between &amp;Marks</source>
        <translation>Zwischen &amp;Marken</translation>
    </message>
    <message>
        <source>Take the range between two marks of the graph</source>
        <translation>Den Bereich zwischen zwei Marken des Diagramms nehmen</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>&amp;Replace the points</source>
        <translation>Punkte &amp;ersetzen</translation>
    </message>
    <message>
        <source>Into a new data s&amp;et</source>
        <translation>In einen &amp;neuen Datensatz</translation>
    </message>
    <message>
        <source>O&amp;K</source>
        <translation>O&amp;K</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
<context>
    <name>TYErrorGroup</name>
    <message>
        <source>Errors of Y</source>
        <translation>Fehler von Y</translation>
    </message>
    <message>
        <source>Where the errors of Y come from</source>
        <translation>Woher die Fehler von Y kommen</translation>
    </message>
    <message>
        <source>Standard errors of Y: error bars show them, and fits can weigh by them</source>
        <translation>Standardfehler von Y: Fehlerbalken zeigen sie, und Anpassungen können danach gewichten</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Constant</source>
        <translation>Konstant</translation>
    </message>
    <message>
        <source>Percent of Y</source>
        <translation>Prozent von Y</translation>
    </message>
    <message>
        <source>Square root of Y</source>
        <translation>Wurzel aus Y</translation>
    </message>
    <message>
        <source>Y of another data set</source>
        <translation>Y eines anderen Datensatzes</translation>
    </message>
    <message>
        <source>Column of the source</source>
        <translation>Spalte der Quelle</translation>
    </message>
    <message>
        <source>As entered</source>
        <translation>Wie eingegeben</translation>
    </message>
    <message>
        <source>Constant or percentage</source>
        <translation>Konstante oder Prozentsatz</translation>
    </message>
    <message>
        <source>Data set with the errors</source>
        <translation>Datensatz mit den Fehlern</translation>
    </message>
</context>
<context>
    <name>TfrmCalc</name>
    <message>
        <source>Equation Editor</source>
        <translation>Gleichungseditor</translation>
    </message>
    <message>
        <source>Mathematical or logical expression:</source>
        <translation>Mathematischer oder logischer Ausdruck:</translation>
    </message>
    <message>
        <source>Add as Parameters</source>
        <translation>Als Parameter hinzu</translation>
    </message>
    <message>
        <source>Define the names that are not known as parameters that the fit varies</source>
        <translation>Unbekannte Namen als Parameter festlegen, die die Anpassung ändert</translation>
    </message>
    <message>
        <source>Rewrite</source>
        <translation>Umschreiben</translation>
    </message>
    <message>
        <source>Keypad</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>7</source>
        <translation>7</translation>
    </message>
    <message>
        <source>digit seven</source>
        <translation>Ziffer sieben</translation>
    </message>
    <message>
        <source>8</source>
        <translation>8</translation>
    </message>
    <message>
        <source>digit eight</source>
        <translation>Ziffer acht</translation>
    </message>
    <message>
        <source>9</source>
        <translation>9</translation>
    </message>
    <message>
        <source>digit nine</source>
        <translation>Ziffer neun</translation>
    </message>
    <message>
        <source> / </source>
        <translation> / </translation>
    </message>
    <message>
        <source>divide</source>
        <translation>geteilt durch</translation>
    </message>
    <message>
        <source>(</source>
        <translation>(</translation>
    </message>
    <message>
        <source>opening bracket</source>
        <translation>öffnende Klammer</translation>
    </message>
    <message>
        <source>)</source>
        <translation>)</translation>
    </message>
    <message>
        <source>closing bracket</source>
        <translation>schließende Klammer</translation>
    </message>
    <message>
        <source>4</source>
        <translation>4</translation>
    </message>
    <message>
        <source>digit four</source>
        <translation>Ziffer vier</translation>
    </message>
    <message>
        <source>5</source>
        <translation>5</translation>
    </message>
    <message>
        <source>digit five</source>
        <translation>Ziffer fünf</translation>
    </message>
    <message>
        <source>6</source>
        <translation>6</translation>
    </message>
    <message>
        <source>digit six</source>
        <translation>Ziffer sechs</translation>
    </message>
    <message>
        <source> * </source>
        <translation> * </translation>
    </message>
    <message>
        <source>multiply</source>
        <translation>mal</translation>
    </message>
    <message>
        <source>^</source>
        <translation>^</translation>
    </message>
    <message>
        <source>power</source>
        <translation>hoch</translation>
    </message>
    <message>
        <source>!</source>
        <translation>!</translation>
    </message>
    <message>
        <source>faculty</source>
        <translation>Fakultät</translation>
    </message>
    <message>
        <source>1</source>
        <translation>1</translation>
    </message>
    <message>
        <source>digit one</source>
        <translation>Ziffer eins</translation>
    </message>
    <message>
        <source>2</source>
        <translation>2</translation>
    </message>
    <message>
        <source>digit two</source>
        <translation>Ziffer zwei</translation>
    </message>
    <message>
        <source>3</source>
        <translation>3</translation>
    </message>
    <message>
        <source>digit three</source>
        <translation>Ziffer drei</translation>
    </message>
    <message>
        <source> - </source>
        <translation> - </translation>
    </message>
    <message>
        <source>subtract</source>
        <translation>minus</translation>
    </message>
    <message>
        <source> &lt; </source>
        <translation> &lt; </translation>
    </message>
    <message>
        <source>less than</source>
        <translation>kleiner als</translation>
    </message>
    <message>
        <source> &lt;= </source>
        <translation> &lt;= </translation>
    </message>
    <message>
        <source>less than or equal to</source>
        <translation>kleiner oder gleich</translation>
    </message>
    <message>
        <source>0</source>
        <translation>0</translation>
    </message>
    <message>
        <source>digit zero</source>
        <translation>Ziffer null</translation>
    </message>
    <message>
        <source>.</source>
        <translation>.</translation>
    </message>
    <message>
        <source>decimal point</source>
        <translation>Dezimalpunkt</translation>
    </message>
    <message>
        <source>E</source>
        <translation>E</translation>
    </message>
    <message>
        <source>Exponent in scientific notation of numbers</source>
        <translation>Exponent in wissenschaftlicher Schreibweise</translation>
    </message>
    <message>
        <source> + </source>
        <translation> + </translation>
    </message>
    <message>
        <source>add</source>
        <translation>plus</translation>
    </message>
    <message>
        <source> &gt; </source>
        <translation> &gt; </translation>
    </message>
    <message>
        <source>greater than</source>
        <translation>größer als</translation>
    </message>
    <message>
        <source> &gt;= </source>
        <translation> &gt;= </translation>
    </message>
    <message>
        <source>greater than or equal to</source>
        <translation>größer oder gleich</translation>
    </message>
    <message>
        <source> and </source>
        <translation> and </translation>
    </message>
    <message>
        <source>logical and</source>
        <translation>logisches Und</translation>
    </message>
    <message>
        <source> or </source>
        <translation> or </translation>
    </message>
    <message>
        <source>logical or</source>
        <translation>logisches Oder</translation>
    </message>
    <message>
        <source> xor </source>
        <translation> xor </translation>
    </message>
    <message>
        <source>logical exclusive or</source>
        <translation>logisches Entweder-oder</translation>
    </message>
    <message>
        <source> not </source>
        <translation> not </translation>
    </message>
    <message>
        <source>logical not</source>
        <translation>logisches Nicht</translation>
    </message>
    <message>
        <source> = </source>
        <translation> = </translation>
    </message>
    <message>
        <source>equal to</source>
        <translation>gleich</translation>
    </message>
    <message>
        <source> &lt;&gt; </source>
        <translation> &lt;&gt; </translation>
    </message>
    <message>
        <source>not equal to</source>
        <translation>ungleich</translation>
    </message>
    <message>
        <source> mod </source>
        <translation> mod </translation>
    </message>
    <message>
        <source>modulus (remainder of division 9 mod 4 = 1)</source>
        <translation>Modulo (Rest der Division 9 mod 4 = 1)</translation>
    </message>
    <message>
        <source> div </source>
        <translation> div </translation>
    </message>
    <message>
        <source>integer devide (truncate result)</source>
        <translation>ganzzahlig teilen (Ergebnis abschneiden)</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>percent</source>
        <translation>Prozent</translation>
    </message>
    <message>
        <source>&apos;</source>
        <translation>&apos;</translation>
    </message>
    <message>
        <source>delimiter for string constants</source>
        <translation>Begrenzer von Textkonstanten</translation>
    </message>
    <message>
        <source> := </source>
        <translation> := </translation>
    </message>
    <message>
        <source>assign to variable</source>
        <translation>einer Variablen zuweisen</translation>
    </message>
    <message>
        <source>Functions</source>
        <translation>Funktionen</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>Add Function to Expression</source>
        <translation>Funktion in den Ausdruck einfügen</translation>
    </message>
    <message>
        <source>X variable name:</source>
        <translation>Name der X-Variablen:</translation>
    </message>
    <message>
        <source>Variable</source>
        <translation>Variable</translation>
    </message>
    <message>
        <source>Add Variable to Expression</source>
        <translation>Variable in den Ausdruck einfügen</translation>
    </message>
    <message>
        <source>x =</source>
        <translation>x =</translation>
    </message>
    <message>
        <source>The value at which the expression is evaluated</source>
        <translation>Der Wert, an dem der Ausdruck berechnet wird</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Evaluate Result</source>
        <translation>Ergebnis berechnen</translation>
    </message>
    <message>
        <source>Parameters</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>New Parameter</source>
        <translation>Neuer Parameter</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Delete Parameter</source>
        <translation>Parameter löschen</translation>
    </message>
    <message>
        <source>Parameter</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>Add Parameter to Expression</source>
        <translation>Parameter in den Ausdruck einfügen</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Value:</source>
        <translation>Wert:</translation>
    </message>
    <message>
        <source>Arrow keys and wheel change the value</source>
        <translation>Pfeiltasten und Rad ändern den Wert</translation>
    </message>
    <message>
        <source>Starting Deviation:</source>
        <translation>Anfangsabweichung:</translation>
    </message>
    <message>
        <source>Final Deviation:</source>
        <translation>Endabweichung:</translation>
    </message>
    <message>
        <source>Units:</source>
        <translation>Einheit:</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Vary</source>
        <translation>Ändern</translation>
    </message>
    <message>
        <source>The fit may change the value</source>
        <translation>Die Anpassung darf den Wert ändern</translation>
    </message>
    <message>
        <source>Show in legend</source>
        <translation>In der Legende zeigen</translation>
    </message>
    <message>
        <source>Fitting Settings</source>
        <translation>Anpassungseinstellungen</translation>
    </message>
    <message>
        <source># of Points</source>
        <translation>Anzahl Punkte</translation>
    </message>
    <message>
        <source>Tolerance</source>
        <translation>Toleranz</translation>
    </message>
    <message>
        <source>Curve Fitting Status</source>
        <translation>Stand der Kurvenanpassung</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Draw Function</source>
        <translation>Funktion zeichnen</translation>
    </message>
    <message>
        <source>Show Final Curve</source>
        <translation>Endkurve zeigen</translation>
    </message>
    <message>
        <source>Show Every Step</source>
        <translation>Jeden Schritt zeigen</translation>
    </message>
    <message>
        <source>Left Margin</source>
        <translation>Linke Grenze</translation>
    </message>
    <message>
        <source>Where the curve begins; None for the first point</source>
        <translation>Wo die Kurve beginnt; Keine für den ersten Punkt</translation>
    </message>
    <message>
        <source>Right Margin</source>
        <translation>Rechte Grenze</translation>
    </message>
    <message>
        <source>Where the curve ends; None for the last point</source>
        <translation>Wo die Kurve endet; Keine für den letzten Punkt</translation>
    </message>
    <message>
        <source>Max .# of Iterations</source>
        <translation>Höchstzahl Iterationen</translation>
    </message>
    <message>
        <source>Fitting Procedure</source>
        <translation>Anpassungsverfahren</translation>
    </message>
    <message>
        <source>Maximum Gradient (Powell)</source>
        <translation>Größter Gradient (Powell)</translation>
    </message>
    <message>
        <source>Downhill Simplex  Method</source>
        <translation>Downhill-Simplex-Verfahren</translation>
    </message>
    <message>
        <source>Conjugate Gradient</source>
        <translation>Konjugierte Gradienten</translation>
    </message>
    <message>
        <source>Variable Metric Method (Newton)</source>
        <translation>Variable Metrik (Newton)</translation>
    </message>
    <message>
        <source>Save &amp;As</source>
        <translation>Speichern &amp;unter</translation>
    </message>
    <message>
        <source>Save Expression to File</source>
        <translation>Ausdruck in Datei speichern</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Load Expression from File</source>
        <translation>Ausdruck aus Datei laden</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>Fenster schließen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>TfrmEditScript</name>
    <message>
        <source>Edit Script</source>
        <translation>Skript bearbeiten</translation>
    </message>
    <message>
        <source>Script</source>
        <translation>Skript</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Discard changes</source>
        <translation>Änderungen verwerfen</translation>
    </message>
    <message>
        <source>O&amp;K</source>
        <translation>O&amp;K</translation>
    </message>
    <message>
        <source>Save changes and close</source>
        <translation>Änderungen speichern und schließen</translation>
    </message>
</context>
<context>
    <name>TfrmPrBar</name>
    <message>
        <source>Processing...</source>
        <translation>In Arbeit...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>TfrmSmallPrBar</name>
    <message>
        <source>Processing...</source>
        <translation>In Arbeit...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>TfrmWait</name>
    <message>
        <source>Processing...</source>
        <translation>In Arbeit...</translation>
    </message>
</context>
<context>
    <name>TxyDataWizard</name>
    <message>
        <source>Data Editor</source>
        <translation>Dateneditor</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>DataSet:</source>
        <translation>Datensatz:</translation>
    </message>
    <message>
        <source>DataSet</source>
        <translation>Datensatz</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Neu</translation>
    </message>
    <message>
        <source>Add DataSet</source>
        <translation>Datensatz hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Delete DataSet</source>
        <translation>Datensatz löschen</translation>
    </message>
    <message>
        <source>&amp;Import</source>
        <translation>&amp;Importieren</translation>
    </message>
    <message>
        <source>Load DataSet from File</source>
        <translation>Datensatz aus Datei laden</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>&amp;Exportieren</translation>
    </message>
    <message>
        <source>Save DataSet to File</source>
        <translation>Datensatz in Datei speichern</translation>
    </message>
    <message>
        <source>D&amp;uplicate</source>
        <translation>D&amp;uplizieren</translation>
    </message>
    <message>
        <source>Duplicate DataSet</source>
        <translation>Datensatz duplizieren</translation>
    </message>
    <message>
        <source>&amp;1</source>
        <translation>&amp;1</translation>
    </message>
    <message>
        <source>Move to 1st</source>
        <translation>An die erste Stelle</translation>
    </message>
    <message>
        <source>&amp;A</source>
        <translation>&amp;A</translation>
    </message>
    <message>
        <source>Arrange datasets alphabetically</source>
        <translation>Datensätze alphabetisch ordnen</translation>
    </message>
    <message>
        <source>&amp;I</source>
        <translation>&amp;I</translation>
    </message>
    <message>
        <source>Inverse dataset arrangment </source>
        <translation>Reihenfolge der Datensätze umkehren </translation>
    </message>
    <message>
        <source>There is no data set yet: New, Import, or drop a file here</source>
        <translation>Noch kein Datensatz: Neu, Importieren, oder eine Datei hier ablegen</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Pre&amp;view</source>
        <translation>&amp;Vorschau</translation>
    </message>
    <message>
        <source>?</source>
        <translation>?</translation>
    </message>
    <message>
        <source>Help on this page (F1)</source>
        <translation>Hilfe zu dieser Seite (F1)</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Set as &amp;Default and Close</source>
        <translation>Als &amp;Standard setzen und schließen</translation>
    </message>
    <message>
        <source>O&amp;K</source>
        <translation>O&amp;K</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
<context>
    <name>TxyGetDataSource</name>
    <message>
        <source>Get Data Source</source>
        <translation>Datenquelle holen</translation>
    </message>
    <message>
        <source>&amp;Sources:</source>
        <translation>&amp;Quellen:</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Suchen...</translation>
    </message>
    <message>
        <source>Choose any other file</source>
        <translation>Eine andere Datei wählen</translation>
    </message>
    <message>
        <source>&amp;X column:</source>
        <translation>&amp;X-Spalte:</translation>
    </message>
    <message>
        <source>&amp;Y columns:</source>
        <translation>&amp;Y-Spalten:</translation>
    </message>
    <message>
        <source>A&amp;ll</source>
        <translation>A&amp;lle</translation>
    </message>
    <message>
        <source>Check all columns, or the first alone</source>
        <translation>Alle Spalten ankreuzen, oder nur die erste</translation>
    </message>
    <message>
        <source>Every column that is checked becomes a data set</source>
        <translation>Jede angekreuzte Spalte wird ein Datensatz</translation>
    </message>
    <message>
        <source>O&amp;K</source>
        <translation>O&amp;K</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>E&amp;rrors of Y:</source>
        <translation>&amp;Fehler von Y:</translation>
    </message>
    <message>
        <source>The column with the standard errors of Y, which are drawn as error bars; Auto takes for each Y column the one that is named after it</source>
        <translation>Die Spalte mit den Standardfehlern von Y, die als Fehlerbalken gezeichnet werden; Auto nimmt für jede Y-Spalte die nach ihr benannte</translation>
    </message>
</context>
<context>
    <name>TxyMark</name>
    <message>
        <source>Mark Editor</source>
        <translation>Markeneditor</translation>
    </message>
    <message>
        <source>&amp;Marks:</source>
        <translation>&amp;Marken:</translation>
    </message>
    <message>
        <source>Marks</source>
        <translation>Marken</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Neu</translation>
    </message>
    <message>
        <source>Add a mark</source>
        <translation>Eine Marke hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Delete the selected mark</source>
        <translation>Die gewählte Marke löschen</translation>
    </message>
    <message>
        <source>C&amp;lear All</source>
        <translation>A&amp;lle löschen</translation>
    </message>
    <message>
        <source>Delete all marks</source>
        <translation>Alle Marken löschen</translation>
    </message>
    <message>
        <source>&amp;Show Marks</source>
        <translation>Marken &amp;zeigen</translation>
    </message>
    <message>
        <source>Draw the marks on the graph</source>
        <translation>Die Marken im Diagramm zeichnen</translation>
    </message>
    <message>
        <source>&amp;Type:</source>
        <translation>A&amp;rt:</translation>
    </message>
    <message>
        <source>Vertical Line</source>
        <translation>Senkrechte Linie</translation>
    </message>
    <message>
        <source>Horizontal Line</source>
        <translation>Waagrechte Linie</translation>
    </message>
    <message>
        <source>Point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <source>Stat&amp;us:</source>
        <translation>Z&amp;ustand:</translation>
    </message>
    <message>
        <source>Draw in X and Y</source>
        <translation>In X und Y zeichnen</translation>
    </message>
    <message>
        <source>Draw in X and Y2</source>
        <translation>In X und Y2 zeichnen</translation>
    </message>
    <message>
        <source>Do not Draw</source>
        <translation>Nicht zeichnen</translation>
    </message>
    <message>
        <source>Te&amp;xt:</source>
        <translation>Te&amp;xt:</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Origin X = </source>
        <translation>Anfang X = </translation>
    </message>
    <message>
        <source>Origin Y = </source>
        <translation>Anfang Y = </translation>
    </message>
    <message>
        <source>End X = </source>
        <translation>Ende X = </translation>
    </message>
    <message>
        <source>End Y = </source>
        <translation>Ende Y = </translation>
    </message>
    <message>
        <source>Color:</source>
        <translation>Farbe:</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>&amp;Color...</source>
        <translation>&amp;Farbe...</translation>
    </message>
    <message>
        <source>Choose the color of the mark</source>
        <translation>Die Farbe der Marke wählen</translation>
    </message>
    <message>
        <source>O&amp;K</source>
        <translation>O&amp;K</translation>
    </message>
</context>
<context>
    <name>Txy_SetValues</name>
    <message>
        <source>Set Values</source>
        <translation>Werte setzen</translation>
    </message>
    <message>
        <source>New &amp;Y = </source>
        <translation>Neues &amp;Y = </translation>
    </message>
    <message>
        <source>for example  y - y2</source>
        <translation>zum Beispiel  y - y2</translation>
    </message>
    <message>
        <source>Formula</source>
        <translation>Formel</translation>
    </message>
    <message>
        <source>Rewrite</source>
        <translation>Umschreiben</translation>
    </message>
    <message>
        <source>Points:</source>
        <translation>Punkte:</translation>
    </message>
    <message>
        <source>&amp;All</source>
        <translation>A&amp;lle</translation>
    </message>
    <message>
        <source>&amp;X from</source>
        <translation>&amp;X von</translation>
    </message>
    <message>
        <source>From X</source>
        <translation>Von X</translation>
    </message>
    <message>
        <source>to</source>
        <translation>bis</translation>
    </message>
    <message>
        <source>To X</source>
        <translation>Bis X</translation>
    </message>
    <message>
        <source>&amp;First values:</source>
        <translation>&amp;Erste Werte:</translation>
    </message>
    <message>
        <source>First values</source>
        <translation>Erste Werte</translation>
    </message>
    <message>
        <source>&amp;Variables:</source>
        <translation>&amp;Variablen:</translation>
    </message>
    <message>
        <source>Click to insert the variable into the formula</source>
        <translation>Klicken setzt die Variable in die Formel ein</translation>
    </message>
    <message>
        <source>Variables</source>
        <translation>Variablen</translation>
    </message>
    <message>
        <source>O&amp;K</source>
        <translation>O&amp;K</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
<context>
    <name>lumoplot::TBaselineDialog</name>
    <message>
        <source>Baseline of %1</source>
        <translation>Basislinie von %1</translation>
    </message>
    <message>
        <source>data</source>
        <translation>Daten</translation>
    </message>
    <message>
        <source>baseline</source>
        <translation>Basislinie</translation>
    </message>
    <message>
        <source>result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Click two or more places of the baseline in the plot, or add them to the table. Drag them; the right button takes one away.</source>
        <translation>Klicken Sie zwei oder mehr Stellen der Basislinie im Bild an oder fügen Sie sie der Tabelle hinzu. Sie lassen sich ziehen; die rechte Taste nimmt eine weg.</translation>
    </message>
    <message numerus="yes">
        <source>The baseline goes through %n places.</source>
        <translation>
            <numerusform>Die Basislinie geht durch %n Stellen.</numerusform>
            <numerusform>Die Basislinie geht durch %n Stellen.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 baseline</source>
        <translation>%1 Basislinie</translation>
    </message>
    <message>
        <source>%1 without baseline</source>
        <translation>%1 ohne Basislinie</translation>
    </message>
</context>
<context>
    <name>lumoplot::TCoordsPanel</name>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>Y2</source>
        <translation>Y2</translation>
    </message>
</context>
<context>
    <name>lumoplot::TGraphDocument</name>
    <message>
        <source>Untitled</source>
        <translation>Unbenannt</translation>
    </message>
    <message>
        <source>The template is not used: %1</source>
        <translation>Die Vorlage wird nicht verwendet: %1</translation>
    </message>
    <message>
        <source>recover</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Rows of the grid are no points yet. Edit &gt; Data offers them.</source>
        <translation>Zeilen der Tabelle sind noch keine Punkte. Bearbeiten &gt; Daten bietet sie an.</translation>
    </message>
</context>
<context>
    <name>lumoplot::TGraphMouse</name>
    <message>
        <source>Show &amp;All</source>
        <translation>&amp;Alles zeigen</translation>
    </message>
    <message>
        <source>Zoom &amp;Back</source>
        <translation>Zoom &amp;zurück</translation>
    </message>
    <message>
        <source>&amp;Graph Settings…</source>
        <translation>Dia&amp;grammeinstellungen…</translation>
    </message>
</context>
<context>
    <name>lumoplot::TGraphSettingsDialog</name>
    <message>
        <source>Legend</source>
        <translation>Legende</translation>
    </message>
    <message>
        <source>Data set %1</source>
        <translation>Datensatz %1</translation>
    </message>
    <message>
        <source>name in the legend</source>
        <translation>Name in der Legende</translation>
    </message>
    <message>
        <source>Title and Colours</source>
        <translation>Titel und Farben</translation>
    </message>
    <message>
        <source>All Axes</source>
        <translation>Alle Achsen</translation>
    </message>
    <message>
        <source>Margins</source>
        <translation>Ränder</translation>
    </message>
    <message>
        <source>Data and Paper</source>
        <translation>Daten und Papier</translation>
    </message>
    <message>
        <source>X Axis</source>
        <translation>X-Achse</translation>
    </message>
    <message>
        <source>Y Axis</source>
        <translation>Y-Achse</translation>
    </message>
    <message>
        <source>Second Y Axis</source>
        <translation>Zweite Y-Achse</translation>
    </message>
    <message>
        <source>Save as Style</source>
        <translation>Als Stil speichern</translation>
    </message>
    <message>
        <source>Styles (*.ltp)</source>
        <translation>Stile (*.ltp)</translation>
    </message>
</context>
<context>
    <name>lumoplot::TLinkDialog</name>
    <message>
        <source>F&amp;ollow</source>
        <translation>&amp;Verfolgen</translation>
    </message>
    <message>
        <source>Follow</source>
        <translation>Daten verfolgen</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
</context>
<context>
    <name>lumoplot::TMainWindow</name>
    <message>
        <source>Read &amp;Otherwise…</source>
        <translation>&amp;Anders lesen…</translation>
    </message>
    <message>
        <source>Unsaved changes are not kept: %1</source>
        <translation>Nicht gespeicherte Änderungen werden nicht gesichert: %1</translation>
    </message>
    <message>
        <source>%1 has values that a logarithmic axis can not show</source>
        <translation>%1 hat Werte, die eine logarithmische Achse nicht zeigen kann</translation>
    </message>
    <message>
        <source>%1 has %L2 points: drawing may take a while</source>
        <translation>%1 hat %L2 Punkte: Zeichnen kann dauern</translation>
    </message>
    <message>
        <source>%1 (changes are kept)</source>
        <translation>%1 (Änderungen sind gesichert)</translation>
    </message>
    <message>
        <source>%1 (changes are not kept)</source>
        <translation>%1 (Änderungen sind nicht gesichert)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>The data set is on the clipboard</source>
        <translation>Der Datensatz ist in der Zwischenablage</translation>
    </message>
    <message>
        <source>paste data set</source>
        <translation>Datensatz einfügen</translation>
    </message>
    <message>
        <source>load %1</source>
        <translation>%1 laden</translation>
    </message>
    <message>
        <source>Undone: %1</source>
        <translation>Zurückgenommen: %1</translation>
    </message>
    <message>
        <source>Redone: %1</source>
        <translation>Wiederholt: %1</translation>
    </message>
    <message>
        <source>Open Data</source>
        <translation>Daten öffnen</translation>
    </message>
    <message>
        <source>edit data</source>
        <translation>Daten bearbeiten</translation>
    </message>
    <message>
        <source>Open with Editor</source>
        <translation>Mit dem Editor öffnen</translation>
    </message>
    <message>
        <source>&amp;Other…</source>
        <translation>&amp;Andere…</translation>
    </message>
    <message>
        <source>Apply Style</source>
        <translation>Stil anwenden</translation>
    </message>
    <message>
        <source>apply style %1</source>
        <translation>Stil %1 anwenden</translation>
    </message>
    <message>
        <source>The template reads data from %1.</source>
        <translation>Die Vorlage liest Daten aus %1.</translation>
    </message>
    <message>
        <source>The template reads data from %1 files.</source>
        <translation>Die Vorlage liest Daten aus %1 Dateien.</translation>
    </message>
    <message>
        <source>Which data do you want to see?</source>
        <translation>Welche Daten möchten Sie sehen?</translation>
    </message>
    <message>
        <source>&amp;Other Files…</source>
        <translation>&amp;Andere Dateien…</translation>
    </message>
    <message>
        <source>The &amp;Same</source>
        <translation>&amp;Dieselben</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>&amp;Keine</translation>
    </message>
    <message>
        <source>Data in Place of %1</source>
        <translation>Daten anstelle von %1</translation>
    </message>
    <message>
        <source>load every row</source>
        <translation>jede Zeile laden</translation>
    </message>
    <message>
        <source>load some rows</source>
        <translation>einige Zeilen laden</translation>
    </message>
    <message>
        <source>show legend</source>
        <translation>Legende zeigen</translation>
    </message>
    <message>
        <source>hide legend</source>
        <translation>Legende verstecken</translation>
    </message>
    <message>
        <source>About %1</source>
        <translation>Über %1</translation>
    </message>
    <message>
        <source>&lt;h3&gt;%1 %2&lt;/h3&gt;&lt;p&gt;Plots measurements from text files and opens them in the data editor: baselines, regressions, filters and curve fits.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;%1 %2&lt;/h3&gt;&lt;p&gt;Zeichnet Messwerte aus Textdateien und öffnet sie im Dateneditor: Basislinien, Regressionen, Filter und Kurvenanpassungen.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>The graph %1 has been changed.</source>
        <translation>Das Diagramm %1 wurde geändert.</translation>
    </message>
    <message>
        <source>Do you want to save the changes?</source>
        <translation>Möchten Sie die Änderungen speichern?</translation>
    </message>
    <message>
        <source>Save Graph</source>
        <translation>Diagramm speichern</translation>
    </message>
    <message>
        <source>Saving…</source>
        <translation>Speichern…</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>%1 gespeichert</translation>
    </message>
    <message>
        <source>New from Template</source>
        <translation>Neu aus Vorlage</translation>
    </message>
    <message>
        <source>Open Graph</source>
        <translation>Diagramm öffnen</translation>
    </message>
    <message>
        <source>Save as Template</source>
        <translation>Als Vorlage speichern</translation>
    </message>
    <message>
        <source>%1 pictures (*.%2)</source>
        <translation>%1-Bilder (*.%2)</translation>
    </message>
    <message>
        <source>Export Picture</source>
        <translation>Bild exportieren</translation>
    </message>
    <message>
        <source>The picture is on the clipboard</source>
        <translation>Das Bild ist in der Zwischenablage</translation>
    </message>
    <message>
        <source>La&amp;nguage</source>
        <translation>S&amp;prache</translation>
    </message>
    <message>
        <source>The language changes when the program is started again</source>
        <translation>Die Sprache wechselt beim nächsten Start des Programms</translation>
    </message>
    <message>
        <source>&amp;Transform</source>
        <translation>&amp;Umformen</translation>
    </message>
    <message>
        <source>Work out a new curve of the current data set, with a preview</source>
        <translation>Eine neue Kurve aus dem aktuellen Datensatz berechnen, mit Vorschau</translation>
    </message>
    <message>
        <source>&amp;Baseline…</source>
        <translation>&amp;Basislinie…</translation>
    </message>
    <message>
        <source>Take a baseline through clicked places off the current data set, with a preview</source>
        <translation>Eine Basislinie durch angeklickte Stellen vom aktuellen Datensatz abziehen, mit Vorschau</translation>
    </message>
    <message>
        <source>Merg&amp;e…</source>
        <translation>&amp;Zusammenfügen…</translation>
    </message>
    <message>
        <source>Add the points of another data set to the current one</source>
        <translation>Die Punkte eines anderen Datensatzes zum aktuellen hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Peaks…</source>
        <translation>&amp;Peaks…</translation>
    </message>
    <message>
        <source>P&amp;anels</source>
        <translation>&amp;Teilbilder</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>Zusammenfügen</translation>
    </message>
    <message>
        <source>Add to %1 the points of:</source>
        <translation>Zu %1 die Punkte hinzufügen von:</translation>
    </message>
    <message>
        <source>follow %1</source>
        <translation>%1 verfolgen</translation>
    </message>
    <message>
        <source>plot %1</source>
        <translation>%1 zeichnen</translation>
    </message>
    <message>
        <source>List the peaks of the current data set, mark and fit them</source>
        <translation>Die Peaks des aktuellen Datensatzes auflisten, markieren und anpassen</translation>
    </message>
</context>
<context>
    <name>lumoplot::TMarksSheet</name>
    <message>
        <source>Marks</source>
        <translation>Marken</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>Marke</translation>
    </message>
    <message>
        <source>&amp;New Mark</source>
        <translation>&amp;Neue Marke</translation>
    </message>
    <message>
        <source>&amp;Delete Mark</source>
        <translation>Marke &amp;löschen</translation>
    </message>
</context>
<context>
    <name>lumoplot::TModelTexts</name>
    <message>
        <source>errors of Y of %1</source>
        <translation>Fehler von Y von %1</translation>
    </message>
    <message>
        <source>rename to %1</source>
        <translation>Umbenennen in %1</translation>
    </message>
    <message>
        <source>load %1</source>
        <translation>%1 laden</translation>
    </message>
    <message>
        <source>recover</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>add data set</source>
        <translation>Datensatz hinzufügen</translation>
    </message>
    <message>
        <source>delete data set %1</source>
        <translation>Datensatz %1 löschen</translation>
    </message>
    <message>
        <source>duplicate %1</source>
        <translation>%1 duplizieren</translation>
    </message>
    <message>
        <source>move %1 to the front</source>
        <translation>%1 nach vorn</translation>
    </message>
    <message>
        <source>sort data sets</source>
        <translation>Datensätze sortieren</translation>
    </message>
    <message>
        <source>reverse data sets</source>
        <translation>Datensätze umkehren</translation>
    </message>
    <message>
        <source>fit of %1: %2</source>
        <translation>Anpassung von %1: %2</translation>
    </message>
    <message>
        <source>generate %1 points</source>
        <translation>%1 Punkte erzeugen</translation>
    </message>
    <message>
        <source>function of %1: %2</source>
        <translation>Funktion von %1: %2</translation>
    </message>
    <message>
        <source>function of %1</source>
        <translation>Funktion von %1</translation>
    </message>
    <message>
        <source>X format of %1</source>
        <translation>X-Format von %1</translation>
    </message>
    <message>
        <source>set values of %1</source>
        <translation>Werte setzen von %1</translation>
    </message>
    <message>
        <source>edit points</source>
        <translation>Punkte bearbeiten</translation>
    </message>
    <message>
        <source>paste points</source>
        <translation>Punkte einfügen</translation>
    </message>
    <message>
        <source>insert rows</source>
        <translation>Zeilen einfügen</translation>
    </message>
    <message>
        <source>delete rows</source>
        <translation>Zeilen löschen</translation>
    </message>
    <message>
        <source>clear cells</source>
        <translation>Zellen leeren</translation>
    </message>
    <message>
        <source>apply filter to %1</source>
        <translation>%1 filtern</translation>
    </message>
    <message>
        <source>new sheet</source>
        <translation>neue Tabelle</translation>
    </message>
    <message>
        <source>rename sheet %1</source>
        <translation>Tabelle %1 umbenennen</translation>
    </message>
    <message>
        <source>delete sheet %1</source>
        <translation>Tabelle %1 löschen</translation>
    </message>
    <message>
        <source>add point to %1</source>
        <translation>Punkt zu %1 hinzufügen</translation>
    </message>
    <message>
        <source>move point of %1</source>
        <translation>Punkt von %1 verschieben</translation>
    </message>
    <message>
        <source>delete point of %1</source>
        <translation>Punkt von %1 löschen</translation>
    </message>
    <message>
        <source>regression of %1</source>
        <translation>Regression von %1</translation>
    </message>
    <message>
        <source>regression line of %1</source>
        <translation>Regressionslinie von %1</translation>
    </message>
    <message>
        <source>regression colour of %1</source>
        <translation>Regressionsfarbe von %1</translation>
    </message>
    <message>
        <source>bounds of %1</source>
        <translation>Grenzen von %1</translation>
    </message>
    <message>
        <source>bounds colour of %1</source>
        <translation>Grenzenfarbe von %1</translation>
    </message>
    <message>
        <source>automatic name of %1</source>
        <translation>automatischer Name von %1</translation>
    </message>
    <message>
        <source>show all data sets with %1</source>
        <translation>alle Datensätze mit %1 zeigen</translation>
    </message>
    <message>
        <source>hide others than %1</source>
        <translation>andere als %1 verbergen</translation>
    </message>
    <message>
        <source>show %1</source>
        <translation>%1 zeigen</translation>
    </message>
    <message>
        <source>hide %1</source>
        <translation>%1 verbergen</translation>
    </message>
    <message>
        <source>Y axis of %1</source>
        <translation>Y-Achse von %1</translation>
    </message>
    <message>
        <source>automatic baseline of %1</source>
        <translation>automatische Basislinie von %1</translation>
    </message>
    <message>
        <source>baseline of %1</source>
        <translation>Basislinie von %1</translation>
    </message>
    <message>
        <source>slope of %1</source>
        <translation>Steigung von %1</translation>
    </message>
    <message>
        <source>baseline from mark of %1</source>
        <translation>Basislinie aus Marke von %1</translation>
    </message>
    <message>
        <source>point shape of %1</source>
        <translation>Punktform von %1</translation>
    </message>
    <message>
        <source>line style of %1</source>
        <translation>Linienart von %1</translation>
    </message>
    <message>
        <source>filling of points of %1</source>
        <translation>Füllung der Punkte von %1</translation>
    </message>
    <message>
        <source>point size of %1</source>
        <translation>Punktgröße von %1</translation>
    </message>
    <message>
        <source>point border of %1</source>
        <translation>Punktrand von %1</translation>
    </message>
    <message>
        <source>line width of %1</source>
        <translation>Linienbreite von %1</translation>
    </message>
    <message>
        <source>point colour of %1</source>
        <translation>Punktfarbe von %1</translation>
    </message>
    <message>
        <source>line colour of %1</source>
        <translation>Linienfarbe von %1</translation>
    </message>
    <message>
        <source>style of %1 data sets from %2</source>
        <translation>Stil von %1 Datensätzen nach %2</translation>
    </message>
    <message>
        <source>kind of source of %1</source>
        <translation>Art der Quelle von %1</translation>
    </message>
    <message>
        <source>source of %1</source>
        <translation>Quelle von %1</translation>
    </message>
    <message>
        <source>data directory of %1</source>
        <translation>Datenordner von %1</translation>
    </message>
    <message>
        <source>choose source of %1</source>
        <translation>Quelle wählen von %1</translation>
    </message>
    <message>
        <source>reload %1</source>
        <translation>%1 neu laden</translation>
    </message>
    <message>
        <source>reading of %1</source>
        <translation>Lesart von %1</translation>
    </message>
    <message>
        <source>keep all points of %1</source>
        <translation>alle Punkte behalten von %1</translation>
    </message>
    <message>
        <source>text options of %1</source>
        <translation>Textoptionen von %1</translation>
    </message>
    <message>
        <source>fit of %1</source>
        <translation>Anpassung von %1</translation>
    </message>
    <message>
        <source>fit %1</source>
        <translation>%1 anpassen</translation>
    </message>
    <message>
        <source>curve of %1</source>
        <translation>Kurve von %1</translation>
    </message>
    <message>
        <source>curve width</source>
        <translation>Kurvenbreite</translation>
    </message>
    <message>
        <source>curve colour</source>
        <translation>Kurvenfarbe</translation>
    </message>
    <message>
        <source>better minimum of %1</source>
        <translation>besseres Minimum von %1</translation>
    </message>
    <message>
        <source>generate points of %1</source>
        <translation>Punkte erzeugen von %1</translation>
    </message>
    <message>
        <source>start values of %1</source>
        <translation>Startwerte von %1</translation>
    </message>
    <message>
        <source>minimum of %1</source>
        <translation>Minimum von %1</translation>
    </message>
    <message>
        <source>data sets of parameters</source>
        <translation>Datensätze von Parametern</translation>
    </message>
    <message>
        <source>fits of data sets</source>
        <translation>Anpassungen von Datensätzen</translation>
    </message>
    <message>
        <source>edit fit of %1</source>
        <translation>Anpassung bearbeiten von %1</translation>
    </message>
    <message>
        <source>make %1 manual</source>
        <translation>%1 von Hand bearbeiten</translation>
    </message>
    <message>
        <source>Undone: %1</source>
        <translation>Zurückgenommen: %1</translation>
    </message>
    <message>
        <source>Redone: %1</source>
        <translation>Wiederholt: %1</translation>
    </message>
    <message>
        <source>Discard the changes?</source>
        <translation>Die Änderungen verwerfen?</translation>
    </message>
    <message>
        <source>Discard the changes?
%1 step: %2</source>
        <translation>Die Änderungen verwerfen?
%1 Schritt: %2</translation>
    </message>
    <message>
        <source>Discard the changes?
%1 steps, last: %2</source>
        <translation>Die Änderungen verwerfen?
%1 Schritte, zuletzt: %2</translation>
    </message>
    <message>
        <source>There is no DataSet selected</source>
        <translation>Kein Datensatz ist gewählt</translation>
    </message>
    <message>
        <source>Delete DataSet  &quot;%1&quot;  permanently?</source>
        <translation>Datensatz „%1“ endgültig löschen?</translation>
    </message>
    <message>
        <source>File &quot;%1&quot; exists. Overwrite?</source>
        <translation>Die Datei „%1“ gibt es schon. Überschreiben?</translation>
    </message>
    <message>
        <source>Data from Current DataSet Will be lost, Continue?</source>
        <translation>Die Daten des aktuellen Datensatzes gehen verloren. Fortfahren?</translation>
    </message>
    <message>
        <source>Clear All Marks?</source>
        <translation>Alle Marken löschen?</translation>
    </message>
    <message>
        <source>Fail to Apply Filter</source>
        <translation>Der Filter konnte nicht angewandt werden</translation>
    </message>
    <message>
        <source>The points are those of the curve now: their errors of Y are gone.</source>
        <translation>Die Punkte sind jetzt die der Kurve: ihre Fehler von Y sind weg.</translation>
    </message>
    <message>
        <source>The points are others now: their errors of Y are gone.</source>
        <translation>Die Punkte sind jetzt andere: ihre Fehler von Y sind weg.</translation>
    </message>
    <message>
        <source>Can not read file %1</source>
        <translation>Die Datei %1 kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>Can not save to file %1</source>
        <translation>In die Datei %1 kann nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Can not open file %1</source>
        <translation>Die Datei %1 kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Stream read Error</source>
        <translation>Lesefehler im Datenstrom</translation>
    </message>
    <message>
        <source>The recovery file is damaged</source>
        <translation>Die Wiederherstellungsdatei ist beschädigt</translation>
    </message>
    <message>
        <source>Not a valid graph file</source>
        <translation>Keine gültige Diagrammdatei</translation>
    </message>
    <message>
        <source>Not a valid graph file: %1</source>
        <translation>Keine gültige Diagrammdatei: %1</translation>
    </message>
    <message>
        <source>Wrong Graph version</source>
        <translation>Falsche Version des Diagramms</translation>
    </message>
    <message>
        <source>Wrong File Format!</source>
        <translation>Falsches Dateiformat!</translation>
    </message>
    <message>
        <source>%1 is not a data-set file. Choose one that was exported as .lds</source>
        <translation>%1 ist keine Datensatzdatei. Eine wählen, die als .lds exportiert wurde</translation>
    </message>
    <message>
        <source>%1 is not a function file. Choose one that was saved as .lfn</source>
        <translation>%1 ist keine Funktionsdatei. Eine wählen, die als .lfn gespeichert wurde</translation>
    </message>
    <message>
        <source>There are no points</source>
        <translation>Es gibt keine Punkte</translation>
    </message>
    <message>
        <source>There are no points to fit</source>
        <translation>Es gibt keine Punkte zum Anpassen</translation>
    </message>
    <message>
        <source>There are no points between the margins</source>
        <translation>Zwischen den Rändern liegen keine Punkte</translation>
    </message>
    <message>
        <source>There is no equation to fit</source>
        <translation>Es gibt keine Gleichung zum Anpassen</translation>
    </message>
    <message>
        <source>There is no equation to generate points from</source>
        <translation>Es gibt keine Gleichung, um Punkte zu erzeugen</translation>
    </message>
    <message>
        <source>There are fewer points than varied parameters</source>
        <translation>Es gibt weniger Punkte als freie Parameter</translation>
    </message>
    <message>
        <source>No parameter is varied</source>
        <translation>Kein Parameter ist frei</translation>
    </message>
    <message>
        <source>All X are equal</source>
        <translation>Alle X sind gleich</translation>
    </message>
    <message>
        <source>All Y are equal</source>
        <translation>Alle Y sind gleich</translation>
    </message>
    <message>
        <source>There is no formula</source>
        <translation>Es gibt keine Formel</translation>
    </message>
    <message>
        <source>Unequal brackets</source>
        <translation>Ungleiche Klammern</translation>
    </message>
    <message>
        <source>Unknown name %1</source>
        <translation>Unbekannter Name %1</translation>
    </message>
    <message>
        <source>Syntax error in expression %1</source>
        <translation>Syntaxfehler im Ausdruck %1</translation>
    </message>
    <message>
        <source>Too many arguments</source>
        <translation>Zu viele Argumente</translation>
    </message>
    <message>
        <source>Can not find operand/function</source>
        <translation>Operand oder Funktion nicht gefunden</translation>
    </message>
    <message>
        <source>The printer can not be used</source>
        <translation>Der Drucker kann nicht benutzt werden</translation>
    </message>
    <message>
        <source>No point lies in the range</source>
        <translation>Kein Punkt liegt im Bereich</translation>
    </message>
    <message>
        <source>The range ends before it begins</source>
        <translation>Der Bereich endet, bevor er beginnt</translation>
    </message>
    <message>
        <source>Both numbers are needed</source>
        <translation>Beide Zahlen werden gebraucht</translation>
    </message>
    <message>
        <source>A factor must not be 0</source>
        <translation>Ein Faktor darf nicht 0 sein</translation>
    </message>
    <message>
        <source>A baseline needs two points or more</source>
        <translation>Eine Basislinie braucht zwei oder mehr Punkte</translation>
    </message>
    <message>
        <source>Two points of the baseline have the same X</source>
        <translation>Zwei Punkte der Basislinie haben dasselbe X</translation>
    </message>
    <message>
        <source>The number of neighbours must be odd</source>
        <translation>Die Zahl der Nachbarn muss ungerade sein</translation>
    </message>
    <message>
        <source>The degree must be below the number of neighbours</source>
        <translation>Der Grad muss unter der Zahl der Nachbarn liegen</translation>
    </message>
    <message>
        <source>There is no data set on the clipboard</source>
        <translation>In der Zwischenablage ist kein Datensatz</translation>
    </message>
    <message>
        <source>There is no peak to fit</source>
        <translation>Es gibt keinen Peak zum Anpassen</translation>
    </message>
    <message>
        <source>A panel of its own needs a second data set in the graph</source>
        <translation>Ein eigenes Feld braucht einen zweiten Datensatz im Diagramm</translation>
    </message>
    <message>
        <source>The standard error of Y must be a number above 0</source>
        <translation>Der Standardfehler von Y muss eine Zahl über 0 sein</translation>
    </message>
    <message>
        <source>The percentage of Y must be a number above 0</source>
        <translation>Der Prozentsatz von Y muss eine Zahl über 0 sein</translation>
    </message>
    <message>
        <source>There is nothing to follow: name a file, a pipe or a line</source>
        <translation>Es gibt nichts zu verfolgen: eine Datei, eine Pipe oder eine Leitung nennen</translation>
    </message>
    <message>
        <source>Following %1: %2 rows</source>
        <translation>Folgt %1: %2 Zeilen</translation>
    </message>
    <message>
        <source>Following %1: no rows with numbers yet</source>
        <translation>Folgt %1: noch keine Zeilen mit Zahlen</translation>
    </message>
    <message>
        <source>Ended: %1</source>
        <translation>Beendet: %1</translation>
    </message>
    <message>
        <source>Paused: %1</source>
        <translation>Angehalten: %1</translation>
    </message>
    <message>
        <source>%1. Trying again in %2 s</source>
        <translation>%1. Neuer Versuch in %2 s</translation>
    </message>
    <message>
        <source>%1 is not a valid floating point value</source>
        <translation>%1 ist keine gültige Zahl</translation>
    </message>
    <message>
        <source>X is empty</source>
        <translation>X ist leer</translation>
    </message>
    <message>
        <source>Y is empty</source>
        <translation>Y ist leer</translation>
    </message>
    <message>
        <source>X must be a finite number</source>
        <translation>X muss eine endliche Zahl sein</translation>
    </message>
    <message>
        <source>The error of Y must be a number above 0</source>
        <translation>Der Fehler von Y muss eine Zahl über 0 sein</translation>
    </message>
    <message>
        <source>Row %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>row %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>No sheet is offered by the application that holds this graph</source>
        <translation>Das Programm mit diesem Diagramm bietet keine Tabelle an</translation>
    </message>
</context>
<context>
    <name>lumoplot::TPanelsMenu</name>
    <message>
        <source>Add &amp;Inset</source>
        <translation>&amp;Nebenbild hinzufügen</translation>
    </message>
    <message>
        <source>Drag a rectangle for a small graph of the same data</source>
        <translation>Ein Rechteck für ein kleines Diagramm derselben Daten aufziehen</translation>
    </message>
    <message>
        <source>&amp;Stack Current Data Set Below</source>
        <translation>Aktuellen Datensatz darunter &amp;stapeln</translation>
    </message>
    <message>
        <source>Give the current data set a panel of its own with the same X axis</source>
        <translation>Dem aktuellen Datensatz ein eigenes Teilbild mit derselben X-Achse geben</translation>
    </message>
    <message>
        <source>&amp;Align Frames</source>
        <translation>&amp;Rahmen ausrichten</translation>
    </message>
    <message>
        <source>Let the plots of stacked panels begin and end below one another</source>
        <translation>Die Zeichenflächen gestapelter Teilbilder untereinander beginnen und enden lassen</translation>
    </message>
    <message>
        <source>&amp;Remove Panel</source>
        <translation>Teilbild &amp;entfernen</translation>
    </message>
    <message>
        <source>Drag a rectangle for the inset; Return puts it into the upper right corner</source>
        <translation>Ein Rechteck für das Nebenbild aufziehen; die Eingabetaste setzt es in die rechte obere Ecke</translation>
    </message>
    <message>
        <source>add inset</source>
        <translation>Nebenbild hinzufügen</translation>
    </message>
    <message>
        <source>panel for %1</source>
        <translation>Teilbild für %1</translation>
    </message>
    <message>
        <source>align frames</source>
        <translation>Rahmen ausrichten</translation>
    </message>
    <message>
        <source>remove panel</source>
        <translation>Teilbild entfernen</translation>
    </message>
    <message>
        <source>&amp;%1: %2</source>
        <translation>&amp;%1: %2</translation>
    </message>
</context>
<context>
    <name>lumoplot::TPeaksDialog</name>
    <message>
        <source>Curve with its peaks</source>
        <translation>Kurve mit ihren Peaks</translation>
    </message>
    <message>
        <source>peaks</source>
        <translation>Peaks</translation>
    </message>
</context>
<context>
    <name>lumoplot::TPictureExportDialog</name>
    <message>
        <source>&amp;Save…</source>
        <translation>&amp;Speichern…</translation>
    </message>
    <message>
        <source>%1 × %2 mm</source>
        <translation>%1 × %2 mm</translation>
    </message>
    <message>
        <source>%1 × %2 pixels, %3</source>
        <translation>%1 × %2 Pixel, %3</translation>
    </message>
    <message>
        <source>; texts at %L1 % of their size</source>
        <translation>; Texte in %L1 % ihrer Größe</translation>
    </message>
</context>
<context>
    <name>lumoplot::TRecentFiles</name>
    <message>
        <source>&amp;Clear List</source>
        <translation>Liste &amp;leeren</translation>
    </message>
</context>
<context>
    <name>lumoplot::TRecoveryDialog</name>
    <message>
        <source>%1

The file: %2</source>
        <translation>%1

Die Datei: %2</translation>
    </message>
    <message>
        <source>Not readable</source>
        <translation>Nicht lesbar</translation>
    </message>
    <message>
        <source>Data editor: %1</source>
        <translation>Dateneditor: %1</translation>
    </message>
    <message>
        <source>Untitled</source>
        <translation>Unbenannt</translation>
    </message>
    <message>
        <source>Remove these changes for good?</source>
        <translation>Diese Änderungen endgültig entfernen?</translation>
    </message>
    <message>
        <source>a cell that was being typed</source>
        <translation>eine Zelle, in die gerade getippt wurde</translation>
    </message>
    <message>
        <source>1 step</source>
        <translation>1 Schritt</translation>
    </message>
    <message>
        <source>%1 steps</source>
        <translation>%1 Schritte</translation>
    </message>
    <message>
        <source>, last: %1</source>
        <translation>, zuletzt: %1</translation>
    </message>
    <message>
        <source>never saved</source>
        <translation>nie gespeichert</translation>
    </message>
    <message>
        <source>Left in the data editor, which OK had not closed yet</source>
        <translation>Aus dem Dateneditor, den noch kein OK geschlossen hatte</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>Datei: %1</translation>
    </message>
    <message>
        <source>Kept: %1 by %2</source>
        <translation>Gesichert: %1 von %2</translation>
    </message>
    <message>
        <source>Changes: </source>
        <translation>Änderungen: </translation>
    </message>
    <message>
        <source>With rows of the grid that are no points yet</source>
        <translation>Mit Zeilen der Tabelle, die noch keine Punkte sind</translation>
    </message>
    <message>
        <source>No data sets</source>
        <translation>Keine Datensätze</translation>
    </message>
    <message>
        <source>Data sets:</source>
        <translation>Datensätze:</translation>
    </message>
</context>
<context>
    <name>lumoplot::TRecoveryWriter</name>
    <message>
        <source>%1 (%2 points)</source>
        <translation>%1 (%2 Punkte)</translation>
    </message>
</context>
<context>
    <name>lumoplot::TServerDialog</name>
    <message>
        <source>Co&amp;nnect</source>
        <translation>&amp;Verbinden</translation>
    </message>
    <message>
        <source>&amp;Data source:</source>
        <translation>&amp;Datenquelle:</translation>
    </message>
    <message>
        <source>&amp;Database:</source>
        <translation>&amp;Datenbank:</translation>
    </message>
    <message>
        <source>its name, or DRIVER=…;…</source>
        <translation>ihr Name oder DRIVER=…;…</translation>
    </message>
</context>
<context>
    <name>lumoplot::TSheetModel</name>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>edit sheet</source>
        <translation>Tabelle bearbeiten</translation>
    </message>
</context>
<context>
    <name>lumoplot::TSheetWindow</name>
    <message>
        <source>insert rows</source>
        <translation>Zeilen einfügen</translation>
    </message>
    <message>
        <source>delete rows</source>
        <translation>Zeilen löschen</translation>
    </message>
    <message>
        <source>insert column</source>
        <translation>Spalte einfügen</translation>
    </message>
    <message>
        <source>delete columns</source>
        <translation>Spalten löschen</translation>
    </message>
    <message>
        <source>Rename Sheet</source>
        <translation>Tabelle umbenennen</translation>
    </message>
    <message>
        <source>Name of the sheet:</source>
        <translation>Name der Tabelle:</translation>
    </message>
    <message>
        <source>Import CSV</source>
        <translation>CSV importieren</translation>
    </message>
    <message>
        <source>import %1</source>
        <translation>%1 importieren</translation>
    </message>
    <message>
        <source>Export CSV</source>
        <translation>CSV exportieren</translation>
    </message>
    <message>
        <source>paste cells</source>
        <translation>Zellen einfügen</translation>
    </message>
    <message>
        <source>clear cells</source>
        <translation>Zellen leeren</translation>
    </message>
    <message>
        <source>CSV and text (*.csv *.txt *.tsv);;All files (*)</source>
        <translation>CSV und Text (*.csv *.txt *.tsv);;Alle Dateien (*)</translation>
    </message>
</context>
<context>
    <name>lumoplot::TSidePlot</name>
    <message>
        <source>Plot</source>
        <translation>Bild</translation>
    </message>
</context>
<context>
    <name>lumoplot::TStartPage</name>
    <message>
        <source>How do you want to begin?</source>
        <translation>Wie möchten Sie beginnen?</translation>
    </message>
    <message>
        <source>O&amp;pen Data…</source>
        <translation>Daten ö&amp;ffnen…</translation>
    </message>
    <message>
        <source>Text files with columns; or drop them here.</source>
        <translation>Textdateien mit Spalten; oder legen Sie sie hier ab.</translation>
    </message>
    <message>
        <source>Open &amp;Graph…</source>
        <translation>Dia&amp;gramm öffnen…</translation>
    </message>
    <message>
        <source>A graph that was saved before.</source>
        <translation>Ein früher gespeichertes Diagramm.</translation>
    </message>
    <message>
        <source>Try the E&amp;xample</source>
        <translation>Beis&amp;piel ausprobieren</translation>
    </message>
    <message>
        <source>A graph to play with.</source>
        <translation>Ein Diagramm zum Ausprobieren.</translation>
    </message>
</context>
<context>
    <name>lumoplot::TTexts</name>
    <message>
        <source>The number must be above 0</source>
        <translation>Die Zahl muss über 0 liegen</translation>
    </message>
    <message>
        <source>The number must be finite</source>
        <translation>Die Zahl muss endlich sein</translation>
    </message>
    <message>
        <source>Color </source>
        <translation>Farbe </translation>
    </message>
    <message>
        <source>Select Color</source>
        <translation>Farbe wählen</translation>
    </message>
    <message>
        <source> The points are %1; Apply reads every row.</source>
        <translation> Die Punkte sind %1; Anwenden liest jede Zeile.</translation>
    </message>
    <message>
        <source> Apply works on the points as they are plotted and gives them X values of their own.</source>
        <translation> Anwenden arbeitet mit den Punkten, wie sie gezeichnet sind, und gibt ihnen eigene X-Werte.</translation>
    </message>
    <message>
        <source>The band lies above every frequency of the samples.</source>
        <translation>Das Band liegt über jeder Frequenz der Abtastwerte.</translation>
    </message>
    <message>
        <source> Warning: that is no signal any more; switch &quot;Normalize Output&quot; off.</source>
        <translation> Warnung: Das ist kein Signal mehr; schalten Sie „Ausgabe normieren“ aus.</translation>
    </message>
    <message>
        <source>There are too few points for a sample: nothing can be filtered.</source>
        <translation>Zu wenige Punkte für einen Abtastwert: Nichts kann gefiltert werden.</translation>
    </message>
    <message>
        <source>sample</source>
        <translation>Abtastwert</translation>
    </message>
    <message>
        <source>samples</source>
        <translation>Abtastwerte</translation>
    </message>
    <message>
        <source>, %1 apart: frequencies up to %2. </source>
        <translation>, Abstand %1: Frequenzen bis %2. </translation>
    </message>
    <message>
        <source> without spread in X. </source>
        <translation> ohne Ausdehnung in X. </translation>
    </message>
    <message>
        <source>The response is wider than the data: Apply leaves no points.</source>
        <translation>Die Antwort ist breiter als die Daten: Anwenden lässt keine Punkte übrig.</translation>
    </message>
    <message>
        <source>Nothing can be filtered.</source>
        <translation>Nichts kann gefiltert werden.</translation>
    </message>
    <message>
        <source>point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <source>points</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Apply leaves %1.</source>
        <translation>Anwenden lässt %1 übrig.</translation>
    </message>
    <message>
        <source>Apply leaves %1 and multiplies by %2.</source>
        <translation>Anwenden lässt %1 übrig und multipliziert mit %2.</translation>
    </message>
    <message>
        <source>Amplitude</source>
        <translation>Amplitude</translation>
    </message>
    <message>
        <source>Gain</source>
        <translation>Verstärkung</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Graph</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>&amp;General</source>
        <translation>All&amp;gemein</translation>
    </message>
    <message>
        <source>&amp;Data Source</source>
        <translation>&amp;Datenquelle</translation>
    </message>
    <message>
        <source>&amp;Regressions</source>
        <translation>&amp;Regressionen</translation>
    </message>
    <message>
        <source>&amp;Curve Fitting</source>
        <translation>Kurvenanpa&amp;ssung</translation>
    </message>
    <message>
        <source>&amp;FFT Filtering</source>
        <translation>&amp;FFT-Filter</translation>
    </message>
    <message>
        <source>De&amp;lete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Set as Default and Cl&amp;ose</source>
        <translation>Als Standard setzen und schlie&amp;ßen</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>Pre&amp;view</source>
        <translation>&amp;Vorschau</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Load DataSet from File</source>
        <translation>Datensatz aus Datei laden</translation>
    </message>
    <message>
        <source>Save DataSet to File</source>
        <translation>Datensatz in Datei speichern</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Punkte</translation>
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
        <source>C&amp;lear</source>
        <translation>&amp;Leeren</translation>
    </message>
    <message>
        <source>&amp;Insert Rows</source>
        <translation>&amp;Zeilen einfügen</translation>
    </message>
    <message>
        <source>&amp;Delete Rows</source>
        <translation>Zeilen &amp;löschen</translation>
    </message>
    <message>
        <source>1 row</source>
        <translation>1 Zeile</translation>
    </message>
    <message>
        <source>%1 rows</source>
        <translation>%1 Zeilen</translation>
    </message>
    <message>
        <source>, edited</source>
        <translation>, bearbeitet</translation>
    </message>
    <message>
        <source>Error of Y</source>
        <translation>Fehler von Y</translation>
    </message>
    <message>
        <source>X (date and time)</source>
        <translation>X (Datum und Zeit)</translation>
    </message>
    <message>
        <source>The commas were read as decimal signs.</source>
        <translation>Die Kommas wurden als Dezimalzeichen gelesen.</translation>
    </message>
    <message>
        <source>The commas were read as groups of digits.</source>
        <translation>Die Kommas wurden als Zifferngruppen gelesen.</translation>
    </message>
    <message>
        <source>The number of points must lie between 1 and %1</source>
        <translation>Die Zahl der Punkte muss zwischen 1 und %1 liegen</translation>
    </message>
    <message>
        <source>The curve fit of this data set gives no curve</source>
        <translation>Die Kurvenanpassung dieses Datensatzes gibt keine Kurve</translation>
    </message>
    <message>
        <source>There is no spline while points may share their X</source>
        <translation>Es gibt keinen Spline, solange Punkte dasselbe X haben dürfen</translation>
    </message>
    <message>
        <source>A spline needs two points</source>
        <translation>Ein Spline braucht zwei Punkte</translation>
    </message>
    <message>
        <source>  (before the baseline is subtracted)</source>
        <translation>  (vor Abzug der Basislinie)</translation>
    </message>
    <message>
        <source>Running average of %1 points</source>
        <translation>Gleitendes Mittel über %1 Punkte</translation>
    </message>
    <message>
        <source>Mean of Y: %1, SD: %2, points: %3</source>
        <translation>Mittel von Y: %1, SD: %2, Punkte: %3</translation>
    </message>
    <message>
        <source>Value not used</source>
        <translation>Wert unbenutzt</translation>
    </message>
    <message>
        <source>Number of Points:</source>
        <translation>Zahl der Punkte:</translation>
    </message>
    <message>
        <source>Gradient at ends:</source>
        <translation>Steigung am Ende:</translation>
    </message>
    <message>
        <source>Fitting Tension:</source>
        <translation>Spannung:</translation>
    </message>
    <message>
        <source>Alpha value:</source>
        <translation>Alpha:</translation>
    </message>
    <message>
        <source>Same Style</source>
        <translation>Gleicher Stil</translation>
    </message>
    <message>
        <source>&amp;Data sets that become like %1 (Ctrl+A for all):</source>
        <translation>&amp;Datensätze, die wie %1 werden (Strg+A für alle):</translation>
    </message>
    <message>
        <source>&amp;Points: shape, size, border, filling</source>
        <translation>&amp;Punkte: Form, Größe, Rand, Füllung</translation>
    </message>
    <message>
        <source>&amp;Lines: style and width</source>
        <translation>&amp;Linien: Art und Breite</translation>
    </message>
    <message>
        <source>&amp;Colours</source>
        <translation>&amp;Farben</translation>
    </message>
    <message>
        <source>Page Data Source: a column, or single ones in its grid</source>
        <translation>Seite Datenquelle: eine Spalte, oder einzelne in der Tabelle</translation>
    </message>
    <message>
        <source>%1 of %2 points have one</source>
        <translation>%1 von %2 Punkten haben einen</translation>
    </message>
    <message>
        <source>A number above 0 is needed</source>
        <translation>Eine Zahl über 0 ist nötig</translation>
    </message>
    <message>
        <source>C&amp;lear All</source>
        <translation>A&amp;lle löschen</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>&amp;Print</source>
        <translation>&amp;Drucken</translation>
    </message>
    <message>
        <source>Print &amp;Selection</source>
        <translation>Au&amp;swahl drucken</translation>
    </message>
    <message>
        <source>Print Pre&amp;view</source>
        <translation>Druck&amp;vorschau</translation>
    </message>
    <message>
        <source>&amp;Word Wrap</source>
        <translation>&amp;Zeilenumbruch</translation>
    </message>
    <message>
        <source>Set &amp;Font</source>
        <translation>&amp;Schrift setzen</translation>
    </message>
    <message>
        <source>Set &amp;Background Color</source>
        <translation>&amp;Hintergrundfarbe setzen</translation>
    </message>
    <message>
        <source>C&amp;lose</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>O&amp;K</source>
        <translation>O&amp;K</translation>
    </message>
    <message>
        <source>Background Color</source>
        <translation>Hintergrundfarbe</translation>
    </message>
    <message>
        <source>Lumoplot Manual</source>
        <translation>Handbuch von Lumoplot</translation>
    </message>
    <message>
        <source>Con&amp;tents</source>
        <translation>&amp;Inhalt</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>Find in this page</source>
        <translation>Auf dieser Seite suchen</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Von Hand</translation>
    </message>
    <message>
        <source>Vert Line X = </source>
        <translation>Senkrechte X = </translation>
    </message>
    <message>
        <source>Hor Line Y = </source>
        <translation>Waagrechte Y = </translation>
    </message>
    <message>
        <source>Point X = </source>
        <translation>Punkt X = </translation>
    </message>
    <message>
        <source>Point Y = </source>
        <translation>Punkt Y = </translation>
    </message>
    <message>
        <source>Point Width</source>
        <translation>Punktbreite</translation>
    </message>
    <message>
        <source>Origin X = </source>
        <translation>Anfang X = </translation>
    </message>
    <message>
        <source>Origin Y = </source>
        <translation>Anfang Y = </translation>
    </message>
    <message>
        <source>End X = </source>
        <translation>Ende X = </translation>
    </message>
    <message>
        <source>End Y = </source>
        <translation>Ende Y = </translation>
    </message>
    <message>
        <source>Peaks of </source>
        <translation>Peaks von </translation>
    </message>
    <message>
        <source>&amp;Least rise, of the range of Y:</source>
        <translation>Kleinster &amp;Anstieg, vom Bereich in Y:</translation>
    </message>
    <message>
        <source>Peaks</source>
        <translation>Peaks</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Lage</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Width at half</source>
        <translation>Halbwertsbreite</translation>
    </message>
    <message>
        <source>Area</source>
        <translation>Fläche</translation>
    </message>
    <message>
        <source>&amp;Copy Table</source>
        <translation>&amp;Tabelle kopieren</translation>
    </message>
    <message>
        <source>&amp;Mark Peaks</source>
        <translation>Peaks &amp;markieren</translation>
    </message>
    <message>
        <source>1 peak</source>
        <translation>1 Peak</translation>
    </message>
    <message>
        <source>%1 peaks</source>
        <translation>%1 Peaks</translation>
    </message>
    <message>
        <source>%1 marks were added</source>
        <translation>%1 Marken wurden hinzugefügt</translation>
    </message>
    <message>
        <source>Type a part of the name</source>
        <translation>Teil des Namens eingeben</translation>
    </message>
    <message>
        <source>Part of the name</source>
        <translation>Teil des Namens</translation>
    </message>
    <message>
        <source>The data set has no points.</source>
        <translation>Der Datensatz hat keine Punkte.</translation>
    </message>
    <message>
        <source>The range ends before it begins.</source>
        <translation>Der Bereich endet, bevor er beginnt.</translation>
    </message>
    <message>
        <source>No point lies in the range: X goes from %1 to %2.</source>
        <translation>Kein Punkt liegt im Bereich: X geht von %1 bis %2.</translation>
    </message>
    <message>
        <source>Not known: %1. Click a variable below to use it.</source>
        <translation>Nicht bekannt: %1. Klicken Sie unten eine Variable an, um sie zu verwenden.</translation>
    </message>
    <message>
        <source>Not known: %1. Click variables below to use them.</source>
        <translation>Nicht bekannt: %1. Klicken Sie unten Variablen an, um sie zu verwenden.</translation>
    </message>
    <message>
        <source>%1 of %2 points</source>
        <translation>%1 von %2 Punkten</translation>
    </message>
    <message>
        <source>; 1 of them has no new value and keeps its Y</source>
        <translation>; 1 davon hat keinen neuen Wert und behält sein Y</translation>
    </message>
    <message>
        <source>; %1 of them have no new value and keep their Y</source>
        <translation>; %1 davon haben keinen neuen Wert und behalten ihr Y</translation>
    </message>
    <message>
        <source> The errors of Y follow the new Y.</source>
        <translation> Die Fehler von Y folgen dem neuen Y.</translation>
    </message>
    <message>
        <source>Set Values of </source>
        <translation>Werte setzen von </translation>
    </message>
    <message>
        <source>New Y</source>
        <translation>Neues Y</translation>
    </message>
    <message>
        <source>X of the point</source>
        <translation>X des Punkts</translation>
    </message>
    <message>
        <source>its Y</source>
        <translation>sein Y</translation>
    </message>
    <message>
        <source>its number, from 1</source>
        <translation>seine Nummer, ab 1</translation>
    </message>
    <message>
        <source>Y of </source>
        <translation>Y von </translation>
    </message>
    <message>
        <source>&amp;Shift</source>
        <translation>&amp;Verschieben</translation>
    </message>
    <message>
        <source>Add to &amp;X:</source>
        <translation>Zu &amp;X addieren:</translation>
    </message>
    <message>
        <source>Add to &amp;Y:</source>
        <translation>Zu &amp;Y addieren:</translation>
    </message>
    <message>
        <source>shifted</source>
        <translation>verschoben</translation>
    </message>
    <message>
        <source>S&amp;cale</source>
        <translation>&amp;Skalieren</translation>
    </message>
    <message>
        <source>Multiply &amp;X by:</source>
        <translation>&amp;X malnehmen mit:</translation>
    </message>
    <message>
        <source>Multiply &amp;Y by:</source>
        <translation>&amp;Y malnehmen mit:</translation>
    </message>
    <message>
        <source>scaled</source>
        <translation>skaliert</translation>
    </message>
    <message>
        <source>&amp;Normalise</source>
        <translation>&amp;Normieren</translation>
    </message>
    <message>
        <source>&amp;Smallest Y becomes:</source>
        <translation>K&amp;leinstes Y wird:</translation>
    </message>
    <message>
        <source>&amp;Largest Y becomes:</source>
        <translation>&amp;Größtes Y wird:</translation>
    </message>
    <message>
        <source>normalised</source>
        <translation>normiert</translation>
    </message>
    <message>
        <source>Cut &amp;Range</source>
        <translation>Bereich ausschnei&amp;den</translation>
    </message>
    <message>
        <source>Keep X &amp;from:</source>
        <translation>X behalten &amp;von:</translation>
    </message>
    <message>
        <source>&amp;to:</source>
        <translation>b&amp;is:</translation>
    </message>
    <message>
        <source>cut</source>
        <translation>Ausschnitt</translation>
    </message>
    <message>
        <source>Resa&amp;mple</source>
        <translation>Neu ab&amp;tasten</translation>
    </message>
    <message>
        <source>&amp;Points at even distances:</source>
        <translation>&amp;Punkte in gleichen Abständen:</translation>
    </message>
    <message>
        <source>resampled</source>
        <translation>abgetastet</translation>
    </message>
    <message>
        <source>&amp;Average</source>
        <translation>&amp;Mitteln</translation>
    </message>
    <message>
        <source>&amp;Neighbours that become one:</source>
        <translation>Na&amp;chbarn, die einer werden:</translation>
    </message>
    <message>
        <source>averaged</source>
        <translation>gemittelt</translation>
    </message>
    <message>
        <source>Smooth: Savitzky-&amp;Golay</source>
        <translation>Glätten: Savitzky-&amp;Golay</translation>
    </message>
    <message>
        <source>&amp;Neighbours (odd):</source>
        <translation>Na&amp;chbarn (ungerade):</translation>
    </message>
    <message>
        <source>&amp;Degree:</source>
        <translation>&amp;Grad:</translation>
    </message>
    <message>
        <source>smoothed</source>
        <translation>geglättet</translation>
    </message>
    <message>
        <source>Smooth: Running Me&amp;dian</source>
        <translation>Glätten: &amp;Laufender Median</translation>
    </message>
    <message>
        <source>median</source>
        <translation>Median</translation>
    </message>
    <message>
        <source>Deri&amp;vative</source>
        <translation>Abl&amp;eitung</translation>
    </message>
    <message>
        <source>derivative</source>
        <translation>Ableitung</translation>
    </message>
    <message>
        <source>&amp;Integral</source>
        <translation>&amp;Integral</translation>
    </message>
    <message>
        <source>From X = </source>
        <translation>Von X = </translation>
    </message>
    <message>
        <source>to X = </source>
        <translation>bis X = </translation>
    </message>
    <message>
        <source>integral</source>
        <translation>Integral</translation>
    </message>
    <message>
        <source>Transform </source>
        <translation>Umformen: </translation>
    </message>
    <message>
        <source> points.</source>
        <translation> Punkte.</translation>
    </message>
    <message>
        <source> The whole integral is %1.</source>
        <translation> Das ganze Integral ist %1.</translation>
    </message>
    <message>
        <source>Shape of the peaks</source>
        <translation>Form der Peaks</translation>
    </message>
    <message>
        <source>Gaussian</source>
        <translation>Gauß</translation>
    </message>
    <message>
        <source>Lorentzian</source>
        <translation>Lorentz</translation>
    </message>
    <message>
        <source>Fit a sum of the selected peaks, or of all, on a baseline</source>
        <translation>Die Summe der gewählten oder aller Peaks auf einer Basislinie anpassen</translation>
    </message>
    <message>
        <source>Compare Procedures for %1</source>
        <translation>Verfahren vergleichen für %1</translation>
    </message>
    <message>
        <source>All four procedures run from the values as they are and from scattered starts.</source>
        <translation>Alle vier Verfahren laufen von den jetzigen Werten und von gestreuten Startwerten aus.</translation>
    </message>
    <message>
        <source>No run has converged.</source>
        <translation>Kein Lauf ist konvergiert.</translation>
    </message>
    <message>
        <source>The points have no standard errors. A column, a constant, a percentage or counting statistics give them some: page General, Errors of Y.</source>
        <translation>Die Punkte haben keine Standardfehler. Eine Spalte, eine Konstante, ein Prozentsatz oder die Zählstatistik geben ihnen welche: Seite Allgemein, Fehler von Y.</translation>
    </message>
    <message>
        <source>Points without a standard error above 0 are left out and counted.</source>
        <translation>Punkte ohne einen Standardfehler über 0 werden ausgelassen und gezählt.</translation>
    </message>
    <message>
        <source>Points far off the curve lose weight; those that count for little are ringed in the plot.</source>
        <translation>Punkte weit neben der Kurve verlieren Gewicht; die, die wenig zählen, sind im Bild eingekreist.</translation>
    </message>
    <message>
        <source>Choose a Curve Fitting Status to draw a function</source>
        <translation>Einen Anpassungsstatus wählen, um eine Funktion zu zeichnen</translation>
    </message>
    <message>
        <source>The function has names without a value</source>
        <translation>Die Funktion hat Namen ohne Wert</translation>
    </message>
    <message>
        <source>LumoPlot Curve Fitting Settings</source>
        <translation>LumoPlot-Einstellungen der Kurvenanpassung</translation>
    </message>
    <message>
        <source>y = %1, from the start values of %2.</source>
        <translation>y = %1, von den Startwerten von %2 aus.</translation>
    </message>
    <message>
        <source>Fit Result of %1</source>
        <translation>Ergebnis der Anpassung von %1</translation>
    </message>
    <message>
        <source>Save Report</source>
        <translation>Bericht speichern</translation>
    </message>
    <message>
        <source>Page (*.html)</source>
        <translation>Seite (*.html)</translation>
    </message>
    <message>
        <source>Text (*.txt)</source>
        <translation>Text (*.txt)</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>No function has all of these words.</source>
        <translation>Keine Funktion hat alle diese Wörter.</translation>
    </message>
    <message>
        <source>Profile: deviation by value</source>
        <translation>Profil: Abweichung über dem Wert</translation>
    </message>
    <message>
        <source>Press Profiles</source>
        <translation>„Profile“ drücken</translation>
    </message>
    <message>
        <source>Bootstrap: resamples by value</source>
        <translation>Bootstrap: Ziehungen über dem Wert</translation>
    </message>
    <message>
        <source>Bootstrap: %1 resamples by value</source>
        <translation>Bootstrap: %1 Ziehungen über dem Wert</translation>
    </message>
    <message>
        <source>Press Bootstrap</source>
        <translation>„Bootstrap“ drücken</translation>
    </message>
    <message>
        <source>DataSet Files (*.lds)|*.lds; *.LDS</source>
        <translation>Datensatzdateien (*.lds)|*.lds; *.LDS</translation>
    </message>
    <message>
        <source>LumoPlot DataSet (*.lds)|*.lds;*.LDS|ASCII Data File (*.dat)|*.dat;*.DAT</source>
        <translation>LumoPlot-Datensatz (*.lds)|*.lds;*.LDS|ASCII-Datendatei (*.dat)|*.dat;*.DAT</translation>
    </message>
    <message>
        <source>Choose the source file</source>
        <translation>Die Quelldatei wählen</translation>
    </message>
    <message>
        <source>Follows %1</source>
        <translation>Folgt %1</translation>
    </message>
    <message>
        <source>Keeps the last %L1 rows</source>
        <translation>Behält die letzten %L1 Zeilen</translation>
    </message>
    <message>
        <source>Keeps the rows of the last %L1 seconds</source>
        <translation>Behält die Zeilen der letzten %L1 Sekunden</translation>
    </message>
    <message>
        <source>Rows go on to come when the editor has closed. Choose… changes what is followed.</source>
        <translation>Zeilen kommen weiter, wenn der Editor geschlossen ist. Wählen… ändert, was verfolgt wird.</translation>
    </message>
    <message>
        <source>%1 points so far.</source>
        <translation>Bisher %1 Punkte.</translation>
    </message>
    <message>
        <source>A data-set file (.lds) brings all its points and all settings of its data set: name, style, baseline, regression and fit.</source>
        <translation>Eine Datensatzdatei (.lds) bringt alle Punkte und alle Einstellungen ihres Datensatzes mit: Name, Stil, Basislinie, Regression und Anpassung.</translation>
    </message>
    <message>
        <source>No sheet is offered by the application that has opened this editor.</source>
        <translation>Das Programm, das diesen Editor geöffnet hat, bietet keine Tabelle an.</translation>
    </message>
    <message>
        <source>%1 points loaded.</source>
        <translation>%1 Punkte geladen.</translation>
    </message>
    <message>
        <source>Table: %1</source>
        <translation>Tabelle: %1</translation>
    </message>
    <message>
        <source>row number</source>
        <translation>Zeilennummer</translation>
    </message>
    <message>
        <source>Choose a table of a database.</source>
        <translation>Eine Tabelle einer Datenbank wählen.</translation>
    </message>
    <message>
        <source>Choose a sheet.</source>
        <translation>Eine Tabelle wählen.</translation>
    </message>
    <message>
        <source>Choose a text file, or drop one here.</source>
        <translation>Eine Textdatei wählen oder hier ablegen.</translation>
    </message>
    <message>
        <source>Auto (%1)</source>
        <translation>Auto (%1)</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>Row number</source>
        <translation>Zeilennummer</translation>
    </message>
    <message>
        <source>By rule</source>
        <translation>Nach Regel</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Suggested: </source>
        <translation>Vorschlag: </translation>
    </message>
    <message>
        <source>Auto: </source>
        <translation>Auto: </translation>
    </message>
    <message>
        <source>(none)</source>
        <translation>(keine)</translation>
    </message>
    <message>
        <source>(row number)</source>
        <translation>(Zeilennummer)</translation>
    </message>
    <message>
        <source>S&amp;top</source>
        <translation>&amp;Unterbrechen</translation>
    </message>
    <message>
        <source>Waiting for the database…</source>
        <translation>Warten auf die Datenbank…</translation>
    </message>
    <message>
        <source>Stopped: nothing was read.</source>
        <translation>Unterbrochen: nichts wurde gelesen.</translation>
    </message>
    <message>
        <source>Choose a database file</source>
        <translation>Eine Datenbankdatei wählen</translation>
    </message>
    <message>
        <source>Databases (*.db *.sqlite *.sqlite3 *.db3 *.dbf *.mdb *.accdb)</source>
        <translation>Datenbanken (*.db *.sqlite *.sqlite3 *.db3 *.dbf *.mdb *.accdb)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Save Connection</source>
        <translation>Verbindung speichern</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>No column of it holds numbers or dates.</source>
        <translation>Keine ihrer Spalten enthält Zahlen oder Daten.</translation>
    </message>
    <message>
        <source>Data set &quot;%1&quot; with %2 points.

It brings all settings of its data set: name, style, baseline, regression and fit.</source>
        <translation>Datensatz „%1“ mit %2 Punkten.

Er bringt alle Einstellungen seines Datensatzes mit: Name, Stil, Basislinie, Regression und Anpassung.</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Check the Y columns to read.</source>
        <translation>Die Y-Spalten ankreuzen, die gelesen werden.</translation>
    </message>
    <message>
        <source>%1 data sets will be read.</source>
        <translation>%1 Datensätze werden gelesen.</translation>
    </message>
    <message>
        <source>In this graph</source>
        <translation>In diesem Diagramm</translation>
    </message>
    <message>
        <source>Sheets</source>
        <translation>Tabellen</translation>
    </message>
    <message>
        <source>In %1</source>
        <translation>In %1</translation>
    </message>
    <message>
        <source>Data Files (%1)</source>
        <translation>Datendateien (%1)</translation>
    </message>
    <message>
        <source>All Files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Browse for a file, or drop one here.</source>
        <translation>Eine Datei suchen oder hier ablegen.</translation>
    </message>
    <message>
        <source>Auto: %1</source>
        <translation>Auto: %1</translation>
    </message>
    <message>
        <source>number</source>
        <translation>Zahl</translation>
    </message>
    <message>
        <source>date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>leer</translation>
    </message>
    <message>
        <source> as read</source>
        <translation> wie gelesen</translation>
    </message>
    <message>
        <source>beyond the columns of the table</source>
        <translation>hinter den Spalten der Tabelle</translation>
    </message>
    <message>
        <source>1 point</source>
        <translation>1 Punkt</translation>
    </message>
    <message>
        <source>%1 points</source>
        <translation>%1 Punkte</translation>
    </message>
    <message>
        <source>%1 from %2</source>
        <translation>%1 aus %2</translation>
    </message>
    <message>
        <source>one of every %1</source>
        <translation>eine von je %1</translation>
    </message>
    <message>
        <source>%1 skipped</source>
        <translation>%1 übersprungen</translation>
    </message>
    <message>
        <source>%1 merged into others with the same X</source>
        <translation>%1 mit anderen gleichen X vereint</translation>
    </message>
    <message>
        <source>Read as %1. The file %2.</source>
        <translation>Gelesen als %1. Die Datei %2.</translation>
    </message>
    <message>
        <source>Also fits: %1</source>
        <translation>Passt auch: %1</translation>
    </message>
    <message>
        <source>Read the file as %1</source>
        <translation>Die Datei lesen als %1</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>Changed since the points were loaded: they are loaded again by Reload, Preview and OK.</source>
        <translation>Seit dem Laden der Punkte geändert: Neu laden, Vorschau und OK laden sie wieder.</translation>
    </message>
    <message>
        <source>&amp;File:</source>
        <translation>&amp;Datei:</translation>
    </message>
    <message>
        <source>a text file that grows or is written anew</source>
        <translation>eine Textdatei, die wächst oder neu geschrieben wird</translation>
    </message>
    <message>
        <source>&amp;Pipe:</source>
        <translation>&amp;Pipe:</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>%1

The password of %2 (it is not saved):</source>
        <translation>%1

Das Passwort von %2 (es wird nicht gespeichert):</translation>
    </message>
    <message>
        <source>Solid</source>
        <translation>Durchgezogen</translation>
    </message>
    <message>
        <source>Dashes</source>
        <translation>Striche</translation>
    </message>
    <message>
        <source>Dots</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Dashes and dots</source>
        <translation>Striche und Punkte</translation>
    </message>
    <message>
        <source>Dashes and two dots</source>
        <translation>Striche und zwei Punkte</translation>
    </message>
    <message>
        <source>Fixed decimals</source>
        <translation>Feste Dezimalen</translation>
    </message>
    <message>
        <source>Exponent</source>
        <translation>Exponent</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>Minutes</source>
        <translation>Minuten</translation>
    </message>
    <message>
        <source>5 minutes</source>
        <translation>5 Minuten</translation>
    </message>
    <message>
        <source>Half hours</source>
        <translation>Halbe Stunden</translation>
    </message>
    <message>
        <source>Hours</source>
        <translation>Stunden</translation>
    </message>
    <message>
        <source>Days</source>
        <translation>Tage</translation>
    </message>
    <message>
        <source>Weeks</source>
        <translation>Wochen</translation>
    </message>
    <message>
        <source>Months</source>
        <translation>Monate</translation>
    </message>
    <message>
        <source>2 months</source>
        <translation>2 Monate</translation>
    </message>
    <message>
        <source>Quarters</source>
        <translation>Quartale</translation>
    </message>
    <message>
        <source>Years</source>
        <translation>Jahre</translation>
    </message>
    <message>
        <source>Decades</source>
        <translation>Jahrzehnte</translation>
    </message>
    <message>
        <source>Centuries</source>
        <translation>Jahrhunderte</translation>
    </message>
    <message>
        <source>By the step</source>
        <translation>Nach dem Schritt</translation>
    </message>
    <message>
        <source>At the minimum</source>
        <translation>Am Minimum</translation>
    </message>
    <message>
        <source>At the maximum</source>
        <translation>Am Maximum</translation>
    </message>
    <message>
        <source>At a percentage</source>
        <translation>Bei einem Prozentsatz</translation>
    </message>
    <message>
        <source>At a value</source>
        <translation>Bei einem Wert</translation>
    </message>
    <message>
        <source>Of the curve (95 %)</source>
        <translation>Der Kurve (95 %)</translation>
    </message>
    <message>
        <source>Of new points (95 %)</source>
        <translation>Neuer Punkte (95 %)</translation>
    </message>
    <message>
        <source>Both</source>
        <translation>Beide</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <source>Across</source>
        <translation>Nebeneinander</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Untereinander</translation>
    </message>
    <message>
        <source>Vertical line</source>
        <translation>Senkrechte Linie</translation>
    </message>
    <message>
        <source>Horizontal line</source>
        <translation>Waagrechte Linie</translation>
    </message>
    <message>
        <source>Point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <source>With X and Y</source>
        <translation>Mit X und Y</translation>
    </message>
    <message>
        <source>With X and second Y</source>
        <translation>Mit X und zweitem Y</translation>
    </message>
    <message>
        <source>Not drawn</source>
        <translation>Nicht gezeichnet</translation>
    </message>
    <message>
        <source>Title of the graph</source>
        <translation>Titel des Diagramms</translation>
    </message>
    <message>
        <source>Font of the title</source>
        <translation>Schrift des Titels</translation>
    </message>
    <message>
        <source>Colour of the plot</source>
        <translation>Farbe der Zeichenfläche</translation>
    </message>
    <message>
        <source>Colour of the margins</source>
        <translation>Farbe der Ränder</translation>
    </message>
    <message>
        <source>Background picture</source>
        <translation>Hintergrundbild</translation>
    </message>
    <message>
        <source>Stretch the picture over the graph</source>
        <translation>Das Bild über das Diagramm dehnen</translation>
    </message>
    <message>
        <source>Colour of axes and frame</source>
        <translation>Farbe der Achsen und des Rahmens</translation>
    </message>
    <message>
        <source>Frame on all four sides</source>
        <translation>Rahmen an allen vier Seiten</translation>
    </message>
    <message>
        <source>Show ticks</source>
        <translation>Teilstriche zeigen</translation>
    </message>
    <message>
        <source>Ticks point inwards</source>
        <translation>Teilstriche nach innen</translation>
    </message>
    <message>
        <source>Show labels and titles</source>
        <translation>Beschriftung und Titel zeigen</translation>
    </message>
    <message>
        <source>Font of the labels</source>
        <translation>Schrift der Beschriftung</translation>
    </message>
    <message>
        <source>Font of the axis titles</source>
        <translation>Schrift der Achsentitel</translation>
    </message>
    <message>
        <source>Colour of the grid</source>
        <translation>Farbe des Gitters</translation>
    </message>
    <message>
        <source>Line style of the grid</source>
        <translation>Linienart des Gitters</translation>
    </message>
    <message>
        <source>Fewest steps of an automatic axis</source>
        <translation>Wenigste Schritte einer automatischen Achse</translation>
    </message>
    <message>
        <source>Most steps of an automatic axis</source>
        <translation>Meiste Schritte einer automatischen Achse</translation>
    </message>
    <message>
        <source>Cross at zero</source>
        <translation>Kreuz bei null</translation>
    </message>
    <message>
        <source>Colour of the cross</source>
        <translation>Farbe des Kreuzes</translation>
    </message>
    <message>
        <source>Length of the cross</source>
        <translation>Länge des Kreuzes</translation>
    </message>
    <message>
        <source>Draw points beyond the axes, too</source>
        <translation>Auch Punkte außerhalb der Achsen zeichnen</translation>
    </message>
    <message>
        <source>Keep points with equal X</source>
        <translation>Punkte mit gleichem X behalten</translation>
    </message>
    <message>
        <source>Folder of the data files</source>
        <translation>Ordner der Datendateien</translation>
    </message>
    <message>
        <source>Print the background colours</source>
        <translation>Hintergrundfarben drucken</translation>
    </message>
    <message>
        <source>Print lines in their styles</source>
        <translation>Linien in ihrer Art drucken</translation>
    </message>
    <message>
        <source>Bands about fitted curves</source>
        <translation>Bänder um angepasste Kurven</translation>
    </message>
    <message>
        <source>Residuals above the plot</source>
        <translation>Residuen über dem Bild</translation>
    </message>
    <message>
        <source>Show marks</source>
        <translation>Marken zeigen</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Title from the data set&apos;s name</source>
        <translation>Titel aus dem Namen des Datensatzes</translation>
    </message>
    <message>
        <source>Show the axis</source>
        <translation>Die Achse zeigen</translation>
    </message>
    <message>
        <source>Range follows the data</source>
        <translation>Bereich folgt den Daten</translation>
    </message>
    <message>
        <source>Range, from and to</source>
        <translation>Bereich, von und bis</translation>
    </message>
    <message>
        <source>Range ends at the data</source>
        <translation>Bereich endet an den Daten</translation>
    </message>
    <message>
        <source>Automatic step</source>
        <translation>Automatischer Schritt</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Shortest range</source>
        <translation>Kürzester Bereich</translation>
    </message>
    <message>
        <source>Logarithmic</source>
        <translation>Logarithmisch</translation>
    </message>
    <message>
        <source>Divisions of a decade</source>
        <translation>Teilungen einer Dekade</translation>
    </message>
    <message>
        <source>Grid lines</source>
        <translation>Gitterlinien</translation>
    </message>
    <message>
        <source>Format of the labels</source>
        <translation>Format der Beschriftung</translation>
    </message>
    <message>
        <source>Decimals follow the step</source>
        <translation>Dezimalen folgen dem Schritt</translation>
    </message>
    <message>
        <source>Decimals</source>
        <translation>Dezimalen</translation>
    </message>
    <message>
        <source>Dates and times</source>
        <translation>Daten und Zeiten</translation>
    </message>
    <message>
        <source>Ticks of dates</source>
        <translation>Teilstriche der Daten</translation>
    </message>
    <message>
        <source>Format of dates</source>
        <translation>Format der Daten</translation>
    </message>
    <message>
        <source>Reversed</source>
        <translation>Umgekehrt</translation>
    </message>
    <message>
        <source>Crosses the other axis</source>
        <translation>Kreuzt die andere Achse</translation>
    </message>
    <message>
        <source>Percentage or value of the crossing</source>
        <translation>Prozentsatz oder Wert der Kreuzung</translation>
    </message>
    <message>
        <source>Show the legend</source>
        <translation>Die Legende zeigen</translation>
    </message>
    <message>
        <source>In the corner with the fewest points</source>
        <translation>In der Ecke mit den wenigsten Punkten</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Oben</translation>
    </message>
    <message>
        <source>Width, 0 to fit</source>
        <translation>Breite, 0 passend</translation>
    </message>
    <message>
        <source>Height, 0 to fit</source>
        <translation>Höhe, 0 passend</translation>
    </message>
    <message>
        <source>Order of the entries</source>
        <translation>Anordnung der Einträge</translation>
    </message>
    <message>
        <source>Font of the names</source>
        <translation>Schrift der Namen</translation>
    </message>
    <message>
        <source>Colour of the background</source>
        <translation>Farbe des Hintergrunds</translation>
    </message>
    <message>
        <source>Border</source>
        <translation>Rand</translation>
    </message>
    <message>
        <source>Room for symbols</source>
        <translation>Platz für Symbole</translation>
    </message>
    <message>
        <source>Margin left and right</source>
        <translation>Rand links und rechts</translation>
    </message>
    <message>
        <source>Margin above and below</source>
        <translation>Rand oben und unten</translation>
    </message>
    <message>
        <source>Caption</source>
        <translation>Beschriftung</translation>
    </message>
    <message>
        <source>Kind of mark</source>
        <translation>Art der Marke</translation>
    </message>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>X of the end, or width of the point</source>
        <translation>X des Endes oder Breite des Punkts</translation>
    </message>
    <message>
        <source>Y of the end</source>
        <translation>Y des Endes</translation>
    </message>
    <message>
        <source>Colour of the mark</source>
        <translation>Farbe der Marke</translation>
    </message>
    <message>
        <source>Drawn</source>
        <translation>Gezeichnet</translation>
    </message>
    <message>
        <source>Left margin</source>
        <translation>Linker Rand</translation>
    </message>
    <message>
        <source>Right margin</source>
        <translation>Rechter Rand</translation>
    </message>
    <message>
        <source>Top margin</source>
        <translation>Oberer Rand</translation>
    </message>
    <message>
        <source>Bottom margin</source>
        <translation>Unterer Rand</translation>
    </message>
    <message>
        <source>Length of the ticks</source>
        <translation>Länge der Teilstriche</translation>
    </message>
    <message>
        <source>Distance of the graph&apos;s title</source>
        <translation>Abstand des Diagrammtitels</translation>
    </message>
    <message>
        <source>Distance of the X axis title</source>
        <translation>Abstand des X-Achsentitels</translation>
    </message>
    <message>
        <source>Distance of the X axis labels</source>
        <translation>Abstand der X-Beschriftung</translation>
    </message>
    <message>
        <source>Distance of the Y axis titles</source>
        <translation>Abstand der Y-Achsentitel</translation>
    </message>
    <message>
        <source>Distance of the Y axis labels</source>
        <translation>Abstand der Y-Beschriftung</translation>
    </message>
    <message>
        <source>Place across the page, in percent</source>
        <translation>Lage quer auf der Seite, in Prozent</translation>
    </message>
    <message>
        <source>Place down the page, in percent</source>
        <translation>Lage längs auf der Seite, in Prozent</translation>
    </message>
    <message>
        <source>Width on the page, in percent</source>
        <translation>Breite auf der Seite, in Prozent</translation>
    </message>
    <message>
        <source>&amp;Fit Peaks</source>
        <translation>An&amp;passen</translation>
    </message>
    <message>
        <source>At most %1 peaks can be fitted together: select their rows, or ask for a larger rise.</source>
        <translation>Höchstens %1 Peaks können zusammen angepasst werden: ihre Zeilen wählen oder einen größeren Anstieg verlangen.</translation>
    </message>
    <message>
        <source>%1 fitted: %2, R² = %3.%4 The figures are on the page Curve Fitting of the data editor.</source>
        <translation>%1 angepasst: %2, R² = %3.%4 Die Zahlen stehen auf der Seite Kurvenanpassung des Dateneditors.</translation>
    </message>
    <message>
        <source> They have no errors of Y any more.</source>
        <translation> Sie haben keine Fehler von Y mehr.</translation>
    </message>
    <message>
        <source> Their errors of Y go along.</source>
        <translation> Ihre Fehler von Y gehen mit.</translation>
    </message>
    <message>
        <source>Save Current Expression</source>
        <translation>Aktuellen Ausdruck speichern</translation>
    </message>
    <message>
        <source>LumoPlot Function File  (*.lfn)|*.lfn;*.LFN</source>
        <translation>LumoPlot-Funktionsdatei  (*.lfn)|*.lfn;*.LFN</translation>
    </message>
    <message>
        <source>Load Expression</source>
        <translation>Ausdruck laden</translation>
    </message>
    <message>
        <source>LumoPlot Function Files  (*.lfn)|*.lfn;*.LFN</source>
        <translation>LumoPlot-Funktionsdateien  (*.lfn)|*.lfn;*.LFN</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Std. Error</source>
        <translation>Std.-Fehler</translation>
    </message>
    <message>
        <source>Vary</source>
        <translation>Frei</translation>
    </message>
    <message>
        <source>Min</source>
        <translation>Min</translation>
    </message>
    <message>
        <source>Max</source>
        <translation>Max</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Einheit</translation>
    </message>
    <message>
        <source>Tied To</source>
        <translation>Gebunden an</translation>
    </message>
    <message>
        <source>The name of the parameter in the equation</source>
        <translation>Der Name des Parameters in der Gleichung</translation>
    </message>
    <message>
        <source>Its value: the start of the next fit, the end of the last one</source>
        <translation>Sein Wert: der Start der nächsten Anpassung, das Ende der letzten</translation>
    </message>
    <message>
        <source>The standard error that the last fit found</source>
        <translation>Der Standardfehler, den die letzte Anpassung fand</translation>
    </message>
    <message>
        <source>The fit may change the value</source>
        <translation>Die Anpassung darf den Wert ändern</translation>
    </message>
    <message>
        <source>The fit keeps the value from here on up; empty for no bound</source>
        <translation>Die Anpassung hält den Wert von hier an aufwärts; leer für keine Schranke</translation>
    </message>
    <message>
        <source>The fit keeps the value up to here; empty for no bound</source>
        <translation>Die Anpassung hält den Wert bis hierher; leer für keine Schranke</translation>
    </message>
    <message>
        <source>A text behind the value</source>
        <translation>Ein Text hinter dem Wert</translation>
    </message>
    <message>
        <source>A formula of other parameters that gives the value, as 2*b1; empty for none</source>
        <translation>Eine Formel anderer Parameter für den Wert, wie 2*b1; leer für keine</translation>
    </message>
    <message>
        <source>not determined</source>
        <translation>nicht bestimmt</translation>
    </message>
    <message>
        <source>on Min</source>
        <translation>auf Min</translation>
    </message>
    <message>
        <source>on Max</source>
        <translation>auf Max</translation>
    </message>
    <message>
        <source>A value is a number</source>
        <translation>Ein Wert ist eine Zahl</translation>
    </message>
    <message>
        <source>The lower bound is not below the upper one</source>
        <translation>Die untere Schranke liegt nicht unter der oberen</translation>
    </message>
    <message>
        <source>The upper bound is not above the lower one</source>
        <translation>Die obere Schranke liegt nicht über der unteren</translation>
    </message>
    <message>
        <source>Runs that have converged</source>
        <translation>Läufe, die konvergiert sind</translation>
    </message>
    <message>
        <source>Runs that end in the best minimum</source>
        <translation>Läufe, die im besten Minimum enden</translation>
    </message>
    <message>
        <source>Median of the runs</source>
        <translation>Median der Läufe</translation>
    </message>
    <message>
        <source>Of the equation over all points, median of the runs</source>
        <translation>Der Gleichung über alle Punkte, Median der Läufe</translation>
    </message>
    <message>
        <source>Runs that were not possible from their start</source>
        <translation>Läufe, die von ihrem Start aus nicht möglich waren</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig:</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen:</translation>
    </message>
    <message>
        <source>&amp;Server:</source>
        <translation>S&amp;erver:</translation>
    </message>
    <message>
        <source>&amp;Port:</source>
        <translation>&amp;Port:</translation>
    </message>
    <message>
        <source>5000 for this machine alone, or address:5000</source>
        <translation>5000 nur für diesen Rechner, oder Adresse:5000</translation>
    </message>
    <message>
        <source>&amp;Line:</source>
        <translation>Le&amp;itung:</translation>
    </message>
    <message>
        <source>On the right side</source>
        <translation>Auf der rechten Seite</translation>
    </message>
    <message>
        <source>&amp;Item:</source>
        <translation>Elemen&amp;t:</translation>
    </message>
    <message>
        <source>SERVICE|TOPIC!ITEM of a Windows program</source>
        <translation>SERVICE|TOPIC!ITEM eines Windows-Programms</translation>
    </message>
</context>
<context>
    <name>lumoplot::TTransformDialog</name>
    <message>
        <source>before</source>
        <translation>vorher</translation>
    </message>
    <message>
        <source>after</source>
        <translation>nachher</translation>
    </message>
    <message>
        <source>%1 … %2</source>
        <translation>%1 … %2</translation>
    </message>
</context>
<context>
    <name>lumoplot::TxyDataWizard</name>
    <message>
        <source>The template is %1</source>
        <translation>Die Vorlage ist %1</translation>
    </message>
</context>
</TS>
