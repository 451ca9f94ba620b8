#!/usr/bin/env bash
# Builds the Debian package from the release build, installs it with apt,
# runs the installed ttltool and QORTool, removes the package again and checks
# that nothing of it is left. Needs root or sudo; skipped (exit 0, with a
# message) without them, or when a qortool package is installed already,
# which this would replace and remove.
set -euo pipefail
cd "$(dirname "$0")/.."

sudo=""
if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null && { sudo -n true 2>/dev/null || [ -t 0 ]; }; then
        sudo="sudo"
    else
        echo "SKIPPED: installing the package needs root or sudo"
        exit 0
    fi
fi
if dpkg-query -W -f='${Status}' qortool 2>/dev/null | grep -q "install ok installed"; then
    echo "SKIPPED: a qortool package is installed here already; this check would remove it"
    exit 0
fi

start=$(date +%s)
rm -f build/release/qortool_*.deb
cmake --build --preset release --target package >/dev/null
debs=(build/release/qortool_*.deb)
deb=$PWD/${debs[0]}
echo "-- $(basename "$deb")"
dpkg-deb --field "$deb" Depends

DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "$deb" >/dev/null
files=$(dpkg -L qortool)
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
status=0
HOME=$home XDG_CONFIG_HOME='' ttltool check /opt/qortool/samples/machining_centre.TTL || status=1
# The window opens and keeps running until stopped; the tool list window
# writes "Auto Read" into the user's settings once the catalogue is loaded.
set +e
HOME=$home XDG_CONFIG_HOME='' QT_QPA_PLATFORM=offscreen timeout 5 qortool \
    /opt/qortool/samples/machining_centre.TTL
[ $? -eq 124 ] || { echo "qortool ended by itself"; status=1; }
set -e
grep -q '^Auto Read=' "$home/.config/QORTool/QorTool.INI" ||
    { echo "qortool wrote no settings to ~/.config/QORTool"; status=1; }
DEBIAN_FRONTEND=noninteractive $sudo apt-get remove -y -qq qortool >/dev/null

if [ -e /opt/qortool ]; then
    echo "left behind: $(find /opt/qortool)"
    status=1
fi
while IFS= read -r f; do
    if [ -e "$f" ] && [ ! -d "$f" ]; then
        echo "left behind: $f"
        status=1
    fi
done <<<"$files"
echo "Debian package: $([ $status -eq 0 ] && echo fine || echo FAILED), $(( $(date +%s) - start )) s"
exit $status
