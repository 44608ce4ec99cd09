#pragma once
// Handles, status codes and constants of the Windows calls that the platform interfaces
// mirror. The names are prefixed so that they never meet the macros of <windows.h>.
#include <cstdint>

namespace platform {

using RegHandle = std::uintptr_t;

namespace hkey {
inline constexpr RegHandle ClassesRoot = 0x80000000u;
inline constexpr RegHandle CurrentUser = 0x80000001u;
inline constexpr RegHandle LocalMachine = 0x80000002u;
inline constexpr RegHandle Users = 0x80000003u;
inline constexpr RegHandle PerformanceData = 0x80000004u;
inline constexpr RegHandle CurrentConfig = 0x80000005u;
inline constexpr RegHandle DynData = 0x80000006u;
}  // namespace hkey

// Win32 error codes as the registry and file calls return them.
namespace status {
inline constexpr long Success = 0;
inline constexpr long FileNotFound = 2;
inline constexpr long PathNotFound = 3;
inline constexpr long AccessDenied = 5;
inline constexpr long InvalidHandle = 6;
inline constexpr long InvalidParameter = 87;
inline constexpr long MoreData = 234;
inline constexpr long NoMoreItems = 259;
inline constexpr long RegistryCorrupt = 1009;  // ERROR_BADDB
inline constexpr long CantWrite = 1013;
}  // namespace status

namespace regtype {
inline constexpr std::uint32_t None = 0;
inline constexpr std::uint32_t Sz = 1;
inline constexpr std::uint32_t ExpandSz = 2;
inline constexpr std::uint32_t Binary = 3;
inline constexpr std::uint32_t Dword = 4;
inline constexpr std::uint32_t DwordBigEndian = 5;
inline constexpr std::uint32_t Link = 6;
inline constexpr std::uint32_t MultiSz = 7;
inline constexpr std::uint32_t Qword = 11;
}  // namespace regtype

namespace access {
inline constexpr std::uint32_t KeyRead = 0x20019;
inline constexpr std::uint32_t KeyWrite = 0x20006;
}  // namespace access

}  // namespace platform
