#pragma once
#include <QDateTime>
#include <QString>
#include <QStringView>
#include <functional>
#include <sqlite3.h>

namespace liaowu::dialect {

using namespace Qt::StringLiterals;

/// Arguments and result of one call of a function in the engine.
class Call {
public:
    Call(sqlite3_context* in, int argumentCount, sqlite3_value** arguments)
        : context(in), values(arguments), count(argumentCount) {}

    int size() const { return count; }
    int type(int i) const { return sqlite3_value_type(values[i]); }
    bool isNull(int i) const { return type(i) == SQLITE_NULL; }
    /// Most functions give null when any argument is.
    bool anyNull() const;
    QByteArrayView bytes(int i) const;
    QString text(int i) const;
    qint64 integer(int i) const { return sqlite3_value_int64(values[i]); }
    double number(int i) const { return sqlite3_value_double(values[i]); }
    sqlite3_context* engine() const { return context; }

    void give(const QString& text) const;
    void give(QByteArrayView utf8) const;
    void give(qint64 value) const { sqlite3_result_int64(context, value); }
    void give(double value) const { sqlite3_result_double(context, value); }
    void giveArgument(int i) const { sqlite3_result_value(context, values[i]); }
    /// An error of the server: number and text travel together.
    void fail(int number, const QString& text) const;

private:
    sqlite3_context* context;
    sqlite3_value** values;
    int count;
};

struct FunctionEntry {
    const char* name;
    int arguments; ///< -1: any number
    void (*run)(sqlite3_context*, int, sqlite3_value**);
};

void registerFunctions(sqlite3* database, const FunctionEntry* entries, size_t count);

template <void (*Body)(Call&)>
void bound(sqlite3_context* context, int count, sqlite3_value** values) {
    Call call(context, count, values);
    Body(call);
}

/// Like `bound`, for functions that give null for null.
template <void (*Body)(Call&)>
void boundStrict(sqlite3_context* context, int count, sqlite3_value** values) {
    Call call(context, count, values);
    if (!call.anyNull()) Body(call);
}

void installConversions(sqlite3* database);
void installTextFunctions(sqlite3* database);
void installNumberFunctions(sqlite3* database);
void installDateFunctions(sqlite3* database, std::function<QDateTime()> now);

/// Style 0 of the server: at most six significant digits, an exponent of three digits.
QString floatText(double value);

} // namespace liaowu::dialect
