#pragma once
#include <string>

namespace platform {

// MultiByteToWideChar and WideCharToMultiByte for the machine's ANSI code page. A character
// that the code page lacks becomes "?", as Windows writes it.
class CodePage {
public:
    virtual ~CodePage() = default;
    virtual unsigned GetACP() const = 0;
    virtual std::u16string toWide(const std::string& ansi) const = 0;
    virtual std::string toAnsi(const std::u16string& wide) const = 0;
};

}  // namespace platform
