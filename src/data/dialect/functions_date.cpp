#include "data/dialect/dates.h"
#include "data/dialect/function_support.h"
#include <array>
#include <cmath>

namespace liaowu::dialect {

namespace {

const QDateTime& dayZero() {
    static const QDateTime zero(QDate(1900, 1, 1), QTime(0, 0), Qt::UTC);
    return zero;
}

void unreadable(const Call& call) {
    call.fail(241, u"Conversion failed when converting date and/or time from character string."_s);
}

/// A date given as text or as days since 1900. Fails the call and gives nothing when it is none.
std::optional<QDateTime> dateOf(const Call& call, int argument, int style, bool cast) {
    if (call.type(argument) != SQLITE_TEXT) {
        const double days = call.number(argument);
        if (std::fabs(days) < 3'000'000) return dayZero().addMSecs(std::llround(days * 86400000.0));
        call.fail(8115, u"Arithmetic overflow error converting expression to data type datetime."_s);
        return std::nullopt;
    }
    DateFault fault = DateFault::None;
    const std::optional<QDateTime> moment = readDate(call.text(argument), style, fault);
    if (moment && (!cast || moment->date().year() >= 1753)) return moment;
    if (cast && fault != DateFault::Unreadable) {
        call.fail(
            242,
            u"The conversion of a nvarchar data type to a datetime data type resulted in an out-of-range "
            "value."_s);
    } else {
        unreadable(call);
    }
    return std::nullopt;
}

void toDate(Call& call) {
    const int style = call.size() > 1 ? static_cast<int>(call.integer(1)) : 0;
    if (const std::optional<QDateTime> moment = dateOf(call, 0, style, true)) call.give(dateText(*moment));
}

/// ts_datetext(date[, style])
void toText(Call& call) {
    const std::optional<QDateTime> moment = dateOf(call, 0, 0, true);
    if (!moment) return;
    const int style = call.size() > 1 ? static_cast<int>(call.integer(1)) : 0;
    const std::optional<QString> text = styledDate(*moment, style);
    if (text) return call.give(*text);
    call.fail(
        281,
        u"%1 is not a valid style number when converting from datetime to a character string."_s.arg(style));
}

double daysOf(const QDateTime& moment) {
    return static_cast<double>(dayZero().msecsTo(moment)) / 86400000.0;
}

void toNumber(Call& call) {
    if (const std::optional<QDateTime> moment = dateOf(call, 0, 0, true)) call.give(daysOf(*moment));
}

void toInteger(Call& call) {
    if (const std::optional<QDateTime> moment = dateOf(call, 0, 0, true))
        call.give(static_cast<qint64>(std::llround(daysOf(*moment))));
}

void difference(Call& call) {
    const std::optional<QDateTime> from = dateOf(call, 1, 0, false);
    if (!from) return;
    const std::optional<QDateTime> to = dateOf(call, 2, 0, false);
    if (!to) return;
    const qint64 result = dateDifference(call.text(0), *from, *to);
    if (result > std::numeric_limits<qint32>::max() || result < std::numeric_limits<qint32>::min())
        return call.fail(
            535, u"The datediff function resulted in an overflow. The number of dateparts separating two "
                 "date/time instances is too large. Try to use datediff with a less precise datepart."_s);
    call.give(result);
}

void giveDate(const Call& call, const QDateTime& moment) {
    if (moment.isValid() && moment.date().year() >= 1753 && moment.date().year() <= 9999)
        return call.give(dateText(moment));
    call.fail(517, u"Adding a value to a 'datetime' column caused an overflow."_s);
}

void sum(Call& call) {
    const qint64 number = std::clamp<qint64>(call.integer(1), -100'000'000'000, 100'000'000'000);
    if (const std::optional<QDateTime> moment = dateOf(call, 2, 0, false))
        giveDate(call, dateSum(call.text(0), number, *moment));
}

/// ts_dateplus(date, days)
void plusDays(Call& call) {
    const double days = call.number(1);
    if (!(std::fabs(days) < 10'000'000)) return giveDate(call, QDateTime());
    if (const std::optional<QDateTime> moment = dateOf(call, 0, 0, true))
        giveDate(call, moment->addMSecs(std::llround(days * 86400000.0)));
}

void part(Call& call) {
    if (const std::optional<QDateTime> moment = dateOf(call, 1, 0, false))
        call.give(qint64(datePartOf(call.text(0), *moment)));
}

void isDate(Call& call) {
    DateFault fault = DateFault::None;
    const bool good = !call.isNull(0) && !call.text(0).trimmed().isEmpty() &&
                      readDate(call.text(0), 0, fault) && fault == DateFault::None;
    call.give(qint64(good ? 1 : 0));
}

using Clock = std::function<QDateTime()>;

void serverTime(sqlite3_context* context, QStringView format) {
    const Clock& now = *static_cast<const Clock*>(sqlite3_user_data(context));
    const QDateTime moment = now();
    const QString text = format.isEmpty() ? dateText(QDateTime(moment.date(), moment.time(), Qt::UTC))
                                          : moment.toString(format);
    Call(context, 0, nullptr).give(text);
}

} // namespace

void installDateFunctions(sqlite3* database, std::function<QDateTime()> now) {
    static constexpr std::array entries = {
        FunctionEntry{"ts_datetime", 1, boundStrict<toDate>},
        FunctionEntry{"ts_datetime", 2, boundStrict<toDate>},
        FunctionEntry{"ts_datetext", 1, boundStrict<toText>},
        FunctionEntry{"ts_datetext", 2, boundStrict<toText>},
        FunctionEntry{"ts_datenumber", 1, boundStrict<toNumber>},
        FunctionEntry{"ts_dateint", 1, boundStrict<toInteger>},
        FunctionEntry{"ts_datediff", 3, boundStrict<difference>},
        FunctionEntry{"ts_dateadd", 3, boundStrict<sum>},
        FunctionEntry{"ts_dateplus", 2, boundStrict<plusDays>},
        FunctionEntry{"ts_datepart", 2, boundStrict<part>},
        FunctionEntry{"ts_isdate", 1, bound<isDate>},
    };
    registerFunctions(database, entries.data(), entries.size());
    // Each function owns its clock. Deterministic, so that one statement sees one time.
    const auto clocked = [&](const char* name, int arguments,
                             void (*run)(sqlite3_context*, int, sqlite3_value**)) {
        sqlite3_create_function_v2(database, name, arguments,
                                   SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, new Clock(now), run,
                                   nullptr, nullptr, [](void* kept) { delete static_cast<Clock*>(kept); });
    };
    clocked("ts_getdate", 0, [](sqlite3_context* context, int, sqlite3_value**) { serverTime(context, {}); });
    clocked("ts_dt", 1, [](sqlite3_context* context, int, sqlite3_value**) {
        serverTime(context, u"yyyy-MM-dd HH:mm:ss");
    });
}

} // namespace liaowu::dialect
