#!/usr/bin/env bash
# The main job: builds everything (release), stores the built-in sample in the
# embedded repository (an SQLite file), then, in a second process, expands the
# DBD view over the HIDAM hospital DBD as retrieved from that file.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release -j"$(nproc)"
tool=build/release/tools/krmwtarn/krmwtarn
repo=build/release/sample.krmwtarn
rm -f "$repo"
"$tool" --repo "$repo" sample
"$tool" --repo "$repo" list
"$tool" --repo "$repo" demo
