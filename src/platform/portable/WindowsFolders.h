#pragma once
#include <optional>
#include <string>
#include <vector>

namespace platform::portable {

// Where a Windows 7 computer keeps its special folders, by CSIDL code.
std::optional<std::string> specialFolderPath(int csidl, const std::string& userName);

// Every special folder of the table, for laying out a fresh machine.
std::vector<std::string> standardFolders(const std::string& userName);

}  // namespace platform::portable
