#!/usr/bin/env bash
# Draws src/plugin/csv.png, the 32x32 image "csv" of the plug-in's actions: a
# small sheet with a table grid and a green "CSV" label. The PNG is committed;
# run this (ImageMagick 6, DejaVu fonts) only to change the picture.
set -euo pipefail
repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
out=${1:-$repo/src/plugin/csv.png}
font=/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf

/usr/bin/convert -size 32x32 xc:none \
  -fill white -stroke '#5f6b7a' -strokewidth 1 -draw 'rectangle 2.5,1.5 29.5,30.5' \
  -stroke none -fill '#cfe3d2' -draw 'rectangle 3,2 29,7' \
  -stroke '#9aa5b1' -strokewidth 1 \
  -draw 'line 3,8.5 29,8.5' -draw 'line 3,13.5 29,13.5' \
  -draw 'line 11.5,2 11.5,17' -draw 'line 20.5,2 20.5,17' \
  -stroke none -fill '#2e7d32' -draw 'rectangle 0,17 31,29' \
  -font "$font" -pointsize 10 -fill white -gravity north -annotate +0+17.5 'CSV' \
  -strip -define png:exclude-chunks=date,time -define png:color-type=6 \
  "PNG32:$out"
echo "wrote $out ($(stat -c %s "$out") bytes)"
