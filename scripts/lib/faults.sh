# What a user has after a fault, from tests that are run for it. To be sourced; it needs common.sh.
#
#   faults_table BUILD_FOLDER   does every bad thing of tests/faults.table and prints the table, with
#                               how each went; fails if one has

# Each part of the filter names at least one test, and all of them must pass.
faults_gtest() {
    local part parts
    IFS=: read -r -a parts <<<"$3"
    for part in "${parts[@]}"; do
        QT_QPA_PLATFORM=offscreen "$1/tests/$2" --gtest_filter="$part" >"$faults_log" 2>&1 &&
            grep -q '^\[  PASSED  \] [1-9]' "$faults_log" || return 1
    done
}

faults_desktop() { "$root/tests/desktop/faults.sh" "$1" "$2" >"$faults_log" 2>&1; }

# faults_trim TEXT, into faults_text
faults_trim() {
    faults_text=${1#"${1%%[! ]*}"}
    faults_text=${faults_text%"${faults_text##*[! ]}"}
}

faults_table() {
    local build=$1 fault after run kind what filter result failures=0
    faults_log=$(mktemp)
    printf '| Fault | What the user has afterwards | Shown by | Result |\n|---|---|---|---|\n'
    while IFS='|' read -r fault after run; do
        case $fault in '' | '#'*) continue ;; esac
        faults_trim "$fault" && fault=$faults_text
        faults_trim "$after" && after=$faults_text
        # shellcheck disable=SC2086  # words
        read -r kind what filter <<<"$run"
        "faults_$kind" "$build" "$what" "$filter" </dev/null
        case $? in
        0) result=passed ;;
        77) result="skipped: $(sed -n 's/^SKIPPED: //p' "$faults_log" | head -n 1)" ;;
        *)
            result=FAILED
            failures=$((failures + 1))
            tail -n 20 "$faults_log" >&2
            ;;
        esac
        printf '| %s | %s | `%s` | %s |\n' "$fault" "$after" "$what${filter:+ $filter}" "$result"
    done <"$root/tests/faults.table"
    rm -f "$faults_log"
    [ "$failures" -eq 0 ]
}
