// The maker's update server: answers the desktop program's lookups from the catalog and
// keeps its tracking events and the users' reports.
#include <QCoreApplication>

#include <cstdio>

#include "server/ServerOptions.h"
#include "server/ServerProgram.h"

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    const auto options = server::parseServerOptions(application.arguments().mid(1));
    if (!options) {
        std::fputs(server::kServerUsage, stderr);
        return 2;
    }
    return options->importFile.isEmpty() ? server::runServer(*options)
                                         : server::runImport(*options);
}
