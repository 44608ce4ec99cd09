#pragma once
#include <QStringList>

#include "state/ProductNames.h"
#include "support/TestMachine.h"

namespace testing_support {

// A machine with the service installed and its programs mapped, before anything holds a
// reference into it; with a box, that box answers the machine's message boxes.
struct ServiceMachine : testing_support::TestMachine {
    explicit ServiceMachine(platform::MessageBox* box = nullptr) {
        mapProgram("C:\\Program Files\\Tallowick\\Tallo-wickService.exe", SERVICE_PROGRAM);
        mapProgram("C:\\Program Files\\Tallowick\\Starter.exe", STARTER_PROGRAM);
        importReg(
            "Windows Registry Editor Version 5.00\r\n\r\n"
            "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\Tallowick Service]\r\n"
            "\"DisplayName\"=\"Tallowick Service\"\r\n"
            "\"ImagePath\"=\"\\\"C:\\\\Program "
            "Files\\\\Tallowick\\\\Tallo-wickService.exe\\\"\"\r\n");
        if (box != nullptr) {
            machine().setMessageBox(*box);
        }
    }

    // The lines of the service's own log: its start and stop, and each command it refused or
    // could not carry out.
    QStringList serviceLog() {
        const auto text = platform().files.readFile(
            ("C:\\ProgramData\\Tallowick\\" + state::product::serviceLog()).toStdString());
        return QString::fromStdString(text.value_or("")).split("\r\n", Qt::SkipEmptyParts);
    }
};

}  // namespace testing_support
