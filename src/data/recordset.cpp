#include "data/recordset.h"
#include "data/recordset_state.h"
#include <algorithm>

namespace liaowu {

namespace {

using namespace Qt::StringLiterals;

/// Equality by the server's comparison, decided on the bytes when both are plain ASCII.
bool matches(QByteArrayView cell, const QByteArray& wanted, const QString& wantedText) {
    const auto ascii = [](QByteArrayView text) {
        return std::none_of(text.begin(), text.end(), [](char c) { return c < ' ' || c == 0x7f; });
    };
    if (!ascii(cell) || !ascii(wanted))
        return dialect::compareTexts(QString::fromUtf8(cell), wantedText) == 0;
    const auto trimmed = [](QByteArrayView text) {
        while (text.endsWith(' '))
            text.chop(1);
        return text;
    };
    return trimmed(cell).compare(trimmed(wanted), Qt::CaseInsensitive) == 0;
}

} // namespace

Recordset::Recordset() : d(std::make_unique<Private>()) {}
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;

void Recordset::Open(const SqlText& statement, Connection& connection, Cursor cursor) {
    if (d->open) throwMisuse(u"資料集已開啟!"_s);
    d->statement = statement.text();
    d->cursor = cursor;
    d->start(connection);
}

void Recordset::Close() {
    *d = Private{};
}
bool Recordset::isOpen() const {
    return d && d->open;
}

void Recordset::Requery(Connection& connection) {
    d->requireOpen();
    d->start(connection);
}

bool Recordset::EOF_() const {
    d->requireOpen();
    if (!d->onAdded()) d->load();
    return d->position >= d->count();
}

bool Recordset::BOF_() const {
    d->requireOpen();
    if (!d->onAdded()) d->load();
    return d->position < 0 || d->count() == 0;
}

int Recordset::RecordCount() const {
    d->load();
    return d->count();
}

int Recordset::AbsolutePosition() const {
    d->load();
    return d->position < 0 || d->position >= d->count() ? 0 : d->position + 1;
}

void Recordset::setAbsolutePosition(int position) {
    d->load();
    d->moveTo(position - 1);
}

void Recordset::MoveFirst() {
    d->load();
    d->moveTo(0);
}

void Recordset::MoveLast() {
    d->load();
    d->moveTo(std::max(0, d->count() - 1));
}

void Recordset::MoveNext() {
    d->load();
    d->moveTo(d->position + 1);
}

void Recordset::MovePrevious() {
    d->load();
    d->moveTo(d->position - 1);
}

bool Recordset::Find(const QString& column, const QString& value) {
    d->load();
    const int at = this->column(column);
    const QByteArray wanted = value.toUtf8();
    const auto hit = [&](int row) {
        const bool plain = row < d->rows.rows() && !d->overlaid(row, at);
        if (!plain || d->rows.cell(row, at).kind != RowBlock::Kind::Text)
            return !d->isNull(row, at) && dialect::compareTexts(d->text(row, at), value) == 0;
        return matches(d->rows.cell(row, at).bytes, wanted, value);
    };
    int row = std::max(0, d->position);
    while (row < d->count() && !hit(row))
        ++row;
    d->moveTo(row);
    return row < d->count();
}

QStringList Recordset::columnNames() const {
    d->requireOpen();
    QStringList names;
    for (const ResultField& field : d->shape->fields)
        names += field.name;
    return names;
}

int Recordset::columnCount() const {
    d->requireOpen();
    return static_cast<int>(d->shape->fields.size());
}

int Recordset::column(QStringView name) const {
    d->requireOpen();
    const int found = d->columnOf(name);
    if (found < 0)
        throw DatabaseError(DatabaseError::InvalidColumn, u"資料集沒有欄位「%1」!"_s.arg(name.toString()));
    return found;
}

QString Recordset::text(QStringView name) const {
    return text(column(name));
}

QString Recordset::text(int column) const {
    d->requireColumn(column);
    d->requireRow();
    return d->text(d->position, column);
}

double Recordset::number(QStringView name) const {
    const int at = column(name);
    d->requireRow();
    return d->number(d->position, at);
}

bool Recordset::isNull(QStringView name) const {
    return isNull(column(name));
}

bool Recordset::isNull(int column) const {
    d->requireColumn(column);
    d->requireRow();
    return d->isNull(d->position, column);
}

QString Recordset::textAt(int row, int column) const {
    d->requireCell(row, column);
    return d->text(row, column);
}

bool Recordset::isNullAt(int row, int column) const {
    d->requireCell(row, column);
    return d->isNull(row, column);
}

bool Recordset::isNumeric(int column) const {
    d->requireColumn(column);
    const dialect::Type type = d->field(column).type;
    if (type != dialect::Type::Unknown) return type == dialect::Type::Float || type == dialect::Type::Integer;
    d->load();
    for (int row = 0; row < d->rows.rows(); ++row) {
        const RowBlock::Kind kind = d->rows.cell(row, column).kind;
        if (kind != RowBlock::Kind::Null) return kind != RowBlock::Kind::Text;
    }
    return false;
}

void Recordset::AddNew() {
    d->requireWriting();
    if (d->shape->table.isEmpty()) throwMisuse(u"查詢不是單一資料表,無法新增資料錄!"_s);
    if (d->cursor == Cursor::Optimistic) d->writeCurrent();
    d->added.emplace_back().isNew = true;
    d->added.back().pending.reserve(d->columns());
    d->position = d->count() - 1;
}

void Recordset::set(QStringView column, const QString& value) {
    d->setText(this->column(column), value);
}
void Recordset::set(QStringView column, double value) {
    d->setNumber(this->column(column), value);
}
void Recordset::setNull(QStringView column) {
    d->setNull(this->column(column));
}
void Recordset::set(int column, const QString& value) {
    d->setText(column, value);
}
void Recordset::set(int column, double value) {
    d->setNumber(column, value);
}
void Recordset::setNull(int column) {
    d->setNull(column);
}

void Recordset::Update() {
    d->requireWriting();
    if (d->cursor == Cursor::Optimistic) d->writeCurrent();
}

void Recordset::UpdateBatch() {
    d->requireWriting();
    d->writeAll();
}

Recordset select(Connection& connection, const SqlText& statement) {
    Recordset rows;
    rows.Open(statement, connection);
    return rows;
}

} // namespace liaowu
