#!/usr/bin/env bash
# Builds QORTool (release) and starts it. Arguments are passed to the program.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset release >/dev/null
cmake --build --preset release --target QORTool
exec build/release/bin/QORTool "$@"
