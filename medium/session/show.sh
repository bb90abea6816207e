# shellcheck shell=dash disable=SC2034,SC2153
# From a device to a volume below the folder of volumes. What became of each device is kept in a folder of its
# own ($RUN/devices/<name>), which whoever makes it first handles alone.

not_shown() {
    printf '%s\n' "$2" >"$RUN/devices/$1/state"
    say "not shown $(node_of "$1") ${TYPE:-unknown}: $3"
}

# claim NAME: 1 when another has it.
claim() { mkdir -p "$RUN/devices" && mkdir "$RUN/devices/$1" 2>/dev/null; }

# reason_to_leave_out NAME: prints why a device is no volume of a person's; 1 when it may be one.
reason_to_leave_out() {
    if is_medium "$1"; then
        echo "the medium itself"
        return
    fi
    case $TYPE in swap | swsusp) echo "memory of a system" && return ;; esac
    case $PART in
    c12a7328-f81f-11d2-ba4b-00a0c93ec93b | 0xef) echo "start files of the firmware" ;;
    21686148-6449-6e6f-744e-656564454649 | fe3a2a5d-4f32-41a7-b725-accc3285a309) echo "start program" ;;
    e3c9e316-0b5c-4db8-817d-f92df00215ae) echo "reserved by Windows, without files" ;;
    0x5 | 0xf | 0x85) echo "holds other partitions" ;;
    *) return 1 ;;
    esac
}

# A member of a RAID whose disks are put together: its partitions belong to the whole.
lies_in_raid() {
    local base holder
    base=$(disk_of "$1")
    [ "$base" != "$1" ] || return 1
    for holder in "$SYS/class/block/$base/holders"/md*; do
        [ ! -e "$holder" ] || return 0
    done
    return 1
}

# handle NAME: shows the device, or says why not. It has been claimed.
handle() {
    facts "$1" || :
    keep_origin "$1"
    if has_partitions "$1"; then
        echo parted >"$RUN/devices/$1/state"
    elif reason=$(reason_to_leave_out "$1"); then
        not_shown "$1" left-out "$reason"
    elif lies_in_raid "$1"; then
        not_shown "$1" left-out "part of a RAID, which is shown as a whole"
    else
        handle_contents "$1"
    fi
}

# keep_origin NAME: of what is put together, the disks and partitions that it goes with, and what to close then.
keep_origin() {
    case $1 in dm-*) ;; *) return 0 ;; esac
    bases_of "$1" >"$RUN/devices/$1/bases"
    line_of "$SYS/class/block/$1/dm/name"
    [ -e "$RUN/devices/$1/mapping" ] || printf '%s\n' "$LINE" >"$RUN/devices/$1/mapping"
}

handle_contents() {
    ! is_usb "$1" || recognise_source "$1"
    case $TYPE in
    *_raid_member | LVM2_member) handle_member "$1" ;;
    crypto_LUKS | BitLocker) echo locked >"$RUN/devices/$1/state" ;;
    apfs) show_apfs "$1" ;;
    btrfs) is_follower "$1" || show "$1" ;;
    '') handle_nothing "$1" ;;
    *)
        if is_known_type "$TYPE"; then
            show "$1"
        else
            not_shown "$1" unknown "no driver for it"
        fi
        ;;
    esac
}

handle_member() {
    echo member >"$RUN/devices/$1/state"
    [ "$(kind_of "$1")" != usb ] || say "not shown $(node_of "$1") $TYPE: part of a volume that nothing can be copied to"
}

handle_nothing() {
    case $PART in
    53746f72-6167-11aa-aa11-00306543ecac)
        TYPE=FileVault
        echo locked >"$RUN/devices/$1/state"
        ;;
    *)
        # A drive without a disk in it has no size and does not come here.
        not_shown "$1" empty "no file system was recognised"
        ;;
    esac
}

# show NAME: mounts it where nobody looks, names it by what is in it, and moves it to its place.
show() {
    local kind label point
    kind=$(kind_of "$1")
    label=$(decoded "$LABEL_ENC")
    point=$RUN/mnt/$1
    mkdir -p "$point"
    if ! mount_kind "$1" "$kind" "$point" 2>"$RUN/devices/$1/error"; then
        rmdir "$point" 2>/dev/null || :
        not_shown "$1" failed "$(first_line "$RUN/devices/$1/error")"
        forget_view "$1"
        return 1
    fi
    place "$1" "$point" "$label" "$TYPE" "$(word_of "$1" "$kind")"
    tell_state "$1" "$kind"
}

