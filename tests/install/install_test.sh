#!/usr/bin/env bash
# The shipped installer as users and administrators meet it, under Wine in a
# throw-away prefix: a package signed with a certificate made for this run,
# a silent install read back (files, Start menu links, "Apps & features"
# values, version blocks), a second install over the first that must keep the
# user's data, a silent uninstall that must remove everything but that data,
# and an interactive install and uninstall photographed page by page into
# build/dist/screenshots. Ends with one "install cases: N passed, N failed" line.
#   tests/install/install_test.sh [--no-build]
set -uo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
work="$root/build/install_test"
dist="$root/build/dist"
shots="$dist/screenshots"
passed=0
failed=0

check() {  # description, command...: one case
    if "${@:2}" >/dev/null 2>&1; then
        passed=$((passed + 1))
        echo "ok   $1"
    else
        failed=$((failed + 1))
        echo "FAIL $1"
    fi
}

finish() {
    echo "install cases: $passed passed, $failed failed"
    [ "$failed" -eq 0 ]
    exit
}

rm -rf "$work" && mkdir -p "$work"

# --- A certificate authority and a code-signing certificate for this run only.
pki="$work/pki"
mkdir -p "$pki"
password="test-$RANDOM-$RANDOM"
(
    cd "$pki" &&
    openssl req -x509 -newkey rsa:2048 -nodes -keyout ca.key -out ca.pem -days 2 \
        -subj "/CN=Heralder Test Root" -addext "basicConstraints=critical,CA:TRUE" \
        -addext "keyUsage=critical,keyCertSign,cRLSign" &&
    openssl req -newkey rsa:2048 -nodes -keyout signer.key -out signer.csr \
        -subj "/O=Quenmark/CN=Quenmark Test Signing" &&
    printf 'keyUsage=critical,digitalSignature\nextendedKeyUsage=codeSigning\n' >signer.ext &&
    openssl x509 -req -in signer.csr -CA ca.pem -CAkey ca.key -CAcreateserial -days 2 \
        -extfile signer.ext -out signer.pem &&
    openssl pkcs12 -export -inkey signer.key -in signer.pem -certfile ca.pem \
        -passout "pass:$password" -out signer.pfx
) >"$work/pki.log" 2>&1
check "a throw-away signing certificate is made" test -s "$pki/signer.pfx"

# Without a certificate: built all the same, unsigned, and the script says so.
env -u HERALDER_SIGN_PFX "$root/scripts/package.sh" "$@" >"$work/package-unsigned.log" 2>&1
check "package.sh without a certificate builds the installer" test -s "$dist/heralder-setup.exe"
check "package.sh says it is unsigned" grep -q "UNSIGNED" "$work/package-unsigned.log"
check "the unsigned installer carries no signature" bash -c "! osslsigncode verify -in '$dist/heralder-setup.exe'"

HERALDER_SIGN_PFX="$pki/signer.pfx" HERALDER_SIGN_PASSWORD="$password" \
    "$root/scripts/package.sh" "$@" >"$work/package.log" 2>&1
check "package.sh builds the signed installer" test -s "$dist/heralder-setup.exe"
[ -s "$dist/heralder-setup.exe" ] || { tail -30 "$work/package.log"; finish; }
check "package.sh says the files are signed" grep -q "are signed" "$work/package.log"
check "no password reaches the package log" bash -c "! grep -q '$password' '$work/package.log'"

signed_by_test_root() {  # files...
    for f; do
        osslsigncode verify -CAfile "$pki/ca.pem" -in "$f" 2>&1 |
            grep -q "Signature verification: ok" || return 1
    done
}
check "installer and tool signatures verify" \
    signed_by_test_root "$dist/heralder-setup.exe" "$dist/heralder-tool.exe"

# exiftool's "-S" value of one tag.
tag() { exiftool -S -s -"$2" "$1" 2>/dev/null; }
check "installer version block 17.0.0.2" test "$(tag "$dist/heralder-setup.exe" ProductVersionNumber)" = "17.0.0.2"
check "tool version block 17.0.0.2" test "$(tag "$dist/heralder-tool.exe" FileVersionNumber)" = "17.0.0.2"

