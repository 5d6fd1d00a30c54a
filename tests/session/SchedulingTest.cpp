#include "support/ScheduleFixture.h"

namespace larkspool {
namespace {

// Whole nights: what the operator finds in the morning.
class Scheduling : public ScheduleFixture {
  protected:
    // An enabled window of these rows, at that moment.
    SkedWindow& Night(const std::vector<ScheduleRow>& rows, const std::string& utc) {
        SkedWindow& night = NewWindow();
        for (const ScheduleRow& row : rows) {
            AddRow(night, row);
        }
        Enable(night);
        SetClock(utc);
        return night;
    }
    static ScheduleRow Daily(const std::string& receiver, const std::string& time,
                             const std::string& freq) {
        return {receiver, "", time, freq, "am", "5000"};
    }
    static HeardRecording Of(int receiver, const std::string& freq, double seconds) {
        return {std::to_string(receiver) + " " + freq + " am -5000 5000", seconds};
    }
};

TEST_F(Scheduling, EveryEntryOfANightLeavesItsOwnRecordingAndNothingConnectsBehindTheLast) {
    Console().CheckBoxReconnect.SetValue(true);
    SkedWindow& night =
        Night({Daily(First, "21:10:00-21:12:59", "9410"), // back to back
               Daily(Second, "21:13:00-21:15:59", "1620"),
               Daily(First, "22:02:00-22:06:00", "7000"), // of those that overlap, the upper wins
               Daily(Second, "22:00:00-22:04:00", "198"), // and the lower starts late
               Daily(Third, "22:02:00-22:06:00", "5000"), // or never
               {Second, "Sa", "23:30:00-00:30:00", "1620", "usb", "300,2700"},
               {Third, "2027-01-17", "02:00:00-02:01:00", "7000", "cw", "500"},
               {First, "Sa", "02:00:00-05:00:00", "5000", "am", "5000"}}, // it's Sunday by then
              "2027-01-16T21:00:00");
    Sleep(6 * 3600);
    const int connects = Audio().socket.connects;
    Sleep(2 * 3600); // a reconnect would hold the receiver's place until morning
    EXPECT_EQ(Audio().socket.connects, connects);
    EXPECT_FALSE(Audio().socket.IsConnected());
    EXPECT_EQ(Heard(), (Recordings{Of(1, "9410", 3 * 60),
                                   Of(2, "1620", 3 * 60),
                                   Of(2, "198", 4 * 60),
                                   Of(1, "7000", 2 * 60),
                                   {"2 1620 usb 300 2700", 60 * 60},
                                   {"3 7000 cw -500 500", 60}}));
    EXPECT_EQ(night.Title(), "Schedules  Enabled 2027-01-17 05:00:00 UTC  state: 0");
}

// Its own connection comes no sooner than its end.
TEST_F(Scheduling, AnEntryOfASingleSecondIsSeenOnce) {
    SkedWindow& night = Night({Daily(First, "12:00:00-12:00:00", "9410")}, "2027-01-16T11:59:59");
    desktop.Advance(0.1); // no tick falls on a whole second
    SetClock("2027-01-16T11:59:59");
    desktop.Advance(1.2);
    EXPECT_EQ(night.state, 1);
    desktop.Advance(1);
    EXPECT_EQ(night.state, 0);
    EXPECT_EQ(Cell(night, 0, SkedWindow::TestColumn), "1");
}

TEST_F(Scheduling, AnEntryUntilTheLastSecondOfTheDayEndsAndTheMorningsIsMade) {
    SkedWindow& night = Night(
        {Daily(First, "23:55:00-23:59:59", "9410"), Daily(Second, "06:00:00-06:02:00", "1620")},
        "2027-01-16T23:54:00");
    Sleep(6 * 60 + 0.5);
    EXPECT_EQ(night.state, 0);
    SetClock("2027-01-17T05:59:00");
    Sleep(5 * 60);
    EXPECT_EQ(Heard(), (Recordings{Of(1, "9410", 5 * 60), Of(2, "1620", 2 * 60)}));
}

TEST_F(Scheduling, AFullReceiverIsTriedAgainByHandOrWithReconnectTickedButNeverBehindTheEnd) {
    struct Case {
        bool reconnect;
        bool byHand;
        int fullMinutes;
        std::size_t recordings;
    };
    std::size_t heard = 0;
    for (const auto& [reconnect, byHand, fullMinutes, recordings] :
         {Case{false, false, 3, 0}, Case{true, false, 3, 1}, Case{false, true, 4, 1},
          Case{false, true, 10, 0}}) {
        Console().CheckBoxReconnect.SetValue(reconnect);
        SkedWindow& night =
            Night({Daily(First, "22:00:00-22:08:00", "9410")}, "2027-01-16T21:59:00");
        receivers.areFull = true;
        Sleep(fullMinutes * 60);
        EXPECT_EQ(night.state, fullMinutes > 9 ? 0 : 1) << "the entry counts as running";
        receivers.areFull = false;
        if (byHand) {
            Console().PushButtonConnect.Push();
        }
        Sleep(15 * 60);
        EXPECT_EQ(Audio().socket.IsConnected(), fullMinutes > 9) << "a session of the user's own";
        heard += recordings;
        EXPECT_EQ(Heard().size(), heard);
        Console().PushButtonDisconnect.Push();
        night.Close();
        Sleep(120);
    }
    EXPECT_EQ(Heard(), (Recordings{Of(1, "9410", 6 * 60), Of(1, "9410", 5 * 60)}));
}

TEST_F(Scheduling, ARowIsEditedAWindowDisabledAndARunningRowDeleted) {
    SkedWindow& night = Night({Daily(First, "22:00:00-22:02:00", "9410")}, "2027-01-16T21:59:00");
    Choose(night, "Disable schedules");
    Sleep(90);
    EXPECT_EQ(night.state, 0);
    Enable(night); // late
    Sleep(30);
    for (const char* broken : {"22:00:00", "22:00:00-never"}) { // keeps the row running
        SetCell(night, 0, SkedWindow::TimeColumn, broken);
        Sleep(90);
        EXPECT_EQ(night.state, 1) << broken;
    }
    EXPECT_EQ(Cell(night, 0, SkedWindow::TestColumn), "-1");
    SetCell(night, 0, SkedWindow::TimeColumn, "22:00:00-22:05:00");
    Choose(night, "Disable schedules"); // ends nothing
    Sleep(3 * 60);
    EXPECT_EQ(night.Title(), "Schedules  Disabled 2027-01-16 22:07:00 UTC  state: 1");
    Enable(night);
    Sleep(1);
    EXPECT_EQ(night.state, 0);
    EXPECT_EQ(Cell(night, 0, SkedWindow::TestColumn), "1");
    SetCell(night, 0, SkedWindow::TimeColumn, "22:08:00-22:30:00");
    Sleep(3 * 60);
    night.ListboxSkeds.SetListIndex(0);
    Choose(night, "Delete entry");
    Sleep(10 * 60);
    EXPECT_EQ(night.state, 0);
    EXPECT_EQ(Heard(), (Recordings{Of(1, "9410", 390), Of(1, "9410", 121)}));
}

TEST_F(Scheduling, AHiddenConsoleShowsItselfWhenAnEntryStarts) {
    SkedWindow& night = Night({Daily("no receiver", "21:57:00-21:58:00", "9410"),
                               Daily(First, "22:00:00-22:10:00", "9410")},
                              "2027-01-16T21:57:00");
    Console().Close();
    Sleep(30);
    EXPECT_EQ(night.state, 1);
    EXPECT_FALSE(Console().Visible()) << "nothing is received for this row";
    Sleep(210);
    EXPECT_TRUE(Console().Visible());
    Console().Close(); // by the user: the entry is cut short
    EXPECT_FALSE(desktop.hasEnded);
    Sleep(600);
    EXPECT_FALSE(Console().Visible());
    night.Close();
    EXPECT_TRUE(desktop.hasEnded);
    EXPECT_EQ(Heard(), (Recordings{Of(1, "9410", 60)}));
}

TEST_F(Scheduling, ARecordingUnderWayGivesWayAndOfTwoWindowsTheLaterHasTheConsole) {
    Console().TextFieldAddress.SetText("first.example.net:8073");
    Console().TextFieldFreq.SetText("198");
    Console().PushButtonConnect.Push();
    Sleep(10);
    Console().PushButtonRecord.Push();
    SkedWindow& first = Night({Daily(First, "22:00:00-22:03:00", "9410")}, "2027-01-16T21:58:00");
    SkedWindow& second = Night(
        {Daily(Second, "22:00:00-22:05:00", "1620"), Daily(Third, "22:07:00-22:09:00", "7000")},
        "2027-01-16T21:58:00");
    Sleep(180);
    EXPECT_EQ(first.state + second.state, 2);
    Sleep(10 * 60); // the end of the first ends the second's
    EXPECT_EQ(Heard(),
              (Recordings{Of(1, "198", 2 * 60), Of(2, "1620", 3 * 60), Of(3, "7000", 2 * 60)}));
}

TEST_F(Scheduling, AClockThatJumpsLeavesNoWindowStuck) {
    SkedWindow& night = Night({Daily(First, "22:00:00-22:30:00", "9410")}, "2027-01-16T22:00:00");
    Sleep(300);
    SetClock("2027-01-16T21:00:00"); // back: the window lies ahead, the row runs on
    Sleep(300);
    EXPECT_EQ(night.state, 1);
    SetClock("2027-01-16T22:29:00");
    Sleep(61);
    EXPECT_EQ(night.state, 0);
    EXPECT_EQ(Heard(), (Recordings{Of(1, "9410", 660)}));
    SetCell(night, 0, SkedWindow::DateColumn, "2027-01-16");
    const std::string time = "22:00:00-22:30:00";
    for (const auto& [awakeAt, edited] :
         {std::pair{"2027-01-16T22:30:11", time}, // no tick has seen the end
          {"2027-01-17T09:00:00", time},
          {"2027-01-19T22:10:00", time},
          {"2027-01-15T22:40:00", time}, // put back behind the end of the evening before
          {"2027-01-16T22:01:00", std::string("21:00:00-21:30:00")}}) {
        SetCell(night, 0, SkedWindow::TimeColumn, time);
        SetClock("2027-01-16T22:00:00");
        Sleep(60);
        EXPECT_TRUE(Console().IsRecording());
        SetCell(night, 0, SkedWindow::TimeColumn, edited);
        SetClock(awakeAt);
        desktop.Advance(0.25);
        EXPECT_EQ(night.state, 0) << awakeAt;
        EXPECT_FALSE(Console().IsRecording());
        Sleep(1);
    }
    for (const char* far : {"0001-01-01T00:00:00", "9999-12-31T23:59:50", "1970-01-01T00:00:00"}) {
        SetClock(far);
        Sleep(60);
        EXPECT_EQ(night.state, 0) << far;
    }
}

} // namespace
} // namespace larkspool
