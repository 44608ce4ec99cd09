#pragma once
#include <QString>
#include <QStringList>

namespace state {

// The process's scratch memory, alive as long as the process: the buffers and lists that
// several parts fill and read. It holds only what something uses; a part that needs another
// buffer adds it here.
struct lst {
    // The text that tracking reads its guard values into, as it always has.
    QString txtAppData;
    // The lines of the ignore list while they are loaded and rewritten: the master copy.
    QStringList lstIgnoreListFile;
    // The queue of silent fetches that tracking sends one at a time.
    QStringList lstURLs;
};

}  // namespace state
