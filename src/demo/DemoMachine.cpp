#include "demo/DemoMachine.h"

#include <QString>

#include <fstream>
#include <system_error>

#include "platform/FileSystem.h"
#include "platform/portable/Machine.h"
#include "platform/portable/WinPath.h"

namespace demo {

using platform::GetFileName;
using platform::GetParentFolderName;
using platform::portable::Machine;

namespace {

bool report(std::string* problems, const std::string& line) {
    if (problems != nullptr) {
        *problems += line + "\n";
    }
    return false;
}

bool writeFile(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), std::streamsize(bytes.size()));
    return bool(out.flush());
}

}  // namespace

bool populateDemoMachine(platform::portable::Machine& machine,
                         const std::filesystem::path& catalogCsv, unsigned seed,
                         std::string* problems, DemoCounts* counts) {
    const auto catalog = readCatalog(catalogCsv, problems);
    if (!catalog) {
        return false;
    }
    const DemoPlan plan = planDemoPrograms(*catalog, seed, machine.facts().userName);
    if (plan.counts.programs == 0) {
        return report(problems, catalogCsv.string() + ": no program with a name and a version");
    }

    const auto ansi = [&](const std::string& utf8) {
        return machine.platform().codePage.toAnsi(QString::fromStdString(utf8).toStdU16String());
    };
    for (const DemoFile& file : plan.files) {
        const std::string path = ansi(file.winPath);
        const auto folder = machine.paths().createFolders(GetParentFolderName(path));
        if (!folder || !writeFile(*folder / machine.paths().hostName(GetFileName(path)),
                                  writeVersionedPe(file.version))) {
            return report(problems, file.winPath + ": cannot be written");
        }
    }

    // One import instead of thousands of single writes, each of which locks and rewrites the
    // store.
    const auto regFile = machine.folder() / "run" / "demo-programs.reg";
    std::error_code ignored;
    std::filesystem::create_directories(regFile.parent_path(), ignored);
    if (!writeFile(regFile, plan.regText)) {
        return report(problems, regFile.string() + ": cannot be written");
    }
    const auto imported = machine.platform().regEdit.importFile(regFile.string());
    std::filesystem::remove(regFile, ignored);
    if (!imported.ok) {
        return report(problems, imported.message);
    }
    if (counts != nullptr) {
        *counts = plan.counts;
    }
    return true;
}

}  // namespace demo
