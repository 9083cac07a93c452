#!/usr/bin/env bash
# The pictures the README shows, in docs/: the built-in sample's HIDAM DBD and
# its PSB, drawn by `krmwtarn diagram` and rendered to SVG by Graphviz's dot.
# Usage: bash scripts/diagrams.sh [BUILD_DIR]  (default build/release, built when its tool is missing)
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build/release}"
tool="$build/tools/krmwtarn/krmwtarn"
if [ ! -x "$tool" ]; then
  bash scripts/setup.sh
  cmake --preset release >/dev/null
  cmake --build --preset release -j"$(nproc)"
fi
"$tool" diagram HOSPDBD --format svg --out docs/diagram-hospdbd.svg
"$tool" diagram HOSPPSB --format svg --out docs/diagram-hosppsb.svg
echo "docs/diagram-hospdbd.svg, docs/diagram-hosppsb.svg"
