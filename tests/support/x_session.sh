# Sourced by the scripts that drive the real application. Whatever a script
# starts goes into PIDS and is stopped by its pid, newest first, when the
# script exits; start_x_session gives it a private X server with a window
# manager.

PIDS=()
stop_started() {
  for ((i=${#PIDS[@]}-1; i>=0; i--)); do kill "${PIDS[i]}" 2>/dev/null; done
  for pid in "${PIDS[@]}"; do wait "$pid" 2>/dev/null; done
}
trap stop_started EXIT

# start_x_session DIR WIDTHxHEIGHT: Xvfb on a display number it picks itself
# (so scripts running side by side never share one), openbox on it, logs in
# DIR; exports DISPLAY.
start_x_session() {
  local dir=$1 size=$2
  rm -f "$dir/display-number"
  Xvfb -displayfd 5 -screen 0 "${size}x24" -noreset 5>"$dir/display-number" >"$dir/xvfb.log" 2>&1 &
  PIDS+=($!)
  for _ in $(seq 100); do [ -s "$dir/display-number" ] && break; sleep 0.05; done
  export DISPLAY=:$(tr -d '[:space:]' <"$dir/display-number")
  for _ in $(seq 50); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done
  openbox >"$dir/openbox.log" 2>&1 &
  PIDS+=($!)
  sleep 0.5
}
