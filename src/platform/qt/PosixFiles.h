#pragma once

#include "platform/FileLock.h"
#include "platform/FolderItem.h"

#include <memory>

namespace larkspool {

// What Desktop::Lock promises, on any POSIX system. Knows nothing of Qt.
std::unique_ptr<FileLock> LockFile(const FolderItem& item);

// What Desktop::Settle promises, likewise.
bool SettleFile(const FolderItem& item);

} // namespace larkspool
