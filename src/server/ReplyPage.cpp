#include "server/ReplyPage.h"

#include <array>

#include "server/Windows1252.h"

namespace server {

namespace {

constexpr std::array<QStringView, 8> kTags = {u"FVR1", u"PVR1", u"FVR2", u"PVR2",
                                              u"HUR",  u"DUR",  u"COM",  u"UID"};
constexpr QStringView kErrorMark = u"ERR_CODE:";

const QByteArray kPageStart =
    "<!DOCTYPE html>\r\n<html><head><title>Tallowick update information</title></head>"
    "<body>\r\n";
const QByteArray kPageEnd = "\r\n</body></html>\r\n";

// The length of a tag name that ends just before `at`, or 0.
qsizetype tagEndingAt(const QString& text, qsizetype at) {
    for (QStringView tag : kTags) {
        if (at >= tag.size() && QStringView(text).mid(at - tag.size(), tag.size()) == tag) {
            return tag.size();
        }
    }
    return 0;
}

// The length of a tag name that starts at `at`, or 0.
qsizetype tagStartingAt(const QString& text, qsizetype at) {
    for (QStringView tag : kTags) {
        if (QStringView(text).mid(at).startsWith(tag)) {
            return tag.size();
        }
    }
    return 0;
}

enum class Kind { Text, Address };

QString percent(QChar c) {
    return QStringLiteral("%%1").arg(c.unicode() & 0xFF, 2, 16, QLatin1Char('0')).toUpper();
}

QString safeValue(const QString& value, Kind kind) {
    QString text;
    text.reserve(value.size() + 8);
    for (QChar c : value) {
        if (c == u'"') {
            text += kind == Kind::Text ? QStringLiteral("'") : QStringLiteral("%22");
        } else if (c.unicode() < 0x20 || c.unicode() == 0x7F) {
            text += kind == Kind::Text ? QString(u' ') : percent(c);
        } else {
            text += c;
        }
    }
    // "ERR_CODE:" would make the whole reply a failure.
    for (qsizetype at = text.indexOf(kErrorMark); at >= 0; at = text.indexOf(kErrorMark, at + 1)) {
        const qsizetype colon = at + kErrorMark.size() - 1;
        text.replace(colon, 1, kind == Kind::Text ? QStringLiteral(" :") : QStringLiteral("%3A"));
    }
    // A "=" next to a tag name would be read as a tag.
    QString out;
    out.reserve(text.size() + 8);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'=' && (tagEndingAt(text, i) > 0 || tagStartingAt(text, i + 1) > 0)) {
            out += kind == Kind::Text ? QStringLiteral(" = ") : QStringLiteral("%3D");
        } else {
            out += c;
        }
    }
    // The value stands between "=" of its opening tag and "=" of its closing tag.
    if (tagStartingAt(out, 0) > 0) {
        out = kind == Kind::Text ? u' ' + out : percent(out[0]) + out.mid(1);
    }
    if (const qsizetype tag = tagEndingAt(out, out.size()); tag > 0) {
        if (kind == Kind::Text) {
            out += u' ';
        } else {
            const qsizetype first = out.size() - tag;
            out = out.left(first) + percent(out[first]) + out.mid(first + 1);
        }
    }
    return out;
}

QByteArray page(const QString& payload) {
    return kPageStart + "<!-- UPDATEINFORMATION=\"" + toWindows1252(payload) +
           "\"=UPDATEINFORMATION -->" + kPageEnd;
}

}  // namespace

QString safeText(const QString& value) {
    return safeValue(value, Kind::Text);
}

QString safeAddress(const QString& value) {
    return safeValue(value, Kind::Address);
}

QByteArray foundPage(const UpdateInformation& information) {
    const auto field = [](QStringView tag, const QString& value) {
        return tag.toString() + u'=' + value + u'=' + tag.toString();
    };
    const QString payload = field(u"FVR1", safeText(information.fileVersion)) +
                            field(u"PVR1", safeText(information.productVersion)) +
                            field(u"FVR2", {}) + field(u"PVR2", {}) + field(u"HUR", {}) +
                            field(u"DUR", safeAddress(information.downloadUrl)) +
                            field(u"COM", safeText(information.comment)) +
                            field(u"UID", safeText(information.uid));
    return page(payload);
}

QByteArray errorPage(const QString& code, const QString& description) {
    QString text = description;
    text.replace(u'"', u'\'');
    text.replace(u'|', u'/');
    return page(QStringLiteral("ERR_CODE:") + code + QStringLiteral("|ERR_DESC:") + text);
}

QByteArray pageWithoutMarker() {
    return kPageStart + "<p>Tallowick update information is not available here.</p>" + kPageEnd;
}

}  // namespace server
