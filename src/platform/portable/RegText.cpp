#include "platform/portable/RegText.h"

#include <QByteArrayView>
#include <QString>

#include "platform/WinTypes.h"

namespace platform::portable {

namespace {

constexpr std::u16string_view kHeader5 = u"Windows Registry Editor Version 5.00";
constexpr std::u16string_view kHeader4 = u"REGEDIT4";

constexpr std::u16string_view kRootNames[kRegRootCount] = {
    u"HKEY_CLASSES_ROOT",     u"HKEY_CURRENT_USER",   u"HKEY_LOCAL_MACHINE", u"HKEY_USERS",
    u"HKEY_PERFORMANCE_DATA", u"HKEY_CURRENT_CONFIG", u"HKEY_DYN_DATA",
};

// regedit wraps hex data once a line has reached this many characters.
constexpr size_t kHexWrapColumn = 77;

bool isBlank(char16_t c) {
    return c == u' ' || c == u'\t';
}

char16_t asciiUpper(char16_t c) {
    return (c >= u'a' && c <= u'z') ? char16_t(c - 32) : c;
}

int hexDigit(char16_t c) {
    if (c >= u'0' && c <= u'9') {
        return c - u'0';
    }
    if (c >= u'a' && c <= u'f') {
        return c - u'a' + 10;
    }
    if (c >= u'A' && c <= u'F') {
        return c - u'A' + 10;
    }
    return -1;
}

size_t skipBlanks(std::u16string_view line, size_t pos) {
    while (pos < line.size() && isBlank(line[pos])) {
        ++pos;
    }
    return pos;
}

// Only blanks or a ";" comment may follow the data of a value.
bool onlyCommentFrom(std::u16string_view line, size_t pos) {
    pos = skipBlanks(line, pos);
    return pos == line.size() || line[pos] == u';';
}

void appendUtf16Le(std::vector<std::uint8_t>& bytes, std::u16string_view text) {
    for (char16_t unit : text) {
        bytes.push_back(std::uint8_t(unit & 0xff));
        bytes.push_back(std::uint8_t(unit >> 8));
    }
}

std::u16string decodeText(std::string_view bytes, const CodePage& codePage) {
    if (bytes.size() >= 2 && bytes[0] == '\xff' && bytes[1] == '\xfe') {
        std::u16string text;
        text.reserve(bytes.size() / 2);
        for (size_t i = 2; i + 1 < bytes.size(); i += 2) {
            text.push_back(char16_t(std::uint8_t(bytes[i]) | (std::uint8_t(bytes[i + 1]) << 8)));
        }
        return text;
    }
    if (bytes.substr(0, 3) == "\xef\xbb\xbf") {
        bytes.remove_prefix(3);
        return QString::fromUtf8(bytes.data(), qsizetype(bytes.size())).toStdU16String();
    }
    if (QByteArrayView(bytes.data(), qsizetype(bytes.size())).isValidUtf8()) {
        return QString::fromUtf8(bytes.data(), qsizetype(bytes.size())).toStdU16String();
    }
    return codePage.toWide(std::string(bytes));
}

class Parser {
public:
    Parser(std::u16string text, const CodePage& codePage)
        : text_(std::move(text)), codePage_(codePage) {}

    RegParseResult run();

private:
    bool nextLine(std::u16string_view* line);
    bool fail(std::string what);
    bool header(std::u16string_view line);
    bool keyLine(std::u16string_view line);
    bool valueLine(std::u16string_view line);
    bool quoted(std::u16string_view line, size_t* pos, std::u16string* out);
    bool data(std::u16string_view line, size_t pos, RegOperation* op);
    bool dword(std::u16string_view line, size_t pos, RegOperation* op);
    bool hex(std::u16string_view line, size_t pos, RegOperation* op);

