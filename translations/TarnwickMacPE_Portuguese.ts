<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt_BR" sourcelanguage="en">
<context>
    <name>CAskAgainPanel</name>
    <message>
        <source>Tarnwick stopped unexpectedly</source>
        <translation>O Tarnwick foi encerrado inesperadamente</translation>
    </message>
    <message>
        <source>Files that were copied before are still on the disk. If a copy was running, start again and copy everything once more.</source>
        <translation>Os arquivos copiados antes continuam no disco. Se havia uma cópia em andamento, inicie novamente e copie tudo mais uma vez.</translation>
    </message>
    <message>
        <source>Restart the computer</source>
        <translation>Reiniciar o computador</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>Iniciar novamente</translation>
    </message>
</context>
<context>
    <name>CAskEndPanel</name>
    <message>
        <source>A disk did not answer</source>
        <translation>Um disco não respondeu</translation>
    </message>
    <message>
        <source>You can unplug your disks now</source>
        <translation>Você já pode desconectar seus discos</translation>
    </message>
    <message>
        <source>Not everything may be on it yet. Wait while its light flashes, and check the copied files on another computer.</source>
        <translation>Talvez nem tudo esteja nele ainda. Espere enquanto a luz dele piscar e verifique os arquivos copiados em outro computador.</translation>
    </message>
    <message>
        <source>Tarnwick has ended, and nothing is written to a disk any more.</source>
        <translation>O Tarnwick foi encerrado e nada mais é gravado nos discos.</translation>
    </message>
    <message>
        <source>Leave the stick that you started from in its place until the screen goes dark.</source>
        <translation>Deixe o pendrive usado para iniciar no lugar até a tela apagar.</translation>
    </message>
    <message>
        <source>Power off</source>
        <translation>Desligar</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Reiniciar</translation>
    </message>
    <message>
        <source>The computer restarts by itself. Seconds left: %1</source>
        <translation>O computador será reiniciado sozinho. Segundos restantes: %1</translation>
    </message>
</context>
<context>
    <name>CAskMissingPanel</name>
    <message>
        <source>Locked with a password</source>
        <translation>Bloqueado com uma senha</translation>
    </message>
    <message>
        <source>Cannot be read, perhaps damaged</source>
        <translation>Não pode ser lido, talvez danificado</translation>
    </message>
    <message>
        <source>Does not answer</source>
        <translation>Não responde</translation>
    </message>
    <message>
        <source>One of several disks that belong together</source>
        <translation>Um de vários discos que formam um conjunto</translation>
    </message>
    <message>
        <source>Needs more memory than this computer has</source>
        <translation>Precisa de mais memória do que este computador tem</translation>
    </message>
    <message>
        <source>Of a kind that Tarnwick cannot read</source>
        <translation>De um formato que o Tarnwick não consegue ler</translation>
    </message>
    <message>
        <source>Another computer or a specialist may still be able to read what cannot be read here. Do not format or repair it before.</source>
        <translation>O que não pode ser lido aqui talvez ainda possa ser lido em outro computador ou por um especialista. Não formate nem repare antes disso.</translation>
    </message>
    <message>
        <source>A disk that answers later appears by itself.</source>
        <translation>Um disco que responder mais tarde aparecerá sozinho.</translation>
    </message>
    <message>
        <source>To type a password, restart the computer and start Tarnwick again.</source>
        <translation>Para digitar uma senha, reinicie o computador e inicie o Tarnwick novamente.</translation>
    </message>
    <message>
        <source>Not everything can be shown</source>
        <translation>Nem tudo pode ser mostrado</translation>
    </message>
    <message>
        <source>Nothing can be copied from these disks or parts of disks:</source>
        <translation>Nada pode ser copiado destes discos ou partes de discos:</translation>
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
        <translation>Bloqueado pelo Windows (BitLocker)</translation>
    </message>
    <message>
        <source>Locked by macOS (FileVault)</source>
        <translation>Bloqueado pelo macOS (FileVault)</translation>
    </message>
    <message>
        <source>Locked by Linux (LUKS)</source>
        <translation>Bloqueado pelo Linux (LUKS)</translation>
    </message>
    <message>
        <source>Type its password or its recovery key of 48 digits.</source>
        <translation>Digite a senha ou a chave de recuperação de 48 dígitos.</translation>
    </message>
    <message>
        <source>Type its password: mostly the one with which you log in to your Mac.</source>
        <translation>Digite a senha: quase sempre a que você usa para iniciar a sessão no seu Mac.</translation>
    </message>
    <message>
        <source>Type the password that your computer asks for when it starts, or when you plug this disk in.</source>
        <translation>Digite a senha que seu computador pede ao ser iniciado ou ao conectar este disco.</translation>
    </message>
    <message>
        <source>Then files can be copied to the disk.</source>
        <translation>Depois, arquivos poderão ser copiados para ele.</translation>
    </message>
    <message>
        <source>Nothing on the disk is changed.</source>
        <translation>Nada é alterado no disco.</translation>
    </message>
    <message>
        <source>This disk needs its password</source>
        <translation>Este disco precisa da senha</translation>
    </message>
    <message>
        <source>That password did not open the disk. Try %1 of %2.</source>
        <translation>Essa senha não abriu o disco. Tentativa %1 de %2.</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Senha</translation>
    </message>
    <message>
        <source>Show what I type</source>
        <translation>Mostrar o que digito</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>O Caps Lock está ativado.</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <translation>Teclado:</translation>
    </message>
    <message>
        <source>Skip this disk</source>
        <translation>Pular este disco</translation>
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
        <translation>Para que serve este disco USB?</translation>
    </message>
    <message>
        <source>Holds %1</source>
        <translation>Contém %1</translation>
    </message>
    <message>
        <source>Rescue files from it</source>
        <translation>Resgatar arquivos dele</translation>
    </message>
    <message>
        <source>Its files are listed to be copied. Nothing on it is changed.</source>
        <translation>Seus arquivos são listados para serem copiados. Nada é alterado nele.</translation>
    </message>
    <message>
        <source>Copy files to it</source>
        <translation>Copiar arquivos para ele</translation>
    </message>
    <message>
        <source>Files of other disks can be copied to it, beside what it holds.</source>
        <translation>Arquivos de outros discos podem ser copiados para ele, junto ao que já contém.</translation>
    </message>
