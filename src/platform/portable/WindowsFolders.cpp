#include "platform/portable/WindowsFolders.h"

#include <array>
#include <utility>

#include "platform/Environment.h"

namespace platform::portable {

namespace {

// "~" stands for the user's profile folder.
constexpr std::array<std::pair<int, const char*>, 20> folders{{
    {csidl::Desktop, "~\\Desktop"},
    {csidl::Programs, "~\\AppData\\Roaming\\Microsoft\\Windows\\Start Menu\\Programs"},
    {csidl::Personal, "~\\Documents"},
    {csidl::Startup, "~\\AppData\\Roaming\\Microsoft\\Windows\\Start Menu\\Programs\\Startup"},
    {csidl::StartMenu, "~\\AppData\\Roaming\\Microsoft\\Windows\\Start Menu"},
    {csidl::DesktopDirectory, "~\\Desktop"},
    {csidl::Fonts, "C:\\Windows\\Fonts"},
    {csidl::CommonStartMenu, "C:\\ProgramData\\Microsoft\\Windows\\Start Menu"},
    {csidl::CommonPrograms, "C:\\ProgramData\\Microsoft\\Windows\\Start Menu\\Programs"},
    {csidl::CommonStartup, "C:\\ProgramData\\Microsoft\\Windows\\Start Menu\\Programs\\Startup"},
    {csidl::CommonDesktopDirectory, "C:\\Users\\Public\\Desktop"},
    {csidl::AppData, "~\\AppData\\Roaming"},
    {csidl::LocalAppData, "~\\AppData\\Local"},
    {csidl::Cookies, "~\\AppData\\Roaming\\Microsoft\\Windows\\Cookies"},
    {csidl::CommonAppData, "C:\\ProgramData"},
    {csidl::Windows, "C:\\Windows"},
    {csidl::System, "C:\\Windows\\System32"},
    {csidl::ProgramFiles, "C:\\Program Files"},
    {csidl::Profile, "~"},
    {csidl::CommonDocuments, "C:\\Users\\Public\\Documents"},
}};

std::string expand(const char* path, const std::string& userName) {
    std::string text = path;
    if (text.front() == '~') {
        text.replace(0, 1, "C:\\Users\\" + userName);
    }
    return text;
}

}  // namespace

std::optional<std::string> specialFolderPath(int code, const std::string& userName) {
    for (const auto& [id, path] : folders) {
        if (id == code) {
            return expand(path, userName);
        }
    }
    return std::nullopt;
}

std::vector<std::string> standardFolders(const std::string& userName) {
    std::vector<std::string> paths;
    for (const auto& entry : folders) {
        paths.push_back(expand(entry.second, userName));
    }
    paths.push_back(expand("~\\AppData\\Local\\Temp", userName));
    paths.emplace_back("C:\\Program Files\\Common Files");
    paths.emplace_back("C:\\Windows\\Temp");
    return paths;
}

}  // namespace platform::portable
