#!/usr/bin/env bash
# Fails when a C or C++ file of the repository is not formatted as
# .clang-format says, and names each such file. The style was set with
# Debian 12's clang-format 14 (scripts/setup.sh installs it); another version
# may break a line differently.
#
#   bash scripts/check-format.sh          # check
#   bash scripts/check-format.sh --fix    # format those files in place
set -euo pipefail

repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$repo"
command -v clang-format >/dev/null || {
  echo "check-format: clang-format is not installed (bash scripts/setup.sh)" >&2
  exit 1
}
mapfile -t files < <(git ls-files '*.cpp' '*.h')
if [[ ${1:-} == --fix ]]; then
  clang-format -i "${files[@]}"
  exit 0
fi
# One call for all files; each misplaced piece is a "file:line:col: error:" line.
if ! report=$(clang-format --dry-run --Werror "${files[@]}" 2>&1); then
  printf 'check-format: not formatted (bash scripts/check-format.sh --fix):\n' >&2
  sed -nE 's/^([^:]+):[0-9]+:[0-9]+: error:.*/  \1/p' <<<"$report" | sort -u >&2
  exit 1
fi
echo "check-format: ${#files[@]} files formatted as .clang-format says"
