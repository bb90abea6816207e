# shellcheck shell=dash disable=SC2034
# The program, for as long as somebody wants it, and the end.

PROGRAM=${TARNWICK_PROGRAM:-/usr/bin/TarnwickMacPE}
HELD_SECONDS=${TARNWICK_HELD:-20}

# With the keyboard's text console as its input the program keeps what is typed from reaching that console.
run_program() {
    local rc
    say "window"
    rc=0
    "$PROGRAM" <"$ROOT/dev/tty1" >>"$RUN/program.log" 2>&1 &
    wait_for_program $! || rc=$?
    say "program ended $rc"
    return "$rc"
}

# wait_for_program PID: its exit code. When its window is gone, a disk that does not answer may still hold one of its
# threads for good, and nothing ends that.
wait_for_program() {
    local left stat code
    left=$((HELD_SECONDS * 2))
    while kill -0 "$1" 2>/dev/null; do
        stat=
        read -r stat 2>/dev/null <"/proc/$1/stat" || :
        case ${stat##*) } in
        Z*)
            if [ "$left" -eq 0 ]; then
                say "note: a disk that does not answer holds what is left of the program"
                code=${stat##* }
                return $((code & 127 ? 128 + (code & 127) : code >> 8))
            fi
            left=$((left - 1))
            ;;
        esac
        sleep 0.5
    done
    wait "$1"
}

# What cannot be shown is told before the window opens, and stands in the program's log, which comes beside the copy.
find_missing() {
    "$HERE/volumes" missing >"$RUN/missing" 2>>"$RUN/volumes.log" || :
}

tell_missing() {
    [ -s "$RUN/missing" ] || return 0
    log_missing || say "note: what cannot be shown is not in the log"
    ASK_INPUT=$RUN/missing
    ask missing "$(($(wc -l <"$RUN/missing")))" || :
    unset ASK_INPUT
}

# In the form that the program's lines have.
log_missing() {
    local folder file why name bytes model
    folder=$(dirname "$(readlink -f "$PROGRAM")")/Log
    file=$folder/TarnwickMacPE_$(date +%Y%m%d).log
    mkdir -p "$folder" || return 1
    while IFS='	' read -r why name bytes model; do
        printf '%s: cannot be shown (%s): %s, %s bytes, %s\n' "$(date '+%Y-%m-%d %H:%M:%S.000')" "$why" "$name" "$bytes" "$model"
    done <"$RUN/missing" >>"$file"
}

# One retry by itself where nobody can be asked; then whoever sits there decides each time. 1 when the computer is
# to be restarted without another question.
until_it_ends() {
    local retried answer
    retried=
    until run_program; do
        answer=0
        ask again again || answer=$?
        case $answer in
        0) ;;
        1) return 1 ;;
        *)
            [ -z "$retried" ] || return
            retried=1
            ;;
        esac
    done
}

# finish_session [restart]: unmounts all, then asks how it is to end unless that is known and every disk has
# taken what was written to it.
finish_session() {
    local answer stays unsaved
    rm -f "$RUN/ready"
    tell_finishing
    "$HERE/volumes" end >>"$RUN/volumes.log" 2>&1
    stays=
    ! grep -q '^tarnwick: reads from the medium' "$RUN/session.log" || stays=--reads-medium
    unsaved=
    [ ! -e "$RUN/unsaved" ] || unsaved=--unsaved
    answer=0
    [ "${1:-}$unsaved" = restart ] || ask end end ${stays:+"$stays"} ${unsaved:+"$unsaved"} || answer=$?
    if [ "$answer" -eq 1 ]; then
        say "power off"
        busybox poweroff -f
    else
        say "restart"
        busybox reboot -f
    fi
}
