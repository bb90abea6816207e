<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it_IT" sourcelanguage="en">
<context>
    <name>CAskAgainPanel</name>
    <message>
        <source>Tarnwick stopped unexpectedly</source>
        <translation>Tarnwick si è interrotto in modo imprevisto</translation>
    </message>
    <message>
        <source>Files that were copied before are still on the disk. If a copy was running, start again and copy everything once more.</source>
        <translation>I file copiati prima sono ancora sul disco. Se era in corso una copia, ricomincia e copia di nuovo tutto.</translation>
    </message>
    <message>
        <source>Restart the computer</source>
        <translation>Riavvia il computer</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>Ricomincia</translation>
    </message>
</context>
<context>
    <name>CAskEndPanel</name>
    <message>
        <source>A disk did not answer</source>
        <translation>Un disco non ha risposto</translation>
    </message>
    <message>
        <source>You can unplug your disks now</source>
        <translation>Ora puoi scollegare i tuoi dischi</translation>
    </message>
    <message>
        <source>Not everything may be on it yet. Wait while its light flashes, and check the copied files on another computer.</source>
        <translation>Forse non è ancora tutto sul disco. Attendi finché la sua spia lampeggia, poi controlla i file copiati su un altro computer.</translation>
    </message>
    <message>
        <source>Tarnwick has ended, and nothing is written to a disk any more.</source>
        <translation>Tarnwick è terminato e non viene più scritto nulla sui dischi.</translation>
    </message>
    <message>
        <source>Leave the stick that you started from in its place until the screen goes dark.</source>
        <translation>Lascia inserita la chiavetta da cui hai avviato finché lo schermo non si spegne.</translation>
    </message>
    <message>
        <source>Power off</source>
        <translation>Spegni</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Riavvia</translation>
    </message>
    <message>
        <source>The computer restarts by itself. Seconds left: %1</source>
        <translation>Il computer si riavvia da solo. Secondi rimanenti: %1</translation>
    </message>
</context>
<context>
    <name>CAskMissingPanel</name>
    <message>
        <source>Locked with a password</source>
        <translation>Bloccato con una password</translation>
    </message>
    <message>
        <source>Cannot be read, perhaps damaged</source>
        <translation>Illeggibile, forse danneggiato</translation>
    </message>
    <message>
        <source>Does not answer</source>
        <translation>Non risponde</translation>
    </message>
    <message>
        <source>One of several disks that belong together</source>
        <translation>Uno di più dischi che vanno usati insieme</translation>
    </message>
    <message>
        <source>Needs more memory than this computer has</source>
        <translation>Richiede più memoria di quella di questo computer</translation>
    </message>
    <message>
        <source>Of a kind that Tarnwick cannot read</source>
        <translation>In un formato che Tarnwick non può leggere</translation>
    </message>
    <message>
        <source>Another computer or a specialist may still be able to read what cannot be read here. Do not format or repair it before.</source>
        <translation>Ciò che qui non si può leggere forse si può ancora leggere su un altro computer o con l’aiuto di uno specialista. Prima non inizializzarlo e non ripararlo.</translation>
    </message>
    <message>
        <source>A disk that answers later appears by itself.</source>
        <translation>Un disco che risponde più tardi appare da solo.</translation>
    </message>
    <message>
        <source>To type a password, restart the computer and start Tarnwick again.</source>
        <translation>Per digitare una password, riavvia il computer e poi di nuovo Tarnwick.</translation>
    </message>
    <message>
        <source>Not everything can be shown</source>
        <translation>Non è possibile mostrare tutto</translation>
    </message>
    <message>
        <source>Nothing can be copied from these disks or parts of disks:</source>
        <translation>Non è possibile copiare nulla da questi dischi o parti di dischi:</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continua</translation>
    </message>