</context>
<context>
    <name>CAskWaitPanel</name>
    <message>
        <source>Looking for your disks…</source>
        <translation>Procurando seus discos…</translation>
    </message>
    <message>
        <source>This can take a minute.</source>
        <translation>Isso pode levar um minuto.</translation>
    </message>
</context>
<context>
    <name>CCopyEndBox</name>
    <message>
        <source>Show the list</source>
        <translation>Mostrar a lista</translation>
    </message>
</context>
<context>
    <name>CCopyFileWidget</name>
    <message>
        <source>Remaining Time: %1</source>
        <translation>Tempo restante: %1</translation>
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
        <translation>Copiando arquivos para “%1”: %2</translation>
    </message>
    <message>
        <source>Copy file completed!</source>
        <translation>Cópia dos arquivos concluída!</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Your data might not be copied completely, are you sure to stop the copying process?</source>
        <translation>Seus dados podem não ter sido copiados por completo. Tem certeza de que deseja interromper a cópia?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Sim</translation>
    </message>
    <message>
        <source>The destination storage device has been removed! Please check and connect the storage device then try again.</source>
        <translation>O dispositivo de armazenamento de destino foi removido! Verifique-o, reconecte-o e tente novamente.</translation>
    </message>
    <message>
        <source>Copy Progress</source>
        <translation>Progresso da cópia</translation>
    </message>
    <message>
        <source>Everything was on the disk before it was removed.</source>
        <translation>Tudo estava no disco antes de ele ser removido.</translation>
    </message>
