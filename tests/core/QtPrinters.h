#pragma once
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <ostream>

// Readable GoogleTest output for the Qt values these tests compare.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& list, std::ostream* out) {
    *out << '{';
    for (qsizetype i = 0; i < list.size(); ++i) {
        *out << (i > 0 ? ", " : "") << '"' << list[i].toStdString() << '"';
    }
    *out << '}';
}

inline void PrintTo(const QDateTime& value, std::ostream* out) {
    *out << (value.isValid() ? value.toString(Qt::ISODate).toStdString() : "invalid");
}
