#include "support/Files.h"
#include "support/ScheduleFixture.h"
#include "support/SmallDisk.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace larkspool {
namespace {

// The program alone at night: what keeps it running, and what it tells in the morning.
class ANight : public ScheduleFixture {
  protected:
    FolderItem LogFile() { return *desktop.Folder(SpecialFolder::State).Child("log.txt"); }

    // The rows of the file that begin so, without the time before them.
    Strings Told(const std::string& begin = "") {
        constexpr std::size_t TimeLength = 25;
        Strings rows;
        std::istringstream file(ContentOf(LogFile()));
        for (std::string row; std::getline(file, row);) {
            if (row.substr(std::min(row.size(), TimeLength)).starts_with(begin)) {
                rows.push_back(row.substr(TimeLength));
            }
        }
        return rows;
    }
    FolderItem Saved(const std::string& name, const std::string& rows) {
        const FolderItem file = *desktop.Folder(SpecialFolder::Documents).Child(name);
        Put(file, "9\n" + rows);
        return file;
    }
    void StartWith(bool enable, const Strings& files) {
        CommandLine commandLine;
        commandLine.enable = enable;
        commandLine.files = files;
        app->OpenSchedules(commandLine);
    }
    SkedWindow& Front() { return dynamic_cast<SkedWindow&>(*desktop.windows.back()); }
};

TEST_F(ANight, IsToldInTheMorning) {
    Console().TextFieldIdentity.SetText("Peregrine");
    Console().TextFieldGeoLocation.SetText("Tristan");
    SetClock("2027-01-16T21:59:59");
    const FolderItem saved =
        Saved("night.txt", First + ";;22:00:00-22:01:00;9410;am;5000\n" + First +
                               ";;22:02:00-22:03:00;9410;fm;5000\n" +
                               "first.example.net;;22:04:00-22:05:00;9410;am;5000\n" +
                               "nobody.example.net:1;;22:06:00-22:07:00;9410;am;5000\n" + First +
                               "/x;;22:08:00-22:09:00;9410;am;5000\n" + Second +
                               ";;22:10:00-22:11:00;1620;usb;300,2700\n");
    StartWith(true, {saved.Path().string()});
    Sleep(9 * 60 + 30);
    receivers.areFull = true;
    Sleep(2 * 60);
    Choose(Front(), "Disable schedules");
    EXPECT_EQ(Told("Entry "),
              (Strings{"Entry started: " + First + "  22:00:00-22:01:00  9410  am  5000",
                       "Entry ended: " + First + "  22:00:00-22:01:00  9410  am  5000"}));
    EXPECT_EQ(Told("Recording "), Strings{});
    EXPECT_EQ(ContentOf(LogFile()).find("Peregrine"), std::string::npos);
    EXPECT_EQ(ContentOf(LogFile()).find("Tristan"), std::string::npos);
}

TEST_F(ANight, KeepsTheComputerAwakeWhileSchedulesAreEnabledOrARecordingRuns) {
    SetClock("2027-01-16T22:00:00");
    SkedWindow& window = NewWindow();
    AddRow(window, {First, "", "22:00:00-22:02:00", "9410", "am", "5000"});
    Sleep(10);
    EXPECT_EQ(desktop.awakeHolds, 0);
    Enable(window);
    Sleep(10);
    EXPECT_EQ(desktop.awakeHolds, 1);
    window.Close(); // its entry goes on
    Sleep(60);
    EXPECT_EQ(desktop.awakeHolds, 1);
    Console().PushButtonRecord.Push();
    Sleep(0.2);
    EXPECT_EQ(desktop.awakeHolds, 0);
    EXPECT_EQ(Told("The computer"),
              (Strings{"The computer is kept awake", "The computer may go to sleep again"}));

    desktop.answerToHold = "Access denied";
    SkedWindow& other = NewWindow();
    Enable(other);
    Sleep(10);
    EXPECT_EQ(Told("The computer").back(), "The computer refuses to be kept awake: Access denied");
    SetClock("2027-01-17T06:00:00");
    Sleep(1);
    EXPECT_EQ(Told("Nothing ran"),
              Strings{"Nothing ran since 2027-01-16 22:01:20 UTC: the computer was asleep or too "
                      "busy, or its clock was set"});
    Quit(QuitCause::Signal);
    EXPECT_EQ(desktop.awakeHolds, 0);
}

TEST_F(ANight, BeginsWithTheSchedulesThatTheProgramWasStartedWith) {
    SetClock("2027-01-16T21:59:50");
    const FolderItem one = Saved("one.txt", First + ";;22:00:00-22:01:00;9410;am;5000\n");
    const FolderItem other = Saved("other.txt", Second + ";;22:02:00-22:03:00;1620;am;5000\n");
    const std::string relative = std::filesystem::relative(one.Path()).string();
    StartWith(false, {relative});
    EXPECT_FALSE(Front().schedulesEnabled);
    EXPECT_EQ(Front().ListboxSkeds.ListCount(), 1);
    Front().Close();
    StartWith(true, {relative, other.Path().string(), "gone.txt"});
    EXPECT_EQ(desktop.windows.size(), 4U);
    EXPECT_EQ(desktop.boxes, Strings{"Error opening file"});
    Sleep(150);
    Quit(QuitCause::Signal); // the second one runs
    EXPECT_EQ(Heard(), (Recordings{{"1 9410 am -5000 5000", 60}, {"2 1620 am -5000 5000", 20}}));
}

TEST_F(ANight, ThatTheDiskCannotTakeCostsRowsAndNothingElse) {
    SetClock("2027-01-16T21:59:50");
    SkedWindow& window = NewWindow();
    AddRow(window, {First, "", "22:00:00-22:01:00", "9410", "am", "5000"});
    const std::string before = ContentOf(LogFile());
    {
        const SmallDisk disk(before.size() + 5); // not even one row
        Enable(window);
    }
    EXPECT_EQ(ContentOf(LogFile()), before);
    std::filesystem::remove_all(LogFile().Parent().Path());
    Put(LogFile().Parent(), "a file where the folder was");
    Sleep(90);
    EXPECT_EQ(Heard(), (Recordings{{"1 9410 am -5000 5000", 60}}));
    EXPECT_TRUE(desktop.boxes.empty());
}

} // namespace
} // namespace larkspool
