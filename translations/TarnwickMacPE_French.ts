<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR" sourcelanguage="en">
<context>
    <name>CAskAgainPanel</name>
    <message>
        <source>Tarnwick stopped unexpectedly</source>
        <translation>Tarnwick s’est arrêté de façon inattendue</translation>
    </message>
    <message>
        <source>Files that were copied before are still on the disk. If a copy was running, start again and copy everything once more.</source>
        <translation>Les fichiers déjà copiés sont toujours sur le disque. Si une copie était en cours, recommencez et copiez tout encore une fois.</translation>
    </message>
    <message>
        <source>Restart the computer</source>
        <translation>Redémarrer l’ordinateur</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>Recommencer</translation>
    </message>
</context>
<context>
    <name>CAskEndPanel</name>
    <message>
        <source>A disk did not answer</source>
        <translation>Un disque n’a pas répondu</translation>
    </message>
    <message>
        <source>You can unplug your disks now</source>
        <translation>Vous pouvez maintenant débrancher vos disques</translation>
    </message>
    <message>
        <source>Not everything may be on it yet. Wait while its light flashes, and check the copied files on another computer.</source>
        <translation>Tout n’y est peut-être pas encore. Attendez tant que son voyant clignote, puis vérifiez les fichiers copiés sur un autre ordinateur.</translation>
    </message>
    <message>
        <source>Tarnwick has ended, and nothing is written to a disk any more.</source>
        <translation>Tarnwick est terminé et plus rien n’est écrit sur les disques.</translation>
    </message>
    <message>
        <source>Leave the stick that you started from in its place until the screen goes dark.</source>
        <translation>Laissez en place la clé avec laquelle vous avez démarré jusqu’à ce que l’écran s’éteigne.</translation>
    </message>
    <message>
        <source>Power off</source>
        <translation>Éteindre</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Redémarrer</translation>
    </message>
    <message>
        <source>The computer restarts by itself. Seconds left: %1</source>
        <translation>L’ordinateur redémarrera tout seul. Secondes restantes&#xa0;: %1</translation>
    </message>
</context>
<context>
    <name>CAskMissingPanel</name>
    <message>
        <source>Locked with a password</source>
        <translation>Verrouillé par un mot de passe</translation>
    </message>
    <message>
        <source>Cannot be read, perhaps damaged</source>
        <translation>Illisible, peut-être endommagé</translation>
    </message>
    <message>
        <source>Does not answer</source>
        <translation>Ne répond pas</translation>
    </message>
    <message>
        <source>One of several disks that belong together</source>
        <translation>L’un de plusieurs disques qui vont ensemble</translation>
    </message>
    <message>
        <source>Needs more memory than this computer has</source>
        <translation>Demande plus de mémoire que cet ordinateur n’en a</translation>
    </message>
    <message>
        <source>Of a kind that Tarnwick cannot read</source>
        <translation>D’un format que Tarnwick ne sait pas lire</translation>
    </message>
    <message>
        <source>Another computer or a specialist may still be able to read what cannot be read here. Do not format or repair it before.</source>
        <translation>Ce qui est illisible ici peut encore être lu sur un autre ordinateur ou par un spécialiste. D’ici là, ne le formatez pas et ne le réparez pas.</translation>
    </message>
    <message>
        <source>A disk that answers later appears by itself.</source>
        <translation>Un disque qui répond plus tard apparaît tout seul.</translation>
    </message>
    <message>
        <source>To type a password, restart the computer and start Tarnwick again.</source>
        <translation>Pour saisir un mot de passe, redémarrez l’ordinateur et relancez Tarnwick.</translation>
    </message>
    <message>
        <source>Not everything can be shown</source>
        <translation>Tout ne peut pas être affiché</translation>
    </message>
    <message>
        <source>Nothing can be copied from these disks or parts of disks:</source>
        <translation>Rien ne peut être copié depuis ces disques ou parties de disques&#xa0;:</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuer</translation>
    </message>
