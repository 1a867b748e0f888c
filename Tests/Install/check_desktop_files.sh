#!/usr/bin/env bash
# check_desktop_files.sh PROGRAM: by the validators of the desktop, and against what the program tells itself.
set -euo pipefail
program=$1
cd "$(dirname "$0")/../../Desktop"
id=org.typloom.Typloom
desktop-file-validate $id.desktop
appstreamcli validate --no-net $id.metainfo.xml
warnings=$(mandoc -T lint typloom.1 2>&1; LC_ALL=C.UTF-8 man --warnings -E UTF-8 -l typloom.1 2>&1 >/dev/null) || true
[ -z "$warnings" ] || { echo "$warnings"; exit 1; }

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder/mime/packages"
cp $id.mime.xml "$folder/mime/packages/$id.xml"
XDG_DATA_HOME=$folder update-mime-database "$folder/mime"
grep -q 'application/x-designspace+xml:\*.designspace' "$folder/mime/globs2"
grep -q 'application/x-designspace+xml' $id.desktop
rsvg-convert --width 64 $id.svg --output "$folder/icon.png"

export QT_QPA_PLATFORM=offscreen
# "  --glyph NAME    show that glyph" and ".It Fl -glyph Ar NAME"
told=$("$program" --help | grep -oE '^ +--[a-z-]+( [A-Za-z.]+)?' | sed -E 's/^ +//; s/ [a-z].*//' | sort)
written=$(sed -nE 's/^\.It Fl (-[a-z-]+)( Ar (.*))?$/-\1 \3/p' typloom.1 | sed 's/ $//' | sort)
[ -n "$told" ] || { echo "No options in --help"; exit 1; }
diff <(echo "$told") <(echo "$written") || { echo "The manual page and --help tell different options"; exit 1; }
version=$("$program" --version | cut -d ' ' -f 2)
grep -q "<release version=\"$version\"" $id.metainfo.xml || { echo "No release $version in the metainfo"; exit 1; }
