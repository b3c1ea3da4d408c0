#!/usr/bin/env bash
# GET /api/scenes under wrk (2 threads, 16 connections, 10 s, one request a
# connection) against the remote server, and against nginx serving a file of
# the same size as the anchor; then again with the server's main thread
# blocked, and with it spinning. Loopback only. Fails when the server's
# median makes less than half of nginx's median requests per second, its
# median p99 latency exceeds 5 ms, or any run has a socket error.
#
# For reference, not judged: a floor server in plain C (blocking accept, one
# recv, one send of a prepared reply, close), which shows what the kernel
# and wrk cost by themselves on this machine. On two cores wrk's two threads
# and the server share the CPUs, so no server's p99 is far below the floor's.
#
# Usage: bench/remote/remote_http.sh BUILD_DIR   (ROUNDS=3 by default; the
# medians are taken over the rounds, each of which measures everything once)
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
rounds=${ROUNDS:-3}
server_bin="$build/bench/remote/remote_bench_server"
floor_bin="$build/bench/remote/remote_floor_server"
for bin in "$server_bin" "$floor_bin"; do
  [ -x "$bin" ] || { echo "remote_http: $bin is missing (build bench_all)"; exit 1; }
done

work=$(mktemp -d /tmp/orvane-remote-bench.XXXXXX)
chmod 755 "$work"
pids=()
cleanup() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  for pid in "${pids[@]}"; do wait "$pid" 2>/dev/null || true; done
  rm -rf "$work"
}
trap cleanup EXIT

free_port() { python3 -c 'import socket; s=socket.socket(); s.bind(("127.0.0.1",0)); print(s.getsockname()[1]); s.close()'; }

wait_for_port_file() {  # $1: file, $2: label, $3: log
  for _ in $(seq 1 100); do [ -s "$1" ] && return 0; sleep 0.1; done
  echo "remote_http: $2 did not start"; cat "$3"; exit 1
}

server_pid=""
port=""
start_server() {  # $1: main-thread mode; sets server_pid and port
  local file="$work/port-$1"
  rm -f "$file"
  "$server_bin" --port-file "$file" --main-thread "$1" --lifetime 60 >"$work/server-$1.log" 2>&1 &
  server_pid=$!
  pids+=("$server_pid")
  wait_for_port_file "$file" "server ($1)" "$work/server-$1.log"
  port=$(head -1 "$file")
}

stop_server() { kill "$server_pid" 2>/dev/null || true; wait "$server_pid" 2>/dev/null || true; }

WRK=(wrk -t2 -c16 -d10s -H 'Connection: close' --latency)

measure() {  # $1: label, $2: url; prints "rps p99_ms errors"
  local out
  out=$(timeout 60 "${WRK[@]}" "$2")
  echo "$out" >> "$work/wrk-$1.txt"
  local rps p99 errors non2xx
  rps=$(awk '/^Requests\/sec:/ {print $2}' <<<"$out")
  p99=$(awk '$1 == "99%" {v=$2; if (v ~ /us$/) {sub(/us$/,"",v); v=v/1000} else if (v ~ /ms$/) {sub(/ms$/,"",v)} else if (v ~ /s$/) {sub(/s$/,"",v); v=v*1000}; print v}' <<<"$out")
  errors=$(awk '/Socket errors:/ {gsub(",",""); print $4+$6+$8+$10}' <<<"$out")
  non2xx=$(awk '/Non-2xx or 3xx responses:/ {print $5}' <<<"$out")
  echo "${rps:-0} ${p99:-999} $(( ${errors:-0} + ${non2xx:-0} ))"
}

# The reply body, and the floor server with the same reply.
start_server idle
body=$(curl -s --max-time 5 "http://127.0.0.1:$port/api/scenes")
stop_server
mkdir -p "$work/www" "$work/nginx/logs"
printf '%s' "$body" > "$work/www/scenes"
"$floor_bin" "$work/port-floor" "$work/www/scenes" >"$work/floor.log" 2>&1 &
pids+=($!)
wait_for_port_file "$work/port-floor" "floor server" "$work/floor.log"
floor_port=$(head -1 "$work/port-floor")