</context>
<context>
    <name>CAskPasswordPanel</name>
    <message>
        <source>Locked by Windows (BitLocker)</source>
        <translation>Bloccato da Windows (BitLocker)</translation>
    </message>
    <message>
        <source>Locked by macOS (FileVault)</source>
        <translation>Bloccato da macOS (FileVault)</translation>
    </message>
    <message>
        <source>Locked by Linux (LUKS)</source>
        <translation>Bloccato da Linux (LUKS)</translation>
    </message>
    <message>
        <source>Type its password or its recovery key of 48 digits.</source>
        <translation>Digita la password o la chiave di ripristino di 48 cifre.</translation>
    </message>
    <message>
        <source>Type its password: mostly the one with which you log in to your Mac.</source>
        <translation>Digita la password: di solito quella con cui accedi al tuo Mac.</translation>
    </message>
    <message>
        <source>Type the password that your computer asks for when it starts, or when you plug this disk in.</source>
        <translation>Digita la password che il tuo computer chiede all’avvio o quando colleghi questo disco.</translation>
    </message>
    <message>
        <source>Then files can be copied to the disk.</source>
        <translation>Poi vi si potranno copiare dei file.</translation>
    </message>
    <message>
        <source>Nothing on the disk is changed.</source>
        <translation>Sul disco non viene modificato nulla.</translation>
    </message>
    <message>
        <source>This disk needs its password</source>
        <translation>Questo disco richiede la password</translation>
    </message>
    <message>
        <source>That password did not open the disk. Try %1 of %2.</source>
        <translation>Con quella password il disco non si è aperto. Tentativo %1 di %2.</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>Show what I type</source>
        <translation>Mostra ciò che digito</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Il blocco maiuscole è attivo.</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <translation>Tastiera:</translation>
    </message>
    <message>
        <source>Skip this disk</source>
        <translation>Salta questo disco</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>Sblocca</translation>
    </message>
</context>
<context>
    <name>CAskSourcePanel</name>
    <message>
        <source>What is this USB disk for?</source>
        <translation>A cosa serve questo disco USB?</translation>
    </message>
    <message>
        <source>Holds %1</source>
        <translation>Contiene %1</translation>
    </message>
    <message>
        <source>Rescue files from it</source>
        <translation>Recupera file dal disco</translation>
    </message>
    <message>
        <source>Its files are listed to be copied. Nothing on it is changed.</source>
        <translation>I suoi file vengono elencati per essere copiati. Sul disco non viene modificato nulla.</translation>
    </message>
    <message>
        <source>Copy files to it</source>
        <translation>Copia file sul disco</translation>
    </message>
    <message>
        <source>Files of other disks can be copied to it, beside what it holds.</source>
        <translation>I file di altri dischi possono esservi copiati, accanto a ciò che contiene.</translation>
    </message>
</context>
<context>
    <name>CAskWaitPanel</name>
    <message>
        <source>Looking for your disks…</source>
        <translation>Ricerca dei tuoi dischi…</translation>
    </message>
    <message>
        <source>This can take a minute.</source>
        <translation>Può richiedere un minuto.</translation>
    </message>
</context>
<context>
    <name>CCopyEndBox</name>
    <message>
        <source>Show the list</source>
        <translation>Mostra l’elenco</translation>
    </message>
</context>
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
    <message>
        <source>Everything was on the disk before it was removed.</source>
        <translation>Tutto era sul disco prima che venisse rimosso.</translation>
    </message>
</context>
<context>
    <name>CCopyReportText</name>
    <message>
        <source>This copy has not come to its end.</source>
        <translation>Questa copia non è arrivata alla fine.</translation>
    </message>
    <message>
        <source>If no copy is running any more, it broke off: the program was ended, the disk was removed or the power failed. Files are missing that are not named below. Copy everything again.</source>
        <translation>Se non è più in corso alcuna copia, si è interrotta: il programma è stato chiuso, il disco rimosso o è mancata la corrente. Mancano file che non sono indicati sotto. Copia di nuovo tutto.</translation>
    </message>
    <message>
        <source>Not copied whole so far:</source>
        <translation>Finora non copiati per intero:</translation>
    </message>
    <message>
        <source>Items that are missing, not whole or worth a note:</source>
        <translation>Elementi mancanti, incompleti o da segnalare:</translation>
    </message>
    <message>
        <source>Copy everything again, best onto another disk.</source>
        <translation>Copia di nuovo tutto, preferibilmente su un altro disco.</translation>
    </message>
    <message>
        <source>What had not been copied by then is missing and is not named below.</source>
        <translation>Ciò che fino ad allora non era stato copiato manca e non è indicato sotto.</translation>
    </message>
    <message>
        <source>Everything is whole. The items below are worth a note.</source>
        <translation>Tutto è completo. Gli elementi sotto sono da segnalare.</translation>
    </message>
    <message>
        <source>Try to copy the items below again. If the disk is full, or its file system takes no large files, use another disk. Keep this list with the copy until you have them all.</source>
        <translation>Prova a copiare di nuovo gli elementi sotto. Se il disco è pieno o il suo file system non accetta file grandi, usa un altro disco. Conserva questo elenco con la copia finché non li hai tutti.</translation>
    </message>
    <message>
        <source>Report on a copy of files</source>
        <translation>Resoconto di una copia di file</translation>
    </message>
    <message>
        <source>From: %1</source>
        <translation>Da: %1</translation>
    </message>
    <message>
        <source>To: %1</source>
        <translation>A: %1</translation>
    </message>
    <message>
        <source>Begun: %1</source>
        <translation>Inizio: %1</translation>
    </message>
    <message>
        <source>To be copied: at most %1</source>
        <translation>Da copiare: al massimo %1</translation>
    </message>
    <message>
        <source>Ended: %1</source>
        <translation>Fine: %1</translation>
    </message>
    <message>
        <source>Whole: %1, %2</source>
        <translation>Completi: %1, %2</translation>
    </message>
    <message>
        <source>Not whole: %1</source>
        <translation>Incompleti: %1</translation>
    </message>
    <message>
        <source>And %1 more, for which there was no room.</source>
        <translation>E altri %1, per i quali non c’era spazio.</translation>
    </message>
