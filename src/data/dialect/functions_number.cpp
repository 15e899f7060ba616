#include "data/dialect/function_support.h"
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace liaowu::dialect {

QString floatText(double value) {
    QByteArray text = QByteArray::number(value, 'g', 6);
    const qsizetype exponent = text.indexOf('e');
    if (exponent >= 0 && text.size() - exponent < 5) text.insert(exponent + 2, '0');
    return QString::fromLatin1(text);
}

namespace {

bool isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

QByteArrayView trimmed(QByteArrayView text) {
    while (!text.isEmpty() && isSpace(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isSpace(text.back()))
        text.chop(1);
    return text;
}

enum class Reading { Good, Unreadable, OutOfRange };

/// A number as the server casts text: blanks around, sign, digits with a point, exponent. Empty text is 0.
Reading readFloat(QByteArrayView text, double& value) {
    text = trimmed(text);
    value = 0;
    if (text.isEmpty()) return Reading::Good;
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+') text = text.sliced(1);
    QByteArray plain;
    bool digits = false;
    bool point = false;
    qsizetype i = 0;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (c >= '0' && c <= '9') {
            digits = true;
        } else if (c != '.' || std::exchange(point, true)) {
            break;
        }
        plain += c;
    }
    if (!digits) return Reading::Unreadable;
    if (i < text.size()) {
        const char mark = text[i++];
        if (mark != 'e' && mark != 'E' && mark != 'd' && mark != 'D') return Reading::Unreadable;
        plain += 'e';
        if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
            if (text[i] == '-') plain += '-';
            ++i;
        }
        const qsizetype first = i;
        for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
            plain += text[i];
        if (i == first || i < text.size()) return Reading::Unreadable;
    }
    const std::from_chars_result result = std::from_chars(plain.constBegin(), plain.constEnd(), value);
    if (result.ec == std::errc::result_out_of_range) {
        // Too small is 0, too large is an error.
        const qsizetype exponent = plain.indexOf('e');
        value = 0;
        return exponent >= 0 && plain.mid(exponent + 1).startsWith('-') ? Reading::Good : Reading::OutOfRange;
    }
    if (negative) value = -value;
    return Reading::Good;
}

void giveFloat(Call& call, const QString& typeName, bool emptyIsZero) {
    if (call.type(0) != SQLITE_TEXT) {
        call.give(call.number(0));
        return;
    }
    double value = 0;
    const QByteArrayView text = call.bytes(0);
    const Reading reading =
        !emptyIsZero && trimmed(text).isEmpty() ? Reading::Unreadable : readFloat(text, value);
    if (reading == Reading::Unreadable)
        return call.fail(8114, u"Error converting data type nvarchar to %1."_s.arg(typeName));
    if (reading == Reading::OutOfRange)
        return call.fail(8115,
                         u"Arithmetic overflow error converting expression to data type %1."_s.arg(typeName));
    call.give(value);
}

void toFloat(Call& call) {
    giveFloat(call, u"float"_s, true);
}
void toNumeric(Call& call) {
    giveFloat(call, u"numeric"_s, false);
}

constexpr qint64 largestInt = std::numeric_limits<qint32>::max();
constexpr qint64 smallestInt = std::numeric_limits<qint32>::min();

void toInt(Call& call) {
    if (call.type(0) == SQLITE_INTEGER) return call.giveArgument(0);
    if (call.type(0) == SQLITE_FLOAT) {
        const double value = std::trunc(call.number(0));
        if (!(value >= double(smallestInt) && value <= double(largestInt)))
            return call.fail(8115, u"Arithmetic overflow error converting expression to data type int."_s);
        return call.give(static_cast<qint64>(value));
    }
    QByteArrayView digits = trimmed(call.bytes(0));
    const bool negative = digits.startsWith('-');
    if (negative || digits.startsWith('+')) digits = digits.sliced(1);
    qint64 value = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9')
            return call.fail(
                245, u"Conversion failed when converting the nvarchar value '%1' to data type int."_s.arg(
                         call.text(0)));
        if (value <= largestInt + 1) value = value * 10 + (c - '0');
    }
    if (negative) value = -value;
    if (value > largestInt || value < smallestInt)
        return call.fail(
            248, u"The conversion of the nvarchar value '%1' overflowed an int column."_s.arg(call.text(0)));
    call.give(value);
}

/// ts_text(value[, length])
void toText(Call& call) {
    if (call.type(0) == SQLITE_TEXT) return call.giveArgument(0);
    const QString text =
        call.type(0) == SQLITE_INTEGER ? QString::number(call.integer(0)) : floatText(call.number(0));
    if (call.size() > 1 && text.size() > call.integer(1))
        return call.fail(8115, u"Arithmetic overflow error converting expression to data type nvarchar."_s);
    call.give(text);
}

void divideByZero(Call& call) {
    call.fail(8134, u"Divide by zero error encountered."_s);
}

void integerDivision(Call& call) {
    const qint64 divisor = call.integer(1);
    if (divisor == 0) return divideByZero(call);
    call.give(divisor == -1 ? -call.integer(0) : call.integer(0) / divisor);
}

void division(Call& call) {
    if (call.number(1) == 0) return divideByZero(call);
    call.give(call.number(0) / call.number(1));
}

