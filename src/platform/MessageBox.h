#pragma once
#include <cstdint>
#include <string>

namespace platform {

namespace mbstyle {
inline constexpr std::uint32_t Ok = 0;
inline constexpr std::uint32_t YesNo = 4;
inline constexpr std::uint32_t IconStop = 16;
inline constexpr std::uint32_t IconQuestion = 32;
inline constexpr std::uint32_t IconExclamation = 48;
inline constexpr std::uint32_t IconInformation = 64;
}  // namespace mbstyle

namespace mbresult {
// No button was pressed: the box could not be shown.
inline constexpr int NotShown = 0;
inline constexpr int Ok = 1;
inline constexpr int Yes = 6;
inline constexpr int No = 7;
}  // namespace mbresult

// The system's plain message box, for what is told before any form exists and for the
// checks of the helper classes. Text is UTF-16, as the wide call takes it.
class MessageBox {
public:
    virtual ~MessageBox() = default;
    // The button pressed: mbresult::Ok, Yes or No; NotShown (0) when the box could not be
    // shown, which no caller may take for an answer.
    virtual int show(const std::u16string& text, const std::u16string& caption,
                     std::uint32_t style) = 0;
};

}  // namespace platform
