#include "platform/qt/BackgroundLog.h"
#include "platform/qt/PosixFiles.h"
#include "platform/qt/QtDesktop.h"
#ifdef LARKSPOOL_HAS_DBUS
#include "platform/qt/SleepInhibitor.h"
#endif

#include <QClipboard>
#include <QCursor>
#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QMimeData>
#include <QOperatingSystemVersion>
#include <QPoint>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QSysInfo>
#include <QToolTip>
#include <QUrl>
#include <QVersionNumber>

#include <algorithm>
#include <utility>

namespace larkspool {

namespace {

FolderItem MadeIfMissing(const QString& path) {
    FolderItem folder(path.toStdString());
    folder.CreateFolder();
    return folder;
}

// The program's own folder inside one of the user's.
FolderItem OwnFolder(const QString& location) {
    return MadeIfMissing(location + QLatin1Char('/') + QCoreApplication::applicationName());
}

FolderItem OwnFolder(QStandardPaths::StandardLocation kind) {
    return OwnFolder(QStandardPaths::writableLocation(kind));
}

// Qt 6.4 doesn't know this one.
QString StateLocation() {
#ifdef Q_OS_MACOS
    return QDir::homePath() + QStringLiteral("/Library/Logs");
#else
    const QString chosen = qEnvironmentVariable("XDG_STATE_HOME");
    return QDir::isAbsolutePath(chosen) ? chosen
                                        : QDir::homePath() + QStringLiteral("/.local/state");
#endif
}

} // namespace

FolderItem QtDesktop::Folder(SpecialFolder kind) {
    switch (kind) {
    case SpecialFolder::Program:
        break;
    case SpecialFolder::Preferences:
        return OwnFolder(QStandardPaths::GenericConfigLocation);
    case SpecialFolder::ApplicationData:
        return OwnFolder(QStandardPaths::GenericDataLocation);
    case SpecialFolder::State:
        return OwnFolder(StateLocation());
    case SpecialFolder::Documents:
        return MadeIfMissing(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    }
    return FolderItem(QCoreApplication::applicationDirPath().toStdString());
}

std::unique_ptr<FileLock> QtDesktop::Lock(const FolderItem& file) { return LockFile(file); }

bool QtDesktop::Settle(const FolderItem& item) { return SettleFile(item); }

std::unique_ptr<LogFile> QtDesktop::MakeLogFile(RolledFile file) {
    return std::make_unique<BackgroundLog>(
        [file = std::move(file)](const std::string& lines) mutable { return file.Append(lines); });
}

std::unique_ptr<StayAwake>
QtDesktop::KeepAwake([[maybe_unused]] const std::string& reason,
                     [[maybe_unused]] std::function<void(const std::string& refusal)> answered) {
#ifdef LARKSPOOL_HAS_DBUS
    const auto raise = [this, answered = std::move(answered)](const std::string& refusal) {
        Raise([&answered, &refusal] { answered(refusal); });
    };
    return std::make_unique<SleepInhibitor>(QDBusConnection::systemBus(), reason, raise);
#else
    return std::make_unique<StayAwake>();
#endif
}

std::string QtDesktop::RandomBytes(std::size_t count) {
    std::string bytes(count, '\0');
    std::generate(bytes.begin(), bytes.end(),
                  [] { return static_cast<char>(QRandomGenerator::system()->generate() & 0xff); });
    return bytes;
}

OperatingSystemVersion QtDesktop::SystemVersion() const {
    const auto known = QOperatingSystemVersion::current();
    if (known.majorVersion() >= 0) {
        return {known.majorVersion(), std::max(0, known.minorVersion())};
    }
    const auto kernel = QVersionNumber::fromString(QSysInfo::kernelVersion());
    return {kernel.majorVersion(), kernel.minorVersion()};
}

void QtDesktop::ShowToolTip(const std::string& text) {
    // Qt itself keeps a tool tip this far from the point that it is given.
    const QPoint ownDistance(2, 16);
    const QPoint wanted(0, 20);
    QToolTip::showText(QCursor::pos() + wanted - ownDistance, QString::fromStdString(text));
}

void QtDesktop::HideToolTip() { QToolTip::hideText(); }

void QtDesktop::OpenInBrowser(const std::string& url) {
    const QUrl page(QString::fromStdString(url));
    if (page.scheme() == QLatin1String("http") || page.scheme() == QLatin1String("https")) {
        QDesktopServices::openUrl(page);
    }
}

std::optional<std::string> QtDesktop::ClipboardText() const {
    const QMimeData* content = QGuiApplication::clipboard()->mimeData();
    if (content == nullptr || !content->hasText()) {
        return std::nullopt;
    }
    return content->text().toStdString();
}

bool QtDesktop::ShiftKeyDown() const {
    return QGuiApplication::queryKeyboardModifiers().testFlag(Qt::ShiftModifier);
}

bool QtDesktop::ControlKeyDown() const {
#ifdef Q_OS_MACOS
    return QGuiApplication::queryKeyboardModifiers().testFlag(Qt::MetaModifier);
#else
    return QGuiApplication::queryKeyboardModifiers().testFlag(Qt::ControlModifier);
#endif
}

} // namespace larkspool
