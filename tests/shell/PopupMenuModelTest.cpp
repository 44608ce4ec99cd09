#include <gtest/gtest.h>

#include <QStringList>

#include "shell/PopupMenuModel.h"

namespace {

using shell::PopupMenuModel;
namespace flag = shell::menuflag;

// "id:text:flags" for each entry, so a whole menu compares in one line.
QStringList describe(const PopupMenuModel& model, const QString& name) {
    QStringList out;
    const auto* menu = model.find(name);
    if (menu == nullptr) {
        return {"missing"};
    }
    for (const auto& entry : menu->entries) {
        out << QString("%1:%2:%3").arg(entry.id).arg(entry.text).arg(entry.flags);
    }
    return out;
}

// Entries are numbered from 1 with the separator's and the default's flags; the first menu of a
// name wins until all are destroyed, and names match exactly.
TEST(PopupMenuModelTest, MenusAreNumberedAndFoundByTheirExactName) {
    PopupMenuModel model;
    ASSERT_TRUE(model.HB_CreatePopupMenu("Sort|Name|Date|-", 2));
    EXPECT_EQ(describe(model, "Sort"), (QStringList{"1:Name:0", "2:Date:8", "3:-:2048"}));
    ASSERT_TRUE(model.HB_CreatePopupMenu("Empty", 1));
    EXPECT_TRUE(model.find("Empty")->entries.empty());
    EXPECT_FALSE(model.HB_CreatePopupMenu("", 0));
    model.HB_CreatePopupMenu("Sort|Other", 0);
    EXPECT_EQ(describe(model, "Sort")[0], "1:Name:0");
    EXPECT_EQ(model.find("sort"), nullptr);
    EXPECT_EQ(model.menus().size(), 3u);
    EXPECT_TRUE(model.HB_DestroyPopupMenus());
    EXPECT_TRUE(model.menus().empty());
}

// Enable, change and delete go by command id, insert by position; an unknown menu or id
// changes nothing.
TEST(PopupMenuModelTest, EntriesChangeByCommandIdAndInsertByPosition) {
    PopupMenuModel model;
    model.HB_CreatePopupMenu("Tray|Open|-|Exit", 3);
    model.EnableMnuItem("Tray", 1, false);
    model.EnableMnuItem("Tray", -1, false);
    model.EnableMnuItem("tray", 3, false);
    EXPECT_EQ(describe(model, "Tray"), (QStringList{"1:Open:1", "2:-:2048", "3:Exit:8"}));
    model.EnableMnuItem("Tray", 1, true);
    model.ChangeMenuItemText("Tray", 3, "Quit");
    model.ChangeMenuItemText("Tray", 9, "None");
    EXPECT_EQ(describe(model, "Tray"), (QStringList{"1:Open:0", "2:-:2048", "3:Quit:0"}));

    model.InsertMenuItem("Tray", 1, "Scan", false);
    model.InsertMenuItem("Tray", 4, "Quit", true);
    model.InsertMenuItem("Tray", -1, "Last", false);
    EXPECT_EQ(describe(model, "Tray"),
              (QStringList{"1:Open:0", "1:Scan:0", "2:-:2048", "4:Quit:0", "-1:Last:0"}));
    model.DeleteMenuItem("Tray", 1);
    model.DeleteMenuItem("Tray", 7);
    EXPECT_EQ(describe(model, "Tray"),
              (QStringList{"1:Scan:0", "2:-:2048", "4:Quit:0", "-1:Last:0"}));
}

}  // namespace
