# shellcheck shell=dash
# The program, for as long as somebody wants it, and the end.

PROGRAM=${TARNWICK_PROGRAM:-/usr/bin/TarnwickMacPE}

# With the keyboard's text console as its input the program keeps what is typed from reaching that console.
run_program() {
    local rc
    say "window"
    rc=0
    "$PROGRAM" <"$ROOT/dev/tty1" >>"$RUN/program.log" 2>&1 || rc=$?
    say "program ended $rc"
    return "$rc"
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
