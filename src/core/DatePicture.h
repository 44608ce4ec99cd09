#pragma once
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

#include "core/DateFormats.h"

namespace core::detail {

// One element of a Windows date or time picture: a run of one field letter ("yyyy", "tt") or a
// piece of literal text (letter null).
struct PictureElement {
    QChar letter;
    int count = 0;
    QString literal;
};

QList<PictureElement> pictureElements(const QString& picture);

// The date-time written in the picture, with the designators of the formats.
QString formatWithPicture(const QDateTime& value, const QString& picture,
                          const DateFormats& formats);

// Reads a text written in the picture, tolerating missing leading zeros and blanks. A picture
// of date fields alone gives midnight, one of time fields alone the zero date.
std::optional<QDateTime> parseWithPicture(const QString& text, const QString& picture,
                                          const DateFormats& formats);

}  // namespace core::detail
