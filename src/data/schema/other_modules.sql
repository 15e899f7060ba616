-- Tables that other modules of the suite fill and that are only read here, or marked by the batch approval.

create table [客戶資料] (
    [客戶代號] nvarchar(20) not null, [客戶簡稱] nvarchar(40) default '',
    constraint [PK_客戶資料] primary key ([客戶代號])
)
go
create table [紙箱生產資料] (
    [工單單號] nvarchar(40) not null,
    [工單日期] nvarchar(20) default '', [客戶單號] nvarchar(40) default '', [客戶代號] nvarchar(20) default '',
    [紙箱代號] nvarchar(40) default '', [客戶料號] nvarchar(60) default '', [紙質代號] nvarchar(20) default '',
    [紙質名稱] nvarchar(80) default '', [備料尺寸寬] nvarchar(20) default '', [備料尺寸長] nvarchar(20) default '',
    [楞別] nvarchar(20) default '', [備紙數] nvarchar(20) default '', [平版剖切寬] nvarchar(20) default '',
    [平版剖切長] nvarchar(20) default '', [寬壓線0] nvarchar(20) default '', [寬壓線1] nvarchar(20) default '',
    [寬壓線2] nvarchar(20) default '', [寬壓線3] nvarchar(20) default '', [寬壓線4] nvarchar(20) default '',
    [寬壓線5] nvarchar(20) default '', [寬壓線6] nvarchar(20) default '', [壓線種類] nvarchar(20) default '',
    [採購備注] nvarchar(200) default '', [寬剖] nvarchar(20) default '', [交貨日期] nvarchar(20) default '',
    [完工] nvarchar(10) default '',
    constraint [PK_紙箱生產資料] primary key ([工單單號])
)
go
create table [訂單資料] (
    [訂單單號] nvarchar(30) not null, [訂單日期] nvarchar(20) default '',
    [審單] nvarchar(10) default '', [審單人] nvarchar(40) default '', [審單日期] nvarchar(20) default '',
    constraint [PK_訂單資料] primary key ([訂單單號])
)
go
create table [紙箱報價資料] (
    [報價單號] nvarchar(30) not null, [報價日期] nvarchar(20) default '',
    [審單] nvarchar(10) default '', [審單人] nvarchar(40) default '', [審單日期] nvarchar(20) default '',
    constraint [PK_紙箱報價資料] primary key ([報價單號])
)
go
create table [工單資料] (
    [工單單號] nvarchar(40) not null, [工單日期] nvarchar(20) default '',
    [審單] nvarchar(10) default '', [審單人] nvarchar(40) default '', [審單日期] nvarchar(20) default '',
    constraint [PK_工單資料] primary key ([工單單號])
)
go
create table [送貨資料] (
    [送貨單號] nvarchar(30) not null, [送貨日期] nvarchar(20) default '',
    [審單] nvarchar(10) default '', [審單人] nvarchar(40) default '', [審單日期] nvarchar(20) default '',
    [審核] nvarchar(10) default '', [審核人] nvarchar(40) default '', [審核日期] nvarchar(20) default '',
    constraint [PK_送貨資料] primary key ([送貨單號])
)
go
create table [委外資料] (
    [委外單號] nvarchar(30) not null, [開單日期] nvarchar(20) default '', [預交日期] nvarchar(20) default '',
    [審單] nvarchar(10) default '', [審單人] nvarchar(40) default '',
    [審核] nvarchar(10) default '', [審核人] nvarchar(40) default '',
    constraint [PK_委外資料] primary key ([委外單號])
)
go
create table [收款銷帳作業] (
    [銷帳單號] nvarchar(30) not null, [銷帳日期] nvarchar(20) default '',
    [審單] nvarchar(10) default '', [審單人] nvarchar(40) default '', [審單日期] nvarchar(20) default '',
    constraint [PK_收款銷帳作業] primary key ([銷帳單號])
)
go
create table [付款銷帳作業] (
    [付款單號] nvarchar(30) not null, [日期] nvarchar(20) default '',
    [審單] nvarchar(10) default '', [審單人] nvarchar(40) default '', [審單日期] nvarchar(20) default '',
    constraint [PK_付款銷帳作業] primary key ([付款單號])
)
go
-- From here on the marks are numbers, 1 and 0.
create table [紙品採購] (
    [採購單號] nvarchar(30) not null, [採購日期] nvarchar(20) default '', [申購單位] nvarchar(60) default '',
    [審單] int default 0, [審單人] nvarchar(40) default '', [審核] int default 0, [審核人] nvarchar(40) default '',
    [核准] int default 0, [核准人] nvarchar(40) default '',
    constraint [PK_紙品採購] primary key ([採購單號])
)
go
create table [紙品採購明細] (
    [採購單號] nvarchar(30) not null, [序] int not null, [數量] float default 0, [驗收數] float default 0,
    constraint [PK_紙品採購明細] primary key ([採購單號], [序])
)
go
create table [坑紙作業] (
    [採購單號] nvarchar(30) not null, [採購日期] nvarchar(20) default '', [申購單位] nvarchar(60) default '',
    [審單] int default 0, [審單人] nvarchar(40) default '', [審核] int default 0, [審核人] nvarchar(40) default '',
    [核准] int default 0, [核准人] nvarchar(40) default '',
    constraint [PK_坑紙作業] primary key ([採購單號])
)
go
create table [坑紙明細] (
    [採購單號] nvarchar(30) not null, [序] int not null, [數量] float default 0, [入庫數] float default 0,
    constraint [PK_坑紙明細] primary key ([採購單號], [序])
)
go
create table [物料入庫資料] (
    [入庫單號] nvarchar(30) not null, [入庫日期] nvarchar(20) default '',
    [審核] int default 0, [審核人] nvarchar(40) default '', [審核日期] nvarchar(20) default '',
    constraint [PK_物料入庫資料] primary key ([入庫單號])
)
go
create table [坑紙入庫資料] (
    [入庫單號] nvarchar(30) not null, [入庫日期] nvarchar(20) default '',
    [審核] int default 0, [審核人] nvarchar(40) default '', [審核日期] nvarchar(20) default '',
    constraint [PK_坑紙入庫資料] primary key ([入庫單號])
)
go
create table [紙品入庫資料] (
    [入庫單號] nvarchar(30) not null, [入庫日期] nvarchar(20) default '', [驗收] nvarchar(40) default '',
    [審核] int default 0, [審核人] nvarchar(40) default '', [審核日期] nvarchar(20) default '',
    constraint [PK_紙品入庫資料] primary key ([入庫單號])
)
go
create table [紙品入庫明細] (
    [入庫單號] nvarchar(30) not null, [序] int not null, [紙品代號] nvarchar(20) default '',
    [紙品名稱] nvarchar(80) default '', [規格] nvarchar(80) default '', [入庫數量] nvarchar(20) default '',
    [單位] nvarchar(20) default '',
    constraint [PK_紙品入庫明細] primary key ([入庫單號], [序])
)
go
create table [紙品撥出資料] (
    [出庫單號] nvarchar(30) not null, [出庫日期] nvarchar(20) default '', [領料人] nvarchar(40) default '',
    constraint [PK_紙品撥出資料] primary key ([出庫單號])
)
go
create table [紙品撥出明細] (
    [出庫單號] nvarchar(30) not null, [序] int not null, [紙品代號] nvarchar(20) default '',
    [紙品名稱] nvarchar(80) default '', [紙品規格] nvarchar(80) default '', [出庫數量] nvarchar(20) default '',
    [單位] nvarchar(20) default '',
    constraint [PK_紙品撥出明細] primary key ([出庫單號], [序])
)
go
create table [物料盤點庫存表] (
    [物料代號] nvarchar(20) not null, [年月] nvarchar(10) not null, [本月結存] nvarchar(20) default '',
    constraint [PK_物料盤點庫存表] primary key ([物料代號], [年月])
)
go
create table [補紙狀況表] (
    [月份] nvarchar(10) default '',
    [筆數1] nvarchar(20) default '', [重量1] nvarchar(20) default '', [筆數2] nvarchar(20) default '', [重量2] nvarchar(20) default '',
    [筆數3] nvarchar(20) default '', [重量3] nvarchar(20) default '', [筆數4] nvarchar(20) default '', [重量4] nvarchar(20) default '',
    [筆數5] nvarchar(20) default '', [重量5] nvarchar(20) default '', [筆數6] nvarchar(20) default '', [重量6] nvarchar(20) default '',
    [筆數7] nvarchar(20) default '', [重量7] nvarchar(20) default '', [筆數8] nvarchar(20) default '', [重量8] nvarchar(20) default '',
    [筆數9] nvarchar(20) default '', [重量9] nvarchar(20) default '', [筆數10] nvarchar(20) default '', [重量10] nvarchar(20) default '',
    [筆數11] nvarchar(20) default '', [重量11] nvarchar(20) default '', [筆數12] nvarchar(20) default '', [重量12] nvarchar(20) default '',
    [筆數13] nvarchar(20) default '', [重量13] nvarchar(20) default '', [筆數14] nvarchar(20) default '', [重量14] nvarchar(20) default '',
    [筆數15] nvarchar(20) default '', [重量15] nvarchar(20) default '', [筆數16] nvarchar(20) default '', [重量16] nvarchar(20) default '',
    [筆數17] nvarchar(20) default '', [重量17] nvarchar(20) default '', [筆數18] nvarchar(20) default '', [重量18] nvarchar(20) default '',
    [筆數19] nvarchar(20) default '', [重量19] nvarchar(20) default '', [筆數20] nvarchar(20) default '', [重量20] nvarchar(20) default '',
    [筆數21] nvarchar(20) default '', [重量21] nvarchar(20) default '', [筆數22] nvarchar(20) default '', [重量22] nvarchar(20) default '',
    [筆數23] nvarchar(20) default '', [重量23] nvarchar(20) default '', [筆數24] nvarchar(20) default '', [重量24] nvarchar(20) default '',
    [筆數25] nvarchar(20) default '', [重量25] nvarchar(20) default '', [筆數26] nvarchar(20) default '', [重量26] nvarchar(20) default '',
    [筆數27] nvarchar(20) default '', [重量27] nvarchar(20) default '', [筆數28] nvarchar(20) default '', [重量28] nvarchar(20) default '',
    [筆數29] nvarchar(20) default '', [重量29] nvarchar(20) default '', [筆數30] nvarchar(20) default '', [重量30] nvarchar(20) default '',
    [筆數31] nvarchar(20) default '', [重量31] nvarchar(20) default '',
    [合計筆數] nvarchar(20) default '', [合計重量] nvarchar(20) default '', [月用量] nvarchar(20) default ''
)
