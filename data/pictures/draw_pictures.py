#!/usr/bin/env python3
"""Draws the window's pictures as PNG files at twice their size on screen.

Plain shapes only, antialiased by drawing each pixel as 4x4 samples. Run it
in this folder; the PNG files it writes are kept in the repository.
The application icon, icon100.png, is rendered from ../icon.svg instead.
"""
import math
import struct
import zlib

SCALE = 2  # device pixels per logical pixel
SAMPLES = 4


def write_png(name, width, height, pixels):
    """pixels: rows of (r, g, b, a) tuples, 0..255."""
    raw = b"".join(
        b"\x00" + b"".join(bytes(p) for p in row) for row in pixels)

    def chunk(kind, data):
        body = kind + data
        return (struct.pack(">I", len(data)) + body +
                struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF))

    png = (b"\x89PNG\r\n\x1a\n" +
           chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)) +
           chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))
    with open(name, "wb") as out:
        out.write(png)


def render(name, width, height, shade):
    """shade(x, y) gives (r, g, b, a) in 0..1 at a point in logical pixels,
    or None for transparent."""
    w, h = width * SCALE, height * SCALE
    rows = []
    for py in range(h):
        row = []
        for px in range(w):
            acc = [0.0, 0.0, 0.0, 0.0]
            for sy in range(SAMPLES):
                for sx in range(SAMPLES):
                    x = (px + (sx + 0.5) / SAMPLES) / SCALE
                    y = (py + (sy + 0.5) / SAMPLES) / SCALE
                    c = shade(x, y)
                    if c is None:
                        continue
                    r, g, b, a = c
                    acc[0] += r * a
                    acc[1] += g * a
                    acc[2] += b * a
                    acc[3] += a
            n = SAMPLES * SAMPLES
            a = acc[3] / n
            if a > 0:
                pixel = tuple(round(255 * min(1.0, v / acc[3])) for v in acc[:3])
            else:
                pixel = (0, 0, 0)
            row.append(pixel + (round(255 * a),))
        rows.append(row)
    write_png(name, w, h, rows)


def mix(a, b, t):
    return tuple(a[i] + (b[i] - a[i]) * t for i in range(len(a)))


def lookup_button(pressed):
    """A round button with a magnifying glass, 30 by 30."""
    top = (0.97, 0.97, 0.98) if not pressed else (0.62, 0.70, 0.82)
    bottom = (0.80, 0.82, 0.86) if not pressed else (0.45, 0.55, 0.72)
    rim = (0.42, 0.45, 0.52)
    glass = (0.20, 0.22, 0.28) if not pressed else (0.05, 0.08, 0.15)

    def shade(x, y):
        d = math.hypot(x - 15, y - 15)
        if d > 14:
            return None
        if d > 13:
            return rim + (1.0,)
        color = mix(top, bottom, y / 30)
        # The glass: a ring and a handle to the lower right.
        ring = math.hypot(x - 13.5, y - 13.5)
        if 4.2 <= ring <= 6.0:
            return glass + (1.0,)
        u, v = x - 13.5, y - 13.5
        along = (u + v) / math.sqrt(2)
        across = abs(u - v) / math.sqrt(2)
        if 5.8 <= along <= 10.5 and across <= 1.3:
            return glass + (1.0,)
        return color + (1.0,)
    return shade


def dimple(x, y):
    """The grip in the middle of the splitter: a small sunk dot, 5 by 5."""
    d = math.hypot(x - 2.5, y - 2.5)
    if d > 2.4:
        return None
    light = 0.35 + 0.25 * (y / 5)
    return (light, light, light + 0.03, 1.0)


def mode_button(kind, on, width):
    """Dictionary mode: one character over a line. Converter mode: lines of
    text. Selected buttons are darker."""
    face = (0.93, 0.93, 0.94) if not on else (0.55, 0.62, 0.74)
    ink = (0.25, 0.27, 0.32) if not on else (1.0, 1.0, 1.0)
    edge = (0.50, 0.52, 0.58)

    def shade(x, y):
        if x < 0.5 or y < 0.5 or x > width - 0.5 or y > 17.5:
            return None
        if x < 1.5 or y < 1.5 or x > width - 1.5 or y > 16.5:
            return edge + (1.0,)
        if kind == "dict":
            if 6 <= x <= 12 and 4 <= y <= 10 and (
                    abs(x - 9) < 0.8 or abs(y - 7) < 0.8 or
                    abs(x - 6.4) < 0.6 or abs(x - 11.6) < 0.6):
                return ink + (1.0,)
            if 5 <= x <= 13 and 12.5 <= y <= 13.5:
                return ink + (1.0,)
        else:
            for line, end in ((5, width - 5), (8.5, width - 7), (12, width - 5)):
                if 5 <= x <= end and abs(y - line) < 0.7:
                    return ink + (1.0,)
        return face + (1.0,)
    return shade


if __name__ == "__main__":
    render("lookupbutton.png", 30, 30, lookup_button(False))
    render("lookupbutton_on.png", 30, 30, lookup_button(True))
    render("dimple.png", 5, 5, dimple)
    render("dictmode.png", 18, 18, mode_button("dict", False, 18))
    render("dictmode_on.png", 18, 18, mode_button("dict", True, 18))
    render("convertermode.png", 19, 18, mode_button("conv", False, 19))
    render("convertermode_on.png", 19, 18, mode_button("conv", True, 19))
