#include "platform/portable/MachineFacts.h"

#include <QFile>
#include <QRegularExpression>
#include <QSaveFile>
#include <QString>
#include <QStringList>

namespace platform::portable {

namespace {

void addProblem(std::string* problems, const std::string& text) {
    if (problems != nullptr) {
        problems->append(text).append("\n");
    }
}

// Reads a number into target; a text that is not one leaves the default.
void readNumber(const QString& value, int* target, const std::string& where,
                std::string* problems) {
    bool ok = false;
    const int number = value.trimmed().toInt(&ok);
    if (ok) {
        *target = number;
    } else {
        addProblem(problems, where + ": not a number, keeping " + std::to_string(*target));
    }
}

}  // namespace

void MachineFacts::setStandardEnvironment() {
    const std::string profile = "C:\\Users\\" + userName;
    environment = {
        {"ALLUSERSPROFILE", "C:\\ProgramData"},
        {"APPDATA", profile + "\\AppData\\Roaming"},
        {"COMPUTERNAME", computerName},
        {"LOCALAPPDATA", profile + "\\AppData\\Local"},
        {"ProgramData", "C:\\ProgramData"},
        {"ProgramFiles", "C:\\Program Files"},
        {"SystemDrive", "C:"},
        {"SystemRoot", "C:\\Windows"},
        {"TEMP", profile + "\\AppData\\Local\\Temp"},
        {"TMP", profile + "\\AppData\\Local\\Temp"},
        {"USERNAME", userName},
        {"USERPROFILE", profile},
        {"windir", "C:\\Windows"},
    };
}

MachineFacts MachineFacts::read(const std::filesystem::path& file, std::string* problems) {
    MachineFacts facts;
    QFile input(QString::fromStdString(file.string()));
    if (!input.open(QIODevice::ReadOnly)) {
        addProblem(problems, "machine.ini: cannot be read, using the defaults");
        facts.setStandardEnvironment();
        return facts;
    }
    const QStringList lines =
        QString::fromUtf8(input.readAll()).split(QRegularExpression("[\r\n]+"));
    QString section;
    bool environmentSeen = false;
    int lineNumber = 0;
    for (const QString& raw : lines) {
        ++lineNumber;
        const QString line = raw.trimmed();
        if (line.isEmpty() || line.startsWith(';')) {
            continue;
        }
        const std::string where = "machine.ini:" + std::to_string(lineNumber);
        if (line.startsWith('[') && line.endsWith(']')) {
            section = line.mid(1, line.size() - 2).trimmed().toLower();
            environmentSeen = environmentSeen || section == "environment";
            continue;
        }
        const qsizetype equals = line.indexOf('=');
        if (equals <= 0) {
            addProblem(problems, where + ": not a key=value line, passed over");
            continue;
        }
        const QString key = line.left(equals).trimmed();
        const QString value = line.mid(equals + 1).trimmed();
        const std::string text = value.toStdString();
        const QString name = key.toLower();
        if (section == "environment") {
            facts.environment[key.toStdString()] = text;
        } else if (section == "programs") {
            facts.programs[key.toStdString()] = text;
        } else if (section == "computer" && name == "username") {
            facts.userName = text;
        } else if (section == "computer" && name == "computername") {
            facts.computerName = text;
        } else if (section == "os" && name == "platform") {
            readNumber(value, &facts.os.platform, where, problems);
        } else if (section == "os" && name == "version") {
            const QStringList parts = value.split('.');
            bool majorOk = false;
            bool minorOk = parts.size() == 2;
            const int major = parts.value(0).toInt(&majorOk);
            const int minor = parts.value(1).toInt(&minorOk);
            if (majorOk && minorOk) {
                facts.os.major = major;
                facts.os.minor = minor;
            } else {
                addProblem(problems, where + ": version is not major.minor, keeping the default");
            }
        } else if (section == "os" && name == "build") {
            readNumber(value, &facts.os.build, where, problems);
        } else if (section == "locale" && name == "abbrevlangname") {
            facts.localeAbbreviation = text;
        } else if (section == "locale" && name == "ansicodepage") {
            int codePage = int(facts.ansiCodePage);
            readNumber(value, &codePage, where, problems);
            facts.ansiCodePage = unsigned(codePage);
        } else if (section == "locale" && name == "shortdate") {
            facts.shortDateFormat = text;
        } else if (section == "locale" && name == "timeformat") {
            facts.timeFormat = text;
        } else if (section == "screen" && name == "twipsperpixelx") {
            readNumber(value, &facts.twipsPerPixelX, where, problems);
        } else if (section == "screen" && name == "twipsperpixely") {
            readNumber(value, &facts.twipsPerPixelY, where, problems);
        } else if (section == "fonts" && name == "names") {
            facts.fonts.clear();
            for (const QString& font : value.split(';', Qt::SkipEmptyParts)) {
                facts.fonts.push_back(font.trimmed().toStdString());
            }
        } else {
            addProblem(problems, where + ": unknown key " + key.toStdString() + ", passed over");
        }
    }
    if (!environmentSeen) {
        facts.setStandardEnvironment();
    }
    return facts;
}

bool MachineFacts::write(const std::filesystem::path& file) const {
    QString text;
    const auto line = [&text](const QString& content) { text += content + "\r\n"; };
    const auto pair = [&line](const char* key, const std::string& value) {
        line(QString::fromLatin1(key) + "=" + QString::fromStdString(value));
    };
    line("; The Windows computer that this folder stands for.");
    line("[Computer]");
    pair("UserName", userName);
    pair("ComputerName", computerName);
    line("[OS]");
    pair("Platform", std::to_string(os.platform));
    pair("Version", std::to_string(os.major) + "." + std::to_string(os.minor));
    pair("Build", std::to_string(os.build));
    line("[Locale]");
    pair("AbbrevLangName", localeAbbreviation);
    pair("AnsiCodePage", std::to_string(ansiCodePage));
    pair("ShortDate", shortDateFormat);
    pair("TimeFormat", timeFormat);
    line("[Screen]");
    pair("TwipsPerPixelX", std::to_string(twipsPerPixelX));
    pair("TwipsPerPixelY", std::to_string(twipsPerPixelY));
    line("[Fonts]");
    std::string names;
    for (const auto& font : fonts) {
        names += (names.empty() ? "" : ";") + font;
    }
    pair("Names", names);
    line("[Environment]");
    for (const auto& [key, value] : environment) {
        pair(key.c_str(), value);
    }
    line("; Windows program = the host program that runs in its place.");
    line("[Programs]");
    for (const auto& [key, value] : programs) {
        pair(key.c_str(), value);
    }
    QSaveFile output(QString::fromStdString(file.string()));
    if (!output.open(QIODevice::WriteOnly)) {
        return false;
    }
    output.write(text.toUtf8());
    return output.commit();
}

}  // namespace platform::portable
