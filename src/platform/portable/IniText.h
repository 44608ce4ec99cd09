#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace platform::portable {

// The lines of an INI text as the profile calls of Windows read them, and the edits those
// calls make. Sections and keys are found without regard to case and the first of duplicates
// counts; keys before the first header belong to the section "". An edit changes only the
// lines it concerns, so comments and odd lines are written back as they were.
class IniText {
public:
    explicit IniText(std::u16string text) : text_(std::move(text)) {}

    const std::u16string& text() const { return text_; }

    // The value of a key without one pair of matching quotes around it; nothing when the
    // section or the key is missing.
    std::optional<std::u16string> value(std::u16string_view section, std::u16string_view key) const;

    // Replaces the key's first line, or adds the key at the end of its section, or adds the
    // section at the end of the text.
    void setValue(std::u16string_view section, std::u16string_view key, std::u16string_view value);
    // Each removes the first occurrence; false when there is none and nothing changed.
    bool removeKey(std::u16string_view section, std::u16string_view key);
    bool removeSection(std::u16string_view section);

private:
    std::u16string text_;
};

}  // namespace platform::portable
