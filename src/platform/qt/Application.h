#pragma once

#include <QApplication>

#include <functional>
#include <string>

namespace larkspool {

// Qt's application object, dressed in the program's style, colours and font. Owned by the desktop.
class Application : public QApplication {
  public:
    Application(int& argc, char** argv, const std::string& name);

    // Takes on the desktop's light or dark scheme where it has changed.
    void FollowScheme();

    std::function<void()> quitAsked;    // the system's own quit command
    std::function<void()> sessionEnded; // the user logs out

  protected:
    bool event(QEvent* event) override;

  private:
    bool desktopIsDark = false;
};

} // namespace larkspool