</context>
<context>
    <name>CCopyReportText</name>
    <message>
        <source>This copy has not come to its end.</source>
        <translation>Esta cópia não chegou ao fim.</translation>
    </message>
    <message>
        <source>If no copy is running any more, it broke off: the program was ended, the disk was removed or the power failed. Files are missing that are not named below. Copy everything again.</source>
        <translation>Se nenhuma cópia está mais em andamento, ela foi interrompida: o programa foi encerrado, o disco removido ou a energia faltou. Faltam arquivos que não são citados abaixo. Copie tudo novamente.</translation>
    </message>
    <message>
        <source>Not copied whole so far:</source>
        <translation>Não copiados por inteiro até agora:</translation>
    </message>
    <message>
        <source>Items that are missing, not whole or worth a note:</source>
        <translation>Itens que faltam, não estão inteiros ou merecem uma nota:</translation>
    </message>
    <message>
        <source>Copy everything again, best onto another disk.</source>
        <translation>Copie tudo novamente, de preferência para outro disco.</translation>
    </message>
    <message>
        <source>What had not been copied by then is missing and is not named below.</source>
        <translation>O que ainda não havia sido copiado falta e não é citado abaixo.</translation>
    </message>
    <message>
        <source>Everything is whole. The items below are worth a note.</source>
        <translation>Tudo está inteiro. Os itens abaixo merecem uma nota.</translation>
    </message>
    <message>
        <source>Try to copy the items below again. If the disk is full, or its file system takes no large files, use another disk. Keep this list with the copy until you have them all.</source>
        <translation>Tente copiar novamente os itens abaixo. Se o disco estiver cheio ou o sistema de arquivos dele não aceitar arquivos grandes, use outro disco. Guarde esta lista com a cópia até ter todos eles.</translation>
    </message>
    <message>
        <source>Report on a copy of files</source>
        <translation>Relatório de uma cópia de arquivos</translation>
    </message>
    <message>
        <source>From: %1</source>
        <translation>De: %1</translation>
    </message>
    <message>
        <source>To: %1</source>
        <translation>Para: %1</translation>
    </message>
    <message>
        <source>Begun: %1</source>
        <translation>Início: %1</translation>
    </message>
    <message>
        <source>To be copied: at most %1</source>
        <translation>A copiar: no máximo %1</translation>
    </message>
    <message>
        <source>Ended: %1</source>
        <translation>Fim: %1</translation>
    </message>
    <message>
        <source>Whole: %1, %2</source>
        <translation>Inteiros: %1, %2</translation>
    </message>
    <message>
        <source>Not whole: %1</source>
        <translation>Não inteiros: %1</translation>
    </message>
    <message>
        <source>And %1 more, for which there was no room.</source>
        <translation>E mais %1, para os quais não havia espaço.</translation>
    </message>
</context>
<context>
    <name>CCopyStateLine</name>
    <message>
        <source>%1 so far</source>
        <translation>Até agora, %1</translation>
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
        <translation>Interrompendo a cópia…</translation>
    </message>
    <message>
        <source>The last bytes are being written to the disk…</source>
        <translation>Gravando os últimos dados no disco…</translation>
    </message>
    <message>
        <source>The disk has not answered for %1 seconds: %2</source>
        <translation>O disco não responde há %1 segundos: %2</translation>
    </message>
