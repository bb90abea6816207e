<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="nl_NL" sourcelanguage="en">
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
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>De bestemming is nu ‘%1’</translation>
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
