#pragma once
#include "support/RecordingMessageBox.h"
#include "support/TestMachine.h"

namespace testing_support {

// A test machine whose message box records, set before anything holds a reference into its
// platform.
struct RecordingMachine {
    RecordingMachine() { test.machine().setMessageBox(box); }
    RecordingMessageBox box;
    TestMachine test;
};

}  // namespace testing_support
