#!/usr/bin/env bash
# Builds everything and runs every test suite: the sources' format, a plain
# debug build (whose model tests and short randomized runs then also run under
# valgrind memcheck), the AddressSanitizer + UndefinedBehaviorSanitizer build,
# and a clang build; every build treats a compiler warning as an error. The
# suites run beside a throwaway PostgreSQL server (scripts/with-postgres.sh),
# so the store tests run on both backends.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
jobs="$(nproc)"
# Every C++ source is formatted as .clang-format says.
git ls-files -z '*.h' '*.cpp' | xargs -0 clang-format --dry-run --Werror
for preset in debug sanitize clang; do
  cmake --preset "$preset" -DKRMWTARN_WERROR=ON >/dev/null
  cmake --build --preset "$preset" -j"$jobs"
  bash scripts/with-postgres.sh ctest --preset "$preset" -j"$jobs"
  if [ "$preset" = debug ]; then bash scripts/valgrind.sh build/debug; fi
done
# The installed package serves a separate client project, and the installed
# tool runs from a prefix that is on no library path (its run path finds the
# library beside it).
prefix="$(mktemp -d)"
cmake --install build/debug --prefix "$prefix" >/dev/null
env -u LD_LIBRARY_PATH "$prefix/bin/krmwtarn" demo >/dev/null
echo "installed tool: krmwtarn demo ran"
cmake -S tests/consumer -B "$prefix/consumer" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$prefix/consumer" >/dev/null
env -u LD_LIBRARY_PATH "$prefix/consumer/app"
echo "installed package: client built and ran"
rm -rf "$prefix"
