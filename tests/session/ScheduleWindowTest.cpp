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
    using Texts = std::vector<std::string>;

    static Texts ContextMenu(SkedWindow& window) {
        Texts captions;
        for (const MenuItem& item : ContextItems(window)) {
            captions.push_back(item.caption);
        }
        return captions;
    }
    static Texts Row(SkedWindow& window, int row) {
        Texts cells;
        for (int column = 0; column <= SkedWindow::TestColumn; ++column) {
            cells.push_back(Cell(window, row, column));
        }
        return cells;
    }
    FolderItem Document(const std::string& name, const std::string& bytes) {
        const FolderItem file = *desktop.Folder(SpecialFolder::Documents).Child(name);
        Put(file, bytes);
        return file;
    }
    // The new window, or null.
    SkedWindow* Open(const std::optional<FolderItem>& file) {
        const std::size_t before = desktop.windows.size();
        desktop.chosenFiles.push_back(file);
        Perform("FileOpenSchedule", app ? &Console() : nullptr);
        desktop.Advance(0);
        return desktop.windows.size() > before ? dynamic_cast<SkedWindow*>(desktop.windows.back())
                                               : nullptr;
    }
    void Save(SkedWindow& window, const FolderItem& file) {
        desktop.chosenFiles.emplace_back(file);
        Perform("FileSaveSchedule", &window);
        desktop.Advance(0);
    }

    const std::string twoRows = "2\n192.0.2.10:8073;;06:30:00-07:00:00;1620;amn;-2600,2600\n"
                                "192.0.2.11:8073;2027-03-01;22:00:00-23:30:00;9420;am;-5000,5000\n";
};

TEST_F(ScheduleWindow, EachIsAWindowOfItsOwn) {
    SkedWindow& one = NewWindow();
    EXPECT_EQ(one.Title(), "Schedules");
    SkedWindow& other = NewWindow();
    EXPECT_TRUE(one.Visible() && other.Visible());
    Choose(one, "Enable schedules");
    Choose(other, "Add entry");
    SetClock("2027-03-01T06:29:58");
    desktop.Advance(0.5);
    EXPECT_EQ(one.Title(), "Schedules  Enabled 2027-03-01 06:29:58 UTC  state: 0");
    EXPECT_EQ(other.Title(), "Schedules  Disabled 2027-03-01 06:29:58 UTC  state: 0");
    EXPECT_EQ(one.ListboxSkeds.ListCount(), 0);
    const MenuItem close{"FileClose", "Close", ""};
    const MenuItem save{"FileSaveSchedule", "Save Schedule...", ""};
    EXPECT_TRUE(desktop.Answers(close, &one) && desktop.Answers(save, &one));
    EXPECT_FALSE(desktop.Answers(close, &Console()) || desktop.Answers(save, &Console()));
    Perform("FileClose", &one);
    desktop.Advance(1);
    EXPECT_EQ(desktop.windows.size(), 2U);
    EXPECT_TRUE(other.Visible());
    EXPECT_FALSE(desktop.hasEnded);
}

TEST_F(ScheduleWindow, TheListFollowsTheWindow) {
    SkedWindow& window = NewWindow();
    EXPECT_EQ(window.ListboxSkeds.Bounds(), (Rect{0, 0, 900, 400}));
    window.Resize(1, 1);
    EXPECT_EQ(window.ListboxSkeds.Bounds(), (Rect{0, 0, 64, 64}));
    window.Resize(1200, 700);
    EXPECT_EQ(window.ListboxSkeds.Bounds(), (Rect{0, 0, 1200, 700}));
}

TEST_F(ScheduleWindow, AnEntryRepeatsTheConsoleAndStartsInFiveSeconds) {
    SkedWindow& window = NewWindow();
    Console().TextFieldAddress.SetText("first.example.net");
    Console().TextFieldPort.SetText("8073");
    Console().TextFieldFreq.SetText("9410.5");
    Console().PopupMenuMode.SetListIndex(3);
    Console().TextFieldLowCut.SetText("250");
    SetClock("2027-01-16T23:59:50");
    Choose(window, "Add entry");
    EXPECT_EQ(Row(window, 0), (Texts{First, "", "23:59:55-00:00:10", "9410.5", "usb",
                                     "250," + Console().TextFieldHighCut.Text(), ""}));
    Enable(window);
    Sleep(60);
    ASSERT_EQ(Heard().size(), 1U);
    EXPECT_NEAR(Heard()[0].seconds, 15, 1.5);
}

