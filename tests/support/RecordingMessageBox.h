#pragma once
#include <QString>

#include <deque>
#include <vector>

#include "platform/MessageBox.h"

namespace testing_support {

// Stands for the user at a message box: records every box shown (text, caption, style) and
// answers a notice with OK and a question with the next scripted answer, or with `answer`
// when the script has run out.
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
        if ((style & 0x0F) != platform::mbstyle::YesNo) {
            return platform::mbresult::Ok;
        }
        if (script.empty()) {
            return answer;
        }
        const int next = script.front();
        script.pop_front();
        return next;
    }

    std::vector<Box> shown;
    std::deque<int> script;
    int answer = platform::mbresult::Yes;
};

}  // namespace testing_support
