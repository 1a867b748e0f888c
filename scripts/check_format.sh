#!/usr/bin/env bash
# Whether every source is as clang-format 14 writes it, by .clang-format. Repair: clang-format -i FILE
cd "$(dirname "$0")/.." || exit 1
git ls-files -z -- '*.h' '*.cpp' | xargs -0 clang-format --dry-run -Werror
