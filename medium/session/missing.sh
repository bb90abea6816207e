# shellcheck shell=dash disable=SC2153
# What cannot be shown, for a person: each volume that is not there though it may hold files, and why. One a line:
# why, name, bytes, model of the disk, with tabs between. Found anew each time from what became of the devices, so
# that what answers late is on no list any more, and what nobody has spoken of is.

LEAST_MISSING=$((64 * 1024 * 1024))

list_missing() {
    local name why
    for name in $(all_devices); do
        ! is_empty_drive "$name" || continue
        if ! facts "$name"; then
            has_partitions "$name" || is_medium "$name" || tell_missing_one silent "$name"
        elif [ -e "$RUN/devices/$name/apfs" ]; then
            list_missing_apfs "$name"
        elif why=$(why_missing "$name"); then
            tell_missing_one "$why" "$name"
        fi
    done
}

# A drive for discs has a size without a disc, too.
is_empty_drive() {
    case $1 in sr*) ;; *) return 1 ;; esac
    ! facts "$1" || [ -z "$TYPE" ]
}

# tell_missing_one WHY NAME [LABEL]
tell_missing_one() {
    local name
    name=$(cleaned "${3:-$(decoded "$LABEL_ENC")}")
    printf '%s\t%s\t%s\t%s\n' "$1" "${name:-Disk $(plain_name "$2")}" "$(bytes_of "$2")" "$(model_below "$2")"
}

# plain_name NAME: what is mapped has a name of its own; what was opened has that of its disk.
plain_name() {
    line_of "$SYS/class/block/$1/dm/name"
    LINE=${LINE:-$1}
    cleaned "${LINE#"$OPEN"}"
}

model_below() {
    local base
    base=$(bases_of "$1" | grep -v '^loop' | head -n 1)
    cleaned "$(model_of "$(disk_of "${base:-$1}")")"
}

# why_missing NAME: prints it; 1 for what is shown, and for what is no volume of a person's.
why_missing() {
    line_of "$RUN/devices/$1/state"
    case $LINE in
    shown | opened | parted | left-out) return 1 ;;
    locked | skipped | locked-out | unasked) echo locked ;;
    failed) why_failed "$1" ;;
    unknown) echo unknown ;;
    empty) why_empty "$1" ;;
    member) why_apart "$1" ;;
    *) ! is_medium "$1" && echo silent ;;
    esac
}

why_failed() {
    line_of "$RUN/devices/$1/why"
    case $LINE in
    lost) echo lost ;;
    *) echo damaged ;;
    esac
}

# A damaged file system is not recognised; neither is one that was never made. What is small, or of no kind that
# files are kept in, is not worth a fright.
why_empty() {
    [ "$(bytes_of "$1")" -gt "$LEAST_MISSING" ] || return 1
    if is_partition "$1"; then
        why_empty_partition
    elif may_be_whole "$1" && has_contents "$1"; then
        echo damaged
    else
        return 1
    fi
}

why_empty_partition() {
    case $PART in
    # Windows, Linux (also its roots, homes and servers' files, encrypted ones), Apple.
    ebd0a0a2-b9e5-4433-87c0-68b6b72699c7 | 0fc63daf-8483-4772-8e79-3d69d8477de4 | 933ac7e1-2eb4-4f13-b844-0e14e2aef915 | \
        4f68bce3-e8cd-4db1-96e7-fbcaf984b709 | 44479540-f297-41b2-9af7-d131d5f0458a | 3b8f8425-20e0-4f3b-907f-1a25a76f98e8 | \
        ca7d7ccb-63ed-4c53-861c-1742536059cc | 48465300-0000-11aa-aa11-00306543ecac | 7c3457ef-0000-11aa-aa11-00306543ecac | \
        0x1 | 0x4 | 0x6 | 0x7 | 0xb | 0xc | 0xe | 0x83 | 0xaf) echo damaged ;;
    # Dynamic disks and storage pools of Windows, RAID and LVM.
    af9b60a0-1431-4f62-bc68-3311714a69ad | e75caf8f-f680-4cee-afa3-b001e56efc2d | a19d880f-05fc-4d3b-a006-743f0f84911e | \
        e6d6d379-f507-44c2-a23c-238f2a3df928 | 52414944-0000-11aa-aa11-00306543ecac | 0x42 | 0x8e | 0xfd) echo unknown ;;
    *) return 1 ;;
    esac
}

# No disk with a table, be it without a partition, and no piece that LVM makes its volumes of.
may_be_whole() {
    [ -z "$TABLE" ] || return 1
    line_of "$SYS/class/block/$1/dm/uuid"
    case $LINE in LVM-*-*) return 1 ;; esac
}

# Other bytes than zeros at its beginning; what cannot be read there may well have some.
has_contents() {
    bounded 20 dd "if=$ROOT$(node_of "$1")" "of=$RUN/beginning-$1" bs=64k count=16 >/dev/null 2>&1 || return 0
    [ "$(tr -d '\000' <"$RUN/beginning-$1" | head -c 1 | wc -c)" -gt 0 ]
}

# Of what is put together of several: what is used is shown as a whole.
why_apart() {
    local holder
    [ "$TYPE" != btrfs ] || return 1
    if [ "$TYPE" = LVM2_member ]; then
        line_of "$RUN/lvm/$1"
        [ "$LINE" != used ] || return 1
        [ -e "$RUN/lvm/$1" ] || { echo unknown; return; }
    fi
    for holder in "$SYS/class/block/$1/holders"/md*; do
        [ "$(bytes_of "${holder##*/}")" -eq 0 ] || return 1
    done
    echo apart
}

# Of the volumes of one container each is shown or not.
list_missing_apfs() {
    local index state label why
    if [ ! -s "$RUN/devices/$1/apfs" ]; then
        ! why=$(why_missing "$1") || tell_missing_one "$why" "$1"
        return
    fi
    while IFS='	' read -r index state label; do
        if [ -e "$RUN/devices/$1/apfs.$index" ]; then
            continue
        fi
        why=silent
        [ ! -e "$RUN/devices/$1/failed.$index" ] || why=damaged
        [ "$state" != locked ] || why=locked
        tell_missing_one "$why" "$1" "$label"
    done <"$RUN/devices/$1/apfs"
}
