#!/usr/bin/env bash
# Builds what ships: the release heralder.exe (asking the publisher's own
# server), the publisher's tool and the installer build/dist/heralder-setup.exe.
#
#   scripts/package.sh [--cert FILE.pfx] [--no-build]
#
# Signing (Authenticode, osslsigncode): give a PKCS#12 file with --cert or
# HERALDER_SIGN_PFX, and its password in HERALDER_SIGN_PASSWORD (read from the
# environment, never from the command line, so it shows in no process list).
# HERALDER_SIGN_TIMESTAMP may name an RFC 3161 time-stamp server. Without a
# certificate everything is built unsigned, and the script says so.
#
# Ships: build/dist/heralder-setup.exe (installs heralder.exe, the manual and
# the policy template) and build/dist/heralder-tool.exe (the publisher's own
# checker, not installed on users' machines).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
dist="$root/build/dist"
pfx=${HERALDER_SIGN_PFX:-}
build=1

while [ $# -gt 0 ]; do
    case "$1" in
        --cert) pfx=${2:?--cert needs a file}; shift 2 ;;
        --no-build) build=0; shift ;;
        *) echo "usage: package.sh [--cert FILE.pfx] [--no-build]" >&2; exit 2 ;;
    esac
done

# The version comes from the one header the programs are built from.
version_define() {
    sed -nE "s/^#define $1 \"?([^\"]*)\"?$/\1/p" "$root/base/version.h"
}
version_display=$(version_define HERALDER_VERSION_DISPLAY)
version_dotted=$(version_define HERALDER_VERSION_DOTTED)
copyright=$(version_define HERALDER_COPYRIGHT)
if [ -z "$version_display" ] || [ -z "$version_dotted" ] || [ -z "$copyright" ]; then
    echo "package: cannot read the version from base/version.h" >&2
    exit 1
fi

[ "$build" -eq 1 ] && "$root/scripts/build.sh" release
programs="$root/build/release"
for f in heralder.exe heralder-tool.exe html/manual.html; do
    [ -f "$programs/$f" ] || { echo "package: $programs/$f is missing" >&2; exit 1; }
done

rm -rf "$dist"
stage="$dist/stage"
mkdir -p "$stage"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$programs/heralder.exe" "$programs/heralder-tool.exe" "$stage/"
cp -r "$programs/html" "$stage/html"

makensis_args=()
if [ -n "$pfx" ]; then
    [ -r "$pfx" ] || { echo "package: cannot read the certificate $pfx" >&2; exit 1; }
    pfx=$(cd "$(dirname "$pfx")" && pwd)/$(basename "$pfx")
    # The password goes to osslsigncode through a private file, not argv.
    umask 077
    printf '%s' "${HERALDER_SIGN_PASSWORD:-}" >"$work/password"
    umask 022
    timestamp=()
    [ -n "${HERALDER_SIGN_TIMESTAMP:-}" ] && timestamp=(-ts "$HERALDER_SIGN_TIMESTAMP")
    cat >"$work/sign.sh" <<EOF
#!/bin/sh
# Signs the file named by \$1 in place.
set -e
osslsigncode sign -pkcs12 '$pfx' -readpass '$work/password' -h sha256 \\
    -n 'Quenmark Heralder' -i 'http://www.quenmark.com/' ${timestamp[*]:-} \\
    -in "\$1" -out "\$1.signed" >/dev/null
mv -f "\$1.signed" "\$1"
EOF
    chmod +x "$work/sign.sh"
    for exe in heralder.exe heralder-tool.exe; do
        "$work/sign.sh" "$stage/$exe"
    done
    # makensis signs the uninstaller before packing it, and the installer last.
    makensis_args+=("-DSIGN_SCRIPT=$work/sign.sh")
fi

# The welcome and finish pages' picture: our icon on the program's blue.
convert -background none "mvg:$root/resources/heralder_icon.mvg" -resize 112x112 "$work/icon.png"
convert -size 164x314 gradient:'#1d4f91'-'#0b2447' "$work/icon.png" \
    -gravity north -geometry +0+48 -composite -type TrueColor "BMP3:$work/wizard.bmp"

makensis -V2 -NOCD \
    "-DVERSION_DISPLAY=$version_display" "-DVERSION_DOTTED=$version_dotted" \
    "-DCOPYRIGHT=$copyright" "-DROOT=$root" "-DPROGRAMS=$stage" \
    "-DOUTFILE=$dist/heralder-setup.exe" "-DWIZARD_BITMAP=$work/wizard.bmp" \
    ${makensis_args[@]+"${makensis_args[@]}"} "$root/installer/heralder.nsi"

cp "$stage/heralder-tool.exe" "$dist/heralder-tool.exe"
rm -rf "$stage"
echo "package: $dist/heralder-setup.exe (Quenmark Heralder $version_display, $version_dotted)"
if [ -n "$pfx" ]; then
    echo "package: heralder.exe, heralder-tool.exe, the uninstaller and the installer are signed"
else
    echo "package: no certificate given (--cert or HERALDER_SIGN_PFX): everything is UNSIGNED"
fi
