# shellcheck shell=bash
# Read by the commands of scripts/, which have set "self" and stand in the folder of the clone.
: "${self:?}"

# Set when root runs this through sudo in a clone of who called it.
owned=
# The start of a command line that runs the rest as that user.
as_owner=()

usage() { sed -n '2,/^set /s/^#\( \|$\)//p' "$self"; }

refuse() {
    printf '%s: %s (scripts/%s --help tells what there is)\n' "${self##*/}" "$1" "${self##*/}" >&2
    exit 2
}

find_owner() {
    local home
    [ "$(id -u)" -eq 0 ] && [ "${SUDO_UID:-0}" -ne 0 ] && [ "$(stat -c %u .)" -eq "$SUDO_UID" ] || return 0
    owned=1
    home=$(getent passwd "$SUDO_UID" | cut -d: -f6) || true
    as_owner=(setpriv --reuid "$SUDO_UID" --regid "${SUDO_GID:-$SUDO_UID}" --init-groups
        env -u SUDO_UID -u SUDO_GID -u SUDO_USER -u SUDO_COMMAND
        "HOME=${home:-/}" "USER=${SUDO_USER:-}" "LOGNAME=${SUDO_USER:-}")
}

# Runs the command anew as that user, when it was root's.
become_owner() {
    [ -n "$owned" ] || return 0
    hand_back
    [ ${#as_owner[@]} -eq 0 ] || exec "${as_owner[@]}" "$self" "$@"
}

# Gives what root has made below build/ to the owner.
hand_back() {
    [ -n "$owned" ] && [ -d build ] || return 0
    find build -xdev -user 0 -exec chown -h "$SUDO_UID:${SUDO_GID:-$SUDO_UID}" {} +
}

# One line instead of many when another user's files are in the way.
refuse_foreign() {
    local found
    [ "$(id -u)" -ne 0 ] && [ -d build ] || return 0
    found=$(find build -path 'build/rescued/*/*' -prune -o ! -user "$(id -u)" -print -quit)
    [ -n "$found" ] || return 0
    printf '%s belongs to another user, so nothing can be built there. As root: chown -R %s build\n' \
        "$found" "$(id -un)" >&2
    exit 1
}

# compile PRESET TARGET LOG: configures and builds, and shows how far it is.
compile() {
    mkdir -p build
    : >"$3"
    if cmake --preset "$1" >>"$3" 2>&1 &&
        cmake --build --preset "$1" --target "$2" 2>&1 | scripts/parts/progress Building "$3"; then
        sed -n '/warning:/,/^\[/{/^\[/!p}' "$3"
        return
    fi
    grep -v '^\[[0-9]*/[0-9]*\]' "$3" | tail -n 60 >&2
    printf 'The build failed; all of it is in %s\n' "$3" >&2
    exit 1
}
