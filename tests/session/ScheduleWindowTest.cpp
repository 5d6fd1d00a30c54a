#include "support/Files.h"
#include "support/OpenEdit.h"
#include "support/ScheduleFixture.h"
#include "support/SmallDisk.h"

#include <filesystem>

namespace larkspool {
namespace {

// The schedule window under the user's hand: menu, list, clipboard, files.
class ScheduleWindow : public ScheduleFixture {
  protected:
    static Strings Row(SkedWindow& from, int row) {
        Strings cells;
        for (int column = 0; column < SkedWindow::TestColumn; ++column) {
            cells.push_back(Cell(from, row, column));
        }
        return cells;
    }
    FolderItem Document(const std::string& name) {
        return *desktop.Folder(SpecialFolder::Documents).Child(name);
    }
    // The new window, or null.
    SkedWindow* Open(const std::optional<FolderItem>& file) {
        const std::size_t before = desktop.windows.size();
        desktop.chosenFiles.push_back(file);
        Perform("FileOpenSchedule", &Console());
        return desktop.windows.size() > before ? dynamic_cast<SkedWindow*>(desktop.windows.back())
                                               : nullptr;
    }
    void Save(SkedWindow& from, const FolderItem& file) {
        desktop.chosenFiles.emplace_back(file);
        Perform("FileSaveSchedule", &from);
    }

