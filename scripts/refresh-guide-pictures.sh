#!/usr/bin/env bash
# Copies the dialog tests' screenshots at 100% scale into the user guide:
#
#   ctest --preset win64 -R editors          # the tests take the pictures
#   bash scripts/refresh-guide-pictures.sh    # docs/guide/images/ from them
#
# The guide's pictures are replaced as a whole, so a picture the tests no
# longer take goes too; guide_check then names a page that still shows it.
set -euo pipefail

repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
shots=${1:-$repo/build/win64/screenshots}
images=$repo/docs/guide/images

shopt -s nullglob
pictures=("$shots"/*_100_*.png "$shots"/*_100.png)
if ((${#pictures[@]} == 0)); then
  echo "refresh-guide-pictures: no 100% screenshots in $shots; run ctest --preset win64 -R editors first" >&2
  exit 1
fi
mkdir -p "$images"
rm -f "$images"/*.png
cp "${pictures[@]}" "$images/"
echo "refresh-guide-pictures: ${#pictures[@]} pictures in docs/guide/images"