TEST_F(ScheduleWindow, TheMenuOffersToDeleteTheChosenRow) {
    SkedWindow& window = NewWindow();
    const Texts always = {"Enable schedules", "Disable schedules", "Add entry",
                          "Add entry from clipboard"};
    EXPECT_EQ(ContextMenu(window), always);
    for (const char* name : {"a", "b", "c"}) {
        window.ListboxSkeds.AddRow(name);
    }
    EXPECT_EQ(ContextMenu(window), always);
    window.ListboxSkeds.SetListIndex(1);
    ASSERT_EQ(ContextMenu(window).size(), 5U);
    const MenuItem item = ContextItems(window).back();
    EXPECT_EQ(item.caption, "Delete entry");
    window.ListboxSkeds.SetListIndex(2); // the menu is still open
    EXPECT_TRUE(window.ListboxSkeds.contextualMenuAction(item));
    EXPECT_EQ(Cell(window, 0, 0) + Cell(window, 1, 0), "ac");
    EXPECT_TRUE(window.ListboxSkeds.contextualMenuAction(item));
    EXPECT_TRUE(window.ListboxSkeds.contextualMenuAction(item)); // there is no such row any more
    EXPECT_EQ(window.ListboxSkeds.ListCount(), 1);
}

TEST_F(ScheduleWindow, AStationListsLineBecomesARow) {
    SkedWindow& window = NewWindow();
    Console().TextFieldAddress.SetText("first.example.net");
    Console().TextFieldPort.SetText("8073");
    desktop.clipboard = "Station\t9410\t0600-0700\tEnglish\n";
    const struct {
        int mode;
        const char* expected;
    } cases[] = {{0, "am"}, {1, "amn"}, {3, "amn"}, {9, "amn"}};
    for (const auto& c : cases) {
        Console().PopupMenuMode.SetListIndex(c.mode);
        Choose(window, "Add entry from clipboard");
        EXPECT_EQ(Row(window, window.ListboxSkeds.LastIndex()),
                  (Texts{First, "", "06:00:00-07:00:00", "9410", c.expected,
                         Console().TextFieldLowCut.Text() + "," + Console().TextFieldHighCut.Text(),
                         ""}));
    }
    const int rows = window.ListboxSkeds.ListCount();
    for (const char* text : {"Station\t9410", "Station\t9410\t0600-0700-0800"}) {
        desktop.clipboard = text;
        Choose(window, "Add entry from clipboard");
    }
    desktop.clipboard.reset();
    Choose(window, "Add entry from clipboard");
    EXPECT_EQ(desktop.boxes,
              (Texts{"Incorrect text in the clipboard", "Incorrect time text in the clipboard",
                     "No text in the clipboard"}));
    EXPECT_EQ(window.ListboxSkeds.ListCount(), rows);
}