    SkedWindow& window = NewWindow();
};

TEST_F(ScheduleWindow, EachIsAWindowOfItsOwn) {
    SkedWindow& other = NewWindow();
    Choose(window, "Enable schedules");
    Choose(other, "Add entry");
    SetClock("2027-03-01T06:29:58");
    desktop.Advance(0.5);
    EXPECT_EQ(window.Title(), "Schedules  Enabled 2027-03-01 06:29:58 UTC  state: 0");
    EXPECT_EQ(other.Title(), "Schedules  Disabled 2027-03-01 06:29:58 UTC  state: 0");
    EXPECT_EQ(window.ListboxSkeds.ListCount(), 0);
    EXPECT_FALSE(desktop.Answers({"FileClose", "", ""}, &Console()));
    other.Resize(1200, 700);
    EXPECT_EQ(other.ListboxSkeds.Bounds(), (Rect{0, 0, 1200, 700}));
    Perform("FileClose", &window);
    EXPECT_EQ(desktop.windows, (std::vector<Window*>{&Console(), &other}));
    EXPECT_FALSE(desktop.hasEnded);
    other.Close(); // on its way out, when the user still reaches its menu
    Save(other, Document("late.txt"));
    EXPECT_EQ(desktop.windows.size(), 1U);
    EXPECT_FALSE(Document("late.txt").Exists());
}

TEST_F(ScheduleWindow, RowsComeFromTheConsoleAndTheClipboardAndTheChosenOneIsDeleted) {
    Console().TextFieldAddress.SetText("2001:db8::3");
    Console().TextFieldPort.SetText("8074");
    Console().TextFieldFreq.SetText("9410.5");
    SetClock("2027-01-16T23:59:50");
    for (const auto& [mode, line, expectedMode, freq, time] :
         {std::tuple(0, "Station\t9410\t0630-745\tEnglish\n", "am", "9410", "06:30:00-07:45:00"),
          {1, "\t 9410.5 kHz\t2200-2400", "amn", " 9410.5 kHz", "22:00:00-00:00:00"},
          {3, "\t\t2330-2575", "amn", "", "23:30:00-02:15:00"}}) {
        desktop.clipboard = line;
        Console().PopupMenuMode.SetListIndex(mode);
        Console().TextFieldLowCut.SetText("-250");
        Console().TextFieldHighCut.SetText("350");
        Choose(window, "Add entry from clipboard");
        EXPECT_EQ(Row(window, window.ListboxSkeds.LastIndex()),
                  (Strings{Third, "", time, freq, expectedMode, "-250,350"}));
    }
    for (const char* text : {"Station\t9410", "Station\t9410\t0600-0700-0800"}) {
        desktop.clipboard = text;
        Choose(window, "Add entry from clipboard");
    }
    desktop.clipboard.reset();
    Choose(window, "Add entry from clipboard");
    EXPECT_EQ(desktop.boxes,
              (Strings{"Incorrect text in the clipboard", "Incorrect time text in the clipboard",
                       "No text in the clipboard"}));
    EXPECT_EQ(ContextItems(window).size(), 4U);
    window.ListboxSkeds.SetListIndex(1);
    const MenuItem item = ContextItems(window).back();
    EXPECT_EQ(item.caption, "Delete entry");
    window.ListboxSkeds.SetListIndex(2); // the menu is still open
    window.ListboxSkeds.contextualMenuAction(item);
    EXPECT_EQ(window.ListboxSkeds.ListCount(), 2);
    EXPECT_EQ(window.ListboxSkeds.ListIndex(), 1) << "the row chosen meanwhile is still chosen";
    window.ListboxSkeds.contextualMenuAction(item);
    window.ListboxSkeds.contextualMenuAction(item); // there is no such row any more
    EXPECT_EQ(Cell(window, 0, SkedWindow::ModeColumn), "am");
    Choose(window, "Add entry");
    EXPECT_EQ(Row(window, 1),
              (Strings{Third, "", "23:59:55-00:00:10", "9410.5", "usb", "-250,350"}));
    Enable(window);
    Sleep(60);
    EXPECT_EQ(Heard(), (Recordings{{"3 9410.5 usb -250 350", 15}}));
}

TEST_F(ScheduleWindow, ASavedScheduleHasTheOpenEditAndOpensInANewWindow) {
    AddRow(window, {First, "", "06:30:00-07:00:00", "1620", "amn", "-2600,2600"});
    AddRow(window, {"two\nlines\r"}); // pushes no other row out of the file
    AddRow(window, {Second, "2027-03-01", "22:00:00-23:30:00", "9420", "am", "-5000,5000"});
    Enable(window);
    desktop.Advance(1);
    const FolderItem file = Document("schedule.txt");
    Put(file, "the old one");
    {
        const OpenEdit edit(window.ListboxSkeds, SkedWindow::FreqColumn, "1630");
        Save(window, file);
    }
    EXPECT_EQ(desktop.offeredName, "schedule.txt");
    SkedWindow* opened = Open(file);
    ASSERT_NE(opened, nullptr);
    EXPECT_TRUE(opened->Visible());
    EXPECT_FALSE(opened->schedulesEnabled) << "it starts nothing";
    EXPECT_EQ(opened->ListboxSkeds.ListCount(), 3);
    EXPECT_EQ(Row(*opened, 0), Row(window, 0));
    EXPECT_EQ(Row(*opened, 2), Row(window, 2));
    EXPECT_EQ(Cell(*opened, 0, SkedWindow::FreqColumn), "1630");
    EXPECT_EQ(Cell(*opened, 0, SkedWindow::TestColumn), "");
    EXPECT_EQ(Open(std::nullopt), nullptr) << "a cancelled dialog";
    EXPECT_TRUE(desktop.boxes.empty());
    const OpenEdit edit(window.ListboxSkeds, SkedWindow::FreqColumn, "1640");
    Choose(window, "Add entry");
    EXPECT_EQ(Cell(window, 0, SkedWindow::FreqColumn), "1640") << "an edit outlives the menu";
}

TEST_F(ScheduleWindow, TheCountInAFilesFirstLineRulesAndABadLineCostsItselfAlone) {
    const std::string lines = "a;b;c;d;e;f;g\na;b;c;d;e\n1;;;;;\n2;;;;;\n";
    for (const auto& [count, rows] : {std::pair("4\r\n", "12"),
                                      {"3.9\n", "1"},
                                      {"5\n", "12"},
                                      {"1e300\n", "12"},
                                      {"3\n\n", ""}, // an empty line counts as one
                                      {"nonsense\n", ""},
                                      {"-5\n", ""},
                                      {"0.9\n", ""}}) {
        Put(Document("schedule.txt"), count + lines);
        SkedWindow* opened = Open(Document("schedule.txt"));
        std::string read;
        for (int row = 0; row < opened->ListboxSkeds.ListCount(); ++row) {
            read += Cell(*opened, row, SkedWindow::UrlColumn);
        }
        EXPECT_EQ(read, rows) << count;
    }
}

TEST_F(ScheduleWindow, WhatCannotBeReadOrWrittenIsSaidAndAFullDiskLeavesTheOldFile) {
    Choose(window, "Add entry");
    const FolderItem documents = desktop.Folder(SpecialFolder::Documents);
    ASSERT_NE(Open(Document("gone.txt")), nullptr);
    EXPECT_TRUE(desktop.boxes.empty()) << "a file that has gone meanwhile is an empty schedule";
    Open(documents);
    Save(window, *FolderItem(documents.Path() / "no such folder").Child("schedule.txt"));
    Save(window, documents);
    EXPECT_TRUE(documents.IsFolder());
    Put(Document("schedule.txt"), "0\n");
    const SmallDisk disk(10);
    Save(window, Document("schedule.txt"));
    EXPECT_EQ(ContentOf(Document("schedule.txt")), "0\n");
    EXPECT_EQ(desktop.boxes, (Strings{"Error opening file", "Error saving file",
                                      "Error saving file", "Error saving file"}));
}

TEST_F(ScheduleWindow, QuittingStartsNoEntryWhileAnAnswerIsAwaited) {
    AddRow(window, {First, "", "22:00:00-22:30:00", "9410", "am", "5000"});
    Enable(window);
    SetClock("2027-01-16T21:59:59");
    const FolderItem preferences = desktop.Folder(SpecialFolder::Preferences);
    std::filesystem::remove_all(preferences.Path());
    Put(preferences, "no folder, so the settings can't be stored");
    desktop.quitRequested(QuitCause::User);
    ASSERT_EQ(desktop.dialogs.size(), 1U);
    desktop.Advance(60);
    EXPECT_FALSE(Console().Visible());
    EXPECT_EQ(window.state, 0);
}

TEST_F(ScheduleWindow, BadRowsStartNothingAndHoldNothingUp) {
    SetClock("2027-01-16T22:00:00");
    const std::string open = "22:00:00-22:00:10";
    AddRow(window, {First, "", "22:00:00-22:10:00-", "9410", "am", "5000"});
    AddRow(window, {First, "2027-02-30", open, "9410", "am", "5000"});
    AddRow(window, {});
    AddRow(window, {First, "", open, "1620", "an unknown mode", "-300,300,1"});
    Console().PopupMenuMode.SetListIndex(1);
    Enable(window);
    Sleep(60);
    EXPECT_EQ(Heard(), (Recordings{{"1 1620 amn 0 -300", 10}}));
    const std::string noDate = First + "  2027-02-30  " + open + "  9410  am  5000";
    EXPECT_TRUE(LogHas("Entry will not start, its date or time can't be read: " + noDate));
    SetCell(window, 3, SkedWindow::UrlColumn, "http://first.example.net:8073");
    SetClock("2027-01-16T22:00:00");
    Console().TextFieldFreq.SetText("77");
    Sleep(60);
    EXPECT_EQ(Console().TextFieldFreq.Text(), "77") << "an address with two colons";
    EXPECT_EQ(Heard().size(), 1U);
}

} // namespace
} // namespace larkspool