</context>
<context>
    <name>CCopyStateLine</name>
    <message>
        <source>%1 so far</source>
        <translation>Finora %1</translation>
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
        <translation>Interruzione della copia…</translation>
    </message>
    <message>
        <source>The last bytes are being written to the disk…</source>
        <translation>Scrittura degli ultimi dati sul disco…</translation>
    </message>
    <message>
        <source>The disk has not answered for %1 seconds: %2</source>
        <translation>Il disco non risponde da %1 secondi: %2</translation>
    </message>
</context>
<context>
    <name>CCopyText</name>
    <message>
        <source>Its folder cannot be created.</source>
        <translation>Impossibile creare la sua cartella.</translation>
    </message>
    <message>
        <source>It cannot be created on the disk.</source>
        <translation>Impossibile crearlo sul disco.</translation>
    </message>
    <message>
        <source>It cannot be written to the disk.</source>
        <translation>Impossibile scriverlo sul disco.</translation>
    </message>
    <message>
        <source>The disk did not take all of it.</source>
        <translation>Il disco non l’ha accettato per intero.</translation>
    </message>
    <message>
        <source>It cannot be opened.</source>
        <translation>Impossibile aprirlo.</translation>
    </message>
    <message>
        <source>It cannot be read.</source>
        <translation>Impossibile leggerlo.</translation>
    </message>
    <message>
        <source>It became shorter while it was copied.</source>
        <translation>Si è accorciato durante la copia.</translation>
    </message>
    <message>
        <source>It changed while it was copied.</source>
        <translation>È cambiato durante la copia.</translation>
    </message>
    <message>
        <source>It was removed while it was copied.</source>
        <translation>È stato rimosso durante la copia.</translation>
    </message>
    <message>
        <source>Something else has taken its place.</source>
        <translation>Qualcos’altro ha preso il suo posto.</translation>
    </message>
    <message>
        <source>It is not a file, but a pipe, a socket or a device.</source>
        <translation>Non è un file, ma una pipe, un socket o un dispositivo.</translation>
    </message>
    <message>
        <source>The folder was not opened, so its contents were not copied.</source>
        <translation>La cartella non è stata aperta, quindi il suo contenuto non è stato copiato.</translation>
    </message>
    <message>
        <source>It was not in the list, so it was not copied.</source>
        <translation>Non era nell’elenco, quindi non è stato copiato.</translation>
    </message>
    <message>
        <source>It is a link to a folder that it lies in.</source>
        <translation>È un link a una cartella in cui si trova.</translation>
    </message>
    <message>
        <source>The folder cannot be read.</source>
        <translation>Impossibile leggere la cartella.</translation>
    </message>
    <message>
        <source>It was copied whole, but its date could not be kept.</source>
        <translation>È stato copiato per intero, ma non è stato possibile mantenerne la data.</translation>
    </message>
    <message>
        <source>The disk was removed.</source>
        <translation>Il disco è stato rimosso.</translation>
    </message>
    <message>
        <source>The copy was stopped.</source>
        <translation>La copia è stata interrotta.</translation>
    </message>
    <message>
        <source>There was not enough memory.</source>
        <translation>La memoria non era sufficiente.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it.</source>
        <translation>Il disco non ha confermato che tutto vi si trovi.</translation>
    </message>
    <message>
        <source>It is a link to another disk. What it leads to was copied.</source>
        <translation>È un link a un altro disco. È stato copiato ciò a cui porta.</translation>
    </message>
    <message>
        <source>The disk does not answer.</source>
        <translation>Il disco non risponde.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>Il disco è pieno.</translation>
    </message>
    <message>
        <source>Too large for the file system of this disk.</source>
        <translation>Troppo grande per il file system di questo disco.</translation>
    </message>
    <message>
        <source>Access is not permitted.</source>
        <translation>L’accesso non è consentito.</translation>
    </message>
    <message>
        <source>The disk is write-protected.</source>
        <translation>Il disco è protetto da scrittura.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>Il disco segnala un errore.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>Non c’è più.</translation>
    </message>
    <message>
        <source>Its name or path is too long.</source>
        <translation>Il suo nome o percorso è troppo lungo.</translation>
    </message>
    <message>
        <source>The disk is not connected any more.</source>
        <translation>Il disco non è più collegato.</translation>
    </message>
    <message>
        <source>Something else of that name is in its place.</source>
        <translation>Al suo posto c’è qualcos’altro con quel nome.</translation>
    </message>
    <message>
        <source>The file system of this disk does not allow its name.</source>
        <translation>Il file system di questo disco non ammette il suo nome.</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <extracomment>Two sentences, one behind the other.</extracomment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 di %2</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 byte</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 byte</translation>
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
        <translation>1 file</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 file</translation>
    </message>
    <message>
        <source>1 of %1 items was not copied whole.</source>
        <translation>1 elemento su %1 non è stato copiato per intero.</translation>
    </message>
    <message>
        <source>%1 of %2 items were not copied whole.</source>
        <translation>%1 elementi su %2 non sono stati copiati per intero.</translation>
    </message>
    <message>
        <source>The copy was stopped. %1, %2 are on the disk.</source>
        <translation>La copia è stata interrotta. Sul disco: %1, %2.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it. Do not rely on this copy.</source>
        <translation>Il disco non ha confermato che tutto vi si trovi. Non fare affidamento su questa copia.</translation>
    </message>
    <message>
        <source>Nothing was copied.</source>
        <translation>Non è stato copiato nulla.</translation>
    </message>
    <message>
        <source>%1, %2 are on the disk. It can be unplugged now.</source>
        <translation>Sul disco: %1, %2. Ora può essere scollegato.</translation>
    </message>
    <message>
        <source>The list could not be saved on the disk.</source>
        <translation>Impossibile salvare l’elenco sul disco.</translation>
    </message>
    <message>
        <source>Parts of it cannot be read; zeros stand for the bytes %1.</source>
        <translation>Alcune parti non si possono leggere; al posto dei byte %1 ci sono zeri.</translation>
    </message>
    <message>
        <source>Another disk is mounted here. What is on it was not copied.</source>
        <translation>Qui è attivato un altro disco. Il suo contenuto non è stato copiato.</translation>
    </message>
    <message>
        <source>It is the same folder as another one in this copy, or the copy itself.</source>
        <translation>È la stessa cartella di un’altra di questa copia, o la copia stessa.</translation>
    </message>
    <message>
        <source>It is a link to %1, and this disk cannot hold links.</source>
        <translation>È un link a “%1” e questo disco non può contenere link.</translation>
    </message>
    <message>
        <source>The disk does not take its name. There it is called %1.</source>
        <translation>Il disco non ammette questo nome. Lì l’elemento si chiama “%1”.</translation>
    </message>
    <message>
        <source>Items whose permissions this disk cannot hold: %1</source>
        <translation>Elementi di cui questo disco non può mantenere i permessi: %1</translation>
    </message>
    <message>
        <source>Items whose extended attributes this disk cannot hold: %1</source>
        <translation>Elementi di cui questo disco non può mantenere gli attributi estesi: %1</translation>
    </message>
    <message>
        <source>Folders whose dates this disk cannot hold: %1</source>
        <translation>Cartelle di cui questo disco non può mantenere la data: %1</translation>
    </message>
    <message>
        <source>Its resource fork, a part of it, cannot be read.</source>
        <translation>Impossibile leggere il suo resource fork, che ne fa parte.</translation>
    </message>
    <message>
        <source>Its contents are in its resource fork, and this disk cannot hold that.</source>
        <translation>Il suo contenuto è nel resource fork, che questo disco non può mantenere.</translation>
    </message>
    <message>
        <source>Items whose resource forks this disk cannot hold: %1</source>
        <translation>Elementi di cui questo disco non può mantenere il resource fork: %1</translation>
    </message>
    <message>
        <source>Items whose Finder tags and icons this disk cannot hold: %1</source>
        <translation>Elementi di cui questo disco non può mantenere i tag e le icone del Finder: %1</translation>
    </message>
    <message>
        <source>Items whose access lists this disk cannot hold: %1</source>
        <translation>Elementi di cui questo disco non può mantenere gli elenchi di accesso: %1</translation>
    </message>
    <message>
        <source>Items whose creation dates this disk cannot hold: %1</source>
        <translation>Elementi di cui questo disco non può mantenere la data di creazione: %1</translation>
    </message>
    <message>
        <source>Locked items whose copies are not locked: %1</source>
        <translation>Elementi bloccati le cui copie non sono bloccate: %1</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>Il contenuto è solo su iCloud, non su questo Mac.</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>La destinazione ora è “%1”</translation>
    </message>
    <message>
        <source>%1 cannot hold a file of %2 or more.</source>
        <translation>“%1” non può contenere file di %2 o più.</translation>
    </message>
