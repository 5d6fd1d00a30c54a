#include "qt/OnScreen.h"

#include <gtest/gtest.h>

#include <memory>

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

} // namespace
} // namespace larkspool
