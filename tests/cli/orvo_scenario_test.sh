#!/usr/bin/env bash
# orvo-scenario as support staff run it: every step documented, failures kept apart and tallied,
# and on PostgreSQL a scenario that never touches the practice already in the database, even
# when several runs start together on a database that has no citext yet.
# usage: orvo_scenario_test.sh ORVO-SCENARIO ORVO-SQL ORVO-DESK
set -u
scenario="$1"
sql="$2"
desk="$3"
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
databases=()
cleanup() {
    for d in "${databases[@]}"; do psql "$ORVO_TEST_PG" -qc "DROP DATABASE IF EXISTS \"$d\" WITH (FORCE)" >/dev/null 2>&1; done
    rm -rf "$work"
}
trap cleanup EXIT
failures=0
checks=0
check() {  # check NAME STATUS [DETAIL]
    checks=$((checks + 1))
    if [ "$2" -eq 0 ]; then echo "ok - $1"; else echo "not ok - $1"; [ -n "${3:-}" ] && echo "$3" | sed 's/^/    /'; failures=$((failures + 1)); fi
}

# ---- Every verb is in the README ----------------------------------------------------------
verbs=$("$scenario" --verbs 2>/dev/null | cut -d" " -f1)
missing=""
for verb in $verbs; do
    grep -q "\`$verb[ \`]" "$here/../../host/scenario/README.md" || missing="$missing $verb"
done
[ -n "$verbs" ] && [ -z "$missing" ]; check "the README documents every step" $? "undocumented:$missing"

