#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

namespace localeinfo {
inline constexpr std::uint32_t AbbrevLangName = 0x0003;  // LOCALE_SABBREVLANGNAME, "ENU"
inline constexpr std::uint32_t DefaultAnsiCodePage = 0x1004;
inline constexpr std::uint32_t ShortDate = 0x001F;   // LOCALE_SSHORTDATE, "M/d/yyyy"
inline constexpr std::uint32_t TimeFormat = 0x1003;  // LOCALE_STIMEFORMAT, "h:mm:ss tt"
}  // namespace localeinfo

// SysInfo's OSPlatform and OSVersion.
struct OsVersion {
    int platform = 2;  // 0 Win32s, 1 Windows 9x, 2 NT
    int major = 6;
    int minor = 1;
    int build = 7601;
};

namespace csidl {
inline constexpr int Desktop = 0x0000;
inline constexpr int Programs = 0x0002;
inline constexpr int Personal = 0x0005;
inline constexpr int Startup = 0x0007;
inline constexpr int StartMenu = 0x000b;
inline constexpr int DesktopDirectory = 0x0010;
inline constexpr int Fonts = 0x0014;
inline constexpr int CommonStartMenu = 0x0016;
inline constexpr int CommonPrograms = 0x0017;
inline constexpr int CommonStartup = 0x0018;
inline constexpr int CommonDesktopDirectory = 0x0019;
inline constexpr int AppData = 0x001a;
inline constexpr int LocalAppData = 0x001c;
inline constexpr int Cookies = 0x0021;
inline constexpr int CommonAppData = 0x0023;
inline constexpr int Windows = 0x0024;
inline constexpr int System = 0x0025;
inline constexpr int ProgramFiles = 0x0026;
inline constexpr int Profile = 0x0028;
inline constexpr int CommonDocuments = 0x002e;
inline constexpr int FlagCreate = 0x8000;
}  // namespace csidl

// The facts of the computer and the running process. Texts are ANSI bytes.
class Environment {
public:
    virtual ~Environment() = default;

    virtual std::optional<std::string> GetEnvironmentVariableA(const std::string& name) = 0;
    // The arguments behind the program's name, as Basic's Command$ gives them.
    virtual std::string commandLine() = 0;
    // The folder of the running program, without a trailing "\" (App.Path).
    virtual std::string programFolder() = 0;
    virtual std::string GetUserNameA() = 0;
    virtual std::string GetComputerNameA() = 0;
    // GetLocaleInfoA for the user's default locale; "" for a type it does not know.
    virtual std::string GetLocaleInfoA(std::uint32_t lcType) = 0;
    virtual OsVersion osVersion() = 0;
    // The names of the screen fonts, in the order Screen.Fonts lists them.
    virtual std::vector<std::string> screenFonts() = 0;
    // SHGetFolderPathA with a buffer of 260: 0 (S_OK) and the path, or a negative HRESULT.
    // csidl may carry csidl::FlagCreate.
    virtual std::int32_t SHGetFolderPathA(int csidl, std::string* path) = 0;
};

}  // namespace platform
