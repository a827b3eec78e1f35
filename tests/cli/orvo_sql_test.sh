#!/usr/bin/env bash
# orvo-sql as support staff use it: create a practice, run statements on one connection, print
# rows as tab-separated text, show a translation, and fail plainly on a bad statement.
set -u
sql="$1"
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT
failures=0
checks=0
check() {  # check NAME EXPECTED ACTUAL
    checks=$((checks + 1))
    if [ "$2" == "$3" ]; then
        echo "ok - $1"
    else
        echo "not ok - $1"; echo "  expected: $(printf '%q' "$2")"; echo "  actual:   $(printf '%q' "$3")"
        failures=$((failures + 1))
    fi
}

"$sql" --data "$data" --create
check "create makes the database" "0" "$?"
check "create makes the data folders" "STP TEMP WP" "$(cd "$data" && ls -d TEMP STP WP | xargs)"

out=$("$sql" --data "$data" \
    -c "INSERT INTO InsCoTable (InsCoNam, InsCoCit) VALUES ('O''Brien Dental Plan', NULL)" \
    -c "INSERT INTO InsCoTable (InsCoNam, InsCoCit) VALUES ('Acme', 'Dayton')" \
    -c "SELECT TOP 5 InsCoNam, InsCoCit FROM InsCoTable WHERE InsCoNam LIKE 'o''b%' OR InsCoCit='DAYTON' ORDER BY InsCoNam")
check "rows print with a header, null as empty" \
    "$(printf 'InsCoNam\tInsCoCit\nAcme\tDayton\nO'"'"'Brien Dental Plan\t')" "$out"

out=$("$sql" --data "$data" -c "UPDATE InsCoTable SET InsCoCit='Toledo' WHERE InsCoNam='acme'" -c "SELECT count(*) AS n FROM InsCoTable WHERE InsCoCit='Toledo'")
check "statements run in order on one connection" "$(printf 'n\n1')" "$out"

out=$("$sql" --engine pg --translate-only -c "SELECT DISTINCTROW TOP 3 [Insurance Company] FROM x WHERE d=#11/21/2026# AND f=TRUE")
check "translate-only prints the server's form" \
    "SELECT DISTINCT \"Insurance Company\" FROM x WHERE d='2026-11-21' AND f<>0 LIMIT 3" "$out"

err=$("$sql" --data "$data" -c "SELECT nothing FROM NoSuchTable" 2>&1 >/dev/null)
status=$?
check "a bad statement exits with 1" "1" "$status"
case "$err" in *NoSuchTable*) check "the error names the statement" x x ;; *) check "the error names the statement" "…NoSuchTable…" "$err" ;; esac

# Whether a statement prints rows is what it returns, not how it is written; values with tabs,
# line ends and backslashes stay on their line and in their column. On both engines.
engines="sqlite"
[ -n "${ORVO_TEST_PG:-}" ] && engines="sqlite pg"
for engine in $engines; do
    where=(--data "$data/$engine")
    if [ "$engine" == pg ]; then
        db="orvo_cli_sql_$$"
        psql "$ORVO_TEST_PG" -qc "CREATE DATABASE \"$db\" TEMPLATE template0" >/dev/null
        trap 'psql "$ORVO_TEST_PG" -qc "DROP DATABASE IF EXISTS \"$db\" WITH (FORCE)" >/dev/null 2>&1; rm -rf "$data"' EXIT
        where+=(--pg "$ORVO_TEST_PG dbname=$db")
    fi
    "$sql" "${where[@]}" -c "INSERT INTO InsCoTable (InsCoInd, InsCoNam, InsCoCit) VALUES (5, 'Acme', 'Dayton')" >/dev/null
    out=$("$sql" "${where[@]}" -c "$(printf 'select\n  InsCoNam\tFROM InsCoTable')" -c "select*from InsCoTable where 1=0" \
        -c "$(printf -- '-- who is there\nSELECT count(*) AS n FROM InsCoTable')")
    # (The server gives column names in lower case.)
    check "$engine: a SELECT prints its rows however it is written" \
        "$(printf 'insconam\nacme\ninscoind\tinsconam\tinscoadd1\tinscoadd2\tinscocit\tinscosta\tinscozip\tinscotel\tinscotel2\tinscofax\tinscorem1\tinscorem2\tinscoema\tinscoprefix\tinscoaccid\tinscoswchr\nn\n1')" \
        "$(echo "$out" | tr '[:upper:]' '[:lower:]')"
    "$sql" "${where[@]}" -c "UPDATE InsCoTable SET InsCoNam='$(printf 'Tab\there')', InsCoCit='$(printf 'C:\\WP\r\nnext')' WHERE InsCoInd=5"
    out=$("$sql" "${where[@]}" -c "SELECT InsCoNam, InsCoCit FROM InsCoTable" | tail -n +2)
    check "$engine: tabs, line ends and backslashes in values are escaped" \
        'Tab\there	C:\\WP\r\nnext' "$out"
done

echo "$((checks - failures)) passed, $failures failed"
[ "$failures" -eq 0 ]
