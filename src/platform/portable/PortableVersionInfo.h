#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/CodePage.h"
#include "platform/VersionInfo.h"

namespace platform::portable {

class WinPath;

// The version-block calls over the machine's files. The block is the RT_VERSION resource
// read from the PE file itself, as long as its root node's wLength says (or cut to the
// resource when the root claims more); only the UTF-16 form is read, a 16-bit block (NE
// files) counts as none.
//
// The spare room: GetFileVersionInfoSizeA answers twice the block plus four bytes, as
// Windows does. GetFileVersionInfoA writes "FE2X" after the block, as Windows does, and
// then the length the caller gave. VerQueryValueA puts a string converted to ANSI at the
// mirror of its UTF-16 text in that room (block length + 4 + the text's offset), so that
// every value has a slot of its own and earlier answers stay valid, and it never writes
// past the recorded length. A string answers the bytes of its wValueLength units as
// stored, which count the terminator when the file does (rc and windres store it), and is
// NUL-terminated in any case.
//
// A caller's length too small for the whole block and those eight bytes cuts the block:
// its root wLength becomes what was kept, so no query reads past the buffer; what lies
// wholly within the kept part is still answered.
class PortableVersionInfo final : public VersionInfo {
public:
    PortableVersionInfo(const WinPath& paths, const CodePage& codePage);

    std::uint32_t GetFileVersionInfoSizeA(const std::string& path, std::uint32_t* handle) override;
    // False when len cannot hold a node header and the spare-room mark (14 bytes).
    bool GetFileVersionInfoA(const std::string& path, std::uint32_t handle, std::uint32_t len,
                             void* data) override;
    // The block must be one that GetFileVersionInfoA filled: the call reads the mark after
    // the block's wLength.
    bool VerQueryValueA(void* block, const std::string& subBlock, void** buffer,
                        std::uint32_t* len) override;

private:
    std::optional<std::vector<std::uint8_t>> readBlock(const std::string& path) const;

    const WinPath& paths_;
    const CodePage& codePage_;
};

}  // namespace platform::portable
