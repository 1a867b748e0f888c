#!/usr/bin/env bash
# ./test --long: the random tests many times over, each run with a seed of its own, which is printed.
#   TYPLOOM_SEQUENCES   how much, in percent of what ./test runs; 170000 is a million sequences
set -uo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/prepare.sh"

need_packages run test
configure "$root/build" -DTYPLOOM_TESTS=ON
build "$root/build"
export QT_QPA_PLATFORM=offscreen
failed=0

# long PROGRAM TESTS FACTOR: in parts, so that what was found is told early.
long() {
    local part seed
    for part in {1..10}; do
        seed=$RANDOM
        echo "$2: part $part of 10, TYPLOOM_SEED=$seed"
        TYPLOOM_SEED=$seed TYPLOOM_SEQUENCES=$(($3 / 10)) "$root/build/Tests/$1" --gtest_filter="$2" --gtest_brief=1 ||
            failed=1
    done
}
long Sequences/SequenceTests 'SidebarSequence.*' "${TYPLOOM_SEQUENCES:-170000}"
long AppKit/ControlTests 'RowDifference.isRight*:Diffable.showsEach*' "${TYPLOOM_SEQUENCES:-170000}"
long Program/ProgramTests 'Monkey.*' "${TYPLOOM_SEQUENCES:-70000}"
[ "$failed" = 0 ]
