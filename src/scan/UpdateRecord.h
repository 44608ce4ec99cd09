#pragma once
#include <QString>
#include <QtGlobal>

#include <optional>

namespace scan {

// The update server's answer about one program.
struct UpdateRecord {
    QString FVR1;  // newest file version
    QString PVR1;  // newest product version
    QString FVR2;
    QString PVR2;
    QString HUR;
    QString DUR;  // download address
    QString COM;  // comment behind the read-more link
    QString UID;  // the identifier the server gives this client
    QString ErrCode;
    QString ErrDesc;
    qint16 Status = 0;

    bool operator==(const UpdateRecord&) const = default;
};

namespace updatestatus {
inline constexpr qint16 Parsed = 0;
inline constexpr qint16 EmptyReply = 1;
inline constexpr qint16 NoMarker = 2;
inline constexpr qint16 ServerError = 3;
inline constexpr qint16 NotAllowed = -1;
}  // namespace updatestatus

// The record in the reply page: the payload between the first start marker and the first end
// marker, ERR_CODE/ERR_DESC for a failure, else each field between the first places of its
// two tags. Nothing when a tag is missing or its cut runs backwards: the lookup then goes on
// with an empty record.
std::optional<UpdateRecord> ParseUpdateReply(const QString& reply);

// The eleven fields joined with ".:M|B:.", the status as a decimal number.
QString PackUpdateRecord(const UpdateRecord& record);
// Nothing for a text of fewer than eleven fields or a status that is no 16-bit number, such
// as the busy answer "ERR_CODE:X0".
std::optional<UpdateRecord> UnpackUpdateRecord(const QString& text);

// The address behind Get Update: the record's download address, or a web search for the
// program's name when the server gave none.
QString DownloadAddress(const UpdateRecord& record, const QString& programName);

}  // namespace scan
