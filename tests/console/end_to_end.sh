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

PIDS=()
cleanup() {
  for ((i=${#PIDS[@]}-1; i>=0; i--)); do kill "${PIDS[i]}" 2>/dev/null; done
  for pid in "${PIDS[@]}"; do wait "$pid" 2>/dev/null; done
}
trap cleanup EXIT

# A free display number.
for n in $(seq 120 199); do
  if [ ! -e "/tmp/.X11-unix/X$n" ] && [ ! -e "/tmp/.X$n-lock" ]; then DISPLAY_NUMBER=$n; break; fi
done
export DISPLAY=:$DISPLAY_NUMBER
# Wide enough to set the pop-out window beside the console.
Xvfb "$DISPLAY" -screen 0 3000x1100x24 -noreset >"$OUT/xvfb.log" 2>&1 &
PIDS+=($!)
for _ in $(seq 50); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done
openbox >"$OUT/openbox.log" 2>&1 &
PIDS+=($!)
sleep 0.5

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

step "give the scene a content source in the file, and open the preset again"
# There is no source panel yet: a text card is written into the file, then
# the preset screen (which reads the files afresh) opens it again.
python3 - "$PRESET_FILE" "$HERE/../data/full_preset.json" <<'PY' || die "could not add a source to the preset file"
import json, sys, uuid
path, sample = sys.argv[1], sys.argv[2]
doc = json.load(open(path))
source = next(s for sc in json.load(open(sample))["scenes"] for s in sc["sources"] if s["type"] == "content")
source = json.loads(json.dumps(source))
source["id"] = str(uuid.uuid4()).upper()
source["name"] = "Notes"
source["configuration"]["contentType"] = "text"
scene = next(sc for sc in doc["scenes"] if sc["name"] == "Gradient")
scene["sources"].append(source)
json.dump(doc, open(path, "w"), indent=2)
PY
xdotool mousemove --window "$MAIN" $((MW - 87)) 24 click 1
sleep 1
shoot preset_screen_with_card "$MAIN"
xdotool mousemove --window "$MAIN" 180 183 click 1
sleep 1

step "go live with the keys"
xdotool mousemove 10 1090
xdotool key --delay 150 4 4
wait_for_log "🔴 LIVE: 'Gradient' is now on air!"
sleep 2  # the fade
shoot console "$MAIN"
$PIXELS stages "$OUT/console.ppm" $MX $MY $MW $MH || die "stages"

step "open the pop-out window"
xdotool mousemove --window "$MAIN" $((MW - 55)) 70 click 1
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
