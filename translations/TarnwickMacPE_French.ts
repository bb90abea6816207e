<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR" sourcelanguage="en">
<context>
    <name>CCopyFileWidget</name>
    <message>
        <source>Remaining Time: %1</source>
        <translation>Temps restant&#xa0;: %1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Calculating...</source>
        <translation>calcul en cours…</translation>
    </message>
    <message>
        <source>Copying files to (%1): %2</source>
        <translation>Copie des fichiers vers «&#xa0;%1&#xa0;»&#xa0;: %2</translation>
    </message>
    <message>
        <source>Copy file completed!</source>
        <translation>Copie des fichiers terminée&#xa0;!</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Your data might not be copied completely, are you sure to stop the copying process?</source>
        <translation>Vos données n’ont peut-être pas été entièrement copiées. Voulez-vous vraiment arrêter la copie&#xa0;?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Oui</translation>
    </message>
    <message>
        <source>The destination storage device has been removed! Please check and connect the storage device then try again.</source>
        <translation>Le périphérique de stockage de destination a été retiré&#xa0;! Contrôlez et reconnectez le périphérique, puis réessayez.</translation>
    </message>
    <message>
        <source>Copy Progress</source>
        <translation>Progression de la copie</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>La destination est désormais «&#xa0;%1&#xa0;»</translation>
    </message>
</context>
<context>
    <name>CLastCopyNotice</name>
    <message>
        <source>Show the list</source>
        <translation>Afficher la liste</translation>
    </message>
</context>
<context>
    <name>CNoticeLine</name>
    <message>
        <source>%1 does not answer.</source>
        <translation>«&#xa0;%1&#xa0;» ne répond pas.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <extracomment>A name and what is said of it.</extracomment>
        <translation>%1&#xa0;: %2</translation>
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
        <translation>Recherche en cours</translation>
    </message>
    <message>
        <source>image</source>
        <translation>image</translation>
    </message>
    <message>
        <source>Searching, please wait...</source>
        <translation>Recherche en cours, veuillez patienter…</translation>
    </message>
</context>
<context>
    <name>CSelFileWidget</name>
    <message>
        <source>Source</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>Select File to Copy:</source>
        <translation>Sélectionnez les fichiers à copier&#xa0;:</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>Destination</translation>
    </message>
    <message>
        <source>Select Destination Disk:</source>
        <translation>Sélectionnez le disque de destination&#xa0;:</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>No disk to copy files from was found.</source>
        <translation>Aucun disque à partir duquel copier des fichiers n’a été trouvé.</translation>
    </message>
    <message>
        <source>No USB disk was found.
Connect one, and it appears here.</source>
        <translation>Aucun disque USB trouvé.
Connectez-en un et il apparaîtra ici.</translation>
    </message>
    <message>
        <source>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1GB&lt;/span&gt; Available, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2GB&lt;/span&gt; Total</source>
        <translation>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1&#xa0;Go&lt;/span&gt; disponibles, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2&#xa0;Go&lt;/span&gt; au total</translation>
    </message>
    <message>
        <source>Your drive may be damaged and Tarnwick can not write to this drive, please change another one and retry.</source>
        <translation>Le disque est peut-être endommagé et Tarnwick ne peut pas y écrire. Remplacez-le par un autre, puis réessayez.</translation>
    </message>
    <message>
        <source>Calculating files size...</source>
        <translation>Calcul de la taille des fichiers…</translation>
    </message>
    <message>
        <source>No enough space, please select other Hard Disk or USB flash drive.</source>
        <translation>Espace insuffisant. Sélectionnez un autre disque dur ou une autre clé USB.</translation>
    </message>
    <message>
        <source>Tarnwick</source>
        <translation>Tarnwick</translation>
    </message>
    <message>
        <source> at </source>
        <translation> à </translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Refresh List of Disks</source>
        <translation>Actualiser la liste des disques</translation>
    </message>
    <message>
        <source>Files selected</source>
        <translation>Fichiers sélectionnés</translation>
    </message>
    <message>
        <source>No files selected</source>
        <translation>Aucun fichier sélectionné</translation>
    </message>
    <message>
        <source>%1 are needed, %2 are free.</source>
        <translation>%1 sont nécessaires, %2 sont libres.</translation>
    </message>
</context>
<context>
    <name>CStartSplash</name>
    <message>
        <source>Searching for disks…</source>
        <translation>Recherche des disques…</translation>
    </message>
    <message>
        <source>Waiting for %1…</source>
        <translation>En attente de «&#xa0;%1&#xa0;»…</translation>
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
        <translation>titre</translation>
    </message>
    <message>
        <source>Kelvane Tarnwick</source>
        <translation>Kelvane Tarnwick</translation>
    </message>
    <message>
        <source>Your computer will restart if you exit the program. Are you sure you want to exit?</source>
        <translation>Votre ordinateur redémarrera si vous quittez le programme. Voulez-vous vraiment quitter&#xa0;?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Oui</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Réduire</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Réduire/agrandir</translation>
    </message>
</context>
<context>
    <name>CTreeNotices</name>
    <message>
        <source>Only opened folders of a fully ticked volume are copied.</source>
        <translation>Seuls les dossiers ouverts d’un volume entièrement coché sont copiés.</translation>
    </message>
    <message>
        <source>Entries left out of %1 because of their names: %2</source>
        <translation>Éléments de «&#xa0;%1&#xa0;» omis à cause de leur nom&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>KvMessageBox</name>
    <message>
        <source>Form</source>
        <translation>Formulaire</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>Étiquette de texte</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Oui</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Non</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Réduire</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Réduire/agrandir</translation>
    </message>
</context>
</TS>
