<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES" sourcelanguage="en">
<context>
    <name>CAskAgainPanel</name>
    <message>
        <source>Tarnwick stopped unexpectedly</source>
        <translation>Tarnwick se ha cerrado de forma inesperada</translation>
    </message>
    <message>
        <source>Files that were copied before are still on the disk. If a copy was running, start again and copy everything once more.</source>
        <translation>Los archivos copiados antes siguen en el disco. Si había una copia en curso, empieza de nuevo y vuelve a copiarlo todo.</translation>
    </message>
    <message>
        <source>Restart the computer</source>
        <translation>Reiniciar el ordenador</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>Empezar de nuevo</translation>
    </message>
</context>
<context>
    <name>CAskEndPanel</name>
    <message>
        <source>A disk did not answer</source>
        <translation>Un disco no ha respondido</translation>
    </message>
    <message>
        <source>You can unplug your disks now</source>
        <translation>Ya puedes desconectar tus discos</translation>
    </message>
    <message>
        <source>Not everything may be on it yet. Wait while its light flashes, and check the copied files on another computer.</source>
        <translation>Puede que aún no esté todo en él. Espera mientras parpadee su luz y comprueba los archivos copiados en otro ordenador.</translation>
    </message>
    <message>
        <source>Tarnwick has ended, and nothing is written to a disk any more.</source>
        <translation>Tarnwick ha terminado y ya no se escribe nada en ningún disco.</translation>
    </message>
    <message>
        <source>Leave the stick that you started from in its place until the screen goes dark.</source>
        <translation>Deja en su sitio la memoria USB con la que has arrancado hasta que se apague la pantalla.</translation>
    </message>
    <message>
        <source>Power off</source>
        <translation>Apagar</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Reiniciar</translation>
    </message>
    <message>
        <source>The computer restarts by itself. Seconds left: %1</source>
        <translation>El ordenador se reiniciará solo. Segundos restantes: %1</translation>
    </message>
</context>
<context>
    <name>CAskMissingPanel</name>
    <message>
        <source>Locked with a password</source>
        <translation>Bloqueado con una contraseña</translation>
    </message>
    <message>
        <source>Cannot be read, perhaps damaged</source>
        <translation>No se puede leer, quizá esté dañado</translation>
    </message>
    <message>
        <source>Does not answer</source>
        <translation>No responde</translation>
    </message>
    <message>
        <source>One of several disks that belong together</source>
        <translation>Uno de varios discos que forman un conjunto</translation>
    </message>
    <message>
        <source>Needs more memory than this computer has</source>
        <translation>Necesita más memoria de la que tiene este ordenador</translation>
    </message>
    <message>
        <source>Of a kind that Tarnwick cannot read</source>
        <translation>De un formato que Tarnwick no puede leer</translation>
    </message>
    <message>
        <source>Another computer or a specialist may still be able to read what cannot be read here. Do not format or repair it before.</source>
        <translation>Lo que aquí no se puede leer quizá pueda leerse en otro ordenador o con ayuda de un especialista. No lo formatees ni lo repares antes.</translation>
    </message>
    <message>
        <source>A disk that answers later appears by itself.</source>
        <translation>Un disco que responda más tarde aparecerá solo.</translation>
    </message>
    <message>
        <source>To type a password, restart the computer and start Tarnwick again.</source>
        <translation>Para escribir una contraseña, reinicia el ordenador y vuelve a abrir Tarnwick.</translation>
    </message>
    <message>
        <source>Not everything can be shown</source>
        <translation>No se puede mostrar todo</translation>
    </message>
    <message>
        <source>Nothing can be copied from these disks or parts of disks:</source>
        <translation>No se puede copiar nada de estos discos o partes de discos:</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuar</translation>
    </message>
