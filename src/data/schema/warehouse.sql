-- Receipts, returns, issues, bins, stock counts, and the outsourcing of semi-finished goods.

create table [原料入庫資料] (
    [入庫單號] nvarchar(30) not null,
    [類別] nvarchar(20) default '', [入庫日期] nvarchar(20) default '',
    [經辦代號] nvarchar(20) default '', [經辦名稱] nvarchar(40) default '', [廠商代號] nvarchar(20) default '',
    [採購單號] nvarchar(30) default '', [備註] nvarchar(max) default '', [單別] nvarchar(40) default '',
    [幣別] nvarchar(20) default '', [廠商單號] nvarchar(40) default '', [付款年月] nvarchar(10) default '',
    [倉別] nvarchar(40) default '', [對帳日期] nvarchar(20) default '', [檢驗單號] nvarchar(30) default '',
    [合計] nvarchar(20) default '',
    [審核] nvarchar(10) default '', [審核人] nvarchar(40) default '', [審核日期] nvarchar(20) default '',
    [製單人] nvarchar(40) default '', [製單時間] nvarchar(30) default '',
    [修改人] nvarchar(40) default '', [修改時間] nvarchar(30) default '',
    constraint [PK_原料入庫資料] primary key ([入庫單號])
)
go
create index [IX_原料入庫資料_製單時間] on [原料入庫資料] ([類別], [製單時間], [入庫日期], [入庫單號], [單別])
go
create index [IX_原料入庫資料_入庫日期] on [原料入庫資料] ([類別], [入庫日期], [入庫單號])
go
-- A new number looks for the day anywhere in all numbers.
create index [IX_原料入庫資料_入庫單號] on [原料入庫資料] ([入庫單號], [類別], [單別])
go
create table [原料入庫明細] (
    [採購單號] nvarchar(30) default '', [原料代號] nvarchar(20) default '', [原料名稱] nvarchar(80) default '',
    [規格] nvarchar(80) default '', [數量] nvarchar(20) default '', [備品] nvarchar(20) default '',
    [單價] nvarchar(20) default '', [單位] nvarchar(20) default '', [小計] nvarchar(20) default '',
    [走紙才] nvarchar(30) default '', [入庫單位] nvarchar(30) default '', [入庫數量] nvarchar(20) default '',
    [剖切尺寸] nvarchar(60) default '', [備註] nvarchar(200) default '', [檢驗單號] nvarchar(30) default '',
    [檢驗員] nvarchar(40) default '', [檢驗] nvarchar(30) default '', [報關單號] nvarchar(40) default '',
    [備案單號] nvarchar(40) default '', [計價公式] nvarchar(max) default '', [採購序] nvarchar(20) default '',
    [入庫單號] nvarchar(30) not null, [序] int not null, [重量] nvarchar(20) default '',
    constraint [PK_原料入庫明細] primary key ([入庫單號], [序])
)
go
create index [IX_原料入庫明細_採購單號] on [原料入庫明細] ([採購單號], [採購序], [數量])
go
create index [IX_原料入庫明細_原料代號] on [原料入庫明細] ([原料代號], [入庫單號])
go
create table [原料領料資料] (
    [領料單號] nvarchar(30) not null,
    [領料日期] nvarchar(20) default '', [經辦代號] nvarchar(20) default '', [經辦名稱] nvarchar(40) default '',
    [領料人代號] nvarchar(20) default '', [領料人名稱] nvarchar(40) default '', [備註] nvarchar(max) default '',
    [單別] nvarchar(40) default '', [類別] nvarchar(20) default '', [領料部門] nvarchar(60) default '',
    [工單單號] nvarchar(40) default '', [機台] nvarchar(40) default '', [倉別] nvarchar(40) default '',
    [檢驗單號] nvarchar(30) default '',
    [審單] nvarchar(10) default '', [審單人] nvarchar(40) default '', [審單日期] nvarchar(20) default '',
    [製單人] nvarchar(40) default '', [製單時間] nvarchar(30) default '',
    [修改人] nvarchar(40) default '', [修改時間] nvarchar(30) default '',
    constraint [PK_原料領料資料] primary key ([領料單號])
)
go
create index [IX_原料領料資料_製單時間] on [原料領料資料] ([類別], [製單時間], [領料單號])
go
create index [IX_原料領料資料_領料日期] on [原料領料資料] ([類別], [領料日期], [領料單號])
go
create index [IX_原料領料資料_日期] on [原料領料資料] ([領料日期], [領料單號])
go
create index [IX_原料領料資料_類別] on [原料領料資料] ([領料單號], [類別], [審單])
go
create table [原料領料明細] (
    [原料代號] nvarchar(20) default '', [原料名稱] nvarchar(80) default '', [規格] nvarchar(80) default '',
    [楞別] nvarchar(20) default '', [數量] nvarchar(20) default '', [放數] nvarchar(20) default '',
    [實領數] nvarchar(20) default '', [單位] nvarchar(20) default '', [重量] nvarchar(20) default '',
    [儲位] nvarchar(40) default '', [入庫單號] nvarchar(30) default '', [備注] nvarchar(200) default '',
    [序] int not null, [領料單號] nvarchar(30) not null, [異常] nvarchar(60) default '',
    constraint [PK_原料領料明細] primary key ([領料單號], [序])
)
go
create index [IX_原料領料明細_原料代號] on [原料領料明細] ([原料代號], [領料單號], [實領數])
go
create table [進料檢驗資料] (
    [檢驗單號] nvarchar(30) not null, [入庫確認] nvarchar(10) default '', [領料確認] nvarchar(10) default '',
    constraint [PK_進料檢驗資料] primary key ([檢驗單號])
)
go
create table [原料異動匯總表] (
    [原料代號] nvarchar(20) not null, [異動月份] nvarchar(10) not null, [出庫數量] nvarchar(20) default '',
    [類別] nvarchar(20) not null,
    constraint [PK_原料異動匯總表] primary key ([原料代號], [異動月份], [類別])
)
go
create table [原料板位明細] (
    [類別] nvarchar(20) not null, [原料代號] nvarchar(20) not null, [儲位] nvarchar(40) not null,
    [入庫單號] nvarchar(30) not null, [入庫數] nvarchar(20) default '', [領料數] nvarchar(20) default '',
    [入庫時間] nvarchar(30) default '',
    constraint [PK_原料板位明細] primary key ([類別], [原料代號], [儲位], [入庫單號])
)
go
create index [IX_原料板位明細_入庫單號] on [原料板位明細] ([入庫單號])
go
create table [盤點資料_物料] (
    [代號] nvarchar(20) not null, [盤點日期] nvarchar(30) not null, [數量] nvarchar(20) default '',
    constraint [PK_盤點資料_物料] primary key ([代號], [盤點日期])
)
go
create table [盤點資料_浪紙] (
    [代號] nvarchar(20) not null, [盤點日期] nvarchar(30) not null, [數量] nvarchar(20) default '',
    constraint [PK_盤點資料_浪紙] primary key ([代號], [盤點日期])
)
go
-- 190006 stands for an item that was never closed.
create table [盤點結轉_物料] (
    [代號] nvarchar(20) not null, [結轉月份] nvarchar(10) not null default '190006',
    [數量] nvarchar(20) default '', [結存] nvarchar(20) default '', [結存金額] nvarchar(20) default '',
    constraint [PK_盤點結轉_物料] primary key ([代號], [結轉月份])
)
go
create table [盤點結轉_浪紙] (
    [代號] nvarchar(20) not null, [結轉月份] nvarchar(10) not null default '190006',
    [數量] nvarchar(20) default '', [結存] nvarchar(20) default '', [結存金額] nvarchar(20) default '',
    constraint [PK_盤點結轉_浪紙] primary key ([代號], [結轉月份])
)
go
create table [盤點結轉_凸版] (
    [代號] nvarchar(20) not null, [結轉月份] nvarchar(10) not null default '190006',
    [數量] nvarchar(20) default '', [結存] nvarchar(20) default '', [結存金額] nvarchar(20) default '',
    constraint [PK_盤點結轉_凸版] primary key ([代號], [結轉月份])
)
go
create table [半成品物料明細] (
    [材料代號] nvarchar(20) default '', [類別] nvarchar(20) default '', [物料代號] nvarchar(60) default '',
    [物料名稱] nvarchar(80) default '', [物料規格] nvarchar(80) default '', [單位用量] nvarchar(20) default '',
    [單位] nvarchar(20) default '', [扣庫存] nvarchar(10) default '', [說明] nvarchar(200) default ''
)
go
create index [IX_半成品物料明細_材料代號] on [半成品物料明細] ([材料代號])
go
create table [半成品委外資料] (
    [委外單號] nvarchar(30) not null,
    [客戶單號] nvarchar(40) default '', [合計] nvarchar(20) default '', [幣別] nvarchar(20) default '',
    [審單] nvarchar(10) default '',
    constraint [PK_半成品委外資料] primary key ([委外單號])
)
go
create table [半成品委外明細] (
    [委外單號] nvarchar(30) not null, [序] int not null,
    [工單單號] nvarchar(40) default '', [材料代號] nvarchar(20) default '', [材料名稱] nvarchar(80) default '',
    [材料規格] nvarchar(80) default '', [數量] nvarchar(20) default '', [單位] nvarchar(20) default '',
    [單價] nvarchar(20) default '', [小計] nvarchar(20) default '', [回廠數] nvarchar(20) default '',
    [完工] nvarchar(10) default '',
    constraint [PK_半成品委外明細] primary key ([委外單號], [序])
)
go
create table [半成品委外回廠] (
    [入庫單號] nvarchar(30) not null,
    constraint [PK_半成品委外回廠] primary key ([入庫單號])
)
