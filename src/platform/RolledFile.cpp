#include "platform/RolledFile.h"

#include "platform/FileHandle.h"

#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace larkspool {

RolledFile::RolledFile(FolderItem location, FolderItem olderOne, std::uint64_t mostBytes)
    : file(std::move(location)), older(std::move(olderOne)), largest(mostBytes) {}

bool RolledFile::Append(std::string_view lines) {
    std::uint64_t before = file.Length();
    if (before > 0 && before + lines.size() > largest) {
        if (!file.MoveTo(older)) {
            return false; // otherwise it would exceed its limit
        }
        before = 0;
    }
    file.Parent().CreateFolder();
    FileHandle opened = OpenFile(file, FileAccess::Append);
    if (!opened) {
        return false;
    }
    const bool taken = std::fwrite(lines.data(), 1, lines.size(), opened.get()) == lines.size();
    if (std::fclose(opened.release()) == 0 && taken) {
        return true;
    }
    std::error_code failure; // a part of a line would spoil the next one
    std::filesystem::resize_file(file.Path(), before, failure);
    return false;
}

} // namespace larkspool