</context>
<context>
    <name>CAskPasswordPanel</name>
    <message>
        <source>Locked by Windows (BitLocker)</source>
        <translation>Verrouillé par Windows (BitLocker)</translation>
    </message>
    <message>
        <source>Locked by macOS (FileVault)</source>
        <translation>Verrouillé par macOS (FileVault)</translation>
    </message>
    <message>
        <source>Locked by Linux (LUKS)</source>
        <translation>Verrouillé par Linux (LUKS)</translation>
    </message>
    <message>
        <source>Type its password or its recovery key of 48 digits.</source>
        <translation>Saisissez son mot de passe ou sa clé de récupération de 48 chiffres.</translation>
    </message>
    <message>
        <source>Type its password: mostly the one with which you log in to your Mac.</source>
        <translation>Saisissez son mot de passe&#xa0;: le plus souvent celui avec lequel vous ouvrez une session sur votre Mac.</translation>
    </message>
    <message>
        <source>Type the password that your computer asks for when it starts, or when you plug this disk in.</source>
        <translation>Saisissez le mot de passe que votre ordinateur demande au démarrage ou lorsque vous branchez ce disque.</translation>
    </message>
    <message>
        <source>Then files can be copied to the disk.</source>
        <translation>Des fichiers pourront ensuite y être copiés.</translation>
    </message>
    <message>
        <source>Nothing on the disk is changed.</source>
        <translation>Rien n’est modifié sur le disque.</translation>
    </message>
    <message>
        <source>This disk needs its password</source>
        <translation>Ce disque a besoin de son mot de passe</translation>
    </message>
    <message>
        <source>That password did not open the disk. Try %1 of %2.</source>
        <translation>Ce mot de passe n’a pas ouvert le disque. Essai %1 sur %2.</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Mot de passe</translation>
    </message>
    <message>
        <source>Show what I type</source>
        <translation>Afficher ce que je saisis</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Verr. Maj est activé.</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <translation>Clavier&#xa0;:</translation>
    </message>
    <message>
        <source>Skip this disk</source>
        <translation>Ignorer ce disque</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>Déverrouiller</translation>
    </message>
</context>
<context>
    <name>CAskSourcePanel</name>
    <message>
        <source>What is this USB disk for?</source>
        <translation>À quoi sert ce disque USB&#xa0;?</translation>
    </message>
    <message>
        <source>Holds %1</source>
        <translation>Contient %1</translation>
    </message>
    <message>
        <source>Rescue files from it</source>
        <translation>En récupérer des fichiers</translation>
    </message>
    <message>
        <source>Its files are listed to be copied. Nothing on it is changed.</source>
        <translation>Ses fichiers sont affichés pour être copiés. Rien n’y est modifié.</translation>
    </message>
    <message>
        <source>Copy files to it</source>
        <translation>Y copier des fichiers</translation>
    </message>
    <message>
        <source>Files of other disks can be copied to it, beside what it holds.</source>
        <translation>Les fichiers d’autres disques peuvent y être copiés, à côté de ce qu’il contient.</translation>
    </message>
</context>
<context>
    <name>CAskWaitPanel</name>
    <message>
        <source>Looking for your disks…</source>
        <translation>Recherche de vos disques…</translation>
    </message>
    <message>
        <source>This can take a minute.</source>
        <translation>Cela peut prendre une minute.</translation>
    </message>
</context>
<context>
    <name>CCopyEndBox</name>
    <message>
        <source>Show the list</source>
        <translation>Afficher la liste</translation>
    </message>
</context>
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
    <message>
        <source>Everything was on the disk before it was removed.</source>
        <translation>Tout était sur le disque avant son retrait.</translation>
    </message>