</context>
<context>
    <name>CAskPasswordPanel</name>
    <message>
        <source>Locked by Windows (BitLocker)</source>
        <translation>Bloqueado por Windows (BitLocker)</translation>
    </message>
    <message>
        <source>Locked by macOS (FileVault)</source>
        <translation>Bloqueado por macOS (FileVault)</translation>
    </message>
    <message>
        <source>Locked by Linux (LUKS)</source>
        <translation>Bloqueado por Linux (LUKS)</translation>
    </message>
    <message>
        <source>Type its password or its recovery key of 48 digits.</source>
        <translation>Escribe su contraseña o su clave de recuperación de 48 dígitos.</translation>
    </message>
    <message>
        <source>Type its password: mostly the one with which you log in to your Mac.</source>
        <translation>Escribe su contraseña: casi siempre la que usas para iniciar sesión en tu Mac.</translation>
    </message>
    <message>
        <source>Type the password that your computer asks for when it starts, or when you plug this disk in.</source>
        <translation>Escribe la contraseña que tu ordenador pide al arrancar o al conectar este disco.</translation>
    </message>
    <message>
        <source>Then files can be copied to the disk.</source>
        <translation>Después se podrán copiar archivos en él.</translation>
    </message>
    <message>
        <source>Nothing on the disk is changed.</source>
        <translation>No se cambia nada en el disco.</translation>
    </message>
    <message>
        <source>This disk needs its password</source>
        <translation>Este disco necesita su contraseña</translation>
    </message>
    <message>
        <source>That password did not open the disk. Try %1 of %2.</source>
        <translation>Esa contraseña no ha abierto el disco. Intento %1 de %2.</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Contraseña</translation>
    </message>
    <message>
        <source>Show what I type</source>
        <translation>Mostrar lo que escribo</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>El bloqueo de mayúsculas está activado.</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <translation>Teclado:</translation>
    </message>
    <message>
        <source>Skip this disk</source>
        <translation>Omitir este disco</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>Desbloquear</translation>
    </message>
</context>
<context>
    <name>CAskSourcePanel</name>
    <message>
        <source>What is this USB disk for?</source>
        <translation>¿Para qué es este disco USB?</translation>
    </message>
    <message>
        <source>Holds %1</source>
        <translation>Contiene %1</translation>
    </message>
    <message>
        <source>Rescue files from it</source>
        <translation>Rescatar archivos de él</translation>
    </message>
    <message>
        <source>Its files are listed to be copied. Nothing on it is changed.</source>
        <translation>Sus archivos aparecen en la lista para copiarlos. No se cambia nada en él.</translation>
    </message>
    <message>
        <source>Copy files to it</source>
        <translation>Copiar archivos en él</translation>
    </message>
    <message>
        <source>Files of other disks can be copied to it, beside what it holds.</source>
        <translation>Se pueden copiar en él archivos de otros discos, junto a lo que ya contiene.</translation>
    </message>
</context>
<context>
    <name>CAskWaitPanel</name>
    <message>
        <source>Looking for your disks…</source>
        <translation>Buscando tus discos…</translation>
    </message>
    <message>
        <source>This can take a minute.</source>
        <translation>Esto puede tardar un minuto.</translation>
    </message>
</context>
<context>
    <name>CCopyEndBox</name>
    <message>
        <source>Show the list</source>
        <translation>Mostrar la lista</translation>
    </message>
</context>
<context>
    <name>CCopyFileWidget</name>
    <message>
        <source>Remaining Time: %1</source>
        <translation>Tiempo restante: %1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Calculating...</source>
        <translation>calculando…</translation>
    </message>
    <message>
        <source>Copying files to (%1): %2</source>
        <translation>Copiando archivos en “%1”: %2</translation>
    </message>
    <message>
        <source>Copy file completed!</source>
        <translation>¡Copia de archivos finalizada!</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Your data might not be copied completely, are you sure to stop the copying process?</source>
        <translation>Es posible que los datos no se hayan copiado por completo. ¿Seguro que quieres detener la copia?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Sí</translation>
    </message>
    <message>
        <source>The destination storage device has been removed! Please check and connect the storage device then try again.</source>
        <translation>¡Se ha retirado el dispositivo de almacenamiento de destino! Compruébalo, vuelve a conectarlo e inténtalo de nuevo.</translation>
    </message>
    <message>
        <source>Copy Progress</source>
        <translation>Progreso de la copia</translation>
    </message>
    <message>
        <source>Everything was on the disk before it was removed.</source>
        <translation>Todo estaba en el disco antes de que se extrajera.</translation>
    </message>
