#include "platform/win32/Win32CodePage.h"

#include "platform/win32/WindowsApi.h"

#include "platform/win32/WideText.h"

namespace platform::win32 {

unsigned Win32CodePage::GetACP() const {
    return ::GetACP();
}

std::u16string Win32CodePage::toWide(const std::string& ansi) const {
    return win32::toWide(CP_ACP, ansi);
}

std::string Win32CodePage::toAnsi(const std::u16string& wide) const {
    return fromWide(CP_ACP, wide);
}

}  // namespace platform::win32
