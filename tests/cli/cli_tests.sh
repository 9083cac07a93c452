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

commands=(demo expand export import graph diagram load check generate views view classes class links sample list delete
    lock unlock copy-repo help)

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
    expect_err "$work/none.dbd: error: cannot read the deck: No such file or directory"
    check 2 check --bogus
    check 0 --repo "$work/r.db" sample
    check 0 --repo "$work/r.db" check HOSPDBD HOSPPSB
    expect_out "HOSPPSB/ALTPCB: warning: [TP-FIRST]"
    check 1 --repo "$work/r.db" check NOSUCH
    expect_err "krmwtarn check: the repository has no DBD or PSB named 'NOSUCH'"
}

# check --format sarif: a SARIF 2.1.0 log that an independent validator
# accepts, deck URIs relative to where the check ran, rule ids that index the
# driver's rules, and fingerprints that stay when a finding's cards move.
case_check_sarif() {
    local validator here
    here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
    validator="$here/sarif/node_modules/@microsoft/sarif-multitool-linux/Sarif.Multitool"
    mkdir -p "$work/decks"
    local cards=("         DBD   NAME=BADDBD,ACCESS=HDAM" "         SEGM  NAME=ROOT,PARENT=0,BYTES=10"
        "         FIELD NAME=(KEY,SEQ,U),BYTES=12,START=1" "         DBDGEN")
    printf '%s\n' "${cards[@]}" >"$work/decks/bad deck.dbd"
    printf '%s\n' "* the same deck, its cards one further down" "${cards[@]}" >"$work/decks/moved.dbd"
    last=(check "decks/bad deck.dbd" --format sarif)
    (cd "$work" && "$tool" check "decks/bad deck.dbd" --format sarif >"$work/out" 2>"$work/err")
    status=$?
    expect_status 1
    cp "$work/out" "$work/first.sarif"
    (cd "$work/decks" && "$tool" check moved.dbd --format sarif >"$work/moved.sarif" 2>"$work/err")
    python3 - "$work/first.sarif" "$work/moved.sarif" <<'PY' || fail "the SARIF log is not as code scanning wants it"
import json, sys
first, moved = (json.load(open(p)) for p in sys.argv[1:3])
assert first["version"] == "2.1.0" and len(first["runs"]) == 1
run = first["runs"][0]
rules = [r["id"] for r in run["tool"]["driver"]["rules"]]
assert len(rules) == len(set(rules)) and "RANDOMIZER" in rules and "FLD-RANGE" in rules
assert run["originalUriBaseIds"]["SRCROOT"]["uri"].endswith("/")
seen = {}
for r in run["results"]:
    assert rules[r["ruleIndex"]] == r["ruleId"], r
    place = r["locations"][0]["physicalLocation"]
    assert place["artifactLocation"] == {"uri": "decks/bad%20deck.dbd", "uriBaseId": "SRCROOT"}, place
    assert place["region"]["startLine"] >= 1 and place["region"]["startColumn"] >= 1
    seen[r["ruleId"]] = (place["region"]["startLine"], r["partialFingerprints"])
assert seen["RANDOMIZER"][0] == 1 and seen["FLD-RANGE"][0] == 3, seen
again = {r["ruleId"]: (r["locations"][0]["physicalLocation"]["region"]["startLine"], r["partialFingerprints"])
         for r in moved["runs"][0]["results"]}
for rule, (line, prints) in seen.items():
    assert again[rule] == (line + 1, prints), (rule, again[rule], line, prints)
assert len({json.dumps(p) for _, p in seen.values()}) == len(seen)
PY
    check 2 check "$work/decks/moved.dbd" --format xml
    check 2 check "$work/decks/moved.dbd" --format sarif --json
    if [ ! -x "$validator" ]; then
        echo "skipped the validator: it is not installed (bash scripts/setup.sh installs it)"
        exit 77
    fi
    DOTNET_SYSTEM_GLOBALIZATION_INVARIANT=1 "$validator" validate "$work/first.sarif" -o "$work/verdict.sarif" \
        >"$work/err" 2>&1 || fail "the SARIF validator did not run"
    python3 - "$work/verdict.sarif" <<'PY' || fail "the SARIF validator finds errors: $(grep -m3 ' error ' "$work/err")"
import json, sys
verdict = json.load(open(sys.argv[1]))
errors = [r for r in verdict["runs"][0].get("results", []) if r.get("level", "warning") == "error"]
sys.exit(1 if errors else 0)
PY
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

# The repository commands are bad usage without a repository, as generate is
# without decks or the sample: each says what it lacks.
case_required_combinations_refused() {
    for c in sample list delete lock unlock copy-repo; do
        local -a args=("$c")
        case "$c" in delete | lock | unlock | copy-repo) args+=(X) ;; esac
        check 2 "${args[@]}"
        expect_err "krmwtarn $c: --repo PATH|URL ($c works on a repository) is required"
        expect_err "Usage: krmwtarn $c"
        expect_no_out
    done
    check 2 generate --out "$work/gen"
    expect_err "krmwtarn generate: DECK... or --sample is required"
    [ ! -e "$work/gen" ] || fail "a refused generate made its directory"
    check 2 generate --sample "$work/a.dbd" --out "$work/gen"
    expect_err "krmwtarn generate: "
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
        "demo" "graph" "diagram HOSPDBD" "views" "view CORVIADBD" "classes" "class DSDBD" "links" "--help" "--version" "demo --help")
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

