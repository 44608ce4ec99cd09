#include "localisation/LanguageAssembler.h"

#include <QDateTime>
#include <limits>

#include "core/AnsiText.h"
#include "core/BasicText.h"
#include "localisation/BasicErrors.h"
#include "platform/FileSystem.h"

namespace localisation {

namespace {

const QString kCrLf = QStringLiteral("\r\n");
const QString kSourceFolder = QStringLiteral("SourceCode\\");
const QString kCommentMarker = QStringLiteral(";+++");
// Searches for the marker and for the next section start begin this far behind a section's
// first character, past its head.
constexpr int kHeadReach = 20;

// A run-time fault of the assembly: it ends the run in AssembleLanguageFile's handler.
struct Fault {
    int number;
};

QString codeStringsMarker() {
    return QStringLiteral("_Code_") + QStringLiteral("Strings]]");
}

// Basic's Mid$(text, start, 1), which faults for a start below 1.
QChar charAt(const QString& text, int start) {
    if (start < 1) {
        throw Fault{basicerror::InvalidProcedureCall};
    }
    return start <= text.size() ? text[start - 1] : QChar();
}

}  // namespace

LanguageAssembler::LanguageAssembler(platform::Platform& platform, LanguageText& language,
                                     const LanguageOptions& options)
    : platform_(platform), language_(language), options_(options), fileIO_(platform) {}

std::string LanguageAssembler::ansi(const QString& path) const {
    return core::toAnsi(platform_.codePage, path);
}

std::int64_t LanguageAssembler::modificationTime(const QString& path) {
    const auto time = platform_.files.FileDateTime(ansi(path));
    if (!time) {
        throw Fault{basicerror::FileNotFound};
    }
    return *time;
}

bool LanguageAssembler::PrepareLanguagePaths(QString& errorText) {
    const QString& id = language_.languageId();
    if (id.size() != 2) {
        errorText = QStringLiteral("Wrong or missing language ID: ") + id;
        return false;
    }
    languageRoot_ = options_.parentFolder + QStringLiteral("localized\\");
    listFile_ = languageRoot_ + options_.applicationId + u'\\' + options_.loaderFileName;
    if (!platform_.files.FileExists(ansi(listFile_))) {
        errorText = QStringLiteral("File '") + listFile_ + QStringLiteral("' cannot be found");
        return false;
    }
    QString targetFolder =
        options_.parentFolder + options_.applicationId + QStringLiteral("\\localized\\") + id;
    if (!platform_.files.FolderExists(ansi(targetFolder))) {
        errorText = QStringLiteral("Folder '") + targetFolder + QStringLiteral("' does not exist");
        return false;
    }
    targetDate_ = QDateTime(QDate(2015, 1, 1), QTime(0, 0)).toSecsSinceEpoch();
    if (!targetFolder.endsWith(u'\\')) {
        targetFolder += u'\\';
    }
    QString name = QStringLiteral("language.ini");
    if (options_.resolve) {
        name =
            options_.encryption ? QStringLiteral("language.inx") : QStringLiteral("language.inr");
    }
    targetFile_ = targetFolder + name;
    // The found name is compared with the plain names only, case and all, so a scrambled
    // target keeps the date of 2015 and is rebuilt whenever a source is newer than that.
    const QString found =
        QString::fromStdString(platform_.files.Dir(ansi(targetFile_), platform::fileattr::Normal));
    if (!found.isEmpty()) {
        const QString dated = name == u"language.ini" ? name : QStringLiteral("language.inr");
        if (found == dated) {
            targetDate_ = modificationTime(targetFile_);
        }
    }
    return true;
}

bool LanguageAssembler::AssembleLanguageFile(QString& errorText) {
    errorText.clear();
    changed_ = false;
    sources_.clear();
    try {
        if (!PrepareLanguagePaths(errorText)) {
            return false;
        }
        QString listText;
        if (!fileIO_.ReadUTF8File(listFile_, listText, errorText, true, false, false)) {
            return false;
        }
        if (!readSourceList(listText, errorText)) {
            return false;
        }
        if (!changed_) {
            errorText = QStringLiteral("The target file is up-to-date");
            return true;
        }
        combined_.clear();
        records_.clear();
        for (const QString& source : sources_) {
            if (!AppendSourceFile(source, errorText)) {
                return false;
            }
        }
        if (!AppendCodeStrings(errorText)) {
            return false;
        }
        if (options_.resolve) {
            language_.SetLanguageText(combined_);
            errorText.clear();
            if (!ResolveAllVariables(errorText)) {
                return false;
            }
            combined_ = language_.GetLanguageText();
        }
        platform_.files.Kill(ansi(targetFile_));
        if (!fileIO_.WriteUTF8File(targetFile_, combined_, errorText, options_.encryption)) {
            return false;
        }
        if (options_.encryption) {
            platform_.files.Kill(ansi(targetFile_.left(targetFile_.size() - 1) + u'i'));
        }
        return true;
    } catch (const Fault& fault) {
        // The text gathered so far tells what went wrong; a fault without one tells itself.
        if (errorText.isEmpty()) {
            errorText = QStringLiteral("Error ") + QString::number(fault.number) +
                        QStringLiteral(" in function AssembleLanguageFile: ") +
                        BasicErrorDescription(fault.number);
        }
        return false;
    }
}

bool LanguageAssembler::readSourceList(const QString& listText, QString& errorText) {
    const QStringList lines = core::split(listText, kCrLf);
    for (int number = 0; number < lines.size(); ++number) {
        const QString& line = lines[number];
        if (core::trim(line).startsWith(u';') || !line.contains(u"file=")) {
            continue;
        }
        const QStringList parts = core::split(line, QStringLiteral("="));
        if (parts.size() != 2) {
            errorText = QStringLiteral("Error in LanguageLoader.ini line ") +
                        QString::number(number + 1) + QStringLiteral(" - ") + line;
            return false;
        }
        const QString path =
            languageRoot_ + StripQuotes(QString(parts[1]).replace(QStringLiteral("{LANGUAGE_ID}"),
                                                                  language_.languageId()));
        sources_.append(path);
        if (!platform_.files.FileExists(ansi(path))) {
            // The comma where a closing quote would stand is the message as users know it.
            errorText = QStringLiteral("Could not locate language file '") + path + u',';
        }
        if (modificationTime(path) > targetDate_) {
            changed_ = true;
        }
    }
    return true;
}

bool LanguageAssembler::AppendSourceFile(const QString& path, QString& errorText) {
    QString text;
    if (!fileIO_.ReadUTF8File(path, text, errorText, false, false, false)) {
        return false;
    }
    const int from = core::inStr(1, path, kSourceFolder);
    if (from == 0) {
        throw Fault{basicerror::InvalidProcedureCall};
    }
    const QString source = core::mid(path, from);
    if (!ExtractCodeStrings(text, source, errorText)) {
        return false;
    }
    if (!combined_.isEmpty()) {
        combined_ += QStringLiteral(";### Appended File: ") + source + QStringLiteral(" ###") +
                     kCrLf + kCrLf;
    }
    combined_ += text;
    return true;
}

// Positions are 1-based as in the routine this follows. A section is cut out together with
// the first "[" of the section behind it, so sources keep their code strings last.
bool LanguageAssembler::ExtractCodeStrings(QString& text, const QString& source,
                                           QString& errorText) {
    const QString marker = codeStringsMarker();
    // When the search would begin again where it began, the loop could never end: the first
    // code-strings section found is commented out and a live one follows it.
    const auto unreachable = [&](int start) {
        if (core::inStr(start + kHeadReach, text, marker) == 0) {
            return false;
        }
        errorText = QStringLiteral("CodeString section ") + QString::number(records_.size() + 1) +
                    QStringLiteral(" in ") + source +
                    QStringLiteral(
                        " cannot be reached: a commented-out or empty CodeString "
                        "section stands before it");
        return true;
    };
    int start = 0;
    while (core::inStr(start + kHeadReach, text, marker) != 0) {
        const int found = core::inStr(1, text, marker);
        if (found == 0) {
            errorText = QStringLiteral("Could not locate CodeString section ") +
                        QString::number(records_.size() + 1);
            return false;
        }
        int lineStart = found - 4;
        while (charAt(text, lineStart - 1) != u'\n') {
            --lineStart;
        }
        start = lineStart;
        int next = core::inStr(start + kHeadReach, text, QStringLiteral("[["));
        if (next == 0) {
            next = static_cast<int>(text.size());
        }
        if (next <= start + kHeadReach) {
            if (unreachable(start)) {
                return false;
            }
            continue;
        }
        const QString section = core::mid(text, start, next - start + 1);
        const QString head = core::trim(core::splitOne(section, kCrLf).constFirst());
        if (head.startsWith(u';')) {
            if (unreachable(start)) {
                return false;
            }
            continue;
        }
        if (records_.size() == std::numeric_limits<std::int16_t>::max()) {
            throw Fault{basicerror::Overflow};
        }
        records_.append({head, RemoveCommentLines(section, kCommentMarker, true), source});
        text = core::left(text, start - 1) + core::mid(text, next + 1);
        text = RemoveCommentLines(text, kCommentMarker, false);
        start = 0;
    }
    return true;
}

QString LanguageAssembler::RemoveCommentLines(const QString& text, const QString& marker,
                                              bool skipFirstLine) {
    const QStringList lines = core::split(text, kCrLf);
    QStringList kept;
    for (qsizetype i = skipFirstLine ? 1 : 0; i < lines.size(); ++i) {
        if (!lines[i].contains(marker)) {
            kept.append(lines[i]);
        }
    }
    return kept.join(kCrLf);
}

bool LanguageAssembler::AppendCodeStrings(QString& errorText) {
    if (records_.isEmpty()) {
        errorText = QStringLiteral("There were no CodeString sections which should not happen!");
        return false;
    }
    combined_ += kCrLf + kCrLf + kCrLf +
                 QStringLiteral(";---------------------- CodeStrings ----------------------") +
                 kCrLf + QStringLiteral("[[Code_Strings]]");
    for (const CodeString& record : records_) {
        combined_ += kCrLf + kCrLf + kCrLf + QStringLiteral(";--- CodeStrings added from ") +
                     record.source + QStringLiteral(" ---") + kCrLf + record.body;
    }
    return true;
}

bool LanguageAssembler::ResolveAllVariables(QString& errorText) {
    errorText.clear();
    language_.InitCodeStrings();
    const QString productName = QStringLiteral("{strLoc_CS_ProductName_{#AppID}}");
    QStringList lines = core::split(language_.GetLanguageText(), kCrLf);
    for (QString& line : lines) {
        const QString trimmed = core::trim(line);
        if (trimmed.isEmpty() || trimmed.startsWith(u';')) {
            continue;
        }
        QString separator = QStringLiteral("==");
        QStringList parts = core::split(line, separator);
        if (parts.size() != 2) {
            separator = QStringLiteral("=");
            parts = core::split(line, separator);
        }
        if (parts.size() != 2) {
            continue;
        }
        QString value = parts[1];
        if (!value.contains(u'{') || value.contains(productName)) {
            continue;
        }
        value.replace(QStringLiteral("{CRLF}"), QStringLiteral("||CRLF|"));
        if (!value.contains(u"{#AppID}")) {
            value.replace(QStringLiteral("{#"), QStringLiteral("||#"));
        }
        if (language_.shelterSharedValues()) {
            ShelterSharedValues(value);
        }
        if (value.contains(u'{')) {
            value = language_.ResolveVariables(value);
        }
        UnshelterSharedValues(value);
        value.replace(QStringLiteral("||CRLF|"), QStringLiteral("{CRLF}"));
        value.replace(QStringLiteral("||#"), QStringLiteral("{#"));
        value.replace(QStringLiteral(">>>"), QStringLiteral("{#"));
        value.replace(kCrLf, QStringLiteral("{CRLF}"));
        line = parts[0] + separator + value;
    }
    language_.SetLanguageText(lines.join(kCrLf));
    return true;
}

}  // namespace localisation
