#include "platform/portable/PortableEnvironment.h"

#include <QString>

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/FileSystem.h"
#include "platform/portable/WindowsFolders.h"

namespace platform::portable {

namespace {

constexpr std::int32_t kInvalidArgument = static_cast<std::int32_t>(0x80070057u);
constexpr std::int32_t kFileNotFound = static_cast<std::int32_t>(0x80070002u);
constexpr const char* kDefaultProgram = "C:\\Program Files\\Tallowick\\Tallo-wick.exe";

std::string runningHostProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

}  // namespace

PortableEnvironment::PortableEnvironment(const MachineFacts& facts, const WinPath& paths,
                                         const CodePage& codePage)
    : facts_(facts), paths_(paths), codePage_(codePage) {}

std::string PortableEnvironment::ansi(const std::string& utf8) const {
    return codePage_.toAnsi(QString::fromStdString(utf8).toStdU16String());
}

std::optional<std::string> PortableEnvironment::GetEnvironmentVariableA(const std::string& name) {
    const QString wanted = QString::fromStdString(name);
    for (const auto& [key, value] : facts_.environment) {
        if (QString::fromStdString(key).compare(wanted, Qt::CaseInsensitive) == 0) {
            return ansi(value);
        }
    }
    if (const char* host = std::getenv(name.c_str())) {
        return ansi(host);
    }
    return std::nullopt;
}

std::string PortableEnvironment::commandLine() {
    std::string text;
    for (const auto& argument : arguments_) {
        if (!text.empty()) {
            text += ' ';
        }
        const bool quote = argument.empty() || argument.find(' ') != std::string::npos;
        text += quote ? "\"" + argument + "\"" : argument;
    }
    return ansi(text);
}

std::string PortableEnvironment::programFolder() {
    const std::string host = runningHostProgram();
    std::string program = kDefaultProgram;
    for (const auto& [windowsProgram, hostProgram] : facts_.programs) {
        std::error_code error;
        if (!host.empty() && std::filesystem::equivalent(hostProgram, host, error)) {
            program = windowsProgram;
            break;
        }
    }
    return GetParentFolderName(ansi(program));
}

std::string PortableEnvironment::GetUserNameA() {
    return ansi(facts_.userName);
}

std::string PortableEnvironment::GetComputerNameA() {
    return ansi(facts_.computerName);
}

std::vector<std::string> PortableEnvironment::screenFonts() {
    std::vector<std::string> names;
    for (const auto& font : facts_.fonts) {
        names.push_back(ansi(font));
    }
    return names;
}

std::string PortableEnvironment::GetLocaleInfoA(std::uint32_t lcType) {
    switch (lcType) {
        case localeinfo::AbbrevLangName:
            return facts_.localeAbbreviation;
        case localeinfo::DefaultAnsiCodePage:
            return std::to_string(facts_.ansiCodePage);
        case localeinfo::ShortDate:
            return ansi(facts_.shortDateFormat);
        case localeinfo::TimeFormat:
            return ansi(facts_.timeFormat);
        default:
            return {};
    }
}

std::int32_t PortableEnvironment::SHGetFolderPathA(int csidl, std::string* path) {
    const auto folder = specialFolderPath(csidl & ~csidl::FlagCreate, facts_.userName);
    if (!folder) {
        return kInvalidArgument;
    }
    const std::string winPath = ansi(*folder);
    if (!paths_.existing(winPath)) {
        if ((csidl & csidl::FlagCreate) == 0) {
            return kFileNotFound;
        }
        if (!paths_.createFolders(winPath)) {
            return kFileNotFound;
        }
    }
    *path = winPath;
    return 0;
}

}  // namespace platform::portable
