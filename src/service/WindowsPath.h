#pragma once
#include <QString>
#include <QStringList>

#include <optional>

namespace service {

// The elements of an absolute Windows path ("C:", "ProgramData", ...), with "\" or "/" as
// separators and one trailing separator allowed. Nothing for a path the service does not take:
// relative or UNC paths, empty elements, elements that end in a dot or a blank ("." and ".."
// among them), wildcards, or characters Windows does not allow in a name.
std::optional<QStringList> pathElements(const QString& path);

// True when path lies below folder (not folder itself), without regard to case.
bool liesBelow(const QStringList& path, const QStringList& folder);
// True when the two name the same entry, without regard to case.
bool samePath(const QStringList& a, const QStringList& b);

}  // namespace service
