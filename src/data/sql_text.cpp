#include "data/sql_text.h"
#include "data/number_text.h"
#include <algorithm>
#include <stdexcept>
#include <string>

namespace liaowu {

namespace {

using namespace Qt::StringLiterals;

bool isAscii(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

bool isNamePart(QChar c) {
    return c.isLetterOrNumber() || c == u'_' || c == u'@' || c == u'#' || c == u'$';
}

/// Writes one statement from left to right; `at` is always the next character of the template.
class Filler {
public:
    Filler(QStringView text, std::initializer_list<SqlValue> given)
        : statement(text), next(given.begin()), end(given.end()) {
        out.reserve(text.size() + 64);
    }

    QString fill() {
        while (at < statement.size()) {
            const QChar c = statement[at];
            if (c == u'\'') {
                literal();
            } else if (c == u'[') {
                name();
            } else if (isPlaceholder()) {
                number();
            } else {
                out += c;
                ++at;
            }
        }
        if (next != end) fail("more values than placeholders");
        return std::move(out);
    }

private:
    bool isPlaceholder() const {
        return statement[at] == u'{' && at + 1 < statement.size() && statement[at + 1] == u'}';
    }

    const SqlValue& take() {
        if (next == end) fail("fewer values than placeholders");
        at += 2;
        return *next++;
    }

    void literal() {
        const bool hasPrefix = prefixed();
        QString content;
        for (++at;;) {
            if (at >= statement.size()) fail("literal without end");
            const QChar c = statement[at];
            if (isPlaceholder()) {
                content += QString(take().text).replace(u"'"_s, u"''"_s);
            } else if (c == u'\'') {
                ++at;
                if (at >= statement.size() || statement[at] != u'\'') break;
                ++at;
                content += u"''";
            } else {
                content += c;
                ++at;
            }
        }
        // Without the prefix the server squeezes the literal through its code page and loses characters.
        if (!hasPrefix && !isAscii(content)) {
            // like'...' would become a name.
            if (!out.isEmpty() && isNamePart(out.back())) out += u' ';
            out += u'N';
        }
        out += u'\'' + content + u'\'';
    }

    /// The template wrote N'...' itself; the N of a word such as "in" is none.
    bool prefixed() const {
        if (!out.endsWith(u'N') && !out.endsWith(u'n')) return false;
        if (out.size() == 1) return true;
        return !isNamePart(out[out.size() - 2]);
    }

    void name() {
        out += statement[at++];
        for (;;) {
            if (at >= statement.size()) fail("name without end");
            if (isPlaceholder()) {
                out += QString(take().text).replace(u"]"_s, u"]]"_s);
                continue;
            }
            const QChar c = statement[at++];
            out += c;
            if (c != u']') continue;
            if (at >= statement.size() || statement[at] != u']') return;
            out += statement[at++];
        }
    }

    void number() {
        const SqlValue& value = take();
        if (!value.number) fail("text outside of quotes");
        // "a-{}" with -1 would begin a comment.
        if (value.text.startsWith(u'-') && out.endsWith(u'-')) out += u' ';
        out += value.text;
    }

    [[noreturn]] void fail(const char* what) const {
        throw std::logic_error(std::string(what) + " in: " + statement.toUtf8().toStdString());
    }

    QStringView statement;
    const SqlValue* next;
    const SqlValue* end;
    qsizetype at = 0;
    QString out;
};

} // namespace

SqlValue::SqlValue(double value) : text(numberText(value)), number(true) {}

SqlText sqlFrom(QStringView statement, std::initializer_list<SqlValue> values) {
    QString text = Filler(statement, values).fill();
    // No engine keeps a NUL inside a text, and drivers end the statement at it: the other characters stay.
    text.remove(QChar(u'\0'));
    return SqlText(std::move(text));
}

SqlText readyMadeSql(const QString& statement) {
    return SqlText(statement);
}

} // namespace liaowu
