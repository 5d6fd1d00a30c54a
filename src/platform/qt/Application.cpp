#include "platform/qt/Application.h"

#include "platform/qt/Accessibility.h"
#include "platform/qt/Fonts.h"
#include "platform/qt/Palettes.h"
#include "platform/qt/ProxyStyle.h"

#include <QEvent>
#include <QSessionManager>

#include <memory>

namespace larkspool {

Application::Application(int& argc, char** argv, const std::string& name)
    : QApplication(argc, argv) {
    setApplicationName(QString::fromStdString(name));
    setDesktopFileName(applicationName());
    setQuitOnLastWindowClosed(false);
#ifndef Q_OS_MACOS
    setAttribute(Qt::AA_DontUseNativeMenuBar);
#endif
    // What Qt has chosen up to here is the desktop's scheme.
    const bool dark = IsDark(palette());
    setStyle(std::make_unique<ProxyStyle>().release()); // the application owns it
    setPalette(dark ? DarkPalette() : LightPalette());
    setFont(LargestFont());
    InstallAccessibility();
    connect(this, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& /*session*/) {
        if (sessionEnded) {
            sessionEnded();
        }
    });
}

bool Application::event(QEvent* event) {
    // Left to Qt, this would close every window and end the loop behind the program's back.
    if (event->type() == QEvent::Quit && quitAsked) {
        event->ignore();
        quitAsked();
        return true;
    }
    return QApplication::event(event);
}

} // namespace larkspool
