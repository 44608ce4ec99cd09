#include <cstdio>

#include "Cli.h"

namespace cli {

platform::portable::Machine* Context::machine() {
    if (!machine_) {
        std::string problems;
        machine_ = platform::portable::Machine::open(platform::portable::Machine::defaultFolder(),
                                                     &problems);
        if (!problems.empty()) {
            err(QString::fromStdString(problems).trimmed());
        }
        if (machine_) {
            machine_->setMessageBox(answers_);
        }
    }
    return machine_.get();
}

void Context::out(const QString& line) {
    std::fputs((line + '\n').toUtf8().constData(), stdout);
    // Progress lines reach a pipe as they happen.
    std::fflush(stdout);
}

void Context::err(const QString& line) {
    std::fputs(("tallowick-cli: " + line + '\n').toUtf8().constData(), stderr);
}

}  // namespace cli
