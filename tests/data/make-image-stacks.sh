#!/bin/bash
# Writes the small image stacks under tests/data/{png,tiff,jpeg,bmp}/ with ImageMagick, as users
# have them: three 7 x 5 slices named <variant>_000 to _002. Run once; the files are kept in git.
# Slice z, pixel (x, y) from the top has the grey value v = 20 + 28 x + 4 y + z; colour slices
# have red v, green 255 - v, blue 128; 16-bit slices hold v * 256 + 255 - v, so that only the
# high byte gives v; mask slices are 255 where x + y + z is odd, else 0. The width of 7 makes
# BMP rows need padding.
set -euo pipefail
cd "$(dirname "$0")"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

pnm() { # kind z -> a plain PNM of slice z on stdout
    awk -v kind="$1" -v z="$2" 'BEGIN {
        w = 7; h = 5
        if (kind == "grey8")  printf "P2\n%d %d\n255\n", w, h
        if (kind == "grey16") printf "P2\n%d %d\n65535\n", w, h
        if (kind == "rgb8")   printf "P3\n%d %d\n255\n", w, h
        if (kind == "rgb16")  printf "P3\n%d %d\n65535\n", w, h
        if (kind == "mask")   printf "P2\n%d %d\n255\n", w, h
        for (y = 0; y < h; ++y) {
            for (x = 0; x < w; ++x) {
                v = 20 + 28 * x + 4 * y + z
                if (kind == "grey8")  printf " %d", v
                if (kind == "grey16") printf " %d", v * 256 + 255 - v
                if (kind == "rgb8")   printf " %d %d %d", v, 255 - v, 128
                if (kind == "rgb16")  printf " %d %d %d", v * 256 + 255 - v, (255 - v) * 257, 128 * 257
                if (kind == "mask")   printf " %d", ((x + y + z) % 2) ? 255 : 0
            }
            printf "\n"
        }
    }'
}

make() { # dir variant kind extension convert-options...
    local dir=$1 variant=$2 kind=$3 ext=$4
    shift 4
    mkdir -p "$dir"
    for z in 0 1 2; do
        pnm "$kind" "$z" > "$tmp/in.pnm"
        convert "$tmp/in.pnm" "$@" "$dir/${variant}_00$z.$ext"
    done
}

make png grey8 grey8 png -depth 8 -type Grayscale -define png:exclude-chunk=date,time
make png grey16 grey16 png -depth 16 -type Grayscale -define png:exclude-chunk=date,time
make png rgb8 rgb8 png -depth 8 -type TrueColor -define png:color-type=2 -define png:exclude-chunk=date,time
make png interlaced grey8 png -depth 8 -type Grayscale -interlace PNG -define png:exclude-chunk=date,time

make tiff grey8 grey8 tif -depth 8 -type Grayscale -compress None
make tiff grey16 grey16 tif -depth 16 -type Grayscale -compress LZW
make tiff rgb8 rgb8 tif -depth 8 -type TrueColor -compress Zip
make tiff rgb16 rgb16 tif -depth 16 -type TrueColor -compress None
make tiff palette rgb8 tif -type Palette -compress None
make tiff tiled16 grey16 tif -depth 16 -type Grayscale -define tiff:tile-geometry=16x16
make tiff planar rgb8 tif -depth 8 -type TrueColor -interlace Plane
make tiff mask mask tif -type Bilevel -compress Group4

make jpeg grey grey8 jpg -type Grayscale -quality 95
make jpeg rgb rgb8 jpg -type TrueColor -quality 95 -sampling-factor 1x1

make bmp grey8 grey8 bmp -type Palette
make bmp grey8raw grey8 bmp -type Palette -compress None
make bmp rgb24 rgb8 bmp -type TrueColor
make bmp rgba32 rgb8 bmp -type TrueColorAlpha
make bmp mask mask bmp -type Bilevel
