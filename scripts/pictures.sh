#!/usr/bin/env bash
# Takes screenshots of the example queue-monitor: builds it, operates it by keyboard on a virtual screen, and captures
# that screen. The pictures of the documents go to docs/images/, those of other looks to build/pictures/.
# usage: scripts/pictures.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh xvfb xdotool imagemagick fonts-dejavu-core qt6-translations-l10n
cmake --preset release --log-level=WARNING
cmake --build --preset release --target queue-monitor

program=$PWD/build/release/examples/queue-monitor/queue-monitor
documents=$PWD/docs/images/queue-monitor
looks=$PWD/build/pictures/queue-monitor
work=$(mktemp -d)
screen=
monitor=
trap 'kill $monitor $screen 2>/dev/null || true; wait; rm -rf "$work"' EXIT
mkdir -p "${documents%/*}" "${looks%/*}"
cd "$work"

# Xvfb chooses a free display number.
mkfifo display
Xvfb -displayfd 3 -screen 0 1800x1120x24 -nolisten tcp 3>display 2>/dev/null &
screen=$!
read -r number <display
export DISPLAY=:$number QT_QPA_PLATFORM=xcb XDG_CONFIG_HOME=$work/config XDG_RUNTIME_DIR=$work

# The files to digest. One is so long that a screenshot shows its progress.
mkdir -p scans config/Tarnwick
for i in $(seq 14); do
    head -c "$((i * 40000))" /dev/zero >"scans/scan $i.tif"
done
truncate -s 2G "scans/scan 7.tif"
touch scans.sha256

# Dark colours, in a KDE configuration that Qt reads.
colors() { # SECTION BACKGROUND TEXT
    printf '[%s]\nBackgroundNormal=%s\nBackgroundAlternate=%s\nForegroundNormal=%s\n' "$1" "$2" "$2" "$3"
}
{
    colors Colors:Window 42,46,50 239,240,241
    colors Colors:View 27,30,32 239,240,241
    colors Colors:Button 49,54,59 239,240,241
    colors Colors:Selection 31,97,145 252,252,252
    colors Colors:Tooltip 49,54,59 239,240,241
} >config/kdeglobals
dark=(QT_QPA_PLATFORMTHEME=kde XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true KDE_SESSION_VERSION=5)

open_monitor() { # WIDTH,HEIGHT [VARIABLE=VALUE...] FILE...; in English unless LC_ALL is among the variables
    printf '[window]\nplace="0,0,%s"\n' "$1" >config/Tarnwick/queue-monitor.conf
    env LC_ALL=en_GB.UTF-8 "${@:2}" 2>/dev/null &
    monitor=$!
    focus "Queue monitor|Warteschlange"
    sleep 2
}
focus() { xdotool search --sync --onlyvisible --name "^($1)\$" windowfocus --sync >/dev/null; }
press() { xdotool key --delay 100 "$@" && sleep 1; }
save_to_existing_file() {
    press ctrl+s
    focus "Save Digests|Pr.+ speichern"
    xdotool key ctrl+a type "$work/scans.sha256"
    press Return # shows the request for user action
}
take() { # WIDTHxHEIGHT FILE: captures this part of the screen and closes the window
    import -window root -crop "$1+0+0" -strip +dither -colors 128 "PNG8:$2.png"
    kill "$monitor"
    wait "$monitor" 2>/dev/null || true
    monitor=
    ls -l "$2.png"
}

open_monitor 900,560 "$program" scans
press Down Down Down Down Down Down Down Down Down
take 900x560 "$documents-light"

open_monitor 900,560 "${dark[@]}" "$program" scans
press Down Down Down Down Down Down Down Down Down
take 900x560 "$documents-dark"

open_monitor 900,560 QT_SCALE_FACTOR=2 "$program" scans
press Down Down Down Down
take 1800x1120 "$looks-double"

open_monitor 900,560 "$program" "scans/scan 1.tif" "scans/scan 2.tif"
save_to_existing_file
take 900x560 "$looks-user-action"

open_monitor 400,560 "${dark[@]}" "$program" "scans/scan 2.tif" "scans/scan 4.tiff" "scans/scan 7.tif"
take 400x560 "$looks-narrow"

open_monitor 400,560 LC_ALL=de_DE.UTF-8 "$program" "scans/scan 1.tif" scans/scan.pdf
save_to_existing_file
take 400x560 "$looks-german"
