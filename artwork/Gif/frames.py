#!/usr/bin/env python3
"""Writes the frames of one animation as SVG files: frames.py NAME FOLDER.

A frame depends on its number alone and the last one leads back to the first,
so the animation repeats without a jump. Everything stands on white, because
GIF knows no half-transparent edge and white is what the screens put below it.
"""

import math
import re
import sys
from pathlib import Path

ARTWORK = Path(__file__).resolve().parent.parent

ORANGE_TOP = "#ffb719"
ORANGE = "#ff7e17"
TINT = "#fff2e7"
GREY_DARK = "#8c8c8c"
GREY = "#b4b4b4"
GREY_SOFT = "#e0e0e0"
GREY_PALE = "#f4f4f4"


def picture(width, height, body):
    return (
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" viewBox="0 0 {width} {height}">\n'
        f'  <rect width="{width}" height="{height}" fill="#ffffff"/>\n{body}</svg>\n'
    )


def drawing_of(relative):
    """What stands inside the outer element of another picture of the set."""
    text = (ARTWORK / relative).read_text(encoding="ascii")
    return re.search(r"<svg[^>]*>\n(.*)</svg>", text, re.DOTALL).group(1)


def smooth(value):
    """0 to 1 with a soft start and a soft end."""
    value = min(max(value, 0.0), 1.0)
    return value * value * (3 - 2 * value)


# --- copy: files fly from a computer to a stick --------------------------------------------------

COMPUTER = f"""
  <ellipse cx="66" cy="131" rx="60" ry="4" fill="#f2f2f2"/>
  <rect x="17" y="43" width="98" height="72" rx="6" fill="#ffffff" stroke="{GREY}" stroke-width="2"/>
  <rect x="23" y="49" width="86" height="60" rx="2" fill="{TINT}"/>
  <path d="M5 118 H127 V119 A7 7 0 0 1 120 126 H12 A7 7 0 0 1 5 119 Z" fill="{GREY_SOFT}" stroke="{GREY}" stroke-width="2" stroke-linejoin="round"/>
  <path d="M56 122 H76" stroke="{GREY}" stroke-width="2" stroke-linecap="round"/>
"""

FOLDER_BACK = f"""
  <path d="M46 67 A3 3 0 0 1 49 64 H60 L64 69 H83 A3 3 0 0 1 86 72 V94 H46 Z" fill="{ORANGE}"/>
"""

FOLDER_FRONT = f"""
  <rect x="44" y="75" width="44" height="22" rx="3" fill="{ORANGE_TOP}"/>
"""

DOCUMENT = f"""
      <path d="M-5 -2 H5 M-5 3 H5 M-5 8 H1" stroke="{GREY}" stroke-width="2" stroke-linecap="round"/>
"""

PHOTO = f"""
      <circle cx="3" cy="-1" r="2.2" fill="{ORANGE_TOP}"/>
      <path d="M-7 9 L-2 2 L2 6.5 L4 4.5 L7.5 9 Z" fill="{ORANGE}" stroke="{ORANGE}" stroke-width="1" stroke-linejoin="round"/>
"""

MUSIC = f"""
      <path d="M-2 7 V-1 L5 -2.6 V5" fill="none" stroke="{GREY_DARK}" stroke-width="2" stroke-linejoin="round"/>
      <circle cx="-4" cy="7" r="2.4" fill="{GREY_DARK}"/>
      <circle cx="3" cy="5.2" r="2.4" fill="{GREY_DARK}"/>
"""


def sheet(x, y, scale, tilt, sign):
    return f"""
    <g transform="translate({x:.2f} {y:.2f}) rotate({tilt:.2f}) scale({scale:.3f})">
      <path d="M-8 -14 H4 L11 -7 V11 A3 3 0 0 1 8 14 H-8 A3 3 0 0 1 -11 11 V-11 A3 3 0 0 1 -8 -14 Z" fill="#ffffff" stroke="{ORANGE}" stroke-width="2" stroke-linejoin="round"/>
      <path d="M4 -14 V-7 H11 Z" fill="{ORANGE}" stroke="{ORANGE}" stroke-width="2" stroke-linejoin="round"/>{sign}    </g>
"""


