<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="nl_NL" sourcelanguage="en">
<context>
    <name>CAskAgainPanel</name>
    <message>
        <source>Tarnwick stopped unexpectedly</source>
        <translation>Tarnwick is onverwacht gestopt</translation>
    </message>
    <message>
        <source>Files that were copied before are still on the disk. If a copy was running, start again and copy everything once more.</source>
        <translation>Eerder gekopieerde bestanden staan nog op de schijf. Werd er net gekopieerd, begin dan opnieuw en kopieer alles nog een keer.</translation>
    </message>
    <message>
        <source>Restart the computer</source>
        <translation>Herstart de computer</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>Opnieuw beginnen</translation>
    </message>
</context>
<context>
    <name>CAskEndPanel</name>
    <message>
        <source>A disk did not answer</source>
        <translation>Een schijf heeft niet geantwoord</translation>
    </message>
    <message>
        <source>You can unplug your disks now</source>
        <translation>U kunt uw schijven nu loskoppelen</translation>
    </message>
    <message>
        <source>Not everything may be on it yet. Wait while its light flashes, and check the copied files on another computer.</source>
        <translation>Misschien staat nog niet alles erop. Wacht zolang het lampje knippert en controleer de gekopieerde bestanden op een andere computer.</translation>
    </message>
    <message>
        <source>Tarnwick has ended, and nothing is written to a disk any more.</source>
        <translation>Tarnwick is afgesloten en er wordt niets meer naar een schijf geschreven.</translation>
    </message>
    <message>
        <source>Leave the stick that you started from in its place until the screen goes dark.</source>
        <translation>Laat de USB-stick waarmee u bent opgestart zitten tot het scherm zwart wordt.</translation>
    </message>
    <message>
        <source>Power off</source>
        <translation>Zet uit</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Herstart</translation>
    </message>
    <message>
        <source>The computer restarts by itself. Seconds left: %1</source>
        <translation>De computer herstart vanzelf. Resterende seconden: %1</translation>
    </message>
</context>
<context>
    <name>CAskMissingPanel</name>
    <message>
        <source>Locked with a password</source>
        <translation>Vergrendeld met een wachtwoord</translation>
    </message>
    <message>
        <source>Cannot be read, perhaps damaged</source>
        <translation>Kan niet worden gelezen, misschien beschadigd</translation>
    </message>
    <message>
        <source>Does not answer</source>
        <translation>Reageert niet</translation>
    </message>
    <message>
        <source>One of several disks that belong together</source>
        <translation>Een van meerdere schijven die bij elkaar horen</translation>
    </message>
    <message>
        <source>Needs more memory than this computer has</source>
        <translation>Heeft meer geheugen nodig dan deze computer heeft</translation>
    </message>
    <message>
        <source>Of a kind that Tarnwick cannot read</source>
        <translation>Van een soort die Tarnwick niet kan lezen</translation>
    </message>
    <message>
        <source>Another computer or a specialist may still be able to read what cannot be read here. Do not format or repair it before.</source>
        <translation>Wat hier niet kan worden gelezen, is op een andere computer of door een specialist misschien nog te lezen. Formatteer of repareer het niet van tevoren.</translation>
    </message>
    <message>
        <source>A disk that answers later appears by itself.</source>
        <translation>Een schijf die later reageert, verschijnt vanzelf.</translation>
    </message>
    <message>
        <source>To type a password, restart the computer and start Tarnwick again.</source>
        <translation>Om een wachtwoord te typen, herstart u de computer en start u Tarnwick opnieuw.</translation>
    </message>
    <message>
        <source>Not everything can be shown</source>
        <translation>Niet alles kan worden getoond</translation>
    </message>
    <message>
        <source>Nothing can be copied from these disks or parts of disks:</source>
        <translation>Van deze schijven of delen van schijven kan niets worden gekopieerd:</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Ga door</translation>
    </message>
