#!/usr/bin/env python3
"""Draws the clip of the progress window: packets travel between the nodes of a small network and a thermostat.

Usage: make_progress_clip.py OUTPUT.avi [DOTS PER INCH]

The file is an AVI with one stream of 8-bit frames, run-length coded (RLE8), as the system's animation control requires.
Palette entry 0 is the background, which the control makes transparent. Each frame except the first holds only the changes.
"""
import struct
import sys

import drawing
from drawing import BLUE, CASE, LINE, ORANGE, SLATE, disc, rounded, stroke

DPI = int(sys.argv[2]) if len(sys.argv) > 2 else 96
WIDTH, HEIGHT = 320 * DPI // 96, 72 * DPI // 96  # all other lengths are for 96 dots per inch
FRAMES = 36
MICROSECONDS = 80000  # per frame

BACKGROUND = (240, 240, 240)
INKS = [LINE, SLATE, CASE, BLUE, ORANGE]
STEPS = 16  # shades from background to ink

# Positions of the nodes, and of the thermostat at the right end.
NODES = [(34, 36), (104, 18), (104, 54), (178, 36)]
THERMOSTAT = (272, 36)
LINKS = [(NODES[0], NODES[1]), (NODES[0], NODES[2]), (NODES[1], NODES[3]), (NODES[2], NODES[3]),
         (NODES[3], (THERMOSTAT[0] - 26, THERMOSTAT[1]))]
# A packet's path as links, its ink, and the part of the cycle at which it starts.
WAYS = [([0, 2, 4], BLUE, 0.0), ([1, 3, 4], BLUE, 0.5)]


def palette():
    """Entry 0 is the background, then each ink from faint to full."""
    colors = [BACKGROUND]
    for ink in INKS:
        for step in range(1, STEPS + 1):
            part = step / STEPS
            colors.append(tuple(round(b + (i - b) * part) for b, i in zip(BACKGROUND, ink)))
    return colors


def shade(ink, part):
    step = round(part * STEPS)
    return 0 if step == 0 else 1 + INKS.index(ink) * STEPS + step - 1


class Frame:
    """A picture of palette entries, top row first."""

    def __init__(self):
        self.rows = [bytearray(WIDTH) for _ in range(HEIGHT)]

    def fill(self, shape, ink):
        """At edges over other inks, the stronger one wins."""
        for x, y, part in shape.scaled(DPI / 96).coverage(WIDTH, HEIGHT):
            if part >= 0.5 or self.rows[y][x] == 0:
                self.rows[y][x] = shade(ink, part)


def position(way, progress):
    """A point on the path; progress runs from 0 to 1."""
    along = min(progress, 0.9999) * len(way)
    (ax, ay), (bx, by) = LINKS[way[int(along)]]
    part = along - int(along)
    part = part * part * (3 - 2 * part)  # slows down at the nodes
    return ax + (bx - ax) * part, ay + (by - ay) * part


def thermostat(frame, glow):
    x, y = THERMOSTAT
    frame.fill(rounded((x - 26, y - 24, x + 26, y + 24), 8), SLATE)
    frame.fill(rounded((x - 23.5, y - 21.5, x + 23.5, y + 21.5), 6), CASE)
    ink, pointer = (ORANGE, 54) if glow else (SLATE, 0)
    for step in range(-135, 136, 27):  # the scale around the dial
        frame.fill(disc(drawing.on_circle(THERMOSTAT, 15, step), 1.7), ink if step <= pointer else LINE)
    frame.fill(stroke(THERMOSTAT, drawing.on_circle(THERMOSTAT, 9, pointer), 2.6), ink)
    frame.fill(disc(THERMOSTAT, 3.2), ink)


def still(glow):
    """The still part of a frame; the thermostat glows when a packet has arrived."""
    frame = Frame()
    for start, end in LINKS:
        frame.fill(stroke(start, end, 2), LINE)
    for node in NODES:
        frame.fill(disc(node, 9), SLATE)
        frame.fill(disc(node, 6), CASE)
    thermostat(frame, glow)
    return frame


def draw(index, stills):
    moving, arrived = [], False
    for way, ink, offset in WAYS:
        progress = ((index / FRAMES - offset) % 1) / 0.72
        if progress < 1:
            moving += [(position(way, progress - tail), 4.6 - tail * 50, ink)
                       for tail in (0.05, 0.025, 0) if progress > tail]
        elif progress < 1.25:
            arrived = True
    frame = Frame()
    frame.rows = [row[:] for row in stills[arrived].rows]
    for center, radius, ink in moving:
        frame.fill(disc(center, radius), ink)
    return frame


def run_length(rows, shown=None):
    """RLE8, bottom row first: runs of one entry, with ends of rows and picture. Skips pixels already shown."""
    data = bytearray()
    for y in reversed(range(HEIGHT)):
        row, same = rows[y], shown[y] if shown else [None] * WIDTH
        changed = [x for x in range(WIDTH) if row[x] != same[x]]
        x, end = 0, changed[-1] + 1 if changed else 0
        while x < end:
            skip = 0
            while skip < 255 and row[x + skip] == same[x + skip]:
                skip += 1
            if skip > 2:
                data += bytes((0, 2, skip, 0))
                x += skip
                continue
            run = 1
            while x + run < end and run < 255 and row[x + run] == row[x]:
                run += 1
            data += bytes((run, row[x]))
            x += run
        data += b"\0\0"
    return bytes(data + b"\0\1")


def chunk(name, data):
    return name + struct.pack("<I", len(data)) + data + b"\0" * (len(data) % 2)


def group(kind, data, outer=b"LIST"):
    return chunk(outer, kind + data)


def avi(frames):
    largest = max(map(len, frames))
    header = struct.pack("<14I", MICROSECONDS, 0, 0, 0x10, len(frames), 0, 1, largest, WIDTH, HEIGHT, 0, 0, 0, 0)
    stream = struct.pack("<4s4sIHHIIIIIIIIHHHH", b"vids", b"RLE ", 0, 0, 0, 0, MICROSECONDS, 1000000, 0, len(frames),
                         largest, 0xFFFFFFFF, 0, 0, 0, WIDTH, HEIGHT)
    colors = palette() + [(0, 0, 0)] * (256 - len(palette()))
    picture = struct.pack("<IiiHHIIiiII", 40, WIDTH, HEIGHT, 1, 8, 1, WIDTH * HEIGHT, 0, 0, 256, 0)
    picture += b"".join(struct.pack("BBBB", blue, green, red, 0) for red, green, blue in colors)
    headers = group(b"hdrl", chunk(b"avih", header) +
                    group(b"strl", chunk(b"strh", stream) + chunk(b"strf", picture)))
    movie = b"".join(chunk(b"00dc", frame) for frame in frames)
    index, offset = b"", 4
    for frame in frames:
        index += struct.pack("<4sIII", b"00dc", 0 if index else 0x10, offset, len(frame))
        offset += 8 + len(frame) + len(frame) % 2
    return group(b"AVI ", headers + group(b"movi", movie) + chunk(b"idx1", index), b"RIFF")


def main():
    stills = {glow: still(glow) for glow in (False, True)}
    with open(sys.argv[1], "wb") as output:
        pictures = [draw(index, stills).rows for index in range(FRAMES)]
        output.write(avi([run_length(now, before) for now, before in zip(pictures, [None] + pictures)]))


if __name__ == "__main__":
    main()
