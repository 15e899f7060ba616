#pragma once
#include <QString>
#include <exception>

namespace liaowu {

/// A rule that stops an operation in the midst of its transaction: nothing stays, and the user reads why.
class Refusal : public std::exception {
public:
    Refusal(QString boxTitle, QString boxText)
        : title(std::move(boxTitle)), text(std::move(boxText)), utf8(text.toUtf8()) {}
    const char* what() const noexcept override { return utf8.constData(); }
    QString title, text;

private:
    QByteArray utf8;
};

/// Somebody saved the document after it was loaded here.
struct SaveConflict {
    QString person, time;
};

/// What speaks against a save: the message, and where the focus belongs.
struct Finding {
    QString title, text;
    QString control; ///< field of the header; empty for a line
    int row = 0;     ///< line from 1
    QString column;  ///< grid title
};

} // namespace liaowu
