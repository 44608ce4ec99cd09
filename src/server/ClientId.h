#pragma once
#include <QString>

namespace server {

// The identifier the server gives a desktop program, which stores the one of each reply and
// sends it with the next request: a well-formed identifier it sent (1 to 64 characters of
// A-Z, a-z, 0-9 and "-") comes back unchanged; for anything else, an empty one included, a
// new random one (a UUID without braces). A well-formed one that a reply could not carry
// unchanged (one that begins or ends with a tag name, "UID7") is replaced too.
QString clientUid(const QString& sent);
bool isWellFormedUid(const QString& uid);

}  // namespace server
