#pragma once

#include "platform/FolderItem.h"

#include <string_view>

namespace larkspool {

// Puts these bytes in place of the file's, or makes the file. They are written beside it and moved
// over it, so that neither a crash nor a full disk loses what was there. False: nothing has
// changed.
bool ReplaceFile(const FolderItem& file, std::string_view bytes);

} // namespace larkspool
