#include "ConsoleAnswers.h"

#include <QString>

#include "Cli.h"

namespace cli {

int ConsoleAnswers::show(const std::u16string& text, const std::u16string&, std::uint32_t style) {
    const QString line = QString::fromStdU16String(text);
    if ((style & 0x0F) == platform::mbstyle::YesNo) {
        Context::out(QStringLiteral("question\t") +
                     QString(line).replace(QStringLiteral("\r\n"), QStringLiteral(" ")) +
                     QStringLiteral("\tYes"));
        return platform::mbresult::Yes;
    }
    if ((style & 0xF0) == platform::mbstyle::IconStop) {
        Context::err(line);
    } else {
        Context::out(line);
    }
    return platform::mbresult::Ok;
}

}  // namespace cli
