#include "common/text_values.h"
#include <algorithm>

namespace liaowu {

namespace {

/// Rounds a plain decimal text half away from zero to `decimals` places; gives sign, whole part and fraction.
struct Decimal {
    bool negative = false;
    QString whole;
    QString fraction;
};

Decimal rounded(const QString& plain, int decimals) {
    Decimal result;
    QString text = plain;
    if (text.startsWith(u'-')) {
        result.negative = true;
        text.remove(0, 1);
    }
    const qsizetype point = text.indexOf(u'.');
    QString whole = point < 0 ? text : text.left(point);
    const QString fraction = point < 0 ? QString() : text.mid(point + 1);
    QString digits = whole + fraction.left(decimals).leftJustified(decimals, u'0');
    if (fraction.size() > decimals && fraction[decimals] >= u'5') {
        qsizetype i = digits.size() - 1;
        while (i >= 0 && digits[i] == u'9')
            digits[i--] = u'0';
        if (i >= 0) {
            digits[i] = QChar(digits[i].unicode() + 1);
        } else {
            digits.prepend(u'1');
        }
    }
    result.whole = digits.left(digits.size() - decimals);
    result.fraction = digits.right(decimals);
    if (result.negative && std::all_of(digits.begin(), digits.end(), [](QChar c) { return c == u'0'; }))
        result.negative = false;
    return result;
}

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

} // namespace

QString format(double value, QStringView mask) {
    if (mask == u"####/##/##") {
        const QString digits = numberText(value).rightJustified(8, u'0');
        return digits.left(digits.size() - 4) + u'/' + digits.mid(digits.size() - 4, 2) + u'/' +
               digits.right(2);
    }
    const qsizetype point = mask.indexOf(u'.');
    const int decimals = point < 0 ? 0 : static_cast<int>(mask.size() - point - 1);
    const QStringView wholeMask = point < 0 ? mask : mask.left(point);
    Decimal parts = rounded(numberText(value), decimals);
    QString whole = parts.whole;
    while (whole.size() > 1 && whole.startsWith(u'0'))
        whole.remove(0, 1);
    whole = whole.rightJustified(wholeMask.count(u'0'), u'0');
    if (wholeMask.contains(u','))
        for (qsizetype i = whole.size() - 3; i > 0; i -= 3)
            whole.insert(i, u',');
    QString result = parts.negative ? u'-' + whole : whole;
    if (decimals > 0) result += u'.' + parts.fraction;
    return result;
}

double settled(double sum) {
    return val(format(sum, u"0.00000000"));
}

QString formatAmount(const QString& text) {
    if (text.isEmpty()) return text;
    const double value = val(text);
    const QString plain = numberText(value);
    const qsizetype point = plain.indexOf(u'.');
    const qsizetype decimals = point < 0 ? 0 : plain.size() - point - 1;
    switch (decimals) {
    case 0:
        return format(value, u"###,###,##0");
    case 1:
        return format(value, u"###,###,##0.0");
    case 3:
        return format(value, u"###,###,##0.000");
    case 4:
        return format(value, u"###,###,##0.0000");
    default:
        return format(value, u"###,###,##0.00");
    }
}

int byteLength(QStringView text) {
    int bytes = 0;
    for (const QChar c : text) {
        if (c.isLowSurrogate()) continue;
        bytes += c.unicode() < 0x80 ? 1 : 2;
    }
    return bytes;
}

QString truncateBytes(const QString& text, int maxBytes) {
    int bytes = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isLowSurrogate()) continue;
        bytes += text[i].unicode() < 0x80 ? 1 : 2;
        if (bytes > maxBytes) return text.left(i);
    }
    return text;
}

std::vector<QString> splitNumbers(QStringView text, int parts) {
    std::vector<QString> result(static_cast<size_t>(parts));
    size_t part = 0;
    for (const QChar c : text) {
        if (isDigit(c) || c == u'.') {
            result[part] += c;
        } else if (!result[part].isEmpty()) {
            if (part + 1 == result.size()) break;
            ++part;
        }
    }
    return result;
}

