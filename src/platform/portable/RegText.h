#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/CodePage.h"

namespace platform::portable {

// The predefined keys in the order of their handles (0x80000000 + index).
enum class RegRoot {
    ClassesRoot,
    CurrentUser,
    LocalMachine,
    Users,
    PerformanceData,
    CurrentConfig,
    DynData,
};
inline constexpr int kRegRootCount = 7;

// "HKEY_LOCAL_MACHINE" and so on.
std::u16string_view regRootName(RegRoot root);
// The root a .reg key line names: the full name, without regard to case. HKEY_PERFORMANCE_DATA
// is not one of them, as regedit does not take it.
std::optional<RegRoot> regRootFromName(std::u16string_view name);

// One line of a .reg file that does something.
struct RegOperation {
    enum class Kind { Key, DeleteKey, SetValue, DeleteValue };
    Kind kind = Kind::Key;
    int line = 0;
    // Key and DeleteKey: the root (none when the line names no known root) and the text
    // behind "<root>\", as written.
    std::optional<RegRoot> root;
    std::u16string subKey;
    // SetValue and DeleteValue; an empty name is the default value.
    std::u16string name;
    std::uint32_t type = 0;
    std::vector<std::uint8_t> data;  // string types as UTF-16LE
};

struct RegParseResult {
    std::vector<RegOperation> operations;
    int errorLine = 0;  // 0 when the whole text parsed
    std::string error;
    bool ok() const { return errorLine == 0; }
};

// Reads the bytes of a .reg file the way regedit does. Strict where a line is malformed (the
// first such line is the error), lenient where regedit passes over a line.
RegParseResult parseRegText(std::string_view bytes, const CodePage& codePage);

// Writes keys and values as regedit exports them (Version 5.00, CRLF). Data that regedit's
// string or dword forms would not give back byte for byte (a REG_SZ without its terminator,
// a REG_DWORD that is not 4 bytes) is written as hex of its type, so that reading the text
// gives the same bytes.
class RegTextWriter {
public:
    RegTextWriter();
    void key(std::u16string_view path);
    void value(std::u16string_view name, std::uint32_t type, const std::vector<std::uint8_t>& data);
    // The text so far, with the blank line regedit ends a file with.
    std::u16string text() const { return text_ + u"\r\n"; }

private:
    std::u16string text_;
};

// The text as a .reg file in regedit's encoding: FF FE and UTF-16LE.
std::string regFileBytes(const std::u16string& text);

}  // namespace platform::portable
