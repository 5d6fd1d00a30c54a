#pragma once

#include "platform/FolderItem.h"

#include <string_view>

namespace larkspool {

class Desktop;

// Puts these bytes in place of the file's, or makes the file. They are written beside it and moved
// over it once they are safely on the disk, so that no crash, power cut or full disk loses what was
// there, nor does another program that saves at the same moment. Who may read the file stays as it
// was. False: nothing has changed.
bool ReplaceFile(Desktop& desktop, const FolderItem& file, std::string_view bytes);

} // namespace larkspool
