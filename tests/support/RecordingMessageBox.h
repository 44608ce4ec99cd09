#pragma once
#include <QString>

#include <vector>

#include "platform/MessageBox.h"

namespace testing_support {

// Stands for the user at a message box: records every box shown and answers with the
// scripted button (OK for notices, the scripted answer for questions).
class RecordingMessageBox final : public platform::MessageBox {
public:
    struct Box {
        QString text;
        QString caption;
        std::uint32_t style;
    };

    int show(const std::u16string& text, const std::u16string& caption,
             std::uint32_t style) override {
        shown.push_back(
            {QString::fromStdU16String(text), QString::fromStdU16String(caption), style});
        return (style & 0x0F) == platform::mbstyle::YesNo ? answer : platform::mbresult::Ok;
    }

    std::vector<Box> shown;
    int answer = platform::mbresult::Yes;
};

}  // namespace testing_support
