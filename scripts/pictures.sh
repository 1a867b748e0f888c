#!/usr/bin/env bash
# Draws every state of the windows, in a light and in a dark palette.
#   scripts/pictures.sh FOLDER         into that folder
#   scripts/pictures.sh --references   those that the tests compare with, and the README's
# QT_SCALE_FACTOR=1.5 draws for such a screen, PICTURE_FONT_SIZE=18 with letters of so many points.
set -uo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/prepare.sh"

[ $# = 1 ] || fail "Where to? scripts/pictures.sh FOLDER, or --references"
need_packages run test
configure "$root/build" -DTYPLOOM_TESTS=ON
build "$root/build" PictureTests
pictures=$root/build/Tests/Pictures/PictureTests
if [ "$1" != --references ]; then
    exec "$pictures" --write "$1"
fi
references=$root/Tests/Pictures/References
rm -f "$references"/*.png
"$pictures" --references "$references" || exit 1
drawn=$(mktemp -d)
trap 'rm -rf "$drawn"' EXIT
"$pictures" --write "$drawn" && cp "$drawn/window-light.png" "$root/Documentation/Pictures/window.png"
