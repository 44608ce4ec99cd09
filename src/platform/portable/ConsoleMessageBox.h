#pragma once
#include "platform/MessageBox.h"

namespace platform::portable {

// Where no one can be asked: the box's caption and text go to standard error, a notice is
// answered OK and a question No.
class ConsoleMessageBox final : public MessageBox {
public:
    int show(const std::u16string& text, const std::u16string& caption,
             std::uint32_t style) override;
};

}  // namespace platform::portable
