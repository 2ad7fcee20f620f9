#!/usr/bin/env bash
# The project's one test command: checks the machine, configures and builds the
# native, win64, sanitize and fuzz presets, then runs CTest for each: native,
# win64 (under Wine, on a virtual display when there is none), sanitize (every
# test under AddressSanitizer and UndefinedBehaviorSanitizer) and fuzz (each
# fuzz target's seeds, then a short fixed-time run of it). Exits non-zero
# unless every build and every test run passes.
#
#   bash scripts/test.sh
#
# Environment: QMCSV_JOBS (build parallelism, default 2); QMCSV_PRESETS (the
# presets to run, default "native win64 sanitize fuzz").
set -uo pipefail

repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$repo"
jobs=${QMCSV_JOBS:-2}
read -r -a presets <<<"${QMCSV_PRESETS:-native win64 sanitize fuzz}"
start=$SECONDS

step() { printf '\n=== %s (%ds)\n' "$*" $((SECONDS - start)); }

step "machine"
if ((EUID == 0)); then
  bash scripts/setup.sh || exit 1
else
  bash scripts/setup.sh --check || {
    echo "test.sh: run 'sudo bash scripts/setup.sh' first" >&2
    exit 1
  }
fi

declare -A built summary
passed_total=0
failed_total=0
status=0

for preset in "${presets[@]}"; do
  step "configure and build $preset"
  if cmake --preset "$preset" && cmake --build --preset "$preset" -j "$jobs"; then
    built[$preset]=yes
  else
    built[$preset]=no
    summary[$preset]="build failed"
    status=1
  fi
done

for preset in "${presets[@]}"; do
  [[ ${built[$preset]} == yes ]] || continue
  step "test $preset"
  # Without a display the win64 tests start a virtual one themselves.
  run=(ctest --preset "$preset")
  log=$(mktemp)
  "${run[@]}" 2>&1 | tee "$log"
  rc=${PIPESTATUS[0]}
  line=$(grep -E '^[0-9]+% tests passed, [0-9]+ tests? failed out of [0-9]+' "$log" | tail -n 1)
  rm -f "$log"
  if [[ $line =~ ([0-9]+)\ tests?\ failed\ out\ of\ ([0-9]+) ]]; then
    passed_total=$((passed_total + BASH_REMATCH[2] - BASH_REMATCH[1]))
    failed_total=$((failed_total + BASH_REMATCH[1]))
    summary[$preset]=$line
  else
    summary[$preset]="ctest exited $rc without a summary"
  fi
  if ((rc != 0)); then
    status=1
  fi
done

step "summary"
for preset in "${presets[@]}"; do
  printf '%-9s %s\n' "$preset:" "${summary[$preset]:-not run}"
done
echo "tests: $passed_total passed, $failed_total failed"
exit $status
