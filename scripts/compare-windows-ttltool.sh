#!/usr/bin/env bash
# Runs ttltool of the Linux build and ttltool.exe of the Windows cross build
# (under Wine) on every sample, each side in a folder of its own, and compares
# the two folders byte for byte: standard output and error, exit codes, files
# written and backups made.
#   compare-windows-ttltool.sh [LINUX_TTLTOOL] [WINDOWS_TTLTOOL_EXE]
set -euo pipefail
cd "$(dirname "$0")/.."

linux_tool=$(realpath "${1:-build/release/bin/ttltool}")
windows_tool=$(realpath "${2:-build/windows-cross/bin/ttltool.exe}")
wine=$(command -v /usr/lib/wine/wine64 || command -v wine64 || command -v wine)
export WINEPREFIX=${WINEPREFIX:-$(dirname "$windows_tool")/../wineprefix}
export WINEDEBUG=-all
# Wine hands the arguments over as UTF-8 only in a UTF-8 locale.
export LC_ALL=C.UTF-8

work=$(mktemp -d)
[ -n "${KEEP_COMPARE:-}" ] || trap 'rm -rf "$work"' EXIT

# A name with characters outside ASCII, as a user's file may have.
wide_name=$'J\xc3\xbcrgen \xe5\xb7\xa5\xe5\x85\xb7.TTL'

for side in linux windows; do
    mkdir -p "$work/$side"
    cp data/samples/*.TTL data/QORTool.msg "$work/$side/"
    cp data/samples/machining_centre.TTL "$work/$side/$wide_name"
done

step=0
run() {
    local side=$1
    shift
    step=$((step + 1))
    local name
    name=$(printf '%02d' "$step")
    (
        cd "$work/$side"
        set +e
        if [ "$side" = linux ]; then
            "$linux_tool" "$@" >"$name.out" 2>"$name.err"
        else
            "$wine" "$windows_tool" "$@" >"$name.out" 2>"$name.err"
        fi
        echo $? >"$name.status"
    )
}

both() {
    local before=$step
    run linux "$@"
    step=$before
    run windows "$@"
}

both catalogue-check QORTool.msg
for sample in data/samples/*.TTL "$wide_name"; do
    file=$(basename "$sample")
    both check "$file"
    both dump "$file"
    both normalize "$file" -o "normalized-$file"
    both export-csv "$file" -o "$file.csv"
    both import-csv "$file.csv" -o "normalized-$file" --overwrite
    both diff "$file" "normalized-$file"
    both normalize "$file"
    both normalize "$file"
done

if diff -r "$work/linux" "$work/windows"; then
    echo "ttltool.exe under Wine and ttltool on Linux agree on all $step runs: output, exit codes and $(find "$work/linux" -name "*.TTL" | wc -l) tool list files"
else
    echo "ttltool.exe under Wine differs from ttltool on Linux (see above)"
    exit 1
fi
