#include "shell/MainMenuBar.h"

namespace larkspool {

MenuBar MakeMainMenuBar() {
    Menu file{"FileMenu",
              "&File",
              {{"FileFavorites", "Favorites...", ""},
               {"FileClose", "Close", "Cmd+W"},
               {"FileNewScheduleWindow", "New Schedule Window", "Cmd+N"},
               {"FileOpenSchedule", "Open Schedule...", "Cmd+O"},
               {"FileSaveSchedule", "Save Schedule...", "Cmd+S"},
               {"FileQuit", "&Quit", "Cmd+Q", MenuRole::Quit}}};
    Menu edit{"EditMenu",
              "&Edit",
              {{"EditUndo", "&Undo", "Cmd+Z", MenuRole::Undo},
               {"EditSeparator1", "-", "", MenuRole::Separator},
               {"EditCut", "Cu&t", "Cmd+X", MenuRole::Cut},
               {"EditCopy", "&Copy", "Cmd+C", MenuRole::Copy},
               {"EditPaste", "&Paste", "Cmd+V", MenuRole::Paste},
               {"EditClear", "&Delete", "", MenuRole::Clear},
               {"EditSeparator2", "-", "", MenuRole::Separator},
               {"EditSelectAll", "Select &All", "Cmd+A", MenuRole::SelectAll},
               {"EditAboutLarkspool", "About Larkspool", "", MenuRole::About},
               {"FileVisitWebsiteForInstructions", "Visit Website For Instructions", ""}}};
    return MenuBar{{file, edit}};
}

} // namespace larkspool
