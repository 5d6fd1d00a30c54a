#pragma once

#include "platform/StayAwake.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>

#include <functional>
#include <string>

namespace larkspool {

// What Desktop::KeepAwake promises, by the login manager: it keeps the computer awake as long as
// the file lives that it hands out. Nothing waits for its answer.
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
