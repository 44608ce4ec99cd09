#include "state/clsList.h"

#include <algorithm>

namespace state {

clsList::clsList(platform::MessageBox& messageBox) : messageBox_(messageBox) {
    Clear();
}

void clsList::InitList(int subItemCount, int growBy) {
    subItemCount_ = std::clamp(subItemCount, 0, kMaxSubItems);
    growBy_ = growBy;
    Clear();
}

void clsList::Clear() {
    capacity_ = std::max(growBy_, 0);
    rows_.assign(static_cast<std::size_t>(capacity_) + 1, Row{});
    count_ = 0;
    cursor_ = -1;
}

int clsList::ItemAdd(const QString& text, qint32 tag) {
    if (count_ > capacity_) {
        // A step below 1 would leave no room for the new row.
        capacity_ += std::max(growBy_, 1);
        rows_.resize(static_cast<std::size_t>(capacity_) + 1);
    }
    Row& row = rows_[static_cast<std::size_t>(count_)];
    row.text = text;
    row.tag = tag;
    row.valid = true;
    row.checked = false;
    cursor_ = -1;
    return ++count_;
}

bool clsList::SubItemSet(int index, int subIndex, const QString& text) {
    Row* row = IsItemValid(index);
    if (row == nullptr || !subIndexValid(subIndex, "SubItemSet")) {
        return false;
    }
    row->subItems[static_cast<std::size_t>(subIndex - 1)] = text;
    return true;
}

bool clsList::ItemChecked(int index) {
    const Row* row = IsItemValid(index);
    return row != nullptr && row->checked;
}

void clsList::setItemChecked(int index, bool checked) {
    if (Row* row = IsItemValid(index)) {
        row->checked = checked;
    }
}

void clsList::ItemRemove(int index) {
    if (Row* row = IsItemValid(index)) {
        row->valid = false;
    }
}

bool clsList::ItemValid(int index) {
    const Row* row = IsItemValid(index);
    return row != nullptr && row->valid;
}

qint32 clsList::ItemTag(int index) {
    const Row* row = IsItemValid(index);
    return row != nullptr ? row->tag : 0;
}

void clsList::setItemTag(int index, qint32 tag) {
    if (Row* row = IsItemValid(index)) {
        row->tag = tag;
    }
}

QString clsList::ItemText(int index) {
    const Row* row = IsItemValid(index);
    return row != nullptr ? row->text : QString();
}

void clsList::setItemText(int index, const QString& text) {
    if (Row* row = IsItemValid(index)) {
        row->text = text;
    }
}

QString clsList::SubItemText(int index, int subIndex) {
    const Row* row = IsItemValid(index);
    if (row == nullptr || !subIndexValid(subIndex, "SubItemText")) {
        return QString();
    }
    return row->subItems[static_cast<std::size_t>(subIndex - 1)];
}

clsList::Row* clsList::IsItemValid(int index) {
    if (index < 0 || index >= count_) {
        tell(QStringLiteral("Function IsItemValid -- invalid item index supplied: ") +
             QString::number(index));
        return nullptr;
    }
    return &rows_[static_cast<std::size_t>(index)];
}

bool clsList::subIndexValid(int subIndex, const char* method) {
    if (subIndex >= 1 && subIndex <= subItemCount_) {
        return true;
    }
    // "suplied" is the wording users and logs have always seen.
    tell(QStringLiteral("Method %1 -- invalid sub item index suplied: %2")
             .arg(QLatin1String(method))
             .arg(subIndex));
    return false;
}

void clsList::tell(const QString& text) {
    messageBox_.show(text.toStdU16String(), std::u16string(), platform::mbstyle::Ok);
}

}  // namespace state
