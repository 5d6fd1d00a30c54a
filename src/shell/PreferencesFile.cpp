#include "platform/BinaryStream.h"
#include "shell/App.h"

#include <algorithm>

namespace larkspool {

namespace {

constexpr char FileName[] = "Larkspool Prefs";
// Far more than any settings take; a larger file isn't ours.
constexpr std::uint64_t LargestFile = 64 * 1024;

} // namespace

// A file beside the program takes over, for reading and for writing.
FolderItem App::PreferencesFile() const {
    const auto beside = desktop.Folder(SpecialFolder::Program).Child(FileName);
    if (beside && beside->Exists()) {
        return *beside;
    }
    return *desktop.Folder(SpecialFolder::Preferences).Child(FileName);
}

void App::ReadPrefs() {
    FolderItem file = PreferencesFile();
    if (desktop.ShiftKeyDown() && desktop.ControlKeyDown()) {
        file.Delete();
        desktop.MsgBox("Settings cleared");
    }
    auto stream = BinaryStream::Open(file);
    if (!stream) {
        prefs = DefaultPreferences();
        return;
    }
    const auto size = static_cast<std::size_t>(std::min(stream->Length(), LargestFile));
    prefs = DecodePreferences(stream->ReadString(size));
}

// Written beside the old file and moved over it, so that neither a crash nor a full disk can lose
// what was there.
bool App::WritePrefs() const {
    const FolderItem file = PreferencesFile();
    auto fresh = file.Parent().Child(std::string(FileName) + ".new");
    auto stream = fresh ? BinaryStream::Create(*fresh) : std::nullopt;
    if (!stream) {
        return false;
    }
    stream->WriteString(EncodePreferences(prefs));
    if (!stream->Close()) {
        fresh->Delete();
        return false;
    }
    return fresh->MoveTo(file);
}

} // namespace larkspool
