#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/CodePage.h"

namespace platform::portable {

// Code-page conversion from the tables of the host's ICU. Single-byte code pages are turned
// into a 256-entry table once, so that conversion is a lookup; multi-byte code pages go
// through the converter. A character the code page lacks is written as Windows writes it:
// a Latin letter as its best fit, anything else as "?".
class PortableCodePage final : public CodePage {
public:
    explicit PortableCodePage(unsigned codePage);

    unsigned GetACP() const override { return codePage_; }
    std::u16string toWide(const std::string& ansi) const override;
    std::string toAnsi(const std::u16string& wide) const override;

    // False when the host knows no converter for the code page; conversion then falls back
    // to Windows-1252.
    bool known() const { return known_; }

private:
    unsigned codePage_;
    bool known_ = false;
    bool singleByte_ = false;
    std::string converterName_;
    std::array<char16_t, 256> toWide_{};
    // Every UTF-16 unit's byte, or -1 where the code page has none; a lookup per character.
    std::vector<std::int16_t> toAnsi_;
};

}  // namespace platform::portable
