#!/usr/bin/env bash
# crowd.sh BIN [CLIENTS] [SAVES]: clients at once on one embedded database, every other one entering orders, the others receiving the
# same lines of one order. No save is lost, no number is used twice, and the plant adds up afterwards.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
bin=$1 clients=${2:-8} saves=${3:-50}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
$bin/liaowu-db demo "$work/plant.db" >/dev/null || exit 1
cat >"$work/before.js" <<'JS'
const codes = db.query("select top 3 物料代號,物料名稱,單位 from 物料資料 order by 物料代號");
db.execute("insert into 採購資料 (採購單號,類別,採購日期,廠商代號,廠商簡稱,審單,幣別) values ('CROWD','物料','20250101','V001','','Y','台幣')");
codes.forEach((item, i) => db.execute("insert into 採購明細資料 (採購單號,序,原料代號,原料名稱,數量,單價,單位,小計,寬剖,已入庫數,未交數,送清) values " +
    "('CROWD'," + (i + 1) + ",'" + item["物料代號"] + "','" + item["物料名稱"] + "','100000','1','" + item["單位"] + "','0','1','0','100000','N')"));
JS
$bin/liaowu-robot --db "$work/plant.db" "$work/before.js" >/dev/null || exit 1
for client in $(seq "$clients"); do
    kind=$([ $((client % 2)) -eq 0 ] && echo orders || echo receipts)
    echo "crowd = { worker: $client, saves: $saves };" >"$work/client$client.js"
    timeout 600 $bin/liaowu-robot --db "$work/plant.db" \
        "$work/client$client.js" tests/scenarios/common/prelude.js tests/scenarios/crowd/common.js "tests/scenarios/crowd/$kind.js" >"$work/out$client" 2>&1 &
done
wait
failed=0
for client in $(seq "$clients"); do
    grep -q ' passed, 0 failed$' "$work/out$client" || { failed=1; tail -n 20 "$work/out$client"; }
    grep '^client ' "$work/out$client"
done
cat >"$work/after.js" <<JS
const half = $clients / 2 * $saves;
const orders = db.query("select 採購單號,工單單號 from 採購資料 where 工單單號 like 'C%-%'");
equal([orders.length, new Set(orders.map(r => r["工單單號"])).size], [half, half], "no order is lost or doubled");
const lines = db.query("select count(*) as n from 採購明細資料 inner join 採購資料 on 採購資料.採購單號=採購明細資料.採購單號 where 工單單號 like 'C%-%'")[0].n;
equal(lines, 3 * half, "every order has its lines");
const receipts = db.query("select 入庫單號,廠商單號 from 原料入庫資料 where 廠商單號 like 'C%-%'");
equal([receipts.length, new Set(receipts.map(r => r["廠商單號"])).size], [half, half], "no receipt is lost or doubled");
equal(db.query("select 已入庫數 from 採購明細資料 where 採購單號='CROWD' order by 序").map(r => Number(r["已入庫數"])), [half, half, half], "every receipt counts on the order");
JS
$bin/liaowu-robot --db "$work/plant.db" "$work/after.js" || failed=1
$bin/liaowu-db check "$work/plant.db" | tail -3
[ "${PIPESTATUS[0]}" -eq 0 ] || failed=1
exit $failed
