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

// The application: owns what is stored and the windows, answers the menu, ends the program. Made in
// main, before the event loop runs; lives to the end of the process.
class App {
  public:
    App(Desktop& theDesktop, Deployment values);
    ~App();
    App(const App&) = delete;
    App& operator=(const App&) = delete;

    // The event loop's first event: reads the preferences, then opens the console.
    void Event_Open();

    // Opens the schedules that the program was started with.
    void OpenSchedules(const CommandLine& commandLine);

    Window1& Console() { return *window1; }

    // Takes a further window and shows it. It lives until it is closed.
    void OpenWindow(std::unique_ptr<Window> window);

    // Whether closing this window ends the program: no other one shows.
    bool EndsWith(const Window& closing) const;

    // To be called several times a second: keeps the computer awake as long as that is needed.
    void WatchTheNight();

    // The program is about to end; it may still wait for an answer.
    bool IsQuitting() const { return isQuitting; }

    // Something of the user's could not be kept. At quit it is told before the program ends.
    void TellLoss(const std::string& text);

    // Shows a tooltip under the pointer, unless the user wants none.
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
    void AddMenuHandlers();
    bool EditAboutLarkspool_Action();
    bool FileFavorites_Action();
    bool FileVisitWebsiteForInstructions_Action();
    bool FileNewScheduleWindow_Action();
    bool FileOpenSchedule_Action();
    void OpenSchedule(const FolderItem& file, bool enable);
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
    bool isOpen = false;         // the console is filled: from here on there is something to store
    bool prefsAreUnread = false; // nothing may replace their file
    bool isQuitting = false;
    std::string losses; // to be told before the program ends
};

} // namespace larkspool
