#include "data/recordset.h"
#include "data/number_text.h"
#include "data/physical_connection.h"
#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace liaowu {

namespace {

using namespace Qt::StringLiterals;
using dialect::Literal;
using Changes = std::vector<std::pair<int, Literal>>; ///< by column

/// A row that was added, or changed since it was read.
struct EditedRow {
    bool isNew = false; ///< not yet in the table
    Changes written;    ///< differs from the row as read, and stands in the table
    Changes pending;
};

const Literal* find(const Changes& changes, int column) {
    for (const auto& [position, value] : changes)
        if (position == column) return &value;
    return nullptr;
}

void put(Changes& changes, int column, Literal value) {
    for (auto& [position, known] : changes) {
        if (position != column) continue;
        known = std::move(value);
        return;
    }
    changes.emplace_back(column, std::move(value));
}

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

bool isNumber(dialect::Type type) {
    return type == dialect::Type::Float || type == dialect::Type::Integer;
}

/// A number in the form that a column of this type takes.
Literal numberFor(dialect::Type type, double number) {
    if (!std::isfinite(number)) number = 0;
    if (!isNumber(type)) return {Literal::Kind::Text, numberText(number), 0, 0};
    const bool whole = number == std::floor(number) && std::abs(number) < 9e15;
    if (type == dialect::Type::Integer && whole)
        return {Literal::Kind::Integer, {}, 0, static_cast<qint64>(number)};
    return {Literal::Kind::Float, {}, number, 0};
}

Literal textFor(const ResultField& field, const QString& text) {
    if (!isNumber(field.type)) return {Literal::Kind::Text, QString(text).remove(QChar(u'\0')), 0, 0};
    bool readable = true;
    const QString trimmed = text.trimmed();
    const double number = trimmed.isEmpty() ? 0 : trimmed.toDouble(&readable);
    if (!readable)
        throw DatabaseError(DatabaseError::CastFailed, u"「%1」的值「%2」不是數字!"_s.arg(field.name, text));
    return numberFor(field.type, number);
}

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

[[noreturn]] void misuse(const QString& text) {
    throw DatabaseError(DatabaseError::Usage, text);
}

} // namespace

struct Recordset::Private {
    QString statement;
    Cursor cursor = Cursor::Static;
    std::weak_ptr<PhysicalConnection> lease;
    ShapePointer shape;
    RowBlock rows;
    bool open = false;
    bool loaded = false;
    int position = 0; ///< -1 before the first row; added rows follow those read
    std::map<int, EditedRow> changed;
    std::vector<EditedRow> added;

    bool writes() const { return cursor == Cursor::Optimistic || cursor == Cursor::Batch; }
    int count() const { return rows.rows() + static_cast<int>(added.size()); }

    void requireOpen() const {
        if (!open) misuse(u"資料集尚未開啟!"_s);
    }

    std::shared_ptr<PhysicalConnection> connection() const {
        auto physical = lease.lock();
        if (!physical) misuse(u"資料集的連線已關閉!"_s);
        return physical;
    }

    /// A failure leaves all as it was.
    void start(Connection& on) {
        RowBlock fresh;
        shape = writes() ? on.physical().describe(statement) : on.physical().read(statement, fresh);
        rows = std::move(fresh);
        lease = on.lease();
        changed.clear();
        added.clear();
        position = 0;
        loaded = !writes();
        open = true;
    }

    /// Reads the rows of a recordset opened for writing. Rows written meanwhile are among them.
    void load() {
        requireOpen();
        if (loaded) return;
        RowBlock fresh;
        const ShapePointer read = connection()->read(statement, fresh);
        if (read->fields.size() != shape->fields.size()) misuse(u"資料表的欄位已變更,請重新開啟!"_s);
        const auto at = static_cast<std::size_t>(position);
        const bool standsOnNew = at < added.size() && added[at].isNew;
        const bool stoodOnWritten = at < added.size() && !standsOnNew;
        const auto isNew = [](const EditedRow& row) { return row.isNew; };
        const auto before = standsOnNew ? std::count_if(added.begin(), added.begin() + position, isNew) : 0;
        std::erase_if(added, [](const EditedRow& row) { return !row.isNew; });
        rows = std::move(fresh);
        loaded = true;
        if (standsOnNew) position = rows.rows() + static_cast<int>(before);
        if (stoodOnWritten) position = count();
    }

