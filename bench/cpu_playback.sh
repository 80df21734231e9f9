#!/usr/bin/env bash
# CPU cost of playback against the engine alone, and of sitting idle.
#
#   bench/cpu_playback.sh [path/to/veldor] [seconds]      (default build/dev/src/veldor, 60)
#
# Makes a stereo MP3 of `seconds` (sox + lame), then in one run:
#   1. mpv --no-video --ao=null on it: CPU seconds per minute of playback;
#   2. veldor playing the same file with ao=null and the main window hidden (/systray with
#      UseSystemTraySupport=0): CPU seconds per minute;
#   3. veldor stopped and idle for 30 s: CPU share.
# Needs an X display (run it under tests/support/with-session.sh). Takes about 2.5 minutes at
# the default length; not part of CI. Targets: veldor <= 1.3 x mpv, idle < 0.2 %.
set -euo pipefail
exe=${1:-build/dev/src/veldor}
secs=${2:-60}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
sox -n -r 44100 -c 2 -b 16 "$work/t.wav" synth "$secs" sine 440 sine 660 vol 0.5
lame --quiet -b 192 "$work/t.wav" "$work/t.mp3"
tck=$(getconf CLK_TCK)

# utime+stime of a process in clock ticks.
ticks() { awk '{print $14 + $15}' "/proc/$1/stat"; }
# CPU ticks of `pid` over the middle of the song (start-up left out): from 3 s to secs-1 s.
span=$((secs - 4))
middle() {
  local pid=$1 a b
  sleep 3; a=$(ticks "$pid"); sleep "$span"; b=$(ticks "$pid"); echo $((b - a))
}

mpv --no-config --no-video --ao=null --really-quiet "$work/t.mp3" &
mpid=$!
mpv_ticks=$(middle $mpid)
wait $mpid || true

home="$work/home"; mkdir -p "$home/Playlists"
printf '[Settings]\r\nUseSystemTraySupport=0\r\n' > "$home/settings.ini"
printf '"1"\r\n"A"\r\n"T"\r\n""\r\n"Play"\r\n""\r\n"%s"\r\n' "$work/t.mp3" \
  > "$home/Playlists/default.spp"
VELDOR_HOME=$home VELDOR_AO=null "$exe" /play &
vpid=$!
# The main window goes out of sight as soon as it is mapped.
( for _ in $(seq 50); do
    w=$(xdotool search --onlyvisible --pid $vpid --name '^VELDOR$' 2>/dev/null | head -1)
    [ -n "$w" ] && { xdotool windowunmap "$w"; break; }; sleep 0.1
  done ) &
v_ticks=$(middle $vpid)
sleep 3
# The song has ended and nothing follows it: 30 s stopped and idle.
i0=$(ticks $vpid); sleep 30; i1=$(ticks $vpid)
kill $vpid; wait $vpid 2>/dev/null || true

awk -v m="$mpv_ticks" -v v="$v_ticks" -v i0="$i0" -v i1="$i1" -v hz="$tck" -v s="$span" 'BEGIN {
  mp = m / hz * 60 / s; vp = v / hz * 60 / s
  printf "mpv --no-video --ao=null : %.3f CPU s per minute\n", mp
  printf "veldor, window hidden    : %.3f CPU s per minute (%.2f x mpv)\n", vp, (mp > 0 ? vp / mp : 0)
  printf "veldor stopped, idle 30 s: %.3f %% CPU\n", (i1 - i0) / hz / 30 * 100
}'
