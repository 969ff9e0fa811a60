# shellcheck shell=bash
# Wine, as the suite's programs run under it. Read by `zo` and by `run-windows`.
#
# A prefix serves one architecture and one environment of the tests, after which it is named, so that environments can
# be tested at the same time. The system's locale decides the code page: C.UTF-8 gives 1252, Japanese 932. A program
# named <name>_win31.exe, _win98, _nt40 or _win10 finds itself on that family of Windows; the programs that a prefix
# knows of are entered in its registry (zo: register_programs).
#
# All windows of a prefix lie in one virtual desktop, which gives them captions and an order of activation without a
# window manager.

# Sets the environment for programs of one prefix, run by run_wine. $1 build directory of the architecture, $2
# architecture, $3 prefix: the environment for tests, "run" for everything else
wine_environment() {
    export WINEPREFIX=$1/prefix-$3
    export WINEARCH=win32
    [ "$2" = x86 ] || WINEARCH=win64
    export WINEDEBUG=${ZO_WINEDEBUG:--all}
    # Neither offer to install what no program here needs, nor write menus into the home folder; and take the simulated
    # TAPI32.DLL beside the programs, not Wine's own.
    export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d;tapi32=n"
    unset LANG LANGUAGE LC_ALL LOCPATH WINELOADER
    wine_locale=(LC_ALL=C.UTF-8)
    if [[ $3 == *-932* ]]; then
        # Made there by zo, which changes nothing on the machine. The shell itself keeps out of this locale.
        wine_locale=(LC_ALL=ja_JP.UTF-8 LOCPATH="${1%/*}/locale")
    fi
}

# Runs a program in the environment that was set.
run_wine() { env "${wine_locale[@]}" wine "$@"; }

# Starts an X server of its own for one prefix, on a free number. $1 file for its output. Sets DISPLAY and X_SERVER_PID.
start_display() {
    local number_pipe number
    number_pipe=$(mktemp -u)
    mkfifo "$number_pipe"
    Xvfb -displayfd 3 -screen 0 1024x768x24 -noreset -nolisten tcp 3>"$number_pipe" >"$1" 2>&1 </dev/null &
    X_SERVER_PID=$!
    # The server writes the number when it is ready, and closes the pipe without a word if it cannot start.
    number=
    read -r -t 30 number <"$number_pipe" || true
    rm -f "$number_pipe"
    if [ -z "$number" ]; then
        kill "$X_SERVER_PID" 2>/dev/null || true
        return 1
    fi
    export DISPLAY=:$number
}

# Starts a modem for the current prefix: its port COM99, and a pipe for orders to it (docs/telsim.md). It ends with the
# calling shell at the latest. $1 file for what it complains of. Sets MODEM_PID.
start_modem() {
    local ready terminal=
    exec {ready}< <(exec python3 -B "$(dirname "${BASH_SOURCE[0]}")/../telsim/modem.py" \
        --link "$WINEPREFIX/dosdevices/com99" --control "$WINEPREFIX/modem.control" --while $$ 2>"$1" </dev/null)
    MODEM_PID=$!
    # It says where its terminal is when everything is in place.
    read -r -t 30 terminal <&"$ready" || true
    exec {ready}<&-
    [ -n "$terminal" ]
}
