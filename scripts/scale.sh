#!/usr/bin/env bash
# Measures the cost per object from thousands to a million objects (build,
# lookup, view expansion, JSON export, store, retrieve, release), prints the
# table the README shows and draws the curves into docs/scale.svg with gnuplot.
# Takes about two minutes and 1.5 GB of memory at the largest size.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release -j"$(nproc)" --target krmwtarn_scale scale_table
out=build/release/scale
mkdir -p "$out"
build/release/bench/krmwtarn_scale --benchmark_out="$out/results.json" --benchmark_out_format=json "$@"
build/release/bench/scale_table "$out/results.json" "$out/table.md" "$out/curves.dat"
cat "$out/table.md"
gnuplot <<PLOT
set terminal svg size 760,440 font "sans,12" background "white"
set output "docs/scale.svg"
set title "Cost per object as the repository grows"
set logscale xy
set xlabel "objects and links in the repository"
set ylabel "nanoseconds per object"
set key outside right
set grid
plot for [i=0:6] "$out/curves.dat" index i using 1:2 with linespoints lw 2 title columnheader(1)
PLOT
echo "drew docs/scale.svg"
