#!/usr/bin/env python3
"""Draws the program's icon, a room controller with its dial.

Usage: make_icon.py OUTPUT.ico
"""
import sys

import drawing

SIZES = [16, 20, 24, 32, 40, 48, 64, 256]


def controller(size):
    """Small pictures have fewer and thicker lines, with edges on whole pixels."""
    picture = drawing.Picture(size, size)
    small = size < 32
    border = max(1, round(size / 20))
    case = (0, 0, size, size)
    inner = tuple(edge + sign * border for edge, sign in zip(case, (1, 1, -1, -1)))
    corner = size * 0.2
    picture.fill(drawing.rounded(case, corner), drawing.SLATE)
    picture.fill(drawing.rounded(inner, corner - border), drawing.CASE)
    middle = (size / 2, size / 2 + (0 if small else size * 0.03))
    radius = size * (0.29 if small else 0.28)
    width = max(2, size * 0.1)
    picture.fill(drawing.arc(middle, radius, -135, 135, width), drawing.LINE)
    picture.fill(drawing.arc(middle, radius, -135, 50, width), drawing.ORANGE)
    picture.fill(drawing.disc(middle, size * 0.11), drawing.BLUE)
    picture.fill(drawing.stroke(middle, drawing.on_circle(middle, radius * 0.92, 50), max(1.8, size * 0.075)), drawing.BLUE)
    return picture


def icon():
    return drawing.ico([controller(size) for size in SIZES])


if __name__ == "__main__":
    with open(sys.argv[1], "wb") as output:
        output.write(icon())
