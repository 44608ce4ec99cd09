#pragma once
#include <QString>
#include <QStringList>

namespace service {

// The folders the service may touch, as the computer gives them.
struct ServiceScope {
    QString dataFolder;     // with a trailing "\"
    QString programFolder;  // without one
    QStringList tempFolders;
};

// Decides which commands the service carries out. It has rights the program lacks, so it takes
// only what the product needs: its own key and values, the bundle markers of its siblings, its
// value under the machine's Run key, files and folders below the data folder, files below the
// temp folders, and the moves of older data folders from the program folder into the data
// folder.
class CommandPolicy {
public:
    explicit CommandPolicy(ServiceScope scope);

    // Why the command may not be carried out; "" when it may. fields: one line split at "|".
    QString refusal(const QStringList& fields) const;

private:
    QString registryRefusal(const QStringList& fields) const;
    QString fileRefusal(const QStringList& fields) const;
    bool isOlderDataMove(const QStringList& source, const QStringList& target) const;
    bool isOlderDataFolder(const QStringList& folder) const;

    ServiceScope scope_;
    QStringList dataFolder_;
    QStringList programFolder_;
    QList<QStringList> tempFolders_;
};

}  // namespace service
