# shellcheck shell=dash disable=SC2034,SC2153
# A USB disk that holds a system may be the drive of a dead computer in a case: whether it is one to rescue from
# is asked before the start. Looking writes nothing.

look_at_usb_disks() {
    local disk
    PROBES=
    for disk in $(all_disks); do
        case $disk in sr*) continue ;; esac
        if ! is_usb "$disk" || is_medium "$disk"; then
            continue
        fi
        mkdir -p "$RUN/looked/$disk"
        (set +e; systems_on "$disk" >"$RUN/looked/$disk/list" && : >"$RUN/looked/$disk/done") &
        PROBES="$PROBES $!"
    done
}

# systems_on DISK: what is installed on it, one a line. Waits for udev and for the disk, however long they take.
systems_on() {
    local part
    for part in $(partitions_of "$1") "$1"; do
        if [ "$part" != "$1" ] || ! has_partitions "$1"; then
            until facts "$part" || [ ! -e "$SYS/class/block/$part" ]; do sleep 0.5; done
            system_on "$part"
        fi
    done | sort -u
}

# system_on NAME: each device is looked at once; who comes while another looks waits for that.
system_on() {
    local place
    place=$RUN/probes/$1
    mkdir -p "$RUN/probes"
    if mkdir "$place" 2>/dev/null; then
        # A failure within it, such as no system there, is no end: what it has mounted it unmounts.
        probe "$1" >"$place/found" || :
        : >"$place/done"
    fi
    until [ -e "$place/done" ] || [ ! -e "$place" ]; do sleep 0.2; done
    cat "$place/found" 2>/dev/null
    return 0
}

probe() {
    case $TYPE in
    ntfs | vfat | hfsplus | ext[234] | xfs | btrfs) probe_files "$1" ;;
    LVM2_member | linux_raid_member) echo Linux ;;
    apfs) bounded 30 apfs_volumes "$(node_of "$1")" | grep -q '	Preboot$' && echo macOS ;;
    BitLocker) has_start_files "$(disk_of "$1")" && echo Windows ;;
    crypto_LUKS) has_start_files "$(disk_of "$1")" && echo Linux ;;
    esac
}

# Beside what is encrypted a computer's own disk has a partition to start from.
has_start_files() {
    local other
    for other in $(partitions_of "$1"); do
        facts "$other" || continue
        case $PART/$TYPE in
        c12a7328-f81f-11d2-ba4b-00a0c93ec93b/* | 0xef/* | e3c9e316-0b5c-4db8-817d-f92df00215ae/* | */ext[234]) return 0 ;;
        esac
    done
    return 1
}

probe_files() {
    local point number node
    point=$RUN/mnt/probe-$1
    number=
    if [ "$TYPE" = vfat ]; then
        # What is mounted read-only of it writes nothing, and a stick to copy to is soon free again.
        node=$(node_of "$1")
    elif has_journal "$TYPE"; then
        number=$(make_view "$1")
    else
        number=$(make_window "$1")
    fi
    [ -z "$number" ] || node=/dev/mapper/$VIEW$number
    [ -n "${node:-}" ] || return 0
    mkdir -p "$point"
    if mount_readonly "$TYPE" "$node" "$point" 2>/dev/null; then
        system_of "$point"
        umount "$point" || umount -l "$point"
    fi
    rmdir "$point"
    [ -z "$number" ] || drop_view "$number"
}

# One that has not answered by now is looked at when it does, and nobody is asked.
choose_sources() {
    local place
    # shellcheck disable=SC2086
    await "$LOOK_SECONDS" $PROBES || say "note: a USB disk does not answer"
    for place in "$RUN/looked"/*; do
        if [ -e "$place/done" ] && [ -s "$place/list" ]; then
            choose_source "$(basename "$place")" "$(paste -s -d , "$place/list" | sed 's/,/, /g')"
        fi
    done
}

# Left unanswered it is one to rescue from: that writes nothing.
choose_source() {
    local model answer
    model=$(model_of "$1")
    answer=0
    ask source "$1" --name "$model" --size "$(bytes_of "$1")" --disk "$model" --systems "$2" >/dev/null || answer=$?
    if [ "$answer" -eq 1 ]; then
        say "note $1: holds $2, to copy to"
        mkdir -p "$RUN/targets"
        : >"$RUN/targets/$1"
    else
        say "note $1: holds $2, to rescue from"
        remember_source "$1"
    fi
}

# mark_of DISK: what it is known by when it is plugged in again under another name.
mark_of() {
    local TYPE UUID LABEL_ENC PART TABLE MODEL SERIAL
    facts "$1" || return 0
    [ -n "$TABLE$UUID" ] || return 0
    printf '%s %s %s\n' "$SERIAL" "$TABLE" "$UUID" | tr / _
}

remember_source() {
    : >"$RUN/sources/$1"
    mark_of "$1" >>"$RUN/source-marks"
}

# A disk that nobody was asked about: it came while the program runs, or answered late. One that was rescued from is
# it again, after a loose cable, and one that holds a system is not written to: not to its other partitions either.
recognise_source() {
    local disk
    disk=$(disk_of "$(bases_of "$1" | head -n 1)")
    case $disk in sr*) return ;; esac
    if is_source_disk "$1" || [ -e "$RUN/targets/$disk" ]; then
        return
    fi
    if mark_of "$disk" | grep -qxFf - "$RUN/source-marks" 2>/dev/null; then
        remember_source "$disk"
    else
        look_for_system "$1" "$disk" || return 0
    fi
    say "note $disk: holds a system, to rescue from"
    set_readonly "$disk"
}

# look_for_system NAME DISK: 0 when it is one to rescue from. So is one that does not answer, as long as it is plugged in.
look_for_system() {
    local rc
    rc=0
    bounded "$LOOK_SECONDS" systems_on "$2" >"$RUN/devices/$1/systems" || rc=$?
    if [ "$rc" -ne 0 ]; then
        say "note $2: does not answer, nothing is written to it"
        : >"$RUN/sources/$2"
    elif [ -s "$RUN/devices/$1/systems" ]; then
        remember_source "$2"
    else
        return 1
    fi
}
