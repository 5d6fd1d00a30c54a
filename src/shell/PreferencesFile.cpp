#include "platform/BinaryStream.h"
#include "platform/ReplaceFile.h"
#include "shell/App.h"

#include <algorithm>

namespace larkspool {

namespace {

constexpr char FileName[] = "Larkspool Prefs";
// Far more than any settings take; a larger file isn't ours.
constexpr std::uint64_t LargestFile = std::uint64_t{64} * 1024;

} // namespace

// A file beside the program takes over, for reading and for writing.
FolderItem App::PreferencesFile() const {
    return desktop.BesideProgramOrIn(SpecialFolder::Preferences, FileName);
}

void App::ReadPrefs() {
    prefs = DefaultPreferences();
    FolderItem file = PreferencesFile();
    if (desktop.ShiftKeyDown() && desktop.ControlKeyDown()) {
        file.Delete();
        // The console, which opens next, would cover it.
        desktop.CallLater(0, [&host = desktop] { host.MsgBox("Settings cleared"); });
        return; // also where the file could not be deleted
    }
    auto stream = BinaryStream::Open(file);
    if (!stream) {
        return;
    }
    const auto size = static_cast<std::size_t>(std::min(stream->Length(), LargestFile));
    prefs = DecodePreferences(stream->ReadString(size));
}

bool App::WritePrefs() const {
    return ReplaceFile(desktop, PreferencesFile(), EncodePreferences(prefs));
}

} // namespace larkspool
