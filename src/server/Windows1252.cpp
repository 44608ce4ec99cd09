#include "server/Windows1252.h"

#include <array>

namespace server {

namespace {

// Bytes 0x80 to 0x9F; the rest of the code page is Latin-1. The five bytes Windows leaves
// undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) keep their own value.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char toByte(char16_t unit) {
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) {
        return char(unit);
    }
    for (std::size_t i = 0; i < kHighControls.size(); ++i) {
        if (kHighControls[i] == unit) {
            return char(0x80 + i);
        }
    }
    return '?';
}

}  // namespace

QString fromWindows1252(QByteArrayView bytes) {
    QString text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += QChar(value >= 0x80 && value < 0xA0 ? kHighControls[value - 0x80] : value);
    }
    return text;
}

QByteArray toWindows1252(QStringView text) {
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar unit : text) {
        bytes += toByte(unit.unicode());
    }
    return bytes;
}

}  // namespace server