</context>
<context>
    <name>CCopyReportText</name>
    <message>
        <source>This copy has not come to its end.</source>
        <translation>Esta copia no ha llegado a su fin.</translation>
    </message>
    <message>
        <source>If no copy is running any more, it broke off: the program was ended, the disk was removed or the power failed. Files are missing that are not named below. Copy everything again.</source>
        <translation>Si ya no hay ninguna copia en curso, se interrumpió: se cerró el programa, se retiró el disco o falló la corriente. Faltan archivos que no se nombran abajo. Vuelve a copiarlo todo.</translation>
    </message>
    <message>
        <source>Not copied whole so far:</source>
        <translation>No copiados enteros hasta ahora:</translation>
    </message>
    <message>
        <source>Items that are missing, not whole or worth a note:</source>
        <translation>Ítems que faltan, no están enteros o merecen una nota:</translation>
    </message>
    <message>
        <source>Copy everything again, best onto another disk.</source>
        <translation>Vuelve a copiarlo todo, preferiblemente en otro disco.</translation>
    </message>
    <message>
        <source>What had not been copied by then is missing and is not named below.</source>
        <translation>Lo que no se había copiado hasta entonces falta y no se nombra abajo.</translation>
    </message>
    <message>
        <source>Everything is whole. The items below are worth a note.</source>
        <translation>Todo está entero. Los ítems de abajo merecen una nota.</translation>
    </message>
    <message>
        <source>Try to copy the items below again. If the disk is full, or its file system takes no large files, use another disk. Keep this list with the copy until you have them all.</source>
        <translation>Intenta copiar de nuevo los ítems de abajo. Si el disco está lleno o su sistema de archivos no admite archivos grandes, usa otro disco. Conserva esta lista con la copia hasta tenerlos todos.</translation>
    </message>
    <message>
        <source>Report on a copy of files</source>
        <translation>Informe sobre una copia de archivos</translation>
    </message>
    <message>
        <source>From: %1</source>
        <translation>De: %1</translation>
    </message>
    <message>
        <source>To: %1</source>
        <translation>A: %1</translation>
    </message>
    <message>
        <source>Begun: %1</source>
        <translation>Inicio: %1</translation>
    </message>
    <message>
        <source>To be copied: at most %1</source>
        <translation>Por copiar: como máximo %1</translation>
    </message>
    <message>
        <source>Ended: %1</source>
        <translation>Fin: %1</translation>
    </message>
    <message>
        <source>Whole: %1, %2</source>
        <translation>Enteros: %1, %2</translation>
    </message>
    <message>
        <source>Not whole: %1</source>
        <translation>No enteros: %1</translation>
    </message>
    <message>
        <source>And %1 more, for which there was no room.</source>
        <translation>Y %1 más, para los que no había espacio.</translation>
    </message>
</context>
<context>
    <name>CCopyStateLine</name>
    <message>
        <source>%1 so far</source>
        <translation>Hasta ahora, %1</translation>
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
        <translation>Deteniendo la copia…</translation>
    </message>
    <message>
        <source>The last bytes are being written to the disk…</source>
        <translation>Escribiendo los últimos datos en el disco…</translation>
    </message>
    <message>
        <source>The disk has not answered for %1 seconds: %2</source>
        <translation>El disco no responde desde hace %1 segundos: %2</translation>
    </message>
