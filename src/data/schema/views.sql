-- One row for each item code, whatever its family.
create view [原料資料] as
select [原料代號], max([庫存單位]) as [庫存單位]
from (
    select [浪紙代號] as [原料代號], [單位] as [庫存單位] from [浪紙資料]
    union all
    select [物料代號], [單位] from [物料資料]
    union all
    select [紙品代號], [單位] from [紙品資料]
    union all
    select [主料代號], [單位] from [凸版主料資料]
) as [各類原料]
group by [原料代號]
go
-- What the order forms print: header and vendor beside every line of the work table, padding rows included.
create view [進貨單] as
select [採購資料].[採購單號], [採購資料].[類別], [採購資料].[採購日期], [採購資料].[廠商代號],
    [採購資料].[廠商簡稱], [廠商資料].[廠商全銜], [廠商資料].[電話1] as [聯絡電話], [廠商資料].[傳真號碼],
    [廠商資料].[聯絡人], [廠商資料].[付款天數], [廠商資料].[付款方式], [採購資料].[幣別],
    [採購資料].[業務員代號], [採購資料].[業務員名稱], [採購資料].[採購類別], [採購資料].[申購單位],
    [採購資料].[合計], [採購資料].[品質要求], [採購資料].[審單], [採購資料].[審單人], [採購資料].[審單日期],
    [採購資料].[製單人], (select max([公司地址]) from [公司基本資料]) as [指送地點],
    [採購資料報表2].[原料代號], [採購資料報表2].[原料名稱], [採購資料報表2].[廠商名稱],
    [採購資料報表2].[規格], [採購資料報表2].[數量], [採購資料報表2].[數量1], [採購資料報表2].[小紙數],
    [採購資料報表2].[單位], [採購資料報表2].[單價], [採購資料報表2].[小計], [採購資料報表2].[交貨日期],
    [採購資料報表2].[印件編號], [採購資料報表2].[備註], [採購資料報表2].[長度], [採購資料報表2].[寬度],
    [採購資料報表2].[楞別], [採購資料報表2].[剖切尺寸], [採購資料報表2].[壓線種類],
    [採購資料報表2].[壓線尺寸], [採購資料報表2].[客戶代號], [採購資料報表2].[工單單號],
    [採購資料報表2].[序]
from [採購資料報表2]
inner join [採購資料] on [採購資料].[採購單號] = [採購資料報表2].[採購單號]
left join [廠商資料] on [廠商資料].[廠商代號] = [採購資料].[廠商代號]
go
-- The same for requisitions. The header's 需求日期 gives way to the line's.
create view [原料申購單] as
select [原料申購資料].[申購單號], [原料申購資料].[類別], [原料申購資料].[申購日期],
    [原料申購資料].[經辦代號], [原料申購資料].[經辦名稱], [原料申購資料].[工單單號],
    [原料申購資料].[申購單位], [原料申購資料].[需求日期] as [單據需求日期], [原料申購資料].[請購原因],
    [原料申購資料].[庫別], [原料申購資料].[備註], [原料申購資料].[審單], [原料申購資料].[審單人],
    [原料申購資料].[審單日期], [原料申購資料].[製單人],
    [原料申購明細報表].[原料代號], [原料申購明細報表].[原料名稱], [原料申購明細報表].[規格],
    [原料申購明細報表].[數量], [原料申購明細報表].[單位], [原料申購明細報表].[印件編號],
    [原料申購明細報表].[需求日期], [原料申購明細報表].[備注], [原料申購明細報表].[楞別],
    [原料申購明細報表].[序]
from [原料申購明細報表]
inner join [原料申購資料] on [原料申購資料].[申購單號] = [原料申購明細報表].[申購單號]
go
-- Order lines that a vendor still owes: approved, something open, not closed by hand. 採購 is the buyer's code.
create view [採購未到料查詢] as
select [採購資料].[廠商代號], [採購資料].[廠商簡稱], [採購資料].[類別], [採購資料].[採購單號],
    [採購明細資料].[原料代號], [採購明細資料].[原料名稱], [採購明細資料].[規格], [採購明細資料].[數量],
    cast([採購明細資料].[數量] as float) - cast(coalesce([採購明細資料].[已入庫數], '') as float) as [未進數],
    [採購明細資料].[單位], [採購資料].[採購日期], [採購明細資料].[交貨日期], [採購明細資料].[送清],
    [採購資料].[業務員代號] as [採購]
