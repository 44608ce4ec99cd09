#pragma once
#include "platform/MessageBox.h"
#include "state/clsList.h"

namespace scan {

// The lists one detection works with, as the hidden data holder keeps them: the uninstall
// keys of the hive being walked, the accepted programs and the ignore list.
struct DetectionLists {
    explicit DetectionLists(platform::MessageBox& messageBox)
        : uninstallKeyList(messageBox),
          detectedProgramList(messageBox),
          ignoreEntryList(messageBox) {
        uninstallKeyList.InitList(0, kGrowBy);
        detectedProgramList.InitList(6, kGrowBy);
        ignoreEntryList.InitList(3, kGrowBy);
    }

    static constexpr int kGrowBy = 100;
    state::clsList uninstallKeyList;
    state::clsList detectedProgramList;
    state::clsList ignoreEntryList;
};

}  // namespace scan
