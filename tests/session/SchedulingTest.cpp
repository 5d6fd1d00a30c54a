#include "support/ScheduleFixture.h"

namespace larkspool {
namespace {

// Whole nights: what the operator finds in the morning.
class Scheduling : public ScheduleFixture {};

TEST_F(Scheduling, EveryEntryOfANightLeavesItsOwnRecording) {
    SkedWindow& night = NewWindow();
    AddRow(night, {First, "", "22:00:00-22:30:00", "9410", "am", "-4000,4500"});
    AddRow(night, {Second, "Sa", "23:30:00-00:30:00", "1620", "usb", "300,2700"});
    AddRow(night, {Third, "2027-01-17", "02:00:00-02:01:00", "7000", "cw", "500"});
    AddRow(night, {First, "Sa", "02:00:00-05:00:00", "5000", "am", "5000"}); // it's Sunday by then
    AddRow(night, {Second, "", "02:30:00-02:30:00", "198", "lsb", "-2700,-300"});
    Enable(night);
    SetClock("2027-01-16T21:00:00");
    Sleep(8 * Hour);
    EXPECT_EQ(Heard(), (Recordings{
                           {1, "9410 am -4000 4500", 30 * 60},
                           {2, "1620 usb 300 2700", 60 * 60},
                           {3, "7000 cw -500 500", 60},
                           {2, "198 lsb -2700 -300", 0},
                       }));
    EXPECT_EQ(night.state, 0);
    EXPECT_EQ(night.Title(), "Schedules  Enabled 2027-01-17 05:00:00 UTC  state: 0");
}

TEST_F(Scheduling, ADailyEntryComesRoundEveryDay) {
    SkedWindow& week = NewWindow();
    AddRow(week, {First, "MWF", "23:55:00-00:05:00", "9410", "am", "5000"});
    AddRow(week, {Second, "", "12:00:00-12:01:00", "1620", "am", "5000"});
    Enable(week);
    SetClock("2027-01-17T12:30:00"); // a Sunday
    Sleep(3 * 24 * Hour);
    EXPECT_EQ(Heard(), (Recordings{
                           {2, "1620 am -5000 5000", 60},
                           {1, "9410 am -5000 5000", 600}, // over Monday's midnight
                           {2, "1620 am -5000 5000", 60},
                           {2, "1620 am -5000 5000", 60},
                       }));
}

TEST_F(Scheduling, OfOverlappingEntriesTheUpperWinsAndTheLowerStartsLate) {
    SkedWindow& night = NewWindow();
    AddRow(night, {First, "", "22:10:00-22:30:00", "9410", "am", "5000"});
    AddRow(night, {Second, "", "22:00:00-22:20:00", "1620", "am", "5000"});
    AddRow(night, {Third, "", "22:05:00-22:45:00", "7000", "am", "5000"});
    AddRow(night, {Third, "", "22:10:00-22:30:00", "198", "am", "5000"}); // never gets its turn
    Enable(night);
    SetClock("2027-01-16T21:59:00");
    Sleep(Hour);
    EXPECT_EQ(Heard(), (Recordings{
                           {2, "1620 am -5000 5000", 20 * 60},
                           {1, "9410 am -5000 5000", 10 * 60},
                           {3, "7000 am -5000 5000", 15 * 60},
                       }));
}

// The hang-up at the end of an entry isn't the user's, so it asks for a reconnect; the next entry
// must not lose its session to it.
TEST_F(Scheduling, EntriesBackToBackAreWholeWithReconnectTicked) {
    Console().CheckBoxReconnect.SetValue(true);
    SkedWindow& night = NewWindow();
    AddRow(night, {First, "", "22:00:00-22:09:59", "9410", "am", "5000"});
    AddRow(night, {Second, "", "22:10:00-22:19:59", "1620", "am", "5000"});
    AddRow(night, {Third, "", "22:20:30-22:30:00", "7000", "am", "5000"});
    Enable(night);
    SetClock("2027-01-16T21:59:00");
    Sleep(Hour);
    EXPECT_EQ(Heard(), (Recordings{
                           {1, "9410 am -5000 5000", 10 * 60},
                           {2, "1620 am -5000 5000", 10 * 60},
                           {3, "7000 am -5000 5000", 9 * 60 + 30},
                       }));
}

TEST_F(Scheduling, AFullReceiverIsTriedAgainOnlyWithReconnectTicked) {
    for (const bool reconnect : {false, true}) {
        Console().CheckBoxReconnect.SetValue(reconnect);
        SkedWindow& night = NewWindow();
        AddRow(night, {First, "", "22:00:00-22:30:00", "9410", "am", "5000"});
        Enable(night);
        SetClock("2027-01-16T21:59:00");
        receivers.Named(First).isFull = true;
        Sleep(5 * 60);
        EXPECT_EQ(night.state, 1) << "the entry counts as running";
        receivers.Named(First).isFull = false;
        Sleep(Hour);
        EXPECT_EQ(night.state, 0);
        night.Close();
        Console().PushButtonDisconnect.Push();
        Sleep(120);
    }
    EXPECT_EQ(Heard(), (Recordings{{1, "9410 am -5000 5000", 26 * 60}}));
}

TEST_F(Scheduling, ALinkLostInTheMiddleGoesOnInANewFileWithReconnectTicked) {
    for (const bool reconnect : {false, true}) {
        Console().CheckBoxReconnect.SetValue(reconnect);
        SkedWindow& night = NewWindow();
        AddRow(night, {First, "", "22:00:00-22:30:00", "9410", "am", "5000"});
        Enable(night);
        SetClock(reconnect ? "2027-01-16T21:59:00" : "2027-01-15T21:59:00");
        Sleep(11 * 60);
        receivers.LoseLinks();
        Sleep(Hour);
        EXPECT_EQ(night.state, 0);
        night.Close();
        Sleep(1);
    }
    EXPECT_EQ(Heard(), (Recordings{
                           {1, "9410 am -5000 5000", 10 * 60},
                           {1, "9410 am -5000 5000", 10 * 60},
                           {1, "9410 am -5000 5000", 19 * 60},
                       }));
}

TEST_F(Scheduling, DeletingTheRunningRowEndsIt) {
    SkedWindow& night = NewWindow();
    AddRow(night, {First, "", "22:00:00-22:30:00", "9410", "am", "5000"});
    Enable(night);
    SetClock("2027-01-16T22:00:00");
    Sleep(300);
    night.ListboxSkeds.SetListIndex(0);
    Choose(night, "Delete entry");
    EXPECT_EQ(night.ListboxSkeds.ListCount(), 0);
    Sleep(Hour);
    EXPECT_EQ(night.state, 0);
    EXPECT_EQ(Heard(), (Recordings{{1, "9410 am -5000 5000", 300}}));
}

TEST_F(Scheduling, DeletingARowAboveTheRunningOneLetsTheNextRowsEndGovern) {
    SkedWindow& night = NewWindow();
    AddRow(night, {Third, "", "12:00:00-13:00:00", "198", "am", "5000"});
    AddRow(night, {First, "", "22:00:00-22:30:00", "9410", "am", "5000"});
    AddRow(night, {Second, "", "22:00:00-22:40:00", "1620", "am", "5000"});
    Enable(night);
    SetClock("2027-01-16T22:00:00");
    Sleep(300);
    EXPECT_EQ(night.recordingIndex, 1);
    night.ListboxSkeds.SetListIndex(0);
    Choose(night, "Delete entry");
    Sleep(Hour);
    EXPECT_EQ(Heard(), (Recordings{{1, "9410 am -5000 5000", 40 * 60}}));
}

TEST_F(Scheduling, EditsHoldFromTheNextTickAndABrokenTimeKeepsARowRunning) {
    SkedWindow& night = NewWindow();
    AddRow(night, {First, "", "22:00:00-22:30:00", "9410", "am", "5000"});
    Enable(night);
    SetClock("2027-01-16T22:00:00");
    Sleep(300);
    EXPECT_EQ(Cell(night, 0, SkedWindow::TestColumn), "0");
    SetCell(night, 0, SkedWindow::TimeColumn, "22:00:00");
    Sleep(Hour);
    EXPECT_EQ(night.state, 1);
    EXPECT_EQ(Cell(night, 0, SkedWindow::TestColumn), "0") << "nothing was compared";
    SetCell(night, 0, SkedWindow::TimeColumn, "22:00:00-never");
    Sleep(1);
    EXPECT_EQ(night.state, 1);
    EXPECT_EQ(Cell(night, 0, SkedWindow::TestColumn), "-1");
    SetCell(night, 0, SkedWindow::TimeColumn, "22:00:00-23:00:00");
    Sleep(1);
    EXPECT_EQ(night.state, 0);
    EXPECT_EQ(Cell(night, 0, SkedWindow::TestColumn), "1");
    EXPECT_EQ(Heard(), (Recordings{{1, "9410 am -5000 5000", 65 * 60 + 1}}));
}

TEST_F(Scheduling, ADisabledWindowStartsNothingAndEndsNothing) {
    SkedWindow& night = NewWindow();
    AddRow(night, {First, "", "22:00:00-22:30:00", "9410", "am", "5000"});
    SetClock("2027-01-16T22:00:00");
    Sleep(300);
    EXPECT_EQ(Cell(night, 0, SkedWindow::TestColumn), "");
    EXPECT_EQ(night.Title(), "Schedules  Disabled 2027-01-16 22:05:00 UTC  state: 0");
    Enable(night); // late, and runs to the usual end if nobody disables it
    Sleep(300);
    Choose(night, "Disable schedules");
    Sleep(Hour);
    EXPECT_EQ(night.Title(), "Schedules  Disabled 2027-01-16 23:10:00 UTC  state: 1");
    Enable(night);
    Sleep(1);
    EXPECT_EQ(night.state, 0);
    EXPECT_EQ(Heard(), (Recordings{{1, "9410 am -5000 5000", 65 * 60}}));
}

TEST_F(Scheduling, OfTwoWindowsTheLaterHasTheConsoleAndTheFirstEndEndsIt) {
    SkedWindow& first = NewWindow();
    SkedWindow& second = NewWindow();
    AddRow(first, {First, "", "22:00:00-22:10:00", "9410", "am", "5000"});
    AddRow(second, {Second, "", "22:00:00-22:30:00", "1620", "am", "5000"});
    AddRow(second, {Third, "", "22:40:00-22:50:00", "7000", "am", "5000"});
    Enable(first);
    Enable(second);
    SetClock("2027-01-16T21:59:00");
    Sleep(5 * 60);
    EXPECT_EQ(first.state, 1);
    EXPECT_EQ(second.state, 1);
    Sleep(Hour);
    EXPECT_EQ(Heard(), (Recordings{
                           {2, "1620 am -5000 5000", 10 * 60},
                           {3, "7000 am -5000 5000", 10 * 60},
                       }));
}

TEST_F(Scheduling, AnEntryGoesOnWhenItsWindowIsClosed) {
    SkedWindow& night = NewWindow();
    AddRow(night, {First, "", "22:00:00-22:30:00", "9410", "am", "5000"});
    Enable(night);
    SetClock("2027-01-16T22:00:00");
    Sleep(300);
    Perform("FileClose", &night);
    Sleep(Hour);
    EXPECT_EQ(desktop.windows.size(), 1U);
    EXPECT_TRUE(Console().LabelRecordingStatus.Text().starts_with("01:04:5"));
    Console().PushButtonDisconnect.Push();
    EXPECT_EQ(Heard(), (Recordings{{1, "9410 am -5000 5000", 65 * 60}}));
}

TEST_F(Scheduling, AHiddenConsoleShowsItselfWhenAnEntryStarts) {
    SkedWindow& night = NewWindow();
    AddRow(night, {"no receiver", "", "21:00:00-21:10:00", "9410", "am", "5000"});
    AddRow(night, {First, "", "22:00:00-22:30:00", "9410", "am", "5000"});
    Enable(night);
    SetClock("2027-01-16T21:00:00");
    Console().Close();
    Sleep(300);
    EXPECT_EQ(night.state, 1);
    EXPECT_FALSE(Console().Visible()) << "nothing is received for this row";
    Sleep(Hour);
    EXPECT_TRUE(Console().Visible());
    Console().Close(); // by the user: the entry is cut short
    EXPECT_FALSE(desktop.hasEnded);
    Sleep(Hour);
    EXPECT_FALSE(Console().Visible());
    night.Close();
    EXPECT_TRUE(desktop.hasEnded);
    EXPECT_EQ(Heard(), (Recordings{{1, "9410 am -5000 5000", 300}}));
}

TEST_F(Scheduling, ARecordingUnderWayGivesWayToAnEntry) {
    Console().TextFieldAddress.SetText("second.example.net");
    Console().TextFieldPort.SetText("8073");
    Console().TextFieldFreq.SetText("1620");
    Console().PushButtonConnect.Push();
    Sleep(10);
    Console().PushButtonRecord.Push();
    SkedWindow& night = NewWindow();
    AddRow(night, {First, "", "22:00:00-22:30:00", "9410", "usb", "300,2700"});
    Enable(night);
    SetClock("2027-01-16T21:50:00");
    Sleep(Hour);
    EXPECT_EQ(Heard(), (Recordings{
                           {2, "1620 am -5000 5000", 10 * 60},
                           {1, "9410 usb 300 2700", 30 * 60},
                       }));
}

TEST_F(Scheduling, AFailedStartLetsTheNextConnectionRecord) {
    SkedWindow& night = NewWindow();
    AddRow(night, {"nowhere.example.net:8073", "", "22:00:00-22:30:00", "9410", "am", "5000"});
    Enable(night);
    SetClock("2027-01-16T22:00:00");
    Sleep(600);
    EXPECT_EQ(night.state, 1);
    Console().TextFieldAddress.SetText("first.example.net");
    Console().PushButtonConnect.Push();
    Sleep(Hour);
    EXPECT_EQ(Heard(), (Recordings{{1, "9410 am -5000 5000", 20 * 60}}));
}

TEST_F(Scheduling, AClockThatJumpsLeavesNoWindowStuck) {
    SkedWindow& night = NewWindow();
    AddRow(night, {First, "", "22:00:00-22:30:00", "9410", "am", "5000"});
    AddRow(night, {Second, "2027-01-18", "23:00:00-01:00:00", "1620", "am", "5000"});
    Enable(night);
    SetClock("2027-01-16T22:00:00");
    Sleep(300);
    SetClock("2027-01-16T21:00:00"); // back: the window lies ahead, the row runs on
    Sleep(300);
    EXPECT_EQ(night.state, 1);
    SetClock("2027-01-17T09:00:00"); // the computer has slept over the end
    Sleep(300);
    EXPECT_EQ(night.state, 1) << "today's window lies ahead";
    SetClock("2027-01-17T22:30:01");
    Sleep(1);
    EXPECT_EQ(night.state, 0);
    EXPECT_EQ(Heard(), (Recordings{{1, "9410 am -5000 5000", 900}}));

    SetClock("2027-01-18T23:30:00");
    Sleep(300);
    EXPECT_EQ(night.state, 1);
    SetClock("2027-01-19T01:00:30"); // past the few seconds in which the end would be seen
    Sleep(60);
    EXPECT_EQ(night.state, 1);
    SetClock("2027-01-20T01:00:01");
    Sleep(1);
    EXPECT_EQ(night.state, 0);
    for (const char* far : {"0001-01-01T00:00:00", "9999-12-31T23:59:50", "1970-01-01T00:00:00"}) {
        SetClock(far);
        Sleep(60);
        EXPECT_EQ(night.state, 0) << far;
    }
}

} // namespace
} // namespace larkspool