</context>
<context>
    <name>CCopyReportText</name>
    <message>
        <source>This copy has not come to its end.</source>
        <translation>Cette copie n’est pas arrivée à son terme.</translation>
    </message>
    <message>
        <source>If no copy is running any more, it broke off: the program was ended, the disk was removed or the power failed. Files are missing that are not named below. Copy everything again.</source>
        <translation>Si aucune copie n’est plus en cours, elle s’est interrompue&#xa0;: le programme a été fermé, le disque retiré ou le courant coupé. Il manque des fichiers qui ne sont pas nommés ci-dessous. Copiez tout à nouveau.</translation>
    </message>
    <message>
        <source>Not copied whole so far:</source>
        <translation>Non copiés en entier jusqu’ici&#xa0;:</translation>
    </message>
    <message>
        <source>Items that are missing, not whole or worth a note:</source>
        <translation>Éléments manquants, incomplets ou à signaler&#xa0;:</translation>
    </message>
    <message>
        <source>Copy everything again, best onto another disk.</source>
        <translation>Copiez tout à nouveau, de préférence sur un autre disque.</translation>
    </message>
    <message>
        <source>What had not been copied by then is missing and is not named below.</source>
        <translation>Ce qui n’avait pas encore été copié manque et n’est pas nommé ci-dessous.</translation>
    </message>
    <message>
        <source>Everything is whole. The items below are worth a note.</source>
        <translation>Tout est complet. Les éléments ci-dessous sont à signaler.</translation>
    </message>
    <message>
        <source>Try to copy the items below again. If the disk is full, or its file system takes no large files, use another disk. Keep this list with the copy until you have them all.</source>
        <translation>Essayez de copier à nouveau les éléments ci-dessous. Si le disque est plein ou si son système de fichiers n’accepte pas les gros fichiers, utilisez-en un autre. Gardez cette liste avec la copie jusqu’à ce que vous les ayez tous.</translation>
    </message>
    <message>
        <source>Report on a copy of files</source>
        <translation>Rapport sur une copie de fichiers</translation>
    </message>
    <message>
        <source>From: %1</source>
        <translation>De&#xa0;: %1</translation>
    </message>
    <message>
        <source>To: %1</source>
        <translation>Vers&#xa0;: %1</translation>
    </message>
    <message>
        <source>Begun: %1</source>
        <translation>Début&#xa0;: %1</translation>
    </message>
    <message>
        <source>To be copied: at most %1</source>
        <translation>À copier&#xa0;: au plus %1</translation>
    </message>
    <message>
        <source>Ended: %1</source>
        <translation>Fin&#xa0;: %1</translation>
    </message>
    <message>
        <source>Whole: %1, %2</source>
        <translation>Complets&#xa0;: %1, %2</translation>
    </message>
    <message>
        <source>Not whole: %1</source>
        <translation>Incomplets&#xa0;: %1</translation>
    </message>
    <message>
        <source>And %1 more, for which there was no room.</source>
        <translation>Et %1 de plus, pour lesquels il n’y avait pas de place.</translation>
    </message>
