#include "shell/NightLog.h"

#include "platform/Date.h"
#include "platform/Text.h"
#include "schedule/ScheduleTexts.h"

#include <algorithm>
#include <cstdint>

namespace larkspool {

namespace {

constexpr std::uint64_t LargestFile = std::uint64_t{1024} * 1024;
constexpr std::size_t LongestRow = 1000; // bytes

// A receiver's texts may contain any byte, but the file must be readable in a terminal.
std::string WithoutControlCharacters(std::string text) {
    std::replace_if(
        text.begin(), text.end(),
        [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }, ' ');
    return text;
}

} // namespace

void NightLog::Add(const std::string& row) {
    if (!file) {
        const FolderItem folder = desktop.Folder(SpecialFolder::State);
        file = desktop.MakeLogFile(
            RolledFile(*folder.Child("log.txt"), *folder.Child("log-older.txt"), LargestFile));
    }
    const auto now = Date::FromUnixSeconds(desktop.UtcNow());
    file->Write(DateAndTimeText(now) + "  " + WithoutControlCharacters(CutUtf8(row, LongestRow)));
}

} // namespace larkspool
