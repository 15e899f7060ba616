#include "data/dialect/view_types.h"
#include <QHash>
#include <memory>
#include <sqlite3.h>
#include <string_view>
#include <utility>

namespace liaowu::dialect {

namespace {

constexpr std::string_view typeLetters = "?TINFD";

/// Type of a column by its declared type, as the engine derives its affinity.
Type declaredType(const QByteArray& declared) {
    const QByteArray type = declared.toUpper();
    if (type.startsWith("DATE") || type.startsWith("SMALLDATE")) return Type::DateTime;
    if (type.contains("INT")) return Type::Integer;
    if (type.contains("CHAR") || type.contains("CLOB") || type.contains("TEXT")) return Type::Text;
    if (type.contains("REAL") || type.contains("FLOA") || type.contains("DOUB") || type.contains("NUM") ||
        type.contains("DEC"))
        return Type::Float;
    return Type::Text;
}

/// Steps through the rows of one statement of ours; a failing one has no rows, so that the table counts as unknown.
class Query {
public:
    Query(sqlite3* database, const char* text) {
        sqlite3_prepare_v2(database, text, -1, &statement, nullptr);
    }
    ~Query() { sqlite3_finalize(statement); }
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;
    void bind(int at, const QByteArray& text) {
        sqlite3_bind_text(statement, at, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }
    bool step() { return statement && sqlite3_step(statement) == SQLITE_ROW; }
    QByteArray text(int column) const {
        return {reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                sqlite3_column_bytes(statement, column)};
    }
    int integer(int column) const { return sqlite3_column_int(statement, column); }

private:
    sqlite3_stmt* statement = nullptr;
};

class EngineCatalog : public Catalog {
public:
    explicit EngineCatalog(sqlite3* of) : database(of) {}
    const TableInfo* table(QStringView name) const override;

private:
    sqlite3* database;
    mutable int version = -1;
    using Tables = QHash<QString, std::shared_ptr<TableInfo>>;
    mutable Tables known; ///< by lower-case name
    /// Another program may change the schema while a translation holds tables of an earlier state.
    mutable std::vector<Tables> earlier;

    void readNames() const;
    void readColumns(TableInfo& info, const std::vector<ValueType>& types) const;
};

void EngineCatalog::readNames() const {
    if (earlier.size() >= 4) earlier.erase(earlier.begin());
    earlier.push_back(std::exchange(known, {}));
    Query query(database,
                "SELECT name, type, sql FROM sqlite_schema WHERE type IN ('table', 'view') AND name NOT LIKE "
                "'sqlite\\_%' ESCAPE '\\'");
    std::vector<std::pair<std::shared_ptr<TableInfo>, QByteArray>> views;
    while (query.step()) {
        auto info = std::make_shared<TableInfo>();
        info->name = QString::fromUtf8(query.text(0));
        info->view = query.text(1) == "view";
        if (info->view) views.emplace_back(info, query.text(2));
        known.insert(info->name.toLower(), info);
    }
    for (const auto& [info, text] : views)
        readColumns(*info, viewTypes(text));
}

void EngineCatalog::readColumns(TableInfo& info, const std::vector<ValueType>& types) const {
    Query query(database, "SELECT name, type, pk FROM pragma_table_info(?1)");
    query.bind(1, info.name.toUtf8());
    while (query.step()) {
        const size_t at = info.columns.size();
        const Type type = at < types.size() ? publicType(types[at]) : declaredType(query.text(1));
        info.columns.push_back({QString::fromUtf8(query.text(0)), type, query.integer(2) > 0});
    }
}

const TableInfo* EngineCatalog::table(QStringView name) const {
    Query query(database, "PRAGMA schema_version");
    const int now = query.step() ? query.integer(0) : -1;
    if (now != version || now == -1) {
        readNames();
        version = now;
    }
    const auto found = known.constFind(name.toString().toLower());
    if (found == known.constEnd()) return nullptr;
    TableInfo& info = *found.value();
    if (info.columns.empty()) readColumns(info, {});
    return info.columns.empty() ? nullptr : &info;
}

} // namespace

QByteArray viewTypesComment(const std::vector<ValueType>& types) {
    QByteArray text = "/*types:";
    for (const ValueType type : types)
        text += typeLetters.at(static_cast<size_t>(type));
    return text + "*/";
}

std::vector<ValueType> viewTypes(const QByteArray& viewText) {
    const QByteArray opening = ") AS /*types:";
    const qsizetype at = viewText.indexOf(opening);
    const qsizetype end = at < 0 ? -1 : viewText.indexOf("*/", at);
    std::vector<ValueType> types;
    for (qsizetype i = at + opening.size(); at >= 0 && i < end; ++i) {
        const size_t letter = typeLetters.find(viewText[i]);
        types.push_back(letter == std::string_view::npos ? ValueType::Null : static_cast<ValueType>(letter));
    }
    return types;
}

std::unique_ptr<Catalog> catalogOf(sqlite3* database) {
    return std::make_unique<EngineCatalog>(database);
}

} // namespace liaowu::dialect
