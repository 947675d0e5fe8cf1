#!/usr/bin/env bash
# Takes the screenshots of the example queue-monitor in docs/images/: builds the example, operates it by keyboard on a
# virtual screen, and captures that screen.
# usage: scripts/pictures.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh xvfb xdotool imagemagick fonts-dejavu-core
cmake --preset release --log-level=WARNING
cmake --build --preset release --target queue-monitor

program=$PWD/build/release/examples/queue-monitor/queue-monitor
images=$PWD/docs/images
work=$(mktemp -d)
screen=
monitor=
trap 'kill $monitor $screen 2>/dev/null || true; wait; rm -rf "$work"' EXIT
mkdir -p "$images"
cd "$work"

# The screen has the size of the window; Xvfb chooses a free display number. The locale sets the language.
mkfifo display
Xvfb -displayfd 3 -screen 0 900x560x24 -nolisten tcp 3>display 2>/dev/null &
screen=$!
read -r number <display
export DISPLAY=:$number LC_ALL=en_GB.UTF-8 QT_QPA_PLATFORM=xcb XDG_CONFIG_HOME=$work/config XDG_RUNTIME_DIR=$work

# The files to digest. One is so long that a screenshot shows its progress.
mkdir scans config
for i in $(seq 14); do
    head -c "$((i * 40000))" /dev/zero >"scans/scan $i.tif"
done
truncate -s 2G "scans/scan 7.tif"

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

open_monitor() { # [VARIABLE=VALUE...] FILE...
    env "$@" 2>/dev/null &
    monitor=$!
    focus "Queue monitor"
    sleep 2
}
focus() { xdotool search --sync --onlyvisible --name "^$1\$" windowfocus --sync >/dev/null; }
press() { xdotool key --delay 100 "$@" && sleep 1; }
take() { # NAME: captures the screen and closes the window
    import -window root -strip +dither -colors 128 "PNG8:$images/queue-monitor-$1.png"
    kill "$monitor"
    wait "$monitor" 2>/dev/null || true
    monitor=
}

open_monitor "$program" scans
press Down Down Down Down Down Down Down Down Down
take light

open_monitor "${dark[@]}" "$program" scans
press Down Down Down Down Down Down Down Down Down
take dark

open_monitor "$program" "scans/scan 2.tif" "scans/scan 3.tif" "scans/scan 4.tiff" "scans/scan 5.tif" scans/scan.pdf
take error

touch scans.sha256
open_monitor "$program" "scans/scan 1.tif" "scans/scan 2.tif" "scans/scan 3.tif"
press ctrl+s
focus "Save Digests"
xdotool key ctrl+a type "$work/scans.sha256"
press Return # shows the request for user action
take user-action

ls -l "$images"
