# shellcheck shell=bash
# Shared by ./run, ./test, ./package and some of tools/, which source it from the root of the tree: installing, building
# and reporting.

say() {
    printf '%s\n' "$*"
}

version_of_sources() {
    sed -n 's/^project(Spellwick VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt
}

# The time that packages and the files in them bear, in seconds: that of the newest entry of the changelog,
# so that the same sources make the same bytes.
time_of_sources() {
    date -d "$(sed -n 's/^ -- .*>  //p' packaging/debian/changelog.in | head -n 1)" +%s
}

# copy_tree FOLDER: the tree as it is tracked, with what is not ignored; without git, as in an archive of the sources,
# all but what is built.
copy_tree() {
    local target=$1
    mkdir -p "$target"
    if [ -e .git ]; then
        git ls-files --cached --others --exclude-standard -z
    else
        find . -path './build*' -prune -o '(' -type f -o -type l ')' -printf '%P\0'
    fi | tar --create --null --files-from=- --ignore-failed-read | tar --extract -C "$target"
}

# tar_of FOLDER NAME: an archive of NAME in FOLDER that depends on nothing but what is in it.
tar_of() {
    tar --create -C "$1" --sort=name --owner=0 --group=0 --numeric-owner --format=gnu "$2"
}

# logged NAME COMMAND...: runs a long command with its output in build/NAME.log; shows the end of the log
# if it fails.
logged() {
    local log=build/$1.log
    shift
    mkdir -p build
    if "$@" >"$log" 2>&1 </dev/null; then
        return 0
    fi
    show_failure "$log"
    return 1
}

show_failure() {
    say "  failed; the end of $1:"
    tail -n 40 "$1" | sed 's/^/    /'
}

# packages_for GROUP...: the packages in tools/packages that any of these groups needs.
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

# apt_get NAME PREFIX... -- ARGUMENT...: apt-get with its output in build/NAME.log. It waits up to
# five minutes for another's lock, since a fresh machine updates itself in the background. apt's own
# timeout does not cover the lock on the package lists.
apt_get() {
    local log=build/$1.log give_up=$((SECONDS + 300))
    local -a prefix=()
    shift
    while [ "$1" != -- ]; do
        prefix+=("$1")
        shift
    done
    shift
    mkdir -p build
    until "${prefix[@]}" env LC_ALL=C DEBIAN_FRONTEND=noninteractive \
        apt-get -o DPkg::Lock::Timeout=300 "$@" >"$log" 2>&1 </dev/null; do
        if [ "$SECONDS" -ge "$give_up" ] || ! grep -q 'Could not get lock' "$log"; then
            show_failure "$log"
            return 1
        fi
        sleep 2
    done
}

# install_for GROUP...: installs what is missing, or says how and ends.
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
    apt_get install-update "${as_root[@]}" -- update || exit 1
    apt_get install "${as_root[@]}" -- install -y --no-install-recommends "${missing[@]}" || exit 1
}

# configure PRESET [OPTION...]
configure() {
    local preset=$1
    shift
    logged "configure-$preset" cmake --preset "$preset" "$@"
}

# build PRESET [TARGET...]: builds what the preset names if no target is named.
build() {
    local preset=$1
    local -a targets=()
    shift
    if [ $# -gt 0 ]; then
        targets=(--target "$@")
    fi
    logged "build-$preset" cmake --build --preset "$preset" --parallel "$(nproc)" "${targets[@]}"
}

# fuzz SECONDS TARGET: runs a fuzz target from its seeds and from what earlier runs have kept in
# build/fuzz/found/NAME. What fails lies beside that folder; the log is build/fuzz-NAME.log. Leaves the exit
# status in a file.
fuzz() {
    local name
    name=$(basename "$2")
    local -a seeds=()
    if [ -d "tests/fuzz/corpus/$name" ]; then
        seeds=("tests/fuzz/corpus/$name")
    fi
    mkdir -p "build/fuzz/found/$name"
    rm -f "build/fuzz/found/$name.status"
    "$2" -max_total_time="$1" -timeout=20 -rss_limit_mb=1024 -verbosity=0 -print_final_stats=1 \
        -artifact_prefix="build/fuzz/found/$name-" "build/fuzz/found/$name" \
        "${seeds[@]}" >"build/fuzz-$name.log" 2>&1 </dev/null
    echo $? >"build/fuzz/found/$name.status"
}
