#include "platform/qt/QtDesktop.h"

#include "platform/qt/Fonts.h"
#include "platform/qt/QtHTTPSocket.h"
#include "platform/qt/QtTCPServer.h"
#include "platform/qt/QtTCPSocket.h"
#include "platform/qt/QtTimer.h"
#include "platform/qt/QtUDPSocket.h"
#include "platform/qt/QtWindowView.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QNetworkProxy>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace larkspool {

namespace {

// The build tree and the installed tree have one shape.
QString SoundLibraryPath() {
#ifdef Q_OS_MACOS
    const QString file = QStringLiteral("libtonebridge.dylib");
#else
    const QString file = QStringLiteral("libtonebridge.so");
#endif
    return QDir::cleanPath(QCoreApplication::applicationDirPath() +
                           QStringLiteral("/../lib/larkspool/") + file);
}

} // namespace

QtDesktop::QtDesktop(int& argc, char** argv, const std::string& applicationName)
    : application(argc, argv, applicationName), signalWatcher([this] { Quit(QuitCause::Signal); }),
      boxes(*this), sound(SoundLibraryPath()) {
    // Finding the system's fonts takes as long as loading the sound library does beside it.
    QApplication::setFont(LargestFont());
    // Nothing here goes through a proxy; asking the system for one would hold up the first window.
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    application.quitAsked = [this] { Quit(QuitCause::User); };
    application.sessionEnded = [this] { Quit(QuitCause::Logout); };
}

QtDesktop::~QtDesktop() {
    if (exitCode) {
        endingLimit.Start(*exitCode);
    }
    boxes.CloseAll();
    // What has been let go of since the loop ended.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QtDesktop::Quit(QuitCause cause) {
    if (!quitRequested) {
        EndEventLoop();
        return;
    }
    Raise([this, cause] { quitRequested(cause); });
}

int QtDesktop::Run(const std::function<void()>& opened) {
    QMetaObject::invokeMethod(
        &application, [this, opened] { Raise(opened); }, Qt::QueuedConnection);
    exitCode = QApplication::exec();
    return *exitCode;
}

void QtDesktop::EndEventLoop() { QCoreApplication::exit(0); }

std::unique_ptr<WindowView> QtDesktop::MakeWindowView(Window& window) {
    FitApplicationFont(window);
    return std::make_unique<QtWindowView>(window, *this);
}

std::unique_ptr<TCPSocket> QtDesktop::MakeTCPSocket() {
    return std::make_unique<QtTCPSocket>(*this);
}

std::unique_ptr<TCPServer> QtDesktop::MakeTCPServer() {
    return std::make_unique<QtTCPServer>(*this);
}

std::unique_ptr<UDPSocket> QtDesktop::MakeUDPSocket() {
    return std::make_unique<QtUDPSocket>(*this);
}

std::unique_ptr<HTTPSocket> QtDesktop::MakeHTTPSocket() {
    const auto shared = [this]() -> QNetworkAccessManager& {
        if (!network) {
            network = std::make_unique<QNetworkAccessManager>();
            network->setProxy(QNetworkProxy::NoProxy);
        }
        return *network;
    };
    return std::make_unique<QtHTTPSocket>(*this, shared);
}

std::unique_ptr<Timer> QtDesktop::MakeTimer() { return std::make_unique<QtTimer>(*this); }

double QtDesktop::UtcNow() const {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration<double>(sinceEpoch).count();
}

void QtDesktop::CallLater(int milliseconds, std::function<void()> call) {
    QTimer::singleShot(std::max(0, milliseconds), &application,
                       [this, deferred = std::move(call)] { Raise(deferred); });
}

void QtDesktop::MsgBox(const std::string& text) { boxes.ShowText(text); }

void QtDesktop::ShowDialog(const MessageDialog& dialog,
                           std::function<void(MessageDialog::Answer)> answered) {
    boxes.Ask(dialog, std::move(answered));
}

void QtDesktop::ShowOpenFileDialog(const std::string& filter,
                                   std::function<void(std::optional<FolderItem>)> chosen) {
    boxes.AskForFile(filter, std::nullopt, std::move(chosen));
}

void QtDesktop::ShowSaveFileDialog(const std::string& filter, const std::string& defaultName,
                                   std::function<void(std::optional<FolderItem>)> chosen) {
    boxes.AskForFile(filter, defaultName, std::move(chosen));
}

std::unique_ptr<RunningDesktop> MakeDesktop(int& argc, char** argv,
                                            const std::string& applicationName) {
    return std::make_unique<QtDesktop>(argc, argv, applicationName);
}

} // namespace larkspool
