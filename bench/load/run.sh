#!/usr/bin/env bash
# Drives tav-host over HTTP on loopback with wrk, at 1 and 8 connections, on
# three routes: notifications (the plug-in's own state), summoner-leagues (a
# round trip through the simulated server) and challenger-leagues (three
# queues of 300 challengers and 200 masters). Prints requests per second,
# p50 and p99 latency, and tav-host's CPU time per request; first, the
# plug-in's memory peak while it answers challenger-leagues.
#   bench/load/run.sh [tav-host] [seconds per run]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
host=${1:-$here/../../build-bench/devhost/tav-host}
seconds=${2:-10}
command -v wrk >/dev/null || { echo "load bench: wrk is not installed (make bench installs it)" >&2; exit 77; }
[ -x "$host" ] || { echo "load bench: no tav-host at $host" >&2; exit 1; }

log=$(mktemp)
"$host" serve --world "$here/world.yaml" --port 0 --quiet >"$log" 2>&1 &
pid=$!
trap 'kill $pid 2>/dev/null; wait $pid 2>/dev/null; rm -f "$log"' EXIT
for _ in $(seq 100); do
    base=$(sed -n 's/^Listening on \(http:[^ ]*\).*/\1/p' "$log")
    [ -n "$base" ] && break
    sleep 0.1
done
[ -n "$base" ] || { echo "load bench: tav-host did not start:" >&2; cat "$log" >&2; exit 1; }

# Clock ticks of user and system time the host has used so far.
cpu_ticks() { awk '{print $14 + $15}' "/proc/$pid/stat"; }
tick=$(getconf CLK_TCK)

# The plug-in's peak of live bytes while it answers the first challenger-leagues
# request, over what it held before (the peak only grows, so this comes first).
memory() { curl -s "$base/devhost/memory" | sed -n "s/.*\"$1\":\([0-9]*\).*/\1/p"; }
if command -v curl >/dev/null; then
    live=$(memory liveBytes)
    answer=$(curl -s "$base/tav-leagues/v1/challenger-leagues" | wc -c)
    printf 'challenger-leagues: peak %s bytes over the %s live before; answer %s bytes\n\n' \
        "$(( $(memory peakLiveBytes) - live ))" "$live" "$answer"
fi

printf '%-20s %5s %10s %10s %10s %14s\n' route conns "req/s" p50 p99 "host CPU/req"
for route in v2/notifications v1/summoner-leagues/1001 v1/challenger-leagues; do
    for connections in 1 8; do
        before=$(cpu_ticks)
        out=$(wrk -t "$connections" -c "$connections" -d "${seconds}s" --latency "$base/tav-leagues/$route")
        after=$(cpu_ticks)
        requests=$(awk '/requests in/ {print $1}' <<<"$out")
        rate=$(awk '/^Requests\/sec/ {print $2}' <<<"$out")
        p50=$(awk '$1 == "50%" {print $2}' <<<"$out")
        p99=$(awk '$1 == "99%" {print $2}' <<<"$out")
        per=$(awk -v t=$((after - before)) -v hz="$tick" -v n="$requests" \
              'BEGIN {printf "%.1f us", (n > 0 ? t / hz / n * 1e6 : 0)}')
        printf '%-20s %5s %10s %10s %10s %14s\n' "${route#v?/}" "$connections" "$rate" "$p50" "$p99" "$per"
    done
done
