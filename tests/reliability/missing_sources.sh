#!/bin/bash
# The console started on a preset whose program scene points at a monitor
# that is not there, a window that is gone and a camera that is unplugged:
# once with no X server at all (offscreen), once on Xvfb with openbox with
# the console opened. Both must keep running for a minute, say each
# failure once instead of once per attempt, not spin, and leave the preset
# as it was.
#   missing_sources.sh <path to orvaneui> <output directory> <golden preset> [seconds]
set -u
APP=$1
OUT=$2
GOLDEN=$3
RUN_SECONDS=${4:-61}
HERE=$(cd "$(dirname "$0")" && pwd)

rm -rf "$OUT"
mkdir -p "$OUT"
. "$HERE/../support/x_session.sh"
FAILED=0
fail() { echo "FAIL: $*"; FAILED=1; }

home_for() {  # directory [screen id]: a private home holding the preset
  mkdir -p "$1/data/OrvaneUI/Presets" "$1/config/OrvaneUI" "$1/home/Documents" "$1/runtime"
  chmod 700 "$1/runtime"
  python3 "$HERE/make_preset.py" "$GOLDEN" "$1/data/OrvaneUI/Presets" "$1/config/OrvaneUI" ${2:-} >/dev/null
  cp "$1"/data/OrvaneUI/Presets/*.json "$1/preset.before.json"
}
start_app() {  # directory, then options and assignments for env
  local dir=$1
  shift
  env "$@" HOME="$dir/home" XDG_DATA_HOME="$dir/data" XDG_CONFIG_HOME="$dir/config" XDG_RUNTIME_DIR="$dir/runtime" \
    PULSE_SERVER=unix:"$dir/runtime/no-sound-server" "$APP" >"$dir/app.log" 2>&1 &
  PIDS+=($!)
}
cpu_ticks() { awk '{print $14 + $15}' "/proc/$1/stat" 2>/dev/null || echo 0; }

echo "== offscreen, with no X server"
home_for "$OUT/offscreen"
start_app "$OUT/offscreen" -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM=offscreen
OFFSCREEN=${PIDS[-1]}

echo "== on Xvfb with openbox"
start_x_session "$OUT" 1600x1000
# The screen source names a monitor "Beamer" that is not there yet: a
# monitor without an output of its own is known by a hash of its name.
BEAMER_ID=$(python3 -c '
h = 2166136261
for b in b"Beamer":
    h = ((h ^ b) * 16777619) & 0xFFFFFFFF
print((((h >> 31) ^ h) & 0x7FFFFFFF) | 0x80000000)')
home_for "$OUT/x11" "$BEAMER_ID"
start_app "$OUT/x11" QT_QPA_PLATFORM=xcb
ONSCREEN=${PIDS[-1]}
STARTED=$(date +%s)
START_TICKS=$(cpu_ticks "$OFFSCREEN")

MAIN=""
for _ in $(seq 100); do
  MAIN=$(xdotool search --onlyvisible --name '^OrvaneUI$' 2>/dev/null | head -1)
  [ -n "$MAIN" ] && break
  sleep 0.1
done
if [ -z "$MAIN" ]; then
  fail "the console window did not appear on Xvfb"
else
  xdotool windowsize --sync "$MAIN" 1440 900 2>/dev/null
  xdotool windowmove --sync "$MAIN" 0 0 2>/dev/null
  sleep 1
  # The preset's card, first on the preset screen, opens the console.
  xdotool mousemove --window "$MAIN" 170 200 click 1
  sleep 3
  import -window root "$OUT/console.png" 2>/dev/null
  python3 "$HERE/failure_marks.py" "$OUT/console.png" || fail "the stages do not show the failures"
  # The display sheet ("Screen Capture" under ADD SOURCE) lists and logs
  # the displays; its line must stand on its own.
  xdotool mousemove --window "$MAIN" 1256 838 click 1
  for _ in $(seq 50); do grep -q '🖥️ Found 1 displays$' "$OUT/x11/app.log" && break; sleep 0.1; done
  grep -q '🖥️ Found 1 displays$' "$OUT/x11/app.log" || fail "the display sheet did not list the display"
  xdotool key Escape
fi

# Late enough that the next timed retry is many seconds off, the monitor
# is plugged in: its picture must come back by itself, at once.
PLUG_AT=$((RUN_SECONDS * 35 / 61))
while [ $(($(date +%s) - STARTED)) -lt "$PLUG_AT" ]; do sleep 1; done
xrandr --setmonitor Beamer 800/211x1000/264+800+0 none >/dev/null 2>&1 || fail "could not add a monitor"
RECOVERED=0
for _ in $(seq 30); do
  grep -qF "✅ Capture recovered: display:$BEAMER_ID" "$OUT/x11/app.log" && { RECOVERED=1; break; }
  sleep 0.1
done
[ "$RECOVERED" -eq 1 ] || fail "x11: the plugged-in monitor did not come back within 3 s"
sleep 1
import -window root "$OUT/replugged.png" 2>/dev/null

while [ $(($(date +%s) - STARTED)) -lt "$RUN_SECONDS" ]; do sleep 1; done
END_TICKS=$(cpu_ticks "$OFFSCREEN")
HZ=$(getconf CLK_TCK)

for pair in "offscreen:$OFFSCREEN" "x11:$ONSCREEN"; do
  name=${pair%%:*}
  pid=${pair#*:}
  log="$OUT/$name/app.log"
  echo "== $name: $(wc -l <"$log") lines in ${RUN_SECONDS}s"
  kill -0 "$pid" 2>/dev/null || fail "$name: the console is gone: $(tail -3 "$log")"
  display_lines=$(grep -c 'Unplugged monitor' "$log")
  echo "   lines about the missing display: $display_lines"
  [ "$display_lines" -le 2 ] || fail "$name: $display_lines lines about the missing display in a minute"
  repeated=$(grep -E '^(❌|⚠️)' "$log" | sort | uniq -d)
  [ -z "$repeated" ] || fail "$name: said more than once: $repeated"
  # Every line is the console's own (they all start with its emoji tags;
  # library messages are routed through them) and ends with a newline.
  foreign=$(grep -naP '^[\x00-\x7F]' "$log" | head -3)
  [ -z "$foreign" ] || fail "$name: lines that are not the console's own: $foreign"
  [ -z "$(tail -c1 "$log")" ] || fail "$name: the last line has no newline"
  [ "$(wc -l <"$log")" -le 80 ] || fail "$name: the log keeps growing"
  grep -q 'Segmentation\|AddressSanitizer\|terminate called' "$log" && fail "$name: crashed"
  python3 - "$OUT/$name/preset.before.json" "$OUT/$name"/data/OrvaneUI/Presets/*.json <<'PY' || fail "$name: the preset changed"
import json, sys
before, after = (json.load(open(path, encoding="utf-8")) for path in sys.argv[1:3])
sys.exit(0 if before == after else 1)
PY
done
grep -qF '❌ Capture error: Cannot connect to the X server (Unplugged monitor)' "$OUT/offscreen/app.log" \
  || fail "offscreen: the failed capture was not said"
grep -qF '❌ Capture error: No display found (Unplugged monitor)' "$OUT/x11/app.log" \
  || fail "x11: the missing display was not said"
grep -qF '❌ Capture error: Window not found (Closed window)' "$OUT/x11/app.log" \
  || fail "x11: the closed window was not said"
grep -qF '❌ No camera device found (/dev/video99)' "$OUT/x11/app.log" || fail "x11: the missing camera was not said"
CPU_PERCENT=$(( (END_TICKS - START_TICKS) * 100 / HZ / RUN_SECONDS ))
echo "   offscreen CPU: ${CPU_PERCENT}% of a core"
[ "$CPU_PERCENT" -le 30 ] || fail "offscreen: ${CPU_PERCENT}% of a core with nothing to do"

if [ "$FAILED" -ne 0 ]; then
  for name in offscreen x11; do echo "--- $name log"; head -60 "$OUT/$name/app.log"; done
  exit 1
fi
echo "PASS"
