# shellcheck shell=dash
# The screen: the firmware's frame buffer. Without one a person gets words on the text console, and time to read.

has_screen() {
    local turn
    turn=0
    until [ -e "$ROOT/dev/fb0" ]; do
        [ "$turn" -lt 100 ] || return 1
        sleep 0.1
        turn=$((turn + 1))
    done
    # No blank screen after ten minutes, no cursor beside the window.
    # What is typed into a question does not appear beneath it.
    stty -F "$ROOT/dev/tty1" -echo 2>/dev/null || :
    printf '\033[9;0]\033[14;0]\033[?25l' >"$ROOT/dev/tty1" 2>/dev/null || :
}

# The console has Latin letters alone; those who read others get English.
no_screen_text() {
    cat <<'T'

  Tarnwick cannot show its window: this computer gave no picture to draw on.

  1. Start again and choose "safe graphics" in the menu.
  2. If the computer can start in two ways (UEFI and BIOS or "Legacy"), try the other one.
  3. Try another computer: put the disk of this one into a USB case.

  Nothing has been changed on any disk. Press Enter to restart.

T
    case $1 in
    de) cat <<'T'
  Tarnwick kann sein Fenster nicht zeigen: Dieser Computer bietet kein Bild zum Zeichnen.
  1. Neu starten und im Menü die sichere Grafik ("safe graphics") wählen.
  2. Die andere Startart versuchen (UEFI oder BIOS/"Legacy").
  3. Einen anderen Computer nehmen, mit der Festplatte in einem USB-Gehäuse.
  Auf keiner Festplatte wurde etwas geändert. Mit der Eingabetaste neu starten.
T
        ;;
    fr) cat <<'T'
  Tarnwick ne peut pas afficher sa fenêtre : cet ordinateur ne fournit pas d'image.
  1. Redémarrez et choisissez les graphismes sûrs ("safe graphics") dans le menu.
  2. Essayez l'autre mode de démarrage (UEFI ou BIOS/"Legacy").
  3. Prenez un autre ordinateur, avec le disque de celui-ci dans un boîtier USB.
  Rien n'a été modifié sur aucun disque. Appuyez sur Entrée pour redémarrer.
T
        ;;
    es) cat <<'T'
  Tarnwick no puede mostrar su ventana: este ordenador no ofrece ninguna imagen.
  1. Reinicie y elija los gráficos seguros ("safe graphics") en el menú.
  2. Pruebe el otro modo de arranque (UEFI o BIOS/"Legacy").
  3. Use otro ordenador, con el disco de este en una caja USB.
  No se ha cambiado nada en ningún disco. Pulse Intro para reiniciar.
T
        ;;
    it) cat <<'T'
  Tarnwick non può mostrare la sua finestra: questo computer non fornisce un'immagine.
  1. Riavviare e scegliere la grafica sicura ("safe graphics") nel menu.
  2. Provare l'altro modo di avvio (UEFI o BIOS/"Legacy").
  3. Usare un altro computer, con il disco di questo in un contenitore USB.
  Nessun disco è stato modificato. Premere Invio per riavviare.
T
        ;;
    nl) cat <<'T'
  Tarnwick kan zijn venster niet tonen: deze computer geeft geen beeld.
  1. Start opnieuw en kies veilige weergave ("safe graphics") in het menu.
  2. Probeer de andere manier van opstarten (UEFI of BIOS/"Legacy").
  3. Gebruik een andere computer, met de schijf van deze in een USB-behuizing.
  Op geen enkele schijf is iets veranderd. Druk op Enter om opnieuw te starten.
T
        ;;
    pt) cat <<'T'
  O Tarnwick não consegue mostrar a sua janela: este computador não fornece imagem.
  1. Reinicie e escolha os gráficos seguros ("safe graphics") no menu.
  2. Experimente o outro modo de arranque (UEFI ou BIOS/"Legacy").
  3. Use outro computador, com o disco deste numa caixa USB.
  Nada foi alterado em nenhum disco. Prima Enter para reiniciar.
T
        ;;
    esac
}

# While everything is unmounted: a slow stick may need minutes for what is still on its way.
finishing_text() {
    case $1 in
    de) echo "Bitte warten und alle Datenträger stecken lassen: Die Kopie wird abgeschlossen." ;;
    fr) echo "Veuillez patienter et laisser tous les disques branchés : la copie se termine." ;;
    es) echo "Espere y deje todos los discos conectados: la copia se está terminando." ;;
    it) echo "Attendere e lasciare collegati tutti i dischi: la copia viene completata." ;;
    nl) echo "Even wachten en alle schijven laten zitten: de kopie wordt afgerond." ;;
    pt) echo "Aguarde e deixe todos os discos ligados: a cópia está a terminar." ;;
    *) echo "Please wait and leave all disks plugged in: the copy is being finished." ;;
    esac
}

tell_finishing() {
    printf '\033%%G\033[2J\033[H\033[?25l\n  %s\n' "$(finishing_text "$(language)")" 2>/dev/null >"$ROOT/dev/tty1" || :
}

tell_no_screen() {
    {
        printf '\033c\033%%G'
        no_screen_text "$(language)"
    } >"$ROOT/dev/tty1" 2>/dev/null || :
    # Without a keyboard the text stays until the computer is switched off.
    head -n 1 <"$ROOT/dev/tty1" >/dev/null || sleep 1000000
}
