-- What this client adds to the suite's database. A database without these tables works; what leans on them is off.

create table [料務_版本] (
    [版本] int not null, [建立時間] nvarchar(30) default '',
    constraint [PK_料務_版本] primary key ([版本])
)
go
-- Issue lines whose stock a save has deducted: the batch approval deducts only the others.
create table [料務_扣庫存] (
    [領料單號] nvarchar(30) not null, [序] int not null,
    constraint [PK_料務_扣庫存] primary key ([領料單號], [序])
)
go
-- Which bin rows an issue line took from, so that undoing the line can give back.
create table [料務_板位異動] (
    [領料單號] nvarchar(30) not null, [序] int not null, [入庫單號] nvarchar(30) not null,
    [儲位] nvarchar(40) not null, [數量] float not null,
    constraint [PK_料務_板位異動] primary key ([領料單號], [序], [入庫單號], [儲位])
)
go
create index [IX_料務_板位異動_入庫單號] on [料務_板位異動] ([入庫單號], [儲位])
