#!/usr/bin/env bash
# Builds QORTool (release) and starts it. Arguments are passed to the program.
# Without arguments it opens a copy of the machining centre sample in the
# build folder (made on the first run and kept, so that work saved there is
# there next time), which leaves the sample itself untouched.
#
# scripts/run.sh --install [FILE]: builds the Debian package instead, installs
# it (menu entry, icon, .TTL files opened by QORTool, qortool and ttltool on
# the PATH) and starts the installed program. `sudo apt remove qortool`
# removes it again.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset release >/dev/null

if [ "${1:-}" = "--install" ]; then
    shift
    sudo=""
    [ "$(id -u)" -eq 0 ] || sudo="sudo"
    rm -f build/release/qortool_*.deb
    cmake --build --preset release --target package
    debs=(build/release/qortool_*.deb)
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y "$PWD/${debs[0]}"
    exec qortool "$@"
fi

cmake --build --preset release --target QORTool
if [ $# -eq 0 ]; then
    mkdir -p build/release/samples
    copy=build/release/samples/machining_centre.TTL
    [ -f "$copy" ] || cp data/samples/machining_centre.TTL "$copy"
    exec build/release/bin/QORTool "$PWD/$copy"
fi
exec build/release/bin/QORTool "$@"
