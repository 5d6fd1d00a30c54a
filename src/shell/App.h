#pragma once

#include "audio/RecordingRepair.h"
#include "console/Window1.h"
#include "platform/Date.h"
#include "platform/Desktop.h"
#include "platform/FolderItem.h"
#include "platform/Random.h"
#include "shell/CommandLine.h"
#include "shell/Deployment.h"
#include "shell/NightLog.h"
#include "shell/NightWatch.h"
#include "shell/Preferences.h"
#include "shell/VersionCheck.h"

#include <memory>
#include <string>
#include <vector>

namespace larkspool {

class KiwiListClass;
class SkedWindow;

// The application: owns the windows and everything that is stored, handles the menu, ends the
// program. Created in main before the event loop runs; exists until the process ends.
class App {
  public:
    App(Desktop& theDesktop, Deployment values);
    ~App();
    App(const App&) = delete;
    App& operator=(const App&) = delete;

    // The event loop's first event: reads the preferences, then opens the console.
    void Event_Open();

    // Opens the schedules that the command line names.
    void OpenSchedules(const CommandLine& commandLine);

    Window1& Console() { return *window1; }

    // Takes ownership of another window and shows it. Destroys it when it is closed.
    void OpenWindow(std::unique_ptr<Window> window);

    // Whether closing this window ends the program: no other window is visible.
    bool EndsWith(const Window& closing) const;

    // Call several times per second: keeps the computer awake as long as that is needed.
    void WatchTheNight();

    // The program is about to end; it may still wait for an answer.
    bool IsQuitting() const { return isQuitting; }

    // Shows that some data of the user could not be saved. During Quit: before the program ends.
    void TellLoss(const std::string& text);

    // Shows a tooltip under the pointer, unless tooltips are switched off.
    void MyShowToolTip(const std::string& text);
    Date GetCurrentUtcDate() const;

    // Asks the version server; offers a newer release if there is one.
    void CheckForTheLatestVersion();

    const Deployment deployment;
    Preferences prefs;
    Random myRandom;
    NightLog nightLog;
    std::unique_ptr<KiwiListClass> theKiwiList;  // null before the first fetch and after quitting
    bool prefsHideTooltips = false;              // not stored
    bool prefsInvertScrollWheelPolarity = false; // not stored

  private:
    void MakeMenu();
    bool EditAboutLarkspool_Action();
    bool FileFavorites_Action();
    bool FileVisitWebsiteForInstructions_Action();
    bool FileNewScheduleWindow_Action();
    bool FileOpenSchedule_Action();
    SkedWindow& OpenSchedule(const FolderItem& file);
    void VisitProductPage();

    FolderItem PreferencesFile() const;
    void ReadPrefs();
    void ShowAfterOpening(const std::string& text);
    bool WritePrefs() const; // false: they could not be written

    void PlanUpdateCheck();

    std::vector<Window*> AllWindows() const;
    void WindowClosed();
    void Quit(QuitCause cause);
    void CloseEverything();
    void TellLosses();

    Desktop& desktop;
    std::unique_ptr<Window1> window1;
    std::vector<std::unique_ptr<Window>> furtherWindows;
    RecordingRepair recordingRepair;
    NightWatch nightWatch;
    std::unique_ptr<Timer> updateTimer;
    std::unique_ptr<VersionCheck> versionCheck;
    bool isOpen = false;         // the console is filled: from now on there is something to store
    bool prefsAreUnread = false; // their file must not be replaced
    bool isQuitting = false;
    std::string losses; // texts to show before the program ends
};

} // namespace larkspool
