-- Who may do what, the company's own data, and the short vocabularies. Other modules of the suite maintain these
-- tables; the client only reads them.

create table [使用者資料] (
    [使用者] nvarchar(30) not null,
    [管理者] nvarchar(10) default '',
    [業務員代號] nvarchar(20) default '', [業務員名稱] nvarchar(40) default '',
    constraint [PK_使用者資料] primary key ([使用者])
)
go
create table [使用者明細] (
    [使用者] nvarchar(30) not null, [模塊] nvarchar(60) not null,
    [打印] nvarchar(10) default '', [刪除] nvarchar(10) default '', [金額] nvarchar(10) default '',
    [查看] nvarchar(10) default '', [修改] nvarchar(10) default '', [新增] nvarchar(10) default '',
    [審核] nvarchar(10) default '', [審單] nvarchar(10) default '', [驗收] nvarchar(10) default '',
    [核准] nvarchar(10) default '', [批審] nvarchar(10) default '', [批轉] nvarchar(10) default '',
    [批核] nvarchar(10) default '', [excel] nvarchar(10) default '',
    constraint [PK_使用者明細] primary key ([使用者], [模塊])
)
go
create table [使用者業務明細] (
    [使用者] nvarchar(30) not null, [業務員代號] nvarchar(20) not null,
    constraint [PK_使用者業務明細] primary key ([使用者], [業務員代號])
)
go
create table [業務資料] (
    [業務員代號] nvarchar(20) not null,
    [業務員名稱] nvarchar(40) default '', [部門] nvarchar(40) default '', [離職日期] nvarchar(20) default '',
    constraint [PK_業務資料] primary key ([業務員代號])
)
go
create table [部門資料] (
    [組名] nvarchar(40) not null, [部門] nvarchar(40) not null,
    constraint [PK_部門資料] primary key ([組名], [部門])
)
go
create table [公司基本資料] (
    [公司名稱] nvarchar(80) not null,
    [公司地址] nvarchar(200) default '', [電話] nvarchar(40) default '', [傳真] nvarchar(40) default '',
    [公式1] nvarchar(255) default '',
    constraint [PK_公司基本資料] primary key ([公司名稱])
)
go
create table [報表設置] (
    [報表名稱] nvarchar(40) not null,
    [頁腳] nvarchar(255) default '', [備注] nvarchar(max) default '', [ISO編號] nvarchar(40) default '',
    constraint [PK_報表設置] primary key ([報表名稱])
)
go
-- Screens read this table into memory by column position: the order of the columns is part of it.
create table [片語資料] (
    [代號] nvarchar(20) not null, [類別] nvarchar(40) not null,
    [內容] nvarchar(100) default '', [備註] nvarchar(200) default '', [分類] nvarchar(40) default '',
    [合同品名] nvarchar(80) default '', [工序] nvarchar(40) default '',
    [廠商代號] nvarchar(20) default '', [尺寸大小] nvarchar(40) default '', [難度比] nvarchar(20) default '',
    constraint [PK_片語資料] primary key ([類別], [代號])
)
go
create index [IX_片語資料_內容] on [片語資料] ([類別], [內容], [廠商代號])
go
create table [匯率檔] (
    [幣別] nvarchar(20) not null, [匯率] nvarchar(20) default '', [默認幣別] nvarchar(10) default '',
    constraint [PK_匯率檔] primary key ([幣別])
)
go
-- History of rates. The net-weight settings keep their own history here under 材質名稱, without a currency.
create table [匯率修改記錄] (
    [幣別] nvarchar(20) default '', [匯率] nvarchar(20) default '', [修改日期] nvarchar(20) default '',
    [材質名稱] nvarchar(60) default ''
)
go
create index [IX_匯率修改記錄_幣別] on [匯率修改記錄] ([幣別], [修改日期], [匯率])
