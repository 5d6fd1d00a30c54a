#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace larkspool {

// What the desktop itself must know about an item. The editing roles act on the text field that has
// the focus; About is in the application's own menu on systems that have one.
enum class MenuRole { Ordinary, Separator, Quit, About, Undo, Cut, Copy, Paste, Clear, SelectAll };

// An item of a menu bar or of a context menu. "&" in a caption marks the mnemonic.
struct MenuItem {
    std::string name;
    std::string caption;
    std::string shortcut; // "Cmd+W"; Cmd is the system's own command key
    MenuRole role = MenuRole::Ordinary;
    int index = 0;               // of a context menu's item, for its handler
    std::optional<int> tag = {}; // also for its handler
};

struct Menu {
    std::string name;
    std::string caption;
    std::vector<MenuItem> items;
};

struct MenuBar {
    std::vector<Menu> menus;
};

// The handlers of menu items, by name. A handler returns true: the event is handled.
class MenuHandlers {
  public:
    void Add(std::string itemName, std::function<bool()> handler) {
        handlers.emplace_back(std::move(itemName), std::move(handler));
    }
    void Clear() { handlers.clear(); }
    bool Answers(const std::string& itemName) const { return Find(itemName) != nullptr; }
    bool Perform(const std::string& itemName) const {
        const auto* handler = Find(itemName);
        if (handler == nullptr) {
            return false;
        }
        const auto kept = *handler; // it may destroy the window that holds it
        return kept();
    }

  private:
    const std::function<bool()>* Find(const std::string& itemName) const {
        for (const auto& [name, handler] : handlers) {
            if (name == itemName) {
                return &handler;
            }
        }
        return nullptr;
    }

    std::vector<std::pair<std::string, std::function<bool()>>> handlers;
};

} // namespace larkspool
