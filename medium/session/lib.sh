# shellcheck shell=dash disable=SC2034
# What the scripts of the session share: folders, lines, words of the start, calls with a bound.
# TARNWICK_ROOT stands before every path of the system, for tests.

ROOT=${TARNWICK_ROOT:-}
SYS=$ROOT/sys
RUN=$ROOT/run/tarnwick
VOLUMES=$ROOT/Volumes
HERE=${TARNWICK_SESSION:-/usr/lib/tarnwick-medium}
ASK=${TARNWICK_ASK:-/usr/lib/tarnwick/TarnwickAsk}

# The first serial port, where the machine has one: a node is there in any case.
has_serial() {
    if [ -z "${SERIAL_PORT:-}" ]; then
        SERIAL_PORT=no
        [ ! -w "$ROOT/dev/ttyS0" ] || ! grep -q '^0: uart:[^u]' "$ROOT/proc/tty/driver/serial" 2>/dev/null || SERIAL_PORT=yes
    fi
    [ "$SERIAL_PORT" = yes ]
}

# say TEXT…: one line for whoever looks for what happened, in the kernel's log, in a file, on the serial port.
say() {
    local line
    line="tarnwick: $*"
    printf '%s\n' "$line" >>"$RUN/session.log"
    [ ! -w "$ROOT/dev/kmsg" ] || printf '<6>%s\n' "$line" 2>/dev/null >"$ROOT/dev/kmsg" || :
    # Within ( ), which leads no session: a leader would get the port as its terminal, and with the end of the
    # leader the kernel hangs up a terminal and throws away what is still in it.
    ! has_serial || (printf '%s\r\n' "$line" >"$ROOT/dev/ttyS0") 2>/dev/null || :
}

# Words of the start, one a line: the kernel's, then those that the firmware of a virtual machine passes on.
words() {
    tr ' ' '\n' <"$ROOT/proc/cmdline" | grep '^tarnwick\.' || :
    [ ! -r "$SYS/firmware/dmi/tables/DMI" ] || tr -c '[:print:]' '\n' <"$SYS/firmware/dmi/tables/DMI" | grep -a '^tarnwick\.' || :
}

# word NAME: the last value of tarnwick.NAME=; 1 without one.
word() {
    words | sed -n "s/^tarnwick\.$1=//p" | tail -n 1 | grep .
}

# has_word NAME: whether tarnwick.NAME stands there without a value.
has_word() {
    words | grep -qx "tarnwick\.$1"
}

# bounded SECONDS COMMAND…: its exit code; 124 when it has not ended in time. What a dead disk holds cannot be
# killed, so it is left behind. Not within $( ): that waits for whoever was left behind; write to a file.
bounded() {
    local bound child turn
    bound=$1
    shift
    { "$@" <&3 3<&- & } 3<&0
    child=$!
    turn=0
    while kill -0 "$child" 2>/dev/null; do
        if [ "$turn" -ge $((bound * 20)) ]; then
            kill -9 "$child" 2>/dev/null || :
            return 124
        fi
        sleep 0.05
        turn=$((turn + 1))
    done
    wait "$child"
}

# await SECONDS PID…: waits until these children have ended, at most so long; 1 when some have not.
await() {
    local left busy pid
    left=$(($1 * 10))
    shift
    while [ "$left" -gt 0 ]; do
        busy=
        for pid in "$@"; do
            kill -0 "$pid" 2>/dev/null && busy=1 && break
        done
        [ -n "$busy" ] || return 0
        sleep 0.1
        left=$((left - 1))
    done
    return 1
}

# first_line FILE: without control characters, for a line of the log.
first_line() {
    tr '\000-\037\177' ' ' <"$1" 2>/dev/null | cut -c 1-200 | sed 's/ *$//'
}

memory_kib() {
    awk '/^MemAvailable:/ { print $2 }' "$ROOT/proc/meminfo"
}
