#include "ProgramLists.h"

#include "InstalledLanguage.h"
#include "ProgramSettings.h"

namespace cli {

bool ProgramLists::open() {
    if (!startInstalledLanguage(platform, QString(), state, language)) {
        return false;
    }
    dataFolder = openProgramSettings(platform, state.programFolder, true, settings);
    files.LoadFiles(dataFolder + state::product::ignoreListFile(), holder.lstIgnoreListFile);
    return true;
}

int withProgramLists(Context& context, const std::function<int(ProgramLists&)>& work) {
    auto* machine = context.machine();
    if (machine == nullptr) {
        return kFailed;
    }
    ProgramLists lists(machine->platform());
    return lists.open() ? work(lists) : kFailed;
}

}  // namespace cli
