#pragma once
#include <QByteArray>
#include <QString>

namespace server {

// What a reply tells about a product the server found.
struct UpdateInformation {
    QString fileVersion;     // FVR1
    QString productVersion;  // PVR1
    QString downloadUrl;     // DUR
    QString comment;         // COM
    QString uid;             // UID
};

// The pages of updates.asp, in Windows-1252 (a character the code page lacks becomes "?"),
// for "Content-Type: text/html; charset=windows-1252". The information travels inside
//   <!-- UPDATEINFORMATION="payload"=UPDATEINFORMATION -->
// as "FVR1=..=FVR1PVR1=..=PVR1FVR2==FVR2PVR2==PVR2HUR==HURDUR=..=DURCOM=..=COMUID=..=UID",
// or as "ERR_CODE:<code>|ERR_DESC:<text>" for a failure. The desktop program reads the first
// marker of each kind and, for each field, the text from the first place of its opening tag
// to the first place of its closing tag; so the values are made safe first (safeText,
// safeAddress).
QByteArray foundPage(const UpdateInformation& information);
QByteArray errorPage(const QString& code, const QString& description);
// A normal page without the marker, for the desktop program's tests.
QByteArray pageWithoutMarker();

// A text value that reads back unchanged by those rules wherever it stands: without '"'
// (turned into "'"), without "ERR_CODE:" (a blank before the colon), and without a field's
// tag: where a tag name (FVR1, PVR1, FVR2, PVR2, HUR, DUR, COM, UID; the reading compares
// case-sensitively) touches a
// "=" or the start or end of the value, a blank goes between. Control characters become
// blanks.
QString safeText(const QString& value);
// The same for an address, by percent-encoding instead of blanks: '"' is %22, a "=" next to a
// tag name %3D, the ":" of "ERR_CODE:" %3A, and the first letter of a tag name at the start
// or end of the value its %XX. The address means the same to a web server.
QString safeAddress(const QString& value);

}  // namespace server
