<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it_IT" sourcelanguage="en">
<context>
    <name>CCopyFileWidget</name>
    <message>
        <source>Remaining Time: %1</source>
        <translation>Tempo rimanente: %1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>Calculating...</source>
        <translation>calcolo in corso…</translation>
    </message>
    <message>
        <source>Copying files to (%1): %2</source>
        <translation>Copia dei file su “%1”: %2</translation>
    </message>
    <message>
        <source>Copy file completed!</source>
        <translation>Copia dei file completata!</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Your data might not be copied completely, are you sure to stop the copying process?</source>
        <translation>I dati potrebbero non essere stati copiati completamente. Vuoi davvero interrompere la copia?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Sì</translation>
    </message>
    <message>
        <source>The destination storage device has been removed! Please check and connect the storage device then try again.</source>
        <translation>Il dispositivo di archiviazione di destinazione è stato rimosso! Controllalo, ricollegalo e riprova.</translation>
    </message>
    <message>
        <source>Copy Progress</source>
        <translation>Avanzamento della copia</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>La destinazione ora è “%1”</translation>
    </message>
</context>
<context>
    <name>CLastCopyNotice</name>
    <message>
        <source>Show the list</source>
        <translation>Mostra l’elenco</translation>
    </message>
</context>
<context>
    <name>CNoticeLine</name>
    <message>
        <source>%1 does not answer.</source>
        <translation>“%1” non risponde.</translation>
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
        <translation>Ricerca in corso</translation>
    </message>
    <message>
        <source>image</source>
        <translation>immagine</translation>
    </message>
    <message>
        <source>Searching, please wait...</source>
        <translation>Ricerca in corso, attendi…</translation>
    </message>
</context>
<context>
    <name>CSelFileWidget</name>
    <message>
        <source>Source</source>
        <translation>Origine</translation>
    </message>
    <message>
        <source>Select File to Copy:</source>
        <translation>Seleziona i file da copiare:</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>Destinazione</translation>
    </message>
    <message>
        <source>Select Destination Disk:</source>
        <translation>Seleziona il disco di destinazione:</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copia</translation>
    </message>
    <message>
        <source>No disk to copy files from was found.</source>
        <translation>Non è stato trovato alcun disco da cui copiare i file.</translation>
    </message>
    <message>
        <source>No USB disk was found.
Connect one, and it appears here.</source>
        <translation>Nessun disco USB trovato.
Collegane uno e apparirà qui.</translation>
    </message>
    <message>
        <source>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1GB&lt;/span&gt; Available, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2GB&lt;/span&gt; Total</source>
        <translation>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1&#xa0;GB&lt;/span&gt; disponibili, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2&#xa0;GB&lt;/span&gt; in totale</translation>
    </message>
    <message>
        <source>Your drive may be damaged and Tarnwick can not write to this drive, please change another one and retry.</source>
        <translation>L’unità potrebbe essere danneggiata e Tarnwick non può scrivervi. Sostituiscila con un’altra e riprova.</translation>
    </message>
    <message>
        <source>Calculating files size...</source>
        <translation>Calcolo delle dimensioni dei file…</translation>
    </message>
    <message>
        <source>No enough space, please select other Hard Disk or USB flash drive.</source>
        <translation>Spazio insufficiente. Seleziona un altro disco rigido o un’altra unità flash USB.</translation>
    </message>
    <message>
        <source>Tarnwick</source>
        <translation>Tarnwick</translation>
    </message>
    <message>
        <source> at </source>
        <translation> alle </translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Refresh List of Disks</source>
        <translation>Aggiorna l’elenco dei dischi</translation>
    </message>
    <message>
        <source>Files selected</source>
        <translation>File selezionati</translation>
    </message>
    <message>
        <source>No files selected</source>
        <translation>Nessun file selezionato</translation>
    </message>
    <message>
        <source>%1 are needed, %2 are free.</source>
        <translation>Sono necessari %1, sono liberi %2.</translation>
    </message>
</context>
<context>
    <name>CStartSplash</name>
    <message>
        <source>Searching for disks…</source>
        <translation>Ricerca dei dischi…</translation>
    </message>
    <message>
        <source>Waiting for %1…</source>
        <translation>In attesa di “%1”…</translation>
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
        <translation>titolo</translation>
    </message>
    <message>
        <source>Kelvane Tarnwick</source>
        <translation>Kelvane Tarnwick</translation>
    </message>
    <message>
        <source>Your computer will restart if you exit the program. Are you sure you want to exit?</source>
        <translation>Se esci dal programma, il computer si riavvierà. Vuoi davvero uscire?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Sì</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Chiudi</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Contrai</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Ridimensiona</translation>
    </message>
</context>
<context>
    <name>CTreeNotices</name>
    <message>
        <source>Only opened folders of a fully ticked volume are copied.</source>
        <translation>Di un volume selezionato per intero vengono copiate solo le cartelle aperte.</translation>
    </message>
    <message>
        <source>Entries left out of %1 because of their names: %2</source>
        <translation>Elementi di “%1” esclusi per via del nome: %2</translation>
    </message>
</context>
<context>
    <name>KvMessageBox</name>
    <message>
        <source>Form</source>
        <translation>Modulo</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>Etichetta di testo</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Sì</translation>
    </message>
    <message>
        <source>No</source>
        <translation>No</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Chiudi</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Contrai</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Ridimensiona</translation>
    </message>
</context>
</TS>
