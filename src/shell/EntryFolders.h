#pragma once
#include <QString>

#include "platform/CodePage.h"
#include "platform/FileSystem.h"
#include "shell/ProcessState.h"

namespace shell {

// Splits the path on "\", drops the last `levels` elements and joins the rest with one "\"
// at the end: ("C:\A\B", 1) gives "C:\A\".
QString GetParentFolder(const QString& path, int levels);

// The folders the entry routine derives from the program folder: the parent and both
// "localized" folders, then the HTML and co-sell folders. Call it after ParseCommandLine,
// whose production flag decides where the HTML folder is. A developer's tree, with the
// program one folder below the data, runs as it is: with the HTML folder missing beside the
// program, or with production off, the one beside the parent is used.
void ComputeEntryFolders(ProcessState& state, const QString& programFolder,
                         platform::FileSystem& files, const platform::CodePage& codePage);

}  // namespace shell