</context>
<context>
    <name>CAskPasswordPanel</name>
    <message>
        <source>Locked by Windows (BitLocker)</source>
        <translation>Vergrendeld door Windows (BitLocker)</translation>
    </message>
    <message>
        <source>Locked by macOS (FileVault)</source>
        <translation>Vergrendeld door macOS (FileVault)</translation>
    </message>
    <message>
        <source>Locked by Linux (LUKS)</source>
        <translation>Vergrendeld door Linux (LUKS)</translation>
    </message>
    <message>
        <source>Type its password or its recovery key of 48 digits.</source>
        <translation>Typ het wachtwoord of de herstelsleutel van 48 cijfers.</translation>
    </message>
    <message>
        <source>Type its password: mostly the one with which you log in to your Mac.</source>
        <translation>Typ het wachtwoord: meestal dat waarmee u op uw Mac inlogt.</translation>
    </message>
    <message>
        <source>Type the password that your computer asks for when it starts, or when you plug this disk in.</source>
        <translation>Typ het wachtwoord waar uw computer bij het opstarten of bij het aansluiten van deze schijf om vraagt.</translation>
    </message>
    <message>
        <source>Then files can be copied to the disk.</source>
        <translation>Daarna kunnen er bestanden naartoe worden gekopieerd.</translation>
    </message>
    <message>
        <source>Nothing on the disk is changed.</source>
        <translation>Op de schijf wordt niets gewijzigd.</translation>
    </message>
    <message>
        <source>This disk needs its password</source>
        <translation>Deze schijf heeft het wachtwoord nodig</translation>
    </message>
    <message>
        <source>That password did not open the disk. Try %1 of %2.</source>
        <translation>Met dat wachtwoord ging de schijf niet open. Poging %1 van %2.</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Wachtwoord</translation>
    </message>
    <message>
        <source>Show what I type</source>
        <translation>Toon wat ik typ</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Caps Lock is ingeschakeld.</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <translation>Toetsenbord:</translation>
    </message>
    <message>
        <source>Skip this disk</source>
        <translation>Sla schijf over</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>Ontgrendel</translation>
    </message>
</context>
<context>
    <name>CAskSourcePanel</name>
    <message>
        <source>What is this USB disk for?</source>
        <translation>Waar is deze USB-schijf voor?</translation>
    </message>
    <message>
        <source>Holds %1</source>
        <translation>Bevat %1</translation>
    </message>
    <message>
        <source>Rescue files from it</source>
        <translation>Er bestanden van redden</translation>
    </message>
    <message>
        <source>Its files are listed to be copied. Nothing on it is changed.</source>
        <translation>De bestanden erop komen in de lijst om te kopiëren. Er wordt niets op gewijzigd.</translation>
    </message>
    <message>
        <source>Copy files to it</source>
        <translation>Er bestanden naartoe kopiëren</translation>
    </message>
    <message>
        <source>Files of other disks can be copied to it, beside what it holds.</source>
        <translation>Bestanden van andere schijven kunnen ernaartoe worden gekopieerd, naast wat er al op staat.</translation>
    </message>
</context>
<context>
    <name>CAskWaitPanel</name>
    <message>
        <source>Looking for your disks…</source>
        <translation>Zoeken naar uw schijven…</translation>
    </message>
    <message>
        <source>This can take a minute.</source>
        <translation>Dit kan een minuut duren.</translation>
    </message>
</context>
<context>
    <name>CCopyEndBox</name>
    <message>
        <source>Show the list</source>
        <translation>Toon lijst</translation>
    </message>
</context>
<context>
    <name>CCopyFileWidget</name>
    <message>
        <source>Remaining Time: %1</source>
        <translation>Resterende tijd: %1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuleer</translation>
    </message>
    <message>
        <source>Calculating...</source>
        <translation>wordt berekend…</translation>
    </message>
    <message>
        <source>Copying files to (%1): %2</source>
        <translation>Bestanden worden gekopieerd naar ‘%1’: %2</translation>
    </message>
    <message>
        <source>Copy file completed!</source>
        <translation>Het kopiëren van de bestanden is voltooid!</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Your data might not be copied completely, are you sure to stop the copying process?</source>
        <translation>Mogelijk zijn nog niet al je gegevens gekopieerd. Weet je zeker dat je het kopiëren wilt stoppen?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>The destination storage device has been removed! Please check and connect the storage device then try again.</source>
        <translation>Het bestemmingsapparaat is losgekoppeld! Controleer het apparaat, sluit het weer aan en probeer het opnieuw.</translation>
    </message>
    <message>
        <source>Copy Progress</source>
        <translation>Voortgang van het kopiëren</translation>
    </message>
    <message>
        <source>Everything was on the disk before it was removed.</source>
        <translation>Alles stond op de schijf voordat die werd verwijderd.</translation>
    </message>
