#!/usr/bin/env bash
# Runs a GUI test executable on a fresh virtual display. Two display servers started at the same
# moment on one machine can pick the same display number, and the loser's GTK fails to start
# ("Unable to initialize GTK+"); only that start-up failure is retried, never a failing test.
set -u
log=$(mktemp)
trap 'rm -f "$log"' EXIT
for attempt in 1 2 3; do
    # A random first display number keeps runs that start together apart.
    xvfb-run -a -n $((100 + RANDOM % 4000)) -s "-screen 0 1600x1200x24" "$@" >"$log" 2>&1
    rc=$?
    if [ $rc -ne 0 ] && grep -q -E "Unable to initialize GTK|Xvfb failed to start|cannot open display" "$log"; then
        echo "run-under-xvfb: the display did not start (attempt $attempt), trying again" >&2
        sleep 2
        continue
    fi
    break
done
cat "$log"
exit $rc
