#!/usr/bin/env bash
# Builds QORTool (release) and starts it. Arguments are passed to the program.
# Without arguments it opens a copy of the machining centre sample in the
# build folder (made on the first run and kept, so that work saved there is
# there next time), which leaves the sample itself untouched.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset release >/dev/null
cmake --build --preset release --target QORTool
if [ $# -eq 0 ]; then
    mkdir -p build/release/samples
    copy=build/release/samples/machining_centre.TTL
    [ -f "$copy" ] || cp data/samples/machining_centre.TTL "$copy"
    exec build/release/bin/QORTool "$PWD/$copy"
fi
exec build/release/bin/QORTool "$@"