</context>
<context>
    <name>CCopyStateLine</name>
    <message>
        <source>%1 so far</source>
        <translation>%1 jusqu’à présent</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 MB/s</source>
        <translation>%1&#xa0;Mo/s</translation>
    </message>
    <message>
        <source>The copy is being stopped…</source>
        <translation>Arrêt de la copie…</translation>
    </message>
    <message>
        <source>The last bytes are being written to the disk…</source>
        <translation>Écriture des dernières données sur le disque…</translation>
    </message>
    <message>
        <source>The disk has not answered for %1 seconds: %2</source>
        <translation>Le disque ne répond pas depuis %1 secondes&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>CCopyText</name>
    <message>
        <source>Its folder cannot be created.</source>
        <translation>Son dossier ne peut pas être créé.</translation>
    </message>
    <message>
        <source>It cannot be created on the disk.</source>
        <translation>Il ne peut pas être créé sur le disque.</translation>
    </message>
    <message>
        <source>It cannot be written to the disk.</source>
        <translation>Il ne peut pas être écrit sur le disque.</translation>
    </message>
    <message>
        <source>The disk did not take all of it.</source>
        <translation>Le disque ne l’a pas accepté en entier.</translation>
    </message>
    <message>
        <source>It cannot be opened.</source>
        <translation>Il ne peut pas être ouvert.</translation>
    </message>
    <message>
        <source>It cannot be read.</source>
        <translation>Il ne peut pas être lu.</translation>
    </message>
    <message>
        <source>It became shorter while it was copied.</source>
        <translation>Il a raccourci pendant la copie.</translation>
    </message>
    <message>
        <source>It changed while it was copied.</source>
        <translation>Il a changé pendant la copie.</translation>
    </message>
    <message>
        <source>It was removed while it was copied.</source>
        <translation>Il a été supprimé pendant la copie.</translation>
    </message>
    <message>
        <source>Something else has taken its place.</source>
        <translation>Autre chose a pris sa place.</translation>
    </message>
    <message>
        <source>It is not a file, but a pipe, a socket or a device.</source>
        <translation>Ce n’est pas un fichier, mais un tube, une socket ou un périphérique.</translation>
    </message>
    <message>
        <source>The folder was not opened, so its contents were not copied.</source>
        <translation>Le dossier n’a pas été ouvert, son contenu n’a donc pas été copié.</translation>
    </message>
    <message>
        <source>It was not in the list, so it was not copied.</source>
        <translation>Il ne figurait pas dans la liste, il n’a donc pas été copié.</translation>
    </message>
    <message>
        <source>It is a link to a folder that it lies in.</source>
        <translation>C’est un lien vers un dossier dans lequel il se trouve.</translation>
    </message>
    <message>
        <source>The folder cannot be read.</source>
        <translation>Le dossier ne peut pas être lu.</translation>
    </message>
    <message>
        <source>It was copied whole, but its date could not be kept.</source>
        <translation>Il a été copié en entier, mais sa date n’a pas pu être conservée.</translation>
    </message>
    <message>
        <source>The disk was removed.</source>
        <translation>Le disque a été retiré.</translation>
    </message>
    <message>
        <source>The copy was stopped.</source>
        <translation>La copie a été arrêtée.</translation>
    </message>
    <message>
        <source>There was not enough memory.</source>
        <translation>La mémoire était insuffisante.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it.</source>
        <translation>Le disque n’a pas confirmé que tout s’y trouve.</translation>
    </message>
    <message>
        <source>It is a link to another disk. What it leads to was copied.</source>
        <translation>C’est un lien vers un autre disque. Ce vers quoi il mène a été copié.</translation>
    </message>
    <message>
        <source>The disk does not answer.</source>
        <translation>Le disque ne répond pas.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>Le disque est plein.</translation>
    </message>
    <message>
        <source>Too large for the file system of this disk.</source>
        <translation>Trop volumineux pour le système de fichiers de ce disque.</translation>
    </message>
    <message>
        <source>Access is not permitted.</source>
        <translation>L’accès n’est pas autorisé.</translation>
    </message>
    <message>
        <source>The disk is write-protected.</source>
        <translation>Le disque est protégé en écriture.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>Le disque signale une erreur.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>Il n’est plus là.</translation>
    </message>
    <message>
        <source>Its name or path is too long.</source>
        <translation>Son nom ou son chemin est trop long.</translation>
    </message>
    <message>
        <source>The disk is not connected any more.</source>
        <translation>Le disque n’est plus connecté.</translation>
    </message>
    <message>
        <source>Something else of that name is in its place.</source>
        <translation>Autre chose portant ce nom se trouve à sa place.</translation>
    </message>
    <message>
        <source>The file system of this disk does not allow its name.</source>
        <translation>Le système de fichiers de ce disque n’accepte pas son nom.</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <extracomment>Two sentences, one behind the other.</extracomment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1&#xa0;octet</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1&#xa0;octets</translation>
    </message>
    <message>
        <source>%1 KB</source>
        <translation>%1&#xa0;Ko</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1&#xa0;Mo</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1&#xa0;Go</translation>
    </message>
    <message>
        <source>%1 TB</source>
        <translation>%1&#xa0;To</translation>
    </message>
    <message>
        <source>1 file</source>
        <translation>1&#xa0;fichier</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1&#xa0;fichiers</translation>
    </message>
    <message>
        <source>1 of %1 items was not copied whole.</source>
        <translation>1&#xa0;élément sur %1 n’a pas été copié en entier.</translation>
    </message>
    <message>
        <source>%1 of %2 items were not copied whole.</source>
        <translation>%1&#xa0;éléments sur %2 n’ont pas été copiés en entier.</translation>
    </message>
    <message>
        <source>The copy was stopped. %1, %2 are on the disk.</source>
        <translation>La copie a été arrêtée. %1 (%2) sur le disque.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it. Do not rely on this copy.</source>
        <translation>Le disque n’a pas confirmé que tout s’y trouve. Ne vous fiez pas à cette copie.</translation>
    </message>
    <message>
        <source>Nothing was copied.</source>
        <translation>Rien n’a été copié.</translation>
    </message>
    <message>
        <source>%1, %2 are on the disk. It can be unplugged now.</source>
        <translation>%1 (%2) sur le disque. Il peut maintenant être débranché.</translation>
    </message>
    <message>
        <source>The list could not be saved on the disk.</source>
        <translation>La liste n’a pas pu être enregistrée sur le disque.</translation>
    </message>
    <message>
        <source>Parts of it cannot be read; zeros stand for the bytes %1.</source>
        <translation>Certaines parties ne peuvent pas être lues&#xa0;; des zéros remplacent les octets %1.</translation>
    </message>
    <message>
        <source>Another disk is mounted here. What is on it was not copied.</source>
        <translation>Un autre disque est monté ici. Son contenu n’a pas été copié.</translation>
    </message>
    <message>
        <source>It is the same folder as another one in this copy, or the copy itself.</source>
        <translation>C’est le même dossier qu’un autre de cette copie, ou la copie elle-même.</translation>
    </message>
    <message>
        <source>It is a link to %1, and this disk cannot hold links.</source>
        <translation>C’est un lien vers «&#xa0;%1&#xa0;», et ce disque ne peut pas contenir de liens.</translation>
    </message>
    <message>
        <source>The disk does not take its name. There it is called %1.</source>
        <translation>Le disque n’accepte pas ce nom. L’élément s’y appelle «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>Items whose permissions this disk cannot hold: %1</source>
        <translation>Éléments dont ce disque ne peut pas conserver les autorisations&#xa0;: %1</translation>
    </message>
    <message>
        <source>Items whose extended attributes this disk cannot hold: %1</source>
        <translation>Éléments dont ce disque ne peut pas conserver les attributs étendus&#xa0;: %1</translation>
    </message>
    <message>
        <source>Folders whose dates this disk cannot hold: %1</source>
        <translation>Dossiers dont ce disque ne peut pas conserver la date&#xa0;: %1</translation>
    </message>
    <message>
        <source>Its resource fork, a part of it, cannot be read.</source>
        <translation>Sa branche de ressources, qui en fait partie, ne peut pas être lue.</translation>
    </message>
    <message>
        <source>Its contents are in its resource fork, and this disk cannot hold that.</source>
        <translation>Son contenu se trouve dans sa branche de ressources, que ce disque ne peut pas conserver.</translation>
    </message>
    <message>
        <source>Items whose resource forks this disk cannot hold: %1</source>
        <translation>Éléments dont ce disque ne peut pas conserver la branche de ressources&#xa0;: %1</translation>
    </message>
    <message>
        <source>Items whose Finder tags and icons this disk cannot hold: %1</source>
        <translation>Éléments dont ce disque ne peut pas conserver les tags et icônes du Finder&#xa0;: %1</translation>
    </message>
    <message>
        <source>Items whose access lists this disk cannot hold: %1</source>
        <translation>Éléments dont ce disque ne peut pas conserver les listes d’accès&#xa0;: %1</translation>
    </message>
    <message>
        <source>Items whose creation dates this disk cannot hold: %1</source>
        <translation>Éléments dont ce disque ne peut pas conserver la date de création&#xa0;: %1</translation>
    </message>
    <message>
        <source>Locked items whose copies are not locked: %1</source>
        <translation>Éléments verrouillés dont la copie n’est pas verrouillée&#xa0;: %1</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>Son contenu se trouve uniquement dans iCloud, pas sur ce Mac.</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>La destination est désormais «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>%1 cannot hold a file of %2 or more.</source>
        <translation>«&#xa0;%1&#xa0;» ne peut pas contenir de fichier de %2 ou plus.</translation>
    </message>
