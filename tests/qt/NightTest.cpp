// What keeps a program going that is left alone: a log that waits for no disk, a computer that does
// not go to sleep.
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
#include <array>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace larkspool {
namespace {

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
    ~LoginManager() override { CloseEnd(); }

    // Whether the file that was handed out is still held.
    bool IsHeld() const {
        char byte = 0;
        return pipeEnd >= 0 && read(pipeEnd, &byte, 1) < 0; // else its end has come
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
        return connection.send(refuses ? call.createErrorReply(QDBusError::AccessDenied,
                                                               QStringLiteral("Access denied"))
                                       : call.createReply(QVariant::fromValue(HandOut())));
    }
    QDBusUnixFileDescriptor HandOut() {
        CloseEnd();
        std::array<int, 2> ends = {-1, -1};
        EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0);
        pipeEnd = ends[0];
        QDBusUnixFileDescriptor handedOut(ends[1]);
        close(ends[1]);
        return handedOut;
    }
    void CloseEnd() {
        if (pipeEnd >= 0) {
            close(std::exchange(pipeEnd, -1));
        }
    }

    int pipeEnd = -1;
};

class Sleep : public ::testing::Test {
  protected:
    void SetUp() override {
        bus.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--session"), QStringLiteral("--nofork"),
                   QStringLiteral("--print-address=1")});
        if (!bus.waitForStarted() || !bus.waitForReadyRead()) {
            GTEST_SKIP() << "no dbus-daemon";
        }
        const QString address = QString::fromUtf8(bus.readLine()).trimmed();
        theirs = QDBusConnection::connectToBus(address, QStringLiteral("manager"));
        ours = QDBusConnection::connectToBus(address, QStringLiteral("program"));
        ASSERT_TRUE(theirs.isConnected() && ours.isConnected());
    }
    void TearDown() override {
        QDBusConnection::disconnectFromBus(QStringLiteral("manager"));
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
        bus.kill();
        bus.waitForFinished();
    }
    void StartManager() {
        ASSERT_TRUE(
            theirs.registerVirtualObject(QStringLiteral("/org/freedesktop/login1"), &manager));
        ASSERT_TRUE(theirs.registerService(QStringLiteral("org.freedesktop.login1")));
    }
    std::unique_ptr<SleepInhibitor> Ask() {
        answer.reset();
        return std::make_unique<SleepInhibitor>(
            ours, "a reason", [this](const std::string& refusal) { answer = refusal; });
    }

    QProcess bus;
    QDBusConnection theirs{QString()};
    QDBusConnection ours{QString()};
    LoginManager manager;
    std::optional<std::string> answer;
};

TEST_F(Sleep, IsHeldOffAsLongAsTheObjectLives) {
    StartManager();
    auto awake = Ask();
    EXPECT_TRUE(Eventually([this] { return answer.has_value(); }));
    EXPECT_EQ(answer, "");
    EXPECT_EQ(manager.asked,
              "org.freedesktop.login1.Manager.Inhibit|sleep:idle|Larkspool|a reason|block");
    EXPECT_TRUE(manager.IsHeld());
    awake.reset();
    EXPECT_TRUE(Eventually([this] { return !manager.IsHeld(); }));

    awake = Ask();
    awake.reset(); // before the answer
    LetEventsRun();
    EXPECT_TRUE(Eventually([this] { return !manager.IsHeld(); }));
    EXPECT_FALSE(answer);

    manager.refuses = true;
    awake = Ask();
    EXPECT_TRUE(Eventually([this] { return answer == "Access denied"; }));
}

TEST_F(Sleep, OfAComputerWithoutALoginManagerIsNotSpokenOf) {
    const auto awake = Ask();
    LetEventsRun();
    LetEventsRun();
    EXPECT_FALSE(answer);
}

#endif

} // namespace
} // namespace larkspool
