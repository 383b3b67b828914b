#!/bin/sh
# Wine for the cross-built programs: headless, 64-bit, quiet, in the prefix
# named by WINEPREFIX (the build folder's own).
#   wine.sh run PROGRAM [ARGUMENTS...]  runs a Windows program
#   wine.sh start [DLL]                 makes the prefix when missing, starts a
#                                       wineserver and registers the DLL
#   wine.sh stop                        ends the wineserver
set -eu

if [ -z "${WINEPREFIX:-}" ]; then
    echo "wine.sh: set WINEPREFIX to the prefix folder (the build folder's wine-prefix)" >&2
    exit 2
fi
export WINEPREFIX
export WINEARCH=win64
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
unset DISPLAY WAYLAND_DISPLAY

command="${1:-}"
[ $# -gt 0 ] && shift
case "$command" in
run)
    exec wine "$@"
    ;;
start)
    # A prefix without kernel32.dll is half made (seen on the first start
    # right after Wine was installed): made again, up to three times.
    tries=0
    while [ ! -f "$WINEPREFIX/drive_c/windows/system32/kernel32.dll" ]; do
        tries=$((tries + 1))
        if [ "$tries" -gt 3 ]; then
            echo "wine.sh: wineboot could not make the prefix $WINEPREFIX" >&2
            exit 1
        fi
        wineserver -k > /dev/null 2>&1 < /dev/null || true
        rm -rf "$WINEPREFIX"
        mkdir -p "$WINEPREFIX"
        wine wineboot --init > /dev/null 2>&1 < /dev/null || true
        wineserver -w > /dev/null 2>&1 < /dev/null || true
    done
    # A wineserver started here, with its output away from the caller's
    # pipes: one that inherits ctest's pipe holds every test for seconds.
    wineserver -p > /dev/null 2>&1 < /dev/null || true
    wine cmd /c exit > /dev/null 2>&1 < /dev/null
    if [ $# -gt 0 ]; then
        if ! wine regsvr32 /s "$(winepath -w "$1")" > /dev/null 2>&1 < /dev/null; then
            echo "wine.sh: regsvr32 could not register $1" >&2
            exit 1
        fi
    fi
    ;;
stop)
    wineserver -k > /dev/null 2>&1 < /dev/null || true
    ;;
*)
    echo "usage: wine.sh run PROGRAM [ARGUMENTS...] | start [DLL] | stop" >&2
    exit 2
    ;;
esac
