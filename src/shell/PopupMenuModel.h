#pragma once
#include <QString>

#include <cstdint>
#include <vector>

namespace shell {

// Flags of a menu entry, with the values of the system's menu calls, so that the entry can be
// handed to the native menu as it is.
namespace menuflag {
inline constexpr std::uint32_t Grayed = 1;
inline constexpr std::uint32_t Checked = 8;
inline constexpr std::uint32_t Separator = 2048;
}  // namespace menuflag

// The popup menus of a form, remembered by name, as clspopupMenu builds them from the lines of
// the Menus section. The view draws a menu from its entries and reports the command ID picked.
class PopupMenuModel {
public:
    struct Entry {
        int id;
        QString text;
        std::uint32_t flags;
    };
    struct Menu {
        QString name;
        std::vector<Entry> entries;
    };

    // "Name|Entry|-|Entry": entries get the command IDs 1, 2, ... in order; "-" is a
    // separator and the entry numbered defaultEntry is checked. False for an empty line.
    bool HB_CreatePopupMenu(const QString& menuLine, int defaultEntry);
    bool HB_DestroyPopupMenus();

    // The first menu of exactly that name, or nullptr.
    const Menu* find(const QString& name) const;
    const std::vector<Menu>& menus() const { return menus_; }

    // By command ID; a negative index is ignored.
    void EnableMnuItem(const QString& name, int index, bool enable);
    // By command ID; the entry becomes a plain, enabled, unchecked text.
    void ChangeMenuItemText(const QString& name, int index, const QString& text);
    // Inserts at position index (0-based, past the end appends) with command ID index; with
    // replace, the entry at position index - 1 goes first.
    void InsertMenuItem(const QString& name, int index, const QString& text, bool replace);
    // By command ID.
    void DeleteMenuItem(const QString& name, int index);

private:
    Menu* findMenu(const QString& name);
    Entry* findEntry(const QString& name, int id);

    std::vector<Menu> menus_;
};

}  // namespace shell
