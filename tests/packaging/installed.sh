#!/usr/bin/env bash
#   installed.sh BUILD
# The two components installed into a folder that no build knew of: the station finds its data there, has no windows
# without the second component and has them with it.
set -euo pipefail

build=$1
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
fail() {
  echo "$1"
  exit 1
}
put() { cmake --install "$build" --component "$1" --prefix "$place/usr" >"$place/log" || fail "$(cat "$place/log")"; }
# The end of the input ends the station.
windows() { QT_QPA_PLATFORM=offscreen "$place/usr/bin/orvane" --bench virtual --automation stdio </dev/null 2>&1; }

put station
store=sqlite:$place/records.sqlite
"$place/usr/bin/orvane" --headless --initialize --bench virtual --records "$store" >"$place/road" 2>&1 ||
  fail "$(cat "$place/road")"
"$place/usr/bin/orvane-records" --store "$store" list | grep -q ' PASS$' || fail "orvane-records lists no PASS"
"$place/usr/bin/virtual-bench" --list-faults | grep -q '^silent' || fail "virtual-bench lists no faults"
status=0
told=$(windows) || status=$?
[ "$status" -eq 69 ] || fail "without the windows: status $status, $told"

# Nobody answers at port 1; that it is told shows that the program for it was found.
told=$("$place/usr/bin/orvane" --headless --automation stdio --safe-off --instrument 2=tcp:127.0.0.1:1 \
  --instrument 5=tcp:127.0.0.1:1 </dev/null 2>&1 >"$place/log") || fail "with --safe-off: status $?, $told"
grep -q "^orvane: The supply's output could not be made sure to be off: no connection" <<<"$told" || fail "--safe-off: $told"
ldd "$place/usr/libexec/orvane/orvane-safe-off" | grep Qt && fail "the program that outlives the station loads the toolkit"

put windows
told=$(windows) || fail "with the windows: status $?, $told"
ldd "$place/usr/bin/orvane" | grep -E 'Widgets|Gui' && fail "the program without windows loads a widget library"
[ -f "$place/usr/share/applications/orvane.desktop" ] || fail "no desktop file"
