-- Lines in print order, padding rows included. A print empties and refills them in one transaction.

create table [採購資料報表2] (
    [原料代號] nvarchar(20) default '', [原料名稱] nvarchar(80) default '', [廠商名稱] nvarchar(80) default '',
    [規格] nvarchar(80) default '', [數量] nvarchar(20) default '', [數量1] nvarchar(20) default '',
    [小紙數] nvarchar(20) default '', [單位] nvarchar(20) default '', [單價] nvarchar(20) default '',
    [小計] nvarchar(20) default '', [交貨日期] nvarchar(20) default '', [印件編號] nvarchar(40) default '',
    [備註] nvarchar(200) default '', [長度] nvarchar(40) default '', [寬度] nvarchar(40) default '',
    [楞別] nvarchar(20) default '', [剖切尺寸] nvarchar(60) default '', [壓線種類] nvarchar(20) default '',
    [壓線尺寸] nvarchar(80) default '', [客戶代號] nvarchar(20) default '', [工單單號] nvarchar(40) default '',
    [採購單號] nvarchar(30) default '', [序] int default 0
)
go
create table [原料申購明細報表] (
    [原料代號] nvarchar(20) default '', [原料名稱] nvarchar(80) default '', [規格] nvarchar(80) default '',
    [數量] nvarchar(20) default '', [單位] nvarchar(20) default '', [印件編號] nvarchar(40) default '',
    [需求日期] nvarchar(20) default '', [備注] nvarchar(200) default '', [序] int default 0,
    [工單單號] nvarchar(40) default '', [已采購數] nvarchar(20) default '', [楞別] nvarchar(20) default '',
    [申購單號] nvarchar(30) default ''
)
go
create table [原料入庫明細報表] (
    [採購單號] nvarchar(30) default '', [原料代號] nvarchar(20) default '', [原料名稱] nvarchar(80) default '',
    [規格] nvarchar(80) default '', [數量] nvarchar(20) default '', [單位] nvarchar(20) default '',
    [單價] nvarchar(20) default '', [小計] nvarchar(20) default '', [入庫數] nvarchar(20) default '',
    [備品] nvarchar(20) default '', [入庫單位] nvarchar(30) default '', [備註] nvarchar(200) default '',
    [印件編號] nvarchar(40) default '', [入庫單號] nvarchar(30) default '', [檢驗單號] nvarchar(30) default '',
    [檢驗員] nvarchar(40) default '', [檢驗] nvarchar(30) default '', [序] int default 0
)
go
create table [原料領料明細報表] (
    [原料代號] nvarchar(20) default '', [原料名稱] nvarchar(80) default '', [規格] nvarchar(80) default '',
    [數量] nvarchar(20) default '', [放數] nvarchar(20) default '', [實領數] nvarchar(20) default '',
    [單位] nvarchar(20) default '', [重量] nvarchar(20) default '', [報關名稱] nvarchar(60) default '',
    [報關代號] nvarchar(40) default '', [工單單號] nvarchar(40) default '', [印件編號] nvarchar(40) default '',
    [領料單號] nvarchar(30) default '', [序] int default 0
)