void integerModulo(Call& call) {
    const qint64 divisor = call.integer(1);
    if (divisor == 0) return divideByZero(call);
    call.give(divisor == -1 ? qint64(0) : call.integer(0) % divisor);
}

void modulo(Call& call) {
    if (call.number(1) == 0) return divideByZero(call);
    call.give(std::fmod(call.number(0), call.number(1)));
}

void roundTo(Call& call) {
    const double scale = std::pow(10.0, static_cast<double>(std::clamp<qint64>(call.integer(1), -300, 300)));
    const double value = call.number(0);
    const double scaled = value * scale;
    // Far more digits than a float has: nothing to round.
    double result = std::isfinite(scaled) && std::isfinite(std::round(scaled) / scale)
                        ? std::round(scaled) / scale
                        : value;
    if (scale < 1e-200) result = 0;
    if (call.type(0) == SQLITE_INTEGER) return call.give(static_cast<qint64>(result));
    call.give(result);
}

template <double (*Function)(double)>
void ofNumber(Call& call) {
    if (call.type(0) == SQLITE_INTEGER) return call.giveArgument(0);
    call.give(Function(call.number(0)));
}

double floorOf(double value) {
    return std::floor(value);
}
double ceilingOf(double value) {
    return std::ceil(value);
}

void absolute(Call& call) {
    if (call.type(0) == SQLITE_INTEGER)
        return call.give(call.integer(0) < 0 ? -call.integer(0) : call.integer(0));
    call.give(std::fabs(call.number(0)));
}

void power(Call& call) {
    const double result = std::pow(call.number(0), call.number(1));
    if (!std::isfinite(result)) return call.fail(3623, u"An invalid floating point operation occurred."_s);
    if (call.type(0) != SQLITE_INTEGER) return call.give(result);
    if (std::fabs(result) > double(largestInt))
        return call.fail(232,
                         u"Arithmetic overflow error for type int, value = %1."_s.arg(result, 0, 'f', 6));
    call.give(static_cast<qint64>(result));
}

/// ts_str(number[, length[, decimals]]): right-aligned; stars when it does not fit.
void strOf(Call& call) {
    const qint64 length = call.size() > 1 ? call.integer(1) : 10;
    qint64 decimals = call.size() > 2 ? std::clamp<qint64>(call.integer(2), 0, 16) : 0;
    if (length < 1 || length > 8000) return;
    const qsizetype whole = QString::number(std::trunc(call.number(0)), 'f', 0).size();
    // Decimals give way to the length.
    decimals = std::max<qint64>(0, std::min<qint64>(decimals, length - whole - 1));
    const double scale = std::pow(10.0, static_cast<double>(decimals));
    const double rounded = std::round(call.number(0) * scale) / scale;
    const QString text =
        QString::number(std::isfinite(rounded) ? rounded : call.number(0), 'f', static_cast<int>(decimals));
    call.give(text.size() > length ? QString(length, u'*') : text.rightJustified(length));
}

void isNumeric(Call& call) {
    if (call.isNull(0)) return call.give(qint64(0));
    QByteArray text = trimmed(call.bytes(0)).toByteArray();
    double value = 0;
    text.replace(",", "");
    const bool sign = text == "-" || text == "+" || text == ".";
    const bool good = !text.isEmpty() && (sign || readFloat(text, value) == Reading::Good);
    call.give(qint64(good ? 1 : 0));
}

} // namespace

void installConversions(sqlite3* database) {
    static constexpr std::array entries = {
        FunctionEntry{"ts_float", 1, boundStrict<toFloat>},
        FunctionEntry{"ts_numeric", 1, boundStrict<toNumeric>},
        FunctionEntry{"ts_int", 1, boundStrict<toInt>},
        FunctionEntry{"ts_text", 1, boundStrict<toText>},
        FunctionEntry{"ts_text", 2, boundStrict<toText>},
    };
    registerFunctions(database, entries.data(), entries.size());
}

void installNumberFunctions(sqlite3* database) {
    static constexpr std::array entries = {
        FunctionEntry{"ts_idiv", 2, boundStrict<integerDivision>},
        FunctionEntry{"ts_fdiv", 2, boundStrict<division>},
        FunctionEntry{"ts_imod", 2, boundStrict<integerModulo>},
        FunctionEntry{"ts_fmod", 2, boundStrict<modulo>},
        FunctionEntry{"ts_round", 2, boundStrict<roundTo>},
        FunctionEntry{"ts_floor", 1, boundStrict<ofNumber<floorOf>>},
        FunctionEntry{"ts_ceiling", 1, boundStrict<ofNumber<ceilingOf>>},
        FunctionEntry{"ts_abs", 1, boundStrict<absolute>},
        FunctionEntry{"ts_power", 2, boundStrict<power>},
        FunctionEntry{"ts_str", 1, boundStrict<strOf>},
        FunctionEntry{"ts_str", 2, boundStrict<strOf>},
        FunctionEntry{"ts_str", 3, boundStrict<strOf>},
        FunctionEntry{"ts_isnumeric", 1, bound<isNumeric>},
    };
    registerFunctions(database, entries.data(), entries.size());
}

} // namespace liaowu::dialect
