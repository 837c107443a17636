#!/bin/sh
# Renders the icons of every size from the drawings, with rsvg-convert (librsvg2-bin). The results are kept beside them,
# so that building needs no renderer.
set -eu
cd "$(dirname "$0")"
for size in 16 22 24 32; do
    rsvg-convert -w "$size" -h "$size" com.ludarium.app-small.svg -o "$size.png"
done
for size in 48 64 128 256 512; do
    rsvg-convert -w "$size" -h "$size" com.ludarium.app.svg -o "$size.png"
done