from [採購資料]
inner join [採購明細資料] on [採購明細資料].[採購單號] = [採購資料].[採購單號]
where [採購資料].[審單] = 'Y'
    and cast([採購明細資料].[數量] as float) - cast(coalesce([採購明細資料].[已入庫數], '') as float) > 0
    and ([採購明細資料].[送清] <> 'Y' or [採購明細資料].[送清] is null)
go
-- The base currency and its rate of today: the one marked as default, else any, else 人民幣 at 1.
create view [料務_本位幣] as
select coalesce((select max([幣別]) from [匯率檔] where [默認幣別] = 'Y'),
        (select max([幣別]) from [匯率檔]), N'人民幣') as [幣別]
go
-- What moved the stock of board and materials, in stock units, with the amount of a receipt in the base currency at
-- the document's date. A return numbered with T moves no stock; an issue line counts once a save or the batch
-- approval has deducted it. An issue has no part in the unit cost.
create view [原料異動明細] as
select [進出].[代號], [進出].[異動日期], [進出].[類別], [進出].[單號], [進出].[序], [進出].[數量],
    [進出].[數量] as [算庫存單價數量],
    case when [進出].[幣別] = [本位].[幣別] then [進出].[原幣小計]
        else round([進出].[原幣小計] * coalesce(nullif([進出].[匯率], 0), 1) / coalesce(nullif([進出].[本位匯率], 0), 1), 6)
    end as [小計]
from (
    select [原料入庫明細].[原料代號] as [代號], [原料入庫資料].[入庫日期] as [異動日期], [原料入庫資料].[類別],
        [原料入庫資料].[入庫單號] as [單號], [原料入庫明細].[序], [原料入庫資料].[幣別],
        case when [原料入庫資料].[類別] = N'紙板' then cast(coalesce([原料入庫明細].[入庫數量], '') as float)
            else cast(coalesce([原料入庫明細].[數量], '') as float) + cast(coalesce([原料入庫明細].[備品], '') as float)
        end as [數量],
        cast(coalesce([原料入庫明細].[小計], '') as float) as [原幣小計],
        (select top 1 cast([匯率] as float) from [匯率修改記錄]
            where [匯率修改記錄].[幣別] = [原料入庫資料].[幣別] and [匯率修改記錄].[修改日期] < [原料入庫資料].[入庫日期]
            order by [修改日期] desc) as [匯率],
        (select max(cast([匯率] as float)) from [匯率檔]
            where [匯率檔].[幣別] = (select [幣別] from [料務_本位幣])) as [本位匯率]
    from [原料入庫資料]
    inner join [原料入庫明細] on [原料入庫明細].[入庫單號] = [原料入庫資料].[入庫單號]
    where [原料入庫資料].[類別] in (N'紙板', N'物料')
        and not (coalesce([原料入庫資料].[單別], '') like N'%退%' and [原料入庫資料].[入庫單號] like '%T%')
) as [進出]
inner join [料務_本位幣] as [本位] on 1 = 1
union all
select [原料領料明細].[原料代號], [原料領料資料].[領料日期], [原料領料資料].[類別], [原料領料資料].[領料單號],
    [原料領料明細].[序], -cast(coalesce([原料領料明細].[實領數], '') as float), 0, 0
from [原料領料資料]
inner join [原料領料明細] on [原料領料明細].[領料單號] = [原料領料資料].[領料單號]
where [原料領料資料].[類別] in (N'紙板', N'物料')
    and ([原料領料資料].[審單] = 'Y'
        or exists (select 1 from [料務_扣庫存]
            where [料務_扣庫存].[領料單號] = [原料領料明細].[領料單號] and [料務_扣庫存].[序] = [原料領料明細].[序]))
