#pragma once
#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/CodePage.h"
#include "platform/portable/RegText.h"
#include "platform/portable/RegistryTree.h"

namespace platform::portable {

// The registry of a machine as files: <folder>/<ROOT>.reg for each root key, in regedit's
// format (UTF-16LE with BOM, CRLF). A missing file is an empty root.
//
// Several processes use the files at once. A change takes an exclusive flock on
// <ROOT>.lock, reads the file again when it has changed, applies the change and replaces the
// file atomically (temp file, fsync, rename). Readers keep the tree they read and read the
// file again only when its inode, size or modification time differ; since the kernel's file
// clock ticks coarsely, each new version is stamped a nanosecond later than the one it
// replaces at least, so that two versions never look the same.
//
// A file that does not parse is reported on stderr (once per version of the file), every
// call on its root answers RegistryCorrupt, and the file is never overwritten until someone
// repairs or removes it.
class RegistryStore {
public:
    RegistryStore(std::filesystem::path folder, const CodePage& codePage);
    ~RegistryStore();

    // HKEY_PERFORMANCE_DATA and HKEY_DYN_DATA are not kept.
    static bool keeps(RegRoot root);

    // The tree of a root as its file holds it now; null with InvalidHandle for a root the
    // store does not keep and with RegistryCorrupt when the file does not parse. With
    // Freshness::Recent a check of the file made within the last millisecond stands, so that
    // the calls on an open key do not each look at the file again; opening a key always does.
    enum class Freshness { Now, Recent };
    const RegKey* current(RegRoot root, long* status, Freshness freshness = Freshness::Now);

    // Runs change on the current trees of the roots while their files are locked, then saves
    // each tree it marked changed. When change fails, nothing is saved and the trees it
    // touched are read again from their files at the next call.
    using Change = std::function<long(const RootTrees& trees, RootFlags* changed)>;
    long update(std::vector<RegRoot> roots, const Change& change);

    // "<file>:<line>: <what>" of the last store file that did not parse; empty when none did.
    const std::string& lastProblem() const { return lastProblem_; }
    // The same for the file of one root as it was last read; empty when it parsed.
    const std::string& problem(RegRoot root) const { return roots_[size_t(root)].problem; }

private:
    struct FileStamp {
        bool exists = false;
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        std::int64_t size = 0;
        std::int64_t mtimeNs = 0;
        bool operator==(const FileStamp&) const = default;
    };
    struct RootFile {
        std::filesystem::path file;
        bool loaded = false;
        FileStamp stamp;
        std::chrono::steady_clock::time_point checked;
        std::unique_ptr<RegKey> tree;
        std::string problem;
        FileStamp reported;  // the version whose problem went to stderr
    };

    long refresh(RegRoot root, Freshness freshness = Freshness::Now);
    void load(RegRoot root, const FileStamp& seen);
    void setProblem(RootFile& file, std::string problem);
    long save(RegRoot root);

    std::filesystem::path folder_;
    const CodePage& codePage_;
    std::array<RootFile, kRegRootCount> roots_;
    std::string lastProblem_;
};

}  // namespace platform::portable
