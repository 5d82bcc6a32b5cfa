#!/usr/bin/env bash
# Draws the pictures of V5Strings.dll from their vector sources. The results are committed: run this only after a
# source has changed. Needs rsvg-convert (librsvg2-bin), convert (imagemagick) and icotool (icoutils).
#
# <name>-16.svg is drawn for 16 pixels, each shape on whole pixels; <name>.svg serves 32 pixels and more.
set -eu
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for name in plain data config user audit; do
    rsvg-convert -w 16 -h 16 "$name-16.svg" -o "$work/$name-16.png"
    for size in 32 48 64; do
        rsvg-convert -w $size -h $size "$name.svg" -o "$work/$name-$size.png"
    done
    # The largest, for displays of twice the usual density, is kept compressed: it would be a third of all pictures.
    convert "$work/$name-64.png" -strip -define png:compression-level=9 "PNG32:$work/$name-64.png"
    icotool -c -o "$name.ico" "$work/$name"-{16,32,48}.png --raw="$work/$name-64.png"
done
icotool -c -o plain-16.ico "$work/plain-16.png"

# 256 colours: one palette byte a pixel, plain Windows 3 bitmaps.
for name in logo full; do
    rsvg-convert "$name.svg" -o "$work/$name.png"
    convert "$work/$name.png" -dither FloydSteinberg -colors 256 -type Palette -compress none "BMP3:$name.bmp"
done
