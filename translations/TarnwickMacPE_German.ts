<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>CAskAgainPanel</name>
    <message>
        <source>Tarnwick stopped unexpectedly</source>
        <translation>Tarnwick wurde unerwartet beendet</translation>
    </message>
    <message>
        <source>Files that were copied before are still on the disk. If a copy was running, start again and copy everything once more.</source>
        <translation>Was vorher kopiert wurde, ist noch auf dem Laufwerk. Falls gerade kopiert wurde, beginnen Sie erneut und kopieren Sie alles noch einmal.</translation>
    </message>
    <message>
        <source>Restart the computer</source>
        <translation>Computer neu starten</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>Erneut beginnen</translation>
    </message>
</context>
<context>
    <name>CAskEndPanel</name>
    <message>
        <source>A disk did not answer</source>
        <translation>Ein Laufwerk hat nicht geantwortet</translation>
    </message>
    <message>
        <source>You can unplug your disks now</source>
        <translation>Sie können Ihre Laufwerke jetzt abziehen</translation>
    </message>
    <message>
        <source>Not everything may be on it yet. Wait while its light flashes, and check the copied files on another computer.</source>
        <translation>Vielleicht ist noch nicht alles darauf. Warten Sie, solange sein Licht blinkt, und prüfen Sie die kopierten Dateien an einem anderen Computer.</translation>
    </message>
    <message>
        <source>Tarnwick has ended, and nothing is written to a disk any more.</source>
        <translation>Tarnwick ist beendet, und auf kein Laufwerk wird mehr geschrieben.</translation>
    </message>
    <message>
        <source>Leave the stick that you started from in its place until the screen goes dark.</source>
        <translation>Lassen Sie den Stick, von dem Sie gestartet haben, stecken, bis der Bildschirm dunkel wird.</translation>
    </message>
    <message>
        <source>Power off</source>
        <translation>Ausschalten</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Neustart</translation>
    </message>
    <message>
        <source>The computer restarts by itself. Seconds left: %1</source>
        <translation>Der Computer startet von selbst neu. Verbleibende Sekunden: %1</translation>
    </message>
</context>
<context>
    <name>CAskMissingPanel</name>
    <message>
        <source>Locked with a password</source>
        <translation>Mit einem Passwort gesperrt</translation>
    </message>
    <message>
        <source>Cannot be read, perhaps damaged</source>
        <translation>Kann nicht gelesen werden, vielleicht beschädigt</translation>
    </message>
    <message>
        <source>Does not answer</source>
        <translation>Antwortet nicht</translation>
    </message>
    <message>
        <source>One of several disks that belong together</source>
        <translation>Eines von mehreren Laufwerken, die zusammengehören</translation>
    </message>
    <message>
        <source>Needs more memory than this computer has</source>
        <translation>Braucht mehr Arbeitsspeicher, als dieser Computer hat</translation>
    </message>
    <message>
        <source>Of a kind that Tarnwick cannot read</source>
        <translation>In einem Format, das Tarnwick nicht lesen kann</translation>
    </message>
    <message>
        <source>Another computer or a specialist may still be able to read what cannot be read here. Do not format or repair it before.</source>
        <translation>Was hier nicht gelesen werden kann, kann vielleicht ein anderer Computer oder eine Fachfirma noch lesen. Formatieren oder reparieren Sie es vorher nicht.</translation>
    </message>
    <message>
        <source>A disk that answers later appears by itself.</source>
        <translation>Ein Laufwerk, das später antwortet, erscheint von selbst.</translation>
    </message>
    <message>
        <source>To type a password, restart the computer and start Tarnwick again.</source>
        <translation>Um ein Passwort einzugeben, starten Sie den Computer neu und dann wieder Tarnwick.</translation>
    </message>
    <message>
        <source>Not everything can be shown</source>
        <translation>Nicht alles kann angezeigt werden</translation>
    </message>
    <message>
        <source>Nothing can be copied from these disks or parts of disks:</source>
        <translation>Von diesen Laufwerken oder Teilen von Laufwerken kann nichts kopiert werden:</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortfahren</translation>
    </message>
