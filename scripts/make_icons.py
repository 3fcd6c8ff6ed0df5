#!/usr/bin/env python3
"""Draws the program's two icons (a gold V on a rounded tile) and writes them as .ico files.

Run once when the art changes; the .ico files are committed under app/resources."""
import struct, sys, math, os

def tile(size, bg, fg, ring):
    px = []
    r = size * 0.22
    for y in range(size):
        row = []
        for x in range(size):
            cx, cy = x + 0.5, y + 0.5
            # rounded square mask
            dx = max(r - cx, 0, cx - (size - r)); dy = max(r - cy, 0, cy - (size - r))
            inside = math.hypot(dx, dy) <= r
            if not inside:
                row.append((0, 0, 0, 0)); continue
            edge = r - math.hypot(dx, dy) < size * 0.06 or min(cx, cy, size - cx, size - cy) < size * 0.06
            col = ring if edge else bg
            # the V: two strokes from the top corners to the bottom middle
            u, v = cx / size, cy / size
            w = 0.085
            for (x0, y0, x1, y1) in ((0.22, 0.2, 0.5, 0.8), (0.78, 0.2, 0.5, 0.8)):
                t = max(0.0, min(1.0, ((u - x0) * (x1 - x0) + (v - y0) * (y1 - y0)) / ((x1 - x0) ** 2 + (y1 - y0) ** 2)))
                if math.hypot(u - (x0 + t * (x1 - x0)), v - (y0 + t * (y1 - y0))) < w:
                    col = fg
            row.append(col + (255,))
        px.append(row)
    return px

def bmp_entry(px):
    size = len(px)
    header = struct.pack('<IiiHHIIiiII', 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    data = b''.join(bytes((b, g, r, a)) for row in reversed(px) for (r, g, b, a) in row)
    mask_row = ((size + 31) // 32) * 4
    mask = b''
    for row in reversed(px):
        bits = 0; out = bytearray(mask_row)
        for x, p in enumerate(row):
            if p[3] == 0: out[x // 8] |= 0x80 >> (x % 8)
        mask += bytes(out)
    return header + data + mask

def write_ico(path, images):
    out = struct.pack('<HHH', 0, 1, len(images))
    offset = 6 + 16 * len(images)
    blobs = []
    for px in images:
        blob = bmp_entry(px); size = len(px)
        out += struct.pack('<BBBBHHII', size % 256, size % 256, 0, 0, 1, 32, len(blob), offset)
        offset += len(blob); blobs.append(blob)
    with open(path, 'wb') as f:
        f.write(out + b''.join(blobs))

here = os.path.join(os.path.dirname(__file__), '..', 'app', 'resources')
program = [tile(s, (28, 40, 86), (236, 190, 72), (90, 120, 200)) for s in (16, 32, 48)]
tray = [tile(s, (120, 28, 36), (250, 230, 160), (200, 90, 90)) for s in (16, 32, 48)]
write_ico(os.path.join(here, 'vrlboot.ico'), program)
write_ico(os.path.join(here, 'vrltray.ico'), tray)
