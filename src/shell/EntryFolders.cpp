#include "shell/EntryFolders.h"

#include <QStringList>

#include "core/AnsiText.h"
#include "core/BasicText.h"

namespace shell {

QString GetParentFolder(const QString& path, int levels) {
    QStringList parts = core::split(path, QStringLiteral("\\"));
    for (int i = 0; i < levels && !parts.isEmpty(); ++i) {
        parts.removeLast();
    }
    return parts.join('\\') + '\\';
}

void ComputeEntryFolders(ProcessState& state, const QString& programFolder,
                         platform::FileSystem& files, const platform::CodePage& codePage) {
    state.programFolder = programFolder;
    state.parentFolder = GetParentFolder(programFolder, 1);
    state.programLocalizedFolder = programFolder + "\\localized\\";
    state.parentLocalizedFolder = state.parentFolder + "localized\\";

    state.htmlFolder = programFolder + "\\HTML Screens\\";
    if (!state.production || !files.FolderExists(core::toAnsi(codePage, state.htmlFolder))) {
        state.htmlFolder = state.parentFolder + "HTML Screens\\";
    }
    state.coSellFolder = state.htmlFolder + "CoSell\\localized\\";
}

}  // namespace shell
