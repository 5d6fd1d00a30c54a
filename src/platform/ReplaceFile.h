#pragma once

#include "platform/FolderItem.h"

#include <string_view>

namespace larkspool {

class Desktop;

// Replaces the file's bytes, or creates the file. They are written to a file beside it and moved
// over it when they are safely on the disk, so that no crash, power cut, full disk or other program
// that saves at the same moment loses the old content. The file's permissions do not change.
// False: the file has not changed.
bool ReplaceFile(Desktop& desktop, const FolderItem& file, std::string_view bytes);

} // namespace larkspool
