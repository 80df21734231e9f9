#!/usr/bin/env bash
# Start-up to the first window: empty, and with 100,000 files on the command line, each beside a
# bare Qt window of the same run, under a private X server; then the resident memory of an empty
# start left idle for 5 s. Usage: run.sh <build dir> [veldor]
set -eu
# Absolute paths: the program runs from the folder of the songs.
build=$(realpath "${1:?build dir}")
exe=$(realpath "${2:-$build/src/veldor}")
here=$(cd "$(dirname "$0")" && pwd)
export VELDOR_AO=null VELDOR_VO=null
song=$(mktemp --suffix=.mp3)
trap 'rm -f "$song"' EXIT
ffmpeg -loglevel error -y -f lavfi -i sine=d=0.2 -metadata artist=A -metadata title=T \
    -id3v2_version 3 -write_id3v1 1 "$song"
"$here/../../tests/support/with-session.sh" bash -c "
  '$build/bench/first_map' --runs 9 '$exe'
  '$build/bench/first_map' --runs 5 --files 100000 --template '$song' '$exe'
  '$build/bench/first_map' --runs 3 --idle 5 '$exe'
"
