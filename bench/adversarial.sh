#!/usr/bin/env bash
# Hostile inputs through qmhost, native and win64 under Wine: each input is
# generated into a temporary folder, run as a task, and reported in one
# markdown table row with its outcome, wall time and peak memory.
#
#   bench/adversarial.sh [NAME...]     (all inputs without names)
#
# Needs build/native and build/win64 built; without qmhost.exe or Wine the
# win64 columns say so. Peak memory: natively the "Maximum resident set size"
# of /usr/bin/time; under Wine the VmHWM (high-water resident memory) of the
# qmhost.exe process itself, read from /proc every 20 ms while it runs, so
# the wine loader and the wineserver are not counted, and a peak in the last
# 20 ms before the exit could be missed. Times include starting the process
# (under Wine about half a second with the wineserver kept running).
set -u
root=$(cd "$(dirname "$0")/.." && pwd)
native=$root/build/native/bin/qmhost
win=$root/build/win64/bin/qmhost.exe
work=$(mktemp -d /tmp/qmcsv_adversarial.XXXXXX)
chmod 755 "$work"
cleanup() {
  chmod -R u+w "$work" 2>/dev/null
  rm -rf "$work"
}
trap cleanup EXIT
export WINEPREFIX=${WINEPREFIX:-$root/build/win64/wineprefix} WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
wine_ok=0
if [[ -x $win ]] && command -v wine >/dev/null && [[ -d $WINEPREFIX ]]; then
  wine_ok=1
  wineserver -p5 2>/dev/null  # kept 5 s past its last client, so no task times the server start
fi

# ---- inputs -------------------------------------------------------------------

python3 - "$work" <<'EOF'
import os, random, sys
w = sys.argv[1]
def put(name, data):
    with open(os.path.join(w, name), "wb") as f:
        f.write(data)
