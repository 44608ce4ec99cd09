#include "platform/win32/Win32MessageBox.h"

#include "platform/win32/WindowsApi.h"

#include <cstdio>

#include "platform/win32/WideText.h"

namespace platform::win32 {

// Without a desktop to show it on (MessageBoxW fails with 0; Wine without a display answers
// -1), the box goes to standard error and no button was pressed.
int Win32MessageBox::show(const std::u16string& text, const std::u16string& caption,
                          std::uint32_t style) {
    const int pressed = ::MessageBoxW(nullptr, wideChars(text), wideChars(caption), style);
    if (pressed > 0) {
        return pressed;
    }
    std::fprintf(stderr, "%s: %s\n", toUtf8(caption).c_str(), toUtf8(text).c_str());
    return mbresult::NotShown;
}

}  // namespace platform::win32
