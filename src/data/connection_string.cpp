#include "data/connection_string.h"
#include "data/database_error.h"
#include <QFile>
#include <QStringList>
#include <optional>
#include <vector>

namespace liaowu {

namespace {

using namespace Qt::StringLiterals;

struct Pair {
    QString key;
    QString value;
};

/// OLE DB quotes values with ' or " and doubles the sign inside; ODBC takes braces, which end at "};": not every
/// driver knows a doubled one.
enum class Quoting { OleDb, Odbc };

struct Pairs {
    std::vector<Pair> list;
    QString fault; ///< why reading stopped; without any value

    const QString* find(QStringView key) const {
        for (const Pair& pair : list)
            if (pair.key.compare(key, Qt::CaseInsensitive) == 0) return &pair.value;
        return nullptr;
    }
};

class Reader {
public:
    Reader(const QString& whole, Quoting style) : text(whole), quoting(style) {}

    Pairs read() {
        for (;;) {
            while (at < text.size() && (text[at] == u';' || text[at].isSpace()))
                ++at;
            if (at >= text.size() || !readPair()) return std::move(pairs);
        }
    }

private:
    bool readPair() {
        const qsizetype equals = text.indexOf(u'=', at);
        const qsizetype semicolon = text.indexOf(u';', at);
        if (equals < 0 || (semicolon >= 0 && semicolon < equals)) {
            // The piece may be the rest of a password with a semicolon, so it is not shown.
            pairs.fault = u"連線字串的第 %1 項缺少「=」!"_s.arg(pairs.list.size() + 1);
            return false;
        }
        Pair pair{text.mid(at, equals - at).trimmed(), {}};
        at = equals + 1;
        while (at < text.size() && text[at].isSpace())
            ++at;
        const std::optional<QChar> close = closingSign();
        if (!close) {
            const qsizetype stop = text.indexOf(u';', at);
            pair.value = text.mid(at, stop < 0 ? -1 : stop - at).trimmed();
            at = stop < 0 ? text.size() : stop;
        } else if (!readQuoted(pair, *close)) {
            return false;
        }
        pairs.list.push_back(std::move(pair));
        return true;
    }

    std::optional<QChar> closingSign() const {
        if (at >= text.size()) return {};
        const QChar c = text[at];
        if (quoting == Quoting::Odbc) return c == u'{' ? std::optional<QChar>(u'}') : std::nullopt;
        return c == u'"' || c == u'\'' ? std::optional<QChar>(c) : std::nullopt;
    }

    bool readQuoted(Pair& pair, QChar close) {
        for (++at; at < text.size() && !closes(close); ++at) {
            if (quoting == Quoting::OleDb && text[at] == close) ++at;
            pair.value += text[at];
        }
        if (at >= text.size()) {
            pairs.fault = u"連線字串的「%1」引號未結束!"_s.arg(pair.key.left(40));
            return false;
        }
        for (++at; at < text.size() && text[at].isSpace();)
            ++at;
        if (at < text.size() && text[at] != u';') {
            pairs.fault = u"連線字串的「%1」引號之後有多餘的字!"_s.arg(pair.key.left(40));
            return false;
        }
        return true;
    }

    bool closes(QChar close) const {
        if (text[at] != close) return false;
        const QStringView rest = QStringView(text).mid(at + 1);
        if (quoting == Quoting::OleDb) return !rest.startsWith(close);
        return rest.trimmed().isEmpty() || rest.trimmed().startsWith(u';');
    }

