#!/usr/bin/env bash
# Idle CPU with Mini-Mode shown and the player stopped, beside the same program with its main
# window shown.
#
#   tests/support/with-session.sh bench/cpu_minimode_idle.sh [path/to/veldor] [seconds]
#                                                 (default build/test/src/veldor, 60)
#
# Starts veldor with a one-row playlist, stopped, under openbox when it is installed. Measures
# utime+stime over `seconds` with the main window shown, then switches to Mini-Mode through the
# command socket and measures again. Target: Mini-Mode adds nothing measurable.
set -euo pipefail
exe=${1:-build/test/src/veldor}
secs=${2:-60}
work=$(mktemp -d)
wmpid=
trap 'kill $vpid $wmpid 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$work"' EXIT
tck=$(getconf CLK_TCK)
ticks() { awk '{print $14 + $15}' "/proc/$1/stat"; }
percent() { awk -v a="$1" -v b="$2" -v hz="$tck" -v s="$secs" 'BEGIN { printf "%.3f", (b - a) / hz / s * 100 }'; }

if command -v openbox >/dev/null; then openbox >/dev/null 2>&1 & wmpid=$!; sleep 1; fi
sox -n -r 44100 -c 2 -b 16 "$work/t.wav" synth 5 sine 440
home="$work/home"; mkdir -p "$home/Playlists"
printf '[Settings]\r\nUseSystemTraySupport=0\r\n' > "$home/settings.ini"
printf '"1"\r\n"A"\r\n"T"\r\n""\r\n"Play"\r\n""\r\n"%s"\r\n' "$work/t.wav" \
  > "$home/Playlists/default.spp"
sock="$work/commands.sock"
VELDOR_HOME=$home VELDOR_AO=null VELDOR_COMMAND_SOCKET=$sock "$exe" >/dev/null 2>&1 &
vpid=$!
sleep 5
a=$(ticks $vpid); sleep "$secs"; b=$(ticks $vpid)
main=$(percent "$a" "$b")

reply=$(timeout 10 python3 -c 'import socket,sys; s=socket.socket(socket.AF_UNIX); s.connect(sys.argv[1]); s.sendall(b"mnuSwitchToMiniMode\n"); print(s.recv(100).decode().strip())' "$sock")
sleep 3
shown=$(xdotool search --all --onlyvisible --pid $vpid --name '^VELDOR$' 2>/dev/null | wc -l)
a=$(ticks $vpid); sleep "$secs"; b=$(ticks $vpid)
mini=$(percent "$a" "$b")
echo "veldor stopped, idle $secs s: main window $main % CPU; Mini-Mode ($reply, $shown window shown) $mini % CPU"
