#include "demo/CatalogCsv.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>
#include <string_view>

namespace demo {

namespace {

using Record = std::vector<std::string>;

// Splits CSV text into records; a quoted field may hold separators and line ends.
class CsvReader {
public:
    explicit CsvReader(std::string_view text) : text_(text) {
        if (text_.starts_with("\xEF\xBB\xBF")) {
            text_.remove_prefix(3);
        }
    }

    bool atEnd() const { return position_ >= text_.size(); }
    int line() const { return line_; }
    const std::string& error() const { return error_; }

    // The next record, or nothing when it is malformed (see error()).
    std::optional<Record> next() {
        Record record(1);
        while (position_ < text_.size()) {
            const char c = text_[position_++];
            if (c == '"' && record.back().empty() && !quotedField_) {
                if (!readQuoted(record.back())) {
                    return std::nullopt;
                }
                quotedField_ = true;
            } else if (c == ',') {
                record.emplace_back();
                quotedField_ = false;
            } else if (c == '\n' || c == '\r') {
                if (c == '\r' && position_ < text_.size() && text_[position_] == '\n') {
                    ++position_;
                }
                ++line_;
                break;
            } else if (quotedField_) {
                error_ = "text after the closing quote of a field";
                return std::nullopt;
            } else {
                record.back() += c;
            }
        }
        quotedField_ = false;
        return record;
    }

private:
    bool readQuoted(std::string& field) {
        const int start = line_;
        while (position_ < text_.size()) {
            const char c = text_[position_++];
            if (c == '"') {
                if (position_ < text_.size() && text_[position_] == '"') {
                    ++position_;
                } else {
                    return true;
                }
            } else if (c == '\n') {
                ++line_;
            }
            field += c;
        }
        line_ = start;
        error_ = "a quoted field is not closed";
        return false;
    }

    std::string_view text_;
    std::size_t position_ = 0;
    int line_ = 1;
    bool quotedField_ = false;
    std::string error_;
};

}  // namespace

std::optional<std::vector<CatalogEntry>> readCatalog(const std::filesystem::path& file,
                                                     std::string* problem) {
    const auto fail = [&](int line, const std::string& what) {
        if (problem != nullptr) {
            *problem +=
                file.string() + (line > 0 ? ":" + std::to_string(line) : "") + ": " + what + "\n";
        }
        return std::nullopt;
    };
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        return fail(0, "the catalog cannot be read");
    }
    std::ostringstream contents;
    contents << in.rdbuf();
    const std::string text = contents.str();
    CsvReader reader(text);

    const auto header = reader.next();
    if (!header) {
        return fail(reader.line(), reader.error());
    }
    constexpr std::array<std::string_view, 4> kColumns = {"PackageId", "Version", "Name",
                                                          "LastUpdate"};
    std::array<std::size_t, 4> column{};
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
        column[i] =
            std::size_t(std::find(header->begin(), header->end(), kColumns[i]) - header->begin());
        if (column[i] == header->size() && kColumns[i] != "LastUpdate") {
            return fail(1, "no column " + std::string(kColumns[i]));
        }
    }
    std::vector<CatalogEntry> entries;
    while (!reader.atEnd()) {
        const int line = reader.line();
        auto record = reader.next();
        if (!record) {
            return fail(line, reader.error());
        }
        if (record->size() == 1 && record->front().empty()) {
            continue;  // a blank line
        }
        if (record->size() != header->size()) {
            return fail(line, std::to_string(record->size()) + " fields where the header has " +
                                  std::to_string(header->size()));
        }
        const auto field = [&](std::size_t i) {
            return column[i] < record->size() ? (*record)[column[i]] : std::string();
        };
        entries.push_back({field(0), field(1), field(2), field(3)});
    }
    return entries;
}

}  // namespace demo