    const QString& text;
    Quoting quoting;
    qsizetype at = 0;
    Pairs pairs;
};

[[noreturn]] void refuse(const QString& text) {
    throw DatabaseError(DatabaseError::ConnectionFailed, text);
}

[[noreturn]] void refuseKey(const QString& key, const QString& why) {
    refuse(u"看不懂連線字串的「%1」:%2!"_s.arg(key.left(40), why));
}

bool isOneOf(QStringView key, std::initializer_list<QStringView> names) {
    for (const QStringView name : names)
        if (key.compare(name, Qt::CaseInsensitive) == 0) return true;
    return false;
}

/// Settings of OLE DB that the wizards write and that mean nothing here.
bool isIgnored(QStringView key) {
    return isOneOf(key, {u"Provider",
                         u"Persist Security Info",
                         u"Auto Translate",
                         u"Packet Size",
                         u"Workstation ID",
                         u"Use Procedure for Prepare",
                         u"Use Encryption for Data",
                         u"Tag with column collation when possible",
                         u"Connect Timeout",
                         u"Connection Timeout",
                         u"General Timeout",
                         u"Application Name",
                         u"Language",
                         u"Current Language",
                         u"Locale Identifier",
                         u"DataTypeCompatibility",
                         u"MARS Connection",
                         u"MultipleActiveResultSets",
                         u"OLE DB Services",
                         u"Encrypt",
                         u"TrustServerCertificate",
                         u"Trust Server Certificate",
                         u"Extended Properties",
                         u"Network Library",
                         u"Integrated Security",
                         u"Trusted_Connection",
                         u"Mode",
                         u"Prompt",
                         u"Cache Authentication",
                         u"Mask Password",
                         u"Encrypt Password"});
}

ConnectionTarget embeddedTarget(const Pairs& pairs) {
    ConnectionTarget target;
    for (const Pair& pair : pairs.list) {
        if (isOneOf(pair.key, {u"Data Source", u"DataSource"})) {
            target.file = pair.value;
        } else if (isOneOf(pair.key, {u"Mode"})) {
            target.readOnly = isOneOf(pair.value, {u"Read", u"ReadOnly"});
            if (!target.readOnly && !isOneOf(pair.value, {u"ReadWrite"}))
                refuseKey(pair.key, u"不支援這個值"_s);
        } else if (!isOneOf(pair.key, {u"Provider", u"Persist Security Info"})) {
            refuseKey(pair.key, u"SQLite 沒有這個設定"_s);
        }
    }
    if (target.file.isEmpty()) refuseKey(u"Data Source"_s, u"沒有指定資料庫檔案"_s);
    if (target.file.contains(QChar(u'\0'))) refuseKey(u"Data Source"_s, u"檔名含有不可用的字元"_s);
    return target;
}

/// In braces where a value would end early or lose its blanks. The driver ends such a value at "};" and knows no
/// doubling, so a value that holds these two cannot be said.
QString odbcValue(const QString& key, const QString& value) {
    if (!value.contains(u';') && !value.startsWith(u'{') && value == value.trimmed()) return value;
    if (value.contains(u"};")) refuseKey(key, u"不可含有「};」"_s);
    return u'{' + value + u'}';
}

/// The driver's file where Debian puts it, as not every installation registers its name.
QString freeTdsDriver() {
    const QString file = u"/usr/lib/x86_64-linux-gnu/odbc/libtdsodbc.so"_s;
    return QFile::exists(file) ? file : u"FreeTDS"_s;
}

struct ServerLogin {
    QString server, port, database, user, password;
};

void takeServer(ServerLogin& login, const QString& value) {
    QString server = value;
    if (server.startsWith(u"tcp:", Qt::CaseInsensitive)) server.remove(0, 4);
    const qsizetype comma = server.lastIndexOf(u',');
    if (comma >= 0) {
        login.port = server.mid(comma + 1).trimmed();
        server.truncate(comma);
    }
    login.server = server.trimmed();
}

ConnectionTarget serverTarget(const Pairs& pairs) {
    ServerLogin login;
    for (const Pair& pair : pairs.list) {
        if (isOneOf(pair.key,
                    {u"Data Source", u"DataSource", u"Server", u"Address", u"Addr", u"Network Address"})) {
            takeServer(login, pair.value);
        } else if (isOneOf(pair.key, {u"Initial Catalog", u"Database"})) {
            login.database = pair.value;
        } else if (isOneOf(pair.key, {u"User ID", u"UserID", u"UID", u"User"})) {
            login.user = pair.value;
        } else if (isOneOf(pair.key, {u"Password", u"PWD"})) {
            login.password = pair.value;
        } else if (!isIgnored(pair.key)) {
            refuseKey(pair.key, u"不認得的設定"_s);
        }
    }
    if (login.server.isEmpty()) refuseKey(u"Data Source"_s, u"沒有指定伺服器"_s);
    bool number = true;
    if (!login.port.isEmpty()) login.port.toUShort(&number);
    if (!number) refuseKey(u"Data Source"_s, u"連接埠不是數字"_s);

    ConnectionTarget target{ConnectionTarget::Engine::Odbc, {}, false, {}};
    const auto add = [&](const QString& key, const QString& value) {
        if (!value.isEmpty()) target.odbcString += key + u'=' + odbcValue(key, value) + u';';
    };
    add(u"Driver"_s, freeTdsDriver());
    add(u"Server"_s, login.server);
    add(u"Port"_s, login.port);
    add(u"Database"_s, login.database);
    add(u"UID"_s, login.user);
    add(u"PWD"_s, login.password);
    target.odbcString += u"TDS_Version=7.4;ClientCharset=UTF-8";
    return target;
}

ConnectionTarget rawOdbcTarget(const QString& text, const Pairs& pairs) {
    if (!pairs.fault.isEmpty()) refuse(pairs.fault);
    const QString* driver = pairs.find(u"Driver");
    if (!driver && !pairs.find(u"DSN") && !pairs.find(u"FILEDSN"))
        refuseKey(pairs.list.front().key, u"缺少 Provider、Driver 或 DSN"_s);
    ConnectionTarget target{ConnectionTarget::Engine::Odbc, {}, false, text.trimmed()};
    while (target.odbcString.endsWith(u';'))
        target.odbcString.chop(1);
    // Left to its defaults this driver speaks an old protocol and turns Chinese into question marks.
    const bool freeTds = driver && (driver->contains(u"FreeTDS", Qt::CaseInsensitive) ||
                                    driver->contains(u"tdsodbc", Qt::CaseInsensitive));
    if (freeTds && !pairs.find(u"TDS_Version")) target.odbcString += u";TDS_Version=7.4";
    if (freeTds && !pairs.find(u"ClientCharset")) target.odbcString += u";ClientCharset=UTF-8";
    return target;
}

} // namespace

ConnectionTarget parseConnectionString(const QString& text) {
    const Pairs pairs = Reader(text, Quoting::OleDb).read();
    const QString* provider = pairs.find(u"Provider");
    if (!provider) {
        const Pairs raw = Reader(text, Quoting::Odbc).read();
        if (raw.list.empty()) refuse(raw.fault.isEmpty() ? u"連線字串是空白!"_s : raw.fault);
        return rawOdbcTarget(text, raw);
    }
    if (!pairs.fault.isEmpty()) refuse(pairs.fault);
    // Registered names carry a version, as in "SQLOLEDB.1".
    const QString engine = provider->section(u'.', 0, 0);
    if (isOneOf(engine, {u"SQLite"})) return embeddedTarget(pairs);
    if (isOneOf(engine,
                {u"SQLOLEDB", u"SQLNCLI", u"SQLNCLI10", u"SQLNCLI11", u"MSOLEDBSQL", u"MSOLEDBSQL19"}))
        return serverTarget(pairs);
    refuseKey(u"Provider"_s, u"不支援的資料庫"_s);
}

QString connectionStringFor(const QString& fileOrConnectionString) {
    for (const QString& piece : fileOrConnectionString.split(u';')) {
        const QString key = piece.section(u'=', 0, 0).trimmed();
        if (piece.contains(u'=') && isOneOf(key, {u"Provider", u"Driver", u"DSN", u"FILEDSN"}))
            return fileOrConnectionString;
    }
    const QString& file = fileOrConnectionString;
    const bool plain =
        file == file.trimmed() && !file.contains(u';') && !file.startsWith(u'"') && !file.startsWith(u'\'');
    return u"Provider=SQLite;Data Source="_s +
           (plain ? file : u'"' + QString(file).replace(u"\""_s, u"\"\""_s) + u'"');
}

} // namespace liaowu