QDate dateOf8(const QString& text) {
    if (text.size() != 8 || !std::all_of(text.begin(), text.end(), isDigit)) return {};
    return QDate(text.left(4).toInt(), text.mid(4, 2).toInt(), text.mid(6, 2).toInt());
}

QString date8(const QDate& date) {
    return QString::number(date.year() * 10000 + date.month() * 100 + date.day()).rightJustified(8, u'0');
}

int validDate8(QStringView text) {
    if (text.isEmpty()) return 0;
    return dateOf8(text.toString()).isValid() ? 0 : Failed;
}

QString firstOfNextMonth(const QString& text) {
    const int month = text.mid(4, 2).toInt();
    if (month >= 12) return format(text.left(4).toInt() + 1, u"0000") + QStringLiteral("0101");
    return text.left(4) + format(month + 1, u"00") + QStringLiteral("01");
}

QString lastDayOfMonth(const QString& text) {
    QString last;
    for (int day = 27; day <= 32; ++day) {
        const QString candidate = text.left(6) + QString::number(day);
        if (validDate8(candidate) == 0) last = candidate;
    }
    return last;
}

QString nextCode(const QString& text) {
    QString code = text.trimmed();
    for (qsizetype i = code.size() - 1; i >= 0; --i) {
        const QChar c = code[i];
        if (c == u'-') continue;
        QChar next;
        bool carry = false;
        if (c < u'0') {
            next = u'0';
        } else if (c < u'9') {
            next = QChar(c.unicode() + 1);
        } else if (c == u'9') {
            next = u'0';
            carry = true;
        } else if (c < u'A') {
            next = u'A';
        } else if (c < u'Z') {
            next = QChar(c.unicode() + 1);
        } else {
            next = u'A';
            carry = true;
        }
        code[i] = next;
        if (!carry) return code;
    }
    return u'Z' + code;
}

QString nextItemCodeAfter(const QString& last) {
    const auto digit = std::find_if(last.begin(), last.end(), isDigit);
    if (digit == last.end()) return last;
    const qsizetype at = digit - last.begin();
    const QString number = last.mid(at);
    return last.left(at) + format(val(number) + 1, QString(number.size(), u'0'));
}

int upperKey(int key) {
    if (key < 0 || key > 0xffff) return key;
    return QChar(static_cast<char16_t>(key)).toUpper().unicode();
}

int filterKey(int key, int mode) {
    if (key == 8 || key == 13) return key;
    const auto digits = [&] { return key >= '0' && key <= '9'; };
    const auto oneOf = [&](const char* set) {
        return key > 0 && key < 0x80 &&
               std::string_view(set).find(static_cast<char>(key)) != std::string_view::npos;
    };
    switch (mode) {
    case 1:
        return digits() ? key : 0;
    case 2: {
        const int upper = upperKey(key);
        return upper >= 'A' && upper <= 'Z' ? upper : 0;
    }
    case 3:
        return digits() || oneOf(".-=") ? key : 0;
    case 4:
        return digits() || oneOf(" :-") ? key : 0;
    case 5:
        return digits() || oneOf(".+") ? key : 0;
    case 6:
        return oneOf("YN.*") ? key : 0;
    case 7:
        return oneOf("V.*") ? key : 0;
    case 8:
        return oneOf("YNHC.*") ? key : 0;
    case 9:
        return digits() || oneOf(".-+") ? key : 0;
    default:
        return key;
    }
}

QString filterText(const QString& text, int mode) {
    if (mode < 1 || mode > 9) return text;
    QString result;
    for (QChar c : text) {
        if (c >= u'\uff01' && c <= u'\uff5e') c = QChar(c.unicode() - 0xfee0);
        if (const int key = filterKey(c.unicode(), mode)) result += QChar(static_cast<char16_t>(key));
    }
    return result;
}

QString acceptedText(const QString& text, int mode, bool upper) {
    QString line = text;
    line.replace(QStringLiteral("\r\n"), QStringLiteral(" ")).replace(u'\n', u' ').replace(u'\r', u' ');
    return filterText(upper ? line.toUpper() : line, mode);
}

} // namespace liaowu
