#!/usr/bin/env bash
# The krmwtarn tool run as its users run it: exit statuses, help and version,
# refused arguments, unreadable input, output that cannot be written, the
# import round trip and the installed tool. Each case_NAME function is one
# ctest test (tests/cli/CMakeLists.txt reads the names from this file).
# Usage: cli_tests.sh CASE TOOL BUILD_DIR VERSION
set -uo pipefail
case_name="$1" tool="$2" build_dir="$3" version="$4"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

commands=(demo expand export import graph views view classes class links check help)

fail() {
    echo "FAIL [$case_name]: $*" >&2
    echo "  stdout: $(head -c 600 "$work/out")" >&2
    echo "  stderr: $(head -c 600 "$work/err")" >&2
    exit 1
}
# run ARGS...: the tool's standard output, standard error and status in $work.
run() {
    "$tool" "$@" >"$work/out" 2>"$work/err"
    status=$?
}
expect_status() { [ "$status" -eq "$1" ] || fail "krmwtarn ${last[*]}: status $status, expected $1"; }
expect_err() { grep -qF -- "$1" "$work/err" || fail "krmwtarn ${last[*]}: standard error lacks '$1'"; }
expect_out() { grep -qF -- "$1" "$work/out" || fail "krmwtarn ${last[*]}: standard output lacks '$1'"; }
expect_no_out() { [ ! -s "$work/out" ] || fail "krmwtarn ${last[*]}: standard output is not empty"; }
# check STATUS ARGS...: runs the tool and checks its status.
check() {
    local want="$1"
    shift
    last=("$@")
    run "$@"
    expect_status "$want"
}

case_help_lists_commands() {
    check 0 --help
    for c in "${commands[@]}"; do grep -qE "^  $c " "$work/out" || fail "--help does not list '$c'"; done
    expect_out "Exit status"
    check 0 help
    expect_out "Usage: krmwtarn [OPTIONS] COMMAND"
}

case_help_for_each_command() {
    for c in "${commands[@]}"; do
        check 0 "$c" --help
        expect_out "Usage: krmwtarn $c"
        cp "$work/out" "$work/help"
        check 0 help "$c"
        cmp -s "$work/out" "$work/help" || fail "'help $c' differs from '$c --help'"
    done
    check 0 demo -h
    expect_out "Usage: krmwtarn demo"
}

