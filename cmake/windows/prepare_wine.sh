#!/usr/bin/env bash
# prepare_wine.sh: makes the Wine prefix WINEPREFIX unless it is there: Windows 10, and windows that Wine draws by itself,
# which appear at once. Wants a display.
set -euo pipefail

wine=$(dirname "${BASH_SOURCE[0]}")/wine.sh
[ -e "$WINEPREFIX/ready" ] && exit 0
mkdir -p "$WINEPREFIX"
export LC_ALL=C.UTF-8 # code page 1252
"$wine" winecfg -v win10
"$wine" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f > /dev/null
touch "$WINEPREFIX/ready"
