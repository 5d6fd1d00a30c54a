#pragma once

#include "platform/FolderItem.h"

#include <cstdint>
#include <string_view>

namespace larkspool {

// A text file that grows up to a bound. Then it takes the place of the older one and a new one
// begins, so that both together never take more than twice the bound. Held open for no longer than
// an addition lasts: two programs may share it.
class RolledFile {
  public:
    RolledFile(FolderItem location, FolderItem olderOne, std::uint64_t mostBytes);

    // Adds whole lines, and makes the folder if it is missing. False: the disk has refused them,
    // and the file is as before.
    bool Append(std::string_view lines);

  private:
    FolderItem file;
    FolderItem older;
    std::uint64_t largest;
};

} // namespace larkspool