</context>
<context>
    <name>CCopyReportText</name>
    <message>
        <source>This copy has not come to its end.</source>
        <translation>Deze kopie is niet voltooid.</translation>
    </message>
    <message>
        <source>If no copy is running any more, it broke off: the program was ended, the disk was removed or the power failed. Files are missing that are not named below. Copy everything again.</source>
        <translation>Als er geen kopie meer loopt, is deze afgebroken: het programma is beëindigd, de schijf verwijderd of de stroom uitgevallen. Er ontbreken bestanden die hieronder niet worden genoemd. Kopieer alles opnieuw.</translation>
    </message>
    <message>
        <source>Not copied whole so far:</source>
        <translation>Tot nu toe niet volledig gekopieerd:</translation>
    </message>
    <message>
        <source>Items that are missing, not whole or worth a note:</source>
        <translation>Onderdelen die ontbreken, niet volledig zijn of een opmerking verdienen:</translation>
    </message>
    <message>
        <source>Copy everything again, best onto another disk.</source>
        <translation>Kopieer alles opnieuw, het liefst naar een andere schijf.</translation>
    </message>
    <message>
        <source>What had not been copied by then is missing and is not named below.</source>
        <translation>Wat toen nog niet was gekopieerd, ontbreekt en wordt hieronder niet genoemd.</translation>
    </message>
    <message>
        <source>Everything is whole. The items below are worth a note.</source>
        <translation>Alles is volledig. Bij de onderdelen hieronder hoort een opmerking.</translation>
    </message>
    <message>
        <source>Try to copy the items below again. If the disk is full, or its file system takes no large files, use another disk. Keep this list with the copy until you have them all.</source>
        <translation>Probeer de onderdelen hieronder opnieuw te kopiëren. Als de schijf vol is of het bestandssysteem geen grote bestanden aanneemt, gebruik dan een andere schijf. Bewaar deze lijst bij de kopie tot u ze allemaal hebt.</translation>
    </message>
    <message>
        <source>Report on a copy of files</source>
        <translation>Verslag van het kopiëren van bestanden</translation>
    </message>
    <message>
        <source>From: %1</source>
        <translation>Van: %1</translation>
    </message>
    <message>
        <source>To: %1</source>
        <translation>Naar: %1</translation>
    </message>
    <message>
        <source>Begun: %1</source>
        <translation>Begonnen: %1</translation>
    </message>
    <message>
        <source>To be copied: at most %1</source>
        <translation>Te kopiëren: hoogstens %1</translation>
    </message>
    <message>
        <source>Ended: %1</source>
        <translation>Beëindigd: %1</translation>
    </message>
    <message>
        <source>Whole: %1, %2</source>
        <translation>Volledig: %1, %2</translation>
    </message>
    <message>
        <source>Not whole: %1</source>
        <translation>Niet volledig: %1</translation>
    </message>
    <message>
        <source>And %1 more, for which there was no room.</source>
        <translation>En nog %1, waarvoor geen ruimte was.</translation>
    </message>
</context>
<context>
    <name>CCopyStateLine</name>
    <message>
        <source>%1 so far</source>
        <translation>Tot nu toe %1</translation>
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
        <translation>Kopiëren wordt gestopt…</translation>
    </message>
    <message>
        <source>The last bytes are being written to the disk…</source>
        <translation>De laatste gegevens worden naar de schijf geschreven…</translation>
    </message>
    <message>
        <source>The disk has not answered for %1 seconds: %2</source>
        <translation>De schijf reageert al %1 seconden niet: %2</translation>
    </message>
