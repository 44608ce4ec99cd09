#include "demo/DemoNames.h"

#include <QString>

#include <algorithm>
#include <cctype>

namespace demo {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// FNV-1a: a hash that is the same on every standard library.
std::uint32_t stableHash(std::string_view text) {
    std::uint32_t hash = 2166136261u;
    for (char c : text) {
        hash = (hash ^ std::uint8_t(c)) * 16777619u;
    }
    return hash;
}

}  // namespace

bool isPlainVersion(std::string_view version) {
    int parts = 0;
    std::size_t start = 0;
    for (;;) {
        const std::size_t stop = std::min(version.find('.', start), version.size());
        const std::string_view part = version.substr(start, stop - start);
        if (part.empty() || part.size() > 5 || !std::all_of(part.begin(), part.end(), isDigit) ||
            std::stoul(std::string(part)) > 0xFFFF || ++parts > 4) {
            return false;
        }
        if (stop == version.size()) {
            return true;
        }
        start = stop + 1;
    }
}

std::array<std::uint16_t, 4> fixedVersionOf(std::string_view version) {
    std::array<std::uint16_t, 4> parts{};
    std::size_t count = 0;
    for (std::size_t i = 0; i < version.size() && count < parts.size();) {
        if (!isDigit(version[i])) {
            ++i;
            continue;
        }
        std::uint32_t number = 0;
        for (; i < version.size() && isDigit(version[i]); ++i) {
            number = std::min<std::uint32_t>(number * 10 + std::uint32_t(version[i] - '0'), 0xFFFF);
        }
        parts[count++] = std::uint16_t(number);
    }
    return parts;
}

std::string companyName(std::string_view handle) {
    constexpr std::string_view kForms[] = {"",      "",        "",      " Inc.",        " Ltd.",
                                           " LLC",  " GmbH",   " B.V.", " Corporation", " Software",
                                           " Labs", " s.r.o.", " AB",   " Pty Ltd"};
    std::string name(handle);
    if (!name.empty()) {
        name[0] = char(std::toupper(std::uint8_t(name[0])));
    }
    return name + std::string(kForms[stableHash(handle) % std::size(kForms)]);
}

std::string asciiFileName(std::string_view text) {
    std::string name;
    for (char c : text) {
        const bool printable = c >= 0x20 && c < 0x7F;
        if (printable && std::string_view("<>:\"/\\|?*").find(c) == std::string_view::npos &&
            !(c == ' ' && (name.empty() || name.back() == ' '))) {
            name += c;
        }
    }
    while (!name.empty() && (name.back() == ' ' || name.back() == '.')) {
        name.pop_back();
    }
    return name;
}

bool hasCjk(std::string_view utf8) {
    const QString text = QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.unicode() >= 0x4E00 && c.unicode() <= 0x9FFF; });
}

}  // namespace demo
