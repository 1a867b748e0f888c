#!/usr/bin/env bash
# Whether each public header compiles alone, with no folder of Qt to be found.
cd "$(dirname "$0")/.." || exit 1
check_one() {
    g++ -std=c++20 -Wall -Wextra -Werror -fsyntax-only -I. -include "$1" -x c++ /dev/null || { echo "$1 does not compile alone"; exit 1; }
}
export -f check_one
# Qt's headers are in no folder that the compiler looks into by itself; a header that needs them fails.
# Headers of TyploomApp that export nothing are private to it: its own widgets.
{
    git ls-files -z -- 'Platform/Foundation/*.h' 'Platform/AppKit/*.h' 'Typloom/*.h' ':!Typloom/TyploomApp'
    git ls-files -z -- 'Typloom/TyploomApp/*.h' | xargs -0 grep -lZ TYPLOOM_API
} |
    xargs -0 -n 1 -P 2 bash -c 'check_one "$1"' check_one
