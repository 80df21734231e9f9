#!/usr/bin/env bash
# Idle CPU with the desktop parts on: tray icon in a running tray host, global keys grabbed and
# the session-bus player registered, the player stopped.
#
#   tests/support/with-session.sh bench/cpu_desktop_idle.sh [path/to/veldor] [seconds]
#                                                 (default build/test/src/veldor, 60)
#
# Starts trayer as the tray host, then veldor with a one-row playlist, stopped. After 5 s of
# settling, measures utime+stime over `seconds` and asks the player over the bus once at the end,
# so the figure includes a live session-bus client. Target: well under 0.2 %.
set -euo pipefail
exe=${1:-build/test/src/veldor}
secs=${2:-60}
work=$(mktemp -d)
trap 'kill $tpid $vpid 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$work"' EXIT
tck=$(getconf CLK_TCK)
ticks() { awk '{print $14 + $15}' "/proc/$1/stat"; }

trayer --edge top --align right --widthtype pixel --width 100 --heighttype pixel --height 24 \
  >/dev/null 2>&1 &
tpid=$!
sox -n -r 44100 -c 2 -b 16 "$work/t.wav" synth 5 sine 440
home="$work/home"; mkdir -p "$home/Playlists"
printf '[Settings]\r\nUseSystemTraySupport=1\r\n' > "$home/settings.ini"
printf '"1"\r\n"A"\r\n"T"\r\n""\r\n"Play"\r\n""\r\n"%s"\r\n' "$work/t.wav" \
  > "$home/Playlists/default.spp"
VELDOR_HOME=$home VELDOR_AO=null "$exe" >/dev/null 2>&1 &
vpid=$!
sleep 5
busname=$(playerctl -l 2>/dev/null | grep -c veldor || true)
a=$(ticks $vpid); sleep "$secs"; b=$(ticks $vpid)
status=$(playerctl -p veldor status 2>/dev/null || echo "not on the bus")
awk -v a="$a" -v b="$b" -v hz="$tck" -v s="$secs" -v st="$status" -v n="$busname" 'BEGIN {
  printf "veldor stopped, tray and MPRIS on, idle %d s: %.3f %% CPU (player on bus: %d, status %s)\n",
         s, (b - a) / hz / s * 100, n, st
}'
