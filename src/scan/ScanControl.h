#pragma once
#include <functional>

namespace scan {

// What a running scan shares with the rest of the program: bInProcess, which Stop clears
// and every loop tests, and the turn of the message loop that lets Stop get in.
struct ScanControl {
    bool bInProcess = true;
    std::function<void()> pumpEvents = [] {};
};

}  // namespace scan
