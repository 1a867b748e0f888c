#!/usr/bin/env bash
# test_package.sh FOLDER: the packages in it are checked by lintian, installed into a fresh Debian that is made for this
# and thrown away, used there by someone who is not root, and removed.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/prepare.sh"
packages=$(cd "$1" && pwd)

lintian --allow-root --fail-on error,warning --suppress-tags initial-upload-closes-no-bugs "$packages"/*.deb

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
chmod 755 "$folder" # The user that apt works as comes in here.
cp "$packages"/*.deb "$root/scripts/use_package.sh" "$folder"
codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
mmdebstrap --quiet --variant=apt --skip=cleanup \
    --customize-hook="mkdir \"\$1/packages\"" \
    --customize-hook="copy-in $folder/. /packages" \
    --customize-hook='chroot "$1" bash /packages/use_package.sh' \
    "$codename" /dev/null
echo "The packages install, run and go again"
