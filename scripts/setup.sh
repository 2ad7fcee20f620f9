#!/usr/bin/env bash
# Prepares a Debian 12 machine for both builds and their tests. Run as root:
#
#   sudo bash scripts/setup.sh           # install what is missing, fetch PCRE2's source
#   bash scripts/setup.sh --check        # only report what is missing (exit 1 if anything is)
#
# Repeated runs are quick: apt is left alone when everything is in place.
set -euo pipefail

repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
check_only=false
[[ ${1:-} == --check ]] && check_only=true

# What the builds and tests use, and why.
packages=(
  cmake ninja-build g++ pkg-config      # the native build
  libpcre2-dev                          # PCRE2 (16-bit) for the native build
  googletest libgtest-dev               # GoogleTest: sources for win64, library for native
  g++-mingw-w64-x86-64 g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix
  binutils-mingw-w64-x86-64 mingw-w64-tools   # the win64 cross build (windres, objdump)
  dpkg-dev                              # apt-get source unpacks with dpkg-source
  wine wine64                           # runs the win64 tests
  fonts-wine                            # fonts for the dialogs under Wine
  libxrender1 libxrandr2 libxi6 libxcursor1 libxcomposite1 libxinerama1 libxfixes3
                                        # X extensions Wine's display driver loads
  xvfb xauth                            # a display for Wine when there is none (xvfb-run)
  unicode-data                          # UnicodeData.txt for the case-folding table
  imagemagick fonts-dejavu-core         # scripts/make-csv-icon.sh
  clang-format                          # the format check (scripts/check-format.sh)
  clang libclang-rt-dev llvm            # the fuzz preset: clang, its libFuzzer and sanitizer
                                        # runtimes, llvm-symbolizer for readable reports
  libstb-dev                            # stb_image_write: the dialog tests save screenshots as PNG
  python3                               # scripts/guide.py: the user guide's field tables and its check
)

missing=()
for pkg in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${db:Status-Abbrev}' "$pkg" 2>/dev/null || true)
  [[ $status == ii* ]] || missing+=("$pkg")
done

# apt-get source needs a deb-src entry for this machine's Debian suite.
codename=$( . /etc/os-release && echo "${VERSION_CODENAME:-bookworm}")
src_file=/etc/apt/sources.list.d/qmcsv-src.sources
# True when some apt source already offers Debian's $codename main sources.
has_deb_src() {
  grep -hsE "^[[:space:]]*deb-src[[:space:]].*/debian/?[[:space:]]+$codename[[:space:]].*main" \
    /etc/apt/sources.list /etc/apt/sources.list.d/*.list | grep -q . && return 0
  local f
  for f in /etc/apt/sources.list.d/*.sources; do
    [[ -f $f ]] || continue
    awk -v suite="$codename" '
      function check() { if (types ~ /deb-src/ && uris ~ /\/debian\/?( |$)/ && (" " suites " ") ~ (" " suite " ") && comps ~ /main/) found = 1 }
      /^[[:space:]]*$/ { check(); types = uris = suites = comps = ""; next }
      /^Types:/      { types = $0 }
      /^URIs:/       { uris = $0 }
      /^Suites:/     { sub(/^Suites:[[:space:]]*/, ""); suites = $0 }
      /^Components:/ { comps = $0 }
      END { check(); exit found ? 0 : 1 }' "$f" && return 0
  done
  return 1
}
source_known() { apt-cache showsrc pcre2 2>/dev/null | grep -q '^Package: pcre2$'; }

if $check_only; then
  status=0
  if ((${#missing[@]})); then
    echo "setup: missing packages: ${missing[*]}"
    status=1
  fi
  if ! has_deb_src; then
    echo "setup: no deb-src entry (apt-get source pcre2 needs one)"
    status=1
  fi
  ((status == 0)) && echo "setup: all packages installed"
  exit $status
fi

need_update=false
if ! has_deb_src; then
  if ((EUID != 0)); then
    echo "setup: a deb-src entry must be added; run this script as root" >&2
    exit 1
  fi
  # deb822, signed like the machine's own Debian entries (a one-line deb-src
  # entry with no Signed-By would conflict with them).
  cat >"$src_file" <<SOURCES
Types: deb-src
URIs: http://deb.debian.org/debian
Suites: $codename
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
SOURCES
  echo "setup: added $src_file"
  need_update=true
fi
if ((${#missing[@]})) || ! source_known; then
  need_update=true
fi

if $need_update || ((${#missing[@]})); then
  if ((EUID != 0)); then
    echo "setup: missing packages: ${missing[*]:-none}; run this script as root" >&2
    exit 1
  fi
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -q
fi
if ((${#missing[@]})); then
  echo "setup: installing ${missing[*]}"
  apt-get install -y -q --no-install-recommends -o Dpkg::Use-Pty=0 "${missing[@]}"
else
  echo "setup: all packages installed"
fi

# Debian's pcre2 source package, for the static win64 library.
bash "$repo/scripts/fetch-pcre2.sh"
