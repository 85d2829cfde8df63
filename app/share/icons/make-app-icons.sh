#!/bin/sh
# Renders the application icon's PNG sizes from the SVG beside this script (needs rsvg-convert,
# Debian's librsvg2-bin). The PNGs are committed, so neither the build nor the packages need it.
set -e
cd "$(dirname "$0")"
for size in 16 22 24 32 48 64 128 256; do
  mkdir -p "${size}x${size}"
  rsvg-convert -w "$size" -h "$size" parvex-config.svg -o "${size}x${size}/parvex-config.png"
done