</context>
<context>
    <name>CCopyText</name>
    <message>
        <source>Its folder cannot be created.</source>
        <translation>A pasta dele não pode ser criada.</translation>
    </message>
    <message>
        <source>It cannot be created on the disk.</source>
        <translation>Não pode ser criado no disco.</translation>
    </message>
    <message>
        <source>It cannot be written to the disk.</source>
        <translation>Não pode ser gravado no disco.</translation>
    </message>
    <message>
        <source>The disk did not take all of it.</source>
        <translation>O disco não o aceitou por inteiro.</translation>
    </message>
    <message>
        <source>It cannot be opened.</source>
        <translation>Não pode ser aberto.</translation>
    </message>
    <message>
        <source>It cannot be read.</source>
        <translation>Não pode ser lido.</translation>
    </message>
    <message>
        <source>It became shorter while it was copied.</source>
        <translation>Ficou menor enquanto era copiado.</translation>
    </message>
    <message>
        <source>It changed while it was copied.</source>
        <translation>Foi alterado enquanto era copiado.</translation>
    </message>
    <message>
        <source>It was removed while it was copied.</source>
        <translation>Foi removido enquanto era copiado.</translation>
    </message>
    <message>
        <source>Something else has taken its place.</source>
        <translation>Outra coisa tomou o lugar dele.</translation>
    </message>
    <message>
        <source>It is not a file, but a pipe, a socket or a device.</source>
        <translation>Não é um arquivo, mas um pipe, um socket ou um dispositivo.</translation>
    </message>
    <message>
        <source>The folder was not opened, so its contents were not copied.</source>
        <translation>A pasta não foi aberta, por isso o conteúdo dela não foi copiado.</translation>
    </message>
    <message>
        <source>It was not in the list, so it was not copied.</source>
        <translation>Não estava na lista, por isso não foi copiado.</translation>
    </message>
    <message>
        <source>It is a link to a folder that it lies in.</source>
        <translation>É um link para uma pasta em que ele mesmo está.</translation>
    </message>
    <message>
        <source>The folder cannot be read.</source>
        <translation>A pasta não pode ser lida.</translation>
    </message>
    <message>
        <source>It was copied whole, but its date could not be kept.</source>
        <translation>Foi copiado por inteiro, mas a data não pôde ser mantida.</translation>
    </message>
    <message>
        <source>The disk was removed.</source>
        <translation>O disco foi removido.</translation>
    </message>
    <message>
        <source>The copy was stopped.</source>
        <translation>A cópia foi interrompida.</translation>
    </message>
    <message>
        <source>There was not enough memory.</source>
        <translation>Não havia memória suficiente.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it.</source>
        <translation>O disco não confirmou que tudo está nele.</translation>
    </message>
    <message>
        <source>It is a link to another disk. What it leads to was copied.</source>
        <translation>É um link para outro disco. Foi copiado aquilo para o que ele aponta.</translation>
    </message>
    <message>
        <source>The disk does not answer.</source>
        <translation>O disco não responde.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>O disco está cheio.</translation>
    </message>
    <message>
        <source>Too large for the file system of this disk.</source>
        <translation>Grande demais para o sistema de arquivos deste disco.</translation>
    </message>
    <message>
        <source>Access is not permitted.</source>
        <translation>O acesso não é permitido.</translation>
    </message>
    <message>
        <source>The disk is write-protected.</source>
        <translation>O disco está protegido contra gravação.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>O disco informa um erro.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>Não está mais lá.</translation>
    </message>
    <message>
        <source>Its name or path is too long.</source>
        <translation>O nome ou o caminho dele é longo demais.</translation>
    </message>
    <message>
        <source>The disk is not connected any more.</source>
        <translation>O disco não está mais conectado.</translation>
    </message>
    <message>
        <source>Something else of that name is in its place.</source>
        <translation>No lugar dele há outra coisa com esse nome.</translation>
    </message>
    <message>
        <source>The file system of this disk does not allow its name.</source>
        <translation>O sistema de arquivos deste disco não permite o nome dele.</translation>
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
        <translation>1 arquivo</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 arquivos</translation>
    </message>
    <message>
        <source>1 of %1 items was not copied whole.</source>
        <translation>1 de %1 itens não foi copiado por inteiro.</translation>
    </message>
    <message>
        <source>%1 of %2 items were not copied whole.</source>
        <translation>%1 de %2 itens não foram copiados por inteiro.</translation>
    </message>
    <message>
        <source>The copy was stopped. %1, %2 are on the disk.</source>
        <translation>A cópia foi interrompida. No disco: %1, %2.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it. Do not rely on this copy.</source>
        <translation>O disco não confirmou que tudo está nele. Não confie nesta cópia.</translation>
    </message>
    <message>
        <source>Nothing was copied.</source>
        <translation>Nada foi copiado.</translation>
    </message>
    <message>
        <source>%1, %2 are on the disk. It can be unplugged now.</source>
        <translation>No disco: %1, %2. Ele já pode ser desconectado.</translation>
    </message>
    <message>
        <source>The list could not be saved on the disk.</source>
        <translation>A lista não pôde ser salva no disco.</translation>
    </message>
    <message>
        <source>Parts of it cannot be read; zeros stand for the bytes %1.</source>
        <translation>Partes dele não podem ser lidas; há zeros no lugar dos bytes %1.</translation>
    </message>
    <message>
        <source>Another disk is mounted here. What is on it was not copied.</source>
        <translation>Outro disco está montado aqui. O conteúdo dele não foi copiado.</translation>
    </message>
    <message>
        <source>It is the same folder as another one in this copy, or the copy itself.</source>
        <translation>É a mesma pasta que outra desta cópia, ou a própria cópia.</translation>
    </message>
    <message>
        <source>It is a link to %1, and this disk cannot hold links.</source>
        <translation>É um link para “%1”, e este disco não comporta links.</translation>
    </message>
    <message>
        <source>The disk does not take its name. There it is called %1.</source>
        <translation>O disco não permite este nome. Lá o item se chama “%1”.</translation>
    </message>
    <message>
        <source>Items whose permissions this disk cannot hold: %1</source>
        <translation>Itens cujas permissões este disco não comporta: %1</translation>
    </message>
    <message>
        <source>Items whose extended attributes this disk cannot hold: %1</source>
        <translation>Itens cujos atributos estendidos este disco não comporta: %1</translation>
    </message>
    <message>
        <source>Folders whose dates this disk cannot hold: %1</source>
        <translation>Pastas cuja data este disco não comporta: %1</translation>
    </message>
    <message>
        <source>Its resource fork, a part of it, cannot be read.</source>
        <translation>A bifurcação de recursos, que faz parte dele, não pode ser lida.</translation>
    </message>
    <message>
        <source>Its contents are in its resource fork, and this disk cannot hold that.</source>
        <translation>Seu conteúdo está na bifurcação de recursos, que este disco não comporta.</translation>
    </message>
    <message>
        <source>Items whose resource forks this disk cannot hold: %1</source>
        <translation>Itens cuja bifurcação de recursos este disco não comporta: %1</translation>
    </message>
    <message>
        <source>Items whose Finder tags and icons this disk cannot hold: %1</source>
        <translation>Itens cujas etiquetas e ícones do Finder este disco não comporta: %1</translation>
    </message>
    <message>
        <source>Items whose access lists this disk cannot hold: %1</source>
        <translation>Itens cujas listas de acesso este disco não comporta: %1</translation>
    </message>
    <message>
        <source>Items whose creation dates this disk cannot hold: %1</source>
        <translation>Itens cuja data de criação este disco não comporta: %1</translation>
    </message>
    <message>
        <source>Locked items whose copies are not locked: %1</source>
        <translation>Itens bloqueados cujas cópias não estão bloqueadas: %1</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>O conteúdo está apenas no iCloud, não neste Mac.</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>O destino agora é “%1”</translation>
    </message>
    <message>
        <source>%1 cannot hold a file of %2 or more.</source>
        <translation>“%1” não comporta arquivos de %2 ou mais.</translation>
    </message>
