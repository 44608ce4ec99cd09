#include "localisation/Utf8Text.h"

#include <QStringDecoder>

namespace localisation {

QString decodeUtf8(std::string_view bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom |
                                                     QStringDecoder::Flag::Stateless);
    return decoder.decode(QByteArrayView(bytes.data(), qsizetype(bytes.size())));
}

std::string encodeUtf8(const QString& text) {
    // Shares the caller's text until a lone surrogate has to be replaced.
    QString whole = text;
    for (qsizetype i = 0; i < whole.size(); ++i) {
        const QChar unit = whole.at(i);
        if (unit.isHighSurrogate() && i + 1 < whole.size() && whole.at(i + 1).isLowSurrogate()) {
            ++i;
        } else if (unit.isSurrogate()) {
            whole[i] = QChar::ReplacementCharacter;
        }
    }
    const QByteArray bytes = whole.toUtf8();
    return std::string(bytes.constData(), std::size_t(bytes.size()));
}

}  // namespace localisation
