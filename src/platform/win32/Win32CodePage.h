#pragma once
#include "platform/CodePage.h"

namespace platform::win32 {

// The ANSI code page of Windows (CP_ACP). What the code page lacks is written as Windows
// writes it: "?", or the best-fit character that Windows picks for some letters.
class Win32CodePage final : public CodePage {
public:
    unsigned GetACP() const override;
    std::u16string toWide(const std::string& ansi) const override;
    std::string toAnsi(const std::u16string& wide) const override;
};

}  // namespace platform::win32