</context>
<context>
    <name>CFolderTrouble</name>
    <message>
        <source>This folder may not be read, nothing of it is copied.</source>
        <translation>A leitura desta pasta não é permitida; nada do seu conteúdo é copiado.</translation>
    </message>
    <message>
        <source>This folder cannot be read: %1</source>
        <translation>Não é possível ler esta pasta: %1</translation>
    </message>
    <message>
        <source>Only a part of this folder can be read: %1</source>
        <translation>Só é possível ler uma parte desta pasta: %1</translation>
    </message>
    <message>
        <source>This link leads back to a folder that it lies in.</source>
        <translation>Este link leva de volta a uma pasta que o contém.</translation>
    </message>
    <message>
        <source>The disk does not answer. What is in this folder appears as soon as it does.</source>
        <translation>O disco não responde. O conteúdo desta pasta aparecerá assim que ele responder.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>O disco informa um erro.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>Não está mais lá.</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>O conteúdo está apenas no iCloud, não neste Mac.</translation>
    </message>
</context>
<context>
    <name>CItemListDialog</name>
    <message>
        <source>Close</source>
        <translation>Fechar</translation>
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
        <translation>Itens desta cópia que você deve verificar</translation>
    </message>
    <message>
        <source>and %1 more, see %2</source>
        <translation>e mais %1; consulte %2</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>e mais %1</translation>
    </message>
    <message>
        <source>This list is also in %1</source>
        <translation>Esta lista também está em %1</translation>
    </message>
</context>
<context>
    <name>CLastCopyNotice</name>
    <message>
        <source>Show the list</source>
        <translation>Mostrar a lista</translation>
    </message>
</context>
<context>
    <name>CLogNotice</name>
    <message>
        <source>The log is kept in %1</source>
        <extracomment>The path of a folder.</extracomment>
        <translation>O registro está em %1</translation>
    </message>
    <message>
        <source>The log cannot be written.</source>
        <translation>Não é possível gravar o registro.</translation>
    </message>
</context>
<context>
    <name>CNoticeLine</name>
    <message>
        <source>%1 does not answer.</source>
        <translation>“%1” não responde.</translation>
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
        <translation>imagem</translation>
    </message>
    <message>
        <source>Searching, please wait...</source>
        <translation>Buscando, aguarde…</translation>
    </message>
