#include "platform/qt/SleepInhibitor.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingReply>

#include <utility>

namespace larkspool {

namespace {

QDBusMessage Wish(const std::string& reason) {
    auto message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    message << QStringLiteral("sleep:idle") << QStringLiteral("Larkspool")
            << QString::fromStdString(reason) << QStringLiteral("block");
    return message;
}

// There is no login manager, or no system bus.
bool IsMissing(const QDBusError& error) {
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
    case QDBusError::UnknownInterface:
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownObject:
        return true;
    default: // the service can't be started
        return error.name().startsWith(QLatin1String("org.freedesktop.DBus.Error.Spawn"));
    }
}

} // namespace

SleepInhibitor::SleepInhibitor(const QDBusConnection& bus, const std::string& reason,
                               std::function<void(const std::string& refusal)> answered)
    : call(bus.asyncCall(Wish(reason))), tell(std::move(answered)) {
    QObject::connect(&call, &QDBusPendingCallWatcher::finished, &call, [this] { Answered(); });
}

void SleepInhibitor::Answered() {
    const QDBusPendingReply<QDBusUnixFileDescriptor> reply = call;
    if (!reply.isError()) {
        held = reply.value();
        tell("");
    } else if (!IsMissing(reply.error())) {
        tell(reply.error().message().toStdString());
    }
}

} // namespace larkspool