</context>
<context>
    <name>CFolderTrouble</name>
    <message>
        <source>This folder may not be read, nothing of it is copied.</source>
        <translation>La lettura di questa cartella non è consentita, nulla del suo contenuto viene copiato.</translation>
    </message>
    <message>
        <source>This folder cannot be read: %1</source>
        <translation>Impossibile leggere questa cartella: %1</translation>
    </message>
    <message>
        <source>Only a part of this folder can be read: %1</source>
        <translation>È possibile leggere solo una parte di questa cartella: %1</translation>
    </message>
    <message>
        <source>This link leads back to a folder that it lies in.</source>
        <translation>Questo link riporta a una cartella che lo contiene.</translation>
    </message>
    <message>
        <source>The disk does not answer. What is in this folder appears as soon as it does.</source>
        <translation>Il disco non risponde. Il contenuto di questa cartella apparirà non appena risponderà.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>Il disco segnala un errore.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>Non c’è più.</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>Il contenuto è solo su iCloud, non su questo Mac.</translation>
    </message>
</context>
<context>
    <name>CItemListDialog</name>
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
    <message>
        <source>Items of this copy that need your attention</source>
        <translation>Elementi di questa copia da controllare</translation>
    </message>
    <message>
        <source>and %1 more, see %2</source>
        <translation>e altri %1; vedi %2</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>e altri %1</translation>
    </message>
    <message>
        <source>This list is also in %1</source>
        <translation>Questo elenco si trova anche in %1</translation>
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
    <name>CLogNotice</name>
    <message>
        <source>The log is kept in %1</source>
        <extracomment>The path of a folder.</extracomment>
        <translation>Il registro si trova in %1</translation>
    </message>
    <message>
        <source>The log cannot be written.</source>
        <translation>Impossibile scrivere il registro.</translation>
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
    <message>
        <source>Complete rescue</source>
        <translation>Recupero completo</translation>
    </message>
    <message>
        <source>Copies everything in what is ticked, whether the list shows it or not.</source>
        <translation>Copia tutto ciò che gli elementi selezionati contengono, che appaia nell’elenco o no.</translation>
    </message>
</context>
<context>
    <name>CSourceNotice</name>
    <message>
        <source>%1 is there now: press the round arrow to list it.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>“%1” è ora disponibile: fai clic sulla freccia rotonda per mostrarlo.</translation>
    </message>
    <message>
        <source>The users&apos; files are on %1, not on %2.</source>
        <extracomment>Names of two volumes: where the users&apos; files are, and where the user may be looking for them.</extracomment>
        <translation>I file degli utenti sono su “%1”, non su “%2”.</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them in Disk Utility, then press the round arrow.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>I file utente di “%1” sono bloccati? Sbloccali in Utility Disco, poi fai clic sulla freccia rotonda.</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them with their password, then start Tarnwick again.</source>
        <extracomment>The name of a volume.</extracomment>
        <translation>I file degli utenti di %1 potrebbero essere bloccati: sbloccali con la loro password, poi riavvia Tarnwick.</translation>
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
    <message>
        <source>Entries that are not in the list are not copied.</source>
        <translation>Gli elementi che non sono nell’elenco non vengono copiati.</translation>
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
