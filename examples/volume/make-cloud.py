#!/usr/bin/env python3
"""Writes cloud.0000.df3 and cloud.0001.df3 beside this script: two steps of a 16-cube volume in
the df3 layout (three big-endian 16-bit sizes, then one byte per voxel, x fastest), a ball with a
dense core (255 out to half its radius, then falling to 0 at its edge) that grows and drifts
along x from the first step to the second."""
import math
import os
import struct

N = 16


def step(radius, cx):
    out = bytearray(struct.pack(">hhh", N, N, N))
    c = (N - 1) / 2.0
    for z in range(N):
        for y in range(N):
            for x in range(N):
                r = math.sqrt((x - cx) ** 2 + (y - c) ** 2 + (z - c) ** 2)
                out.append(max(0, min(255, int(510 * (1.0 - r / radius)))) if r < radius else 0)
    return bytes(out)


here = os.path.dirname(os.path.abspath(__file__))
for i, (radius, cx) in enumerate([(5.0, 6.0), (7.0, 8.5)]):
    with open(os.path.join(here, "cloud.%04d.df3" % i), "wb") as f:
        f.write(step(radius, cx))
