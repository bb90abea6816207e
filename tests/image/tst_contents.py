"""What the image of the boot medium holds, read without booting it."""
import hashlib
import json
import os
import re
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
BUILT = Path(os.environ.get("TARNWICK_MEDIUM_DIR", TOP / "build/medium"))
LANGUAGES = ["en", "de", "fr", "es", "it", "nl", "pt", "ja", "zh", "zh-Hant"]
MIB = 1024 * 1024
SIGNED = {
    "EFI/BOOT/BOOTX64.EFI": "/usr/lib/shim/shimx64.efi.signed",
    "EFI/BOOT/grubx64.efi": "/usr/lib/grub/x86_64-efi-signed/grubx64.efi.signed",
    "EFI/BOOT/mmx64.efi": "/usr/lib/shim/mmx64.efi.signed",
}
# What a computer's keys, pointers, disks and ports take; each with what it depends on.
DRIVERS = """
    hid_apple applespi bcm5974 appletouch i2c_hid_acpi intel_lpss_pci i2c_designware_platform usbhid hid_generic
    hid_multitouch psmouse xhci_pci ehci_pci ohci_pci uhci_hcd usb_storage uas rtsx_pci_sdmmc rtsx_usb_sdmmc
    sdhci_pci sdhci_acpi thunderbolt nvme vmd ahci ata_piix megaraid_sas mpt3sas aacraid hpsa firewire_sbp2
    dm_mod dm_snapshot dm_crypt dm_thin_pool dm_mirror dm_raid md_mod raid0 raid1 raid10 raid456 linear loop fuse
    ext4 xfs btrfs hfs hfsplus exfat vfat udf isofs f2fs jfs reiserfs nilfs2 ufs
    nls_utf8 nls_ascii nls_cp437 nls_iso8859_1 xts aesni_intel algif_skcipher virtio_blk hv_storvsc vmw_pvscsi
""".split()


def output(*command, **options):
    """What the command writes; it must succeed."""
    environment = dict(os.environ, PATH=os.environ["PATH"] + ":/usr/sbin:/sbin", MTOOLS_SKIP_CHECK="1")
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, env=environment, **options).stdout


def module_name(path):
    """A module as others name it, from its file."""
    return re.sub(r"\.ko$", "", os.path.basename(path)).replace("-", "_")


class CImageBed(unittest.TestCase):
    """The image, and its parts unpacked once for all tests."""

    @classmethod
    def setUpClass(cls):
        cls.image = Path((BUILT / "built").read_text().splitlines()[2])
        if not hasattr(CImageBed, "folder"):
            CImageBed.folder = tempfile.TemporaryDirectory()
            CImageBed.esp = Path(CImageBed.folder.name) / "esp"
            CImageBed.esp.mkdir()
            output("mcopy", "-s", "-n", "-i", f"{cls.image}@@1M", "::*", "::.disk", str(CImageBed.esp))
            CImageBed.squashfs = str(CImageBed.esp / "live/root.squashfs")

    def text(self, path):
        return (self.esp / path).read_text()

    def number(self):
        """The file system's UUID as its first sector has it."""
        with open(self.image, "rb") as file:
            file.seek(MIB)
            sector = file.read(512)
        self.assertEqual(sector[82:87], b"FAT32")
        number, = struct.unpack("<I", sector[67:71])
        return f"{number >> 16:04X}-{number & 0xFFFF:04X}"


