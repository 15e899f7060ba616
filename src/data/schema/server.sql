-- The suite's clock function. The embedded engine brings its own.
create function dbo.DT(@style int) returns nvarchar(30) as begin return convert(nvarchar(19), getdate(), 120) end
