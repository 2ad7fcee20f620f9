#!/usr/bin/env bash
# Runs a Windows program of the win64 build under Wine. When the caller has no
# display, it takes the virtual one that the tests' Wine fixture started: its
# number is in the file named by QMCSV_XVFB_FILE.
#
# The tests turn Wine's messages off (WINEDEBUG=-all), since they compare the
# programs' stderr. Wine's errors are still wanted when a program fails for
# Wine's own reasons (say, it never starts), so for such a run this turns
# Wine's error class on and moves its lines ("0024:err:...") out of the
# program's stderr into a file of their own in the prefix's
# qmcsv-wine-errors folder, headed by the command line; a run without any
# leaves no file. The folder is emptied when the fixture makes the prefix.
if [[ -z ${DISPLAY:-} && -n ${QMCSV_XVFB_FILE:-} && -s $QMCSV_XVFB_FILE ]]; then
  DISPLAY=":$(cat "$QMCSV_XVFB_FILE")"
  export DISPLAY
fi
if [[ ${WINEDEBUG:-} == -all && -n ${WINEPREFIX:-} ]] && mkdir -p "$WINEPREFIX/qmcsv-wine-errors" 2>/dev/null &&
  log=$(mktemp "$WINEPREFIX/qmcsv-wine-errors/XXXXXXXX.log" 2>/dev/null); then
  # "-all" first, so that Debian's wine script keeps its notes to itself.
  export WINEDEBUG=-all,err+all
  # The filter inherits the original stderr and ends once the program and
  # everything it started have closed theirs. GNU sed keeps the bytes as they
  # are, a last line without its newline included.
  exec 2> >(
    printf '%s\n' "$(date '+%F %T') $*" >"$log.head"
    LC_ALL=C sed -u -e "/^[0-9a-f]\{4\}:err:/{w $log" -e 'd}' >&2
    if [[ -s $log ]]; then cat "$log.head" "$log" >"$log.tmp" && mv -f "$log.tmp" "$log"; else rm -f "$log"; fi
    rm -f "$log.head"
  )
fi
exec "${QMCSV_WINE:-wine}" "$@"
