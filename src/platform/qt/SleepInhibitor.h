#pragma once

#include "platform/StayAwake.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>

#include <functional>
#include <string>

namespace larkspool {

// Implements Desktop::KeepAwake by the login manager, which keeps the computer awake as long as the
// file descriptor that it returns is open. The call does not wait for its answer.
class SleepInhibitor : public StayAwake {
  public:
    SleepInhibitor(const QDBusConnection& bus, const std::string& reason,
                   std::function<void(const std::string& refusal)> answered);

  private:
    void Answered();

    QDBusPendingCallWatcher call;
    std::function<void(const std::string&)> tell;
    QDBusUnixFileDescriptor held;
};

} // namespace larkspool
