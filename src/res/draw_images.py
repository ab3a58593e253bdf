#!/usr/bin/env python3
"""Draws the plug-in's pictures: the bitmaps and icons of the resource script and the two
menu icons of the host's text directory. Only the standard library is used, so the files can
be drawn again anywhere; they are committed, and the build does not run this script.

    python3 src/res/draw_images.py [OUTPUT_DIR]   (default: the folder of this script)

Writes images/*.bmp, images/*.ico and text/*.gif under OUTPUT_DIR.
"""
import math
import os
import struct
import sys

# Colours of the plug-in's look: a deep blue ground, a light blue accent, white writing.
NAVY = (18, 40, 86)
BLUE = (34, 98, 178)
SKY = (120, 190, 245)
WHITE = (255, 255, 255)
GREY = (70, 76, 88)
DARK = (28, 30, 36)
ORANGE = (240, 150, 40)

# A 5 by 7 pixel font for the few letters the pictures need; '#' is ink.
FONT = {
    "Q": [".###.", "#...#", "#...#", "#...#", "#.#.#", "#..#.", ".##.#"],
    "v": [".....", ".....", "#...#", "#...#", "#...#", ".#.#.", "..#.."],
    "x": [".....", ".....", "#...#", ".#.#.", "..#..", ".#.#.", "#...#"],
    "P": ["####.", "#...#", "#...#", "####.", "#....", "#....", "#...."],
    "r": [".....", ".....", "#.##.", "##..#", "#....", "#....", "#...."],
    "o": [".....", ".....", ".###.", "#...#", "#...#", "#...#", ".###."],
    "E": ["#####", "#....", "#....", "####.", "#....", "#....", "#####"],
    "N": ["#...#", "##..#", "#.#.#", "#..##", "#...#", "#...#", "#...#"],
    "G": [".###.", "#...#", "#....", "#.###", "#...#", "#...#", ".###."],
    "I": [".###.", "..#..", "..#..", "..#..", "..#..", "..#..", ".###."],
    "R": ["####.", "#...#", "#...#", "####.", "#.#..", "#..#.", "#...#"],
    "?": [".###.", "#...#", "....#", "...#.", "..#..", ".....", "..#.."],
    " ": [".....", ".....", ".....", ".....", ".....", ".....", "....."],
}


