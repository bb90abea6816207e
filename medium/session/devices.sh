# shellcheck shell=dash disable=SC2034
# What a block device is, from sysfs and from what udev has noted: nothing here asks the disk itself, and next to
# nothing starts a process, as these are asked often. A device is named as the kernel names it ("sda1").

# Prefix of the mapped devices that stand between a disk and what is mounted. The program's idea of a
# destination knows it: what lies on one is never on USB.
VIEW=tarnwick-view-

# line_of FILE: sets LINE to the first line; empty without one.
line_of() {
    LINE=
    [ ! -r "$1" ] || IFS= read -r LINE <"$1" || :
}

node_of() {
    case $1 in
    *!*) printf '/dev/%s\n' "$1" | tr '!' '/' ;;
    *) echo "/dev/$1" ;;
    esac
}

is_view() {
    line_of "$SYS/class/block/$1/dm/name"
    case $LINE in "$VIEW"*) return 0 ;; esac
    return 1
}

is_partition() { [ -e "$SYS/class/block/$1/partition" ]; }

has_partitions() {
    local entry
    for entry in "$SYS/class/block/$1/$1"*/partition; do
        [ -e "$entry" ] && return 0
    done
    return 1
}

# path_of NAME: sets DEVICE_PATH to its place in the tree of devices.
path_of() {
    local here
    here=$PWD
    DEVICE_PATH=
    if cd -P "$SYS/class/block/$1" 2>/dev/null; then
        DEVICE_PATH=$PWD
        cd "$here" || cd /
    fi
}

# The whole disk that a partition lies on; a whole disk is its own.
disk_of() {
    if is_partition "$1"; then
        path_of "$1"
        DEVICE_PATH=${DEVICE_PATH%/*}
        echo "${DEVICE_PATH##*/}"
    else
        echo "$1"
    fi
}

partitions_of() {
    local entry
    for entry in "$SYS/class/block/$1/$1"*/partition; do
        [ -e "$entry" ] || continue
        entry=${entry%/partition}
        echo "${entry##*/}"
    done
}

# What a device is made of, down to the disks and partitions that are made of nothing else.
bases_of() {
    local found slave
    found=
    for slave in "$SYS/class/block/$1/slaves"/*; do
        [ -e "$slave" ] || continue
        found=1
        bases_of "${slave##*/}"
    done
    [ -n "$found" ] || echo "$1"
}

# A USB bus stands above each of the disks that it is made of.
is_usb() {
    local base
    for base in $(bases_of "$1"); do
        path_of "$base"
        case $DEVICE_PATH in
        */usb[0-9]/* | */usb[0-9][0-9]/* | */usb[0-9][0-9][0-9]/*) ;;
        *) return 1 ;;
        esac
    done
}

# A disk that a system was found on, and that is to be rescued from.
is_source_disk() {
    local base
    for base in $(bases_of "$1"); do
        [ ! -e "$RUN/sources/$(disk_of "$base")" ] || return 0
    done
    return 1
}

# The words of a state line: "inner", "usb" or "source". Only a file system of a USB disk itself, or within its
# encryption, is one to copy to: what is put together of several parts is not.
kind_of() {
    if ! is_usb "$1"; then
        echo inner
    elif is_source_disk "$1" || is_assembled "$1"; then
        echo source
    else
        echo usb
    fi
}

# Put together of others, but for encryption; and discs, which nothing can be copied to.
is_assembled() {
    local slave
    case $1 in
    md* | sr*) return 0 ;;
    dm-*) ;;
    *) return 1 ;;
    esac
    line_of "$SYS/class/block/$1/dm/uuid"
    case $LINE in CRYPT-*) ;; *) return 0 ;; esac
    for slave in "$SYS/class/block/$1/slaves"/*; do
        is_assembled "${slave##*/}" && return 0
    done
    return 1
}

# facts NAME: sets TYPE UUID LABEL_ENC PART TABLE MODEL SERIAL of a device as udev has noted them; each may be empty. 1 when
# udev has not seen it yet.
facts() {
    local line
    TYPE='' UUID='' LABEL_ENC='' PART='' TABLE='' MODEL='' SERIAL=''
    line_of "$SYS/class/block/$1/dev"
    [ -r "$ROOT/run/udev/data/b$LINE" ] || return 1
    while IFS= read -r line; do
        case $line in
        E:ID_FS_TYPE=*) TYPE=${line#*=} ;;
        E:ID_FS_UUID=*) UUID=${line#*=} ;;
        E:ID_FS_LABEL_ENC=*) LABEL_ENC=${line#*=} ;;
        E:ID_PART_ENTRY_TYPE=*) PART=${line#*=} ;;
        E:ID_PART_TABLE_UUID=*) TABLE=${line#*=} ;;
        E:ID_MODEL=*) MODEL=${line#*=} ;;
        E:ID_SERIAL=*) SERIAL=${line#*=} ;;
        esac
    done <"$ROOT/run/udev/data/b$LINE"
}

bytes_of() {
    line_of "$SYS/class/block/$1/size"
    echo $((${LINE:-0} * 512))
}

# The medium: any disk that has its file system, also when it is plugged in once more. Its node tells only where
# the start has not said which file system that is: when it was pulled another disk may get the node.
know_medium() {
    MEDIUM_UUID=$(word uuid) || MEDIUM_UUID=
    line_of "$RUN/medium"
    MEDIUM_DISK=$(disk_of "${LINE#/dev/}")
}

is_medium() {
    local disk
    disk=$(disk_of "$1")
    [ -n "$MEDIUM_UUID" ] || { [ "$disk" = "$MEDIUM_DISK" ]; return; }
    has_medium_on "$disk"
}

has_medium_on() {
    local part TYPE UUID LABEL_ENC PART TABLE MODEL SERIAL
    for part in "$1" $(partitions_of "$1"); do
        facts "$part" || continue
        [ "$UUID" != "$MEDIUM_UUID" ] || return 0
    done
    return 1
}

# All that may carry a file system, one a line.
all_devices() {
    local entry name
    for entry in "$SYS/class/block"/*; do
        name=${entry##*/}
        case $name in
        loop* | ram* | zram* | fd[0-9]* | mtd* | nbd* | '*') continue ;;
        esac
        ! is_view "$name" || continue
        # One of several ways to a disk that has a device of its own (NVMe): nothing can open it.
        [ -e "$entry/dev" ] || continue
        line_of "$entry/size"
        [ "${LINE:-0}" -eq 0 ] || echo "$name"
    done
}

all_disks() {
    local name
    for name in $(all_devices); do
        case $name in
        md* | dm-*) ;;
        *) is_partition "$name" || echo "$name" ;;
        esac
    done
}
