#pragma once

#include "platform/Menu.h"

#include <QAction>
#include <QLineEdit>
#include <QMenuBar>
#include <QObject>
#include <QPointer>

#include <string>
#include <utility>
#include <vector>

namespace larkspool {

class Desktop;
class Window;

// The program's menu bar in one window. Owned by the window's shell.
class MenuBarView : public QObject {
  public:
    MenuBarView(Window& shown, Desktop& theDesktop, QWidget& shell);

    int Height() const; // of the bar in the window, 0 if the system shows it elsewhere
    void SetWidth(int width) { bar.resize(width, Height()); }
    void RefreshShortcuts(); // enables the items that have a handler now
    void Detach();           // the window is destroyed

  private:
    void Add(const Menu& menu);
    void AddItem(QMenu& menu, const MenuItem& item);
    void RefreshAll();
    bool IsEnabled(const MenuItem& item) const;
    void Perform(const MenuItem& item);
    void NoteFocus(QWidget* focused);

    Window* window;
    Desktop& desktop;
    QMenuBar& bar;
    QPointer<QLineEdit> field; // the one that had the focus before the menu took it
    std::vector<std::pair<MenuItem, QAction*>> actions;
};

} // namespace larkspool
