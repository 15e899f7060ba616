-- Items of the four families, vendors, and what pricing needs. All figures are texts that a cast reads as numbers.

create table [浪紙資料] (
    [浪紙代號] nvarchar(20) not null,
    [浪紙名稱] nvarchar(80) default '', [浪紙名稱1] nvarchar(80) default '',
    [規格] nvarchar(80) default '', [規格1] nvarchar(80) default '',
    [進價] nvarchar(20) default '', [單價] nvarchar(20) default '', [進料單位] nvarchar(20) default '',
    [單位] nvarchar(20) default '', [幣別] nvarchar(20) default '', [庫存] nvarchar(20) default '',
    [說明1] nvarchar(100) default '', [說明2] nvarchar(100) default '', [安全庫存] nvarchar(20) default '',
    [儲位] nvarchar(40) default '', [最小訂量] nvarchar(20) default '', [紙張類別] nvarchar(20) default '',
    [楞別] nvarchar(20) default '', [異動日期] nvarchar(20) default '', [單重] nvarchar(20) default '',
    [報價] nvarchar(20) default '', [廠牌] nvarchar(40) default '',
    -- Null means never counted.
    [盤點日期] nvarchar(20),
    [報關名稱] nvarchar(60) default '', [海關編號] nvarchar(40) default '', [報關類別] nvarchar(40) default '',
    [建檔日期] nvarchar(20) default '',
    [建檔人] nvarchar(40) default '', [建檔時間] nvarchar(30) default '',
    [修改人] nvarchar(40) default '', [修改時間] nvarchar(30) default '',
    constraint [PK_浪紙資料] primary key ([浪紙代號])
)
go
-- A saved price goes to all boards of one name.
create index [IX_浪紙資料_浪紙名稱] on [浪紙資料] ([浪紙名稱])
go
create table [物料資料] (
    [物料代號] nvarchar(20) not null,
    [物料名稱] nvarchar(80) default '', [廠商代號] nvarchar(20) default '', [廠商簡稱] nvarchar(40) default '',
    [進價] nvarchar(20) default '', [單價] nvarchar(20) default '', [幣別] nvarchar(20) default '',
    [進料單位] nvarchar(20) default '', [單位] nvarchar(20) default '', [包裝方式] nvarchar(40) default '',
    [庫存] nvarchar(20) default '', [類別] nvarchar(40) default '', [儲位] nvarchar(40) default '',
    [最小訂量] nvarchar(20) default '', [規格] nvarchar(80) default '',
    [說明1] nvarchar(100) default '', [說明2] nvarchar(100) default '', [安全庫存] nvarchar(20) default '',
    [異動日期] nvarchar(20) default '', [報價] nvarchar(20) default '', [單重] nvarchar(20) default '',
    [品檢] nvarchar(10) default '',
    [盤點日期] nvarchar(20),
    [報關名稱] nvarchar(60) default '', [海關編號] nvarchar(40) default '', [報關類別] nvarchar(40) default '',
    [建檔人] nvarchar(40) default '', [建檔時間] nvarchar(30) default '',
    [修改人] nvarchar(40) default '', [修改時間] nvarchar(30) default '',
    constraint [PK_物料資料] primary key ([物料代號])
)
go
create table [紙品資料] (
    [紙品代號] nvarchar(20) not null,
    [紙品名稱] nvarchar(80) default '', [規格] nvarchar(80) default '', [庫存] nvarchar(20) default '',
    [儲位] nvarchar(40) default '', [最小訂量] nvarchar(20) default '', [進價] nvarchar(20) default '',
    [單價] nvarchar(20) default '', [幣別] nvarchar(20) default '', [單位] nvarchar(20) default '',
    [進料單位] nvarchar(20) default '', [備註] nvarchar(200) default '', [備註1] nvarchar(200) default '',
    [單重] nvarchar(20) default '', [條數] nvarchar(20) default '', [材質] nvarchar(60) default '',
    [安全庫存] nvarchar(20) default '', [廠牌] nvarchar(40) default '', [卷筒紙] nvarchar(40) default '',
    [外加工] nvarchar(10) default '', [異動日期] nvarchar(20) default '',
    [盤點日期] nvarchar(20),
    [報關名稱] nvarchar(60) default '', [海關編號] nvarchar(40) default '', [報關類別] nvarchar(40) default '',
    [建檔人] nvarchar(40) default '', [建檔時間] nvarchar(30) default '',
    [修改人] nvarchar(40) default '', [修改時間] nvarchar(30) default '',
    constraint [PK_紙品資料] primary key ([紙品代號]),
    constraint [UQ_紙品資料_名稱規格] unique ([紙品名稱], [規格])
)
go
create table [凸版主料資料] (
    [主料代號] nvarchar(20) not null,
    [主料名稱] nvarchar(80) default '', [規格] nvarchar(80) default '', [庫存] nvarchar(20) default '',
    [單位] nvarchar(20) default '', [進料單位] nvarchar(20) default '', [進價] nvarchar(20) default '',
    [單價] nvarchar(20) default '', [幣別] nvarchar(20) default '', [安全庫存] nvarchar(20) default '',
    [異動日期] nvarchar(20) default '',
    [盤點日期] nvarchar(20),
    [廠商代號] nvarchar(20) default '', [廠商簡稱] nvarchar(40) default '',
    constraint [PK_凸版主料資料] primary key ([主料代號])
)
go
create table [廠商資料] (
    [廠商代號] nvarchar(20) not null,
    [廠商簡稱] nvarchar(40) default '', [廠商全銜] nvarchar(100) default '', [廠商類別] nvarchar(100) default '',
    [發票稅率] nvarchar(20) default '', [電話1] nvarchar(40) default '', [聯絡人] nvarchar(40) default '',
    [傳真號碼] nvarchar(40) default '', [幣別] nvarchar(20) default '', [付款天數] nvarchar(20) default '',
    [付款方式] nvarchar(40) default '', [結帳日] nvarchar(40) default '', [經驗傳承] nvarchar(max) default '',
    [分數] nvarchar(20) default '', [業務員代號] nvarchar(20) default '', [業務員名稱] nvarchar(40) default '',
    [報廢與否] nvarchar(10) default '',
    constraint [PK_廠商資料] primary key ([廠商代號])
)
go
-- Basis weights as a vendor makes them; a number, since the next one not below a weight is looked for.
create table [廠商浪紙度數明細] (
    [廠商代號] nvarchar(20) not null, [浪紙度數] float not null,
    constraint [PK_廠商浪紙度數明細] primary key ([廠商代號], [浪紙度數])
)
go
create table [採購計價公式] (
    [單位1] nvarchar(20) not null, [單位2] nvarchar(20) not null, [基本單位] nvarchar(20) not null,
    [計價單位] nvarchar(20) not null, [公式] nvarchar(255) default '', [序] int default 0,
    [類別] nvarchar(20) not null,
    constraint [PK_採購計價公式] primary key ([類別], [單位1], [單位2], [基本單位], [計價單位])
)
go
create table [浪紙凈重設定資料] (
    [材質名稱] nvarchar(60) not null, [數值] nvarchar(20) default '',
    constraint [PK_浪紙凈重設定資料] primary key ([材質名稱])
)
go
-- Prices really ordered. The rows of an item are replaced as a whole, so there is no key.
create table [歷史單價記錄] (
    [類別] nvarchar(20) default '', [貨品代號] nvarchar(20) default '', [添加日期] nvarchar(20) default '',
    [單價] nvarchar(20) default '', [數量] nvarchar(20) default '', [幣別] nvarchar(20) default '',
    [廠商代號] nvarchar(20) default '', [廠商簡稱] nvarchar(40) default '', [作業員] nvarchar(40) default ''
)
go
create index [IX_歷史單價記錄_貨品] on [歷史單價記錄] ([貨品代號], [類別], [添加日期])
go
create index [IX_歷史單價記錄_廠商] on [歷史單價記錄] ([廠商代號], [貨品代號], [添加日期])
go
create table [詢價單價記錄] (
    [類別] nvarchar(20) default '', [貨品代號] nvarchar(20) default '', [添加日期] nvarchar(20) default '',
    [單價] nvarchar(20) default '', [數量] nvarchar(20) default '', [幣別] nvarchar(20) default '',
    [廠商代號] nvarchar(20) default '', [廠商簡稱] nvarchar(40) default '', [作業員] nvarchar(40) default '',
    [詢價單號] nvarchar(30) default ''
)
go
create index [IX_詢價單價記錄_貨品] on [詢價單價記錄] ([貨品代號], [類別], [添加日期])
go
create index [IX_詢價單價記錄_詢價單號] on [詢價單價記錄] ([詢價單號])
