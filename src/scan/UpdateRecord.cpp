#include "scan/UpdateRecord.h"

#include <QStringList>

#include "core/BasicNumber.h"
#include "core/BasicText.h"

namespace scan {

namespace {

const QString kSeparator = QStringLiteral(".:M|B:.");
const QString kStart = QStringLiteral("<!-- UPDATEINFORMATION=\"");
const QString kEnd = QStringLiteral("\"=UPDATEINFORMATION -->");
const QString kErrCode = QStringLiteral("ERR_CODE:");
const QString kErrDesc = QStringLiteral("|ERR_DESC:");

// The text between the first place of `open` and the first place of `close`.
std::optional<QString> cut(const QString& payload, const QString& name) {
    const qsizetype open = payload.indexOf(name + u'=');
    const qsizetype close = payload.indexOf(u'=' + name);
    const qsizetype from = open + name.size() + 1;
    if (open < 0 || close < from) {
        return std::nullopt;
    }
    return payload.mid(from, close - from);
}

}  // namespace

std::optional<UpdateRecord> ParseUpdateReply(const QString& reply) {
    UpdateRecord record;
    if (reply.isEmpty()) {
        record.Status = updatestatus::EmptyReply;
        return record;
    }
    const qsizetype start = reply.indexOf(kStart);
    if (start < 0) {
        record.Status = updatestatus::NoMarker;
        return record;
    }
    const qsizetype from = start + kStart.size();
    const qsizetype end = reply.indexOf(kEnd);
    if (end < from) {
        return std::nullopt;
    }
    const QString payload = reply.mid(from, end - from);
    if (payload.contains(kErrCode)) {
        const qsizetype code = payload.indexOf(kErrCode) + kErrCode.size();
        const qsizetype desc = payload.indexOf(kErrDesc);
        if (desc < code) {
            return std::nullopt;
        }
        record.ErrCode = payload.mid(code, desc - code);
        record.ErrDesc = payload.mid(desc + kErrDesc.size());
        record.Status = updatestatus::ServerError;
        return record;
    }
    QString* fields[] = {&record.FVR1, &record.PVR1, &record.FVR2, &record.PVR2,
                         &record.HUR,  &record.DUR,  &record.COM,  &record.UID};
    const char* names[] = {"FVR1", "PVR1", "FVR2", "PVR2", "HUR", "DUR", "COM", "UID"};
    for (int i = 0; i < 8; ++i) {
        const auto value = cut(payload, QString::fromLatin1(names[i]));
        if (!value) {
            return std::nullopt;
        }
        *fields[i] = *value;
    }
    return record;
}

QString PackUpdateRecord(const UpdateRecord& record) {
    return QStringList{record.FVR1,
                       record.PVR1,
                       record.FVR2,
                       record.PVR2,
                       record.HUR,
                       record.DUR,
                       record.COM,
                       record.UID,
                       record.ErrCode,
                       record.ErrDesc,
                       QString::number(record.Status)}
        .join(kSeparator);
}

std::optional<UpdateRecord> UnpackUpdateRecord(const QString& text) {
    const QStringList parts = core::split(text, kSeparator);
    if (parts.size() < 11) {
        return std::nullopt;
    }
    const auto status = core::cLng(parts[10]);
    if (!core::isNumeric(parts[10]) || !status || *status < -32768 || *status > 32767) {
        return std::nullopt;
    }
    return UpdateRecord{parts[0], parts[1], parts[2], parts[3], parts[4],       parts[5],
                        parts[6], parts[7], parts[8], parts[9], qint16(*status)};
}

QString DownloadAddress(const UpdateRecord& record, const QString& programName) {
    if (!record.DUR.isEmpty()) {
        return record.DUR;
    }
    return QStringLiteral("https://www.google.com/search?hl=en&q=") +
           QString(programName).replace(u' ', u'+');
}

}  // namespace scan
