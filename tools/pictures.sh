#!/usr/bin/env bash
# pictures.sh [BIN]: renews docs/pictures/. The robot plays the main road on a fresh demo plant, the launchpad paints itself;
# both offscreen. Nothing is built: BIN holds the programs (build/release/bin, or build/debug/bin when there is no release).
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
bin=${1:-build/release/bin}
[ -n "${1:-}" ] || [ -x "$bin/liaowu-robot" ] || bin=build/debug/bin
export QT_QPA_PLATFORM=offscreen
mkdir -p out docs/pictures
rm -f out/*.png out/plant.db*
$bin/liaowu-db demo out/plant.db
# Before the road, so that the picture shows the plant as a newcomer finds it.
$bin/liaowu-launchpad --db out/plant.db --picture out/launchpad.png
$bin/liaowu-robot --db out/plant.db tests/scenarios/common/prelude.js tests/scenarios/road/*.js
rm -f out/plant.db*

# The picture of the road, and its name in the documents.
while read -r shot name; do
    [ -z "$shot" ] || cp "out/$shot.png" "docs/pictures/$name.png"
done <<'PICTURES'
launchpad launchpad
01_requisition requisition
02_requisition_lines requisition_lines
03_order_from_requisition order_from_requisition
1_order order
2_pick pick
3_approval approval
4_search search
5_approved approved
6_formulas formulas
7_order_lines receipt_pick
8_receipt receipt
09_board_receipt board_receipt
10_search_conditions search_conditions
11_batch batch
12_no_amount no_amount
13_paste paste
14_return return
PICTURES
ls docs/pictures
