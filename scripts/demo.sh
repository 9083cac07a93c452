#!/usr/bin/env bash
# Builds everything (release) and runs the tool on its built-in catalogues.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release -j"$(nproc)"
tool=build/release/tools/krmwtarn/krmwtarn
"$tool" demo
