#pragma once

#include "platform/FileLock.h"
#include "platform/FolderItem.h"

#include <memory>

namespace larkspool {

// Implements Desktop::Lock on any POSIX system. Does not use Qt.
std::unique_ptr<FileLock> LockFile(const FolderItem& item);

// Implements Desktop::Settle.
bool SettleFile(const FolderItem& item);

} // namespace larkspool