def flight(progress):
    """Where a sheet is: out of the folder, over in a bow, down into the stick."""
    along = 0.35 * progress + 0.65 * smooth(progress)
    start, bend_out, bend_in, end = (66, 84), (70, -2), (226, -6), (204, 84)
    left = 1 - along
    weights = (left**3, 3 * left * left * along, 3 * left * along * along, along**3)
    points = (start, bend_out, bend_in, end)
    x = sum(w * p[0] for w, p in zip(weights, points))
    y = sum(w * p[1] for w, p in zip(weights, points))
    return x, y, along


def copy_frame(number, count):
    phase = number / count
    signs = (DOCUMENT, PHOTO, MUSIC)
    rising, falling = "", ""
    for index, sign in enumerate(signs):
        progress = (phase + index / len(signs)) % 1.0
        x, y, along = flight(progress)
        scale = 0.62 + 0.38 * smooth(along / 0.3) - 0.45 * smooth((along - 0.6) / 0.3)
        tilt = -8 + 20 * along
        falling += sheet(x, y, scale, tilt, sign)
    # The stick takes a sheet three times in a round; its light fades after each.
    since = (phase * len(signs)) % 1.0
    light = 0.35 + 0.65 * (1 - smooth(since * 1.6))
    stick = drawing_of("Label/usb_select.svg").replace(
        'rx="2" fill="#ffffff"', f'rx="2" fill="#ffffff" fill-opacity="{light:.3f}"'
    )
    body = (
        '  <g transform="translate(6 3)">'
        + COMPUTER
        + FOLDER_BACK
        + falling
        + FOLDER_FRONT
        + f"""
  <ellipse cx="204" cy="131" rx="26" ry="4" fill="#f2f2f2"/>
  <svg x="180" y="39" width="48" height="90" viewBox="0 0 70 131">
{stick}  </svg>
  </g>
"""
    )
    return picture(247, 146, body)


# --- searching: a glass circles over a sheet -----------------------------------------------------


def searching_frame(number, count):
    angle = 2 * math.pi * number / count
    x = 22.5 + 5 * math.cos(angle)
    y = 22 + 5 * math.sin(angle)
    body = f"""
  <path d="M9 3 H23 L31 11 V34 A3 3 0 0 1 28 37 H9 A3 3 0 0 1 6 34 V6 A3 3 0 0 1 9 3 Z" fill="#ffffff" stroke="{GREY}" stroke-width="2" stroke-linejoin="round"/>
  <path d="M23 3 V11 H31" fill="none" stroke="{GREY}" stroke-width="2" stroke-linejoin="round"/>
  <path d="M11.5 11 H17.5 M11.5 17 H25.5 M11.5 23 H25.5 M11.5 29 H21.5" stroke="{GREY_SOFT}" stroke-width="2" stroke-linecap="round"/>
  <g transform="translate({x:.2f} {y:.2f})">
    <path d="M5.4 5.4 L10 10" stroke="#ffffff" stroke-width="7" stroke-linecap="round"/>
    <circle r="7" fill="#ffffff" stroke="#ffffff" stroke-width="6"/>
    <circle r="7" fill="{TINT}" stroke="{ORANGE}" stroke-width="3"/>
    <path d="M5.4 5.4 L10 10" stroke="{ORANGE}" stroke-width="3.5" stroke-linecap="round"/>
  </g>
"""
    return picture(40, 40, body)


# --- refalsh: the refresh arrow turns once -------------------------------------------------------


def refalsh_frame(number, count):
    arrow = drawing_of("Button/refresh_icon_hover.svg")
    return picture(20, 20, f'  <g transform="rotate({360 * number / count:.2f} 10 10)">\n{arrow}  </g>\n')


ANIMATIONS = {"copy": (copy_frame, 60), "searching": (searching_frame, 32), "refalsh": (refalsh_frame, 25)}


def main():
    name, folder = sys.argv[1], Path(sys.argv[2])
    frame, count = ANIMATIONS[name]
    for number in range(count):
        (folder / f"{number:03}.svg").write_text(frame(number, count), encoding="ascii")


if __name__ == "__main__":
    main()
