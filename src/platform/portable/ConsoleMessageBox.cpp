#include "platform/portable/ConsoleMessageBox.h"

#include <QString>

#include <cstdio>

namespace platform::portable {

int ConsoleMessageBox::show(const std::u16string& text, const std::u16string& caption,
                            std::uint32_t) {
    const QString line =
        QString::fromStdU16String(caption) + ": " + QString::fromStdU16String(text);
    std::fputs((line + '\n').toUtf8().constData(), stderr);
    return mbresult::NotShown;
}

}  // namespace platform::portable
