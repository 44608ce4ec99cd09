#pragma once
#include <QString>
#include <QStringList>

namespace state::product {

// The names that the program, its service, its installer and its siblings agree on.

inline QString name() {
    return QStringLiteral("Tallowick");
}
// This build's own version, major.minor.revision.
inline QString ownVersion() {
    return QStringLiteral(TALLOWICK_VERSION);
}
// Service name and display name alike.
inline QString serviceName() {
    return name() + QStringLiteral(" Service");
}
inline QString key() {
    return QStringLiteral("HKEY_LOCAL_MACHINE\\Software\\") + name();
}
// Holds the value named after the product that starts it with Windows.
inline QString runKey() {
    return QStringLiteral("HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Run");
}
inline QString uninstallKey() {
    return QStringLiteral(
               "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\") +
           name();
}
inline QString servicesKey() {
    return QStringLiteral("HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\") +
           serviceName();
}

// The sibling products, whose keys under HKEY_LOCAL_MACHINE\Software hold the markers that a
// bundle installer leaves.
inline QStringList siblings() {
    return {QStringLiteral("Quillfen"), QStringLiteral("Morrowdale"), QStringLiteral("Sablewind")};
}
inline QStringList bundleMarkers() {
    return {QStringLiteral("BundleAppLocation"), QStringLiteral("BundleAppLocation4"),
            QStringLiteral("CrossAppLocation4")};
}

// Where an installation puts the programs, and their file names there.
inline QString installFolder() {
    return QStringLiteral("C:\\Program Files\\") + name();
}
inline QString programFile() {
    return QStringLiteral("Tallo-wick.exe");
}
inline QString serviceFile() {
    return QStringLiteral("Tallo-wickService.exe");
}
inline QString starterFile() {
    return QStringLiteral("Starter.exe");
}

// Below the data folder: the settings file, the ignore list, the activity log.
inline QString settingsFile() {
    return QStringLiteral("Settings\\") + name() + QStringLiteral(".ini");
}
inline QString ignoreListFile() {
    return QStringLiteral("Settings\\Ignored.cus");
}
inline QString activityLog() {
    return name() + QStringLiteral(" Log.txt");
}

// Below the data folder: the service's folder, with the command file that the service takes
// and its log.
inline QString serviceFolder() {
    return QStringLiteral("Service");
}
inline QString commandFile() {
    return serviceFolder() + QStringLiteral("\\SentData.dat");
}
inline QString serviceLog() {
    return serviceFolder() + QStringLiteral("\\Service.log");
}

}  // namespace state::product
