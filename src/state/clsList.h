#pragma once
#include <QString>
#include <QtGlobal>

#include <array>
#include <vector>

#include "platform/MessageBox.h"

namespace state {

// Non-visual table of rows, the in-memory model behind a list control: a main text, up to six
// sub-items, a check mark and a caller's tag per row. Removing a row only marks it invalid, so
// indexes stay stable and callers skip gaps with ItemValid. A bad index or sub-item index is
// reported in a message box and the call does nothing (getters answer 0 or "").
class clsList {
public:
    static constexpr int kMaxSubItems = 6;

    explicit clsList(platform::MessageBox& messageBox);

    // subItemCount is clamped to 0..6; then Clear.
    void InitList(int subItemCount, int growBy);
    void Clear();
    // The new Count, which is the row's index + 1.
    int ItemAdd(const QString& text, qint32 tag = 0);
    // subIndex runs from 1 to the list's sub-item count; false when either index is bad.
    bool SubItemSet(int index, int subIndex, const QString& text);

    int Count() const { return count_; }
    int columnCount() const { return subItemCount_ + 1; }
    // Upper bound of the row array, which holds capacity() + 1 rows.
    int capacity() const { return capacity_; }

    bool ItemChecked(int index);
    void setItemChecked(int index, bool checked);
    void ItemRemove(int index);
    bool ItemValid(int index);
    qint32 ItemTag(int index);
    void setItemTag(int index, qint32 tag);
    QString ItemText(int index);
    void setItemText(int index, const QString& text);
    QString SubItemText(int index, int subIndex);

private:
    struct Row {
        bool valid = false;
        bool checked = false;
        QString text;
        std::array<QString, kMaxSubItems> subItems;
        qint32 tag = 0;
    };

    // The row at index, or nullptr after telling the user the index is out of range.
    Row* IsItemValid(int index);
    bool subIndexValid(int subIndex, const char* method);
    void tell(const QString& text);

    platform::MessageBox& messageBox_;
    std::vector<Row> rows_;
    int capacity_ = 0;
    int subItemCount_ = 0;
    int growBy_ = 0;
    int count_ = 0;
    int cursor_ = -1;
};

}  // namespace state
