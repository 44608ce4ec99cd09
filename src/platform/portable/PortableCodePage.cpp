#include "platform/portable/PortableCodePage.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <optional>

#include "platform/portable/BestFit.h"

namespace platform::portable {

namespace {

QByteArray converterName(unsigned codePage) {
    switch (codePage) {
        case 932:
            return "Shift_JIS";
        case 936:
            return "GBK";
        case 949:
            return "EUC-KR";
        case 950:
            return "Big5";
        case 65001:
            return "UTF-8";
        default:
            return "windows-" + QByteArray::number(codePage);
    }
}

bool isSingleByte(unsigned codePage) {
    return codePage != 932 && codePage != 936 && codePage != 949 && codePage != 950 &&
           codePage != 65001;
}

}  // namespace

PortableCodePage::PortableCodePage(unsigned codePage) : codePage_(codePage) {
    QByteArray name = converterName(codePage);
    known_ = QStringDecoder(name.constData()).isValid();
    if (!known_) {
        name = "windows-1252";
    }
    converterName_ = name.toStdString();
    singleByte_ = !known_ || isSingleByte(codePage);
    if (!singleByte_) {
        return;
    }
    QStringDecoder decoder(converterName_.c_str());
    toAnsi_.assign(0x10000, -1);
    for (int byte = 0; byte < 256; ++byte) {
        const QString wide = decoder.decode(QByteArray(1, static_cast<char>(byte)));
        // A byte the code page leaves undefined stands for the control character of the
        // same value, as on Windows, so that it survives a round trip.
        const char16_t unit = (wide.size() == 1 && wide[0] != QChar::ReplacementCharacter)
                                  ? wide[0].unicode()
                                  : static_cast<char16_t>(byte);
        toWide_[byte] = unit;
        if (toAnsi_[unit] < 0) {
            toAnsi_[unit] = std::int16_t(byte);
        }
    }
    for (size_t unit = 0; unit < toAnsi_.size(); ++unit) {
        const char16_t fit = bestFitLetter(char16_t(unit));
        if (toAnsi_[unit] < 0 && fit != 0) {
            toAnsi_[unit] = toAnsi_[fit];
        }
    }
}

std::u16string PortableCodePage::toWide(const std::string& ansi) const {
    if (singleByte_) {
        std::u16string wide(ansi.size(), u'\0');
        for (size_t i = 0; i < ansi.size(); ++i) {
            wide[i] = toWide_[static_cast<unsigned char>(ansi[i])];
        }
        return wide;
    }
    QStringDecoder decoder(converterName_.c_str());
    const QString text = decoder.decode(QByteArrayView(ansi.data(), qsizetype(ansi.size())));
    return text.toStdU16String();
}

std::string PortableCodePage::toAnsi(const std::u16string& wide) const {
    std::string ansi;
    ansi.reserve(wide.size());
    if (singleByte_) {
        for (char16_t unit : wide) {
            const std::int16_t byte = toAnsi_[unit];
            ansi.push_back(byte < 0 ? '?' : static_cast<char>(byte));
        }
        return ansi;
    }
    // Character by character, so that one the code page lacks becomes its best fit or "?"
    // instead of the converter's substitution byte. An ICU converter that met such a
    // character stays in error whatever resetState says, so each failure takes a new one.
    std::optional<QStringEncoder> encoder;
    const auto encode = [this, &encoder](QStringView character) -> std::optional<QByteArray> {
        if (!encoder) {
            encoder.emplace(converterName_.c_str());
        }
        const QByteArray bytes = encoder->encode(character);
        if (encoder->hasError()) {
            encoder.reset();
            return std::nullopt;
        }
        return bytes;
    };
    const QString text = QString::fromStdU16String(wide);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qsizetype length = (text[i].isHighSurrogate() && i + 1 < text.size()) ? 2 : 1;
        auto bytes = encode(QStringView(text).mid(i, length));
        const QChar fit(bestFitLetter(text[i].unicode()));
        if (!bytes && !fit.isNull()) {
            bytes = encode(QStringView(&fit, 1));
        }
        if (bytes) {
            ansi.append(bytes->constData(), size_t(bytes->size()));
        } else {
            ansi.push_back('?');
        }
        i += length - 1;
    }
    return ansi;
}

}  // namespace platform::portable
