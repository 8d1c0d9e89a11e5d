#!/usr/bin/env bash
# End-to-end throughput of `kvcart convert`: 1 million UTM zone 32 points
# (a generated file) to longitude/latitude, number reading and writing
# included.  Compares with PROJ's cs2cs when it is installed.
#
#   bench/kvcart_convert_throughput.sh [KVCART] [POINTS]
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
kvcart="${1:-$here/build/release/apps/kvcart}"
points="${2:-1000000}"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

python3 - "$work/utm32.txt" "$points" <<'PY'
import random, sys
random.seed(1)
with open(sys.argv[1], "w") as f:
    for _ in range(int(sys.argv[2])):
        f.write("%.3f %.3f\n" % (random.uniform(300000, 700000), random.uniform(4000000, 6500000)))
PY

rate() {  # seconds -> points per second
  python3 -c "import sys; print('%.2f M points/s' % ($points / float(sys.argv[1]) / 1e6))" "$1"
}

best=""
for run in 1 2 3; do
  start=$(date +%s.%N)
  "$kvcart" convert --from UTM-32 --to LONG/LAT "$work/utm32.txt" > "$work/out.txt"
  end=$(date +%s.%N)
  t=$(python3 -c "print($end - $start)")
  if [ -z "$best" ] || python3 -c "import sys; sys.exit(0 if $t < $best else 1)"; then best=$t; fi
done
echo "kvcart convert: $points points in ${best} s (best of 3): $(rate "$best")"

if command -v cs2cs > /dev/null; then
  start=$(date +%s.%N)
  cs2cs -f %.9f +proj=utm +zone=32 +ellps=WGS84 +to +proj=longlat +ellps=WGS84 \
    < "$work/utm32.txt" > "$work/cs2cs.txt"
  end=$(date +%s.%N)
  t=$(python3 -c "print($end - $start)")
  echo "cs2cs:          $points points in ${t} s: $(rate "$t")"
  # Largest difference between the two outputs, in degrees.
  python3 - "$work/out.txt" "$work/cs2cs.txt" <<'PY'
import sys
worst = 0.0
with open(sys.argv[1]) as a, open(sys.argv[2]) as b:
    for la, lb in zip(a, b):
        xa, ya = map(float, la.split()[:2])
        xb, yb = map(float, lb.split()[:2])
        worst = max(worst, abs(xa - xb), abs(ya - yb))
print("largest difference from cs2cs: %.3g degrees" % worst)
PY
fi