</context>
<context>
    <name>CAskPasswordPanel</name>
    <message>
        <source>Locked by Windows (BitLocker)</source>
        <translation>Von Windows gesperrt (BitLocker)</translation>
    </message>
    <message>
        <source>Locked by macOS (FileVault)</source>
        <translation>Von macOS gesperrt (FileVault)</translation>
    </message>
    <message>
        <source>Locked by Linux (LUKS)</source>
        <translation>Von Linux gesperrt (LUKS)</translation>
    </message>
    <message>
        <source>Type its password or its recovery key of 48 digits.</source>
        <translation>Geben Sie sein Passwort oder den 48-stelligen Wiederherstellungsschlüssel ein.</translation>
    </message>
    <message>
        <source>Type its password: mostly the one with which you log in to your Mac.</source>
        <translation>Geben Sie sein Passwort ein: meist das, mit dem Sie sich an Ihrem Mac anmelden.</translation>
    </message>
    <message>
        <source>Type the password that your computer asks for when it starts, or when you plug this disk in.</source>
        <translation>Geben Sie das Passwort ein, nach dem Ihr Computer beim Starten oder beim Anschließen dieses Laufwerks fragt.</translation>
    </message>
    <message>
        <source>Then files can be copied to the disk.</source>
        <translation>Danach können Dateien auf das Laufwerk kopiert werden.</translation>
    </message>
    <message>
        <source>Nothing on the disk is changed.</source>
        <translation>Auf dem Laufwerk wird nichts geändert.</translation>
    </message>
    <message>
        <source>This disk needs its password</source>
        <translation>Dieses Laufwerk braucht sein Passwort</translation>
    </message>
    <message>
        <source>That password did not open the disk. Try %1 of %2.</source>
        <translation>Dieses Passwort hat das Laufwerk nicht geöffnet. Versuch %1 von %2.</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>Show what I type</source>
        <translation>Zeigen, was ich tippe</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Die Feststelltaste ist aktiv.</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <translation>Tastatur:</translation>
    </message>
    <message>
        <source>Skip this disk</source>
        <translation>Laufwerk überspringen</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>Entsperren</translation>
    </message>
</context>
<context>
    <name>CAskSourcePanel</name>
    <message>
        <source>What is this USB disk for?</source>
        <translation>Wozu dient dieses USB-Laufwerk?</translation>
    </message>
    <message>
        <source>Holds %1</source>
        <translation>Enthält %1</translation>
    </message>
    <message>
        <source>Rescue files from it</source>
        <translation>Dateien davon retten</translation>
    </message>
    <message>
        <source>Its files are listed to be copied. Nothing on it is changed.</source>
        <translation>Seine Dateien werden zum Kopieren aufgelistet. Auf ihm wird nichts geändert.</translation>
    </message>
    <message>
        <source>Copy files to it</source>
        <translation>Dateien darauf kopieren</translation>
    </message>
    <message>
        <source>Files of other disks can be copied to it, beside what it holds.</source>
        <translation>Dateien anderer Laufwerke können darauf kopiert werden, neben das, was es enthält.</translation>
    </message>
</context>
<context>
    <name>CAskWaitPanel</name>
    <message>
        <source>Looking for your disks…</source>
        <translation>Ihre Laufwerke werden gesucht&#xa0;…</translation>
    </message>
    <message>
        <source>This can take a minute.</source>
        <translation>Das kann eine Minute dauern.</translation>
    </message>
</context>
<context>
    <name>CCopyEndBox</name>
    <message>
        <source>Show the list</source>
        <translation>Liste anzeigen</translation>
    </message>
</context>
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
    <message>
        <source>Everything was on the disk before it was removed.</source>
        <translation>Alles war auf dem Laufwerk, bevor es entfernt wurde.</translation>
    </message>