</context>
<context>
    <name>CCopyText</name>
    <message>
        <source>Its folder cannot be created.</source>
        <translation>No se puede crear su carpeta.</translation>
    </message>
    <message>
        <source>It cannot be created on the disk.</source>
        <translation>No se puede crear en el disco.</translation>
    </message>
    <message>
        <source>It cannot be written to the disk.</source>
        <translation>No se puede escribir en el disco.</translation>
    </message>
    <message>
        <source>The disk did not take all of it.</source>
        <translation>El disco no lo ha aceptado entero.</translation>
    </message>
    <message>
        <source>It cannot be opened.</source>
        <translation>No se puede abrir.</translation>
    </message>
    <message>
        <source>It cannot be read.</source>
        <translation>No se puede leer.</translation>
    </message>
    <message>
        <source>It became shorter while it was copied.</source>
        <translation>Se acortó mientras se copiaba.</translation>
    </message>
    <message>
        <source>It changed while it was copied.</source>
        <translation>Cambió mientras se copiaba.</translation>
    </message>
    <message>
        <source>It was removed while it was copied.</source>
        <translation>Se eliminó mientras se copiaba.</translation>
    </message>
    <message>
        <source>Something else has taken its place.</source>
        <translation>Otra cosa ha ocupado su lugar.</translation>
    </message>
    <message>
        <source>It is not a file, but a pipe, a socket or a device.</source>
        <translation>No es un archivo, sino una tubería, un socket o un dispositivo.</translation>
    </message>
    <message>
        <source>The folder was not opened, so its contents were not copied.</source>
        <translation>La carpeta no se abrió, por lo que no se copió su contenido.</translation>
    </message>
    <message>
        <source>It was not in the list, so it was not copied.</source>
        <translation>No estaba en la lista, por lo que no se copió.</translation>
    </message>
    <message>
        <source>It is a link to a folder that it lies in.</source>
        <translation>Es un enlace a una carpeta en la que se encuentra.</translation>
    </message>
    <message>
        <source>The folder cannot be read.</source>
        <translation>No se puede leer la carpeta.</translation>
    </message>
    <message>
        <source>It was copied whole, but its date could not be kept.</source>
        <translation>Se copió entero, pero no se pudo conservar su fecha.</translation>
    </message>
    <message>
        <source>The disk was removed.</source>
        <translation>Se retiró el disco.</translation>
    </message>
    <message>
        <source>The copy was stopped.</source>
        <translation>La copia se detuvo.</translation>
    </message>
    <message>
        <source>There was not enough memory.</source>
        <translation>No había memoria suficiente.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it.</source>
        <translation>El disco no ha confirmado que todo esté en él.</translation>
    </message>
    <message>
        <source>It is a link to another disk. What it leads to was copied.</source>
        <translation>Es un enlace a otro disco. Se copió aquello a lo que lleva.</translation>
    </message>
    <message>
        <source>The disk does not answer.</source>
        <translation>El disco no responde.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>El disco está lleno.</translation>
    </message>
    <message>
        <source>Too large for the file system of this disk.</source>
        <translation>Demasiado grande para el sistema de archivos de este disco.</translation>
    </message>
    <message>
        <source>Access is not permitted.</source>
        <translation>No se permite el acceso.</translation>
    </message>
    <message>
        <source>The disk is write-protected.</source>
        <translation>El disco está protegido contra escritura.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>El disco comunica un error.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>Ya no está ahí.</translation>
    </message>
    <message>
        <source>Its name or path is too long.</source>
        <translation>Su nombre o su ruta es demasiado larga.</translation>
    </message>
    <message>
        <source>The disk is not connected any more.</source>
        <translation>El disco ya no está conectado.</translation>
    </message>
    <message>
        <source>Something else of that name is in its place.</source>
        <translation>En su lugar hay otra cosa con ese nombre.</translation>
    </message>
    <message>
        <source>The file system of this disk does not allow its name.</source>
        <translation>El sistema de archivos de este disco no admite su nombre.</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <extracomment>Two sentences, one behind the other.</extracomment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
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
        <translation>1 archivo</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 archivos</translation>
    </message>
    <message>
        <source>1 of %1 items was not copied whole.</source>
        <translation>1 de %1 ítems no se copió entero.</translation>
    </message>
    <message>
        <source>%1 of %2 items were not copied whole.</source>
        <translation>%1 de %2 ítems no se copiaron enteros.</translation>
    </message>
    <message>
        <source>The copy was stopped. %1, %2 are on the disk.</source>
        <translation>La copia se detuvo. En el disco hay %1, %2.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it. Do not rely on this copy.</source>
        <translation>El disco no ha confirmado que todo esté en él. No te fíes de esta copia.</translation>
    </message>
    <message>
        <source>Nothing was copied.</source>
        <translation>No se copió nada.</translation>
    </message>
    <message>
        <source>%1, %2 are on the disk. It can be unplugged now.</source>
        <translation>En el disco hay %1, %2. Ya puedes desconectarlo.</translation>
    </message>
    <message>
        <source>The list could not be saved on the disk.</source>
        <translation>No se pudo guardar la lista en el disco.</translation>
    </message>
    <message>
        <source>Parts of it cannot be read; zeros stand for the bytes %1.</source>
        <translation>Algunas partes no se pueden leer; hay ceros en lugar de los bytes %1.</translation>
    </message>
    <message>
        <source>Another disk is mounted here. What is on it was not copied.</source>
        <translation>Aquí está montado otro disco. No se copió su contenido.</translation>
    </message>
    <message>
        <source>It is the same folder as another one in this copy, or the copy itself.</source>
        <translation>Es la misma carpeta que otra de esta copia, o la copia misma.</translation>
    </message>
    <message>
        <source>It is a link to %1, and this disk cannot hold links.</source>
        <translation>Es un enlace a “%1”, y este disco no admite enlaces.</translation>
    </message>
    <message>
        <source>The disk does not take its name. There it is called %1.</source>
        <translation>El disco no admite este nombre. Allí el ítem se llama “%1”.</translation>
    </message>
    <message>
        <source>Items whose permissions this disk cannot hold: %1</source>
        <translation>Ítems cuyos permisos este disco no puede conservar: %1</translation>
    </message>
    <message>
        <source>Items whose extended attributes this disk cannot hold: %1</source>
        <translation>Ítems cuyos atributos extendidos este disco no puede conservar: %1</translation>
    </message>
    <message>
        <source>Folders whose dates this disk cannot hold: %1</source>
        <translation>Carpetas cuya fecha este disco no puede conservar: %1</translation>
    </message>
    <message>
        <source>Its resource fork, a part of it, cannot be read.</source>
        <translation>No se puede leer su bifurcación de recursos, que es parte de él.</translation>
    </message>
    <message>
        <source>Its contents are in its resource fork, and this disk cannot hold that.</source>
        <translation>Su contenido está en la bifurcación de recursos, que este disco no puede conservar.</translation>
    </message>
    <message>
        <source>Items whose resource forks this disk cannot hold: %1</source>
        <translation>Ítems cuya bifurcación de recursos este disco no puede conservar: %1</translation>
    </message>
    <message>
        <source>Items whose Finder tags and icons this disk cannot hold: %1</source>
        <translation>Ítems cuyas etiquetas e iconos del Finder este disco no puede conservar: %1</translation>
    </message>
    <message>
        <source>Items whose access lists this disk cannot hold: %1</source>
        <translation>Ítems cuyas listas de acceso este disco no puede conservar: %1</translation>
    </message>
    <message>
        <source>Items whose creation dates this disk cannot hold: %1</source>
        <translation>Ítems cuya fecha de creación este disco no puede conservar: %1</translation>
    </message>
    <message>
        <source>Locked items whose copies are not locked: %1</source>
        <translation>Ítems bloqueados cuyas copias no están bloqueadas: %1</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>Su contenido solo está en iCloud, no en este Mac.</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>El destino es ahora “%1”</translation>
    </message>
    <message>
        <source>%1 cannot hold a file of %2 or more.</source>
        <translation>“%1” no admite archivos de %2 o más.</translation>
    </message>
