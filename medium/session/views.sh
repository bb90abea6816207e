# shellcheck shell=dash disable=SC2034,SC2153
# Views: what stands between a disk that must not change and the file system that is mounted from it.
#
# A journal has to be replayed, or what was saved last before a power cut is missing; and a replay writes. So it
# gets a snapshot, whose store of changed blocks is in memory, over a disk that is set read-only. Never is a
# file system mounted without its journal instead ("noload", "norecovery").

STORE=$RUN/store
LEAST_KIB=65536
CHUNK=8 # sectors

# Every disk that nothing may be written to, and its partitions. Before anything else looks at it.
set_readonly() {
    local name
    for name in "$1" $(partitions_of "$1"); do
        # Known without the disk, which may hang.
        line_of "$SYS/class/block/$name/ro"
        [ "$LINE" != 1 ] || continue
        bounded 10 blockdev --setro "$(node_of "$name")" || say "note $(node_of "$name"): could not be set read-only"
    done
}

# The file system in memory that holds the stores: half of what is free, as long as that is something.
open_store() {
    local free
    [ ! -e "$RUN/store-open" ] || return 0
    free=$(memory_kib)
    [ "${free:-0}" -ge $((LEAST_KIB * 2)) ] || return 1
    mkdir -p "$STORE"
    mount -t tmpfs -o "mode=700,size=$((free / 2))k" tarnwick-store "$STORE" || return 1
    : >"$RUN/store-open"
}

# store_bytes NAME: a replay writes no more than the journal holds, 2 GiB at most, and never more than all there
# is. The file is sparse: what is not written to costs nothing.
store_bytes() {
    local most size
    most=$((3 * 1024 * 1024 * 1024))
    size=$(($(bytes_of "$1") + 16 * 1024 * 1024))
    [ "$size" -lt "$most" ] || size=$most
    echo "$size"
}

# The next free number of a view.
view_number() {
    local number
    mkdir -p "$RUN/views"
    number=1
    until mkdir "$RUN/views/$number" 2>/dev/null; do
        number=$((number + 1))
    done
    echo "$number"
}

# make_view NAME: a snapshot of the device; prints its number, its node is /dev/mapper/tarnwick-view-<number>.
make_view() {
    local number file loop table
    [ -e "$RUN/store-open" ] || return 1
    number=$(view_number)
    file=$STORE/$number
    truncate -s "$(store_bytes "$1")" "$file" || return 1
    loop=$(losetup --find --show "$file") || { drop_view "$number"; return 1; }
    printf '%s\n' "$loop" >"$RUN/views/$number/loop"
    table="0 $(($(bytes_of "$1") / 512)) snapshot $(node_of "$1") $loop N $CHUNK"
    if ! bounded 30 dmsetup create "$VIEW$number" --table "$table" 2>"$RUN/views/$number/error" >&2; then
        say "note $(node_of "$1"): no view of it: $(first_line "$RUN/views/$number/error")"
        drop_view "$number"
        return 1
    fi
    printf '%s\n' "$number"
}

# make_window NAME: the device as it is, read-only, under a name that tells the program what it is.
make_window() {
    local number table
    number=$(view_number)
    table="0 $(($(bytes_of "$1") / 512)) linear $(node_of "$1") 0"
    bounded 30 dmsetup create --readonly "$VIEW$number" --table "$table" >&2 || { drop_view "$number"; return 1; }
    printf '%s\n' "$number"
}

drop_view() {
    bounded 30 dmsetup remove --retry "$VIEW$1" >/dev/null 2>&1 || bounded 30 dmsetup remove --deferred "$VIEW$1" >/dev/null 2>&1 || :
    [ ! -e "$RUN/views/$1/loop" ] || bounded 10 losetup -d "$(cat "$RUN/views/$1/loop")" 2>/dev/null || :
    rm -f "$STORE/$1"
    rm -rf "${RUN:?}/views/$1"
}

# state_of_view NUMBER: percent of its store that is used; "lost" when it had to give up.
state_of_view() {
    dmsetup status "$VIEW$1" 2>/dev/null | awk '
        $3 != "snapshot" { next }
        $4 ~ /^[0-9]+\/[0-9]+$/ { split($4, part, "/"); print int(part[1] * 100 / part[2]); next }
        { print "lost" }'
}

is_lost() { [ "$(state_of_view "$1")" = lost ]; }

# watch_views: as long as the session runs. A store that runs full makes every later read of its view fail, which
# the program tells; here it is said why.
watch_views() {
    local view
    while [ -d "$RUN/views" ] && [ ! -e "$RUN/ended" ]; do
        for view in "$RUN/views"/*; do
            [ ! -e "$view/loop" ] || watch_view "$(basename "$view")"
        done
        [ ! -e "$RUN/store-open" ] || watch_store
        sleep 2
    done
}

watch_view() {
    local state
    state=$(state_of_view "$1")
    case $state in
    lost) note_once "$RUN/views/$1/lost" "view $1 lost: its store in memory is full, what is read from it gives errors" ;;
    [89][0-9] | 100) note_once "$RUN/views/$1/near" "view $1 near its end: $state percent of its store are used" ;;
    esac
}

watch_store() {
    local used
    used=$(df -k -P "$STORE" | awk 'NR == 2 { print int($3 * 100 / ($3 + $4 + 1)) }')
    [ "${used:-0}" -lt 80 ] || note_once "$RUN/store-near" "memory for views near its end: $used percent are used"
}

# note_once MARK TEXT
note_once() {
    [ ! -e "$1" ] || return 0
    : >"$1"
    say "note $2"
}
