#pragma once
#include "platform/MessageBox.h"

namespace platform::win32 {

class Win32MessageBox final : public MessageBox {
public:
    int show(const std::u16string& text, const std::u16string& caption,
             std::uint32_t style) override;
};

}  // namespace platform::win32
