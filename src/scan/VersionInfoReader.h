#pragma once
#include <QString>

#include <optional>
#include <vector>

#include "platform/CodePage.h"
#include "platform/VersionInfo.h"

namespace scan {

// Reads the version block of a program's file as discovery does: one shared buffer of at
// most 64,000 bytes, the string table chosen by the translation table (the entry of
// language 1033, or else the last one), the fixed block for the numbers. Loading a file
// replaces the buffer, so reads of two files must not interleave.
class VersionInfoReader {
public:
    VersionInfoReader(platform::VersionInfo& versionInfo, const platform::CodePage& codePage);

    // False when the file has no version block; the buffer then holds one byte.
    bool LoadVersionInfo(const QString& path);
    bool hasBlock() const { return buffer_.size() > 1; }

    // A string of the loaded block: nothing when it is not there, "" when it is empty.
    std::optional<QString> GetVersionInfoString(const QString& name);
    // "a.b.c.d" of the fixed file version; "" without a block.
    QString GetFixedFileVersion(const QString& path);
    // "a.b": only the high half of the fixed product version, on purpose.
    QString GetFixedProductVersion(const QString& path);

private:
    struct FixedInfo {
        std::uint32_t fileMs = 0, fileLs = 0, productMs = 0, productLs = 0;
    };
    std::optional<FixedInfo> fixedInfo(const QString& path);

    platform::VersionInfo& versionInfo_;
    const platform::CodePage& codePage_;
    std::vector<std::uint8_t> buffer_;
};

}  // namespace scan
