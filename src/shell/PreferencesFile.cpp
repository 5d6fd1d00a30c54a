#include "platform/BinaryStream.h"
#include "platform/ReplaceFile.h"
#include "shell/App.h"

#include <algorithm>
#include <optional>
#include <string>

namespace larkspool {

namespace {

constexpr char FileName[] = "Larkspool Prefs";
// Far more than the settings need; a larger file is not a settings file.
constexpr std::uint64_t LargestFile = std::uint64_t{64} * 1024;

// Empty if the file can't be read.
std::optional<std::string> BytesOf(const FolderItem& file) {
    auto stream = BinaryStream::Open(file);
    if (!stream) {
        return std::nullopt;
    }
    const auto size = static_cast<std::size_t>(std::min(stream->Length(), LargestFile));
    const std::string bytes = stream->ReadString(size);
    return stream->Failed() ? std::nullopt : std::optional(bytes);
}

} // namespace

// A file beside the program is preferred, for reading and for writing.
FolderItem App::PreferencesFile() const {
    return desktop.BesideProgramOrIn(SpecialFolder::Preferences, FileName);
}

void App::ReadPrefs() {
    prefs = DefaultPreferences();
    FolderItem file = PreferencesFile();
    if (desktop.ShiftKeyDown() && desktop.ControlKeyDown()) {
        file.Delete();
        ShowAfterOpening("Settings cleared");
        return; // even if the file could not be deleted
    }
    if (const auto bytes = BytesOf(file)) {
        prefs = DecodePreferences(*bytes);
    } else if (file.Exists()) {
        prefsAreUnread = true;
        ShowAfterOpening("The settings in " + file.Path().string() +
                         " could not be read. Larkspool starts as it did the first time. That "
                         "file stays as it is: settings made now will not be kept.");
    }
}

// The console opens next and would cover a box that is shown now.
void App::ShowAfterOpening(const std::string& text) {
    desktop.CallLater(0, [&theDesktop = desktop, text] { theDesktop.MsgBox(text); });
}

bool App::WritePrefs() const {
    return prefsAreUnread || ReplaceFile(desktop, PreferencesFile(), EncodePreferences(prefs));
}

} // namespace larkspool
