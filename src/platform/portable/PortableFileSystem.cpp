#include "platform/portable/PortableFileSystem.h"

#include <QFile>
#include <QSaveFile>
#include <QString>

#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

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

// The read-only mark is checked here rather than left to the host, which lets root write
// anything.
bool readOnly(const fs::path& entry) {
    std::error_code error;
    const auto status = fs::symlink_status(entry, error);
    return !error && (status.permissions() & fs::perms::owner_write) == fs::perms::none;
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
    if (!host || readOnly(*host)) {
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
    if (!host || readOnly(*host)) {
        return false;
    }
    QFile file(qPath(*host));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append)) {
        return false;
    }
    return file.write(bytes.data(), qint64(bytes.size())) == qint64(bytes.size());
}

namespace {

// The entry of a folder that has a name, found without regard to case as Windows finds it;
// the name as given when there is none.
fs::path entryIn(const fs::path& folder, const fs::path& name) {
    std::error_code error;
    const fs::path exact = folder / name;
    if (fs::exists(fs::symlink_status(exact, error))) {
        return exact;
    }
    const QString wanted = qPath(name);
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        if (qPath(entry.path().filename()).compare(wanted, Qt::CaseInsensitive) == 0) {
            return entry.path();
        }
    }
    return exact;
}

bool copyInto(const fs::path& source, const fs::path& destination, bool overwrite) {
    std::error_code error;
    if (fs::exists(destination, error) && !fs::is_directory(destination, error)) {
        return false;
    }
    fs::create_directories(destination, error);
    if (error) {
        return false;
    }
    for (const auto& entry : fs::directory_iterator(source, error)) {
        const fs::path target = entryIn(destination, entry.path().filename());
        if (entry.is_directory(error)) {
            if (!copyInto(entry.path(), target, overwrite)) {
                return false;
            }
            continue;
        }
        if (fs::exists(target, error)) {
            if (!overwrite || readOnly(target)) {
                return false;
            }
        }
        fs::copy_file(entry.path(), target, fs::copy_options::overwrite_existing, error);
        if (error) {
            return false;
        }
    }
    return !error;
}

// inotify on one host folder; the folder's own deletion ends the watch.
class FolderWatch final : public ChangeNotification {
public:
    explicit FolderWatch(int descriptor) : descriptor_(descriptor) {}
    ~FolderWatch() override { ::close(descriptor_); }

    bool wait(int timeoutMs) override {
        pollfd ready{descriptor_, POLLIN, 0};
        if (::poll(&ready, 1, timeoutMs) <= 0) {
            return false;
        }
        alignas(inotify_event) char events[4096];
        bool changed = false;
        while (::read(descriptor_, events, sizeof events) > 0) {
            changed = true;
        }
        return changed;
    }

private:
    int descriptor_;
};

}  // namespace

std::optional<std::uint64_t> PortableFileSystem::FileLen(const std::string& path) {
    const auto host = paths_.existing(path);
    std::error_code error;
    if (!host || !fs::is_regular_file(*host, error)) {
        return std::nullopt;
    }
    const auto size = fs::file_size(*host, error);
    return error ? std::nullopt : std::optional<std::uint64_t>(size);
}

std::optional<std::int64_t> PortableFileSystem::FileDateTime(const std::string& path) {
    const auto host = paths_.existing(path);
    struct stat status {};
    if (!host || ::stat(host->c_str(), &status) != 0) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(status.st_mtime);
}

bool PortableFileSystem::SetAttr(const std::string& path, std::uint32_t attributes) {
    const auto host = paths_.existing(path);
    if (!host) {
        return false;
    }
    std::error_code error;
    const bool makeReadOnly = (attributes & fileattr::ReadOnly) != 0;
    fs::permissions(*host, fs::perms::owner_write,
                    makeReadOnly ? fs::perm_options::remove : fs::perm_options::add, error);
    return !error;
}

bool PortableFileSystem::Kill(const std::string& path) {
    const auto host = paths_.existing(path);
    std::error_code error;
    if (!host || !fs::is_regular_file(*host, error) || readOnly(*host)) {
        return false;
    }
    return fs::remove(*host, error);
}

bool PortableFileSystem::CopyFolder(const std::string& source, const std::string& destination,
                                    bool overwrite) {
    const auto from = paths_.existing(source);
    std::error_code error;
    if (!from || !fs::is_directory(*from, error)) {
        return false;
    }
    const auto to = paths_.createFolders(destination);
    return to && copyInto(*from, *to, overwrite);
}

bool PortableFileSystem::DeleteFolder(const std::string& folder, bool force) {
    const auto host = paths_.existing(folder);
    std::error_code error;
    if (!host || !fs::is_directory(*host, error)) {
        return false;
    }
    if (!force && readOnly(*host)) {
        return false;
    }
    // The host can't empty a folder without write permission, so force takes the mark off
    // each folder before going into it.
    if (force) {
        fs::permissions(*host, fs::perms::owner_all, fs::perm_options::add, error);
    }
    fs::recursive_directory_iterator entry(*host, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        if (!force && readOnly(entry->path())) {
            return false;
        }
        std::error_code kind;
        if (force && entry->is_directory(kind) && !entry->is_symlink(kind)) {
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, error);
        }
    }
    if (error) {
        return false;
    }
    fs::remove_all(*host, error);
    return !error;
}

int PortableFileSystem::openBinary(const std::string& path, int* basicError) {
    constexpr int kPathNotFound = 76;
    constexpr int kAccessError = 75;
    const auto host = paths_.target(path);
    if (!host) {
        *basicError = kPathNotFound;
        return 0;
    }
    auto file = std::make_unique<QFile>(qPath(*host));
    std::error_code error;
    if (fs::is_directory(*host, error) || readOnly(*host) || !file->open(QIODevice::ReadWrite)) {
        *basicError = kAccessError;
        return 0;
    }
    *basicError = 0;
    open_.emplace(nextHandle_, std::move(file));
    return nextHandle_++;
}

bool PortableFileSystem::putBytes(int handle, const std::string& bytes) {
    const auto found = open_.find(handle);
    return found != open_.end() &&
           found->second->write(bytes.data(), qint64(bytes.size())) == qint64(bytes.size());
}

void PortableFileSystem::closeFile(int handle) {
    open_.erase(handle);
}

std::unique_ptr<ChangeNotification> PortableFileSystem::watchFolder(const std::string& folder) {
    const auto host = paths_.existing(folder);
    std::error_code error;
    if (!host || !fs::is_directory(*host, error)) {
        return nullptr;
    }
    const int descriptor = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (descriptor < 0) {
        return nullptr;
    }
    constexpr std::uint32_t kChanges = IN_CREATE | IN_DELETE | IN_MODIFY | IN_CLOSE_WRITE |
                                       IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB | IN_DELETE_SELF;
    if (::inotify_add_watch(descriptor, host->c_str(), kChanges) < 0) {
        ::close(descriptor);
        return nullptr;
    }
    return std::make_unique<FolderWatch>(descriptor);
}

}  // namespace platform::portable