# ---- Failures: one step, one scenario; the tally; --keep keeps the failed folders only ------
mkdir "$work/tmp"
out=$(TMPDIR="$work/tmp" "$scenario" --keep "$here/scenarios/keep_and_tally.scn" 2>/dev/null)
status=$?
[ $status -eq 1 ]; check "a run with failures exits with 1" $? "status $status"
case "$out" in *"2 passed, 2 failed") r=0 ;; *) r=1 ;; esac
check "the run ends with its tally, after an untypable character and a failed check" $r "$out"
case "$out" in *"FAIL"*"cannot be typed"*"PASS"*"the run goes on after failures"*) r=0 ;; *) r=1 ;; esac
check "an untypable character fails its step, and later scenarios still run" $r "$out"
kept=$(find "$work/tmp" -mindepth 1 -maxdepth 1 -type d -name 'orvo-scenario-*' | sort)
[ "$(echo "$kept" | grep -c .)" -eq 2 ]; check "--keep keeps the two failed scenarios' folders, no more" $? "$kept"
named=0
for folder in $kept; do case "$out" in *"FAIL"*"$folder"*) ;; *) named=1 ;; esac; done
check "each kept folder is named in its FAIL line" $named "$out"
rm -rf "$work/tmp"/*
TMPDIR="$work/tmp" "$scenario" "$here/scenarios/keep_and_tally.scn" >/dev/null 2>&1
[ -z "$(find "$work/tmp" -mindepth 1 -maxdepth 1 -name 'orvo-scenario-*')" ]
check "without --keep no folder is left" $?

# ---- PostgreSQL: a practice already in the database stays as it was ------------------------
if [ -z "${ORVO_TEST_PG:-}" ]; then
    echo "$((checks - failures)) passed, $failures failed (PostgreSQL checks skipped: ORVO_TEST_PG is not set)"
    [ "$failures" -eq 0 ]
    exit
fi
fresh_database() {  # fresh_database NAME: a new empty database, dropped on exit
    psql "$ORVO_TEST_PG" -qc "CREATE DATABASE \"$1\" TEMPLATE template0" >/dev/null
    databases+=("$1")
}
dump_public() { pg_dump --schema=public "$ORVO_TEST_PG dbname=$1" 2>&1 | grep -v '^-- Dumped\|^.restrict\|^.unrestrict'; }
count_objects() {  # count_objects DB WHERE: schemas and databases a run may have left
    psql "$ORVO_TEST_PG dbname=$1" -Atc "$2"
}

# A practice set up before citext had a schema of its own: citext and the practice in public.
# The scenario cannot share that path, so it runs in a database of its own.
old="orvo_cli_$$_old"
fresh_database "$old"
psql "$ORVO_TEST_PG dbname=$old" -qc "CREATE EXTENSION citext" >/dev/null
"$sql" --data "$work/old" --pg "$ORVO_TEST_PG dbname=$old" --create \
    -c "INSERT INTO InsCoTable (InsCoInd, InsCoNam) VALUES (6703, 'Delta Mutual')" \
    -c "INSERT INTO InsCoTable (InsCoInd, InsCoNam) VALUES (6704, 'Lonely Dental Plan')" >/dev/null
before=$(dump_public "$old")
out=$("$scenario" --pg "$ORVO_TEST_PG dbname=$old" "$here/scenarios/own_practice_only.scn" 2>&1)
check "a scenario on a database holding a practice and citext in public passes on its own" $? "$out"
[ "$before" == "$(dump_public "$old")" ]
check "that practice is unchanged to the byte" $? "$(diff <(echo "$before") <(dump_public "$old") | head -20)"
left=$(count_objects postgres "SELECT count(*) FROM pg_database WHERE datname LIKE 'orvo_scn_%'")
[ "$left" -eq 0 ]; check "the scenario's own database is dropped after it" $? "$left left"

# A practice made now: citext in a schema of its own, the practice in public.
new="orvo_cli_$$_new"
fresh_database "$new"
"$sql" --data "$work/new" --pg "$ORVO_TEST_PG dbname=$new" --create \
    -c "INSERT INTO InsCoTable (InsCoInd, InsCoNam) VALUES (6703, 'Delta Mutual')" >/dev/null
before=$(dump_public "$new")
out=$("$scenario" --pg "$ORVO_TEST_PG dbname=$new" "$here/scenarios/own_practice_only.scn" 2>&1)
check "a scenario on a database holding a practice in public passes on its own" $? "$out"
[ "$before" == "$(dump_public "$new")" ]
check "that practice is unchanged to the byte" $? "$(diff <(echo "$before") <(dump_public "$new") | head -20)"
left=$(count_objects "$new" "SELECT count(*) FROM pg_namespace WHERE nspname LIKE 'scn_%'")
[ "$left" -eq 0 ]; check "the scenario's schema is dropped after it" $? "$left left"

# A schema name is an identifier, never a piece of a statement.
err=$("$desk" --data "$work/new" --pg "$ORVO_TEST_PG dbname=$new" --pg-schema 'public", pg_catalog; --' --screenshot "$work/x.png" 2>&1)
status=$?
case "$err" in *"has no schema"*) r=$status ;; *) r=0 ;; esac
[ $r -eq 1 ]; check "orvo-desk takes --pg-schema as a name, and refuses one that is not there" $? "$err"

# Several runs at once on a database without citext: it is made once, where all of them see it.
bare="orvo_cli_$$_bare"
fresh_database "$bare"
for i in 1 2 3; do
    "$scenario" --pg "$ORVO_TEST_PG dbname=$bare" "$here/scenarios/own_practice_only.scn" >"$work/race$i" 2>&1 &
done
r=0
for job in $(jobs -p); do wait "$job" || r=1; done
check "three runs started together on a database without citext all pass" $r "$(cat "$work"/race*)"
where=$(count_objects "$bare" "SELECT n.nspname FROM pg_extension e JOIN pg_namespace n ON n.oid = e.extnamespace WHERE e.extname = 'citext'")
[ "$where" == "orvo_ext" ]; check "citext lives in orvo_ext" $? "it is in '$where'"
tables=$(count_objects "$bare" "SELECT count(*) FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace WHERE n.nspname IN ('orvo_ext', 'public') AND c.relkind = 'r'")
[ "$tables" -eq 0 ]; check "orvo_ext and public hold no tables after the runs" $? "$tables tables"

echo "$((checks - failures)) passed, $failures failed"
[ "$failures" -eq 0 ]