</context>
<context>
    <name>CFolderTrouble</name>
    <message>
        <source>This folder may not be read, nothing of it is copied.</source>
        <translation>No se permite leer esta carpeta; no se copia nada de ella.</translation>
    </message>
    <message>
        <source>This folder cannot be read: %1</source>
        <translation>No se puede leer esta carpeta: %1</translation>
    </message>
    <message>
        <source>Only a part of this folder can be read: %1</source>
        <translation>Solo se puede leer una parte de esta carpeta: %1</translation>
    </message>
    <message>
        <source>This link leads back to a folder that it lies in.</source>
        <translation>Este enlace conduce de vuelta a una carpeta que lo contiene.</translation>
    </message>
    <message>
        <source>The disk does not answer. What is in this folder appears as soon as it does.</source>
        <translation>El disco no responde. El contenido de esta carpeta aparecerá en cuanto responda.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>El disco comunica un error.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>Ya no está ahí.</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>Su contenido solo está en iCloud, no en este Mac.</translation>
    </message>
</context>
<context>
    <name>CItemListDialog</name>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimizar</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Items of this copy that need your attention</source>
        <translation>Ítems de esta copia que debes revisar</translation>
    </message>
    <message>
        <source>and %1 more, see %2</source>
        <translation>y %1 más; consulta %2</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>y %1 más</translation>
    </message>
    <message>
        <source>This list is also in %1</source>
        <translation>Esta lista también está en %1</translation>
    </message>
