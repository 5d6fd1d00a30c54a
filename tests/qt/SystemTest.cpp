// Timers, the loop's end, a missing library, and what keeps a program going that is left alone: a
// log that waits for no disk, a computer that doesn't go to sleep.
#include "platform/qt/BackgroundLog.h"
#include "qt/OnScreen.h"
#ifdef LARKSPOOL_HAS_DBUS
#include "platform/qt/SleepInhibitor.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#endif

#include <QProcess>

#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace larkspool {
namespace {

TEST(Timers, ATimerRepeatsOnceOrNotAtAllAndMayEndInItsOwnTick) {
    auto timer = TheDesktop().MakeTimer();
    int ticks = 0;
    timer->action = [&ticks] { ++ticks; };
    timer->SetPeriod(5);
    timer->SetMode(Timer::Mode::Single);
    EXPECT_TRUE(Eventually([&ticks] { return ticks == 1; }));
    EXPECT_EQ(timer->RunMode(), Timer::Mode::Off);
    LetEventsRun();
    EXPECT_EQ(ticks, 1);
    timer->SetMode(Timer::Mode::Multiple);
    EXPECT_TRUE(Eventually([&ticks] { return ticks >= 4; }));
    timer->SetMode(Timer::Mode::Off);
    const int before = ticks;
    LetEventsRun();
    EXPECT_EQ(ticks, before);
    timer->action = [&timer] { timer.reset(); };
    timer->SetMode(Timer::Mode::Multiple);
    EXPECT_TRUE(Eventually([&timer] { return timer == nullptr; }));
}

// Qt itself would close every window and end the loop behind the program's back.
TEST(Loop, TheSystemsQuitCommandIsAskedOfTheProgram) {
    int asked = 0;
    TheDesktop().quitRequested = [&asked](QuitCause cause) { asked += cause == QuitCause::User; };
    QEvent quit(QEvent::Quit);
    QCoreApplication::sendEvent(qApp, &quit);
    TheDesktop().quitRequested = nullptr;
    EXPECT_EQ(asked, 1);
}

TEST(SoundLibrary, AMissingFunctionIsThrown) {
    QtSoundLibrary library(QStringLiteral("/no/such/library.so"));
    EXPECT_THROW(library.StartSoundOutput(0, 1.0), FunctionNotFound);
}

TEST(BackgroundLog, ADiskThatHangsCostsRowsAndNobodyWaits) {
    std::promise<void> begun;
    std::promise<void> goesOn;
    std::promise<std::string> written;
    std::string text;
    {
        BackgroundLog log([&, isFirst = true](const std::string& lines) mutable {
            if (std::exchange(isFirst, false)) {
                begun.set_value();
                goesOn.get_future().wait();
                return false; // and refuses at last
            }
            written.set_value(lines);
            return true;
        });
        log.Write("refused");
        begun.get_future().wait();
        const std::string kilobyte(999, 'x');
        for (int i = 0; i < 600; ++i) {
            log.Write(kilobyte);
        }
        goesOn.set_value();
        text = written.get_future().get();
    }
    EXPECT_TRUE(text.starts_with("(101 rows are missing here)\nxxx"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 501);
}

#ifdef LARKSPOOL_HAS_DBUS

// A login manager on a bus of its own.
class LoginManager : public QDBusVirtualObject {
  public:
    // Whether the file that was handed out last is still held.
    bool IsHeld() const {
        char byte = 0;
        return read(heldIfOpen, &byte, 1) < 0; // else its end has come
    }

    std::string asked;
    bool refuses = false;

  private:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override {
        asked = call.interface().toStdString() + "." + call.member().toStdString();
        for (const QVariant& argument : call.arguments()) {
            asked += "|" + argument.toString().toStdString();
        }
        int ends[2] = {-1, -1};
        EXPECT_EQ(pipe2(ends, O_CLOEXEC | O_NONBLOCK), 0);
        heldIfOpen = ends[0];
        QDBusUnixFileDescriptor handedOut(ends[1]); // a copy
        close(ends[1]);
        return connection.send(refuses ? call.createErrorReply(QDBusError::AccessDenied,
                                                               QStringLiteral("Access denied"))
                                       : call.createReply(QVariant::fromValue(handedOut)));
    }

    int heldIfOpen = -1; // until the process ends
};

TEST(Sleep, IsHeldOffAsLongAsTheObjectLives) {
    QProcess bus;
    bus.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
    if (!bus.waitForStarted() || !bus.waitForReadyRead()) {
        GTEST_SKIP() << "no dbus-daemon";
    }
    const QString address = QString::fromUtf8(bus.readLine()).trimmed();
    auto theirs = QDBusConnection::connectToBus(address, "manager");
    const auto ours = QDBusConnection::connectToBus(address, "program");
    std::optional<std::string> answer;
    const auto ask = [&] {
        answer.reset();
        return std::make_unique<SleepInhibitor>(
            ours, "a reason", [&answer](const std::string& refusal) { answer = refusal; });
    };

    auto awake = ask();
    LetEventsRun();
    EXPECT_FALSE(answer) << "a computer without a login manager is not spoken of";

    LoginManager manager;
    ASSERT_TRUE(theirs.registerVirtualObject("/org/freedesktop/login1", &manager));
    ASSERT_TRUE(theirs.registerService("org.freedesktop.login1"));
    awake = ask();
    EXPECT_TRUE(Eventually([&] { return answer == ""; }));
    EXPECT_EQ(manager.asked,
              "org.freedesktop.login1.Manager.Inhibit|sleep:idle|Larkspool|a reason|block");
    EXPECT_TRUE(manager.IsHeld());
    awake.reset();
    EXPECT_TRUE(Eventually([&] { return !manager.IsHeld(); }));

    manager.asked.clear();
    ask().reset(); // before the answer
    EXPECT_TRUE(Eventually([&] { return !manager.asked.empty() && !manager.IsHeld(); }));
    EXPECT_FALSE(answer);

    manager.refuses = true;
    awake = ask();
    EXPECT_TRUE(Eventually([&] { return answer == "Access denied"; }));
    QDBusConnection::disconnectFromBus("manager");
    QDBusConnection::disconnectFromBus("program");
    bus.kill();
    bus.waitForFinished();
}

#endif

} // namespace
} // namespace larkspool
