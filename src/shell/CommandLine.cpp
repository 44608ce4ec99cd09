#include "shell/CommandLine.h"

#include <array>
#include <functional>

#include "core/BasicNumber.h"
#include "core/BasicText.h"

namespace shell {

namespace {

// The month codes of the DX lock: a code's place in the table, halved, is its month. No two
// neighbouring codes form another code across their border.
constexpr std::array<const char*, 12> kMonthCodes = {"kq", "zt", "mv", "rb", "xd", "wl",
                                                     "pf", "hn", "cj", "gs", "yu", "ea"};

const QString kIgnoring = QStringLiteral("Ignoring");
const QString kArgumentsMissing = QStringLiteral("Command Line arguments missing");

struct Switch {
    const char* key;
    std::function<void(ProcessState&, const QString& value, const QDate& today)> apply;
};

const std::array<Switch, 12>& switches() {
    static const std::array<Switch, 12> table{{
        {"DEBUG", [](ProcessState&, const QString&, const QDate&) {}},
        {"DX", [](ProcessState& s, const QString& v,
                  const QDate& today) { s.debugUnlock = IsDebugCodeValid(v, today); }},
        {"DELAY5", [](ProcessState& s, const QString&, const QDate&) { s.delay = true; }},
        {"FREEZE", [](ProcessState& s, const QString&, const QDate&) { s.freeze = true; }},
        {"NOPRODUCTION",
         [](ProcessState& s, const QString&, const QDate&) { s.production = false; }},
        {"NOENCRYPTION",
         [](ProcessState& s, const QString&, const QDate&) { s.encryption = false; }},
        {"RESOLVE", [](ProcessState& s, const QString&, const QDate&) { s.resolve = true; }},
        {"LOADER", [](ProcessState& s, const QString& v, const QDate&) { s.loaderFileName = v; }},
        {"L5291", [](ProcessState& s, const QString&, const QDate&) { s.testModeL5291 = true; }},
        {"U5291", [](ProcessState& s, const QString&, const QDate&) { s.testModeU5291 = true; }},
        {"A5291", [](ProcessState& s, const QString&, const QDate&) { s.testModeA5291 = true; }},
        {"FAILJAPANESEFONTS",
         [](ProcessState& s, const QString&, const QDate&) { s.failFonts = true; }},
    }};
    return table;
}

}  // namespace

bool IsDebugCodeValid(const QString& code, const QDate& today) {
    const QString lower = core::lcase(code);
    const QString monthCode = core::mid(lower, 3, 2);
    int month = 0;
    for (size_t i = 0; i < kMonthCodes.size(); ++i) {
        if (monthCode == QLatin1String(kMonthCodes[i])) {
            month = int(i) + 1;
        }
    }
    const QString dayText = core::mid(lower, 8, 1) + core::mid(lower, 7, 1);
    return month == today.month() && core::val(dayText) == today.day();
}

bool ParseCommandLine(ProcessState& state, const QString& commandText, QString& errorText,
                      const QDate& today) {
    errorText.clear();
    state.languageId.clear();
    const QString text = commandText.isEmpty() ? QStringLiteral("/App=TW") : commandText;

    for (const QString& piece : core::split(text, QStringLiteral("/"))) {
        if (piece.isEmpty()) {
            continue;
        }
        const QStringList parts = core::split(piece, QStringLiteral("="));
        const QString key = core::ucase(core::trim(parts.value(0)));
        const QString value = core::trim(parts.value(1));

        if (key == QLatin1String("LANGUAGE")) {
            if (value.size() != 2) {
                errorText = "Error processing command line argument: " + piece;
                break;
            }
            state.languageId = core::lcase(value);
            continue;
        }
        bool known = false;
        for (const auto& entry : switches()) {
            if (key == QLatin1String(entry.key)) {
                entry.apply(state, value, today);
                known = true;
                break;
            }
        }
        if (!known) {
            errorText += errorText.isEmpty() ? "Ignoring unknown command line argument(s): " + piece
                                             : ", " + piece;
        }
    }

    if (errorText.isEmpty() || errorText == kArgumentsMissing || errorText.startsWith(kIgnoring)) {
        return true;
    }
    errorText += " -- using default values";
    return false;
}

}  // namespace shell
