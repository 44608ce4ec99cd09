#include "Cli.h"
#include "scan/VersionInfoReader.h"

namespace cli {

// verinfo FILE...: the version strings of each file as discovery picks them, and the fixed
// file version. A missing block or string prints an empty value.
int verinfoCommand(Context& context) {
    if (context.arguments().isEmpty()) {
        return kUsage;
    }
    auto* machine = context.machine();
    if (machine == nullptr) {
        return kFailed;
    }
    auto& platform = machine->platform();
    scan::VersionInfoReader reader(platform.versionInfo, platform.codePage);
    for (const QString& file : context.arguments()) {
        Context::out("file=" + file);
        reader.LoadVersionInfo(file);
        for (const char* name :
             {"FileVersion", "ProductVersion", "CompanyName", "FileDescription"}) {
            Context::out(
                QString::fromLatin1(name) + "=" +
                reader.GetVersionInfoString(QString::fromLatin1(name)).value_or(QString()));
        }
        Context::out("FixedFileVersion=" + reader.GetFixedFileVersion(file));
    }
    return kOk;
}

}  // namespace cli
