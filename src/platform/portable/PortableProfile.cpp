#include "platform/portable/PortableProfile.h"

#include <QFile>
#include <QSaveFile>
#include <QString>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/Environment.h"
#include "platform/portable/IniText.h"
#include "platform/portable/WinPath.h"
#include "platform/portable/WindowsFolders.h"

namespace platform::portable {

namespace fs = std::filesystem;

namespace {

enum class Encoding { Ansi, Utf8, Utf16Le, Utf16Be };

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LeMark = "\xFF\xFE";
constexpr std::string_view kUtf16BeMark = "\xFE\xFF";

struct DecodedFile {
    Encoding encoding = Encoding::Ansi;
    std::u16string text;
};

std::u16string fromUtf16(std::string_view bytes, bool bigEndian) {
    std::u16string text(bytes.size() / 2, u'\0');
    for (size_t i = 0; i < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]);
        const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
        text[i] = bigEndian ? char16_t(first << 8 | second) : char16_t(second << 8 | first);
    }
    return text;
}

std::string toUtf16(const std::u16string& text, bool bigEndian) {
    std::string bytes;
    bytes.reserve(text.size() * 2);
    for (char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

DecodedFile decode(const std::string& bytes, const CodePage& codePage) {
    const std::string_view view(bytes);
    if (view.starts_with(kUtf8Mark)) {
        const auto rest = view.substr(kUtf8Mark.size());
        return {Encoding::Utf8,
                QString::fromUtf8(rest.data(), qsizetype(rest.size())).toStdU16String()};
    }
    if (view.starts_with(kUtf16LeMark)) {
        return {Encoding::Utf16Le, fromUtf16(view.substr(kUtf16LeMark.size()), false)};
    }
    if (view.starts_with(kUtf16BeMark)) {
        return {Encoding::Utf16Be, fromUtf16(view.substr(kUtf16BeMark.size()), true)};
    }
    return {Encoding::Ansi, codePage.toWide(bytes)};
}

std::string encode(Encoding encoding, const std::u16string& text, const CodePage& codePage) {
    switch (encoding) {
        case Encoding::Utf8:
            return std::string(kUtf8Mark) + QString::fromStdU16String(text).toUtf8().toStdString();
        case Encoding::Utf16Le:
            return std::string(kUtf16LeMark) + toUtf16(text, false);
        case Encoding::Utf16Be:
            return std::string(kUtf16BeMark) + toUtf16(text, true);
        case Encoding::Ansi:
            break;
    }
    return codePage.toAnsi(text);
}

std::optional<std::string> readBytes(const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error)) {
        return std::nullopt;
    }
    QFile in(QString::fromStdString(file.string()));
    if (!in.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    return in.readAll().toStdString();
}

// Write rights are the owner's write permission, checked here because the host lets root
// write anything.
bool ownerMayWrite(const fs::path& entry) {
    std::error_code error;
    const auto status = fs::status(entry, error);
    return !error && (status.permissions() & fs::perms::owner_write) != fs::perms::none;
}

// A name without a folder is a file of the Windows folder, as on Windows; a path relative to a
// current folder finds nothing, the machine having none.
std::string profilePath(const std::string& fileName) {
    if (fileName.empty() || fileName.find_first_of(":\\/") != std::string::npos) {
        return fileName;
    }
    return specialFolderPath(csidl::Windows, {}).value_or(std::string()) + "\\" + fileName;
}

bool replaceFile(const fs::path& file, const std::string& bytes) {
    QSaveFile out(QString::fromStdString(file.string()));
    if (!out.open(QIODevice::WriteOnly)) {
        return false;
    }
    if (out.write(bytes.data(), qint64(bytes.size())) != qint64(bytes.size())) {
        out.cancelWriting();
    }
    return out.commit();
}

}  // namespace

std::uint32_t PortableProfile::GetPrivateProfileStringA(
    const std::string& section, const std::string& key, const std::string& defaultValue,
    std::uint32_t bufferSize, std::string* value, const std::string& fileName) {
    std::optional<std::string> found;
    if (const auto host = paths_.existing(profilePath(fileName))) {
        if (const auto bytes = readBytes(*host)) {
            const IniText text(decode(*bytes, codePage_).text);
            if (const auto wide = text.value(codePage_.toWide(section), codePage_.toWide(key))) {
                found = codePage_.toAnsi(*wide);
            }
        }
    }
    std::string result = found.value_or(defaultValue);
    if (!found) {
        result.erase(result.find_last_not_of(' ') + 1);
    }
    result.resize(std::min<size_t>(result.size(), bufferSize == 0 ? 0 : bufferSize - 1));
    if (value != nullptr) {
        *value = result;
    }
    return std::uint32_t(result.size());
}

bool PortableProfile::WritePrivateProfileStringA(const std::string& section,
                                                 const std::optional<std::string>& key,
                                                 const std::optional<std::string>& value,
                                                 const std::string& fileName) {
    const auto host = paths_.target(profilePath(fileName));
    if (!host || !ownerMayWrite(host->parent_path())) {
        return false;
    }
    DecodedFile file;
    std::error_code error;
    if (fs::exists(fs::symlink_status(*host, error))) {
        const auto bytes = ownerMayWrite(*host) ? readBytes(*host) : std::nullopt;
        if (!bytes) {
            return false;
        }
        file = decode(*bytes, codePage_);
    }
    IniText text(std::move(file.text));
    const std::u16string wideSection = codePage_.toWide(section);
    bool changed = true;
    if (!key) {
        changed = text.removeSection(wideSection);
    } else if (!value) {
        changed = text.removeKey(wideSection, codePage_.toWide(*key));
    } else {
        text.setValue(wideSection, codePage_.toWide(*key), codePage_.toWide(*value));
    }
    // Removing what isn't there succeeds without touching the file.
    return !changed || replaceFile(*host, encode(file.encoding, text.text(), codePage_));
}

}  // namespace platform::portable
