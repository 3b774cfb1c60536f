#!/usr/bin/env python3
"""Draws the product picture of the main window's heading: the thermostat on a wall.

Usage: make_product_picture.py OUTPUT.bmp

The picture has three times its size at 96 dots per inch and is reduced for the screen. Edges are on even units, so they
stay on whole pixels at 96, 144 and 192 dots per inch.
"""
import sys

import drawing

WIDTH, HEIGHT = 72, 48
SCALE = 3

GLASS = (214, 226, 219)
INK = (44, 56, 66)
# The strokes of a digit, as pairs of corners of a 2 by 4 grid: top, upper left, upper right, middle, lower left,
# lower right, bottom.
STROKES = [((0, 0), (2, 0)), ((0, 0), (0, 2)), ((2, 0), (2, 2)), ((0, 2), (2, 2)), ((0, 2), (0, 4)), ((2, 2), (2, 4)),
           ((0, 4), (2, 4))]
LIT = {"1": (2, 5), "2": (0, 2, 3, 4, 6), "5": (0, 1, 3, 5, 6)}


class Drawing:
    """Draws in pixels at 96 dots per inch."""

    def __init__(self):
        self.picture = drawing.Picture(WIDTH * SCALE, HEIGHT * SCALE)

    def rounded(self, box, radius, color, opacity=1):
        self.picture.fill(drawing.rounded(tuple(SCALE * edge for edge in box), SCALE * radius), color, opacity)

    def stroke(self, start, end, width, color):
        def enlarged(point):
            return tuple(SCALE * part for part in point)

        self.picture.fill(drawing.stroke(enlarged(start), enlarged(end), SCALE * width), color)

    def digit(self, character, left, top, unit):
        for index in LIT[character]:
            (ax, ay), (bx, by) = STROKES[index]
            self.stroke((left + ax * unit, top + ay * unit), (left + bx * unit, top + by * unit), 2, INK)


def thermostat():
    drawn = Drawing()
    for step in (1, 2):  # its shadow
        drawn.rounded((2 - step / 2, 2, 70 + step / 2, 46 + step), 6, drawing.SLATE, 0.18)
    drawn.rounded((2, 0, 70, 46), 6, drawing.LINE)
    drawn.rounded((3, 1, 69, 45), 5, drawing.CASE)
    drawn.rounded((8, 6, 50, 32), 2, drawing.SLATE)
    drawn.rounded((9, 7, 49, 31), 1, GLASS)
    for character, left in (("2", 14), ("1", 20), ("5", 34)):
        drawn.digit(character, left, 12, 3)
    drawn.stroke((29.9, 24), (30.1, 24), 2.4, INK)
    drawn.rounded((43, 10, 47, 14), 2, INK)  # the degree sign, a ring
    drawn.rounded((44, 11, 46, 13), 1, GLASS)
    for top, tip, foot, color in ((6, 10, 14, drawing.ORANGE), (20, 28, 24, drawing.BLUE)):  # warmer and cooler
        drawn.rounded((54, top, 66, top + 12), 3, drawing.LINE)
        drawn.rounded((55, top + 1, 65, top + 11), 2, drawing.CASE)
        for x in (57, 63):
            drawn.stroke((x, foot), (60, tip), 2, color)
    drawn.rounded((24, 36, 48, 42), 3, drawing.LINE)  # the eye of the presence detector
    drawn.rounded((25, 37, 47, 41), 2, (232, 236, 240))
    return drawn.picture


if __name__ == "__main__":
    with open(sys.argv[1], "wb") as output:
        output.write(drawing.bmp(thermostat()))