# Decks through the tool: summaries, located refusals with nothing stored, the
# commands that read definitions taking --decks, and decks written by generate
# reading back to the same definitions.
decks="$(cd "$(dirname "${BASH_SOURCE[0]}")/../source/decks" && pwd)"

case_decks_load_and_refusals() {
    check 0 load "$decks/hospital.dbd" "$decks/hospidx.dbd" "$decks/nameidx.dbd" "$decks/hosplog.dbd" "$decks/parts.dbd" \
        "$decks/history.dbd" "$decks/hospital.psb"
    expect_out "DBD HOSPDBD  access HIDAM  segments 5"
    expect_out "PSB HOSPPSB  PCBs 7"
    check 2 load
    expect_err "krmwtarn load: DECK is required"
    check 1 load "$work/missing.dbd"
    expect_err "$work/missing.dbd: error: cannot read the deck: No such file or directory"
    mkdir "$work/folder"
    check 1 load "$work/folder"
    expect_err "$work/folder: error: cannot read the deck: it is a folder"
    # A PSB whose DBD is not among the decks: located at the operand, and a
    # load with an error stores nothing in the repository.
    local repo="$work/decks.krmwtarn"
    check 0 --repo "$repo" load "$decks/parts.dbd"
    check 1 --repo "$repo" load "$decks/hospital.psb"
    grep -qE "^$decks/hospital.psb:[0-9]+:[0-9]+: error: .*HOSPDBD" "$work/err" || fail "the missing DBD is not located"
    check 0 --repo "$repo" list
    expect_out "PARTDBD"
    ! grep -q "HOSPPSB" "$work/out" || fail "a refused load left its PSB in the repository"
    # A refused load or import into a repository it would make leaves no file behind.
    check 1 --repo "$work/never.krmwtarn" load "$decks/hospital.psb"
    [ ! -e "$work/never.krmwtarn" ] || fail "a refused load left a new repository file behind"
    echo '{"@class":"DSDBD"}' >"$work/refused.json"
    check 1 --repo "$work/never.krmwtarn" import "$work/refused.json"
    [ ! -e "$work/never.krmwtarn" ] || fail "a refused import left a new repository file behind"
    # Stored DBDs resolve a later load's names: the PSB comes in on its own.
    check 0 --repo "$repo" load "$decks/hospital.dbd" "$decks/hospidx.dbd" "$decks/nameidx.dbd" "$decks/hosplog.dbd" \
        "$decks/history.dbd"
    expect_out "unit(s) in $repo"
    check 0 --repo "$repo" load "$decks/hospital.psb"
    check 0 --repo "$repo" list
    expect_out "HOSPPSB"
    # JSON documents imported into a repository are stored too.
    "$tool" export - >"$work/sample.json"
    check 0 --repo "$work/sample.krmwtarn" sample
    check 0 --repo "$work/sample.krmwtarn" export -
    cp "$work/out" "$work/stored.json"
    check 0 --repo "$work/imported.krmwtarn" import "$work/sample.json"
    check 0 --repo "$work/imported.krmwtarn" export -
    cmp -s "$work/stored.json" "$work/out" || fail "the imported repository exports differently from the stored sample"
}