</context>
<context>
    <name>CCopyText</name>
    <message>
        <source>Its folder cannot be created.</source>
        <translation>De map ervoor kan niet worden aangemaakt.</translation>
    </message>
    <message>
        <source>It cannot be created on the disk.</source>
        <translation>Het kan niet op de schijf worden aangemaakt.</translation>
    </message>
    <message>
        <source>It cannot be written to the disk.</source>
        <translation>Het kan niet naar de schijf worden geschreven.</translation>
    </message>
    <message>
        <source>The disk did not take all of it.</source>
        <translation>De schijf heeft niet alles ervan aangenomen.</translation>
    </message>
    <message>
        <source>It cannot be opened.</source>
        <translation>Het kan niet worden geopend.</translation>
    </message>
    <message>
        <source>It cannot be read.</source>
        <translation>Het kan niet worden gelezen.</translation>
    </message>
    <message>
        <source>It became shorter while it was copied.</source>
        <translation>Het werd korter terwijl het werd gekopieerd.</translation>
    </message>
    <message>
        <source>It changed while it was copied.</source>
        <translation>Het is gewijzigd terwijl het werd gekopieerd.</translation>
    </message>
    <message>
        <source>It was removed while it was copied.</source>
        <translation>Het is verwijderd terwijl het werd gekopieerd.</translation>
    </message>
    <message>
        <source>Something else has taken its place.</source>
        <translation>Iets anders is ervoor in de plaats gekomen.</translation>
    </message>
    <message>
        <source>It is not a file, but a pipe, a socket or a device.</source>
        <translation>Het is geen bestand, maar een pipe, een socket of een apparaat.</translation>
    </message>
    <message>
        <source>The folder was not opened, so its contents were not copied.</source>
        <translation>De map is niet geopend, dus de inhoud is niet gekopieerd.</translation>
    </message>
    <message>
        <source>It was not in the list, so it was not copied.</source>
        <translation>Het stond niet in de lijst, dus het is niet gekopieerd.</translation>
    </message>
    <message>
        <source>It is a link to a folder that it lies in.</source>
        <translation>Het is een link naar een map waar het zelf in ligt.</translation>
    </message>
    <message>
        <source>The folder cannot be read.</source>
        <translation>De map kan niet worden gelezen.</translation>
    </message>
    <message>
        <source>It was copied whole, but its date could not be kept.</source>
        <translation>Het is volledig gekopieerd, maar de datum kon niet worden behouden.</translation>
    </message>
    <message>
        <source>The disk was removed.</source>
        <translation>De schijf is verwijderd.</translation>
    </message>
    <message>
        <source>The copy was stopped.</source>
        <translation>Het kopiëren is gestopt.</translation>
    </message>
    <message>
        <source>There was not enough memory.</source>
        <translation>Er was niet genoeg geheugen.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it.</source>
        <translation>De schijf heeft niet bevestigd dat alles erop staat.</translation>
    </message>
    <message>
        <source>It is a link to another disk. What it leads to was copied.</source>
        <translation>Het is een link naar een andere schijf. Gekopieerd is waar hij naar verwijst.</translation>
    </message>
    <message>
        <source>The disk does not answer.</source>
        <translation>De schijf reageert niet.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>De schijf is vol.</translation>
    </message>
    <message>
        <source>Too large for the file system of this disk.</source>
        <translation>Te groot voor het bestandssysteem van deze schijf.</translation>
    </message>
    <message>
        <source>Access is not permitted.</source>
        <translation>De toegang is niet toegestaan.</translation>
    </message>
    <message>
        <source>The disk is write-protected.</source>
        <translation>De schijf is beveiligd tegen schrijven.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>De schijf meldt een fout.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>Het is er niet meer.</translation>
    </message>
    <message>
        <source>Its name or path is too long.</source>
        <translation>De naam of het pad ervan is te lang.</translation>
    </message>
    <message>
        <source>The disk is not connected any more.</source>
        <translation>De schijf is niet meer aangesloten.</translation>
    </message>
    <message>
        <source>Something else of that name is in its place.</source>
        <translation>Op die plek staat iets anders met die naam.</translation>
    </message>
    <message>
        <source>The file system of this disk does not allow its name.</source>
        <translation>Het bestandssysteem van deze schijf staat de naam ervan niet toe.</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <extracomment>Two sentences, one behind the other.</extracomment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 van %2</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 byte</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 bytes</translation>
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
        <translation>1 bestand</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 bestanden</translation>
    </message>
    <message>
        <source>1 of %1 items was not copied whole.</source>
        <translation>1 van %1 onderdelen is niet volledig gekopieerd.</translation>
    </message>
    <message>
        <source>%1 of %2 items were not copied whole.</source>
        <translation>%1 van %2 onderdelen zijn niet volledig gekopieerd.</translation>
    </message>
    <message>
        <source>The copy was stopped. %1, %2 are on the disk.</source>
        <translation>Het kopiëren is gestopt. Op de schijf: %1, %2.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it. Do not rely on this copy.</source>
        <translation>De schijf heeft niet bevestigd dat alles erop staat. Vertrouw niet op deze kopie.</translation>
    </message>
    <message>
        <source>Nothing was copied.</source>
        <translation>Er is niets gekopieerd.</translation>
    </message>
    <message>
        <source>%1, %2 are on the disk. It can be unplugged now.</source>
        <translation>Op de schijf: %1, %2. De schijf kan nu worden losgekoppeld.</translation>
    </message>
    <message>
        <source>The list could not be saved on the disk.</source>
        <translation>De lijst kon niet op de schijf worden bewaard.</translation>
    </message>
    <message>
        <source>Parts of it cannot be read; zeros stand for the bytes %1.</source>
        <translation>Delen ervan kunnen niet worden gelezen; voor de bytes %1 staan nullen.</translation>
    </message>
    <message>
        <source>Another disk is mounted here. What is on it was not copied.</source>
        <translation>Hier is een andere schijf geactiveerd. De inhoud ervan is niet gekopieerd.</translation>
    </message>
    <message>
        <source>It is the same folder as another one in this copy, or the copy itself.</source>
        <translation>Het is dezelfde map als een andere in deze kopie, of de kopie zelf.</translation>
    </message>
    <message>
        <source>It is a link to %1, and this disk cannot hold links.</source>
        <translation>Het is een link naar ‘%1’ en deze schijf kan geen links bevatten.</translation>
    </message>
    <message>
        <source>The disk does not take its name. There it is called %1.</source>
        <translation>De schijf staat deze naam niet toe. Daar heet het onderdeel ‘%1’.</translation>
    </message>
    <message>
        <source>Items whose permissions this disk cannot hold: %1</source>
        <translation>Onderdelen waarvan deze schijf de bevoegdheden niet kan bewaren: %1</translation>
    </message>
    <message>
        <source>Items whose extended attributes this disk cannot hold: %1</source>
        <translation>Onderdelen waarvan deze schijf de uitgebreide kenmerken niet kan bewaren: %1</translation>
    </message>
    <message>
        <source>Folders whose dates this disk cannot hold: %1</source>
        <translation>Mappen waarvan deze schijf de datum niet kan bewaren: %1</translation>
    </message>
    <message>
        <source>Its resource fork, a part of it, cannot be read.</source>
        <translation>De resource fork, een deel ervan, kan niet worden gelezen.</translation>
    </message>
    <message>
        <source>Its contents are in its resource fork, and this disk cannot hold that.</source>
        <translation>De inhoud staat in de resource fork, en die kan deze schijf niet bewaren.</translation>
    </message>
    <message>
        <source>Items whose resource forks this disk cannot hold: %1</source>
        <translation>Onderdelen waarvan deze schijf de resource fork niet kan bewaren: %1</translation>
    </message>
    <message>
        <source>Items whose Finder tags and icons this disk cannot hold: %1</source>
        <translation>Onderdelen waarvan deze schijf de Finder-tags en symbolen niet kan bewaren: %1</translation>
    </message>
    <message>
        <source>Items whose access lists this disk cannot hold: %1</source>
        <translation>Onderdelen waarvan deze schijf de toegangslijsten niet kan bewaren: %1</translation>
    </message>
    <message>
        <source>Items whose creation dates this disk cannot hold: %1</source>
        <translation>Onderdelen waarvan deze schijf de aanmaakdatum niet kan bewaren: %1</translation>
    </message>
    <message>
        <source>Locked items whose copies are not locked: %1</source>
        <translation>Vergrendelde onderdelen waarvan de kopie niet vergrendeld is: %1</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>De inhoud staat alleen in iCloud, niet op deze Mac.</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>De bestemming is nu ‘%1’</translation>
    </message>
    <message>
        <source>%1 cannot hold a file of %2 or more.</source>
        <translation>‘%1’ kan geen bestanden van %2 of groter bevatten.</translation>
    </message>
