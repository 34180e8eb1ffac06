# shellcheck shell=bash
# What ./run and ./test share: installing, building, and saying so in plain lines.
# Both source this from the root of the tree.

say() {
    printf '%s\n' "$*"
}

version_of_sources() {
    sed -n 's/^project(Spellwick VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt
}

# logged NAME COMMAND...: runs a long command with its output in build/NAME.log, and shows the end
# of that if it fails.
logged() {
    local log=build/$1.log
    shift
    mkdir -p build
    if "$@" >"$log" 2>&1 </dev/null; then
        return 0
    fi
    say "  failed; the end of $log:"
    tail -n 40 "$log" | sed 's/^/    /'
    return 1
}

# packages_for GROUP...: the packages of tools/packages that any of these groups needs.
packages_for() {
    local group
    for group in "$@"; do
        awk -v group="$group" '
            !/^#/ { for (i = 2; i <= NF; ++i) if ($i == group) print $1 }' tools/packages
    done | sort -u
}

is_installed() {
    dpkg-query -W -f='${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed
}

# install_for GROUP...: installs what is missing, or tells how and ends.
install_for() {
    local package
    local -a missing=() as_root=()
    for package in $(packages_for "$@"); do
        is_installed "$package" || missing+=("$package")
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return 0
    fi
    say "Missing packages: ${missing[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        if command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
            as_root=(sudo -n)
        elif command -v sudo >/dev/null && [ -t 0 ] && sudo -v; then
            as_root=(sudo)
        else
            say "They can be installed by root only. As root, run this line and start again:"
            say "apt-get update && apt-get install -y --no-install-recommends ${missing[*]}"
            exit 1
        fi
    fi
    say "Installing them (build/install.log)"
    logged install-update "${as_root[@]}" apt-get update || exit 1
    logged install "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}" || exit 1
}

# configure PRESET [OPTION...]
configure() {
    local preset=$1
    shift
    logged "configure-$preset" cmake --preset "$preset" "$@"
}

# build PRESET [TARGET...]: all targets if none is named.
build() {
    local preset=$1
    local -a targets=()
    shift
    if [ $# -gt 0 ]; then
        targets=(--target "$@")
    fi
    logged "build-$preset" cmake --build "build/$preset" --parallel "$(nproc)" "${targets[@]}"
}
