# shellcheck shell=dash
# The name that a volume gets below the folder of volumes.

# "\x20" as udev writes it back to bytes.
decoded() { /usr/bin/printf '%b' "$1"; }

# cleaned TEXT: a name for a folder that a person can read: one line of UTF-8 without slashes, control characters
# and marks that turn the direction of letters, without dots and blanks at its ends, at most 240 bytes.
cleaned() {
    printf %s "$1" | tr '/\000-\037\177' '_ ' |
        iconv -c -f UTF-8 -t UTF-8 2>/dev/null |
        LC_ALL=C sed 's/\xc2[\x80-\x9f]//g; s/\xe2\x80[\x8b\x8e\x8f\xa8-\xae]//g; s/\xe2\x81[\xa6-\xa9]//g; s/^[. ]*//; s/ *$//' |
        head -c 240 | iconv -c -f UTF-8 -t UTF-8 2>/dev/null || :
}

# shown_name TEXT: the same, but no name that the tree leaves out.
shown_name() {
    local shown
    shown=$(cleaned "$1")
    case $shown in
    home* | dev* | Volumes*) printf 'Disk %s\n' "$shown" ;;
    *) printf '%s\n' "$shown" ;;
    esac
}

# system_of FOLDER: "Windows", "macOS" or "Linux" when a system is installed there; 1 when none is.
system_of() {
    local folder
    for folder in "$1"/[Ww][Ii][Nn][Dd][Oo][Ww][Ss] "$1"/WINNT; do
        if [ -d "$folder" ] && { [ -d "$1/Users" ] || [ -d "$1/Documents and Settings" ] || [ -d "$folder/System32" ] || [ -d "$folder/SYSTEM" ]; }; then
            echo Windows
            return 0
        fi
    done
    if [ -d "$1/System/Library" ] && [ -d "$1/Users" ]; then
        echo macOS
        return 0
    fi
    for folder in "$1" "$1/@" "$1/@rootfs" "$1/root"; do
        if [ -d "$folder/etc" ] && { [ -e "$folder/usr/lib/os-release" ] || [ -e "$folder/etc/os-release" ] || [ -d "$folder/home" ]; }; then
            echo Linux
            return 0
        fi
    done
    return 1
}

# name_for DEVICE LABEL FOLDER: the label, or what is installed there, or the device.
name_for() {
    local name
    name=$(shown_name "$2")
    [ -z "$name" ] || { printf '%s\n' "$name"; return; }
    name=$(system_of "$3") || name=Disk
    printf '%s %s\n' "$name" "$1"
}

# take_name NAME: makes the folder of that name, or of the next one that is free, and prints it; 1 without one.
take_name() {
    local name number
    name=$1
    number=2
    until mkdir "$VOLUMES/$name" 2>/dev/null; do
        [ "$number" -le 99 ] || return 1
        name="$1 $number"
        number=$((number + 1))
    done
    printf '%s\n' "$name"
}
