#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace larkspool {

// A place in the file system, whether something is there or not. Failures are
// return values; nothing here throws.
class FolderItem {
  public:
    explicit FolderItem(std::filesystem::path location);

    std::string Name() const;
    const std::filesystem::path& Path() const { return path; }
    bool Exists() const;
    bool IsFolder() const;
    // Bytes in the file; 0 for folders and for what can't be looked at.
    std::uint64_t Length() const;

    // True if something was there and is gone now. A folder must be empty.
    bool Delete();
    FolderItem Parent() const;
    // Nothing for a name that isn't one plain name: empty, ".", "..", or with a
    // path separator or NUL in it.
    std::optional<FolderItem> Child(std::string_view name) const;
    // Makes missing parents too. True if the folder is there afterwards.
    bool CreateFolder();
    // Renames over what is there, in one step; both must lie in one file system.
    bool MoveTo(const FolderItem& destination);

  private:
    std::filesystem::path path;
};

} // namespace larkspool
