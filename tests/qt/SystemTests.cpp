#include "qt/OnScreen.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace larkspool {
namespace {

TEST(Timers, ATimerRepeatsOnceOrNotAtAll) {
    const auto timer = TheDesktop().MakeTimer();
    int ticks = 0;
    timer->action = [&ticks] { ++ticks; };
    timer->SetPeriod(5);
    LetEventsRun();
    EXPECT_EQ(ticks, 0);
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
}

TEST(Timers, ATimerMayEndInItsOwnTick) {
    auto timer = TheDesktop().MakeTimer();
    timer->SetPeriod(1);
    timer->action = [&timer] { timer.reset(); };
    timer->SetMode(Timer::Mode::Multiple);
    EXPECT_TRUE(Eventually([&timer] { return timer == nullptr; }));
}

TEST(Loop, ItOpensTheProgramAndEndsOnASignal) {
    std::vector<std::string> events;
    TheDesktop().quitRequested = [&events](QuitCause cause) {
        events.emplace_back(cause == QuitCause::Signal ? "signal" : "other");
        TheDesktop().EndEventLoop();
    };
    EXPECT_EQ(TheDesktop().Run([&events] {
        events.emplace_back("opened");
        TheDesktop().CallLater(10, [] { std::raise(SIGTERM); });
    }),
              0);
    TheDesktop().quitRequested = nullptr;
    EXPECT_EQ(events, (std::vector<std::string>{"opened", "signal"}));
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

TEST(Computer, FoldersAreTheUsersAndMade) {
    const QTemporaryDir home;
    const std::string config = home.filePath("config").toStdString();
    const std::string data = home.filePath("data").toStdString();
    setenv("XDG_CONFIG_HOME", config.c_str(), 1);
    setenv("XDG_DATA_HOME", data.c_str(), 1);
    const FolderItem preferences = TheDesktop().Folder(SpecialFolder::Preferences);
    const FolderItem own = TheDesktop().Folder(SpecialFolder::ApplicationData);
    EXPECT_EQ(preferences.Path().string(), config + "/larkspool");
    EXPECT_EQ(own.Path().string(), data + "/larkspool");
    EXPECT_TRUE(preferences.IsFolder() && own.IsFolder());
    EXPECT_TRUE(TheDesktop().Folder(SpecialFolder::Program).IsFolder());
    unsetenv("XDG_CONFIG_HOME");
    unsetenv("XDG_DATA_HOME");
}

} // namespace
} // namespace larkspool
