#include "platform/FileHandle.h"

#include <filesystem>
#include <string>
#include <system_error>

namespace larkspool {

namespace {

namespace fs = std::filesystem;

bool MayOpen(const fs::path& path, FileAccess access) {
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    if (type == fs::file_type::regular) {
        return true;
    }
    return (access == FileAccess::Replace || access == FileAccess::Append) &&
           (type == fs::file_type::not_found || type == fs::file_type::character);
}

const char* Mode(FileAccess access) {
    switch (access) {
    case FileAccess::Read:
        return "rb";
    case FileAccess::Replace:
        return "w+b";
    case FileAccess::Update:
        return "r+b";
    case FileAccess::Append:
        return "ab";
    }
    return "rb";
}

} // namespace

FileHandle OpenFile(const FolderItem& item, FileAccess access) {
    const std::string name = item.Path().string();
    // The C library would stop at the NUL and open another file.
    if (name.find('\0') != std::string::npos || !MayOpen(item.Path(), access)) {
        return nullptr;
    }
    return FileHandle(std::fopen(name.c_str(), Mode(access)));
}

} // namespace larkspool
