#pragma once

#include <QApplication>

#include <functional>
#include <string>

namespace larkspool {

// Qt's application object, with the program's style, colors and font. Owned by the desktop.
class Application : public QApplication {
  public:
    Application(int& argc, char** argv, const std::string& name);

    // Follows the desktop's light or dark scheme if it has changed.
    void FollowScheme();

    std::function<void()> quitAsked;    // the system's own quit command
    std::function<void()> sessionEnded; // the user logs out

  protected:
    bool event(QEvent* event) override;

  private:
    bool desktopIsDark = false;
};

} // namespace larkspool
