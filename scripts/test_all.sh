#!/usr/bin/env bash
# ./test --all: every run and check, each to its end, and one line that counts them.
set -uo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/prepare.sh"

passed=0
failed=0
summary=()

# note NAME PASSED FAILED
note() {
    passed=$((passed + $2))
    failed=$((failed + $3))
    summary+=("$(printf '%-34s %5d passed, %d failed  (%d s)' "$1" "$2" "$3" "$((SECONDS - started))")")
}

begin() {
    started=$SECONDS
    printf '\n== %s\n' "$1"
}

# tests NAME FOLDER: all tests of a built folder, counted from ctest's own summary.
tests() {
    local log=$2/all-tests.log
    (cd "$2" && ctest -j2 --output-on-failure --no-tests=error) 2>&1 | tee "$log" | grep -vE '^ +[0-9]+/[0-9]+ Test .* Passed|^ +Start '
    # "100% tests passed, 0 tests failed out of 312"
    local line bad all
    line=$(grep -E 'tests passed, [0-9]+ tests failed out of [0-9]+' "$log" | tail -n 1)
    if [[ $line =~ ([0-9]+)\ tests\ failed\ out\ of\ ([0-9]+) ]]; then
        bad=${BASH_REMATCH[1]} all=${BASH_REMATCH[2]}
        note "$1" $((all - bad)) "$bad"
    else
        note "$1" 0 1
    fi
}

# check NAME COMMAND...: passes when the command does.
check() {
    begin "$1"
    if "${@:2}"; then
        note "$1" 1 0
    else
        note "$1" 0 1
    fi
}

# built NAME FOLDER OPTION...: whether the folder is built; a failure is counted under the name.
built() {
    begin "$1"
    (configure "${@:2}" && build "$2") && return 0
    note "$1" 0 1
    return 1
}

need_packages run test check
python3 "$root/scripts/lint.py" --self-test || fail "The lint does not find what it is for"
check "Formatting" "$root/scripts/check_format.sh"
check "Numbers without the locale" python3 "$root/scripts/lint.py" numbers
check "Strings and their table" python3 "$root/scripts/lint.py" strings
check "Mutants match the sources" python3 "$root/scripts/mutants.py" check
check "Public headers alone, without Qt" "$root/scripts/check_headers.sh"

if built "Tests" "$root/build" -DTYPLOOM_TESTS=ON; then
    tests "Tests" "$root/build"
    check "No toolkit header in the plug-in" "$root/scripts/check_layers.sh" "$root/build"

    begin "Tests where 1.5 is written 1,5"
    locales=$(mktemp -d)
    if localedef -i de_DE -f UTF-8 "$locales/de_DE.UTF-8"; then
        LOCPATH=$locales LC_ALL=de_DE.UTF-8 LANGUAGE=de tests "Tests where 1.5 is written 1,5" "$root/build"
    else
        note "Tests where 1.5 is written 1,5" 0 1
    fi
    rm -rf "$locales"
fi
check "Commands as the documents write them" "$root/scripts/check_commands.py"
if built "Tests under the sanitizers" "$root/build-sanitize" -DTYPLOOM_TESTS=ON -DTYPLOOM_SANITIZE=ON; then
    export ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1:strict_string_checks=1
    export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
    tests "Tests under the sanitizers" "$root/build-sanitize"
fi

check "Fuzzing" "$root/fuzz" --runs 20000

printf '\n'
printf '%s\n' "${summary[@]}"
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
