#pragma once
#include "platform/MessageBox.h"

namespace platform::qt {

// The system's message box as a Qt dialog: the buttons and icon of the style number, modal
// to the active window, answered with 1 (OK), 6 (Yes) or 7 (No). Timers go on firing while it
// is open, as they do under the Windows box. An empty caption shows the application's name.
class QtMessageBox final : public MessageBox {
public:
    int show(const std::u16string& text, const std::u16string& caption,
             std::uint32_t style) override;
};

}  // namespace platform::qt
