#!/usr/bin/env bash
# Recording benchmark: recordings of the reference scene at 720p, 1080p and
# 1440p (video only, the screen changing on every frame like a live
# capture), with dropped frames and CPU, against the anchor of the same run:
# the ffmpeg tool encoding as many raw BGRA frames of the same scene with the
# same codec settings. Before each size, a profile of one frame's stages in
# CPU time. Then 30 s at 1080p with the sources captured the application's
# way while its main thread is blocked for 2 s out of every 5: no frame may
# be dropped, and no interval between frames in the file may reach 50 ms,
# neither between packets nor between pictures that differ (a frame that
# repeats its predecessor's picture is no new frame).
# Usage: recording.sh BUILD_DIR [SECONDS]
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

# Gaps between successive times (seconds, one a line, sorted): the largest
# and the median, in milliseconds.
gaps() { awk 'NR > 1 { print ($1 - last) * 1000 } { last = $1 }' | sort -n |
  awk '{ v[NR] = $1 } END { if (NR == 0) { print "none none"; exit }
        printf "%.1f %.1f\n", v[NR], (NR % 2 ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2) }'; }

echo "== the application's capture path, main thread blocked 2 s of every 5, 1080p, 30 s"
mkdir -p "$work/blocked"
out=$("$tool" blocked medium 30 "$work/blocked" 2>"$work/blocked/log") || status=1
echo "$out" | grep '^ours' || true
echo "$out" | grep "Recording video:" | sed "s/^/  /" || true
dropped=$(echo "$out" | awk '/^DROPPED/ {print $2}')
file=$(echo "$out" | sed -n 's/^FILE //p')
if [ -z "$dropped" ] || [ ! -f "$file" ]; then
  echo "no recording from the blocked run"; tail -5 "$work/blocked/log"; status=1
else
  ln -sf "$file" "$work/blocked/movie.mp4"
  read -r packet_max packet_median < <(ffprobe -v error -select_streams v:0 -show_entries packet=pts_time \
    -of csv=p=0 "$work/blocked/movie.mp4" | sort -n | gaps)
  # A picture is new when its grey levels differ from the frame before by
  # more than a tenth of a level on average (signalstats' YDIF): the
  # scrolling desktop differs by about half a level from one picture to the
  # next, a repeated picture by nothing, or by the encoder's rounding at a
  # key frame (a few hundredths).
  read -r picture_max picture_median < <(ffprobe -v error -f lavfi -i "movie=$work/blocked/movie.mp4,signalstats" \
    -show_entries frame=pts_time:frame_tags=lavfi.signalstats.YDIF -of csv=p=0 |
    awk -F, 'NR == 1 || $2 > 0.1 { print $1 }' | sort -n | gaps)
  echo "blocked 1920x1080: dropped $dropped; packet interval max $packet_max ms, median $packet_median ms;" \
    "interval between new pictures max $picture_max ms, median $picture_median ms"
  verdict=$(awk -v d="$dropped" -v p="$packet_max" -v q="$picture_max" \
    'BEGIN { print (d == 0 && p < 50 && q < 50) ? "met" : "MISSED" }')
  echo "RESULT blocked 1920x1080 dropped=$dropped max_packet_interval_ms=$packet_max" \
    "max_picture_interval_ms=$picture_max (target dropped 0, intervals < 50 ms): $verdict"
  [ "$verdict" = met ] || status=1
fi
exit $status
