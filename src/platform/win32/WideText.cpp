#include "platform/win32/WideText.h"

#include "platform/win32/WindowsApi.h"

namespace platform::win32 {

static_assert(sizeof(wchar_t) == sizeof(char16_t), "the W calls take UTF-16");

std::u16string toWide(unsigned codePage, const std::string& bytes) {
    if (bytes.empty()) {
        return {};
    }
    const int length =
        ::MultiByteToWideChar(codePage, 0, bytes.data(), int(bytes.size()), nullptr, 0);
    std::u16string text(size_t(length), u'\0');
    ::MultiByteToWideChar(codePage, 0, bytes.data(), int(bytes.size()),
                          reinterpret_cast<wchar_t*>(text.data()), length);
    return text;
}

std::string fromWide(unsigned codePage, const std::u16string& text) {
    if (text.empty()) {
        return {};
    }
    const auto* wide = reinterpret_cast<const wchar_t*>(text.data());
    const int length =
        ::WideCharToMultiByte(codePage, 0, wide, int(text.size()), nullptr, 0, nullptr, nullptr);
    std::string bytes(size_t(length), '\0');
    ::WideCharToMultiByte(codePage, 0, wide, int(text.size()), bytes.data(), length, nullptr,
                          nullptr);
    return bytes;
}

std::string toUtf8(const std::u16string& text) {
    return fromWide(CP_UTF8, text);
}

const wchar_t* wideChars(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

}  // namespace platform::win32
