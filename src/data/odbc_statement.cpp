#include "data/odbc_statement.h"
#include <algorithm>

namespace liaowu {

namespace {

using namespace Qt::StringLiterals;
using dialect::Literal;

struct Word {
    QString text; ///< lower case; a bracketed or quoted name as it stands
    qsizetype begin = 0;
    qsizetype end = 0;
};

qsizetype endOfQuoted(const QString& text, qsizetype at, QChar close) {
    for (++at; at < text.size(); ++at) {
        if (text[at] != close) continue;
        if (at + 1 < text.size() && text[at + 1] == close)
            ++at;
        else
            return at + 1;
    }
    return at;
}

qsizetype endOfParentheses(const QString& text, qsizetype at) {
    int depth = 0;
    while (at < text.size()) {
        const QChar c = text[at];
        if (c == u'\'') {
            at = endOfQuoted(text, at, u'\'');
            continue;
        }
        if (c == u'[') {
            at = endOfQuoted(text, at, u']');
            continue;
        }
        ++at;
        if (c == u'(') ++depth;
        if (c == u')' && --depth == 0) break;
    }
    return at;
}

bool isNamePart(QChar c) {
    return c.isLetterOrNumber() || c == u'_' || c == u'#' || c == u'$' || c.isSurrogate();
}

/// The words of the outermost select: what stands in parentheses is one word.
std::vector<Word> outerWords(const QString& text) {
    std::vector<Word> words;
    for (qsizetype at = 0; at < text.size();) {
        const QChar c = text[at];
        if (c.isSpace()) {
            ++at;
            continue;
        }
        qsizetype end = at + 1;
        if (c == u'\'' || c == u'"') {
            end = endOfQuoted(text, at, c);
        } else if (c == u'[') {
            end = endOfQuoted(text, at, u']');
        } else if (c == u'(') {
            end = endOfParentheses(text, at);
        } else if (isNamePart(c)) {
            while (end < text.size() && isNamePart(text[end]))
                ++end;
        }
        words.push_back({text.mid(at, end - at).toLower(), at, end});
        at = end;
    }
    return words;
}

SqlText bracketed(const QString& name) {
    return sql(u"[{}]", name);
}

SqlText literal(const Literal& value) {
    switch (value.kind) {
    case Literal::Kind::Null:
        return sql(u"NULL");
    case Literal::Kind::Text:
        return sql(u"'{}'", value.text);
    case Literal::Kind::Integer:
        return sql(u"{}", value.integer);
    // All digits, so that an old value is found again by equality.
    case Literal::Kind::Float:
        return readyMadeSql(QString::number(value.number, 'e', 16));
    }
    return {};
}

SqlText condition(const ColumnValue& value) {
    if (value.value->kind == Literal::Kind::Null) return bracketed(*value.column) + sql(u" IS NULL");
    return bracketed(*value.column) + sql(u"=") + literal(*value.value);
}

template <typename Piece>
SqlText list(const ColumnValues& values, const SqlText& between, Piece piece) {
    SqlText text;
    for (const ColumnValue& value : values) {
        if (!text.isEmpty()) text += between;
        text += piece(value);
    }
    return text;
}

} // namespace

WritableSelect writableSelect(const QString& statement) {
    static constexpr std::array<QStringView, 6> refused{u"distinct", u"group", u"union",
                                                        u"join",     u"into",  u"having"};
    const std::vector<Word> words = outerWords(statement);
    const auto is = [](QStringView text) { return [text](const Word& word) { return word.text == text; }; };
    if (words.empty() || words.front().text != u"select") return {};
    for (const Word& word : words)
        if (std::find(refused.begin(), refused.end(), word.text) != refused.end()) return {};
    auto word = std::find_if(words.begin(), words.end(), is(u"from"));
    if (word == words.end() || ++word == words.end()) return {};
    const qsizetype begin = word->begin;
    if (word->text.startsWith(u'(')) return {};
    qsizetype end = word->end;
    for (++word; word != words.end() && word->text == u"."; ++word) {
        if (++word == words.end()) return {};
        end = word->end;
    }
    const bool plain =
        word == words.end() || word->text == u"where" || word->text == u"order" || word->text == u";";
    if (!plain) return {};
    return {statement.mid(begin, end - begin), statement.left(end) + u" WHERE 1=0"_s};
}

QString plainTableName(const QString& table) {
    const std::vector<Word> words = outerWords(table);
    if (words.empty()) return table;
    QString name = table.mid(words.back().begin, words.back().end - words.back().begin);
    if (name.startsWith(u'[') && name.endsWith(u']'))
        name = name.mid(1, name.size() - 2).replace(u"]]"_s, u"]"_s);
    if (name.startsWith(u'"') && name.endsWith(u'"'))
        name = name.mid(1, name.size() - 2).replace(u"\"\""_s, u"\""_s);
    return name;
}

SqlText insertStatement(const QString& table, const ColumnValues& values) {
    const SqlText head = sql(u"INSERT INTO ") + readyMadeSql(table);
    if (values.empty()) return head + sql(u" DEFAULT VALUES");
    return head + sql(u" (") +
           list(values, sql(u","), [](const ColumnValue& value) { return bracketed(*value.column); }) +
           sql(u") VALUES (") +
           list(values, sql(u","), [](const ColumnValue& value) { return literal(*value.value); }) +
           sql(u")");
}

SqlText updateStatement(const QString& table, const ColumnValues& changes, const ColumnValues& keys,
                        const ColumnValues& old) {
    const auto assignment = [](const ColumnValue& value) {
        return bracketed(*value.column) + sql(u"=") + literal(*value.value);
    };
    SqlText text = sql(u"UPDATE ") + readyMadeSql(table) + sql(u" SET ") +
                   list(changes, sql(u","), assignment) + sql(u" WHERE ") +
                   list(keys, sql(u" AND "), condition);
    if (!old.empty()) text += sql(u" AND ") + list(old, sql(u" AND "), condition);
    return text;
}

} // namespace liaowu
