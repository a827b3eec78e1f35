#!/usr/bin/env bash
# orvo-desk without a display: a demo practice, screenshots of the main window and of a screen,
# one screen opened as the only window, and the lock listing for support.
set -u
desk="$1"
sql="${2:-}"  # orvo-sql, to look into the practice
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
out=$(timeout 60 "$desk" --data "$data" --screenshot "$data/locked.png" --open "Ins_Company_Start:2" 2>/dev/null)
status=$?
[ $status -eq 0 ] && is_png "$data/locked.png"
check "a record locked by another station renders, refusal included, and the program ends" $? "status $status"
case "$out" in *"prompt: "*"locked for editing by user [SUPERVISOR]"*) r=0 ;; *) r=1 ;; esac
check "the refusal it met is printed" $r "$out"
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

err=$("$desk" --data "$data" --screenshot /nonexistent/carrier.png --open "Ins_Company_Start:1" 2>&1)
case "$err" in *"could not write /nonexistent/carrier.png"*) r=0 ;; *) r=1 ;; esac
check "a picture that cannot be written says so" $r "$err"

# ---- Clear words on a bad start -------------------------------------------------------------
bad="$data/bad"
mkdir -p "$bad"
echo "garbage, not a database" >"$bad/practice.db"
cp "$bad/practice.db" "$data/garbage.copy"
err=$("$desk" --data "$bad" --screenshot "$data/x.png" 2>&1)
[ "$(echo "$err" | grep -c "$bad/practice.db is not a practice database")" -eq 1 ] && cmp -s "$bad/practice.db" "$data/garbage.copy"
check "a file that is no database is named once as not a practice database, and left as it was" $? "$err"
head -c 6000 "$data/practice.db" >"$bad/practice.db"
err=$("$desk" --data "$bad" --screenshot "$data/x.png" 2>&1)
[ "$(echo "$err" | grep -c "$bad/practice.db is not a practice database")" -eq 1 ]
check "a practice file cut short is named as not a practice database" $? "$err"
err=$("$desk" --data "$data" --login NOSUCHUSER --screenshot "$data/x.png" 2>&1)
case "$err" in *"there is no login NOSUCHUSER"*) r=0 ;; *) r=1 ;; esac
check "an unknown --login says there is no such login" $r "$err"
for conninfo in "" "dbname" "orvo" "password=s3cret dbname='orvo" "postgresql://u:s3cret@h/orvo"; do
    rm -rf "$bad"
    err=$("$desk" --data "$bad" --pg "$conninfo" --screenshot "$data/x.png" 2>&1)
    status=$?
    case "$err" in *"--pg: "*) r=$status ;; *) r=0 ;; esac
    [ $r -eq 1 ] && [ ! -e "$bad/practice.db" ] && [[ "$err" != *s3cret* ]]
    check "--pg \"$conninfo\" is refused without a word of its values, and no other database opens" $? "$err"
done
mkdir -p "$data/readonly"
chmod 555 "$data/readonly"
chmod o+x "$data"
err=$(setpriv --reuid=65534 --regid=65534 --clear-groups env HOME=/tmp "$desk" --data "$data/readonly" --screenshot /tmp/x.png 2>&1)
case "$err" in *"$data/readonly is read-only"*) r=0 ;; *) r=1 ;; esac
check "a read-only data folder says so" $r "$err"
chmod 755 "$data/readonly"

# ---- --demo seeds once: stations starting together, and rows deleted since stay deleted ------
demo_counts() { "$sql" "$@" -c "SELECT count(*) FROM InsCoTable" -c "SELECT count(*) FROM PhaTable" | sed -n '2p;4p' | xargs; }
engines="sqlite"
[ -n "${ORVO_TEST_PG:-}" ] && [ -n "$sql" ] && engines="sqlite pg"
for engine in $engines; do
    where=(--data "$data/demo-$engine")
    if [ "$engine" == pg ]; then
        schema="orvo_cli_demo_$$"
        psql "$ORVO_TEST_PG" -qc "CREATE SCHEMA $schema" >/dev/null
        trap 'psql "$ORVO_TEST_PG" -qc "DROP SCHEMA IF EXISTS $schema CASCADE" >/dev/null 2>&1; rm -rf "$data"' EXIT
        where+=(--pg "$ORVO_TEST_PG" --pg-schema "$schema")
    fi
    "$desk" "${where[@]}" --screenshot "$data/empty.png" 2>/dev/null  # an empty practice
    for i in 1 2 3; do "$desk" "${where[@]}" --demo --screenshot "$data/demo$i.png" 2>/dev/null & done
    wait
    counts=$(demo_counts "${where[@]}" 2>&1)
    [ "$counts" == "10 4" ]; check "$engine: three stations starting together with --demo seed once" $? "$counts"
    "$sql" "${where[@]}" -c "DELETE FROM InsCoTable" -c "DELETE FROM PhaTable WHERE PhaID=1" >/dev/null
    "$desk" "${where[@]}" --demo --screenshot "$data/demo4.png" 2>/dev/null
    counts=$(demo_counts "${where[@]}" 2>&1)
    [ "$counts" == "0 3" ]; check "$engine: demo rows deleted since stay deleted" $? "$counts"
done

echo "$((checks - failures)) passed, $failures failed"
[ "$failures" -eq 0 ]
