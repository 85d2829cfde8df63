#!/usr/bin/env bash
# How big the test code is against the product code, and whether it stays within the team's limit.
#
#   tools/test-ratio/test-ratio.sh [--max PERCENT] [--folders]
#
# Lines counted: non-blank lines that are not `//` comment lines, of the .cpp and .h files git
# tracks. Test code is tests/; product code is everything else but bench/ and fuzz/ (benchmarks and
# fuzzers are tools around the product, not the product). With --max the exit code is 1 when the
# test code is above PERCENT of the product code; --folders also lists each folder of tests/.
set -euo pipefail
cd "$(dirname "$0")/../.."

lMax=""
lFolders=0
while [ $# -gt 0 ]; do
  case "$1" in
    --max) lMax="$2"; shift 2 ;;
    --folders) lFolders=1; shift ;;
    *) echo "usage: $0 [--max PERCENT] [--folders]" >&2; exit 2 ;;
  esac
done

# Reads file names on stdin, prints their counted lines.
CountLines() {
  grep -E '\.(cpp|h)$' | tr '\n' '\0' | xargs -0 -r cat | grep -v -E '^\s*(//.*)?$' | wc -l
}

lTests=$(git ls-files tests | CountLines)
lProduct=$(git ls-files | grep -v -E '^(tests|bench|fuzz)/' | CountLines)
if [ "$lFolders" = 1 ]; then
  for lFolder in $(git ls-files tests | awk -F/ 'NF > 2 { print $2 }' | sort -u); do
    printf '  tests/%-12s %6d\n' "$lFolder" "$(git ls-files "tests/$lFolder" | CountLines)"
  done
fi
lPercent=$(awk -v t="$lTests" -v p="$lProduct" 'BEGIN { printf "%.1f", 100 * t / p }')
echo "test code ${lTests} lines, product code ${lProduct} lines: ${lPercent} %"
if [ -n "$lMax" ] && awk -v t="$lTests" -v p="$lProduct" -v m="$lMax" 'BEGIN { exit !(100 * t > m * p) }'; then
  echo "the test code is above ${lMax} % of the product code: make the suites leaner before adding cases" >&2
  exit 1
fi
