<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>CCopyFileWidget</name>
    <message>
        <source>Remaining Time: %1</source>
        <translation>Verbleibende Zeit: %1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Calculating...</source>
        <translation>wird berechnet&#xa0;…</translation>
    </message>
    <message>
        <source>Copying files to (%1): %2</source>
        <translation>Dateien werden auf „%1“ kopiert: %2</translation>
    </message>
    <message>
        <source>Copy file completed!</source>
        <translation>Kopieren der Dateien abgeschlossen!</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Your data might not be copied completely, are you sure to stop the copying process?</source>
        <translation>Möglicherweise wurden noch nicht alle Daten kopiert. Möchten Sie das Kopieren wirklich stoppen?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>The destination storage device has been removed! Please check and connect the storage device then try again.</source>
        <translation>Das Ziellaufwerk wurde entfernt! Bitte überprüfen Sie es, schließen Sie es wieder an und versuchen Sie es dann erneut.</translation>
    </message>
    <message>
        <source>Copy Progress</source>
        <translation>Fortschritt des Kopiervorgangs</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>Das Ziel ist jetzt „%1“</translation>
    </message>
</context>
<context>
    <name>CLastCopyNotice</name>
    <message>
        <source>Show the list</source>
        <translation>Liste anzeigen</translation>
    </message>
</context>
<context>
    <name>CNoticeLine</name>
    <message>
        <source>%1 does not answer.</source>
        <translation>„%1“ antwortet nicht.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <extracomment>A name and what is said of it.</extracomment>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>CSearchWaitView</name>
    <message>
        <source>NotFoundOrNoItemView</source>
        <translation>NotFoundOrNoItemView</translation>
    </message>
    <message>
        <source>Searching</source>
        <translation>Suche läuft</translation>
    </message>
    <message>
        <source>image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Searching, please wait...</source>
        <translation>Suche läuft, bitte warten&#xa0;…</translation>
    </message>
</context>
<context>
    <name>CSelFileWidget</name>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Select File to Copy:</source>
        <translation>Zu kopierende Dateien auswählen:</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>Ziel</translation>
    </message>
    <message>
        <source>Select Destination Disk:</source>
        <translation>Ziellaufwerk auswählen:</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>No disk to copy files from was found.</source>
        <translation>Es wurde kein Laufwerk gefunden, von dem Dateien kopiert werden können.</translation>
    </message>
    <message>
        <source>No USB disk was found.
Connect one, and it appears here.</source>
        <translation>Kein USB-Laufwerk gefunden.
Schließen Sie eines an, dann erscheint es hier.</translation>
    </message>
    <message>
        <source>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1GB&lt;/span&gt; Available, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2GB&lt;/span&gt; Total</source>
        <translation>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1&#xa0;GB&lt;/span&gt; verfügbar, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2&#xa0;GB&lt;/span&gt; insgesamt</translation>
    </message>
    <message>
        <source>Your drive may be damaged and Tarnwick can not write to this drive, please change another one and retry.</source>
        <translation>Das Laufwerk ist möglicherweise beschädigt und Tarnwick kann nicht darauf schreiben. Bitte verwenden Sie ein anderes Laufwerk und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Calculating files size...</source>
        <translation>Größe der Dateien wird berechnet&#xa0;…</translation>
    </message>
    <message>
        <source>No enough space, please select other Hard Disk or USB flash drive.</source>
        <translation>Nicht genügend Speicherplatz. Bitte wählen Sie eine andere Festplatte oder einen anderen USB-Stick aus.</translation>
    </message>
    <message>
        <source>Tarnwick</source>
        <translation>Tarnwick</translation>
    </message>
    <message>
        <source> at </source>
        <translation> um </translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Refresh List of Disks</source>
        <translation>Liste der Laufwerke aktualisieren</translation>
    </message>
    <message>
        <source>Files selected</source>
        <translation>Dateien ausgewählt</translation>
    </message>
    <message>
        <source>No files selected</source>
        <translation>Keine Dateien ausgewählt</translation>
    </message>
    <message>
        <source>%1 are needed, %2 are free.</source>
        <translation>%1 werden benötigt, %2 sind frei.</translation>
    </message>
</context>
<context>
    <name>CStartSplash</name>
    <message>
        <source>Searching for disks…</source>
        <translation>Laufwerke werden gesucht&#xa0;…</translation>
    </message>
    <message>
        <source>Waiting for %1…</source>
        <translation>Warten auf „%1“&#xa0;…</translation>
    </message>
</context>
<context>
    <name>CTarnwickMacPE</name>
    <message>
        <source>CTarnwickMacPE</source>
        <translation>CTarnwickMacPE</translation>
    </message>
    <message>
        <source>logo</source>
        <translation>Logo</translation>
    </message>
    <message>
        <source>title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Kelvane Tarnwick</source>
        <translation>Kelvane Tarnwick</translation>
    </message>
    <message>
        <source>Your computer will restart if you exit the program. Are you sure you want to exit?</source>
        <translation>Wenn Sie das Programm beenden, wird Ihr Computer neu gestartet. Möchten Sie das Programm wirklich beenden?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoomen</translation>
    </message>
</context>
<context>
    <name>CTreeNotices</name>
    <message>
        <source>Only opened folders of a fully ticked volume are copied.</source>
        <translation>Von einem vollständig ausgewählten Volume werden nur geöffnete Ordner kopiert.</translation>
    </message>
    <message>
        <source>Entries left out of %1 because of their names: %2</source>
        <translation>Wegen ihres Namens ausgelassene Objekte in „%1“: %2</translation>
    </message>
</context>
<context>
    <name>KvMessageBox</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>Textfeld</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
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
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoomen</translation>
    </message>
</context>
</TS>
