#include "platform/portable/IniText.h"

#include <QChar>

namespace platform::portable {

namespace {

constexpr size_t kNone = std::u16string::npos;

bool isBlank(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\x1a';
}

bool isBreak(char16_t c) {
    return c == u'\r' || c == u'\n';
}

std::u16string_view trimStart(std::u16string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

std::u16string_view trim(std::u16string_view text) {
    text = trimStart(text);
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

char16_t folded(char16_t c) {
    if (c < 0x80) {
        return (c >= u'A' && c <= u'Z') ? char16_t(c + (u'a' - u'A')) : c;
    }
    return char16_t(QChar::toCaseFolded(char32_t(c)));
}

bool sameName(std::u16string_view a, std::u16string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i] && folded(a[i]) != folded(b[i])) {
            return false;
        }
    }
    return true;
}

struct Line {
    enum class Kind { Blank, Other, Section, Key };
    Kind kind = Kind::Blank;
    size_t begin = 0;         // the line's first character
    size_t end = 0;           // before its line break
    size_t next = 0;          // past the run of line breaks
    size_t contentBegin = 0;  // the line without the blanks around it
    size_t contentEnd = 0;
    std::u16string_view name;   // of a section or a key
    std::u16string_view value;  // of a key
};

Line readLine(std::u16string_view text, size_t from) {
    Line line;
    line.begin = from;
    line.end = from;
    while (line.end < text.size() && !isBreak(text[line.end])) {
        ++line.end;
    }
    line.next = line.end;
    while (line.next < text.size() && isBreak(text[line.next])) {
        ++line.next;
    }
    const std::u16string_view content = trim(text.substr(from, line.end - from));
    if (content.empty()) {
        return line;
    }
    line.contentBegin = size_t(content.data() - text.data());
    line.contentEnd = line.contentBegin + content.size();
    if (content.front() == u'[') {
        if (const size_t close = content.rfind(u']'); close != kNone) {
            line.kind = Line::Kind::Section;
            line.name = trim(content.substr(1, close - 1));
            return line;
        }
    }
    const size_t equals = content.find(u'=');
    if (content.front() == u';' || equals == kNone) {
        line.kind = Line::Kind::Other;
        return line;
    }
    line.kind = Line::Kind::Key;
    line.name = trim(content.substr(0, equals));
    line.value = trimStart(content.substr(equals + 1));
    return line;
}

// Where a section and one of its keys are. The search ends at the key or at the end of the
// first section of the name, so a read stops early.
struct Place {
    bool sectionFound = false;
    size_t sectionBegin = 0;  // its header, or 0 for the lines before the first header
    size_t sectionEnd = 0;    // the next header or the end of the text
    size_t lastLineEnd = 0;   // after the section's last line that is not blank
    std::optional<Line> key;
};

Place locate(std::u16string_view text, std::u16string_view section,
             std::optional<std::u16string_view> key) {
    Place place;
    // The lines before the first header are the section "", when there are any.
    bool inside = section.empty();
    for (size_t pos = 0; pos < text.size();) {
        const Line line = readLine(text, pos);
        pos = line.next;
        if (line.kind == Line::Kind::Section) {
            if (inside && place.sectionFound) {
                place.sectionEnd = line.begin;
                return place;
            }
            inside = sameName(line.name, section);
            if (inside) {
                place.sectionFound = true;
                place.sectionBegin = line.begin;
                place.lastLineEnd = line.end;
            }
            continue;
        }
        if (!inside || line.kind == Line::Kind::Blank) {
            continue;
        }
        place.sectionFound = true;
        place.lastLineEnd = line.end;
        if (key && line.kind == Line::Kind::Key && sameName(line.name, *key)) {
            place.key = line;
            return place;
        }
    }
    place.sectionEnd = text.size();
    return place;
}

// Past the one line break at a position, so that removing a line keeps the blank lines
// around it.
size_t pastOneBreak(std::u16string_view text, size_t pos) {
    if (text.substr(pos, 2) == u"\r\n") {
        return pos + 2;
    }
    return (pos < text.size() && isBreak(text[pos])) ? pos + 1 : pos;
}

}  // namespace

std::optional<std::u16string> IniText::value(std::u16string_view section,
                                             std::u16string_view key) const {
    const Place place = locate(text_, trim(section), trim(key));
    if (!place.key) {
        return std::nullopt;
    }
    std::u16string_view found = place.key->value;
    if (found.size() >= 2 && (found.front() == u'"' || found.front() == u'\'') &&
        found.back() == found.front()) {
        found = found.substr(1, found.size() - 2);
    }
    return std::u16string(found);
}

void IniText::setValue(std::u16string_view section, std::u16string_view key,
                       std::u16string_view value) {
    section = trim(section);
    key = trim(key);
    value = trimStart(value);
    const Place place = locate(text_, section, key);
    if (place.key) {
        std::u16string line(place.key->name);
        line += u'=';
        line += value;
        text_.replace(place.key->contentBegin, place.key->contentEnd - place.key->contentBegin,
                      line);
        return;
    }
    std::u16string entry(key);
    entry += u'=';
    entry += value;
    if (place.sectionFound) {
        text_.insert(place.lastLineEnd, u"\r\n" + entry);
        return;
    }
    if (!text_.empty() && !isBreak(text_.back())) {
        text_ += u"\r\n";
    }
    text_ += u'[';
    text_ += section;
    text_ += u"]\r\n" + entry + u"\r\n";
}

bool IniText::removeKey(std::u16string_view section, std::u16string_view key) {
    const Place place = locate(text_, trim(section), trim(key));
    if (!place.key) {
        return false;
    }
    text_.erase(place.key->begin, pastOneBreak(text_, place.key->end) - place.key->begin);
    return true;
}

bool IniText::removeSection(std::u16string_view section) {
    const Place place = locate(text_, trim(section), std::nullopt);
    if (!place.sectionFound) {
        return false;
    }
    text_.erase(place.sectionBegin, place.sectionEnd - place.sectionBegin);
    return true;
}

}  // namespace platform::portable