</context>
<context>
    <name>CFolderTrouble</name>
    <message>
        <source>This folder may not be read, nothing of it is copied.</source>
        <translation>La lecture de ce dossier n’est pas autorisée, rien de son contenu n’est copié.</translation>
    </message>
    <message>
        <source>This folder cannot be read: %1</source>
        <translation>Ce dossier ne peut pas être lu&#xa0;: %1</translation>
    </message>
    <message>
        <source>Only a part of this folder can be read: %1</source>
        <translation>Seule une partie de ce dossier peut être lue&#xa0;: %1</translation>
    </message>
    <message>
        <source>This link leads back to a folder that it lies in.</source>
        <translation>Ce lien renvoie à un dossier qui le contient.</translation>
    </message>
    <message>
        <source>The disk does not answer. What is in this folder appears as soon as it does.</source>
        <translation>Le disque ne répond pas. Le contenu de ce dossier apparaîtra dès qu’il répondra.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>Le disque signale une erreur.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>Il n’est plus là.</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>Son contenu se trouve uniquement dans iCloud, pas sur ce Mac.</translation>
    </message>
</context>
<context>
    <name>CItemListDialog</name>
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
    <message>
        <source>Items of this copy that need your attention</source>
        <translation>Éléments de cette copie à vérifier</translation>
    </message>
    <message>
        <source>and %1 more, see %2</source>
        <translation>et %1 autres, voir %2</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>et %1 autres</translation>
    </message>
    <message>
        <source>This list is also in %1</source>
        <translation>Cette liste se trouve aussi dans %1</translation>
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
    <name>CLogNotice</name>
    <message>
        <source>The log is kept in %1</source>
        <extracomment>The path of a folder.</extracomment>
        <translation>Le journal se trouve dans %1</translation>
    </message>
    <message>
        <source>The log cannot be written.</source>
        <translation>Le journal ne peut pas être écrit.</translation>
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
    <message>
        <source>Complete rescue</source>
        <translation>Sauvetage complet</translation>
    </message>
    <message>
        <source>Copies everything in what is ticked, whether the list shows it or not.</source>
        <translation>Copie tout ce que contiennent les éléments cochés, que la liste l’affiche ou non.</translation>
    </message>
</context>
<context>
    <name>CSourceNotice</name>
    <message>
        <source>%1 is there now: press the round arrow to list it.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>«&#xa0;%1&#xa0;» est maintenant là&#xa0;: cliquez sur la flèche ronde pour l’afficher.</translation>
    </message>
    <message>
        <source>The users&apos; files are on %1, not on %2.</source>
        <extracomment>Names of two volumes: where the users&apos; files are, and where the user may be looking for them.</extracomment>
        <translation>Les fichiers des utilisateurs sont sur «&#xa0;%1&#xa0;», pas sur «&#xa0;%2&#xa0;».</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them in Disk Utility, then press the round arrow.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>Fichiers d’utilisateurs de «&#xa0;%1&#xa0;» verrouillés&#xa0;? Déverrouillez-les (Utilitaire de disque), puis flèche ronde.</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them with their password, then start Tarnwick again.</source>
        <extracomment>The name of a volume.</extracomment>
        <translation>Les fichiers de %1 sont peut-être verrouillés&#xa0;: déverrouillez-les avec leur mot de passe, puis relancez Tarnwick.</translation>
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
    <message>
        <source>Entries that are not in the list are not copied.</source>
        <translation>Les éléments absents de la liste ne sont pas copiés.</translation>
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