class Disk(CImageBed):
    """What firmware looks for."""

    def test_table(self):
        said = output("sfdisk", "--verify", str(self.image)).decode()
        self.assertIn("No errors detected", said)
        table = json.loads(output("sfdisk", "--json", str(self.image)))["partitiontable"]
        self.assertEqual(table["label"], "gpt")
        bios, esp = table["partitions"]
        self.assertEqual(bios["type"], "21686148-6449-6E6F-744E-656564454649")
        self.assertEqual((esp["type"], esp["start"]), ("C12A7328-F81F-11D2-BA4B-00A0C93EC93B", 2048))

    def test_start_by_bios(self):
        with open(self.image, "rb") as file:
            first = file.read(512)
            file.seek(34 * 512)
            core = file.read(512)
        sector, = struct.unpack("<Q", first[0x5C:0x64])
        self.assertEqual(sector, 34)
        flags, types = zip(*((first[entry], first[entry + 4]) for entry in range(446, 510, 16)))
        self.assertEqual(types, (0xEE, 0, 0, 0), "the one that guards the table, and no other")
        self.assertEqual(flags, (0, 0x80, 0, 0), "an active one, and not that: firmware would not see the table")
        blocks, segments, segment = struct.unpack("<QHH", core[0x1F4:0x200])
        self.assertEqual((blocks, segment), (35, 0x820))
        self.assertGreater(segments, 100)

    def test_checksum(self):
        said, name = Path(f"{self.image}.sha256").read_text().split()
        self.assertEqual(name, self.image.name)
        self.assertEqual(said, hashlib.sha256(self.image.read_bytes()).hexdigest())


class Loaders(CImageBed):
    """The programs of the firmware's partition, and their menu."""

    def test_signed_files_are_debians(self):
        for name, source in SIGNED.items():
            self.assertEqual((self.esp / name).read_bytes(), Path(source).read_bytes(), name)

    def test_machines(self):
        for name, machine in (("BOOTX64.EFI", 0x8664), ("BOOTIA32.EFI", 0x14C)):
            data = (self.esp / "EFI/BOOT" / name).read_bytes()
            offset, = struct.unpack("<I", data[0x3C:0x40])
            self.assertEqual(data[offset:offset + 4], b"PE\0\0", name)
            self.assertEqual(struct.unpack("<H", data[offset + 4:offset + 6])[0], machine, name)

    def test_menu_is_a_script(self):
        for name in ("boot/grub/grub.cfg", "EFI/debian/grub.cfg"):
            output("grub-script-check", str(self.esp / name))

    def test_every_language_twice(self):
        menu = self.text("boot/grub/grub.cfg")
        entry = r'menuentry "[^"]+" \{ %s ([\w-]+); \}'
        self.assertEqual(re.findall(entry % "tarnwick", menu), LANGUAGES)
        self.assertEqual(re.findall(entry % "tarnwick_safe", menu), LANGUAGES)
        self.assertEqual(len(set(re.findall(r'menuentry "([^"]+)"', menu))), 20)

    def test_lines_name_this_medium(self):
        lines = re.findall(r"^ *linux (.*)$", self.text("boot/grub/grub.cfg"), re.M)
        self.assertEqual(len(lines), 2)
        for line in lines:
            self.assertIn(f" tarnwick.id={self.text('live/id').strip()} ", line)
            self.assertIn(f" tarnwick.uuid={self.number()} ", line)
            self.assertIn(" tarnwick.lang=$1 ", line)
            self.assertNotIn("console=", line)
        self.assertIn("tarnwick.safe nomodeset", lines[1])

    def test_menu_is_looked_for_on_this_medium(self):
        for name in ("boot/grub/grub.cfg", "EFI/debian/grub.cfg"):
            self.assertIn(f'search --no-floppy --fs-uuid --hint="$root," --set=root {self.number()}\n', self.text(name), name)
        self.assertTrue((self.esp / ".disk/info").is_file())

    def test_signed_grub_has_what_the_menu_uses(self):
        """What is not built in does nothing under Secure Boot, without a word."""
        menu = self.text("boot/grub/grub.cfg")
        self.assertIsNone(re.search(r"^[^#\n]*insmod", menu, re.M))
        self.assertIn("\nloadfont unicode\n", menu)
        signed = Path(SIGNED["EFI/BOOT/grubx64.efi"]).read_bytes()
        for module in (b"search_fs_uuid", b"gfxterm", b"gfxmenu", b"font", b"linuxefi"):
            self.assertIn(b"\0" + module + b"\0", signed, module)

    def test_letters_of_the_menu(self):
        for name in ("boot/grub/fonts/unicode.pf2", "boot/grub/theme/theme.txt"):
            self.assertTrue((self.esp / name).is_file(), name)


