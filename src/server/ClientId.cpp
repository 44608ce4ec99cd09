#include "server/ClientId.h"

#include <QUuid>

#include "server/ReplyPage.h"

#include <algorithm>

namespace server {

bool isWellFormedUid(const QString& uid) {
    return !uid.isEmpty() && uid.size() <= 64 && std::all_of(uid.begin(), uid.end(), [](QChar c) {
        return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') ||
               c == u'-';
    });
}

QString clientUid(const QString& sent) {
    // One that a reply would have to change ("UID9", "DUR") is replaced as well, so that the
    // identifier the client stores is always the one it sent or a new one.
    return isWellFormedUid(sent) && safeText(sent) == sent
               ? sent
               : QUuid::createUuid().toString(QUuid::WithoutBraces);
}

}  // namespace server
