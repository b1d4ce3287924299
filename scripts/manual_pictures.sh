#!/usr/bin/env bash
# Refreshes the manual's pictures (html/pictures/*.png) from the screenshots the
# Windows tests and the daily-job demo leave behind:
#   scripts/build.sh windows && unshare -n sh -c 'ip link set lo up && scripts/test_wine.sh'
#   scripts/run.sh
# then run this script and look at the result. A picture whose screenshot is
# not there is left as it is.
#
# The table: screenshot (TREE/NAME = build/TREE/screenshots/NAME.png), picture
# name under html/pictures/, crop geometry ("-" for the whole window), state.
# The run/ shots are numbered in the order scripts/run.sh meets the windows of
# examples/update.txt: check them again when the sample document changes.
# "pending" marks a window that has no screenshot yet: the manual's check only
# warns when its picture is missing. Once the picture is made and committed,
# drop the word so that losing it becomes an error.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out="$root/html/pictures"

pictures() {
    cat <<'TABLE'
windows/main_window             main_window       -   present
run/window_02                   alert_window      -   present
run/window_05                   tip_window        -   present
windows/version_installed       version_notice    -   present
windows/prompt_in_daily_job     multiple_items    -   present
windows/browse_soft0            item_browser      -   present
windows/startup_manager_soft1   startup_manager   -   present
windows/run_graphic_error       message_box       -   present
windows/setup_box_soft0         setup             -   present
windows/colour_picker           colour_picker     -   present
windows/init_config_101_soft1   init_config       -   present
windows/about_soft1             about             -   present
windows/system_info             system_info       -   present
TABLE
}

# Only the table, for tests/manual/check_manual.py.
if [ "${1:-}" = "--table" ]; then
    pictures
    exit 0
fi

command -v convert >/dev/null || { echo "manual_pictures: ImageMagick's convert is missing" >&2; exit 1; }
mkdir -p "$out"
made=0
missing=0
while read -r shot name crop state; do
    [ -n "$shot" ] || continue
    src="$root/build/${shot%%/*}/screenshots/${shot#*/}.png"
    if [ ! -f "$src" ]; then
        echo "manual_pictures: no screenshot $src ($state)"
        missing=$((missing + 1))
        continue
    fi
    args=()
    [ "$crop" != "-" ] && args+=(-crop "$crop" +repage)
    # Windows are flat colours and text: a 256-colour palette keeps them small
    # without visible loss.
    convert "$src" "${args[@]}" -strip -colors 256 -define png:compression-level=9 \
        "PNG8:$out/$name.png"
    echo "manual_pictures: $name.png from $shot ($(stat -c %s "$out/$name.png") bytes)"
    [ "$state" = "pending" ] && echo "manual_pictures: $name.png exists now: mark its row present"
    made=$((made + 1))
done < <(pictures)
echo "manual_pictures: $made pictures made, $missing screenshots missing"
