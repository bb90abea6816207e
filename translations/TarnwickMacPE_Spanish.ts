<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES" sourcelanguage="en">
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
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>El destino es ahora “%1”</translation>
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
