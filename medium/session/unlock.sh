# shellcheck shell=dash disable=SC2034,SC2153
# Encrypted volumes: a question for each, three tries, then a volume like any other. Nothing is written to the
# disk: it is set read-only, and opened so; a USB disk to copy to is opened for writing.

OPEN=tarnwick-open-

unlock_all() {
    while unlock_next; do :; done
}

# The next one that nobody was asked about, for example within what was opened before; 1 when there is none.
unlock_next() {
    local record
    for record in "$RUN/devices"/*; do
        if [ "$(cat "$record/state" 2>/dev/null)" = locked ] && [ ! -e "$record/asked" ]; then
            : >"$record/asked"
            unlock "$(basename "$record")" || :
            return 0
        fi
    done
    return 1
}

# kind_of_lock NAME: the word that the question knows it by.
kind_of_lock() {
    case $TYPE in
    crypto_LUKS) echo LUKS ;;
    BitLocker) echo BitLocker ;;
    *) echo FileVault ;;
    esac
}

unlock() {
    local label disk try
    facts "$1" || :
    label=$(cleaned "$(decoded "$LABEL_ENC")")
    [ "$TYPE" != apfs ] || label=$(cleaned "$(awk -F '\t' '$2 == "locked" { print $3 }' "$RUN/devices/$1/apfs" | paste -s -d , - | sed 's/,/, /g')")
    [ -n "$TYPE" ] || ! bounded 20 cryptsetup fvault2Dump "$(node_of "$1")" >/dev/null 2>&1 || TYPE=FileVault
    [ -n "$TYPE" ] || { not_shown "$1" unknown "Core Storage without encryption: no driver for it"; return; }
    disk=$(disk_of "$1")
    set -- "$1" --name "${label:-Disk $1}" --kind "$(kind_of_lock)" --size "$(bytes_of "$1")" --disk "$(model_of "$disk")"
    ! is_opened_writable "$1" || set -- "$@" --writable
    try=1
    while [ "$try" -le 3 ]; do
        try_unlock "$try" "$@" && return 0
        [ "$try" -ne 0 ] || return 1
    done
    not_shown "$1" locked-out "three wrong passwords"
}

is_opened_writable() { [ "$TYPE" != apfs ] && [ "$(kind_of "$1")" = usb ]; }

# The keyboard in use, as the question names it: "us", "us(intl)".
keyboard() {
    printf '%s\n' "${XKB_DEFAULT_LAYOUT:-us}${XKB_DEFAULT_VARIANT:+($XKB_DEFAULT_VARIANT)}"
}

model_of() {
    local TYPE UUID LABEL_ENC PART TABLE MODEL SERIAL
    facts "$1" || :
    printf '%s\n' "${MODEL:-$1}" | tr '_' ' '
}

# try_unlock TRY NAME ARGUMENT…: 0 when it is open; sets try to the next one, 0 to give up.
try_unlock() {
    local number name answer password
    number=$1
    name=$2
    shift 2
    answer=0
    password=$(ask password "$name" "$@" --try "$number" --layout "$(keyboard)") || answer=$?
    case $answer in
    0) ;;
    3)
        export XKB_DEFAULT_LAYOUT="$password"
        unset XKB_DEFAULT_VARIANT
        return 1
        ;;
    1) try=0 && not_shown "$name" skipped "encrypted, left as it is" && return 1 ;;
    *) try=0 && not_shown "$name" unasked "encrypted, and nobody could be asked" && return 1 ;;
    esac
    try=$((number + 1))
    open_locked "$name" "$password"
}

open_locked() {
    case $TYPE in
    apfs) open_apfs "$1" "$2" ;;
    crypto_LUKS) open_mapping "$1" "$2" luks ;;
    BitLocker) open_mapping "$1" "$2" bitlk ;;
    *) open_mapping "$1" "$2" fvault2 ;;
    esac
}

# Volumes of one container may have passwords of their own: as long as each opens some, the tries begin anew.
open_apfs() {
    local before
    before=$(find "$RUN/devices/$1" -name 'apfs.*' | wc -l)
    echo shown >"$RUN/devices/$1/state"
    rm -f "$RUN/devices/$1/locked"
    (set +e; show_apfs "$1" "$2") &
    await "$WAIT_SECONDS" $! || tell_busy "$1"
    [ -e "$RUN/devices/$1/locked" ] || return 0
    [ "$(find "$RUN/devices/$1" -name 'apfs.*' | wc -l)" -eq "$before" ] || try=1
    return 1
}

# The kernel ends this command first when memory runs out: the key of LUKS 2 may need 1 GiB.
open_mapping() {
    local mapping readonly_ rc
    mapping=$OPEN$1
    readonly_=--readonly
    ! is_opened_writable "$1" || readonly_=
    rc=0
    # shellcheck disable=SC2086
    printf '%s\n' "$2" | bounded 180 choom -n 1000 -- cryptsetup open --batch-mode --tries 1 $readonly_ --type "$3" \
        "$(node_of "$1")" "$mapping" >/dev/null 2>"$RUN/devices/$1/error" || rc=$?
    case $rc in
    0) ;;
    3 | 137)
        try=0
        not_shown "$1" locked-out "not enough memory for its key"
        return 1
        ;;
    *) say "note $(node_of "$1"): $(first_line "$RUN/devices/$1/error")" && return 1 ;;
    esac
    echo opened >"$RUN/devices/$1/state"
    show_mapping "$1" "$mapping"
}

show_mapping() {
    local inside
    udevadm settle -t 10 || :
    inside=$(basename "$(readlink -f "$ROOT/dev/mapper/$2")")
    rm -rf "${RUN:?}/devices/$inside"
    claim "$inside"
    printf '%s\n' "$1" >"$RUN/devices/$inside/base"
    printf '%s\n' "$2" >"$RUN/devices/$inside/mapping"
    (set +e; handle "$inside") &
    await "$WAIT_SECONDS" $! || tell_busy "$inside"
    if [ "$(cat "$RUN/devices/$inside/state" 2>/dev/null)" = member ]; then
        assemble
        handle_all
    fi
}

close_mapping() {
    [ ! -e "$RUN/devices/$1/mapping" ] || bounded 30 dmsetup remove --deferred "$(cat "$RUN/devices/$1/mapping")" >/dev/null 2>&1 || :
}
