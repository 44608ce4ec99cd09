#include "platform/portable/WinPath.h"

#include <QString>

#include <cctype>

#include <system_error>

namespace platform::portable {

namespace fs = std::filesystem;

namespace {

bool isSeparator(char c) {
    return c == '\\' || c == '/';
}

bool isForbidden(unsigned char c, bool allowWildcards) {
    if (c < 0x20) {
        return true;
    }
    switch (c) {
        case '<':
        case '>':
        case ':':
        case '"':
        case '|':
            return true;
        case '?':
        case '*':
            return !allowWildcards;
        default:
            return false;
    }
}

QString toQString(const std::u16string& wide) {
    return QString::fromStdU16String(wide);
}

}  // namespace

WinPath::WinPath(fs::path machineFolder, const CodePage& codePage)
    : machineFolder_(std::move(machineFolder)), codePage_(codePage) {}

std::optional<WinPath::Parsed> WinPath::parse(const std::string& winPath, bool allowWildcards) {
    if (winPath.size() < 2 || winPath[1] != ':' ||
        !std::isalpha(static_cast<unsigned char>(winPath[0]))) {
        return std::nullopt;
    }
    if (winPath.size() > 2 && !isSeparator(winPath[2])) {
        return std::nullopt;  // "C:foo" is relative to the drive's current folder
    }
    Parsed parsed;
    parsed.drive = char(std::tolower(static_cast<unsigned char>(winPath[0])));
    size_t pos = 2;
    while (pos < winPath.size()) {
        while (pos < winPath.size() && isSeparator(winPath[pos])) {
            ++pos;
        }
        size_t end = pos;
        while (end < winPath.size() && !isSeparator(winPath[end])) {
            ++end;
        }
        std::string element = winPath.substr(pos, end - pos);
        pos = end;
        if (element.empty() || element == ".") {
            continue;
        }
        if (element == "..") {
            if (!parsed.elements.empty()) {
                parsed.elements.pop_back();
            }
            continue;
        }
        for (char c : element) {
            if (isForbidden(static_cast<unsigned char>(c), allowWildcards)) {
                return std::nullopt;
            }
        }
        // Windows drops trailing dots and blanks of a name.
        while (!element.empty() && (element.back() == '.' || element.back() == ' ')) {
            element.pop_back();
        }
        if (element.empty()) {
            return std::nullopt;
        }
        parsed.elements.push_back(std::move(element));
    }
    return parsed;
}

fs::path WinPath::driveFolder(char drive) const {
    return machineFolder_ /
           (std::string("drive_") + char(std::tolower(static_cast<unsigned char>(drive))));
}

std::string WinPath::hostName(const std::string& ansiElement) const {
    return toQString(codePage_.toWide(ansiElement)).toStdString();
}

std::string WinPath::ansiName(const fs::path& hostElement) const {
    return codePage_.toAnsi(
        QString::fromStdString(hostElement.filename().string()).toStdU16String());
}

std::optional<fs::path> WinPath::findElement(const fs::path& folder,
                                             const std::string& ansiElement) const {
    std::error_code error;
    const fs::path exact = folder / hostName(ansiElement);
    if (fs::exists(fs::symlink_status(exact, error))) {
        return exact;
    }
    const QString wanted = toQString(codePage_.toWide(ansiElement));
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const QString name = QString::fromStdString(entry.path().filename().string());
        if (name.compare(wanted, Qt::CaseInsensitive) == 0) {
            return entry.path();
        }
    }
    return std::nullopt;
}

std::optional<fs::path> WinPath::existing(const std::string& winPath) const {
    const auto parsed = parse(winPath);
    if (!parsed) {
        return std::nullopt;
    }
    fs::path current = driveFolder(parsed->drive);
    std::error_code error;
    if (!fs::is_directory(current, error)) {
        return std::nullopt;
    }
    for (const auto& element : parsed->elements) {
        const auto found = findElement(current, element);
        if (!found) {
            return std::nullopt;
        }
        current = *found;
    }
    return current;
}

std::optional<fs::path> WinPath::target(const std::string& winPath) const {
    auto parsed = parse(winPath);
    if (!parsed || parsed->elements.empty()) {
        return std::nullopt;
    }
    const std::string last = parsed->elements.back();
    parsed->elements.pop_back();
    fs::path folder = driveFolder(parsed->drive);
    std::error_code error;
    for (const auto& element : parsed->elements) {
        const auto found = findElement(folder, element);
        if (!found || !fs::is_directory(*found, error)) {
            return std::nullopt;
        }
        folder = *found;
    }
    if (!fs::is_directory(folder, error)) {
        return std::nullopt;
    }
    const auto found = findElement(folder, last);
    return found ? *found : folder / hostName(last);
}

std::optional<fs::path> WinPath::createFolders(const std::string& winPath) const {
    const auto parsed = parse(winPath);
    if (!parsed) {
        return std::nullopt;
    }
    fs::path current = driveFolder(parsed->drive);
    std::error_code error;
    fs::create_directories(current, error);
    for (const auto& element : parsed->elements) {
        const auto found = findElement(current, element);
        current = found ? *found : current / hostName(element);
        if (!found && !fs::create_directory(current, error)) {
            return std::nullopt;
        }
        if (!fs::is_directory(current, error)) {
            return std::nullopt;
        }
    }
    return current;
}

}  // namespace platform::portable
