#pragma once
#include <QString>

#include <functional>

namespace setup {

// Where the steps of an install or uninstall tell what they did (one plain line each, read by
// scripts) and why they could not.
struct Report {
    std::function<void(const QString&)> done;
    std::function<void(const QString&)> problem;
};

}  // namespace setup