class Canvas:
    """RGBA pixels, row 0 at the top."""

    def __init__(self, width, height, fill=(0, 0, 0, 0)):
        self.width, self.height = width, height
        self.px = [[tuple(fill) for _ in range(width)] for _ in range(height)]

    def put(self, x, y, rgb, alpha=255):
        if 0 <= x < self.width and 0 <= y < self.height:
            old = self.px[y][x]
            a = alpha / 255.0
            mixed = tuple(int(round(rgb[i] * a + old[i] * (1 - a))) for i in range(3))
            self.px[y][x] = mixed + (max(old[3], alpha),)

    def gradient(self, top, bottom):
        for y in range(self.height):
            t = y / max(1, self.height - 1)
            rgb = tuple(int(top[i] + (bottom[i] - top[i]) * t) for i in range(3))
            for x in range(self.width):
                self.px[y][x] = rgb + (255,)

    def ellipse(self, cx, cy, rx, ry, rgb, alpha=255):
        # Edge pixels get partial cover from 4 by 4 samples, so small icons stay smooth.
        for y in range(int(cy - ry) - 1, int(cy + ry) + 2):
            for x in range(int(cx - rx) - 1, int(cx + rx) + 2):
                inside = 0
                for sy in range(4):
                    for sx in range(4):
                        dx = (x + (sx + 0.5) / 4 - cx) / rx
                        dy = (y + (sy + 0.5) / 4 - cy) / ry
                        inside += dx * dx + dy * dy <= 1.0
                if inside:
                    self.put(x, y, rgb, alpha * inside // 16)

    def rect(self, x0, y0, x1, y1, rgb, alpha=255):
        for y in range(y0, y1):
            for x in range(x0, x1):
                self.put(x, y, rgb, alpha)

    def text(self, x, y, s, rgb, scale=1):
        for ch in s:
            rows = FONT.get(ch, FONT["?"])
            for r, row in enumerate(rows):
                for c, bit in enumerate(row):
                    if bit == "#":
                        self.rect(x + c * scale, y + r * scale, x + (c + 1) * scale,
                                  y + (r + 1) * scale, rgb)
            x += 6 * scale
        return x


def text_width(s, scale=1):
    return len(s) * 6 * scale - scale


def draw_puck(c, cx, cy, size):
    """The 3D mouse seen from the front: a dark base, a light cap, a button on each side."""
    c.ellipse(cx, cy + size * 0.28, size * 0.50, size * 0.20, DARK)
    c.rect(int(cx - size * 0.50), int(cy + size * 0.05), int(cx + size * 0.50 + 1),
           int(cy + size * 0.28), DARK)
    c.ellipse(cx, cy + size * 0.05, size * 0.50, size * 0.20, GREY)
    c.ellipse(cx, cy - size * 0.12, size * 0.30, size * 0.14, BLUE)
    c.rect(int(cx - size * 0.30), int(cy - size * 0.12), int(cx + size * 0.30 + 1),
           int(cy + size * 0.02), BLUE)
    c.ellipse(cx, cy - size * 0.12 - size * 0.0, size * 0.30, size * 0.14, SKY)
    c.ellipse(cx - size * 0.38, cy + size * 0.12, size * 0.07, size * 0.04, ORANGE)
    c.ellipse(cx + size * 0.38, cy + size * 0.12, size * 0.07, size * 0.04, ORANGE)


# -- file writers ------------------------------------------------------------------------

def bmp_rows(c, depth, palette=None):
    """Pixel rows bottom-up, each padded to 4 bytes."""
    rows = []
    for y in range(c.height - 1, -1, -1):
        line = bytearray()
        for x in range(c.width):
            r, g, b, a = c.px[y][x]
            if depth == 32:
                line += bytes((b, g, r, a))
            elif depth == 24:
                line += bytes((b, g, r))
            else:
                line.append(palette.index((r, g, b)))
        if depth == 4:
            packed = bytearray()
            for i in range(0, len(line), 2):
                hi = line[i]
                lo = line[i + 1] if i + 1 < len(line) else 0
                packed.append((hi << 4) | lo)
            line = packed
        while len(line) % 4:
            line.append(0)
        rows.append(bytes(line))
    return b"".join(rows)


def quantize(c, colours):
    """Maps every pixel to the nearest of at most `colours` colours; returns the palette."""
    counts = {}
    for row in c.px:
        for r, g, b, a in row:
            key = (r >> 3, g >> 3, b >> 3)
            counts[key] = counts.get(key, 0) + 1
    palette = [tuple(v * 8 + 4 for v in k)
               for k, _ in sorted(counts.items(), key=lambda kv: -kv[1])[:colours]]
    cache = {}
    for row in c.px:
        for i, (r, g, b, a) in enumerate(row):
            if (r, g, b) not in cache:
                cache[(r, g, b)] = min(palette, key=lambda p: (p[0] - r) ** 2 + (p[1] - g) ** 2 +
                                       (p[2] - b) ** 2)
            row[i] = cache[(r, g, b)] + (a,)
    while len(palette) < colours:
        palette.append((0, 0, 0))
    return palette


def dib(c, depth, for_icon=False):
    """A BITMAPINFOHEADER, its palette and its pixels; icons also get their AND mask."""
    palette = quantize(c, 1 << depth) if depth <= 8 else None
    pixels = bmp_rows(c, depth, palette)
    height = c.height * 2 if for_icon else c.height
    header = struct.pack("<IiiHHIIiiII", 40, c.width, height, 1, depth, 0, len(pixels), 2835,
                         2835, len(palette) if palette else 0, 0)
    table = b"".join(bytes((b, g, r, 0)) for r, g, b in palette) if palette else b""
    mask = b""
    if for_icon:
        stride = ((c.width + 31) // 32) * 4
        for y in range(c.height - 1, -1, -1):
            bits = bytearray(stride)
            for x in range(c.width):
                if c.px[y][x][3] < 128:
                    bits[x // 8] |= 0x80 >> (x % 8)
            mask += bytes(bits)
    return header + table + pixels + mask


def write_bmp(path, c, depth):
    body = dib(c, depth)
    offset = 14 + 40 + (4 * (1 << depth) if depth <= 8 else 0)
    with open(path, "wb") as f:
        f.write(b"BM" + struct.pack("<IHHI", 14 + len(body), 0, 0, offset) + body)


def write_ico(path, images):
    """`images`: (canvas, depth) pairs."""
    bodies = [dib(c, depth, for_icon=True) for c, depth in images]
    out = struct.pack("<HHH", 0, 1, len(images))
    offset = 6 + 16 * len(images)
    for (c, depth), body in zip(images, bodies):
        colours = (1 << depth) if depth < 8 else 0
        out += struct.pack("<BBBBHHII", c.width % 256, c.height % 256, colours, 0, 1, depth,
                           len(body), offset)
        offset += len(body)
    with open(path, "wb") as f:
        f.write(out + b"".join(bodies))


def write_gif(path, c):
    """A GIF with a transparent colour, coded without compression: a clear code before
    every 254 literals keeps the LZW table (and the 9-bit code width) from growing."""
    palette = quantize(c, 255)[:255] + [(255, 0, 255)]
    transparent = 255
    indices = [transparent if a < 128 else palette.index((r, g, b))
               for row in c.px for r, g, b, a in row]
    clear, end = 256, 257
    codes = []
    for i, v in enumerate(indices):
        if i % 254 == 0:
            codes.append(clear)
        codes.append(v)
    codes.append(end)
    bits, nbits, data = 0, 0, bytearray()
    for code in codes:
        bits |= code << nbits
        nbits += 9
        while nbits >= 8:
            data.append(bits & 0xFF)
            bits >>= 8
            nbits -= 8
    if nbits:
        data.append(bits & 0xFF)
    blocks = b"".join(bytes((len(data[i:i + 255]),)) + bytes(data[i:i + 255])
                      for i in range(0, len(data), 255)) + b"\x00"
    out = b"GIF89a" + struct.pack("<HHBBB", c.width, c.height, 0xF7, 0, 0)
    out += b"".join(bytes(p) for p in palette)
    out += b"\x21\xF9\x04\x01\x00\x00" + bytes((transparent,)) + b"\x00"
    out += b"\x2C" + struct.pack("<HHHHB", 0, 0, c.width, c.height, 0) + b"\x08" + blocks
    out += b"\x3B"
    with open(path, "wb") as f:
        f.write(out)


# -- the pictures ------------------------------------------------------------------------

def about_picture():
    c = Canvas(150, 70)
    c.gradient(BLUE, NAVY)
    draw_puck(c, 28, 34, 40)
    x = c.text(58, 26, "Qvx", SKY)
    c.text(x, 26, "ProENGINEER", WHITE)
    c.rect(58, 38, 58 + text_width("QvxProENGINEER"), 39, SKY)
    return c


def logo(size):
    c = Canvas(size, size)
    c.ellipse(size / 2, size / 2, size / 2 - 0.5, size / 2 - 0.5, NAVY)
    draw_puck(c, size / 2, size / 2 + size * 0.04, size * 0.78)
    return c


def plate(width, height):
    c = Canvas(width, height)
    c.gradient((230, 236, 244), (196, 208, 226))
    c.rect(0, 0, width, 2, BLUE)
    c.rect(0, height - 2, width, height, BLUE)
    c.rect(0, 0, 2, height, BLUE)
    c.rect(width - 2, 0, width, height, BLUE)
    return c


def background(variant):
    """The LCD's 320 by 240 grounds: one gradient each with faint stripes; nothing more, as
    the page's texts reach every corner."""
    tops = [NAVY, (20, 20, 24), (40, 60, 40), (70, 30, 30), (50, 50, 70)]
    bottoms = [BLUE, (70, 76, 88), (30, 110, 60), (150, 70, 40), (100, 100, 140)]
    c = Canvas(320, 240)
    c.gradient(tops[variant], bottoms[variant])
    for i in range(0, 320, 40):
        c.rect(i, 0, i + 1, 240, WHITE, 24)
    return c


def button_image(kind):
    """12 by 12 driver button images: a ring with a dot, and a ring with a bar."""
    c = Canvas(12, 12)
    c.ellipse(6, 6, 5.5, 5.5, BLUE)
    c.ellipse(6, 6, 3.8, 3.8, WHITE)
    if kind == 0:
        c.ellipse(6, 6, 1.8, 1.8, BLUE)
    else:
        c.rect(4, 5, 8, 7, BLUE)
    return c


def menu_icon(kind):
    """16 by 16 menu icons: the device with a key for the mapping, a question mark for help."""
    c = Canvas(16, 16)
    if kind == "mapping":
        draw_puck(c, 8, 9, 14)
    else:
        c.ellipse(8, 8, 7.5, 7.5, BLUE)
        c.text(6, 5, "?", WHITE)
        # The question mark is five wide; widen its look with a second stroke.
        c.text(5, 5, "?", WHITE)
    return c


def main():
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.abspath(__file__))
    images = os.path.join(out, "images")
    text = os.path.join(out, "text")
    os.makedirs(images, exist_ok=True)
    os.makedirs(text, exist_ok=True)

    write_bmp(os.path.join(images, "about.bmp"), about_picture(), 8)
    write_bmp(os.path.join(images, "lcd_logo.bmp"), logo(22), 32)
    write_bmp(os.path.join(images, "lcd_plate.bmp"), plate(230, 129), 24)
    for variant in range(5):
        write_bmp(os.path.join(images, "lcd_background%d.bmp" % variant), background(variant), 24)
    write_bmp(os.path.join(images, "button_rotate.bmp"), button_image(0), 32)
    write_bmp(os.path.join(images, "button_panzoom.bmp"), button_image(1), 32)

    # Seventeen icon images: nine for the dialog's icon, eight for the LCD message box.
    write_ico(os.path.join(images, "plugin.ico"),
              [(logo(s), d) for s in (16, 24, 32, 48) for d in (8, 32)] + [(logo(32), 4)])
    write_ico(os.path.join(images, "message.ico"),
              [(menu_icon("help") if s == 16 else logo(s), d)
               for s in (16, 24, 32, 48) for d in (8, 32)])

    write_gif(os.path.join(text, "qvxbuttonmapping.gif"), menu_icon("mapping"))
    write_gif(os.path.join(text, "qvxhelp.gif"), menu_icon("help"))


if __name__ == "__main__":
    main()
