#!/usr/bin/env bash
#   manual.sh PROGRAM PAGE [HELP [OPTIONS]]
# The manual page describes each option that `PROGRAM --help`, or HELP in its place, lists and no other, and is drawn
# without a complaint. Verbs may share an option. OPTIONS are there at least, 6 if nothing is said.
set -euo pipefail

listed=$("$1" "${3:---help}" | grep -oE '^ +(-h,)?--[a-z0-9-]+' | grep -oE -- '--[a-z0-9-]+' | sort -u)
described=$(sed -n '/^\.SH OPTIONS/,/^\.SH EXIT/p' "$2" | grep -A1 '^\.TP' | grep -oE '\\-\\-[a-z0-9\-]+' | tr -d '\\' | sort)
[ "$(wc -l <<<"$listed")" -ge "${4:-6}" ] || { echo "Few options are listed: $listed"; exit 1; }
diff <(echo "$listed") <(echo "$described") || { echo "<: listed alone; >: described alone"; exit 1; }

complaints=$(groff -ww -man -Tutf8 "$2" 2>&1 >/dev/null)
[ -z "$complaints" ] || { echo "$complaints"; exit 1; }
