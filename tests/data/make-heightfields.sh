#!/bin/bash
# Writes the small height fields under tests/data/heightfield/ with ImageMagick and awk. Run once;
# the files are kept in git. Pixel (x, y) from the top of a 5 x 4 picture, step s:
#   grey v = 10 + 40 x + 3 y + 5 s (8 bits); 16 bits: v * 256 + 7 (the low byte must count);
#   RGBA: red v, green 255 - v, blue 100, alpha 200.
# palette.png (indexed colour) and bits1.png (1 bit grey) are of a depth heights do not take.
# The raw grid grid_00s.f32: "HF32", width 3, height 2, heights h(x, y) = x + 10 y + 0.5 s.
set -euo pipefail
cd "$(dirname "$0")/heightfield"

pnm() { # kind step
    awk -v kind="$1" -v s="$2" 'BEGIN {
        w = 5; h = 4
        if (kind == "grey8")  printf "P2\n%d %d\n255\n", w, h
        if (kind == "grey16") printf "P2\n%d %d\n65535\n", w, h
        if (kind == "rgba")   printf "P3\n%d %d\n255\n", w, h
        for (y = 0; y < h; ++y) {
            for (x = 0; x < w; ++x) {
                v = 10 + 40 * x + 3 * y + 5 * s
                if (kind == "grey8")  printf " %d", v
                if (kind == "grey16") printf " %d", v * 256 + 7
                if (kind == "rgba")   printf " %d %d %d", v, 255 - v, 100
            }
            printf "\n"
        }
    }'
}
for s in 0 1; do
    pnm grey8 $s | convert pnm:- -depth 8 -define png:color-type=0 "PNG:grey8_00$s.png"
done
pnm grey16 0 | convert pnm:- -depth 16 -define png:color-type=0 PNG:grey16_000.png
pnm rgba 0 | convert pnm:- -alpha set -channel A -evaluate set 78.43% +channel -depth 8 \
    -define png:color-type=6 PNG:rgba8.png
pnm grey8 0 | convert pnm:- -colors 8 PNG8:palette.png
pnm grey8 0 | convert pnm:- -threshold 50% -depth 1 -define png:bit-depth=1 -define png:color-type=0 PNG:bits1.png
for s in 0 1; do
    awk -v s=$s 'BEGIN { printf "HF32"; printf "%c%c%c%c%c%c%c%c", 3, 0, 0, 0, 2, 0, 0, 0 }' > "grid_00$s.f32"
    python3 -c "import struct,sys; sys.stdout.buffer.write(b''.join(struct.pack('<f', x + 10 * y + 0.5 * $s) for y in range(2) for x in range(3)))" >> "grid_00$s.f32"
done
head -c 20 grid_000.f32 > short.f32
