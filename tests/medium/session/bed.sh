# shellcheck shell=dash disable=SC2034
# A described computer for the session's scripts: sysfs, what udev has noted, and commands that only note how they
# were called. TARNWICK_SOURCE_DIR names the sources.

SESSION=${TARNWICK_SOURCE_DIR:?}/medium/session
CASE=
FAILED=0

# begin NAME: a new computer with nothing in it.
begin() {
    CASE=$1
    BED=$(mktemp -d)
    export BED TARNWICK_ROOT="$BED" TARNWICK_SESSION="$SESSION" TARNWICK_ASK="$BED/bin/TarnwickAsk" TARNWICK_WAIT=20
    mkdir -p "$BED/bin" "$BED/sys/class/block" "$BED/run/tarnwick" "$BED/run/udev/data" "$BED/dev" "$BED/proc/self" \
        "$BED/Volumes" "$BED/contents" "$BED/inside"
    printf 'MemAvailable: 2000000 kB\n' >"$BED/proc/meminfo"
    printf 'quiet tarnwick.uuid=AAAA-0001 tarnwick.lang=fr\n' >"$BED/proc/cmdline"
    : >"$BED/proc/self/mountinfo"
    : >"$BED/dev/fb0"
    : >"$BED/calls"
    NUMBER=0
    for tool in blockdev modprobe udevadm dmsetup losetup mount umount ntfs-3g cryptsetup choom mdadm vgchange \
        fsapfsinfo fsapfsmount sync busybox TarnwickAsk; do
        ln -s "$TARNWICK_SOURCE_DIR/tests/medium/session/fake-tool" "$BED/bin/$tool"
    done
    PATH=$BED/bin:$CLEAN_PATH
}

# What still looks at the computer ends with it.
finish() {
    : >"$BED/run/tarnwick/ended"
    until rm -rf "$BED" 2>/dev/null; do :; done
}

fail() {
    printf 'FAIL %s: %s\n' "$CASE" "$*" >&2
    [ ! -e "$BED/run/tarnwick/session.log" ] || sed 's/^/    /' "$BED/run/tarnwick/session.log" >&2
    sed 's/^/    called: /' "$BED/calls" >&2
    FAILED=$((FAILED + 1))
}

# place NAME PATH MIB: a block device at its place in the tree of devices.
place() {
    NUMBER=$((NUMBER + 1))
    mkdir -p "$BED/sys/devices/$2/$1/slaves" "$BED/sys/devices/$2/$1/holders"
    ln -s "../../devices/$2/$1" "$BED/sys/class/block/$1"
    echo "8:$NUMBER" >"$BED/sys/devices/$2/$1/dev"
    echo $(($3 * 2048)) >"$BED/sys/devices/$2/$1/size"
    : >"$BED/run/udev/data/b8:$NUMBER"
}

inner() { place "$1" "pci0000:00/ata1/host0/0:0:0:0/block" "${2:-100}"; }
stick() { place "$1" "pci0000:00/0000:00:14.0/usb1/1-$1/1-1:1.0/host9/9:0:0:0/block" "${2:-100}"; }
mapped() {
    place "$1" "virtual/block" 100
    mkdir -p "$BED/sys/devices/virtual/block/$1/dm"
    echo "$2" >"$BED/sys/devices/virtual/block/$1/dm/name"
    echo "$3" >"$BED/sys/devices/virtual/block/$1/dm/uuid"
    ln -s "../../../../../class/block/$4" "$BED/sys/devices/virtual/block/$1/slaves/$4"
}

# part NAME DISK: a partition of it.
part() {
    place "$1" "$(readlink "$BED/sys/class/block/$2" | sed 's|^../../devices/||')" 50
    echo 1 >"$BED/sys/class/block/$1/partition"
}

# noted NAME KEY=VALUE…: what udev tells of it.
noted() {
    noted_of=$(cat "$BED/sys/class/block/$1/dev")
    shift
    for pair in "$@"; do
        printf 'E:%s\n' "$pair" >>"$BED/run/udev/data/b$noted_of"
    done
}

volumes() { sh "$SESSION/volumes" "$@" >"$BED/output" 2>&1 || fail "volumes $*: $(cat "$BED/output")"; }

has_line() { grep -qxF "tarnwick: $1" "$BED/run/tarnwick/session.log" || fail "no line \"$1\""; }
has_no_line() { ! grep -q "^tarnwick: $1" "$BED/run/tarnwick/session.log" || fail "a line \"$1\""; }
was_called() { grep -qE "^$1" "$BED/calls" || fail "not called: $1"; }
was_not_called() { ! grep -qE "^$1" "$BED/calls" || fail "called: $(grep -E "^$1" "$BED/calls" | head -n 1)"; }

# in_order FIRST SECOND: both were called, the first one before.
in_order() {
    was_called "$1"
    was_called "$2"
    first=$(grep -nE "^$1" "$BED/calls" | head -n 1 | cut -d: -f1)
    second=$(grep -nE "^$2" "$BED/calls" | head -n 1 | cut -d: -f1)
    [ "${first:-9}" -lt "${second:-0}" ] || fail "not in this order: $1, $2"
}

# missing WHY NAME BYTES MODEL …: the whole list of what cannot be shown.
is_missing() {
    volumes missing
    is "$(sort "$BED/output")" "$([ $# -eq 0 ] || printf '%s\t%s\t%s\t%s\n' "$@" | sort)"
}

is() { [ "$1" = "$2" ] || fail "\"$1\" instead of \"$2\""; }
