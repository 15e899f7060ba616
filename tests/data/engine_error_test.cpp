#include "data/engine_error.h"
#include "data/test_database.h"

using namespace liaowu;

TEST(EngineError, GivesNumberAndTextThatAUserUnderstands) {
    struct Case {
        int code;
        const char16_t* message;
        int number;
        const char16_t* says;
    };
    const std::vector<Case> cases{
        {SQLITE_CONSTRAINT_PRIMARYKEY, u"UNIQUE constraint failed: 採購明細.採購單號, 採購明細.序", 2627,
         u"「採購明細」已有相同的「採購單號、序」"},
        {SQLITE_CONSTRAINT_UNIQUE, u"UNIQUE constraint failed: t.a", 2627, u"「t」已有相同的「a」"},
        {SQLITE_CONSTRAINT_ROWID, u"UNIQUE constraint failed: t.id", 2627, u"「t」"},
        {SQLITE_CONSTRAINT_NOTNULL, u"NOT NULL constraint failed: t.a", 515, u"「t」的「a」不可沒有值"},
        {SQLITE_CONSTRAINT_CHECK, u"CHECK constraint failed: c", 547, u"限制"},
        {SQLITE_BUSY, u"database is locked", DatabaseError::Locked, u"其他使用者"},
        {SQLITE_BUSY_SNAPSHOT, u"database is locked", DatabaseError::Locked, u"其他使用者"},
        {SQLITE_LOCKED, u"database table is locked", DatabaseError::Locked, u"其他使用者"},
        {SQLITE_READONLY, u"attempt to write a readonly database", DatabaseError::ReadOnly, u"唯讀"},
        {SQLITE_FULL, u"database or disk is full", DatabaseError::DiskFull, u"磁碟已滿"},
        {SQLITE_NOTADB, u"file is not a database", DatabaseError::ConnectionFailed, u"不是資料庫"},
        {SQLITE_CORRUPT, u"database disk image is malformed", DatabaseError::ConnectionFailed, u"損毀"},
        {SQLITE_CANTOPEN, u"unable to open database file", DatabaseError::ConnectionFailed, u"無法開啟"},
        {SQLITE_IOERR_READ, u"disk I/O error", DatabaseError::ConnectionFailed, u"讀寫"},
        {SQLITE_ERROR, u"no such table: 採購資料", 208, u"「採購資料」"},
        {SQLITE_ERROR, u"no such column: 單價x", 207, u"「單價x」"},
        {SQLITE_ERROR, u"table t has no column named 單價x", 207, u"「單價x」"},
        {SQLITE_ERROR, u"near \"x\": syntax error", DatabaseError::EngineFailed, u"syntax error"},
    };
    for (const Case& c : cases) {
        const DatabaseError error = engineError(c.code, QString::fromUtf16(c.message));
        EXPECT_EQ(error.nativeError, c.number) << c.code;
        EXPECT_TRUE(error.text.contains(QString::fromUtf16(c.says))) << error.what();
        EXPECT_EQ(error.isDuplicateKey(), c.number == 2627);
    }
}
