#include "data/recordset_state.h"
#include "data/number_text.h"
#include <algorithm>
#include <cmath>

namespace liaowu {

namespace {

using namespace Qt::StringLiterals;
using dialect::Literal;

bool equal(const Literal& a, const Literal& b) {
    if (a.kind != b.kind) return false;
    switch (a.kind) {
    case Literal::Kind::Null:
        return true;
    case Literal::Kind::Text:
        return a.text == b.text;
    case Literal::Kind::Float:
        return a.number == b.number;
    case Literal::Kind::Integer:
        return a.integer == b.integer;
    }
    return false;
}

QString textOf(const Literal& value) {
    switch (value.kind) {
    case Literal::Kind::Null:
        return {};
    case Literal::Kind::Text:
        return value.text;
    case Literal::Kind::Float:
        return numberText(value.number);
    case Literal::Kind::Integer:
        return QString::number(value.integer);
    }
    return {};
}

double numberOf(const Literal& value) {
    switch (value.kind) {
    case Literal::Kind::Null:
        return 0;
    case Literal::Kind::Text:
        return val(value.text);
    case Literal::Kind::Float:
        return value.number;
    case Literal::Kind::Integer:
        return static_cast<double>(value.integer);
    }
    return 0;
}

Literal textLiteral(QString text) {
    Literal literal;
    literal.kind = Literal::Kind::Text;
    literal.text = std::move(text);
    return literal;
}

bool isNumber(dialect::Type type) {
    return type == dialect::Type::Float || type == dialect::Type::Integer;
}

/// A number in the form that a column of this type takes.
Literal numberFor(dialect::Type type, double number) {
    if (!std::isfinite(number)) number = 0;
    if (!isNumber(type)) return textLiteral(numberText(number));
    Literal literal;
    const bool whole = number == std::floor(number) && std::abs(number) < 9e15;
    if (type == dialect::Type::Integer && whole) {
        literal.kind = Literal::Kind::Integer;
        literal.integer = static_cast<qint64>(number);
    } else {
        literal.kind = Literal::Kind::Float;
        literal.number = number;
    }
    return literal;
}

Literal textFor(const ResultField& field, const QString& text) {
    // No engine keeps a NUL inside a text.
    if (!isNumber(field.type))
        return textLiteral(text.contains(QChar(u'\0')) ? QString(text).remove(QChar(u'\0')) : text);
    bool readable = true;
    const QString trimmed = text.trimmed();
    const double number = trimmed.isEmpty() ? 0 : trimmed.toDouble(&readable);
    if (!readable)
        throw DatabaseError(DatabaseError::CastFailed, u"「%1」的值「%2」不是數字!"_s.arg(field.name, text));
    return numberFor(field.type, number);
}

} // namespace

void throwMisuse(const QString& text) {
    throw DatabaseError(DatabaseError::Usage, text);
}

void ColumnChanges::put(int column, Literal value) {
    if (entries.empty() || entries.back().first < column) {
        entries.emplace_back(column, std::move(value));
        return;
    }
    const auto at = std::lower_bound(entries.begin(), entries.end(), column,
                                     [](const auto& entry, int wanted) { return entry.first < wanted; });
    if (at->first == column)
        at->second = std::move(value);
    else
        entries.emplace(at, column, std::move(value));
}

const Literal* ColumnChanges::find(int column) const {
    const auto at = std::lower_bound(entries.begin(), entries.end(), column,
                                     [](const auto& entry, int wanted) { return entry.first < wanted; });
    return at == entries.end() || at->first != column ? nullptr : &at->second;
}

void ColumnChanges::absorb(ColumnChanges& other) {
    if (entries.empty()) {
        entries.swap(other.entries);
        return;
    }
    for (auto& [column, value] : other.entries)
        put(column, std::move(value));
    other.entries.clear();
}

void Recordset::Private::start(Connection& on) {
    RowBlock fresh;
    shape = writes() ? on.physical().describe(statement) : on.physical().read(statement, fresh);
    rows = std::move(fresh);
    lease = on.lease();
    changed.clear();
    added.clear();
    position = 0;
    lastColumn = -1;
    loaded = !writes();
    open = true;
}

void Recordset::Private::load() {
    requireOpen();
    if (loaded) return;
    RowBlock fresh;
    const ShapePointer read = connection()->read(statement, fresh);
    if (read->fields.size() != shape->fields.size()) throwMisuse(u"資料表的欄位已變更,請重新開啟!"_s);
    const bool onNew = onAdded() && edited(position)->isNew;
    const bool onWritten = onAdded() && !onNew;
    const auto isNew = [](const EditedRow& row) { return row.isNew; };
    const auto newBefore = onNew ? std::count_if(added.begin(), added.begin() + position, isNew) : 0;
    std::erase_if(added, [](const EditedRow& row) { return !row.isNew; });
    rows = std::move(fresh);
    loaded = true;
    if (onNew) position = rows.rows() + static_cast<int>(newBefore);
    if (onWritten) position = count();
}

void Recordset::Private::requireOpen() const {
    if (!open) throwMisuse(u"資料集尚未開啟!"_s);
}

void Recordset::Private::requireWriting() const {
    requireOpen();
    if (!writes()) throwMisuse(u"資料集是唯讀的!"_s);
}

void Recordset::Private::requireColumn(int column) const {
    requireOpen();
    if (column < 0 || column >= columns()) throwMisuse(u"資料集沒有第 %1 欄!"_s.arg(column + 1));
}

void Recordset::Private::requireCell(int row, int column) {
    load();
    requireColumn(column);
    if (row < 0 || row >= count()) throwMisuse(u"資料集沒有第 %1 筆!"_s.arg(row + 1));
}

void Recordset::Private::requireRow() {
    requireOpen();
    if (!onAdded()) load();
    if (position < 0 || position >= count()) throwMisuse(u"目前沒有資料錄可讀!"_s);
}

std::shared_ptr<PhysicalConnection> Recordset::Private::connection() const {
    auto physical = lease.lock();
    if (!physical) throwMisuse(u"資料集的連線已關閉!"_s);
    return physical;
}

int Recordset::Private::columnOf(QStringView name) {
    // Fields are nearly always named as the table has them, one after the other.
    if (lastColumn + 1 < columns() && field(lastColumn + 1).name == name) return ++lastColumn;
    const auto& fields = shape->fields;
    auto found =
        std::find_if(fields.begin(), fields.end(), [&](const ResultField& f) { return f.name == name; });
    if (found == fields.end())
        found = std::find_if(fields.begin(), fields.end(), [&](const ResultField& f) {
            return name.compare(f.name, Qt::CaseInsensitive) == 0;
        });
    if (found == fields.end()) return -1;
    return lastColumn = static_cast<int>(found - fields.begin());
}

EditedRow* Recordset::Private::edited(int row) {
    if (row >= rows.rows()) return &added[static_cast<std::size_t>(row - rows.rows())];
    const auto found = changed.find(row);
    return found == changed.end() ? nullptr : &found->second;
}

const Literal* Recordset::Private::overlaid(int row, int column) {
    static const Literal none;
    const EditedRow* edit = edited(row);
    if (!edit) return nullptr;
    if (const Literal* value = edit->pending.find(column)) return value;
    if (const Literal* value = edit->written.find(column)) return value;
    return row >= rows.rows() ? &none : nullptr;
}

/// What stands in the table, as far as known.
Literal Recordset::Private::storedValue(int row, const EditedRow& edit, int column) const {
    if (const Literal* value = edit.written.find(column)) return *value;
    return row < rows.rows() ? rows.cell(row, column).value() : Literal{};
}

QString Recordset::Private::text(int row, int column) {
    if (const Literal* value = overlaid(row, column)) return textOf(*value);
    return rows.cell(row, column).text();
}

double Recordset::Private::number(int row, int column) {
    if (const Literal* value = overlaid(row, column)) return numberOf(*value);
    return rows.cell(row, column).number();
}

bool Recordset::Private::isNull(int row, int column) {
    if (const Literal* value = overlaid(row, column)) return value->kind == Literal::Kind::Null;
    return rows.cell(row, column).kind == RowBlock::Kind::Null;
}

void Recordset::Private::setText(int column, const QString& value) {
    ColumnChanges& pending = pendingOf(column);
    pending.put(column, textFor(field(column), value));
}

void Recordset::Private::setNumber(int column, double value) {
    ColumnChanges& pending = pendingOf(column);
    pending.put(column, numberFor(field(column).type, value));
}

void Recordset::Private::setNull(int column) {
    pendingOf(column).put(column, {});
}

ColumnChanges& Recordset::Private::pendingOf(int column) {
    requireWriting();
    requireColumn(column);
    requireRow();
    const ResultField& target = field(column);
    if (target.baseColumn.isEmpty()) throwMisuse(u"「%1」不是資料表的欄位,無法寫入!"_s.arg(target.name));
    EditedRow* edit = edited(position);
    if (edit && edit->isNew) return edit->pending;
    if (shape->keys.empty())
        throwMisuse(u"「%1」沒有主鍵,或查詢未取主鍵,無法修改資料錄!"_s.arg(shape->table));
    return edit ? edit->pending : changed[position].pending;
}

ColumnValues Recordset::Private::valuesOf(const ColumnChanges& changes) const {
    ColumnValues values;
    values.reserve(static_cast<std::size_t>(columns()));
    for (const auto& [column, value] : changes)
        values.push_back({&field(column).baseColumn, &value});
    return values;
}

void Recordset::Private::write(PhysicalConnection& physical, int row, const EditedRow& edit) const {
    if (edit.isNew) {
        physical.insert(shape->table, valuesOf(edit.pending));
        return;
    }
    ColumnChanges changes, old, keys;
    for (const auto& [column, value] : edit.pending) {
        Literal before = storedValue(row, edit, column);
        if (equal(before, value)) continue;
        changes.put(column, value);
        old.put(column, std::move(before));
    }
    if (changes.empty()) return;
    for (const int key : shape->keys)
        keys.put(key, storedValue(row, edit, key));
    if (physical.update(shape->table, valuesOf(changes), valuesOf(keys), valuesOf(old)) == 0)
        throw DatabaseError(DatabaseError::Conflict, u"資料已被其他使用者變更,請重新讀取後再試!"_s);
}

void Recordset::Private::settle(EditedRow& edit) {
    edit.written.absorb(edit.pending);
    edit.isNew = false;
}

void Recordset::Private::writeCurrent() {
    if (position < 0 || position >= count()) return;
    EditedRow* edit = edited(position);
    if (!edit || (!edit->isNew && edit->pending.empty())) return;
    write(*connection(), position, *edit);
    settle(*edit);
}

void Recordset::Private::writeAll() {
    std::vector<std::pair<int, EditedRow*>> pending;
    for (auto& [row, edit] : changed)
        if (!edit.pending.empty()) pending.emplace_back(row, &edit);
    for (int row = rows.rows(); row < count(); ++row)
        if (EditedRow* edit = edited(row); edit->isNew || !edit->pending.empty())
            pending.emplace_back(row, edit);
    if (pending.empty()) return;
    const auto physical = connection();
    const bool own = !physical->inTransaction();
    if (own) physical->begin();
    try {
        for (const auto& [row, edit] : pending)
            write(*physical, row, *edit);
        if (own) physical->commit();
    } catch (...) {
        if (own) physical->rollback();
        throw;
    }
    for (const auto& [row, edit] : pending)
        settle(*edit);
}

void Recordset::Private::moveTo(int target) {
    if (cursor == Cursor::Optimistic) writeCurrent();
    position = std::clamp(target, -1, count());
}

} // namespace liaowu
