#pragma once
#include "platform/MessageBox.h"

namespace cli {

// The console's message box: a Yes/No question is printed as "question<TAB>text<TAB>Yes" and
// answered Yes (the command was the user's choice); a box with the stop icon is an error on
// standard error; any other box's text is printed.
class ConsoleAnswers final : public platform::MessageBox {
public:
    int show(const std::u16string& text, const std::u16string& caption,
             std::uint32_t style) override;
};

}  // namespace cli
