#include "server/Windows1252.h"

#include "platform/portable/PortableCodePage.h"

namespace server {

namespace {

const platform::portable::PortableCodePage& codePage() {
    static const platform::portable::PortableCodePage page(1252);
    return page;
}

}  // namespace

QString fromWindows1252(QByteArrayView bytes) {
    const std::u16string wide =
        codePage().toWide(std::string(bytes.data(), std::size_t(bytes.size())));
    return QString::fromUtf16(wide.data(), qsizetype(wide.size()));
}

QByteArray toWindows1252(QStringView text) {
    const std::string ansi = codePage().toAnsi(
        std::u16string(reinterpret_cast<const char16_t*>(text.utf16()), std::size_t(text.size())));
    return QByteArray(ansi.data(), qsizetype(ansi.size()));
}

}  // namespace server
