#!/usr/bin/env bash
# wine.sh PROGRAM ARGUMENT…: runs a Windows program under Wine in the prefix that prepare_wine.sh has made (WINEPREFIX,
# build/windows/wine unless set).
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
export WINEPREFIX=${WINEPREFIX:-$root/build/windows/wine}
export WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml,winedbg.exe="
exec wine "$@"
