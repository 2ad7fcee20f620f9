#!/bin/sh
# Runs a Windows program of the win64 build under Wine. When the caller has no
# display, it takes the virtual one that the tests' Wine fixture started: its
# number is in the file named by QMCSV_XVFB_FILE.
if [ -z "${DISPLAY:-}" ] && [ -n "${QMCSV_XVFB_FILE:-}" ] && [ -s "$QMCSV_XVFB_FILE" ]; then
  DISPLAY=":$(cat "$QMCSV_XVFB_FILE")"
  export DISPLAY
fi
exec "${QMCSV_WINE:-wine}" "$@"
