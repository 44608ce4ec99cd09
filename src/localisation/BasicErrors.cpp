#include "localisation/BasicErrors.h"

namespace localisation {

QString BasicErrorDescription(int number) {
    switch (number) {
        case basicerror::InvalidProcedureCall:
            return QStringLiteral("Invalid procedure call or argument");
        case basicerror::Overflow:
            return QStringLiteral("Overflow");
        case basicerror::SubscriptOutOfRange:
            return QStringLiteral("Subscript out of range");
        case basicerror::BadFileNameOrNumber:
            return QStringLiteral("Bad file name or number");
        case basicerror::FileNotFound:
            return QStringLiteral("File not found");
        case basicerror::DiskFull:
            return QStringLiteral("Disk full");
        case basicerror::PathFileAccessError:
            return QStringLiteral("Path/File access error");
        case basicerror::PathNotFound:
            return QStringLiteral("Path not found");
        default:
            return QStringLiteral("Application-defined or object-defined error");
    }
}

}  // namespace localisation
