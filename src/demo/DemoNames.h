#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// How the demo machine derives what installers write from a catalog entry. Texts are UTF-8.
namespace demo {

// "1", "2.0.1", "115.0.5790.110": at most four dot-separated numbers that fit in 16 bits
// each, as a fixed version block can hold them.
bool isPlainVersion(std::string_view version);

// The numbers of a version text, as a build puts them into the fixed version: "v0.9.2-rc1"
// is 0.9.2.1, "1.8d" 1.8.0.0. Missing parts are 0, parts beyond 65535 are cut to it.
std::array<std::uint16_t, 4> fixedVersionOf(std::string_view version);

// A publisher handle ("Mozilla", "0xJacky", "voidtools") dressed as the company that signs
// the program: capitalised, with a legal form chosen by the handle, so that every program of
// one publisher carries the same name.
std::string companyName(std::string_view handle);

// A name that a Windows folder or file can carry on any code page: printable ASCII without
// the characters Windows forbids, no trailing dot or blank. Empty when nothing is left.
std::string asciiFileName(std::string_view text);

// True when the text holds CJK ideographs, for which a build names the Chinese table.
bool hasCjk(std::string_view utf8);

}  // namespace demo
