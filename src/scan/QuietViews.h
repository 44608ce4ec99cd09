#pragma once
#include "scan/IgnoreList.h"
#include "scan/ScanPageView.h"
#include "scan/ScanStatistics.h"

namespace scan {

// Pages that nobody sees, for the runs without windows: the console's, a benchmark's, a test's.
// A view that shows something overrides what it shows.
class QuietScanPage : public ScanPageView {
public:
    void showInternetReminder() override {}
    void showScan() override {}
    void showStartPage() override {}
    void scanPhase(int) override {}
    void showScanLayout(const QString&) override {}
    void clearResults() override {}
    void setTotalItemsDetected(const QString& caption) override { totalItemsDetected_ = caption; }
    QString totalItemsDetected() const override { return totalItemsDetected_; }
    void showRunning(bool) override {}
    void setProgressMaximum(int) override {}
    void showProgress(int, int) override {}
    void enableStop(bool) override {}
    void addResult(const ScanResult&) override {}
    void showNotice(const QString&) override {}
    void showEmptyLayout() override {}
    void finishScanLayout() override {}
    void playSound(const QString&) override {}

private:
    QString totalItemsDetected_;
};

// The ignore page without rows to check, and the statistics panel without captions.
class QuietListPages : public IgnorePageView, public StatisticsPanelView {
public:
    void beginRows() override {}
    void addRow(const QStringList&) override {}
    void endRows(int) override {}
    int rowCount() override { return 0; }
    bool rowChecked(int) override { return false; }
    void setDeleteEnabled(bool) override {}
    void setScanNowData(int, const QString&) override {}
};

}  // namespace scan