    std::u16string text_;
    const CodePage& codePage_;
    size_t next_ = 0;
    int lineNumber_ = 0;
    bool unicode_ = true;  // Version 5.00: string types in hex are UTF-16LE, else ANSI
    RegParseResult result_;
};

// Lines end at CR, LF or CRLF.
bool Parser::nextLine(std::u16string_view* line) {
    if (next_ >= text_.size()) {
        return false;
    }
    const std::u16string_view rest = std::u16string_view(text_).substr(next_);
    size_t end = 0;
    while (end < rest.size() && rest[end] != u'\r' && rest[end] != u'\n') {
        ++end;
    }
    *line = rest.substr(0, end);
    next_ += end;
    if (end < rest.size()) {
        next_ += (rest[end] == u'\r' && end + 1 < rest.size() && rest[end + 1] == u'\n') ? 2 : 1;
    }
    ++lineNumber_;
    return true;
}

bool Parser::fail(std::string what) {
    result_.errorLine = lineNumber_;
    result_.error = std::move(what);
    result_.operations.clear();
    return false;
}

RegParseResult Parser::run() {
    std::u16string_view line;
    if (!nextLine(&line)) {
        lineNumber_ = 1;
        fail("the file is empty, not a registry file");
        return std::move(result_);
    }
    if (!header(line)) {
        return std::move(result_);
    }
    while (nextLine(&line)) {
        const size_t start = skipBlanks(line, 0);
        if (start == line.size()) {
            continue;
        }
        const std::u16string_view content = line.substr(start);
        bool good = true;
        if (content[0] == u'[') {
            good = keyLine(content);
        } else if (content[0] == u'@' || content[0] == u'"') {
            good = valueLine(content);
        }
        if (!good) {
            break;
        }
    }
    return std::move(result_);
}

bool Parser::header(std::u16string_view line) {
    line.remove_prefix(skipBlanks(line, 0));
    if (line == kHeader5) {
        unicode_ = true;
        return true;
    }
    if (line == kHeader4) {
        unicode_ = false;
        return true;
    }
    return fail(
        "not a registry file: the first line is not \"Windows Registry Editor Version 5.00\" "
        "or \"REGEDIT4\"");
}

// "[path]" sets the key that the following values go to, "[-path]" deletes the key with
// everything below it. The path runs to the last "]" of the line.
bool Parser::keyLine(std::u16string_view line) {
    const size_t close = line.rfind(u']');
    if (close == std::u16string_view::npos) {
        return fail("key line without \"]\"");
    }
    std::u16string_view path = line.substr(1, close - 1);
    RegOperation op;
    op.line = lineNumber_;
    op.kind = RegOperation::Kind::Key;
    if (!path.empty() && path[0] == u'-') {
        op.kind = RegOperation::Kind::DeleteKey;
        path.remove_prefix(1);
    }
    const size_t separator = path.find(u'\\');
    op.root = regRootFromName(path.substr(0, separator));
    if (separator != std::u16string_view::npos) {
        op.subKey = path.substr(separator + 1);
    }
    result_.operations.push_back(std::move(op));
    return true;
}

bool Parser::valueLine(std::u16string_view line) {
    RegOperation op;
    op.line = lineNumber_;
    size_t pos = 1;
    if (line[0] == u'"' && !quoted(line, &pos, &op.name)) {
        return fail("value name without its closing quote");
    }
    pos = skipBlanks(line, pos);
    if (pos == line.size() || line[pos] != u'=') {
        return fail("value line without \"=\"");
    }
    pos = skipBlanks(line, pos + 1);
    if (pos < line.size() && line[pos] == u'-') {
        if (!onlyCommentFrom(line, pos + 1)) {
            return fail("text after \"=-\"");
        }
        op.kind = RegOperation::Kind::DeleteValue;
        result_.operations.push_back(std::move(op));
        return true;
    }
    op.kind = RegOperation::Kind::SetValue;
    if (!data(line, pos, &op)) {
        return false;
    }
    result_.operations.push_back(std::move(op));
    return true;
}

// Reads a quoted text from just behind its opening quote to its closing quote, with the
// escapes regedit knows: \\ \" \n \r; any other escape drops the backslash.
bool Parser::quoted(std::u16string_view line, size_t* pos, std::u16string* out) {
    for (size_t i = *pos; i < line.size(); ++i) {
        const char16_t c = line[i];
        if (c == u'"') {
            *pos = i + 1;
            return true;
        }
        if (c != u'\\') {
            out->push_back(c);
            continue;
        }
        if (++i == line.size()) {
            break;
        }
        const char16_t escaped = line[i];
        out->push_back(escaped == u'n' ? u'\n' : escaped == u'r' ? u'\r' : escaped);
    }
    return false;
}

bool Parser::data(std::u16string_view line, size_t pos, RegOperation* op) {
    const std::u16string_view rest = line.substr(pos);
    if (rest.starts_with(u'"')) {
        std::u16string text;
        ++pos;
        if (!quoted(line, &pos, &text)) {
            return fail("string without its closing quote");
        }
        if (!onlyCommentFrom(line, pos)) {
            return fail("text after the closing quote of the string");
        }
        op->type = regtype::Sz;
        appendUtf16Le(op->data, text);
        appendUtf16Le(op->data, std::u16string_view(u"\0", 1));
        return true;
    }
    if (rest.starts_with(u"dword:")) {
        return dword(line, pos + 6, op);
    }
    if (rest.starts_with(u"hex:")) {
        op->type = regtype::Binary;
        return hex(line, pos + 4, op);
    }
    if (rest.starts_with(u"hex(")) {
        size_t end = pos + 4;
        std::uint32_t type = 0;
        while (end < line.size() && end - pos - 4 < 8 && hexDigit(line[end]) >= 0) {
            type = type * 16 + std::uint32_t(hexDigit(line[end++]));
        }
        if (end == pos + 4 || line.substr(end, 2) != u"):") {
            return fail("hex( must give the type in hex and end with \"):\"");
        }
        op->type = type;
        return hex(line, end + 2, op);
    }
    return fail("data is not a \"string\", dword:, hex: or hex(type):");
}

bool Parser::dword(std::u16string_view line, size_t pos, RegOperation* op) {
    pos = skipBlanks(line, pos);
    std::uint32_t value = 0;
    size_t digits = 0;
    while (pos < line.size() && hexDigit(line[pos]) >= 0) {
        value = value * 16 + std::uint32_t(hexDigit(line[pos++]));
        ++digits;
    }
    if (digits == 0 || digits > 8 || !onlyCommentFrom(line, pos)) {
        return fail("dword data must be 1 to 8 hex digits");
    }
    op->type = regtype::Dword;
    for (int shift = 0; shift < 32; shift += 8) {
        op->data.push_back(std::uint8_t(value >> shift));
    }
    return true;
}

// Bytes of two hex digits separated by commas; a line that ends in ",\" goes on in the next
// line that is not blank or a comment.
bool Parser::hex(std::u16string_view line, size_t pos, RegOperation* op) {
    for (;;) {
        pos = skipBlanks(line, pos);
        if (pos == line.size() || line[pos] == u';') {
            break;
        }
        if (line[pos] == u'\\') {
            std::u16string_view next;
            do {
                if (!nextLine(&next)) {
                    return fail("hex data continues past the end of the file");
                }
                pos = skipBlanks(next, 0);
            } while (pos == next.size() || next[pos] == u';' || next[pos] == u'#');
            line = next;
            continue;
        }
        int byte = hexDigit(line[pos]);
        if (byte < 0) {
            return fail("hex data must be bytes of two hex digits separated by commas");
        }
        ++pos;
        if (pos < line.size() && hexDigit(line[pos]) >= 0) {
            byte = byte * 16 + hexDigit(line[pos++]);
        }
        op->data.push_back(std::uint8_t(byte));
        pos = skipBlanks(line, pos);
        if (pos < line.size() && line[pos] == u',') {
            ++pos;
        } else if (!onlyCommentFrom(line, pos)) {
            return fail("hex data must be bytes of two hex digits separated by commas");
        } else {
            break;
        }
    }
    const bool stringType =
        op->type == regtype::Sz || op->type == regtype::ExpandSz || op->type == regtype::MultiSz;
    if (!unicode_ && stringType) {
        const std::u16string wide = codePage_.toWide(std::string(op->data.begin(), op->data.end()));
        op->data.clear();
        appendUtf16Le(op->data, wide);
    }
    return true;
}

void appendEscaped(std::u16string& out, std::u16string_view text) {
    for (char16_t c : text) {
        switch (c) {
            case u'\\':
                out += u"\\\\";
                break;
            case u'"':
                out += u"\\\"";
                break;
            case u'\n':
                out += u"\\n";
                break;
            case u'\r':
                out += u"\\r";
                break;
            default:
                out.push_back(c);
        }
    }
}

// The text of a REG_SZ that the string form gives back byte for byte: whole UTF-16 units,
// one terminator at the end and none before it, no broken surrogate pair.
std::optional<std::u16string> plainString(const std::vector<std::uint8_t>& data) {
    if (data.size() < 2 || data.size() % 2 != 0 || data[data.size() - 1] != 0 ||
        data[data.size() - 2] != 0) {
        return std::nullopt;
    }
    std::u16string text;
    for (size_t i = 0; i + 2 < data.size(); i += 2) {
        text.push_back(char16_t(data[i] | (data[i + 1] << 8)));
    }
    const QString check = QString::fromStdU16String(text);
    if (text.find(u'\0') != std::u16string::npos || !check.isValidUtf16()) {
        return std::nullopt;
    }
    return text;
}

void appendHexByte(std::u16string& out, std::uint8_t byte) {
    static constexpr char16_t kDigits[] = u"0123456789abcdef";
    out.push_back(kDigits[byte >> 4]);
    out.push_back(kDigits[byte & 0xf]);
}

}  // namespace

std::u16string_view regRootName(RegRoot root) {
    return kRootNames[int(root)];
}

std::optional<RegRoot> regRootFromName(std::u16string_view name) {
    for (int i = 0; i < kRegRootCount; ++i) {
        const RegRoot root = RegRoot(i);
        const std::u16string_view candidate = kRootNames[i];
        if (root == RegRoot::PerformanceData || candidate.size() != name.size()) {
            continue;
        }
        bool same = true;
        for (size_t c = 0; c < name.size() && same; ++c) {
            same = asciiUpper(name[c]) == candidate[c];
        }
        if (same) {
            return root;
        }
    }
    return std::nullopt;
}

RegParseResult parseRegText(std::string_view bytes, const CodePage& codePage) {
    return Parser(decodeText(bytes, codePage), codePage).run();
}

RegTextWriter::RegTextWriter() : text_(kHeader5) {
    text_ += u"\r\n";
}

void RegTextWriter::key(std::u16string_view path) {
    text_ += u"\r\n[";
    text_ += path;
    text_ += u"]\r\n";
}

void RegTextWriter::value(std::u16string_view name, std::uint32_t type,
                          const std::vector<std::uint8_t>& data) {
    const size_t lineStart = text_.size();
    if (name.empty()) {
        text_ += u"@=";
    } else {
        text_ += u'"';
        appendEscaped(text_, name);
        text_ += u"\"=";
    }
    if (type == regtype::Sz) {
        if (const auto text = plainString(data)) {
            text_ += u'"';
            appendEscaped(text_, *text);
            text_ += u"\"\r\n";
            return;
        }
    }
    if (type == regtype::Dword && data.size() == 4) {
        text_ += u"dword:";
        for (int i = 3; i >= 0; --i) {
            appendHexByte(text_, data[size_t(i)]);
        }
        text_ += u"\r\n";
        return;
    }
    if (type == regtype::Binary) {
        text_ += u"hex:";
    } else {
        text_ += u"hex(" + QString::number(type, 16).toStdU16String() + u"):";
    }
    size_t lineLength = text_.size() - lineStart;
    for (size_t i = 0; i < data.size(); ++i) {
        appendHexByte(text_, data[i]);
        if (i + 1 == data.size()) {
            break;
        }
        text_ += u',';
        lineLength += 3;
        if (lineLength >= kHexWrapColumn) {
            text_ += u"\\\r\n  ";
            lineLength = 2;
        }
    }
    text_ += u"\r\n";
}

std::string regFileBytes(const std::u16string& text) {
    std::string bytes(2 + text.size() * 2, '\0');
    bytes[0] = '\xff';
    bytes[1] = '\xfe';
    for (size_t i = 0; i < text.size(); ++i) {
        bytes[2 + 2 * i] = char(text[i] & 0xff);
        bytes[3 + 2 * i] = char(text[i] >> 8);
    }
    return bytes;
}

}  // namespace platform::portable
