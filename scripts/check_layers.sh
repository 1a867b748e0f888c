#!/usr/bin/env bash
# check_layers.sh FOLDER: whether the objects of the plug-in, the kit and the core in a built folder were
# made without any header of Qt or of the platform's private room.
folder=$1
bad=$(ninja -C "$folder" -t deps | awk '
    /^[^ ].*: #deps/ { object = $1; next }
    object ~ /(Moravel|TyploomKit|TyploomCore|Interpolation|Formats)\/CMakeFiles/ && object !~ /^Tests/ && /\/qt6\/|Platform\/Qt\// { print object, $1 }')
objects=$(ninja -C "$folder" -t deps | grep -c '^Moravel/.*: #deps')
[ "$objects" -gt 0 ] || { echo "No object of the plug-in in $folder"; exit 1; }
[ -z "$bad" ] || { echo "$bad"; exit 1; }
