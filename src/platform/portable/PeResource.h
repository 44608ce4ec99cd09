#pragma once
#include <cstdint>
#include <optional>
#include <span>

namespace platform::portable {

// The data of the RT_VERSION resource of a PE32 or PE32+ image held in memory as it lies in
// the file: the resource named 1 (VS_VERSION_INFO, which GetFileVersionInfo asks for), else
// the first name, in its first language. Nothing when the bytes are not a PE image, when it
// has no such resource, or when any offset or size on the way points outside the bytes or
// outside the raw data of its section.
std::optional<std::span<const std::uint8_t>> findVersionResource(
    std::span<const std::uint8_t> image);

}  // namespace platform::portable
