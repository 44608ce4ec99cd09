#include "localisation/LanguageText.h"

#include "core/BasicText.h"

namespace localisation {

namespace {

const QString kCrLf = QStringLiteral("\r\n");
constexpr int kPasses = 20;

bool isVariableName(const QString& name) {
    return name.startsWith(u"strLoc_") || name.startsWith(u"str_") || name.startsWith(u"strURL_");
}

}  // namespace

void ShelterSharedValues(QString& text) {
    text.replace(QStringLiteral("{str_"), QStringLiteral("||str_"));
    text.replace(QStringLiteral("{strLoc_ErrorString"), QStringLiteral("||strLoc_ErrorString"));
}

void UnshelterSharedValues(QString& text) {
    text.replace(QStringLiteral("||str_"), QStringLiteral("{str_"));
    text.replace(QStringLiteral("||strLoc_ErrorString"), QStringLiteral("{strLoc_ErrorString"));
}

QString StripQuotes(const QString& text) {
    QString result = text;
    if (result.startsWith(u'"')) {
        result.remove(0, 1);
    }
    if (result.endsWith(u'"')) {
        result.chop(1);
    }
    return result;
}

LanguageText::LanguageText(QString applicationId) : applicationId_(std::move(applicationId)) {}

QString& LanguageText::languageTextBuffer() {
    text_.clear();
    return text_;
}

QStringList LanguageText::GetSection(QString& name) const {
    if (!name.startsWith(u"[[")) {
        name.prepend(u"[[");
    }
    if (!name.endsWith(u"]]")) {
        name.append(u"]]");
    }
    const int start = core::inStr(1, text_, name);
    if (start == 0) {
        return {QString()};
    }
    const int next = core::inStr(start + 2, text_, QStringLiteral("[["));
    // Without a following section the length stops one short of the end of the text.
    const int length = next > 0 ? next - start : static_cast<int>(text_.size()) - start;
    QStringList lines;
    for (const QString& raw : core::split(core::mid(text_, start, length), kCrLf)) {
        const QString line = core::trim(raw);
        if (!line.isEmpty() && !line.startsWith(u';')) {
            lines.append(line);
        }
    }
    return lines;
}

QStringList LanguageText::GetSection(const QString& name) const {
    QString copy = name;
    return GetSection(copy);
}

bool LanguageText::InitCodeStrings() {
    codeStrings_ = GetSection(QStringLiteral("Code_Strings"));
    indexCodeStrings();
    return codeStrings_.size() > 4;
}

bool LanguageText::InitMenuStrings() {
    menuLines_ = GetSection(QStringLiteral("Menus"));
    return menuLines_.size() > 1;
}

// A line is found for a name when it starts with the name and the part before its first "=",
// trimmed, is the name. Lines come trimmed from GetSection, so that part is the index key and
// the line always starts with it; the first line of a key stays in the index.
void LanguageText::indexCodeStrings() {
    index_.clear();
    index_.reserve(codeStrings_.size());
    for (qsizetype i = 0; i < codeStrings_.size(); ++i) {
        const QString& line = codeStrings_[i];
        const qsizetype equals = line.indexOf(u'=');
        if (equals < 0) {
            continue;
        }
        const QString key = core::trim(line.left(equals));
        if (line.startsWith(key) && !index_.contains(key)) {
            index_.insert(key, i);
        }
    }
}

void LanguageText::SetCodeString(const QString& name, const QString& value) {
    const QString line = name + QStringLiteral("==") + value;
    if (const auto found = index_.constFind(name); found != index_.constEnd()) {
        codeStrings_[*found] = line;
    } else {
        index_.insert(name, codeStrings_.size());
        codeStrings_.append(line);
    }
}

QString LanguageText::GetStrLocValue(const QString& name) const {
    const auto found = index_.constFind(name);
    if (found == index_.constEnd()) {
        return QStringLiteral("Error in function GetStrLocValue -- line ") + name;
    }
    // Two variables that name each other would recurse without end.
    if (resolving_.contains(name)) {
        return cycleError(name);
    }
    resolving_.append(name);
    QString value = ProcessLanguageLine(codeStrings_[*found]);
    resolving_.removeLast();
    return value;
}

QString LanguageText::cycleError(const QString& name) const {
    return QStringLiteral("Error in function GetStrLocValue -- variables refer to each other: ") +
           (resolving_ + QStringList{name}).join(QStringLiteral(" > "));
}

QString LanguageText::ProcessLanguageLine(const QString& line) const {
    QStringList parts = core::split(line, QStringLiteral("=="));
    if (parts.size() != 2) {
        parts = core::split(line, QStringLiteral("="));
    }
    if (parts.size() != 2) {
        return QStringLiteral("Error in function ProcessLanguageLine: ") + line;
    }
    QString value = StripQuotes(core::trim(parts[1]));
    if (value.contains(u'{')) {
        value = ResolveVariables(value);
    }
    return value;
}

QString LanguageText::ResolveVariables(QString text) const {
    text.replace(QStringLiteral("{CRLF}"), kCrLf);
    for (int pass = 0; pass < kPasses; ++pass) {
        if (shelter_) {
            ShelterSharedValues(text);
        }
        if (text.contains(u"{#")) {
            text.replace(QStringLiteral("{#AppID}"), applicationId_);
            text.replace(QStringLiteral("{#"), QStringLiteral(">>>"));
        }
        const int open = core::inStr(1, text, QStringLiteral("{"));
        const int close = open > 0 ? core::inStr(open, text, QStringLiteral("}")) : 0;
        if (close > 0) {
            const QString name = core::mid(text, open + 1, close - open - 1);
            const QString placeholder = u'{' + name + u'}';
            if (isVariableName(name)) {
                QString value = GetStrLocValue(name);
                // A value that holds its own placeholder, as the error text of a line that
                // names itself does, would double the text at every pass.
                if (value.contains(placeholder)) {
                    value = cycleError(name);
                }
                if (!value.isEmpty()) {
                    text.replace(placeholder, value);
                }
            }
            if (core::lcase(core::left(name, 3)) == u"mnu") {
                text.replace(placeholder, name);
            }
        }
        if (!text.contains(u'{')) {
            break;
        }
    }
    if (shelter_) {
        UnshelterSharedValues(text);
    }
    return text;
}

QStringList LanguageText::FillComboFromLanguage(const QString& name) const {
    QStringList entries;
    for (const QString& entry : core::split(GetStrLocValue(name), QStringLiteral("|"))) {
        entries.append(core::trim(entry));
    }
    return entries;
}

}  // namespace localisation
