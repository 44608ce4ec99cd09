#pragma once
#include <QSet>

#include "scan/IgnoreList.h"
#include "scan/ScanStatistics.h"

namespace cli {

// A message box on the console: a Yes/No question is printed as "question<TAB>text<TAB>Yes"
// and answered Yes (the command was the user's choice); any other box's text is printed.
int answerOnConsole(const QString& text, std::uint32_t style);

// The ignore page and the statistics panel on the console: the rows to remove are checked
// beforehand, a question is answered Yes (the command was the user's choice), a box's text
// is printed as a line, and the panel's captions are kept for printing.
class ConsolePages final : public scan::IgnorePageView, public scan::StatisticsPanelView {
public:
    void beginRows() override { rows_ = 0; }
    void addRow(const QStringList&) override { ++rows_; }
    void endRows(int) override {}
    int rowCount() override { return rows_; }
    bool rowChecked(int row) override { return checked.contains(row); }
    void setDeleteEnabled(bool) override {}
    int showMessage(const QString& text, std::uint32_t style) override {
        return answerOnConsole(text, style);
    }
    void setScanNowData(int index, const QString& caption) override;

    QSet<int> checked;
    QString captions[6];

private:
    int rows_ = 0;
};

}  // namespace cli