class Start(CImageBed):
    """The initrd and the id that it looks for."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.initrd = Path(cls.folder.name) / "initrd"
        if not cls.initrd.exists():
            cls.initrd.mkdir()
            archive = output("zstd", "-dcq", str(cls.esp / "live/initrd.img"))
            output("cpio", "-idm", "--quiet", cwd=cls.initrd, input=archive)

    def test_id_is_the_roots_checksum(self):
        root = (self.esp / "live/root.squashfs").read_bytes()
        self.assertEqual(self.text("live/id").strip(), hashlib.sha256(root).hexdigest()[:16])

    def test_programs(self):
        for name in ("init", "bin/busybox"):
            self.assertTrue(os.access(self.initrd / name, os.X_OK), name)
        for name in ("init", "texts"):
            self.assertEqual((self.initrd / name).read_text(), (TOP / "medium/initrd" / name).read_text())

    def test_modules_come_after_what_they_need(self):
        paths = (self.initrd / "modules").read_text().split()
        loaded = set()
        for path in paths:
            file = self.initrd / path.lstrip("/")
            self.assertTrue(file.is_file(), path)
            for needed in output("modinfo", "-F", "depends", str(file)).decode().strip().split(","):
                self.assertTrue(not needed or needed.replace("-", "_") in loaded, f"{path} needs {needed}")
            loaded.add(module_name(path))
        wanted = {line.split()[0] for line in (TOP / "medium/modules").read_text().splitlines()
                  if line.strip() and not line.startswith("#")}
        self.assertEqual(wanted - loaded, set())

    def test_words_in_each_language(self):
        seen = set()
        for language in LANGUAGES:
            said = subprocess.run(
                ["sh", "-c", '. "$0/texts"; printf "%s\\n" "$searching" "$copying" "$unread" "$damaged"',
                 str(self.initrd)], check=True, stdout=subprocess.PIPE, env={"lang": language}).stdout
            self.assertEqual(len(said.decode().split("\n")), 5)
            self.assertNotIn(b"\n\n", said)
            seen.add(said)
        self.assertEqual(len(seen), 7, "the languages whose letters the console has")


class Root(CImageBed):
    """The compressed root."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        if not hasattr(Root, "entries"):
            Root.entries = {}
            for line in output("unsquashfs", "-lln", cls.squashfs).decode().splitlines():
                parts = line.split(None, 5)
                if len(parts) == 6 and parts[5].startswith("squashfs-root"):
                    path = parts[5].split(" -> ")[0]
                    Root.entries[path[len("squashfs-root/"):]] = (parts[0], parts[1])
            Root.paths = set(Root.entries)

    def read(self, path):
        return output("unsquashfs", "-cat", self.squashfs, path).decode()

    def found(self, pattern):
        return sorted(path for path in self.paths if re.search(pattern, path))

    def test_program(self):
        for path in ("usr/lib/tarnwick/TarnwickMacPE", "usr/lib/tarnwick/TarnwickAsk", "usr/lib/tarnwick/diskutil",
                     "usr/lib/tarnwick/caffeinate"):
            self.assertEqual(self.entries.get(path, ("none",))[0], "-rwxr-xr-x", path)
        self.assertTrue(self.entries["usr/bin/TarnwickMacPE"][0].startswith("l"))
        self.assertEqual(len(self.found(r"^usr/lib/tarnwick/Language/.*\.qm$")), 10)
        for path in ("Volumes", "Library/Preferences"):
            self.assertIn(path, self.paths)

    def test_session(self):
        for file in (TOP / "medium/session").iterdir():
            folder = "etc/udev/rules.d" if file.suffix == ".rules" else "usr/lib/tarnwick-medium"
            self.assertIn(f"{folder}/{file.name}", self.paths)
            self.assertEqual(self.read(f"{folder}/{file.name}"), file.read_text())
            if file.suffix != ".rules":
                mode = self.entries[f"{folder}/{file.name}"][0]
                self.assertEqual(mode[3] == "x", os.access(file, os.X_OK), file.name)

    def test_drivers_with_what_they_need(self):
        folder = Path(self.folder.name) / "root"
        output("unsquashfs", "-q", "-n", "-f", "-no-xattrs", "-d", str(folder), self.squashfs, "usr/lib/modules")
        modules = {module_name(path): folder / path for path in self.found(r"^usr/lib/modules/.*\.ko$")}
        built_in = {module_name(line) for line in next(folder.glob("usr/lib/modules/*/modules.builtin")).read_text().split()}
        known = next(folder.glob("usr/lib/modules/*/modules.dep")).read_text()
        waiting = list(DRIVERS)
        for name in waiting:
            if name in built_in:
                continue
            self.assertTrue(name in modules, name)
            self.assertTrue(f"/{modules[name].name}:" in known, name)
            needed = output("modinfo", "-F", "depends", str(modules[name])).decode().strip()
            waiting += [other.replace("-", "_") for other in needed.split(",")
                        if other and other.replace("-", "_") not in waiting]

    def test_no_graphics_drivers_and_no_network(self):
        self.assertEqual(self.found(r"/kernel/(drivers/(net|gpu/drm|bluetooth|media)|net|sound)/"), [])
        self.assertEqual(self.found(r"bin/(sshd?|dhclient|dhcpcd|NetworkManager|wpa_supplicant|avahi-daemon|cupsd)$"), [])
        self.assertEqual(self.found(r"(systemd/system|init\.d)/."), [])
        self.assertEqual(self.found(r"^usr/lib/firmware/."), [])

    def test_nobody_becomes_root(self):
        self.assertEqual([path for path, (mode, _) in self.entries.items() if mode[0] == "-" and "s" in mode.lower()[:7]], [])

    def test_nothing_of_the_machine_that_built_it(self):
        self.assertEqual(self.found(r"^(var/(cache|log|lib/(apt|dpkg))|tmp|run|build|boot)/."), [])
        self.assertNotIn("etc/resolv.conf", self.paths)
        self.assertEqual(self.read("etc/machine-id"), "")
        self.assertEqual(self.read("etc/hostname"), "tarnwick\n")

    def test_letters(self):
        for pattern in (r"Lato-Regular", r"Lato-Bold", r"NotoSansCJK-Regular", r"NotoSansCJK-Bold", r"NotoSans-Regular",
                        r"NotoSansArabic-Regular", r"NotoSansDevanagari-Regular", r"NotoSansThai-Regular",
                        r"NotoSansHebrew-Regular", r"NotoSerifTibetan-Regular"):
            self.assertTrue(self.found(rf"^usr/share/fonts/.*/{pattern}\."), pattern)
        self.assertTrue(self.found(r"platforms/libqlinuxfb\.so$"))

    def test_packages_and_their_licences(self):
        here = self.read("usr/share/doc/tarnwick-medium/packages")
        rows = [line.split() for line in self.text(".disk/packages").splitlines()]
        self.assertEqual({len(row) for row in rows}, {4})
        self.assertTrue(self.text(".disk/packages").startswith(here))
        names = {row[0] for row in rows}
        for name in ("linux-image-amd64", "shim-signed", "grub-efi-amd64-signed", "grub-pc-bin", "fonts-lato"):
            self.assertIn(name, names)
        for line in here.splitlines():
            package = line.split()[0]
            entry = f"usr/share/doc/{package}"
            self.assertTrue(entry in self.paths and (self.entries[entry][0].startswith("l")
                                                     or f"{entry}/copyright" in self.paths), package)
        for name in ("usr/share/common-licenses/GPL-3", "usr/share/doc/tarnwick/copyright"):
            self.assertIn(name, self.paths)


if __name__ == "__main__":
    if not (BUILT / "built").exists():
        print("skipped: no image was built")
        sys.exit(77)
    unittest.main()
