#!/usr/bin/env bash
# Refreshes the user guide's pictures from the dialog tests' screenshots:
#
#   ctest --preset win64 -R editors          # the tests take the pictures
#   bash scripts/refresh-guide-pictures.sh    # docs/guide/images/ from them
#
# Every picture a guide page shows is copied anew from the screenshot of the
# same name; the tests take more shots than the guide shows, and those stay
# out. A picture the guide shows that the tests no longer take is named, and
# the script fails. To show a new shot, name it in a page, then run this.
set -euo pipefail

repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
shots=${1:-$repo/build/win64/screenshots}
images=$repo/docs/guide/images

if ! compgen -G "$shots/*_100*.png" >/dev/null; then
  echo "refresh-guide-pictures: no 100% screenshots in $shots; run ctest --preset win64 -R editors first" >&2
  exit 1
fi
mapfile -t shown < <(grep -ohE '\(images/[^)]+\.png\)' "$repo"/docs/guide/*.md | sed -E 's/^\(images\/(.*)\)$/\1/' | sort -u)
mkdir -p "$images"
missing=0
for name in "${shown[@]}"; do
  if [[ -f $shots/$name ]]; then
    cp "$shots/$name" "$images/$name"
  else
    echo "refresh-guide-pictures: the guide shows $name, which the tests no longer take" >&2
    missing=1
  fi
done
echo "refresh-guide-pictures: ${#shown[@]} pictures in docs/guide/images"
exit $missing
