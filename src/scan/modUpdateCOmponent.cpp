#include "scan/modUpdateCOmponent.h"

#include "core/AnsiText.h"
#include "scan/UpdateRecord.h"
#include "state/SystemDateFormats.h"

namespace scan {

QString EncodeQueryValue(const QString& text, const platform::CodePage& codePage) {
    QString encoded;
    encoded.reserve(text.size() * 3);
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        if ((code >= u'0' && code <= u'9') || (code >= u'A' && code <= u'Z') ||
            (code >= u'a' && code <= u'z')) {
            encoded += c;
            continue;
        }
        for (const char byte : core::toAnsi(codePage, QString(c))) {
            encoded += u'%' + QStringLiteral("%1").arg(quint8(byte), 2, 16, QChar(u'0')).toUpper();
        }
    }
    return encoded;
}

modUpdateCOmponent::modUpdateCOmponent(platform::Platform& platform,
                                       platform::net::InetControl& inet)
    : platform_(platform), inet_(inet) {
    std::string folder;
    if (platform.environment.SHGetFolderPathA(platform::csidl::CommonAppData, &folder) == 0) {
        dataFolder_ = core::fromAnsi(platform.codePage, folder);
    }
}

void modUpdateCOmponent::log(const QString& text) {
    if (!logFlag_) {
        return;
    }
    const QString file = dataFolder_ + QStringLiteral("\\Tallowick\\Settings\\UCLog.txt");
    platform_.files.appendFile(core::toAnsi(platform_.codePage, file),
                               core::toAnsi(platform_.codePage, state::NowText(platform_) + text +
                                                                    QStringLiteral("\r\n")));
}

QString modUpdateCOmponent::UpdateURL(const QString& app, const QString& pub, const QString& fvr,
                                      const QString& pvr, const QString& exe, bool bet,
                                      const QString& uid, const QString& cuv,
                                      const QString& win) const {
    return serverBase_ +
           (testFlag_ ? QStringLiteral("/tw/UpdatesServer/Test/updates.asp?app=")
                      : QStringLiteral("/tw/UpdatesServer/updates.asp?app=")) +
           app + QStringLiteral("&pub=") + pub + QStringLiteral("&fvr=") + fvr +
           QStringLiteral("&pvr=") + pvr + QStringLiteral("&exe=") + exe + QStringLiteral("&bet=") +
           (bet ? u'1' : u'0') + QStringLiteral("&uid=") + uid + QStringLiteral("&cuv=") + cuv +
           QStringLiteral("&win=") + win;
}

QString modUpdateCOmponent::RetrieveUpdate(const QString& app, const QString& pub,
                                           const QString& fvr, const QString& pvr,
                                           const QString& exe, bool bet, const QString& uid,
                                           const QString& cuv, const QString& win) {
    if (accessKey_ != QLatin1String(kAccessKey)) {
        UpdateRecord refused;
        refused.Status = updatestatus::NotAllowed;
        busy_ = false;
        return PackUpdateRecord(refused);
    }
    log(QStringLiteral(" - RetrieveUpdate: Received APP=") + app +
        QStringLiteral(" - Received PUB=") + pub + QStringLiteral(" - Received FVR=") + fvr +
        QStringLiteral(" - Received PVR=") + pvr + QStringLiteral(" - Received EXE=") + exe);
    if (busy_) {
        log(QStringLiteral(" - RetrieveUpdate: Skipped"));
        return QStringLiteral("ERR_CODE:X0");
    }
    busy_ = true;
    const QByteArray reply = inet_.OpenURL(UpdateURL(app, pub, fvr, pvr, exe, bet, uid, cuv, win));
    const UpdateRecord record =
        ParseUpdateReply(core::fromAnsi(platform_.codePage, reply.toStdString()))
            .value_or(UpdateRecord{});
    busy_ = false;
    return PackUpdateRecord(record);
}

}  // namespace scan
