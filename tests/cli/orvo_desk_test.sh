#!/usr/bin/env bash
# orvo-desk without a display: a demo practice, screenshots of the main window and of a screen,
# one screen opened as the only window, and the lock listing for support.
set -u
desk="$1"
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT
failures=0
checks=0
check() {  # check NAME CONDITION-STATUS [DETAIL]
    checks=$((checks + 1))
    if [ "$2" -eq 0 ]; then echo "ok - $1"; else echo "not ok - $1 ${3:-}"; failures=$((failures + 1)); fi
}
is_png() { [ -s "$1" ] && [ "$(head -c 4 "$1" | tail -c 3)" == "PNG" ]; }

"$desk" --data "$data" --demo --screenshot "$data/desk.png" 2>/dev/null
is_png "$data/desk.png"; check "the main window renders to a PNG" $?

"$desk" --data "$data" --screenshot "$data/carrier.png" --open "Ins_Company_Start:1" 2>/dev/null
is_png "$data/carrier.png"; check "a loaded carrier renders to a PNG" $?

"$desk" --data "$data" --screenshot "$data/none.png" --open "No_Such_Start:1" 2>/dev/null
[ $? -eq 1 ]; check "an unknown start method fails"  $?

out=$("$desk" --data "$data" --locks)
case "$out" in *"Record locks:"*"none"*) r=0 ;; *) r=1 ;; esac
check "the lock listing shows no locks once the screens have closed" $r "$out"

# A station that holds a carrier open shows in the listing until it ends.
coproc station { exec env QT_QPA_PLATFORM=offscreen "$desk" --data "$data" --station FRONT9 --login SUPERVISOR --open "Ins_Company_Start:2" 2>/dev/null; }
read -r -t 30 shown <&"${station[0]}"
case "$shown" in "shown: Insurance Information") r=0 ;; *) r=1 ;; esac
check "a screen opened as the only window says it is up" $r "$shown"
out=$("$desk" --data "$data" --locks)
case "$out" in *"2.INS"*"record 2"*"station [FRONT9]"*"held"*"FRONT9: 1 slot(s)"*) r=0 ;; *) r=1 ;; esac
check "the listing names the station that holds the carrier" $r "$out"
kill -KILL "$station_PID" 2>/dev/null; wait "$station_PID" 2>/dev/null  # a station switched off
out=$("$desk" --data "$data" --locks)
case "$out" in *"2.INS"*"left"*) r=0 ;; *) r=1 ;; esac
check "the lock of a station that ended shows as left" $r "$out"

out=$("$desk" --data "$data/not-mounted" --locks 2>&1); r=$?
case "$r:$out" in 0:*) r=1 ;; *"the data folder $data/not-mounted does not exist"*) r=0 ;; *) r=1 ;; esac
check "the listing of a data folder that does not exist is an error" $r "$out"

# A holder file with a NUL in it is listed whole, and so is everything after it.
printf '[DATA]\r\nUSER=DR\0SMITH\r\n' > "$data/TEMP/3.EMP.UserData"; : > "$data/TEMP/3.EMP"
out=$("$desk" --data "$data" --locks)
case "$out" in *'user [DR\x00SMITH]'*"Station lists:"*) r=0 ;; *) r=1 ;; esac
check "a NUL in a holder file does not cut the listing short" $r "$out"

echo "$((checks - failures)) passed, $failures failed"
[ "$failures" -eq 0 ]