</context>
<context>
    <name>CCopyReportText</name>
    <message>
        <source>This copy has not come to its end.</source>
        <translation>Dieser Kopiervorgang ist nicht abgeschlossen.</translation>
    </message>
    <message>
        <source>If no copy is running any more, it broke off: the program was ended, the disk was removed or the power failed. Files are missing that are not named below. Copy everything again.</source>
        <translation>Wenn kein Kopiervorgang mehr läuft, ist er abgebrochen: Das Programm wurde beendet, das Laufwerk entfernt oder der Strom fiel aus. Es fehlen Dateien, die unten nicht genannt sind. Kopieren Sie alles noch einmal.</translation>
    </message>
    <message>
        <source>Not copied whole so far:</source>
        <translation>Bisher nicht vollständig kopiert:</translation>
    </message>
    <message>
        <source>Items that are missing, not whole or worth a note:</source>
        <translation>Objekte, die fehlen, nicht vollständig sind oder einen Hinweis verdienen:</translation>
    </message>
    <message>
        <source>Copy everything again, best onto another disk.</source>
        <translation>Kopieren Sie alles noch einmal, am besten auf ein anderes Laufwerk.</translation>
    </message>
    <message>
        <source>What had not been copied by then is missing and is not named below.</source>
        <translation>Was bis dahin nicht kopiert war, fehlt und ist unten nicht genannt.</translation>
    </message>
    <message>
        <source>Everything is whole. The items below are worth a note.</source>
        <translation>Alles ist vollständig. Zu den folgenden Objekten gibt es einen Hinweis.</translation>
    </message>
    <message>
        <source>Try to copy the items below again. If the disk is full, or its file system takes no large files, use another disk. Keep this list with the copy until you have them all.</source>
        <translation>Versuchen Sie, die folgenden Objekte noch einmal zu kopieren. Wenn das Laufwerk voll ist oder sein Dateisystem keine großen Dateien aufnimmt, verwenden Sie ein anderes. Bewahren Sie diese Liste bei der Kopie auf, bis Sie alle haben.</translation>
    </message>
    <message>
        <source>Report on a copy of files</source>
        <translation>Bericht über das Kopieren von Dateien</translation>
    </message>
    <message>
        <source>From: %1</source>
        <translation>Von: %1</translation>
    </message>
    <message>
        <source>To: %1</source>
        <translation>Nach: %1</translation>
    </message>
    <message>
        <source>Begun: %1</source>
        <translation>Begonnen: %1</translation>
    </message>
    <message>
        <source>To be copied: at most %1</source>
        <translation>Zu kopieren: höchstens %1</translation>
    </message>
    <message>
        <source>Ended: %1</source>
        <translation>Beendet: %1</translation>
    </message>
    <message>
        <source>Whole: %1, %2</source>
        <translation>Vollständig: %1, %2</translation>
    </message>
    <message>
        <source>Not whole: %1</source>
        <translation>Nicht vollständig: %1</translation>
    </message>
    <message>
        <source>And %1 more, for which there was no room.</source>
        <translation>Und %1 weitere, für die kein Platz war.</translation>
    </message>
</context>
<context>
    <name>CCopyStateLine</name>
    <message>
        <source>%1 so far</source>
        <translation>Bisher %1</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 MB/s</source>
        <translation>%1 MB/s</translation>
    </message>
    <message>
        <source>The copy is being stopped…</source>
        <translation>Das Kopieren wird gestoppt&#xa0;…</translation>
    </message>
    <message>
        <source>The last bytes are being written to the disk…</source>
        <translation>Die letzten Daten werden auf das Laufwerk geschrieben&#xa0;…</translation>
    </message>
    <message>
        <source>The disk has not answered for %1 seconds: %2</source>
        <translation>Das Laufwerk antwortet seit %1 Sekunden nicht: %2</translation>
    </message>
