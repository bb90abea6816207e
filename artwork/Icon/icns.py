#!/usr/bin/env python3
"""Packs PNG files into a macOS icon file: icns.py TARGET FOLDER.

FOLDER holds <pixels>.png for 16 to 1024 pixels. An icon file is a header and,
for each size, a four-letter type, the length and the PNG as it is.
"""

import struct
import sys
from pathlib import Path

# Sizes that are drawn on a screen of twice the density have a type of their own.
TYPES = [
    (b"icp4", 16),
    (b"ic11", 32),
    (b"icp5", 32),
    (b"ic12", 64),
    (b"ic07", 128),
    (b"ic13", 256),
    (b"ic08", 256),
    (b"ic14", 512),
    (b"ic09", 512),
    (b"ic10", 1024),
]


def main():
    target, folder = Path(sys.argv[1]), Path(sys.argv[2])
    parts = b""
    for kind, pixels in TYPES:
        png = (folder / f"{pixels}.png").read_bytes()
        parts += kind + struct.pack(">I", len(png) + 8) + png
    target.write_bytes(b"icns" + struct.pack(">I", len(parts) + 8) + parts)


if __name__ == "__main__":
    main()
