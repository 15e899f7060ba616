#pragma once
#include <QString>
#include <QStringList>
#include <array>

namespace liaowu {

/// A member of a record by the name under which a table, a grid or a header knows it.
template <typename Record>
struct FieldOf {
    using RecordType = Record;
    const char16_t* name;
    QString Record::*member;
};

/// The texts of a record in the order of its fields.
template <typename Record, size_t N>
QStringList textsOf(const std::array<FieldOf<Record>, N>& fields, const Record& record) {
    QStringList texts;
    for (const auto& field : fields)
        texts << record.*field.member;
    return texts;
}

/// The record that these texts make.
template <typename Record, size_t N>
Record recordOf(const std::array<FieldOf<Record>, N>& fields, const QStringList& texts) {
    Record record;
    for (size_t i = 0; i < N; ++i)
        record.*fields[i].member = texts.value(static_cast<qsizetype>(i));
    return record;
}

template <typename Record, size_t N>
bool isBlank(const std::array<FieldOf<Record>, N>& fields, const Record& record) {
    for (const auto& field : fields)
        if (!(record.*field.member).trimmed().isEmpty()) return false;
    return true;
}

/// Reads the fields of a recordset's current row, trimmed, by their names.
template <typename Rows, typename Record, size_t N>
void readFields(const Rows& rows, const std::array<FieldOf<Record>, N>& fields, Record& record) {
    for (const auto& field : fields)
        record.*field.member = rows.text(field.name).trimmed();
}

} // namespace liaowu
