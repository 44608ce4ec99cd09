#include "scan/IgnoreList.h"

#include "core/BasicText.h"
#include "platform/MessageBox.h"
#include "state/MessageLoop.h"

namespace scan {

namespace {

constexpr int kFields = 4;
constexpr int kDisplayLength = 220;

// A text as the page shows it: at most 220 characters, a longer one cut and "..." added.
QString displayText(const QString& text) {
    return text.size() > kDisplayLength ? text.left(kDisplayLength) + QStringLiteral("...") : text;
}

}  // namespace

IgnoreList::IgnoreList(state::lst& lst, state::clsList& IgnoreEntryList,
                       state::SettingsFiles& files, const localisation::LanguageText& language,
                       IgnorePageView& view, const state::UniMessageBox& box)
    : lst_(lst),
      entries_(IgnoreEntryList),
      files_(files),
      language_(language),
      view_(view),
      box_(box) {}

QString IgnoreList::text(const char* name) const {
    return language_.GetStrLocValue(QString::fromLatin1(name));
}

QString IgnoreList::RowToLine(state::clsList& list, int row, bool withItemText) {
    QString line = withItemText ? list.ItemText(row) + u'|' : QString();
    QStringList subItems;
    for (int subIndex = 1; subIndex < list.columnCount(); ++subIndex) {
        subItems << list.SubItemText(row, subIndex);
    }
    // A row that was never given a tag has an empty one: the line ends in "|".
    const qint32 tag = list.ItemTag(row);
    return line + subItems.join(u'|') + u'|' + (tag == 0 ? QString() : QString::number(tag));
}

int IgnoreList::LoadIgnoredToList() {
    view_.beginRows();
    entries_.InitList(kFields - 1, 16);
    for (const QString& line : lst_.lstIgnoreListFile) {
        QStringList fields = core::split(line, QStringLiteral("|"));
        while (fields.size() < kFields + 1) {
            fields << QString();
        }
        if (core::trim(fields[1]).isEmpty() && core::trim(fields[2]).isEmpty() &&
            core::trim(fields[3]).isEmpty()) {
            continue;
        }
        QStringList shown;
        for (int i = 0; i < kFields; ++i) {
            shown << displayText(fields[i]);
        }
        view_.addRow(shown);
        const int row = entries_.ItemAdd(fields[0]) - 1;
        for (int i = 1; i < kFields; ++i) {
            entries_.SubItemSet(row, i, fields[i]);
        }
        state::pumpEvents();
    }
    const int count = view_.rowCount();
    view_.endRows(count);
    return count;
}

void IgnoreList::cmdDeleteSelected_Click() {
    using namespace platform::mbstyle;
    const int rows = view_.rowCount();
    if (rows == 0) {
        box_.UniMsgBox(text("strLoc_SH_NoItemsToRemove"), Ok | IconExclamation);
        return;
    }
    int checked = 0;
    for (int row = 0; row < rows; ++row) {
        checked += view_.rowChecked(row) ? 1 : 0;
    }
    if (checked == 0) {
        box_.UniMsgBox(text("strLoc_SH_NoItemsSelected"), IconInformation);
        return;
    }
    if (box_.UniMsgBox(text("strLoc_SH_SureYouWantDeleteIgnoreItems"), YesNo) !=
        platform::mbresult::Yes) {
        return;
    }
    lst_.lstIgnoreListFile.clear();
    view_.setDeleteEnabled(false);
    for (int row = 0; row < rows; ++row) {
        if (!view_.rowChecked(row)) {
            lst_.lstIgnoreListFile << RowToLine(entries_, row, true);
        }
        state::pumpEvents();
    }
    files_.SaveData();
    state::pumpEvents();
    LoadIgnoredToList();
    state::pumpEvents();
    view_.setDeleteEnabled(true);
    box_.UniMsgBox(checked == 1
                       ? text("strLoc_SH_OneItemRemoved")
                       : text("strLoc_SH_NumItemsRemoved")
                             .replace(QStringLiteral(">>>NumItems}"), QString::number(checked)),
                   IconInformation);
}

}  // namespace scan
