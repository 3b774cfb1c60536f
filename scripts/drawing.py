"""Shared by the drawing scripts: shapes with smooth edges, pictures of them, and picture file formats."""
import math
import struct
import zlib

# The colours of all pictures of the program.
LINE = (176, 186, 198)
SLATE = (92, 110, 130)
CASE = (250, 251, 252)
BLUE = (31, 111, 184)
ORANGE = (222, 120, 34)


class Shape:
    """`distance` is how far a point is outside the edge, negative inside; `box` contains the whole shape."""

    def __init__(self, distance, box):
        self.distance = distance
        self.box = box

    def scaled(self, factor):
        return Shape(lambda x, y: factor * self.distance(x / factor, y / factor), tuple(factor * edge for edge in self.box))

    def coverage(self, width, height):
        """The pixels that the shape touches in a picture of this size: x, y and the covered part."""
        left, top, right, bottom = self.box
        for y in range(max(0, math.floor(top - 1)), min(height, math.ceil(bottom + 1))):
            for x in range(max(0, math.floor(left - 1)), min(width, math.ceil(right + 1))):
                part = min(1, max(0, 0.5 - self.distance(x + 0.5, y + 0.5)))
                if part > 0:
                    yield x, y, part


def disc(center, radius):
    cx, cy = center
    return Shape(lambda x, y: math.hypot(x - cx, y - cy) - radius, (cx - radius, cy - radius, cx + radius, cy + radius))


def rounded(box, radius):
    """A rectangle with round corners."""
    left, top, right, bottom = box
    cx, cy = (left + right) / 2, (top + bottom) / 2
    inner_x, inner_y = (right - left) / 2 - radius, (bottom - top) / 2 - radius

    def distance(x, y):
        dx, dy = abs(x - cx) - inner_x, abs(y - cy) - inner_y
        return math.hypot(max(0, dx), max(0, dy)) + min(0, max(dx, dy)) - radius

    return Shape(distance, box)


def stroke(start, end, width):
    """A line with round ends."""
    (ax, ay), (bx, by) = start, end
    dx, dy = bx - ax, by - ay
    length = dx * dx + dy * dy

    def distance(x, y):
        along = min(1, max(0, ((x - ax) * dx + (y - ay) * dy) / length))
        return math.hypot(x - ax - along * dx, y - ay - along * dy) - width / 2

    half = width / 2
    return Shape(distance, (min(ax, bx) - half, min(ay, by) - half, max(ax, bx) + half, max(ay, by) + half))


def on_circle(center, radius, degrees):
    """A point on a dial; 0 is the top, and degrees go clockwise."""
    angle = math.radians(degrees - 90)
    return center[0] + radius * math.cos(angle), center[1] + radius * math.sin(angle)


def arc(center, radius, start, end, width):
    """A part of a dial's ring, in degrees, with round ends."""
    cx, cy = center
    middle, half = math.radians((start + end) / 2 - 90), math.radians((end - start) / 2)
    ends = [on_circle(center, radius, degrees) for degrees in (start, end)]

    def distance(x, y):
        turn = abs((math.atan2(y - cy, x - cx) - middle + math.pi) % math.tau - math.pi)
        if turn <= half:
            return abs(math.hypot(x - cx, y - cy) - radius) - width / 2
        return min(math.hypot(x - ex, y - ey) for ex, ey in ends) - width / 2

    outer = radius + width / 2
    return Shape(distance, (cx - outer, cy - outer, cx + outer, cy + outer))


class Picture:
    """Red, green, blue and opacity of each pixel, top row first; initially empty."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self.rows = [[(0, 0, 0, 0.0)] * width for _ in range(height)]

    def fill(self, shape, color, opacity=1):
        for x, y, part in shape.coverage(self.width, self.height):
            red, green, blue, below = self.rows[y][x]
            part *= opacity
            seen = below * (1 - part)
            total = part + seen
            self.rows[y][x] = (*((new * part + old * seen) / total for new, old in zip(color, (red, green, blue))), total)

    def pixel_bytes(self, row, order):
        """One row as bytes in an order such as "BGRA"."""
        places = ["RGBA".index(channel) for channel in order]
        for red, green, blue, opacity in row:
            channels = (red, green, blue, opacity * 255)
            yield from (round(channels[place]) for place in places)


def png(picture):
    def part(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    rows = b"".join(b"\0" + bytes(picture.pixel_bytes(row, "RGBA")) for row in picture.rows)
    header = struct.pack(">IIBBBBB", picture.width, picture.height, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + part(b"IHDR", header) + part(b"IDAT", zlib.compress(rows, 9)) + part(b"IEND", b"")


def bitmap_header(picture, height):
    return struct.pack("<IiiHHIIiiII", 40, picture.width, height, 1, 32, 0, 0, 0, 0, 0, 0)


def bitmap_pixels(picture):
    return b"".join(bytes(picture.pixel_bytes(row, "BGRA")) for row in reversed(picture.rows))


def bmp(picture):
    """A bitmap with opacity in its fourth channel."""
    data = bitmap_header(picture, picture.height) + bitmap_pixels(picture)
    return b"BM" + struct.pack("<IHHI", 14 + len(data), 0, 0, 14 + 40) + data


def ico(pictures):
    """Square pictures as one icon; only large ones are compressed, because older readers expect this only of them."""
    entries, images = b"", b""
    for picture in pictures:
        if picture.width >= 256:
            image = png(picture)
        else:
            mask_row = (picture.width + 31) // 32 * 4  # all zero: opacity is used instead
            image = bitmap_header(picture, 2 * picture.height) + bitmap_pixels(picture) + bytes(mask_row * picture.height)
        place = 6 + 16 * len(pictures) + len(images)
        entries += struct.pack("<BBBBHHII", picture.width % 256, picture.height % 256, 0, 0, 1, 32, len(image), place)
        images += image
    return struct.pack("<HHH", 0, 1, len(pictures)) + entries + images


def gif(width, height, palette, pixels):
    """A still picture of at most 128 colours; `pixels` are entries of the palette, row by row."""
    depth = 7
    table = b"".join(bytes(color) for color in palette).ljust(3 * 2**depth, b"\0")
    screen = struct.pack("<HHBBB", width, height, 0x80 | 0x70 | (depth - 1), 0, 0)
    image = b"," + struct.pack("<HHHHB", 0, 0, width, height, 0)
    data = lzw(pixels, depth)
    blocks = b"".join(bytes([len(data[i:i + 255])]) + data[i:i + 255] for i in range(0, len(data), 255))
    return b"GIF89a" + screen + table + image + bytes([depth]) + blocks + b"\0;"


def lzw(pixels, depth):
    clear, end = 1 << depth, (1 << depth) + 1
    bits, count = 0, 0
    data = bytearray()

    def write(code, size):
        nonlocal bits, count
        bits |= code << count
        count += size
        while count >= 8:
            data.append(bits & 255)
            bits >>= 8
            count -= 8

    codes, size, run = {}, depth + 1, ()
    write(clear, size)
    for pixel in pixels:
        longer = run + (pixel,)
        if len(longer) == 1 or longer in codes:
            run = longer
            continue
        write(codes.get(run, run[0]), size)
        codes[longer] = end + 1 + len(codes)
        if codes[longer] == 1 << size:
            size += 1
        if codes[longer] == 4095:  # the table is full
            write(clear, 12)
            codes, size = {}, depth + 1
        run = (pixel,)
    write(codes.get(run, run[0]), size)
    write(end, size)
    if count:
        data.append(bits & 255)
    return bytes(data)
