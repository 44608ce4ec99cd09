#include <cstdio>
#include <iostream>
#include <string>

#include "Cli.h"
#include "scan/VersionCompare.h"

namespace cli {

namespace {

const char* answer(const QString& installed, const QString& available) {
    return scan::IsVersionNewer(installed, available) ? "true" : "false";
}

}  // namespace

// compare INSTALLED AVAILABLE: "true" when AVAILABLE is the newer version, else "false".
// Without arguments it reads INSTALLED<TAB>AVAILABLE pairs from standard input and answers
// each line in turn; a line without a tab is answered "invalid" and makes the status 1.
int compareCommand(Context& context) {
    const QStringList& arguments = context.arguments();
    if (arguments.size() == 2) {
        Context::out(QString::fromLatin1(answer(arguments[0], arguments[1])));
        return kOk;
    }
    if (!arguments.isEmpty()) {
        return kUsage;
    }
    std::ios::sync_with_stdio(false);
    std::string line;
    int status = kOk;
    while (std::getline(std::cin, line)) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        const auto tab = line.find('\t');
        if (tab == std::string::npos) {
            std::fputs("invalid\n", stdout);
            status = kFailed;
            continue;
        }
        std::fputs(
            answer(QString::fromUtf8(line.substr(0, tab)), QString::fromUtf8(line.substr(tab + 1))),
            stdout);
        std::fputc('\n', stdout);
    }
    return status;
}

}  // namespace cli