# check: findings as FILE:LINE:COLUMN (or the object's path), exit 1 on errors
# only, --json, a repository's definitions by name.
case_check_findings_and_exit_status() {
    local decks
    decks="$(cd "$(dirname "${BASH_SOURCE[0]}")/../source/decks" && pwd)"
    check 0 check "$decks"/*.dbd "$decks"/*.psb
    expect_no_out
    check 0 check
    expect_out "HOSPPSB/ALTPCB: warning: [TP-FIRST] TP PCB follows database PCB HOSPPSB/HOSPPCB; TP PCBs come first"
    printf '%s\n' "         DBD   NAME=BADDBD,ACCESS=HDAM" "         SEGM  NAME=ROOT,PARENT=0,BYTES=10" \
        "         DBDGEN" >"$work/bad.dbd"
    check 1 check "$work/bad.dbd"
    expect_out "$work/bad.dbd:1:10: error: [RANDOMIZER] HDAM database BADDBD names no randomizing module (RMNAME)"
    expect_out "$work/bad.dbd:2:10: warning: [ROOT-UNKEYED] root segment ROOT has no sequence field"
    check 1 check "$work/bad.dbd" --json
    expect_out '"code": "RANDOMIZER"'
    expect_out '"line": 1'
    expect_out '"errors": 1'
    check 1 check "$work/none.dbd"
    expect_err "$work/none.dbd:0:0: error: cannot read the deck"
    check 2 check --bogus
    check 0 --repo "$work/r.db" sample
    check 0 --repo "$work/r.db" check HOSPDBD HOSPPSB
    expect_out "HOSPPSB/ALTPCB: warning: [TP-FIRST]"
    check 1 --repo "$work/r.db" check NOSUCH
    expect_err "krmwtarn check: the repository has no DBD or PSB named 'NOSUCH'"
}

case_version() {
    check 0 --version
    [ "$(cat "$work/out")" = "krmwtarn $version" ] || fail "--version is not 'krmwtarn $version'"
}

case_extra_arguments_refused() {
    # Each command with one argument more than it takes.
    local -a calls=(
        "demo CORVIADBD HOSPDBD extra" "expand CORVIADBD extra" "export - extra" "import - extra"
        "graph HOSPDBD extra" "views extra" "view CORVIADBD extra" "classes extra" "class DSDBD extra"
        "links extra" "help demo extra" "views --json" "demo --root HOSPDBD" "expand CORVIADBD --bogus")
    for call in "${calls[@]}"; do
        read -ra args <<<"$call"
        check 2 "${args[@]}"
        expect_err "krmwtarn ${args[0]}: "
        expect_err "Usage: krmwtarn ${args[0]}"
        expect_no_out
    done
}

case_missing_arguments_refused() {
    for c in expand export import view class; do
        check 2 "$c"
        expect_err "krmwtarn $c: "
        expect_err "Usage: krmwtarn $c"
    done
    check 2 expand CORVIADBD --root
    expect_err "krmwtarn expand: --root"
}

case_unknown_command_refused() {
    check 2
    expect_err "krmwtarn: a command is required"
    check 2 bogus
    expect_err "krmwtarn: unknown command 'bogus'"
    expect_err "Usage: krmwtarn [OPTIONS] COMMAND"
    check 2 --bogus
    expect_err "krmwtarn: unknown option '--bogus'"
    check 2 help bogus
    expect_err "krmwtarn help: "
}

case_bad_input_status() {
    check 1 demo NOVIEW
    expect_err "no view named 'NOVIEW'"
    check 1 expand NOVIEW
    check 1 view NOVIEW
    expect_err "krmwtarn view: no view named 'NOVIEW'"
    check 1 demo CORVIADBD NODBD
    expect_err "the sample has no DSDBD named 'NODBD'"
    check 1 expand CORVIADBD --root NODBD
    check 1 graph NODBD
    expect_err "krmwtarn graph: the sample has no DBD, PSB or PCB named 'NODBD'"
    check 1 class NOCLASS
    expect_err "krmwtarn class: no class named 'NOCLASS'"
    echo '{"documents": [' >"$work/broken.json"
    check 1 import "$work/broken.json"
    expect_err "krmwtarn import: not JSON: "
    echo '{"documents": 5}' >"$work/refused.json"
    check 1 import "$work/refused.json"
    expect_err "krmwtarn import: /documents: an array of documents is expected"
    expect_no_out
}

case_unreadable_input() {
    mkdir "$work/folder"
    check 1 import "$work/folder"
    expect_err "krmwtarn import: cannot read $work/folder: Is a directory"
    check 1 import /proc/self/mem
    expect_err "krmwtarn import: cannot read /proc/self/mem: Input/output error"
    check 1 import "$work/missing.json"
    expect_err "krmwtarn import: cannot read $work/missing.json: No such file or directory"
    last=(import - "<" folder)
    "$tool" import - <"$work/folder" >"$work/out" 2>"$work/err"
    status=$?
    expect_status 1
    expect_err "krmwtarn import: cannot read standard input: Is a directory"
}

case_full_standard_output() {
    "$tool" export - >"$work/sample.json"
    local -a calls=("export -" "expand CORVIADBD --json" "import $work/sample.json --json" "import $work/sample.json" "help" "help view"
        "demo" "graph" "views" "view CORVIADBD" "classes" "class DSDBD" "links" "--help" "--version" "demo --help")
    for call in "${calls[@]}"; do
        read -ra args <<<"$call"
        last=("${args[@]}" ">" /dev/full)
        "$tool" "${args[@]}" >/dev/full 2>"$work/err"
        status=$?
        : >"$work/out"
        expect_status 1
        expect_err "cannot write standard output: No space left on device"
    done
    last=(export - ">&-")
    "$tool" export - 2>"$work/err" >&-
    status=$?
    expect_status 1
    expect_err "krmwtarn export: cannot write standard output: Bad file descriptor"
}

case_export_file_failures() {
    check 1 export /dev/full
    expect_err "krmwtarn export: cannot write /dev/full: No space left on device"
    check 1 export "$work/no/such/folder.json"
    expect_err "krmwtarn export: cannot write $work/no/such/folder.json: No such file or directory"
    mkdir "$work/folder"
    check 1 export "$work/folder"
    expect_err "krmwtarn export: cannot write $work/folder: Is a directory"
    # A write that fails half-way (file size limit) leaves the old file whole and nothing beside it.
    mkdir "$work/out.d"
    echo "old content" >"$work/out.d/sample.json"
    last=(export sample.json "(ulimit -f 1)")
    (trap '' XFSZ; ulimit -f 1; exec "$tool" export "$work/out.d/sample.json") >"$work/out" 2>"$work/err"
    status=$?
    expect_status 1
    expect_err "krmwtarn export: cannot write $work/out.d/sample.json: File too large"
    [ "$(cat "$work/out.d/sample.json")" = "old content" ] || fail "a failed export changed the file"
    [ "$(ls -A "$work/out.d")" = "sample.json" ] || fail "a failed export left $(ls -A "$work/out.d")"
}

case_export_file_written_whole() {
    mkdir "$work/out.d"
    echo "old content" >"$work/out.d/sample.json"
    chmod 640 "$work/out.d/sample.json"
    check 0 export "$work/out.d/sample.json"
    expect_no_out
    "$tool" export - >"$work/expected.json"
    cmp -s "$work/out.d/sample.json" "$work/expected.json" || fail "the exported file differs from 'export -'"
    [ "$(ls -A "$work/out.d")" = "sample.json" ] || fail "export left $(ls -A "$work/out.d")"
    [ "$(stat -c %a "$work/out.d/sample.json")" = 640 ] || fail "export changed the file's permissions"
    # Through a symbolic link the file is replaced and the link stays.
    ln -s sample.json "$work/out.d/link.json"
    check 0 export "$work/out.d/link.json"
    [ -L "$work/out.d/link.json" ] || fail "export replaced the symbolic link"
    # A new file, and one read back by import.
    check 0 export "$work/new.json"
    check 0 import "$work/new.json"
    expect_out "imported 8 document(s)"
}

case_import_json_round_trip() {
    "$tool" export - >"$work/exported.json" || fail "export - failed"
    "$tool" export - | "$tool" import - --json >"$work/again.json" 2>"$work/err" || fail "import - --json failed"
    cmp -s "$work/exported.json" "$work/again.json" || fail "export | import --json differs from export"
    check 0 import "$work/exported.json" --json
    cmp -s "$work/exported.json" "$work/out" || fail "import FILE --json differs from export"
    # One document (not a list of them) comes back as one document.
    for view in CORVIAPSB CORVIAPOPULATEDBD; do
        "$tool" expand "$view" --json >"$work/one.json" || fail "expand $view --json failed"
        check 0 import "$work/one.json" --json
        cmp -s "$work/one.json" "$work/out" || fail "import --json of one $view document differs"
    done
}

case_installed_tool_runs() {
    # From a prefix on no library path, without LD_LIBRARY_PATH: the run path finds the library.
    cmake --install "$build_dir" --prefix "$work/prefix" >/dev/null || fail "cmake --install failed"
    [ -x "$work/prefix/bin/krmwtarn" ] || fail "the tool is not installed"
    last=(installed demo)
    env -u LD_LIBRARY_PATH "$work/prefix/bin/krmwtarn" demo >"$work/out" 2>"$work/err"
    status=$?
    expect_status 0
    "$tool" demo >"$work/expected" 2>/dev/null
    cmp -s "$work/out" "$work/expected" || fail "the installed tool's demo differs from the built one's"
}

# A repository copied into another exports as the one it came from: file to
# file, and, beside a PostgreSQL server (KRMWTARN_TEST_PG), file to server to
# file; on the server a lock lasts while the lock command runs.
case_copy_repo_exports_equal() {
    local a="$work/a.db" b="$work/b.db"
    check 0 --repo "$a" sample
    check 0 --repo "$a" copy-repo "$b"
    expect_out "copied 14 units from $a into $b"
    check 0 --repo "$a" export -
    mv "$work/out" "$work/a.json"
    check 0 --repo "$b" export -
    cmp -s "$work/a.json" "$work/out" || fail "the copy exports differently"
    check 1 --repo "$a" copy-repo "$b"
    expect_err "krmwtarn: repository $b is not empty (14 units); units are copied into an empty repository only"
    [ -n "${KRMWTARN_TEST_PG:-}" ] || { echo "no PostgreSQL server (KRMWTARN_TEST_PG): file to file only"; return; }
    local schema="cli_$$" separator="?"
    [[ "$KRMWTARN_TEST_PG" == *\?* ]] && separator="&"
    local url="$KRMWTARN_TEST_PG${separator}options=-csearch_path%3D$schema" c="$work/c.db"
    psql -q "$KRMWTARN_TEST_PG" -c "CREATE SCHEMA $schema" || fail "cannot make a schema on the server"
    trap 'psql -q "$KRMWTARN_TEST_PG" -c "DROP SCHEMA $schema CASCADE" >/dev/null 2>&1; rm -rf "$work"' EXIT
    check 0 --repo "$a" copy-repo "$url"
    check 0 --repo "$url" export -
    cmp -s "$work/a.json" "$work/out" || fail "the copy on the server exports differently"
    check 0 --repo "$url" copy-repo "$c"
    check 0 --repo "$c" export -
    cmp -s "$work/a.json" "$work/out" || fail "the copy back from the server exports differently"
    (sleep 3) | "$tool" --repo "$url" lock HOSPDBD >"$work/lock.out" 2>&1 &
    local locker=$!
    for _ in $(seq 50); do grep -q "lasts while" "$work/lock.out" && break; sleep 0.1; done
    check 0 --repo "$url" list
    grep -E "^DSDBD +HOSPDBD .*, session [0-9]+\) since" "$work/out" >/dev/null || fail "the lock is not listed with its session"
    wait "$locker" || fail "krmwtarn lock failed: $(cat "$work/lock.out")"
    grep -qF "unlocked unit DSDBD HOSPDBD (SAMPLE)" "$work/lock.out" || fail "the lock was not released: $(cat "$work/lock.out")"
    check 0 --repo "$url" list
    grep -E "^DSDBD +HOSPDBD .* -$" "$work/out" >/dev/null || fail "the lock outlived its command"
}

"case_$case_name"
echo "PASS [$case_name]"
