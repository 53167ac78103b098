#!/usr/bin/env python3
"""Writes the small data of datakinds.ovp beside this file. Run once; the files are kept in git.

flow_000.txt .. flow_003.txt: stream lines, 12 helices rising around a circle of seeds, one point
per row "x y z value" (the value is the height), a blank row between lines; each step turns the
helices further and makes them longer, so the lines blend between steps by their index.
terrain.f32: a raw height grid ("HF32", width, height, float32 heights, row y = 0 first), 48 x 48
hills with heights 0 .. 1.
blob.df3: a df3 volume (three big-endian 16-bit sizes, then bytes), 32 voxels a side, two balls
whose values fall from 255 at their centres; an iso value between 60 and 200 shows them joined or
apart.
"""
import math
import os
import struct

here = os.path.dirname(os.path.abspath(__file__))

for step in range(4):
    rows = []
    for k in range(12):
        seed = 2 * math.pi * k / 12
        for i in range(30 + 5 * step):
            a = seed + 0.15 * i + 0.3 * step
            r = 0.25 + 0.01 * i
            z = -0.5 + 0.03 * i
            rows.append("%.4f %.4f %.4f %.4f" % (r * math.cos(a), r * math.sin(a), z, z + 0.5))
        rows.append("")
    with open(os.path.join(here, "flow_%03d.txt" % step), "w") as f:
        f.write("# x y z value: helices around 12 seeds, step %d\n" % step)
        f.write("\n".join(rows) + "\n")

w = h = 48
with open(os.path.join(here, "terrain.f32"), "wb") as f:
    f.write(b"HF32" + struct.pack("<II", w, h))
    for y in range(h):
        for x in range(w):
            u, v = x / (w - 1), y / (h - 1)
            z = 0.5 + 0.3 * math.sin(6 * u) * math.cos(5 * v) + 0.2 * math.exp(-((u - 0.6) ** 2 + (v - 0.4) ** 2) * 20)
            f.write(struct.pack("<f", max(0.0, min(1.0, z))))

n = 32
with open(os.path.join(here, "blob.df3"), "wb") as f:
    f.write(struct.pack(">HHH", n, n, n))
    centres = [(11, 15, 16), (21, 17, 16)]
    data = bytearray()
    for z in range(n):
        for y in range(n):
            for x in range(n):
                v = sum(255 * math.exp(-((x - cx) ** 2 + (y - cy) ** 2 + (z - cz) ** 2) / 40.0) for cx, cy, cz in centres)
                data.append(int(min(255, v)))
    f.write(bytes(data))
