#!/usr/bin/env bash
# Builds the release preset and runs the benchmarks, five repetitions each, then
# prints their medians and every ratio against its baseline with its target
# (the repository's on a PostgreSQL server started for the run).
# Extra arguments go to the benchmark binary (e.g. --benchmark_filter=Lookup).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release -j"$(nproc)" --target krmwtarn_bench bench_ratios
results=build/release/bench-results.json
# The PostgreSQL figures come from a throwaway server with its default settings.
KRMWTARN_PG_SETTINGS="" bash scripts/with-postgres.sh build/release/bench/krmwtarn_bench --benchmark_repetitions="${REPETITIONS:-5}" \
  --benchmark_report_aggregates_only=true --benchmark_out="$results" --benchmark_out_format=json "$@"
build/release/bench/bench_ratios "$results" \
  BuildWorstCaseModel=2 LookupByIdentity=1.5 BytesPerField=2 BytesPerLink=2 \
  StoreLargestModel=2 RetrieveLargestModel=2 StorePostgres=2 RetrievePostgres=2 \
  ReadDecks=1.5 WriteDecks=0.5 CheckDecks=1 ExpandLargest=2
