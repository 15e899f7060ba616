#include "data/dialect/dates.h"
#include <QList>
#include <QLocale>

namespace liaowu::dialect {

namespace {

/// Digits of fixed or bounded length; -1 when something else stands there.
int digitsOf(QStringView text) {
    if (text.isEmpty() || text.size() > 4) return -1;
    int value = 0;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9') return -1;
        value = value * 10 + (c.unicode() - u'0');
    }
    return value;
}

int fullYear(int year) {
    return year < 50 ? 2000 + year : 1900 + year;
}

std::optional<QDate> readDay(QStringView text, int style, DateFault& fault) {
    int year = -1;
    int month = 1;
    int day = 1;
    const auto separator = [](QChar c) { return c == u'-' || c == u'/' || c == u'.'; };
    QList<QStringView> parts;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && !separator(text[i])) continue;
        parts.append(text.mid(start, i - start));
        start = i + 1;
    }
    if (parts.size() == 1 && text.size() == 8) {
        year = digitsOf(text.left(4));
        month = digitsOf(text.mid(4, 2));
        day = digitsOf(text.mid(6, 2));
    } else if (parts.size() == 1 && text.size() == 6) {
        year = digitsOf(text.left(2));
        if (year >= 0) year = fullYear(year);
        month = digitsOf(text.mid(2, 2));
        day = digitsOf(text.mid(4, 2));
    } else if (parts.size() == 1 && text.size() == 4) {
        year = digitsOf(text);
    } else if (parts.size() == 3 && parts[0].size() == 4) {
        year = digitsOf(parts[0]);
        month = parts[1].size() > 2 ? -1 : digitsOf(parts[1]);
        day = parts[2].size() > 2 ? -1 : digitsOf(parts[2]);
    } else if (parts.size() == 3 && (parts[2].size() == 4 || parts[2].size() == 2)) {
        year = digitsOf(parts[2]);
        if (year >= 0 && parts[2].size() == 2) year = fullYear(year);
        const bool dayFirst = style == 103 || style == 104 || style == 105;
        month = parts[dayFirst ? 1 : 0].size() > 2 ? -1 : digitsOf(parts[dayFirst ? 1 : 0]);
        day = parts[dayFirst ? 0 : 1].size() > 2 ? -1 : digitsOf(parts[dayFirst ? 0 : 1]);
    }
    if (year < 0 || month < 0 || day < 0) {
        fault = DateFault::Unreadable;
        return std::nullopt;
    }
    const QDate date(year, month, day);
    if (year >= 1 && date.isValid()) return date;
    fault = DateFault::OutOfRange;
    return std::nullopt;
}

std::optional<QTime> readTime(QStringView text, DateFault& fault) {
    fault = DateFault::Unreadable;
    int halfDay = -1;
    if (text.endsWith(u"AM", Qt::CaseInsensitive)) halfDay = 0;
    if (text.endsWith(u"PM", Qt::CaseInsensitive)) halfDay = 12;
    if (halfDay >= 0) text = text.chopped(2).trimmed();
    const QList<QStringView> parts = text.split(u':');
    if (parts.size() < 2 || parts.size() > 3) return std::nullopt;
    const qsizetype point = parts.last().indexOf(u'.');
    const bool withSeconds = parts.size() == 3;
    if (!withSeconds && point >= 0) return std::nullopt;
    int hour = parts[0].size() > 2 ? -1 : digitsOf(parts[0]);
    const int minute = parts[1].size() > 2 ? -1 : digitsOf(parts[1]);
    const QStringView whole =
        withSeconds ? parts[2].left(point < 0 ? parts[2].size() : point) : QStringView(u"0");
    const int second = whole.size() > 2 ? -1 : digitsOf(whole);
    int ms = 0;
    if (point >= 0) {
        const QStringView fraction = parts[2].mid(point + 1);
        ms = fraction.size() > 3 ? -1 : digitsOf(fraction);
        for (qsizetype i = fraction.size(); i < 3 && ms > 0; ++i)
            ms *= 10;
    }
    if (hour < 0 || minute < 0 || second < 0 || ms < 0) return std::nullopt;
    if (halfDay >= 0) {
        if (hour < 1 || hour > 12) return std::nullopt;
        hour = hour % 12 + halfDay;
    }
    const QTime time(hour, minute, second, ms);
    fault = time.isValid() ? DateFault::None : DateFault::OutOfRange;
    return time.isValid() ? std::optional(time) : std::nullopt;
}

qint64 months(const QDateTime& moment) {
    return qint64(moment.date().year()) * 12 + moment.date().month();
}

/// Whole units of `ms` since a fixed day, so that only boundaries count.
qint64 units(const QDateTime& moment, qint64 ms) {
    return (moment.date().toJulianDay() * 86400000 + moment.time().msecsSinceStartOfDay()) / ms;
}

} // namespace

std::optional<QDateTime> readDate(QStringView text, int style, DateFault& fault) {
    fault = DateFault::None;
    text = text.trimmed();
    QDate date(1900, 1, 1);
    QTime time(0, 0);
    qsizetype blank = text.indexOf(u' ');
    if (blank < 0 && text.size() > 10 && text[10] == u'T') blank = 10;
    const QStringView first = blank < 0 ? text : text.left(blank);
    QStringView second = blank < 0 ? QStringView() : text.mid(blank + 1).trimmed();
    if (first.contains(u':')) {
        second = text;
    } else if (!first.isEmpty()) {
        const std::optional<QDate> day = readDay(first, style, fault);
        if (!day) return std::nullopt;
        date = *day;
    }
    if (!second.isEmpty()) {
        const std::optional<QTime> clock = readTime(second, fault);
        if (!clock) return std::nullopt;
        time = *clock;
    }
    return QDateTime(date, time, Qt::UTC);
}

