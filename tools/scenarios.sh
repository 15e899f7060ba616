#!/usr/bin/env bash
# scenarios.sh BIN: plays every scenario on a plant of its own, and lists the messages that none of them has shown.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
bin=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
$bin/liaowu-db demo "$work/base.db" >/dev/null || exit 1
passed=0 failed=0
for script in tests/scenarios/*.js; do
    cp "$work/base.db" "$work/plant.db"
    rm -f "$work/plant.db-wal" "$work/plant.db-shm"
    output=$(LIAOWU_BIN="$bin" LIAOWU_WORK="$work" timeout 600 $bin/liaowu-robot --db "$work/plant.db" --messages "$work/shown" \
        tests/scenarios/common/prelude.js "$script" 2>&1)
    code=$?
    counts=$(tail -n 1 <<<"$output")
    if [[ $counts =~ ^([0-9]+)\ passed,\ ([0-9]+)\ failed$ ]]; then
        passed=$((passed + BASH_REMATCH[1]))
        failed=$((failed + BASH_REMATCH[2]))
        [ $code -eq 0 ] && continue
    else
        failed=$((failed + 1))
    fi
    echo "-- $script"
    echo "$output"
done
touch "$work/shown"
tools/messages.py unshown "$work/shown"
echo "$passed passed, $failed failed"
[ $failed -eq 0 ]