# --- Wine: a prefix of its own.
. "$root/scripts/wine_env.sh"
wine_env_start "$work"
drive="$WINEPREFIX/drive_c"
program="$drive/Program Files/Quenmark/Heralder"
menu="$drive/ProgramData/Microsoft/Windows/Start Menu/Programs/Quenmark"
userdir=$(wine cmd /c echo %APPDATA% 2>/dev/null | tr -d '\r')
appdata=$(winepath -u "$userdir" 2>/dev/null)
startup=$(winepath -u "$(wine cmd /c echo %APPDATA%\\Microsoft\\Windows\\Start Menu\\Programs\\Startup 2>/dev/null | tr -d '\r')")
uninstall_key='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Quenmark Heralder'

reg_value() {  # name: the value's data as "wine reg query" prints it
    # "wine reg" on a busy machine now and then prints nothing: ask again.
    local value try
    for try in 1 2 3; do
        value=$(wine reg query "$uninstall_key" /v "$1" 2>/dev/null | tr -d '\r' |
            sed -nE "s/^ +$1 +REG_[A-Z_]+ +(.*)$/\1/p")
        [ -n "$value" ] && break
        sleep 1
    done
    printf '%s\n' "$value"
}

# Waits up to a minute for the uninstaller, which runs a copy of itself from the
# temporary folder and returns at once.
wait_gone() {
    timeout 60 bash -c 'while [ -e "$1" ]; do sleep 0.5; done' _ "$1"
}

# --- Silent install.
timeout 300 wine "$dist/heralder-setup.exe" /S
check "silent install ends with exit code 0" test $? -eq 0
check "program, uninstaller and policy files installed" \
    ls "$program/heralder.exe" "$program/uninstall.exe" "$program/policy/heralder.admx" \
    "$program/policy/en-US/heralder.adml"
check "every manual file installed" diff -r "$root/html" "$program/html"
check "program and uninstaller signatures verify" \
    signed_by_test_root "$program/heralder.exe" "$program/uninstall.exe"
check "program version block 17.0.0.2" test "$(tag "$program/heralder.exe" FileVersionNumber)" = "17.0.0.2"
check "program shows version 17.0a" test "$(tag "$program/heralder.exe" ProductVersion)" = "17.0a"
check "program copyright line" bash -c "exiftool -S -s -LegalCopyright '$program/heralder.exe' | grep -q '^Copyright (C) 2026 Quenmark$'"
check "the user's data folder exists" test -d "$appdata/Quenmark/Heralder"

link="$menu/Heralder.lnk"
check "Start menu entry starts the program" bash -c "exiftool -S -s -LocalBasePath '$link' | grep -qi 'Quenmark\\\\Heralder\\\\heralder.exe$'"
check "Start menu entry has no switch" test -z "$(tag "$link" CommandLineArguments)"
check "manual entry opens the manual" bash -c "exiftool -S -s -LocalBasePath '$menu/Heralder Manual.lnk' | grep -qi 'Heralder\\\\html\\\\manual.html$'"

check "DisplayName" test "$(reg_value DisplayName)" = "Quenmark Heralder"
check "Publisher" test "$(reg_value Publisher)" = "Quenmark"
check "DisplayVersion" test "$(reg_value DisplayVersion)" = "17.0a"
check "DisplayIcon" test "$(reg_value DisplayIcon)" = 'C:\Program Files\Quenmark\Heralder\heralder.exe,0'
check "UninstallString" test "$(reg_value UninstallString)" = '"C:\Program Files\Quenmark\Heralder\uninstall.exe"'
check "QuietUninstallString" test "$(reg_value QuietUninstallString)" = '"C:\Program Files\Quenmark\Heralder\uninstall.exe" /S'
check "NoModify" test "$(reg_value NoModify)" = "0x1"
check "NoRepair" test "$(reg_value NoRepair)" = "0x1"
check "EstimatedSize in KB, not zero" bash -c "test \$(( $(reg_value EstimatedSize || echo 0) )) -gt 100"

# --- The user's data, then a second install over the first.
mkdir -p "$appdata/Quenmark/Heralder/images"
printf '[HERALDER]\r\nAlertFontSize=23\r\nInitConfigDone=1\r\n' >"$appdata/Quenmark/Heralder17.ini"
printf '2107\r\n2108\r\n' >"$appdata/Quenmark/Heralder/Heralder.lst"
cp "$root/resources/heralder.ico" "$appdata/Quenmark/Heralder/images/picture.png"
keep="$work/kept"
mkdir -p "$keep" && cp -r "$appdata/Quenmark/." "$keep/"
mkdir -p "$startup" && cp "$link" "$startup/Heralder.lnk"

