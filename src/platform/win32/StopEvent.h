#pragma once

namespace platform::win32 {

// The process's own event for a stop request: the service host sets it when the service
// manager asks the service to stop, and waits of the process end early on it, as a signal
// ends them on other systems. A manual-reset event, made on first use and never closed.
void* stopEvent();

}  // namespace platform::win32
