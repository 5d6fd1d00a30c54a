#pragma once

#include "platform/FolderItem.h"

#include <cstdio>
#include <memory>

namespace larkspool {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// The C library's file under the streams, owned by one stream.
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

enum class FileAccess { Read, Replace, Update, Append };

// Null if the file can't be opened, or if reading or writing it could block or never
// end: reads take regular files only, writes also devices.
FileHandle OpenFile(const FolderItem& item, FileAccess access);

} // namespace larkspool