</context>
<context>
    <name>CCopyText</name>
    <message>
        <source>Its folder cannot be created.</source>
        <translation>Der Ordner dafür kann nicht angelegt werden.</translation>
    </message>
    <message>
        <source>It cannot be created on the disk.</source>
        <translation>Es kann auf dem Laufwerk nicht angelegt werden.</translation>
    </message>
    <message>
        <source>It cannot be written to the disk.</source>
        <translation>Es kann nicht auf das Laufwerk geschrieben werden.</translation>
    </message>
    <message>
        <source>The disk did not take all of it.</source>
        <translation>Das Laufwerk hat nicht alles davon angenommen.</translation>
    </message>
    <message>
        <source>It cannot be opened.</source>
        <translation>Es kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>It cannot be read.</source>
        <translation>Es kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>It became shorter while it was copied.</source>
        <translation>Es wurde kürzer, während es kopiert wurde.</translation>
    </message>
    <message>
        <source>It changed while it was copied.</source>
        <translation>Es wurde geändert, während es kopiert wurde.</translation>
    </message>
    <message>
        <source>It was removed while it was copied.</source>
        <translation>Es wurde entfernt, während es kopiert wurde.</translation>
    </message>
    <message>
        <source>Something else has taken its place.</source>
        <translation>Etwas anderes ist an seine Stelle getreten.</translation>
    </message>
    <message>
        <source>It is not a file, but a pipe, a socket or a device.</source>
        <translation>Es ist keine Datei, sondern eine Pipe, ein Socket oder ein Gerät.</translation>
    </message>
    <message>
        <source>The folder was not opened, so its contents were not copied.</source>
        <translation>Der Ordner wurde nicht geöffnet, deshalb wurde sein Inhalt nicht kopiert.</translation>
    </message>
    <message>
        <source>It was not in the list, so it was not copied.</source>
        <translation>Es stand nicht in der Liste, deshalb wurde es nicht kopiert.</translation>
    </message>
    <message>
        <source>It is a link to a folder that it lies in.</source>
        <translation>Es ist ein Link auf einen Ordner, in dem es selbst liegt.</translation>
    </message>
    <message>
        <source>The folder cannot be read.</source>
        <translation>Der Ordner kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>It was copied whole, but its date could not be kept.</source>
        <translation>Es wurde vollständig kopiert, aber sein Datum konnte nicht übernommen werden.</translation>
    </message>
    <message>
        <source>The disk was removed.</source>
        <translation>Das Laufwerk wurde entfernt.</translation>
    </message>
    <message>
        <source>The copy was stopped.</source>
        <translation>Das Kopieren wurde gestoppt.</translation>
    </message>
    <message>
        <source>There was not enough memory.</source>
        <translation>Es war nicht genügend Arbeitsspeicher vorhanden.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it.</source>
        <translation>Das Laufwerk hat nicht bestätigt, dass alles darauf ist.</translation>
    </message>
    <message>
        <source>It is a link to another disk. What it leads to was copied.</source>
        <translation>Es ist ein Link auf ein anderes Laufwerk. Kopiert wurde, worauf er verweist.</translation>
    </message>
    <message>
        <source>The disk does not answer.</source>
        <translation>Das Laufwerk antwortet nicht.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>Das Laufwerk ist voll.</translation>
    </message>
    <message>
        <source>Too large for the file system of this disk.</source>
        <translation>Zu groß für das Dateisystem dieses Laufwerks.</translation>
    </message>
    <message>
        <source>Access is not permitted.</source>
        <translation>Der Zugriff ist nicht erlaubt.</translation>
    </message>
    <message>
        <source>The disk is write-protected.</source>
        <translation>Das Laufwerk ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>Das Laufwerk meldet einen Fehler.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>Es ist nicht mehr vorhanden.</translation>
    </message>
    <message>
        <source>Its name or path is too long.</source>
        <translation>Sein Name oder Pfad ist zu lang.</translation>
    </message>
    <message>
        <source>The disk is not connected any more.</source>
        <translation>Das Laufwerk ist nicht mehr angeschlossen.</translation>
    </message>
    <message>
        <source>Something else of that name is in its place.</source>
        <translation>An seiner Stelle liegt etwas anderes mit diesem Namen.</translation>
    </message>
    <message>
        <source>The file system of this disk does not allow its name.</source>
        <translation>Das Dateisystem dieses Laufwerks lässt seinen Namen nicht zu.</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <extracomment>Two sentences, one behind the other.</extracomment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 Byte</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Byte</translation>
    </message>
    <message>
        <source>%1 KB</source>
        <translation>%1&#xa0;KB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1&#xa0;MB</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1&#xa0;GB</translation>
    </message>
    <message>
        <source>%1 TB</source>
        <translation>%1&#xa0;TB</translation>
    </message>
    <message>
        <source>1 file</source>
        <translation>1 Datei</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 Dateien</translation>
    </message>
    <message>
        <source>1 of %1 items was not copied whole.</source>
        <translation>1 von %1 Objekten nicht vollständig kopiert.</translation>
    </message>
    <message>
        <source>%1 of %2 items were not copied whole.</source>
        <translation>%1 von %2 Objekten nicht vollständig kopiert.</translation>
    </message>
    <message>
        <source>The copy was stopped. %1, %2 are on the disk.</source>
        <translation>Das Kopieren wurde gestoppt. %1, %2 sind auf dem Laufwerk.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it. Do not rely on this copy.</source>
        <translation>Das Laufwerk hat nicht bestätigt, dass alles darauf ist. Verlassen Sie sich nicht auf diese Kopie.</translation>
    </message>
    <message>
        <source>Nothing was copied.</source>
        <translation>Es wurde nichts kopiert.</translation>
    </message>
    <message>
        <source>%1, %2 are on the disk. It can be unplugged now.</source>
        <translation>%1, %2 sind auf dem Laufwerk. Es kann jetzt abgezogen werden.</translation>
    </message>
    <message>
        <source>The list could not be saved on the disk.</source>
        <translation>Die Liste konnte nicht auf dem Laufwerk gesichert werden.</translation>
    </message>
    <message>
        <source>Parts of it cannot be read; zeros stand for the bytes %1.</source>
        <translation>Teile davon können nicht gelesen werden; für die Bytes %1 stehen Nullen.</translation>
    </message>
    <message>
        <source>Another disk is mounted here. What is on it was not copied.</source>
        <translation>Hier ist ein anderes Laufwerk aktiviert. Was darauf liegt, wurde nicht kopiert.</translation>
    </message>
    <message>
        <source>It is the same folder as another one in this copy, or the copy itself.</source>
        <translation>Es ist derselbe Ordner wie ein anderer in dieser Kopie, oder die Kopie selbst.</translation>
    </message>
    <message>
        <source>It is a link to %1, and this disk cannot hold links.</source>
        <translation>Es ist ein Link auf „%1“, und dieses Laufwerk kann keine Links aufnehmen.</translation>
    </message>
    <message>
        <source>The disk does not take its name. There it is called %1.</source>
        <translation>Das Laufwerk lässt diesen Namen nicht zu. Dort heißt das Objekt „%1“.</translation>
    </message>
    <message>
        <source>Items whose permissions this disk cannot hold: %1</source>
        <translation>Objekte, deren Zugriffsrechte dieses Laufwerk nicht aufnehmen kann: %1</translation>
    </message>
    <message>
        <source>Items whose extended attributes this disk cannot hold: %1</source>
        <translation>Objekte, deren erweiterte Attribute dieses Laufwerk nicht aufnehmen kann: %1</translation>
    </message>
    <message>
        <source>Folders whose dates this disk cannot hold: %1</source>
        <translation>Ordner, deren Datum dieses Laufwerk nicht aufnehmen kann: %1</translation>
    </message>
    <message>
        <source>Its resource fork, a part of it, cannot be read.</source>
        <translation>Seine Ressourcen-Fork, ein Teil davon, kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Its contents are in its resource fork, and this disk cannot hold that.</source>
        <translation>Sein Inhalt liegt in der Ressourcen-Fork, und die kann dieses Laufwerk nicht aufnehmen.</translation>
    </message>
    <message>
        <source>Items whose resource forks this disk cannot hold: %1</source>
        <translation>Objekte, deren Ressourcen-Fork dieses Laufwerk nicht aufnehmen kann: %1</translation>
    </message>
    <message>
        <source>Items whose Finder tags and icons this disk cannot hold: %1</source>
        <translation>Objekte, deren Finder-Tags und Symbole dieses Laufwerk nicht aufnehmen kann: %1</translation>
    </message>
    <message>
        <source>Items whose access lists this disk cannot hold: %1</source>
        <translation>Objekte, deren Zugriffslisten dieses Laufwerk nicht aufnehmen kann: %1</translation>
    </message>
    <message>
        <source>Items whose creation dates this disk cannot hold: %1</source>
        <translation>Objekte, deren Erstellungsdatum dieses Laufwerk nicht aufnehmen kann: %1</translation>
    </message>
    <message>
        <source>Locked items whose copies are not locked: %1</source>
        <translation>Geschützte Objekte, deren Kopien nicht geschützt sind: %1</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>Der Inhalt befindet sich nur in iCloud, nicht auf diesem Mac.</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>Das Ziel ist jetzt „%1“</translation>
    </message>
    <message>
        <source>%1 cannot hold a file of %2 or more.</source>
        <translation>„%1“ kann keine Datei ab %2 aufnehmen.</translation>
    </message>
