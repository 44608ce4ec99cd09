#pragma once
#include <string>

namespace platform {

// MultiByteToWideChar and WideCharToMultiByte for the machine's ANSI code page. A character
// that the code page lacks is written as Windows writes it by default: as its best fit where
// there is one ("ł" as "l"), otherwise as "?".
class CodePage {
public:
    virtual ~CodePage() = default;
    virtual unsigned GetACP() const = 0;
    virtual std::u16string toWide(const std::string& ansi) const = 0;
    virtual std::string toAnsi(const std::u16string& wide) const = 0;
};

}  // namespace platform
