#include <gtest/gtest.h>

#include <QStringList>

#include "state/clsList.h"
#include "support/RecordingMessageBox.h"

namespace {

const QString kBadIndex = "Function IsItemValid -- invalid item index supplied: ";

class ClsListTest : public ::testing::Test {
protected:
    QStringList shownTexts() const {
        QStringList texts;
        for (const auto& box : messages.shown) {
            texts << box.text;
        }
        return texts;
    }

    testing_support::RecordingMessageBox messages;
    state::clsList list{messages};
};

// Sub-items are clamped to 0..6; the array holds capacity + 1 rows before it grows by its step,
// a zero step still makes room, and Clear keeps the capacity.
TEST_F(ClsListTest, InitListClampsAndTheArrayGrowsByItsStep) {
    list.InitList(9, 10);
    EXPECT_EQ(list.columnCount(), 7);
    list.InitList(-1, 10);
    EXPECT_EQ(list.columnCount(), 1);

    list.InitList(0, 3);
    for (int i = 1; i <= 4; ++i) {
        EXPECT_EQ(list.ItemAdd(QString::number(i), i), i);
    }
    EXPECT_EQ(list.capacity(), 3);
    EXPECT_EQ(list.ItemAdd("5"), 5);
    EXPECT_EQ(list.capacity(), 6);
    EXPECT_EQ(list.ItemText(4), "5");
    EXPECT_EQ(list.ItemTag(3), 4);
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.capacity(), 3);

    list.InitList(1, 0);
    for (int i = 0; i < 4; ++i) {
        list.ItemAdd("row");
    }
    EXPECT_EQ(list.ItemText(3), "row");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(ClsListTest, RemoveOnlyMarksTheRowInvalid) {
    list.InitList(2, 5);
    list.ItemAdd("first", 7);
    list.SubItemSet(0, 2, "two");
    list.setItemChecked(0, true);
    list.ItemAdd("second");

    list.ItemRemove(0);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_FALSE(list.ItemValid(0));
    EXPECT_TRUE(list.ItemValid(1));
    EXPECT_EQ(list.ItemText(0), "first");
    EXPECT_EQ(list.ItemTag(0), 7);
    EXPECT_TRUE(list.ItemChecked(0));
    EXPECT_EQ(list.SubItemText(0, 2), "two");
    EXPECT_TRUE(messages.shown.empty());
}

// Every access with a bad row or sub-item index tells the user, changes nothing and answers
// empty; the messages keep their spelling.
TEST_F(ClsListTest, BadIndexesShowTheirMessagesAndAnswerEmpty) {
    list.InitList(2, 5);
    list.ItemAdd("only", 3);
    EXPECT_EQ(list.ItemText(1), "");
    EXPECT_EQ(list.ItemTag(-1), 0);
    EXPECT_FALSE(list.ItemValid(1));
    EXPECT_FALSE(list.ItemChecked(1));
    EXPECT_EQ(list.SubItemText(1, 1), "");
    EXPECT_FALSE(list.SubItemSet(1, 1, "x"));
    list.setItemText(1, "x");
    list.setItemTag(1, 9);
    list.setItemChecked(1, true);
    list.ItemRemove(1);
    ASSERT_EQ(messages.shown.size(), 10u);
    EXPECT_EQ(messages.shown[1].text, kBadIndex + "-1");
    EXPECT_EQ(messages.shown[0].caption, "");
    EXPECT_EQ(messages.shown[0].style, 0u);
    EXPECT_EQ(list.Count(), 1);
    EXPECT_TRUE(list.ItemValid(0));

    messages.shown.clear();
    EXPECT_EQ(list.SubItemText(0, 0), "");
    EXPECT_FALSE(list.SubItemSet(0, 3, "three"));
    EXPECT_EQ(shownTexts(),
              (QStringList{"Method SubItemText -- invalid sub item index suplied: 0",
                           "Method SubItemSet -- invalid sub item index suplied: 3"}));
}

}  // namespace
