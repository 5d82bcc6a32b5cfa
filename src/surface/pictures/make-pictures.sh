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
    # The larger ones, for dense displays, are kept compressed: they would be most of all pictures.
    for size in 48 64; do
        convert "$work/$name-$size.png" -strip -define png:compression-level=9 "PNG32:$work/$name-$size.png"
    done
    icotool -c -o "$name.ico" "$work/$name"-{16,32}.png --raw="$work/$name-48.png" --raw="$work/$name-64.png"
done
icotool -c -o plain-16.ico "$work/plain-16.png"

# 256 colours: one palette byte a pixel, plain Windows 3 bitmaps.
for name in logo full; do
    rsvg-convert "$name.svg" -o "$work/$name.png"
    convert "$work/$name.png" -dither FloydSteinberg -colors 256 -type Palette -compress none "BMP3:$name.bmp"
done
