#!/usr/bin/env bash
# Runs a command under its own X server and its own session bus, so tests never touch the desktop.
set -u
if [ -n "${VELDOR_TEST_DISPLAY_UP:-}" ]; then exec "$@"; fi
export XDG_RUNTIME_DIR=$(mktemp -d /tmp/veldor-rt.XXXXXX)
chmod 700 "$XDG_RUNTIME_DIR"
fifo="$XDG_RUNTIME_DIR/displayfd"
mkfifo "$fifo"
# -noreset: by default the server resets when its last client leaves, and a program connecting
# during the reset (the next test's) is dropped.
Xvfb -displayfd 4 -screen 0 1280x1024x24 -nolisten tcp -noreset 4>"$fifo" >/dev/null 2>&1 &
xpid=$!
read -r -t 20 num <"$fifo" || { echo "Xvfb did not start" >&2; kill $xpid 2>/dev/null; exit 1; }
export DISPLAY=":$num" VELDOR_TEST_DISPLAY_UP=1
unset QT_QPA_PLATFORM
dbus-run-session -- "$@"
rc=$?
kill $xpid 2>/dev/null
wait $xpid 2>/dev/null
rm -rf "$XDG_RUNTIME_DIR"
exit $rc
