#pragma once
#include <QString>
#include <exception>

namespace liaowu {

/// What a failed database operation throws. `text` is what the user reads.
class DatabaseError : public std::exception {
public:
    /// Native numbers are those of the server; the embedded engine maps its own to them where one fits.
    static constexpr int DuplicateKey = 2627;
    static constexpr int DuplicateKeyDesktop = -105121349;
    static constexpr int CastFailed = 8114;
    static constexpr int NotCovered = 102;
    static constexpr int InvalidObject = 208;
    static constexpr int InvalidColumn = 207;
    static constexpr int NullRefused = 515;
    static constexpr int CheckFailed = 547;
    /// Numbers of our own, negative so that no server uses them.
    static constexpr int Conflict = -2001;
    static constexpr int ConnectionFailed = -2002;
    static constexpr int Locked = -2003;
    static constexpr int ReadOnly = -2004;
    static constexpr int DiskFull = -2005;
    static constexpr int Usage = -2006;
    static constexpr int EngineFailed = -2007; ///< any other failure of the embedded engine
    static constexpr int Injected = -2099;

    DatabaseError(int number, QString message)
        : nativeError(number), text(std::move(message)), utf8(text.toUtf8()) {}
    const char* what() const noexcept override { return utf8.constData(); }
    bool isDuplicateKey() const { return nativeError == DuplicateKey || nativeError == DuplicateKeyDesktop; }

    int nativeError;
    QString text;

private:
    QByteArray utf8;
};

} // namespace liaowu
