#pragma once
#include "platform/MessageBox.h"

namespace platform::portable {

// Where no one can be asked: the box's caption and text go to standard error and the answer
// is 0, no button, so that no caller takes it for the user's OK or No.
class ConsoleMessageBox final : public MessageBox {
public:
    int show(const std::u16string& text, const std::u16string& caption,
             std::uint32_t style) override;
};

}  // namespace platform::portable
