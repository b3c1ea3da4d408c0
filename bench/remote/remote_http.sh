#!/usr/bin/env bash
# GET /api/scenes under wrk (2 threads, 16 connections, 10 s, one request a
# connection) against the remote server, and against nginx serving a file of
# the same size as the anchor; then again with the server's main thread
# blocked, and with it spinning. Loopback only. Fails when the server makes
# less than half of nginx's requests per second, its p99 latency exceeds
# 5 ms, or any socket error occurs.
# Usage: bench/remote/remote_http.sh BUILD_DIR
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
server_bin="$build/bench/remote/remote_bench_server"
[ -x "$server_bin" ] || { echo "remote_http: $server_bin is missing (build bench_all)"; exit 1; }

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

server_pid=""
port=""
start_server() {  # $1: main-thread mode; sets server_pid and port
  local file="$work/port-$1"
  "$server_bin" --port-file "$file" --main-thread "$1" --lifetime 60 >"$work/server-$1.log" 2>&1 &
  server_pid=$!
  pids+=("$server_pid")
  for _ in $(seq 1 100); do [ -s "$file" ] && break; sleep 0.1; done
  [ -s "$file" ] || { echo "remote_http: server ($1) did not start"; cat "$work/server-$1.log"; exit 1; }
  port=$(head -1 "$file")
}

stop_server() { kill "$server_pid" 2>/dev/null || true; wait "$server_pid" 2>/dev/null || true; }

WRK=(wrk -t2 -c16 -d10s -H 'Connection: close' --latency)

measure() {  # $1: label, $2: url; prints "rps p99_ms errors"
  local out
  out=$(timeout 60 "${WRK[@]}" "$2")
  echo "$out" > "$work/wrk-$1.txt"
  local rps p99 errors non2xx
  rps=$(awk '/^Requests\/sec:/ {print $2}' <<<"$out")
  p99=$(awk '$1 == "99%" {v=$2; if (v ~ /us$/) {sub(/us$/,"",v); v=v/1000} else if (v ~ /ms$/) {sub(/ms$/,"",v)} else if (v ~ /s$/) {sub(/s$/,"",v); v=v*1000}; print v}' <<<"$out")
  errors=$(awk '/Socket errors:/ {gsub(",",""); print $4+$6+$8+$10}' <<<"$out")
  non2xx=$(awk '/Non-2xx or 3xx responses:/ {print $5}' <<<"$out")
  echo "${rps:-0} ${p99:-999} $(( ${errors:-0} + ${non2xx:-0} ))"
}

# The anchor: nginx, one worker (the server has one I/O thread), a static file
# as large as the server's reply body.
start_server idle
body=$(curl -s --max-time 5 "http://127.0.0.1:$port/api/scenes")
mkdir -p "$work/www" "$work/nginx/logs"
printf '%s' "$body" > "$work/www/scenes"
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
for _ in $(seq 1 50); do curl -s --max-time 1 -o /dev/null "http://127.0.0.1:$nginx_port/scenes" && break; sleep 0.1; done

echo "remote_http: load average $(cut -d" " -f1-3 /proc/loadavg)"
echo "remote_http: body ${#body} bytes; command: ${WRK[*]} http://127.0.0.1:PORT/api/scenes"
read -r n_rps n_p99 n_err < <(measure nginx "http://127.0.0.1:$nginx_port/scenes")
printf '  %-22s %10s req/s  p99 %7s ms  errors %s\n' "nginx (anchor)" "$n_rps" "$n_p99" "$n_err"
awk -v p="$n_p99" 'BEGIN {exit !(p > 5.0)}' &&
  echo "  note: the anchor's own p99 is above 5 ms: the machine is loaded (see the load average)"

status=0
check() {  # $1 label, $2 rps, $3 p99, $4 errors
  local verdict=ok
  awk -v r="$2" -v n="$n_rps" 'BEGIN {exit !(r >= 0.5 * n)}' || verdict="FAIL (req/s below half of nginx)"
  awk -v p="$3" 'BEGIN {exit !(p <= 5.0)}' || verdict="FAIL (p99 above 5 ms)"
  [ "$4" -eq 0 ] || verdict="FAIL (socket errors)"
  printf '  %-22s %10s req/s  p99 %7s ms  errors %s  ratio %s  %s\n' "$1" "$2" "$3" "$4" \
    "$(awk -v r="$2" -v n="$n_rps" 'BEGIN {printf "%.2f", r / n}')" "$verdict"
  [ "$verdict" = ok ] || status=1
}

read -r s_rps s_p99 s_err < <(measure server "http://127.0.0.1:$port/api/scenes")
check "server" "$s_rps" "$s_p99" "$s_err"
stop_server

for mode in blocked spinning; do
  start_server "$mode"
  read -r b_rps b_p99 b_err < <(measure "$mode" "http://127.0.0.1:$port/api/scenes")
  check "server, main $mode" "$b_rps" "$b_p99" "$b_err"
  stop_server
done
exit $status