# The anchor: nginx with one worker, as the server has one I/O thread, and no
# access log. Measured on this workload, sendfile makes it slower for a file
# this small, and multi_accept or a cache of open files change nothing, so
# it runs with nginx's defaults otherwise.
nginx_port=$(free_port)
cat > "$work/nginx.conf" <<CONF
worker_processes 1;
daemon off;
pid $work/nginx/nginx.pid;
error_log $work/nginx/logs/error.log;
events { worker_connections 1024; }
http {
  access_log off;
  client_body_temp_path $work/nginx/body;
  proxy_temp_path $work/nginx/proxy;
  fastcgi_temp_path $work/nginx/fastcgi;
  uwsgi_temp_path $work/nginx/uwsgi;
  scgi_temp_path $work/nginx/scgi;
  server {
    listen 127.0.0.1:$nginx_port;
    root $work/www;
    default_type application/json;
  }
}
CONF
nginx -p "$work/nginx" -c "$work/nginx.conf" &
pids+=($!)
nginx_up=""
for _ in $(seq 1 50); do
  curl -sf --max-time 1 -o /dev/null "http://127.0.0.1:$nginx_port/scenes" && { nginx_up=1; break; }
  sleep 0.1
done
[ -n "$nginx_up" ] || { echo "remote_http: nginx did not start"; cat "$work/nginx/logs/error.log" 2>/dev/null; exit 1; }

echo "remote_http: load average $(cut -d" " -f1-3 /proc/loadavg) before; $rounds rounds"
echo "remote_http: body ${#body} bytes; command: ${WRK[*]} http://127.0.0.1:PORT/..."

labels=("nginx (anchor)" "floor (C, reference)" "server" "server, main blocked" "server, main spinning")
declare -A rps p99 errs
record() {  # $1 index, $2 round, then "rps p99 errors"
  rps[$1,$2]=$3; p99[$1,$2]=$4; errs[$1,$2]=$5
  printf '  round %d  %-22s %10s req/s  p99 %7s ms  errors %s\n' "$2" "${labels[$1]}" "$3" "$4" "$5"
}
for round in $(seq 1 "$rounds"); do
  record 0 "$round" $(measure nginx "http://127.0.0.1:$nginx_port/scenes")
  record 1 "$round" $(measure floor "http://127.0.0.1:$floor_port/api/scenes")
  index=2
  for mode in idle blocked spinning; do
    start_server "$mode"
    record "$index" "$round" $(measure "$mode" "http://127.0.0.1:$port/api/scenes")
    stop_server
    index=$((index + 1))
  done
done
echo "remote_http: load average $(cut -d" " -f1-3 /proc/loadavg) after"

median() { printf '%s\n' "$@" | sort -g | awk '{v[NR]=$1} END {print (NR % 2) ? v[(NR+1)/2] : (v[NR/2] + v[NR/2+1]) / 2}'; }
column() {  # $1 index, $2 array name
  local -n values=$2
  local out=()
  for round in $(seq 1 "$rounds"); do out+=("${values[$1,$round]}"); done
  echo "${out[@]}"
}

echo "medians over $rounds rounds:"
n_rps=$(median $(column 0 rps))
awk -v n="$n_rps" 'BEGIN {exit !(n > 0)}' || { echo "remote_http: no anchor figure"; exit 1; }
status=0
for index in 0 1 2 3 4; do
  m_rps=$(median $(column "$index" rps))
  m_p99=$(median $(column "$index" p99))
  total_errors=0
  for e in $(column "$index" errs); do total_errors=$((total_errors + e)); done
  verdict=""
  if [ "$index" -ge 2 ]; then
    verdict=ok
    awk -v r="$m_rps" -v n="$n_rps" 'BEGIN {exit !(r >= 0.5 * n)}' || verdict="FAIL (req/s below half of nginx)"
    awk -v p="$m_p99" 'BEGIN {exit !(p <= 5.0)}' || verdict="FAIL (p99 above 5 ms)"
    [ "$total_errors" -eq 0 ] || verdict="FAIL (socket errors)"
    [ "$verdict" = ok ] || status=1
  fi
  printf '  %-22s %10s req/s  p99 %7s ms  errors %s  ratio %s  %s\n' "${labels[$index]}" "$m_rps" "$m_p99" \
    "$total_errors" "$(awk -v r="$m_rps" -v n="$n_rps" 'BEGIN {printf "%.2f", r / n}')" "$verdict"
done
for index in 0 1; do
  awk -v p="$(median $(column "$index" p99))" 'BEGIN {exit !(p > 5.0)}' &&
    echo "  note: ${labels[$index]} has a p99 above 5 ms as well: see the load average, and the two cores wrk shares"
done
exit $status
