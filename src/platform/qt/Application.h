#pragma once

#include <QApplication>

#include <functional>
#include <string>

namespace larkspool {

// Qt's application object, dressed in the program's style, colours and font. Owned by the desktop.
class Application : public QApplication {
  public:
    Application(int& argc, char** argv, const std::string& name);

    std::function<void()> quitAsked;    // the system's own quit command
    std::function<void()> sessionEnded; // the user logs out

  protected:
    bool event(QEvent* event) override;
};

} // namespace larkspool
