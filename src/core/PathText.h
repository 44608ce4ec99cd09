#pragma once
#include <QString>

#include "platform/FileSystem.h"

namespace core {

// The FileSystemObject's path texts on the program's own strings.
inline QString GetParentFolderName(const QString& path) {
    return QString::fromStdU16String(platform::GetParentFolderName(path.toStdU16String()));
}

inline QString GetFileName(const QString& path) {
    return QString::fromStdU16String(platform::GetFileName(path.toStdU16String()));
}

}  // namespace core
