-- Requisitions, orders, inquiries and the tracking of what vendors still owe.

create table [原料申購資料] (
    [申購單號] nvarchar(30) not null,
    [類別] nvarchar(20) default '', [申購日期] nvarchar(20) default '',
    [經辦代號] nvarchar(20) default '', [經辦名稱] nvarchar(40) default '', [工單單號] nvarchar(40) default '',
    [申購單位] nvarchar(60) default '', [需求日期] nvarchar(20) default '', [請購原因] nvarchar(60) default '',
    [庫別] nvarchar(60) default '', [備註] nvarchar(max) default '',
    [審單] nvarchar(10) default '', [審單人] nvarchar(40) default '', [審單日期] nvarchar(20) default '',
    [製單人] nvarchar(40) default '', [製單時間] nvarchar(30) default '',
    [修改人] nvarchar(40) default '', [修改時間] nvarchar(30) default '',
    constraint [PK_原料申購資料] primary key ([申購單號])
)
go
create index [IX_原料申購資料_申購日期] on [原料申購資料] ([申購日期], [申購單號])
go
-- For the same sums: the header's family without its row.
create index [IX_原料申購資料_類別] on [原料申購資料] ([申購單號], [類別], [審單])
go
-- An order line finds its requisition line by number and item; a line keeps no number of its own.
create table [原料申購明細] (
    [原料代號] nvarchar(20) not null,
    [原料名稱] nvarchar(80) default '', [規格] nvarchar(80) default '', [數量] nvarchar(20) default '',
    [單位] nvarchar(20) default '', [印件編號] nvarchar(40) default '', [需求日期] nvarchar(20) default '',
    [備注] nvarchar(200) default '', [序] int default 0, [工單單號] nvarchar(40) default '',
    [已采購數] nvarchar(20) default '', [楞別] nvarchar(20) default '', [申購單號] nvarchar(30) not null,
    constraint [PK_原料申購明細] primary key ([申購單號], [原料代號])
)
go
create index [IX_原料申購明細_原料代號] on [原料申購明細] ([原料代號], [申購單號], [數量], [已采購數])
go
create table [採購資料] (
    [採購單號] nvarchar(30) not null,
    [類別] nvarchar(20) default '', [採購日期] nvarchar(20) default '',
    [廠商代號] nvarchar(20) default '', [廠商簡稱] nvarchar(40) default '',
    [業務員代號] nvarchar(20) default '', [業務員名稱] nvarchar(40) default '', [幣別] nvarchar(20) default '',
    [採購類別] nvarchar(20) default '', [工單單號] nvarchar(40) default '', [合計] nvarchar(20) default '',
    [申購單位] nvarchar(60) default '',
    [審單] nvarchar(10) default '', [審單人] nvarchar(40) default '', [審單日期] nvarchar(20) default '',
    [品質要求] nvarchar(max) default '',
    [製單人] nvarchar(40) default '', [製單時間] nvarchar(30) default '',
    [修改人] nvarchar(40) default '', [修改時間] nvarchar(30) default '',
    [轉稅] nvarchar(10) default '',
    -- Steps that other modules of the suite keep on an order, as numbers.
    [審核] int default 0, [審核人] nvarchar(40) default '', [核准] int default 0, [核准人] nvarchar(40) default '',
    [發票號碼] nvarchar(40) default '',
    constraint [PK_採購資料] primary key ([採購單號])
)
go
-- Navigation in the order of entry, for those who see only some salespersons too.
create index [IX_採購資料_製單時間] on [採購資料] ([類別], [製單時間], [採購日期], [採購單號], [業務員代號])
go
create index [IX_採購資料_採購日期] on [採購資料] ([類別], [採購日期], [採購單號])
go
create index [IX_採購資料_日期] on [採購資料] ([採購日期], [採購單號])
go
create index [IX_採購資料_廠商代號] on [採購資料] ([廠商代號], [類別], [採購單號])
go
create index [IX_採購資料_類別] on [採購資料] ([採購單號], [類別], [審單])
go
create table [採購明細資料] (
    [序] int not null,
    [請購單號] nvarchar(30) default '', [印件編號] nvarchar(40) default '', [客戶代號] nvarchar(20) default '',
    [客戶簡稱] nvarchar(40) default '', [紙箱代號] nvarchar(40) default '', [料號] nvarchar(60) default '',
    [原料代號] nvarchar(20) default '', [廠商名稱] nvarchar(80) default '', [原料名稱] nvarchar(80) default '',
    [規格] nvarchar(80) default '', [數量] nvarchar(20) default '', [單價] nvarchar(20) default '',
    [單位] nvarchar(20) default '', [小計] nvarchar(20) default '', [交貨日期] nvarchar(20) default '',
    [楞別] nvarchar(20) default '', [剖切尺寸] nvarchar(60) default '', [壓線種類] nvarchar(20) default '',
    [壓線尺寸] nvarchar(80) default '', [寬剖] nvarchar(20) default '', [小紙數] nvarchar(20) default '',
    [已入庫數] nvarchar(20) default '', [未交數] nvarchar(20) default '', [送清] nvarchar(10) default '',
    [計價公式] nvarchar(max) default '', [備註] nvarchar(200) default '',
    [已檢驗數] nvarchar(20) default '', [檢驗合格數] nvarchar(20) default '', [檢驗單號] nvarchar(30) default '',
    [採購單號] nvarchar(30) not null,
    -- Kept by other modules; a number, so that 數量 - 驗收數 is one.
    [驗收數] float default 0,
    constraint [PK_採購明細資料] primary key ([採購單號], [序])
)
go
-- The stock panel adds up the lines of an item at every move of the cursor: the sums never touch the rows.
create index [IX_採購明細資料_原料代號] on [採購明細資料] ([原料代號], [採購單號], [數量], [已入庫數])
go
create index [IX_採購明細資料_印件編號] on [採購明細資料] ([印件編號])
go
create index [IX_採購明細資料_請購單號] on [採購明細資料] ([請購單號], [原料代號])
go
create table [詢價資料] (
    [詢價單號] nvarchar(30) not null,
    [詢價日期] nvarchar(20) default '', [廠商代號] nvarchar(20) default '', [廠商簡稱] nvarchar(40) default '',
    [幣別] nvarchar(20) default '', [類別] nvarchar(20) default '',
    constraint [PK_詢價資料] primary key ([詢價單號])
)
go
create table [詢價明細資料] (
    [詢價單號] nvarchar(30) not null, [序] int not null,
    [原料代號] nvarchar(20) default '', [原料名稱] nvarchar(80) default '', [規格] nvarchar(80) default '',
    [數量] nvarchar(20) default '', [單價] nvarchar(20) default '', [小計] nvarchar(20) default '',
    constraint [PK_詢價明細資料] primary key ([詢價單號], [序])
)
go
create table [採購未到料資料] (
    [單號] nvarchar(30) not null,
    [日期] nvarchar(20) default '', [廠商代號] nvarchar(20) default '', [廠商簡稱] nvarchar(40) default '',
    [經辦代號] nvarchar(20) default '', [經辦名稱] nvarchar(40) default '',
    [採購代號] nvarchar(20) default '', [採購名稱] nvarchar(40) default '',
    [採購日期起] nvarchar(20) default '', [採購日期末] nvarchar(20) default '', [類別] nvarchar(20) default '',
    [製單人] nvarchar(40) default '', [製單時間] nvarchar(30) default '',
    [修改人] nvarchar(40) default '', [修改時間] nvarchar(30) default '',
    constraint [PK_採購未到料資料] primary key ([單號])
)
go
-- 天數 is a number, so that the list by days runs from the latest delivery to the furthest.
create table [採購未到料明細] (
    [廠商代號] nvarchar(20) default '', [廠商簡稱] nvarchar(40) default '', [類別] nvarchar(20) default '',
    [採購單號] nvarchar(30) default '', [原料代號] nvarchar(20) default '', [原料名稱] nvarchar(80) default '',
    [規格] nvarchar(80) default '', [應入數] nvarchar(20) default '', [未到數] nvarchar(20) default '',
    [單位] nvarchar(20) default '', [採購日期] nvarchar(20) default '', [交貨日期] nvarchar(20) default '',
    [天數] int default 0, [扣分] nvarchar(20) default '', [經辦] nvarchar(40) default '',
    [結案] nvarchar(10) default '', [單號] nvarchar(30) not null, [序] int not null,
    constraint [PK_採購未到料明細] primary key ([單號], [序])
)
go
create table [廠商扣分記錄] (
    [日期] nvarchar(20) default '', [內容] nvarchar(200) default '', [扣分] nvarchar(20) default '',
    [經辦] nvarchar(40) default '', [經辦代號] nvarchar(20) default '', [序] int not null,
    [廠商代號] nvarchar(20) default '', [未到料單號] nvarchar(30) not null,
    constraint [PK_廠商扣分記錄] primary key ([未到料單號], [序])
)
go
create index [IX_廠商扣分記錄_廠商代號] on [廠商扣分記錄] ([廠商代號])
