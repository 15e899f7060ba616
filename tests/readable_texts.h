#pragma once
#include <QStringList>
#include <ostream>

// Texts in failed checks are read by people. Every test is compiled with this: a test that was not would print bytes for all.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& texts, std::ostream* out) {
    *out << '[' << texts.join(QStringLiteral("]\n [")).toStdString() << ']';
}
