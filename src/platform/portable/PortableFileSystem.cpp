#include "platform/portable/PortableFileSystem.h"

#include <QFile>
#include <QSaveFile>
#include <QString>

#include <algorithm>
#include <cctype>
#include <system_error>
#include <vector>

namespace platform::portable {

namespace fs = std::filesystem;

namespace {

// Wildcard match as FindFirstFile does it, without regard to case: "*" any run, "?" one
// character, and "*.*" matches names without a dot too.
bool matches(const std::string& pattern, const std::string& name) {
    if (pattern == "*.*") {
        return true;
    }
    size_t p = 0;
    size_t n = 0;
    size_t star = std::string::npos;
    size_t resume = 0;
    const auto same = [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) ==
               std::tolower(static_cast<unsigned char>(b));
    };
    while (n < name.size()) {
        if (p < pattern.size() && (pattern[p] == '?' || same(pattern[p], name[n]))) {
            ++p;
            ++n;
        } else if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = n;
        } else if (star != std::string::npos) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') {
        ++p;
    }
    return p == pattern.size();
}

QString qPath(const fs::path& path) {
    return QString::fromStdString(path.string());
}

}  // namespace

std::uint32_t PortableFileSystem::GetDriveTypeA(const std::string& root) {
    const auto parsed = WinPath::parse(root);
    if (!parsed || !parsed->elements.empty()) {
        return drivetype::NoRootDir;
    }
    std::error_code error;
    return fs::is_directory(paths_.driveFolder(parsed->drive), error) ? drivetype::Fixed
                                                                      : drivetype::NoRootDir;
}

std::string PortableFileSystem::Dir(const std::string& pattern, std::uint32_t attributes) {
    // A path that ends in a separator lists the folder, as Dir("C:\Windows\") does.
    const bool listFolder = !pattern.empty() && (pattern.back() == '\\' || pattern.back() == '/');
    auto parsed = WinPath::parse(listFolder ? pattern + "*" : pattern, true);
    if (!parsed || parsed->elements.empty()) {
        return {};
    }
    const std::string wanted = parsed->elements.back();
    parsed->elements.pop_back();
    std::string folderPath(1, parsed->drive);
    folderPath += ":";
    for (const auto& element : parsed->elements) {
        if (element.find_first_of("*?") != std::string::npos) {
            return {};
        }
        folderPath += "\\" + element;
    }
    const auto folder = paths_.existing(folderPath + "\\");
    std::error_code error;
    if (!folder || !fs::is_directory(*folder, error)) {
        return {};
    }
    const bool wantFolders = (attributes & fileattr::Directory) != 0;
    // Outside a drive's root a listing starts with the folder's own "." entry.
    if (wantFolders && !parsed->elements.empty() && matches(wanted, ".")) {
        return ".";
    }
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(*folder, error)) {
        if (!wantFolders && entry.is_directory(error)) {
            continue;
        }
        const std::string name = paths_.ansiName(entry.path());
        if (matches(wanted, name)) {
            names.push_back(name);
        }
    }
    if (names.empty()) {
        return {};
    }
    // NTFS lists a folder in the order of its names.
    return *std::min_element(names.begin(), names.end(), [](const auto& a, const auto& b) {
        return QString::fromStdString(a).compare(QString::fromStdString(b), Qt::CaseInsensitive) <
               0;
    });
}

bool PortableFileSystem::FileExists(const std::string& path) {
    const auto host = paths_.existing(path);
    std::error_code error;
    return host && fs::is_regular_file(*host, error);
}

bool PortableFileSystem::FolderExists(const std::string& path) {
    const auto host = paths_.existing(path);
    std::error_code error;
    return host && fs::is_directory(*host, error);
}

bool PortableFileSystem::MkDir(const std::string& path) {
    const auto host = paths_.target(path);
    std::error_code error;
    return host && fs::create_directory(*host, error);
}

std::optional<std::string> PortableFileSystem::readFile(const std::string& path) {
    const auto host = paths_.existing(path);
    if (!host) {
        return std::nullopt;
    }
    QFile file(qPath(*host));
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    return file.readAll().toStdString();
}

bool PortableFileSystem::writeFile(const std::string& path, const std::string& bytes) {
    const auto host = paths_.target(path);
    if (!host) {
        return false;
    }
    QSaveFile file(qPath(*host));
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    file.write(bytes.data(), qint64(bytes.size()));
    return file.commit();
}

bool PortableFileSystem::appendFile(const std::string& path, const std::string& bytes) {
    const auto host = paths_.target(path);
    if (!host) {
        return false;
    }
    QFile file(qPath(*host));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append)) {
        return false;
    }
    return file.write(bytes.data(), qint64(bytes.size())) == qint64(bytes.size());
}

}  // namespace platform::portable