</context>
<context>
    <name>CLastCopyNotice</name>
    <message>
        <source>Show the list</source>
        <translation>Mostrar la lista</translation>
    </message>
</context>
<context>
    <name>CLogNotice</name>
    <message>
        <source>The log is kept in %1</source>
        <extracomment>The path of a folder.</extracomment>
        <translation>El registro está en %1</translation>
    </message>
    <message>
        <source>The log cannot be written.</source>
        <translation>No se puede escribir el registro.</translation>
    </message>
</context>
<context>
    <name>CNoticeLine</name>
    <message>
        <source>%1 does not answer.</source>
        <translation>“%1” no responde.</translation>
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
        <translation>Buscando</translation>
    </message>
    <message>
        <source>image</source>
        <translation>imagen</translation>
    </message>
    <message>
        <source>Searching, please wait...</source>
        <translation>Buscando, espera un momento…</translation>
    </message>
</context>
<context>
    <name>CSelFileWidget</name>
    <message>
        <source>Source</source>
        <translation>Origen</translation>
    </message>
    <message>
        <source>Select File to Copy:</source>
        <translation>Selecciona los archivos que quieres copiar:</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>Destino</translation>
    </message>
    <message>
        <source>Select Destination Disk:</source>
        <translation>Selecciona el disco de destino:</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>No disk to copy files from was found.</source>
        <translation>No se ha encontrado ningún disco del que copiar archivos.</translation>
    </message>
    <message>
        <source>No USB disk was found.
Connect one, and it appears here.</source>
        <translation>No se ha encontrado ningún disco USB.
