#pragma once
#include <QString>

#include <string>

#include "platform/CodePage.h"

namespace core {

// Text crosses the platform interfaces in the machine's ANSI code page.
inline QString fromAnsi(const platform::CodePage& codePage, const std::string& bytes) {
    return QString::fromStdU16String(codePage.toWide(bytes));
}

inline std::string toAnsi(const platform::CodePage& codePage, const QString& text) {
    return codePage.toAnsi(text.toStdU16String());
}

}  // namespace core