</context>
<context>
    <name>CFolderTrouble</name>
    <message>
        <source>This folder may not be read, nothing of it is copied.</source>
        <translation>Dieser Ordner darf nicht gelesen werden, daraus wird nichts kopiert.</translation>
    </message>
    <message>
        <source>This folder cannot be read: %1</source>
        <translation>Dieser Ordner kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>Only a part of this folder can be read: %1</source>
        <translation>Dieser Ordner kann nur zum Teil gelesen werden: %1</translation>
    </message>
    <message>
        <source>This link leads back to a folder that it lies in.</source>
        <translation>Dieser Link führt zurück zu einem Ordner, in dem er selbst liegt.</translation>
    </message>
    <message>
        <source>The disk does not answer. What is in this folder appears as soon as it does.</source>
        <translation>Das Laufwerk antwortet nicht. Der Inhalt dieses Ordners erscheint, sobald es antwortet.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>Das Laufwerk meldet einen Fehler.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>Es ist nicht mehr vorhanden.</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>Der Inhalt befindet sich nur in iCloud, nicht auf diesem Mac.</translation>
    </message>
</context>
<context>
    <name>CItemListDialog</name>
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
    <message>
        <source>Items of this copy that need your attention</source>
        <translation>Objekte dieser Kopie, die Sie prüfen sollten</translation>
    </message>
    <message>
        <source>and %1 more, see %2</source>
        <translation>und %1 weitere, siehe %2</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>This list is also in %1</source>
        <translation>Diese Liste steht auch in %1</translation>
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
    <name>CLogNotice</name>
    <message>
        <source>The log is kept in %1</source>
        <extracomment>The path of a folder.</extracomment>
        <translation>Das Protokoll liegt in %1</translation>
    </message>
    <message>
        <source>The log cannot be written.</source>
        <translation>Das Protokoll kann nicht geschrieben werden.</translation>
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
    <message>
        <source>Complete rescue</source>
        <translation>Vollständige Rettung</translation>
    </message>
    <message>
        <source>Copies everything in what is ticked, whether the list shows it or not.</source>
        <translation>Kopiert alles, was in den ausgewählten Objekten liegt, ob die Liste es zeigt oder nicht.</translation>
    </message>
</context>
<context>
    <name>CSourceNotice</name>
    <message>
        <source>%1 is there now: press the round arrow to list it.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>„%1“ ist jetzt da: Auf den runden Pfeil klicken, um es anzuzeigen.</translation>
    </message>
    <message>
        <source>The users&apos; files are on %1, not on %2.</source>
        <extracomment>Names of two volumes: where the users&apos; files are, and where the user may be looking for them.</extracomment>
        <translation>Die Dateien der Benutzer sind auf „%1“, nicht auf „%2“.</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them in Disk Utility, then press the round arrow.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>Benutzerdateien von „%1“ gesperrt? Im Festplattendienstprogramm entsperren, dann runden Pfeil klicken.</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them with their password, then start Tarnwick again.</source>
        <extracomment>The name of a volume.</extracomment>
        <translation>Die Dateien der Benutzer von %1 sind vielleicht gesperrt: mit ihrem Passwort entsperren, dann Tarnwick neu starten.</translation>
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
    <message>
        <source>Entries that are not in the list are not copied.</source>
        <translation>Objekte, die nicht in der Liste stehen, werden nicht kopiert.</translation>
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