</context>
<context>
    <name>CFolderTrouble</name>
    <message>
        <source>This folder may not be read, nothing of it is copied.</source>
        <translation>Deze map mag niet worden gelezen, er wordt niets uit gekopieerd.</translation>
    </message>
    <message>
        <source>This folder cannot be read: %1</source>
        <translation>Deze map kan niet worden gelezen: %1</translation>
    </message>
    <message>
        <source>Only a part of this folder can be read: %1</source>
        <translation>Slechts een deel van deze map kan worden gelezen: %1</translation>
    </message>
    <message>
        <source>This link leads back to a folder that it lies in.</source>
        <translation>Deze link leidt terug naar een map waar hij zelf in ligt.</translation>
    </message>
    <message>
        <source>The disk does not answer. What is in this folder appears as soon as it does.</source>
        <translation>De schijf reageert niet. De inhoud van deze map verschijnt zodra ze reageert.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>De schijf meldt een fout.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>Het is er niet meer.</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>De inhoud staat alleen in iCloud, niet op deze Mac.</translation>
    </message>
</context>
<context>
    <name>CItemListDialog</name>
    <message>
        <source>Close</source>
        <translation>Sluit</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimaliseer</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Vergroot/verklein</translation>
    </message>
    <message>
        <source>Items of this copy that need your attention</source>
        <translation>Onderdelen van deze kopie die uw aandacht vragen</translation>
    </message>
    <message>
        <source>and %1 more, see %2</source>
        <translation>en nog %1, zie %2</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>en nog %1</translation>
    </message>
    <message>
        <source>This list is also in %1</source>
        <translation>Deze lijst staat ook in %1</translation>
    </message>
