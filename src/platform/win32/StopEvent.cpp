#include "platform/win32/StopEvent.h"

#include "platform/win32/WindowsApi.h"

namespace platform::win32 {

void* stopEvent() {
    static const HANDLE event = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
    return event;
}

}  // namespace platform::win32
