#!/usr/bin/env bash
# Recording benchmark: 60 s recordings of the reference scene at 720p, 1080p
# and 1440p (video only), with dropped frames and CPU, against the anchor of
# the same run: the ffmpeg tool encoding as many raw BGRA frames of the same
# scene with the same codec settings. Usage: recording.sh BUILD_DIR [SECONDS]
set -euo pipefail
build=${1:-build}
seconds=${2:-60}
tool="$build/bench-tools/recording_bench"
[ -x "$tool" ] || { echo "recording.sh: $tool is missing (build bench_all)"; exit 1; }
work=$(mktemp -d /tmp/orvane-recording-bench-XXXXXX)
trap 'rm -rf "$work"' EXIT

status=0
for quality in low medium high; do
  case $quality in
    low) w=1280; h=720;; medium) w=1920; h=1080;; high) w=2560; h=1440;;
  esac
  bitrate=$(( w * h * 8 ))
  if (( w * h > 1920 * 1080 )); then preset=ultrafast; else preset=superfast; fi
  mkdir -p "$work/$quality"
  out=$("$tool" record "$quality" "$seconds" "$work/$quality" 2>"$work/$quality/log") || status=1
  echo "$out" | grep '^ours' || true
  frames=$(echo "$out" | awk '/^FRAMES/ {print $2}')
  cpu=$(echo "$out" | awk '/^CPU_SECONDS/ {print $2}')
  own=$(echo "$out" | awk '/^OWN_CPU_SECONDS/ {print $2}')
  dropped=$(echo "$out" | awk '/^DROPPED/ {print $2}')
  rm -rf "$work/$quality/Documents"
  [ -n "$frames" ] || { echo "no figures for $quality"; status=1; continue; }

  # The anchor: only the ffmpeg process is timed, not the frame producer.
  fifo="$work/$quality/frames"
  mkfifo "$fifo"
  "$tool" raw "$quality" "$frames" >"$fifo" 2>/dev/null &
  producer=$!
  /usr/bin/time -f "%U %S %e" -o "$work/$quality/time" \
    ffmpeg -nostdin -v error -f rawvideo -pix_fmt bgra -s "${w}x${h}" -r 30 -i "$fifo" \
      -c:v libx264 -preset "$preset" -profile:v baseline -b:v "$bitrate" -g 30 -keyint_min 30 -bf 0 \
      -x264-params scenecut=0 -pix_fmt yuv420p \
      -movflags frag_keyframe+empty_moov+default_base_moof -f mp4 -y "$work/$quality/anchor.mp4" || status=1
  wait "$producer" || true
  read -r user sys wall < "$work/$quality/time"
  anchor=$(echo "$user + $sys" | bc -l)
  rm -f "$work/$quality/anchor.mp4" "$fifo"
  printf 'anchor %dx%d: ffmpeg -preset %s, %s frames: cpu %.2f s (%.2f s wall)\n' "$w" "$h" "$preset" "$frames" "$anchor" "$wall"
  printf 'RESULT %dx%d dropped=%s cores=%.2f own_cores=%.2f cpu_ratio=%.2f own_cpu_ratio=%.2f (target dropped 0, ratio <= 1.25)\n' \
    "$w" "$h" "$dropped" "$(echo "$cpu / $seconds" | bc -l)" "$(echo "$own / $seconds" | bc -l)" \
    "$(echo "$cpu / $anchor" | bc -l)" "$(echo "$own / $anchor" | bc -l)"
done
exit $status