</context>
<context>
    <name>CSelFileWidget</name>
    <message>
        <source>Source</source>
        <translation>Origem</translation>
    </message>
    <message>
        <source>Select File to Copy:</source>
        <translation>Selecione os arquivos a copiar:</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>Destino</translation>
    </message>
    <message>
        <source>Select Destination Disk:</source>
        <translation>Selecione o disco de destino:</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>No disk to copy files from was found.</source>
        <translation>Nenhum disco do qual copiar arquivos foi encontrado.</translation>
    </message>
    <message>
        <source>No USB disk was found.
Connect one, and it appears here.</source>
        <translation>Nenhum disco USB encontrado.
Conecte um e ele aparecerá aqui.</translation>
    </message>
    <message>
        <source>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1GB&lt;/span&gt; Available, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2GB&lt;/span&gt; Total</source>
        <translation>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1&#xa0;GB&lt;/span&gt; disponíveis, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2&#xa0;GB&lt;/span&gt; no total</translation>
    </message>
    <message>
        <source>Your drive may be damaged and Tarnwick can not write to this drive, please change another one and retry.</source>
        <translation>A unidade pode estar danificada e o Tarnwick não consegue gravar nela. Troque-a por outra e tente novamente.</translation>
    </message>
    <message>
        <source>Calculating files size...</source>
        <translation>Calculando o tamanho dos arquivos…</translation>
    </message>
    <message>
        <source>No enough space, please select other Hard Disk or USB flash drive.</source>
        <translation>Espaço insuficiente. Selecione outro disco rígido ou outra unidade flash USB.</translation>
    </message>
    <message>
        <source>Tarnwick</source>
        <translation>Tarnwick</translation>
    </message>
    <message>
        <source> at </source>
        <translation> às </translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Refresh List of Disks</source>
        <translation>Atualizar a lista de discos</translation>
    </message>
    <message>
        <source>Files selected</source>
        <translation>Arquivos selecionados</translation>
    </message>
    <message>
        <source>No files selected</source>
        <translation>Nenhum arquivo selecionado</translation>
    </message>
    <message>
        <source>%1 are needed, %2 are free.</source>
        <translation>São necessários %1 e há %2 livres.</translation>
    </message>
    <message>
        <source>Complete rescue</source>
        <translation>Resgate completo</translation>
    </message>
    <message>
        <source>Copies everything in what is ticked, whether the list shows it or not.</source>
        <translation>Copia tudo o que há nos itens marcados, apareça ou não na lista.</translation>
    </message>
</context>
<context>
    <name>CSourceNotice</name>
    <message>
        <source>%1 is there now: press the round arrow to list it.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>“%1” já está disponível: clique na seta redonda para mostrá-lo.</translation>
    </message>
    <message>
        <source>The users&apos; files are on %1, not on %2.</source>
        <extracomment>Names of two volumes: where the users&apos; files are, and where the user may be looking for them.</extracomment>
        <translation>Os arquivos dos usuários estão em “%1”, não em “%2”.</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them in Disk Utility, then press the round arrow.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>Arquivos de usuários de “%1” bloqueados? Desbloqueie-os no Utilitário de Disco e clique na seta redonda.</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them with their password, then start Tarnwick again.</source>
        <extracomment>The name of a volume.</extracomment>
        <translation>Os arquivos dos usuários de %1 podem estar bloqueados: desbloqueie-os com a senha e inicie o Tarnwick novamente.</translation>
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
        <translation>Aguardando “%1”…</translation>
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
        <translation>O computador será reiniciado se você encerrar o programa. Tem certeza de que deseja encerrar?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Sim</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fechar</translation>
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
        <translation>De um volume inteiramente marcado, só as pastas abertas são copiadas.</translation>
    </message>
    <message>
        <source>Entries left out of %1 because of their names: %2</source>
        <translation>Itens de “%1” omitidos por causa do nome: %2</translation>
    </message>
    <message>
        <source>Entries that are not in the list are not copied.</source>
        <translation>Itens que não estão na lista não são copiados.</translation>
    </message>
</context>
<context>
    <name>KvMessageBox</name>
    <message>
        <source>Form</source>
        <translation>Formulário</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>Rótulo de texto</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Sim</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Não</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fechar</translation>
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
