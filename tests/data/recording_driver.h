#pragma once
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlIndex>
#include <QSqlRecord>
#include <QSqlResult>
#include <QStringList>

namespace liaowu {

/// What a driver was given, and what it is to answer.
struct DriverRecord {
    QString opened;
    QStringList statements;
    QStringList transactions;
    QStringList keys;                        ///< primary key of every table
    QStringList columns;                     ///< of every select
    std::vector<std::vector<QVariant>> rows; ///< of every select that is no probe
    QString failure;                         ///< native codes with which the next statement fails
    int touched = 1;
};

/// Stands where the ODBC driver stands: what arrives here is what a server would get.
class RecordingDriver : public QSqlDriver {
public:
    explicit RecordingDriver(std::shared_ptr<DriverRecord> into) : record(std::move(into)) {}

    bool hasFeature(DriverFeature feature) const override { return feature == Transactions; }
    bool open(const QString& name, const QString&, const QString&, const QString&, int,
              const QString&) override {
        record->opened = name;
        setOpen(true);
        return true;
    }
    void close() override { setOpen(false); }
    QSqlResult* createResult() const override;
    bool beginTransaction() override { return note(u"begin"); }
    bool commitTransaction() override { return note(u"commit"); }
    bool rollbackTransaction() override { return note(u"rollback"); }
    QSqlIndex primaryIndex(const QString& table) const override {
        QSqlIndex index(table);
        for (const QString& key : record->keys)
            index.append(QSqlField(key));
        return index;
    }

    std::shared_ptr<DriverRecord> record;

private:
    bool note(QStringView step) {
        record->transactions += step.toString();
        return true;
    }
};

class RecordingResult : public QSqlResult {
public:
    explicit RecordingResult(const RecordingDriver* driver) : QSqlResult(driver), log(driver->record) {}

    bool reset(const QString& statement) override {
        log->statements += statement;
        if (!log->failure.isEmpty()) {
            setLastError(QSqlError({}, QStringLiteral("[FreeTDS][SQL Server]refused"),
                                   QSqlError::StatementError, std::exchange(log->failure, {})));
            return false;
        }
        const bool isSelect = statement.startsWith(u"select", Qt::CaseInsensitive);
        current.clear();
        if (isSelect && !statement.endsWith(u"1=0")) current = log->rows;
        setSelect(isSelect);
        setActive(true);
        setAt(QSql::BeforeFirstRow);
        return true;
    }
    bool fetch(int row) override {
        if (row < 0 || row >= size()) return false;
        setAt(row);
        return true;
    }
    bool fetchFirst() override { return fetch(0); }
    bool fetchLast() override { return fetch(size() - 1); }
    int size() override { return static_cast<int>(current.size()); }
    int numRowsAffected() override { return log->touched; }
    QVariant data(int column) override {
        return current[static_cast<std::size_t>(at())][static_cast<std::size_t>(column)];
    }
    bool isNull(int column) override { return data(column).isNull(); }
    QSqlRecord record() const override {
        QSqlRecord columns;
        for (const QString& name : log->columns)
            columns.append(QSqlField(name, QMetaType(QMetaType::QString)));
        return columns;
    }

private:
    std::shared_ptr<DriverRecord> log;
    std::vector<std::vector<QVariant>> current;
};

inline QSqlResult* RecordingDriver::createResult() const {
    return new RecordingResult(this);
}

} // namespace liaowu
