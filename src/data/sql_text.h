#pragma once
#include <QString>
#include <initializer_list>

namespace liaowu {

/// One value for a placeholder: a text, or a number written as its shortest text.
class SqlValue {
public:
    SqlValue(QString value) : text(std::move(value)) {}
    SqlValue(QStringView value) : text(value.toString()) {}
    SqlValue(const char16_t* value) : text(QString::fromUtf16(value)) {}
    SqlValue(int value) : text(QString::number(value)), number(true) {}
    SqlValue(qint64 value) : text(QString::number(value)), number(true) {}
    SqlValue(double value);

    QString text;
    bool number = false;
};

/// A finished statement, or a piece of one. Only `sql()`, `readyMadeSql()` and joining make it, so a value that
/// was not escaped cannot get in.
class SqlText {
public:
    SqlText() = default;
    const QString& text() const { return statement; }
    bool isEmpty() const { return statement.isEmpty(); }
    SqlText& operator+=(const SqlText& other) {
        statement += other.statement;
        return *this;
    }
    friend SqlText operator+(SqlText left, const SqlText& right) { return left += right; }

private:
    friend SqlText sqlFrom(QStringView, std::initializer_list<SqlValue>);
    friend SqlText readyMadeSql(const QString&);
    explicit SqlText(QString text) : statement(std::move(text)) {}
    QString statement;
};

/// Fills the placeholders `{}` of a statement in their order. Inside '...' apostrophes of the value are doubled,
/// and the literal is written N'...' when it is not pure ASCII; inside [...] the value is a name and "]" is
/// doubled; elsewhere only numbers may stand. A literal without placeholder gets its N too.
/// Throws std::logic_error when placeholders and values do not match: a fault of the program, never of a value.
SqlText sqlFrom(QStringView statement, std::initializer_list<SqlValue> values);

template <typename... Values>
SqlText sql(QStringView statement, const Values&... values) {
    return sqlFrom(statement, {SqlValue(values)...});
}

/// Takes in SQL made elsewhere as it stands, such as `Session::salesScope`. Never for a value.
SqlText readyMadeSql(const QString& statement);

} // namespace liaowu
