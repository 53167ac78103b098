#!/usr/bin/env bash
# Prints line coverage per layer (each folder under src/) and in total, from the .gcda files that a
# test run left in the given build folder.
set -euo pipefail
build=${1:-build-cov}
root=$(cd "$(dirname "$0")/.." && pwd)
json=$(mktemp)
trap 'rm -f "$json"' EXIT
gcovr --root "$root" --filter "$root/src/" --json-summary "$json" "$root/$build" >/dev/null
python3 - "$json" <<'PY'
import json, sys, collections
data = json.load(open(sys.argv[1]))
total = collections.defaultdict(lambda: [0, 0])
for f in data["files"]:
    parts = f["filename"].split("/")
    layer = parts[1] if len(parts) > 2 and parts[0] == "src" else parts[0]
    total[layer][0] += f["line_covered"]
    total[layer][1] += f["line_total"]
covered = sum(c for c, _ in total.values())
lines = sum(t for _, t in total.values())
for layer in sorted(total):
    c, t = total[layer]
    print(f"{layer:10s} {100.0 * c / t if t else 0:6.1f}%  {c:6d} / {t:6d} lines")
print(f"{'total':10s} {100.0 * covered / lines if lines else 0:6.1f}%  {covered:6d} / {lines:6d} lines")
PY