QString dateText(const QDateTime& moment) {
    const int ms = moment.time().msec();
    // The server keeps three hundredths of a second.
    const int third = static_cast<int>((ms * 3 + 5) / 10);
    static constexpr std::array<int, 3> steps = {0, 3, 7};
    const int kept = third / 3 * 10 + steps[static_cast<size_t>(third % 3)];
    const QDateTime rounded = moment.addMSecs(kept - ms);
    return rounded.toString(rounded.time().msec() == 0 ? u"yyyy-MM-dd HH:mm:ss" : u"yyyy-MM-dd HH:mm:ss.zzz");
}

std::optional<QString> styledDate(const QDateTime& moment, int style) {
    const auto format = [&](QStringView pattern) { return QLocale::c().toString(moment, pattern); };
    const auto twelveHours = [&](QStringView clock) {
        const QString day = QString::number(moment.date().day()).rightJustified(2);
        const QString hour = QString::number((moment.time().hour() + 11) % 12 + 1).rightJustified(2);
        const QString half = moment.time().hour() < 12 ? QStringLiteral("AM") : QStringLiteral("PM");
        return format(u"MMM ") + day + format(u" yyyy ") + hour + format(clock) + half;
    };
    switch (style) {
    case 0:
    case 100:
        return twelveHours(u":mm");
    case 9:
    case 109:
        return twelveHours(u":mm:ss:zzz");
    case 1:
        return format(u"MM/dd/yy");
    case 101:
        return format(u"MM/dd/yyyy");
    case 2:
        return format(u"yy.MM.dd");
    case 102:
        return format(u"yyyy.MM.dd");
    case 3:
        return format(u"dd/MM/yy");
    case 103:
        return format(u"dd/MM/yyyy");
    case 104:
        return format(u"dd.MM.yyyy");
    case 105:
        return format(u"dd-MM-yyyy");
    case 8:
    case 24:
    case 108:
        return format(u"HH:mm:ss");
    case 11:
        return format(u"yy/MM/dd");
    case 111:
        return format(u"yyyy/MM/dd");
    case 12:
        return format(u"yyMMdd");
    case 112:
        return format(u"yyyyMMdd");
    case 20:
    case 120:
        return format(u"yyyy-MM-dd HH:mm:ss");
    case 21:
    case 25:
    case 121:
        return format(u"yyyy-MM-dd HH:mm:ss.zzz");
    case 23:
        return format(u"yyyy-MM-dd");
    case 126:
        return format(moment.time().msec() == 0 ? u"yyyy-MM-ddTHH:mm:ss" : u"yyyy-MM-ddTHH:mm:ss.zzz");
    default:
        return std::nullopt;
    }
}

qint64 dateDifference(QStringView part, const QDateTime& from, const QDateTime& to) {
    if (part == u"yy") return to.date().year() - from.date().year();
    if (part == u"qq") return (months(to) - 1) / 3 - (months(from) - 1) / 3;
    if (part == u"mm") return months(to) - months(from);
    // Weeks begin on Sunday, the day after Julian day 7n + 5.
    if (part == u"ww") return (to.date().toJulianDay() + 1) / 7 - (from.date().toJulianDay() + 1) / 7;
    if (part == u"hh") return units(to, 3600000) - units(from, 3600000);
    if (part == u"mi") return units(to, 60000) - units(from, 60000);
    if (part == u"ss") return units(to, 1000) - units(from, 1000);
    if (part == u"ms") return units(to, 1) - units(from, 1);
    return from.date().daysTo(to.date());
}

QDateTime dateSum(QStringView part, qint64 number, const QDateTime& moment) {
    const int count = static_cast<int>(number);
    if (part == u"yy") return moment.addYears(count);
    if (part == u"qq") return moment.addMonths(count * 3);
    if (part == u"mm") return moment.addMonths(count);
    if (part == u"ww") return moment.addDays(number * 7);
    if (part == u"hh") return moment.addSecs(number * 3600);
    if (part == u"mi") return moment.addSecs(number * 60);
    if (part == u"ss") return moment.addSecs(number);
    if (part == u"ms") return moment.addMSecs(number);
    return moment.addDays(number);
}

int datePartOf(QStringView part, const QDateTime& moment) {
    const QDate date = moment.date();
    if (part == u"yy") return date.year();
    if (part == u"qq") return (date.month() + 2) / 3;
    if (part == u"mm") return date.month();
    if (part == u"dy") return date.dayOfYear();
    // Week 1 holds January 1, and weeks begin on Sunday.
    if (part == u"ww") return (date.dayOfYear() - 1 + QDate(date.year(), 1, 1).dayOfWeek() % 7) / 7 + 1;
    if (part == u"dw") return date.dayOfWeek() % 7 + 1;
    if (part == u"hh") return moment.time().hour();
    if (part == u"mi") return moment.time().minute();
    if (part == u"ss") return moment.time().second();
    if (part == u"ms") return moment.time().msec();
    return date.day();
}

} // namespace liaowu::dialect