mount_kind() {
    if [ "$2" = usb ]; then
        mount_writable "$TYPE" "$(node_of "$1")" "$3"
    elif has_journal "$TYPE"; then
        mount_through_view "$1" "$3" || mount_clean "$1" "$2" "$3"
    elif [ "$2" = source ]; then
        keep_view "$1" "$(make_window "$1")" && mount_readonly "$TYPE" "$(view_of "$1")" "$3"
    else
        mount_readonly "$TYPE" "$(node_of "$1")" "$3"
    fi
}

keep_view() {
    [ -n "$2" ] && printf '%s\n' "$2" >>"$RUN/devices/$1/view"
}

view_of() { echo "/dev/mapper/$VIEW$(head -n 1 "$RUN/devices/$1/view")"; }

forget_view() {
    local number
    [ -e "$RUN/devices/$1/view" ] || return 0
    while read -r number; do
        drop_view "$number"
    done <"$RUN/devices/$1/view"
    rm -f "$RUN/devices/$1/view"
}

mount_through_view() {
    local more member
    : >"$RUN/devices/$1/view"
    more=
    for member in "$1" $(followers_of "$1"); do
        keep_view "$1" "$(make_view "$member")" || { forget_view "$1"; return 1; }
        more=$more,device=/dev/mapper/$VIEW$(tail -n 1 "$RUN/devices/$1/view")
    done
    mount_readonly "$TYPE" "$(view_of "$1")" "$2" "$more" || mount_degraded "$1" "$2" "$more" || {
        echo view-failed >"$RUN/devices/$1/why"
        return 1
    }
    ! is_lost "$(head -n 1 "$RUN/devices/$1/view")" || {
        umount -l "$2"
        echo "its changes do not fit into memory" >&2
        echo lost >"$RUN/devices/$1/why"
        return 1
    }
}

# A file system of several disks of which one is missing.
mount_degraded() {
    [ "$TYPE" = btrfs ] || return 1
    mount_readonly btrfs "$(view_of "$1")" "$2" "$3,degraded" && say "note $(node_of "$1"): one of its disks is missing"
}

# Without a view the kernel still mounts what needs no replay, and by itself refuses what does: the device is
# set read-only. Of a mount that failed on its view it would say the same once more.
mount_clean() {
    [ ! -e "$RUN/devices/$1/why" ] || return 1
    say "note $(node_of "$1"): no memory for a view, mounted only if it was unmounted cleanly"
    forget_view "$1"
    if [ "$2" = inner ]; then
        mount_readonly "$TYPE" "$(node_of "$1")" "$3"
    else
        keep_view "$1" "$(make_window "$1")" && mount_readonly "$TYPE" "$(view_of "$1")" "$3"
    fi
}

word_of() {
    if [ "$2" = inner ] && [ -s "$RUN/devices/$1/view" ]; then
        echo view
    else
        echo "$2"
    fi
}

# place NAME POINT LABEL TYPE WORD: from the folder that nobody sees into one that has its name.
place() {
    local wanted name
    wanted=$(name_for "$1" "$3" "$2")
    name=$(take_name "$wanted") || { not_shown "$1" failed "there is no name left for it"; umount -l "$2"; return 1; }
    if ! mount --move "$2" "$VOLUMES/$name"; then
        umount -l "$2" || :
        rmdir "$2" "$VOLUMES/$name" || :
        not_shown "$1" failed "it could not be put in its place"
        return 1
    fi
    rmdir "$2" 2>/dev/null || :
    printf '%s\n' "$name" >>"$RUN/devices/$1/names"
    echo shown >"$RUN/devices/$1/state"
    say "volume $(node_of "$1") $4 $5 -> $name"
    [ "$5" = usb ] || show_homes "$1" "$name" "$4" "$5"
}

