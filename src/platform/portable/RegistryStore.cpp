#include "platform/portable/RegistryStore.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <iostream>
#include <system_error>
#include <utility>

#include "platform/WinTypes.h"

namespace platform::portable {

namespace fs = std::filesystem;

namespace {

std::string asciiName(RegRoot root) {
    const std::u16string_view name = regRootName(root);
    return std::string(name.begin(), name.end());
}

long statusOfErrno(int error) {
    return (error == EACCES || error == EPERM || error == EROFS) ? status::AccessDenied
                                                                 : status::CantWrite;
}

// A descriptor that is closed when it goes.
class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    ~Descriptor() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }
    int get() const { return fd_; }
    bool valid() const { return fd_ >= 0; }
    int release() { return std::exchange(fd_, -1); }

private:
    int fd_;
};

bool readAll(int fd, std::string* bytes) {
    char buffer[65536];
    for (;;) {
        const ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got == 0) {
            return true;
        }
        if (got < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        bytes->append(buffer, size_t(got));
    }
}

bool writeAll(int fd, const std::string& bytes) {
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t wrote = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (wrote < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        done += size_t(wrote);
    }
    return true;
}

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

RegistryStore::RegistryStore(fs::path folder, const CodePage& codePage)
    : folder_(std::move(folder)), codePage_(codePage) {
    for (int i = 0; i < kRegRootCount; ++i) {
        roots_[size_t(i)].file = folder_ / (asciiName(RegRoot(i)) + ".reg");
    }
}

RegistryStore::~RegistryStore() = default;

bool RegistryStore::keeps(RegRoot root) {
    return root != RegRoot::PerformanceData && root != RegRoot::DynData;
}

const RegKey* RegistryStore::current(RegRoot root, long* status, Freshness freshness) {
    *status = keeps(root) ? refresh(root, freshness) : status::InvalidHandle;
    return *status == status::Success ? roots_[size_t(root)].tree.get() : nullptr;
}

// One stat per call: the tree in memory stays while the file is the version it was read from.
long RegistryStore::refresh(RegRoot root, Freshness freshness) {
    RootFile& file = roots_[size_t(root)];
    const auto now = std::chrono::steady_clock::now();
    if (freshness == Freshness::Recent && file.loaded &&
        now - file.checked < std::chrono::milliseconds(1)) {
        return file.problem.empty() ? status::Success : status::RegistryCorrupt;
    }
    file.checked = now;
    struct stat info {};
    FileStamp seen;
    if (::stat(file.file.c_str(), &info) == 0) {
        seen = FileStamp{true, std::uint64_t(info.st_dev), std::uint64_t(info.st_ino),
                         std::int64_t(info.st_size), nanoseconds(info.st_mtim)};
    }
    if (!file.loaded || seen != file.stamp) {
        load(root, seen);
    }
    return file.problem.empty() ? status::Success : status::RegistryCorrupt;
}

