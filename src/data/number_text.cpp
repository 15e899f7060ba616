#include "data/number_text.h"
#include <cmath>

namespace liaowu {

QString numberText(double value) {
    if (!std::isfinite(value) || value == 0) return QStringLiteral("0");
    // 15 significant digits, written out: the exponent form never enters the database.
    const QString text = QString::number(value, 'e', 14);
    const qsizetype e = text.indexOf(u'e');
    const int exponent = text.mid(e + 1).toInt();
    const bool negative = text.startsWith(u'-');
    QString digits = text.mid(negative ? 1 : 0, e - (negative ? 1 : 0)).remove(u'.');
    while (digits.size() > 1 && digits.endsWith(u'0'))
        digits.chop(1);
    QString result;
    if (exponent < 0) {
        result = QStringLiteral("0.") + QString(-exponent - 1, u'0') + digits;
    } else if (digits.size() <= exponent + 1) {
        result = digits + QString(exponent + 1 - digits.size(), u'0');
    } else {
        result = digits.left(exponent + 1) + u'.' + digits.mid(exponent + 1);
    }
    return negative ? u'-' + result : result;
}

double val(QStringView text) {
    QByteArray number;
    qsizetype i = 0;
    const auto blank = [&](QChar c) {
        return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\u3000';
    };
    while (i < text.size() && blank(text[i]))
        ++i;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+'))
        number += static_cast<char>(text[i++].unicode());
    bool point = false;
    for (; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c >= u'0' && c <= u'9') {
            number += static_cast<char>(c);
        } else if (c == u'.' && !point) {
            point = true;
            number += '.';
        } else {
            break;
        }
    }
    const double value = number.toDouble();
    return std::isfinite(value) ? value : 0;
}

} // namespace liaowu