TEST_F(ScheduleWindow, ASavedScheduleOpensInANewWindowAndStartsNothing) {
    SkedWindow& window = NewWindow();
    AddRow(window, {"192.0.2.10:8073", "", "06:30:00-07:00:00", "1620", "amn", "-2600,2600"});
    AddRow(window,
           {"192.0.2.11:8073", "2027-03-01", "22:00:00-23:30:00", "9420", "am", "-5000,5000"});
    Enable(window);
    desktop.Advance(1);
    const FolderItem file = Document("schedule.txt", "the old one");
    Save(window, file);
    EXPECT_EQ(desktop.offeredName, "schedule.txt");
    EXPECT_EQ(ContentOf(file), twoRows);
    SkedWindow* opened = Open(file);
    ASSERT_NE(opened, nullptr);
    EXPECT_NE(opened, &window);
    EXPECT_TRUE(opened->Visible());
    EXPECT_FALSE(opened->schedulesEnabled);
    for (int row = 0; row < 2; ++row) {
        EXPECT_NE(Cell(window, row, SkedWindow::TestColumn), "");
        SetCell(window, row, SkedWindow::TestColumn, "");
        EXPECT_EQ(Row(*opened, row), Row(window, row));
    }
    opened->OpenFile(file);
    EXPECT_EQ(opened->ListboxSkeds.ListCount(), 4) << "rows are added behind those present";
    EXPECT_EQ(Open(std::nullopt), nullptr) << "a cancelled dialog";
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(ScheduleWindow, AFullDiskLeavesTheOldScheduleAndSaysSo) {
    SkedWindow& window = NewWindow();
    Choose(window, "Add entry");
    const FolderItem file = Document("schedule.txt", twoRows);
    {
        const SmallDisk disk(10);
        Save(window, file);
    }
    EXPECT_EQ(ContentOf(file), twoRows);
    EXPECT_EQ(desktop.boxes, Texts{"Error saving file"});
}

TEST_F(ScheduleWindow, AnEditThatIsOpenIsInTheFileAndOutlivesTheMenu) {
    SkedWindow& window = NewWindow();
    AddRow(window, {First, "", "06:30:00-07:00:00", "1620", "am", "5000"});
    const FolderItem file = *desktop.Folder(SpecialFolder::Documents).Child("schedule.txt");
    {
        const OpenEdit edit(window.ListboxSkeds, SkedWindow::FreqColumn, "1630");
        Save(window, file);
    }
    EXPECT_EQ(ContentOf(file), "1\n" + First + ";;06:30:00-07:00:00;1630;am;5000\n");
    const OpenEdit edit(window.ListboxSkeds, SkedWindow::FreqColumn, "1640");
    Choose(window, "Add entry");
    EXPECT_EQ(Cell(window, 0, SkedWindow::FreqColumn), "1640");
}

TEST_F(ScheduleWindow, WhatCannotBeReadOrWrittenIsSaid) {
    SkedWindow& window = NewWindow();
    const FolderItem documents = desktop.Folder(SpecialFolder::Documents);
    const FolderItem gone = *documents.Child("gone.txt");
    ASSERT_NE(Open(gone), nullptr);
    EXPECT_TRUE(desktop.boxes.empty()) << "a file that has gone meanwhile is an empty schedule";
    Open(documents);
    Save(window, *FolderItem(documents.Path() / "no such folder").Child("schedule.txt"));
    Save(window, documents);
    EXPECT_EQ(desktop.boxes, (Texts{"Error opening file", "Error saving file"}));
    EXPECT_TRUE(std::filesystem::is_directory(documents.Path()));
    std::string noise;
    for (int i = 0; i < 100000; ++i) {
        noise += static_cast<char>(i * 7919 >> 3);
    }
    ASSERT_NE(Open(Document("noise.txt", "1000000000000\n;;;;;\n" + noise)), nullptr);
    EXPECT_EQ(desktop.boxes.size(), 2U);
    Sleep(5);
}

// Dialogs stay on the screen while the program goes on, and with it the windows.
TEST_F(ScheduleWindow, AnAnswerThatComesAfterTheWindowsEndIsNobodys) {
    SkedWindow& window = NewWindow();
    const FolderItem file = *desktop.Folder(SpecialFolder::Documents).Child("late.txt");
    desktop.chosenFiles.emplace_back(file);
    desktop.queue.After(0, [&window] { window.Close(); });
    desktop.queue.After(0, [this, &window] { Perform("FileSaveSchedule", &window); });
    desktop.Advance(0);
    desktop.Advance(1);
    EXPECT_EQ(desktop.windows.size(), 1U);
    EXPECT_FALSE(file.Exists());
}

TEST_F(ScheduleWindow, QuittingStartsNoEntryWhileAnAnswerIsAwaited) {
    SkedWindow& window = NewWindow();
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
    SkedWindow& window = NewWindow();
    SetClock("2027-01-16T22:00:00");
    const std::string open = "22:00:00-22:00:10";
    AddRow(window, {First, "", "22:00:00", "9410", "am", "5000"});
    AddRow(window, {First, "", "22:00:00-22:10:00-", "9410", "am", "5000"});
    AddRow(window, {First, "", "22:00:00-22:10", "9410", "am", "5000"});
    AddRow(window, {First, "2027-02-30", open, "9410", "am", "5000"});
    AddRow(window, {First, "\xff", open, "9410", "am", "5000"});
    AddRow(window, {});
    AddRow(window, {First, "", open, "1620", "an unknown mode", "-3000,3000,1"});
    SetCell(window, 0, SkedWindow::TestColumn, "as it was");
    Console().PopupMenuMode.SetListIndex(1);
    Enable(window);
    Sleep(5);
    EXPECT_EQ(window.recordingIndex, 6);
    EXPECT_EQ(Cell(window, 0, SkedWindow::TestColumn), "as it was");
    EXPECT_EQ(Cell(window, 2, SkedWindow::TestColumn), "-1");
    EXPECT_EQ(Console().PopupMenuMode.Text(), "amn");
    EXPECT_EQ(Console().TextFieldLowCut.Text(), "--3000,3000,1");
    EXPECT_EQ(Console().TextFieldHighCut.Text(), "-3000,3000,1");
    Sleep(60);
    ASSERT_EQ(Heard().size(), 1U);
    SetCell(window, 6, SkedWindow::UrlColumn, "http://first.example.net:8073");
    SetClock("2027-01-16T22:00:00");
    Console().TextFieldFreq.SetText("77");
    Sleep(60);
    EXPECT_EQ(Console().TextFieldFreq.Text(), "77") << "an address with two colons";
    EXPECT_EQ(Heard().size(), 1U);
}

} // namespace
} // namespace larkspool
