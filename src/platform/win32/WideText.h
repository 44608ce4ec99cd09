#pragma once
#include <string>

namespace platform::win32 {

// UTF-16 text between the interfaces' std::u16string and the "W" calls, and conversions
// through a Windows code page (CP_ACP, CP_UTF8, ...). Embedded NULs are kept.
std::u16string toWide(unsigned codePage, const std::string& bytes);
std::string fromWide(unsigned codePage, const std::u16string& text);
std::string toUtf8(const std::u16string& text);
const wchar_t* wideChars(const std::u16string& text);

}  // namespace platform::win32
