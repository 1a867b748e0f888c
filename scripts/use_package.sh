#!/usr/bin/env bash
# Run by test_package.sh inside a fresh Debian, with the packages in /packages.
set -euo pipefail
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
apt-get install -y -qq --no-install-recommends /packages/*.deb >/dev/null
dpkg-query -L typloom typloom-dev | while read -r path; do [ -d "$path" ] || echo "$path"; done >/packages/files

useradd --create-home designer
as_designer() { su designer -c "$1"; }
sample=/usr/share/typloom/Fonts/Skarvane/Skarvane.designspace
as_designer "typloom --version"
as_designer "typloom $sample --glyph a --location wght=122 --describe" >/packages/seen.json
grep -q '"tab": "Variation"' /packages/seen.json
grep -q '"name": "Terminal"' /packages/seen.json
as_designer "typloom $sample --snapshot ~/a.png && test -s ~/a.png"
test -f /usr/share/mime/application/x-designspace+xml.xml
ldd /usr/bin/typloom /usr/lib/typloom/Libraries/*.so | grep 'not found' && exit 1

apt-get purge -y -qq typloom typloom-dev >/dev/null
while read -r path; do [ ! -e "$path" ] || { echo "$path is left"; exit 1; }; done </packages/files
[ ! -e /usr/lib/typloom ] && [ ! -e /usr/share/typloom ] || { echo "Folders are left"; exit 1; }