</context>
<context>
    <name>CLastCopyNotice</name>
    <message>
        <source>Show the list</source>
        <translation>Toon lijst</translation>
    </message>
</context>
<context>
    <name>CLogNotice</name>
    <message>
        <source>The log is kept in %1</source>
        <extracomment>The path of a folder.</extracomment>
        <translation>Het logboek staat in %1</translation>
    </message>
    <message>
        <source>The log cannot be written.</source>
        <translation>Het logboek kan niet worden geschreven.</translation>
    </message>
</context>
<context>
    <name>CNoticeLine</name>
    <message>
        <source>%1 does not answer.</source>
        <translation>‘%1’ reageert niet.</translation>
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
        <translation>Bezig met zoeken</translation>
    </message>
    <message>
        <source>image</source>
        <translation>afbeelding</translation>
    </message>
    <message>
        <source>Searching, please wait...</source>
        <translation>Bezig met zoeken, even geduld…</translation>
    </message>
</context>
<context>
    <name>CSelFileWidget</name>
    <message>
        <source>Source</source>
        <translation>Bron</translation>
    </message>
    <message>
        <source>Select File to Copy:</source>
        <translation>Selecteer de te kopiëren bestanden:</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>Bestemming</translation>
    </message>
    <message>
        <source>Select Destination Disk:</source>
        <translation>Selecteer de bestemmingsschijf:</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieer</translation>
    </message>
    <message>
        <source>No disk to copy files from was found.</source>
        <translation>Er is geen schijf gevonden waarvan bestanden kunnen worden gekopieerd.</translation>
    </message>
    <message>
        <source>No USB disk was found.
Connect one, and it appears here.</source>
        <translation>Geen USB-schijf gevonden.
