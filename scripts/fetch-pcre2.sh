#!/usr/bin/env bash
# Unpacks Debian's own pcre2 source package (upstream tarball plus Debian's
# changes) into deps/pcre2, for the static win64 build. The source comes from
# `apt-get source`, so a deb-src entry for the machine's Debian suite must be
# configured (scripts/setup.sh adds it). Nothing is downloaded from anywhere else.
#
# Usage: scripts/fetch-pcre2.sh [DEPS_DIR]   (default: <repo>/deps)
# Does nothing when DEPS_DIR/pcre2 is already unpacked.
set -euo pipefail

repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
deps=${1:-$repo/deps}
dest=$deps/pcre2

mkdir -p "$deps"
# Two builds may be configured at once; only one of them unpacks.
exec 9>"$deps/.pcre2.lock"
flock 9

if [[ -f $dest/CMakeLists.txt && -f $dest/.debian-version ]]; then
  exit 0
fi

if ! apt-cache showsrc pcre2 2>/dev/null | grep -q '^Package: pcre2$'; then
  echo "fetch-pcre2: apt knows no source package pcre2." >&2
  echo "fetch-pcre2: run 'sudo bash scripts/setup.sh' (adds the deb-src entry and runs apt-get update)." >&2
  exit 1
fi

work=$(mktemp -d "$deps/.pcre2-fetch.XXXXXX")
trap 'rm -rf "$work"' EXIT
(
  cd "$work"
  # As root apt warns that the download runs unsandboxed; that is expected here.
  apt-get source --quiet pcre2 2>&1 | grep -v 'unsandboxed as root' || true
)
src=$(find "$work" -mindepth 1 -maxdepth 1 -type d -name 'pcre2-*' | head -n 1)
dsc=$(find "$work" -mindepth 1 -maxdepth 1 -name 'pcre2_*.dsc' | head -n 1)
if [[ -z $src || -z $dsc || ! -f $src/CMakeLists.txt ]]; then
  echo "fetch-pcre2: apt-get source pcre2 did not produce an unpacked source tree." >&2
  exit 1
fi
sed -n 's/^Version: //p' "$dsc" | head -n 1 >"$src/.debian-version"

rm -rf "$dest"
mv "$src" "$dest"
echo "fetch-pcre2: pcre2 $(cat "$dest/.debian-version") unpacked in $dest"
