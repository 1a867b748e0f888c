# What ./run, ./test and ./bench share: Debian packages, configuring, building. To be sourced.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

fail() {
    echo "$*" >&2
    exit 1
}

# Installs the packages of the named lists that are not there, and says so. Silent when all are.
need_packages() {
    command -v dpkg-query >/dev/null || fail "This needs Debian 12 or a system with its packages: there is no dpkg-query here."
    local wanted missing
    wanted=$(for list in "$@"; do grep -v '^#' "$root/scripts/packages/$list.txt"; done)
    # Names that are not installed, in one query: an installed package has the state "installed".
    missing=$(comm -23 <(sort -u <<<"$wanted") \
        <(dpkg-query -W -f='${Package} ${db:Status-Status}\n' $wanted 2>/dev/null | sed -n 's/ installed$//p' | sort -u) | tr '\n' ' ')
    [ -n "${missing// /}" ] || return 0

    local as_root=()
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || fail "These packages are missing, and there is no sudo to install them: $missing"
        as_root=(sudo)
    fi
    echo "Installing from Debian: $missing" >&2
    local install=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends)
    local log
    log=$(mktemp)
    # The lists of a fresh machine are empty, those of an old one name files that are gone: get them anew and try again.
    if ! "${install[@]}" $missing >"$log" 2>&1; then
        "${as_root[@]}" apt-get update -qq >>"$log" 2>&1 || true
        "${install[@]}" $missing >>"$log" 2>&1 || { cat "$log" >&2; fail "Could not install: $missing"; }
    fi
    rm -f "$log"
}

# configure FOLDER OPTION...: only when the folder is new or was made with other options.
configure() {
    local folder=$1 stamp=$1/configured-with
    shift
    if [ -f "$folder/build.ninja" ] && [ "$(cat "$stamp" 2>/dev/null)" = "$*" ]; then
        return 0
    fi
    mkdir -p "$folder"
    if ! cmake -S "$root" -B "$folder" -G Ninja "$@" >"$folder/configure.log" 2>&1; then
        cat "$folder/configure.log" >&2
        fail "Could not configure $folder"
    fi
    echo "$*" >"$stamp"
}

# build FOLDER TARGET...: silent when there is nothing to do. No target: all.
build() {
    local folder=$1
    shift
    mkdir -p "$folder"
    # Two commands started at once build one after the other.
    exec {lock}>"$folder/building"
    flock "$lock"
    if ! ninja -C "$folder" -n "$@" 2>/dev/null | tail -n 1 | grep -q 'no work to do'; then
        echo "Building in ${folder#"$root"/} (the first time takes a few minutes)" >&2
        ninja -C "$folder" "$@" >&2 || fail "Could not build"
    fi
    exec {lock}>&-
}
