#pragma once

#include "platform/FolderItem.h"

#include <cstdint>
#include <string_view>

namespace larkspool {

// A text file that grows up to a limit. Then it replaces the older file and a new one begins, so
// that both together never exceed twice the limit. It is open only during an addition: two programs
// may share it.
class RolledFile {
  public:
    RolledFile(FolderItem location, FolderItem olderOne, std::uint64_t mostBytes);

    // Adds whole lines, and creates the folder if it is missing. False: the write has failed, and
    // the file has not changed.
    bool Append(std::string_view lines);

  private:
    FolderItem file;
    FolderItem older;
    std::uint64_t largest;
};

} // namespace larkspool
