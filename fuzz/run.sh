#!/usr/bin/env bash
# Builds the fuzz targets with clang and runs each for a bounded time, printing its run count.
# run.sh BUILD_DIR [SECONDS]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$1
seconds=${2:-15}
cmake -S "$here" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=Debug >/dev/null
cmake --build "$build"

# Seeds: a tag of each version, an MPEG header, an ID3v1 tag, and the program's own files.
seeds="$build/seeds"
mkdir -p "$seeds/tags" "$seeds/files"
printf 'ID3\x03\x00\x00\x00\x00\x00\x40TIT2\x00\x00\x00\x03\x00\x00\x00ab\x00\x00\x00\x00' >"$seeds/tags/v3"
printf 'ID3\x02\x00\x00\x00\x00\x00\x30TT2\x00\x00\x03\x00ab\x00\x00\x00' >"$seeds/tags/v2"
{ head -c 200 /dev/zero; printf '\xff\xfb\x90\x00'; head -c 4000 /dev/zero; } >"$seeds/tags/mpeg"
{ head -c 100 /dev/zero; printf '\x0f\xf8\x12\x34\xff\xfb\x90\x00'; } >"$seeds/tags/halfbyte"
{ printf 'TAG'; head -c 124 /dev/zero; printf '\x11'; } >"$seeds/tags/v1"
printf '; VELDOR Settings:\r\n\r\n[Settings]\r\nNumberofRecentMediaFiles=30\r\nVolume= 2.06e12\r\n' >"$seeds/files/ini"
printf '\x04"Artist"\r\n"Say "Hi", Bob"\r\n"07"\r\n"/music/a.mp3"\r\n' >"$seeds/files/tracking"
printf '\x07"001"\r\n"A"\r\n"12" Mix"\r\n""\r\n"Play"\r\n"03:00"\r\n"/m/a.mp3"\r\n' >"$seeds/files/spp"
printf '/music/a.mp3\r\n\xef\xbb\xbf/music/Bj\xf6rk.mp3\r\na\xff\xff\xff\xff\r\n' >"$seeds/files/lines"
printf -- '-9.9e10\n' >"$seeds/files/number"

declare -A seedsOf=(
  [fuzz_id3v1]=tags [fuzz_id3v2]=tags [fuzz_mpeg]=tags [fuzz_mpeg_scan]=tags
  [fuzz_ini]=files [fuzz_listfile]=files [fuzz_storedlist]=files [fuzz_linefiles]=files
  [fuzz_settings]=files
)
for target in fuzz_id3v1 fuzz_id3v2 fuzz_mpeg fuzz_mpeg_scan fuzz_ini fuzz_listfile \
              fuzz_storedlist fuzz_linefiles fuzz_settings; do
  corpus="$build/corpus/$target"
  mkdir -p "$corpus"
  cp -n "$seeds/${seedsOf[$target]}"/* "$corpus"/ 2>/dev/null || true
  log="$build/$target.log"
  set +e
  ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
    QT_QPA_PLATFORM=offscreen \
    "$build/$target" -max_total_time="$seconds" -timeout=5 -rss_limit_mb=2048 -max_len=20000 \
    -print_final_stats=1 "$corpus" >"$log" 2>&1
  status=$?
  set -e
  runs=$(grep -ao 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || echo "?")
  echo "== $target: $runs runs in ${seconds}s"
  if [ "$status" -ne 0 ]; then tail -n 40 "$log"; echo "$target failed"; exit 1; fi
done