Sluit er een aan, dan verschijnt die hier.</translation>
    </message>
    <message>
        <source>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1GB&lt;/span&gt; Available, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2GB&lt;/span&gt; Total</source>
        <translation>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1&#xa0;GB&lt;/span&gt; beschikbaar, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2&#xa0;GB&lt;/span&gt; totaal</translation>
    </message>
    <message>
        <source>Your drive may be damaged and Tarnwick can not write to this drive, please change another one and retry.</source>
        <translation>De schijf is mogelijk beschadigd en Tarnwick kan er niet naar schrijven. Gebruik een andere schijf en probeer het opnieuw.</translation>
    </message>
    <message>
        <source>Calculating files size...</source>
        <translation>Bestandsgrootte wordt berekend…</translation>
    </message>
    <message>
        <source>No enough space, please select other Hard Disk or USB flash drive.</source>
        <translation>Onvoldoende ruimte. Selecteer een andere harde schijf of een andere USB-stick.</translation>
    </message>
    <message>
        <source>Tarnwick</source>
        <translation>Tarnwick</translation>
    </message>
    <message>
        <source> at </source>
        <translation> om </translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Refresh List of Disks</source>
        <translation>Werk de lijst met schijven bij</translation>
    </message>
    <message>
        <source>Files selected</source>
        <translation>Bestanden geselecteerd</translation>
    </message>
    <message>
        <source>No files selected</source>
        <translation>Geen bestanden geselecteerd</translation>
    </message>
    <message>
        <source>%1 are needed, %2 are free.</source>
        <translation>Er is %1 nodig en %2 vrij.</translation>
    </message>
    <message>
        <source>Complete rescue</source>
        <translation>Volledige redding</translation>
    </message>
    <message>
        <source>Copies everything in what is ticked, whether the list shows it or not.</source>
        <translation>Kopieert alles in de geselecteerde onderdelen, of het nu in de lijst staat of niet.</translation>
    </message>
</context>
<context>
    <name>CSourceNotice</name>
    <message>
        <source>%1 is there now: press the round arrow to list it.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>‘%1’ is er nu: klik op de ronde pijl om het te tonen.</translation>
    </message>
    <message>
        <source>The users&apos; files are on %1, not on %2.</source>
        <extracomment>Names of two volumes: where the users&apos; files are, and where the user may be looking for them.</extracomment>
        <translation>De bestanden van de gebruikers staan op ‘%1’, niet op ‘%2’.</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them in Disk Utility, then press the round arrow.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>Gebruikersbestanden van ‘%1’ vergrendeld? Ontgrendel ze in Schijfhulpprogramma en klik op de ronde pijl.</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them with their password, then start Tarnwick again.</source>
        <extracomment>The name of a volume.</extracomment>
        <translation>De bestanden van %1 zijn misschien vergrendeld: ontgrendel ze met het wachtwoord en start Tarnwick opnieuw.</translation>
    </message>
</context>
<context>
    <name>CStartSplash</name>
    <message>
        <source>Searching for disks…</source>
        <translation>Zoeken naar schijven…</translation>
    </message>
    <message>
        <source>Waiting for %1…</source>
        <translation>Wachten op ‘%1’…</translation>
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
        <translation>logo</translation>
    </message>
    <message>
        <source>title</source>
        <translation>titel</translation>
    </message>
    <message>
        <source>Kelvane Tarnwick</source>
        <translation>Kelvane Tarnwick</translation>
    </message>
    <message>
        <source>Your computer will restart if you exit the program. Are you sure you want to exit?</source>
        <translation>Als je het programma stopt, wordt de computer opnieuw opgestart. Weet je zeker dat je wilt stoppen?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuleer</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Sluit</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimaliseer</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Vergroot/verklein</translation>
    </message>
</context>
<context>
    <name>CTreeNotices</name>
    <message>
        <source>Only opened folders of a fully ticked volume are copied.</source>
        <translation>Van een volledig geselecteerd volume worden alleen geopende mappen gekopieerd.</translation>
    </message>
    <message>
        <source>Entries left out of %1 because of their names: %2</source>
        <translation>Vanwege hun naam weggelaten onderdelen in ‘%1’: %2</translation>
    </message>
    <message>
        <source>Entries that are not in the list are not copied.</source>
        <translation>Onderdelen die niet in de lijst staan, worden niet gekopieerd.</translation>
    </message>
</context>
<context>
    <name>KvMessageBox</name>
    <message>
        <source>Form</source>
        <translation>Formulier</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>Tekstlabel</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuleer</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nee</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Sluit</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimaliseer</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Vergroot/verklein</translation>
    </message>
</context>
</TS>
