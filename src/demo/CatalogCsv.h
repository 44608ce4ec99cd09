#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace demo {

// One program of a package catalog, texts in UTF-8.
struct CatalogEntry {
    std::string packageId;  // "<publisher handle>.<product>", as "Mozilla.Firefox"
    std::string version;
    std::string name;
    std::string lastUpdate;  // "2025-02-19 14:14:20Z", or empty
};

// Reads a catalog in CSV form: a header naming at least the columns PackageId, Version and
// Name (LastUpdate is optional), then one record a line. Fields may be quoted, with "" for
// a quote; a UTF-8 BOM and CRLF line ends are accepted. Nothing, and a line
// "<file>:<line>: <what>" in *problem, when the file cannot be read or is malformed.
std::optional<std::vector<CatalogEntry>> readCatalog(const std::filesystem::path& file,
                                                     std::string* problem);

}  // namespace demo
