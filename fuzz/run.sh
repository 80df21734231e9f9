#!/usr/bin/env bash
# Builds the fuzz targets with clang and runs each for a bounded time.
# run.sh BUILD_DIR [SECONDS]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$1
seconds=${2:-20}
cmake -S "$here" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=Debug >/dev/null
cmake --build "$build"

# Seeds: a tag of each version, a frame header, an ID3v1 tag.
seeds="$build/seeds"
mkdir -p "$seeds"
printf 'ID3\x03\x00\x00\x00\x00\x00\x40TIT2\x00\x00\x00\x03\x00\x00\x00ab\x00\x00\x00\x00' >"$seeds/v3"
printf 'ID3\x02\x00\x00\x00\x00\x00\x30TT2\x00\x00\x03\x00ab\x00\x00\x00' >"$seeds/v2"
{ head -c 200 /dev/zero; printf '\xff\xfb\x90\x00'; head -c 4000 /dev/zero; } >"$seeds/mpeg"
{ printf 'TAG'; head -c 124 /dev/zero; printf '\x11'; } >"$seeds/v1"

for target in fuzz_id3v1 fuzz_id3v2 fuzz_mpeg; do
  corpus="$build/corpus/$target"
  mkdir -p "$corpus"
  cp -n "$seeds"/* "$corpus"/ 2>/dev/null || true
  echo "== $target for ${seconds}s"
  ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
    "$build/$target" -max_total_time="$seconds" -timeout=5 -rss_limit_mb=2048 -max_len=20000 \
    -print_final_stats=0 "$corpus" 2>&1 | tail -n 3
  # tail hides the status: take the fuzzer's own.
  [ "${PIPESTATUS[0]}" -eq 0 ] || { echo "$target failed"; exit 1; }
done