    bool onAdded() const { return position >= rows.rows() && position < count(); }

    /// Makes sure that there is a current row, without reading rows where a new one is current.
    void requireRow() {
        requireOpen();
        if (!onAdded()) load();
        if (position < 0 || position >= count()) misuse(u"目前沒有資料錄可讀!"_s);
    }

    EditedRow* edited(int row) {
        if (row >= rows.rows()) return &added[static_cast<std::size_t>(row - rows.rows())];
        const auto found = changed.find(row);
        return found == changed.end() ? nullptr : &found->second;
    }

    /// What a changed or added row holds; null where the row as read speaks.
    const Literal* overlaid(int row, int column) {
        static const Literal none;
        const EditedRow* edit = edited(row);
        if (!edit) return nullptr;
        if (const Literal* value = find(edit->pending, column)) return value;
        if (const Literal* value = find(edit->written, column)) return value;
        return row >= rows.rows() ? &none : nullptr;
    }

    /// What stands in the table, as far as known.
    Literal storedValue(int row, const EditedRow& edit, int column) const {
        if (const Literal* value = find(edit.written, column)) return *value;
        return row < rows.rows() ? rows.cell(row, column).value() : Literal{};
    }

    void requireColumn(int column) const {
        requireOpen();
        if (column < 0 || column >= static_cast<int>(shape->fields.size()))
            misuse(u"資料集沒有第 %1 欄!"_s.arg(column + 1));
    }

    void requireCell(int row, int column) {
        load();
        requireColumn(column);
        if (row < 0 || row >= count()) misuse(u"資料集沒有第 %1 筆!"_s.arg(row + 1));
    }

    QString text(int row, int column) {
        if (const Literal* value = overlaid(row, column)) return textOf(*value);
        return rows.cell(row, column).text();
    }

    bool isNull(int row, int column) {
        if (const Literal* value = overlaid(row, column)) return value->kind == Literal::Kind::Null;
        return rows.cell(row, column).kind == RowBlock::Kind::Null;
    }

    const ResultField& field(int column) const { return shape->fields[static_cast<std::size_t>(column)]; }

    template <typename Make>
    void change(int column, Make make);
    ColumnValues valuesOf(const Changes& changes) const;
    void write(PhysicalConnection& physical, int row, const EditedRow& edit) const;
    static void settle(EditedRow& edit);
    void writeCurrent();
    void moveTo(int target);
};

template <typename Make>
void Recordset::Private::change(int column, Make make) {
    requireRow();
    if (!writes()) misuse(u"資料集是唯讀的!"_s);
    requireColumn(column);
    const ResultField& target = field(column);
    if (target.baseColumn.isEmpty()) misuse(u"「%1」不是資料表的欄位,無法寫入!"_s.arg(target.name));
    EditedRow* edit = edited(position);
    const bool keyless = shape->keys.empty() && !(edit && edit->isNew);
    if (keyless) misuse(u"「%1」沒有主鍵,或查詢未取主鍵,無法修改資料列!"_s.arg(shape->table));
    if (!edit) edit = &changed[position];
    put(edit->pending, column, make(target));
}

ColumnValues Recordset::Private::valuesOf(const Changes& changes) const {
    ColumnValues values;
    values.reserve(changes.size());
    for (const auto& [column, value] : changes)
        values.push_back({field(column).baseColumn, value});
    return values;
}

void Recordset::Private::write(PhysicalConnection& physical, int row, const EditedRow& edit) const {
    if (edit.isNew) {
        // In the order of the table, so that rows filled in another order share one statement.
        Changes sorted = edit.pending;
        std::sort(sorted.begin(), sorted.end(),
                  [](const auto& a, const auto& b) { return a.first < b.first; });
        physical.insert(shape->table, valuesOf(sorted));
        return;
    }
    Changes changes, old, keys;
    for (const auto& [column, value] : edit.pending) {
        const Literal before = storedValue(row, edit, column);
        if (equal(before, value)) continue;
        changes.emplace_back(column, value);
        old.emplace_back(column, before);
    }
    if (changes.empty()) return;
    for (const int key : shape->keys)
        keys.emplace_back(key, storedValue(row, edit, key));
    if (physical.update(shape->table, valuesOf(changes), valuesOf(keys), valuesOf(old)) == 0)
        throw DatabaseError(DatabaseError::Conflict, u"資料已被其他使用者變更,請重新讀取後再試!"_s);
}