timeout 300 wine "$dist/heralder-setup.exe" /S
check "second install ends with exit code 0" test $? -eq 0
check "second install keeps settings, seen list and pictures" diff -r "$keep" "$appdata/Quenmark"
check "second install keeps the program" test -f "$program/heralder.exe"
check "one Apps & features entry" test "$(wine reg query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall' 2>/dev/null | grep -c 'Quenmark Heralder')" -eq 1

# --- Silent uninstall: everything of ours goes but what the user made.
wine "$program/uninstall.exe" /S
wait_gone "$program/uninstall.exe"
sleep 1
check "uninstall removes the program, the empty Quenmark folder, Start menu folder and link" \
    test ! -e "$drive/Program Files/Quenmark" -a ! -e "$menu" -a ! -e "$startup/Heralder.lnk"
check "uninstall removes the Apps & features entry" bash -c "! wine reg query '$uninstall_key' >/dev/null 2>&1"
check "silent uninstall keeps the user's data" diff -r "$keep" "$appdata/Quenmark"

# --- Interactive install and uninstall, page by page, with a person's keys.
rm -rf "$shots" && mkdir -p "$shots"
# xdotool can hang when a window goes away during its search: bounded.
setup_window() { timeout 5 xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -1; }
shoot() {  # window title, picture name
    local id i
    for i in $(seq 240); do
        id=$(setup_window "$1")
        [ -n "$id" ] && break
        sleep 0.25
    done
    if [ -z "$id" ]; then
        echo "no window \"$1\" for $2 (the screen: $2-missing.png)"
        import -window root "$shots/$2-missing.png" 2>/dev/null
        return 1
    fi
    sleep "${3:-1.2}"  # let the page paint
    # The screen under the window, so that a message box over it shows too.
    eval "$(timeout 5 xdotool getwindowgeometry --shell "$id")"
    import -window root -crop "${WIDTH}x${HEIGHT}+${X}+${Y}" +repage "$shots/$2.png" 2>/dev/null
}
press() {  # window title, keys...
    local id
    id=$(setup_window "$1") || return 1
    [ -n "$id" ] || return 1
    timeout 5 xdotool windowfocus "$id" 2>/dev/null
    timeout 5 xdotool key --window "$id" "${@:2}"
}

if command -v xdotool >/dev/null; then
    wine "$dist/heralder-setup.exe" >/dev/null 2>&1 &
    installer=$!
    title="Quenmark Heralder Setup"
    shoot "$title" install_1_welcome && press "$title" Return
    shoot "$title" install_2_notice && press "$title" Return
    shoot "$title" install_3_folder && press "$title" Return
    shoot "$title" install_4_progress 4 && press "$title" Return
    shoot "$title" install_5_finish
    # Leave the sign-up box for the program's own tests: untick it, then Finish.
    press "$title" space
    sleep 0.3
    press "$title" Return
    timeout 60 tail --pid=$installer -f /dev/null
    check "interactive install completes" test -f "$program/heralder.exe"
    check "an unticked sign-up is not started" bash -c "! pgrep -f 'Quenmark.Heralder.heralder[.]exe'"

    wine "$program/uninstall.exe" >/dev/null 2>&1 &
    title="Quenmark Heralder Uninstall"
    shoot "$title" uninstall_1_confirm && press "$title" Return
    # The question about the user's data; Yes removes it.
    shoot "Quenmark Heralder Uninstall" uninstall_2_question
    press "Quenmark Heralder Uninstall" y
    wait_gone "$program/heralder.exe"
    sleep 1
    shoot "$title" uninstall_3_done && press "$title" Return
    check "interactive uninstall removes the program" test ! -e "$program/heralder.exe"
    check "answering Yes removes the user's settings, seen list and pictures" \
        test ! -e "$appdata/Quenmark/Heralder17.ini" -a ! -e "$appdata/Quenmark/Heralder"
    check "a screenshot of every installer page" test "$(ls "$shots"/install_*.png 2>/dev/null | wc -l)" -eq 5
else
    echo "xdotool is missing: no interactive run, no screenshots"
    failed=$((failed + 1))
fi

wine_env_stop
finish
