# shellcheck shell=dash disable=SC2153
# Volumes that are put together of several disks: md and LVM.

members() {
    local name
    for name in $(all_devices); do
        facts "$name" || continue
        # shellcheck disable=SC2254
        case $TYPE in
        $1) [ "$(kind_of "$name")" = usb ] || is_medium "$name" || printf '%s\n' "$name" ;;
        esac
    done
}

# RAID sets, also with a disk missing. Their disks are set read-only, and so are they: nothing is rebuilt. Of no other
# disk is mdadm told.
assemble_md() {
    local name
    [ -n "$(loose_members '*_raid_member')" ] || return 0
    modprobe -qa md_mod raid0 raid1 raid10 raid456 linear || :
    [ ! -w "$SYS/module/md_mod/parameters/start_ro" ] || echo 1 >"$SYS/module/md_mod/parameters/start_ro"
    {
        printf 'DEVICE containers'
        for name in $(members '*_raid_member'); do printf ' %s' "$(node_of "$name")"; done
        echo
    } >"$RUN/mdadm.conf"
    bounded 30 mdadm --config "$RUN/mdadm.conf" --assemble --scan --readonly --run >"$RUN/md.log" 2>&1 || say "note RAID: $(first_line "$RUN/md.log")"
    udevadm settle -t 10 || :
}

# Members that no set was made of.
loose_members() {
    local name loose holder
    for name in $(members "$1"); do
        loose=1
        for holder in "$SYS/class/block/$name/holders"/*; do
            [ ! -e "$holder" ] || loose=
        done
        [ -z "$loose" ] || echo "$name"
    done
}

tell_loose_members() {
    local name
    for name in $(loose_members "$1"); do
        facts "$name"
        say "not shown $(node_of "$name") $TYPE: $2"
    done
}

# LVM sees nothing but views of its disks, so that all that it does stays in memory.
lvm_on_views() {
    bounded 30 "$@" --config "devices { filter = [ \"a|^/dev/mapper/$VIEW|\", \"r|.*|\" ] use_devicesfile = 0 scan = [ \"/dev/mapper\" ] } global { use_lvmlockd = 0 use_lvmpolld = 0 } activation { monitoring = 0 }"
}

activate_lvm() {
    local fresh name number
    fresh=
    for name in $(members LVM2_member); do
        mkdir -p "$RUN/lvm" "$RUN/devices/$name"
        # Disks that come together are handled side by side: each gets one view, LVM refuses two that are alike.
        (set -C; : >"$RUN/lvm/$name") 2>/dev/null || continue
        echo member >"$RUN/devices/$name/state"
        number=$(make_view "$name") || { say "not shown $(node_of "$name") LVM2_member: no view of it"; continue; }
        keep_view "$name" "$number"
        fresh=1
    done
    [ -n "$fresh" ] || return 0
    udevadm settle -t 10 || :
    lvm_on_views vgchange -ay --activationmode degraded >"$RUN/lvm.log" 2>&1 ||
        lvm_on_views vgchange -ay --activationmode partial >>"$RUN/lvm.log" 2>&1 ||
        say "note LVM: $(first_line "$RUN/lvm.log")"
    udevadm settle -t 10 || :
    tell_idle_views
}

# Disks of LVM of which no volume was made.
tell_idle_views() {
    local mark name view holder
    for mark in "$RUN/lvm"/*; do
        name=$(basename "$mark")
        if [ -s "$mark" ] || [ ! -e "$RUN/devices/$name/view" ]; then
            continue
        fi
        view=$(basename "$(readlink -f "$ROOT/dev/mapper/$VIEW$(head -n 1 "$RUN/devices/$name/view")")")
        for holder in "$SYS/class/block/$view/holders"/*; do
            [ ! -e "$holder" ] || echo used >"$mark"
        done
        [ -s "$mark" ] || { echo idle >"$mark"; say "not shown $(node_of "$name") LVM2_member: $(idle_reason)"; }
    done
}

idle_reason() {
    local why
    why=$(first_line "$RUN/lvm.log")
    printf '%s\n' "no volume could be made of it: ${why:-nothing in it}"
}