Conecta uno y aparecerá aquí.</translation>
    </message>
    <message>
        <source>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1GB&lt;/span&gt; Available, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2GB&lt;/span&gt; Total</source>
        <translation>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1&#xa0;GB&lt;/span&gt; disponibles, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2&#xa0;GB&lt;/span&gt; en total</translation>
    </message>
    <message>
        <source>Your drive may be damaged and Tarnwick can not write to this drive, please change another one and retry.</source>
        <translation>Es posible que la unidad esté dañada y Tarnwick no puede escribir en ella. Cámbiala por otra e inténtalo de nuevo.</translation>
    </message>
    <message>
        <source>Calculating files size...</source>
        <translation>Calculando el tamaño de los archivos…</translation>
    </message>
    <message>
        <source>No enough space, please select other Hard Disk or USB flash drive.</source>
        <translation>No hay espacio suficiente. Selecciona otro disco duro u otra unidad flash USB.</translation>
    </message>
    <message>
        <source>Tarnwick</source>
        <translation>Tarnwick</translation>
    </message>
    <message>
        <source> at </source>
        <translation> a las </translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Refresh List of Disks</source>
        <translation>Actualizar la lista de discos</translation>
    </message>
    <message>
        <source>Files selected</source>
        <translation>Archivos seleccionados</translation>
    </message>
    <message>
        <source>No files selected</source>
        <translation>Ningún archivo seleccionado</translation>
    </message>
    <message>
        <source>%1 are needed, %2 are free.</source>
        <translation>Se necesitan %1 y hay %2 libres.</translation>
    </message>
    <message>
        <source>Complete rescue</source>
        <translation>Rescate completo</translation>
    </message>
    <message>
        <source>Copies everything in what is ticked, whether the list shows it or not.</source>
        <translation>Copia todo lo que contienen los ítems marcados, tanto si aparece en la lista como si no.</translation>
    </message>
</context>
<context>
    <name>CSourceNotice</name>
    <message>
        <source>%1 is there now: press the round arrow to list it.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>“%1” ya está disponible: haz clic en la flecha redonda para mostrarlo.</translation>
    </message>
    <message>
        <source>The users&apos; files are on %1, not on %2.</source>
        <extracomment>Names of two volumes: where the users&apos; files are, and where the user may be looking for them.</extracomment>
        <translation>Los archivos de los usuarios están en “%1”, no en “%2”.</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them in Disk Utility, then press the round arrow.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>¿Archivos de usuarios de “%1” bloqueados? Desbloquéalos en Utilidad de Discos y haz clic en la flecha redonda.</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them with their password, then start Tarnwick again.</source>
        <extracomment>The name of a volume.</extracomment>
        <translation>Los archivos de los usuarios de %1 pueden estar bloqueados: desbloquéalos con su contraseña y vuelve a abrir Tarnwick.</translation>
    </message>
</context>
<context>
    <name>CStartSplash</name>
    <message>
        <source>Searching for disks…</source>
        <translation>Buscando discos…</translation>
    </message>
    <message>
        <source>Waiting for %1…</source>
        <translation>Esperando a “%1”…</translation>
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
        <translation>logotipo</translation>
    </message>
    <message>
        <source>title</source>
        <translation>título</translation>
    </message>
    <message>
        <source>Kelvane Tarnwick</source>
        <translation>Kelvane Tarnwick</translation>
    </message>
    <message>
        <source>Your computer will restart if you exit the program. Are you sure you want to exit?</source>
        <translation>Si sales del programa, el ordenador se reiniciará. ¿Seguro que quieres salir?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Sí</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimizar</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
</context>
<context>
    <name>CTreeNotices</name>
    <message>
        <source>Only opened folders of a fully ticked volume are copied.</source>
        <translation>De un volumen marcado por completo solo se copian las carpetas abiertas.</translation>
    </message>
    <message>
        <source>Entries left out of %1 because of their names: %2</source>
        <translation>Ítems de “%1” omitidos por su nombre: %2</translation>
    </message>
    <message>
        <source>Entries that are not in the list are not copied.</source>
        <translation>Los ítems que no están en la lista no se copian.</translation>
    </message>
</context>
<context>
    <name>KvMessageBox</name>
    <message>
        <source>Form</source>
        <translation>Formulario</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>Etiqueta de texto</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Sí</translation>
    </message>
    <message>
        <source>No</source>
        <translation>No</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimizar</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
</context>
</TS>
