#include "server/CatalogProduct.h"

#include <algorithm>

#include "server/NameNormaliser.h"

namespace server {

namespace {

QString text(const std::string& utf8) {
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

}  // namespace

QString paddedFileVersion(const QString& version) {
    const QStringList parts = version.split(u'.');
    if (parts.size() > 4) {
        return {};
    }
    QStringList padded;
    for (const QString& part : parts) {
        bool number =
            !part.isEmpty() && part.size() <= 5 &&
            std::all_of(part.begin(), part.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
        const uint value = number ? part.toUInt() : 0;
        if (!number || value > 65535) {
            return {};
        }
        padded += QString::number(value);
    }
    while (padded.size() < 4) {
        padded += QStringLiteral("0");
    }
    return padded.join(u'.');
}

CatalogProduct productFromEntry(const demo::CatalogEntry& entry) {
    CatalogProduct product;
    product.packageId = text(entry.packageId);
    product.name = text(entry.name).trimmed();
    product.productVersion = text(entry.version).trimmed();
    product.lastUpdate = text(entry.lastUpdate).trimmed();
    const qsizetype point = product.packageId.indexOf(u'.');
    product.publisher = point < 0 ? QString() : product.packageId.left(point);
    const QString productPart = product.packageId.mid(point + 1);
    product.fileVersion = paddedFileVersion(product.productVersion);
    product.comment = QStringLiteral("Latest release ") + product.productVersion;
    if (product.lastUpdate.size() >= 10) {
        product.comment += QStringLiteral(" of ") + product.lastUpdate.left(10);
    }
    const QString alias = nameWords(identifierText(productPart)).join(u' ');
    if (!alias.isEmpty()) {
        product.aliases += alias;
    }
    return product;
}

}  // namespace server
