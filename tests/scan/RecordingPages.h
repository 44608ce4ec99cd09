#pragma once
#include <map>
#include <set>
#include <vector>

#include "platform/MessageBox.h"
#include "scan/IgnoreList.h"
#include "scan/ResultsActions.h"
#include "scan/ScanPageView.h"
#include "scan/ScanStatistics.h"
#include "state/MainWindowView.h"
#include "state/UniMessageBox.h"

// The boxes a page's logic shows through the one message box, answered with `answer`.
class RecordingBoxes : public platform::MessageBox {
public:
    int show(const std::u16string& text, const std::u16string&, std::uint32_t style) override {
        boxes.push_back({QString::fromStdU16String(text), style});
        return answer;
    }

    std::vector<std::pair<QString, std::uint32_t>> boxes;
    int answer = platform::mbresult::Yes;
    const state::UniMessageBox box{*this, "Tallowick"};
};

// The ignore page and the statistics panel as a test sees them: rows, checks, boxes, captions.
class RecordingIgnorePage final : public scan::IgnorePageView,
                                  public scan::StatisticsPanelView,
                                  public RecordingBoxes {
public:
    void beginRows() override { rows.clear(); }
    void addRow(const QStringList& fields) override { rows.push_back(fields); }
    void endRows(int count) override { total = count; }
    int rowCount() override { return int(rows.size()); }
    bool rowChecked(int row) override { return checked.count(row) != 0; }
    void setDeleteEnabled(bool enabled) override { deleteEnabled = enabled; }
    void setScanNowData(int index, const QString& caption) override { panel[index] = caption; }

    std::vector<QStringList> rows;
    std::set<int> checked;
    int total = -1;
    bool deleteEnabled = true;
    std::map<int, QString> panel;
};

// The main window and its scan page as a test sees them: every call in order as one word, the
// rows added, the notices and the boxes, which are answered with `answer`.
class RecordingScanPage final : public scan::ScanPageView,
                                public state::MainWindowView,
                                public scan::ResultsPageView,
                                public RecordingBoxes {
public:
    void disableControls() override { calls << "disableControls"; }
    void enableControls() override { calls << "enableControls"; }
    void stopCoSellTimer() override { calls << "stopCoSellTimer"; }
    void showInternetReminder() override { calls << "showInternetReminder"; }
    void showScan() override { calls << "showScan"; }
    void showStartPage() override { calls << "showStartPage"; }
    void scanPhase(int phase) override { calls << "phase" + QString::number(phase); }
    void showScanLayout(const QString& line) override {
        calls << "showScanLayout";
        reportErrorLine = line;
    }
    void clearResults() override { calls << "clearResults"; }
    void setTotalItemsDetected(const QString& caption) override { itemsDetected = caption; }
    QString totalItemsDetected() const override { return itemsDetected; }
    void showRunning(bool running) override { calls << (running ? "running" : "notRunning"); }
    void setProgressMaximum(int maximum) override { progressMaximum = maximum; }
    void showProgress(int value, int) override { progress.push_back(value); }
    void enableStop(bool enabled) override { calls << (enabled ? "enableStop" : "disableStop"); }
    void addResult(const scan::ScanResult& result) override { results.push_back(result); }
    void showNotice(const QString& formName) override { notices << formName; }
    void showEmptyLayout() override { calls << "showEmptyLayout"; }
    void finishScanLayout() override { calls << "finishScanLayout"; }
    void playSound(const QString& file) override { sounds << file; }
    void RestoreWindow() override { calls << "RestoreWindow"; }
    void showUpdatePrompt() override { calls << "showUpdatePrompt"; }
    std::uintptr_t windowHandle() override { return 0x1234; }
    // Forgets what was recorded, for the next scan.
    void reset() {
        calls.clear();
        reportErrorLine.clear();
        itemsDetected.clear();
        progressMaximum = -1;
        progress.clear();
        results.clear();
        notices.clear();
        sounds.clear();
        boxes.clear();
    }

    QStringList calls;
    QString reportErrorLine;
    QString itemsDetected;
    int progressMaximum = -1;
    std::vector<int> progress;
    std::vector<scan::ScanResult> results;
    QStringList notices;
    QStringList sounds;
};
