#!/usr/bin/env bash
# Recording benchmark: recordings of the reference scene at 720p, 1080p and
# 1440p (video only, the screen changing on every frame like a live
# capture), with dropped frames and CPU, against the anchor of the same run:
# the ffmpeg tool encoding as many raw BGRA frames of the same scene with the
# same codec settings. Before each size, a profile of one frame's stages in
# CPU time. Usage: recording.sh BUILD_DIR [SECONDS]
set -euo pipefail
build=${1:-build}
seconds=${2:-60}
tool="$build/bench-tools/recording_bench"
[ -x "$tool" ] || { echo "recording.sh: $tool is missing (build bench_all)"; exit 1; }
work=$(mktemp -d /tmp/orvane-recording-bench-XXXXXX)
trap 'rm -rf "$work"' EXIT

# The x264 settings a file was written with, as the encoder records them.
x264_options() { strings -n 40 "$1" | grep -m1 -o 'options: .*' | tr ' ' '\n' | sed 1d; }

echo "load average before: $(cut -d' ' -f1-3 /proc/loadavg)"
status=0
for quality in low medium high; do
  case $quality in
    low) w=1280; h=720;; medium) w=1920; h=1080;; high) w=2560; h=1440;;
  esac
  bitrate=$(( w * h * 8 ))
  if (( w * h > 1920 * 1080 )); then preset=ultrafast; else preset=superfast; fi
  mkdir -p "$work/$quality"
  "$tool" profile "$quality" 150 "$work/$quality" 2>/dev/null | sed 's/^/  /' || status=1
  rm -f "$work/$quality/profile.mp4"
  out=$("$tool" record "$quality" "$seconds" "$work/$quality" 2>"$work/$quality/log") || status=1
  echo "$out" | grep '^ours' || true
  echo "$out" | grep "Recording video:" | sed "s/^/  /" || true
  frames=$(echo "$out" | awk '/^FRAMES/ {print $2}')
  cpu=$(echo "$out" | awk '/^CPU_SECONDS/ {print $2}')
  own=$(echo "$out" | awk '/^OWN_CPU_SECONDS/ {print $2}')
  dropped=$(echo "$out" | awk '/^DROPPED/ {print $2}')
  file=$(echo "$out" | sed -n 's/^FILE //p')
  [ -n "$frames" ] || { echo "no figures for $quality"; status=1; continue; }
  x264_options "$file" > "$work/$quality/ours.options" || true
  rm -rf "$work/$quality/Documents"

  # The anchor: only the ffmpeg process is timed, not the frame producer.
  fifo="$work/$quality/frames"
  mkfifo "$fifo"
  "$tool" raw "$quality" "$frames" >"$fifo" 2>/dev/null &
  producer=$!
  /usr/bin/time -f "%U %S %e" -o "$work/$quality/time" \
    ffmpeg -nostdin -v error -stats -f rawvideo -pix_fmt bgra -s "${w}x${h}" -r 30 -i "$fifo" \
      -c:v libx264 -preset "$preset" -profile:v baseline -b:v "$bitrate" -g 30 -keyint_min 30 -bf 0 \
      -x264-params scenecut=0 -pix_fmt yuv420p \
      -movflags frag_keyframe+empty_moov+default_base_moof -f mp4 -y "$work/$quality/anchor.mp4" \
      2>"$work/$quality/anchor.log" || status=1
  wait "$producer" || true
  read -r user sys wall < "$work/$quality/time"
  anchor=$(echo "$user + $sys" | bc -l)
  speed=$(tr '\r' '\n' < "$work/$quality/anchor.log" | grep -o 'speed=[ 0-9.]*x' | tail -1 | tr -d ' ')
  x264_options "$work/$quality/anchor.mp4" > "$work/$quality/anchor.options" || true
  rm -f "$work/$quality/anchor.mp4" "$fifo"
  if [ -s "$work/$quality/ours.options" ] && cmp -s "$work/$quality/ours.options" "$work/$quality/anchor.options"; then
    settings="identical x264 settings ($(grep -E '^(threads|bitrate|keyint)=' "$work/$quality/ours.options" | tr '\n' ' '))"
  else
    settings="x264 settings DIFFER: $(diff "$work/$quality/ours.options" "$work/$quality/anchor.options" | grep '^[<>]' | tr '\n' ' ')"
  fi
  printf 'anchor %dx%d: ffmpeg -preset %s, %s frames: cpu %.2f s (%.2f s wall, %s; %.2f cores for real time)\n' \
    "$w" "$h" "$preset" "$frames" "$anchor" "$wall" "${speed:-speed unknown}" "$(echo "$anchor * 30 / $frames" | bc -l)"
  echo "anchor ${w}x${h}: $settings"
  printf 'RESULT %dx%d dropped=%s cores=%.2f own_cores=%.2f cpu_ratio=%.2f own_cpu_ratio=%.2f (target dropped 0, ratio <= 1.25)\n' \
    "$w" "$h" "$dropped" "$(echo "$cpu / $seconds" | bc -l)" "$(echo "$own / $seconds" | bc -l)" \
    "$(echo "$cpu / $anchor" | bc -l)" "$(echo "$own / $anchor" | bc -l)"
  echo "load average: $(cut -d' ' -f1-3 /proc/loadavg)"
done
exit $status
