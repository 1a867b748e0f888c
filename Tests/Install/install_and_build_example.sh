#!/usr/bin/env bash
# install_and_build_example.sh BUILD-FOLDER COMPILER SANITIZE
set -euo pipefail
build=$1 compiler=$2 sanitize=$3
sources=$(cd "$(dirname "$0")/../.." && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export QT_QPA_PLATFORM=offscreen LANGUAGE=en HOME=$folder

cmake --install "$build" --prefix "$folder/first" >"$folder/install.log"
mv "$folder/first" "$folder/prefix"
program=$folder/prefix/bin/typloom
if readelf -d "$folder"/prefix/bin/* "$folder"/prefix/lib/typloom/Libraries/*.so "$folder"/prefix/lib/typloom/PlugIns/*/*.so |
    grep -E 'R(UN)?PATH' | grep -F "$build"; then
    echo "What is installed looks for its libraries in the build folder"
    exit 1
fi

cp -r "$folder/prefix/share/doc/typloom-dev/examples/GlyphFacts" "$folder/example"
options=(-DCMAKE_PREFIX_PATH="$folder/prefix" -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror")
[ "$sanitize" = ON ] && options+=(-DCMAKE_CXX_FLAGS=-fsanitize=address,undefined)
cmake -S "$folder/example" -B "$folder/example/build" -G Ninja "${options[@]}" >"$folder/configure.log"
ninja -C "$folder/example/build" >"$folder/build.log" || { cat "$folder/build.log"; exit 1; }

"$program" "$folder/prefix/share/typloom/Fonts/Skarvane/Skarvane.designspace" --glyph n \
    --plugin "$folder/example/build/GlyphFacts.bundle" --describe >"$folder/seen.json"
python3 - "$folder/seen.json" "$sources/Fonts/Skarvane/Skarvane-Regular.ufo/glyphs/n.glif" <<'END'
import json, re, sys
seen = json.load(open(sys.argv[1]))
glyph = open(sys.argv[2]).read()
advance = re.search(r'<advance width="(\d+)"', glyph).group(1)
nodes = len(re.findall(r'<point [^>]*type=', glyph))
assert seen["tabs"] == ["Glyph", "Variation"], seen["tabs"]
assert seen["texts"] == ["n", f"Advance {advance}, Nodes {nodes}"], seen["texts"]
END
"$program" "$folder/prefix/share/typloom/Fonts/Skarvane/Skarvane.designspace" --describe |
    python3 -c 'import json, sys; sections = json.load(sys.stdin)["sections"]; assert sections[0]["title"] == "Font Axes", sections'
