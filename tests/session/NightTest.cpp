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
                               "nobody.example.net:1;;22:06:00-22:07:00;9410;am;5000\n" + Second +
                               ";;22:08:00-22:09:00;1620;usb;300,2700\n" + Third +
                               ";;22:10:00-22:11:00;1620;usb;300,2700\n" + Third +
                               ";;22:12:00-24:00:00;1620;usb;300,2700\n");
    StartWith(true, {saved.Path().string()});
    Sleep(7 * 60 + 30);
    receivers.areFull = true;
    Sleep(2 * 60);
    receivers.areFull = false;
    const FolderItem documents = desktop.Folder(SpecialFolder::Documents);
    std::filesystem::remove_all(documents.Path());
    Put(documents, "a file where the folder was");
    Sleep(2 * 60);
    Choose(Front(), "Disable schedules");

    const std::string good = First + "  22:00:00-22:01:00  9410  am  5000";
    const std::string noMode = First + "  22:02:00-22:03:00  9410  fm  5000";
    const std::string noPort = "first.example.net  22:04:00-22:05:00  9410  am  5000";
    const std::string nobody = "nobody.example.net:1  22:06:00-22:07:00  9410  am  5000";
    const std::string full = Second + "  22:08:00-22:09:00  1620  usb  300,2700";
    const std::string noFile = Third + "  22:10:00-22:11:00  1620  usb  300,2700";
    const std::string noTime = Third + "  22:12:00-24:00:00  1620  usb  300,2700";
    const std::string notRecorded = "Entry was not recorded: ";
    EXPECT_EQ(
        Told("Entry "),
        (Strings{"Entry will not start, its date or time can't be read: " + noTime,
                 "Entry started: " + good, "Entry ended: " + good, "Entry started: " + noMode,
                 "Entry ended: " + noMode, "Entry started: " + noPort,
                 "Entry can't be carried out: no address and port in \"first.example.net\"",
                 "Entry ended: " + noPort, "Entry started: " + nobody,
                 notRecorded + "no sound came before its end. Last status: Connecting to "
                               "nobody.example.net:1: link lost",
                 "Entry ended: " + nobody, "Entry started: " + full,
                 notRecorded + "the receiver was full. Last status: Too many users on Kiwi, "
                               "disconnecting",
                 "Entry ended: " + full, "Entry started: " + noFile, "Entry ended: " + noFile}));
    const std::string file =
        "KiwiRecording-2027-01-16T22_00_01Z9410.000am_first.example.net_8073.WAV";
    EXPECT_EQ(Told("Recording ")[0], "Recording started: " + file);
    EXPECT_EQ(Told("Recording ")[1], "Recording finished: " + file + ", 00:00:59");
    EXPECT_TRUE(Told("Recording ")
                    .back()
                    .starts_with("Recording can't begin: its file can't be made: "
                                 "KiwiRecording-2027-01-16T22_10_01"));
    EXPECT_EQ(Told("No such"), Strings{"No such mode: \"fm\". The entry is received in am"});
    EXPECT_EQ(Told("Schedules "),
              (Strings{"Schedules enabled, entries: 7", "Schedules disabled, entries: 7"}));
    EXPECT_TRUE(ContentOf(LogFile()).starts_with("2027-01-15 08:00:00 UTC  Larkspool "));
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
    Perform("FileClose", &window); // its entry goes on, beyond its end
    EXPECT_EQ(desktop.windows.size(), 1U);
    Sleep(180);
    EXPECT_EQ(desktop.awakeHolds, 1);
    Console().PushButtonRecord.Push();
    Sleep(0.2);
    EXPECT_EQ(Heard(), (Recordings{{"1 9410 am -5000 5000", 190}}));
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
              Strings{"Nothing ran since 2027-01-16 22:03:30 UTC: the computer was asleep or too "
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
    Sleep(1);
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
