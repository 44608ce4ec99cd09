#pragma once
#include <QString>

#include <cstdint>

#include "platform/MessageBox.h"

namespace state {

// The message box for all localised questions and notices. Styles are the platform's sums:
// 0 OK, 4 Yes/No, 16 OK with the stop icon, 36 Yes/No with the question icon, 48 and 52 with
// the exclamation icon, 64 and 68 with the information icon. The answer is 1 (OK), 6 (Yes),
// 7 (No), or 0 when the box could not be shown, which no caller takes for a Yes.
class UniMessageBox {
public:
    UniMessageBox(platform::MessageBox& box, QString programTitle)
        : box_(box), programTitle_(std::move(programTitle)) {}

    // An empty title shows the program's own.
    int UniMsgBox(const QString& text, std::uint32_t style, const QString& title = {}) const {
        return box_.show(text.toStdU16String(),
                         (title.isEmpty() ? programTitle_ : title).toStdU16String(), style);
    }

private:
    platform::MessageBox& box_;
    const QString programTitle_;
};

}  // namespace state
