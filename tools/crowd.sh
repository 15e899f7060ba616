#!/usr/bin/env bash
# crowd.sh BIN [CLIENTS] [SAVES]: several clients at once on one embedded database. No save is lost, no number is used twice, and
# the plant adds up afterwards.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
bin=$1 clients=${2:-8} saves=${3:-50}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
$bin/liaowu-db demo "$work/plant.db" >/dev/null || exit 1
# The busiest moment of a day: everybody draws numbers of the same date.
for client in $(seq "$clients"); do
    echo "crowd = { worker: $client, saves: $saves };" >"$work/client$client.js"
    timeout 600 $bin/liaowu-robot --db "$work/plant.db" "$work/client$client.js" tests/scenarios/crowd/orders.js >"$work/out$client" 2>&1 &
done
wait
failed=0
for client in $(seq "$clients"); do
    grep -q ' passed, 0 failed$' "$work/out$client" || { failed=1; cat "$work/out$client"; }
    grep '^client ' "$work/out$client"
done
cat >"$work/after.js" <<JS
const made = db.query("select 採購單號,工單單號 from 採購資料 where 工單單號 like 'C%-%'");
equal(made.length, $clients * $saves, "no save is lost");
equal(new Set(made.map(r => r["工單單號"])).size, made.length, "none is doubled");
const lines = db.query("select count(*) as n from 採購明細資料 inner join 採購資料 on 採購資料.採購單號=採購明細資料.採購單號 where 工單單號 like 'C%-%'")[0].n;
equal(lines, 3 * made.length, "every order has its lines");
JS
$bin/liaowu-robot --db "$work/plant.db" "$work/after.js" || failed=1
$bin/liaowu-db check "$work/plant.db" | tail -3
[ "${PIPESTATUS[0]}" -eq 0 ] || failed=1
exit $failed
