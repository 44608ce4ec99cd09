#include "state/MessageLoop.h"

#include <QCoreApplication>

namespace state {

void pumpEvents() {
    if (QCoreApplication::instance() != nullptr) {
        QCoreApplication::processEvents();
    }
}

}  // namespace state
