// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <ostream>

// What a failed comparison shows of Qt's texts.

inline void PrintTo(const QString &text, std::ostream *out) {
    *out << '"' << qPrintable(text) << '"';
}

inline void PrintTo(const QByteArray &bytes, std::ostream *out) {
    *out << '"' << bytes.constData() << '"';
}

inline void PrintTo(const QList<QByteArray> &lines, std::ostream *out) {
    *out << '[' << lines.join(", ").constData() << ']';
}
