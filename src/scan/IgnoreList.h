#pragma once
#include <QString>
#include <QStringList>
#include <cstdint>

#include "localisation/LanguageText.h"
#include "state/SettingsFiles.h"
#include "state/UniMessageBox.h"
#include "state/clsList.h"
#include "state/lst.h"

namespace scan {

// The ignore page as the logic sees it: the check-box list lstIgnore, the count beside it,
// and the remove button.
class IgnorePageView {
public:
    virtual ~IgnorePageView() = default;
    // Hides and empties the list while it is rebuilt.
    virtual void beginRows() = 0;
    // One row, unchecked: version, name, publisher and location as they are shown.
    virtual void addRow(const QStringList& fields) = 0;
    // Shows the list again with its number of rows in lblTotalIgnored.
    virtual void endRows(int count) = 0;
    virtual int rowCount() = 0;
    virtual bool rowChecked(int row) = 0;
    virtual void setDeleteEnabled(bool enabled) = 0;
};

// Settings\Ignored.cus and its three copies in memory. The hidden list lst.lstIgnoreListFile
// is the master: changes go to it, the file is written from it, and IgnoreEntryList and the
// page's list are rebuilt from it.
class IgnoreList {
public:
    IgnoreList(state::lst& lst, state::clsList& IgnoreEntryList, state::SettingsFiles& files,
               const localisation::LanguageText& language, IgnorePageView& view,
               const state::UniMessageBox& box);

    // Rebuilds the page's list and IgnoreEntryList from the hidden list. A line is kept when
    // one of its name, publisher and location is not blank; four and five fields load alike.
    // The number of rows.
    int LoadIgnoredToList();
    // Removes the checked rows after the user's Yes, saves and reloads.
    void cmdDeleteSelected_Click();

    // A file line from a list row: the item text and "|" with withItemText, the sub-items
    // joined by "|", then "|" and the row's tag (nothing for a row without one).
    static QString RowToLine(state::clsList& list, int row, bool withItemText);

private:
    QString text(const char* name) const;

    state::lst& lst_;
    state::clsList& entries_;
    state::SettingsFiles& files_;
    const localisation::LanguageText& language_;
    IgnorePageView& view_;
    const state::UniMessageBox& box_;
};

}  // namespace scan
