#!/usr/bin/env bash
# The project's one test command: checks the machine, configures and builds the
# native, win64, sanitize and fuzz presets, then runs CTest for each: native,
# win64 (under Wine, on a virtual display when there is none), sanitize (every
# test under AddressSanitizer and UndefinedBehaviorSanitizer) and fuzz (each
# fuzz target's seeds, then a short fixed-time run of it). Exits non-zero
# unless every build and every test run passes. At its end it names each test
# that failed, per preset, and any file the tests left in the source tree.
#
# The win64 tests mostly wait on Wine and the dialogs' windows, so they run
# while the presets after win64 build; their output follows the others'.
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

declare -A built summary failures
passed_total=0
failed_total=0
status=0
logs=$(mktemp -d)
trap 'rm -rf "$logs"' EXIT
background=

# Runs one preset's CTest into $logs/<preset>.log, its exit code into .rc.
run_tests() {
  ctest --preset "$1" >"$logs/$1.log" 2>&1
  echo $? >"$logs/$1.rc"
}

# Wine's own errors, which cmake/wine-run.sh keeps out of the programs'
# output, a file per program that had any: shown with the win64 results, so
# that a program that failed for Wine's reasons says why.
wine_errors() {
  local dir=build/win64/wineprefix/qmcsv-wine-errors files
  files=$(find "$dir" -name '*.log' 2>/dev/null | sort)
  [[ -n $files ]] || return 0
  printf '\nWine reported errors for %d program run(s) (%s):\n' "$(wc -l <<<"$files")" "$dir"
  while IFS= read -r file; do head -n 20 "$file" | sed 's/^/  /'; done <<<"$files" | head -n 200
}

# The source tree before the first test: no test may write into it.
tree_state() { git -C "$repo" status --porcelain --untracked-files=normal --ignored 2>/dev/null; }
tree_before=

for ((i = 0; i < ${#presets[@]}; i++)); do
  preset=${presets[i]}
  step "configure and build $preset"
  if cmake --preset "$preset" && cmake --build --preset "$preset" -j "$jobs"; then
    built[$preset]=yes
  else
    built[$preset]=no
    summary[$preset]="build failed"
    status=1
  fi
  if [[ $preset == win64 && ${built[$preset]} == yes ]] && ((i + 1 < ${#presets[@]})); then
    tree_before=$(tree_state)
    step "test win64, in the background while the rest builds"
    # Without a display the win64 tests start a virtual one themselves.
    run_tests win64 &
    background=$!
  fi
done
[[ -n $background ]] || tree_before=$(tree_state)

for preset in "${presets[@]}"; do
  [[ ${built[$preset]} == yes ]] || continue
  if [[ $preset == win64 && -n $background ]]; then
    step "test win64 (waiting for the background run)"
    wait "$background"
  else
    step "test $preset"
    run_tests "$preset"
  fi
  cat "$logs/$preset.log"
  [[ $preset == win64 ]] && wine_errors
  rc=$(cat "$logs/$preset.rc")
  line=$(grep -E '^[0-9]+% tests passed, [0-9]+ tests? failed out of [0-9]+' "$logs/$preset.log" | tail -n 1)
  # CTest lists the failed ones after "The following tests FAILED:", one a
  # line: "<tab>  12 - name (Failed)".
  failures[$preset]=$(sed -n '/^The following tests FAILED:/,/^Errors while running CTest/p' "$logs/$preset.log" |
    sed -nE 's/^[[:space:]]+[0-9]+ - (.*)$/\1/p')
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

tree_after=$(tree_state)
if [[ $tree_after != "$tree_before" ]]; then
  echo "test.sh: the tests changed the source tree:" >&2
  diff <(echo "$tree_before") <(echo "$tree_after") | sed -n 's/^> /  /p' >&2
  status=1
fi

step "summary"
for preset in "${presets[@]}"; do
  printf '%-9s %s\n' "$preset:" "${summary[$preset]:-not run}"
  while IFS= read -r name; do
    [[ -n $name ]] && printf '          failed: %s\n' "$name"
  done <<<"${failures[$preset]:-}"
done
[[ $tree_after == "$tree_before" ]] || echo "source tree: changed by the tests (listed above)"
echo "tests: $passed_total passed, $failed_total failed"
exit $status
