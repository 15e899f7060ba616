#include "common/own_tables.h"
#include "data/recordset.h"

namespace liaowu {

bool hasTable(Connection& connection, const QString& table) {
    try {
        select(connection, sql(u"select top 1 * from [{}]", table));
        return true;
    } catch (const DatabaseError& error) {
        if (error.nativeError == DatabaseError::InvalidObject) return false;
        throw;
    }
}

} // namespace liaowu
