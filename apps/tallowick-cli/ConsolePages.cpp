#include "ConsolePages.h"

#include "Cli.h"
#include "platform/MessageBox.h"

namespace cli {

int answerOnConsole(const QString& text, std::uint32_t style) {
    if ((style & 0x0F) == platform::mbstyle::YesNo) {
        Context::out(QStringLiteral("question\t") +
                     QString(text).replace(QStringLiteral("\r\n"), QStringLiteral(" ")) +
                     QStringLiteral("\tYes"));
        return platform::mbresult::Yes;
    }
    Context::out(text);
    return platform::mbresult::Ok;
}

void ConsolePages::setScanNowData(int index, const QString& caption) {
    if (index >= 0 && index < 6) {
        captions[index] = caption;
    }
}

}  // namespace cli