# The tree leaves out names that begin with "home": what they hold is a volume of its own beside it. Systems on
# btrfs may keep them in a volume that is a folder here: "@/home", "@rootfs/home", "root/home".
show_homes() {
    local folder home
    for folder in "$VOLUMES/$2"/home* "$VOLUMES/$2"/@*/home* "$VOLUMES/$2"/root/home*; do
        if [ ! -d "$folder" ] || [ -L "$folder" ] || [ -z "$(ls -A "$folder")" ]; then
            continue
        fi
        home=$(take_name "$(cleaned "$2 ($(basename "$folder"))")") || continue
        if mount --bind "$folder" "$VOLUMES/$home" 2>/dev/null; then
            printf '%s\n' "$home" >>"$RUN/devices/$1/names"
            say "volume $(node_of "$1") $3 $4 -> $home"
        else
            rmdir "$VOLUMES/$home"
        fi
    done
}

# What a person should know of a volume that is shown.
tell_state() {
    local name
    name=$(head -n 1 "$RUN/devices/$1/names" 2>/dev/null) || return 0
    if [ "$TYPE" = hfsplus ] && is_dirty_hfsplus "$(node_of "$1")"; then
        say "note $name: was not unmounted, what was saved last may be missing"
    fi
    if [ "$2" = usb ] && is_readonly_mount "$VOLUMES/$(printf %s "$name" | sed 's/ /\\040/g')"; then
        say "note $name: can be read only ($TYPE)"
    fi
}

# Other devices of the same btrfs; the first of all shows it.
btrfs_devices() {
    local other TYPE UUID LABEL_ENC PART TABLE MODEL SERIAL
    for other in $(all_devices); do
        facts "$other" || continue
        [ "$TYPE/$UUID" != "btrfs/$1" ] || echo "$other"
    done
}

followers_of() {
    [ "$TYPE" = btrfs ] && [ -n "$UUID" ] || return 0
    btrfs_devices "$UUID" | grep -vx "$1" || :
}

is_follower() {
    [ -n "$UUID" ] && [ "$(btrfs_devices "$UUID" | head -n 1)" != "$1" ] || return 1
    echo member >"$RUN/devices/$1/state"
}

# show_apfs NAME [PASSWORD]: every volume of the container that can be opened. The tool only reads, so a USB disk
# with it is one to rescue from.
show_apfs() {
    local kind node list index state label
    kind=$(kind_of "$1")
    node=$(node_of "$1")
    if [ "$kind" != inner ]; then
        kind=source
        [ -e "$RUN/devices/$1/view" ] || keep_view "$1" "$(make_window "$1")" || { not_shown "$1" failed "no view of it"; return; }
        node=$(view_of "$1")
    fi
    list=$RUN/devices/$1/apfs
    bounded 60 apfs_volumes "$node" >"$list" || :
    [ -s "$list" ] || { not_shown "$1" failed "its volumes could not be read"; return; }
    while IFS='	' read -r index state label <&4; do
        show_apfs_volume "$1" "$node" "$index" "$state" "$label" "${2:-}"
    done 4<"$list"
    [ ! -e "$RUN/devices/$1/locked" ] || echo locked >"$RUN/devices/$1/state"
}

show_apfs_volume() {
    [ ! -e "$RUN/devices/$1/apfs.$3" ] || return 0
    if is_helper_of_macos "$5" && grep -q '	Preboot$' "$RUN/devices/$1/apfs"; then
        : >"$RUN/devices/$1/apfs.$3"
        say "not shown $(node_of "$1") apfs: $5 is a part of macOS"
        return 0
    fi
    if [ "$4" = locked ] && [ -z "$6" ]; then
        : >"$RUN/devices/$1/locked"
        return 0
    fi
    mkdir -p "$RUN/mnt/$1"
    if mount_apfs "$2" "$RUN/mnt/$1" "$3" "$2" "$6" >"$RUN/devices/$1/error" 2>&1; then
        : >"$RUN/devices/$1/apfs.$3"
        place "$1" "$RUN/mnt/$1" "$5" apfs "$kind"
    elif [ "$4" = locked ]; then
        : >"$RUN/devices/$1/locked"
    else
        : >"$RUN/devices/$1/failed.$3"
        say "not shown $(node_of "$1") apfs: $5: $(first_line "$RUN/devices/$1/error")"
    fi
}
