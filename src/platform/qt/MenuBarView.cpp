#include "platform/qt/MenuBarView.h"

#include "platform/Desktop.h"
#include "platform/qt/EditRoles.h"
#include "platform/qt/MakeChild.h"

#include <QApplication>
#include <QKeySequence>
#include <QMenu>

#include <algorithm>

namespace larkspool {

namespace {

// In Qt, Ctrl is the system's own command key on every platform.
QKeySequence ShortcutOf(const MenuItem& item) {
    QString keys = QString::fromStdString(item.shortcut);
    return QKeySequence(keys.replace(QLatin1String("Cmd"), QLatin1String("Ctrl")));
}

QAction::MenuRole SystemRoleOf(const MenuItem& item) {
    switch (item.role) {
    case MenuRole::Quit:
        return QAction::QuitRole;
    case MenuRole::About:
        return QAction::AboutRole;
    default:
        return QAction::NoRole;
    }
}

} // namespace

MenuBarView::MenuBarView(Window& shown, Desktop& theDesktop, QWidget& shell)
    : window(&shown), desktop(theDesktop), bar(MakeChild<QMenuBar>(shell)) {
    for (const Menu& menu : desktop.menuBar.menus) {
        Add(menu);
    }
    bar.ensurePolished();
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*before*/, QWidget* now) { NoteFocus(now); });
}

int MenuBarView::Height() const {
    return bar.isNativeMenuBar() || bar.actions().isEmpty() ? 0 : bar.sizeHint().height();
}

void MenuBarView::Add(const Menu& menu) {
    QMenu* shown = bar.addMenu(QString::fromStdString(menu.caption));
    shown->setObjectName(QString::fromStdString(menu.name));
    for (const MenuItem& item : menu.items) {
        AddItem(*shown, item);
    }
    connect(shown, &QMenu::aboutToShow, this, [this] { RefreshAll(); });
}

void MenuBarView::AddItem(QMenu& menu, const MenuItem& item) {
    if (item.role == MenuRole::Separator) {
        menu.addSeparator();
        return;
    }
    QAction* action = menu.addAction(QString::fromStdString(item.caption));
    action->setObjectName(QString::fromStdString(item.name));
    action->setMenuRole(SystemRoleOf(item));
    const QKeySequence keys = ShortcutOf(item);
    // With the same keys on two items, Qt would run neither.
    if (std::none_of(actions.begin(), actions.end(),
                     [&keys](const auto& other) { return other.second->shortcut() == keys; })) {
        action->setShortcut(keys);
    }
    actions.emplace_back(item, action);
    connect(action, &QAction::triggered, this, [this, item] { Perform(item); });
}

bool MenuBarView::IsEnabled(const MenuItem& item) const {
    if (IsEditRole(item.role)) {
        return CanEdit(item.role, field);
    }
    return window != nullptr && (item.role == MenuRole::Quit || desktop.Answers(item, window));
}

void MenuBarView::RefreshAll() {
    for (const auto& [item, action] : actions) {
        action->setEnabled(IsEnabled(item));
    }
}

void MenuBarView::RefreshShortcuts() {
    for (const auto& [item, action] : actions) {
        // Text fields take their own keys before any shortcut; reading the clipboard at every key
        // would be slow.
        action->setEnabled(IsEditRole(item.role) ? !field.isNull() : IsEnabled(item));
    }
}

void MenuBarView::Perform(const MenuItem& item) {
    if (window == nullptr) {
        return;
    }
    if (IsEditRole(item.role)) {
        if (!field.isNull()) {
            Edit(item.role, *field);
        }
    } else if (item.role == MenuRole::Quit) {
        desktop.Raise([this] {
            if (const auto quit = desktop.quitRequested) {
                quit(QuitCause::User);
            }
        });
    } else if (desktop.Answers(item, window)) {
        desktop.Raise([this, item] { desktop.Perform(item, window); });
    }
}

// A menu bar that is opened by key takes the focus, and an inactive window loses it.
void MenuBarView::NoteFocus(QWidget* focused) {
    auto* const focusedField = qobject_cast<QLineEdit*>(focused);
    if (focusedField != nullptr && focusedField->window() == bar.window()) {
        field = focusedField;
    } else if (focused != nullptr && focused != &bar) {
        field = nullptr;
    }
}

void MenuBarView::Detach() { window = nullptr; }

} // namespace larkspool
