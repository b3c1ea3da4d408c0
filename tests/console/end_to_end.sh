#!/bin/bash
# The console journey through the real application: a private Xvfb with
# openbox, a fresh data directory, mouse and keyboard through xdotool, and
# pixel checks on screenshots.
#   end_to_end.sh <path to orvaneui> <output directory>
set -u
APP=$1
OUT=$2
HERE=$(cd "$(dirname "$0")" && pwd)
PIXELS="python3 $HERE/e2e_pixels.py"

rm -rf "$OUT"
mkdir -p "$OUT/data" "$OUT/home" "$OUT/config/OrvaneUI" "$OUT/runtime"
chmod 700 "$OUT/runtime"

# Wide enough to set the pop-out window beside the console.
. "$HERE/../support/x_session.sh"
start_x_session "$OUT" 3000x1100

step() { echo "== $*"; }
die() { echo "FAIL: $*"; echo "--- application log"; cat "$OUT/app.log"; exit 1; }
wait_for_log() {  # text, timeout in tenths
  for _ in $(seq "${2:-50}"); do grep -qF -- "$1" "$OUT/app.log" && return 0; sleep 0.1; done
  die "no log line '$1'"
}
count_log() { grep -cF -- "$1" "$OUT/app.log"; }
wait_for_window() {  # exact title
  local id=""
  for _ in $(seq 50); do
    id=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -1)
    [ -n "$id" ] && { echo "$id"; return 0; }
    sleep 0.1
  done
  return 1
}
geometry() {  # window -> "X Y W H" of its client area on the screen
  xwininfo -id "$1" | awk '/Absolute upper-left X/ {x=$NF} /Absolute upper-left Y/ {y=$NF}
    /Width:/ {w=$NF} /Height:/ {h=$NF} END {print x, y, w, h}'
}
shoot() {  # name [window...]: the screen, and each window on its own
  import -window root "$OUT/$1.png" && convert "$OUT/$1.png" "$OUT/$1.ppm"
  local name=$1 w
  shift
  for w in "$@"; do import -window "$w" "$OUT/$name-$w.png"; done
}

# The welcome assistant was completed on an earlier start.
printf '[General]\nhasCompletedOnboarding=true\n' >"$OUT/config/OrvaneUI/OrvaneUI.conf"

step "start the application"
HOME="$OUT/home" XDG_DATA_HOME="$OUT/data" XDG_CONFIG_HOME="$OUT/config" XDG_RUNTIME_DIR="$OUT/runtime" \
  "$APP" >"$OUT/app.log" 2>&1 &
PIDS+=($!)
MAIN=$(wait_for_window "OrvaneUI") || die "the main window did not appear"
xdotool windowmove --sync "$MAIN" 1500 40
sleep 1
read -r MX MY MW MH < <(geometry "$MAIN")
echo "console at $MX,$MY ${MW}x$MH"
shoot preset_screen "$MAIN"

step "create a preset with the mouse and the keyboard"
xdotool mousemove --window "$MAIN" 180 183 click 1
SHEET=$(wait_for_window "Create New Preset") || die "the create sheet did not open"
sleep 0.3
xdotool type --delay 40 "E2E Show"
xdotool key Return
wait_for_log "✅ Preset saved: E2E Show"
PRESET_FILE=$(ls "$OUT"/data/OrvaneUI/Presets/*.json 2>/dev/null | head -1)
[ -n "$PRESET_FILE" ] || die "no preset file written"
sleep 0.5

step "add a scene"
xdotool mousemove --window "$MAIN" 127 72 click 1
wait_for_window "Add New Scene" >/dev/null || die "the add-scene sheet did not open"
sleep 0.3
xdotool type --delay 40 "Gradient"
xdotool key Return
for _ in $(seq 50); do grep -q '"name" *: *"Gradient"' "$PRESET_FILE" && break; sleep 0.1; done
grep -q '"name" *: *"Gradient"' "$PRESET_FILE" || die "the new scene is not in the preset file"

step "add a screen source with the mouse through the sidebar"
# The desktop's ground is painted in a colour of its own, so that the
# captured screen can be told apart from the console around it.
xsetroot -solid "#c000c0"
xdotool mousemove --window "$MAIN" $((MW - 150)) 803 click 1
DISPLAYS=$(wait_for_window "Select Display") || die "the display sheet did not open"
wait_for_log "🖥️ Found"
sleep 1
xdotool mousemove --window "$DISPLAYS" 250 110 click 1
for _ in $(seq 50); do grep -q '"type" *: *"screen"' "$PRESET_FILE" && break; sleep 0.1; done
grep -q '"type" *: *"screen"' "$PRESET_FILE" || die "the screen source is not in the preset file"
grep -q '"screenId"' "$PRESET_FILE" || die "the screen source has no display id"
sleep 0.5

step "go live with the keys"
xdotool mousemove 10 1090
xdotool key --delay 150 4 4
wait_for_log "🔴 LIVE: 'Gradient' is now on air!"
sleep 2  # the fade
shoot console "$MAIN"
$PIXELS stages "$OUT/console.ppm" $MX $MY $MW $MH || die "stages"
$PIXELS screen "$OUT/console.ppm" $MX $MY $MW $MH 192 0 192 || die "the program stage shows no screen"

step "the program stage follows the screen live"
xsetroot -solid "#00c000"
sleep 1.5
shoot console_green "$MAIN"
$PIXELS screen "$OUT/console_green.ppm" $MX $MY $MW $MH 0 192 0 || die "the program stage did not follow the screen"
$PIXELS noscreen "$OUT/console_green.ppm" $MX $MY $MW $MH 192 0 192 || die "the program stage still shows the old screen"

step "open the pop-out window"
# The "Pop Out" button ends the program stage's header, left of the sidebar.
xdotool mousemove --window "$MAIN" $((MW - 336)) 70 click 1
wait_for_log "📺 Virtual camera window opened"
POP=$(wait_for_window "OrvaneUI - Virtual Camera Output") || die "the pop-out window did not appear"
xdotool windowmove --sync "$POP" 60 60
sleep 1.5
read -r PX PY PW PH < <(geometry "$POP")
echo "pop-out at $PX,$PY ${PW}x$PH"
[ "$PW" -eq 1280 ] && [ "$PH" -eq 720 ] || die "pop-out window is ${PW}x$PH, not 1280x720"
shoot popout "$MAIN" "$POP"
$PIXELS popout "$OUT/popout.ppm" $PX $PY $PW $PH || die "pop-out picture"
$PIXELS placeholder "$OUT/popout.ppm" $MX $MY $MW $MH || die "program placeholder"

step "close the pop-out window with its title bar"
xdotool windowactivate --sync "$POP" 2>/dev/null
xdotool key --clearmodifiers alt+F4  # openbox: close the active window, as its title bar does
wait_for_log "📺 Program window closed by user"
sleep 1
shoot console_after_close
$PIXELS stages "$OUT/console_after_close.ppm" $MX $MY $MW $MH || die "program stage after closing"

echo "PASS"
