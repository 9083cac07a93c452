#!/usr/bin/env bash
# Runs the model tests and the short randomized runs of a debug build under
# valgrind memcheck: any memory error, or anything definitely or indirectly
# lost, fails. Usage: bash scripts/valgrind.sh [BUILD_DIR] (default build/debug).
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build/debug}"
command -v valgrind >/dev/null || { echo "valgrind is missing: bash scripts/setup.sh installs it" >&2; exit 1; }
memcheck=(valgrind --quiet --error-exitcode=1 --leak-check=full
  --errors-for-leak-kinds=definite,indirect --show-leak-kinds=definite,indirect)
# Two seeds of the randomized run keep the gate near a minute; ctest runs them all.
declare -A filter=(
  [tests/model_tests]='*'
  [tests/random/random_tests]='Short/Seeds.*/0:Short/Seeds.*/1:RandomFaults.*'
)
for test in tests/model_tests tests/random/random_tests; do
  echo "valgrind memcheck: $test"
  "${memcheck[@]}" "$build/$test" --gtest_brief=1 --gtest_filter="${filter[$test]}"
done
echo "valgrind memcheck: no errors, nothing definitely or indirectly lost"
