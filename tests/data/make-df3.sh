#!/bin/sh
# Writes df3/ball.df3: an 8-cube in the df3 layout (three big-endian 16-bit sizes, then one byte
# per voxel, x fastest) holding a ball of value 200 (radius 3 about the centre) in zeros.
cd "$(dirname "$0")" && python3 - <<'PY'
import struct
n = 8
c = (n - 1) / 2.0
data = bytearray(struct.pack(">hhh", n, n, n))
for z in range(n):
    for y in range(n):
        for x in range(n):
            data.append(200 if (x - c) ** 2 + (y - c) ** 2 + (z - c) ** 2 <= 9.0 else 0)
open("df3/ball.df3", "wb").write(bytes(data))
PY
