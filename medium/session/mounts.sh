# shellcheck shell=dash
# How each file system is mounted.

COPY_TO=rw,nodev,nosuid,noexec,noatime
LOOK_AT=ro,nodev,nosuid,noexec,noatime

# Whose journal the kernel replays, so that it needs a view it can be replayed in.
has_journal() {
    case $1 in
    ext[34] | xfs | btrfs | jfs | reiserfs | nilfs2 | f2fs) return 0 ;;
    *) return 1 ;;
    esac
}

is_known_type() {
    case $1 in
    ext[234] | xfs | btrfs | jfs | reiserfs | nilfs2 | f2fs | vfat | exfat | ntfs | hfsplus | hfs | udf | iso9660 | ufs | squashfs) return 0 ;;
    *) return 1 ;;
    esac
}

# mount_readonly TYPE NODE POINT [MORE]: never with the journal left out. XFS: two disks that are clones of each
# other have one number.
mount_readonly() {
    case $1 in
    ntfs) ntfs-3g -o "ro,norecover,nodev,nosuid,noatime" "$2" "$3" ;;
    vfat) mount -t vfat -o "$LOOK_AT,utf8=1" "$2" "$3" ;;
    xfs) mount -t xfs -o "$LOOK_AT,nouuid" "$2" "$3" ;;
    # From the topmost of its volumes, so that none of the others is hidden.
    btrfs) mount -t btrfs -o "$LOOK_AT,subvolid=5${4:-}" "$2" "$3" ;;
    ext[234]) mount -t ext4 -o "$LOOK_AT" "$2" "$3" ;;
    *) mount -t "$1" -o "$LOOK_AT" "$2" "$3" ;;
    esac
}

# mount_writable TYPE NODE POINT: a disk to copy to. Read-only where it cannot be had otherwise: the program says
# that it cannot be written. NTFS without the names that Windows does not open.
mount_writable() {
    case $1 in
    ntfs) ntfs-3g -o "rw,nodev,nosuid,noexec,noatime,windows_names" "$2" "$3" || ntfs-3g -o "ro,norecover,nodev,nosuid" "$2" "$3" ;;
    vfat) mount -t vfat -o "$COPY_TO,utf8=1" "$2" "$3" || mount -t vfat -o "$LOOK_AT,utf8=1" "$2" "$3" ;;
    xfs) mount -t xfs -o "$COPY_TO,nouuid" "$2" "$3" || mount_readonly "$1" "$2" "$3" ;;
    udf | iso9660 | squashfs | ufs) mount_readonly "$1" "$2" "$3" ;;
    ext[234]) mount -t ext4 -o "$COPY_TO" "$2" "$3" || mount_readonly "$1" "$2" "$3" ;;
    *) mount -t "$1" -o "$COPY_TO" "$2" "$3" || mount_readonly "$1" "$2" "$3" ;;
    esac
}

# mount_apfs NODE POINT INDEX WHAT [PASSWORD]: one volume of a container; WHAT is the device that the table of
# mounts is to name. The tool takes the password in its arguments alone: nobody else is on this machine to see them.
mount_apfs() {
    if [ -n "${5:-}" ]; then
        fsapfsmount -f "$3" -p "$5" -X "allow_other,ro,fsname=$4,subtype=apfs" "$1" "$2" ||
            fsapfsmount -f "$3" -r "$5" -X "allow_other,ro,fsname=$4,subtype=apfs" "$1" "$2"
    else
        fsapfsmount -f "$3" -X "allow_other,ro,fsname=$4,subtype=apfs" "$1" "$2"
    fi
}

# apfs_volumes NODE: of each volume its index, "open" or "locked", and its name, with tabs between.
apfs_volumes() {
    fsapfsinfo "$1" 2>/dev/null | awk '
        function tell() { if (index_ != "") print index_ "\t" state "\t" name; index_ = "" }
        /^Volume: [0-9]+ information/ { tell(); index_ = $2; state = "open"; name = ""; next }
        index_ != "" && name == "" && /^\tName\t/ { name = $0; sub(/^\tName[\t ]*: /, "", name) }
        index_ != "" && /^\tIs locked/ { state = "locked" }
        END { tell() }'
}

# Volumes that macOS keeps for its own start beside those of a person.
is_helper_of_macos() {
    case $1 in
    Preboot | Recovery | VM | Update | xART | Hardware | iSCPreboot) return 0 ;;
    *) return 1 ;;
    esac
}

# A file system of a Mac that was not unmounted: the bit "unmounted" of the second word of its header is 0.
is_dirty_hfsplus() {
    local bit
    bit=$(od -An -tu1 -j 1030 -N 1 "$1" 2>/dev/null) || return 1
    [ -n "$bit" ] && [ $((bit & 1)) -eq 0 ]
}

is_readonly_mount() {
    awk -v point="$1" '$5 == point && $6 ~ /^ro(,|$)/ { found = 1 } END { exit !found }' "$ROOT/proc/self/mountinfo"
}