case_decks_feed_the_commands() {
    local all=("$decks"/*.dbd "$decks"/*.psb)
    for call in "demo" "graph HOSPPSB" "expand CORVIADBD" "export -"; do
        read -ra args <<<"$call"
        check 0 "${args[@]}" --decks "${all[@]}"
        [ -s "$work/out" ] || fail "krmwtarn $call --decks wrote nothing"
    done
    check 0 export - --decks "${all[@]}"
    expect_out '"PARTDBD"'
    check 1 demo --decks "$work/missing.dbd"
    expect_err "cannot read the deck"
}

# load's summary of the sample written as decks: a DBD's segments, fields and
# levels (the longest chain of physical parents), a PSB's PCBs and what its
# database PCBs are sensitive to.
case_decks_load_summary() {
    check 0 generate --sample --out "$work/sample"
    check 0 load "$work/sample"/*.dbd "$work/sample"/*.psb
    cat >"$work/want" <<'END'
DBD ACCTDEDB  access DEDB  segments 1  fields 0  levels 1
DBD HOSPDBD  access HIDAM  segments 5  fields 5  levels 4
DBD HOSPIDX  access INDEX  segments 1  fields 1  levels 1
DBD HOSPLOG  access LOGICAL  segments 1  fields 0  levels 1
DBD NAMEIDX  access INDEX  segments 1  fields 1  levels 1
DBD PARTDBD  access HDAM  segments 1  fields 1  levels 1
DBD RATEMSDB  access MSDB  segments 1  fields 0  levels 1
PSB HOSPPSB  PCBs 3  SENSEGs 4  SENFLDs 1
END
    cmp -s "$work/want" "$work/out" || fail "the summary differs: $(diff "$work/want" "$work/out")"
}

case_decks_generate_reads_back() {
    local all=("$decks"/*.dbd "$decks"/*.psb)
    check 0 load --json "${all[@]}"
    cp "$work/out" "$work/first.json"
    check 0 generate "${all[@]}" --out "$work/gen"
    check 0 load --json "$work/gen"/*
    cmp -s "$work/first.json" "$work/out" || fail "decks written by generate load differently"
    check 0 generate --sample --out "$work/sample"
    [ -s "$work/sample/HOSPDBD.dbd" ] && [ -s "$work/sample/HOSPPSB.psb" ] || fail "generate --sample wrote no HOSPDBD/HOSPPSB"
    awk 'length($0) > 80 { exit 1 }' "$work/sample"/* || fail "a written card is longer than 80 columns"
    check 2 generate "${all[@]}"
    expect_err "--out"
}

# diagram: refused names, formats and arguments; dot missing from PATH or
# failing; output that cannot be written.
case_diagram_errors() {
    check 1 diagram NODBD
    expect_err "krmwtarn diagram: the sample has no DBD, PSB or PCB named 'NODBD'"
    expect_no_out
    check 1 diagram HOSPDBD NODBD
    expect_err "named 'NODBD'"
    expect_no_out
    check 2 diagram
    expect_err "krmwtarn diagram: NAME is required"
    check 2 diagram HOSPDBD --format png
    expect_err "krmwtarn diagram: --format: png not in {dot,svg}"
    expect_err "Usage: krmwtarn diagram"
    expect_no_out
    mkdir "$work/empty" "$work/fakebin"
    last=(diagram HOSPDBD --format svg "(PATH without dot)")
    PATH="$work/empty" "$tool" diagram HOSPDBD --format svg >"$work/out" 2>"$work/err"
    status=$?
    expect_status 1
    expect_err "krmwtarn diagram: Graphviz's dot was not found on PATH; install graphviz (bash scripts/setup.sh) or use --format dot"
    expect_no_out
    last=(diagram HOSPDBD "(PATH without dot)")
    PATH="$work/empty" "$tool" diagram HOSPDBD >"$work/out" 2>"$work/err"
    status=$?
    expect_status 0
    expect_out 'digraph "HOSPDBD" {'
    # A dot that fails: its complaint is passed on, and nothing is written.
    # (It ends without reading its input: the tool's write fails and it goes on.)
    printf '#!/bin/sh\necho "Error: <stdin>: syntax error in line 3" >&2\nexit 1\n' >"$work/fakebin/dot"
    chmod +x "$work/fakebin/dot"
    last=(diagram HOSPDBD --format svg --out x.svg "(a failing dot)")
    PATH="$work/fakebin" "$tool" diagram HOSPDBD --format svg --out "$work/x.svg" >"$work/out" 2>"$work/err"
    status=$?
    expect_status 1
    expect_err "krmwtarn diagram: Graphviz's dot failed: Error: <stdin>: syntax error in line 3"
    [ ! -e "$work/x.svg" ] || fail "a failed rendering wrote $work/x.svg"
    check 1 diagram HOSPDBD --out "$work/no/such/x.dot"
    expect_err "krmwtarn diagram: cannot write $work/no/such/x.dot: No such file or directory"
}

# diagram: the same picture however the definitions come (sample, decks,
# repository), into a file or on standard output, as DOT or as SVG.
case_diagram_dot_and_svg() {
    check 0 diagram HOSPDBD HOSPPSB
    expect_out 'digraph "HOSPDBD HOSPPSB" {'
    mv "$work/out" "$work/sample.dot"
    check 0 diagram HOSPDBD HOSPPSB --out "$work/file.dot"
    expect_no_out
    cmp -s "$work/sample.dot" "$work/file.dot" || fail "diagram --out differs from standard output"
    "$tool" generate --sample --out "$work/decks" >/dev/null || fail "generate --sample failed"
    check 0 diagram HOSPDBD HOSPPSB --decks "$work/decks"/*
    cmp -s "$work/sample.dot" "$work/out" || fail "the sample's decks draw another picture"
    check 0 --repo "$work/r.db" sample
    check 0 --repo "$work/r.db" diagram HOSPDBD HOSPPSB
    cmp -s "$work/sample.dot" "$work/out" || fail "the stored sample draws another picture"
    check 0 diagram HOSPPSB.PCB2 --format svg --out "$work/pcb.svg"
    expect_no_out
    grep -q "<svg" "$work/pcb.svg" || fail "no SVG in $work/pcb.svg"
    grep -q "NAMEPCB" "$work/pcb.svg" || fail "the PCB's name is not in its picture"
}

# The largest DBD (255 segments over 15 levels, 1,000 fields) rendered to SVG
# (ctest bounds its time).
case_diagram_largest_dbd() {
    awk 'BEGIN {
        card("DBD", "NAME=BIGDBD,ACCESS=HISAM")
        for (s = 0; s < 255; s++) {
            card("SEGM", "NAME=S" s ",BYTES=100" (s ? ",PARENT=S" (s < 15 ? s - 1 : s % 14) : ""))
            for (f = s; f < 1000; f += 255) card("FIELD", "NAME=F" f)
        }
        card("DBDGEN", "")
    }
    function card(op, operands) { printf "         %-6s%s\n", op, operands }' >"$work/big.dbd"
    check 0 diagram BIGDBD --decks "$work/big.dbd"
    [ "$(grep -c 'class="segment"' "$work/out")" = 255 ] || fail "not 255 segments drawn"
    [ "$(grep -c 'class="parent"' "$work/out")" = 254 ] || fail "not 254 parent edges drawn"
    local started=$SECONDS
    check 0 diagram BIGDBD --decks "$work/big.dbd" --format svg --out "$work/big.svg"
    echo "rendered the largest DBD in $((SECONDS - started)) s"
    [ "$(grep -c 'class="node segment"' "$work/big.svg")" = 255 ] || fail "not 255 segments in the SVG"
}

"case_$case_name"
echo "PASS [$case_name]"
