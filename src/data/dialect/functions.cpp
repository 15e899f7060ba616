#include "data/dialect/collation.h"
#include "data/dialect/dialect.h"
#include "data/dialect/emit.h"
#include "data/dialect/function_support.h"
#include "data/dialect/like.h"
#include <memory>

namespace liaowu::dialect {

bool Call::anyNull() const {
    for (int i = 0; i < count; ++i) {
        if (isNull(i)) return true;
    }
    return false;
}

QByteArrayView Call::bytes(int i) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(values[i]));
    return {text, text ? sqlite3_value_bytes(values[i]) : 0};
}

QString Call::text(int i) const {
    return QString::fromUtf8(bytes(i));
}

void Call::give(const QString& text) const {
    give(QByteArrayView(text.toUtf8()));
}

void Call::give(QByteArrayView utf8) const {
    sqlite3_result_text64(context, utf8.data() ? utf8.data() : "", static_cast<sqlite3_uint64>(utf8.size()),
                          SQLITE_TRANSIENT, SQLITE_UTF8);
}

void Call::fail(int number, const QString& text) const {
    const QByteArray message = QByteArray::number(number) + '|' + text.toUtf8();
    sqlite3_result_error(context, message.constData(), static_cast<int>(message.size()));
}

void registerFunctions(sqlite3* database, const FunctionEntry* entries, size_t count) {
    // Deterministic also lets the engine evaluate a call of constants once in a statement, as the server does.
    for (size_t i = 0; i < count; ++i)
        sqlite3_create_function_v2(database, entries[i].name, entries[i].arguments,
                                   SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                                   entries[i].run, nullptr, nullptr, nullptr);
}

namespace {

int collate(void*, int leftSize, const void* left, int rightSize, const void* right) {
    return compareUtf8({static_cast<const char*>(left), leftSize},
                       {static_cast<const char*>(right), rightSize});
}

/// ts_like(pattern, text[, escape])
void like(sqlite3_context* context, int count, sqlite3_value** values) {
    const Call call(context, count, values);
    if (call.anyNull()) return;
    auto* pattern = static_cast<const LikePattern*>(sqlite3_get_auxdata(context, 0));
    std::unique_ptr<const LikePattern> own;
    if (!pattern) {
        std::optional<char32_t> escape;
        if (count > 2) {
            const QByteArrayView bytes = call.bytes(2);
            const char* at = bytes.data();
            if (!bytes.isEmpty()) escape = nextCharacter(at, at + bytes.size());
        }
        own = std::make_unique<const LikePattern>(call.bytes(0), escape);
        pattern = own.get();
    }
    sqlite3_result_int(context, pattern->matches(call.bytes(1)) ? 1 : 0);
    // A constant pattern is compiled once in a statement.
    if (own)
        sqlite3_set_auxdata(context, 0, const_cast<LikePattern*>(own.release()),
                            [](void* kept) { delete static_cast<LikePattern*>(kept); });
}

/// ts_single(x): the value of the only row; a second row is an error.
void singleStep(sqlite3_context* context, int, sqlite3_value** values) {
    auto** kept = static_cast<sqlite3_value**>(sqlite3_aggregate_context(context, sizeof(sqlite3_value*)));
    if (!kept) return;
    if (*kept) {
        Call(context, 1, values)
            .fail(512, u"Subquery returned more than 1 value. This is not permitted when the subquery "
                       u"follows =, !=, <, "
                       "<= , >, >= or when the subquery is used as an expression."_s);
        return;
    }
    *kept = sqlite3_value_dup(values[0]);
}

void singleFinal(sqlite3_context* context) {
    auto** kept = static_cast<sqlite3_value**>(sqlite3_aggregate_context(context, 0));
    if (!kept || !*kept) return;
    sqlite3_result_value(context, *kept);
    sqlite3_value_free(*kept);
}

} // namespace

void installFunctions(sqlite3* database, std::function<QDateTime()> now) {
    sqlite3_create_collation_v2(database, collationName, SQLITE_UTF8, nullptr, collate, nullptr);
    static constexpr std::array entries = {FunctionEntry{"ts_like", 2, like},
                                           FunctionEntry{"ts_like", 3, like}};
    registerFunctions(database, entries.data(), entries.size());
    sqlite3_create_function_v2(database, "ts_single", 1,
                               SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr, nullptr,
                               singleStep, singleFinal, nullptr);
    installConversions(database);
    installTextFunctions(database);
    installNumberFunctions(database);
    installDateFunctions(database, std::move(now));
}

std::pair<int, QString> functionError(const QString& engineText) {
    const qsizetype bar = engineText.indexOf(u'|');
    bool isNumber = false;
    const int number = bar > 0 && bar <= 6 ? engineText.left(bar).toInt(&isNumber) : 0;
    if (!isNumber || number <= 0) return {0, engineText};
    return {number, engineText.mid(bar + 1)};
}

} // namespace liaowu::dialect