void RegistryStore::load(RegRoot root, const FileStamp& seen) {
    RootFile& file = roots_[size_t(root)];
    file.loaded = true;
    file.stamp = seen;
    file.problem.clear();
    file.tree = std::make_unique<RegKey>(std::u16string(regRootName(root)));
    if (!seen.exists) {
        return;
    }
    const Descriptor fd(::open(file.file.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat info {};
    std::string bytes;
    if (!fd.valid() || ::fstat(fd.get(), &info) != 0 || !readAll(fd.get(), &bytes)) {
        if (errno == ENOENT) {
            file.stamp = FileStamp{};
            return;
        }
        setProblem(file, file.file.string() + ": cannot be read: " + std::strerror(errno));
        return;
    }
    // The stamp of what was read, which may be newer than what stat saw.
    file.stamp = FileStamp{true, std::uint64_t(info.st_dev), std::uint64_t(info.st_ino),
                           std::int64_t(info.st_size), nanoseconds(info.st_mtim)};
    const RegParseResult parsed = parseRegText(bytes, codePage_);
    if (!parsed.ok()) {
        setProblem(file, file.file.string() + ":" + std::to_string(parsed.errorLine) + ": " +
                             parsed.error);
        return;
    }
    // Everything in the file must land in the tree, or saving it would lose the rest.
    RootTrees trees{};
    trees[size_t(root)] = file.tree.get();
    RootFlags changed{};
    const SkippedLine skipped = applyRegOperations(parsed.operations, trees, true, &changed);
    if (skipped.line != 0) {
        setProblem(file,
                   file.file.string() + ":" + std::to_string(skipped.line) + ": " + skipped.why);
    }
}

void RegistryStore::setProblem(RootFile& file, std::string problem) {
    file.problem = std::move(problem);
    file.tree = std::make_unique<RegKey>(file.tree->name());
    lastProblem_ = file.problem;
    if (file.reported != file.stamp) {
        file.reported = file.stamp;
        std::cerr << "registry: " << file.problem
                  << " (the root answers 1009 and its file is left alone until repaired)\n";
    }
}

long RegistryStore::update(std::vector<RegRoot> roots, const Change& change) {
    std::sort(roots.begin(), roots.end());
    roots.erase(std::unique(roots.begin(), roots.end()), roots.end());
    if (std::any_of(roots.begin(), roots.end(), [](RegRoot root) { return !keeps(root); })) {
        return status::InvalidHandle;
    }
    std::error_code error;
    fs::create_directories(folder_, error);
    // Locks are taken in the order of the roots, so that two importers never wait on each
    // other.
    std::vector<Descriptor> locks;
    RootTrees trees{};
    for (RegRoot root : roots) {
        const fs::path lockFile = folder_ / (asciiName(root) + ".lock");
        Descriptor lock(::open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666));
        if (!lock.valid()) {
            return statusOfErrno(errno);
        }
        while (::flock(lock.get(), LOCK_EX) != 0) {
            if (errno != EINTR) {
                return statusOfErrno(errno);
            }
        }
        locks.push_back(std::move(lock));
        if (const long result = refresh(root); result != status::Success) {
            return result;
        }
        trees[size_t(root)] = roots_[size_t(root)].tree.get();
    }
    RootFlags changed{};
    long result = change(trees, &changed);
    for (RegRoot root : roots) {
        if (!changed[size_t(root)]) {
            continue;
        }
        if (result == status::Success) {
            result = save(root);
        } else {
            roots_[size_t(root)].loaded = false;
        }
    }
    return result;
}

long RegistryStore::save(RegRoot root) {
    RootFile& file = roots_[size_t(root)];
    RegTextWriter writer;
    writeKeyTree(writer, *file.tree, file.tree->name());
    const std::string bytes = regFileBytes(writer.text());
    const fs::path temp = folder_ / (asciiName(root) + ".reg.tmp");

    const auto fail = [&](int error) {
        ::unlink(temp.c_str());
        file.loaded = false;
        return statusOfErrno(error);
    };
    Descriptor fd(::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (!fd.valid() || !writeAll(fd.get(), bytes)) {
        return fail(errno);
    }
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    std::int64_t mtime = nanoseconds(now);
    if (file.stamp.exists) {
        mtime = std::max(mtime, file.stamp.mtimeNs + 1);
    }
    const timespec times[2] = {{0, UTIME_NOW},
                               {time_t(mtime / 1'000'000'000), long(mtime % 1'000'000'000)}};
    struct stat info {};
    if (::futimens(fd.get(), times) != 0 || ::fsync(fd.get()) != 0 ||
        ::fstat(fd.get(), &info) != 0 || ::close(fd.release()) != 0) {
        return fail(errno);
    }
    // The folder is not flushed: like Windows, which writes its hives lazily, the store may
    // lose the last change to a power failure, but never holds a torn file.
    if (::rename(temp.c_str(), file.file.c_str()) != 0) {
        return fail(errno);
    }
    file.stamp = FileStamp{true, std::uint64_t(info.st_dev), std::uint64_t(info.st_ino),
                           std::int64_t(info.st_size), nanoseconds(info.st_mtim)};
    return status::Success;
}

}  // namespace platform::portable
