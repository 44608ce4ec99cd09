#pragma once

namespace state {

// One turn of the message loop: lets pending events, timer ticks among them, run. Does
// nothing before the application object exists.
void pumpEvents();

}  // namespace state