def repeat(name, piece, count, head=b""):
    with open(os.path.join(w, name), "wb") as f:
        f.write(head)
        block = piece * 100000
        for _ in range(count // 100000):
            f.write(block)
        f.write(piece * (count % 100000))
put("empty.csv", b"")
put("bom.csv", b"\xef\xbb\xbf")
put("invalid-utf8.csv", b"a;\xff\xfe\xc0\xaf;\xed\xa0\x80\r\n\xe2\x82;\xf4\x90\x80\x80\r\n")
put("surrogates-utf16.csv", "a;".encode("utf-16-le") + b"\x00\xd8;\x00\x00\xdc\r\x00\n\x00\x01")
random.seed(7)
put("random.bin", bytes(random.getrandbits(8) for _ in range(1 << 20)))
os.mkdir(os.path.join(w, "folder.csv"))
repeat("million-columns.csv", b"c;", 1000000)
repeat("cell-100mb.csv", b"x", 100000000)
repeat("line-200mb.csv", b"abcdefghi;", 20000000)
put("first-line-32765.csv", b"y" * 32765 + b"\r\n1\r\n")
with open(os.path.join(w, "zeros.csv"), "wb") as f:
    f.truncate(256 << 20)
repeat("rows-30000.csv", b"x\r\n", 30000)
repeat("wide-300000.csv", b"m;", 300000)
os.mkdir(os.path.join(w, "locked"))
put(os.path.join("locked", "out.csv"), b"old")
EOF
chmod 555 "$work/locked"
chmod 444 "$work/locked/out.csv"

open_file() {  # FILE ENCODING [HEADER]
  printf '[A_CSV_OPEN]\nsource=1\nfilename=%s\nencoding=%s\nheaderline=%s\n\n' "$work/$1" "$2" "${3:-0}"
}
info() { printf '[A_CSV_INFO]\nrecordcountvar=rows\ncolcountvar=cols\n\n[print]\ntext=table {rows}x{cols}\n\n'; }
text_open() {  # LINES...
  printf '[A_CSV_OPEN]\nsource=2\nlinecount=%s\n' $#
  local i=0
  for line in "$@"; do printf 'line%08X=%s\n' $i "$line"; i=$((i + 1)); done
  printf '\n'
}
task() { cat > "$work/$1.qmt"; }

{ open_file empty.csv 2; info; } | task empty
{ open_file bom.csv 2; info; } | task bom-only
{ open_file invalid-utf8.csv 2; info; } | task invalid-utf8
{ open_file surrogates-utf16.csv 3; info; } | task lone-surrogates
{ open_file random.bin 2; info; } | task random-bytes
{ open_file missing.csv 2; info; } | task missing-file
{ open_file folder.csv 2; info; } | task folder
{ open_file million-columns.csv 2; info; } | task million-columns
{ open_file cell-100mb.csv 2; info; } | task cell-100mb
{ open_file line-200mb.csv 2; info; } | task line-200mb
{ open_file line-200mb.csv 2 1; info; } | task line-200mb-header
{ open_file first-line-32765.csv 2 1; info; } | task first-line-32765
{ open_file zeros.csv 2; info; } | task zeros-256mb
{
  text_open "head" "$(head -c 100000 /dev/zero | tr '\0' a)!"
  printf '[A_CSV_FILTER]\nconditionscount=1\ncondition00000000=1,(a+)+$,0,1\n\n'
  info
} | task regex-backtrack
{
  open_file rows-30000.csv 2
  printf '[A_CSV_WRITECELLS]\ncellcount=30000\n'
  for ((i = 0; i < 30000; i++)); do printf 'row%d=%d\ncol%d=1\nval%d=v%d\n' $i $((i + 1)) $i $i $i; done
  printf '\n'
  info
} | task write-cells-30000
{
  open_file rows-30000.csv 2
  printf '[A_CSV_FILTER]\nconditionscount=30000\n'
  for ((i = 0; i < 30000; i++)); do printf 'condition%08X=1,x,0,0\n' $i; done
  printf '\n'
  info
} | task conditions-30000
{
  printf '[A_CSV_OPEN]\nsource=2\nlinecount=30000\n'
  for ((i = 0; i < 30000; i++)); do printf 'line%08X=%d;text\n' $i $i; done
  printf '\n'
  info
} | task text-30000-lines
{
  printf '[A_CSV_OPEN]\nsource=2\nlinecount=2147483647\nline00000000=first\nline7FFFFFFE=last\n\n'
  info
} | task linecount-max
{
  text_open "a;b"
  printf '[A_CSV_MERGE]\nsource=1\nfilename=%s\nencoding=2\najustcolumns=1\n\n' "$work/wide-300000.csv"
  info
} | task merge-300000-fewer
{
  open_file wide-300000.csv 2
  printf '[A_CSV_MERGE]\nsource=2\nlinecount=1\nline00000000=a;b\najustcolumns=1\n\n'
  info
} | task merge-300000-more
{
  text_open "a;b" "c;d"
  printf '[A_CSV_SAVE]\nsavetofile=1\ntargetfilename=%s\ndelimiter=4\notherchar=\nnotchangeformat=0\n\n' "$work/delim0.csv"
  printf '[print]\ntext=saved\n\n'
} | task save-delimiter-0
{
  text_open "a;b"
  printf '[A_CSV_SAVE]\nsavetofile=1\ntargetfilename=%s\n\n' "$work/locked/out.csv"
  printf '[print]\ntext=saved\n\n'
} | task read-only-target

all=(empty bom-only invalid-utf8 lone-surrogates random-bytes missing-file folder million-columns cell-100mb
  line-200mb line-200mb-header first-line-32765 zeros-256mb regex-backtrack write-cells-30000 conditions-30000
  text-30000-lines linecount-max merge-300000-fewer merge-300000-more save-delimiter-0 read-only-target)
native_only=" read-only-target "
names=("$@")
((${#names[@]})) || names=("${all[@]}")

# ---- running --------------------------------------------------------------------

# What the task came to: the printed result, or the first error it reported.
outcome() {  # TRANSCRIPT EXIT
  local line
  line=$(grep -m1 -o '"table [0-9]*x[0-9]*"\|"saved"' "$1" | tr -d '"')
  if [[ -z $line ]]; then
    line=$(grep -m1 -o 'last error [0-9]* (task [0-9]*): ".*"\|exception ".*"' "$1" | sed 's/^last error [0-9]* (task [0-9]*): //')
  fi
  [[ -z $line ]] && line=$(tail -n 1 "$1")
  line=${line//$work\//}
  line=${line//|/\\|}
  ((${#line} > 70)) && line="${line:0:67}..."
  printf 'exit %s: %s' "$2" "$line"
}

run_native() {  # NAME
  local cmd=("$native" run "$work/$1.qmt")
  if [[ $1 == read-only-target && $(id -u) == 0 ]]; then
    cmd=(setpriv --reuid=65534 --regid=65534 --clear-groups "${cmd[@]}")  # root would write anyway
  fi
  /usr/bin/time -f '%e %M' -o "$work/time" timeout 600 "${cmd[@]}" > "$work/out" 2>&1
  local code=$? t kb
  read -r t kb < <(tail -n 1 "$work/time")
  printf '%s | %s s | %s MB' "$(outcome "$work/out" $code)" "$t" "$((kb / 1024))"
}

# The larger VmHWM of the started process and its children: Wine runs
# qmhost.exe in the process it starts, or in a child of it.
wine_peak_kb() {  # PID
  local p peak=0 kb
  for p in "$1" $(cat /proc/"$1"/task/*/children 2>/dev/null); do
    tr '\0' ' ' 2>/dev/null < "/proc/$p/cmdline" | grep -q 'qmhost\.exe' || continue
    kb=$(awk '/^VmHWM:/ {print $2}' "/proc/$p/status" 2>/dev/null)
    [[ -n $kb ]] && ((kb > peak)) && peak=$kb
  done
  echo "$peak"
}

run_wine() {  # NAME
  if [[ $native_only == *" $1 "* ]]; then printf 'native only | | '; return; fi
  if ((!wine_ok)); then printf 'no win64 build or Wine | | '; return; fi
  local start end code peak=0 kb pid
  start=$(date +%s.%N)
  wine "$win" run "$work/$1.qmt" > "$work/out" 2>&1 &
  pid=$!
  while kill -0 "$pid" 2>/dev/null; do
    kb=$(wine_peak_kb "$pid")
    ((kb > peak)) && peak=$kb
    sleep 0.02
  done
  wait "$pid"
  code=$?
  end=$(date +%s.%N)
  printf '%s | %.2f s | %s MB' "$(outcome "$work/out" $code)" "$(echo "$end - $start" | bc)" "$((peak / 1024))"
}

echo "load: $(cut -d' ' -f1-3 /proc/loadavg), $(nproc) cores"
echo
echo "| input | native outcome | native time | native peak RSS | win64 outcome | win64 time | win64 peak |"
echo "|---|---|---|---|---|---|---|"
for name in "${names[@]}"; do
  echo "| $name | $(run_native "$name") | $(run_wine "$name") |"
done
