#!/usr/bin/env bash
# Runs every fuzz target for a bounded time each (seconds, first argument, default 30), starting
# from its seeds and minimised corpus in fuzz/ (the writer also from the reader's seeds and
# tests/templates) and, when present, the outside templates, policy files and registry files.
# Uses the sanitizer build; builds it when needed. Fails on the first crash, leak or hang.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-30}"
targets=(value_text hive private_profile template template_write grammar admx ozp pol reg)
scripts/setup.sh
cmake --preset asan >/dev/null
cmake --build --preset asan --target "${targets[@]/%/_fuzz}"
corpus="$(sed -n 's/^OZ_CORPUS_DIR:PATH=//p' build/asan/CMakeCache.txt)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
for target in "${targets[@]}"; do
  mkdir -p "$work/$target"
  seeds=()
  for folder in fuzz/seeds/$target fuzz/corpus/$target; do
    [[ -d $folder ]] && seeds+=("$folder")
  done
  if [[ $target == template_write ]]; then
    seeds+=(fuzz/seeds/template tests/templates)
  fi
  if [[ $target == template* && -n "$corpus" && -d "$corpus/adm" ]]; then
    seeds+=("$corpus/adm")
  fi
  if [[ ($target == pol || $target == reg) && -n "$corpus" && -d "$corpus/$target" ]]; then
    seeds+=("$corpus/$target")
  fi
  echo "fuzzing $target for $seconds s"
  # New inputs go to a scratch folder; the seed and corpus folders are only read.
  if ! build/asan/fuzz/${target}_fuzz -max_total_time="$seconds" -max_len=65536 -timeout=20 \
      -rss_limit_mb=4096 -print_final_stats=1 -artifact_prefix="$work/" \
      "$work/$target" "${seeds[@]}" >"$work/$target.log" 2>&1; then
    tail -n 40 "$work/$target.log" >&2
    mkdir -p build/fuzz-artifacts
    cp "$work"/crash-* "$work"/leak-* "$work"/timeout-* "$work"/oom-* build/fuzz-artifacts/ \
      2>/dev/null || true
    echo "fuzzing $target found a failure; the input is kept in build/fuzz-artifacts" >&2
    exit 1
  fi
  grep -E "^(Done|stat::number_of_executed_units|stat::peak_rss_mb)" "$work/$target.log" || true
  grep -E "cov: " "$work/$target.log" | tail -n 1 || true
done
