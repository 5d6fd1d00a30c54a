#include "platform/qt/Application.h"

#include "platform/qt/Accessibility.h"
#include "platform/qt/Palettes.h"
#include "platform/qt/ProxyStyle.h"

#include <QEvent>
#include <QIcon>
#include <QSessionManager>

namespace larkspool {

Application::Application(int& argc, char** argv, const std::string& name)
    : QApplication(argc, argv) {
    setApplicationName(QString::fromStdString(name));
    setDesktopFileName(applicationName());
    setQuitOnLastWindowClosed(false);
#ifndef Q_OS_MACOS // there the bundle has the icon
    setAttribute(Qt::AA_DontUseNativeMenuBar);
    QIcon icon(QStringLiteral(":/larkspool-48.png"));
    icon.addFile(QStringLiteral(":/larkspool-128.png"));
    setWindowIcon(icon);
#endif
    const bool dark = IsDark(palette()); // what Qt has chosen
    setStyle(new ProxyStyle);            // the application owns it
    desktopIsDark = IsDark(style()->standardPalette());
    setPalette(dark ? DarkPalette() : LightPalette());
    InstallAccessibility();
    connect(this, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& /*session*/) {
        if (sessionEnded) {
            sessionEnded();
        }
    });
}

void Application::FollowScheme() {
    // The application's palette may date from the start; the style makes a new one.
    const bool dark = IsDark(style()->standardPalette());
    if (dark != desktopIsDark) {
        desktopIsDark = dark;
        setPalette(dark ? DarkPalette() : LightPalette());
    }
}

bool Application::event(QEvent* event) {
    // By default Qt would close every window and end the loop without asking the program.
    if (event->type() == QEvent::Quit && quitAsked) {
        event->ignore();
        quitAsked();
        return true;
    }
    return QApplication::event(event);
}

} // namespace larkspool
