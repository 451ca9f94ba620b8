#!/usr/bin/env bash
# Installs the build into a temporary prefix and runs the installed programs
# through their launchers in usr/bin, with HOME and XDG_CONFIG_HOME in the
# temporary folder: the catalogue, the help file and the samples are found,
# the settings go where they should, and nothing but the programs is installed.
set -uo pipefail
build=$1
tmp=$(mktemp -d)
trap 'chmod -R u+w "$tmp" 2>/dev/null; rm -rf "$tmp"' EXIT
root=$tmp/root
app=$root/opt/qortool
export HOME=$tmp/home XDG_CONFIG_HOME=$tmp/config
user_ini=$XDG_CONFIG_HOME/QORTool/QorTool.INI
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

cmake --install "$build" --prefix "$root" >/dev/null || { echo "FAIL: cmake --install"; exit 1; }

# Only the programs, their files and the desktop files: no test, no benchmark.
for f in opt/qortool/QORTool opt/qortool/ttltool opt/qortool/QORTool.msg \
         opt/qortool/QORTool_ja.msg opt/qortool/QORTool_Help.txt \
         opt/qortool/samples/machining_centre.TTL usr/bin/qortool usr/bin/ttltool \
         usr/share/applications/org.qortool.QORTool.desktop \
         usr/share/metainfo/org.qortool.QORTool.metainfo.xml \
         usr/share/mime/packages/org.qortool.QORTool.xml \
         usr/share/icons/hicolor/scalable/apps/org.qortool.QORTool.svg; do
    [ -e "$root/$f" ] || fail "$f is not installed"
done
stray=$(find "$root" -name '*_tests' -o -name '*_bench' -o -name '*.a' -o -name '*_fuzzer')
[ -z "$stray" ] || fail "installed but not part of the program: $stray"

# $1: what is checked; then the command. Fails when the command does.
expect() { local what=$1; shift; "$@" >"$tmp/out" 2>&1 || { fail "$what"; cat "$tmp/out"; }; }

# ttltool through its link finds the catalogue in the application folder.
expect "installed catalogue-check" "$root/usr/bin/ttltool" catalogue-check "$app/QORTool.msg"
expect "installed ttltool check" "$root/usr/bin/ttltool" check "$app/samples/machining_centre.TTL"

# QORTool through its link: the window opens (the tool list window writes
# "Auto Read" once the catalogue is loaded), then it is stopped.
start_qortool() {
    timeout 5 "$root/usr/bin/qortool" "$app/samples/machining_centre.TTL" >"$tmp/out" 2>&1
    [ $? -eq 124 ] || { fail "qortool ended by itself: $(cat "$tmp/out")"; }
}
start_qortool
grep -q '^Auto Read=' "$user_ini" 2>/dev/null || fail "qortool wrote no settings to $user_ini"
[ ! -e "$app/QorTool.INI" ] || fail "the installed folder got a settings file"

# Without the per-user mark a writable folder keeps its settings, as a
# Windows folder does.
rm "$app/QorTool.per-user"
expect "ttltool in a writable folder" "$root/usr/bin/ttltool" check "$app/samples/machining_centre.TTL"
[ -e "$app/QorTool.INI" ] || fail "settings not beside the program in a writable folder"
rm -f "$app/QorTool.INI"

# An unwritable folder without the mark: the user's folder again. Root writes
# through permissions, so as root the folder is mounted read-only in a mount
# namespace of its own, where the system allows that.
rm -rf "$XDG_CONFIG_HOME"
unwritable_run() {
    if [ "$(id -u)" -ne 0 ]; then
        chmod a-w "$app" && "$@"; local status=$?; chmod u+w "$app"; return $status
    fi
    unshare --mount --propagation private bash -c \
        'mount --bind -o ro "$0" "$0" 2>/dev/null || exit 77; "$@"' "$app" "$@"
}
unwritable_run true
case $? in
    0)
        expect "ttltool in an unwritable folder" unwritable_run \
            "$root/usr/bin/ttltool" check "$app/samples/machining_centre.TTL"
        [ -f "$user_ini" ] || fail "no settings in the user's folder for an unwritable program folder"
        [ ! -e "$app/QorTool.INI" ] || fail "settings written into the unwritable folder"
        rm -rf "$XDG_CONFIG_HOME"
        unwritable_run timeout 5 "$root/usr/bin/qortool" >/dev/null 2>&1
        grep -q '^Auto Read=' "$user_ini" 2>/dev/null ||
            fail "qortool in an unwritable folder wrote no settings to $user_ini"
        ;;
    *) echo "note: no read-only folder can be made here (root without mount rights); that case is covered by startup_tests" ;;
esac

# The desktop files pass Debian's validators (when installed: install-deps.sh does).
if command -v desktop-file-validate >/dev/null; then
    expect "desktop-file-validate" desktop-file-validate \
        "$root/usr/share/applications/org.qortool.QORTool.desktop"
else
    echo "note: desktop-file-validate missing (package desktop-file-utils)"
fi
if command -v appstreamcli >/dev/null; then
    expect "appstreamcli validate" appstreamcli validate --no-net \
        "$root/usr/share/metainfo/org.qortool.QORTool.metainfo.xml"
else
    echo "note: appstreamcli missing (package appstream)"
fi
if command -v xmllint >/dev/null; then
    expect "MIME type XML" xmllint --noout "$root/usr/share/mime/packages/org.qortool.QORTool.xml"
fi

[ "$failures" -eq 0 ] && echo "installed program: all checks passed"
exit $((failures > 0))
