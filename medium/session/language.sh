# shellcheck shell=dash
# The language of the menu: for the program a preference file, as the system that it is made for has one.

language() { word lang || echo en; }

# layout_of LANGUAGE: the keyboard that its speakers are likeliest to have, and its variant.
layout_of() {
    case $1 in
    de | fr | es | it | pt) echo "$1" ;;
    ja) echo jp ;;
    nl) echo us intl ;;
    *) echo us ;;
    esac
}

# code_of LANGUAGE: the code as it stands in the preference file.
code_of() {
    case $1 in
    de | fr | es | it | nl | pt | ja) echo "$1" ;;
    zh) echo zh-Hans ;;
    zh-Hant) echo zh-Hant ;;
    *) echo en ;;
    esac
}

set_language() {
    local chosen file
    chosen=$(language)
    file=$ROOT/Library/Preferences/.GlobalPreferences.plist
    mkdir -p "$(dirname "$file")"
    cat >"$file" <<T
<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0"><dict><key>AppleLanguages</key><array><string>$(code_of "$chosen")</string></array></dict></plist>
T
    # shellcheck disable=SC2046
    set -- $(layout_of "$chosen")
    export XKB_DEFAULT_LAYOUT="$1"
    [ -z "${2:-}" ] || export XKB_DEFAULT_VARIANT="$2"
    say "note language $(code_of "$chosen"), keyboard $*"
}
