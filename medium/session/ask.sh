# shellcheck shell=dash
# Questions to the person at the screen, one at a time. Between them a picture says that disks are looked for.

# With the end of a panel the console comes back, with its old text and its cursor.
clear_console() {
    [ ! -w "$ROOT/dev/tty1" ] || printf '\033[2J\033[H\033[?25l' 2>/dev/null >"$ROOT/dev/tty1" || :
}

wait_on() {
    [ -e "$ROOT/dev/fb0" ] && [ -x "$ASK" ] || return 0
    # A child of the first process, which is told of its end at once, whoever ends it.
    (
        "$ASK" wait </dev/null >/dev/null 2>&1 &
        echo $! >"$RUN/wait.pid"
    )
}

wait_off() {
    local shown
    [ -e "$RUN/wait.pid" ] || return 0
    shown=$(cat "$RUN/wait.pid")
    rm -f "$RUN/wait.pid"
    kill "$shown" 2>/dev/null || :
    await 5 "$shown" || kill -9 "$shown" 2>/dev/null || :
    clear_console
}

# ask KIND NAME ARGUMENT…: what the question prints, and its exit code; 9 where nobody can be asked. ASK_INPUT names
# a file that the question is about.
ask() {
    local what of waiting answer
    what=$1
    of=$2
    shift 2
    [ -e "$ROOT/dev/fb0" ] && [ -x "$ASK" ] || return 9
    waiting=
    [ ! -e "$RUN/wait.pid" ] || waiting=1
    wait_off
    say "asks $what $of"
    answer=0
    "$ASK" "$what" "$@" <"${ASK_INPUT:-/dev/null}" 2>>"$RUN/ask.log" || answer=$?
    clear_console
    [ -z "$waiting" ] || wait_on
    return "$answer"
}
