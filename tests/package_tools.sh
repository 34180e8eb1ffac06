# shellcheck shell=bash
# For the checks of packages, which source it after they have set `work`, a new folder: a private display,
# and the start of a packaged program on it.

# shellcheck disable=SC2154 # work
set -E
trap 'printf "%s: line %s failed\n" "$(basename "$0")" "$LINENO" >&2' ERR

server=
stop_display() {
    if [ -n "$server" ]; then
        kill "$server" || true
    fi
}

fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# A display that starts anew after each lone client, as those that look for windows are, would refuse the program.
start_display() {
    coproc display {
        exec Xvfb -displayfd 1 -screen 0 1280x800x24 -nolisten tcp -noreset 2>"$work/xvfb.log"
    }
    server=$!
    local number
    read -r number <&"${display[0]}"
    export DISPLAY=:$number
}

# has_window TITLE: whether a window's title starts so.
has_window() {
    xwininfo -root -tree | grep -F "\"$1" >/dev/null
}

has_no_window() {
    ! has_window "$1"
}

# wait_until SECONDS COMPLAINT COMMAND...
wait_until() {
    local end=$((SECONDS + $1)) complaint=$2
    shift 2
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || fail "$complaint"
        sleep 0.1
    done
}

# wait_for_window TITLE SECONDS
wait_for_window() {
    wait_until "$2" "no window \"$1\"" has_window "$1"
}

# wait_for_no_window TITLE SECONDS
wait_for_no_window() {
    wait_until "$2" "the window \"$1\" is still there" has_no_window "$1"
}

# A message box alone has a few hundred colours.
check_painted() {
    local colours
    sleep 1
    import -window root "$work/screen.png"
    colours=$(identify -format %k "$work/screen.png")
    [ "$colours" -gt 2000 ] || fail "nothing is painted: $colours colours"
    if [ -n "${PICTURE-}" ]; then
        cp "$work/screen.png" "$PICTURE"
    fi
}

# start_and_end FOLDER VERSION: starts the program of this folder, and ends it as the end of a session does.
start_and_end() {
    "$1/spellwick" &
    local program=$!
    wait_for_window "Spellwick $2 " 20
    check_painted
    if declare -F while_running >/dev/null; then
        while_running "$program"
    fi
    kill "$program"
    wait "$program" || fail "the program ended with $?"
    [ -s "$XDG_DATA_HOME/spellwick/settings.db" ] || fail "nothing was saved"
}
