#!/usr/bin/env bash
# Installs what the build needs on a fresh Debian machine (when missing).
set -euo pipefail
need=()
command -v cmake >/dev/null || need+=(cmake)
command -v g++ >/dev/null || need+=(g++)
[ -f /usr/include/gtest/gtest.h ] || need+=(libgtest-dev)
[ -f /usr/include/benchmark/benchmark.h ] || need+=(libbenchmark-dev)
[ -f /usr/include/nlohmann/json.hpp ] || need+=(nlohmann-json3-dev)
[ -f /usr/include/CLI/CLI.hpp ] || need+=(libcli11-dev)
command -v valgrind >/dev/null || need+=(valgrind)
# Graphviz's dot renders `krmwtarn diagram --format svg` (and its tests).
command -v dot >/dev/null || need+=(graphviz)
command -v clang++ >/dev/null || need+=(clang)
command -v clang-format >/dev/null || need+=(clang-format)
[ -f /usr/include/sqlite3.h ] || need+=(libsqlite3-dev)
command -v sqlite3 >/dev/null || need+=(sqlite3)
[ -f /usr/include/postgresql/libpq-fe.h ] || need+=(libpq-dev)
# The server the tests and benchmarks start for themselves (scripts/with-postgres.sh).
ls /usr/lib/postgresql/*/bin/initdb >/dev/null 2>&1 || need+=(postgresql)
# The corpus tests count the real libraries' statements apart from the reader.
command -v python3 >/dev/null || need+=(python3)
# npm brings the independent SARIF validator that `check --format sarif` is held to.
command -v npm >/dev/null || need+=(npm)
# The curves of the scale run (scripts/scale.sh).
command -v gnuplot >/dev/null || need+=(gnuplot-nox)
if [ ${#need[@]} -gt 0 ]; then
  SUDO=""; [ "$(id -u)" -ne 0 ] && SUDO=sudo
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq "${need[@]}"
fi
# The SARIF validator, pinned in tests/sarif/package-lock.json (its own
# install step, which only marks the program executable, is done here).
validator="$(dirname "$0")/../tests/sarif/node_modules/@microsoft/sarif-multitool-linux/Sarif.Multitool"
if [ ! -x "$validator" ]; then
  (cd "$(dirname "$0")/../tests/sarif" && npm ci --no-audit --no-fund --loglevel=error)
  chmod u+x "$validator"
fi
