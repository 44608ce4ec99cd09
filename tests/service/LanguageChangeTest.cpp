// Storing the language and changing it while the program runs, with the real service taking
// the registry write.
#include <gtest/gtest.h>

#include <QFile>

#include "core/QtPrinters.h"
#include "shell/LanguageChange.h"
#include "state/LanguageSetting.h"
#include "state/ProductNames.h"
#include "support/RecordingMessageBox.h"
#include "support/RunningService.h"

namespace {

using state::product::key;

// Records what the main window is told, in order.
class RecordingMainView final : public shell::MainLanguageView {
public:
    bool setCaptions(QString& errorText) override {
        calls << "captions";
        errorText = captionsError;
        return captionsError.isEmpty();
    }
    void showLanguageTexts(const shell::MainLanguageTexts& shown) override {
        calls << "texts";
        texts = shown;
    }
    int createMenus(QString& errorText) override {
        calls << "menus";
        errorText = "no menu line";
        return menus;
    }
    void setTrayTip(const QString& tip) override { calls << "tray:" + tip; }
    void endProcess() override { calls << "end"; }

    QStringList calls;
    QString captionsError;
    int menus = 2;
    shell::MainLanguageTexts texts;
};

std::string shippedLanguage(const char* id) {
    QFile file(QString(TALLOWICK_PROGRAM_DATA_DIR "/localized/") + id + "/Language.inx");
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

class LanguageChangeTest : public ::testing::Test {
protected:
    LanguageChangeTest() {
        // The product key as the installer leaves it: RegSetString writes into a key that exists.
        registry.CreateKey(key());
        state.programFolder = "C:\\Program Files\\Tallowick";
        for (const char* id : {"en", "de"}) {
            service.machine.placeFile(
                std::string("C:\\Program Files\\Tallowick\\localized\\") + id + "\\Language.inx",
                shippedLanguage(id));
        }
    }

    testing_support::RunningService service;
    testing_support::RecordingMessageBox& box = service.box;
    state::modRegistry& registry = service.registry;
    state::modServiceCom& channel = service.channel;
    shell::ProcessState state;
    localisation::LanguageText language{"TW"};
    RecordingMainView view;
    shell::LanguageChange change{service.platform, language, state, registry, channel, view};
};

// The service carries the write out: its log holds its start and nothing it failed at, and
// no box told of a send that went nowhere. The direct write behind it would hide either.
TEST_F(LanguageChangeTest, SaveLanguageStoresThroughTheService) {
    EXPECT_TRUE(state::SaveLanguage(registry, channel, key(), "fr"));
    EXPECT_EQ(state::GetStoredLanguage(registry, key()), "fr");
    EXPECT_EQ(service.machine.serviceLog().size(), 1)
        << service.machine.serviceLog().join('\n').toStdString();
    EXPECT_TRUE(box.shown.empty());
}

TEST_F(LanguageChangeTest, TheWindowGetsTheNewWordsAndTheChoiceIsStored) {
    ASSERT_TRUE(change.changeLanguage("de"));
    ASSERT_EQ(view.calls.size(), 4);
    EXPECT_EQ(view.calls.mid(0, 3), (QStringList{"captions", "texts", "menus"}));
    EXPECT_EQ(view.calls[3], "tray:" + view.texts.trayTip);
    EXPECT_EQ(view.texts.daysOfWeek.size(), 7);
    EXPECT_EQ(view.texts.schedulerActions.size(), 2);
    EXPECT_FALSE(view.texts.columnPublisher.isEmpty());
    EXPECT_EQ(language.loadedLanguage(), "de");
    EXPECT_EQ(state.languageId, "de");
    EXPECT_EQ(state::GetStoredLanguage(registry, key()), "de");
    EXPECT_TRUE(box.shown.empty());
}

// A language without its file: the message keeps its misspelling, the text in memory counts
// as stale and nothing is stored.
TEST_F(LanguageChangeTest, AFailedReloadIsShownAndStopsTheChange) {
    ASSERT_TRUE(change.changeLanguage("en"));
    view.calls.clear();
    EXPECT_FALSE(change.changeLanguage("fr"));
    ASSERT_EQ(box.shown.size(), 1u);
    EXPECT_EQ(box.shown[0].text,
              "Error loading the language filee: Error in function LoadUTF8IniFile: File "
              "'C:\\Program Files\\Tallowick\\localized\\fr\\Language.inx' cannot be found");
    EXPECT_EQ(box.shown[0].caption, "Tallowick");
    EXPECT_TRUE(view.calls.isEmpty());
    EXPECT_EQ(language.loadedLanguage(), "");
    EXPECT_EQ(state::GetStoredLanguage(registry, key()), "en");
}

TEST_F(LanguageChangeTest, FailedCaptionsOrMenusStopTheChange) {
    view.captionsError = "App Section TW-TW_frmMain is missing or has no data";
    EXPECT_FALSE(change.changeLanguage("de"));
    EXPECT_EQ(box.shown.back().text,
              "InitForm Error: App Section TW-TW_frmMain is missing or has no data");
    EXPECT_EQ(view.calls, QStringList{"captions"});

    view.captionsError.clear();
    view.menus = 0;
    view.calls.clear();
    EXPECT_FALSE(change.changeLanguage("de"));
    EXPECT_EQ(box.shown.back().text, "CreateMenus Error: no menu line");
    EXPECT_EQ(view.calls, (QStringList{"captions", "texts", "menus", "end"}));
    EXPECT_EQ(state::GetStoredLanguage(registry, key()), "");
}

}  // namespace