void Recordset::Private::settle(EditedRow& edit) {
    for (auto& [column, value] : edit.pending)
        put(edit.written, column, std::move(value));
    edit.pending.clear();
    edit.isNew = false;
}

void Recordset::Private::writeCurrent() {
    if (position < 0 || position >= count()) return;
    EditedRow* edit = edited(position);
    if (!edit || (!edit->isNew && edit->pending.empty())) return;
    write(*connection(), position, *edit);
    settle(*edit);
}

void Recordset::Private::moveTo(int target) {
    if (cursor == Cursor::Optimistic) writeCurrent();
    position = std::clamp(target, -1, count());
}

Recordset::Recordset() : d(std::make_unique<Private>()) {}
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;

void Recordset::Open(const SqlText& statement, Connection& connection, Cursor cursor) {
    if (d->open) misuse(u"資料集已開啟!"_s);
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
    const auto& fields = d->shape->fields;
    // Nearly always the name is written as the table has it.
    auto found = std::find_if(fields.begin(), fields.end(),
                              [&](const ResultField& field) { return field.name == name; });
    if (found == fields.end())
        found = std::find_if(fields.begin(), fields.end(), [&](const ResultField& field) {
            return name.compare(field.name, Qt::CaseInsensitive) == 0;
        });
    if (found == fields.end())
        throw DatabaseError(DatabaseError::InvalidColumn, u"資料集沒有欄位「%1」!"_s.arg(name.toString()));
    return static_cast<int>(found - fields.begin());
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
    if (const Literal* value = d->overlaid(d->position, at)) return numberOf(*value);
    return d->rows.cell(d->position, at).number();
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
    if (type != dialect::Type::Unknown) return isNumber(type);
    d->load();
    for (int row = 0; row < d->rows.rows(); ++row) {
        const RowBlock::Kind kind = d->rows.cell(row, column).kind;
        if (kind != RowBlock::Kind::Null) return kind != RowBlock::Kind::Text;
    }
    return false;
}

void Recordset::AddNew() {
    d->requireOpen();
    if (!d->writes()) misuse(u"資料集是唯讀的!"_s);
    if (d->shape->table.isEmpty()) misuse(u"查詢不是單一資料表,無法新增資料列!"_s);
    if (d->cursor == Cursor::Optimistic) d->writeCurrent();
    d->added.push_back({true, {}, {}});
    d->position = d->count() - 1;
}

void Recordset::set(QStringView column, const QString& value) {
    set(this->column(column), value);
}
void Recordset::set(QStringView column, double value) {
    set(this->column(column), value);
}
void Recordset::setNull(QStringView column) {
    setNull(this->column(column));
}

void Recordset::set(int column, const QString& value) {
    d->change(column, [&](const ResultField& field) { return textFor(field, value); });
}

void Recordset::set(int column, double value) {
    d->change(column, [&](const ResultField& field) { return numberFor(field.type, value); });
}

void Recordset::setNull(int column) {
    d->change(column, [](const ResultField&) { return Literal{}; });
}

void Recordset::Update() {
    d->requireOpen();
    if (!d->writes()) misuse(u"資料集是唯讀的!"_s);
    if (d->cursor == Cursor::Optimistic) d->writeCurrent();
}

void Recordset::UpdateBatch() {
    d->requireOpen();
    if (!d->writes()) misuse(u"資料集是唯讀的!"_s);
    std::vector<std::pair<int, EditedRow*>> pending;
    for (auto& [row, edit] : d->changed)
        if (!edit.pending.empty()) pending.emplace_back(row, &edit);
    for (std::size_t i = 0; i < d->added.size(); ++i)
        if (d->added[i].isNew || !d->added[i].pending.empty())
            pending.emplace_back(d->rows.rows() + static_cast<int>(i), &d->added[i]);
    if (pending.empty()) return;
    const auto physical = d->connection();
    const bool own = !physical->inTransaction();
    if (own) physical->begin();
    try {
        for (const auto& [row, edit] : pending)
            d->write(*physical, row, *edit);
        if (own) physical->commit();
    } catch (...) {
        if (own) physical->rollback();
        throw;
    }
    for (const auto& [row, edit] : pending)
        Private::settle(*edit);
}

Recordset select(Connection& connection, const SqlText& statement) {
    Recordset rows;
    rows.Open(statement, connection);
    return rows;
}

} // namespace liaowu
