#include "shell/PopupMenuModel.h"

#include <algorithm>
#include <utility>

#include "core/BasicText.h"

namespace shell {

bool PopupMenuModel::HB_CreatePopupMenu(const QString& menuLine, int defaultEntry) {
    const QStringList parts = core::split(menuLine, QStringLiteral("|"));
    if (parts.isEmpty()) {
        return false;
    }
    Menu menu{parts.front(), {}};
    for (int number = 1; number < parts.size(); ++number) {
        const QString& text = parts[number];
        std::uint32_t flags = number == defaultEntry ? menuflag::Checked : 0;
        if (text == QLatin1String("-")) {
            flags = menuflag::Separator;
        }
        menu.entries.push_back({number, text, flags});
    }
    menus_.push_back(std::move(menu));
    return true;
}

bool PopupMenuModel::HB_DestroyPopupMenus() {
    menus_.clear();
    return true;
}

const PopupMenuModel::Menu* PopupMenuModel::find(const QString& name) const {
    const auto it = std::find_if(menus_.begin(), menus_.end(),
                                 [&](const Menu& menu) { return menu.name == name; });
    return it == menus_.end() ? nullptr : &*it;
}

PopupMenuModel::Menu* PopupMenuModel::findMenu(const QString& name) {
    return const_cast<Menu*>(std::as_const(*this).find(name));
}

PopupMenuModel::Entry* PopupMenuModel::findEntry(const QString& name, int id) {
    Menu* menu = findMenu(name);
    if (menu == nullptr) {
        return nullptr;
    }
    const auto it = std::find_if(menu->entries.begin(), menu->entries.end(),
                                 [id](const Entry& entry) { return entry.id == id; });
    return it == menu->entries.end() ? nullptr : &*it;
}

void PopupMenuModel::EnableMnuItem(const QString& name, int index, bool enable) {
    if (index < 0) {
        return;
    }
    if (Entry* entry = findEntry(name, index)) {
        entry->flags = enable ? entry->flags & ~menuflag::Grayed : entry->flags | menuflag::Grayed;
    }
}

void PopupMenuModel::ChangeMenuItemText(const QString& name, int index, const QString& text) {
    if (Entry* entry = findEntry(name, index)) {
        entry->text = text;
        entry->flags = 0;
    }
}

void PopupMenuModel::InsertMenuItem(const QString& name, int index, const QString& text,
                                    bool replace) {
    Menu* menu = findMenu(name);
    if (menu == nullptr) {
        return;
    }
    auto& entries = menu->entries;
    const auto size = static_cast<int>(entries.size());
    if (replace && index - 1 >= 0 && index - 1 < size) {
        entries.erase(entries.begin() + (index - 1));
    }
    // As the system's call takes the position unsigned, a negative one appends too.
    const auto count = static_cast<int>(entries.size());
    const int position = index < 0 || index > count ? count : index;
    entries.insert(entries.begin() + position, Entry{index, text, 0});
}

void PopupMenuModel::DeleteMenuItem(const QString& name, int index) {
    Menu* menu = findMenu(name);
    if (menu == nullptr) {
        return;
    }
    // Only the first entry with the ID goes, as with the system's menus.
    auto& entries = menu->entries;
    const auto it = std::find_if(entries.begin(), entries.end(),
                                 [index](const Entry& entry) { return entry.id == index; });
    if (it != entries.end()) {
        entries.erase(it);
    }
}

}  // namespace shell
